// Test charts drawn in code: each an 8-bit sRGB image and the list of its patches, so a report can
// sample every patch at its centre.
#ifndef STC_TOOLS_PREVIEW_CHARTS_H_
#define STC_TOOLS_PREVIEW_CHARTS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/preview/image.h"

namespace stc_preview {

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct Patch {
    std::string name;
    Rect rect;
    std::array<uint8_t, 3> srgb;
};

struct Chart {
    std::string name;
    Image image;
    std::vector<Patch> patches;
};

// "patches", "ramps", "skin-sky-foliage".
const std::vector<std::string> &ChartNames();

// The chart of that name, or nothing for an unknown name.
std::optional<Chart> MakeChart(const std::string &name);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_CHARTS_H_
