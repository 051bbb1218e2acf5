// The events of the calibration file routine as the plug-in's readers log them, each message
// naming the reader first.
#ifndef STC_CALIBRATION_LOGGED_READ_H_
#define STC_CALIBRATION_LOGGED_READ_H_

#include "calibration/calibration_file.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

class LoggedCalibrationRead : public CalibrationFileEvents {
  public:
    LoggedCalibrationRead(const char *reader, const char *path)
        : reader_(reader), shown_(PathForLog(path)) {}

    void OnOpenFailed() override { STC_LOGW("%s: Failed to open file: %s\n", reader_, shown_); }
    void OnNoMemory() override {
        STC_LOGE("%s: Failed to allocate memory for file: %s\n", reader_, shown_);
    }
    void OnShortRead(long got, size_t size) override {
        STC_LOGE("%s: file: %s. Data read size %d not same as requested %d\n", reader_, shown_,
                 static_cast<int>(got), static_cast<int>(size));
    }
    void OnNoLine() override { STC_LOGW("%s: found no line\n", reader_); }

  protected:
    ~LoggedCalibrationRead() = default;

    const char *reader_;
    const char *shown_;
};

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_LOGGED_READ_H_
