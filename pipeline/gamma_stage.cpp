#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::ZuvaColorRenderIntentGamma(ModeRenderInputParams *, HwConfigOutputParams *) {
    return 0;
}

}  // namespace snapdragoncolor
