#include <algorithm>

#include "enhance/glimra.h"
#include "frame/payload.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kGlimraApply = "ApplyZuvaGlimra";

// Writes the curve, as unsigned codes, into one channel of `length` entries.
void FillChannel(std::vector<uint32_t> &channel, const std::vector<int> &curve, size_t length) {
    channel.resize(length);
    std::transform(curve.begin(), curve.begin() + static_cast<std::ptrdiff_t>(length),
                   channel.begin(), [](int code) { return static_cast<uint32_t>(code); });
}

}  // namespace

int ApplyZuvaGlimra(ModeRenderInputParams *, HwConfigOutputParams *output, std::vector<int> &curve,
                    bool isLinearGamma) {
    HwConfigPayload *entry = FirstBlock(output, kPbGC);
    if (!entry) {
        STC_LOGD("%s: zgl: no gc matrix in output_params\n", kGlimraApply);
        return 0;
    }
    STC_LOGD("%s: zgl: find kPbGC\n", kGlimraApply);
    auto *gamma = BlockRecord<GammaPostBlendConfig>(*entry);
    if (!gamma) {
        return 0;
    }
    const size_t length = isLinearGamma ? kLinearCurveLength : kNonLinearCurveLength;
    // A curve Init never built (a panel it refused, say) must not reach the hardware: the block
    // stays as the host proposed it and the enhancement stays off.
    if (curve.size() < length) {
        STC_LOGW("%s: zgl: curve holds %zu entries, gamma block needs %zu, left as proposed\n",
                 kGlimraApply, curve.size(), length);
        return 0;
    }
    FillChannel(gamma->r, curve, length);
    FillChannel(gamma->g, curve, length);
    FillChannel(gamma->b, curve, length);
    gamma->enabled = true;
    return 0;
}

}  // namespace snapdragoncolor
