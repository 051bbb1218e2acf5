// stc-host's default command: play a session against the plug-in on a device tree.
#ifndef STC_TOOLS_STC_HOST_RUN_RUN_COMMAND_H_
#define STC_TOOLS_STC_HOST_RUN_RUN_COMMAND_H_

#include "tools/stc-host/exit_codes.h"
#include "tools/stc-host/options.h"

namespace stc_host {

// A device directory that can be used, or the reason why not.
bool UsableDeviceDir(const std::string &dir, std::string *error);

int RunSessionCommand(const Options &options);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RUN_RUN_COMMAND_H_
