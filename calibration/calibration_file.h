// The file-reading routine shared by the calibration readers.
#ifndef STC_CALIBRATION_CALIBRATION_FILE_H_
#define STC_CALIBRATION_CALIBRATION_FILE_H_

namespace snapdragoncolor {}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_CALIBRATION_FILE_H_
