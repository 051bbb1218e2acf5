// Calibration stage: puts the calibrated 3D LUT into the host's "PostBlendGamut" payloads.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "ZuvaColorRenderIntentCalibration";
constexpr uint32_t kIntentCalibratedLut = 1;
constexpr size_t kSummaryChars = 127;

struct EntrySummary {
    char text[kSummaryChars + 1];
};

// First and last entry in use, for the log. A `num` beyond the table is read as the table's end.
EntrySummary SummarizeEntries(const GamutConfig &config) {
    EntrySummary summary;
    if (config.num < 3) {
        std::snprintf(summary.text, sizeof(summary.text), ":0");
        return summary;
    }
    const GamutLutEntry &first = config.entries[0];
    const GamutLutEntry &last = config.entries[std::min(config.num, kGamutEntries) - 1];
    std::snprintf(summary.text, sizeof(summary.text),
                  "1st[%d %d %d -> %d %d %d]Lst[%d %d %d -> %d %d %d]", first.in_r, first.in_g,
                  first.in_b, first.out_r, first.out_g, first.out_b, last.in_r, last.in_g,
                  last.in_b, last.out_r, last.out_g, last.out_b);
    return summary;
}

// The calibrated table replaces everything from `flags` to the end of the entries.
void CopyLut(const lut3d_info &lut, GamutConfig *config) {
    std::memcpy(reinterpret_cast<uint8_t *>(config) + offsetof(GamutConfig, flags), &lut,
                sizeof(lut));
}

}  // namespace

int StcZuvaColor::ZuvaColorRenderIntentCalibration(ModeRenderInputParams *input,
                                                   HwConfigOutputParams *output) {
    if (!is_primary_ || !en_calibrated_3dlut_) {
        return 0;
    }
    if (input && input->color_mode.intent != kIntentCalibratedLut && cali_gamut_ == kGamutNone) {
        return 0;
    }
    const int input_intent = input ? static_cast<int>(input->color_mode.intent) : -1;
    const uint32_t active_gamut = active_color_mode_.gamut;
    const bool applies = cali_gamut_ == kGamutSrgb || cali_gamut_ == kGamutP3 ||
                         (cali_gamut_ == kGamutNone && active_gamut != kGamutNone);
    // The table this call copies, when the calibrated content is latched; P3 wins when both
    // gamuts are named, so the sRGB table is never copied only to be overwritten.
    const auto names = [&](uint32_t gamut) {
        return cali_gamut_ == gamut || active_gamut == gamut;
    };
    const lut3d_info *table = nullptr;
    if (latched_scene_id_ & kSceneFacCalibration) {
        table = names(kGamutP3)     ? &calibrated_lut3d_p3_
                : names(kGamutSrgb) ? &calibrated_lut3d_srgb_
                                    : nullptr;
    }

    // Once a record had to be made, every later line of this call reports it.
    bool empty = false;
    for (HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset != kPbGamut) {
            continue;
        }
        if (!entry.hw_payload) {
            STC_LOGD("%s: empty_payload %d\n", kFunc, 1);
        }
        auto *config = &EnsureBlockRecord<GamutConfig>(entry, empty);
        STC_LOGD(
            "%s: ##empty: %d, cfgEn=%d, gamut_cfg(3dlut) [flg=0x%x lut3d_id=%d uniform=%d num=%d] "
            "entry: %s, gamut_(%d %d) intent=(%d %d)\n",
            kFunc, empty, config->enabled, config->flags, config->lut3d_id, config->uniform,
            config->num, SummarizeEntries(*config).text, cali_gamut_, active_gamut, input_intent,
            active_color_mode_.intent);

        config->enabled = applies;
        if (applies && table) {
            CopyLut(*table, config);
        }

        STC_LOGD(
            "%s: ==empty: %d, cfgEn=%d, gamut_cfg(3dlut) [flg=0x%x lut3d_id=%d uniform=%d num%d] "
            "entry: %s\n",
            kFunc, empty, config->enabled, config->flags, config->lut3d_id, config->uniform,
            config->num, SummarizeEntries(*config).text);
    }
    return 0;
}

}  // namespace snapdragoncolor
