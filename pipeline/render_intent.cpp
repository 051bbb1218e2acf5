// The render-intent operation: decides which stages amend the host's hardware configuration.
#include <cstdint>

#include "enhance/glimra.h"
#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "ProcessModeRenderIntent";

}  // namespace

int StcZuvaColor::ProcessModeRenderIntent(const ScPayload &in, ScPayload *out) {
    auto *input = RecordAt<ModeRenderInputParams>(in);
    auto *output = out ? RecordAt<HwConfigOutputParams>(*out) : nullptr;

    if (!pq_update_pending_ && !input) {
        STC_LOGW("%s: ProcessModeRenderIntent: input is null\n", kFunc);
    }
    if (!output) {
        // An update pass without an output keeps its request pending for the next operation.
        STC_LOGE("%s: ProcessModeRenderIntent: output is null\n", kFunc);
        return 0;
    }

    if (!pq_update_pending_) {
        if (en_calibrated_3dlut_) {
            ZuvaColorRenderIntentCalibration(input, output);
        }
        if (en_calibrated_pcc_) {
            ZuvaColorRenderIntentPCC(input, output);
        }
        return 0;
    }

    if (curr_scene_id_ & kScenePaStageMask) {
        ZuvaColorRenderIntentPA(input, output);
    }
    if (curr_scene_id_ & kSceneGammaStageMask) {
        ZuvaColorRenderIntentGamma(input, output);
    }
    if (en_calibrated_pcc_ || (curr_scene_id_ & kSceneColorTemperature)) {
        ZuvaColorRenderIntentPCC(input, output);
    }
    if (en_calibrated_3dlut_ || (curr_scene_id_ & kSceneFacCalibration)) {
        ZuvaColorRenderIntentCalibration(input, output);
    }
    if (!glimra_disabled_ && (curr_scene_id_ & kSceneZuvaGlimra)) {
        ApplyZuvaGlimra(input, output, glimra_enabled_ ? glimra_boost_curve_ : glimra_base_curve_,
                        is_linear_gamma_);
    }
    pq_update_pending_ = false;
    return 0;
}

}  // namespace snapdragoncolor
