#include "tests/support/device_tree.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace stc_test {

namespace fs = std::filesystem;

DeviceTree::DeviceTree() {
    std::string tmpl = (fs::temp_directory_path() / "stc-device-XXXXXX").string();
    if (!mkdtemp(tmpl.data())) {
        throw std::runtime_error("mkdtemp failed");
    }
    root_ = tmpl;
    setenv("STC_DEVICE_ROOT", root_.c_str(), 1);
}

DeviceTree::~DeviceTree() {
    unsetenv("STC_DEVICE_ROOT");
    std::error_code ec;
    fs::remove_all(root_, ec);
}

void DeviceTree::WriteFile(const std::string &device_path, const std::string &content) const {
    fs::path path = HostPath(device_path);
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << content;
}

void DeviceTree::MakeDir(const std::string &device_path) const {
    fs::create_directories(HostPath(device_path));
}

void DeviceTree::MakeSocket(const std::string &device_path) const {
    const std::string path = HostPath(device_path);
    fs::create_directories(fs::path(path).parent_path());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        throw std::runtime_error("socket path too long: " + path);
    }
    path.copy(address.sun_path, path.size());
    const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool bound =
        fd >= 0 && bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)) == 0;
    if (fd >= 0) {
        close(fd);
    }
    if (!bound) {
        throw std::runtime_error("cannot make a socket at " + path);
    }
}

void DeviceTree::Remove(const std::string &device_path) const {
    std::error_code ec;
    fs::remove_all(HostPath(device_path), ec);
}

std::array<int, 6> LutLineValues(int i, int offset) {
    int r = (i / 289) % 17 * 64, g = (i / 17) % 17 * 64, b = i % 17 * 64;
    return {r, g, b, r + offset, g + offset, b + offset};
}

std::string MakeLutLine(int i, int offset) {
    std::array<int, 6> v = LutLineValues(i, offset);
    char line[96];
    std::snprintf(line, sizeof(line), "%d %d %d %d %d %d\n", v[0], v[1], v[2], v[3], v[4], v[5]);
    return line;
}

std::string MakeLutText(int lines, int offset) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        text += MakeLutLine(i, offset);
    }
    return text;
}

std::string MakePccText(double red, double green, double blue) {
    char text[512];
    std::snprintf(text, sizeof(text),
                  "0 %g 0 0 0 0 0 0 0 0 0\n0 0 %g 0 0 0 0 0 0 0 0\n0 0 0 %g 0 0 0 0 0 0 0\n", red,
                  green, blue);
    return text;
}

}  // namespace stc_test
