#include "tools/stc-host/run/reporter.h"

#include <android/log.h>

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

namespace stc_host {

namespace {

// Changes listed per entry; the count tells how many there were in all.
constexpr size_t kTextChanges = 4;
constexpr size_t kJsonChanges = 10;

constexpr struct {
    char letter;
    int priority;
} kPriorities[] = {
    {'V', ANDROID_LOG_VERBOSE}, {'D', ANDROID_LOG_DEBUG}, {'I', ANDROID_LOG_INFO},
    {'W', ANDROID_LOG_WARN},    {'E', ANDROID_LOG_ERROR}, {'F', ANDROID_LOG_FATAL},
};

char PriorityLetter(int priority) {
    for (const auto &p : kPriorities) {
        if (p.priority == priority) {
            return p.letter;
        }
    }
    return '?';
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

    void Log(std::optional<size_t>, int priority, const std::string &tag,
             const std::string &message) override {
        if (priority < minimum_) {
            return;
        }
        // Every line of a message carries its priority and tag.
        const std::string text = WithoutNewline(message);
        size_t start = 0;
        do {
            const size_t end = text.find('\n', start);
            fmt::print("{} {}: {}\n", PriorityLetter(priority), tag,
                       text.substr(start, end == std::string::npos ? end : end - start));
            start = end == std::string::npos ? end : end + 1;
        } while (start != std::string::npos);
    }
    void Begin(size_t index, const Call &call, const Shown &args) override {
        fmt::print(">>> [{}] {}{}{}\n", index, call.label, args.text.empty() ? "" : " ", args.text);
    }
    void End(size_t index, const Call &call, int result, const Shown &answer) override {
        fmt::print("<<< [{}] {} -> {}{}{}\n", index, call.label, result,
                   answer.text.empty() ? "" : ", answer ", answer.text);
    }
    void Summary(size_t, const std::vector<EntryChange> &changes) override {
        if (changes.empty()) {
            fmt::print("    (no configuration entries)\n");
        }
        for (const EntryChange &change : changes) {
            fmt::print("    [{}] {:<16} {}{}\n", change.index, change.block, change.state,
                       Details(change));
        }
        std::fflush(stdout);
    }
    void Failed(const FailedExpectation &failed) override {
        fmt::print("!!! [{}] expectation failed: {}: expected {}, actual {}\n", failed.call,
                   failed.field, failed.expected.dump(), failed.actual.dump());
    }

  private:
    static std::string Details(const EntryChange &change) {
        if (change.state == "created" || change.state == "appended") {
            return ": " + Brief(change.record);
        }
        if (change.state != "changed") {
            return "";
        }
        const std::vector<std::string> lines = ChangeSummary(change.changes, change.record);
        std::string text = ":";
        for (size_t i = 0; i < std::min(kTextChanges, lines.size()); ++i) {
            text += (i ? "; " : " ") + lines[i];
        }
        if (lines.size() > kTextChanges) {
            text += fmt::format("; and {} more", lines.size() - kTextChanges);
        }
        return text;
    }

    int minimum_;
};

class JsonReporter : public Reporter {
  public:
    explicit JsonReporter(int minimum) : minimum_(minimum) {}

    void Log(std::optional<size_t> call, int priority, const std::string &tag,
             const std::string &message) override {
        if (priority >= minimum_) {
            Write({{"type", "log"},
                   {"call", call ? Json(*call) : Json()},
                   {"priority", std::string(1, PriorityLetter(priority))},
                   {"tag", tag},
                   {"message", WithoutNewline(message)}});
        }
    }
    void Begin(size_t index, const Call &call, const Shown &args) override {
        Json line = {
            {"type", "call"}, {"call", index}, {"name", call.label}, {"path", call.json_path}};
        if (!args.json.is_null()) {
            line["args"] = args.json;
        }
        Write(line);
    }
    void End(size_t index, const Call &call, int result, const Shown &answer) override {
        Json line = {{"type", "result"}, {"call", index}, {"name", call.label}, {"result", result}};
        if (!answer.json.is_null()) {
            line["answer"] = answer.json;
        }
        Write(line);
    }
    void Summary(size_t index, const std::vector<EntryChange> &changes) override {
        Json blocks = Json::array();
        for (const EntryChange &change : changes) {
            blocks.push_back(Entry(change));
        }
        Write({{"type", "summary"}, {"call", index}, {"blocks", blocks}});
    }
    void Failed(const FailedExpectation &failed) override {
        Write({{"type", "expectation"},
               {"call", failed.call},
               {"field", failed.field},
               {"expected", failed.expected},
               {"actual", failed.actual}});
    }

  private:
    static Json Entry(const EntryChange &change) {
        Json block = {{"index", change.index}, {"block", change.block}, {"state", change.state}};
        if (change.state == "changed") {
            Json listed = Json::array();
            for (size_t i = 0; i < std::min(kJsonChanges, change.changes.size()); ++i) {
                const FieldChange &c = change.changes[i];
                listed.push_back({{"field", c.field}, {"before", c.before}, {"after", c.after}});
            }
            block["change_count"] = change.changes.size();
            block["changes"] = listed;
            if (const auto stats = LutStats(change.changes)) {
                block["changed_entries"] = stats->changed;
                block["largest_entry_change"] = stats->largest;
            }
        } else if (change.state != "unchanged") {
            block["brief"] = Brief(change.record);
        }
        return block;
    }
    static void Write(const Json &line) {
        fmt::print("{}\n", line.dump(-1, ' ', false, Json::error_handler_t::replace));
        std::fflush(stdout);
    }

    int minimum_;
};

// Says nothing but failed expectations: for commands that play a session to use its result.
class QuietReporter : public TextReporter {
  public:
    QuietReporter() : TextReporter(ANDROID_LOG_SILENT) {}
    void Begin(size_t, const Call &, const Shown &) override {}
    void End(size_t, const Call &, int, const Shown &) override {}
    void Summary(size_t, const std::vector<EntryChange> &) override {}
};

}  // namespace

std::optional<int> MinimumPriority(const std::string &level) {
    if (level.size() == 1) {
        const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(level[0])));
        for (const auto &p : kPriorities) {
            if (p.letter == letter && p.letter != 'F') {
                return p.priority;
            }
        }
    }
    return std::nullopt;
}

std::unique_ptr<Reporter> MakeReporter(const Options &options) {
    const int minimum = MinimumPriority(options.log_level).value_or(ANDROID_LOG_WARN);
    if (options.quiet) {
        return std::make_unique<QuietReporter>();
    }
    if (options.json) {
        return std::make_unique<JsonReporter>(minimum);
    }
    return std::make_unique<TextReporter>(minimum);
}

}  // namespace stc_host
