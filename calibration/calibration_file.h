// The file-reading routine shared by the calibration readers and the calibration checker: a
// regular file read through a fixed-size buffer, then handed over one line at a time through a
// single reused line buffer. The routine logs nothing; each reader says what its events mean.
#ifndef STC_CALIBRATION_CALIBRATION_FILE_H_
#define STC_CALIBRATION_CALIBRATION_FILE_H_

#include <cstddef>
#include <optional>

namespace snapdragoncolor {

// Longest line a calibration file may hold, line feed excluded; the line buffer adds its NUL.
constexpr size_t kCalibrationLineMax = 511;
constexpr size_t kCalibrationLineBuffer = kCalibrationLineMax + 1;

class CalibrationFileEvents {
  public:
    // After the size query; 0 when the file system cannot tell.
    virtual void OnSize(size_t size) { (void)size; }
    // Missing, unreadable, or not a regular file.
    virtual void OnOpenFailed() {}
    // No memory for the read buffer.
    virtual void OnNoMemory() {}
    // Fewer bytes than the size arrived; -1 when nothing could be read.
    virtual void OnShortRead(long got, size_t size) {
        (void)got;
        (void)size;
    }
    // The whole file arrived.
    virtual void OnReadSize(size_t got) { (void)got; }
    // The file holds no line feed at all.
    virtual void OnNoLine() {}
    // Line `number` (counted from 1) has more than kCalibrationLineMax bytes before its line
    // feed; nothing after it is handed over.
    virtual void OnTooLongLine(size_t number) { (void)number; }
    // Line `number` (from 1), without its line feed, NUL-terminated.
    virtual void OnLine(const char *line, size_t number) = 0;
    // After the last line feed the file holds `bytes` more, which are not a line; `number` is
    // the line they would have been.
    virtual void OnUnterminatedLine(size_t number, size_t bytes) {
        (void)number;
        (void)bytes;
    }

  protected:
    ~CalibrationFileEvents() = default;
};

enum class CalibrationReadResult {
    kUnreadable,  // not opened, not allocated or not read in full: the caller may fall back
    kStopped,     // read, but the lines were not all handed over: no closing step
    kAllLines,    // every line ended by a line feed was handed over: the closing step follows
};

// The reader's result when the routine ended before the closing step; nothing when every line
// was handed over and the closing step decides.
inline std::optional<bool> ResultBeforeClosing(CalibrationReadResult result) {
    switch (result) {
        case CalibrationReadResult::kUnreadable:
            return false;
        case CalibrationReadResult::kStopped:
            return true;
        case CalibrationReadResult::kAllLines:
            break;
    }
    return std::nullopt;
}

// Reads the file at the device path `path` (null: no file). The file counts as read only when
// all of its bytes (as many as its size said) arrive; a file that does not arrive whole hands
// over no line at all. Bytes after the last line feed are not a line.
CalibrationReadResult ReadCalibrationFile(const char *path, CalibrationFileEvents &events);

// The text by which log lines name `path`.
inline const char *PathForLog(const char *path) {
    return path ? path : "null";
}

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_CALIBRATION_FILE_H_
