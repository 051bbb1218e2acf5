// Host records for the preview tests, each built from a formula written out here.
#ifndef STC_TESTS_PREVIEW_PREVIEW_RECORDS_H_
#define STC_TESTS_PREVIEW_PREVIEW_RECORDS_H_

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/preview/image.h"

namespace stc_preview_test {

using snapdragoncolor::GammaPostBlendConfig;
using snapdragoncolor::GamutConfig;
using snapdragoncolor::PaConfig;
using snapdragoncolor::PccConfig;
using stc_preview::Rgb;

using Grid = std::array<uint32_t, 17>;
using Codes = std::array<uint32_t, 3>;

// Sixteen even steps from 0, then `last`.
inline Grid GridOf(uint32_t step, uint32_t last) {
    Grid grid;
    for (uint32_t i = 0; i < 17; ++i) {
        grid[i] = i < 16 ? i * step : last;
    }
    return grid;
}

// The 12-bit grid of the sample device: steps of 256, the last point 4095.
inline Grid Grid12() {
    return GridOf(256, 4095);
}

// Entries in red-slowest order, each mapped by `out`; the caller may reorder them.
inline std::unique_ptr<GamutConfig> MakeGamut(const Grid &grid,
                                              const std::function<Codes(Codes)> &out) {
    auto gamut = std::make_unique<GamutConfig>();
    gamut->enabled = true;
    gamut->num = snapdragoncolor::kGamutEntries;
    for (size_t i = 0; i < snapdragoncolor::kGamutEntries; ++i) {
        const Codes in = {grid[i / 289], grid[i / 17 % 17], grid[i % 17]};
        const Codes o = out(in);
        gamut->entries[i] = {in[0], in[1], in[2], o[0], o[1], o[2]};
    }
    return gamut;
}

inline PccConfig IdentityPcc() {
    PccConfig pcc;
    pcc.enabled = true;
    pcc.red.r = pcc.green.g = pcc.blue.b = 1;
    return pcc;
}

inline PaConfig MakePa(uint32_t enable_flags) {
    PaConfig pa;
    pa.enabled = true;
    pa.enable_flags = enable_flags;
    return pa;
}

// One curve for all three channels.
inline GammaPostBlendConfig MakeGc(const std::vector<uint32_t> &curve) {
    GammaPostBlendConfig gc;
    gc.enabled = true;
    gc.r = gc.g = gc.b = curve;
    return gc;
}

// Codes 0, 1, ..., n - 1.
inline std::vector<uint32_t> Ramp(uint32_t n) {
    std::vector<uint32_t> codes(n);
    std::iota(codes.begin(), codes.end(), 0u);
    return codes;
}

inline void ExpectRgb(Rgb actual, Rgb expected, const std::string &what, double tolerance = 1e-9) {
    EXPECT_NEAR(actual.r, expected.r, tolerance) << what << ": red";
    EXPECT_NEAR(actual.g, expected.g, tolerance) << what << ": green";
    EXPECT_NEAR(actual.b, expected.b, tolerance) << what << ": blue";
}

}  // namespace stc_preview_test

#endif  // STC_TESTS_PREVIEW_PREVIEW_RECORDS_H_
