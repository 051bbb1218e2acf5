// The 3D LUT and PCC readers on real-sized files and on the malformed ones a station can leave.
#include <android/log.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calibration/lut3d_line.h"
#include "picture/scene_items.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_test::MakeLutText;

constexpr int D = ANDROID_LOG_DEBUG, W = ANDROID_LOG_WARN, E = ANDROID_LOG_ERROR;
const std::string kLut = "/mnt/vendor/persist/display/panel_t_C3D_cali_srgb.txt";
const std::string kPcc = "/mnt/vendor/persist/display/panel_t_C3D_cali_pcc.txt";
constexpr int kMark = -7;  // what every entry holds before a read

class CalibrationReadersTest : public ::testing::Test {
  protected:
    void SetUp() override {
        c_ = std::make_unique<StcZuvaColor>();
        A::latched_scene_id_(*c_) = kSceneSkin;
        lut() = {7, 0, 0, 0, {}};
        for (auto &entry : lut().entries) {
            entry[5] = kMark;
        }
    }
    // Reads `path` into its destination after writing `text` there (none: no file).
    bool Read(const std::string &path, const std::optional<std::string> &text) {
        if (text) {
            tree_.WriteFile(path, *text);
        }
        std::string p = path;
        log_.Clear();
        return path == kLut ? A::read3DlutFromFile(*c_, p.data(), &lut())
                            : A::readPCCFromFile(*c_, p.data(), &pcc());
    }
    bool Has(int priority, const std::string &reader, const std::string &message) const {
        return log_.Has(priority, reader + ": " + message + "\n");
    }
    // Whether an accepted LUT marked the object; `all` tells which way every mark must point.
    void ExpectLutMarks(bool all, const std::string &name) {
        EXPECT_EQ(lut().num == 4913, all) << name << ": num";
        EXPECT_EQ(lut().flags == 0 && lut().lut3d_id == 1 && lut().uniform == 1, all)
            << name << ": header 0/1/1";
        EXPECT_EQ(A::has_calib_3dlut_(*c_), all) << name << ": has_calib_3dlut_";
        EXPECT_EQ(A::en_calibrated_3dlut_(*c_), all) << name << ": en_calibrated_3dlut_";
        EXPECT_EQ(A::pq_update_pending_(*c_), all) << name << ": pq_update_pending_";
        EXPECT_EQ(A::latched_scene_id_(*c_), all ? kSceneSkin | kSceneFacCalibration : kSceneSkin)
            << name << ": latched";
        EXPECT_EQ(A::curr_scene_id_(*c_), all ? kSceneFacCalibration : 0u) << name << ": current";
    }
    lut3d_info &lut() { return A::calibrated_lut3d_srgb_(*c_); }
    PccConfig &pcc() { return A::calibrated_pcc_(*c_); }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::unique_ptr<StcZuvaColor> c_;
};

const std::string kFits = "1 2 3 4 5 6" + std::string(500, ' ');  // 511 bytes

struct LutCase {
    const char *name;
    std::optional<std::string> text;
    bool result, accepted;
    int entry1_out_b, last_out_b;                   // entries[1][5] and entries[4912][5] afterwards
    std::vector<std::pair<int, std::string>> logs;  // besides the size and read lines
};

TEST_F(CalibrationReadersTest, LutFileCases) {
    const std::string full = MakeLutText(4913, 3);
    const std::string ln4913 =
        "line 4912: got 6 params [(1024 1024 1024) -> (1027 1027 1027)], "
        "str=[1024 1024 1024 1027 1027 1027]";
    // clang-format off
    const LutCase cases[] = {
        {"missing", std::nullopt, false, false, kMark, kMark,
         {{W, "Failed to open file: " + kLut}}},
        {"empty", "", true, false, kMark, kMark, {{W, "found no line"}}},
        {"no line feed", "1 2 3 4 5 6", true, false, kMark, kMark, {{W, "found no line"}}},
        {"4913 lines", full, true, true, 67, 1027,
         {{D, "read3DlutFromFile success. totalLineCnt=4913"}, {D, ln4913}}},
        {"4912 lines", MakeLutText(4912, 3), true, true, 67, kMark,
         {{W, "found 4912 lines, should have 4913 lines!"},
          {D, "read3DlutFromFile success. totalLineCnt=4912"}}},
        {"4914 lines", full + "1 1 1 1 1 1\n", true, false, 67, 1027,
         {{W, "found 4914 lines, should have 4913 lines!"},
          {D, "line 4913: got 6 params [(1 1 1) -> (1 1 1)], str=[1 1 1 1 1 1]"}}},
        {"a five-number line", MakeLutText(1, 3) + "9 9 9 9 9\n" + full.substr(12), true, true, 67,
         1027, {{E, "got 5 params, wrong para line?"}}},
        {"blank and wordy lines", " \t\r\nx 1 2 3 4 5 6\n" + full, true, true, 67, 1027,
         {{E, "got -1 params, wrong para line?"}, {E, "got 0 params, wrong para line?"}}},
        {"last line without line feed", MakeLutText(4912, 3) + "9 9 9 9 9 9", true, true, 67, kMark,
         {{W, "found 4912 lines, should have 4913 lines!"}}},
        {"511-byte line fits", kFits + "\n" + MakeLutText(4912, 3), true, true, 3, 963,
         {{D, "line 0: got 6 params [(1 2 3) -> (4 5 6)], str=[" + kFits + "]"}}},
        {"512-byte line", MakeLutText(2, 3) + " " + kFits + "\n" + full, true, false, 67, kMark,
         {{W, "too large line 2"}}},
    };
    // clang-format on
    for (const LutCase &c : cases) {
        SetUp();
        tree_.Remove(kLut);
        EXPECT_EQ(Read(kLut, c.text), c.result) << c.name;
        ExpectLutMarks(c.accepted, c.name);
        EXPECT_EQ(lut().entries[1][5], c.entry1_out_b) << c.name << ": entry 1";
        EXPECT_EQ(lut().entries[4912][5], c.last_out_b) << c.name << ": entry 4912";
        for (const auto &[priority, message] : c.logs) {
            EXPECT_TRUE(Has(priority, "read3DlutFromFile", message))
                << c.name << ": " << message << "\n"
                << log_.Dump();
        }
        EXPECT_EQ(log_.Matching("success. totalLineCnt").size(), c.accepted ? 1u : 0u) << c.name;
        if (c.text) {
            const std::string size = std::to_string(c.text->size());
            EXPECT_TRUE(Has(D, "read3DlutFromFile", "read3DlutFromFile " + kLut + ", size=" + size))
                << c.name;
            EXPECT_TRUE(Has(D, "read3DlutFromFile", "read3DlutFromFile readsize=" + size))
                << c.name;
        }
    }
}

// Only the first fifteen and the last twelve accepted lines are echoed.
TEST_F(CalibrationReadersTest, LutEchoesHeadAndTail) {
    ASSERT_TRUE(Read(kLut, MakeLutText(4913)));
    EXPECT_EQ(log_.Matching(": got 6 params [(").size(), 27u);
    EXPECT_EQ(log_.Matching(": line 14: ").size(), 1u);
    EXPECT_EQ(log_.Matching(": line 15: ").size(), 0u);
    EXPECT_EQ(log_.Matching(": line 4900: ").size(), 0u);
    EXPECT_EQ(log_.Matching(": line 4901: ").size(), 1u);
}

// A file of any size passes through a fixed buffer: the 256 MiB tail after the table's last line
// feed costs no memory and is ignored.
TEST_F(CalibrationReadersTest, HugeFileReadsInBoundedMemory) {
    tree_.WriteFile(kLut, MakeLutText(4913, 3));
    std::filesystem::resize_file(tree_.HostPath(kLut), 256u << 20);
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    EXPECT_TRUE(Read(kLut, std::nullopt));
    getrusage(RUSAGE_SELF, &after);
    ExpectLutMarks(true, "huge file");
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 1024) << "peak memory grew by KiB";
}

struct ScanCase {
    const char *line;
    int count;
    std::vector<int32_t> values;
};

// The values are those of sscanf(" %d %d %d %d %d %d"), worked out by hand.
TEST(ScanLutLineTest, ConvertsAsScanfDoes) {
    const ScanCase cases[] = {
        {"", -1, {}},
        {" \t\v\f\r", -1, {}},
        {"x 1", 0, {}},
        {"-", 0, {}},
        {"+ 5", 0, {}},
        {"1 2 3 4 5", 5, {1, 2, 3, 4, 5}},
        {"1 2 3 4 5 6 7", 6, {1, 2, 3, 4, 5, 6}},
        {"\t+1\r-2\v3\f004 -0 6junk", 6, {1, -2, 3, 4, 0, 6}},
        {"12abc 4", 1, {12}},
        {"1,2", 1, {1}},
        {"0x10 2", 1, {0}},
        {"2147483647 -2147483648 2147483648 4294967296 4294967297 -2147483649",
         6,
         {2147483647, -2147483647 - 1, -2147483647 - 1, 0, 1, 2147483647}},
        // Beyond 64 bits strtol saturates: LONG_MAX keeps its low bits -1, LONG_MIN 0.
        {"99999999999999999999 -99999999999999999999 9223372036854775807", 3, {-1, 0, -1}},
    };
    for (const ScanCase &c : cases) {
        int32_t values[kLutLineValues] = {};
        EXPECT_EQ(ScanLutLine(c.line, values), c.count) << "[" << c.line << "]";
        for (size_t k = 0; k < c.values.size(); ++k) {
            EXPECT_EQ(values[k], c.values[k]) << "[" << c.line << "] value " << k;
        }
    }
}

TEST_F(CalibrationReadersTest, PccExampleFileIsAccepted) {
    pcc().host_word = 5;
    ASSERT_TRUE(
        Read(kPcc, "0 1 0 0 0 0 0 0 0 0 0\n0 0 1 0 0 0 0 0 0 0 0\n0 0 0 1 0 0 0 0 0 0 .5\n"));
    const double rows[3][11] = {{0, 1}, {0, 0, 1}, {0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0.5}};
    const PccCoeff *got[3] = {&pcc().red, &pcc().green, &pcc().blue};
    for (int row = 0; row < 3; ++row) {
        for (int k = 0; k < 11; ++k) {
            EXPECT_EQ((&got[row]->c)[k], rows[row][k]) << "row " << row << " term " << k;
        }
    }
    EXPECT_TRUE(pcc().enabled);
    EXPECT_EQ(pcc().host_word, 5u);
    EXPECT_TRUE(A::en_calibrated_pcc_(*c_));
    EXPECT_TRUE(A::pq_update_pending_(*c_));
    EXPECT_EQ(A::latched_scene_id_(*c_), kSceneSkin | kSceneColorTemperature);
    EXPECT_EQ(A::curr_scene_id_(*c_), kSceneColorTemperature);
    EXPECT_TRUE(Has(D, "readPCCFromFile", "readPCCFromFile readsize=67"));
    EXPECT_TRUE(Has(D, "readPCCFromFile", "got line 2:  0 0 0 1 0 0 0 0 0 0 .5"));
    EXPECT_TRUE(Has(D, "readPCCFromFile",
                    "got 11 params:  c=0.000000 r=0.000000 g=0.000000 b=1.000000 rr=0.000000 "
                    "gg=0.000000 bb=0.000000 rg=0.000000 gb=0.000000 rb=0.000000 rgb=0.500000"));
    EXPECT_TRUE(
        Has(D, "readPCCFromFile", "readPCCFromFile success. totalLineCnt=3, cali_gamut_=255"));
}

struct PccCase {
    const char *name;
    std::string text;
    bool accepted;
    double green_rgb, blue_b;
    std::pair<int, std::string> log;
};

TEST_F(CalibrationReadersTest, PccFileCases) {
    const std::string row = "0 0 0 1 0 0 0 0 0 0 0\n";
    // clang-format off
    const PccCase cases[] = {
        {"ten numbers in line 2", row + "0 0 0 0 0 0 0 0 0 0\n" + row, true, 7.5, 1,
         {E, "got 10 params, wrong para line?"}},
        {"four lines", row + row + row + "0 0 0 9 0 0 0 0 0 0 0\n", false, 0, 9,
         {W, "found 4 lines, should have 3 lines!"}},
        {"two lines", row + row, false, 0, 2, {W, "found 2 lines, should have 3 lines!"}},
        {"last line without feed", row + row + "0 0 0 4 0 0 0 0 0 0 0", false, 0, 2,
         {W, "found 2 lines, should have 3 lines!"}},
        {"long second line", row + std::string(512, '0') + "\n" + row, false, 7.5, 2,
         {W, "too large line 1"}},
    };
    // clang-format on
    for (const PccCase &c : cases) {
        pcc() = PccConfig();
        pcc().green.rgb = 7.5;
        pcc().blue.b = 2;
        A::en_calibrated_pcc_(*c_) = A::pq_update_pending_(*c_) = false;
        EXPECT_TRUE(Read(kPcc, c.text)) << c.name;
        EXPECT_EQ(pcc().green.rgb, c.green_rgb) << c.name;
        EXPECT_EQ(pcc().blue.b, c.blue_b) << c.name;
        EXPECT_EQ(pcc().enabled, c.accepted) << c.name;
        EXPECT_EQ(A::en_calibrated_pcc_(*c_), c.accepted) << c.name;
        EXPECT_TRUE(Has(c.log.first, "readPCCFromFile", c.log.second)) << c.name << log_.Dump();
    }
}

}  // namespace
}  // namespace snapdragoncolor
