// The diagnostic summary that ProcessOps logs before an update, the operation counter, DeInit and
// the texts that name operations and items.
#include <android/log.h>
#include <gtest/gtest.h>

#include "frame/names.h"
#include "picture/scene_items.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using Access = StcZuvaColorTestAccess;
using stc_test::EmptyEntry;
using stc_test::Entry;
using stc_test::PayloadOf;

struct IgcRecord {
    uint32_t version = 16;
    uint32_t num_of_entries = 0;
    uint64_t reserved = 0;
};

class FrameSummaryTest : public ::testing::Test {
  protected:
    void SetUp() override { Access::init_done_(plugin_) = true; }
    // Runs a sw-assets operation (no input record when `input` is null) and returns its summaries.
    std::vector<stc_test::LogLine> Summaries(ModeRenderInputParams *input = nullptr) {
        ScPayload in = input ? PayloadOf(input) : ScPayload{}, out = PayloadOf(&output_);
        log_.Clear();
        plugin_.ProcessOps(kScModeSwAssets, in, &out);
        return log_.Matching(", meta=");
    }

    StcZuvaColor plugin_;
    HwConfigOutputParams output_;
    stc_test::LogCapture log_;
};

TEST_F(FrameSummaryTest, AbsentBlocksPrintFiveAndMissingInputPrintsMinusOne) {
    Access::pq_update_pending_(plugin_) = true;
    const auto lines = Summaries();
    ASSERT_EQ(lines.size(), 1u) << log_.Dump();
    EXPECT_EQ(lines[0].priority, ANDROID_LOG_DEBUG);
    EXPECT_EQ(lines[0].message,
              "ProcessOps: op = kScModeSwAssets, meta=-1, colorMode[gmt=-1, gma=-1, itt=-1], "
              "RenderIntent[pcc=5, pa=5, dither=5, gc=5 IgcNum=5 gamut=5] SwAssets[deEn=5]  "
              "processCnt=1, clr_trsfm=0, caliPccEn=0, cali_3dlut_=0, cali_gamut_=255, "
              "is_primary_=0, curr_scene:0S{}S{}\n");
}

// Neighbouring fields of both lines differ, so that none can stand in for another.
TEST_F(FrameSummaryTest, ReportsTheLastRecordOfEachBlockAsProposed) {
    Access::pq_update_pending_(plugin_) = Access::clr_trsfm_(plugin_) = true;
    Access::en_calibrated_3dlut_(plugin_) = true;
    Access::cali_gamut_(plugin_) = 12;
    Access::curr_scene_id_(plugin_) = 0x800;
    Access::latched_scene_id_(plugin_) = 0x2000;
    auto off = std::make_shared<PccConfig>(), on = std::make_shared<PccConfig>();
    on->enabled = true;
    auto igc = std::make_shared<IgcRecord>();
    igc->num_of_entries = 1024;
    auto de = std::make_shared<DETuningConfig>();  // enabled, and a stand-in for the dither record
    de->enabled = true;
    // clang-format off
    output_.payload = {Entry(kPbPCC, off), Entry(kPbPCC, on), Entry(kPbIGC, igc), Entry(kPbDE, de),
                       Entry(kPbDither, de), EmptyEntry(kPbGC), Entry(kPbPaDither, de),
                       Entry(kPbPa, off), Entry(kPbGamut, std::make_shared<GamutConfig>())};
    // clang-format on
    ModeRenderInputParams input = stc_test::ModeInput(2, 3, 4);
    input.meta = true;
    const auto lines = Summaries(&input);
    const std::string state =
        "clr_trsfm=1, caliPccEn=0, cali_3dlut_=1, cali_gamut_=12, is_primary_=0";
    const std::string scene = "curr_scene:2048S{SATURATION }S{COLOR_TEMPERATURE }\n";
    ASSERT_EQ(lines.size(), 1u) << log_.Dump();
    EXPECT_EQ(lines[0].message,
              "ProcessOps: op = kScModeSwAssets, meta=1, colorMode[gmt=2, gma=3, itt=4], "
              "RenderIntent[pcc=1, pa=0, dither=1, gc=5 IgcNum=1024 gamut=0] SwAssets[deEn=1]  "
              "processCnt=1, " +
                  state + ", " + scene);
    EXPECT_EQ(log_.Count(ANDROID_LOG_DEBUG,
                         "ProcessOps: op = kScModeSwAssets, colormode changed: gamut(255->2) "
                         "gamma(255->3) intent(65535->4) id(-1->0), " +
                             state + " " + scene),
              1);
}

TEST_F(FrameSummaryTest, SharpnessPendingNeedsTheSharpnessItem) {
    for (uint32_t scene : {0x40000000u, 0x100u}) {
        Access::de_update_pending_(plugin_) = true;
        Access::curr_scene_id_(plugin_) = scene;
        EXPECT_EQ(Summaries().size(), scene == 0x100 ? 1u : 0u) << std::hex << scene;
    }
}

TEST_F(FrameSummaryTest, RefusedOperationsNeitherCountNorResetTheValue) {
    Access::curr_scene_val_(plugin_) = 42;
    ScPayload in, out = PayloadOf(&output_);
    EXPECT_EQ(plugin_.ProcessOps(kScOpsMax, in, &out), -22);
    EXPECT_EQ(plugin_.ProcessOps(kScModeRenderIntent, in, nullptr), -22);
    EXPECT_EQ(Access::process_cnt_(plugin_), 0u);
    EXPECT_EQ(Access::curr_scene_val_(plugin_), 42u);
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    EXPECT_EQ(Access::process_cnt_(plugin_), 1u);
    EXPECT_EQ(Access::curr_scene_val_(plugin_), UINT32_MAX);
}

TEST_F(FrameSummaryTest, DeInitWithoutTheLibraryStillStopsServing) {
    EXPECT_EQ(plugin_.DeInit(), 0);
    EXPECT_FALSE(Access::init_done_(plugin_));
}

// Operation 255 is refused before any line could name it, so its name is checked here.
TEST(NamesTest, OperationsAndItemsPrintTheirNames) {
    EXPECT_STREQ(ScOpsName(255), "kScOpsMax");
    EXPECT_EQ(SceneIdToString(0), "S{}");
    EXPECT_EQ(SceneIdToString(0x8000020), "S{SKIN ZUVA_GLIMRA }");
    EXPECT_EQ(SceneIdToString(0xFFFFFFFF),
              "S{SKY_CLOUD GRASS DESERT SNOW SUN_RF SKIN DARK OVEREXPOSURE SHARPNESS CONTRAST HUE "
              "SATURATION VALUE COLOR_TEMPERATURE FAC_CALIBRATION WATER_SURFACE LOAD_3DLUT "
              "PRINT_LOG FORCE_UPDATE ZUVA_GLIMRA }");
    // clang-format off
    const char *const names[32] = {
        "SKY_CLOUD", "GRASS", "DESERT", "SNOW", "SUN_RF", "SKIN", "DARK", "OVEREXPOSURE",
        "SHARPNESS", "CONTRAST", "HUE", "SATURATION", "VALUE", "COLOR_TEMPERATURE",
        "FAC_CALIBRATION", "WATER_SURFACE", "", "", "", "", "", "", "", "", "", "", "",
        "ZUVA_GLIMRA", "LOAD_3DLUT", "PRINT_LOG", "FORCE_UPDATE", ""};
    // clang-format on
    for (int bit = 0; bit < 32; ++bit) {
        const std::string name = names[bit];
        EXPECT_EQ(SceneIdToString(1u << bit), name.empty() ? "S{}" : "S{" + name + " }") << bit;
    }
}

}  // namespace
}  // namespace snapdragoncolor
