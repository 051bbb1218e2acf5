// What a call hands the plug-in and what a query gets back, in the two forms the reporters
// print: a line of text for people and JSON, with numbers as numbers, for programs.
#ifndef STC_TOOLS_STC_HOST_RUN_CALL_ARGS_H_
#define STC_TOOLS_STC_HOST_RUN_CALL_ARGS_H_

#include <string>

#include "sc_post_blend_interface.h"
#include "tools/stc-host/records/record_json.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

struct Shown {
    std::string text;  // empty: nothing to say
    Json json;         // null: nothing to say
};

// The arguments of `call`; an init call names `panel`, the panel it actually passes.
Shown CallArgs(const Call &call, const std::string &panel);
// The answers of the two kinds of query.
Shown ModeListAnswer(const snapdragoncolor::ColorModeList &modes);
Shown FlagAnswer(bool flag);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_CALL_ARGS_H_
