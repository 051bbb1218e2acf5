// The 3D LUT and PCC readers on real-sized files and on the malformed ones a station can leave.
#include <android/log.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "picture/scene_items.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_test::MakeLutLine;
using stc_test::MakeLutText;

constexpr int D = ANDROID_LOG_DEBUG, W = ANDROID_LOG_WARN, E = ANDROID_LOG_ERROR;
const std::string kLut = "/mnt/vendor/persist/display/panel_t_C3D_cali_srgb.txt";
const std::string kPcc = "/mnt/vendor/persist/display/panel_t_C3D_cali_pcc.txt";

class CalibrationReadersTest : public ::testing::Test {
  protected:
    bool ReadLut(const std::string &text, bool write = true) {
        if (write) {
            tree_.WriteFile(kLut, text);
        }
        std::string path = kLut;
        log_.Clear();
        return A::read3DlutFromFile(*c_, path.data(), &lut());
    }
    bool ReadPcc(const std::string &text) {
        tree_.WriteFile(kPcc, text);
        std::string path = kPcc;
        log_.Clear();
        return A::readPCCFromFile(*c_, path.data(), &pcc());
    }
    lut3d_info &lut() { return A::calibrated_lut3d_srgb_(*c_); }
    PccConfig &pcc() { return A::calibrated_pcc_(*c_); }
    void ExpectEntry(int index, int line) {
        auto want = stc_test::LutLineValues(line, 3);
        for (int k = 0; k < 6; ++k) {
            EXPECT_EQ(lut().entries[index][k], want[k]) << "entry " << index;
        }
    }
    void ExpectLutMarked(bool marked) {
        EXPECT_EQ(lut().num, marked ? 4913u : 0u);
        EXPECT_EQ(A::has_calib_3dlut_(*c_) && A::en_calibrated_3dlut_(*c_), marked);
        EXPECT_EQ(A::pq_update_pending_(*c_), marked);
        EXPECT_EQ(A::latched_scene_id_(*c_) & A::curr_scene_id_(*c_) & kSceneFacCalibration,
                  marked ? kSceneFacCalibration : 0);
    }
    size_t Logged(const std::string &text) const { return log_.Matching(text).size(); }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
    std::unique_ptr<StcZuvaColor> c_ = std::make_unique<StcZuvaColor>();
};

TEST_F(CalibrationReadersTest, FullLutIsStoredAndMarked) {
    A::latched_scene_id_(*c_) = kSceneSkin;
    lut().flags = lut().lut3d_id = 7;
    const std::string text = MakeLutText(4913, 3);
    ASSERT_TRUE(ReadLut(text));
    EXPECT_EQ(lut().flags, 0u);
    EXPECT_EQ(lut().lut3d_id + lut().uniform, 2u);
    ExpectLutMarked(true);
    EXPECT_EQ(A::latched_scene_id_(*c_), kSceneSkin | kSceneFacCalibration);
    ExpectEntry(4912, 4912);
    const std::string size = std::to_string(text.size());
    EXPECT_TRUE(
        log_.Has(D, "read3DlutFromFile: read3DlutFromFile " + kLut + ", size=" + size + "\n"));
    EXPECT_TRUE(log_.Has(D, "read3DlutFromFile: read3DlutFromFile readsize=" + size + "\n"));
    EXPECT_TRUE(log_.Has(D, "read3DlutFromFile: read3DlutFromFile success. totalLineCnt=4913\n"));
    EXPECT_TRUE(log_.Has(
        D,
        "read3DlutFromFile: line 1: got 6 params [(0 0 64) -> (3 3 67)], str=[0 0 64 3 3 67]\n"));
    EXPECT_EQ(Logged(": got 6 params [("), 27u);
    EXPECT_EQ(Logged(": line 14: ") + Logged(": line 4901: "), 2u);
    EXPECT_EQ(Logged(": line 15: ") + Logged(": line 4900: ") + Logged("found"), 0u);
}

TEST_F(CalibrationReadersTest, LineCountAroundAFullTable) {
    lut().entries[4912][0] = -77;
    ASSERT_TRUE(ReadLut(MakeLutText(4914, 3)));  // refused, but the table is already overwritten
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: found 4914 lines, should have 4913 lines!\n"));
    EXPECT_EQ(Logged("success") + Logged(": line 4913: "), 0u);
    ExpectLutMarked(false);
    ExpectEntry(4912, 4912);

    lut().entries[4912][0] = -77;
    ASSERT_TRUE(ReadLut(MakeLutText(4912, 3) + "9 9 9 9 9 9"));  // no final line feed
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: found 4912 lines, should have 4913 lines!\n"));
    EXPECT_TRUE(log_.Has(D, "read3DlutFromFile: read3DlutFromFile success. totalLineCnt=4912\n"));
    ExpectLutMarked(true);
    EXPECT_EQ(lut().entries[4912][0], -77);
}

TEST_F(CalibrationReadersTest, MalformedLinesAreSkippedWithoutTakingAnEntry) {
    std::string text = MakeLutLine(0, 3) + MakeLutLine(1, 3) + "1 2 3\n \t \n\nx 1 2 3 4 5 6\n" +
                       "\t 5 6 7 8 9 10 trailing\r\n";
    for (int i = 3; i < 4913; ++i) {
        text += MakeLutLine(i, 3);
    }
    ASSERT_TRUE(ReadLut(text));
    EXPECT_TRUE(log_.Has(E, "read3DlutFromFile: got 3 params, wrong para line?\n"));
    EXPECT_EQ(log_.Count(E, "read3DlutFromFile: got -1 params, wrong para line?\n"), 2);
    EXPECT_TRUE(log_.Has(E, "read3DlutFromFile: got 0 params, wrong para line?\n"));
    EXPECT_EQ(lut().entries[2][0] + lut().entries[2][5], 15);
    ExpectEntry(4912, 4912);
    EXPECT_EQ(Logged("found"), 0u);
    ExpectLutMarked(true);
}

TEST_F(CalibrationReadersTest, TooLargeLineStopsWithTheEntryCount) {
    const std::string fits = "1 2 3 4 5 6" + std::string(500, ' ') + "\n";  // 511 bytes
    ASSERT_TRUE(ReadLut(MakeLutLine(0, 3) + "junk\n" + fits + std::string(600, '7') + "\n" +
                        MakeLutText(4913, 3)));
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: too large line 2\n"));
    EXPECT_EQ(lut().entries[1][5], 6);
    ExpectLutMarked(false);

    ASSERT_TRUE(ReadLut(" " + fits));
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: too large line 0\n"));
}

TEST_F(CalibrationReadersTest, EmptyMissingAndUnreadableLutFiles) {
    ASSERT_TRUE(ReadLut(""));
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: found no line\n"));
    ASSERT_TRUE(ReadLut("0 0 0 1 1 1"));
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: found no line\n"));

    tree_.Remove(kLut);
    EXPECT_FALSE(ReadLut("", false));
    EXPECT_TRUE(log_.Has(D, "read3DlutFromFile: read3DlutFromFile " + kLut + ", size=0\n"));
    EXPECT_TRUE(log_.Has(W, "read3DlutFromFile: Failed to open file: " + kLut + "\n"));

    tree_.MakeDir(kLut);  // opens, but cannot be read
    EXPECT_FALSE(ReadLut("", false));
    EXPECT_EQ(Logged("read3DlutFromFile: file: " + kLut + ". Data read size -1 not same as "), 1u);
    ExpectLutMarked(false);
}

TEST_F(CalibrationReadersTest, PccRowsAreReadAndMarked) {
    A::latched_scene_id_(*c_) = kSceneSkin;
    pcc().green.rgb = 7.5;
    ASSERT_TRUE(ReadPcc("0 1 0 0 0 0 0 0 0 0 0\n0 0 1 0 0 0 0 0 0 0\n0 0 0 1 0 0 0 0 0 0 0.5\n"));
    EXPECT_EQ(pcc().red.r + pcc().green.g + pcc().blue.b, 3.0);
    EXPECT_EQ(pcc().red.g + pcc().blue.r + pcc().green.rb, 0.0);
    EXPECT_EQ(pcc().green.rgb, 7.5);  // the short line leaves its last field alone
    EXPECT_TRUE(pcc().enabled && A::en_calibrated_pcc_(*c_) && A::pq_update_pending_(*c_));
    EXPECT_EQ(A::latched_scene_id_(*c_), kSceneSkin | kSceneColorTemperature);
    EXPECT_EQ(A::curr_scene_id_(*c_), kSceneColorTemperature);
    EXPECT_TRUE(log_.Has(E, "readPCCFromFile: got 10 params, wrong para line?\n"));
    EXPECT_TRUE(log_.Has(D, "readPCCFromFile: readPCCFromFile readsize=66\n"));
    EXPECT_TRUE(log_.Has(D, "readPCCFromFile: got line 1:  0 0 1 0 0 0 0 0 0 0\n"));
    EXPECT_TRUE(log_.Has(D,
                         "readPCCFromFile: got 11 params:  c=0.000000 r=0.000000 g=0.000000 "
                         "b=1.000000 rr=0.000000 gg=0.000000 bb=0.000000 rg=0.000000 gb=0.000000 "
                         "rb=0.000000 rgb=0.500000\n"));
    EXPECT_TRUE(
        log_.Has(D, "readPCCFromFile: readPCCFromFile success. totalLineCnt=3, cali_gamut_=255\n"));
    EXPECT_EQ(Logged(", size="), 0u);
}

TEST_F(CalibrationReadersTest, PccWithWrongLineCountIsNotMarked) {
    const std::string rows = stc_test::MakePccText(1, 1, 1);
    ASSERT_TRUE(ReadPcc(rows + "0 0 0 9 0 0 0 0 0 0 0\n"));
    EXPECT_TRUE(log_.Has(W, "readPCCFromFile: found 4 lines, should have 3 lines!\n"));
    EXPECT_EQ(pcc().blue.b, 9.0);
    ASSERT_TRUE(ReadPcc(rows.substr(0, rows.size() - 1)));
    EXPECT_TRUE(log_.Has(W, "readPCCFromFile: found 2 lines, should have 3 lines!\n"));
    ASSERT_TRUE(ReadPcc(rows.substr(0, 22) + std::string(512, '0') + "\n"));
    EXPECT_TRUE(log_.Has(W, "readPCCFromFile: too large line 1\n"));
    EXPECT_FALSE(pcc().enabled || A::en_calibrated_pcc_(*c_) || A::curr_scene_id_(*c_));

    tree_.Remove(kPcc);
    std::string path = kPcc;
    EXPECT_FALSE(A::readPCCFromFile(*c_, path.data(), &pcc()));
    EXPECT_TRUE(log_.Has(W, "readPCCFromFile: Failed to open file: " + kPcc + "\n"));
}

}  // namespace
}  // namespace snapdragoncolor
