#include "enhance/glimra.h"

namespace snapdragoncolor {

bool stcZuvaGlimraInit(std::vector<int> &, std::vector<int> &, const std::string &, bool) {
    return false;
}

}  // namespace snapdragoncolor
