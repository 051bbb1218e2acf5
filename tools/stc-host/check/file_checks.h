// The checks of one file each, shared by the command, the device-tree check and the benchmark.
#ifndef STC_TOOLS_STC_HOST_CHECK_FILE_CHECKS_H_
#define STC_TOOLS_STC_HOST_CHECK_FILE_CHECKS_H_

#include <string>
#include <string_view>
#include <vector>

#include "calibration/calibration_file.h"
#include "panel/stc_xml_parse.h"
#include "tools/stc-host/check/check.h"
#include "tools/stc-host/check/findings.h"

namespace stc_host {

// Each check reads `read_path` as the plug-in reads a device path (under $STC_DEVICE_ROOT when
// that is set) and names it in its findings by the path `out` carries.
void CheckLut(const std::string &read_path, FileFindings &out);
void CheckPcc(const std::string &read_path, FileFindings &out);
void CheckGamma(const std::string &read_path, FileFindings &out);

// What a profile says, for the device-tree check to find the panels it names.
struct ProfileFacts {
    snapdragoncolor::stcXmlresult lists;   // as parsed for no particular panel
    std::vector<std::string> panel_names;  // names of the `panel` elements
    std::vector<std::string> name_paths;   // every path it gives for a panel's name
};
void CheckProfile(const std::string &read_path, FileFindings &out, ProfileFacts *facts);

void CheckFileOfKind(const std::string &read_path, FileKind kind, FileFindings &out);

inline bool EndsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

// The calibration file routine's own events (open, whole read, line feeds, line length), worded
// for a LUT and a PCC file alike; the subclasses judge the lines.
class CalibrationFileCheck : public snapdragoncolor::CalibrationFileEvents {
  public:
    explicit CalibrationFileCheck(FileFindings &out) : out_(out) {}

    void OnSize(size_t size) override { size_ = size; }
    void OnOpenFailed() override;
    void OnShortRead(long got, size_t size) override;
    void OnNoLine() override;
    void OnTooLongLine(size_t number) override;
    void OnUnterminatedLine(size_t number, size_t bytes) override;

  protected:
    ~CalibrationFileCheck() = default;
    // How a line with fewer numbers than `needed` is named, e.g. "line has 5 numbers, the plug-in
    // needs six".
    static std::string ShortLine(int got, const char *needed);

    FileFindings &out_;
    size_t size_ = 0;
};

// Sets $STC_DEVICE_ROOT to `root` (unsets it for an empty root) while it lives.
class ScopedDeviceRoot {
  public:
    explicit ScopedDeviceRoot(const std::string &root);
    ~ScopedDeviceRoot();
    ScopedDeviceRoot(const ScopedDeviceRoot &) = delete;
    ScopedDeviceRoot &operator=(const ScopedDeviceRoot &) = delete;

  private:
    bool had_previous_;
    std::string previous_;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_FILE_CHECKS_H_
