// A FIFO, a socket, a device node or a directory where the plug-in expects a file is a file that
// cannot be opened: the same messages as a missing file, and never a stalled Init.
#include <android/log.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "enhance/glimra.h"
#include "panel/stc_xml_parse.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

enum class Kind { kFifo, kSocket, kDeviceNode, kDirectory };

// Puts a FIFO, socket, device node or directory (`kind`) at `device_path` in `tree`.
void MakeNonRegular(const stc_test::DeviceTree &tree, Kind kind, const std::string &device_path) {
    const std::string path = tree.HostPath(device_path);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    switch (kind) {
        case Kind::kFifo:
            ASSERT_EQ(mkfifo(path.c_str(), 0600), 0) << path;
            break;
        case Kind::kSocket:
            tree.MakeSocket(device_path);
            break;
        case Kind::kDeviceNode:
            std::filesystem::create_symlink("/dev/zero", path);
            break;
        case Kind::kDirectory:
            tree.MakeDir(device_path);
            break;
    }
}

struct Role {
    const char *name;
    const char *device_path;
    std::function<void(StcZuvaColor &)> read;
    int priority;
    const char *message;  // the missing-file message
};

const Role kRoles[] = {
    {"calibration file", "/mnt/vendor/persist/display/panel_t_C3D_cali_srgb.txt",
     [](StcZuvaColor &c) {
         char path[] = "/mnt/vendor/persist/display/panel_t_C3D_cali_srgb.txt";
         EXPECT_FALSE(A::read3DlutFromFile(c, path, &A::calibrated_lut3d_srgb_(c)));
     },
     ANDROID_LOG_WARN,
     "read3DlutFromFile: Failed to open file: /mnt/vendor/persist/display/"
     "panel_t_C3D_cali_srgb.txt\n"},
    {"panel-name node", "/proc/device-tree/chosen/zvx,panel_name",
     [](StcZuvaColor &c) {
         A::is_primary_(c) = true;
         A::panel_name_(c) = "t";
         A::loadCalibratedParam(c, std::string("t"));
     },
     ANDROID_LOG_ERROR,
     "loadCalibratedParam: open file: /proc/device-tree/chosen/zvx,panel_name failed for panel t, "
     "is_primary_=1\n"},
    {"gamma file", "/vendor/etc/display/panel_t_gamma_srgb.txt",
     [](StcZuvaColor &) {
         std::vector<int> values{1};
         EXPECT_FALSE(
             readGammaConfigFromFile(values, "/vendor/etc/display/panel_t_gamma_srgb.txt"));
         EXPECT_TRUE(values.empty());
     },
     ANDROID_LOG_DEBUG,
     "readGammaConfigFromFile: Failed to open gamma config file: "
     "/vendor/etc/display/panel_t_gamma_srgb.txt\n"},
    {"profile", "/vendor/etc/display/zuva_stc_profile.xml",
     [](StcZuvaColor &c) { EXPECT_EQ(StcXmlParse(&A::xml_result_(c), "t"), -9); },
     ANDROID_LOG_ERROR,
     "StcXmlParse: parse config file failed: /vendor/etc/display/zuva_stc_profile.xml\n"},
};

TEST(NonRegularFilesTest, AreFilesThatCannotBeOpened) {
    const std::pair<Kind, const char *> kinds[] = {{Kind::kFifo, "FIFO"},
                                                   {Kind::kSocket, "socket"},
                                                   {Kind::kDeviceNode, "device node"},
                                                   {Kind::kDirectory, "directory"}};
    alarm(30);  // a blocking open must fail the run, not hang it
    for (const Role &role : kRoles) {
        for (const auto &[kind, kind_name] : kinds) {
            SCOPED_TRACE(std::string(role.name) + " as a " + kind_name);
            stc_test::DeviceTree tree;
            stc_test::LogCapture log;
            MakeNonRegular(tree, kind, role.device_path);
            auto plugin = std::make_unique<StcZuvaColor>();
            role.read(*plugin);
            EXPECT_EQ(log.Count(role.priority, role.message), 1) << log.Dump();
        }
    }
    alarm(0);
}

}  // namespace
}  // namespace snapdragoncolor
