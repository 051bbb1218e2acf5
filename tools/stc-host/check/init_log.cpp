#include "tools/stc-host/check/init_log.h"

namespace stc_host {

namespace {

// The plug-in's log texts this reads, as the plug-in writes them.
constexpr const char *kVendorPresent = "Init: QC calibration param present, exit\n";
constexpr const char *kVendorFile = "isQcCalibrtPresent: Found Qc calibration param file ";
constexpr const char *kRefusedPrefix = "Init: panel ";
constexpr const char *kRefusedEnd = " dosent support zuva calibration.";
constexpr const char *kLoadUnit = "loadCalibratedParam:  load ";
constexpr const char *kLoadGolden = "loadCalibratedParam:  load golden ";
constexpr const char *kGoldenPathStart = " cal param ";
constexpr const char *kNameUnopened = "loadCalibratedParam: open file: ";
constexpr const char *kNameUnopenedEnd = " failed for panel ";

struct Miss {
    const char *prefix;
    const char *end;
    bool last;  // after this one the plug-in gives up
};
const Miss kMisses[] = {
    {"loadCalibratedParam: Choosen path ", " not exist, not Zuva product? ", false},
    {"loadCalibratedParam: Dsi path ", " also not exist, ", false},
    {"loadCalibratedParam: Pad path ", " also not exist, ", true},
};

// Each way the gamma reader ends names the file last.
const char *const kGammaEnds[] = {
    "readGammaConfigFromFile: Failed to open gamma config file: ",
    "readGammaConfigFromFile: Error occurred while reading file: ",
    "readGammaConfigFromFile: No valid data found in gamma config file: ",
};
constexpr const char *kGammaLoadedPrefix = "readGammaConfigFromFile: Successfully loaded ";
constexpr const char *kGammaLoadedPath = " values from gamma config file: ";

// The rest of `text` after `prefix`, without its line feed.
bool After(const std::string &text, const std::string &prefix, std::string *rest) {
    return TextBetween(text, prefix, "\n", rest);
}

bool ReadMiss(const std::string &text, InitStory *story) {
    for (const Miss &miss : kMisses) {
        std::string path;
        if (TextUntil(text, miss.prefix, miss.end, &path)) {
            story->missing_sources.push_back(path);
            story->no_name_source = story->no_name_source || miss.last;
            return true;
        }
    }
    return false;
}

bool ReadCalibration(const std::string &text, InitStory *story) {
    std::string rest;
    if (After(text, kLoadGolden, &rest)) {
        const size_t start = rest.find(kGoldenPathStart);
        if (start != std::string::npos && !story->calibration.empty()) {
            story->calibration.back().golden =
                rest.substr(start + std::string(kGoldenPathStart).size());
        }
        return true;
    }
    if (After(text, kLoadUnit, &rest)) {
        story->calibration.push_back({rest, ""});
        return true;
    }
    return false;
}

bool ReadGamma(const std::string &text, InitStory *story) {
    for (const char *end : kGammaEnds) {
        if (After(text, end, &story->gamma_file)) {
            return true;
        }
    }
    std::string rest;
    if (After(text, kGammaLoadedPrefix, &rest)) {
        const size_t start = rest.find(kGammaLoadedPath);
        if (start != std::string::npos) {
            story->gamma_file = rest.substr(start + std::string(kGammaLoadedPath).size());
        }
        return true;
    }
    return false;
}

}  // namespace

InitStory ReadInitLog(const std::vector<LoggedLine> &lines) {
    InitStory story;
    for (const LoggedLine &line : lines) {
        const std::string &text = line.text;
        std::string value;
        if (text == kVendorPresent) {
            story.vendor_calibration = true;
        } else if (After(text, kVendorFile, &value)) {
            story.vendor_file = value;
        } else if (TextUntil(text, kRefusedPrefix, kRefusedEnd, &value)) {
            story.refused = true;
        } else if (TextUntil(text, kNameUnopened, kNameUnopenedEnd, &value)) {
            story.unopened_name_file = value;
        } else if (!ReadMiss(text, &story) && !ReadCalibration(text, &story)) {
            ReadGamma(text, &story);
        }
    }
    return story;
}

}  // namespace stc_host
