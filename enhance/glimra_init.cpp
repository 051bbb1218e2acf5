#include <cmath>
#include <cstdio>
#include <cstring>

#include "enhance/glimra.h"
#include "platform/device_path.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kGlimraInit = "stcZuvaGlimraInit";
constexpr size_t kNameBuffer = 256;
constexpr int kGlimraIdentityTop = 9;
constexpr int kMaxCode = 1023;

// Rec. 709-style transfer curve of index i, with its single-precision steps kept as they are:
// the curve values are fixed by them.
int Rec709Point(int i) {
    const float x = static_cast<float>(i * 0.00097 * 2.55);
    if (x < 0.018) {
        return static_cast<int>(x * 4.5 * 255.0);
    }
    const double p = std::pow(static_cast<double>(x), 0.45);
    const float s =
        static_cast<float>(p * static_cast<double>(1.099f) - static_cast<double>(0.099f));
    const float scaled = s * 255.0f;
    return static_cast<int>(i / 1.7 + static_cast<double>(scaled));
}

// Hybrid log-gamma-style curve of index i, scaled by 1000.
int HlgPoint(int i) {
    const double y = i * 0.001;
    if (y <= 0.083) {
        return static_cast<int>(std::sqrt(3 * y) * 1000.0);
    }
    return static_cast<int>((std::log(12 * y - 0.28466892) * 0.17883277 + 0.55991073) * 1000.0);
}

void BuildLinearCurves(std::vector<int> &boost_curve, std::vector<int> &base_curve) {
    const int n = static_cast<int>(kLinearCurveLength);
    std::vector<int> t1(n), t2(n);
    for (int i = 0; i < n; ++i) {
        t1[i] = Rec709Point(i);
        t2[i] = HlgPoint(i);
    }
    for (int i = 0; i < n; ++i) {
        boost_curve[i] = i <= kGlimraIdentityTop
                             ? i
                             : static_cast<int>(i * 0.45 + t1[i] * 0.45 + t2[i] * 0.1 + 12.0);
        base_curve[i] = i;
    }
}

// "/vendor/etc/display/panel_<name>_gamma_srgb.txt", the name cut at its first line break.
std::string GammaFileName(const std::string &panel_name) {
    char stem[kNameBuffer];
    std::snprintf(stem, sizeof(stem), "%s%s%s", kVendorDisplayDir, kPanelFilePrefix,
                  panel_name.c_str());
    stem[std::strcspn(stem, "\n\r")] = '\0';
    char name[kNameBuffer];
    std::snprintf(name, sizeof(name), "%s%s", stem, kGammaFileSuffix);
    return name;
}

// A code outside the 10-bit range would program the gamma block with values above 1023 or, for
// a negative code, with what powf makes of a non-number, and codes that are all 0 turn the panel
// black: such a file is unusable, like a short one.
bool CodesUsable(const std::vector<int> &codes, const std::vector<int> &lines) {
    bool all_zero = true;
    for (size_t i = 0; i < kNonLinearCurveLength; ++i) {
        if (codes[i] < 0 || codes[i] > kMaxCode) {
            STC_LOGW("%s: gamma code %d at line %d is outside 0..%d, ignore it\n", kGlimraInit,
                     codes[i], lines[i], kMaxCode);
            return false;
        }
        all_zero = all_zero && codes[i] == 0;
    }
    if (all_zero) {
        STC_LOGW("%s: the first %zu gamma codes are all 0, ignore them\n", kGlimraInit,
                 kNonLinearCurveLength);
    }
    return !all_zero;
}

bool BuildNonLinearCurves(std::vector<int> &boost_curve, std::vector<int> &base_curve,
                          const std::string &panel_name) {
    std::lock_guard<std::mutex> lock(gamma_srgb_mutex);
    std::vector<int> lines;
    if (!ReadGammaCodes(GammaFileName(panel_name), gamma_srgb, &lines)) {
        STC_LOGD("%s: Using default gamma values\n", kGlimraInit);
        return false;
    }
    STC_LOGD("%s: Loaded %zu gamma values\n", kGlimraInit, gamma_srgb.size());
    if (gamma_srgb.size() < kNonLinearCurveLength) {
        STC_LOGD("%s: gamma_srgb size is not enough, ignore it\n", kGlimraInit);
        return false;
    }
    if (!CodesUsable(gamma_srgb, lines)) {
        return false;
    }
    for (size_t i = 0; i < kNonLinearCurveLength; ++i) {
        const float g = static_cast<float>(gamma_srgb[i]);
        boost_curve[i] = static_cast<int>(std::pow(g / 1023.0f, 0.7f) * 1023.0f + 0.5f);
        base_curve[i] = gamma_srgb[i];
    }
    return true;
}

}  // namespace

bool stcZuvaGlimraInit(std::vector<int> &boost_curve, std::vector<int> &base_curve,
                       const std::string &panel_name, bool isLinearGamma) {
    const size_t n = isLinearGamma ? kLinearCurveLength : kNonLinearCurveLength;
    boost_curve.resize(n);
    base_curve.resize(n);
    STC_LOGD("%s: stcZuvaGlimraInit isLinearGamma:%d, panel:%s\n", kGlimraInit, isLinearGamma,
             panel_name.c_str());
    if (isLinearGamma) {
        BuildLinearCurves(boost_curve, base_curve);
        return true;
    }
    return BuildNonLinearCurves(boost_curve, base_curve, panel_name);
}

}  // namespace snapdragoncolor
