#include "tools/stc-host/check/tree_check.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <set>

#include "platform/device_file.h"
#include "platform/device_path.h"
#include "tools/stc-host/check/file_checks.h"
#include "tools/stc-host/check/init_log.h"
#include "tools/stc-host/check/xml_errors.h"
#include "tools/stc-host/log_sink.h"
#include "tools/stc-host/plugin_library.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

// Where a device names its panels, besides the paths its profile gives.
const char *const kNameNodes[] = {kDtPrimPanelName, kDtCliPanelName,  kDsi1PanelName,
                                  kDsi2PanelName,   kKelpraHwInfoLcm, kHardinfoLcm};
// A name node holds at most what the plug-in's 256-byte buffer takes.
constexpr size_t kNameBytes = 255;

// The three calibration files, told apart by their suffixes.
struct CalibrationFile {
    const char *suffix;
    const char *label;
    FileKind kind;
};
const CalibrationFile kCalibrationFiles[] = {
    {kSrgbLutSuffix, "sRGB 3D LUT", FileKind::kLut},
    {kP3LutSuffix, "P3 3D LUT", FileKind::kLut},
    {kPccSuffix, "PCC", FileKind::kPcc},
};
// A name cut at the plug-in's 255 characters names no file; it is taken for a LUT.
const CalibrationFile kUnknownCalibration = {"", "calibration", FileKind::kLut};

const CalibrationFile &CalibrationFileOf(const std::string &path) {
    for (const CalibrationFile &file : kCalibrationFiles) {
        if (EndsWith(path, std::string(kCalibrationInfix) + file.suffix)) {
            return file;
        }
    }
    return kUnknownCalibration;
}

bool Exists(const std::string &device_path) {
    struct stat status;
    return stat(DevicePath(device_path).c_str(), &status) == 0;
}

// The name a node holds, cut at its line end as the plug-in cuts it; empty when there is none.
std::string ReadNameNode(const std::string &device_path) {
    ScopedFd fd(OpenDeviceFile(device_path));
    if (fd.get() < 0) {
        return "";
    }
    char buffer[kNameBytes + 1] = {};
    const ssize_t got = read(fd.get(), buffer, kNameBytes);
    std::string name(buffer, got > 0 ? static_cast<size_t>(got) : 0);
    return name.substr(0, name.find_first_of("\r\n"));
}

// Every panel name the tree mentions, without names that only begin another one (a profile
// entry matches the names it begins, so the longer name is the panel).
std::vector<std::string> PanelNames(const ProfileFacts &facts) {
    std::vector<std::string> candidates;
    for (const char *node : kNameNodes) {
        candidates.push_back(ReadNameNode(node));
    }
    for (const std::string &path : facts.name_paths) {
        candidates.push_back(ReadNameNode(path));
    }
    for (const auto *list : {&facts.lists.prim_panel_list, &facts.lists.cli_panel_list,
                             &facts.panel_names, &facts.lists.nonlinear_srgb_panels}) {
        candidates.insert(candidates.end(), list->begin(), list->end());
    }
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const std::string &name : candidates) {
        bool begins_another = false;
        for (const std::string &other : candidates) {
            begins_another =
                begins_another || (other.size() > name.size() && StartsWith(other, name));
        }
        if (!name.empty() && !begins_another && seen.insert(name).second) {
            names.push_back(name);
        }
    }
    return names;
}

class TreeCheck {
  public:
    TreeCheck(const std::string &root, Findings &findings)
        : shown_root_(root.size() > 1 && root.back() == '/' ? root.substr(0, root.size() - 1)
                                                            : root),
          findings_(findings) {}

    int Run(const CheckOptions &options);

  private:
    std::string Shown(const std::string &device_path) const { return shown_root_ + device_path; }
    void Report(const std::string &device_path, Severity severity, const char *kind,
                std::string message);
    void CheckProfileFile(ProfileFacts *facts);
    bool RunInit(const std::string &panel, InitStory *story);
    void CheckUsed(const std::string &device_path, FileKind kind);
    void CheckPanel(const std::string &panel, const InitStory &story);
    void CheckCalibration(const std::string &panel, const CalibrationAttempt &attempt);
    void CheckGammaFile(const std::string &panel, const std::string &device_path);

    const std::string shown_root_;
    Findings &findings_;
    PluginLibrary library_;
    std::set<std::string> checked_;
};

void TreeCheck::Report(const std::string &device_path, Severity severity, const char *kind,
                       std::string message) {
    FileFindings out(findings_, Shown(device_path));
    if (severity == Severity::kError) {
        out.Error(kind, 0, std::move(message));
    } else {
        out.Warning(kind, 0, std::move(message));
    }
}

// A file the plug-in reads is checked once, whichever panel led to it.
void TreeCheck::CheckUsed(const std::string &device_path, FileKind kind) {
    if (!checked_.insert(device_path).second) {
        return;
    }
    FileFindings out(findings_, Shown(device_path));
    findings_.CountFile();
    CheckFileOfKind(device_path, kind, out);
}

void TreeCheck::CheckProfileFile(ProfileFacts *facts) {
    if (!Exists(kProfilePath)) {
        Report(kProfilePath, Severity::kWarning, "no-profile",
               "missing: the plug-in serves every panel and takes it as CLI when its name "
               "contains _363, else as primary");
        return;
    }
    FileFindings out(findings_, Shown(kProfilePath));
    findings_.CountFile();
    CheckProfile(kProfilePath, out, facts);
}

// Init on a fresh plug-in object, as the host starts a display, with its log recorded.
bool TreeCheck::RunInit(const std::string &panel, InitStory *story) {
    std::string error;
    std::unique_ptr<ScPostBlendInterface> plugin = library_.Create(&error);
    if (!plugin) {
        Fail(kExitEnvironmentError, error);
        return false;
    }
    std::vector<LoggedLine> lines;
    int result;
    {
        ScopedXmlErrors quiet;
        ScopedLogSink sink([&lines](int priority, const std::string &, const std::string &text) {
            lines.push_back({priority, text});
        });
        result = plugin->Init(panel);
        if (result == 0) {
            plugin->DeInit();
        }
    }
    if (result != 0) {
        Fail(kExitEnvironmentError,
             "Init of panel " + panel + " failed (" + std::to_string(result) +
                 "), as the plug-in does when it cannot load libqdutils.so (pass its stand-in "
                 "with --qdutils)");
        return false;
    }
    *story = ReadInitLog(lines);
    return true;
}

void TreeCheck::CheckCalibration(const std::string &panel, const CalibrationAttempt &attempt) {
    const CalibrationFile &file = CalibrationFileOf(attempt.unit);
    const bool unit_exists = Exists(attempt.unit);
    if (attempt.golden.empty() || unit_exists) {
        // Read by the plug-in; when it could not read it, the check says so.
        CheckUsed(attempt.unit, file.kind);
    }
    if (attempt.golden.empty()) {
        return;
    }
    if (!Exists(attempt.golden)) {
        Report(attempt.unit, Severity::kError, "no-file",
               Format("%s, and the golden file %s is missing too: panel %s gets no calibrated %s",
                      unit_exists ? "unreadable" : "missing", attempt.golden.c_str(), panel.c_str(),
                      file.label));
        return;
    }
    if (!unit_exists) {
        Report(attempt.unit, Severity::kWarning, "golden",
               Format("missing: the plug-in loads the golden file %s for panel %s instead",
                      attempt.golden.c_str(), panel.c_str()));
    }
    CheckUsed(attempt.golden, file.kind);
}

void TreeCheck::CheckGammaFile(const std::string &panel, const std::string &device_path) {
    if (!Exists(device_path)) {
        Report(device_path, Severity::kError, "no-gamma",
               Format("missing: the plug-in switches the contrast enhancement of panel %s off",
                      panel.c_str()));
        return;
    }
    CheckUsed(device_path, FileKind::kGamma);
}

void TreeCheck::CheckPanel(const std::string &panel, const InitStory &story) {
    if (story.refused) {
        Report(kProfilePath, Severity::kError, "refused",
               Format("panel %s is in neither panel list: the plug-in refuses it and applies no "
                      "calibration to it",
                      panel.c_str()));
        return;
    }
    if (story.no_name_source) {
        std::string tried;
        for (const std::string &path : story.missing_sources) {
            tried += (tried.empty() ? "" : ", ") + path;
        }
        Report("", Severity::kError, "no-name-source",
               Format("panel %s has no name source (none of %s exists): the plug-in loads no "
                      "calibration for it",
                      panel.c_str(), tried.c_str()));
    }
    if (!story.unopened_name_file.empty()) {
        Report(story.unopened_name_file, Severity::kError, "name-unopened",
               Format("the plug-in cannot open this name file for panel %s and loads no "
                      "calibration for it",
                      panel.c_str()));
    }
    for (const CalibrationAttempt &attempt : story.calibration) {
        CheckCalibration(panel, attempt);
    }
    if (!story.gamma_file.empty()) {
        CheckGammaFile(panel, story.gamma_file);
    }
}

int TreeCheck::Run(const CheckOptions &options) {
    std::string error;
    if (!library_.Load(options.library, options.qdutils, &error)) {
        return Fail(kExitEnvironmentError, error);
    }
    ProfileFacts facts;
    CheckProfileFile(&facts);
    const std::vector<std::string> panels = PanelNames(facts);
    if (panels.empty()) {
        Report("", Severity::kError, "no-panel",
               "no name node exists and no profile names a panel: the plug-in has no panel to "
               "load calibration for");
    }
    for (const std::string &panel : panels) {
        InitStory story;
        if (!RunInit(panel, &story)) {
            return kExitEnvironmentError;
        }
        if (story.vendor_calibration) {
            Report(story.vendor_file, Severity::kError, "vendor",
                   "the chip vendor's calibration file is present: the plug-in stays inert on "
                   "every display and uses none of the calibration files");
            break;
        }
        CheckPanel(panel, story);
    }
    return 0;
}

}  // namespace

int CheckTree(const std::string &root, const CheckOptions &options, Findings &findings) {
    ScopedDeviceRoot device(root);
    return TreeCheck(root, findings).Run(options);
}

}  // namespace stc_host
