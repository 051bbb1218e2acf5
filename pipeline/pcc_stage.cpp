#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::ZuvaColorRenderIntentPCC(ModeRenderInputParams *, HwConfigOutputParams *) {
    return 0;
}

}  // namespace snapdragoncolor
