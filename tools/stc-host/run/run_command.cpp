#include "tools/stc-host/run/run_command.h"

#include <sys/stat.h>

#include <cstdlib>
#include <memory>

#include <fmt/format.h>

#include "tools/stc-host/log_sink.h"
#include "tools/stc-host/run/reporter.h"
#include "tools/stc-host/run/runner.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

bool UsableDeviceDir(const std::string &dir, std::string *error) {
    struct stat info;
    if (stat(dir.c_str(), &info) != 0) {
        *error = "device directory " + dir + " does not exist";
    } else if (!S_ISDIR(info.st_mode)) {
        *error = "device directory " + dir + " is a file, not a directory";
    } else {
        return true;
    }
    return false;
}

int RunSessionCommand(const Options &options) {
    Session session;
    const std::string shown = options.session == "-" ? "standard input" : options.session;
    try {
        session = LoadSession(options.session);
    } catch (const SessionError &e) {
        return Fail(kExitSessionError, shown + ": " + e.json_path() + ": " + e.what());
    } catch (const std::exception &e) {
        return Fail(kExitSessionError, shown + ": " + e.what());
    }
    std::string error;
    if (!UsableDeviceDir(options.device, &error)) {
        return Fail(kExitEnvironmentError, error);
    }
    setenv("STC_DEVICE_ROOT", options.device.c_str(), 1);

    std::unique_ptr<Reporter> reporter = MakeReporter(options);
    Runner runner(options, session, *reporter);
    ScopedLogSink sink([&runner](int priority, const std::string &tag, const std::string &text) {
        runner.OnLog(priority, tag, text);
    });
    if (!runner.Load(&error)) {
        return Fail(kExitEnvironmentError, error);
    }
    const size_t failed = runner.Run(std::nullopt, &error);
    if (!error.empty()) {
        return Fail(kExitEnvironmentError, error);
    }
    if (failed) {
        return Fail(kExitFault,
                    fmt::format("{} expectation{} failed", failed, failed == 1 ? "" : "s"));
    }
    return 0;
}

}  // namespace stc_host
