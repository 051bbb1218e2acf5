// A serving primary-panel plug-in driven through ProcessOps, with recognisable calibration data.
#ifndef STC_TESTS_UNIT_PIPELINE_FIXTURE_H_
#define STC_TESTS_UNIT_PIPELINE_FIXTURE_H_

#include <android/log.h>
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>

#include "picture/scene_items.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {

using A = StcZuvaColorTestAccess;
using stc_test::EmptyEntry;
using stc_test::Entry;

// Every coefficient and the host word (offset 8, where the body starts) differ.
inline PccConfig MakePcc(double base, bool enabled = true) {
    PccConfig pcc{sizeof(PccConfig), enabled, static_cast<uint64_t>(base * 1000), {}, {}, {}};
    std::iota(&pcc.red.c, &pcc.red.c + 33, base);
    return pcc;
}

inline bool SameBody(const PccConfig &a, const PccConfig &b) {
    return std::memcmp(&a.host_word, &b.host_word, sizeof(PccConfig) - 8) == 0;
}

inline void FillLut(lut3d_info &lut, int base) {
    lut = {0, 1, 1, kGamutEntries, {}};
    std::iota(&lut.entries[0][0], &lut.entries[0][0] + kGamutEntries * 6, base);
}

inline bool HoldsLut(const GamutConfig &config, const lut3d_info &lut) {
    return std::memcmp(&config.flags, &lut, sizeof(lut)) == 0;
}

class PipelineTest : public ::testing::Test {
  protected:
    PipelineTest() {
        A::init_done_(plugin_) = A::is_primary_(plugin_) = true;
        A::calibrated_pcc_(plugin_) = MakePcc(0.5);
        FillLut(A::calibrated_lut3d_srgb_(plugin_), 1000);
        FillLut(A::calibrated_lut3d_p3_(plugin_), 50000);
    }
    int Run(ModeRenderInputParams *input, HwConfigOutputParams *output) {
        ScPayload in = stc_test::PayloadOf(input), out = stc_test::PayloadOf(output);
        return plugin_.ProcessOps(kScModeRenderIntent, in, &out);
    }
    template <typename T>
    T *At(size_t i) {
        return stc_test::RecordOf<T>(out_.payload.at(i));
    }
    int Debug(const std::string &message) const { return log_.Count(ANDROID_LOG_DEBUG, message); }

    std::unique_ptr<StcZuvaColor> owner_ = std::make_unique<StcZuvaColor>();
    StcZuvaColor &plugin_ = *owner_;
    ModeRenderInputParams input_ = stc_test::ModeInput(kGamutP3, 2, 0);
    HwConfigOutputParams out_;
    stc_test::LogCapture log_;
};

}  // namespace snapdragoncolor

#endif  // STC_TESTS_UNIT_PIPELINE_FIXTURE_H_
