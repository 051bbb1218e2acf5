// Colour difference, the before/after report and the built-in charts.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "tools/preview/charts.h"
#include "tools/preview/colour_difference.h"
#include "tools/preview/report.h"

namespace stc_preview_test {
namespace {

using namespace stc_preview;

TEST(PreviewColour, Ciede2000OnThePublishedTestPairs) {
    std::ifstream csv(STC_TEST_DATA_DIR "/ciede2000_pairs.csv");
    ASSERT_TRUE(csv) << "test data missing";
    std::string line;
    int pairs = 0;
    while (std::getline(csv, line)) {
        if (line.empty() || line[0] == '#' || line[0] == 'L') {
            continue;
        }
        std::replace(line.begin(), line.end(), ',', ' ');
        std::istringstream fields(line);
        Lab first, second;
        double expected = 0;
        fields >> first.l >> first.a >> first.b >> second.l >> second.a >> second.b >> expected;
        ++pairs;
        EXPECT_NEAR(DeltaE2000(first, second), expected, 5e-5) << "pair " << pairs;
    }
    EXPECT_EQ(pairs, 34);
}

// Lightness of an sRGB grey, worked from the sRGB decoding and the CIE L* formula.
double GreyLightness(double encoded) {
    const double y =
        encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
    return y > 216.0 / 24389 ? 116 * std::cbrt(y) - 16 : 24389.0 / 27 * y;
}

TEST(PreviewColour, SrgbGreysToLab) {
    const SrgbToLab to_lab;
    for (double level : {0.0, 0.02, 0.2, 119 / 255.0, 0.8, 1.0}) {
        const Lab lab = to_lab.Convert({level, level, level});
        EXPECT_NEAR(lab.l, GreyLightness(level), 0.005) << "L of grey " << level;
        EXPECT_NEAR(lab.a, 0, 0.005) << "a of grey " << level;
        EXPECT_NEAR(lab.b, 0, 0.005) << "b of grey " << level;
    }
}

TEST(PreviewReport, SummaryOfHandMadeNumbers) {
    const struct {
        std::vector<double> values;
        double mean, p95, max;
    } cases[] = {{{7, 3, 10, 1, 5, 2, 9, 4, 8, 6}, 5.5, 9.55, 10},  // rank 8.55
                 {{0, 10}, 5, 9.5, 10},
                 {{3}, 3, 3, 3},
                 {{}, 0, 0, 0}};
    for (const auto &c : cases) {
        const DeltaEStats stats = SummariseDeltaE(c.values);
        EXPECT_EQ(stats.count, c.values.size());
        EXPECT_NEAR(stats.mean, c.mean, 1e-12) << c.values.size() << " values";
        EXPECT_NEAR(stats.p95, c.p95, 1e-12) << c.values.size() << " values";
        EXPECT_NEAR(stats.max, c.max, 1e-12) << c.values.size() << " values";
    }
}

// One grey patch turned lighter: for greys CIEDE2000 is the lightness difference over S_L.
TEST(PreviewReport, ChartReportOfOneChangedPatch) {
    const Chart chart = *MakeChart("patches");
    Image after = chart.image;
    const Patch &grey = *std::find_if(chart.patches.begin(), chart.patches.end(),
                                      [](const Patch &p) { return p.name == "grey 102"; });
    for (int y = grey.rect.y; y < grey.rect.y + grey.rect.height; ++y) {
        for (int x = grey.rect.x; x < grey.rect.x + grey.rect.width; ++x) {
            SetCodes(&after, x, y, 153, 153, 153);
        }
    }
    const double l1 = GreyLightness(102 / 255.0), l2 = GreyLightness(153 / 255.0);
    const double mean_l = (l1 + l2) / 2;
    const double s_l =
        1 + 0.015 * std::pow(mean_l - 50, 2) / std::sqrt(20 + std::pow(mean_l - 50, 2));
    const double expected = (l2 - l1) / s_l;

    const nlohmann::json report = ReportToJson(ChartReport(chart, after));
    const nlohmann::json &summary = report["delta_e"];
    EXPECT_EQ(summary["count"], 36);
    EXPECT_NEAR(summary["max"].get<double>(), expected, 0.01) << "the grey's difference";
    EXPECT_NEAR(summary["mean"].get<double>(), expected / 36, 0.001) << "one of 36 differs";
    const nlohmann::json &first = report["samples"][0];
    EXPECT_EQ(first["name"], "dark skin");
    EXPECT_EQ(first["before"]["rgb"], nlohmann::json({115, 82, 68})) << "numbers, not text";
    EXPECT_EQ(first["delta_e"], 0.0);
}

TEST(PreviewReport, GridSamplesAtCellCentres) {
    const Image image = MakeImage(10, 10, 8);
    const Report report = GridReport(image, image, 2);
    const std::pair<int, int> expected[] = {{2, 2}, {7, 2}, {2, 7}, {7, 7}};
    ASSERT_EQ(report.samples.size(), 4u);
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(report.samples[i].x, expected[i].first) << "sample " << i;
        EXPECT_EQ(report.samples[i].y, expected[i].second) << "sample " << i;
    }
    EXPECT_THROW(GridReport(image, MakeImage(10, 9, 8), 2), std::invalid_argument);
}

TEST(PreviewCharts, EveryPatchIsDrawnInItsColourUnderAUniqueName) {
    const struct {
        const char *name;
        size_t patches;
    } charts[] = {{"patches", 36}, {"ramps", 119}, {"skin-sky-foliage", 18}};
    for (const auto &c : charts) {
        const Chart chart = *MakeChart(c.name);
        EXPECT_EQ(chart.patches.size(), c.patches) << c.name;
        std::set<std::string> names;
        for (const Patch &p : chart.patches) {
            EXPECT_TRUE(names.insert(p.name).second) << c.name << ": " << p.name << " twice";
            const Rect &r = p.rect;
            for (auto [x, y] : {std::pair{r.x, r.y},
                                {r.x + r.width - 1, r.y + r.height - 1},
                                {r.x + r.width / 2, r.y + r.height / 2}}) {
                const std::array<uint16_t, 3> codes = CodesAt(chart.image, x, y);
                EXPECT_EQ(codes, (std::array<uint16_t, 3>{p.srgb[0], p.srgb[1], p.srgb[2]}))
                    << c.name << ": " << p.name << " at " << x << "," << y;
            }
        }
    }
    const Chart ramps = *MakeChart("ramps");
    EXPECT_EQ(ramps.patches[8].name, "grey 128") << "step 8 of 16 is 127.5, rounded up";
    EXPECT_FALSE(MakeChart("colour"));
}

}  // namespace
}  // namespace stc_preview_test
