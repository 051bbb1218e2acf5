#include <cerrno>

#include "stc_zuva_color.h"
#include "picture/pa_config.h"

namespace snapdragoncolor {

void StcZuvaColor::ComposePaConfig(PaConfig &) {}

std::string PaConfigToString(const PaConfig &) {
    return {};
}

}  // namespace snapdragoncolor
