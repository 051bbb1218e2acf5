// Writes what happens during a session, as readable text or as JSON lines.
#ifndef STC_TOOLS_STC_HOST_REPORTER_H_
#define STC_TOOLS_STC_HOST_REPORTER_H_

#include <memory>
#include <string>
#include <vector>

#include "tools/stc-host/host_blocks.h"
#include "tools/stc-host/options.h"
#include "tools/stc-host/session.h"

namespace stc_host {

class Reporter {
  public:
    virtual ~Reporter() = default;
    // One line of the plug-in's log.
    virtual void Log(int priority, const std::string &tag, const std::string &message) = 0;
    // A call is about to be made; `what` describes its arguments.
    virtual void Begin(size_t index, const Call &call, const std::string &what) = 0;
    // The call returned `result`; `answer` is what a query wrote back (may be empty).
    virtual void End(size_t index, const Call &call, int result, const std::string &answer) = 0;
    // What a processing operation made of the host's proposal.
    virtual void Summary(size_t index, const std::vector<EntryChange> &changes) = 0;
};

std::unique_ptr<Reporter> MakeReporter(const Options &options);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_REPORTER_H_
