// The whole pipeline on images: identity, single-block effects, stage order, skipped blocks.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "tests/preview/preview_records.h"
#include "tools/preview/pipeline.h"

namespace stc_preview_test {
namespace {

using namespace stc_preview;

// Every code of the depth appears on each channel, in differing combinations.
Image TestImage(int bit_depth) {
    const int max = MaxCode(bit_depth), width = 256;
    Image image = MakeImage(width, 3, bit_depth);
    for (int x = 0; x < width; ++x) {
        // At 16 bits, odd offsets keep the two bytes of a code apart.
        const auto c = static_cast<uint16_t>(
            std::min(max, x * max / (width - 1) + (bit_depth == 16 ? x % 200 : 0)));
        SetCodes(&image, x, 0, c, c, c);
        SetCodes(&image, x, 1, c, static_cast<uint16_t>(max - c), static_cast<uint16_t>(c / 3));
        SetCodes(&image, x, 2, static_cast<uint16_t>(c / 2), c, static_cast<uint16_t>(max - c));
    }
    return image;
}

Codes Halved(Codes in) {
    return {in[0] / 2, in[1] / 2, in[2] / 2};
}

struct IdentityBlocks {
    IgcCurves igc{true, Ramp(4096), Ramp(4096), Ramp(4096)};
    PccConfig pcc = IdentityPcc();
    PaConfig pa = MakePa(0xEF0);
    std::unique_ptr<GamutConfig> gamut = MakeGamut(Grid12(), [](Codes in) { return in; });
    GammaPostBlendConfig gc = MakeGc(Ramp(1024));
    PreviewBlocks All() const { return {&igc, &pcc, &pa, gamut.get(), &gc}; }
};

TEST(PreviewPipeline, IdentityBlocksLeaveTheImageUnchanged) {
    const IdentityBlocks blocks;
    const PreviewPipeline pipeline(blocks.All());
    EXPECT_TRUE(pipeline.refusals().empty());
    for (int depth : {8, 16}) {
        const Image in = TestImage(depth);
        const Image out = pipeline.Apply(in);
        EXPECT_EQ(out.bit_depth, depth);
        EXPECT_EQ(out.samples, in.samples) << depth << "-bit";
    }
}

TEST(PreviewPipeline, EachBlockAlone) {
    auto halving = MakeGamut(Grid12(), Halved);
    PccConfig swap;
    swap.enabled = true;
    swap.red.g = swap.green.r = swap.blue.b = 1;
    std::vector<uint32_t> inverted = Ramp(1024);
    std::reverse(inverted.begin(), inverted.end());
    const GammaPostBlendConfig invert = MakeGc(inverted);
    using Expected = int (*)(const Image &in, size_t sample);
    const struct {
        const char *what;
        PreviewBlocks blocks;
        std::array<int, 2> tolerance;  // codes at 8 and 16 bits
        Expected expected;
    } cases[] = {
        // The LUT's outputs are 12-bit codes rounded down by up to half a code, 8 codes at 16
        // bits; halving an odd code rounds either way.
        {"LUT halving",
         {nullptr, nullptr, nullptr, halving.get(), nullptr},
         {1, 9},
         [](const Image &in, size_t i) { return in.samples[i] / 2; }},
        {"PCC swapping red and green",
         {nullptr, &swap, nullptr, nullptr, nullptr},
         {0, 0},
         [](const Image &in, size_t i) {
             const size_t channel = i % 3;
             return int{in.samples[channel == 0 ? i + 1 : channel == 1 ? i - 1 : i]};
         }},
        {"gamma inverting",
         {nullptr, nullptr, nullptr, nullptr, &invert},
         {0, 0},
         [](const Image &in, size_t i) { return MaxCode(in.bit_depth) - in.samples[i]; }},
    };
    for (const auto &c : cases) {
        for (int depth : {8, 16}) {
            const Image in = TestImage(depth);
            const Image out = PreviewPipeline(c.blocks).Apply(in);
            for (size_t i = 0; i < in.samples.size(); ++i) {
                ASSERT_LE(std::abs(out.samples[i] - c.expected(in, i)), c.tolerance[depth / 16])
                    << c.what << ", " << depth << "-bit, sample " << i;
            }
        }
    }
}

// Each stage is an affine map of grey that no neighbour commutes with, so only the hardware
// order gives this value.
TEST(PreviewPipeline, StagesRunInHardwareOrder) {
    const IgcCurves igc{true, {0, 2048}, {0, 2048}, {0, 2048}};
    PccConfig pcc = IdentityPcc();
    pcc.red.c = pcc.green.c = pcc.blue.c = 0.1;
    PaConfig pa = MakePa(0xF0);
    pa.global.contrast = 50;
    auto lut = MakeGamut(GridOf(64, 1022), Halved);
    const GammaPostBlendConfig gc = MakeGc({100, 1023});

    double x = 0.4;
    x = x * 2048 / 4095;                  // IGC
    x = x + 0.1;                          // PCC
    x = 0.5 + (x - 0.5) * 1.5;            // PA contrast
    x = x / 2;                            // LUT
    x = (100 + x * (1023 - 100)) / 1023;  // GC
    const Rgb out = PreviewPipeline({&igc, &pcc, &pa, lut.get(), &gc}).Apply(Rgb{0.4, 0.4, 0.4});
    ExpectRgb(out, {x, x, x}, "IGC, PCC, PA, LUT, GC", 1e-12);
}

TEST(PreviewPipeline, DisabledBlocksAreSkipped) {
    IdentityBlocks off;
    off.igc = {false, {4095, 4095}, {4095, 4095}, {4095, 4095}};
    off.pcc = PccConfig();
    off.pa.enabled = false;
    off.pa.global.value = -100;
    off.gamut = MakeGamut(Grid12(), [](Codes) { return Codes{0, 0, 0}; });
    off.gamut->enabled = false;
    off.gc = MakeGc({0, 0});
    off.gc.enabled = false;
    const Image in = TestImage(8);
    EXPECT_EQ(PreviewPipeline(off.All()).Apply(in).samples, in.samples) << "all disabled";
    EXPECT_EQ(PreviewPipeline(PreviewBlocks{}).Apply(in).samples, in.samples) << "all absent";
}

TEST(PreviewPipeline, AnUnusableBlockIsReportedAndLeftOut) {
    IdentityBlocks blocks;
    blocks.igc.g.clear();
    blocks.gamut->entries[1].in_b = 0;
    blocks.gc.b = {9};
    blocks.pcc.red.c = 0.5;  // still applied
    const PreviewPipeline pipeline(blocks.All());
    const std::vector<std::string> expected = {
        "PostBlendIGC: curve g has 0 entries; at least 2 are needed",
        "PostBlendGamut: 3D LUT grid point (0, 0, 0) appears more than once",
        "PostBlendGC: curve b has 1 entries; at least 2 are needed"};
    EXPECT_EQ(pipeline.refusals(), expected);
    EXPECT_NEAR(pipeline.Apply(Rgb{0.2, 0.2, 0.2}).r, 0.7, 1e-12) << "PCC kept";
    blocks.gamut->enabled = false;
    EXPECT_EQ(PreviewPipeline(blocks.All()).refusals().size(), 2u)
        << "a disabled LUT is not checked";
}

}  // namespace
}  // namespace stc_preview_test
