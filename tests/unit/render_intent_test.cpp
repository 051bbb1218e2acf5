#include <android/log.h>

#include "enhance/glimra.h"
#include "picture/scene_items.h"
#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using stc_test::EmptyEntry;

class RenderIntentTest : public PipelineTest {
  protected:
    RenderIntentTest() {
        out_.payload = {EmptyEntry(kPbPa), EmptyEntry(kPbGC)};
        A::curr_scene_id_(plugin_) = 0x4;
        input_ = stc_test::ModeInput(kGamutSrgb, 2, 0);
    }
    void SwitchCalibrationOn() {
        A::en_calibrated_pcc_(plugin_) = true;
        A::en_calibrated_3dlut_(plugin_) = true;
        A::latched_scene_id_(plugin_) = 0x6000;
        A::cali_gamut_(plugin_) = kGamutSrgb;  // a calibration run lets both stages through
        out_.payload.push_back(EmptyEntry(kPbGamut));
    }
    ModeRenderInputParams input_;
};

TEST_F(RenderIntentTest, UpdatePassSelectsStagesByItemMask) {
    struct Case {
        uint32_t scene;
        bool pa, gamma;
    } cases[] = {{0x4, true, false},
                 {0x1000, true, false},
                 {0x8 | 0x10 | 0x100, false, false},
                 {0x80, false, true},
                 {0x40 | 0x800, true, true}};
    for (const Case &c : cases) {
        out_.payload = {EmptyEntry(kPbPa), EmptyEntry(kPbGC)};
        A::curr_scene_id_(plugin_) = c.scene;
        A::pq_update_pending_(plugin_) = true;
        EXPECT_EQ(Run(&input_), 0);
        EXPECT_EQ(At<PaConfig>(0) != nullptr, c.pa) << std::hex << c.scene;
        EXPECT_EQ(At<GammaPostBlendConfig>(1) != nullptr, c.gamma) << std::hex << c.scene;
        EXPECT_FALSE(A::pq_update_pending_(plugin_));
    }
}

TEST_F(RenderIntentTest, UpdatePassRunsPccFirstAndNextCallIsPlainWithCalibrationFirst) {
    SwitchCalibrationOn();
    A::pq_update_pending_(plugin_) = true;
    const std::string pcc = "GetPccCoeff: Active PCC is not preset\n";
    const std::string cali = "ZuvaColorRenderIntentCalibration: empty_payload 1\n";

    Run(&input_);
    EXPECT_NE(At<PaConfig>(0), nullptr);
    ASSERT_GE(log_.IndexOf(cali), 0);
    EXPECT_LT(log_.IndexOf(pcc), log_.IndexOf(cali));

    log_.Clear();
    out_.payload = {EmptyEntry(kPbPa), EmptyEntry(kPbGamut)};
    Run(&input_);
    EXPECT_EQ(At<PaConfig>(0), nullptr);  // the update was consumed
    ASSERT_GE(log_.IndexOf(pcc), 0);
    EXPECT_LT(log_.IndexOf(cali), log_.IndexOf(pcc));
}

TEST_F(RenderIntentTest, PlainPassWarnsOnNullInputAndStillCalibrates) {
    SwitchCalibrationOn();
    EXPECT_EQ(Run(nullptr), 0);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_WARN,
                         "ProcessModeRenderIntent: ProcessModeRenderIntent: input is null\n"));
    EXPECT_NE(At<GamutConfig>(2), nullptr);
    EXPECT_EQ(out_.payload.size(), 4u);  // PCC appended
}

TEST_F(RenderIntentTest, NullOutputRecordDefersTheUpdateToTheNextOperation) {
    const std::string error = "ProcessModeRenderIntent: ProcessModeRenderIntent: output is null\n";
    for (bool pending : {false, true}) {
        A::pq_update_pending_(plugin_) = pending;
        EXPECT_EQ(RunOn(&input_, nullptr), 0);
        EXPECT_EQ(log_.Count(ANDROID_LOG_ERROR, error), 1);
        EXPECT_EQ(A::pq_update_pending_(plugin_), pending);
        log_.Clear();
    }
    Run(&input_);
    EXPECT_NE(At<PaConfig>(0), nullptr);
    EXPECT_FALSE(A::pq_update_pending_(plugin_));
}

TEST_F(RenderIntentTest, GlimraRewritesOnlyTheFirstGammaBlockWithTheChosenCurve) {
    HwConfigOutputParams probe;
    probe.payload = {stc_test::Entry(kPbGC, std::make_shared<GammaPostBlendConfig>())};
    std::vector<int> curve(kLinearCurveLength, 1);
    ApplyZuvaGlimra(nullptr, &probe, curve, true);
    if (stc_test::RecordOf<GammaPostBlendConfig>(probe.payload[0])->r.empty()) {
        GTEST_SKIP() << "contrast enhancement not built into this tree";
    }
    A::glimra_boost_curve_(plugin_).assign(kLinearCurveLength, 7);
    A::glimra_base_curve_(plugin_).assign(kLinearCurveLength, 3);
    A::curr_scene_id_(plugin_) = kSceneZuvaGlimra;
    for (bool boost : {true, false}) {
        out_.payload = {stc_test::Entry(kPbGC, std::make_shared<GammaPostBlendConfig>()),
                        stc_test::Entry(kPbGC, std::make_shared<GammaPostBlendConfig>())};
        A::glimra_enabled_(plugin_) = boost;
        A::pq_update_pending_(plugin_) = true;
        Run(&input_);
        EXPECT_EQ(At<GammaPostBlendConfig>(0)->b,
                  std::vector<uint32_t>(kLinearCurveLength, boost ? 7 : 3));
        EXPECT_TRUE(At<GammaPostBlendConfig>(1)->r.empty());
    }
    A::glimra_disabled_(plugin_) = true;
    A::pq_update_pending_(plugin_) = true;
    out_.payload = {stc_test::Entry(kPbGC, std::make_shared<GammaPostBlendConfig>())};
    Run(&input_);
    EXPECT_TRUE(At<GammaPostBlendConfig>(0)->r.empty());
    EXPECT_FALSE(A::pq_update_pending_(plugin_));
}

}  // namespace
}  // namespace snapdragoncolor
