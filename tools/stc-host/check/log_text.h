// Reading the plug-in's own log lines back: the checker learns from them what the plug-in read
// and decided, so each text it looks for is written here as the plug-in logs it.
#ifndef STC_TOOLS_STC_HOST_CHECK_LOG_TEXT_H_
#define STC_TOOLS_STC_HOST_CHECK_LOG_TEXT_H_

#include <string>

namespace stc_host {

// One log line as it arrived, with the profile line the parser was at (0 elsewhere).
struct LoggedLine {
    int priority;
    std::string text;
    long xml_line = 0;
};

// The text between `prefix` and `suffix` when `text` is exactly prefix + middle + suffix.
inline bool TextBetween(const std::string &text, const std::string &prefix,
                        const std::string &suffix, std::string *middle) {
    if (text.size() < prefix.size() + suffix.size() ||
        text.compare(0, prefix.size(), prefix) != 0 ||
        text.compare(text.size() - suffix.size(), suffix.size(), suffix) != 0) {
        return false;
    }
    *middle = text.substr(prefix.size(), text.size() - prefix.size() - suffix.size());
    return true;
}

// The text between `prefix` and the first `end` after it, when `text` begins with `prefix`.
inline bool TextUntil(const std::string &text, const std::string &prefix, const std::string &end,
                      std::string *middle) {
    if (text.compare(0, prefix.size(), prefix) != 0) {
        return false;
    }
    const size_t stop = text.find(end, prefix.size());
    if (stop == std::string::npos) {
        return false;
    }
    *middle = text.substr(prefix.size(), stop - prefix.size());
    return true;
}

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_LOG_TEXT_H_
