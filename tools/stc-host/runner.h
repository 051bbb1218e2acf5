// Loads the plug-in and plays a session's calls against it.
#ifndef STC_TOOLS_STC_HOST_RUNNER_H_
#define STC_TOOLS_STC_HOST_RUNNER_H_

#include <memory>
#include <string>

#include "sc_post_blend_interface.h"
#include "tools/stc-host/options.h"
#include "tools/stc-host/plugin_library.h"
#include "tools/stc-host/reporter.h"
#include "tools/stc-host/session.h"

namespace stc_host {

class Runner {
  public:
    Runner(const Options &options, const Session &session, Reporter &reporter);
    ~Runner();

    // dlopen, dlsym of the entry point and version 2.0; false with a message on failure.
    bool Load(std::string *error);
    void Run();

  private:
    void RunCall(size_t index, const Call &call);
    int Property(const Call &call, std::string *answer);
    int Operation(size_t index, const Call &call);
    std::string PanelFor(const Call &call) const;

    const Options &options_;
    const Session &session_;
    Reporter &reporter_;
    PluginLibrary library_;
    std::unique_ptr<snapdragoncolor::ScPostBlendInterface> plugin_;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUNNER_H_
