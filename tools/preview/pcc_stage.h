// Polynomial colour correction (PCC).
#ifndef STC_TOOLS_PREVIEW_PCC_STAGE_H_
#define STC_TOOLS_PREVIEW_PCC_STAGE_H_

#include "sc_post_blend_interface.h"
#include "tools/preview/image.h"

namespace stc_preview {

// One output channel: c + r·R + g·G + b·B + rr·R² + gg·G² + bb·B² + rg·R·G + gb·G·B + rb·R·B +
// rgb·R·G·B on normalised values, not clamped.
double EvaluatePcc(const snapdragoncolor::PccCoeff &row, Rgb in);

// Each output channel from its own row, clamped to 0..1.
Rgb ApplyPcc(const snapdragoncolor::PccConfig &pcc, Rgb in);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_PCC_STAGE_H_
