// Property handlers and what they feed: colour property, PA record, sharpness, host properties.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>

#include "picture/pa_config.h"
#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
constexpr int kD = 3, kE = 6;  // debug and error priorities

class PropertiesTest : public ::testing::Test {
  protected:
    void SetUp() override { A::init_done_(c_) = true; }
    template <typename T>
    int Set(ScProperty prop, T *record, uint32_t len = sizeof(T)) {
        return c_.SetProperty(stc_test::PayloadOf(record, len, prop));
    }
    int Get(ScProperty prop, bool *answer, uint32_t len = 1) {
        ScPayload payload = stc_test::PayloadOf(answer, len, prop);
        return c_.GetProperty(&payload);
    }
    int Write(uint32_t scene, uint32_t value, ZuvaColorLevels *levels = nullptr, uint32_t has = 0) {
        ZuvaColorParams params{scene, value, levels, has};
        return Set(kSetZuvaColor, &params);
    }
    uint32_t TakeFlags() {  // the pending flags as pq + 2 * de; both are cleared
        return std::exchange(A::pq_update_pending_(c_), false) +
               2 * std::exchange(A::de_update_pending_(c_), false);
    }
    stc_test::DeviceTree device_;  // calibration reloads find no files
    stc_test::LogCapture log_;
    StcZuvaColor c_;
};

TEST_F(PropertiesTest, PendingFlagsFollowItemsAloneOrByBit) {
    const uint32_t writes[][3] = {// item, value, expected flags
                                  {0x8000000, 2, 0}, {0x8000000, 1, 1},  {0x8000000, 1, 0},
                                  {0x8000020, 0, 1}, {0x100, 0, 2},      {0x1C, 0, 0},
                                  {0xC000, 1, 1},    {0x14000000, 0, 1}, {0x40000000, 255, 3}};
    for (const auto &w : writes) {
        Write(w[0], w[1]);
        EXPECT_EQ(TakeFlags(), w[2]) << std::hex << w[0];
    }
    EXPECT_TRUE(A::glimra_enabled_(c_) && A::en_calibrated_3dlut_(c_) &&
                !A::latched_scene_id_(c_) && log_.Matching("load calibration param").empty());
}

TEST_F(PropertiesTest, CalibrationCommands) {
    const std::string outside =
        "SetZuvaColor: Please set calibration color mode first before starting calibrating!!!\n";
    struct {  // switches: calibrated 3D LUT + 2 * calibrated PCC; errors: `outside` lines so far
        uint32_t scene, value, has_lut, intent, latched, cali_gamut, switches, flags;
        int errors;
        const char *message;
    } const steps[] = {
        {0x2000, 1, 0, 0, 0x2000, 255, 2, 1, 0, nullptr},
        {0x2000, 0, 0, 0, 0x2000, 255, 0, 1, 0, nullptr},
        {0x4000, 12, 0, 0, 0x6000, 12, 1, 1, 0, nullptr},
        {0x4000, 501, 0, 0, 0x4000, 255, 1, 1, 0, "Empty pcc param by flag!!!"},
        {0x4000, 255, 1, 0, 0x4000, 255, 3, 1, 0, "Calitration exit!!!"},
        {0x4000, 500, 1, 0, 0, 255, 3, 0, 0, "Empty 3dlut param by flag!!!"},
        {0x4000, 0, 1, 0x103, 0, 0, 0, 1, 0,
         "Calitration start: Keep origin/clean 3dlut/pcc during calitration process!!!"},
        {0x4000, 0, 1, 0, 0, 0, 0, 1, 1, nullptr},
        {0x4000, 1, 0, 0, 0x4000, 1, 1, 1, 1, nullptr},
        {0x2000, 1, 0, 0, 0x6000, 1, 2, 1, 1, nullptr},
        {0x4000, 255, 0, 0, 0, 255, 0, 0, 1, "Calitration exit!!!"},
    };
    for (const auto &s : steps) {
        A::has_calib_3dlut_(c_) = s.has_lut;
        A::active_color_mode_(c_).intent = s.intent;
        Write(s.scene, s.value);
        uint32_t switches = A::en_calibrated_3dlut_(c_) + 2 * A::en_calibrated_pcc_(c_);
        EXPECT_EQ(std::make_tuple(A::latched_scene_id_(c_), A::cali_gamut_(c_), switches,
                                  TakeFlags(), log_.Count(kE, outside)),
                  std::make_tuple(s.latched, s.cali_gamut, s.switches, s.flags, s.errors))
            << s.value;
        EXPECT_TRUE(!s.message || log_.Has(kD, "SetZuvaColor: " + std::string(s.message) + "\n"));
    }
}

TEST_F(PropertiesTest, ColourWriteRefusalsAndLogLines) {
    ZuvaColorParams params{0x800, 1, nullptr, 1};  // levels announced but absent
    EXPECT_EQ(Set(kSetZuvaColor, &params, 20) + Set<ZuvaColorParams>(kSetZuvaColor, nullptr), -44);
    EXPECT_EQ(Set(kSetZuvaColor, &params), -22);
    EXPECT_TRUE(log_.Has(kE, "SetZuvaColor: len of Input params act 20 exp 24\n") &&
                log_.Has(kE, "SetZuvaColor: has_levels 1 without levels\n"));
    EXPECT_EQ(A::curr_scene_id_(c_) + TakeFlags(), 0u);  // nothing recorded
    ZuvaColorLevels levels{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, other{};
    Write(0x20000800, 5, &levels, 1);  // PRINT_LOG with SATURATION
    A::has_calib_3dlut_(c_) = A::calibrated_pcc_(c_).enabled = true;
    Write(0x4000, 500, &other, 0);
    EXPECT_TRUE(log_.Has(kD,
                         "SetZuvaColor: prop=516 scene=0x0(0x4000) val=500(500) [H1 ST2 V3 "
                         "C4 SP5] skin[h6 s7 v8] sky[h9 s10 v11] foliage[h12 s13 v14] "
                         "curr_scene_id_=[S{}], print_log_=1, clr_trsfm=0 calibrtPccEn=(1 0), "
                         "has_calib_3dlut_=1, en_calib_3dlut_=0\n"));
    A::en_calibrated_pcc_(c_) = true;
    Write(0x10000000, 255);  // reload, then drop what was loaded
    EXPECT_TRUE(!A::has_calib_3dlut_(c_) && !A::calibrated_pcc_(c_).enabled &&
                log_.Has(kD, "SetZuvaColor: Calitration complete: disable cali param\n") &&
                log_.Has(kD,
                         "SetZuvaColor: Calitration complete: load calibration param!!!"
                         "en_calibrated_3dlut_=0 en_calibrated_pcc_=1 curr_scene_val_=255\n"));
}

TEST_F(PropertiesTest, PaRecordTakesOnlyTheItemsLevels) {
    A::pq_levels_(c_) = {-5, 20, 3, 9, 0, -1, -7, 4, 11, 12, -13, 21, 22, 23};
    PaConfig pa{sizeof(PaConfig), false, 1, 0, {0xFFFFFFFF, 0, 0, 2.5f, 0.5f}};
    pa.skin.type = pa.sky.flag = 0xFFFFFFFF;
    auto compose = [&](uint32_t scene) {
        A::curr_scene_id_(c_) = scene;
        A::ComposePaConfig(c_, pa);
        return PaConfigToString(pa);
    };
    std::string text = PaConfigToString(pa);
    EXPECT_EQ(compose(0xFFFFFFFF), text);  // a switched-off record stays as it is
    pa.enabled = true;
    text = compose(0x401);
    EXPECT_EQ(text,
              "PaConfig: (enabled=1 enable_flags=1265) global{Flags=4294967295 [h-5 s0.000000 "
              "v2.500000]} skin{cfg [flag=0 type=-1 (h0 s0.000000 v0.000000)]} sky{cfg "
              "[flag=4294967295 type=1 (h11 s12.000000 v-13.000000)]} foliage{cfg [flag=0 type=0 "
              "(h0 s0.000000 v0.000000)]}");
    EXPECT_EQ(compose(0x200), text);  // contrast is not in the dump
    compose(0x1822);
    EXPECT_EQ(
        std::make_tuple(pa.global.contrast, pa.global.saturation, pa.global.value, pa.skin.type,
                        pa.skin.saturation, pa.foliage.type, pa.foliage.value, pa.enable_flags),
        std::make_tuple(9.0f, 20.0f, 3.0f, 0u, -7.0f, 2u, 23.0f, 0xEF1u));
}

TEST_F(PropertiesTest, SharpnessOverridesEveryDeEntryWhenAsked) {
    auto de = std::make_shared<DETuningConfig>();
    de->de_lpf_l = 2;
    HwConfigOutputParams output{32, 0, {stc_test::Entry(kPbDE, de), stc_test::EmptyEntry(kPbDE)}};
    ScPayload none, out = stc_test::PayloadOf(&output);  // none: no record
    A::curr_scene_id_(c_) = 0x100;
    c_.ProcessOps(kScModeSwAssets, none, &out);  // nothing pending
    ZuvaColorLevels levels{0, 0, 0, 0, 7};
    Write(0x40000000, 0, &levels, 1);  // pending, but not for SHARPNESS
    c_.ProcessOps(kScModeSwAssets, none, &out);
    EXPECT_FALSE(A::de_update_pending_(c_) || output.payload[1].hw_payload);
    Write(0x100, 0);
    c_.ProcessOps(kScModeSwAssets, none, &none);  // retried once the host's list comes
    EXPECT_TRUE(A::de_update_pending_(c_) &&
                log_.Has(kE, "ProcessModeSwAssets: ProcessModeSwAssets: output is null\n"));
    c_.ProcessOps(kScModeSwAssets, none, &out);
    auto *fresh = stc_test::RecordOf<DETuningConfig>(output.payload[1]);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(std::tie(de->sharp_factor, fresh->version, fresh->enabled, fresh->sharp_factor,
                       A::de_update_pending_(c_)),
              std::make_tuple(7u, 60u, false, 7u, false));
    EXPECT_EQ(log_.Matching("de_blend:0  de_lpf_l:2, de_lpf_m:0, de_lpf_h:0\n").size(), 2u);
}

TEST_F(PropertiesTest, HostPropertiesAreCheckedLoggedAndAnswered) {
    auto flag_after = [&](ColorTransformMatrix matrix) {
        EXPECT_EQ(Set(kSetColorTransform, &matrix), 0);
        return A::clr_trsfm_(c_);
    };
    ColorTransformMatrix id{68, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    ColorTransformMatrix m{68, {1, 0.25f, 0, 2, 0, 1, 0, 0, 0, 0, 1, 0.5f, 0, 0, 0, 1}};
    EXPECT_TRUE(!flag_after(id) && flag_after(m) && flag_after(m) &&
                log_.Matching("SetColorTransform  ").size() == 1);  // logged on the change only
    EXPECT_TRUE(log_.Has(kD,
                         "SetColorTransform: SetColorTransform  1.000000  0.250000  0.000000  "
                         "2.000000      0.000000  1.000000  0.000000  0.000000       "
                         "0.000000  0.000000  1.000000  0.500000 \n"));
    m = {68, {1, 0, 0, 0.5f, 0, 1, 0, 0.5f, -0.0f, 0, 1, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f}};
    EXPECT_FALSE(flag_after(m));  // offsets and the fourth row do not count
    for (float off : {std::nanf(""), std::nextafter(1.0f, 2.0f)}) {
        m.m[10] = off;
        EXPECT_TRUE(flag_after(m) && !flag_after(id));
    }
    PostBlendHwCaps caps{40, {1024}, {10}};
    double factor = -0.5;
    EXPECT_EQ(Set(kPostBlendGamutHwConfig, &caps) + Set(kPrivateSetDimmingPcc, &factor), 0);
    EXPECT_TRUE(log_.Has(kD,
                         "SetPostBlendGamutConfig: PostBlend Gamut HW Config: "
                         "num_of_grid_entires 1024, grid_entries_width 10\n"));
    bool answer[3] = {};
    EXPECT_EQ(Get(kHwConfigPayloadParam, answer, 2) + Get(kPrivateDimmingSupport, answer, 2), -44);
    EXPECT_TRUE(log_.Matching("GetHwConfigPayloadParamSupprt").empty() &&
                log_.Has(kE, "GetDimmingSupport: len of Input params act 2 exp 1\n"));
    EXPECT_EQ(Get(kHwConfigPayloadParam, answer) + Get(kPrivateDimmingSupport, answer + 1), 0);
    EXPECT_EQ(Get(kNeedsUpdate, answer + 2), 0);  // dimming asked for: an update on every query
    EXPECT_TRUE(answer[0] && answer[1] && answer[2] && A::pcc_attenuation_factor_(c_) == -0.5 &&
                log_.Has(kD, "SetDimmingPcc: pcc attenuation factor is targeted to -0.500000\n"));
}

}  // namespace
}  // namespace snapdragoncolor
