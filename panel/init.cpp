#include <cerrno>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

// Placeholder until panel classification lands: remember the panel and serve it.
int StcZuvaColor::Init(const std::string &panel_name) {
    std::lock_guard<std::mutex> lock(mutex_);
    panel_name_ = panel_name;
    init_done_ = true;
    return 0;
}

}  // namespace snapdragoncolor
