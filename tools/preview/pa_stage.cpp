#include "tools/preview/pa_stage.h"

#include <algorithm>
#include <cmath>

namespace stc_preview {

namespace {

using snapdragoncolor::PaConfig;
using snapdragoncolor::PaMemColor;

// Width of the ramp at each saturation bound of a region.
constexpr double kSaturationFeather = 0.10;
const double kPi = std::acos(-1.0);

struct MemorySection {
    uint32_t flag;
    PaMemColor PaConfig::*levels;
    MemoryRegion region;
};

const MemorySection kMemorySections[] = {
    {kPaSkinFlag, &PaConfig::skin, kSkinRegion},
    {kPaSkyFlag, &PaConfig::sky, kSkyRegion},
    {kPaFoliageFlag, &PaConfig::foliage, kFoliageRegion},
};

double WrapHue(double degrees) {
    const double wrapped = std::fmod(degrees, 360.0);
    return wrapped < 0 ? wrapped + 360.0 : wrapped;
}

// A percentage level as a factor: 0 -> 1, 100 -> 2, -100 and below -> 0.
double PercentFactor(double level) {
    return std::max(0.0, 1.0 + level / 100.0);
}

double Ramp(double x, double from, double to) {
    return std::clamp((x - from) / (to - from), 0.0, 1.0);
}

Hsv AdjustGlobal(const snapdragoncolor::PaGlobalAdj &global, Hsv c) {
    c.h = WrapHue(c.h + global.hue);
    c.s = std::min(1.0, c.s * PercentFactor(global.saturation));
    c.v *= PercentFactor(global.value);
    c.v = std::max(0.0, 0.5 + (c.v - 0.5) * PercentFactor(global.contrast));
    return c;
}

Hsv AdjustMemoryColour(const PaMemColor &levels, double weight, Hsv c) {
    c.h = WrapHue(c.h + weight * levels.hue);
    c.s = std::min(1.0, c.s * PercentFactor(weight * levels.saturation));
    c.v *= PercentFactor(weight * levels.value);
    return c;
}

}  // namespace

Hsv ToHsv(Rgb in) {
    const double max = std::max({in.r, in.g, in.b});
    const double delta = max - std::min({in.r, in.g, in.b});
    Hsv out;
    out.v = max;
    out.s = max > 0 ? delta / max : 0;
    if (delta <= 0) {
        return out;
    }
    if (max == in.r) {
        out.h = WrapHue(60 * ((in.g - in.b) / delta));
    } else if (max == in.g) {
        out.h = 60 * ((in.b - in.r) / delta + 2);
    } else {
        out.h = 60 * ((in.r - in.g) / delta + 4);
    }
    return out;
}

Rgb ToRgb(Hsv in) {
    // Per 60-degree sector, which of the largest, middle and smallest part each channel takes.
    static const int kSectorParts[6][3] = {{0, 1, 2}, {1, 0, 2}, {2, 0, 1},
                                           {2, 1, 0}, {1, 2, 0}, {0, 2, 1}};
    const double chroma = in.v * in.s;
    const double sector = WrapHue(in.h) / 60;
    const double smallest = in.v - chroma;
    const double parts[3] = {in.v, smallest + chroma * (1 - std::fabs(std::fmod(sector, 2.0) - 1)),
                             smallest};
    const int *take = kSectorParts[std::min(static_cast<int>(sector), 5)];
    return {parts[take[0]], parts[take[1]], parts[take[2]]};
}

double RegionWeight(const MemoryRegion &region, Hsv colour) {
    const double distance = std::fabs(WrapHue(colour.h - region.hue_centre + 180) - 180);
    if (distance >= region.hue_half_width) {
        return 0;
    }
    const double hue_weight = 0.5 * (1 + std::cos(kPi * distance / region.hue_half_width));
    const double low = region.saturation_low, high = region.saturation_high;
    const double saturation_weight = Ramp(colour.s, low - kSaturationFeather, low) *
                                     (1 - Ramp(colour.s, high, high + kSaturationFeather));
    return hue_weight * saturation_weight;
}

Rgb ApplyPa(const PaConfig &pa, Rgb in) {
    const Hsv entering = ToHsv(in);
    Hsv c = entering;
    if (pa.enable_flags & kPaGlobalFlags) {
        c = AdjustGlobal(pa.global, c);
    }
    for (const MemorySection &section : kMemorySections) {
        if (pa.enable_flags & section.flag) {
            c = AdjustMemoryColour(pa.*section.levels, RegionWeight(section.region, entering), c);
        }
    }
    const Rgb out = ToRgb(c);
    return {std::clamp(out.r, 0.0, 1.0), std::clamp(out.g, 0.0, 1.0), std::clamp(out.b, 0.0, 1.0)};
}

}  // namespace stc_preview
