#include "tools/preview/png_io.h"

#include <png.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace stc_preview {

namespace {

// libpng reports an error by a longjmp back to the setjmp of the function that called it. The
// functions that hold a setjmp below keep no object with a destructor, so the jump skips no
// clean-up; the C++ objects live in their callers, which the jump never leaves.

constexpr size_t kSignatureSize = 8;

struct PngMessage {
    char text[256];
};

[[noreturn]] void OnPngError(png_structp png, png_const_charp message) {
    auto *out = static_cast<PngMessage *>(png_get_error_ptr(png));
    std::snprintf(out->text, sizeof(out->text), "%s", message);
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp, png_const_charp) {}

// The libpng structures of one file, released on every path.
class PngHandles {
  public:
    PngHandles(bool writing, PngMessage *message) : writing_(writing) {
        png_ =
            writing
                ? png_create_write_struct(PNG_LIBPNG_VER_STRING, message, OnPngError, OnPngWarning)
                : png_create_read_struct(PNG_LIBPNG_VER_STRING, message, OnPngError, OnPngWarning);
        info_ = png_ ? png_create_info_struct(png_) : nullptr;
    }
    ~PngHandles() {
        if (writing_) {
            png_destroy_write_struct(&png_, &info_);
        } else {
            png_destroy_read_struct(&png_, &info_, nullptr);
        }
    }
    PngHandles(const PngHandles &) = delete;
    PngHandles &operator=(const PngHandles &) = delete;

    bool ok() const { return png_ && info_; }
    png_structp png() const { return png_; }
    png_infop info() const { return info_; }

  private:
    bool writing_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

struct FileCloser {
    void operator()(FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

struct PngShape {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int bit_depth = 0;
    int channels = 0;
    size_t row_bytes = 0;
};

// Reads the header and asks libpng for RGB rows of 8 or 16 bits; false when libpng failed.
bool ReadShape(png_structp png, png_infop info, PngShape *shape) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_sig_bytes(png, kSignatureSize);
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // our own limit applies
    png_read_info(png, info);
    png_set_palette_to_rgb(png);
    png_set_expand_gray_1_2_4_to_8(png);
    png_set_gray_to_rgb(png);
    png_set_strip_alpha(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    shape->width = png_get_image_width(png, info);
    shape->height = png_get_image_height(png, info);
    shape->bit_depth = png_get_bit_depth(png, info);
    shape->channels = png_get_channels(png, info);
    shape->row_bytes = png_get_rowbytes(png, info);
    return true;
}

bool ReadRows(png_structp png, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_read_image(png, rows);
    png_read_end(png, nullptr);
    return true;
}

bool WriteRows(png_structp png, png_infop info, const PngShape &shape, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_IHDR(png, info, shape.width, shape.height, shape.bit_depth, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    return true;
}

std::vector<png_bytep> RowPointers(std::vector<png_byte> *data, const PngShape &shape) {
    std::vector<png_bytep> rows(shape.height);
    for (png_uint_32 y = 0; y < shape.height; ++y) {
        rows[y] = data->data() + y * shape.row_bytes;
    }
    return rows;
}

File OpenForReading(const std::string &path) {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        throw PngError(errno == ENOENT ? path + ": no such file"
                                       : path + ": cannot open: " + std::strerror(errno));
    }
    png_byte signature[kSignatureSize] = {};
    const size_t got = std::fread(signature, 1, kSignatureSize, file.get());
    if (std::ferror(file.get())) {
        throw PngError(path + ": cannot read: " + std::strerror(errno));
    }
    if (got < kSignatureSize || png_sig_cmp(signature, 0, kSignatureSize) != 0) {
        throw PngError(path + ": not a PNG file");
    }
    return file;
}

void CheckSize(const std::string &path, const PngShape &shape) {
    if (shape.width > static_cast<png_uint_32>(kMaxImageSide) ||
        shape.height > static_cast<png_uint_32>(kMaxImageSide)) {
        throw PngError(path + ": image of " + std::to_string(shape.width) + " x " +
                       std::to_string(shape.height) + " pixels is too large; at most " +
                       std::to_string(kMaxImageSide) + " x " + std::to_string(kMaxImageSide) +
                       " pixels are processed");
    }
}

Image ToImage(const PngShape &shape, const std::vector<png_byte> &data) {
    Image image =
        MakeImage(static_cast<int>(shape.width), static_cast<int>(shape.height), shape.bit_depth);
    const bool wide = shape.bit_depth == 16;
    for (size_t i = 0; i < image.samples.size(); ++i) {
        image.samples[i] =
            wide ? static_cast<uint16_t>(data[2 * i] << 8 | data[2 * i + 1]) : data[i];
    }
    return image;
}

std::vector<png_byte> ToBytes(const Image &image) {
    const bool wide = image.bit_depth == 16;
    std::vector<png_byte> data(image.samples.size() * (wide ? 2 : 1));
    for (size_t i = 0; i < image.samples.size(); ++i) {
        if (wide) {
            data[2 * i] = static_cast<png_byte>(image.samples[i] >> 8);
            data[2 * i + 1] = static_cast<png_byte>(image.samples[i] & 0xFF);
        } else {
            data[i] = static_cast<png_byte>(image.samples[i]);
        }
    }
    return data;
}

}  // namespace

Image ReadPng(const std::string &path) {
    File file = OpenForReading(path);
    PngMessage message = {};
    PngHandles handles(false, &message);
    if (!handles.ok()) {
        throw PngError(path + ": libpng could not start");
    }
    png_init_io(handles.png(), file.get());
    PngShape shape;
    if (!ReadShape(handles.png(), handles.info(), &shape)) {
        throw PngError(path + ": damaged PNG: " + message.text);
    }
    CheckSize(path, shape);
    if (shape.channels != 3 || (shape.bit_depth != 8 && shape.bit_depth != 16)) {
        throw PngError(path + ": unsupported PNG layout");
    }
    std::vector<png_byte> data(shape.row_bytes * shape.height);
    std::vector<png_bytep> rows = RowPointers(&data, shape);
    if (!ReadRows(handles.png(), rows.data())) {
        throw PngError(path + ": damaged PNG: " + message.text);
    }
    return ToImage(shape, data);
}

void WritePng(const std::string &path, const Image &image) {
    if (image.bit_depth != 8 && image.bit_depth != 16) {
        throw PngError(path + ": cannot write an image of " + std::to_string(image.bit_depth) +
                       " bits per channel");
    }
    File file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        throw PngError(path + ": cannot create: " + std::strerror(errno));
    }
    PngMessage message = {};
    PngHandles handles(true, &message);
    if (!handles.ok()) {
        throw PngError(path + ": libpng could not start");
    }
    png_init_io(handles.png(), file.get());
    PngShape shape;
    shape.width = static_cast<png_uint_32>(image.width);
    shape.height = static_cast<png_uint_32>(image.height);
    shape.bit_depth = image.bit_depth;
    shape.row_bytes = static_cast<size_t>(image.width) * 3 * (image.bit_depth / 8);
    std::vector<png_byte> data = ToBytes(image);
    std::vector<png_bytep> rows = RowPointers(&data, shape);
    if (!WriteRows(handles.png(), handles.info(), shape, rows.data())) {
        throw PngError(path + ": cannot write: " + message.text);
    }
    if (std::fflush(file.get()) != 0) {
        throw PngError(path + ": cannot write: " + std::strerror(errno));
    }
}

void WriteSideBySidePng(const std::string &path, const Image &input, const Image &output) {
    WritePng(path, SideBySide(input, output));
}

}  // namespace stc_preview
