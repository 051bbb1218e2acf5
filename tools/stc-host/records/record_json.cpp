#include "tools/stc-host/records/record_json.h"

#include <cstdlib>
#include <memory>

#include <fmt/format.h>

#include "tools/stc-host/records/host_records.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

Json CoeffJson(const PccCoeff &row) {
    return {{"c", row.c},   {"r", row.r},   {"g", row.g},    {"b", row.b},
            {"rr", row.rr}, {"gg", row.gg}, {"bb", row.bb},  {"rg", row.rg},
            {"gb", row.gb}, {"rb", row.rb}, {"rgb", row.rgb}};
}

Json PccJson(const PccConfig &pcc) {
    return {{"version", pcc.version},
            {"enabled", static_cast<int>(pcc.enabled)},
            {"red", CoeffJson(pcc.red)},
            {"green", CoeffJson(pcc.green)},
            {"blue", CoeffJson(pcc.blue)}};
}

Json GamutJson(const GamutConfig &lut) {
    Json entries = Json::array();
    for (const GamutLutEntry &e : lut.entries) {
        entries.push_back({e.in_r, e.in_g, e.in_b, e.out_r, e.out_g, e.out_b});
    }
    return {{"version", lut.version}, {"enabled", static_cast<int>(lut.enabled)},
            {"flags", lut.flags},     {"lut3d_id", lut.lut3d_id},
            {"uniform", lut.uniform}, {"num", lut.num},
            {"entries", entries}};
}

Json GammaJson(const GammaPostBlendConfig &gamma) {
    return {{"version", gamma.version},
            {"enabled", static_cast<int>(gamma.enabled)},
            {"r", gamma.r},
            {"g", gamma.g},
            {"b", gamma.b},
            {"dither_en", static_cast<int>(gamma.dither_en)},
            {"dither_strength", gamma.dither_strength}};
}

Json GlobalJson(const PaGlobalAdj &global) {
    return {{"flags", global.flags},
            {"hue", global.hue},
            {"saturation", FloatJson(global.saturation)},
            {"value", FloatJson(global.value)},
            {"contrast", FloatJson(global.contrast)}};
}

Json MemColorJson(const PaMemColor &color) {
    return {{"type", color.type},
            {"flag", color.flag},
            {"hue", color.hue},
            {"saturation", FloatJson(color.saturation)},
            {"value", FloatJson(color.value)}};
}

Json PaJson(const PaConfig &pa) {
    return {{"version", pa.version},
            {"enabled", static_cast<int>(pa.enabled)},
            {"enable_flags", pa.enable_flags},
            {"global", GlobalJson(pa.global)},
            {"skin", MemColorJson(pa.skin)},
            {"sky", MemColorJson(pa.sky)},
            {"foliage", MemColorJson(pa.foliage)}};
}

Json DeJson(const DETuningConfig &de) {
    return {{"version", de.version},
            {"enabled", static_cast<int>(de.enabled)},
            {"flags", de.flags},
            {"sharp_factor", de.sharp_factor},
            {"thr_quiet", de.thr_quiet},
            {"thr_dieout", de.thr_dieout},
            {"thr_low", de.thr_low},
            {"thr_high", de.thr_high},
            {"clip", de.clip},
            {"quality", de.quality},
            {"content_type", de.content_type},
            {"de_blend", de.de_blend},
            {"de_lpf_h", de.de_lpf_h},
            {"de_lpf_m", de.de_lpf_m},
            {"de_lpf_l", de.de_lpf_l}};
}

Json IgcJson(const HostIgcConfig &igc) {
    return {{"version", igc.version},
            {"num_of_entries", igc.num_of_entries},
            {"enabled", static_cast<int>(igc.enabled)},
            {"r", igc.r},
            {"g", igc.g},
            {"b", igc.b}};
}

Json DitherJson(const HostDitherConfig &dither) {
    return {{"version", dither.version}, {"enabled", static_cast<int>(dither.enabled)}};
}

}  // namespace

Json FloatJson(float value) {
    return std::strtod(fmt::format("{}", value).c_str(), nullptr);
}

Json RecordJson(const std::string &block, const void *record) {
    if (!record) {
        return nullptr;
    }
    switch (BlockContentOf(block).value_or(BlockContent::kEmpty)) {
        case BlockContent::kPcc:
            return PccJson(*static_cast<const PccConfig *>(record));
        case BlockContent::kGamut:
            return GamutJson(*static_cast<const GamutConfig *>(record));
        case BlockContent::kGamma:
            return GammaJson(*static_cast<const GammaPostBlendConfig *>(record));
        case BlockContent::kPa:
            return PaJson(*static_cast<const PaConfig *>(record));
        case BlockContent::kDe:
            return DeJson(*static_cast<const DETuningConfig *>(record));
        case BlockContent::kIgc:
            return IgcJson(*static_cast<const HostIgcConfig *>(record));
        case BlockContent::kDither:
            return DitherJson(*static_cast<const HostDitherConfig *>(record));
        case BlockContent::kEmpty:
            break;
    }
    return nullptr;
}

Json BlankRecordJson(const std::string &block) {
    switch (BlockContentOf(block).value_or(BlockContent::kEmpty)) {
        case BlockContent::kPcc:
            return PccJson(PccConfig());
        case BlockContent::kGamut:
            return GamutJson(*std::make_unique<GamutConfig>());
        case BlockContent::kGamma:
            return GammaJson(GammaPostBlendConfig());
        case BlockContent::kPa:
            return PaJson(*std::make_unique<PaConfig>());
        case BlockContent::kDe:
            return DeJson(DETuningConfig());
        case BlockContent::kIgc:
            return IgcJson(HostIgcConfig());
        case BlockContent::kDither:
            return DitherJson(HostDitherConfig());
        case BlockContent::kEmpty:
            break;
    }
    return nullptr;
}

std::vector<EntrySnapshot> Snapshot(const HwConfigOutputParams &output) {
    std::vector<EntrySnapshot> snapshot;
    for (const HwConfigPayload &entry : output.payload) {
        snapshot.push_back({entry.hw_asset, RecordJson(entry.hw_asset, entry.hw_payload.get())});
    }
    return snapshot;
}

}  // namespace stc_host
