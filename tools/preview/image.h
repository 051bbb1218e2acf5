// Images of the preview: RGB, 8 or 16 bits per channel, and the normalised colour the model
// computes with.
#ifndef STC_TOOLS_PREVIEW_IMAGE_H_
#define STC_TOOLS_PREVIEW_IMAGE_H_

#include <array>
#include <cstdint>
#include <vector>

namespace stc_preview {

// One colour, each channel normally in 0..1.
struct Rgb {
    double r = 0;
    double g = 0;
    double b = 0;
};

struct Image {
    int width = 0;
    int height = 0;
    int bit_depth = 8;              // 8 or 16
    std::vector<uint16_t> samples;  // R, G, B per pixel, rows top to bottom
};

// A black image of the given size and depth.
Image MakeImage(int width, int height, int bit_depth);

// Largest code of a channel at this depth: 255 or 65535.
int MaxCode(int bit_depth);

// The pixel at (x, y), normalised to 0..1.
Rgb PixelAt(const Image &image, int x, int y);

// The codes of the pixel at (x, y).
std::array<uint16_t, 3> CodesAt(const Image &image, int x, int y);

// Stores a normalised colour, clamped to 0..1 and rounded half up to the image's codes.
void SetPixel(Image *image, int x, int y, Rgb colour);

// Stores codes as they are.
void SetCodes(Image *image, int x, int y, uint16_t r, uint16_t g, uint16_t b);

// Rounds a normalised value half up to a code of 0..max_code, clamping first.
uint16_t ToCode(double value, int max_code);

// `left` and `right` next to each other, tops aligned, on black; both of one depth.
Image SideBySide(const Image &left, const Image &right);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_IMAGE_H_
