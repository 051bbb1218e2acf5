#include "tools/stc-host/records/host_blocks.h"

#include <algorithm>
#include <memory>

#include "tools/stc-host/records/host_records.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

// The 17 grid codes of a 12-bit host LUT: 0, 256, ..., 3840, 4095.
uint32_t GridCode(uint32_t index) {
    return std::min<uint32_t>(index * 256, 4095);
}

// Codes 0 .. top spread evenly over `length` entries, rounded.
std::vector<uint32_t> IdentityCurve(uint32_t length, uint32_t top) {
    std::vector<uint32_t> curve;
    for (uint32_t i = 0; i < length; ++i) {
        curve.push_back(length > 1 ? (i * top + (length - 1) / 2) / (length - 1) : 0);
    }
    return curve;
}

std::shared_ptr<GamutConfig> IdentityGamut(bool enabled) {
    auto lut = std::make_shared<GamutConfig>();
    lut->enabled = enabled;
    lut->uniform = 1;
    lut->num = kGamutEntries;
    for (uint32_t i = 0; i < kGamutEntries; ++i) {
        uint32_t r = GridCode(i / 289), g = GridCode(i / 17 % 17), b = GridCode(i % 17);
        lut->entries[i] = {r, g, b, r, g, b};
    }
    return lut;
}

std::shared_ptr<GammaPostBlendConfig> IdentityGamma(bool enabled, uint32_t length) {
    auto gamma = std::make_shared<GammaPostBlendConfig>();
    gamma->enabled = enabled;
    gamma->r = IdentityCurve(length, 1023);
    gamma->g = gamma->r;
    gamma->b = gamma->r;
    return gamma;
}

std::shared_ptr<HostIgcConfig> IdentityIgc(bool enabled, uint32_t entries) {
    auto igc = std::make_shared<HostIgcConfig>();
    igc->enabled = enabled;
    igc->num_of_entries = entries;
    igc->r = IdentityCurve(entries, 4095);
    igc->g = igc->r;
    igc->b = igc->r;
    return igc;
}

std::shared_ptr<PccConfig> IdentityPcc(bool enabled, double scale) {
    auto pcc = std::make_shared<PccConfig>();
    pcc->enabled = enabled;
    pcc->red.r = pcc->green.g = pcc->blue.b = scale;
    return pcc;
}

std::shared_ptr<void> MakeRecord(const BlockProposal &proposal) {
    switch (proposal.content) {
        case BlockContent::kPcc:
            return IdentityPcc(proposal.enabled, proposal.pcc_scale);
        case BlockContent::kGamut:
            return IdentityGamut(proposal.enabled);
        case BlockContent::kGamma:
            return IdentityGamma(proposal.enabled, proposal.curve_length);
        case BlockContent::kPa: {
            auto pa = std::make_shared<PaConfig>(proposal.pa);
            pa->enabled = proposal.enabled;
            return pa;
        }
        case BlockContent::kDe: {
            auto de = std::make_shared<DETuningConfig>(proposal.de);
            de->enabled = proposal.enabled;
            return de;
        }
        case BlockContent::kIgc:
            return IdentityIgc(proposal.enabled, proposal.entries);
        case BlockContent::kDither: {
            auto dither = std::make_shared<HostDitherConfig>();
            dither->enabled = proposal.enabled;
            return dither;
        }
        case BlockContent::kEmpty:
            break;
    }
    return nullptr;
}

}  // namespace

HwConfigPayload MakeEntry(const BlockProposal &proposal) {
    HwConfigPayload entry;
    entry.hw_asset = proposal.name;
    entry.hw_payload = MakeRecord(proposal);
    entry.hw_payload_len = entry.hw_payload ? *static_cast<uint32_t *>(entry.hw_payload.get()) : 0;
    return entry;
}

}  // namespace stc_host
