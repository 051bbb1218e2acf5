#include "calibration/text_number.h"

namespace snapdragoncolor {

DigitRun ScanLongDigits(const char *p, unsigned long magnitude) {
    // Held at most one past LONG_MAX: enough to tell LONG_MIN from an overflow either way.
    constexpr unsigned long kCap = static_cast<unsigned long>(LONG_MAX) + 1;
    for (; IsDigit(*p); ++p) {
        const unsigned digit = static_cast<unsigned>(*p - '0');
        magnitude = magnitude > (kCap - digit) / 10 ? kCap + 1 : magnitude * 10 + digit;
    }
    return {magnitude, p};
}

}  // namespace snapdragoncolor
