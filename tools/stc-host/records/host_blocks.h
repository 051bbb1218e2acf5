// The host's side of a processing operation: the configuration entries it proposes.
#ifndef STC_TOOLS_STC_HOST_RECORDS_HOST_BLOCKS_H_
#define STC_TOOLS_STC_HOST_RECORDS_HOST_BLOCKS_H_

#include "sc_post_blend_interface.h"
#include "tools/stc-host/session/session.h"

namespace stc_host {

// A configuration entry as the host makes it for `proposal`.
snapdragoncolor::HwConfigPayload MakeEntry(const BlockProposal &proposal);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RECORDS_HOST_BLOCKS_H_
