// Finding the panel's name and the calibration files named after it. The readers are seen only
// through the paths that were tried: none of these files exist, so each golden file is tried too.
#include <android/log.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "platform/device_path.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
const std::string kPersist = std::string(kPersistDisplayDir) + "/";

class CalibrationDiscoveryTest : public ::testing::Test {
  protected:
    std::vector<std::string> Load(const std::string &panel_name) {
        A::panel_name_(c_) = panel_name;
        A::loadCalibratedParam(c_, panel_name);
        std::vector<std::string> loads;
        for (const auto &line : log_.Matching("loadCalibratedParam:  load ")) {
            loads.push_back(line.message);
        }
        return loads;
    }
    static std::vector<std::string> Expected(const std::string &persist,
                                             const std::string &golden) {
        std::vector<std::string> loads;
        for (const char *kind : {"srgb", "p3", "pcc"}) {
            std::string suffix = std::string("_C3D_cali_") + kind + ".txt\n";
            loads.push_back("loadCalibratedParam:  load " + persist + suffix);
            loads.push_back("loadCalibratedParam:  load golden " + std::string(kind) +
                            " cal param " + golden + suffix);
        }
        return loads;
    }
    bool Has(int priority, const std::string &message) { return log_.Has(priority, message); }

    stc_test::DeviceTree dev_;
    stc_test::LogCapture log_;
    std::unique_ptr<StcZuvaColor> color_ = std::make_unique<StcZuvaColor>();
    StcZuvaColor &c_ = *color_;
};

TEST_F(CalibrationDiscoveryTest, VendorMarkerMustBeARegularFile) {
    EXPECT_FALSE(A::isQcCalibrtPresent(c_, "p"));
    EXPECT_TRUE(
        Has(ANDROID_LOG_ERROR, "isQcCalibrtPresent: /mnt/vendor/persist/display not exist\n"));
    dev_.MakeDir(kPersist + "factory_calib_data_mipi_zuv_x");
    std::filesystem::create_symlink("/absent", dev_.HostPath(kPersist + "dangling"));
    EXPECT_FALSE(A::isQcCalibrtPresent(c_, "p"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "isQcCalibrtPresent: /mnt/vendor/persist/display/"
                    "factory_calib_data_mipi_zuv_x is directory\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "isQcCalibrtPresent: /mnt/vendor/persist/display/.. is "
                    "directory\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "isQcCalibrtPresent: /mnt/vendor/persist/display/dangling error stat\n"));
    dev_.WriteFile(kPersist + "x_factory_calib_data_mipi_zuv", "");
    EXPECT_TRUE(A::isQcCalibrtPresent(c_, "p"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "isQcCalibrtPresent: Found Qc calibration param file "
                    "/mnt/vendor/persist/display/x_factory_calib_data_mipi_zuv\n"));
}

TEST_F(CalibrationDiscoveryTest, UnclassifiedPanelHasNoNameSource) {
    EXPECT_TRUE(Load("abc").empty());
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "loadCalibratedParam: Choosen path /nopanelname not exist, not Zuva product? "
                    "-1, errno=2, No such file or directory. try DSI path.\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "loadCalibratedParam: Dsi path /nopanelname also not exist, -1, errno=2, No "
                    "such file or directory. try Pad path\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "loadCalibratedParam: Pad path /nopanelname also not exist, -1, errno=2, No "
                    "such file or directory. Abort STCZuvaColor\n"));
}

TEST_F(CalibrationDiscoveryTest, InitNamePathComesFirstWithDsi1EvenForCli) {
    A::is_cli_(c_) = true;
    A::xml_result_(c_).init_name_path = "/custom/name";
    A::xml_result_(c_).cli_name_path = "/cli/name";
    dev_.WriteFile(kDsi1PanelName, "abcdef\r\n");
    EXPECT_EQ(Load("other"),
              Expected(kPersist + "panel_abcdef", "/vendor/etc/display/panel_abcdef"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "loadCalibratedParam: Choosen path /custom/name not exist, not Zuva product? "
                    "-1, errno=2, No such file or directory. try DSI path.\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "loadCalibratedParam: try open file: /sys/class/drm/card0-DSI-1/panelName, "
                    "is_primary_=0, is_cli_=1\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "loadCalibratedParam: fName=abcdef\r\n, panel_name=other is_primary_=0\n"));
}

TEST_F(CalibrationDiscoveryTest, CliCandidatesAndTheFiveCharacterStemRule) {
    A::is_cli_(c_) = true;
    EXPECT_TRUE(Load("panelC").empty());
    EXPECT_EQ(log_.Matching("/proc/device-tree/chosen/zvx,panel_name_s not exist").size(), 1u);
    EXPECT_EQ(log_.Matching("Dsi path /sys/class/drm/card0-DSI-2/panelName also").size(), 1u);
    EXPECT_EQ(log_.Matching("Pad path /sys/class/hardinfo/interface/hardware_info/lcm").size(), 1u);
    log_.Clear();
    dev_.WriteFile(kKelpraHwInfoLcm, "abcd\n");
    EXPECT_EQ(Load("panelC"),
              Expected(kPersist + "panel_abcd", "/vendor/etc/display/panel_panelC"));
    log_.Clear();
    dev_.WriteFile(kDtCliPanelName, "abcdef");
    EXPECT_EQ(Load("panelC"),
              Expected(kPersist + "panel_abcdef", "/vendor/etc/display/panel_abcdef"));
    // With the primary device-tree node present the golden files follow the panel name.
    log_.Clear();
    dev_.WriteFile(kDtPrimPanelName, "x");
    EXPECT_EQ(Load("panelC"),
              Expected(kPersist + "panel_abcdef", "/vendor/etc/display/panel_panelC"));
}

TEST_F(CalibrationDiscoveryTest, PersistentFileNamedByPanelSkipsTheNameFile) {
    A::is_primary_(c_) = true;
    dev_.WriteFile(kPersist + "panel_abc_notes.txt", "");
    dev_.WriteFile(kDtPrimPanelName, "zzzzzzzz");
    EXPECT_EQ(Load("abc"), Expected(kPersist + "panel_abc", "/vendor/etc/display/panel_abc"));
    EXPECT_TRUE(A::use_incoming_panel_name_(c_));
    EXPECT_TRUE(log_.Matching("try open file").empty());
    EXPECT_TRUE(Has(ANDROID_LOG_WARN,
                    "useIncomingPanelName: Found calibration param file named by panel_name: "
                    "/mnt/vendor/persist/display/panel_abc_notes.txt\n"));
}

TEST_F(CalibrationDiscoveryTest, EmptyPanelNameAndOverlongNameFile) {
    dev_.WriteFile(kPersist + "x.txt", "");
    EXPECT_EQ(Load(""), Expected(kPersist + "panel_", "/vendor/etc/display/panel_"));
    // One read takes at most 255 bytes of the name file; paths are cut at 255 characters.
    log_.Clear();
    auto color = std::make_unique<StcZuvaColor>();
    A::is_primary_(*color) = true;
    A::xml_result_(*color).prim_name_path = "/name";
    dev_.WriteFile("/name", std::string(300, 'a'));
    A::loadCalibratedParam(*color, "p");
    const std::string name(255, 'a');
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "loadCalibratedParam: fName=" + name + ", panel_name= is_primary_=1\n"));
    const std::string persist = (kPersist + "panel_" + name).substr(0, 255);
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "loadCalibratedParam:  load " + persist + "\n"));
    const std::string golden = ("/vendor/etc/display/panel_" + name).substr(0, 255);
    EXPECT_TRUE(
        Has(ANDROID_LOG_DEBUG, "loadCalibratedParam:  load golden pcc cal param " + golden + "\n"));
}

}  // namespace
}  // namespace snapdragoncolor
