#include "tests/fuzz/calibration_reference.h"

#include <android/log.h>

#include <cstring>

namespace stc_fuzz {

ReferenceEnd SplitReferenceLines(const std::string &content, const char *func,
                                 const std::function<void(const char *line)> &on_line,
                                 const std::function<int()> &too_large_value, ExpectedLog *log) {
    size_t start = 0;
    size_t lf = content.find('\n');
    if (lf == std::string::npos) {
        log->Add(ANDROID_LOG_WARN, "%s: found no line\n", func);
        return ReferenceEnd::kNoLine;
    }
    while (lf != std::string::npos) {
        if (lf - start > 511) {
            log->Add(ANDROID_LOG_WARN, "%s: too large line %d\n", func, too_large_value());
            return ReferenceEnd::kTooLargeLine;
        }
        char line[512];
        std::memset(line, 0, sizeof(line));
        std::memcpy(line, content.data() + start, lf - start);
        on_line(line);
        start = lf + 1;
        lf = content.find('\n', start);
    }
    return ReferenceEnd::kAllLines;
}

}  // namespace stc_fuzz
