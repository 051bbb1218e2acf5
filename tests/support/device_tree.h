// A device file system in a temporary directory, seen by the plug-in through $STC_DEVICE_ROOT.
#ifndef STC_TESTS_SUPPORT_DEVICE_TREE_H_
#define STC_TESTS_SUPPORT_DEVICE_TREE_H_

#include <array>
#include <string>

namespace stc_test {

class DeviceTree {
  public:
    DeviceTree();
    ~DeviceTree();
    DeviceTree(const DeviceTree &) = delete;
    DeviceTree &operator=(const DeviceTree &) = delete;

    const std::string &root() const { return root_; }
    // Host path of a device path such as "/vendor/etc/display/x".
    std::string HostPath(const std::string &device_path) const { return root_ + device_path; }
    // Writes a file (creating its directories) at a device path.
    void WriteFile(const std::string &device_path, const std::string &content) const;
    void MakeDir(const std::string &device_path) const;
    // A bound Unix socket: a file that exists but cannot be opened for reading.
    void MakeSocket(const std::string &device_path) const;
    void Remove(const std::string &device_path) const;

  private:
    std::string root_;
};

// The six numbers of LUT line i: the grid point (i / 289, i / 17, i) mod 17, scaled by 64, mapped
// to itself plus `offset`.
std::array<int, 6> LutLineValues(int i, int offset = 0);
// LUT line i with its line feed.
std::string MakeLutLine(int i, int offset = 0);
// A LUT file of lines 0 .. lines-1.
std::string MakeLutText(int lines, int offset = 0);
// A PCC file of three lines with the given diagonal.
std::string MakePccText(double red, double green, double blue);

}  // namespace stc_test

#endif  // STC_TESTS_SUPPORT_DEVICE_TREE_H_
