// The host's PCC dimming: the support query, the attenuation request and the scaling of a PCC.
// The stored factor is not applied by any stage, and the pending flag is never consumed: once
// dimming was requested the host keeps being told that an update is wanted.
#include <cerrno>

#include "frame/payload.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

// The eleven coefficients of one PCC row; the three rows make the 33 that dimming scales.
constexpr double PccCoeff::*kPccCoeffFields[] = {
    &PccCoeff::c,  &PccCoeff::r,  &PccCoeff::g,  &PccCoeff::b,  &PccCoeff::rr,  &PccCoeff::gg,
    &PccCoeff::bb, &PccCoeff::rg, &PccCoeff::gb, &PccCoeff::rb, &PccCoeff::rgb,
};

void ScaleRow(PccCoeff &row, double factor) {
    for (double PccCoeff::*field : kPccCoeffFields) {
        row.*field *= factor;
    }
}

}  // namespace

int StcZuvaColor::SetDimmingPcc(const ScPayload &payload) {
    constexpr const char *kFunction = "SetDimmingPcc";
    const auto *factor = CheckedRecord<double>(payload, kFunction);
    if (!factor) {
        return -EINVAL;
    }
    pcc_attenuation_factor_ = *factor;
    STC_LOGD("%s: pcc attenuation factor is targeted to %f\n", kFunction, pcc_attenuation_factor_);
    dimming_pending_ = true;
    return 0;
}

int StcZuvaColor::GetDimmingSupport(ScPayload *payload) {
    bool *supported = CheckedRecord<bool>(*payload, "GetDimmingSupport");
    if (!supported) {
        return -EINVAL;
    }
    *supported = true;
    return 0;
}

int StcZuvaColor::ApplyPccAttenuationFactor(HwConfigOutputParams *output, double factor) {
    constexpr const char *kFunction = "ApplyPccAttenuationFactor";
    HwConfigPayload *entry = FirstBlock(output, kPbPCC);
    PccConfig *pcc = entry ? BlockRecord<PccConfig>(*entry) : nullptr;
    if (!pcc) {
        STC_LOGD("%s: no pcc matrix in output_params\n", kFunction);
        return 0;
    }
    pcc->enabled = true;
    ScaleRow(pcc->red, factor);
    ScaleRow(pcc->green, factor);
    ScaleRow(pcc->blue, factor);
    STC_LOGD("%s: Applied PCC attenuation %f\n", kFunction, factor);
    return 0;
}

}  // namespace snapdragoncolor
