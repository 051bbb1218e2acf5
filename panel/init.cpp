// Init: decides whether and how this plug-in serves the panel, then prepares everything else.
#include <dlfcn.h>

#include "enhance/glimra.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "Init";
constexpr int kInitFailed = -22;

// Without a usable profile a panel is told apart by its name alone.
bool NameSaysCli(const std::string &panel_name) {
    return panel_name.find("_363") != std::string::npos ||
           panel_name.find("_ cli") != std::string::npos;
}

}  // namespace

int StcZuvaColor::Init(const std::string &panel_name) {
    std::lock_guard<std::mutex> lock(mutex_);
    STC_LOGD("%s:  for panel [%s]######\n", kFunc, panel_name.c_str());
    panel_name_ = panel_name;
    STC_LOGD(
        "%s: Current version %d.%d.\n"
        "         V3.1: Disable 3dlut/pcc param during calibraton to avoid introducing noise.\n"
        "         V3.0: Calibration file name is same as panel_name.\n"
        "         V2.2: Add panel type and name path for specified panel name. Unify golden file "
        "name.\n"
        "         V2.1: Add panel name path config and golden param loading.\n"
        "         V2.0: Support stc  xml config.\n"
        "         V1.0: Read and load calibration param.\n",
        kFunc, kStcMajorVersion, kStcMinorVersion);

    if (isQcCalibrtPresent(panel_name)) {
        STC_LOGD("%s: QC calibration param present, exit\n", kFunc);
        return 0;
    }

    xml_result_.prim_name_path.clear();
    xml_result_.cli_name_path.clear();
    xml_result_.init_name_path.clear();
    int parse_result = StcXmlParse(&xml_result_, panel_name);
    if (!ClassifyPanel(panel_name, parse_result)) {
        STC_LOGD(
            "%s: panel %s dosent support zuva calibration. If needed, please add in its name "
            "into stc config xml\n",
            kFunc, panel_name.c_str());
        init_done_ = true;
        return 0;
    }

    color_modes_.push_back(StandardMode(kIntentStandardMode));
    if (OpenQdutils() != 0) {
        return kInitFailed;
    }
    loadCalibratedParam(panel_name);
    if (parse_result == 0) {
        CheckNonLinearSrgb(panel_name);
    }
    if (!glimra_disabled_ &&
        !stcZuvaGlimraInit(glimra_boost_curve_, glimra_base_curve_, panel_name, is_linear_gamma_)) {
        glimra_disabled_ = true;
    }
    STC_LOGD("%s: Init done for panel %s======\n", kFunc, panel_name.c_str());
    init_done_ = true;
    return 0;
}

bool StcZuvaColor::ClassifyPanel(const std::string &panel_name, int parse_result) {
    const int32_t type = xml_result_.init_panel_type;
    const bool type_given = type == kPanelTypePrimary || type == kPanelTypeCli;
    const bool lists_empty =
        xml_result_.prim_panel_list.empty() && xml_result_.cli_panel_list.empty();
    if (parse_result != 0 || (!type_given && lists_empty)) {
        if (NameSaysCli(panel_name)) {
            is_primary_ = false;
            is_cli_ = true;
            STC_LOGD(
                "%s: No panelList in STC XML, treat it as a CLI panel as panel name contains "
                "_363\n",
                kFunc);
        } else {
            is_cli_ = false;
            is_primary_ = true;
            STC_LOGD(
                "%s: No panelList in STC XML, treat it as a Primary panel as panel name doesnt "
                "contains _363\n",
                kFunc);
        }
        return true;
    }
    if (!type_given) {
        return MatchPanelLists(panel_name);
    }
    // The profile's own block for this panel overrides the lists.
    if (type == kPanelTypeCli) {
        is_primary_ = false;
        is_cli_ = true;
        STC_LOGD("%s: Init: cli panel %s confirmed\n", kFunc, panel_name.c_str());
    } else {
        is_cli_ = false;
        is_primary_ = true;
        STC_LOGD("%s: Init: primary panel %s confirmed\n", kFunc, panel_name.c_str());
    }
    STC_LOGD("%s: init: panel type=%d is_primary_=%d is_cli_=%d name=[%s]\n", kFunc,
             static_cast<int>(type), is_primary_, is_cli_, panel_name.c_str());
    return true;
}

// Every entry is compared, so a name in both lists makes the panel primary and CLI at once.
bool StcZuvaColor::MatchPanelLists(const std::string &panel_name) {
    bool matched = false;
    for (const std::string &entry : xml_result_.prim_panel_list) {
        STC_LOGD("%s: primary: compare [%s] ~ [%s]\n", kFunc, panel_name.c_str(), entry.c_str());
        if (StartsWith(panel_name, entry)) {
            is_primary_ = true;
            matched = true;
            STC_LOGD("%s: Init: primary panel %s confirmed\n", kFunc, panel_name.c_str());
        }
    }
    for (const std::string &entry : xml_result_.cli_panel_list) {
        STC_LOGD("%s: cli: compare [%s] ~ [%s]\n", kFunc, panel_name.c_str(), entry.c_str());
        if (StartsWith(panel_name, entry)) {
            is_cli_ = true;
            matched = true;
            STC_LOGD("%s: Cli panel %s confirmed\n", kFunc, panel_name.c_str());
        }
    }
    return matched;
}

// Opened once: DeInit closes the library but keeps refresh_screen_, so it is not reopened.
int StcZuvaColor::OpenQdutils() {
    if (refresh_screen_) {
        return 0;
    }
    qdutils_handle_ = dlopen(qdutils_lib_name_.c_str(), RTLD_NOW);
    if (!qdutils_handle_) {
        const char *error = dlerror();
        STC_LOGE("%s: failed to open the qdutils lib %s ret %s\n", kFunc, qdutils_lib_name_.c_str(),
                 error ? error : "");
        return kInitFailed;
    }
    refresh_screen_ =
        reinterpret_cast<RefreshScreenFunc>(dlsym(qdutils_handle_, refresh_func_name_.c_str()));
    if (!refresh_screen_) {
        STC_LOGE("%s: Failed to get func entry: %s\n", kFunc, refresh_func_name_.c_str());
        dlclose(qdutils_handle_);
        qdutils_handle_ = nullptr;
        return kInitFailed;
    }
    return 0;
}

void StcZuvaColor::CheckNonLinearSrgb(const std::string &panel_name) {
    for (const std::string &entry : xml_result_.nonlinear_srgb_panels) {
        if (StartsWith(panel_name, entry)) {
            is_linear_gamma_ = false;
            STC_LOGD("%s: Init: nonLinearSrgbGamma panel %s found\n", kFunc, panel_name.c_str());
            return;
        }
    }
}

}  // namespace snapdragoncolor
