// The XML profile as the plug-in's parser reads it: the parser's own errors and warnings at the
// lines of their elements, libxml2's parse error, and settings that are legal but do not do what
// they seem to.
#include <android/log.h>

#include <set>
#include <utility>

#include "tools/stc-host/check/file_checks.h"
#include "tools/stc-host/check/log_text.h"
#include "tools/stc-host/check/xml_errors.h"
#include "tools/stc-host/log_sink.h"

namespace stc_host {

namespace {

using snapdragoncolor::StartsWith;

enum class EntryKind { kPrim, kCli, kNonLinear, kPrimPath, kCliPath, kPanel, kPanelPath, kType };

// A text the profile gives, as the parser's debug lines name it, and its line.
struct Entry {
    EntryKind kind;
    std::string text;
    long line;
};

struct EntryLine {
    EntryKind kind;
    const char *prefix;
    const char *suffix;
};

// The parser's debug lines for each accepted text (parsed for no particular panel).
const EntryLine kEntryLines[] = {
    {EntryKind::kPrim, "StcXmlParse: add ", " to supported prim panel list\n"},
    {EntryKind::kCli, "StcXmlParse: add ", " to supported cli panel list\n"},
    {EntryKind::kNonLinear, "StcXmlParse: add ", " to supported nonLinearSRgb gamma panel list\n"},
    {EntryKind::kPrimPath, "StcXmlParse: get prim panel name path: ", "\n"},
    {EntryKind::kCliPath, "StcXmlParse: get cli panel name path: ", "\n"},
    {EntryKind::kPanel, "StcXmlParse: Compare init panel  with config node for pane ", "\n"},
};

// The parser's result for a profile that is not there (it says so only at debug priority).
constexpr int kNoProfile = -17;

struct ParseRun {
    int status = 0;
    std::vector<LoggedLine> lines;
    bool xml_error = false;
    long xml_line = 0;
    std::string xml_message;
};

ParseRun Parse(const std::string &read_path, const std::string &panel_name,
               snapdragoncolor::stcXmlresult *result) {
    ParseRun run;
    ScopedXmlErrors xml_errors;
    {
        ScopedLogSink sink([&run](int priority, const std::string &, const std::string &text) {
            run.lines.push_back({priority, text, snapdragoncolor::StcXmlParseLine()});
        });
        run.status = snapdragoncolor::StcXmlParseAt(result, panel_name, read_path.c_str());
    }
    run.xml_error = xml_errors.any();
    run.xml_line = xml_errors.line();
    run.xml_message = xml_errors.message();
    return run;
}

void CollectEntries(const ParseRun &run, std::vector<Entry> *entries) {
    for (const LoggedLine &line : run.lines) {
        for (const EntryLine &form : kEntryLines) {
            std::string text;
            if (TextBetween(line.text, form.prefix, form.suffix, &text)) {
                entries->push_back({form.kind, text, line.xml_line});
                break;
            }
        }
    }
}

// The type and path texts of the `panel` elements that apply to `panel_name`.
void CollectPanelEntries(const ParseRun &run, const std::string &panel_name,
                         std::vector<Entry> *entries) {
    const std::string type_prefix = "StcXmlParse: panel " + panel_name + " is ";
    const std::string path_suffix = " for init panel " + panel_name + "\n";
    for (const LoggedLine &line : run.lines) {
        std::string text;
        if (TextUntil(line.text, type_prefix, ". panel (", &text)) {
            entries->push_back({EntryKind::kType, text, line.xml_line});
        } else if (TextBetween(line.text, "StcXmlParse: name path is ", path_suffix, &text)) {
            entries->push_back({EntryKind::kPanelPath, text, line.xml_line});
        }
    }
}

// The parser's own errors and warnings, each once however often it was run.
void ReportParserLines(const ParseRun &run, std::set<std::pair<long, std::string>> *reported,
                       FileFindings &out) {
    for (const LoggedLine &line : run.lines) {
        if (line.priority < ANDROID_LOG_WARN ||
            !reported->insert({line.xml_line, line.text}).second) {
            continue;
        }
        std::string text = line.text;
        if (!text.empty() && text.back() == '\n') {
            text.pop_back();
        }
        if (line.priority >= ANDROID_LOG_ERROR) {
            out.Error(text.c_str(), line.xml_line, text);
        } else {
            out.Warning(text.c_str(), line.xml_line, text);
        }
    }
    if (run.xml_error && reported->insert({run.xml_line, run.xml_message}).second) {
        out.Error("xml", run.xml_line,
                  Format("%s: the plug-in ignores the whole profile and decides each panel's type "
                         "by its name",
                         run.xml_message.c_str()));
    }
}

bool HasOuterBlanks(const std::string &text) {
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    return !text.empty() && (blank(text.front()) || blank(text.back()));
}

void CheckBlanks(const std::vector<Entry> &entries, FileFindings &out) {
    for (const Entry &e : entries) {
        if (HasOuterBlanks(e.text)) {
            out.Warning("blanks", e.line,
                        Format("\"%s\" has blanks or line breaks around it, which the plug-in "
                               "keeps as part of the text",
                               Visible(e.text).c_str()));
        }
    }
}

// A panel named by an entry of one list and also by one of the other matches both.
void CheckBothLists(const std::vector<Entry> &entries, FileFindings &out) {
    for (const Entry &cli : entries) {
        if (cli.kind != EntryKind::kCli) {
            continue;
        }
        for (const Entry &prim : entries) {
            if (prim.kind != EntryKind::kPrim ||
                !(StartsWith(cli.text, prim.text) || StartsWith(prim.text, cli.text))) {
                continue;
            }
            const std::string &longer = cli.text.size() > prim.text.size() ? cli.text : prim.text;
            out.Warning("both-lists", cli.line,
                        Format("panel %s is in both panel lists (prim at line %ld): the plug-in "
                               "takes it as primary and CLI at once",
                               Visible(longer).c_str(), prim.line));
        }
    }
}

// An entry of the non-linear list matters only for a panel the plug-in serves.
void CheckNonLinearServed(const std::vector<Entry> &entries, const ProfileFacts &facts,
                          FileFindings &out) {
    const auto &lists = facts.lists;
    if (lists.prim_panel_list.empty() && lists.cli_panel_list.empty()) {
        return;  // without lists the plug-in serves every panel
    }
    auto served = [&](const std::string &name) {
        for (const auto *list :
             {&lists.prim_panel_list, &lists.cli_panel_list, &facts.panel_names}) {
            for (const std::string &entry : *list) {
                if (StartsWith(name, entry)) {
                    return true;
                }
            }
        }
        return false;
    };
    for (const Entry &e : entries) {
        if (e.kind == EntryKind::kNonLinear && !served(e.text)) {
            out.Warning("non-linear-unserved", e.line,
                        Format("zgl_nonlinear_srgb names %s, which no panel list serves: the "
                               "plug-in refuses that panel, so the entry has no effect",
                               Visible(e.text).c_str()));
        }
    }
}

// Paths are appended to each other, not replaced.
void CheckJoinedPaths(const std::vector<Entry> &entries, FileFindings &out) {
    for (EntryKind kind : {EntryKind::kPrimPath, EntryKind::kCliPath, EntryKind::kPanelPath}) {
        std::string joined;
        for (const Entry &e : entries) {
            if (e.kind != kind) {
                continue;
            }
            if (!joined.empty()) {
                out.Warning("joined-path", e.line,
                            Format("a second name path: the plug-in appends it to the first, "
                                   "reading the name from \"%s\"",
                                   Visible(joined + e.text).c_str()));
            }
            joined += e.text;
        }
    }
}

void CheckTypes(const std::vector<Entry> &entries, FileFindings &out) {
    for (const Entry &e : entries) {
        if (e.kind == EntryKind::kType && e.text != "primary" && e.text != "cli") {
            out.Warning("panel-type", e.line,
                        Format("panel type \"%s\" is neither primary nor cli: the plug-in "
                               "ignores it",
                               Visible(e.text).c_str()));
        }
    }
}

}  // namespace

void CheckProfile(const std::string &read_path, FileFindings &out, ProfileFacts *facts) {
    std::set<std::pair<long, std::string>> reported;
    std::vector<Entry> entries;
    // First for no panel: every section is read and every `panel` element names itself.
    const ParseRun run = Parse(read_path, "", &facts->lists);
    ReportParserLines(run, &reported, out);
    if (run.status == kNoProfile) {
        out.Error("missing", 0,
                  "missing: the plug-in goes without a profile and decides each panel's type by "
                  "its name");
    }
    if (run.status != 0) {
        return;
    }
    CollectEntries(run, &entries);
    CheckJoinedPaths(entries, out);
    std::set<std::string> names;
    for (const Entry &e : entries) {
        if (e.kind == EntryKind::kPanel && names.insert(e.text).second) {
            facts->panel_names.push_back(e.text);
        }
    }
    // Then once for each `panel` element, so that its own children are read too.
    for (const std::string *path : {&facts->lists.prim_name_path, &facts->lists.cli_name_path}) {
        if (!path->empty()) {
            facts->name_paths.push_back(*path);
        }
    }
    for (const std::string &name : facts->panel_names) {
        snapdragoncolor::stcXmlresult panel_result;
        const ParseRun panel_run = Parse(read_path, name, &panel_result);
        if (!panel_result.init_name_path.empty()) {
            facts->name_paths.push_back(panel_result.init_name_path);
        }
        ReportParserLines(panel_run, &reported, out);
        std::vector<Entry> panel_entries;
        CollectPanelEntries(panel_run, name, &panel_entries);
        CheckJoinedPaths(panel_entries, out);
        entries.insert(entries.end(), panel_entries.begin(), panel_entries.end());
    }
    CheckBlanks(entries, out);
    CheckBothLists(entries, out);
    CheckNonLinearServed(entries, *facts, out);
    CheckTypes(entries, out);
}

}  // namespace stc_host
