// The complete JSON form of the host's configuration records: every field and every entry, named
// as the record's members. Dumps, change summaries, diffs and expectations all use it.
#ifndef STC_TOOLS_STC_HOST_RECORDS_RECORD_JSON_H_
#define STC_TOOLS_STC_HOST_RECORDS_RECORD_JSON_H_

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "sc_post_blend_interface.h"

namespace stc_host {

using Json = nlohmann::ordered_json;

// A float as the shortest decimal that reads back to it (0.9f as 0.9, not 0.8999999761581421),
// so that a session can state the value as it was written.
Json FloatJson(float value);

// The record an entry of block `block` carries, as JSON; null for an entry without a record or
// a block whose records only the host reads.
Json RecordJson(const std::string &block, const void *record);

// One entry of an output list as it stood at a moment.
struct EntrySnapshot {
    std::string block;
    Json record;
};

std::vector<EntrySnapshot> Snapshot(const snapdragoncolor::HwConfigOutputParams &output);

// The JSON form of an empty record of `block` (for the names of its fields); null when none.
Json BlankRecordJson(const std::string &block);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RECORDS_RECORD_JSON_H_
