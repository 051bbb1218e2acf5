#include "tools/preview/gamma_stage.h"

#include "tools/preview/curve.h"

namespace stc_preview {

Rgb ApplyGamma(const snapdragoncolor::GammaPostBlendConfig &gc, Rgb in) {
    return ApplyCurves(gc.r, gc.g, gc.b, kGammaMaxCode, in);
}

}  // namespace stc_preview
