#include <algorithm>
#include <tuple>
#include <vector>

#include "enhance/glimra.h"
#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

// The PA dump of a record that is zero apart from `enabled`, `enable_flags` and global saturation.
std::string PaDump(int enabled, int flags, const std::string &saturation) {
    const std::string zero = "{cfg [flag=0 type=0 (h0 s0.000000 v0.000000)]}";
    return "PaConfig: (enabled=" + std::to_string(enabled) +
           " enable_flags=" + std::to_string(flags) + ") global{Flags=0 [h0 s" + saturation +
           " v0.000000]} skin" + zero + " sky" + zero + " foliage" + zero;
}

enum Gate { kOpen, kCli, kTransform, kNoCal, kUnlatched };  // the stage's switches

class RenderIntentTest : public PipelineTest {
  protected:
    RenderIntentTest() {
        A::en_calibrated_pcc_(plugin_) = A::en_calibrated_3dlut_(plugin_) = true;
        A::latched_scene_id_(plugin_) = kSceneColorTemperature | kSceneFacCalibration;
        A::active_color_mode_(plugin_) = {kGamutSrgb, 2, 9, {}, "standard"};
    }
    void RunUpdate(uint32_t scene, ModeRenderInputParams *input) {
        A::curr_scene_id_(plugin_) = scene;
        A::pq_update_pending_(plugin_) = true;
        Run(input, &out_);
        EXPECT_FALSE(A::pq_update_pending_(plugin_));
    }
};

TEST_F(RenderIntentTest, UpdatePassPicksPaAndGammaStagesByItemBit) {
    A::glimra_disabled_(plugin_) = true;  // else the enhancement switches the gamma block on too
    for (int bit = 0; bit < 32; ++bit) {
        out_.payload = {EmptyEntry(kPbPa), Entry(kPbGC, std::make_shared<GammaPostBlendConfig>())};
        RunUpdate(1u << bit, &input_);
        EXPECT_EQ(At<PaConfig>(0) != nullptr, ((0x1E27u >> bit) & 1) != 0) << bit;
        EXPECT_EQ(At<GammaPostBlendConfig>(1)->enabled, ((0xC0u >> bit) & 1) != 0) << bit;
    }
}

TEST_F(RenderIntentTest, PlainPassCalibratesBeforePccAndLogsMissingRecords) {
    const std::string fn = "ProcessModeRenderIntent: ProcessModeRenderIntent: ";
    out_.payload = {EmptyEntry(kPbPa), EmptyEntry(kPbGamut)};
    EXPECT_EQ(Run(nullptr, &out_), 0);  // without a colour mode neither stage can refuse
    EXPECT_EQ(At<PaConfig>(0), nullptr) << "no PA stage on a plain pass";
    EXPECT_NE(At<GamutConfig>(1), nullptr) << "calibration stage";
    EXPECT_EQ(out_.payload.size(), 3u) << "PCC stage";
    EXPECT_LT(log_.IndexOf("ZuvaColorRenderIntentCalibration: empty_payload 1\n"),
              log_.IndexOf("GetPccCoeff: Active PCC is not preset\n"));
    EXPECT_EQ(Run(nullptr, nullptr), 0);
    EXPECT_EQ(log_.Count(ANDROID_LOG_WARN, fn + "input is null\n"), 2);
    EXPECT_EQ(log_.Count(ANDROID_LOG_ERROR, fn + "output is null\n"), 1);
    A::pq_update_pending_(plugin_) = true;  // nor does an update pass read a missing output
    EXPECT_EQ(Run(&input_, nullptr), 0);
}

TEST_F(RenderIntentTest, UpdatePassRunsEveryStageInOrderOverEmptyAndHostEntriesOfExactName) {
    auto pa = std::make_shared<PaConfig>(PaConfig{15752, true});
    auto gc = std::make_shared<GammaPostBlendConfig>();
    auto pcc = std::make_shared<PccConfig>(MakePcc(2.0, false));
    auto gamut = std::make_shared<GamutConfig>(GamutConfig{117936, true, 0x55, 3, 4, 2, {}});
    gc->r.assign(3, 0xa);
    gc->g.assign(2, 0xb);
    gc->b.assign(1, 0x1234c);
    gc->dither_en = true;
    gc->dither_strength = 3;
    A::pq_levels_(plugin_).saturation = 10;
    A::glimra_enabled_(plugin_) = true;
    A::glimra_boost_curve_(plugin_).assign(kLinearCurveLength, 7);
    out_.payload = {EmptyEntry(kPbPa),       EmptyEntry(kPbPaDither),    Entry(kPbPa, pa),
                    EmptyEntry(kPbGC + "x"), EmptyEntry(kPbGC),          Entry(kPbGC, gc),
                    EmptyEntry(kPbPCC),      EmptyEntry(kPbPCC + "2"),   Entry(kPbPCC, pcc),
                    EmptyEntry(kPbGamut),    EmptyEntry(kPbGamut + "2"), Entry(kPbGamut, gamut)};
    RunUpdate(kSceneSaturation | kSceneDark | kSceneZuvaGlimra, nullptr);

    ASSERT_EQ(out_.payload.size(), 13u) << "one PCC entry appended";
    for (auto [i, version] : {std::pair{0, 15752u}, {4, 88u}, {6, 280u}, {9, 117936u}}) {
        EXPECT_EQ(*At<uint32_t>(i), version) << "record made for entry " << i;
    }
    for (size_t i : {1, 3, 7, 10}) {
        EXPECT_FALSE(out_.payload[i].hw_payload) << out_.payload[i].hw_asset << " is no block";
    }
    EXPECT_EQ(out_.payload[6].hw_payload_len, 0u) << "a made record leaves the length";
    EXPECT_EQ(pa->global.saturation, 10.0f);
    EXPECT_EQ(out_.payload[12].version, 56u);
    EXPECT_EQ(out_.payload[12].hw_payload_len, 280u);
    EXPECT_EQ(out_.payload[12].hw_asset, kPbPCC);
    EXPECT_EQ(At<GammaPostBlendConfig>(4)->b, std::vector<uint32_t>(kLinearCurveLength, 7));
    for (size_t i : {6, 8, 12}) {
        EXPECT_TRUE(At<PccConfig>(i)->enabled) << i;
        EXPECT_TRUE(SameBody(*At<PccConfig>(i), MakePcc(0.5))) << i;
    }
    EXPECT_TRUE(gc->enabled);
    EXPECT_TRUE(HoldsLut(*gamut, A::calibrated_lut3d_srgb_(plugin_)));
    EXPECT_EQ(log_.Matching("input is null").size(), 0u) << "an update pass takes no input";
    const std::string z = "ZuvaColorRenderIntent", calibrated = "[1.500000 13.500000 25.500000]";
    const std::string gc_host = std::string("dither_en:1, dither_strength=3  [RSize=3 GSize=2 ") +
                                "BSize=1] r0=0x       a g0=0x       b b0=0x   1234c\n";
    const std::string pcc_tail = "], empty=1 , gmt_(255 1) itt=(-1 9)\n";
    const std::string cal = z + "Calibration: ", cfg = ", gamut_cfg(3dlut) [flg=0x";
    const std::string lut_tail = "entry: :0, gamut_(255 1) intent=(-1 9)\n";
    const std::string srgb = std::string("1st[1000 1001 1002 -> 1003 1004 1005]Lst[30472 ") +
                             "30473 30474 -> 30475 30476 30477]\n";
    const std::tuple<std::string, int> lines[] = {
        {z + "PCC: multiply with PCC in active mode\n", 0},  // the host's PCC is off
        {z + "PA: ##empty_payload=1, " + PaDump(0, 0, "0.000000") + "\n", 1},
        {z + "PA: ##empty_payload=1, " + PaDump(1, 0, "0.000000") + "\n", 1},
        {z + "PA: ==override_payload: " + PaDump(1, 240, "10.000000") + "\n", 1},
        {z + "Gamma: empty_payload 1\n", 1},
        {z + "Gamma: ##empty_payload: 1, cfg enabled: 0, " + gc_host, 1},
        {z + "Gamma: ==override_payload: cfg enabled: 1, " + gc_host, 1},
        {"GetPccCoeff: Active PCC is not preset\n", 1},
        {z + "PCC: ##Original PCC[0.000000 0.000000 0.000000" + pcc_tail, 1},
        {z + "PCC: ==Overwrite PCC" + calibrated + ", empty=1\n", 2},
        {z + "PCC: ##Original PCC[3.000000 15.000000 27.000000" + pcc_tail, 1},
        {z + "PCC: Push new PCC config " + calibrated + " into output payload\n", 1},
        {cal + "empty_payload 1\n", 1},
        {cal + "##empty: 1, cfgEn=0" + cfg + "0 lut3d_id=0 uniform=0 num=0] " + lut_tail, 1},
        {cal + "==empty: 1, cfgEn=1" + cfg + "0 lut3d_id=1 uniform=1 num4913] entry: " + srgb, 2},
        {cal + "##empty: 1, cfgEn=1" + cfg + "55 lut3d_id=3 uniform=4 num=2] " + lut_tail, 1}};
    std::vector<int> at;
    for (const auto &[line, count] : lines) {
        EXPECT_EQ(Debug(line), count) << line;
        at.push_back(log_.IndexOf(line));
    }
    EXPECT_TRUE(std::is_sorted(at.begin(), at.end()));  // PA, gamma, PCC, calibration
}

TEST_F(RenderIntentTest, PccStageGatesAndNativeModeTest) {
    enum Outcome { kSilent = 0, kNotNative = 1, kOff = 2, kApplied = 5 };  // lines logged
    const std::tuple<Gate, uint32_t, uint32_t, Outcome> cases[] = {
        {kOpen, 0, 255, kApplied}, {kOpen, 256, 255, kApplied},   {kOpen, 300, 255, kApplied},
        {kOpen, 1, 1, kApplied},   {kOpen, 1, 255, kNotNative},   {kOpen, 257, 255, kNotNative},
        {kCli, 0, 255, kSilent},   {kTransform, 0, 255, kSilent}, {kNoCal, 0, 255, kSilent},
        {kUnlatched, 0, 255, kOff}};
    const PccConfig host = MakePcc(2.0);
    const std::string fn = "ZuvaColorRenderIntentPCC: ";
    const std::string not_native = fn + fn + "not native mode. gmt (12 1), intent (";
    for (const auto &[gate, intent, cali_gamut, outcome] : cases) {
        SCOPED_TRACE("gate " + std::to_string(gate) + " intent " + std::to_string(intent));
        log_.Clear();
        out_.payload = {Entry(kPbPCC, std::make_shared<PccConfig>(host))};
        A::is_primary_(plugin_) = gate != kCli;
        A::clr_trsfm_(plugin_) = gate == kTransform;
        A::en_calibrated_pcc_(plugin_) = gate != kNoCal;
        A::latched_scene_id_(plugin_) = gate == kUnlatched ? 0 : kSceneColorTemperature;
        A::cali_gamut_(plugin_) = cali_gamut;
        input_.color_mode.intent = intent;
        A::ZuvaColorRenderIntentPCC(plugin_, &input_, &out_);
        EXPECT_EQ(log_.Lines().size(), size_t{outcome});
        EXPECT_EQ(out_.payload.size(), outcome == kApplied ? 2u : 1u);
        EXPECT_EQ(At<PccConfig>(0)->enabled, outcome != kOff);
        EXPECT_EQ(SameBody(*At<PccConfig>(0), host), outcome != kApplied);
        EXPECT_EQ(Debug(not_native + std::to_string(intent) + " 9)\n"), outcome == kNotNative);
        EXPECT_EQ(Debug(fn + "multiply with PCC in active mode\n"), outcome >= kOff);
    }
}

TEST_F(RenderIntentTest, CalibrationStageGatesAndDecisionTable) {
    enum Outcome { kSkip, kOff, kHost, kSrgb, kP3 };
    const std::tuple<Gate, int, uint32_t, uint32_t, bool, Outcome> cases[] = {
        {kCli, 1, 255, 1, 1, kSkip},   {kNoCal, 1, 255, 1, 1, kSkip}, {kOpen, 0, 255, 1, 1, kSkip},
        {kOpen, -1, 255, 1, 1, kSrgb}, {kOpen, 1, 255, 12, 1, kP3},   {kOpen, 1, 12, 1, 1, kP3},
        {kOpen, 0, 1, 12, 1, kP3},     {kOpen, 1, 1, 5, 1, kSrgb},    {kOpen, 1, 255, 5, 1, kHost},
        {kOpen, 1, 255, 1, 0, kHost},  {kOpen, 1, 0, 1, 1, kOff},     {kOpen, 1, 77, 1, 1, kOff},
        {kOpen, 1, 255, 255, 1, kOff}};
    // Intent -1: no input. The host's first and last entry summarise past 127 characters.
    const std::string m = "-2147483648 -2147483648 -2147483648", row = m + " -> " + m;
    const std::string cut = ("1st[" + row + "]Lst[" + row + "]").substr(0, 127);
    auto host = std::make_shared<GamutConfig>();
    out_.payload = {Entry(kPbGamut, host)};
    for (const auto &[gate, intent, cali_gamut, mode_gamut, copy, outcome] : cases) {
        SCOPED_TRACE("gate " + std::to_string(gate) + " intent " + std::to_string(intent) +
                     " cali_gamut " + std::to_string(cali_gamut) + " mode " +
                     std::to_string(mode_gamut) + " copy " + std::to_string(copy));
        log_.Clear();
        const bool on = outcome >= kHost;
        *host = GamutConfig{117936, !on, 0x55, 0, 0, 3, {}};
        std::fill_n(&host->entries[0].in_r, 18, 1u << 31);
        A::is_primary_(plugin_) = gate != kCli;
        A::en_calibrated_3dlut_(plugin_) = gate != kNoCal;
        A::cali_gamut_(plugin_) = cali_gamut;
        A::active_color_mode_(plugin_).gamut = mode_gamut;
        A::latched_scene_id_(plugin_) = copy ? kSceneFacCalibration : 0;
        input_.color_mode.intent = static_cast<uint32_t>(intent);
        A::ZuvaColorRenderIntentCalibration(plugin_, intent < 0 ? nullptr : &input_, &out_);
        EXPECT_EQ(log_.Matching("entry: " + cut + ", gamut_").size(), outcome != kSkip);
        const std::string kept = ", gamut_cfg(3dlut) [flg=0x55 lut3d_id=0 uniform=0 num3] entry: ";
        EXPECT_EQ(Debug("ZuvaColorRenderIntentCalibration: ==empty: 0, cfgEn=" +
                        std::to_string(outcome == kHost) + kept + cut + "\n"),
                  outcome == kHost || outcome == kOff);
        EXPECT_EQ(host->enabled, on || outcome == kSkip);  // a skipped stage leaves it set
        EXPECT_EQ(host->flags == 0x55, outcome <= kHost);
        EXPECT_EQ(HoldsLut(*host, A::calibrated_lut3d_srgb_(plugin_)), outcome == kSrgb);
        EXPECT_EQ(HoldsLut(*host, A::calibrated_lut3d_p3_(plugin_)), outcome == kP3);
    }
}

}  // namespace
}  // namespace snapdragoncolor
