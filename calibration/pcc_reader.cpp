#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

bool StcZuvaColor::readPCCFromFile(char *, PccConfig *) {
    return false;
}

}  // namespace snapdragoncolor
