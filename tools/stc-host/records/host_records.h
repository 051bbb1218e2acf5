// The host's configuration records by block name: which record a block carries, and the records
// of blocks the plug-in only inspects (their layout here is the host simulator's own; the
// plug-in reads only the word at offset 4).
#ifndef STC_TOOLS_STC_HOST_RECORDS_HOST_RECORDS_H_
#define STC_TOOLS_STC_HOST_RECORDS_HOST_RECORDS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace stc_host {

// What record a block carries; kEmpty for blocks whose records only the host reads.
enum class BlockContent { kEmpty, kPcc, kGamut, kGamma, kPa, kDe, kIgc, kDither };

// The record kind of a host block name; nullopt for a name the host does not define.
std::optional<BlockContent> BlockContentOf(const std::string &block);

// Every block name the host defines, in the host header's order.
std::vector<std::string> KnownBlockNames();

// Inverse gamma: a 1D table per channel of 12-bit codes over the input range.
struct HostIgcConfig {
    uint32_t version = sizeof(HostIgcConfig);
    uint32_t num_of_entries = 0;  // the plug-in's diagnostic summary reads this word
    bool enabled = false;
    std::vector<uint32_t> r, g, b;
};

struct HostDitherConfig {
    uint32_t version = sizeof(HostDitherConfig);
    bool enabled = false;  // offset 4, as the plug-in reads it
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_RECORDS_HOST_RECORDS_H_
