// The host's reports about its hardware and its own colour transform. Only the transform leaves
// state behind: whether the host currently applies a non-identity matrix.
#include <cerrno>

#include "frame/payload.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

// Validates a capability report and logs its two numbers with `format`.
int ReportHwCaps(const ScPayload &payload, const char *function, const char *format) {
    const auto *caps = CheckedRecord<PostBlendHwCaps>(payload, function);
    if (!caps) {
        return -EINVAL;
    }
    STC_LOGD(format, function, caps->num_of_entries, static_cast<int>(caps->entries_width));
    return 0;
}

// Only the upper-left 3 x 3 part matters: the offsets and the fourth row are not the host's
// colour processing. Single-precision equality, so NaN fails and -0.0 passes.
bool IsIdentity3x3(const float m[16]) {
    constexpr int kDiagonal[] = {0, 5, 10};
    constexpr int kOffDiagonal[] = {1, 2, 4, 6, 8, 9};
    for (int i : kDiagonal) {
        if (!(m[i] == 1.0f)) {
            return false;
        }
    }
    for (int i : kOffDiagonal) {
        if (!(m[i] == 0.0f)) {
            return false;
        }
    }
    return true;
}

}  // namespace

int StcZuvaColor::SetPostBlendGamutConfig(const ScPayload &payload) {
    return ReportHwCaps(
        payload, "SetPostBlendGamutConfig",
        "%s: PostBlend Gamut HW Config: num_of_grid_entires %d, grid_entries_width %d\n");
}

int StcZuvaColor::SetPostBlendGammaConfig(const ScPayload &payload) {
    return ReportHwCaps(payload, "SetPostBlendGammaConfig",
                        "%s: PostBlend Gamma HW Config: num_of_entries %d, entries_width %d\n");
}

int StcZuvaColor::SetPostBlendInvGammaConfig(const ScPayload &payload) {
    return ReportHwCaps(
        payload, "SetPostBlendInvGammaConfig",
        "%s: PostBlend InverseGamma HW Config: num_of_entries %d, entries_width %d\n");
}

int StcZuvaColor::SetHwConfigPayloadParam(const ScPayload &payload) {
    constexpr const char *kFunction = "SetHwConfigPayloadParam";
    const auto *params = CheckedRecord<HwConfigOutputParams>(payload, kFunction);
    if (!params) {
        return -EINVAL;
    }
    STC_LOGD("%s: SetHwConfigPayloadParam payload size = %d\n", kFunction,
             static_cast<int>(params->payload.size()));
    for (const HwConfigPayload &entry : params->payload) {
        STC_LOGD("%s: set hw_asset= %s\n", kFunction, entry.hw_asset.c_str());
    }
    return 0;
}

int StcZuvaColor::GetHwConfigPayloadParamSupprt(ScPayload *payload) {
    bool *supported = SizedRecord<bool>(*payload);
    if (!supported) {
        return -EINVAL;
    }
    *supported = true;
    return 0;
}

int StcZuvaColor::SetColorTransform(const ScPayload &payload) {
    constexpr const char *kFunction = "SetColorTransform";
    const auto *matrix = CheckedRecord<ColorTransformMatrix>(payload, kFunction);
    if (!matrix) {
        return -EINVAL;
    }
    bool transform = !IsIdentity3x3(matrix->m);
    if (transform == clr_trsfm_) {
        return 0;
    }
    clr_trsfm_ = transform;
    const float *m = matrix->m;
    STC_LOGD(
        "%s: SetColorTransform  %1.6f  %1.6f  %1.6f  %1.6f      %1.6f  %1.6f  %1.6f  %1.6f       "
        "%1.6f  %1.6f  %1.6f  %1.6f \n",
        kFunction, double{m[0]}, double{m[1]}, double{m[2]}, double{m[3]}, double{m[4]},
        double{m[5]}, double{m[6]}, double{m[7]}, double{m[8]}, double{m[9]}, double{m[10]},
        double{m[11]});
    return 0;
}

}  // namespace snapdragoncolor
