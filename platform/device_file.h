// Opening the plug-in's device files. Every file the plug-in reads must be a regular file: a FIFO
// in place of a calibration file would stall Init forever while it holds the display's lock, and
// a device node could feed it without end, so both count as files that cannot be opened.
#ifndef STC_PLATFORM_DEVICE_FILE_H_
#define STC_PLATFORM_DEVICE_FILE_H_

#include <string>

namespace snapdragoncolor {

// A read-only, close-on-exec descriptor of the regular file at `device_path`, opened without
// blocking; -1 when there is none.
int OpenDeviceFile(const std::string &device_path);

// Whether `device_path` names a regular file.
bool IsRegularDeviceFile(const std::string &device_path);

// Owns a descriptor and closes it.
class ScopedFd {
  public:
    explicit ScopedFd(int fd) : fd_(fd) {}
    ~ScopedFd();
    ScopedFd(const ScopedFd &) = delete;
    ScopedFd &operator=(const ScopedFd &) = delete;
    int get() const { return fd_; }
    // Hands the descriptor over; this object no longer closes it.
    int release();

  private:
    int fd_;
};

}  // namespace snapdragoncolor

#endif  // STC_PLATFORM_DEVICE_FILE_H_
