// The one-dimensional stages (curves, PCC) and the picture-adjustment approximation.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/preview/preview_records.h"
#include "tools/preview/curve.h"
#include "tools/preview/gamma_stage.h"
#include "tools/preview/pa_stage.h"
#include "tools/preview/pcc_stage.h"

namespace stc_preview_test {
namespace {

using namespace stc_preview;
using snapdragoncolor::PccCoeff;

constexpr double kTight = 1e-12;

TEST(PreviewCurve, InterpolatesBetweenEntriesAndClampsTheInput) {
    const std::vector<uint32_t> curve = {0, 100, 400};  // positions 0, 1, 2
    const struct {
        double x, code;
    } cases[] = {{-0.1, 0}, {0.25, 50}, {0.5, 100}, {0.75, 250}, {1.0, 400}, {1.2, 400}};
    for (const auto &c : cases) {
        EXPECT_NEAR(InterpolateCurve(curve, c.x), c.code, kTight) << "x=" << c.x;
    }
}

TEST(PreviewCurve, GammaOf1280EntriesPlacesInputOnItsOwnLength) {
    std::vector<uint32_t> alternating(1280);
    for (size_t i = 0; i < alternating.size(); ++i) {
        alternating[i] = i % 2 ? 1023 : 0;
    }
    const GammaPostBlendConfig gc = MakeGc(alternating);
    EXPECT_NEAR(ApplyGamma(gc, {1.0 / 1279, 0, 0}).r, 1.0, kTight) << "x = 1/1279 is entry 1";
    EXPECT_NEAR(ApplyGamma(gc, {0.5 / 1279, 0, 0}).r, 0.5, kTight) << "half way to entry 1";
}

TEST(PreviewPcc, EachOfTheElevenTermsOnItsOwn) {
    const Rgb in = {0.5, 0.25, 0.75};
    const struct {
        double PccCoeff::*term;
        const char *name;
        double expected;
    } terms[] = {{&PccCoeff::c, "c", 1},          {&PccCoeff::r, "r", 0.5},
                 {&PccCoeff::g, "g", 0.25},       {&PccCoeff::b, "b", 0.75},
                 {&PccCoeff::rr, "rr", 0.25},     {&PccCoeff::gg, "gg", 0.0625},
                 {&PccCoeff::bb, "bb", 0.5625},   {&PccCoeff::rg, "rg", 0.125},
                 {&PccCoeff::gb, "gb", 0.1875},   {&PccCoeff::rb, "rb", 0.375},
                 {&PccCoeff::rgb, "rgb", 0.09375}};
    for (const auto &t : terms) {
        PccCoeff row;
        row.*t.term = 1;
        EXPECT_NEAR(EvaluatePcc(row, in), t.expected, kTight) << t.name;
    }
}

TEST(PreviewPcc, EachOutputFromItsOwnRowClamped) {
    PccConfig pcc;
    pcc.red.c = 2;     // above 1
    pcc.green.c = -1;  // below 0
    pcc.blue.c = 0.3;
    const Rgb out = ApplyPcc(pcc, {0.1, 0.2, 0.3});
    EXPECT_EQ(out.r, 1.0) << "red clamped from 2";
    EXPECT_EQ(out.g, 0.0) << "green clamped from -1";
    EXPECT_NEAR(out.b, 0.3, kTight) << "blue from the blue row";
}

TEST(PreviewPa, ZeroLevelsInEverySectionChangeNothing) {
    const PaConfig pa = MakePa(0xEF0);
    const Rgb colours[] = {
        {0, 0, 0},       {1, 1, 1},          {115 / 255.0, 82 / 255.0, 68 / 255.0},
        {0.3, 0.5, 0.8}, {0.35, 0.45, 0.25}, {0.9, 0.1, 0.6}};
    for (const Rgb &c : colours) {
        ExpectRgb(ApplyPa(pa, c), c, "zero levels");
    }
}

TEST(PreviewPa, GlobalLevelsAsPercentages) {
    using Global = snapdragoncolor::PaGlobalAdj;  // flags, hue, saturation, value, contrast
    const struct {
        const char *what;
        Global levels;
        Rgb in, expected;
    } cases[] = {
        {"hue +120", {0, 120, 0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        {"hue -120", {0, -120, 0, 0, 0}, {1, 0, 0}, {0, 0, 1}},
        {"saturation -50", {0, 0, -50, 0, 0}, {1, 0.5, 0.5}, {1, 0.75, 0.75}},
        {"saturation -200", {0, 0, -200, 0, 0}, {1, 0.5, 0.5}, {1, 1, 1}},
        {"value +100", {0, 0, 0, 100, 0}, {0.25, 0.25, 0.25}, {0.5, 0.5, 0.5}},
        {"contrast +100 above mid-grey", {0, 0, 0, 0, 100}, {0.75, 0.75, 0.75}, {1, 1, 1}},
        {"contrast +100 below mid-grey", {0, 0, 0, 0, 100}, {0.3, 0.3, 0.3}, {0.1, 0.1, 0.1}},
        {"value then contrast", {0, 0, 0, 50, 100}, {0.4, 0.4, 0.4}, {0.7, 0.7, 0.7}},
    };
    for (const auto &c : cases) {
        PaConfig pa = MakePa(0xF0);
        pa.global = c.levels;
        ExpectRgb(ApplyPa(pa, c.in), c.expected, c.what);
        pa.enable_flags = 0xE00;  // memory colours only: the global section is off
        ExpectRgb(ApplyPa(pa, c.in), c.in, std::string(c.what) + " without 0xF0");
    }
}

TEST(PreviewPa, RegionWeightIsSoftInHueAndSaturation) {
    const MemoryRegion region = {200, 40, 0.2, 0.6};  // saturation ramps 0.1..0.2 and 0.6..0.7
    const struct {
        double h, s, weight;
    } cases[] = {{200, 0.4, 1}, {220, 0.4, 0.5},  {180, 0.4, 0.5}, {240, 0.4, 0}, {200, 0.15, 0.5},
                 {200, 0.1, 0}, {200, 0.65, 0.5}, {200, 0.7, 0},   {200, 0, 0}};
    for (const auto &c : cases) {
        EXPECT_NEAR(RegionWeight(region, {c.h, c.s, 0.5}), c.weight, 1e-9)
            << "h=" << c.h << " s=" << c.s;
    }
    EXPECT_NEAR(RegionWeight({10, 40, 0.2, 0.6}, {350, 0.4, 0.5}), 0.5, 1e-9) << "across 0/360";
}

// A memory colour turns the heart of its own region grey at saturation -100, and only under its
// own flag.
TEST(PreviewPa, EachMemoryColourUnderItsOwnFlag) {
    const struct {
        const char *name;
        uint32_t flag;
        snapdragoncolor::PaMemColor PaConfig::*section;
        double hue;
    } sections[] = {{"skin", 0x200, &PaConfig::skin, kSkinRegion.hue_centre},
                    {"sky", 0x400, &PaConfig::sky, kSkyRegion.hue_centre},
                    {"foliage", 0x800, &PaConfig::foliage, kFoliageRegion.hue_centre}};
    for (const auto &s : sections) {
        for (const auto &at : sections) {
            const Rgb colour = ToRgb({at.hue, 0.4, 0.8});
            const std::string what = std::string(s.name) + " level at the " + at.name + " centre";
            PaConfig pa = MakePa(0xEF0 & ~s.flag);
            (pa.*s.section).saturation = -100;
            ExpectRgb(ApplyPa(pa, colour), colour, what + ", flag clear");
            pa.enable_flags |= s.flag;
            ExpectRgb(ApplyPa(pa, colour), &at == &s ? Rgb{0.8, 0.8, 0.8} : colour, what);
        }
    }
}

// A colour at the heart of the skin region keeps its skin adjustment after the global hue has
// turned it to sky blue.
TEST(PreviewPa, MemoryColourWeightsComeFromTheEnteringColour) {
    PaConfig pa = MakePa(0xF0 | 0x200);
    pa.global.hue = 180;
    pa.skin.saturation = -100;
    const Rgb skin_centre = ToRgb({kSkinRegion.hue_centre, 0.4, 0.8});
    ExpectRgb(ApplyPa(pa, skin_centre), {0.8, 0.8, 0.8}, "turned and desaturated");
}

}  // namespace
}  // namespace stc_preview_test
