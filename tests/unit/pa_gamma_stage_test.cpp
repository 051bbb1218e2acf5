#include <android/log.h>

#include "picture/scene_items.h"
#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using stc_test::EmptyEntry;

class PaGammaStageTest : public PipelineTest {
  protected:
    void RunUpdate(uint32_t scene) {
        A::curr_scene_id_(plugin_) = scene;
        A::pq_update_pending_(plugin_) = true;
        Run(&input_);
    }
    ModeRenderInputParams input_ = stc_test::ModeInput(kGamutSrgb, 2, 0);
};

TEST_F(PaGammaStageTest, PaStageFillsEveryExactPaEntryAndKeepsTheEmptyMark) {
    auto host = std::make_shared<PaConfig>();
    out_.payload = {EmptyEntry(kPbPa), EmptyEntry(kPbPaDither), stc_test::Entry(kPbPa, host)};
    RunUpdate(kSceneSaturation);
    ASSERT_EQ(out_.payload.size(), 3u);
    EXPECT_EQ(At<PaConfig>(0)->version, 15752u);
    EXPECT_FALSE(At<PaConfig>(0)->enabled);
    EXPECT_EQ(out_.payload[1].hw_payload, nullptr);
    EXPECT_EQ(At<PaConfig>(2), host.get());
    EXPECT_EQ(Lines("ZuvaColorRenderIntentPA: ##empty_payload=1, "), 2u);
    EXPECT_EQ(Lines("ZuvaColorRenderIntentPA: ==override_payload: "), 2u);
}

TEST_F(PaGammaStageTest, GammaStageSwitchesOnEveryGammaBlockAndKeepsCurves) {
    auto host = std::make_shared<GammaPostBlendConfig>();
    host->r.assign(1024, 0xa);
    host->g.assign(1024, 0xb);
    host->b.assign(1024, 0x1234c);
    host->dither_en = true;
    host->dither_strength = 3;
    const GammaPostBlendConfig before = *host;
    out_.payload = {EmptyEntry(kPbGC), EmptyEntry(kPbMixerGc), stc_test::Entry(kPbGC, host)};
    RunUpdate(kSceneDark);

    const auto *made = At<GammaPostBlendConfig>(0);
    EXPECT_EQ(made->version, 88u);
    EXPECT_TRUE(made->enabled);
    EXPECT_TRUE(made->r.empty() && made->g.empty() && made->b.empty());
    EXPECT_EQ(out_.payload[1].hw_payload, nullptr);
    EXPECT_TRUE(host->enabled);
    EXPECT_TRUE(host->r == before.r && host->g == before.g && host->b == before.b);

    const std::string fn = "ZuvaColorRenderIntentGamma: ";
    const std::string sizes =
        "[RSize=1024 GSize=1024 BSize=1024] r0=0x       a g0=0x       b "
        "b0=0x   1234c\n";
    EXPECT_EQ(log_.Count(ANDROID_LOG_DEBUG, fn + "empty_payload 1\n"), 1);
    EXPECT_TRUE(
        log_.Has(ANDROID_LOG_DEBUG,
                 fn + "##empty_payload: 1, cfg enabled: 0, dither_en:0, dither_strength=0  "
                      "[RSize=0 GSize=0 BSize=0] r0=0x       0 g0=0x       0 b0=0x       0\n"));
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG, fn +
                                                "##empty_payload: 1, cfg enabled: 0, dither_en:1, "
                                                "dither_strength=3  " +
                                                sizes));
    EXPECT_TRUE(log_.Has(
        ANDROID_LOG_DEBUG,
        fn + "==override_payload: cfg enabled: 1, dither_en:1, dither_strength=3  " + sizes));
}

}  // namespace
}  // namespace snapdragoncolor
