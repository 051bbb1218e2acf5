#include "tools/preview/report.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace stc_preview {

namespace {

struct SamplePoint {
    std::string name;
    int x;
    int y;
};

void RequireSameShape(const Image &before, const Image &after) {
    if (before.width != after.width || before.height != after.height ||
        before.bit_depth != after.bit_depth) {
        throw std::invalid_argument("the images before and after differ in size or bit depth");
    }
}

Report Sample(const Image &before, const Image &after, const std::vector<SamplePoint> &points) {
    RequireSameShape(before, after);
    const SrgbToLab to_lab;
    Report report;
    report.bit_depth = before.bit_depth;
    std::vector<double> differences;
    for (const SamplePoint &point : points) {
        ReportSample sample;
        sample.name = point.name;
        sample.x = point.x;
        sample.y = point.y;
        sample.before = CodesAt(before, point.x, point.y);
        sample.after = CodesAt(after, point.x, point.y);
        sample.before_lab = to_lab.Convert(PixelAt(before, point.x, point.y));
        sample.after_lab = to_lab.Convert(PixelAt(after, point.x, point.y));
        sample.delta_e = DeltaE2000(sample.before_lab, sample.after_lab);
        differences.push_back(sample.delta_e);
        report.samples.push_back(sample);
    }
    report.stats = SummariseDeltaE(differences);
    return report;
}

nlohmann::json ColourJson(const std::array<uint16_t, 3> &codes, const Lab &lab) {
    return {{"rgb", {codes[0], codes[1], codes[2]}}, {"lab", {lab.l, lab.a, lab.b}}};
}

}  // namespace

DeltaEStats SummariseDeltaE(std::vector<double> values) {
    DeltaEStats stats;
    if (values.empty()) {
        return stats;
    }
    std::sort(values.begin(), values.end());
    stats.count = values.size();
    stats.mean = std::accumulate(values.begin(), values.end(), 0.0) / values.size();
    stats.max = values.back();
    const double rank = 0.95 * static_cast<double>(values.size() - 1);
    const size_t below = static_cast<size_t>(std::floor(rank));
    const size_t above = std::min(below + 1, values.size() - 1);
    stats.p95 = values[below] + (rank - below) * (values[above] - values[below]);
    return stats;
}

Report ChartReport(const Chart &chart, const Image &after) {
    std::vector<SamplePoint> points;
    for (const Patch &patch : chart.patches) {
        points.push_back({patch.name, patch.rect.x + patch.rect.width / 2,
                          patch.rect.y + patch.rect.height / 2});
    }
    return Sample(chart.image, after, points);
}

Report GridReport(const Image &before, const Image &after, int points_per_axis) {
    if (points_per_axis < 1) {
        throw std::invalid_argument("a sample grid needs at least one point per axis");
    }
    std::vector<SamplePoint> points;
    for (int row = 0; row < points_per_axis; ++row) {
        for (int column = 0; column < points_per_axis; ++column) {
            const int x = static_cast<int>((column + 0.5) * before.width / points_per_axis);
            const int y = static_cast<int>((row + 0.5) * before.height / points_per_axis);
            points.push_back({"(" + std::to_string(x) + ", " + std::to_string(y) + ")", x, y});
        }
    }
    return Sample(before, after, points);
}

nlohmann::json ReportToJson(const Report &report) {
    nlohmann::json samples = nlohmann::json::array();
    for (const ReportSample &s : report.samples) {
        samples.push_back({{"name", s.name},
                           {"x", s.x},
                           {"y", s.y},
                           {"before", ColourJson(s.before, s.before_lab)},
                           {"after", ColourJson(s.after, s.after_lab)},
                           {"delta_e", s.delta_e}});
    }
    return {{"bit_depth", report.bit_depth},
            {"samples", samples},
            {"delta_e",
             {{"count", report.stats.count},
              {"mean", report.stats.mean},
              {"p95", report.stats.p95},
              {"max", report.stats.max}}}};
}

}  // namespace stc_preview
