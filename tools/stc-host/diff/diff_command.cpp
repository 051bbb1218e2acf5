#include "tools/stc-host/diff/diff_command.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include <fmt/format.h>

#include "tools/stc-host/exit_codes.h"
#include "tools/stc-host/records/record_diff.h"

namespace stc_host {

namespace {

namespace fs = std::filesystem;

// Entries of one LUT that a difference lists before it only counts.
constexpr size_t kListedEntries = 10;

struct DumpDir {
    std::map<std::string, Json> files;  // by file name
    std::string error;
};

DumpDir ReadDumpDir(const std::string &dir) {
    DumpDir dump;
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) {
        dump.error = dir + " is not a dump directory";
        return dump;
    }
    for (const fs::directory_entry &entry : fs::directory_iterator(dir, ec)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".json" || name.empty() || !std::isdigit(name[0])) {
            continue;
        }
        std::ifstream in(entry.path());
        Json content = Json::parse(in, nullptr, false);
        if (content.is_discarded() || !content.contains("entries")) {
            dump.error = entry.path().string() + " is not a record dump";
            return dump;
        }
        dump.files[entry.path().filename().string()] = std::move(content);
    }
    return dump;
}

// The differences of one entry, as JSON; null when it is equal.
Json EntryDiff(size_t position, const Json &a, const Json &b) {
    Json diff = {{"position", position},
                 {"index_a", a.value("index", Json())},
                 {"index_b", b.value("index", Json())}};
    if (a.is_null() || b.is_null()) {
        diff["only_in"] = a.is_null() ? "B" : "A";
        return diff;
    }
    const std::vector<FieldChange> changes = CompareJson(a["record"], b["record"]);
    if (changes.empty()) {
        return nullptr;
    }
    Json listed = Json::array();
    size_t entries = 0;
    for (const FieldChange &c : changes) {
        const bool lut_entry = c.field.rfind("entries[", 0) == 0;
        if (!lut_entry || entries++ < kListedEntries) {
            listed.push_back({{"field", c.field}, {"a", c.before}, {"b", c.after}});
        }
    }
    diff["changes"] = listed;
    diff["change_count"] = changes.size();
    if (const auto stats = LutStats(changes)) {
        diff["changed_entries"] = stats->changed;
        diff["largest_entry_change"] = stats->largest;
        diff["largest_text"] = LutStatsText(*stats);
    }
    return diff;
}

Json FileDiff(const Json &a, const Json &b) {
    Json entries = Json::array();
    const Json empty = Json::array();
    const Json &ea = a.is_null() ? empty : a["entries"], &eb = b.is_null() ? empty : b["entries"];
    for (size_t k = 0; k < std::max(ea.size(), eb.size()); ++k) {
        Json diff = EntryDiff(k, k < ea.size() ? ea[k] : Json(), k < eb.size() ? eb[k] : Json());
        if (!diff.is_null()) {
            entries.push_back(std::move(diff));
        }
    }
    return entries;
}

void PrintText(const std::string &file, const Json &entries) {
    for (const Json &e : entries) {
        const std::string where = fmt::format("{}: entry {}", file, e["position"].get<size_t>());
        if (e.contains("only_in")) {
            fmt::print("{}: only in {}\n", where, e["only_in"].get<std::string>());
            continue;
        }
        const std::string index = e["index_a"] == e["index_b"] ? e["index_a"].dump()
                                                               : e["index_a"].dump() + " in A, " +
                                                                     e["index_b"].dump() + " in B";
        fmt::print("{} (output index {}): {} field{} differ{}\n", where, index,
                   e["change_count"].get<size_t>(), e["change_count"] == 1 ? "" : "s",
                   e["change_count"] == 1 ? "s" : "");
        if (e.contains("changed_entries")) {
            fmt::print("    {} LUT entries differ, largest difference {}\n",
                       e["changed_entries"].get<size_t>(), e["largest_text"].get<std::string>());
        }
        for (const Json &c : e["changes"]) {
            fmt::print("    {}: {} -> {}\n", c["field"].get<std::string>(), c["a"].dump(),
                       c["b"].dump());
        }
    }
}

}  // namespace

int RunDiff(const DiffOptions &options) {
    const DumpDir a = ReadDumpDir(options.a), b = ReadDumpDir(options.b);
    for (const DumpDir *dump : {&a, &b}) {
        if (!dump->error.empty()) {
            fmt::print(stderr, "stc-host: error: {}\n", dump->error);
            return kExitEnvironmentError;
        }
    }
    // In call order: "5-PostBlendGamut.json" before "11-PostBlendGamut.json".
    auto by_call = [](const std::string &x, const std::string &y) {
        const unsigned long cx = std::stoul(x), cy = std::stoul(y);
        return cx != cy ? cx < cy : x < y;
    };
    std::set<std::string, decltype(by_call)> names(by_call);
    for (const auto *dump : {&a, &b}) {
        for (const auto &file : dump->files) {
            names.insert(file.first);
        }
    }
    Json report = Json::array();
    size_t differing = 0;
    for (const std::string &name : names) {
        const auto ia = a.files.find(name), ib = b.files.find(name);
        const Json &fa = ia == a.files.end() ? Json() : ia->second;
        const Json &fb = ib == b.files.end() ? Json() : ib->second;
        Json file = {{"file", name}};
        if (fa.is_null() || fb.is_null()) {
            file["only_in"] = fa.is_null() ? "B" : "A";
        } else {
            file["entries"] = FileDiff(fa, fb);
            if (file["entries"].empty()) {
                continue;
            }
        }
        ++differing;
        if (!options.json) {
            if (file.contains("only_in")) {
                fmt::print("{}: only in {}\n", name, file["only_in"].get<std::string>());
            } else {
                PrintText(name, file["entries"]);
            }
        }
        report.push_back(std::move(file));
    }
    if (options.json) {
        fmt::print("{}\n", Json({{"differing_files", differing},
                                 {"files_compared", names.size()},
                                 {"differences", report}})
                               .dump());
    } else {
        fmt::print("{} of {} files differ\n", differing, names.size());
    }
    return differing ? kExitFault : kExitSuccess;
}

}  // namespace stc_host
