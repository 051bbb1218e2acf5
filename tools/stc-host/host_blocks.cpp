#include "tools/stc-host/host_blocks.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <memory>

namespace stc_host {

namespace {

using namespace snapdragoncolor;

// Host records the plug-in only inspects; the host's own types are not needed beyond offset 4.
struct HostIgcConfig {
    uint32_t version = sizeof(HostIgcConfig);
    uint32_t num_of_entries = 0;
    uint64_t reserved = 0;
};

struct HostDitherConfig {
    uint32_t version = sizeof(HostDitherConfig);
    bool enabled = false;
};

uint32_t GridCode(uint32_t index) {
    return std::min<uint32_t>(index * 256, 4095);
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
    for (uint32_t i = 0; i < length; ++i) {
        uint32_t code = length > 1 ? (i * 1023 + (length - 1) / 2) / (length - 1) : 0;
        gamma->r.push_back(code);
    }
    gamma->g = gamma->r;
    gamma->b = gamma->r;
    return gamma;
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
        case BlockContent::kIgc: {
            auto igc = std::make_shared<HostIgcConfig>();
            igc->num_of_entries = proposal.entries;
            return igc;
        }
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

std::string Format(const char *format, ...) __attribute__((format(printf, 1, 2)));
std::string Format(const char *format, ...) {
    char text[256];
    va_list args;
    va_start(args, format);
    vsnprintf(text, sizeof(text), format, args);
    va_end(args);
    return text;
}

std::string LutEntry(const GamutLutEntry &e) {
    return Format("[%u %u %u -> %u %u %u]", e.in_r, e.in_g, e.in_b, e.out_r, e.out_g, e.out_b);
}

Fields DescribePcc(const PccConfig &pcc) {
    return {
        {"enabled", std::to_string(pcc.enabled)},
        {"diag", Format("[%f %f %f]", pcc.red.r, pcc.green.g, pcc.blue.b)},
        {"offdiag", Format("[%f %f %f %f %f %f]", pcc.red.g, pcc.red.b, pcc.green.r, pcc.green.b,
                           pcc.blue.r, pcc.blue.g)},
        {"const", Format("[%f %f %f]", pcc.red.c, pcc.green.c, pcc.blue.c)},
    };
}

Fields DescribeGamut(const GamutConfig &lut) {
    uint32_t last = lut.num >= 1 && lut.num <= kGamutEntries ? lut.num - 1 : kGamutEntries - 1;
    return {
        {"enabled", std::to_string(lut.enabled)},
        {"header", Format("flags=0x%x lut3d_id=%u uniform=%u num=%u", lut.flags, lut.lut3d_id,
                          lut.uniform, lut.num)},
        {"first", LutEntry(lut.entries[0])},
        {"last", LutEntry(lut.entries[last])},
    };
}

std::string CurveSamples(const std::vector<uint32_t> &curve) {
    if (curve.empty()) {
        return "[]";
    }
    std::string text = "[";
    const size_t points[] = {0, 16, 64, 128, 256, 512, 768, curve.size() - 1};
    size_t previous = SIZE_MAX;
    for (size_t index : points) {
        if (index < curve.size() && index != previous) {
            text += Format("%s%zu:%u", text.size() > 1 ? " " : "", index, curve[index]);
            previous = index;
        }
    }
    return text + "]";
}

Fields DescribeGamma(const GammaPostBlendConfig &gamma) {
    bool same = gamma.g == gamma.r && gamma.b == gamma.r;
    return {
        {"enabled", std::to_string(gamma.enabled)},
        {"length", Format("%zu/%zu/%zu", gamma.r.size(), gamma.g.size(), gamma.b.size())},
        {"curve", CurveSamples(gamma.r) + (same ? "" : " (g and b differ)")},
        {"dither", Format("%d/%u", gamma.dither_en, gamma.dither_strength)},
    };
}

std::string MemColor(const PaMemColor &color) {
    return Format("type=%d h%d s%f v%f", static_cast<int>(color.type), color.hue, color.saturation,
                  color.value);
}

Fields DescribePa(const PaConfig &pa) {
    return {
        {"enabled", std::to_string(pa.enabled)},
        {"enable_flags", Format("0x%x", pa.enable_flags)},
        {"global", Format("h%d s%f v%f c%f", pa.global.hue, pa.global.saturation, pa.global.value,
                          pa.global.contrast)},
        {"skin", MemColor(pa.skin)},
        {"sky", MemColor(pa.sky)},
        {"foliage", MemColor(pa.foliage)},
    };
}

Fields DescribeDe(const DETuningConfig &de) {
    return {
        {"enabled", std::to_string(de.enabled)},
        {"sharp_factor", std::to_string(static_cast<int32_t>(de.sharp_factor))},
    };
}

Fields DescribeRecord(const std::string &block, const void *record) {
    if (!record) {
        return {};
    }
    switch (BlockContentOf(block).value_or(BlockContent::kEmpty)) {
        case BlockContent::kPcc:
            return DescribePcc(*static_cast<const PccConfig *>(record));
        case BlockContent::kGamut:
            return DescribeGamut(*static_cast<const GamutConfig *>(record));
        case BlockContent::kGamma:
            return DescribeGamma(*static_cast<const GammaPostBlendConfig *>(record));
        case BlockContent::kPa:
            return DescribePa(*static_cast<const PaConfig *>(record));
        case BlockContent::kDe:
            return DescribeDe(*static_cast<const DETuningConfig *>(record));
        case BlockContent::kIgc:
            return {{"entries",
                     std::to_string(static_cast<const HostIgcConfig *>(record)->num_of_entries)}};
        case BlockContent::kDither:
            return {{"enabled",
                     std::to_string(static_cast<const HostDitherConfig *>(record)->enabled)}};
        case BlockContent::kEmpty:
            break;
    }
    return {{"record", "host data"}};
}

}  // namespace

HwConfigPayload MakeEntry(const BlockProposal &proposal) {
    HwConfigPayload entry;
    entry.hw_asset = proposal.name;
    entry.hw_payload = MakeRecord(proposal);
    entry.hw_payload_len = entry.hw_payload ? *static_cast<uint32_t *>(entry.hw_payload.get()) : 0;
    return entry;
}

std::vector<EntryView> Describe(const HwConfigOutputParams &output) {
    std::vector<EntryView> views;
    for (const HwConfigPayload &entry : output.payload) {
        views.push_back({entry.hw_asset, DescribeRecord(entry.hw_asset, entry.hw_payload.get())});
    }
    return views;
}

std::vector<EntryChange> Compare(const std::vector<EntryView> &proposal,
                                 const std::vector<EntryView> &result) {
    std::vector<EntryChange> changes;
    for (size_t i = 0; i < result.size(); ++i) {
        EntryChange change{i, result[i].block, "unchanged", {}, {}};
        if (i >= proposal.size()) {
            change.state = "appended";
            change.after = result[i].fields;
        } else if (proposal[i].fields.empty() && !result[i].fields.empty()) {
            change.state = "created";
            change.after = result[i].fields;
        } else {
            std::map<std::string, std::string> old(proposal[i].fields.begin(),
                                                   proposal[i].fields.end());
            for (const auto &[name, value] : result[i].fields) {
                if (old[name] != value) {
                    change.before.emplace_back(name, old[name]);
                    change.after.emplace_back(name, value);
                }
            }
            if (!change.after.empty()) {
                change.state = "changed";
            }
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

}  // namespace stc_host
