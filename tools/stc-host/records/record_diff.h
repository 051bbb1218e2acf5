// Differences between records, field by field and entry by entry: the change summary of a
// processing operation, `stc-host diff` and failed expectations all report them this way.
#ifndef STC_TOOLS_STC_HOST_RECORDS_RECORD_DIFF_H_
#define STC_TOOLS_STC_HOST_RECORDS_RECORD_DIFF_H_

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tools/stc-host/records/record_json.h"

namespace stc_host {

struct FieldChange {
    std::string field;   // "red.r", "entries[12]" (a LUT entry, compared whole), "r[5]"
    Json before, after;  // null where the field or element is absent on that side
};

// Every difference between two JSON records; array elements are compared one by one, an element
// that is itself an array (a LUT entry) as a whole.
std::vector<FieldChange> CompareJson(const Json &before, const Json &after,
                                     const std::string &prefix = "");

// For a LUT: how many entries changed and the largest difference in each of the six columns
// (input r, g, b, output r, g, b); nothing when no entry changed.
struct LutEntryStats {
    size_t changed = 0;
    std::array<long long, 6> largest{};
};
std::optional<LutEntryStats> LutStats(const std::vector<FieldChange> &changes);

// "in_r 0, ..., out_b 51" with the columns that changed.
std::string LutStatsText(const LutEntryStats &stats);

// How one entry of an output list compares with the host's proposal.
struct EntryChange {
    size_t index;
    std::string block;
    std::string state;  // "unchanged", "changed", "created" (record made), "appended"
    std::vector<FieldChange> changes;  // for "changed"
    Json record;                       // the entry's record afterwards
};

std::vector<EntryChange> CompareOutputs(const std::vector<EntrySnapshot> &proposal,
                                        const std::vector<EntrySnapshot> &result);

// One line about a whole record: the facts an engineer looks at first.
std::string Brief(const Json &record);

// A change as text: "red.r: 1 -> 0.98".
std::string ChangeText(const FieldChange &change);

// The changes as short texts: a field on its own, the elements of one array together ("r: 814
// of 1024 values changed, first r[10]: 40 -> 48"; for LUT entries also the largest change per
// column). `after` is the record afterwards (for the arrays' sizes).
std::vector<std::string> ChangeSummary(const std::vector<FieldChange> &changes, const Json &after);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RECORDS_RECORD_DIFF_H_
