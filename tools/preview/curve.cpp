#include "tools/preview/curve.h"

#include <algorithm>
#include <cmath>

namespace stc_preview {

double InterpolateCurve(const std::vector<uint32_t> &codes, double x) {
    const size_t last = codes.size() - 1;
    const double position = std::clamp(x, 0.0, 1.0) * static_cast<double>(last);
    const size_t below = std::min(static_cast<size_t>(std::floor(position)), last);
    if (below == last) {
        return codes[last];
    }
    const double fraction = position - static_cast<double>(below);
    return codes[below] + fraction * (static_cast<double>(codes[below + 1]) - codes[below]);
}

Rgb ApplyCurves(const std::vector<uint32_t> &r, const std::vector<uint32_t> &g,
                const std::vector<uint32_t> &b, double max_code, Rgb in) {
    return {InterpolateCurve(r, in.r) / max_code, InterpolateCurve(g, in.g) / max_code,
            InterpolateCurve(b, in.b) / max_code};
}

std::string CheckCurves(const std::vector<uint32_t> &r, const std::vector<uint32_t> &g,
                        const std::vector<uint32_t> &b) {
    const struct {
        const char *name;
        const std::vector<uint32_t> &codes;
    } channels[] = {{"r", r}, {"g", g}, {"b", b}};
    for (const auto &channel : channels) {
        if (channel.codes.size() < 2) {
            return std::string("curve ") + channel.name + " has " +
                   std::to_string(channel.codes.size()) + " entries; at least 2 are needed";
        }
    }
    return "";
}

}  // namespace stc_preview
