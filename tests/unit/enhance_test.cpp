// The contrast enhancement: the gamma code file, the two curves and their application to the
// post-blend gamma block.
#include <android/log.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "enhance/glimra.h"
#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"

namespace snapdragoncolor {
namespace {

constexpr int D = ANDROID_LOG_DEBUG;
const std::string kGamma = "/vendor/etc/display/panel_abc_gamma_srgb.txt";
const std::string kReader = "readGammaConfigFromFile: ", kInit = "stcZuvaGlimraInit: ";

std::string Codes(size_t count, int code) {
    std::string text;
    while (count--)
        text += std::to_string(code) + "\n";
    return text;
}

class EnhanceTest : public ::testing::Test {
  protected:
    bool Has(const std::string &message) const { return log_.Has(D, message + "\n"); }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::vector<int> values_ = {99}, boost_, base_;
};

TEST_F(EnhanceTest, GammaFileTakesTheLeadingIntegerOfEachLine) {
    EXPECT_FALSE(readGammaConfigFromFile(values_, kGamma) || !values_.empty());
    EXPECT_TRUE(Has(kReader + "Failed to open gamma config file: " + kGamma));
    tree_.WriteFile(kGamma, "# only\n#comments\n");
    EXPECT_FALSE(readGammaConfigFromFile(values_, kGamma));
    EXPECT_TRUE(Has(kReader + "No valid data found in gamma config file: " + kGamma));

    tree_.WriteFile(kGamma, "12\n#x\n\n  7 trailing\nabc\n-3\n #1\n4294967296\n2147483647\r\n" +
                                std::string("-2147483648\n2147483648\nx\r\n+8"));
    EXPECT_TRUE(readGammaConfigFromFile(values_, kGamma));
    EXPECT_EQ(values_, (std::vector<int>{12, 7, -3, 2147483647, -2147483647 - 1, 8}));
    // abc, " #1", both numbers out of range and x; lines are counted from 1, comments included.
    EXPECT_EQ(log_.Matching("Invalid").size(), 5u);
    EXPECT_TRUE(Has(kReader + "Warning: Invalid data at line 12: x\r"));
    EXPECT_TRUE(Has(kReader + "Successfully loaded 6 values from gamma config file: " + kGamma));
}

TEST_F(EnhanceTest, LinearCurvesMatchTheirReferenceValues) {
    boost_.assign(2000, -1);
    ASSERT_TRUE(stcZuvaGlimraInit(boost_, base_, "lin", true));
    EXPECT_TRUE(Has(kInit + "stcZuvaGlimraInit isLinearGamma:1, panel:lin"));
    const std::pair<int, int> points[] = {
        {0, 0},     {9, 9},     {10, 48},   {11, 51},   {16, 63},     {32, 94},     {64, 144},
        {128, 227}, {256, 360}, {512, 594}, {768, 812}, {1000, 1004}, {1022, 1022}, {1023, 1023}};
    for (auto [i, want] : points) {
        EXPECT_EQ(boost_[i], want) << "index " << i;
    }
    EXPECT_TRUE(boost_.size() == 1024 && base_.size() == 1024 && base_[64] == 64 &&
                base_[1023] == 1023);
}

TEST_F(EnhanceTest, NonLinearCurvesNeedTheWholeFile) {
    EXPECT_FALSE(stcZuvaGlimraInit(boost_, base_, "abc", false));
    EXPECT_TRUE(Has(kInit + "Using default gamma values") && boost_.size() + base_.size() == 2560);
    tree_.WriteFile(kGamma, Codes(1279, 5) + "# not a code\n");
    EXPECT_FALSE(stcZuvaGlimraInit(boost_, base_, "abc\n", false));  // the name ends at its break
    EXPECT_TRUE(Has(kInit + "Loaded 1279 gamma values"));
    EXPECT_TRUE(Has(kInit + "gamma_srgb size is not enough, ignore it"));
    // Codes outside 0..1023 reach neither curve unclamped; codes past the 1280th are left out.
    tree_.WriteFile(kGamma, "512\n0\n-5\n2000\n" + Codes(1277, 1023));
    ASSERT_TRUE(stcZuvaGlimraInit(boost_, base_, "abc\r\nxyz", false));
    EXPECT_EQ((std::vector<int>{boost_[0], base_[0], boost_[1], boost_[2], base_[2], base_[3]}),
              (std::vector<int>{630, 512, 0, 0, 0, 1023}));
    EXPECT_TRUE(gamma_srgb.size() == 1281 && boost_.size() == 1280 && base_[1279] == 1023);
}

// Displays share the gamma table; the suite's name puts this among the ThreadSanitizer tests.
class GlimraConcurrencyTest : public EnhanceTest {};

TEST_F(GlimraConcurrencyTest, DisplaysInitialisingTogetherKeepTheirOwnCodes) {
    tree_.WriteFile("/vendor/etc/display/panel_a_gamma_srgb.txt", Codes(1280, 512));
    tree_.WriteFile("/vendor/etc/display/panel_b_gamma_srgb.txt", Codes(1300, 0));
    auto run = [](const char *panel, int want) {
        std::vector<int> boost, base;
        for (int round = 0; round < 50; ++round) {
            ASSERT_TRUE(stcZuvaGlimraInit(boost, base, panel, false));
            ASSERT_EQ(boost, std::vector<int>(1280, want));
        }
    };
    std::thread other(run, "a", 630);
    run("b", 0);
    other.join();
}

TEST_F(EnhanceTest, OnlyTheFirstGammaBlockTakesTheCurve) {
    auto near_miss = std::make_shared<GammaPostBlendConfig>();
    auto gamma = std::make_shared<GammaPostBlendConfig>();
    gamma->r.assign(2048, 5);
    gamma->dither_strength = 3;
    HwConfigOutputParams out;
    out.payload = {stc_test::Entry("PostBlendGCx", near_miss)};
    std::vector<int> curve(1280, -1);
    EXPECT_EQ(ApplyZuvaGlimra(nullptr, &out, curve, true), 0);
    EXPECT_TRUE(Has("ApplyZuvaGlimra: zgl: no gc matrix in output_params"));
    // The first entry named "PostBlendGC" is the gamma block, even without a record.
    out.payload.push_back(stc_test::EmptyEntry(kPbGC));
    out.payload.push_back(stc_test::Entry(kPbGC, gamma));
    EXPECT_EQ(ApplyZuvaGlimra(nullptr, &out, curve, true), 0);
    EXPECT_TRUE(Has("ApplyZuvaGlimra: zgl: find kPbGC"));
    EXPECT_TRUE(!out.payload[1].hw_payload && near_miss->r.empty() && gamma->r.size() == 2048);
    out.payload[1].hw_payload = gamma;
    ApplyZuvaGlimra(nullptr, &out, curve, false);
    const std::vector<uint32_t> want(1280, 0xFFFFFFFFu);
    EXPECT_TRUE(gamma->r == want && gamma->g == want && gamma->b == want);
    EXPECT_TRUE(gamma->enabled && gamma->dither_strength == 3);
}

}  // namespace
}  // namespace snapdragoncolor
