// Picture adjustment (PA): an approximation of the hardware block, for previews only.
//
// What it models, on the colour entering the block, in HSV (hue in degrees, saturation and value
// in 0..1):
//   - global section (any bit of enable_flags 0xF0): hue + `hue` degrees; saturation times
//     (1 + `saturation` / 100); value times (1 + `value` / 100); then contrast about mid-grey,
//     value = 0.5 + (value - 0.5) * (1 + `contrast` / 100). The levels are thus percentages and
//     0 leaves the colour alone; a factor below 0 counts as 0.
//   - memory colours skin (0x200), sky (0x400) and foliage (0x800): each a region of hue and
//     saturation with a soft weight w in 0..1 (a raised cosine across the hue width, linear
//     ramps at the saturation bounds, so greys are never touched). Inside it: hue + w * `hue`,
//     saturation times (1 + w * `saturation` / 100), value times (1 + w * `value` / 100).
//     The weights are measured on the colour entering the block, before the global section, so
//     one adjustment cannot move a colour into or out of another's region.
// The result is clamped to 0..1 per channel.
//
// What it does not model: the hardware's own fixed-point hue/saturation/value representation
// and its lookup tables, the host fields of the record (region shapes, six-zone and curve
// tables, the `flags` words), luminance gating of the memory colours, and dithering. The region
// shapes below are picks made for the preview, centred on the ColorChecker skin, sky and foliage
// patches, not the hardware's.
#ifndef STC_TOOLS_PREVIEW_PA_STAGE_H_
#define STC_TOOLS_PREVIEW_PA_STAGE_H_

#include <cstdint>

#include "sc_post_blend_interface.h"
#include "tools/preview/image.h"

namespace stc_preview {

constexpr uint32_t kPaGlobalFlags = 0xF0;
constexpr uint32_t kPaSkinFlag = 0x200;
constexpr uint32_t kPaSkyFlag = 0x400;
constexpr uint32_t kPaFoliageFlag = 0x800;

struct Hsv {
    double h = 0;  // degrees, 0..360
    double s = 0;
    double v = 0;
};

Hsv ToHsv(Rgb in);
Rgb ToRgb(Hsv in);

// A memory colour's region: hue centre and half width in degrees, saturation bounds.
struct MemoryRegion {
    double hue_centre;
    double hue_half_width;
    double saturation_low;
    double saturation_high;
};

constexpr MemoryRegion kSkinRegion = {20, 25, 0.10, 0.70};
constexpr MemoryRegion kSkyRegion = {215, 35, 0.10, 1.00};
constexpr MemoryRegion kFoliageRegion = {95, 40, 0.10, 1.00};

// How much of a region's adjustment applies to a colour: 0 outside, 1 at its heart.
double RegionWeight(const MemoryRegion &region, Hsv colour);

Rgb ApplyPa(const snapdragoncolor::PaConfig &pa, Rgb in);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_PA_STAGE_H_
