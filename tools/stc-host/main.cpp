// stc-host: runs the colour plug-in on a workstation the way the phone's colour framework does,
// and checks and compares what it programs.
#include <CLI/CLI.hpp>

#include "tools/stc-host/check/check.h"
#include "tools/stc-host/diff/diff_command.h"
#include "tools/stc-host/options.h"
#include "tools/stc-host/preview/preview_command.h"
#include "tools/stc-host/run/reporter.h"
#include "tools/stc-host/run/run_command.h"

namespace {

using namespace stc_host;

// The session and the plug-in it is played against: the run and preview commands share them.
void AddSessionOptions(CLI::App &app, Options &options) {
    app.add_option("-s,--session", options.session,
                   "Session file (JSON) listing the host's calls, or - for standard input, e.g. "
                   "examples/sessions/demo.json")
        ->capture_default_str();
    app.add_option("-l,--lib", options.library,
                   "Plug-in library to load, e.g. build/plain/libstcZuvaColor.so")
        ->capture_default_str();
    app.add_option("-d,--device", options.device,
                   "Device tree the plug-in sees (its /vendor, /mnt, /proc, /sys), passed as "
                   "$STC_DEVICE_ROOT, e.g. examples/sample-device")
        ->capture_default_str();
    app.add_option("-p,--panel", options.panel,
                   "Panel name handed to Init when an init call names none (default: the "
                   "session's \"panel\", else zuva_a1_video), e.g. zuva_c2_cmd_363");
    app.add_option("--qdutils", options.qdutils,
                   "Stand-in of libqdutils.so made reachable for the plug-in, e.g. "
                   "build/plain/qdutils/libqdutils.so")
        ->capture_default_str();
}

void AddRunOptions(CLI::App &app, Options &options) {
    AddSessionOptions(app, options);
    app.add_flag("--no-qdutils", options.no_qdutils,
                 "Do not provide libqdutils.so (shows Init's refusal), e.g. --no-qdutils");
    app.add_option("--log-level", options.log_level,
                   "Lowest log priority shown: V, D, I, W or E (either case), e.g. --log-level D "
                   "for the debug lines")
        ->check([](const std::string &level) {
            return MinimumPriority(level) ? "" : "expected V, D, I, W or E, not " + level;
        })
        ->capture_default_str();
    app.add_flag("--json", options.json,
                 "Write JSON lines (one object per log line, call, result, summary and failed "
                 "expectation, each with its call index), e.g. --json");
    app.add_option("--dump-dir", options.dump_dir,
                   "After every processing operation write each added or changed block record, "
                   "complete, to DIR/<call>-<block>.json, e.g. --dump-dir /tmp/unit1");
}

void AddPreviewOptions(CLI::App &preview, Options &run, PreviewOptions &options) {
    AddSessionOptions(preview, run);
    CLI::Option *image = preview.add_option("--image", options.image, "Input PNG, e.g. photo.png");
    CLI::Option *chart = preview.add_option("--chart", options.chart,
                                            "Built-in chart instead of an image: patches, ramps or "
                                            "skin-sky-foliage, e.g. --chart patches");
    image->excludes(chart);
    chart->excludes(image);
    preview.add_option("--out", options.out, "Output PNG, e.g. out.png")->required();
    preview.add_option("--at", options.at,
                       "Play the calls up to this index and preview the list of the last "
                       "processing operation among them (default: all calls), e.g. --at 8");
    preview.add_option("--report", options.report,
                       "Write the colour report (before, after, CIEDE2000 per patch or sample "
                       "point; mean, 95th percentile, maximum) as JSON, e.g. --report r.json");
    preview.add_flag("--side-by-side", options.side_by_side,
                     "Write input and output next to each other in one PNG");
}

// Temporary wiring of `stc-host check` until the subcommand is part of the command line.
int CheckMain(int argc, char **argv) {
    CheckOptions options;
    options.library = STC_DEFAULT_PLUGIN;
    options.qdutils = STC_QDUTILS_PATH;
    CLI::App app{"Checks calibration files, gamma files, profiles and device trees", "check"};
    app.add_option("paths", options.paths, "Files or device trees")->required();
    app.add_option("--as", options.as, "lut, pcc, gamma or profile");
    app.add_flag("--json", options.json, "JSON instead of text");
    app.add_option("-l,--lib", options.library, "Plug-in library for device trees");
    app.add_option("--qdutils", options.qdutils, "Stand-in of libqdutils.so");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &e) {
        return app.exit(e) == 0 ? 0 : kExitUsageError;
    }
    return RunCheck(options);
}

}  // namespace

int main(int argc, char **argv) {
    if (argc > 1 && std::string(argv[1]) == "check") {
        return CheckMain(argc - 1, argv + 1);
    }
    Options options;
    options.library = STC_DEFAULT_PLUGIN;
    options.device = STC_EXAMPLES_DIR "/sample-device";
    options.qdutils = STC_QDUTILS_PATH;
    options.session = STC_EXAMPLES_DIR "/sessions/demo.json";

    CLI::App app{
        "stc-host loads the libstcZuvaColor plug-in as the phone's colour framework does\n"
        "(dlopen, GetScPostBlendInterface(2, 0), then only the virtual interface), runs a session\n"
        "of host calls against a device tree, and prints the plug-in's notable log lines and what\n"
        "each processing operation changed in the host's proposed hardware configuration.",
        "stc-host"};
    app.footer(
        "Example:\n"
        "  stc-host --session examples/sessions/demo.json\n"
        "  stc-host --device ~/pulled-device --panel my_panel_video --session s.json --json\n"
        "  stc-host --session s.json --dump-dir /tmp/a && stc-host diff /tmp/a /tmp/b\n"
        "\n"
        "Exit codes: 0 success, 1 bad command line, 2 bad session file, 3 library or device\n"
        "unusable, 4 a check, expectation or comparison found a fault.");
    AddRunOptions(app, options);

    CheckOptions check;
    check.library = options.library;
    check.qdutils = options.qdutils;
    CLI::App *check_command = app.add_subcommand(
        "check",
        "Judge calibration LUT, PCC and gamma files, profiles and device trees by the "
        "plug-in's own reading rules; findings as PATH:LINE: error|warning: TEXT (exit 4 "
        "on an error), e.g. stc-host check examples/sample-device");
    check_command->add_option("PATH", check.paths, "Files or device-tree directories")->required();
    check_command->add_option("--as", check.as,
                              "Kind of every file instead of the guess from its "
                              "name: lut, pcc, gamma or profile, e.g. --as lut");
    check_command->add_flag("--json", check.json, "Print the findings as JSON");
    check_command->add_option("-l,--lib", check.library, "Plug-in to drive for device trees")
        ->capture_default_str();
    check_command->add_option("--qdutils", check.qdutils, "Stand-in of libqdutils.so")
        ->capture_default_str();

    DiffOptions diff;
    CLI::App *diff_command = app.add_subcommand(
        "diff",
        "Compare two dump directories block by block and field by field (exit 4 when "
        "they differ), e.g. stc-host diff /tmp/unit1 /tmp/unit2");
    diff_command->add_option("A", diff.a, "First dump directory")->required();
    diff_command->add_option("B", diff.b, "Second dump directory")->required();
    diff_command->add_flag("--json", diff.json, "Print the differences as JSON");
    Options preview_run = options;
    PreviewOptions preview;
    CLI::App *preview_command = app.add_subcommand(
        "preview",
        "Play a session and apply the block list of its last processing operation to "
        "an image or a built-in chart (software model of the display pipeline), e.g. "
        "stc-host preview --chart patches --out p.png --report r.json");
    AddPreviewOptions(*preview_command, preview_run, preview);
    app.require_subcommand(0, 1);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &e) {
        return app.exit(e) == 0 ? 0 : kExitUsageError;
    }
    if (*check_command) {
        return RunCheck(check);
    }
    if (*diff_command) {
        return RunDiff(diff);
    }
    if (*preview_command) {
        if (preview.image.empty() && preview.chart.empty()) {
            return Fail(kExitUsageError, "preview needs --image or --chart");
        }
        return RunPreview(preview_run, preview);
    }
    return RunSessionCommand(options);
}
