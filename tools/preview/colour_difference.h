// sRGB to CIE Lab through Little CMS, and the CIEDE2000 colour difference.
#ifndef STC_TOOLS_PREVIEW_COLOUR_DIFFERENCE_H_
#define STC_TOOLS_PREVIEW_COLOUR_DIFFERENCE_H_

#include "tools/preview/image.h"

namespace stc_preview {

struct Lab {
    double l = 0;
    double a = 0;
    double b = 0;
};

// Lab relative to D50, the ICC connection space's white, as Little CMS's sRGB profile delivers it
// (relative colorimetric, so sRGB white is L 100, a 0, b 0).
class SrgbToLab {
  public:
    SrgbToLab();  // throws std::runtime_error when Little CMS cannot build the transform
    ~SrgbToLab();
    SrgbToLab(const SrgbToLab &) = delete;
    SrgbToLab &operator=(const SrgbToLab &) = delete;

    // `srgb` is the encoded sRGB colour, each channel in 0..1.
    Lab Convert(Rgb srgb) const;

  private:
    void *transform_;  // cmsHTRANSFORM, kept out of this header
};

// CIEDE2000 with kL = kC = kH = 1.
double DeltaE2000(const Lab &first, const Lab &second);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_COLOUR_DIFFERENCE_H_
