// Writes what happens during a session, as readable text or as JSON lines.
#ifndef STC_TOOLS_STC_HOST_RUN_REPORTER_H_
#define STC_TOOLS_STC_HOST_RUN_REPORTER_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/stc-host/options.h"
#include "tools/stc-host/records/record_diff.h"
#include "tools/stc-host/run/call_args.h"
#include "tools/stc-host/run/expectations.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

class Reporter {
  public:
    virtual ~Reporter() = default;
    // One line of the plug-in's log, during call `call` (none: while loading).
    virtual void Log(std::optional<size_t> call, int priority, const std::string &tag,
                     const std::string &message) = 0;
    // A call is about to be made with these arguments.
    virtual void Begin(size_t index, const Call &call, const Shown &args) = 0;
    // The call returned `result`; `answer` is what a query wrote back (nothing for the others).
    virtual void End(size_t index, const Call &call, int result, const Shown &answer) = 0;
    // What a processing operation made of the host's proposal.
    virtual void Summary(size_t index, const std::vector<EntryChange> &changes) = 0;
    virtual void Failed(const FailedExpectation &failed) = 0;
};

// The lowest priority shown for a --log-level value (V, D, I, W or E in either case); nothing
// for any other value.
std::optional<int> MinimumPriority(const std::string &level);

std::unique_ptr<Reporter> MakeReporter(const Options &options);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_REPORTER_H_
