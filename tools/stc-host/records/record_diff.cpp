#include "tools/stc-host/records/record_diff.h"

#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>

namespace stc_host {

namespace {

constexpr const char *kLutColumns[6] = {"in_r", "in_g", "in_b", "out_r", "out_g", "out_b"};

std::string Join(const std::string &prefix, const std::string &key) {
    return prefix.empty() ? key : prefix + "." + key;
}

const Json &At(const Json &array, size_t i) {
    static const Json kNull;
    return i < array.size() ? array[i] : kNull;
}

// The entry number of a "entries[N]" field, or nothing.
std::optional<size_t> EntryIndex(const std::string &field) {
    constexpr const char *kPrefix = "entries[";
    if (field.rfind(kPrefix, 0) != 0 || field.back() != ']') {
        return std::nullopt;
    }
    return std::strtoul(field.c_str() + std::char_traits<char>::length(kPrefix), nullptr, 10);
}

// The member at a dotted path ("red", "global.hue"), or null.
const Json *FieldOf(const Json &record, const std::string &path) {
    const Json *at = &record;
    size_t start = 0;
    while (at && start <= path.size()) {
        const size_t dot = path.find('.', start);
        const std::string key = path.substr(start, dot - start);
        at = at->is_object() && at->contains(key) ? &(*at)[key] : nullptr;
        if (dot == std::string::npos) {
            break;
        }
        start = dot + 1;
    }
    return at;
}

}  // namespace

std::vector<FieldChange> CompareJson(const Json &before, const Json &after,
                                     const std::string &prefix) {
    std::vector<FieldChange> changes;
    auto add = [&](const std::vector<FieldChange> &more) {
        changes.insert(changes.end(), more.begin(), more.end());
    };
    if (before.is_object() && after.is_object()) {
        for (const auto &[key, value] : before.items()) {
            add(CompareJson(value, after.contains(key) ? after[key] : Json(), Join(prefix, key)));
        }
        for (const auto &[key, value] : after.items()) {
            if (!before.contains(key)) {
                changes.push_back({Join(prefix, key), nullptr, value});
            }
        }
    } else if (before.is_array() && after.is_array()) {
        for (size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
            const Json &b = At(before, i), &a = At(after, i);
            if (b != a) {
                changes.push_back({fmt::format("{}[{}]", prefix, i), b, a});
            }
        }
    } else if (before != after) {
        changes.push_back({prefix, before, after});
    }
    return changes;
}

std::optional<LutEntryStats> LutStats(const std::vector<FieldChange> &changes) {
    LutEntryStats stats;
    for (const FieldChange &change : changes) {
        if (!EntryIndex(change.field) || !change.before.is_array() || !change.after.is_array()) {
            continue;
        }
        ++stats.changed;
        for (size_t k = 0; k < 6 && k < change.before.size() && k < change.after.size(); ++k) {
            const long long d =
                change.after[k].get<long long>() - change.before[k].get<long long>();
            stats.largest[k] = std::max(stats.largest[k], std::llabs(d));
        }
    }
    if (stats.changed == 0) {
        return std::nullopt;
    }
    return stats;
}

std::string LutStatsText(const LutEntryStats &stats) {
    std::string text;
    for (size_t k = 0; k < 6; ++k) {
        if (stats.largest[k] != 0 || k >= 3) {
            text +=
                fmt::format("{}{} {}", text.empty() ? "" : ", ", kLutColumns[k], stats.largest[k]);
        }
    }
    return text;
}

std::vector<EntryChange> CompareOutputs(const std::vector<EntrySnapshot> &proposal,
                                        const std::vector<EntrySnapshot> &result) {
    std::vector<EntryChange> changes;
    for (size_t i = 0; i < result.size(); ++i) {
        EntryChange change{i, result[i].block, "unchanged", {}, result[i].record};
        if (i >= proposal.size()) {
            change.state = "appended";
        } else if (proposal[i].record.is_null() && !result[i].record.is_null()) {
            change.state = "created";
        } else {
            change.changes = CompareJson(proposal[i].record, result[i].record);
            if (!change.changes.empty()) {
                change.state = "changed";
            }
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

std::string ChangeText(const FieldChange &change) {
    return fmt::format("{}: {} -> {}", change.field, change.before.dump(), change.after.dump());
}

std::vector<std::string> ChangeSummary(const std::vector<FieldChange> &changes, const Json &after) {
    std::vector<std::string> lines;
    for (size_t i = 0; i < changes.size();) {
        const std::string &field = changes[i].field;
        const size_t bracket = field.find('[');
        const std::string array = bracket == std::string::npos ? "" : field.substr(0, bracket);
        size_t j = i + 1;
        while (!array.empty() && j < changes.size() &&
               changes[j].field.compare(0, bracket + 1, array + "[") == 0) {
            ++j;
        }
        if (j - i == 1) {
            lines.push_back(ChangeText(changes[i]));
        } else {
            const Json *values = FieldOf(after, array);
            std::string text =
                fmt::format("{}: {} of {} {} changed", array, j - i, values ? values->size() : 0,
                            array == "entries" ? "entries" : "values");
            const std::vector<FieldChange> group(changes.begin() + i, changes.begin() + j);
            if (const auto stats = LutStats(group)) {
                text += ", largest change " + LutStatsText(*stats);
            }
            lines.push_back(text + ", first " + ChangeText(changes[i]));
        }
        i = j;
    }
    return lines;
}

std::string Brief(const Json &record) {
    if (record.is_null()) {
        return "(no record)";
    }
    std::string text = fmt::format("enabled {}", record.value("enabled", 0));
    if (record.contains("red")) {
        text += fmt::format(", diagonal [{} {} {}]", record["red"]["r"].dump(),
                            record["green"]["g"].dump(), record["blue"]["b"].dump());
    } else if (record.contains("entries")) {
        const Json &entries = record["entries"];
        text += fmt::format(", num {}, first {}, last {}", record["num"].dump(),
                            entries.front().dump(), entries.back().dump());
    } else if (record.contains("r")) {
        const Json &r = record["r"];
        text += fmt::format(", {} entries", r.size());
        if (!r.empty()) {
            text += fmt::format(" from {} to {}", r.front().dump(), r.back().dump());
        }
    } else if (record.contains("global")) {
        text += fmt::format(", enable_flags {}, global {}", record["enable_flags"].dump(),
                            record["global"].dump());
    } else if (record.contains("sharp_factor")) {
        text += fmt::format(", sharp_factor {}", record["sharp_factor"].dump());
    }
    return text;
}

}  // namespace stc_host
