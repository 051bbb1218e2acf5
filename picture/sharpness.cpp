// The sw-assets operation: overrides the detail-enhancement strength with the recorded sharpness
// level when the colour property asked for it.
#include <cstdint>
#include <memory>

#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kActiveDeFormat =
    "%s: active_de DETuningConfig version:%d,enabled:%d flags:%d, sharp_factor:%d, "
    "thr_quiet:%d, thr_dieout:%d thr_low:%d, thr_high:%d, clip:%d, quality:%d, content_type:%d, "
    "de_blend:%d  de_lpf_l:%d, de_lpf_m:%d, de_lpf_h:%d\n";
constexpr const char *kOverrideDeFormat =
    "%s: overrd_de DETuningConfig version:%d,enabled:%d flags:%d, sharp_factor:%d, "
    "thr_quiet:%d, thr_dieout:%d thr_low:%d, thr_high:%d, clip:%d, quality:%d, content_type:%d, "
    "de_blend:%d  de_lpf_l:%d, de_lpf_m:%d, de_lpf_h:%d\n";

// Both DE lines print the same fields in the same order; only their label differs.
void LogDeConfig(const char *format, const DETuningConfig &de) {
    STC_LOGD(format, "ZuvaColorSwAssetsSharpness", static_cast<int>(de.version), de.enabled,
             static_cast<int>(de.flags), static_cast<int>(de.sharp_factor), de.thr_quiet,
             de.thr_dieout, de.thr_low, de.thr_high, de.clip, static_cast<int>(de.quality),
             static_cast<int>(de.content_type), static_cast<int>(de.de_blend),
             static_cast<int>(de.de_lpf_l), static_cast<int>(de.de_lpf_m),
             static_cast<int>(de.de_lpf_h));
}

}  // namespace

int StcZuvaColor::ProcessModeSwAssets(const ScPayload &input, ScPayload *output) {
    if (!de_update_pending_) {
        return 0;
    }
    auto *params = output ? RecordAt<HwConfigOutputParams>(*output) : nullptr;
    if (!params) {
        // The flag stays raised so that the next operation retries.
        STC_LOGE("%s: ProcessModeSwAssets: output is null\n", "ProcessModeSwAssets");
        return 0;
    }
    if (curr_scene_id_ & kSceneSharpness) {
        ZuvaColorSwAssetsSharpness(RecordAt<ModeRenderInputParams>(input), params);
    }
    de_update_pending_ = false;
    return 0;
}

int StcZuvaColor::ZuvaColorSwAssetsSharpness(ModeRenderInputParams *,
                                             HwConfigOutputParams *output) {
    if (!output) {
        return 0;
    }
    for (const HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset == kPbDE && entry.hw_payload) {
            LogDeConfig(kActiveDeFormat, *BlockRecord<DETuningConfig>(entry));
        }
    }
    for (HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset != kPbDE) {
            continue;
        }
        bool made = false;
        DETuningConfig &de = EnsureBlockRecord<DETuningConfig>(entry, made);
        if (curr_scene_id_ & kSceneSharpness) {
            de.sharp_factor = static_cast<uint32_t>(pq_levels_.sharpness);
            LogDeConfig(kOverrideDeFormat, de);
        }
    }
    return 0;
}

}  // namespace snapdragoncolor
