#include "platform/device_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/device_path.h"

namespace snapdragoncolor {

int OpenDeviceFile(const std::string &device_path) {
    int fd = open(DevicePath(device_path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return -1;
    }
    struct stat status;
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(fd);
        errno = EINVAL;
        return -1;
    }
    return fd;
}

bool IsRegularDeviceFile(const std::string &device_path) {
    ScopedFd fd(OpenDeviceFile(device_path));
    return fd.get() >= 0;
}

ScopedFd::~ScopedFd() {
    if (fd_ >= 0) {
        close(fd_);
    }
}

int ScopedFd::release() {
    int fd = fd_;
    fd_ = -1;
    return fd;
}

}  // namespace snapdragoncolor
