#include "tests/fuzz/host_calls_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <set>
#include <thread>

#include "tests/fuzz/fuzz_support.h"
#include "tests/support/device_tree.h"

namespace stc_fuzz {

namespace {

const char *const kProfile =
    "<ZuvaStcConfigs>\n"
    "  <config id=\"panelList\"><prim>zuva_a1_video</prim><prim>zuva_b3_video</prim>"
    "<cli>zuva_c2_cmd_363</cli></config>\n"
    "  <config id=\"zgl_nonlinear_srgb\"><panelname>zuva_b3_video</panelname></config>\n"
    "</ZuvaStcConfigs>\n";

std::mutex g_fifo_mutex;
std::set<std::string> g_fifos;  // host paths
std::atomic<unsigned> g_call{0};
std::atomic<bool> g_in_call{false};

std::string GammaCodes(int count, int code, int last) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string(i + 1 == count ? last : code) + "\n";
    }
    return text;
}

std::string LutText(FileKind kind) {
    static const std::string valid = stc_test::MakeLutText(4913, 3);
    static const std::string other = stc_test::MakeLutText(4913, 9);
    static const std::string short_one = stc_test::MakeLutText(4912, 5);
    static const std::string over = stc_test::MakeLutText(4914, 7);
    static const std::string long_line =
        stc_test::MakeLutText(100, 11) + std::string(600, ' ') + "\n" + stc_test::MakeLutText(50);
    switch (kind) {
        case FileKind::kValid:
            return valid;
        case FileKind::kOtherValid:
            return other;
        case FileKind::kOneShort:
            return short_one;
        case FileKind::kOneOver:
            return over;
        default:
            return long_line;
    }
}

std::string PccText(FileKind kind) {
    const std::string valid = stc_test::MakePccText(0.9, 0.8, 0.7);
    switch (kind) {
        case FileKind::kValid:
            return valid;
        case FileKind::kOtherValid:
            return stc_test::MakePccText(0.5, 0.6, 0.75);
        case FileKind::kOneShort:
            return valid.substr(0, valid.rfind('\n', valid.size() - 2) + 1);
        case FileKind::kOneOver:
            return valid + valid;
        default:
            return "0 1 0 0 0 0 0 0 0 0\n" + valid.substr(valid.find('\n') + 1);
    }
}

std::string GammaText(FileKind kind) {
    switch (kind) {
        case FileKind::kValid:
            return GammaCodes(1280, 700, 1023);
        case FileKind::kOtherValid:
            return "# other\n" + GammaCodes(1300, 12, 900);
        case FileKind::kOneShort:
            return GammaCodes(1279, 500, 500);
        case FileKind::kOneOver:
            return GammaCodes(1280, 500, 1024);
        default:
            return GammaCodes(1280, 0, 0);
    }
}

std::string ProfileText(FileKind kind) {
    switch (kind) {
        case FileKind::kValid:
            return kProfile;
        case FileKind::kOtherValid: {
            // A block of its own makes every panel of the session a CLI panel.
            std::string text = kProfile;
            return text.insert(text.rfind("</ZuvaStcConfigs>"),
                               "  <panel name=\"zuva\"><type>cli</type><path>"
                               "/sys/class/drm/card0-DSI-2/panelName</path></panel>\n");
        }
        case FileKind::kOneShort:
            return "<ZuvaStcConfigs/>";
        case FileKind::kOneOver:
            return std::string(kProfile) + kProfile;  // not well-formed: two roots
        default:
            return std::string(kProfile).substr(0, 60);
    }
}

std::string NameText(const std::string &panel, FileKind kind) {
    switch (kind) {
        case FileKind::kValid:
            return panel + "\n";
        case FileKind::kOtherValid:
            return panel;
        case FileKind::kOneShort:
            return "abcd\n";
        case FileKind::kOneOver:
            return std::string(300, 'n');
        default:
            return panel + "\r\n";
    }
}

std::string SlotPath(const std::string &panel, FileSlot slot) {
    const std::string unit = "/mnt/vendor/persist/display/panel_" + panel + "_C3D_cali_";
    const std::string golden = "/vendor/etc/display/panel_" + panel + "_C3D_cali_";
    switch (slot) {
        case FileSlot::kUnitSrgb:
            return unit + "srgb.txt";
        case FileSlot::kUnitP3:
            return unit + "p3.txt";
        case FileSlot::kUnitPcc:
            return unit + "pcc.txt";
        case FileSlot::kGoldenSrgb:
            return golden + "srgb.txt";
        case FileSlot::kGoldenP3:
            return golden + "p3.txt";
        case FileSlot::kGoldenPcc:
            return golden + "pcc.txt";
        case FileSlot::kProfile:
            return "/vendor/etc/display/zuva_stc_profile.xml";
        case FileSlot::kNameNode:
            return "/sys/class/drm/card0-DSI-1/panelName";
        case FileSlot::kGamma:
            break;
    }
    return "/vendor/etc/display/panel_" + panel + "_gamma_srgb.txt";
}

std::string Content(const std::string &panel, FileSlot slot, FileKind kind) {
    switch (slot) {
        case FileSlot::kProfile:
            return ProfileText(kind);
        case FileSlot::kNameNode:
            return NameText(panel, kind);
        case FileSlot::kUnitPcc:
        case FileSlot::kGoldenPcc:
            return PccText(kind);
        case FileSlot::kGamma:
            return GammaText(kind);
        default:
            return LutText(kind);
    }
}

void Forget(const std::string &host_path) {
    std::lock_guard<std::mutex> lock(g_fifo_mutex);
    g_fifos.erase(host_path);
}

// A reader blocked in open() on a FIFO is what lets a non-blocking writer open it.
void CheckNoReaderWaits() {
    std::lock_guard<std::mutex> lock(g_fifo_mutex);
    for (const std::string &fifo : g_fifos) {
        int fd = open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (fd >= 0) {
            close(fd);
            Fail("the plug-in blocks opening the FIFO %s", fifo.c_str());
        }
    }
}

}  // namespace

void ResetDevice(const std::string &panel, bool with_profile) {
    stc_test::DeviceTree &tree = Device();
    for (const char *top : {"/mnt", "/vendor", "/sys", "/proc"}) {
        tree.Remove(top);
    }
    {
        std::lock_guard<std::mutex> lock(g_fifo_mutex);
        g_fifos.clear();
    }
    tree.MakeDir("/vendor/etc/display");
    tree.WriteFile("/sys/class/drm/card0-DSI-2/panelName", panel + "\n");
    for (FileSlot slot : {FileSlot::kUnitSrgb, FileSlot::kUnitP3, FileSlot::kUnitPcc,
                          FileSlot::kGamma, FileSlot::kNameNode}) {
        SetFile(panel, slot, FileKind::kValid, "");
    }
    if (with_profile) {
        SetFile(panel, FileSlot::kProfile, FileKind::kValid, "");
    }
}

void SetFile(const std::string &panel, FileSlot slot, FileKind kind, const std::string &bytes) {
    stc_test::DeviceTree &tree = Device();
    const std::string path = SlotPath(panel, slot), host_path = tree.HostPath(path);
    tree.Remove(path);
    Forget(host_path);
    switch (kind) {
        case FileKind::kMissing:
            return;
        case FileKind::kEmpty:
            return tree.WriteFile(path, "");
        case FileKind::kFuzzBytes:
            return tree.WriteFile(path, bytes);
        case FileKind::kDirectory:
            return tree.MakeDir(path);
        case FileKind::kFifo: {
            tree.WriteFile(path, "");  // makes the directories
            tree.Remove(path);
            if (mkfifo(host_path.c_str(), 0600) == 0) {
                std::lock_guard<std::mutex> lock(g_fifo_mutex);
                g_fifos.insert(host_path);
            }
            return;
        }
        default:
            return tree.WriteFile(path, Content(panel, slot, kind));
    }
}

void CallStarted() {
    ++g_call;
    g_in_call = true;
}

void CallEnded() {
    g_in_call = false;
}

void StartFifoWatchdog() {
    std::thread([] {
        unsigned seen = 0;
        for (;;) {
            std::this_thread::sleep_for(std::chrono::seconds(1));
            const unsigned call = g_call;
            if (g_in_call && call == seen) {
                CheckNoReaderWaits();
            }
            seen = call;
        }
    }).detach();
}

}  // namespace stc_fuzz
