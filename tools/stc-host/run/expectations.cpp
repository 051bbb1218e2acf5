#include "tools/stc-host/run/expectations.h"

#include <fmt/format.h>

namespace stc_host {

namespace {

void CheckBlock(size_t call, const BlockExpectation &want, const CallOutcome &outcome,
                std::vector<FailedExpectation> *failed) {
    bool present = false;
    for (size_t i = 0; i < outcome.output.size(); ++i) {
        const EntrySnapshot &entry = outcome.output[i];
        if (entry.block != want.block) {
            continue;
        }
        present = true;
        const Json *actual = entry.record.is_null() ? nullptr : FieldAt(entry.record, want.field);
        const Json value = actual ? *actual : Json();
        if (value != want.value) {
            failed->push_back(
                {call, fmt::format("{}[{}].{}", want.block, i, want.field), want.value, value});
        }
    }
    if (!present) {
        failed->push_back({call, want.block + "." + want.field, want.value, "no such block"});
    }
}

}  // namespace

std::vector<FailedExpectation> CheckExpectation(size_t call, const Expectation &expect,
                                                const CallOutcome &outcome) {
    std::vector<FailedExpectation> failed;
    if (expect.result && *expect.result != outcome.result) {
        failed.push_back({call, "result", *expect.result, outcome.result});
    }
    for (const BlockExpectation &want : expect.blocks) {
        CheckBlock(call, want, outcome, &failed);
    }
    for (const std::string &text : expect.log) {
        bool found = false;
        for (const std::string &line : outcome.log) {
            found = found || line.find(text) != std::string::npos;
        }
        if (!found) {
            failed.push_back({call, "log", text, "no line contains it"});
        }
    }
    return failed;
}

}  // namespace stc_host
