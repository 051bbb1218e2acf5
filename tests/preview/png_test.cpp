// PNG input and output, and the side-by-side image.
#include <gtest/gtest.h>
#include <png.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/device_tree.h"
#include "tools/preview/png_io.h"

namespace stc_preview_test {
namespace {

using namespace stc_preview;

class PreviewPng : public ::testing::Test {
  protected:
    std::string Path(const std::string &name) const { return dir_.HostPath("/" + name); }
    // A PNG written by libpng's own simplified writer, in a layout the preview does not write.
    std::string WriteForeign(const std::string &name, png_uint_32 format,
                             const std::vector<png_byte> &pixels, png_uint_32 width,
                             const std::vector<png_byte> &colour_map = {}) {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        image.width = width;
        image.height = 1;
        image.format = format;
        image.colormap_entries = static_cast<png_uint_32>(colour_map.size() / 3);
        const std::string path = Path(name);
        EXPECT_TRUE(png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0,
                                            colour_map.empty() ? nullptr : colour_map.data()))
            << image.message;
        return path;
    }
    stc_test::DeviceTree dir_;
};

TEST_F(PreviewPng, RoundTripAt8And16Bits) {
    for (int depth : {8, 16}) {
        Image image = MakeImage(3, 2, depth);
        for (size_t i = 0; i < image.samples.size(); ++i) {
            image.samples[i] = static_cast<uint16_t>(depth == 16 ? 0x1234 * i + 0x00FF : 13 * i);
        }
        const std::string path = Path("round.png");
        WritePng(path, image);
        const Image back = ReadPng(path);
        EXPECT_EQ(back.width, 3) << depth;
        EXPECT_EQ(back.height, 2) << depth;
        EXPECT_EQ(back.bit_depth, depth);
        EXPECT_EQ(back.samples, image.samples) << depth << "-bit";
    }
}

TEST_F(PreviewPng, GreyPaletteAndAlphaBecomeRgb) {
    const struct {
        const char *what;
        std::string path;
        std::vector<uint16_t> rgb;
    } cases[] = {
        {"grey",
         WriteForeign("grey.png", PNG_FORMAT_GRAY, {10, 200}, 2),
         {10, 10, 10, 200, 200, 200}},
        {"RGBA",
         WriteForeign("rgba.png", PNG_FORMAT_RGBA, {1, 2, 3, 0, 4, 5, 6, 255}, 2),
         {1, 2, 3, 4, 5, 6}},
        {"palette",
         WriteForeign("palette.png", PNG_FORMAT_RGB_COLORMAP, {1, 0}, 2, {9, 8, 7, 30, 40, 50}),
         {30, 40, 50, 9, 8, 7}},
    };
    for (const auto &c : cases) {
        const Image image = ReadPng(c.path);
        EXPECT_EQ(image.bit_depth, 8) << c.what;
        EXPECT_EQ(image.samples, c.rgb) << c.what;
    }
}

TEST_F(PreviewPng, EachFailureNamesTheFileAndTheCause) {
    dir_.WriteFile("/text.png", "not an image at all\n");
    dir_.MakeDir("/folder.png");
    WritePng(Path("whole.png"), MakeImage(4, 4, 8));
    std::ifstream whole(Path("whole.png"), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(whole)), {});
    dir_.WriteFile("/cut.png", bytes.substr(0, 40));
    WritePng(Path("wide.png"), MakeImage(kMaxImageSide + 1, 1, 8));
    const struct {
        const char *name;
        std::string message;
    } cases[] = {
        {"missing.png", ": no such file"},
        {"folder.png", ": cannot read: Is a directory"},
        {"text.png", ": not a PNG file"},
        {"cut.png", ": damaged PNG: "},
        {"wide.png",
         ": image of 8193 x 1 pixels is too large; at most 8192 x 8192 pixels are processed"},
    };
    for (const auto &c : cases) {
        try {
            ReadPng(Path(c.name));
            ADD_FAILURE() << c.name << " was read";
        } catch (const PngError &e) {
            EXPECT_EQ(std::string(e.what()).rfind(Path(c.name) + c.message, 0), 0u)
                << c.name << ": " << e.what();
        }
    }
}

TEST_F(PreviewPng, SideBySidePadsTheShorterImageWithBlack) {
    Image left = MakeImage(1, 2, 8), right = MakeImage(2, 1, 8);
    std::fill(left.samples.begin(), left.samples.end(), 7);
    std::fill(right.samples.begin(), right.samples.end(), 9);
    const Image both = SideBySide(left, right);
    EXPECT_EQ(both.width, 3);
    EXPECT_EQ(both.height, 2);
    const std::vector<uint16_t> expected = {7, 7, 7, 9, 9, 9, 9, 9, 9,   // row 0
                                            7, 7, 7, 0, 0, 0, 0, 0, 0};  // row 1
    EXPECT_EQ(both.samples, expected);
    EXPECT_THROW(SideBySide(left, MakeImage(1, 1, 16)), std::invalid_argument);
}

}  // namespace
}  // namespace stc_preview_test
