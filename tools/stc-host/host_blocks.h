// The host's side of a processing operation: building the proposed configuration list, and
// describing what the plug-in made of it.
#ifndef STC_TOOLS_STC_HOST_HOST_BLOCKS_H_
#define STC_TOOLS_STC_HOST_HOST_BLOCKS_H_

#include <string>
#include <utility>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/stc-host/session.h"

namespace stc_host {

// A configuration entry as the host makes it for `proposal`.
snapdragoncolor::HwConfigPayload MakeEntry(const BlockProposal &proposal);

// The readable fields of one entry, in display order; an empty list for an empty payload.
using Fields = std::vector<std::pair<std::string, std::string>>;

struct EntryView {
    std::string block;
    Fields fields;
};

std::vector<EntryView> Describe(const snapdragoncolor::HwConfigOutputParams &output);

// How one entry of the list compares with the host's proposal.
struct EntryChange {
    size_t index;
    std::string block;
    std::string state;  // "unchanged", "changed", "created", "appended"
    Fields before;      // changed fields only (all fields for "created"/"appended" are in after)
    Fields after;
};

std::vector<EntryChange> Compare(const std::vector<EntryView> &proposal,
                                 const std::vector<EntryView> &result);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_HOST_BLOCKS_H_
