#include "calibration/calibration_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "platform/device_path.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

namespace {

struct FreeDeleter {
    void operator()(char *p) const { std::free(p); }
};
using FileBuffer = std::unique_ptr<char, FreeDeleter>;

class FileDescriptor {
  public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    int get() const { return fd_; }

  private:
    int fd_;
};

// A size the file system cannot tell counts as an empty file.
size_t FileSize(const std::string &host_path) {
    struct stat st;
    if (stat(host_path.c_str(), &st) != 0 || st.st_size < 0) {
        return 0;
    }
    return static_cast<size_t>(st.st_size);
}

// Hands every line ended by a line feed in data[0, size) to the handler.
CalibrationReadResult SplitLines(const char *data, size_t size, const char *func,
                                 CalibrationLineHandler &handler) {
    std::unique_ptr<char[]> line(new (std::nothrow) char[kCalibrationLineBuffer]);
    if (!line) {
        STC_LOGE("%s: malloc failed for pline\n", func);
        return CalibrationReadResult::kStopped;
    }
    const char *end = data + size;
    const char *pos = data;
    const char *lf = static_cast<const char *>(std::memchr(pos, '\n', size));
    if (!lf) {
        STC_LOGW("%s: found no line\n", func);
        return CalibrationReadResult::kStopped;
    }
    while (lf) {
        size_t len = static_cast<size_t>(lf - pos);
        if (len > kCalibrationLineMax) {
            STC_LOGW("%s: too large line %d\n", func, handler.TooLargeLineValue());
            return CalibrationReadResult::kStopped;
        }
        std::memset(line.get(), 0, kCalibrationLineBuffer);
        std::memcpy(line.get(), pos, len);
        handler.OnLine(line.get());
        pos = lf + 1;
        if (pos >= end) {
            break;
        }
        lf = static_cast<const char *>(std::memchr(pos, '\n', static_cast<size_t>(end - pos)));
    }
    return CalibrationReadResult::kAllLines;
}

}  // namespace

CalibrationReadResult ReadCalibrationFile(const char *path, const char *func,
                                          CalibrationLineHandler &handler) {
    const char *shown = PathForLog(path);
    const std::string host_path = path ? DevicePath(path) : std::string();
    const size_t size = FileSize(host_path);
    handler.LogSize(shown, static_cast<int>(size));

    FileDescriptor fd(path ? open(host_path.c_str(), O_RDONLY | O_CLOEXEC) : -1);
    if (fd.get() < 0) {
        STC_LOGW("%s: Failed to open file: %s\n", func, shown);
        return CalibrationReadResult::kUnreadable;
    }
    // One spare zero byte past the data, so that nothing can run off its end.
    FileBuffer data(static_cast<char *>(std::calloc(size + 1, 1)));
    if (!data) {
        STC_LOGE("%s: Failed to allocate memory for file: %s\n", func, shown);
        return CalibrationReadResult::kUnreadable;
    }
    ssize_t got = read(fd.get(), data.get(), size);
    if (got < 0 || static_cast<size_t>(got) < size) {
        STC_LOGE("%s: file: %s. Data read size %d not same as requested %d\n", func, shown,
                 static_cast<int>(got), static_cast<int>(size));
        return CalibrationReadResult::kUnreadable;
    }
    handler.LogReadSize(static_cast<int>(got));
    return SplitLines(data.get(), size, func, handler);
}

}  // namespace snapdragoncolor
