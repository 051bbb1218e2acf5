#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::ProcessModeSwAssets(const ScPayload &, ScPayload *) {
    return -EINVAL;
}

int StcZuvaColor::ZuvaColorSwAssetsSharpness(ModeRenderInputParams *, HwConfigOutputParams *) {
    return 0;
}

}  // namespace snapdragoncolor
