#include "tools/stc-host/preview/preview_command.h"

#include <cstdlib>
#include <fstream>
#include <memory>

#include <fmt/format.h>

#include "tools/preview/charts.h"
#include "tools/preview/pipeline.h"
#include "tools/preview/png_io.h"
#include "tools/preview/report.h"
#include "tools/stc-host/log_sink.h"
#include "tools/stc-host/records/host_records.h"
#include "tools/stc-host/run/run_command.h"
#include "tools/stc-host/run/runner.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

// Sample points per axis of the report on an arbitrary image.
constexpr int kReportGrid = 8;

// The records of the list as the hardware takes them: per block the last entry that carries a
// record (a later entry of the same block replaces an earlier one).
struct ListBlocks {
    stc_preview::IgcCurves igc;
    stc_preview::PreviewBlocks blocks;
};

ListBlocks BlocksOf(const HwConfigOutputParams &output) {
    ListBlocks list;
    for (const HwConfigPayload &entry : output.payload) {
        const void *record = entry.hw_payload.get();
        if (!record) {
            continue;
        }
        switch (BlockContentOf(entry.hw_asset).value_or(BlockContent::kEmpty)) {
            case BlockContent::kIgc: {
                const auto &igc = *static_cast<const HostIgcConfig *>(record);
                list.igc = {igc.enabled, igc.r, igc.g, igc.b};
                list.blocks.igc = &list.igc;
                break;
            }
            case BlockContent::kPcc:
                list.blocks.pcc = static_cast<const PccConfig *>(record);
                break;
            case BlockContent::kPa:
                list.blocks.pa = static_cast<const PaConfig *>(record);
                break;
            case BlockContent::kGamut:
                list.blocks.gamut = static_cast<const GamutConfig *>(record);
                break;
            case BlockContent::kGamma:
                list.blocks.gc = static_cast<const GammaPostBlendConfig *>(record);
                break;
            default:
                break;
        }
    }
    return list;
}

std::string ChartList() {
    std::string names;
    for (const std::string &name : stc_preview::ChartNames()) {
        names += (names.empty() ? "" : ", ") + name;
    }
    return names;
}

// Plays the session up to the chosen call; the list of its last processing operation, or null
// with the exit code in `*code`.
std::unique_ptr<HwConfigOutputParams> PlayedOutput(const Options &run, std::optional<size_t> at,
                                                   const Session &session, int *code) {
    std::string error;
    if (!UsableDeviceDir(run.device, &error)) {
        *code = Fail(kExitEnvironmentError, error);
        return nullptr;
    }
    setenv("STC_DEVICE_ROOT", run.device.c_str(), 1);
    Options quiet = run;
    quiet.quiet = true;
    std::unique_ptr<Reporter> reporter = MakeReporter(quiet);
    Runner runner(quiet, session, *reporter);
    ScopedLogSink sink([&runner](int priority, const std::string &tag, const std::string &text) {
        runner.OnLog(priority, tag, text);
    });
    if (!runner.Load(&error)) {
        *code = Fail(kExitEnvironmentError, error);
        return nullptr;
    }
    runner.Run(at, &error);
    if (!runner.last_output()) {
        *code = Fail(kExitSessionError,
                     "the session plays no processing operation with an "
                     "output list" +
                         (at ? fmt::format(" up to call {}", *at) : ""));
        return nullptr;
    }
    return std::make_unique<HwConfigOutputParams>(*runner.last_output());
}

}  // namespace

int RunPreview(const Options &run, const PreviewOptions &options) {
    std::optional<stc_preview::Chart> chart;
    stc_preview::Image input;
    try {
        if (!options.chart.empty()) {
            chart = stc_preview::MakeChart(options.chart);
            if (!chart) {
                return Fail(kExitUsageError, "unknown chart \"" + options.chart +
                                                 "\"; valid charts: " + ChartList());
            }
            input = chart->image;
        } else {
            input = stc_preview::ReadPng(options.image);
        }
    } catch (const stc_preview::PngError &e) {
        return Fail(kExitUsageError, e.what());
    }
    Session session;
    try {
        session = LoadSession(run.session);
    } catch (const SessionError &e) {
        return Fail(kExitSessionError, run.session + ": " + e.json_path() + ": " + e.what());
    } catch (const std::exception &e) {
        return Fail(kExitSessionError, run.session + ": " + e.what());
    }
    int code = 0;
    const auto output = PlayedOutput(run, options.at, session, &code);
    if (!output) {
        return code;
    }
    const ListBlocks list = BlocksOf(*output);
    const stc_preview::PreviewPipeline pipeline(list.blocks);
    for (const std::string &refusal : pipeline.refusals()) {
        fmt::print(stderr, "stc-host: warning: not modelled: {}\n", refusal);
    }
    const stc_preview::Image result = pipeline.Apply(input);
    try {
        if (options.side_by_side) {
            stc_preview::WriteSideBySidePng(options.out, input, result);
        } else {
            stc_preview::WritePng(options.out, result);
        }
    } catch (const stc_preview::PngError &e) {
        return Fail(kExitEnvironmentError, e.what());
    }
    const stc_preview::Report report = chart ? stc_preview::ChartReport(*chart, result)
                                             : stc_preview::GridReport(input, result, kReportGrid);
    fmt::print("wrote {}; CIEDE2000 over {} {}: mean {:.2f}, 95th percentile {:.2f}, max {:.2f}\n",
               options.out, report.stats.count, chart ? "patches" : "sample points",
               report.stats.mean, report.stats.p95, report.stats.max);
    if (!options.report.empty()) {
        std::ofstream out(options.report);
        out << stc_preview::ReportToJson(report).dump(1) << "\n";
        if (!out) {
            return Fail(kExitEnvironmentError, "cannot write " + options.report);
        }
    }
    return 0;
}

}  // namespace stc_host
