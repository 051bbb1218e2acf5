// The XML profile and the Init sequence that classifies the panel.
#include <android/log.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/device_path.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_test::DeviceTree;
using stc_test::LogCapture;

constexpr const char *kExample = R"(
    <config id="panelList"><prim>panelA_video</prim><prim>panelB_video</prim>
        <cli>panelC_cmd_363</cli><!-- note --></config>
    <config id="panelNamePath"><prim>/sys/class/drm/card0-DSI-1/panelName</prim>
        <cli> /dsi2 </cli></config>
    <config id="zgl_nonlinear_srgb"><panelname>panelB_video</panelname></config>
    <panel name="panelC_cmd"><type>cli</type><path>/proc/x</path><path>/y</path></panel>)";

class PanelTest : public ::testing::Test {
  protected:
    void Profile(const std::string &body, const char *root = "ZuvaStcConfigs") {
        dev_.WriteFile(kProfilePath, std::string("<") + root + ">" + body + "</" + root + ">");
    }
    bool Has(int priority, const std::string &message) { return log_.Has(priority, message); }

    DeviceTree dev_;
    LogCapture log_;
    stcXmlresult xml_;
};

TEST_F(PanelTest, MissingOrUnusableProfileLeavesRecordUntouched) {
    xml_.prim_panel_list = {"kept"};
    xml_.prim_name_path = "/kept";
    EXPECT_EQ(StcXmlParse(&xml_, "p"), -17);
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "StcXmlParse: /vendor/etc/display/zuva_stc_profile.xml not exist, -1, "
                    "errno=2, No such file or directory\n"));
    Profile("<config id=\"panelList\"><prim>x</prim></config>", "Configs");
    EXPECT_EQ(StcXmlParse(&xml_, "p"), -9);
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "StcXmlParse: unexpected root node: Configs\n"));
    EXPECT_EQ(xml_.prim_panel_list, std::vector<std::string>{"kept"});
    EXPECT_EQ(xml_.prim_name_path, "/kept");
}

TEST_F(PanelTest, ProfileIsReadVerbatimAndListsGrowOnSecondParse) {
    Profile(kExample);
    ASSERT_EQ(StcXmlParse(&xml_, "panelC_cmd_363"), 0);
    ASSERT_EQ(StcXmlParse(&xml_, "panelC_cmd_363"), 0);
    using V = std::vector<std::string>;
    EXPECT_EQ(xml_.prim_panel_list,
              (V{"panelA_video", "panelB_video", "panelA_video", "panelB_video"}));
    EXPECT_EQ(xml_.cli_panel_list, (V{"panelC_cmd_363", "panelC_cmd_363"}));
    EXPECT_EQ(xml_.nonlinear_srgb_panels, (V{"panelB_video", "panelB_video"}));
    EXPECT_EQ(xml_.prim_name_path, "/sys/class/drm/card0-DSI-1/panelName");
    EXPECT_EQ(xml_.cli_name_path, " /dsi2 ");
    EXPECT_EQ(xml_.init_name_path, "/proc/x/y");
    EXPECT_EQ(xml_.init_panel_type, kPanelTypeCli);
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "StcXmlParse: panel panelC_cmd_363 is cli. panel (1)\n"));
}

TEST_F(PanelTest, SectionsAreChosenByIdPrefix) {
    Profile(R"(<config id=""><prim>a</prim></config><config id="pan"><prim>b</prim><prim/></config>
        <config id="panelListX"><prim>c</prim></config><config id="gamma"/>
        <config id="panelN"><prim>/p1</prim><prim>/p2</prim><cli></cli></config>)");
    ASSERT_EQ(StcXmlParse(&xml_, "p"), 0);
    EXPECT_EQ(xml_.prim_panel_list, std::vector<std::string>{"b"});
    EXPECT_EQ(xml_.prim_name_path, "/p1/p2");
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "StcXmlParse: no id present\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "StcXmlParse: prim name should not be empty\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "StcXmlParse: cli name path should not be empty\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_WARN, "StcXmlParse: unsupported config: gamma\n"));
}

TEST_F(PanelTest, PanelBlockAppliesWhenItsNameIsAPrefix) {
    Profile(R"(<panel name=""><type>cli</type></panel><panel name="abc"><type>main</type></panel>
        <panel name="abcdefg"><type>primary</type></panel>)");
    ASSERT_EQ(StcXmlParse(&xml_, "abcdef"), 0);
    EXPECT_EQ(xml_.init_panel_type, -1);
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "StcXmlParse: no panel name present\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "StcXmlParse: panel abcdef is main. panel (-1)\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "StcXmlParse: Compare init panel abcdef with config node for pane abcdefg\n"));
    ASSERT_EQ(StcXmlParse(&xml_, "ab"), 0);
    EXPECT_FALSE(Has(ANDROID_LOG_DEBUG, "StcXmlParse: found init panel config for ab\n"));
}

// Init's lifecycle, seen through the members it leaves behind.
class InitTest : public PanelTest {
  protected:
    std::unique_ptr<StcZuvaColor> color_ = std::make_unique<StcZuvaColor>();
    StcZuvaColor &c_ = *color_;
};

TEST_F(InitTest, VendorCalibrationStopsBeforeTheProfile) {
    Profile(kExample);
    dev_.WriteFile(std::string(kPersistDisplayDir) + "/factory_calib_data_mipi_zuv_x", "");
    EXPECT_EQ(c_.Init("panelA_video"), 0);
    EXPECT_FALSE(A::init_done_(c_));
    EXPECT_TRUE(A::xml_result_(c_).prim_panel_list.empty());
    EXPECT_TRUE(A::color_modes_(c_).empty());
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "Init: QC calibration param present, exit\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "Init: Current version 3.1.\n         V3.1: Disable 3dlut/pcc param during "
                    "calibraton to avoid introducing noise.\n         V3.0: Calibration file name "
                    "is same as panel_name.\n         V2.2: Add panel type and name path for "
                    "specified panel name. Unify golden file name.\n         V2.1: Add panel name "
                    "path config and golden param loading.\n         V2.0: Support stc  xml "
                    "config.\n         V1.0: Read and load calibration param.\n"));
}

TEST_F(InitTest, PanelInNeitherListIsDoneWithoutMode) {
    Profile(kExample);
    EXPECT_EQ(c_.Init("panelB"), 0);
    EXPECT_TRUE(A::init_done_(c_));
    EXPECT_FALSE(A::is_primary_(c_) || A::is_cli_(c_));
    EXPECT_TRUE(A::color_modes_(c_).empty());
    EXPECT_EQ(A::qdutils_handle_(c_), nullptr);
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "Init: cli: compare [panelB] ~ [panelC_cmd_363]\n"));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "Init: panel panelB dosent support zuva calibration. If needed, please add in "
                    "its name into stc config xml\n"));
}

TEST_F(InitTest, MissingRefreshLibraryOrEntryFailsAfterTheMode) {
    A::qdutils_lib_name_(c_) = "libqdutils_absent.so";
    EXPECT_EQ(c_.Init("panelA_video"), -22);
    EXPECT_FALSE(A::init_done_(c_));
    ASSERT_EQ(A::color_modes_(c_).size(), 1u);
    EXPECT_EQ(A::color_modes_(c_)[0].name, "standard");
    EXPECT_EQ(
        log_.Matching("Init: failed to open the qdutils lib libqdutils_absent.so ret ").size(), 1u);
    A::qdutils_lib_name_(c_) = "libqdutils.so";
    A::refresh_func_name_(c_) = "refreshNothing";
    EXPECT_EQ(c_.Init("panelA_video"), -22);
    EXPECT_TRUE(Has(ANDROID_LOG_ERROR, "Init: Failed to get func entry: refreshNothing\n"));
    EXPECT_EQ(A::qdutils_handle_(c_), nullptr);
    EXPECT_EQ(A::color_modes_(c_).size(), 2u);
}

TEST_F(InitTest, SuccessThenLaterInitKeepsTheResolvedEntry) {
    EXPECT_EQ(c_.Init("abc_363_cmd"), 0);
    EXPECT_TRUE(A::init_done_(c_));
    EXPECT_TRUE(A::is_cli_(c_));
    EXPECT_FALSE(A::is_primary_(c_));
    EXPECT_NE(A::refresh_screen_(c_), nullptr);
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "Init: Init done for panel abc_363_cmd======\n"));
    c_.DeInit();
    A::qdutils_lib_name_(c_) = "libqdutils_absent.so";
    EXPECT_EQ(c_.Init("abc_363_cmd"), 0);
    EXPECT_EQ(A::color_modes_(c_).size(), 2u);
}

TEST_F(InitTest, NameRuleWithoutProfile) {
    for (const auto &[name, cli] : {std::pair{"abc_ cli", true}, std::pair{"abc_cli", false}}) {
        auto color = std::make_unique<StcZuvaColor>();
        ASSERT_EQ(color->Init(name), 0);
        EXPECT_EQ(A::is_cli_(*color), cli) << name;
        EXPECT_EQ(A::is_primary_(*color), !cli) << name;
    }
}

TEST_F(InitTest, ListsMatchByPrefixAndPanelBlockOverridesThem) {
    Profile(R"(<config id="panelList"><prim>pan</prim><cli>panelA_v</cli></config>
        <config id="zgl_nonlinear_srgb"><panelname>panelA</panelname></config>)");
    ASSERT_EQ(c_.Init("panelA_video"), 0);
    EXPECT_TRUE(A::is_primary_(c_) && A::is_cli_(c_));
    EXPECT_FALSE(A::is_linear_gamma_(c_));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG, "Init: Cli panel panelA_video confirmed\n"));

    auto other = std::make_unique<StcZuvaColor>();
    Profile(R"(<config id="panelList"><prim>panelA</prim></config>
        <panel name="panelA"><type>cli</type></panel>)");
    ASSERT_EQ(other->Init("panelA_video"), 0);
    EXPECT_TRUE(A::is_cli_(*other));
    EXPECT_FALSE(A::is_primary_(*other));
    EXPECT_TRUE(Has(ANDROID_LOG_DEBUG,
                    "Init: init: panel type=1 is_primary_=0 is_cli_=1 name=[panelA_video]\n"));
}

}  // namespace
}  // namespace snapdragoncolor
