#include "tools/preview/igc_stage.h"

#include "tools/preview/curve.h"

namespace stc_preview {

Rgb ApplyIgc(const IgcCurves &igc, Rgb in) {
    return ApplyCurves(igc.r, igc.g, igc.b, kIgcMaxCode, in);
}

}  // namespace stc_preview
