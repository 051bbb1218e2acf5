// The number rule of a 3D LUT line: what sscanf(line, " %d %d %d %d %d %d", ...) makes of it.
#ifndef STC_CALIBRATION_LUT3D_LINE_H_
#define STC_CALIBRATION_LUT3D_LINE_H_

#include <cstdint>

namespace snapdragoncolor {

constexpr int kLutLineValues = 6;

// Converts up to six decimal integers from the NUL-terminated `line` into `values` and returns
// how many were converted: -1 when the line holds nothing but white space, otherwise 0 to 6.
// Each value is taken as sscanf's "%d" takes it (leading white space, an optional sign, digits;
// a number beyond 32 bits keeps the low 32 bits of its `long` value, one beyond `long` saturates
// first).
int ScanLutLine(const char *line, int32_t values[kLutLineValues]);

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_LUT3D_LINE_H_
