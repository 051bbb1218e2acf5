#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

int StcZuvaColor::ZuvaColorRenderIntentPA(ModeRenderInputParams *, HwConfigOutputParams *) {
    return 0;
}

}  // namespace snapdragoncolor
