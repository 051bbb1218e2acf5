// Per-channel 1D tables of codes, shared by the inverse-gamma and gamma stages: N entries span
// input 0..1, so input x sits at position x * (N - 1).
#ifndef STC_TOOLS_PREVIEW_CURVE_H_
#define STC_TOOLS_PREVIEW_CURVE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "tools/preview/image.h"

namespace stc_preview {

// The code at input x (clamped to 0..1), linearly interpolated between neighbouring entries.
double InterpolateCurve(const std::vector<uint32_t> &codes, double x);

// Each channel through its own curve, the result divided by max_code.
Rgb ApplyCurves(const std::vector<uint32_t> &r, const std::vector<uint32_t> &g,
                const std::vector<uint32_t> &b, double max_code, Rgb in);

// Why the three curves cannot be used (a channel with fewer than two entries), or "" when they
// can.
std::string CheckCurves(const std::vector<uint32_t> &r, const std::vector<uint32_t> &g,
                        const std::vector<uint32_t> &b);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_CURVE_H_
