// The sw-assets operation as the host drives it: the sharpness level overrides the DE strength.
#include <android/log.h>
#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_test::PayloadOf;

class SharpnessTest : public ::testing::Test {
  protected:
    void SetUp() override {
        A::init_done_(c_) = true;
        de_->sharp_factor = 3;
        de_->de_lpf_l = 2;
        output_.payload = {stc_test::Entry(kPbDE, de_), stc_test::EmptyEntry(kPbDE),
                           stc_test::EmptyEntry(kPbPa)};
    }
    // What a colour property write leaves behind for the operation.
    void Pending(uint32_t scene) {
        A::curr_scene_id_(c_) = scene;
        A::pq_levels_(c_).sharpness = 7;
        A::de_update_pending_(c_) = true;
    }
    int SwAssets(HwConfigOutputParams *output) {
        ScPayload out = PayloadOf(output);
        return c_.ProcessOps(kScModeSwAssets, PayloadOf<ModeRenderInputParams>(nullptr), &out);
    }
    bool Untouched() { return de_->sharp_factor == 3 && !output_.payload[1].hw_payload; }

    stc_test::LogCapture log_;
    StcZuvaColor c_;
    std::shared_ptr<DETuningConfig> de_ = std::make_shared<DETuningConfig>();
    HwConfigOutputParams output_;
};

TEST_F(SharpnessTest, OutputUntouchedUnlessSharpnessPending) {
    EXPECT_EQ(SwAssets(&output_), 0);
    EXPECT_TRUE(Untouched() && log_.Lines().empty()) << log_.Dump();
    Pending(0x40000000);
    EXPECT_EQ(SwAssets(&output_), 0);
    EXPECT_TRUE(Untouched() && !A::de_update_pending_(c_));
}

TEST_F(SharpnessTest, EveryDeEntryOverriddenOnceOutputArrives) {
    Pending(0x100);
    EXPECT_EQ(SwAssets(nullptr), 0);  // the host's list is missing this time
    EXPECT_TRUE(
        log_.Has(ANDROID_LOG_ERROR, "ProcessModeSwAssets: ProcessModeSwAssets: output is null\n"));
    EXPECT_TRUE(A::de_update_pending_(c_));
    EXPECT_EQ(SwAssets(&output_), 0);
    EXPECT_FALSE(A::de_update_pending_(c_));
    EXPECT_EQ(de_->sharp_factor, 7u);
    auto *fresh = stc_test::RecordOf<DETuningConfig>(output_.payload[1]);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(std::tie(fresh->version, fresh->enabled, fresh->sharp_factor),
              std::make_tuple(60u, false, 7u));
    EXPECT_FALSE(output_.payload[2].hw_payload);
    EXPECT_TRUE(
        log_.Has(ANDROID_LOG_DEBUG,
                 "ZuvaColorSwAssetsSharpness: active_de DETuningConfig version:60,enabled:0 "
                 "flags:0, sharp_factor:3, thr_quiet:0, thr_dieout:0 thr_low:0, "
                 "thr_high:0, clip:0, quality:0, content_type:0, de_blend:0  de_lpf_l:2, "
                 "de_lpf_m:0, de_lpf_h:0\n"))
        << log_.Dump();
    EXPECT_EQ(log_.Matching("active_de").size(), 1u);
    EXPECT_EQ(
        log_.Matching("overrd_de DETuningConfig version:60,enabled:0 flags:0, sharp_factor:7,")
            .size(),
        2u);
}

}  // namespace
}  // namespace snapdragoncolor
