#include "calibration/calibration_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "platform/device_file.h"
#include "platform/device_path.h"

namespace snapdragoncolor {

namespace {

// Memory stays bounded whatever the file's size: it passes through this buffer.
constexpr size_t kReadChunk = 64 * 1024;
// The most one read() call hands over on Linux. The file counts as read only as one call would
// have read it, so a file larger than this never arrives whole.
constexpr size_t kSingleReadMax = 0x7ffff000;

// A size the file system cannot tell counts as an empty file.
size_t FileSize(const std::string &device_path) {
    struct stat st;
    if (stat(DevicePath(device_path).c_str(), &st) != 0 || st.st_size < 0) {
        return 0;
    }
    return static_cast<size_t>(st.st_size);
}

// Cuts the byte stream into lines ended by a line feed and hands them over.
class LineSplitter {
  public:
    explicit LineSplitter(CalibrationFileEvents &events) : events_(events) {}

    // False once a line was too long; nothing after it may be handed over.
    bool Feed(const char *data, size_t size) {
        const char *end = data + size;
        while (data < end) {
            const char *lf = static_cast<const char *>(std::memchr(data, '\n', end - data));
            const size_t n = static_cast<size_t>((lf ? lf : end) - data);
            if (length_ < kCalibrationLineMax) {
                std::memcpy(line_ + length_, data, std::min(n, kCalibrationLineMax - length_));
            }
            length_ += n;
            if (!lf) {
                break;
            }
            saw_line_feed_ = true;
            ++number_;
            if (length_ > kCalibrationLineMax) {
                events_.OnTooLongLine(number_);
                return false;
            }
            line_[length_] = '\0';
            events_.OnLine(line_, number_);
            length_ = 0;
            data = lf + 1;
        }
        return true;
    }

    bool saw_line_feed() const { return saw_line_feed_; }
    // Reports bytes after the last line feed.
    void Finish() {
        if (length_ > 0) {
            events_.OnUnterminatedLine(number_ + 1, length_);
        }
    }

  private:
    CalibrationFileEvents &events_;
    char line_[kCalibrationLineBuffer];
    size_t length_ = 0;  // bytes of the current line so far, also past the buffer's end
    size_t number_ = 0;
    bool saw_line_feed_ = false;
};

// Reads up to `limit` bytes in chunks and hands each to `consume` until it returns false.
// Returns the bytes read, or -1 when the first read fails.
template <typename Consume>
long ReadChunks(int fd, char *buffer, size_t limit, Consume consume) {
    size_t total = 0;
    while (total < limit) {
        const ssize_t got = read(fd, buffer, std::min(kReadChunk, limit - total));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return got < 0 && total == 0 ? -1 : static_cast<long>(total);
        }
        total += static_cast<size_t>(got);
        if (!consume(buffer, static_cast<size_t>(got))) {
            break;
        }
    }
    return static_cast<long>(total);
}

}  // namespace

CalibrationReadResult ReadCalibrationFile(const char *path, CalibrationFileEvents &events) {
    const size_t size = path ? FileSize(path) : 0;
    events.OnSize(size);

    ScopedFd fd(path ? OpenDeviceFile(path) : -1);
    if (fd.get() < 0) {
        events.OnOpenFailed();
        return CalibrationReadResult::kUnreadable;
    }
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kReadChunk]);
    if (!buffer) {
        events.OnNoMemory();
        return CalibrationReadResult::kUnreadable;
    }
    // First the whole file, as one read call would take it: a file that does not arrive whole
    // changes nothing, so no line may be handed over before this is known.
    const size_t limit = std::min(size, kSingleReadMax);
    long got = ReadChunks(fd.get(), buffer.get(), limit, [](const char *, size_t) { return true; });
    if (got < 0 || static_cast<size_t>(got) != size) {
        events.OnShortRead(got, size);
        return CalibrationReadResult::kUnreadable;
    }
    events.OnReadSize(size);

    // Then its lines, from the start again.
    LineSplitter splitter(events);
    bool whole = true;
    if (lseek(fd.get(), 0, SEEK_SET) != 0) {
        got = -1;
    } else {
        got = ReadChunks(fd.get(), buffer.get(), size, [&](const char *data, size_t n) {
            whole = splitter.Feed(data, n);
            return whole;
        });
    }
    if (!whole) {
        return CalibrationReadResult::kStopped;
    }
    // The file changed between the two reads.
    if (got < 0 || static_cast<size_t>(got) != size) {
        events.OnShortRead(got, size);
        return CalibrationReadResult::kUnreadable;
    }
    if (!splitter.saw_line_feed()) {
        events.OnNoLine();
        return CalibrationReadResult::kStopped;
    }
    splitter.Finish();
    return CalibrationReadResult::kAllLines;
}

}  // namespace snapdragoncolor
