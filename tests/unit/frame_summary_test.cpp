// The diagnostic summary that ProcessOps logs before an update, and the operation counter.
#include <android/log.h>
#include <gtest/gtest.h>

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

    std::vector<stc_test::LogLine> Summaries() { return log_.Matching(", meta="); }

    StcZuvaColor plugin_;
    stc_test::LogCapture log_;
};

TEST_F(FrameSummaryTest, AbsentBlocksPrintFiveAndMissingInputPrintsMinusOne) {
    Access::pq_update_pending_(plugin_) = true;
    HwConfigOutputParams output;
    ScPayload in;  // no input record
    ScPayload out = PayloadOf(&output);
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    auto lines = Summaries();
    ASSERT_EQ(lines.size(), 1u) << log_.Dump();
    EXPECT_EQ(lines[0].priority, ANDROID_LOG_DEBUG);
    EXPECT_EQ(lines[0].message,
              "ProcessOps: op = kScModeSwAssets, meta=-1, colorMode[gmt=-1, gma=-1, itt=-1], "
              "RenderIntent[pcc=5, pa=5, dither=5, gc=5 IgcNum=5 gamut=5] SwAssets[deEn=5]  "
              "processCnt=1, clr_trsfm=0, caliPccEn=0, cali_3dlut_=0, cali_gamut_=255, "
              "is_primary_=0, curr_scene:0S{}S{}\n");
}

TEST_F(FrameSummaryTest, ReportsTheLastRecordOfEachBlockAsProposed) {
    Access::pq_update_pending_(plugin_) = true;
    Access::de_update_pending_(plugin_) = false;
    auto pcc_off = std::make_shared<PccConfig>();
    auto pcc_on = std::make_shared<PccConfig>();
    pcc_on->enabled = true;
    auto igc = std::make_shared<IgcRecord>();
    igc->num_of_entries = 1024;
    auto de = std::make_shared<DETuningConfig>();
    de->enabled = true;
    HwConfigOutputParams output;
    output.payload = {Entry(kPbPCC, pcc_off), Entry(kPbPCC, pcc_on), Entry(kPbIGC, igc),
                      Entry(kPbDE, de),       EmptyEntry(kPbGC),     Entry(kPbPaDither, de)};
    ModeRenderInputParams input = stc_test::ModeInput(1, 2, 3);
    input.meta = true;
    ScPayload in = PayloadOf(&input);
    ScPayload out = PayloadOf(&output);
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    auto lines = Summaries();
    ASSERT_EQ(lines.size(), 1u) << log_.Dump();
    EXPECT_NE(lines[0].message.find("meta=1, colorMode[gmt=1, gma=2, itt=3], RenderIntent[pcc=1, "
                                    "pa=5, dither=5, gc=5 IgcNum=1024 gamut=5] SwAssets[deEn=1]"),
              std::string::npos)
        << lines[0].message;
}

TEST_F(FrameSummaryTest, SharpnessPendingNeedsTheSharpnessItem) {
    HwConfigOutputParams output;
    ScPayload in;
    ScPayload out = PayloadOf(&output);
    Access::de_update_pending_(plugin_) = true;
    Access::curr_scene_id_(plugin_) = 0x40000000;
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    EXPECT_TRUE(Summaries().empty());
    Access::de_update_pending_(plugin_) = true;
    Access::curr_scene_id_(plugin_) = 0x100;
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    EXPECT_EQ(Summaries().size(), 1u);
}

TEST_F(FrameSummaryTest, RefusedOperationsNeitherCountNorResetTheValue) {
    Access::curr_scene_val_(plugin_) = 42;
    HwConfigOutputParams output;
    ScPayload in;
    ScPayload out = PayloadOf(&output);
    EXPECT_EQ(plugin_.ProcessOps(kScOpsMax, in, &out), -22);
    EXPECT_EQ(plugin_.ProcessOps(kScModeRenderIntent, in, nullptr), -22);
    EXPECT_EQ(Access::process_cnt_(plugin_), 0u);
    EXPECT_EQ(Access::curr_scene_val_(plugin_), 42u);
    plugin_.ProcessOps(kScModeSwAssets, in, &out);
    EXPECT_EQ(Access::process_cnt_(plugin_), 1u);
    EXPECT_EQ(Access::curr_scene_val_(plugin_), UINT32_MAX);
}

}  // namespace
}  // namespace snapdragoncolor
