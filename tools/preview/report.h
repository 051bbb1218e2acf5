// Before/after colour report: sampled colours, their CIEDE2000 differences and a summary.
#ifndef STC_TOOLS_PREVIEW_REPORT_H_
#define STC_TOOLS_PREVIEW_REPORT_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tools/preview/charts.h"
#include "tools/preview/colour_difference.h"
#include "tools/preview/image.h"

namespace stc_preview {

struct ReportSample {
    std::string name;
    int x = 0;
    int y = 0;
    std::array<uint16_t, 3> before = {};  // codes at the report's bit depth
    std::array<uint16_t, 3> after = {};
    Lab before_lab;
    Lab after_lab;
    double delta_e = 0;
};

// Summary of the differences; the 95th percentile interpolates linearly between the two nearest
// ranks of the sorted values (rank 0.95 * (count - 1)). All zero for no values.
struct DeltaEStats {
    size_t count = 0;
    double mean = 0;
    double p95 = 0;
    double max = 0;
};

struct Report {
    int bit_depth = 8;
    std::vector<ReportSample> samples;
    DeltaEStats stats;
};

DeltaEStats SummariseDeltaE(std::vector<double> values);

// One sample per patch, at its centre; `after` is the chart's image through the pipeline.
Report ChartReport(const Chart &chart, const Image &after);

// Samples at the centres of a points_per_axis x points_per_axis grid of equal cells. Both images
// must have the same size and depth (std::invalid_argument otherwise).
Report GridReport(const Image &before, const Image &after, int points_per_axis);

nlohmann::json ReportToJson(const Report &report);

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_REPORT_H_
