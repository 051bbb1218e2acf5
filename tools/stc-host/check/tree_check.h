// A device tree: the plug-in itself, loaded as the host loads it, initialised for every panel the
// tree names, tells through its log which files it reads; those files are then checked.
#ifndef STC_TOOLS_STC_HOST_CHECK_TREE_CHECK_H_
#define STC_TOOLS_STC_HOST_CHECK_TREE_CHECK_H_

#include <string>

#include "tools/stc-host/check/check.h"

namespace stc_host {

// Findings name files by their path inside `root` as given. Returns 0, or kExitEnvironmentError
// (with the reason on stderr) when the plug-in cannot be loaded or initialised.
int CheckTree(const std::string &root, const CheckOptions &options, Findings &findings);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_TREE_CHECK_H_
