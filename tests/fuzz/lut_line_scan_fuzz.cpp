// ScanLutLine against the sscanf conversion it stands for, on the same NUL-terminated line.
#include <cstdio>
#include <string>

#include "calibration/lut3d_line.h"
#include "tests/fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // An embedded NUL ends the line for both, as the line buffer of the reader does.
    const std::string line = stc_fuzz::AsText(data, size);
    int want[6];
    const int want_count = std::sscanf(line.c_str(), " %d %d %d %d %d %d", &want[0], &want[1],
                                       &want[2], &want[3], &want[4], &want[5]);
    int32_t got[6];
    const int got_count = snapdragoncolor::ScanLutLine(line.c_str(), got);
    STC_FUZZ_CHECK(got_count == want_count, "count %d, sscanf %d", got_count, want_count);
    for (int k = 0; k < want_count; ++k) {
        STC_FUZZ_CHECK(got[k] == want[k], "value %d is %d, sscanf %d", k, got[k], want[k]);
    }
    return 0;
}
