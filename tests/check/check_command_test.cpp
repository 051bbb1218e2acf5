// The command as a whole: the text and JSON reports, the exit codes, and device trees checked by
// driving the plug-in itself.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

#include "tests/check/check_support.h"
#include "tools/stc-host/check/tree_check.h"

namespace stc_check_test {
namespace {

namespace fs = std::filesystem;
using stc_host::CheckOptions;

CheckOptions Options(std::vector<std::string> paths) {
    CheckOptions options;
    options.paths = std::move(paths);
    options.library = STC_PLUGIN_PATH;
    options.qdutils = STC_QDUTILS_PATH;
    return options;
}

// RunCheck's exit code, its standard output in `out`.
int RunCommand(const CheckOptions &options, std::string *out = nullptr) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = stc_host::RunCheck(options);
    const std::string printed = testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    if (out) {
        *out = printed;
    }
    return code;
}

const std::string kPccLines = "0 1 0 0 0 0 0 0 0 0 0\n0 0 1 0 0 0 0 0 0 0 0\n";

TEST(CheckCommand, PrintsFindingsInCompilerFormatThenTheSummary) {
    stc_test::DeviceTree dir;
    dir.WriteFile("/a_C3D_cali_pcc.txt", kPccLines + "0 0 0 1 0 0 0 0 0 0 nan\n");
    dir.WriteFile("/b_C3D_cali_pcc.txt", kPccLines);
    const std::string a = dir.HostPath("/a_C3D_cali_pcc.txt");
    const std::string b = dir.HostPath("/b_C3D_cali_pcc.txt");
    std::string out;
    EXPECT_EQ(RunCommand(Options({a, b}), &out), 4) << "errors found";
    EXPECT_EQ(out, a +
                       ":3: error: the rgb term is not a number: the plug-in hands it to the "
                       "hardware\n" +
                       b +
                       ": error: 2 lines, the plug-in needs three: it refuses the PCC and "
                       "keeps what it held before\n"
                       "2 errors, 0 warnings in 2 files\n");
}

TEST(CheckCommand, PrintsJsonWithNullForNoLine) {
    stc_test::DeviceTree dir;
    dir.WriteFile("/a_C3D_cali_pcc.txt", kPccLines);
    const std::string a = dir.HostPath("/a_C3D_cali_pcc.txt");
    CheckOptions options = Options({a});
    options.json = true;
    std::string out;
    RunCommand(options, &out);
    const nlohmann::json report = nlohmann::json::parse(out);
    ASSERT_EQ(report["findings"].size(), 1u);
    const nlohmann::json &f = report["findings"][0];
    EXPECT_EQ(f["path"], a);
    EXPECT_TRUE(f["line"].is_null()) << "a line count names no line";
    EXPECT_EQ(f["severity"], "error");
    EXPECT_EQ(f["message"],
              "2 lines, the plug-in needs three: it refuses the PCC and keeps what "
              "it held before");
    EXPECT_EQ(report["errors"], 1);
    EXPECT_EQ(report["warnings"], 0);
    EXPECT_EQ(report["files"], 1);
}

TEST(CheckCommand, ExitCodes) {
    stc_test::DeviceTree dir;
    dir.WriteFile("/good_C3D_cali_pcc.txt", kPccLines + "0 0 0 1 0 0 0 0 0 0 0\n");
    dir.WriteFile("/bad_C3D_cali_pcc.txt", kPccLines);
    dir.WriteFile("/notes.txt", kPccLines + "0 0 0 1 0 0 0 0 0 0 0\n");
    const std::string good = dir.HostPath("/good_C3D_cali_pcc.txt");
    const std::string notes = dir.HostPath("/notes.txt");
    auto as = [](CheckOptions options, const char *kind) {
        options.as = kind;
        return options;
    };
    CheckOptions no_plugin = Options({dir.root()});
    no_plugin.library = dir.HostPath("/libnothing.so");
    const struct {
        const char *name;
        CheckOptions options;
        int code;
    } cases[] = {
        {"clean file", Options({good}), 0},
        {"broken file", Options({good, dir.HostPath("/bad_C3D_cali_pcc.txt")}), 4},
        {"kind not told by name", Options({notes}), 1},
        {"kind given by --as", as(Options({notes}), "pcc"), 0},
        {"unknown --as", as(Options({good}), "lut3d"), 1},
        {"--as on a device tree", as(Options({dir.root()}), "lut"), 1},
        {"missing path", Options({dir.HostPath("/gone_C3D_cali_pcc.txt")}), 3},
        {"unloadable plug-in", no_plugin, 3},
        {"device tree naming no panel", Options({dir.root()}), 4},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(RunCommand(c.options), c.code) << c.name;
    }
}

// A copy of the sample device, changed by the test.
class SampleTree : public testing::Test {
  protected:
    SampleTree() {
        fs::copy(STC_EXAMPLES_DIR "/sample-device", tree_.root(), fs::copy_options::recursive);
    }
    std::string Shown(const std::string &device_path) const { return tree_.root() + device_path; }
    Findings Check() {
        Findings findings;
        EXPECT_EQ(stc_host::CheckTree(tree_.root(), Options({}), findings), 0) << "tree checked";
        return findings;
    }
    // The finding about `device_path` whose message contains `fragment`, or null.
    const Finding *About(const Findings &findings, const std::string &device_path,
                         const std::string &fragment) {
        for (const Finding &f : findings.list()) {
            if (f.path == Shown(device_path) && f.message.find(fragment) != std::string::npos) {
                return &f;
            }
        }
        return nullptr;
    }

    stc_test::DeviceTree tree_;
};

const std::string kUnit = "/mnt/vendor/persist/display/panel_zuva_a1_video_C3D_cali_";
const std::string kCliUnit = "/mnt/vendor/persist/display/panel_zuva_c2_cmd_363_C3D_cali_";
const std::string kGolden = "/vendor/etc/display/panel_zuva_a1_video_C3D_cali_";
constexpr const char *kProfilePath = "/vendor/etc/display/zuva_stc_profile.xml";

TEST_F(SampleTree, TheSampleDeviceHasNoErrors) {
    EXPECT_EQ(RunCommand(Options({tree_.root()})), 0) << "exit code";
    const Findings findings = Check();
    EXPECT_EQ(findings.errors(), 0);
    EXPECT_NE(About(findings, kCliUnit + "p3.txt",
                    "missing: the plug-in loads the golden file "
                    "/vendor/etc/display/panel_zuva_c2_cmd_363_C3D_cali_p3.txt for panel "
                    "zuva_c2_cmd_363 instead"),
              nullptr)
        << "the CLI panel has golden files only";
    EXPECT_EQ(findings.files(), 8) << "profile, three unit, three golden and one gamma file";
}

TEST_F(SampleTree, NamesBrokenUnitFilesAndGoldenFallBacks) {
    std::vector<std::string> srgb;
    {
        std::ifstream in(Shown(kUnit + "srgb.txt"));
        for (std::string line; std::getline(in, line);) {
            srgb.push_back(line);
        }
    }
    srgb[16] = "0 0 4095 0 0";
    tree_.WriteFile(kUnit + "srgb.txt", Join(srgb));
    tree_.WriteFile(kUnit + "p3.txt", "");
    tree_.Remove(kUnit + "pcc.txt");
    tree_.Remove("/vendor/etc/display/panel_zuva_c2_cmd_363_C3D_cali_p3.txt");
    tree_.Remove("/vendor/etc/display/panel_zuva_b3_video_gamma_srgb.txt");
    EXPECT_EQ(RunCommand(Options({tree_.root()})), 4) << "exit code";
    const Findings findings = Check();
    const Finding *short_line = About(findings, kUnit + "srgb.txt", "line has 5 numbers");
    ASSERT_NE(short_line, nullptr) << "a used unit file with a short line";
    EXPECT_EQ(short_line->line, 17);
    EXPECT_NE(About(findings, kUnit + "p3.txt", "empty file"), nullptr)
        << "an empty unit file, which does not fall back";
    EXPECT_EQ(About(findings, kGolden + "p3.txt", ""), nullptr)
        << "no golden P3 file is read after an empty unit file";
    const Finding *fallback = About(findings, kUnit + "pcc.txt",
                                    "missing: the plug-in loads the golden file " + kGolden +
                                        "pcc.txt for panel zuva_a1_video instead");
    ASSERT_NE(fallback, nullptr) << "a missing unit PCC";
    EXPECT_EQ(fallback->severity, Severity::kWarning);
    EXPECT_NE(About(findings, kCliUnit + "p3.txt",
                    "missing, and the golden file "
                    "/vendor/etc/display/panel_zuva_c2_cmd_363_C3D_cali_p3.txt is missing too: "
                    "panel zuva_c2_cmd_363 gets no calibrated P3 3D LUT"),
              nullptr)
        << "no P3 file at all for the CLI panel";
    EXPECT_NE(About(findings, "/vendor/etc/display/panel_zuva_b3_video_gamma_srgb.txt",
                    "missing: the plug-in switches the contrast enhancement of panel "
                    "zuva_b3_video off"),
              nullptr)
        << "a non-linear panel without its gamma file";
}

TEST_F(SampleTree, ReportsPanelsThePlugInCannotServe) {
    tree_.WriteFile("/proc/device-tree/chosen/zvx,panel_name_s", "zuva_zz_cmd\r\n");
    tree_.Remove("/sys/class/drm/card0-DSI-1/panelName");
    const Findings findings = Check();
    EXPECT_NE(About(findings, kProfilePath, "panel zuva_zz_cmd is in neither panel list"), nullptr)
        << "a name node names a panel the profile does not list";
    EXPECT_NE(About(findings, "",
                    "panel zuva_b3_video has no name source (none of "
                    "/sys/class/drm/card0-DSI-1/panelName, /sys/class/drm/card0-DSI-1/panelName, "
                    "/sys/class/hardinfo/interface/hardware_info/lcm exists)"),
              nullptr)
        << "the profile's name path is gone";
}

TEST_F(SampleTree, VendorCalibrationKeepsThePlugInInert) {
    tree_.WriteFile("/mnt/vendor/persist/display/factory_calib_data_mipi_zuv_1", "x");
    tree_.WriteFile(kUnit + "srgb.txt", "");
    const Findings findings = Check();
    EXPECT_NE(About(findings, "/mnt/vendor/persist/display/factory_calib_data_mipi_zuv_1",
                    "the plug-in stays inert on every display"),
              nullptr);
    EXPECT_EQ(About(findings, kUnit + "srgb.txt", ""), nullptr)
        << "files the inert plug-in never reads are not judged";
}

}  // namespace
}  // namespace stc_check_test
