#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

bool StcZuvaColor::read3DlutFromFile(char *, lut3d_info *) {
    return false;
}

}  // namespace snapdragoncolor
