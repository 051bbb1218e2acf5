#include <android/log.h>

#include <climits>

#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using stc_test::EmptyEntry;

class CalibrationStageTest : public PipelineTest {
  protected:
    CalibrationStageTest() {
        A::en_calibrated_3dlut_(plugin_) = true;
        A::latched_scene_id_(plugin_) = 0x4000;
        host_->enabled = true;
        host_->flags = 0x55;
        host_->num = 2;
        host_->entries[0].out_r = 9;
        out_.payload = {stc_test::Entry(kPbGamut, host_)};
    }
    bool HostTableKept() const {
        return host_->flags == 0x55 && host_->num == 2 && host_->entries[0].out_r == 9;
    }
    std::shared_ptr<GamutConfig> host_ = std::make_shared<GamutConfig>();
    const std::string kFn = "ZuvaColorRenderIntentCalibration: ";
};

TEST_F(CalibrationStageTest, DecisionTable) {
    enum Table { kHost, kSrgb, kP3 };
    struct Case {
        uint32_t cali_gamut, mode_gamut, latched;
        bool enabled;
        Table table;
    } cases[] = {
        {255, 1, 0x4000, true, kSrgb}, {255, 12, 0x4000, true, kP3},
        {12, 1, 0x4000, true, kP3},    {1, 12, 0x4000, true, kP3},
        {1, 5, 0x4000, true, kSrgb},   {255, 5, 0x4000, true, kHost},
        {255, 1, 0x2000, true, kHost}, {0, 1, 0x4000, false, kHost},
        {77, 1, 0x4000, false, kHost}, {255, 255, 0x4000, false, kHost},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.cali_gamut << " " << c.mode_gamut);
        *host_ = GamutConfig();
        host_->enabled = !c.enabled;
        host_->flags = 0x55;
        host_->num = 2;
        host_->entries[0].out_r = 9;
        A::cali_gamut_(plugin_) = c.cali_gamut;
        A::latched_scene_id_(plugin_) = c.latched;
        ModeRenderInputParams input = stc_test::ModeInput(c.mode_gamut, 2, 1);
        Run(&input);
        EXPECT_EQ(host_->enabled, c.enabled);
        EXPECT_EQ(HostTableKept(), c.table == kHost);
        EXPECT_EQ(HoldsLut(*host_, A::calibrated_lut3d_srgb_(plugin_)), c.table == kSrgb);
        EXPECT_EQ(HoldsLut(*host_, A::calibrated_lut3d_p3_(plugin_)), c.table == kP3);
    }
}

TEST_F(CalibrationStageTest, CliPanelAndNonCalibratedIntentAreLeftAlone) {
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 1);
    A::is_primary_(plugin_) = false;
    Run(&input);
    input.color_mode.intent = 0;
    A::is_primary_(plugin_) = true;
    Run(&input);
    EXPECT_TRUE(HostTableKept());
    EXPECT_EQ(Lines(kFn), 0u);

    A::cali_gamut_(plugin_) = kGamutSrgb;  // a calibration run ignores the intent
    Run(&input);
    EXPECT_TRUE(HoldsLut(*host_, A::calibrated_lut3d_srgb_(plugin_)));
}

TEST_F(CalibrationStageTest, EmptyEntriesGetTablesAndTheEmptyMarkSticks) {
    out_.payload = {EmptyEntry(kPbGamut), EmptyEntry(kPbGC), stc_test::Entry(kPbGamut, host_)};
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 1);
    Run(&input);
    EXPECT_EQ(log_.Count(ANDROID_LOG_DEBUG, kFn + "empty_payload 1\n"), 1);
    EXPECT_EQ(At<GamutConfig>(0)->version, 117936u);
    EXPECT_TRUE(HoldsLut(*At<GamutConfig>(0), A::calibrated_lut3d_srgb_(plugin_)));
    EXPECT_TRUE(HoldsLut(*host_, A::calibrated_lut3d_srgb_(plugin_)));
    EXPECT_EQ(out_.payload[1].hw_payload, nullptr);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG,
                         kFn +
                             "##empty: 1, cfgEn=0, gamut_cfg(3dlut) [flg=0x0 lut3d_id=0 uniform=0 "
                             "num=0] entry: :0, gamut_(255 1) intent=(1 1)\n"));
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG,
                         kFn + "##empty: 1, cfgEn=1, gamut_cfg(3dlut) [flg=0x55 lut3d_id=0 "
                               "uniform=0 num=2] entry: :0, gamut_(255 1) intent=(1 1)\n"));
    EXPECT_EQ(
        log_.Count(ANDROID_LOG_DEBUG,
                   kFn + "==empty: 1, cfgEn=1, gamut_cfg(3dlut) [flg=0x0 lut3d_id=1 uniform=1 "
                         "num4913] entry: 1st[1000 1001 1002 -> 1003 1004 1005]"
                         "Lst[5912 5913 5914 -> 5915 5916 5917]\n"),
        2);
}

TEST_F(CalibrationStageTest, CountBeyondTheTableIsSummarisedFromItsLastEntry) {
    host_->num = 0xFFFFFFFF;
    host_->entries[kGamutEntries - 1].out_b = 6;
    A::latched_scene_id_(plugin_) = 0;
    ModeRenderInputParams input = stc_test::ModeInput(5, 2, 1);
    Run(&input);
    EXPECT_EQ(Lines("Lst[0 0 0 -> 0 0 6]"), 2u);
}

TEST_F(CalibrationStageTest, EntrySummaryIsCutAt127Characters) {
    lut3d_info &srgb = A::calibrated_lut3d_srgb_(plugin_);
    for (int c = 0; c < 6; ++c) {
        srgb.entries[0][c] = INT_MIN;
        srgb.entries[kGamutEntries - 1][c] = INT_MIN;
    }
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 1);
    Run(&input);
    const std::string m = "-2147483648";
    const std::string row = m + " " + m + " " + m + " -> " + m + " " + m + " " + m;
    const std::string full = "1st[" + row + "]Lst[" + row + "]";
    ASSERT_GT(full.size(), 127u);
    EXPECT_EQ(Lines("num4913] entry: " + full.substr(0, 127) + "\n"), 1u) << log_.Dump();
}

}  // namespace
}  // namespace snapdragoncolor
