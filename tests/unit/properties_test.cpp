// Property handlers and what they feed: colour property, PA record, sharpness, host properties.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <tuple>

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
    int Get(ScProperty prop, bool *answer) {
        ScPayload payload = stc_test::PayloadOf(answer, 1, prop);
        return c_.GetProperty(&payload);
    }
    int Write(uint32_t scene, uint32_t value, ZuvaColorLevels *levels = nullptr, uint32_t has = 0) {
        ZuvaColorParams params{scene, value, levels, has};
        return Set(kSetZuvaColor, &params);
    }
    bool Logged(int priority, const std::string &message) const {
        return log_.Count(priority, message) == 1;
    }
    stc_test::DeviceTree device_;  // calibration reloads find only the files a test writes
    stc_test::LogCapture log_;
    StcZuvaColor c_;
};

// Each handler takes a record of exactly its length and refuses one byte less, one byte more or no
// record; setters log the refusal, getters other than the dimming query refuse silently.
TEST_F(PropertiesTest, EveryHandlerTakesItsExactLengthAndARecordOnly) {
    PostBlendHwCaps caps{40, {1024}, {10}};
    HwConfigOutputParams list;
    list.payload = {stc_test::EmptyEntry(kPbGC), stc_test::EmptyEntry(kPbPa)};
    ZuvaColorParams colour{0x4, 7, nullptr, 0};
    ColorTransformMatrix identity{68, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    ColorModeList modes;
    double factor = 0.1;
    bool answer = false;
    const std::string hw = " HW Config: num_of_entries 1024, entries_width 10\n";
    // Property, setter, length, the function that logs a refusal (none: silent), a record that is
    // taken, then the line the setter logs for it or the byte the getter answers.
    const std::tuple<ScProperty, bool, uint32_t, const char *, void *, std::string> cases[] = {
        {kNeedsUpdate, false, 1, nullptr, &answer, "0"},
        {kSupportToneMap, false, 1, nullptr, &answer, "0"},
        {kHwConfigPayloadParam, false, 1, nullptr, &answer, "1"},
        {kPrivateDimmingSupport, false, 1, "GetDimmingSupport", &answer, "1"},
        {kModeList, false, 32, nullptr, &modes, ""},
        {kSetZuvaColor, true, 24, "SetZuvaColor", &colour, ""},
        {kSetColorTransform, true, 68, "SetColorTransform", &identity, ""},
        {kPostBlendGamutHwConfig, true, 40, "SetPostBlendGamutConfig", &caps,
         "SetPostBlendGamutConfig: PostBlend Gamut HW Config: num_of_grid_entires 1024, "
         "grid_entries_width 10\n"},
        {kPostBlendGammaHwConfig, true, 40, "SetPostBlendGammaConfig", &caps,
         "SetPostBlendGammaConfig: PostBlend Gamma" + hw},
        {kPostBlendInverseGammaHwConfig, true, 40, "SetPostBlendInvGammaConfig", &caps,
         "SetPostBlendInvGammaConfig: PostBlend InverseGamma" + hw},
        {kPrivateSetDimmingPcc, true, 8, "SetDimmingPcc", &factor,
         "SetDimmingPcc: pcc attenuation factor is targeted to 0.100000\n"},
        {kHwConfigPayloadParam, true, 32, "SetHwConfigPayloadParam", &list,
         "SetHwConfigPayloadParam: SetHwConfigPayloadParam payload size = 2\n"},
    };
    alignas(16) unsigned char zeros[128] = {};
    auto state = [&] {  // what an accepted call of a setter changes
        return std::to_string(A::curr_scene_val_(c_)) + " " + std::to_string(A::clr_trsfm_(c_)) +
               " " + std::to_string(A::pcc_attenuation_factor_(c_));
    };
    for (const auto &[prop, set, len, refusal, record, taken] : cases) {
        const std::string before = state();
        for (uint32_t wrong : {len - 1, len + 1, len}) {  // the right length without a record
            SCOPED_TRACE((set ? "set " : "get ") + std::to_string(prop) + " len " +
                         std::to_string(wrong));
            ScPayload payload = stc_test::PayloadOf(wrong == len ? nullptr : zeros, wrong, prop);
            log_.Clear();
            EXPECT_EQ(set ? c_.SetProperty(payload) : c_.GetProperty(&payload), -22);
            const std::string line = std::string(refusal ? refusal : "") +
                                     ": len of Input params act " + std::to_string(wrong) +
                                     " exp " + std::to_string(len) + "\n";
            EXPECT_EQ(log_.Count(kE, line), refusal ? 1 : 0);
            EXPECT_EQ(log_.Matching("len of Input params").size(), refusal ? 1u : 0u);
        }
        SCOPED_TRACE((set ? "set " : "get ") + std::to_string(prop));
        EXPECT_EQ(state(), before) << "a refusal changes nothing";
        ScPayload payload = stc_test::PayloadOf(record, len, prop);
        log_.Clear();
        EXPECT_EQ(set ? c_.SetProperty(payload) : c_.GetProperty(&payload), 0);
        if (!set && record == &answer) {
            EXPECT_EQ(std::to_string(answer), taken);
        } else if (!taken.empty()) {
            EXPECT_TRUE(Logged(kD, taken));
        }
    }
    EXPECT_TRUE(Logged(kD, "SetHwConfigPayloadParam: set hw_asset= PostBlendGC\n"));
    EXPECT_TRUE(Logged(kD, "SetHwConfigPayloadParam: set hw_asset= PostBlendPa\n"));
    EXPECT_EQ(A::pcc_attenuation_factor_(c_), 0.1) << "kept as given, in double precision";
    EXPECT_EQ(Get(kNeedsUpdate, &answer), 0);
    EXPECT_TRUE(answer) << "dimming asked for: an update on every query";
}

// On its own bit: pq for 0xFEE3, bit 26 and FORCE_UPDATE; de for SHARPNESS and FORCE_UPDATE.
// Value 2 switches nothing on for the items that take a value; no file is there to reload.
TEST_F(PropertiesTest, EachItemBitRaisesItsPendingFlags) {
    for (int bit = 0; bit < 32; ++bit) {
        A::pq_update_pending_(c_) = A::de_update_pending_(c_) = false;
        Write(1u << bit, 2);
        const bool pq = (0x4400FEE3u >> bit) & 1, de = (0x40000100u >> bit) & 1;
        EXPECT_EQ(A::pq_update_pending_(c_), pq) << "bit " << bit;
        EXPECT_EQ(A::de_update_pending_(c_), de) << "bit " << bit;
        bool needs_update = false;
        EXPECT_EQ(Get(kNeedsUpdate, &needs_update), 0);
        EXPECT_EQ(needs_update, pq || de) << "the host's query, bit " << bit;
    }
    // Item words of several bits, and the enhancement switch: item, value, pq, de, enhancement.
    const uint32_t writes[][5] = {{0x8000000, 1, 1, 0, 1}, {0x8000000, 1, 0, 0, 1},
                                  {0x8000000, 2, 1, 0, 0}, {0x8000020, 1, 1, 0, 0},
                                  {0x120, 0, 1, 1, 0},     {0x50000000, 0, 1, 1, 0}};
    for (const auto &w : writes) {
        A::pq_update_pending_(c_) = A::de_update_pending_(c_) = false;
        Write(w[0], w[1]);
        EXPECT_EQ(A::pq_update_pending_(c_), w[2] == 1) << std::hex << w[0] << " value " << w[1];
        EXPECT_EQ(A::de_update_pending_(c_), w[3] == 1) << std::hex << w[0] << " value " << w[1];
        EXPECT_EQ(A::glimra_enabled_(c_), w[4] == 1) << std::hex << w[0] << " value " << w[1];
    }
    Write(0x14000000, 0);  // LOAD_3DLUT reloads only when alone, and never with FORCE_UPDATE
    EXPECT_EQ(log_.Matching("SetZuvaColor: Calitration complete: load").size(), 1u);
}

// Calibration state after each write: latched and current item words, cali_gamut_, the LUT and
// PCC switches, the update flag.
TEST_F(PropertiesTest, CalibrationCommandsDriveTheCalibrationState) {
    const std::string outside =
        "SetZuvaColor: Please set calibration color mode first before starting calibrating!!!\n";
    const struct {
        uint32_t scene, value, has_lut, intent;
        const char *state, *message;
        bool outside;
    } steps[] = {
        {0x4000, 12, 0, 0, "4000 4000 12 lut pq", nullptr},
        {0x2000, 1, 0, 0, "6000 2000 12 pcc pq", nullptr},
        {0x4000, 1, 0, 0, "6000 4000 1 lut pq", nullptr},
        {0x2000, 0, 0, 0, "6000 2000 1 lut pq", nullptr},
        {0x2020, 1, 0, 0, "6000 2020 1 lut pq", nullptr},  // not alone: no switch
        {0x4000, 501, 0, 0, "4000 4000 255 lut pq", "Empty pcc param by flag!!!"},
        {0x4000, 255, 1, 0, "4000 4000 255 lut pcc pq", "Calitration exit!!!"},
        {0x4000, 500, 1, 0, "0 0 255 lut pcc", "Empty 3dlut param by flag!!!"},
        {0x4000, 0, 1, 0x103, "0 4000 0 pq",
         "Calitration start: Keep origin/clean 3dlut/pcc during calitration process!!!"},
        {0x4000, 0, 1, 0, "0 4000 0 pq", nullptr, true},
        {0x4020, 12, 0, 0, "0 4020 0 pq", nullptr},  // not alone: no command
        {0x4000000, 0, 0, 0, "0 4000000 0 lut pq", nullptr},
        {0x4000000, 1, 0, 0, "0 4000000 0 pq", nullptr},
        {0x4000800, 0, 0, 0, "0 4000800 0 lut pq", nullptr},
        {0x2000, 1, 0, 0, "2000 2000 0 pcc pq", nullptr},
        {0x4000, 255, 0, 0, "0 0 255", "Calitration exit!!!"},
    };
    for (const auto &s : steps) {
        SCOPED_TRACE("item " + std::to_string(s.scene) + " value " + std::to_string(s.value));
        A::has_calib_3dlut_(c_) = s.has_lut;
        A::active_color_mode_(c_).intent = s.intent;
        A::pq_update_pending_(c_) = false;
        log_.Clear();
        Write(s.scene, s.value);
        char state[64];
        std::snprintf(
            state, sizeof(state), "%x %x %u%s%s%s", A::latched_scene_id_(c_), A::curr_scene_id_(c_),
            A::cali_gamut_(c_), A::en_calibrated_3dlut_(c_) ? " lut" : "",
            A::en_calibrated_pcc_(c_) ? " pcc" : "", A::pq_update_pending_(c_) ? " pq" : "");
        EXPECT_EQ(std::string(state), s.state);
        EXPECT_EQ(log_.Count(kE, outside), s.outside ? 1 : 0);
        if (s.message) {
            EXPECT_TRUE(Logged(kD, "SetZuvaColor: " + std::string(s.message) + "\n"));
        }
    }
}

TEST_F(PropertiesTest, Load3dLutReloadsTheFilesAndWith255DropsThem) {
    const std::string unit = "/mnt/vendor/persist/display/panel_p_C3D_cali_";
    device_.WriteFile(unit + "srgb.txt", stc_test::MakeLutText(4913, 3));
    device_.WriteFile(unit + "p3.txt", stc_test::MakeLutText(4913, 5));
    device_.WriteFile(unit + "pcc.txt", stc_test::MakePccText(0.5, 0.25, 0.125));
    A::panel_name_(c_) = "p";
    A::en_calibrated_pcc_(c_) = true;
    for (uint32_t value : {0u, 1u, 255u}) {
        SCOPED_TRACE("value " + std::to_string(value));
        const std::string before = value ? "1" : "0";
        Write(0x10000000, value);
        EXPECT_EQ(A::calibrated_lut3d_srgb_(c_).entries[1][5], 64 + 3) << "sRGB file, entry 1";
        EXPECT_EQ(A::calibrated_lut3d_p3_(c_).entries[1][5], 64 + 5) << "P3 file, entry 1";
        EXPECT_EQ(A::calibrated_pcc_(c_).green.g, 0.25);
        EXPECT_EQ(A::has_calib_3dlut_(c_), value != 255);
        EXPECT_EQ(A::calibrated_pcc_(c_).enabled, value != 255);
        EXPECT_TRUE(A::en_calibrated_3dlut_(c_)) << "the reload switched the LUT on";
        EXPECT_TRUE(A::en_calibrated_pcc_(c_)) << "the reload switched the PCC on";
        EXPECT_EQ(A::latched_scene_id_(c_), 0x6000u);
        EXPECT_TRUE(Logged(kD,
                           "SetZuvaColor: Calitration complete: load calibration param!!!"
                           "en_calibrated_3dlut_=" +
                               before + " en_calibrated_pcc_=1" +
                               " curr_scene_val_=" + std::to_string(value) + "\n"));
        EXPECT_EQ(log_.Count(kD, "SetZuvaColor: Calitration complete: disable cali param\n"),
                  value == 255 ? 1 : 0);
    }
}

TEST_F(PropertiesTest, ColourWriteLogsItsStateAndKeepsLevelsItWasNotGiven) {
    ZuvaColorLevels levels{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, other{};
    A::cali_gamut_(c_) = 12;
    A::active_color_mode_(c_).gamut = 1;
    Write(0x20000800, 5, &levels, 2);  // PRINT_LOG with SATURATION; any non-zero has_levels
    EXPECT_TRUE(Logged(kD, "SetProperty: SetProperty 516(kSetZuvaColor) gamut(12 1)\n"));
    EXPECT_TRUE(A::print_log_(c_)) << "PRINT_LOG 5";
    A::has_calib_3dlut_(c_) = A::calibrated_pcc_(c_).enabled = true;
    Write(0x4000, 500, &other, 0);
    EXPECT_TRUE(Logged(kD,
                       "SetZuvaColor: prop=516 scene=0x0(0x4000) val=500(500) [H1 ST2 V3 C4 SP5] "
                       "skin[h6 s7 v8] sky[h9 s10 v11] foliage[h12 s13 v14] curr_scene_id_=[S{}], "
                       "print_log_=1, clr_trsfm=0 calibrtPccEn=(1 0), has_calib_3dlut_=1, "
                       "en_calib_3dlut_=0\n"));
    Write(0x20000000, 0);
    EXPECT_FALSE(A::print_log_(c_)) << "PRINT_LOG 0";
}

TEST_F(PropertiesTest, PaRecordTakesOnlyTheItemsLevels) {
    A::pq_levels_(c_) = {-5, 20, 3, 9, 0, -1, -7, 4, 11, 12, -13, 21, 22, 23};
    PaConfig pa{sizeof(PaConfig), false, 1, 0, {0xFFFFFFFF, 0, 0, 2.5f, 0.5f}};
    pa.skin.type = pa.sky.flag = 0xFFFFFFFF;
    pa.skin.flag = 5;
    pa.foliage.flag = 6;
    auto compose = [&](uint32_t scene) {
        A::curr_scene_id_(c_) = scene;
        A::ComposePaConfig(c_, pa);
        return PaConfigToString(pa);
    };
    std::string text = PaConfigToString(pa);
    EXPECT_EQ(compose(0xFFFFFFFF), text) << "a switched-off record stays as it is";
    pa.enabled = true;
    text = compose(0x401);
    EXPECT_EQ(text,
              "PaConfig: (enabled=1 enable_flags=1265) global{Flags=4294967295 [h-5 s0.000000 "
              "v2.500000]} skin{cfg [flag=5 type=-1 (h0 s0.000000 v0.000000)]} sky{cfg "
              "[flag=4294967295 type=1 (h11 s12.000000 v-13.000000)]} foliage{cfg [flag=6 type=0 "
              "(h0 s0.000000 v0.000000)]}");
    EXPECT_EQ(compose(0x200), text) << "contrast is not in the dump";
    EXPECT_EQ(pa.global.contrast, 9.0f) << "CONTRAST";
    compose(0x1822);  // VALUE, SATURATION, SKIN, GRASS
    const std::pair<float, float> fields[] = {{pa.global.contrast, 9}, {pa.global.saturation, 20},
                                              {pa.global.value, 3},    {pa.skin.saturation, -7},
                                              {pa.skin.value, 4},      {pa.foliage.value, 23}};
    for (size_t i = 0; i < std::size(fields); ++i) {
        EXPECT_EQ(fields[i].first, fields[i].second) << "field " << i << " after 0x1822";
    }
    EXPECT_EQ(pa.skin.type, 0u);
    EXPECT_EQ(pa.foliage.type, 2u);
    EXPECT_EQ(pa.enable_flags, 0xEF1u);
    const std::pair<uint32_t, uint32_t> alone[] = {{0x400, 0xF0}, {0x800, 0xF0}, {0x1000, 0xF0},
                                                   {0x200, 0xF0}, {0x20, 0x2F0}, {0x1, 0x4F0},
                                                   {0x2, 0x8F0}};
    for (auto [item, flags] : alone) {
        pa.enable_flags = 0;
        pa.global.contrast = 0.5f;
        compose(item);
        EXPECT_EQ(pa.enable_flags, flags) << "item " << std::hex << item << " alone";
        EXPECT_EQ(pa.global.contrast, item == 0x200 ? 9.0f : 0.5f) << "item " << item << " alone";
    }
}

TEST_F(PropertiesTest, SharpnessOverridesEveryDeEntryWhenAsked) {
    // Every field its own value: version, enabled, host word, flags, sharp_factor, thr_quiet,
    // thr_dieout, thr_low, thr_high, clip, quality, content_type, de_blend, de_lpf_h, m, l.
    auto de = std::make_shared<DETuningConfig>(
        DETuningConfig{60, true, 0, 1, 9, 2, 3, 4, 5, 6, 8, 10, 11, 12, 13, 14});
    HwConfigOutputParams output;
    output.payload = {stc_test::Entry(kPbDE, de), stc_test::EmptyEntry(kPbDE),
                      stc_test::EmptyEntry(kPbDE + "2")};
    ScPayload none, out = stc_test::PayloadOf(&output);  // none: no record
    A::curr_scene_id_(c_) = 0x100;
    c_.ProcessOps(kScModeSwAssets, none, &out);  // nothing pending
    EXPECT_FALSE(output.payload[1].hw_payload) << "nothing pending";
    ZuvaColorLevels levels{0, 0, 0, 0, 7};
    Write(0x40000000, 0, &levels, 1);  // pending, but not for SHARPNESS
    c_.ProcessOps(kScModeSwAssets, none, &out);
    EXPECT_FALSE(A::de_update_pending_(c_)) << "FORCE_UPDATE consumed";
    EXPECT_FALSE(output.payload[1].hw_payload) << "FORCE_UPDATE alone";
    Write(0x100, 0);
    c_.ProcessOps(kScModeSwAssets, none, &none);  // retried once the host's list comes
    EXPECT_TRUE(A::de_update_pending_(c_)) << "no output";
    EXPECT_TRUE(Logged(kE, "ProcessModeSwAssets: ProcessModeSwAssets: output is null\n"));
    c_.ProcessOps(kScModeSwAssets, none, &out);
    auto *fresh = stc_test::RecordOf<DETuningConfig>(output.payload[1]);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(de->sharp_factor, 7u);
    EXPECT_EQ(fresh->sharp_factor, 7u);
    EXPECT_EQ(fresh->version, 60u);
    EXPECT_FALSE(fresh->enabled);
    EXPECT_FALSE(output.payload[2].hw_payload) << "PostBlendDE2 is not a DE block";
    EXPECT_FALSE(A::de_update_pending_(c_));
    const std::string fields = " DETuningConfig version:60,enabled:1 flags:1, sharp_factor:";
    EXPECT_TRUE(Logged(kD, "ZuvaColorSwAssetsSharpness: overrd_de" + fields +
                               "7, thr_quiet:2, thr_dieout:3 thr_low:4, thr_high:5, clip:6, "
                               "quality:8, content_type:10, de_blend:11  de_lpf_l:14, de_lpf_m:13, "
                               "de_lpf_h:12\n"));
    EXPECT_EQ(log_.Matching("ZuvaColorSwAssetsSharpness: active_de" + fields + "9, ").size(), 1u);
}

// The identity test reads m0, m5, m10 (1) and m1, m2, m4, m6, m8, m9 (0), nothing else.
TEST_F(PropertiesTest, ColourTransformIsIdentityByItsUpperLeftThreeByThree) {
    const ColorTransformMatrix id{68, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    for (int i = 0; i < 16; ++i) {
        for (float changed : {0.5f, 2.0f, -0.5f, std::nanf(""), -0.0f}) {  // -0.0 counts as 0
            ColorTransformMatrix m = id;
            m.m[i] = changed;
            const int tested = changed == 0.0f ? 0x0421 : 0x0777;
            EXPECT_EQ(Set(kSetColorTransform, &m), 0);
            EXPECT_EQ(A::clr_trsfm_(c_), ((tested >> i) & 1) == 1) << "m" << i << " = " << changed;
            EXPECT_EQ(Set(kSetColorTransform, &id), 0);
            EXPECT_FALSE(A::clr_trsfm_(c_)) << "identity after m" << i;
        }
    }
    ColorTransformMatrix m{68, {1, 0.25f, 0.5f, 2, -0.0f, 1.5f, 3, 4, 5, 6, 7, 0.125f, 9}};
    log_.Clear();
    Set(kSetColorTransform, &m);
    Set(kSetColorTransform, &m);
    EXPECT_EQ(log_.Lines().size(), 3u) << "two SetProperty lines, one on the change";
    EXPECT_TRUE(Logged(kD,
                       "SetColorTransform: SetColorTransform  1.000000  0.250000  0.500000  "
                       "2.000000      -0.000000  1.500000  3.000000  4.000000       "
                       "5.000000  6.000000  7.000000  0.125000 \n"));
}

TEST_F(PropertiesTest, AttenuationScalesTheFirstPccBlockOnly) {
    auto pcc = std::make_shared<PccConfig>(), later = std::make_shared<PccConfig>();
    pcc->host_word = later->red.c = 3;
    std::fill_n(&pcc->red.c, 33, 3.0);
    pcc->green.rgb = -1.0;
    HwConfigOutputParams out;
    out.payload = {stc_test::Entry(kPbPCC + "x", later)};
    A::ApplyPccAttenuationFactor(c_, &out, 0.5);
    EXPECT_TRUE(Logged(kD, "ApplyPccAttenuationFactor: no pcc matrix in output_params\n"));
    out.payload.push_back(stc_test::Entry(kPbPCC, pcc));
    out.payload.push_back(stc_test::Entry(kPbPCC, later));
    A::ApplyPccAttenuationFactor(c_, &out, 0.5);
    EXPECT_TRUE(pcc->enabled) << "switched on";
    for (int i = 0; i < 33; ++i) {
        EXPECT_EQ((&pcc->red.c)[i], i == 21 ? -0.5 : 1.5) << "coefficient " << i;
    }
    EXPECT_EQ(pcc->host_word, 3u) << "the host word is not a coefficient";
    EXPECT_EQ(later->red.c, 3.0) << "neither a near name nor a later block is scaled";
    EXPECT_FALSE(later->enabled);
    EXPECT_TRUE(Logged(kD, "ApplyPccAttenuationFactor: Applied PCC attenuation 0.500000\n"));
}

}  // namespace
}  // namespace snapdragoncolor
