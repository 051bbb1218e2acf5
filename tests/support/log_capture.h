// Captures the plug-in's log lines through liblog's logger hook.
#ifndef STC_TESTS_SUPPORT_LOG_CAPTURE_H_
#define STC_TESTS_SUPPORT_LOG_CAPTURE_H_

#include <string>
#include <vector>

namespace stc_test {

struct LogLine {
    int priority;
    std::string tag;
    std::string message;
};

// While an instance lives, every line logged in the process is recorded (and not printed).
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();

    std::vector<LogLine> Lines() const;
    void Clear();
    // Lines whose message contains `text`.
    std::vector<LogLine> Matching(const std::string &text) const;
    // Number of lines whose message equals `message` exactly, at `priority`.
    int Count(int priority, const std::string &message) const;
    bool Has(int priority, const std::string &message) const {
        return Count(priority, message) > 0;
    }
    // Index of the first line equal to `message`, or -1.
    int IndexOf(const std::string &message) const;
    std::string Dump() const;
};

}  // namespace stc_test

#endif  // STC_TESTS_SUPPORT_LOG_CAPTURE_H_
