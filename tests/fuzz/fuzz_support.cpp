#include "tests/fuzz/fuzz_support.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace stc_fuzz {

namespace {

constexpr size_t kLiblogBuffer = 1024;
constexpr const char *kTag = "StcZuvaColor";

std::string Printable(const std::string &text) {
    std::string out;
    for (unsigned char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c < 0x20 || c >= 0x7f) {
            char hex[8];
            std::snprintf(hex, sizeof(hex), "\\x%02x", c);
            out += hex;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

std::string Describe(const std::vector<stc_test::LogLine> &lines, size_t i) {
    if (i >= lines.size()) {
        return "(none)";
    }
    return std::to_string(lines[i].priority) + " " + lines[i].tag + " " +
           Printable(lines[i].message);
}

}  // namespace

stc_test::DeviceTree &Device() {
    static stc_test::DeviceTree tree;
    return tree;
}

stc_test::LogCapture &Log() {
    static stc_test::LogCapture capture;
    return capture;
}

void Fail(const char *format, ...) {
    std::fprintf(stderr, "INVARIANT FAILED: ");
    va_list args;
    va_start(args, format);
    std::vfprintf(stderr, format, args);
    va_end(args);
    std::fprintf(stderr, "\n");
    std::abort();
}

void ExpectedLog::Add(int priority, const char *format, ...) {
    char buffer[kLiblogBuffer];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof(buffer), format, args);
    va_end(args);
    lines_.push_back({priority, kTag, buffer});
}

void CheckSameLog(const std::vector<stc_test::LogLine> &captured, const ExpectedLog &expected,
                  const char *what) {
    const std::vector<stc_test::LogLine> &want = expected.lines();
    const size_t n = std::max(captured.size(), want.size());
    for (size_t i = 0; i < n; ++i) {
        const bool same = i < captured.size() && i < want.size() &&
                          captured[i].priority == want[i].priority &&
                          captured[i].tag == want[i].tag && captured[i].message == want[i].message;
        STC_FUZZ_CHECK(same, "%s: log line %zu differs\n  plug-in:   %s\n  reference: %s", what, i,
                       Describe(captured, i).c_str(), Describe(want, i).c_str());
    }
}

}  // namespace stc_fuzz
