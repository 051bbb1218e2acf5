// The file-reading routine shared by the calibration readers: the whole file in one read, then
// one line at a time through a single reused line buffer.
#ifndef STC_CALIBRATION_CALIBRATION_FILE_H_
#define STC_CALIBRATION_CALIBRATION_FILE_H_

#include <cstddef>
#include <optional>

namespace snapdragoncolor {

// Longest line a calibration file may hold, line feed excluded; the line buffer adds its NUL.
constexpr size_t kCalibrationLineMax = 511;
constexpr size_t kCalibrationLineBuffer = kCalibrationLineMax + 1;

// The reader's part of the routine. The two log hooks keep each reader's own messages next to
// its other format strings, where the compiler checks them against their arguments.
class CalibrationLineHandler {
  public:
    // After the size query; the PCC reader logs nothing here.
    virtual void LogSize(const char *shown_path, int size) const {
        (void)shown_path;
        (void)size;
    }
    // After the read, with the bytes read.
    virtual void LogReadSize(int read_size) const = 0;
    // One complete line, without its line feed, NUL-terminated.
    virtual void OnLine(const char *line) = 0;
    // The number the "too large line" warning carries.
    virtual int TooLargeLineValue() const = 0;

  protected:
    ~CalibrationLineHandler() = default;
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

// Reads `path` (a device path) and hands its lines to `handler`; `func` names the reader in the
// routine's own messages.
CalibrationReadResult ReadCalibrationFile(const char *path, const char *func,
                                          CalibrationLineHandler &handler);

// The text by which log lines name `path`.
inline const char *PathForLog(const char *path) {
    return path ? path : "null";
}

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_CALIBRATION_FILE_H_
