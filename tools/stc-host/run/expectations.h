// Checking what a session says a call must do against what it did.
#ifndef STC_TOOLS_STC_HOST_RUN_EXPECTATIONS_H_
#define STC_TOOLS_STC_HOST_RUN_EXPECTATIONS_H_

#include <string>
#include <vector>

#include "tools/stc-host/records/record_json.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

struct FailedExpectation {
    size_t call;
    std::string field;  // "result", "PostBlendPCC[3].red.r", "log"
    Json expected, actual;
};

// What one call did, as far as expectations look at it.
struct CallOutcome {
    int result = 0;
    std::vector<EntrySnapshot> output;  // the output list afterwards (operations)
    std::vector<std::string> log;       // messages logged during the call
};

std::vector<FailedExpectation> CheckExpectation(size_t call, const Expectation &expect,
                                                const CallOutcome &outcome);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_EXPECTATIONS_H_
