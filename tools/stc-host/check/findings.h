// What the checker found, in the form editors and CI read: a path, a line when one applies, a
// severity and a sentence that says what the plug-in will do.
#ifndef STC_TOOLS_STC_HOST_CHECK_FINDINGS_H_
#define STC_TOOLS_STC_HOST_CHECK_FINDINGS_H_

#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace stc_host {

enum class Severity { kWarning, kError };

struct Finding {
    std::string path;
    long line = 0;  // from 1; 0 when no line applies
    Severity severity = Severity::kError;
    std::string message;

    bool operator<(const Finding &other) const {
        return std::tie(path, line, severity, message) <
               std::tie(other.path, other.line, other.severity, other.message);
    }
};

// Every finding of one run and the counts. The counts include findings held back by the cap on
// repeats, so they say how many problems there are, not how many lines were printed.
class Findings {
  public:
    // Adds a finding unless the same one is already there (two panels may lead to one file);
    // a summary line of held-back repeats is not a problem of its own and is not counted.
    void Add(Finding finding, bool counted = true);
    // Counts a problem that is only summed up, not shown.
    void CountHidden(Severity severity, long count);
    void CountFile() { ++files_; }

    const std::vector<Finding> &list() const { return list_; }
    long errors() const { return errors_; }
    long warnings() const { return warnings_; }
    int files() const { return files_; }

  private:
    std::vector<Finding> list_;
    std::set<Finding> seen_;
    long errors_ = 0;
    long warnings_ = 0;
    int files_ = 0;
};

// The findings of one file. Repeats of one kind are capped: the first kShownRepeats are shown,
// the rest are summed up in one "and N more" line after them.
class FileFindings {
  public:
    static constexpr long kShownRepeats = 5;

    FileFindings(Findings &all, std::string path);
    ~FileFindings();
    FileFindings(const FileFindings &) = delete;
    FileFindings &operator=(const FileFindings &) = delete;

    // `kind` is a short literal naming the kind of problem, the key of the cap.
    void Error(const char *kind, long line, std::string message) {
        Add(kind, line, Severity::kError, std::move(message));
    }
    void Warning(const char *kind, long line, std::string message) {
        Add(kind, line, Severity::kWarning, std::move(message));
    }
    const std::string &path() const { return path_; }
    long errors() const { return errors_; }

  private:
    struct Group {
        std::string kind;
        Severity severity;
        std::vector<Finding> shown;
        long hidden = 0;
        bool has_lines = false;
    };

    void Add(const char *kind, long line, Severity severity, std::string message);

    Findings &all_;
    std::string path_;
    std::vector<Group> groups_;
    long errors_ = 0;
};

// A text quoted in a finding: line breaks and tabs made visible.
std::string Visible(const std::string &text);

// printf into a std::string.
std::string Format(const char *format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_FINDINGS_H_
