// A plug-in that refuses every interface version, for the host simulator's error handling.
#include "sc_post_blend_interface.h"

extern "C" __attribute__((visibility("default"))) snapdragoncolor::ScPostBlendInterface *
GetScPostBlendInterface(int, int) {
    return nullptr;
}
