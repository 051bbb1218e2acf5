#include "tools/preview/colour_difference.h"

#include <lcms2.h>

#include <stdexcept>

namespace stc_preview {

SrgbToLab::SrgbToLab() {
    cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    transform_ = srgb && lab ? cmsCreateTransform(srgb, TYPE_RGB_DBL, lab, TYPE_Lab_DBL,
                                                  INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE)
                             : nullptr;
    if (srgb) {
        cmsCloseProfile(srgb);
    }
    if (lab) {
        cmsCloseProfile(lab);
    }
    if (!transform_) {
        throw std::runtime_error("Little CMS could not build the sRGB to Lab transform");
    }
}

SrgbToLab::~SrgbToLab() {
    cmsDeleteTransform(static_cast<cmsHTRANSFORM>(transform_));
}

Lab SrgbToLab::Convert(Rgb srgb) const {
    const double in[3] = {srgb.r, srgb.g, srgb.b};
    cmsCIELab out = {};
    cmsDoTransform(static_cast<cmsHTRANSFORM>(transform_), in, &out, 1);
    return {out.L, out.a, out.b};
}

double DeltaE2000(const Lab &first, const Lab &second) {
    const cmsCIELab a = {first.l, first.a, first.b};
    const cmsCIELab b = {second.l, second.a, second.b};
    return cmsCIE2000DeltaE(&a, &b, 1.0, 1.0, 1.0);
}

}  // namespace stc_preview
