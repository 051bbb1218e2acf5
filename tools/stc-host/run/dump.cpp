#include "tools/stc-host/run/dump.h"

#include <filesystem>
#include <fstream>
#include <map>

#include <fmt/format.h>

namespace stc_host {

bool WriteDump(const std::string &dir, size_t call, const std::vector<EntryChange> &changes,
               std::string *error) {
    std::map<std::string, Json> files;  // by block name
    for (const EntryChange &change : changes) {
        if (change.state == "unchanged" || change.record.is_null()) {
            continue;
        }
        Json &file = files[change.block];
        if (file.is_null()) {
            file = {{"call", call}, {"block", change.block}, {"entries", Json::array()}};
        }
        file["entries"].push_back(
            {{"index", change.index}, {"state", change.state}, {"record", change.record}});
    }
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    for (const auto &[block, content] : files) {
        const std::string path = fmt::format("{}/{}-{}.json", dir, call, block);
        std::ofstream out(path);
        out << content.dump(1) << "\n";
        if (!out) {
            *error = "cannot write " + path;
            return false;
        }
    }
    return true;
}

}  // namespace stc_host
