#include "tools/preview/pcc_stage.h"

#include <algorithm>

namespace stc_preview {

double EvaluatePcc(const snapdragoncolor::PccCoeff &row, Rgb in) {
    const double r = in.r, g = in.g, b = in.b;
    return row.c + row.r * r + row.g * g + row.b * b + row.rr * r * r + row.gg * g * g +
           row.bb * b * b + row.rg * r * g + row.gb * g * b + row.rb * r * b + row.rgb * r * g * b;
}

Rgb ApplyPcc(const snapdragoncolor::PccConfig &pcc, Rgb in) {
    return {std::clamp(EvaluatePcc(pcc.red, in), 0.0, 1.0),
            std::clamp(EvaluatePcc(pcc.green, in), 0.0, 1.0),
            std::clamp(EvaluatePcc(pcc.blue, in), 0.0, 1.0)};
}

}  // namespace stc_preview
