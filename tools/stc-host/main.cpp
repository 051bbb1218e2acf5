// stc-host: runs the colour plug-in on a workstation the way the phone's colour framework does.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <android/log.h>
#include <CLI/CLI.hpp>

#include "tools/stc-host/check/check.h"
#include "tools/stc-host/log_sink.h"
#include "tools/stc-host/reporter.h"
#include "tools/stc-host/runner.h"
#include "tools/stc-host/session.h"

namespace {

using namespace stc_host;

constexpr int kExitUsageError = 1;
constexpr int kExitSessionError = 2;
constexpr int kExitEnvironmentError = 3;

int Fail(int code, const std::string &message) {
    std::fprintf(stderr, "stc-host: error: %s\n", message.c_str());
    return code;
}

bool IsDirectory(const std::string &path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
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
        "of host calls against a device tree, and prints the plug-in's log lines and what each\n"
        "processing operation changed in the host's proposed hardware configuration.",
        "stc-host"};
    app.footer(
        "Example:\n"
        "  stc-host --session examples/sessions/demo.json\n"
        "  stc-host --device ~/pulled-device --panel my_panel_video --session s.json --json\n"
        "\n"
        "Exit codes: 0 success, 1 bad command line, 2 bad session file, 3 library or device\n"
        "directory unusable.");
    app.add_option("-s,--session", options.session,
                   "Session file (JSON) listing the host's calls, e.g. examples/sessions/demo.json")
        ->capture_default_str();
    app.add_option("-l,--lib", options.library,
                   "Plug-in library to load, e.g. build/plain/libstcZuvaColor.so")
        ->capture_default_str();
    app.add_option("-d,--device", options.device,
                   "Device tree the plug-in sees (its /vendor, /mnt, /proc, /sys), passed as "
                   "$STC_DEVICE_ROOT, e.g. examples/sample-device")
        ->capture_default_str();
    app.add_option("-p,--panel", options.panel,
                   "Panel name handed to Init (default: the session's \"panel\", else "
                   "zuva_a1_video), e.g. zuva_c2_cmd_363");
    app.add_option("--qdutils", options.qdutils,
                   "Stand-in of libqdutils.so made reachable for the plug-in, e.g. "
                   "build/plain/qdutils/libqdutils.so")
        ->capture_default_str();
    app.add_flag("--no-qdutils", options.no_qdutils,
                 "Do not provide libqdutils.so (shows Init's refusal), e.g. --no-qdutils");
    app.add_option("--log-level", options.log_level,
                   "Lowest log priority shown: D (debug), W (warning) or E (error), e.g. "
                   "--log-level W")
        ->check(CLI::IsMember({"D", "W", "E", "debug", "warning", "error"}))
        ->capture_default_str();
    app.add_flag("--json", options.json,
                 "Write JSON lines (one object per log line, call and summary), e.g. --json");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &e) {
        return app.exit(e) == 0 ? 0 : kExitUsageError;
    }

    Session session;
    try {
        session = LoadSession(options.session);
    } catch (const SessionError &e) {
        return Fail(kExitSessionError, options.session + ": " + e.json_path() + ": " + e.what());
    } catch (const std::exception &e) {
        return Fail(kExitSessionError, options.session + ": " + e.what());
    }
    if (!IsDirectory(options.device)) {
        return Fail(kExitEnvironmentError,
                    "device directory " + options.device + " does not exist");
    }
    setenv("STC_DEVICE_ROOT", options.device.c_str(), 1);

    std::unique_ptr<Reporter> reporter = MakeReporter(options);
    ScopedLogSink sink(
        [&reporter](int priority, const std::string &tag, const std::string &message) {
            reporter->Log(priority, tag, message);
        });
    Runner runner(options, session, *reporter);
    std::string error;
    if (!runner.Load(&error)) {
        return Fail(kExitEnvironmentError, error);
    }
    runner.Run();
    return 0;
}
