#include "tools/stc-host/reporter.h"

#include <android/log.h>

#include <cstdio>

#include <nlohmann/json.hpp>

namespace stc_host {

namespace {

char PriorityLetter(int priority) {
    switch (priority) {
        case ANDROID_LOG_VERBOSE:
            return 'V';
        case ANDROID_LOG_DEBUG:
            return 'D';
        case ANDROID_LOG_INFO:
            return 'I';
        case ANDROID_LOG_WARN:
            return 'W';
        case ANDROID_LOG_ERROR:
            return 'E';
        case ANDROID_LOG_FATAL:
            return 'F';
        default:
            return '?';
    }
}

int MinimumPriority(const std::string &level) {
    if (level == "E" || level == "error")
        return ANDROID_LOG_ERROR;
    if (level == "W" || level == "warning")
        return ANDROID_LOG_WARN;
    return ANDROID_LOG_DEBUG;
}

std::string WithoutNewline(std::string message) {
    while (!message.empty() && message.back() == '\n') {
        message.pop_back();
    }
    return message;
}

class TextReporter : public Reporter {
  public:
    explicit TextReporter(int minimum) : minimum_(minimum) {}

    void Log(int priority, const std::string &tag, const std::string &message) override {
        if (priority >= minimum_) {
            std::printf("%c %s: %s\n", PriorityLetter(priority), tag.c_str(),
                        WithoutNewline(message).c_str());
        }
    }
    void Begin(size_t index, const Call &call, const std::string &what) override {
        std::printf(">>> [%zu] %s%s%s\n", index, call.label.c_str(), what.empty() ? "" : " ",
                    what.c_str());
    }
    void End(size_t index, const Call &call, int result, const std::string &answer) override {
        std::printf("<<< [%zu] %s -> %d%s%s\n", index, call.label.c_str(), result,
                    answer.empty() ? "" : ", answer ", answer.c_str());
    }
    void Summary(size_t, const std::vector<EntryChange> &changes) override {
        if (changes.empty()) {
            std::printf("    (no configuration entries)\n");
        }
        for (const EntryChange &change : changes) {
            std::printf("    [%zu] %-16s %-9s", change.index, change.block.c_str(),
                        change.state.c_str());
            if (change.state == "changed") {
                for (size_t i = 0; i < change.after.size(); ++i) {
                    std::printf("%s%s: %s -> %s", i ? "; " : " ", change.after[i].first.c_str(),
                                change.before[i].second.c_str(), change.after[i].second.c_str());
                }
            } else {
                for (size_t i = 0; i < change.after.size(); ++i) {
                    std::printf("%s%s %s", i ? "; " : " ", change.after[i].first.c_str(),
                                change.after[i].second.c_str());
                }
            }
            std::printf("\n");
        }
        std::fflush(stdout);
    }

  private:
    int minimum_;
};

class JsonReporter : public Reporter {
  public:
    explicit JsonReporter(int minimum) : minimum_(minimum) {}

    void Log(int priority, const std::string &tag, const std::string &message) override {
        if (priority >= minimum_) {
            Write({{"type", "log"},
                   {"priority", std::string(1, PriorityLetter(priority))},
                   {"tag", tag},
                   {"message", WithoutNewline(message)}});
        }
    }
    void Begin(size_t index, const Call &call, const std::string &what) override {
        Write({{"type", "call"},
               {"index", index},
               {"call", call.label},
               {"path", call.json_path},
               {"args", what}});
    }
    void End(size_t index, const Call &call, int result, const std::string &answer) override {
        nlohmann::json line = {
            {"type", "result"}, {"index", index}, {"call", call.label}, {"result", result}};
        if (!answer.empty()) {
            line["answer"] = answer;
        }
        Write(line);
    }
    void Summary(size_t index, const std::vector<EntryChange> &changes) override {
        nlohmann::json blocks = nlohmann::json::array();
        for (const EntryChange &change : changes) {
            nlohmann::json block = {
                {"index", change.index}, {"block", change.block}, {"state", change.state}};
            nlohmann::json before = nlohmann::json::object(), after = nlohmann::json::object();
            for (const auto &[name, value] : change.before)
                before[name] = value;
            for (const auto &[name, value] : change.after)
                after[name] = value;
            if (!change.before.empty())
                block["before"] = before;
            if (!change.after.empty())
                block["after"] = after;
            blocks.push_back(block);
        }
        Write({{"type", "summary"}, {"index", index}, {"blocks", blocks}});
    }

  private:
    void Write(const nlohmann::json &line) {
        std::printf("%s\n",
                    line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
        std::fflush(stdout);
    }
    int minimum_;
};

}  // namespace

std::unique_ptr<Reporter> MakeReporter(const Options &options) {
    int minimum = MinimumPriority(options.log_level);
    if (options.json) {
        return std::make_unique<JsonReporter>(minimum);
    }
    return std::make_unique<TextReporter>(minimum);
}

}  // namespace stc_host
