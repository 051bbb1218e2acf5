#include "calibration/lut3d_line.h"

#include "calibration/text_number.h"

namespace snapdragoncolor {

int ScanLutLine(const char *line, int32_t values[kLutLineValues]) {
    const char *p = line;
    for (int count = 0; count < kLutLineValues; ++count) {
        while (IsCSpace(*p)) {
            ++p;
        }
        // The end of the text before the first number is sscanf's input failure.
        if (*p == '\0') {
            return count == 0 ? -1 : count;
        }
        long value;
        if (!ScanDecimal(&p, &value)) {
            return count;
        }
        // "%d" keeps the low 32 bits of the long it converted.
        values[count] =
            static_cast<int32_t>(static_cast<uint32_t>(static_cast<unsigned long>(value)));
    }
    return kLutLineValues;
}

}  // namespace snapdragoncolor
