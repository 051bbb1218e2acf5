#include "calibration/lut3d_line.h"

#include <cstdio>

namespace snapdragoncolor {

int ScanLutLine(const char *line, int32_t values[kLutLineValues]) {
    int v[kLutLineValues];
    int got = std::sscanf(line, " %d %d %d %d %d %d", &v[0], &v[1], &v[2], &v[3], &v[4], &v[5]);
    for (int k = 0; k < got; ++k) {
        values[k] = v[k];
    }
    return got;
}

}  // namespace snapdragoncolor
