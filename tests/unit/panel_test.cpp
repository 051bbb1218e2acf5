// The XML profile, Init's classification, and finding the panel's name and calibration files.
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
using V = std::vector<std::string>;
using namespace std::string_literals;
const std::string kPersist = std::string(kPersistDisplayDir) + "/";

class PanelTest : public ::testing::Test {
  protected:
    void Profile(const std::string &body, const char *root = "ZuvaStcConfigs") {
        dev_.WriteFile(kProfilePath, std::string("<") + root + ">" + body + "</" + root + ">");
    }
    void ExpectLogged(int priority, const std::string &func, const V &messages) {
        for (const std::string &m : messages) {
            EXPECT_TRUE(log_.Has(priority, func + ": " + m)) << m;
        }
    }
    // The "load" lines of a fresh object with profile record `xml` on a device holding `files`.
    V Load(bool primary, bool cli, const std::vector<V> &files, const std::string &panel,
           const stcXmlresult &xml = {}) {
        stc_test::DeviceTree dev;
        for (const V &file : files) {
            dev.WriteFile(file[0], file[1]);
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
    Profile(R"(<config id=""><prim>a</prim></config><config id="pan"><prim>b</prim><prim/></config>
        <config id="panelListX"><prim>c</prim></config><config id="gamma"/>
        <config id="panelN"><prim>/p1</prim><prim>/p2</prim><cli></cli><cli> /c </cli></config>
        <panel name="abc"><type>main</type><path>/x</path></panel>
        <panel name="abcd"><type>cli</type><path>/y</path></panel>
        <panel name="abcdefg"><type>primary</type></panel><panel name=""><type>primary</type></panel>)");
    stcXmlresult xml;
    ASSERT_EQ(StcXmlParse(&xml, "abcdef"), 0);
    ASSERT_EQ(StcXmlParse(&xml, "abcdef"), 0);
    dev_.Remove(kProfilePath);
    EXPECT_EQ(StcXmlParse(&xml, "abcdef"), -17);
    Profile("", "Configs");
    EXPECT_EQ(StcXmlParse(&xml, "abcdef"), -9);
    EXPECT_EQ(V({xml.prim_name_path, xml.cli_name_path, xml.init_name_path}),
              V({"/p1/p2", " /c ", "/x/y"}));
    EXPECT_EQ(xml.prim_panel_list, (V{"b", "b"}));
    ExpectLogged(ANDROID_LOG_ERROR, "StcXmlParse",
                 {"no id present\n", "prim name should not be empty\n",
                  "cli name path should not be empty\n", "no panel name present\n",
                  "unexpected root node: Configs\n"});
    ExpectLogged(ANDROID_LOG_WARN, "StcXmlParse", {"unsupported config: gamma\n"});
    ExpectLogged(ANDROID_LOG_DEBUG, "StcXmlParse",
                 {"panel abcdef is main. panel (1)\n",  // type kept from the first parse
                  kProfilePath + " not exist, -1, errno=2, No such file or directory\n"s});
}

// Fresh objects hold a stale record (abc listed as primary and non-linear, an init path) and both
// flags set when `preset`. State: (P)rimary, (C)LI, (L)inear sRGB gamma, then the mode count.
TEST_F(PanelTest, InitClassifiesThePanel) {
    const char *kProfile = R"(<config id="panelList"><prim>pan</prim><cli>panelA_v</cli></config>
        <config id="zgl_nonlinear_srgb"><panelname>panelA</panelname></config>
        <panel name="pB"><type>cli</type></panel><panel name="pC"><type>primary</type></panel>)";
    const std::tuple<bool, const char *, bool, const char *> kCases[] = {
        {false, "abc_363_cmd", true, "-CL1"}, {false, "abc_ cli", true, "-CL1"},
        {false, "abc_cli", true, "P-L1"},     {true, "panelA_video", false, "PC-1"},
        {true, "pB_video", true, "-CL1"},     {true, "pC", true, "P-L1"},
        {true, "pa", false, "--L0"},
    };
    for (const auto &[profile, name, preset, state] : kCases) {
        Profile(kProfile, profile ? "ZuvaStcConfigs" : "None");  // an unusable one counts as none
        auto color = std::make_unique<StcZuvaColor>();
        A::is_primary_(*color) = A::is_cli_(*color) = preset;
        A::xml_result_(*color) = {{"abc"}, {}, "", "", -1, "/stale", {"abc"}};
        ASSERT_EQ(color->Init(name), 0);
        EXPECT_TRUE(A::init_done_(*color) && A::xml_result_(*color).init_name_path.empty());
        const char flags[] = {A::is_primary_(*color) ? 'P' : '-', A::is_cli_(*color) ? 'C' : '-',
                              A::is_linear_gamma_(*color) ? 'L' : '-', '\0'};
        EXPECT_EQ(flags + std::to_string(A::color_modes_(*color).size()), state) << name;
        EXPECT_NE(A::glimra_disabled_(*color), A::is_linear_gamma_(*color));  // no gamma file
    }
    ExpectLogged(ANDROID_LOG_DEBUG, "Init",
                 {"panel pa dosent support zuva calibration. If needed, please add in its name "
                  "into stc config xml\n"});
}

TEST_F(PanelTest, InitAppendsTheModeBeforeOpeningTheLibraryUntilItsEntryIsResolved) {
    A::refresh_func_name_(*c_) = "refreshNothing";
    EXPECT_EQ(c_->Init("abc"), -22);
    EXPECT_TRUE(!A::init_done_(*c_) && A::color_modes_(*c_).size() == 1 &&
                !A::qdutils_handle_(*c_));
    A::qdutils_lib_name_(*c_) = "libnone.so";
    EXPECT_EQ(c_->Init("abc"), -22);
    ExpectLogged(ANDROID_LOG_ERROR, "Init", {"Failed to get func entry: refreshNothing\n"});
    EXPECT_EQ(log_.Matching("Init: failed to open the qdutils lib libnone.so ret ").size(), 1u);
    A::refresh_screen_(*c_) = [] { return 0; };  // resolved once, kept by DeInit
    EXPECT_EQ(c_->Init("abc"), 0);
}

TEST_F(PanelTest, VendorCalibrationScanSkipsDirectoriesAndStopsInit) {
    dev_.MakeDir(kPersist + "factory_calib_data_mipi_zuv_x");
    EXPECT_FALSE(A::isQcCalibrtPresent(*c_, ""));
    dev_.WriteFile(kPersist + "x_factory_calib_data_mipi_zuv", "");
    EXPECT_TRUE(c_->Init("abc") == 0 && !A::init_done_(*c_));
    ExpectLogged(ANDROID_LOG_DEBUG, "Init", {"QC calibration param present, exit\n"});
    ExpectLogged(
        ANDROID_LOG_WARN, "isQcCalibrtPresent",
        {kPersist + "factory_calib_data_mipi_zuv_x is directory\n", kPersist + ".. is directory\n",
         "Found Qc calibration param file " + kPersist + "x_factory_calib_data_mipi_zuv\n"});
}

TEST_F(PanelTest, CalibrationFilesAreNamedFromTheFirstNameSourceFound) {
    EXPECT_TRUE(Load(false, true, {}, "p").empty());
    const std::string e = "-1, errno=2, No such file or directory. ";
    ExpectLogged(ANDROID_LOG_WARN, "loadCalibratedParam",
                 {"Choosen path "s + kDtCliPanelName + " not exist, not Zuva product? " + e +
                      "try DSI path.\n",
                  "Dsi path "s + kDsi2PanelName + " also not exist, " + e + "try Pad path\n",
                  "Pad path "s + kHardinfoLcm + " also not exist, " + e + "Abort STCZuvaColor\n"});
    EXPECT_TRUE(Load(false, false, {{kDsi1PanelName, "abcdef"}}, "p").empty());  // no source
    stcXmlresult prim_path, cli_path, init_path;
    prim_path.prim_name_path = cli_path.cli_name_path = init_path.init_name_path = "/n";
    EXPECT_EQ(Load(false, true, {{kDsi1PanelName, "abcdef\r\n"}}, "o", init_path),
              Expected("abcdef", "abcdef"));  // own path missing: DSI-1, even for CLI
    // Cut at the first LF, then CR; golden files follow names over five bytes, line end included.
    EXPECT_EQ(Load(false, true, {{"/n", "abcd\nxy\r\n"}}, "o", cli_path), Expected("abcd", "abcd"));
    EXPECT_EQ(Load(false, true, {{kKelpraHwInfoLcm, "abcd\n"}}, "o"), Expected("abcd", "o"));
    EXPECT_EQ(Load(true, true, {{kDtCliPanelName, "abcdef"}, {kDtPrimPanelName, "x"}}, "o"),
              Expected("abcdef", "o"));  // CLI first; device tree: golden by panel
    // A unit file named after the panel: no name file is read; a readable one needs no golden.
    EXPECT_EQ(Load(true, false,
                   {{kPersist + "panel_abc_C3D_cali_pcc.txt", ""}, {kDtPrimPanelName, "z"}}, "abc"),
              Expected("abc", "abc", false));
    EXPECT_EQ(Load(true, false, {{kPersist + "x", ""}, {kDtPrimPanelName, "abcdef"}}, "display"),
              Expected("abcdef", "display"));  // entry names, not paths, are tested
    const std::string a254(254, 'a');
    EXPECT_EQ(Load(true, false, {{"/n", a254 + "\nb"}}, "p", prim_path), Expected(a254, a254));
    ExpectLogged(ANDROID_LOG_DEBUG, "loadCalibratedParam",
                 {"fName=" + a254 + "\n, panel_name=p is_primary_=1\n"});  // one 255-byte read
}

}  // namespace
}  // namespace snapdragoncolor
