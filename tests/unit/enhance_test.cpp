// The contrast enhancement: the gamma code file, the two curves and their application to the
// post-blend gamma block.
#include <android/log.h>
#include <gtest/gtest.h>

#include <climits>
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
const std::string kInvalid = "readGammaConfigFromFile: Warning: Invalid data at line ";

std::string Codes(size_t count, int code) {
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += std::to_string(code) + "\n";
    }
    return text;
}

class EnhanceTest : public ::testing::Test {
  protected:
    std::vector<int> ReadGamma(const std::string &text, bool ok) {
        tree_.WriteFile(kGamma, text);
        std::vector<int> values = {99};
        EXPECT_EQ(readGammaConfigFromFile(values, kGamma), ok);
        return values;
    }
    bool InitNonLinear(const std::string &panel = "abc") {
        log_.Clear();
        return stcZuvaGlimraInit(boost_, base_, panel, false);
    }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::vector<int> boost_, base_;
};

TEST_F(EnhanceTest, GammaFileTakesTheLeadingIntegerOfEachLine) {
    EXPECT_EQ(ReadGamma("12\n#x\n\n  7 trailing\nabc\n-3\n", true), (std::vector<int>{12, 7, -3}));
    EXPECT_EQ(log_.Matching("Invalid").size(), 1u);
    EXPECT_TRUE(log_.Has(D, kInvalid + "5: abc\n"));
    EXPECT_TRUE(log_.Has(D,
                         "readGammaConfigFromFile: Successfully loaded 3 values from gamma "
                         "config file: " +
                             kGamma + "\n"));

    EXPECT_EQ(ReadGamma(" #1\n4294967296\n2147483647\r\n-2147483648\n2147483648\nx\r\n+8", true),
              (std::vector<int>{INT_MAX, INT_MIN, 8}));
    EXPECT_TRUE(log_.Has(D, kInvalid + "1:  #1\n"));
    EXPECT_TRUE(log_.Has(D, kInvalid + "2: 4294967296\n"));
    EXPECT_TRUE(log_.Has(D, kInvalid + "5: 2147483648\n"));
    EXPECT_TRUE(log_.Has(D, kInvalid + "6: x\r\n"));
}

TEST_F(EnhanceTest, GammaFileWithoutValuesFails) {
    EXPECT_TRUE(ReadGamma("# only\n#comments\n", false).empty());
    EXPECT_TRUE(log_.Has(
        D, "readGammaConfigFromFile: No valid data found in gamma config file: " + kGamma + "\n"));
    tree_.Remove(kGamma);
    std::vector<int> values = {1};
    EXPECT_FALSE(readGammaConfigFromFile(values, kGamma));
    EXPECT_TRUE(values.empty());
    EXPECT_TRUE(
        log_.Has(D, "readGammaConfigFromFile: Failed to open gamma config file: " + kGamma + "\n"));
}

TEST_F(EnhanceTest, LinearCurvesMatchTheirReferenceValues) {
    boost_.assign(2000, -1);
    ASSERT_TRUE(stcZuvaGlimraInit(boost_, base_, "lin", true));
    EXPECT_TRUE(log_.Has(D, "stcZuvaGlimraInit: stcZuvaGlimraInit isLinearGamma:1, panel:lin\n"));
    ASSERT_EQ(boost_.size() + base_.size(), 2048u);
    const std::pair<int, int> points[] = {
        {0, 0},     {9, 9},     {10, 48},   {11, 51},   {16, 63},     {32, 94},     {64, 144},
        {128, 227}, {256, 360}, {512, 594}, {768, 812}, {1000, 1004}, {1022, 1022}, {1023, 1023}};
    for (auto [i, want] : points) {
        EXPECT_EQ(boost_[i], want) << "index " << i;
    }
    for (int i = 1; i < 1024; ++i) {
        ASSERT_EQ(base_[i], i);
        ASSERT_GE(boost_[i], boost_[i - 1]) << "index " << i;
    }
}

TEST_F(EnhanceTest, NonLinearCurvesNeedTheWholeFile) {
    EXPECT_FALSE(InitNonLinear());
    EXPECT_TRUE(log_.Has(D, "stcZuvaGlimraInit: Using default gamma values\n"));
    EXPECT_EQ(boost_.size() + base_.size(), 2560u);

    tree_.WriteFile(kGamma, Codes(1279, 5) + "# not a code\n");
    EXPECT_FALSE(InitNonLinear());
    EXPECT_TRUE(log_.Has(D, "stcZuvaGlimraInit: Loaded 1279 gamma values\n"));
    EXPECT_TRUE(log_.Has(D, "stcZuvaGlimraInit: gamma_srgb size is not enough, ignore it\n"));
}

TEST_F(EnhanceTest, NonLinearCurvesFollowTheCodes) {
    tree_.WriteFile(kGamma, Codes(1280, 1023) + "7\n");
    ASSERT_TRUE(InitNonLinear("abc\n"));  // the line feed does not reach the file name
    EXPECT_EQ(gamma_srgb.size(), 1281u);
    EXPECT_EQ(boost_, std::vector<int>(1280, 1023));
    EXPECT_EQ(base_, std::vector<int>(1280, 1023));

    // Codes outside 0..1023 reach neither curve unclamped.
    tree_.WriteFile(kGamma, "0\n512\n-5\n2000\n" + Codes(1276, 100));
    ASSERT_TRUE(InitNonLinear("abc\r\nxyz"));
    EXPECT_EQ(std::vector<int>(boost_.begin(), boost_.begin() + 5),
              (std::vector<int>{0, 630, 0, 1023, 201}));
    EXPECT_EQ(std::vector<int>(base_.begin(), base_.begin() + 5),
              (std::vector<int>{0, 512, 0, 1023, 100}));
}

TEST_F(EnhanceTest, DisplaysInitialisingTogetherKeepTheirOwnCodes) {
    tree_.WriteFile("/vendor/etc/display/panel_a_gamma_srgb.txt", Codes(1280, 512));
    tree_.WriteFile("/vendor/etc/display/panel_b_gamma_srgb.txt", Codes(1300, 0));
    auto run = [](const std::string &panel, int want) {
        std::vector<int> boost, base;
        for (int round = 0; round < 20; ++round) {
            ASSERT_TRUE(stcZuvaGlimraInit(boost, base, panel, false));
            ASSERT_EQ(boost, std::vector<int>(1280, want));
        }
    };
    std::thread a(run, "a", 630), b(run, "b", 0);
    a.join();
    b.join();
}

class ApplyGlimraTest : public ::testing::Test {
  protected:
    std::shared_ptr<GammaPostBlendConfig> AddGamma(const std::string &block, size_t length) {
        auto record = std::make_shared<GammaPostBlendConfig>();
        record->r.assign(length, 5);
        record->g = record->b = record->r;
        record->dither_strength = 3;
        output_.payload.push_back(stc_test::Entry(block, record));
        return record;
    }
    void Apply(bool linear) {
        log_.Clear();
        EXPECT_EQ(ApplyZuvaGlimra(nullptr, &output_, curve_, linear), 0);
    }

    stc_test::LogCapture log_;
    HwConfigOutputParams output_;
    std::vector<int> curve_ = std::vector<int>(1280, 9);
};

TEST_F(ApplyGlimraTest, WithoutAGammaRecordNothingChanges) {
    Apply(true);
    EXPECT_TRUE(log_.Has(D, "ApplyZuvaGlimra: zgl: no gc matrix in output_params\n"));
    auto near_miss = AddGamma("PostBlendGCx", 256);
    Apply(true);
    EXPECT_TRUE(log_.Has(D, "ApplyZuvaGlimra: zgl: no gc matrix in output_params\n"));
    EXPECT_EQ(near_miss->r.size(), 256u);
    EXPECT_FALSE(near_miss->enabled);

    output_.payload.push_back(stc_test::EmptyEntry(kPbGC));
    Apply(true);
    EXPECT_TRUE(log_.Has(D, "ApplyZuvaGlimra: zgl: find kPbGC\n"));
    EXPECT_EQ(output_.payload[1].hw_payload, nullptr);
}

TEST_F(ApplyGlimraTest, FirstGammaRecordTakesTheCurveAtThePanelLength) {
    std::vector<int> base;
    ASSERT_TRUE(stcZuvaGlimraInit(curve_, base, "lin", true));
    curve_[1] = -1;
    auto first = AddGamma(kPbGC, 256);
    auto second = AddGamma(kPbGC, 256);
    Apply(true);
    for (auto *channel : {&first->r, &first->g, &first->b}) {
        ASSERT_EQ(channel->size(), 1024u);
        EXPECT_EQ((*channel)[1], 0xFFFFFFFFu);
        EXPECT_EQ((*channel)[64], 144u);
        EXPECT_EQ((*channel)[1023], 1023u);
    }
    EXPECT_TRUE(first->enabled);
    EXPECT_EQ(first->dither_strength, 3u);
    EXPECT_EQ(second->r.size(), 256u);
    EXPECT_FALSE(second->enabled);

    curve_.assign(1280, 9);
    auto wide = std::make_shared<GammaPostBlendConfig>();
    wide->b.assign(2048, 1);
    output_.payload[0].hw_payload = wide;
    Apply(false);
    EXPECT_EQ(wide->b, std::vector<uint32_t>(1280, 9));
    EXPECT_EQ(wide->r.size(), 1280u);
}

}  // namespace
}  // namespace snapdragoncolor
