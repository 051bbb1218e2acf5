// What one Init of the plug-in did, as its log lines tell it: which name it found, which
// calibration files it tried and took, which gamma file it read, or why it did none of this.
#ifndef STC_TOOLS_STC_HOST_CHECK_INIT_LOG_H_
#define STC_TOOLS_STC_HOST_CHECK_INIT_LOG_H_

#include <string>
#include <vector>

#include "tools/stc-host/check/log_text.h"

namespace stc_host {

struct CalibrationAttempt {
    std::string unit;    // device path of the unit's file, tried first
    std::string golden;  // device path of the golden file tried next; empty: the unit file was read
};

struct InitStory {
    std::string vendor_file;  // the chip vendor's calibration file that kept the plug-in inert
    bool vendor_calibration = false;
    bool refused = false;                      // the panel is in neither list
    std::vector<std::string> missing_sources;  // name sources tried and not found, in order
    bool no_name_source = false;               // all of them missing: nothing was loaded
    std::string unopened_name_file;
    std::vector<CalibrationAttempt> calibration;  // in the order the plug-in loads them
    std::string gamma_file;                       // the gamma file it tried, if any
};

InitStory ReadInitLog(const std::vector<LoggedLine> &lines);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_INIT_LOG_H_
