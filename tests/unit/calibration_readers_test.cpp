// The 3D LUT and PCC readers on real-sized files and on the malformed ones a station can leave.
#include <android/log.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <optional>
#include <string>

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

class CalibrationReadersTest : public ::testing::Test {
  protected:
    // Reads `path` (kLut or kPcc) into its destination, after writing `text` there if given.
    bool Read(const std::string &path, const std::optional<std::string> &text) {
        if (text) {
            tree_.WriteFile(path, *text);
        }
        reader_ = path == kLut ? "read3DlutFromFile: " : "readPCCFromFile: ";
        std::string p = path;
        log_.Clear();
        return path == kLut ? A::read3DlutFromFile(*c_, p.data(), &lut())
                            : A::readPCCFromFile(*c_, p.data(), &pcc());
    }
    // Reads `text` (none: no file) as the LUT of a fresh object with SKIN latched, and tells
    // "<result> <how many of the six marks of an accepted table are set> <entry 1's last value>".
    std::string ReadLut(const std::optional<std::string> &text) {
        c_ = std::make_unique<StcZuvaColor>();
        A::latched_scene_id_(*c_) = kSceneSkin;
        lut().flags = 7;
        tree_.Remove(kLut);
        const bool result = Read(kLut, text);
        const int marks = (lut().num == 4913) + A::has_calib_3dlut_(*c_) +
                          A::en_calibrated_3dlut_(*c_) + A::pq_update_pending_(*c_) +
                          (A::curr_scene_id_(*c_) == kSceneFacCalibration) +
                          (A::latched_scene_id_(*c_) == (kSceneSkin | kSceneFacCalibration));
        return std::to_string(result) + " " + std::to_string(marks) + " " +
               std::to_string(lut().entries[1][5]);
    }
    // Whether the last reader logged `message` (line feed added) at `priority`.
    bool Has(int priority, const std::string &message) const {
        return log_.Has(priority, reader_ + message + "\n");
    }
    size_t Logged(const std::string &text) const { return log_.Matching(text).size(); }
    lut3d_info &lut() { return A::calibrated_lut3d_srgb_(*c_); }
    PccConfig &pcc() { return A::calibrated_pcc_(*c_); }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::unique_ptr<StcZuvaColor> c_ = std::make_unique<StcZuvaColor>();
    std::string reader_;
};

TEST_F(CalibrationReadersTest, LutFiles) {
    tree_.MakeDir(kLut);  // opens, but cannot be read
    EXPECT_FALSE(Read(kLut, std::nullopt));
    EXPECT_EQ(Logged("read3DlutFromFile: file: " + kLut + ". Data read size -1 not same as "), 1u);
    EXPECT_EQ(ReadLut(std::nullopt), "0 0 0");
    EXPECT_TRUE(Has(W, "Failed to open file: " + kLut));
    EXPECT_EQ(ReadLut(""), "1 0 0");  // read, so no golden file follows
    EXPECT_TRUE(Has(W, "found no line"));
    EXPECT_EQ(ReadLut(MakeLutText(4914, 3)), "1 0 67");  // refused, but its entries are written
    EXPECT_TRUE(Has(W, "found 4914 lines, should have 4913 lines!"));
    EXPECT_TRUE(Has(D, "line 4913: got 6 params [(0 0 0) -> (3 3 3)], str=[0 0 0 3 3 3]"));
    EXPECT_EQ(ReadLut(MakeLutText(4912, 3) + "9 9 9 9 9 9"), "1 6 67");  // no final line feed
    EXPECT_TRUE(Has(W, "found 4912 lines, should have 4913 lines!"));
    EXPECT_TRUE(Has(D, "read3DlutFromFile success. totalLineCnt=4912"));
    const std::string fits = "1 2 3 4 5 6" + std::string(500, ' ') + "\n";  // 511 bytes
    EXPECT_EQ(ReadLut(" " + fits), "1 0 0");
    EXPECT_TRUE(Has(W, "too large line 0"));
    EXPECT_EQ(ReadLut(MakeLutText(1) + "junk\n" + fits + std::string(600, '7') + "\n"), "1 0 6");
    EXPECT_TRUE(Has(W, "too large line 2"));

    // A full table with lines that take no entry before its third one, which has odd blanks.
    const std::string full = MakeLutText(2, 3) + "1 2 3\n \t \n\nx 1 2 3 4 5 6\n" +
                             "\t 5 6 7 8 9 10 x\r\n" + MakeLutText(4913, 3).substr(42);
    EXPECT_EQ(ReadLut(full), "1 6 67");
    const uint32_t header[] = {0, 1, 1, 4913};  // flags, lut3d_id, uniform, num
    EXPECT_EQ(std::memcmp(&lut(), header, sizeof(header)), 0);
    EXPECT_EQ(std::memcmp(lut().entries[4912], stc_test::LutLineValues(4912, 3).data(), 24), 0);
    EXPECT_TRUE(Has(D, "read3DlutFromFile " + kLut + ", size=" + std::to_string(full.size())));
    EXPECT_TRUE(Has(D, "read3DlutFromFile readsize=" + std::to_string(full.size())));
    EXPECT_TRUE(Has(D, "line 1: got 6 params [(0 0 64) -> (3 3 67)], str=[0 0 64 3 3 67]"));
    EXPECT_TRUE(Has(E, "got 3 params, wrong para line?"));
    EXPECT_EQ(log_.Count(E, "read3DlutFromFile: got -1 params, wrong para line?\n"), 2);
    // Only the first fifteen and the last twelve lines are echoed, and no count warning.
    EXPECT_EQ(Logged(": got 6 params [("), 27u);
    EXPECT_EQ(Logged(": line 14: ") + Logged(": line 4901: ") + Logged("found"), 2u);
}

TEST_F(CalibrationReadersTest, PccFiles) {
    const std::string rows = stc_test::MakePccText(1, 1, 1);
    ASSERT_TRUE(Read(kPcc, rows + "0 0 0 9 0 0 0 0 0 0 0\n"));
    EXPECT_TRUE(Has(W, "found 4 lines, should have 3 lines!") && pcc().blue.b == 9.0);
    ASSERT_TRUE(Read(kPcc, rows.substr(0, 22) + std::string(512, '0') + "\n"));
    EXPECT_TRUE(Has(W, "too large line 1"));
    EXPECT_FALSE(pcc().enabled || A::en_calibrated_pcc_(*c_) || A::pq_update_pending_(*c_));

    A::latched_scene_id_(*c_) = kSceneSkin;
    pcc().green.rgb = 7.5;  // the short second line leaves it alone
    ASSERT_TRUE(Read(kPcc, "0 1 0 0 0 0 0 0 0 0 0\n0 0 1 0 0 0 0 0 0 0\n0 0 0 1 0 0 0 0 0 0 .5\n"));
    EXPECT_EQ(pcc().red.r + pcc().green.g + pcc().blue.b + pcc().red.g + pcc().green.rgb, 10.5);
    EXPECT_TRUE(pcc().enabled && A::en_calibrated_pcc_(*c_) && A::pq_update_pending_(*c_));
    EXPECT_EQ(A::latched_scene_id_(*c_), kSceneSkin | kSceneColorTemperature);
    EXPECT_EQ(A::curr_scene_id_(*c_), kSceneColorTemperature);
    EXPECT_TRUE(Has(E, "got 10 params, wrong para line?"));
    EXPECT_TRUE(Has(D, "readPCCFromFile readsize=65"));
    EXPECT_TRUE(Has(D, "got line 1:  0 0 1 0 0 0 0 0 0 0"));
    EXPECT_TRUE(Has(D,
                    "got 11 params:  c=0.000000 r=0.000000 g=0.000000 b=1.000000 rr=0.000000 "
                    "gg=0.000000 bb=0.000000 rg=0.000000 gb=0.000000 rb=0.000000 rgb=0.500000"));
    EXPECT_TRUE(Has(D, "readPCCFromFile success. totalLineCnt=3, cali_gamut_=255"));
}

}  // namespace
}  // namespace snapdragoncolor
