#include "platform/device_path.h"

#include <cstdlib>

namespace snapdragoncolor {

std::string DevicePath(const char *device_path) {
    std::string path = device_path ? device_path : "";
#ifndef __ANDROID__
    const char *root = std::getenv(kDeviceRootVariable);
    if (root && *root && !path.empty() && path[0] == '/') {
        return std::string(root) + path;
    }
#endif
    return path;
}

}  // namespace snapdragoncolor
