#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::SetZuvaColor(const ScPayload &) {
    return -EINVAL;
}

void StcZuvaColor::ApplyFacCalibration(uint32_t) {}

}  // namespace snapdragoncolor
