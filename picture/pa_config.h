#ifndef STC_PICTURE_PA_CONFIG_H_
#define STC_PICTURE_PA_CONFIG_H_

#include <string>

#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

// One-line dump of a picture-adjustment record for the logs.
std::string PaConfigToString(const PaConfig &config);

}  // namespace snapdragoncolor

#endif  // STC_PICTURE_PA_CONFIG_H_
