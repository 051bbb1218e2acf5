// The 3D LUT stage: indexing by input columns, bit-depth inference, tetrahedral interpolation.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "tests/preview/preview_records.h"
#include "tools/preview/lut3d_stage.h"

namespace stc_preview_test {
namespace {

using snapdragoncolor::kGamutEntries;
using stc_preview::Lut3d;

// A LUT bent differently per channel, so no two neighbouring vertices agree.
Codes Bent(Codes in) {
    return {(in[0] * 7 + in[1] * 3) % 4096, (in[1] * in[1] / 4095 + in[2]) % 4096,
            4095 - in[2] / 2 - in[0] / 5};
}

Lut3d Build(const GamutConfig &gamut) {
    std::string error;
    std::optional<Lut3d> lut = Lut3d::FromConfig(gamut, &error);
    if (!lut) {
        throw std::runtime_error("refused: " + error);  // fails the test that built it
    }
    return *lut;
}

TEST(PreviewLut3d, ExactOnEveryGridPointInAnyEntryOrder) {
    const Grid grid = Grid12();
    auto gamut = MakeGamut(grid, Bent);
    for (const char *order : {"red slowest", "reversed and rotated"}) {
        const Lut3d lut = Build(*gamut);
        for (size_t i = 0; i < kGamutEntries; ++i) {
            const Codes in = {grid[i / 289], grid[i / 17 % 17], grid[i % 17]}, out = Bent(in);
            const Rgb got = lut.Apply({in[0] / 4095.0, in[1] / 4095.0, in[2] / 4095.0});
            ASSERT_NEAR(got.r * 4095, out[0], 1e-9) << order << ", point " << i;
            ASSERT_NEAR(got.g * 4095, out[1], 1e-9) << order << ", point " << i;
            ASSERT_NEAR(got.b * 4095, out[2], 1e-9) << order << ", point " << i;
        }
        std::reverse(gamut->entries, gamut->entries + kGamutEntries);
        std::rotate(gamut->entries, gamut->entries + 1000, gamut->entries + kGamutEntries);
    }
}

// Fractions (0.5, 0.25, 0) in the first cell lie in the tetrahedron c000, c100, c110, c111 with
// weights 0.5, 0.25, 0.25, 0; trilinear weighting would give c110 0.125.
TEST(PreviewLut3d, InterpolatesInsideTheTetrahedronOfTheSortedFractions) {
    auto gamut = MakeGamut(Grid12(), [](Codes in) {
        return Codes{in[0] == 256 && in[1] == 256 && in[2] == 0 ? 1000u : 0u,
                     in[0] == 256 && in[1] == 0 && in[2] == 0 ? 1000u : 0u,
                     in[0] == 0 && in[1] == 256 && in[2] == 0 ? 1000u : 0u};
    });
    // Red: c110 weighs 0.25; green: c100 weighs 0.25; blue: c010 is no vertex of it.
    ExpectRgb(Build(*gamut).Apply({128 / 4095.0, 64 / 4095.0, 0}), {250 / 4095.0, 250 / 4095.0, 0},
              "fractions (0.5, 0.25, 0)", 1e-9 / 4095);
}

TEST(PreviewLut3d, LinearAlongTheGreyAxis) {
    const Grid grid = Grid12();
    const Lut3d lut = Build(*MakeGamut(grid, Bent));
    const double t = 0.3;
    const double x = (grid[3] + t * (grid[4] - grid[3])) / 4095;
    const Codes low = Bent({grid[3], grid[3], grid[3]}), high = Bent({grid[4], grid[4], grid[4]});
    auto between = [&](int c) { return ((1 - t) * low[c] + t * high[c]) / 4095; };
    ExpectRgb(lut.Apply({x, x, x}), {between(0), between(1), between(2)}, "grey 0.3 into cell 3",
              1e-9 / 4095);
}

TEST(PreviewLut3d, BitDepthFromTheLargestInput) {
    const struct {
        uint32_t last;
        int max_code;
    } cases[] = {{1023, 1023}, {1024, 4095}, {4095, 4095}};
    for (const auto &c : cases) {
        const Lut3d lut = Build(*MakeGamut(GridOf(60, c.last), [](Codes in) { return in; }));
        EXPECT_EQ(lut.max_code(), c.max_code) << "largest input " << c.last;
        EXPECT_DOUBLE_EQ(lut.grid(2)[16], c.last / double(c.max_code)) << "largest " << c.last;
        EXPECT_DOUBLE_EQ(lut.grid(0)[1], 60 / double(c.max_code)) << "largest " << c.last;
    }
}

TEST(PreviewLut3d, RefusesATableThatIsNotOneFullGrid) {
    const struct {
        const char *what;
        void (*spoil)(GamutConfig &);
        const char *error;
    } cases[] = {
        {"num short", [](GamutConfig &g) { g.num = 4912; },
         "3D LUT has 4912 entries in use; a full 17-point grid needs 4913"},
        {"an eighteenth red value", [](GamutConfig &g) { g.entries[0].in_r = 5; },
         "3D LUT input red takes 18 distinct values; a 17-point grid needs 17"},
        {"a green value missing",
         [](GamutConfig &g) {
             for (auto &e : g.entries) {
                 e.in_g = e.in_g == 768 ? 1024 : e.in_g;
             }
         },
         "3D LUT input green takes 16 distinct values; a 17-point grid needs 17"},
        {"a point twice", [](GamutConfig &g) { g.entries[1].in_b = 0; },
         "3D LUT grid point (0, 0, 0) appears more than once"},
    };
    for (const auto &c : cases) {
        auto gamut = MakeGamut(Grid12(), [](Codes in) { return in; });
        c.spoil(*gamut);
        std::string error;
        EXPECT_FALSE(Lut3d::FromConfig(*gamut, &error)) << c.what;
        EXPECT_EQ(error, c.error) << c.what;
    }
}

}  // namespace
}  // namespace stc_preview_test
