#include "tools/preview/charts.h"

#include <algorithm>
#include <cmath>

namespace stc_preview {

namespace {

struct NamedColour {
    const char *name;
    std::array<uint8_t, 3> srgb;
};

// The 24 patches of the X-Rite ColorChecker Classic with their published sRGB values, row by row.
const NamedColour kColorChecker[] = {
    {"dark skin", {115, 82, 68}},     {"light skin", {194, 150, 130}},
    {"blue sky", {98, 122, 157}},     {"foliage", {87, 108, 67}},
    {"blue flower", {133, 128, 177}}, {"bluish green", {103, 189, 170}},
    {"orange", {214, 126, 44}},       {"purplish blue", {80, 91, 166}},
    {"moderate red", {193, 90, 99}},  {"purple", {94, 60, 108}},
    {"yellow green", {157, 188, 64}}, {"orange yellow", {224, 163, 46}},
    {"blue", {56, 61, 150}},          {"green", {70, 148, 73}},
    {"red", {175, 54, 60}},           {"yellow", {231, 199, 31}},
    {"magenta", {187, 86, 149}},      {"cyan", {8, 133, 161}},
    {"white 9.5", {243, 243, 242}},   {"neutral 8", {200, 200, 200}},
    {"neutral 6.5", {160, 160, 160}}, {"neutral 5", {122, 122, 121}},
    {"neutral 3.5", {85, 85, 85}},    {"black 2", {52, 52, 52}},
};

// Full-scale primaries and secondaries, and a grey scale in steps of 20 %.
const NamedColour kPrimariesAndGreys[] = {
    {"sRGB red", {255, 0, 0}},     {"sRGB green", {0, 255, 0}},     {"sRGB blue", {0, 0, 255}},
    {"sRGB cyan", {0, 255, 255}},  {"sRGB magenta", {255, 0, 255}}, {"sRGB yellow", {255, 255, 0}},
    {"grey 0", {0, 0, 0}},         {"grey 51", {51, 51, 51}},       {"grey 102", {102, 102, 102}},
    {"grey 153", {153, 153, 153}}, {"grey 204", {204, 204, 204}},   {"grey 255", {255, 255, 255}},
};

// Memory colours: the ColorChecker's own skin, sky and foliage patches, then representative
// picks for a wider range of each.
const NamedColour kMemoryColours[] = {
    {"skin dark (ColorChecker)", {115, 82, 68}},
    {"skin light (ColorChecker)", {194, 150, 130}},
    {"skin pale", {241, 194, 167}},
    {"skin medium", {198, 134, 94}},
    {"skin tan", {161, 102, 69}},
    {"skin deep", {89, 55, 41}},
    {"sky (ColorChecker)", {98, 122, 157}},
    {"sky clear", {86, 156, 222}},
    {"sky pale", {170, 200, 232}},
    {"sky deep", {40, 90, 170}},
    {"sky hazy", {150, 170, 190}},
    {"sky dusk", {70, 80, 140}},
    {"foliage (ColorChecker)", {87, 108, 67}},
    {"foliage yellow green (ColorChecker)", {157, 188, 64}},
    {"foliage fresh", {110, 170, 60}},
    {"foliage dark", {40, 70, 35}},
    {"foliage grass", {90, 140, 50}},
    {"foliage olive", {120, 120, 60}},
};

constexpr int kPatchSize = 64;
constexpr int kGap = 8;
constexpr int kColumns = 6;
constexpr uint8_t kBackground = 32;

constexpr int kRampSteps = 17;
constexpr int kRampStepWidth = 24;
constexpr int kRampHeight = 48;

void Fill(Image *image, const Rect &rect, const std::array<uint8_t, 3> &srgb) {
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        for (int x = rect.x; x < rect.x + rect.width; ++x) {
            SetCodes(image, x, y, srgb[0], srgb[1], srgb[2]);
        }
    }
}

void FillBackground(Image *image) {
    std::fill(image->samples.begin(), image->samples.end(), kBackground);
}

// Patches in rows of kColumns, separated and framed by kGap of background.
Chart GridChart(const std::string &name, const std::vector<NamedColour> &colours) {
    const int count = static_cast<int>(colours.size());
    const int rows = (count + kColumns - 1) / kColumns;
    Chart chart;
    chart.name = name;
    chart.image =
        MakeImage(kGap + kColumns * (kPatchSize + kGap), kGap + rows * (kPatchSize + kGap), 8);
    FillBackground(&chart.image);
    for (int i = 0; i < count; ++i) {
        const Rect rect = {kGap + (i % kColumns) * (kPatchSize + kGap),
                           kGap + (i / kColumns) * (kPatchSize + kGap), kPatchSize, kPatchSize};
        chart.patches.push_back({colours[i].name, rect, colours[i].srgb});
        Fill(&chart.image, rect, colours[i].srgb);
    }
    return chart;
}

Chart PatchesChart() {
    std::vector<NamedColour> all(std::begin(kColorChecker), std::end(kColorChecker));
    all.insert(all.end(), std::begin(kPrimariesAndGreys), std::end(kPrimariesAndGreys));
    return GridChart("patches", all);
}

// Stepped ramps from black to full scale, one row per hue; each step is a patch.
Chart RampsChart() {
    const struct {
        const char *name;
        std::array<int, 3> mask;
    } ramps[] = {{"grey", {1, 1, 1}},  {"red", {1, 0, 0}},  {"green", {0, 1, 0}},
                 {"blue", {0, 0, 1}},  {"cyan", {0, 1, 1}}, {"magenta", {1, 0, 1}},
                 {"yellow", {1, 1, 0}}};
    const int rows = static_cast<int>(std::size(ramps));
    Chart chart;
    chart.name = "ramps";
    chart.image =
        MakeImage(2 * kGap + kRampSteps * kRampStepWidth, kGap + rows * (kRampHeight + kGap), 8);
    FillBackground(&chart.image);
    for (int row = 0; row < rows; ++row) {
        for (int step = 0; step < kRampSteps; ++step) {
            const auto level = static_cast<uint8_t>(std::lround(step * 255.0 / (kRampSteps - 1)));
            const std::array<uint8_t, 3> srgb = {static_cast<uint8_t>(level * ramps[row].mask[0]),
                                                 static_cast<uint8_t>(level * ramps[row].mask[1]),
                                                 static_cast<uint8_t>(level * ramps[row].mask[2])};
            const Rect rect = {kGap + step * kRampStepWidth, kGap + row * (kRampHeight + kGap),
                               kRampStepWidth, kRampHeight};
            chart.patches.push_back(
                {std::string(ramps[row].name) + " " + std::to_string(level), rect, srgb});
            Fill(&chart.image, rect, srgb);
        }
    }
    return chart;
}

}  // namespace

const std::vector<std::string> &ChartNames() {
    static const std::vector<std::string> names = {"patches", "ramps", "skin-sky-foliage"};
    return names;
}

std::optional<Chart> MakeChart(const std::string &name) {
    if (name == "patches") {
        return PatchesChart();
    }
    if (name == "ramps") {
        return RampsChart();
    }
    if (name == "skin-sky-foliage") {
        return GridChart("skin-sky-foliage",
                         {std::begin(kMemoryColours), std::end(kMemoryColours)});
    }
    return std::nullopt;
}

}  // namespace stc_preview
