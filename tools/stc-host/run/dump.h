// The dump directory: after every processing operation, each block record that the operation
// added or changed, complete, in DIR/<call index>-<block name>.json.
#ifndef STC_TOOLS_STC_HOST_RUN_DUMP_H_
#define STC_TOOLS_STC_HOST_RUN_DUMP_H_

#include <string>
#include <vector>

#include "tools/stc-host/records/record_diff.h"

namespace stc_host {

// Writes the records of the entries that changed; false with a reason when a file cannot be
// written. Each file holds {"call": N, "block": NAME, "entries": [{"index", "state", "record"}]}.
bool WriteDump(const std::string &dir, size_t call, const std::vector<EntryChange> &changes,
               std::string *error);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_DUMP_H_
