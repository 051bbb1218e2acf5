// A serving primary-panel plug-in driven through ProcessOps, with recognisable calibration data.
#ifndef STC_TESTS_UNIT_PIPELINE_FIXTURE_H_
#define STC_TESTS_UNIT_PIPELINE_FIXTURE_H_

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {

using A = StcZuvaColorTestAccess;

inline PccConfig MakePcc(double base, bool enabled) {
    PccConfig pcc;
    pcc.enabled = enabled;
    pcc.host_word = static_cast<uint64_t>(base * 1000);
    double *coeff = &pcc.red.c;
    for (int i = 0; i < 33; ++i) {
        coeff[i] = base + i / 100.0;
    }
    return pcc;
}

// Coefficient body: everything from the host word at offset 8 on.
inline bool SamePccBody(const PccConfig &a, const PccConfig &b) {
    return std::memcmp(&a.host_word, &b.host_word, sizeof(PccConfig) - 8) == 0;
}

inline void FillLut(lut3d_info &lut, int base) {
    lut.flags = 0;
    lut.lut3d_id = 1;
    lut.uniform = 1;
    lut.num = kGamutEntries;
    for (uint32_t i = 0; i < kGamutEntries; ++i) {
        for (int c = 0; c < 6; ++c) {
            lut.entries[i][c] = base + static_cast<int>(i) + c;
        }
    }
}

inline bool HoldsLut(const GamutConfig &config, const lut3d_info &lut) {
    return std::memcmp(&config.flags, &lut, sizeof(lut)) == 0;
}

class PipelineTest : public ::testing::Test {
  protected:
    PipelineTest() {
        A::init_done_(plugin_) = true;
        A::is_primary_(plugin_) = true;
        A::calibrated_pcc_(plugin_) = MakePcc(0.5, true);
        FillLut(A::calibrated_lut3d_srgb_(plugin_), 1000);
        FillLut(A::calibrated_lut3d_p3_(plugin_), 50000);
    }

    int Run(ModeRenderInputParams *input) { return RunOn(input, &out_); }
    int RunOn(ModeRenderInputParams *input, HwConfigOutputParams *output) {
        ScPayload in = stc_test::PayloadOf(input);
        ScPayload out = stc_test::PayloadOf(output);
        return plugin_.ProcessOps(kScModeRenderIntent, in, &out);
    }
    template <typename T>
    T *At(size_t i) {
        return stc_test::RecordOf<T>(out_.payload.at(i));
    }
    size_t Lines(const std::string &text) const { return log_.Matching(text).size(); }

    std::unique_ptr<StcZuvaColor> owner_ = std::make_unique<StcZuvaColor>();
    StcZuvaColor &plugin_ = *owner_;
    HwConfigOutputParams out_;
    stc_test::LogCapture log_;
};

}  // namespace snapdragoncolor

#endif  // STC_TESTS_UNIT_PIPELINE_FIXTURE_H_
