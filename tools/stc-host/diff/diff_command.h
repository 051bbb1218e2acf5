// stc-host diff: compares two dump directories (two units, two builds, two sessions) block by
// block and field by field.
#ifndef STC_TOOLS_STC_HOST_DIFF_DIFF_COMMAND_H_
#define STC_TOOLS_STC_HOST_DIFF_DIFF_COMMAND_H_

#include <string>

namespace stc_host {

struct DiffOptions {
    std::string a, b;
    bool json = false;
};

// Prints the differences; returns 0 when the directories hold the same records, 4 when they
// differ, 3 when one cannot be read.
int RunDiff(const DiffOptions &options);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_DIFF_DIFF_COMMAND_H_
