// PCC stage: puts the panel's factory-calibrated PCC into the host's "PostBlendPCC" payloads.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "ZuvaColorRenderIntentPCC";

// The coefficient body runs from the host word at offset 8 to the end of the record; the
// calibrated copy carries the host word along with the three rows.
constexpr size_t kPccBodyOffset = offsetof(PccConfig, host_word);
constexpr size_t kPccBodySize = sizeof(PccConfig) - kPccBodyOffset;
static_assert(kPccBodyOffset == 8 && kPccBodySize == 272, "PCC coefficient body layout");

// Intents whose colour mode is the panel's native one; only these take the calibrated PCC outside
// a factory calibration run.
bool IsNativeIntent(uint32_t intent) {
    return intent == 0 || intent == 256 || intent == 300;
}

// Switches `to` on and gives it the calibrated coefficients (the host word at offset 8 too).
void ApplyCalibratedPcc(const PccConfig &calibrated, PccConfig *to) {
    to->enabled = true;
    std::memcpy(reinterpret_cast<uint8_t *>(to) + kPccBodyOffset,
                reinterpret_cast<const uint8_t *>(&calibrated) + kPccBodyOffset, kPccBodySize);
}

}  // namespace

int StcZuvaColor::ZuvaColorRenderIntentPCC(ModeRenderInputParams *input,
                                           HwConfigOutputParams *output) {
    if (!is_primary_ || clr_trsfm_ || !en_calibrated_pcc_) {
        return 0;
    }
    if (input && !IsNativeIntent(input->color_mode.intent) && cali_gamut_ == kGamutNone) {
        STC_LOGD("%s: ZuvaColorRenderIntentPCC: not native mode. gmt (%d %d), intent (%d %d)\n",
                 kFunc, input->color_mode.gamut, active_color_mode_.gamut, input->color_mode.intent,
                 active_color_mode_.intent);
        return 0;
    }
    STC_LOGD("%s: Active PCC is not preset\n", "GetPccCoeff");

    for (const HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset == kPbPCC && entry.hw_payload &&
            BlockRecord<PccConfig>(entry)->enabled) {
            STC_LOGD("%s: multiply with PCC in active mode\n", kFunc);
        }
    }

    const bool latched = latched_scene_id_ & kSceneColorTemperature;
    const int input_intent = input ? static_cast<int>(input->color_mode.intent) : -1;
    // Once a record had to be made, every later line of this call reports it.
    bool empty = false;
    for (HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset != kPbPCC) {
            continue;
        }
        PccConfig *pcc = &EnsureBlockRecord<PccConfig>(entry, empty);
        if (!latched) {
            pcc->enabled = false;
            continue;
        }
        STC_LOGD("%s: ##Original PCC[%f %f %f], empty=%d , gmt_(%d %d) itt=(%d %d)\n", kFunc,
                 pcc->red.r, pcc->green.g, pcc->blue.b, empty, cali_gamut_,
                 active_color_mode_.gamut, input_intent, active_color_mode_.intent);
        ApplyCalibratedPcc(calibrated_pcc_, pcc);
        STC_LOGD("%s: ==Overwrite PCC[%f %f %f], empty=%d\n", kFunc, pcc->red.r, pcc->green.g,
                 pcc->blue.b, empty);
    }

    if (!latched) {
        return 0;
    }
    auto pcc = std::make_shared<PccConfig>();
    ApplyCalibratedPcc(calibrated_pcc_, pcc.get());
    HwConfigPayload entry;
    entry.hw_asset = kPbPCC;
    entry.hw_payload = pcc;
    entry.hw_payload_len = sizeof(PccConfig);
    output->payload.push_back(entry);
    STC_LOGD("%s: Push new PCC config [%f %f %f] into output payload\n", kFunc, pcc->red.r,
             pcc->green.g, pcc->blue.b);
    return 0;
}

}  // namespace snapdragoncolor
