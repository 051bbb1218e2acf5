// The XML profile, Init's classification, and finding the panel's name and calibration files.
#include <android/log.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using V = std::vector<std::string>;
constexpr int kD = ANDROID_LOG_DEBUG, kW = ANDROID_LOG_WARN, kE = ANDROID_LOG_ERROR;
const std::string kPersistDir = "/mnt/vendor/persist/display", kPersist = kPersistDir + "/";
const std::string kProfile = "/vendor/etc/display/zuva_stc_profile.xml";
const std::string kDsi1 = "/sys/class/drm/card0-DSI-1/panelName";
const std::string kDsi2 = "/sys/class/drm/card0-DSI-2/panelName";
const std::string kDtPrim = "/proc/device-tree/chosen/zvx,panel_name";
const std::string kDtCli = "/proc/device-tree/chosen/zvx,panel_name_s";
const std::string kKelpra = "/sys/devices/virtual/kelpra/interface/hw_info/lcm";
const std::string kHardinfo = "/sys/class/hardinfo/interface/hardware_info/lcm";
const std::string kErr = "-1, errno=2, No such file or directory";

class PanelTest : public ::testing::Test {
  protected:
    void Profile(const std::string &body, const char *root = "ZuvaStcConfigs") {
        dev_.WriteFile(kProfile, std::string("<") + root + ">" + body + "</" + root + ">");
    }
    // Each message, line feed added, logged by `func` at `priority`.
    void ExpectLogged(int priority, const std::string &func, const V &messages) {
        for (const std::string &m : messages) {
            EXPECT_TRUE(log_.Has(priority, func + ": " + m + "\n")) << priority << " " << m;
        }
    }
    // The "load" lines of a fresh object with profile record `xml` on a device holding `files`
    // ({path, content}, or {path} for a socket).
    V Load(bool primary, bool cli, const std::vector<V> &files, const std::string &panel,
           const stcXmlresult &xml = {}) {
        stc_test::DeviceTree dev;
        for (const V &file : files) {
            if (file.size() == 1) {
                dev.MakeSocket(file[0]);
            } else {
                dev.WriteFile(file[0], file[1]);
            }
        }
        auto color = std::make_unique<StcZuvaColor>();
        A::is_primary_(*color) = primary;
        A::is_cli_(*color) = cli;
        A::xml_result_(*color) = xml;
        A::panel_name_(*color) = panel;
        log_.Clear();
        A::loadCalibratedParam(*color, panel);
        V loads;
        for (const auto &line : log_.Matching("loadCalibratedParam:  load ")) {
            loads.push_back(line.message);
        }
        return loads;
    }
    // Unit file, then golden file, of each kind, from the two stems; names end at 255 characters.
    static V Expected(const std::string &unit, const std::string &golden, bool pcc_golden = true) {
        V loads;
        for (const std::string kind : {"srgb", "p3", "pcc"}) {
            const std::string file = "_C3D_cali_" + kind + ".txt";
            loads.push_back("loadCalibratedParam:  load " +
                            (kPersist + "panel_" + unit + file).substr(0, 255) + "\n");
            loads.push_back("loadCalibratedParam:  load golden " + kind + " cal param " +
                            ("/vendor/etc/display/panel_" + golden + file).substr(0, 255) + "\n");
        }
        loads.resize(pcc_golden ? 6 : 5);
        return loads;
    }

    stc_test::DeviceTree dev_;
    stc_test::LogCapture log_;
    std::unique_ptr<StcZuvaColor> c_ = std::make_unique<StcZuvaColor>();
};

TEST_F(PanelTest, ProfileIsReadVerbatimByPrefixRulesOnlyWhenUsable) {
    Profile(R"(<config id=""><prim>a</prim></config><config id="pan"><prim>b</prim><prim/><cli/>
        <cli>k</cli></config><config id="panelListX"><prim>c</prim></config><config id="gamma"/>
        <config id="panelN"><prim>/p1</prim><prim>/p2</prim><cli></cli><cli> /c </cli></config>
        <config id="zgl"><panelname>g</panelname><panelname/></config>
        <panel name="abc"><type>main</type><type/><path>/x</path><path/></panel>
        <panel name="abcd"><type>cli</type><path>/y</path></panel>
        <panel name="abcdefg"><type>primary</type></panel><panel name=""><type>primary</type></panel>)");
    stcXmlresult xml;
    ASSERT_EQ(StcXmlParse(&xml, "abcdef"), 0);
    ASSERT_EQ(StcXmlParse(&xml, "abcdef"), 0);
    dev_.Remove(kProfile);
    EXPECT_EQ(StcXmlParse(&xml, "abcdef"), -17);
    Profile("", "Configs");
    EXPECT_EQ(StcXmlParse(&xml, "abcdef"), -9);
    dev_.WriteFile(kProfile, "<ZuvaStcConfigs>");
    EXPECT_EQ(StcXmlParse(&xml, "abcdef"), -9);
    EXPECT_EQ(xml.prim_name_path, "/p1/p2");
    EXPECT_EQ(xml.cli_name_path, " /c ");
    EXPECT_EQ(xml.init_name_path, "/x/y");
    EXPECT_EQ(xml.init_panel_type, 1);
    EXPECT_EQ(xml.prim_panel_list, (V{"b", "b"}));
    EXPECT_EQ(xml.cli_panel_list, (V{"k", "k"}));
    EXPECT_EQ(xml.nonlinear_srgb_panels, (V{"g", "g"}));
    ExpectLogged(kE, "StcXmlParse",
                 {"no id present", "prim name should not be empty", "cli name should not be empty",
                  "cli name path should not be empty", "panelname should not be empty",
                  "panel type is empty for panel abcdef",
                  "name path is empty for init panel abcdef", "no panel name present",
                  "unexpected root node: Configs", "parse config file failed: " + kProfile});
    ExpectLogged(kW, "StcXmlParse", {"unsupported config: gamma"});
    ExpectLogged(
        kD, "StcXmlParse",
        {"parse top config: pan", "add b to supported prim panel list",
         "add k to supported cli panel list", "get prim panel name path: /p1",
         "get cli panel name path:  /c ", "add g to supported nonLinearSRgb gamma panel list",
         "found init panel config for abcdef", "name path is /x for init panel abcdef",
         "panel abcdef is cli. panel (1)",
         "panel abcdef is main. panel (1)",  // type kept from the first parse
         "Compare init panel abcdef with config node for pane abcdefg",
         kProfile + " not exist, " + kErr});
}

// Fresh objects hold a stale record (abc listed as primary and non-linear, an init path) and both
// flags set when `preset`. State: (P)rimary, (C)LI, (L)inear sRGB gamma, then the mode count.
TEST_F(PanelTest, InitClassifiesThePanel) {
    const char *lists = R"(<config id="panelList"><prim>pan</prim><cli>panelA_v</cli></config>
        <config id="zgl_nonlinear_srgb"><panelname>panelA</panelname></config>
        <panel name="pB"><type>cli</type></panel><panel name="pC"><type>primary</type></panel>)";
    const char *block = R"(<panel name="xyz"><type>cli</type></panel>)";
    const std::string cli_name =
                          "No panelList in STC XML, treat it as a CLI panel as panel name "
                          "contains _363",
                      primary_name =
                          "No panelList in STC XML, treat it as a Primary panel as "
                          "panel name doesnt contains _363";
    const struct {
        const char *profile;  // null: one that cannot be used
        const char *name;
        bool preset;
        const char *state;
        V messages;
    } cases[] = {
        // clang-format off
        {nullptr, "abc_363_cmd", true, "-CL1", {cli_name}},
        {nullptr, "abc_ cli", true, "-CL1", {cli_name}},
        {nullptr, "abc_cli", true, "P-L1", {primary_name}},
        {nullptr, "abc363", true, "P-L1", {primary_name}},
        {lists, "panelA_video", false, "PC-1",
         {"Cli panel panelA_video confirmed", "Init: nonLinearSrgbGamma panel panelA_video found"}},
        {lists, "pan_x", true, "PCL1", {"Init: primary panel pan_x confirmed",
         "primary: compare [pan_x] ~ [pan]", "cli: compare [pan_x] ~ [panelA_v]"}},
        {lists, "pB_video", true, "-CL1", {"Init: cli panel pB_video confirmed",
         "init: panel type=1 is_primary_=0 is_cli_=1 name=[pB_video]"}},
        {lists, "pC", true, "P-L1", {"Init: primary panel pC confirmed",
         "init: panel type=0 is_primary_=1 is_cli_=0 name=[pC]"}},
        {block, "xyz", false, "-CL1", {"Init: cli panel xyz confirmed"}},
        {lists, "pa", false, "--L0", {"panel pa dosent support zuva calibration. If needed, "
         "please add in its name into stc config xml"}},
        // clang-format on
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Profile(c.profile ? c.profile : "", c.profile ? "ZuvaStcConfigs" : "None");
        auto color = std::make_unique<StcZuvaColor>();
        A::is_primary_(*color) = A::is_cli_(*color) = c.preset;
        A::xml_result_(*color) = {{}, {}, "", "", -1, "/stale", {"abc"}};
        if (!c.profile) {
            A::xml_result_(*color).prim_panel_list = {"abc"};
        }
        log_.Clear();
        ASSERT_EQ(color->Init(c.name), 0);
        EXPECT_TRUE(A::init_done_(*color));
        EXPECT_EQ(A::xml_result_(*color).init_name_path, "");
        const char flags[] = {A::is_primary_(*color) ? 'P' : '-', A::is_cli_(*color) ? 'C' : '-',
                              A::is_linear_gamma_(*color) ? 'L' : '-', '\0'};
        EXPECT_EQ(flags + std::to_string(A::color_modes_(*color).size()), c.state);
        EXPECT_NE(A::glimra_disabled_(*color), A::is_linear_gamma_(*color)) << "no gamma file";
        ExpectLogged(kD, "Init", c.messages);
        EXPECT_EQ(log_.Matching("Init: Current version 3.1.\n         V3.1: ").size(), 1u);
        ExpectLogged(kD, "Init", {" for panel [" + std::string(c.name) + "]######"});
        EXPECT_EQ(log_.Count(kD, "Init: Init done for panel " + std::string(c.name) + "======\n"),
                  c.state[3] - '0');
        ExpectLogged(kE, "isQcCalibrtPresent", {kPersistDir + " not exist"});
    }
    // Init again: the lists grow and one more mode is appended; the gamma kind and a failed
    // enhancement stay as the first Init left them.
    Profile(lists);
    auto color = std::make_unique<StcZuvaColor>();
    log_.Clear();
    ASSERT_EQ(color->Init("panelA_video"), 0);
    ASSERT_EQ(color->Init("panelA_video"), 0);
    EXPECT_EQ(A::xml_result_(*color).prim_panel_list, (V{"pan", "pan"}));
    EXPECT_EQ(A::color_modes_(*color).size(), 2u);
    EXPECT_FALSE(A::is_linear_gamma_(*color));
    EXPECT_TRUE(A::glimra_disabled_(*color));
    EXPECT_EQ(log_.Matching("stcZuvaGlimraInit: Using default gamma values").size(), 1u);
}

TEST_F(PanelTest, InitOpensTheLibraryOnceAndAppendsTheModeFirst) {
    A::refresh_func_name_(*c_) = "refreshNothing";
    EXPECT_EQ(c_->Init("abc"), -22);
    EXPECT_FALSE(A::init_done_(*c_)) << "no entry";
    EXPECT_EQ(A::color_modes_(*c_).size(), 1u) << "appended before the library is opened";
    EXPECT_EQ(A::qdutils_handle_(*c_), nullptr) << "closed again";
    ExpectLogged(kE, "Init", {"Failed to get func entry: refreshNothing"});
    A::refresh_func_name_(*c_) = "refreshScreen";
    A::qdutils_lib_name_(*c_) = "libnone.so";
    EXPECT_EQ(c_->Init("abc"), -22);
    const auto failed = log_.Matching("Init: failed to open the qdutils lib libnone.so ret ");
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].priority, kE);
    A::qdutils_lib_name_(*c_) = "libqdutils.so";
    EXPECT_EQ(c_->Init("abc"), 0);
    EXPECT_NE(A::qdutils_handle_(*c_), nullptr);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(c_->DeInit(), 0) << i;
        EXPECT_EQ(A::qdutils_handle_(*c_), nullptr) << "DeInit closes the library";
        EXPECT_NE(A::refresh_screen_(*c_), nullptr) << "DeInit keeps the entry";
    }
    EXPECT_EQ(log_.Count(kD, "DeInit: Entering\n"), 2);
    ScPayload none;
    EXPECT_EQ(c_->ProcessOps(kScModeRenderIntent, none, &none), -22) << "after DeInit";
    const auto refused = log_.Matching("ProcessOps: Invalid params init_done_ 0 output ");
    ASSERT_EQ(refused.size(), 1u);
    EXPECT_EQ(refused[0].priority, kE);
    EXPECT_EQ(c_->Init("abc"), 0);
    EXPECT_EQ(A::qdutils_handle_(*c_), nullptr) << "not opened again";
    EXPECT_EQ(A::color_modes_(*c_).size(), 4u) << "one standard mode per Init that got so far";
}

TEST_F(PanelTest, VendorCalibrationScanSkipsDirectoriesAndStopsInit) {
    dev_.MakeDir(kPersist + "factory_calib_data_mipi_zuv_x");
    std::filesystem::create_symlink(dev_.HostPath("/none"), dev_.HostPath(kPersist + "dangling"));
    EXPECT_FALSE(A::isQcCalibrtPresent(*c_, ""));
    dev_.WriteFile(kPersist + "x_factory_calib_data_mipi_zuv", "");
    dev_.WriteFile(kPersist + "y_factory_calib_data_mipi_zuv", "");
    EXPECT_EQ(c_->Init("abc"), 0);
    EXPECT_FALSE(A::init_done_(*c_));
    EXPECT_TRUE(A::color_modes_(*c_).empty()) << "nothing done";
    ExpectLogged(kD, "Init", {"QC calibration param present, exit"});
    ExpectLogged(kW, "isQcCalibrtPresent",
                 {kPersist + "factory_calib_data_mipi_zuv_x is directory",
                  kPersist + ".. is directory", kPersist + "dangling error stat"});
    ExpectLogged(kD, "isQcCalibrtPresent",
                 {"check qcom calibration param file under " + kPersistDir});
    // The scan stops at the first marker, whichever the directory yields first.
    const auto checked =
        log_.Matching("isQcCalibrtPresent: check calibration param file " + kPersist);
    const auto found = log_.Matching("isQcCalibrtPresent: Found Qc calibration param file ");
    ASSERT_EQ(checked.size(), 1u);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(checked[0].priority, kD);
    EXPECT_EQ(found[0].priority, kW);
    EXPECT_EQ(found[0].message.substr(found[0].message.find('/')),
              checked[0].message.substr(checked[0].message.find('/')));
}

TEST_F(PanelTest, CalibrationFilesAreNamedFromTheFirstNameSourceFound) {
    EXPECT_TRUE(Load(false, true, {}, "p").empty());
    ExpectLogged(
        kW, "loadCalibratedParam",
        {"Choosen path " + kDtCli + " not exist, not Zuva product? " + kErr + ". try DSI path.",
         "Dsi path " + kDsi2 + " also not exist, " + kErr + ". try Pad path",
         "Pad path " + kHardinfo + " also not exist, " + kErr + ". Abort STCZuvaColor"});
    ExpectLogged(kE, "useIncomingPanelName", {kPersistDir + " not exist"});
    EXPECT_TRUE(Load(false, false, {{kDsi1, "abcdef"}}, "p").empty());  // no source
    ExpectLogged(kW, "loadCalibratedParam",
                 {"Pad path /nopanelname also not exist, " + kErr + ". Abort STCZuvaColor"});
    EXPECT_TRUE(Load(true, false, {{kDsi1}}, "p").empty());  // exists, cannot be opened
    ExpectLogged(kD, "loadCalibratedParam",
                 {"try open file: " + kDsi1 + ", is_primary_=1, is_cli_=0"});
    ExpectLogged(kE, "loadCalibratedParam",
                 {"open file: " + kDsi1 + " failed for panel p, is_primary_=1"});
    stcXmlresult prim_path, cli_path, init_path;
    prim_path.prim_name_path = cli_path.cli_name_path = init_path.init_name_path = "/n";
    EXPECT_EQ(Load(false, true, {{kDsi1, "abcdef\r\n"}}, "o", init_path),
              Expected("abcdef", "abcdef"));  // own path missing: DSI-1, even for CLI
    EXPECT_TRUE(Load(false, true, {{kKelpra, "abcdef"}}, "o", init_path).empty());
    // Cut at the first LF, then CR; golden files follow names over five bytes, line end included.
    EXPECT_EQ(Load(false, true, {{"/n", "abcd\nxy\r\n"}}, "o", cli_path), Expected("abcd", "abcd"));
    EXPECT_EQ(Load(false, true, {{kKelpra, "abcd\n"}}, "o"), Expected("abcd", "o"));
    EXPECT_EQ(Load(false, true, {{kKelpra, "abcde\n"}}, "o"), Expected("abcde", "abcde"));
    EXPECT_EQ(Load(true, true, {{kDtCli, "abcdef"}, {kDtPrim, "x"}}, "o"),
              Expected("abcdef", "o"));  // CLI first; the primary's device tree: golden by panel
    EXPECT_EQ(Load(false, true, {{kDtCli, "abcdef"}}, "o"), Expected("abcdef", "abcdef"));
    const std::string srgb = kPersist + "panel_abcdef_C3D_cali_srgb.txt";
    const int announced = log_.IndexOf("loadCalibratedParam:  load " + srgb + "\n");
    EXPECT_GE(announced, 0);
    EXPECT_LT(announced,
              log_.IndexOf("read3DlutFromFile: read3DlutFromFile " + srgb + ", size=0\n"))
        << "a file is announced before it is read";
    // A unit file named after the panel: no name file is read; a readable one needs no golden.
    const std::string unit = kPersist + "panel_abc_C3D_cali_pcc.txt";
    EXPECT_EQ(Load(true, false, {{unit, ""}, {kDtPrim, "z"}}, "abc"),
              Expected("abc", "abc", false));
    ExpectLogged(kW, "useIncomingPanelName",
                 {"Found calibration param file named by panel_name: " + unit});
    EXPECT_EQ(Load(true, false, {{kPersist + "x", ""}, {kDtPrim, "abcdef"}}, "display"),
              Expected("abcdef", "display"));  // entry names, not paths, are tested
    const std::string a254(254, 'a');
    EXPECT_EQ(Load(true, false, {{"/n", a254 + "\nb"}}, "p", prim_path), Expected(a254, a254));
    ExpectLogged(kD, "loadCalibratedParam",
                 {"fName=" + a254 + "\n, panel_name=p is_primary_=1"});  // one 255-byte read
}

}  // namespace
}  // namespace snapdragoncolor
