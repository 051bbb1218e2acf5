#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::SetDimmingPcc(const ScPayload &) {
    return -EINVAL;
}

int StcZuvaColor::GetDimmingSupport(ScPayload *) {
    return -EINVAL;
}

int StcZuvaColor::ApplyPccAttenuationFactor(HwConfigOutputParams *, double) {
    return 0;
}

}  // namespace snapdragoncolor
