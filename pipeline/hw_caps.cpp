#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::SetPostBlendGamutConfig(const ScPayload &) {
    return -EINVAL;
}

int StcZuvaColor::SetPostBlendGammaConfig(const ScPayload &) {
    return -EINVAL;
}

int StcZuvaColor::SetPostBlendInvGammaConfig(const ScPayload &) {
    return -EINVAL;
}

int StcZuvaColor::SetHwConfigPayloadParam(const ScPayload &) {
    return -EINVAL;
}

int StcZuvaColor::GetHwConfigPayloadParamSupprt(ScPayload *) {
    return -EINVAL;
}

int StcZuvaColor::SetColorTransform(const ScPayload &) {
    return -EINVAL;
}

}  // namespace snapdragoncolor
