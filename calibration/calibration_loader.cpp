// Finds the panel's name on the device and loads its calibration files, the unit's own first and
// the panel model's golden files where those cannot be read.
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/device_file.h"
#include "platform/device_path.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kQcCalibrationMarker = "factory_calib_data_mipi_zuv";

// Names and paths live in 256-byte buffers on the device.
constexpr size_t kPathBufferSize = 256;
constexpr size_t kMaxPathLength = kPathBufferSize - 1;

std::string Bounded(std::string text) {
    if (text.size() > kMaxPathLength) {
        text.resize(kMaxPathLength);
    }
    return text;
}

// A name read from a file keeps its line end; the file names must not.
std::string CutAtLineEnd(std::string text) {
    text = text.substr(0, text.find('\n'));
    return text.substr(0, text.find('\r'));
}

struct ExistResult {
    int result;
    int error;
};

ExistResult Exists(const std::string &device_path) {
    ExistResult r;
    r.result = access(DevicePath(device_path).c_str(), F_OK);
    r.error = r.result == 0 ? 0 : errno;
    return r;
}

// Walks the persistent calibration directory in the order it yields its entries and stops at the
// first regular file whose name passes `test`; its full device path goes to `found`.
template <typename Test>
bool ScanPersistDir(const char *func, Test test, std::string *found) {
    DIR *dir = opendir(DevicePath(kPersistDisplayDir).c_str());
    if (!dir) {
        STC_LOGE("%s: %s not exist\n", func, kPersistDisplayDir);
        return false;
    }
    bool passed = false;
    while (!passed) {
        const dirent *entry = readdir(dir);
        if (!entry) {
            break;
        }
        char full_path[kPathBufferSize];
        std::snprintf(full_path, sizeof(full_path), "%s/%s", kPersistDisplayDir, entry->d_name);
        struct stat status;
        if (stat(DevicePath(full_path).c_str(), &status) != 0) {
            STC_LOGW("%s: %s error stat\n", func, full_path);
        } else if (S_ISDIR(status.st_mode)) {
            STC_LOGW("%s: %s is directory\n", func, full_path);
        } else {
            STC_LOGD("%s: check calibration param file %s\n", func, full_path);
            passed = test(entry->d_name);
            if (passed) {
                *found = full_path;
            }
        }
    }
    closedir(dir);
    return passed;
}

// Where the panel's name may be read, in the order tried.
struct NameSources {
    std::string stcXmlresult::*chosen;  // profile path, when the profile gives one
    const char *chosen_default;
    const char *driver;
    const char *hw_info;  // null: the first hardware-info node that exists
};

const NameSources kInitPathSources = {&stcXmlresult::init_name_path, kNoPanelName, kDsi1PanelName,
                                      kHardinfoLcm};
const NameSources kCliSources = {&stcXmlresult::cli_name_path, kDtCliPanelName, kDsi2PanelName,
                                 nullptr};
const NameSources kPrimarySources = {&stcXmlresult::prim_name_path, kDtPrimPanelName,
                                     kDsi1PanelName, nullptr};
const NameSources kNoSources = {nullptr, kNoPanelName, kNoPanelName, kNoPanelName};

const char *const kMissMessages[] = {
    "%s: Choosen path %s not exist, not Zuva product? %d, errno=%d, %s. try DSI path.\n",
    "%s: Dsi path %s also not exist, %d, errno=%d, %s. try Pad path\n",
    "%s: Pad path %s also not exist, %d, errno=%d, %s. Abort STCZuvaColor\n",
};

std::array<std::string, 3> NameCandidates(const stcXmlresult &xml, bool is_primary, bool is_cli) {
    const NameSources &sources = !xml.init_name_path.empty() ? kInitPathSources
                                 : is_cli                    ? kCliSources
                                 : is_primary                ? kPrimarySources
                                                             : kNoSources;
    std::string chosen = sources.chosen ? xml.*sources.chosen : "";
    if (chosen.empty()) {
        chosen = sources.chosen_default;
    }
    std::string hw_info = sources.hw_info                        ? sources.hw_info
                          : Exists(kKelpraHwInfoLcm).result == 0 ? kKelpraHwInfoLcm
                                                                 : kHardinfoLcm;
    return {Bounded(chosen), sources.driver, hw_info};
}

const char *FirstExisting(const std::array<std::string, 3> &candidates) {
    for (size_t i = 0; i < candidates.size(); ++i) {
        ExistResult exists = Exists(candidates[i]);
        if (exists.result == 0) {
            return candidates[i].c_str();
        }
        STC_LOGW(kMissMessages[i], "loadCalibratedParam", candidates[i].c_str(), exists.result,
                 exists.error, std::strerror(exists.error));
    }
    return nullptr;
}

// One read of the name file: its bytes as they are, line end included. Name nodes are regular
// files (sysfs and device-tree nodes included), so the read cannot block.
bool ReadNameFile(const char *path, std::string *name) {
    ScopedFd fd(OpenDeviceFile(path));
    if (fd.get() < 0) {
        return false;
    }
    char buffer[kPathBufferSize] = {};
    ssize_t ignored = read(fd.get(), buffer, kMaxPathLength);
    (void)ignored;
    *name = buffer;
    return true;
}

// A base longer than a buffer is cut at 255 characters; the cut name simply names no file.
std::string FileBase(const std::string &dir, const std::string &stem) {
    return CutAtLineEnd(Bounded(dir + kPanelFilePrefix + stem));
}

}  // namespace

bool StcZuvaColor::isQcCalibrtPresent(const std::string &) {
    constexpr const char *kFunc = "isQcCalibrtPresent";
    STC_LOGD("%s: check qcom calibration param file under %s\n", kFunc, kPersistDisplayDir);
    std::string found;
    auto test = [](const char *name) { return std::strstr(name, kQcCalibrationMarker) != nullptr; };
    if (!ScanPersistDir(kFunc, test, &found)) {
        return false;
    }
    STC_LOGW("%s: Found Qc calibration param file %s\n", kFunc, found.c_str());
    return true;
}

bool StcZuvaColor::useIncomingPanelName(const std::string &panel_name) {
    constexpr const char *kFunc = "useIncomingPanelName";
    const std::string name = Bounded(panel_name);
    std::string found;
    auto test = [&name](const char *entry) {
        return std::string(entry).find(name) != std::string::npos;
    };
    if (ScanPersistDir(kFunc, test, &found)) {
        STC_LOGW("%s: Found calibration param file named by panel_name: %s\n", kFunc,
                 found.c_str());
        use_incoming_panel_name_ = true;
    }
    return use_incoming_panel_name_;
}

void StcZuvaColor::loadCalibratedParam(const std::string &panel_name) {
    constexpr const char *kFunc = "loadCalibratedParam";
    useIncomingPanelName(panel_name);
    if (Exists(kDtPrimPanelName).result == 0) {
        has_dt_panel_name_ = true;
    }

    std::string fname;
    if (use_incoming_panel_name_) {
        fname = Bounded(panel_name_);
    } else {
        const auto candidates = NameCandidates(xml_result_, is_primary_, is_cli_);
        const char *path = FirstExisting(candidates);
        if (!path) {
            return;
        }
        STC_LOGD("%s: try open file: %s, is_primary_=%d, is_cli_=%d\n", kFunc, path, is_primary_,
                 is_cli_);
        if (!ReadNameFile(path, &fname)) {
            STC_LOGE("%s: open file: %s failed for panel %s, is_primary_=%d\n", kFunc, path,
                     panel_name_.c_str(), is_primary_);
            return;
        }
    }

    const std::string persist_base = FileBase(std::string(kPersistDisplayDir) + "/", fname);
    // Golden files follow the name file only for a name of more than five characters on a device
    // whose device tree names no panel; otherwise they follow the name given to Init.
    const bool golden_from_file = !has_dt_panel_name_ && fname.size() > 5;
    const std::string golden_base =
        FileBase(kVendorDisplayDir, golden_from_file ? fname : Bounded(panel_name_));
    STC_LOGD("%s: fName=%s, panel_name=%s is_primary_=%d\n", kFunc, fname.c_str(),
             panel_name_.c_str(), is_primary_);

    struct CalibrationFile {
        const char *suffix;
        const char *golden_message;
        bool (*read)(StcZuvaColor &self, char *path);
    };
    static const CalibrationFile kFiles[] = {
        {kSrgbLutSuffix, "%s:  load golden srgb cal param %s\n",
         [](StcZuvaColor &c, char *p) {
             return c.read3DlutFromFile(p, &c.calibrated_lut3d_srgb_);
         }},
        {kP3LutSuffix, "%s:  load golden p3 cal param %s\n",
         [](StcZuvaColor &c, char *p) { return c.read3DlutFromFile(p, &c.calibrated_lut3d_p3_); }},
        {kPccSuffix, "%s:  load golden pcc cal param %s\n",
         [](StcZuvaColor &c, char *p) { return c.readPCCFromFile(p, &c.calibrated_pcc_); }},
    };
    for (const CalibrationFile &file : kFiles) {
        char path[kPathBufferSize];
        std::snprintf(path, sizeof(path), "%s%s%s", persist_base.c_str(), kCalibrationInfix,
                      file.suffix);
        STC_LOGD("%s:  load %s\n", kFunc, path);
        if (file.read(*this, path)) {
            continue;
        }
        std::snprintf(path, sizeof(path), "%s%s%s", golden_base.c_str(), kCalibrationInfix,
                      file.suffix);
        STC_LOGD(file.golden_message, kFunc, path);
        file.read(*this, path);
    }
}

}  // namespace snapdragoncolor
