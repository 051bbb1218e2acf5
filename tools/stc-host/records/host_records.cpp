#include "tools/stc-host/records/host_records.h"

#include <cstddef>

#include "sc_post_blend_interface.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

static_assert(offsetof(HostIgcConfig, num_of_entries) == 4, "the plug-in reads offset 4");
static_assert(offsetof(HostDitherConfig, enabled) == 4, "the plug-in reads offset 4");

struct KnownBlock {
    const std::string *name;
    BlockContent content;
};

const KnownBlock kKnownBlocks[] = {
    {&kPbGamut, BlockContent::kGamut},    {&kPbIGC, BlockContent::kIgc},
    {&kPbGC, BlockContent::kGamma},       {&kPbCWBDither, BlockContent::kEmpty},
    {&kPbHdrBlob, BlockContent::kEmpty},  {&kHwCapIgcDither, BlockContent::kEmpty},
    {&kPbPCC, BlockContent::kPcc},        {&kPbPa, BlockContent::kPa},
    {&kPbDither, BlockContent::kDither},  {&kPbPaDither, BlockContent::kEmpty},
    {&kPbMixerGc, BlockContent::kEmpty},  {&kPbDE, BlockContent::kDe},
    {&kPbGameBlob, BlockContent::kEmpty},
};

}  // namespace

std::optional<BlockContent> BlockContentOf(const std::string &block) {
    for (const KnownBlock &known : kKnownBlocks) {
        if (*known.name == block) {
            return known.content;
        }
    }
    return std::nullopt;
}

std::vector<std::string> KnownBlockNames() {
    std::vector<std::string> names;
    for (const KnownBlock &known : kKnownBlocks) {
        names.push_back(*known.name);
    }
    return names;
}

}  // namespace stc_host
