#include "tools/stc-host/check/findings.h"

#include <cstdarg>
#include <cstdio>

namespace stc_host {

void Findings::Add(Finding finding, bool counted) {
    if (!seen_.insert(finding).second) {
        return;
    }
    if (counted) {
        CountHidden(finding.severity, 1);
    }
    list_.push_back(std::move(finding));
}

void Findings::CountHidden(Severity severity, long count) {
    (severity == Severity::kError ? errors_ : warnings_) += count;
}

FileFindings::FileFindings(Findings &all, std::string path) : all_(all), path_(std::move(path)) {}

// The file's findings go out grouped by kind, each group followed by its summary line.
FileFindings::~FileFindings() {
    for (Group &group : groups_) {
        for (Finding &finding : group.shown) {
            all_.Add(std::move(finding));
        }
        if (group.hidden == 0) {
            continue;
        }
        all_.CountHidden(group.severity, group.hidden);
        Finding more;
        more.path = path_;
        more.severity = group.severity;
        more.message = Format("and %ld more %s like this", group.hidden,
                              group.has_lines ? (group.hidden == 1 ? "line" : "lines")
                                              : (group.hidden == 1 ? "finding" : "findings"));
        all_.Add(more, false);
    }
}

void FileFindings::Add(const char *kind, long line, Severity severity, std::string message) {
    if (severity == Severity::kError) {
        ++errors_;
    }
    Group *group = nullptr;
    for (Group &g : groups_) {
        if (g.kind == kind) {
            group = &g;
            break;
        }
    }
    if (!group) {
        groups_.push_back(Group{kind, severity, {}, 0, false});
        group = &groups_.back();
    }
    group->has_lines = group->has_lines || line > 0;
    if (static_cast<long>(group->shown.size()) >= kShownRepeats) {
        ++group->hidden;
        return;
    }
    group->shown.push_back(Finding{path_, line, severity, std::move(message)});
}

std::string Visible(const std::string &text) {
    std::string shown;
    for (char c : text) {
        switch (c) {
            case '\n':
                shown += "\\n";
                break;
            case '\r':
                shown += "\\r";
                break;
            case '\t':
                shown += "\\t";
                break;
            default:
                shown += c;
        }
    }
    return shown;
}

std::string Format(const char *format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int size = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

}  // namespace stc_host
