// Every absolute path the plug-in touches on the device, and the one place that maps them onto a
// workstation. Log lines always name the device path; only file-system calls use DevicePath().
#ifndef STC_PLATFORM_DEVICE_PATH_H_
#define STC_PLATFORM_DEVICE_PATH_H_

#include <string>

namespace snapdragoncolor {

// Profile, golden calibration files and gamma code files.
constexpr const char *kVendorDisplayDir = "/vendor/etc/display/";
constexpr const char *kProfilePath = "/vendor/etc/display/zuva_stc_profile.xml";

// Calibration and gamma files are named "panel_" + panel name + their own suffix.
constexpr const char *kPanelFilePrefix = "panel_";
// Calibration files: the infix, then one suffix per file.
constexpr const char *kCalibrationInfix = "_C3D_cali_";
constexpr const char *kSrgbLutSuffix = "srgb.txt";
constexpr const char *kP3LutSuffix = "p3.txt";
constexpr const char *kPccSuffix = "pcc.txt";
// Gamma code files of non-linear panels.
constexpr const char *kGammaFileSuffix = "_gamma_srgb.txt";

// Per-unit calibration files.
constexpr const char *kPersistDisplayDir = "/mnt/vendor/persist/display";

// Panel-name sources.
constexpr const char *kDtPrimPanelName = "/proc/device-tree/chosen/zvx,panel_name";
constexpr const char *kDtCliPanelName = "/proc/device-tree/chosen/zvx,panel_name_s";
constexpr const char *kDsi1PanelName = "/sys/class/drm/card0-DSI-1/panelName";
constexpr const char *kDsi2PanelName = "/sys/class/drm/card0-DSI-2/panelName";
constexpr const char *kKelpraHwInfoLcm = "/sys/devices/virtual/kelpra/interface/hw_info/lcm";
constexpr const char *kHardinfoLcm = "/sys/class/hardinfo/interface/hardware_info/lcm";
constexpr const char *kNoPanelName = "/nopanelname";

// The variable naming the workstation directory that stands for the device's root.
constexpr const char *kDeviceRootVariable = "STC_DEVICE_ROOT";

// The path at which the file system holds `device_path`. On a phone that is the path itself; on a
// workstation an absolute path is looked up under $STC_DEVICE_ROOT when that variable is set.
std::string DevicePath(const char *device_path);
inline std::string DevicePath(const std::string &device_path) {
    return DevicePath(device_path.c_str());
}

}  // namespace snapdragoncolor

#endif  // STC_PLATFORM_DEVICE_PATH_H_
