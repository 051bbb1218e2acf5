#include "enhance/glimra.h"

namespace snapdragoncolor {

int ApplyZuvaGlimra(ModeRenderInputParams *, HwConfigOutputParams *, std::vector<int> &, bool) {
    return 0;
}

}  // namespace snapdragoncolor
