// The contrast enhancement: the gamma code file, the two curves and their application to the
// post-blend gamma block.
#include <android/log.h>
#include <gtest/gtest.h>

#include <cmath>
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

constexpr int D = ANDROID_LOG_DEBUG, W = ANDROID_LOG_WARN;
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
    bool Has(int priority, const std::string &message) const {
        return log_.Has(priority, message + "\n");
    }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::vector<int> values_ = {99}, boost_, base_;
};

TEST_F(EnhanceTest, MissingOrCommentOnlyGammaFileGivesNothing) {
    EXPECT_FALSE(readGammaConfigFromFile(values_, kGamma));
    EXPECT_TRUE(values_.empty()) << "a failed read still empties the table";
    EXPECT_TRUE(Has(D, kReader + "Failed to open gamma config file: " + kGamma));
    tree_.WriteFile(kGamma, "# only\n#comments\n\n");
    EXPECT_FALSE(readGammaConfigFromFile(values_, kGamma));
    EXPECT_TRUE(Has(D, kReader + "No valid data found in gamma config file: " + kGamma));
}

TEST_F(EnhanceTest, GammaFileTakesTheLeadingIntegerOfEachLine) {
    tree_.WriteFile(kGamma, "12\n#x\n\n  7 trailing\nabc\n-3\n #1\n4294967296\n2147483647\r\n" +
                                std::string("-2147483648\n2147483648\nx\r\n+8"));
    EXPECT_TRUE(readGammaConfigFromFile(values_, kGamma));
    EXPECT_EQ(values_, (std::vector<int>{12, 7, -3, 2147483647, -2147483647 - 1, 8}));
    // Lines are counted from 1, comments and empty lines included.
    const std::pair<int, const char *> invalid[] = {
        {5, "abc"}, {7, " #1"}, {8, "4294967296"}, {11, "2147483648"}, {12, "x\r"}};
    for (const auto &[line, text] : invalid) {
        EXPECT_TRUE(
            Has(D, kReader + "Warning: Invalid data at line " + std::to_string(line) + ": " + text))
            << "line " << line;
    }
    EXPECT_EQ(log_.Matching("Invalid data").size(), 5u);
    EXPECT_TRUE(Has(D, kReader + "Successfully loaded 6 values from gamma config file: " + kGamma));
}

TEST_F(EnhanceTest, LinearCurvesMatchTheirReferenceValues) {
    boost_.assign(2000, -1);
    ASSERT_TRUE(stcZuvaGlimraInit(boost_, base_, "lin", true));
    EXPECT_TRUE(Has(D, kInit + "stcZuvaGlimraInit isLinearGamma:1, panel:lin"));
    ASSERT_EQ(boost_.size(), 1024u);
    ASSERT_EQ(base_.size(), 1024u);
    const std::pair<int, int> points[] = {
        {0, 0},     {9, 9},     {10, 48},   {11, 51},   {16, 63},     {32, 94},     {64, 144},
        {128, 227}, {256, 360}, {512, 594}, {768, 812}, {1000, 1004}, {1022, 1022}, {1023, 1023}};
    for (auto [i, want] : points) {
        EXPECT_EQ(boost_[i], want) << "enhanced curve at " << i;
        EXPECT_EQ(base_[i], i) << "base curve at " << i;
    }
}

// The enhanced code of a non-linear panel, written out: powf(g / 1023, 0.7) * 1023 + 0.5.
int NonLinearBoost(int code) {
    return static_cast<int>(std::pow(static_cast<float>(code) / 1023.0f, 0.7f) * 1023.0f + 0.5f);
}

TEST_F(EnhanceTest, NonLinearCurvesComeFromTheFirst1280Codes) {
    tree_.WriteFile(kGamma, "512\n0\n1023\n100\n" + Codes(1276, 700) + "5\n");
    // The panel name ends at its line break.
    ASSERT_TRUE(stcZuvaGlimraInit(boost_, base_, "abc\r\nxyz", false));
    EXPECT_TRUE(Has(D, kInit + "Loaded 1281 gamma values"));
    ASSERT_EQ(boost_.size(), 1280u);
    ASSERT_EQ(base_.size(), 1280u);
    EXPECT_EQ(gamma_srgb.size(), 1281u);
    const std::pair<int, int> points[] = {{0, 512}, {1, 0}, {2, 1023}, {3, 100}, {1279, 700}};
    for (auto [i, code] : points) {
        EXPECT_EQ(base_[i], code) << "base curve at " << i;
        EXPECT_EQ(boost_[i], NonLinearBoost(code)) << "enhanced curve at " << i;
    }
    EXPECT_EQ(boost_[0], 630) << "powf(512 / 1023, 0.7) * 1023 + 0.5 = 630.67";
}

struct RefusedGammaFile {
    const char *name;
    std::string text;
    std::pair<int, std::string> log;
};

// Each refusal leaves the enhancement off (false), with the line that says why.
TEST_F(EnhanceTest, UnusableGammaFilesAreRefused) {
    // clang-format off
    const RefusedGammaFile cases[] = {
        {"missing", "", {D, kInit + "Using default gamma values"}},
        {"1279 codes", Codes(1279, 5) + "# not a code\n",
         {D, kInit + "gamma_srgb size is not enough, ignore it"}},
        {"a negative code", "# header\n" + Codes(600, 5) + "-1\n" + Codes(700, 5),
         {W, kInit + "gamma code -1 at line 602 is outside 0..1023, ignore it"}},
        {"a code above 1023", Codes(1279, 5) + "1024\n",
         {W, kInit + "gamma code 1024 at line 1280 is outside 0..1023, ignore it"}},
        {"all zero", Codes(1280, 0) + "77\n",
         {W, kInit + "the first 1280 gamma codes are all 0, ignore them"}},
    };
    // clang-format on
    for (const RefusedGammaFile &c : cases) {
        tree_.Remove(kGamma);
        if (!c.text.empty()) {
            tree_.WriteFile(kGamma, c.text);
        }
        log_.Clear();
        EXPECT_FALSE(stcZuvaGlimraInit(boost_, base_, "abc", false)) << c.name;
        EXPECT_TRUE(Has(c.log.first, c.log.second)) << c.name << "\n" << log_.Dump();
        EXPECT_EQ(boost_.size(), 1280u) << c.name << ": resized whatever the outcome";
    }
    // A code beyond the 1280th does not count.
    tree_.WriteFile(kGamma, Codes(1280, 5) + "5000\n");
    EXPECT_TRUE(stcZuvaGlimraInit(boost_, base_, "abc", false));
}

// Displays share the gamma table; the suite's name puts this among the ThreadSanitizer tests.
class GlimraConcurrencyTest : public EnhanceTest {};

TEST_F(GlimraConcurrencyTest, DisplaysInitialisingTogetherKeepTheirOwnCodes) {
    tree_.WriteFile("/vendor/etc/display/panel_a_gamma_srgb.txt", Codes(1280, 512));
    tree_.WriteFile("/vendor/etc/display/panel_b_gamma_srgb.txt", Codes(1300, 1023));
    auto run = [](const char *panel, int want) {
        std::vector<int> boost, base;
        for (int round = 0; round < 50; ++round) {
            ASSERT_TRUE(stcZuvaGlimraInit(boost, base, panel, false));
            ASSERT_EQ(boost, std::vector<int>(1280, want)) << panel;
        }
    };
    std::thread other(run, "a", 630);
    run("b", 1023);
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
    EXPECT_TRUE(Has(D, "ApplyZuvaGlimra: zgl: no gc matrix in output_params"));
    EXPECT_TRUE(near_miss->r.empty());
    // The first entry named "PostBlendGC" is the gamma block, even without a record.
    out.payload.push_back(stc_test::EmptyEntry(kPbGC));
    out.payload.push_back(stc_test::Entry(kPbGC, gamma));
    log_.Clear();
    EXPECT_EQ(ApplyZuvaGlimra(nullptr, &out, curve, true), 0);
    EXPECT_TRUE(Has(D, "ApplyZuvaGlimra: zgl: find kPbGC"));
    EXPECT_FALSE(out.payload[1].hw_payload) << "no record is made for an empty entry";
    EXPECT_EQ(gamma->r.size(), 2048u) << "the second gamma block stays as it was";

    out.payload[1].hw_payload = gamma;
    ApplyZuvaGlimra(nullptr, &out, curve, false);
    const std::vector<uint32_t> want(1280, 0xFFFFFFFFu);
    EXPECT_EQ(gamma->r, want);
    EXPECT_EQ(gamma->g, want);
    EXPECT_EQ(gamma->b, want);
    EXPECT_TRUE(gamma->enabled);
    EXPECT_EQ(gamma->dither_strength, 3u);
}

// A curve Init never built (an unsupported panel keeps empty curves) leaves the block alone.
TEST_F(EnhanceTest, ShortCurveLeavesTheGammaBlockAsProposed) {
    auto gamma = std::make_shared<GammaPostBlendConfig>();
    gamma->r.assign(1024, 9);
    HwConfigOutputParams out;
    out.payload = {stc_test::Entry(kPbGC, gamma)};
    const std::pair<size_t, bool> curves[] = {{0, true}, {1023, true}, {1279, false}};
    for (auto [size, linear] : curves) {
        std::vector<int> curve(size, 1);
        log_.Clear();
        EXPECT_EQ(ApplyZuvaGlimra(nullptr, &out, curve, linear), 0);
        const std::string need = linear ? "1024" : "1280";
        EXPECT_TRUE(Has(W, "ApplyZuvaGlimra: zgl: curve holds " + std::to_string(size) +
                               " entries, gamma block needs " + need + ", left as proposed"))
            << size << "\n"
            << log_.Dump();
        EXPECT_EQ(gamma->r, std::vector<uint32_t>(1024, 9)) << size;
        EXPECT_TRUE(gamma->g.empty()) << size;
        EXPECT_FALSE(gamma->enabled) << size;
    }
}

}  // namespace
}  // namespace snapdragoncolor
