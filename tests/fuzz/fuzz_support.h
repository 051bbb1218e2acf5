// What every fuzz target shares: one device tree and one log capture per process, a failure that
// libFuzzer records as a crash, and the log lines a reference implementation expects.
#ifndef STC_TESTS_FUZZ_FUZZ_SUPPORT_H_
#define STC_TESTS_FUZZ_FUZZ_SUPPORT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"

namespace stc_fuzz {

// Made on first use and kept for the whole run; libFuzzer calls the target many times.
stc_test::DeviceTree &Device();
stc_test::LogCapture &Log();

// Reports a broken invariant and aborts, so that libFuzzer keeps the input as a crash.
[[noreturn]] void Fail(const char *format, ...) __attribute__((format(printf, 1, 2)));

#define STC_FUZZ_CHECK(condition, ...)     \
    do {                                   \
        if (!(condition)) {                \
            ::stc_fuzz::Fail(__VA_ARGS__); \
        }                                  \
    } while (0)

// Log lines as the plug-in would write them, formatted into liblog's 1024-byte buffer.
class ExpectedLog {
  public:
    void Add(int priority, const char *format, ...) __attribute__((format(printf, 3, 4)));
    const std::vector<stc_test::LogLine> &lines() const { return lines_; }

  private:
    std::vector<stc_test::LogLine> lines_;
};

// Fails, naming `what` and the first differing line, unless the captured lines equal `expected`.
void CheckSameLog(const std::vector<stc_test::LogLine> &captured, const ExpectedLog &expected,
                  const char *what);

inline std::string AsText(const uint8_t *data, size_t size) {
    return std::string(reinterpret_cast<const char *>(data), size);
}

}  // namespace stc_fuzz

#endif  // STC_TESTS_FUZZ_FUZZ_SUPPORT_H_
