#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

bool StcZuvaColor::isQcCalibrtPresent(const std::string &) {
    return false;
}

bool StcZuvaColor::useIncomingPanelName(const std::string &) {
    return use_incoming_panel_name_;
}

void StcZuvaColor::loadCalibratedParam(const std::string &) {}

}  // namespace snapdragoncolor
