// PA stage: writes the user's picture-adjustment levels into every "PostBlendPa" payload.
#include <memory>

#include "frame/payload.h"
#include "picture/pa_config.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "ZuvaColorRenderIntentPA";

}  // namespace

int StcZuvaColor::ZuvaColorRenderIntentPA(ModeRenderInputParams *, HwConfigOutputParams *output) {
    // Once a record had to be made, every later line of this call reports it.
    bool empty = false;
    for (HwConfigPayload &entry : output->payload) {
        if (entry.hw_asset != kPbPa) {
            continue;
        }
        PaConfig &config = EnsureBlockRecord<PaConfig>(entry, empty);
        STC_LOGD("%s: ##empty_payload=%d, %s\n", kFunc, empty, PaConfigToString(config).c_str());
        ComposePaConfig(config);
        STC_LOGD("%s: ==override_payload: %s\n", kFunc, PaConfigToString(config).c_str());
    }
    return 0;
}

}  // namespace snapdragoncolor
