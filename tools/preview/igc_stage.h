// Inverse gamma (IGC): the first block of the post-blend pipeline.
#ifndef STC_TOOLS_PREVIEW_IGC_STAGE_H_
#define STC_TOOLS_PREVIEW_IGC_STAGE_H_

#include <cstdint>
#include <vector>

#include "tools/preview/image.h"

namespace stc_preview {

constexpr double kIgcMaxCode = 4095;

// The host's inverse-gamma record as the preview needs it: three curves of N 12-bit codes
// (0..4095) spanning input 0..1.
struct IgcCurves {
    bool enabled = false;
    std::vector<uint32_t> r;
    std::vector<uint32_t> g;
    std::vector<uint32_t> b;
};

Rgb ApplyIgc(const IgcCurves &igc, Rgb in);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_IGC_STAGE_H_
