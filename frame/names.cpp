#include "frame/names.h"

namespace snapdragoncolor {

namespace {

struct PropertyName {
    uint32_t code;
    const char *name;
};

constexpr PropertyName kPropertyNames[] = {
    {kInvalid, "kInvalid"},
    {kModeList, "kModeList"},
    {kNeedsUpdate, "kNeedsUpdate"},
    {kModeRenderInputParams, "kModeRenderInputParams"},
    {kHwConfigPayloadParam, "kHwConfigPayloadParam"},
    {kSetColorTransform, "kSetColorTransform"},
    {kPostBlendGamutHwConfig, "kPostBlendGamutHwConfig"},
    {kPostBlendGammaHwConfig, "kPostBlendGammaHwConfig"},
    {kPostBlendInverseGammaHwConfig, "kPostBlendInverseGammaHwConfig"},
    {kSupportToneMap, "kSupportToneMap"},
    {kGetNumRenderIntents, "kGetNumRenderIntents"},
    {kGetRenderIntents, "kGetRenderIntents"},
    {kNotifyDisplayCalibrationMode, "kNotifyDisplayCalibrationMode"},
    {kSetLtmPccConfig, "kSetLtmPccConfig"},
    {kGetGlobalDitherHwConfig, "kGetGlobalDitherHwConfig"},
    {kDisplayIntf, "kDisplayIntf"},
    {kPropertyMax, "kPropertyMax"},
    {kCustomPropertyStart, "kCustomPropertyStart"},
    {kPrivateDimmingSupport, "kPrivateDimmingSupport"},
    {kPrivateSetDimmingPcc, "kPrivateSetDimmingPcc"},
    {kZuvaColorSupport, "kZuvaColorSupport"},
    {kSetZuvaColor, "kSetZuvaColor"},
    {kGetZuvaColor, "kGetZuvaColor"},
    {kCustomPropertyEnd, "kCustomPropertyEnd"},
};

}  // namespace

const char *ScPropertyName(uint32_t prop) {
    for (const PropertyName &entry : kPropertyNames) {
        if (entry.code == prop) {
            return entry.name;
        }
    }
    return "unsupported";
}

const char *ScOpsName(uint32_t op) {
    switch (op) {
        case kScModeRenderIntent:
            return "kScModeRenderIntent";
        case kScOpsMax:
            return "kScOpsMax";
        default:
            return "kScModeSwAssets";
    }
}

}  // namespace snapdragoncolor
