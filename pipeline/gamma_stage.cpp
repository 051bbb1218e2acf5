// Gamma stage: switches on every "PostBlendGC" payload, keeping the host's curves and dither.
#include <memory>
#include <vector>

#include "frame/payload.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "ZuvaColorRenderIntentGamma";

// An empty curve has no first entry; the log shows 0 for it.
uint32_t FirstOf(const std::vector<uint32_t> &curve) {
    return curve.empty() ? 0 : curve.front();
}

int SizeOf(const std::vector<uint32_t> &curve) {
    return static_cast<int>(curve.size());
}

}  // namespace

int StcZuvaColor::ZuvaColorRenderIntentGamma(ModeRenderInputParams *,
                                             HwConfigOutputParams *output) {
    // Once a record had to be made, every later line of this call reports it.
    bool empty = false;
    for (HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset != kPbGC) {
            continue;
        }
        if (!entry.hw_payload) {
            STC_LOGD("%s: empty_payload %d\n", kFunc, 1);
        }
        auto &gc = EnsureBlockRecord<GammaPostBlendConfig>(entry, empty);
        STC_LOGD(
            "%s: ##empty_payload: %d, cfg enabled: %d, dither_en:%d, dither_strength=%d  "
            "[RSize=%d GSize=%d BSize=%d] r0=0x%8x g0=0x%8x b0=0x%8x\n",
            kFunc, empty, gc.enabled, gc.dither_en, gc.dither_strength, SizeOf(gc.r), SizeOf(gc.g),
            SizeOf(gc.b), FirstOf(gc.r), FirstOf(gc.g), FirstOf(gc.b));
        gc.enabled = true;
        STC_LOGD(
            "%s: ==override_payload: cfg enabled: %d, dither_en:%d, dither_strength=%d  "
            "[RSize=%d GSize=%d BSize=%d] r0=0x%8x g0=0x%8x b0=0x%8x\n",
            kFunc, 1, gc.dither_en, gc.dither_strength, SizeOf(gc.r), SizeOf(gc.g), SizeOf(gc.b),
            FirstOf(gc.r), FirstOf(gc.g), FirstOf(gc.b));
    }
    return 0;
}

}  // namespace snapdragoncolor
