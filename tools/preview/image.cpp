#include "tools/preview/image.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace stc_preview {

namespace {

size_t SampleIndex(const Image &image, int x, int y) {
    return (static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)) * 3;
}

void CopyInto(const Image &source, int left, Image *target) {
    for (int y = 0; y < source.height; ++y) {
        auto from = source.samples.begin() + static_cast<std::ptrdiff_t>(SampleIndex(source, 0, y));
        std::copy(
            from, from + source.width * 3,
            target->samples.begin() + static_cast<std::ptrdiff_t>(SampleIndex(*target, left, y)));
    }
}

}  // namespace

Image MakeImage(int width, int height, int bit_depth) {
    Image image;
    image.width = width;
    image.height = height;
    image.bit_depth = bit_depth;
    image.samples.assign(static_cast<size_t>(width) * static_cast<size_t>(height) * 3, 0);
    return image;
}

int MaxCode(int bit_depth) {
    return bit_depth == 16 ? 65535 : 255;
}

Rgb PixelAt(const Image &image, int x, int y) {
    const size_t i = SampleIndex(image, x, y);
    const double max = MaxCode(image.bit_depth);
    return {image.samples[i] / max, image.samples[i + 1] / max, image.samples[i + 2] / max};
}

std::array<uint16_t, 3> CodesAt(const Image &image, int x, int y) {
    const size_t i = SampleIndex(image, x, y);
    return {image.samples[i], image.samples[i + 1], image.samples[i + 2]};
}

uint16_t ToCode(double value, int max_code) {
    const double clamped = std::clamp(value, 0.0, 1.0);
    return static_cast<uint16_t>(std::floor(clamped * max_code + 0.5));
}

void SetPixel(Image *image, int x, int y, Rgb colour) {
    const int max = MaxCode(image->bit_depth);
    SetCodes(image, x, y, ToCode(colour.r, max), ToCode(colour.g, max), ToCode(colour.b, max));
}

void SetCodes(Image *image, int x, int y, uint16_t r, uint16_t g, uint16_t b) {
    const size_t i = SampleIndex(*image, x, y);
    image->samples[i] = r;
    image->samples[i + 1] = g;
    image->samples[i + 2] = b;
}

Image SideBySide(const Image &left, const Image &right) {
    if (left.bit_depth != right.bit_depth) {
        throw std::invalid_argument("side-by-side images must have the same bit depth");
    }
    Image both =
        MakeImage(left.width + right.width, std::max(left.height, right.height), left.bit_depth);
    CopyInto(left, 0, &both);
    CopyInto(right, left.width, &both);
    return both;
}

}  // namespace stc_preview
