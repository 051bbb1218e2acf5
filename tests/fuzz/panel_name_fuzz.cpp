// The panel-name node's content becomes part of every calibration file name: whatever it holds,
// the names stay in their directories, within 255 characters and on one line.
#include <memory>
#include <string>

#include "platform/device_path.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

const std::string kPanel = "zuva_a1_video";
constexpr size_t kMaxName = 255;
constexpr int kFiles = 3;

struct LoadLine {
    const char *prefix;  // the message up to the path
    const char *dir;     // where the path must lie
    bool golden;
};

// The golden lines first: the unit file's line is a prefix of theirs.
const LoadLine kLoadLines[] = {
    {"loadCalibratedParam:  load golden srgb cal param ", "/vendor/etc/display/panel_", true},
    {"loadCalibratedParam:  load golden p3 cal param ", "/vendor/etc/display/panel_", true},
    {"loadCalibratedParam:  load golden pcc cal param ", "/vendor/etc/display/panel_", true},
    {"loadCalibratedParam:  load ", "/mnt/vendor/persist/display/panel_", false},
};

// The path a "load" line names; the line's own line feed is not part of it.
std::string NamedPath(const std::string &message, const LoadLine &kind) {
    std::string path = message.substr(std::string(kind.prefix).size());
    if (!path.empty() && path.back() == '\n') {
        path.pop_back();
    }
    return path;
}

void CheckLoadLines(const char *scenario) {
    int persistent = 0, golden = 0;
    for (const stc_test::LogLine &line : stc_fuzz::Log().Lines()) {
        for (const LoadLine &kind : kLoadLines) {
            if (line.message.rfind(kind.prefix, 0) != 0) {
                continue;
            }
            const std::string path = NamedPath(line.message, kind);
            (kind.golden ? golden : persistent) += 1;
            STC_FUZZ_CHECK(path.size() <= kMaxName, "%s: a %zu-character file name", scenario,
                           path.size());
            STC_FUZZ_CHECK(path.find_first_of("\n\r") == std::string::npos,
                           "%s: a file name with a line break: %s", scenario, path.c_str());
            STC_FUZZ_CHECK(path.rfind(kind.dir, 0) == 0, "%s: %s is not under %s", scenario,
                           path.c_str(), kind.dir);
            break;
        }
    }
    // No such files exist, so every unit file is followed by its golden one.
    STC_FUZZ_CHECK(persistent == kFiles && golden == kFiles, "%s: %d unit and %d golden loads",
                   scenario, persistent, golden);
}

// The name node is the device tree's (which also makes the golden files follow the panel name)
// or the display driver's.
void Load(const std::string &content, bool device_tree) {
    stc_test::DeviceTree &tree = stc_fuzz::Device();
    tree.Remove("/proc");
    tree.Remove("/sys");
    tree.WriteFile(device_tree ? kDtPrimPanelName : kDsi1PanelName, content);
    auto c = std::make_unique<StcZuvaColor>();
    A::is_primary_(*c) = true;
    A::panel_name_(*c) = kPanel;
    stc_fuzz::Log().Clear();
    A::loadCalibratedParam(*c, kPanel);
    CheckLoadLines(device_tree ? "device-tree node" : "driver node");
}

}  // namespace
}  // namespace snapdragoncolor

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string content = stc_fuzz::AsText(data, size);
    snapdragoncolor::Load(content, false);
    snapdragoncolor::Load(content, true);
    return 0;
}
