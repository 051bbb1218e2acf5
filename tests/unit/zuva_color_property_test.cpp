// The colour property as the host writes it: recorded state, pending flags, calibration switches.
#include <android/log.h>
#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

class ZuvaColorPropertyTest : public ::testing::Test {
  protected:
    void SetUp() override { A::init_done_(c_) = true; }
    int Write(uint32_t scene, uint32_t value, ZuvaColorLevels *levels = nullptr,
              uint32_t has_levels = 0, uint32_t len = 24) {
        ZuvaColorParams params{scene, value, levels, has_levels};
        return c_.SetProperty(stc_test::PayloadOf(&params, len, kSetZuvaColor));
    }
    // The pending flags as pq + 2 * de; both are cleared.
    uint32_t TakeFlags() {
        uint32_t flags = A::pq_update_pending_(c_) + 2 * A::de_update_pending_(c_);
        A::pq_update_pending_(c_) = A::de_update_pending_(c_) = false;
        return flags;
    }
    stc_test::DeviceTree device_;  // calibration reloads find no files
    stc_test::LogCapture log_;
    StcZuvaColor c_;
};

TEST_F(ZuvaColorPropertyTest, MalformedPayloadChangesNothing) {
    EXPECT_EQ(Write(0x800, 1, nullptr, 0, 20), -22);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_ERROR, "SetZuvaColor: len of Input params act 20 exp 24\n"));
    EXPECT_EQ(c_.SetProperty(stc_test::PayloadOf<ZuvaColorParams>(nullptr, 24, kSetZuvaColor)),
              -22);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_ERROR, "SetZuvaColor: len of Input params act 24 exp 24\n"));
    EXPECT_EQ(Write(0x800, 1, nullptr, 1), -22);  // levels announced but absent
    EXPECT_EQ(A::curr_scene_id_(c_) + TakeFlags(), 0u);
}

TEST_F(ZuvaColorPropertyTest, PendingFlagsFollowItems) {
    const uint32_t writes[][3] = {// item, value, expected flags
                                  {0x8000000, 1, 1}, {0x8000000, 1, 0}, {0x8000020, 0, 1},
                                  {0x100, 0, 2},     {0x4, 0, 0},       {0x40000000, 255, 3}};
    for (const auto &w : writes) {
        Write(w[0], w[1]);
        EXPECT_EQ(TakeFlags(), w[2]) << std::hex << w[0];
    }
    EXPECT_TRUE(A::glimra_enabled_(c_));  // 0x8000020 is not ZUVA_GLIMRA alone
    EXPECT_TRUE(log_.Matching("load calibration param").empty());
}

TEST_F(ZuvaColorPropertyTest, CalibrationCommandsWithoutLut) {
    Write(0x2000, 1);
    Write(0x4000, 12);
    EXPECT_EQ(A::latched_scene_id_(c_), 0x6000u);
    TakeFlags();
    Write(0x4000, 500);
    EXPECT_EQ(A::curr_scene_id_(c_) + TakeFlags(), 0u);
    EXPECT_EQ(std::tie(A::latched_scene_id_(c_), A::cali_gamut_(c_)),
              std::make_tuple(0x2000u, 255u));
    Write(0x4000, 255);
    EXPECT_EQ(A::latched_scene_id_(c_) | A::curr_scene_id_(c_), 0u);
    EXPECT_FALSE(A::en_calibrated_3dlut_(c_) || A::en_calibrated_pcc_(c_) || TakeFlags());
    EXPECT_EQ(log_.Matching("scene=0x0(0x4000)").size(), 2u);
}

TEST_F(ZuvaColorPropertyTest, LevelsKeptWithoutFlagAndLogged) {
    ZuvaColorLevels levels{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, other{};
    Write(0x800, 5, &levels, 1);
    A::has_calib_3dlut_(c_) = A::clr_trsfm_(c_) = true;
    Write(0x4000, 255, &other, 0);
    EXPECT_TRUE(log_.Has(
        ANDROID_LOG_DEBUG,
        "SetZuvaColor: prop=516 scene=0x4000(0x4000) val=255(255) [H1 ST2 V3 C4 SP5] skin[h6 s7 "
        "v8] sky[h9 s10 v11] foliage[h12 s13 v14] curr_scene_id_=[S{FAC_CALIBRATION }], "
        "print_log_=0, clr_trsfm=1 calibrtPccEn=(0 1), has_calib_3dlut_=1, en_calib_3dlut_=1\n"))
        << log_.Dump();
}

TEST_F(ZuvaColorPropertyTest, LoadWith255DropsWhatWasLoaded) {
    A::has_calib_3dlut_(c_) = A::en_calibrated_pcc_(c_) = A::calibrated_pcc_(c_).enabled = true;
    Write(0x10000000, 255);
    int load = log_.IndexOf(
        "SetZuvaColor: Calitration complete: load calibration param!!!en_calibrated_3dlut_=0 "
        "en_calibrated_pcc_=1 curr_scene_val_=255\n");
    EXPECT_GE(load, 0);
    EXPECT_GT(log_.IndexOf("SetZuvaColor: Calitration complete: disable cali param\n"), load);
    EXPECT_FALSE(A::has_calib_3dlut_(c_) || A::calibrated_pcc_(c_).enabled);
    Write(0x14000000, 0);  // not alone: only bit 26 acts
    EXPECT_TRUE(A::en_calibrated_3dlut_(c_) && TakeFlags() == 1);
    EXPECT_EQ(log_.Matching("load calibration param").size(), 1u);
}

}  // namespace
}  // namespace snapdragoncolor
