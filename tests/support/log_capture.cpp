#include "tests/support/log_capture.h"

#include <android/log.h>

#include <mutex>

namespace stc_test {

namespace {

std::mutex g_mutex;
std::vector<LogLine> g_lines;

void CaptureLine(const struct __android_logger_data *data, const char *message) {
    std::lock_guard<std::mutex> lock(g_mutex);
    g_lines.push_back({data->priority, data->tag ? data->tag : "", message ? message : ""});
}

}  // namespace

LogCapture::LogCapture() {
    __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
    Clear();
    __android_log_set_logger(CaptureLine);
}

LogCapture::~LogCapture() {
    __android_log_set_logger(__android_log_stderr_logger);
    Clear();
}

std::vector<LogLine> LogCapture::Lines() const {
    std::lock_guard<std::mutex> lock(g_mutex);
    return g_lines;
}

void LogCapture::Clear() {
    std::lock_guard<std::mutex> lock(g_mutex);
    g_lines.clear();
}

std::vector<LogLine> LogCapture::Matching(const std::string &text) const {
    std::vector<LogLine> found;
    for (const LogLine &line : Lines()) {
        if (line.message.find(text) != std::string::npos) {
            found.push_back(line);
        }
    }
    return found;
}

int LogCapture::Count(int priority, const std::string &message) const {
    int count = 0;
    for (const LogLine &line : Lines()) {
        count += line.priority == priority && line.message == message;
    }
    return count;
}

int LogCapture::IndexOf(const std::string &message) const {
    std::vector<LogLine> lines = Lines();
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].message == message) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

std::string LogCapture::Dump() const {
    std::string text;
    for (const LogLine &line : Lines()) {
        text += std::to_string(line.priority) + " " + line.tag + " " + line.message;
        if (text.empty() || text.back() != '\n') {
            text += '\n';
        }
    }
    return text;
}

}  // namespace stc_test
