// Gamma curve (GC): the last block of the post-blend pipeline.
#ifndef STC_TOOLS_PREVIEW_GAMMA_STAGE_H_
#define STC_TOOLS_PREVIEW_GAMMA_STAGE_H_

#include "sc_post_blend_interface.h"
#include "tools/preview/image.h"

namespace stc_preview {

// The curves hold 10-bit codes whatever their length (1024 and 1280 entries are both seen).
constexpr double kGammaMaxCode = 1023;

// Dither is not modelled.
Rgb ApplyGamma(const snapdragoncolor::GammaPostBlendConfig &gc, Rgb in);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_GAMMA_STAGE_H_
