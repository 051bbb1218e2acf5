// The calibration files' reading rules written out plainly, as the fuzz targets' reference: the
// whole file in one buffer, lines split at each line feed, at most 511 bytes before it, each line
// copied into a zeroed 512-byte buffer. The steps of each reader stay in its own target.
#ifndef STC_TESTS_FUZZ_CALIBRATION_REFERENCE_H_
#define STC_TESTS_FUZZ_CALIBRATION_REFERENCE_H_

#include <functional>
#include <string>

#include "tests/fuzz/fuzz_support.h"

namespace stc_fuzz {

enum class ReferenceEnd { kNoLine, kTooLargeLine, kAllLines };

// Hands each line of `content` to `on_line`; `too_large_value` gives the number that the
// "too large line" warning of `func` carries.
ReferenceEnd SplitReferenceLines(const std::string &content, const char *func,
                                 const std::function<void(const char *line)> &on_line,
                                 const std::function<int()> &too_large_value, ExpectedLog *log);

}  // namespace stc_fuzz

#endif  // STC_TESTS_FUZZ_CALIBRATION_REFERENCE_H_
