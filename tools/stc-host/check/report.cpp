#include "tools/stc-host/check/report.h"

#include <nlohmann/json.hpp>

namespace stc_host {

namespace {

// Keys in the order a reader expects them: path, line, severity, message.
using Json = nlohmann::ordered_json;

const char *SeverityName(Severity severity) {
    return severity == Severity::kError ? "error" : "warning";
}

std::string Counted(long count, const char *noun) {
    return Format("%ld %s%s", count, noun, count == 1 ? "" : "s");
}

}  // namespace

std::string SummaryLine(const Findings &findings) {
    return Counted(findings.errors(), "error") + ", " + Counted(findings.warnings(), "warning") +
           " in " + Counted(findings.files(), "file");
}

void PrintFindingsText(const Findings &findings, std::FILE *out) {
    for (const Finding &f : findings.list()) {
        const std::string where = f.line > 0 ? Format("%s:%ld", f.path.c_str(), f.line) : f.path;
        std::fprintf(out, "%s: %s: %s\n", where.c_str(), SeverityName(f.severity),
                     f.message.c_str());
    }
    std::fprintf(out, "%s\n", SummaryLine(findings).c_str());
}

void PrintFindingsJson(const Findings &findings, std::FILE *out) {
    Json list = Json::array();
    for (const Finding &f : findings.list()) {
        list.push_back({{"path", f.path},
                        {"line", f.line > 0 ? Json(f.line) : Json(nullptr)},
                        {"severity", SeverityName(f.severity)},
                        {"message", f.message}});
    }
    const Json report = {{"findings", list},
                         {"errors", findings.errors()},
                         {"warnings", findings.warnings()},
                         {"files", findings.files()}};
    // Paths and texts from a broken file need not be UTF-8; they are shown, not refused.
    std::fprintf(out, "%s\n",
                 report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

}  // namespace stc_host
