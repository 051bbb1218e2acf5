// The host's own properties: capability reports, payload list, colour transform and dimming.
#include <android/log.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
constexpr int kD = ANDROID_LOG_DEBUG;
constexpr int kE = ANDROID_LOG_ERROR;

class HostPropertiesTest : public ::testing::Test {
  protected:
    void SetUp() override { A::init_done_(c_) = true; }
    template <typename T>
    int Set(ScProperty prop, T *record, uint32_t len = sizeof(T)) {
        return c_.SetProperty(stc_test::PayloadOf(record, len, prop));
    }
    template <typename T>
    int Get(ScProperty prop, T *record, uint32_t len) {
        ScPayload payload = stc_test::PayloadOf(record, len, prop);
        return c_.GetProperty(&payload);
    }
    // Writes the matrix; true when the handler logged it.
    bool Transform(ColorTransformMatrix matrix) {
        log_.Clear();
        EXPECT_EQ(Set(kSetColorTransform, &matrix), 0);
        return !log_.Matching("SetColorTransform: SetColorTransform").empty();
    }
    stc_test::LogCapture log_;
    StcZuvaColor c_;
};

TEST_F(HostPropertiesTest, TransformFlagFollowsUpperLeft3x3) {
    ColorTransformMatrix id;
    id.m[0] = id.m[5] = id.m[10] = id.m[15] = 1.0f;
    EXPECT_EQ(Set(kSetColorTransform, &id, 64), -22);
    EXPECT_TRUE(log_.Has(kE, "SetColorTransform: len of Input params act 64 exp 68\n"));
    EXPECT_FALSE(Transform(id));
    ColorTransformMatrix m = id;
    m.m[1] = 0.25f;
    m.m[3] = 2.0f;
    EXPECT_TRUE(Transform(m) && A::clr_trsfm_(c_));
    EXPECT_TRUE(log_.Has(kD,
                         "SetColorTransform: SetColorTransform  1.000000  0.250000  0.000000  "
                         "2.000000      0.000000  1.000000  0.000000  0.000000       "
                         "0.000000  0.000000  1.000000  0.000000 \n"));
    EXPECT_FALSE(Transform(m));
    m = id;
    m.m[3] = m.m[15] = 0.5f;
    m.m[8] = -0.0f;
    EXPECT_TRUE(Transform(m) && !A::clr_trsfm_(c_));  // back to identity
    m.m[0] = std::nanf("");
    EXPECT_TRUE(Transform(m) && A::clr_trsfm_(c_));
}

TEST_F(HostPropertiesTest, ReportsAreLoggedNotKept) {
    PostBlendHwCaps caps;
    caps.num_of_entries = 1024;
    caps.entries_width = 10;
    EXPECT_EQ(Set(kPostBlendGamutHwConfig, &caps), 0);
    EXPECT_TRUE(log_.Has(kD,
                         "SetPostBlendGamutConfig: PostBlend Gamut HW Config: "
                         "num_of_grid_entires 1024, grid_entries_width 10\n"));
    EXPECT_EQ(Set(kPostBlendInverseGammaHwConfig, &caps, 39), -22);
    EXPECT_TRUE(log_.Has(kE, "SetPostBlendInvGammaConfig: len of Input params act 39 exp 40\n"));
    HwConfigOutputParams list;
    list.payload = {stc_test::EmptyEntry(kPbGC)};
    EXPECT_EQ(Set(kHwConfigPayloadParam, &list), 0);
    EXPECT_TRUE(
        log_.Has(kD, "SetHwConfigPayloadParam: SetHwConfigPayloadParam payload size = 1\n"));
    EXPECT_TRUE(log_.Has(kD, "SetHwConfigPayloadParam: set hw_asset= PostBlendGC\n"));
    bool answer[2] = {};
    EXPECT_EQ(Get(kHwConfigPayloadParam, answer, 2), -22);
    EXPECT_EQ(log_.Matching("len of").size(), 1u);  // the getter refuses silently
    EXPECT_EQ(Get(kHwConfigPayloadParam, answer, 1), 0);
    EXPECT_TRUE(answer[0]);
}

TEST_F(HostPropertiesTest, DimmingFactorStoredAndUpdateStaysWanted) {
    double factor = 0.5;
    EXPECT_EQ(Set(kPrivateSetDimmingPcc, &factor, 4), -22);
    EXPECT_TRUE(log_.Has(kE, "SetDimmingPcc: len of Input params act 4 exp 8\n"));
    EXPECT_FALSE(A::dimming_pending_(c_));
    EXPECT_EQ(Set(kPrivateSetDimmingPcc, &factor), 0);
    EXPECT_TRUE(log_.Has(kD, "SetDimmingPcc: pcc attenuation factor is targeted to 0.500000\n"));
    EXPECT_EQ(A::pcc_attenuation_factor_(c_), 0.5);
    bool answer[4] = {};
    EXPECT_EQ(Get(kNeedsUpdate, answer, 1), 0);
    EXPECT_TRUE(answer[0]);
    EXPECT_EQ(Get(kPrivateDimmingSupport, answer + 1, 4), -22);
    EXPECT_TRUE(log_.Has(kE, "GetDimmingSupport: len of Input params act 4 exp 1\n"));
}

TEST_F(HostPropertiesTest, AttenuationScalesFirstPccOnly) {
    HwConfigOutputParams output;
    EXPECT_EQ(A::ApplyPccAttenuationFactor(c_, &output, 0.5), 0);
    EXPECT_TRUE(log_.Has(kD, "ApplyPccAttenuationFactor: no pcc matrix in output_params\n"));
    auto first = std::make_shared<PccConfig>(), second = std::make_shared<PccConfig>();
    double coeffs[33];  // the three rows lie back to back
    for (int i = 0; i < 33; ++i) {
        coeffs[i] = i + 1;
    }
    std::memcpy(&first->red, coeffs, sizeof(coeffs));
    output.payload = {stc_test::EmptyEntry(kPbPa), stc_test::Entry(kPbPCC, first),
                      stc_test::Entry(kPbPCC, second)};
    EXPECT_EQ(A::ApplyPccAttenuationFactor(c_, &output, 0.5), 0);
    std::memcpy(coeffs, &first->red, sizeof(coeffs));
    for (int i = 0; i < 33; ++i) {
        EXPECT_EQ(coeffs[i], (i + 1) * 0.5) << i;
    }
    EXPECT_TRUE(first->enabled && !second->enabled);
}

}  // namespace
}  // namespace snapdragoncolor
