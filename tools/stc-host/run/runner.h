// Loads the plug-in and plays a session's calls against it.
#ifndef STC_TOOLS_STC_HOST_RUN_RUNNER_H_
#define STC_TOOLS_STC_HOST_RUN_RUNNER_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/stc-host/options.h"
#include "tools/stc-host/plugin_library.h"
#include "tools/stc-host/run/call_args.h"
#include "tools/stc-host/run/expectations.h"
#include "tools/stc-host/run/reporter.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

class Runner {
  public:
    Runner(const Options &options, const Session &session, Reporter &reporter);
    ~Runner();

    // dlopen, dlsym of the entry point and version 2.0; false with a message on failure.
    bool Load(std::string *error);
    // Plays the calls up to and including `last` (all of them when not given); returns the
    // number of failed expectations. A dump directory that cannot be written stops the run with
    // a message in `*error`.
    size_t Run(std::optional<size_t> last, std::string *error);
    // Takes a line the plug-in logged.
    void OnLog(int priority, const std::string &tag, const std::string &message);
    // The list the last processing operation returned (the proposal with the plug-in's
    // changes), or null when none was played.
    const snapdragoncolor::HwConfigOutputParams *last_output() const { return last_output_.get(); }

  private:
    CallOutcome RunCall(size_t index, const Call &call);
    int Property(const Call &call, Shown *answer);
    CallOutcome Operation(size_t index, const Call &call);
    std::string PanelFor(const Call &call) const;

    const Options &options_;
    const Session &session_;
    Reporter &reporter_;
    PluginLibrary library_;
    std::unique_ptr<snapdragoncolor::ScPostBlendInterface> plugin_;
    std::optional<size_t> current_;
    std::vector<std::string> call_log_;
    std::unique_ptr<snapdragoncolor::HwConfigOutputParams> last_output_;
    std::string dump_error_;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_RUNNER_H_
