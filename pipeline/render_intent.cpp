#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::ProcessModeRenderIntent(const ScPayload &, ScPayload *) {
    return -EINVAL;
}

}  // namespace snapdragoncolor
