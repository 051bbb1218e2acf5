// PNG files in and out through libpng.
#ifndef STC_TOOLS_PREVIEW_PNG_IO_H_
#define STC_TOOLS_PREVIEW_PNG_IO_H_

#include <stdexcept>
#include <string>

#include "tools/preview/image.h"

namespace stc_preview {

// Neither side of an image may exceed this, so that a 16-bit image and its working copies stay
// within a few GiB.
constexpr int kMaxImageSide = 8192;

// The message names the file and what went wrong, ready to show to a user.
class PngError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads an 8- or 16-bit PNG as RGB of the same depth: grey and palette images become RGB, images
// below 8 bits become 8-bit, alpha is dropped.
Image ReadPng(const std::string &path);

// Writes an RGB PNG of the image's depth.
void WritePng(const std::string &path, const Image &image);

// Writes `input` and `output` next to each other (SideBySide) as one PNG.
void WriteSideBySidePng(const std::string &path, const Image &input, const Image &output);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_PNG_IO_H_
