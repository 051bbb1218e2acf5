// Texts by which the frame's log lines name property codes and operations.
#ifndef STC_FRAME_NAMES_H_
#define STC_FRAME_NAMES_H_

#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

// The property's enumerator name, or "unsupported" for a code the host does not define.
const char *ScPropertyName(uint32_t prop);

// "kScModeRenderIntent" for 0, "kScOpsMax" for 255, "kScModeSwAssets" for anything else.
const char *ScOpsName(uint32_t op);

}  // namespace snapdragoncolor

#endif  // STC_FRAME_NAMES_H_
