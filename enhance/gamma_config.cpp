#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fstream>

#include "enhance/glimra.h"
#include "platform/device_path.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

std::vector<int> gamma_srgb;
std::mutex gamma_srgb_mutex;

namespace {

constexpr const char *kGammaReader = "readGammaConfigFromFile";

// The decimal integer that begins the line after optional white space; the rest is ignored.
bool ParseGammaCode(const std::string &line, int *value) {
    const char *begin = line.c_str();
    char *end = nullptr;
    errno = 0;
    long parsed = std::strtol(begin, &end, 10);
    if (end == begin || errno == ERANGE || parsed < INT_MIN || parsed > INT_MAX) {
        return false;
    }
    *value = static_cast<int>(parsed);
    return true;
}

}  // namespace

bool readGammaConfigFromFile(std::vector<int> &gamma_values, const std::string &path) {
    gamma_values.clear();
    std::ifstream file(DevicePath(path));
    if (!file.is_open()) {
        STC_LOGD("%s: Failed to open gamma config file: %s\n", kGammaReader, path.c_str());
        return false;
    }
    std::string line;
    for (int line_no = 1; std::getline(file, line); ++line_no) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        int value;
        if (ParseGammaCode(line, &value)) {
            gamma_values.push_back(value);
        } else {
            STC_LOGD("%s: Warning: Invalid data at line %d: %s\n", kGammaReader, line_no,
                     line.c_str());
        }
    }
    if (file.bad()) {
        STC_LOGD("%s: Error occurred while reading file: %s\n", kGammaReader, path.c_str());
        return false;
    }
    file.close();
    if (gamma_values.empty()) {
        STC_LOGD("%s: No valid data found in gamma config file: %s\n", kGammaReader, path.c_str());
        return false;
    }
    STC_LOGD("%s: Successfully loaded %zu values from gamma config file: %s\n", kGammaReader,
             gamma_values.size(), path.c_str());
    return true;
}

}  // namespace snapdragoncolor
