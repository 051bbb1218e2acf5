#include <android/log.h>

#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using stc_test::EmptyEntry;
using stc_test::Entry;

class PccStageTest : public PipelineTest {
  protected:
    PccStageTest() {
        A::en_calibrated_pcc_(plugin_) = true;
        A::latched_scene_id_(plugin_) = 0x2000;
        out_.payload = {Entry(kPbPCC, std::make_shared<PccConfig>(host_))};
    }
    size_t StageLines() const { return Lines("ZuvaColorRenderIntentPCC") + Lines("GetPccCoeff"); }
    const std::string kFn = "ZuvaColorRenderIntentPCC: ";
    PccConfig host_ = MakePcc(2.0, true);
    ModeRenderInputParams input_ = stc_test::ModeInput(kGamutSrgb, 2, 0);
};

TEST_F(PccStageTest, GatesLeaveOutputUntouchedAndSilent) {
    auto &primary = A::is_primary_(plugin_);
    auto &transform = A::clr_trsfm_(plugin_);
    auto &enabled = A::en_calibrated_pcc_(plugin_);
    for (int gate = 0; gate < 3; ++gate) {
        primary = gate != 0;
        transform = gate == 1;
        enabled = gate != 2;
        Run(&input_);
        ASSERT_EQ(out_.payload.size(), 1u);
        EXPECT_TRUE(At<PccConfig>(0)->enabled);
        EXPECT_TRUE(SamePccBody(*At<PccConfig>(0), host_));
        EXPECT_EQ(StageLines(), 0u) << log_.Dump();
    }
}

TEST_F(PccStageTest, NonNativeIntentStopsOnlyOutsideACalibrationRun) {
    input_ = stc_test::ModeInput(kGamutP3, 2, 1);
    Run(&input_);
    EXPECT_EQ(out_.payload.size(), 1u);
    EXPECT_TRUE(
        log_.Has(ANDROID_LOG_DEBUG,
                 kFn + "ZuvaColorRenderIntentPCC: not native mode. gmt (12 12), intent (1 1)\n"));
    EXPECT_EQ(StageLines(), 1u);

    A::cali_gamut_(plugin_) = kGamutSrgb;
    Run(&input_);
    EXPECT_EQ(out_.payload.size(), 2u);

    A::cali_gamut_(plugin_) = kGamutNone;
    for (uint32_t intent : {0u, 256u, 300u}) {
        input_.color_mode.intent = intent;
        out_.payload.resize(1);
        Run(&input_);
        EXPECT_EQ(out_.payload.size(), 2u) << intent;
    }
}

TEST_F(PccStageTest, LatchedPccOverwritesEveryEntryAndAppendsOne) {
    out_.payload = {EmptyEntry(kPbPCC), Entry(kPbPCC, std::make_shared<PccConfig>(host_)),
                    EmptyEntry(kPbPa), Entry(kPbPCC, std::make_shared<PccConfig>(MakePcc(3, 0)))};
    Run(&input_);
    const PccConfig &calibrated = A::calibrated_pcc_(plugin_);
    ASSERT_EQ(out_.payload.size(), 5u);
    for (size_t i : {0, 1, 3, 4}) {
        EXPECT_TRUE(At<PccConfig>(i)->enabled) << i;
        EXPECT_EQ(At<PccConfig>(i)->version, 280u) << i;
        EXPECT_TRUE(SamePccBody(*At<PccConfig>(i), calibrated)) << i;
    }
    EXPECT_EQ(out_.payload[0].hw_payload_len, 0u);
    EXPECT_EQ(out_.payload[2].hw_payload, nullptr);
    const HwConfigPayload &added = out_.payload[4];
    EXPECT_EQ(added.version, 56u);
    EXPECT_EQ(added.hw_asset, kPbPCC);
    EXPECT_EQ(added.hw_payload_len, 280u);

    EXPECT_EQ(Lines("multiply with PCC in active mode"), 1u);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG, "GetPccCoeff: Active PCC is not preset\n"));
    const std::string tail = ", gmt_(255 1) itt=(0 0)\n";
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG,
                         kFn + "##Original PCC[0.000000 0.000000 0.000000], empty=1 " + tail));
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG,
                         kFn + "##Original PCC[2.010000 2.130000 2.250000], empty=1 " + tail));
    EXPECT_EQ(log_.Count(ANDROID_LOG_DEBUG,
                         kFn + "==Overwrite PCC[0.510000 0.630000 0.750000], empty=1\n"),
              3);
    EXPECT_TRUE(
        log_.Has(ANDROID_LOG_DEBUG,
                 kFn + "Push new PCC config [0.510000 0.630000 0.750000] into output payload\n"));
}

TEST_F(PccStageTest, UnlatchedPccSwitchesHostEntriesOffAndAppendsNothing) {
    A::latched_scene_id_(plugin_) = 0x4000;
    Run(&input_);
    ASSERT_EQ(out_.payload.size(), 1u);
    EXPECT_FALSE(At<PccConfig>(0)->enabled);
    EXPECT_TRUE(SamePccBody(*At<PccConfig>(0), host_));
    EXPECT_EQ(Lines("Push new PCC"), 0u);
}

}  // namespace
}  // namespace snapdragoncolor
