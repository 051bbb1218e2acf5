// Benchmarks of the plug-in's costly paths, each beside a reference cost of the same work done
// plainly, with the derived figures (throughput, ratios, allocations) printed after the run.
// Log lines are formatted but go to a logger that drops them.
#define CATCH_CONFIG_MAIN
#define CATCH_CONFIG_ENABLE_BENCHMARKING
#include <android/log.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <catch2/catch.hpp>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "picture/scene_items.h"
#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/test_access.h"
#include "tools/stc-host/check/check.h"

// Every allocation of the executable, the plug-in's included, goes through here. All forms are
// replaced, so that no new of one runtime meets a delete of another.
namespace {
std::atomic<uint64_t> g_allocations{0};

void *Allocate(size_t size) noexcept {
    ++g_allocations;
    return std::malloc(size ? size : 1);
}

void *AllocateOrThrow(size_t size) {
    if (void *p = Allocate(size)) {
        return p;
    }
    throw std::bad_alloc();
}
}  // namespace

void *operator new(size_t size) {
    return AllocateOrThrow(size);
}
void *operator new[](size_t size) {
    return AllocateOrThrow(size);
}
void *operator new(size_t size, const std::nothrow_t &) noexcept {
    return Allocate(size);
}
void *operator new[](size_t size, const std::nothrow_t &) noexcept {
    return Allocate(size);
}
void operator delete(void *p) noexcept {
    std::free(p);
}
void operator delete[](void *p) noexcept {
    std::free(p);
}
void operator delete(void *p, size_t) noexcept {
    std::free(p);
}
void operator delete[](void *p, size_t) noexcept {
    std::free(p);
}
void operator delete(void *p, const std::nothrow_t &) noexcept {
    std::free(p);
}
void operator delete[](void *p, const std::nothrow_t &) noexcept {
    std::free(p);
}

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

const std::string kPanel = "zuva_a1_video";
const std::string kUnitFiles = "/mnt/vendor/persist/display/panel_zuva_a1_video_C3D_cali_";
const std::string kSrgb = kUnitFiles + "srgb.txt", kP3 = kUnitFiles + "p3.txt",
                  kPcc = kUnitFiles + "pcc.txt";

// Benchmark names, shared with the derived figures.
constexpr const char *kInit = "Init, full calibration";
constexpr const char *kInitReference = "reference: read, convert and log the three files";
constexpr const char *kLutRead = "read3DlutFromFile, 4913 lines";
constexpr const char *kLutCount = "reference: read the LUT file and count its lines";
constexpr const char *kPlainPass = "render intent, plain pass (calibrated LUT and PCC)";
constexpr const char *kLutCopy = "reference: one 117,928-byte memcpy";
constexpr const char *kCheckUnit = "stc-host check of one unit (two LUTs and a PCC)";

void DropLine(const struct __android_logger_data *, const char *) {}

// The device of a calibrated primary panel, made once for the whole run.
struct Device {
    Device() {
        __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);  // format every line
        __android_log_set_logger(DropLine);
        tree.WriteFile("/vendor/etc/display/zuva_stc_profile.xml",
                       "<ZuvaStcConfigs><config id=\"panelList\"><prim>" + kPanel +
                           "</prim></config></ZuvaStcConfigs>");
        tree.WriteFile(kSrgb, stc_test::MakeLutText(4913, 3));
        tree.WriteFile(kP3, stc_test::MakeLutText(4913, 5));
        tree.WriteFile(kPcc, stc_test::MakePccText(0.9, 0.8, 0.7));
    }
    size_t FileSize(const std::string &path) const {
        struct stat st;
        return stat(tree.HostPath(path).c_str(), &st) == 0 ? static_cast<size_t>(st.st_size) : 0;
    }
    stc_test::DeviceTree tree;
};

Device &TheDevice() {
    static Device device;
    return device;
}

std::unique_ptr<StcZuvaColor> NewPlugin() {
    TheDevice();  // every plug-in sees the calibrated device
    auto plugin = std::make_unique<StcZuvaColor>();
    A::qdutils_lib_name_(*plugin) = STC_QDUTILS_PATH;
    return plugin;
}

std::string ReadAll(const std::string &device_path) {
    std::string data(TheDevice().FileSize(device_path), '\0');
    int fd = open(TheDevice().tree.HostPath(device_path).c_str(), O_RDONLY);
    ssize_t got = fd >= 0 ? read(fd, data.data(), data.size()) : -1;
    if (fd >= 0) {
        close(fd);
    }
    data.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return data;
}

// Sum of every decimal integer in the text, converted by hand.
long ConvertIntegers(const std::string &text) {
    long sum = 0, value = 0;
    bool in_number = false, negative = false;
    for (char ch : text) {
        if (ch >= '0' && ch <= '9') {
            value = value * 10 + (ch - '0');
            in_number = true;
            continue;
        }
        if (in_number) {
            sum += negative ? -value : value;
        }
        negative = ch == '-';
        value = 0;
        in_number = false;
    }
    return sum;
}

double ConvertDoubles(const std::string &text) {
    double sum = 0;
    const char *p = text.c_str();
    for (char *end = nullptr;; p = end) {
        double v = std::strtod(p, &end);
        if (end == p) {
            break;
        }
        sum += v;
    }
    return sum;
}

// How many lines one Init writes to the log.
int InitLogLines() {
    static std::atomic<int> lines{0};
    auto plugin = NewPlugin();
    __android_log_set_logger([](const struct __android_logger_data *, const char *) { ++lines; });
    plugin->Init(kPanel);
    __android_log_set_logger(DropLine);
    return lines;
}

// The plain cost of Init's file work: the three files read, every number converted and as many
// lines formatted as Init logs.
long ReferenceInitWork(int log_lines) {
    const std::string srgb = ReadAll(kSrgb), p3 = ReadAll(kP3), pcc = ReadAll(kPcc);
    long checksum =
        ConvertIntegers(srgb) + ConvertIntegers(p3) + static_cast<long>(ConvertDoubles(pcc));
    char line[1024];
    for (int i = 0; i < log_lines; ++i) {
        checksum += std::snprintf(
            line, sizeof(line), "%s: line %d: got %d params [(%d %d %d) -> (%d %d %d)], str=[%s]\n",
            "read3DlutFromFile", i, 6, i, i + 1, i + 2, i + 3, i + 4, i + 5, "0 64 128 3 67 131");
    }
    return checksum;
}

size_t CountLines(const std::string &device_path) {
    const std::string data = ReadAll(device_path);
    size_t lines = 0;
    for (const char *p = data.data(), *end = p + data.size();
         (p = static_cast<const char *>(std::memchr(p, '\n', static_cast<size_t>(end - p)))); ++p) {
        ++lines;
    }
    return lines;
}

// A serving display with its calibrated LUT and PCC switched on, past its first update pass.
struct ServingDisplay {
    ServingDisplay() : plugin(NewPlugin()) {
        plugin->Init(kPanel);
        // The sRGB view of a calibration run: both stages apply whatever the intent, so every
        // pass copies the table and the PCC.
        A::cali_gamut_(*plugin) = kGamutSrgb;
        output.payload = {stc_test::Entry(kPbGamut, std::make_shared<GamutConfig>()),
                          stc_test::Entry(kPbPCC, std::make_shared<PccConfig>())};
        PlainPass();  // the update pass the readers asked for
        const auto *gamut = stc_test::RecordOf<GamutConfig>(output.payload[0]);
        const auto *pcc = stc_test::RecordOf<PccConfig>(output.payload[1]);
        if (gamut->num != kGamutEntries || !pcc->enabled) {
            throw std::runtime_error("the calibrated LUT or PCC did not reach the blocks");
        }
    }
    // The PCC stage appends an entry on every pass; it is dropped to keep the list as proposed.
    int PlainPass() {
        ScPayload in = stc_test::PayloadOf(&input), out = stc_test::PayloadOf(&output);
        int result = plugin->ProcessOps(kScModeRenderIntent, in, &out);
        output.payload.resize(2);
        return result;
    }
    std::unique_ptr<StcZuvaColor> plugin;
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 0);
    HwConfigOutputParams output;
};

// Mean time of each benchmark, in nanoseconds, and the figures derived from them.
std::map<std::string, double> &Means() {
    static std::map<std::string, double> means;
    return means;
}

struct Figure {
    std::string label;
    std::function<std::string()> value;
};

std::vector<Figure> &Figures() {
    static std::vector<Figure> figures;
    return figures;
}

std::string Format(const char *format, double value) {
    char text[64];
    std::snprintf(text, sizeof(text), format, value);
    return text;
}

std::string MegabytesPerSecond(const std::string &file, const char *benchmark) {
    return Format("%.1f MB/s", TheDevice().FileSize(file) / Means()[benchmark] * 1e3);
}

std::string Ratio(const char *numerator, const char *denominator) {
    return Format("%.1f", Means()[numerator] / Means()[denominator]);
}

struct FigureListener : Catch::TestEventListenerBase {
    using TestEventListenerBase::TestEventListenerBase;
    void benchmarkEnded(Catch::BenchmarkStats<> const &stats) override {
        Means()[stats.info.name] = stats.mean.point.count();
    }
    void testRunEnded(Catch::TestRunStats const &) override {
        std::printf("\nDerived figures\n");
        for (const Figure &figure : Figures()) {
            std::printf("  %-52s %s\n", figure.label.c_str(), figure.value().c_str());
        }
    }
};
CATCH_REGISTER_LISTENER(FigureListener)

TEST_CASE("Init with full calibration, beside reading the files plainly") {
    const int log_lines = InitLogLines();
    BENCHMARK_ADVANCED(kInit)(Catch::Benchmark::Chronometer meter) {
        std::vector<std::unique_ptr<StcZuvaColor>> plugins;
        for (int i = 0; i < meter.runs(); ++i) {
            plugins.push_back(NewPlugin());
        }
        meter.measure([&](int i) { return plugins[i]->Init(kPanel); });
    };
    BENCHMARK(kInitReference) {
        return ReferenceInitWork(log_lines);
    };
    Figures().push_back({"lines Init logs", [log_lines] { return std::to_string(log_lines); }});
    Figures().push_back({"Init / reference", [] { return Ratio(kInit, kInitReference); }});
}

TEST_CASE("3D LUT parsing throughput, beside reading the file and counting its lines") {
    auto plugin = NewPlugin();
    std::string path = kSrgb;
    BENCHMARK(kLutRead) {
        return A::read3DlutFromFile(*plugin, path.data(), &A::calibrated_lut3d_srgb_(*plugin));
    };
    BENCHMARK(kLutCount) {
        return CountLines(kSrgb);
    };
    Figures().push_back({"LUT parsing", [] { return MegabytesPerSecond(kSrgb, kLutRead); }});
    Figures().push_back(
        {"LUT file read and lines counted", [] { return MegabytesPerSecond(kSrgb, kLutCount); }});
}

TEST_CASE("Plain render-intent pass, beside copying one calibrated table") {
    ServingDisplay display;
    BENCHMARK(kPlainPass) {
        return display.PlainPass();
    };
    auto from = std::make_unique<lut3d_info>(), to = std::make_unique<lut3d_info>();
    BENCHMARK(kLutCopy) {
        std::memcpy(to.get(), from.get(), sizeof(lut3d_info));
        Catch::Benchmark::keep_memory(to.get());
    };
    constexpr int kPasses = 100;
    const uint64_t before = g_allocations;
    for (int i = 0; i < kPasses; ++i) {
        display.PlainPass();
    }
    const double per_pass = static_cast<double>(g_allocations - before) / kPasses;
    Figures().push_back({"plain pass / memcpy", [] { return Ratio(kPlainPass, kLutCopy); }});
    Figures().push_back(
        {"allocations per plain pass", [per_pass] { return Format("%.1f", per_pass); }});
}

TEST_CASE("Calibration checker throughput, one unit at a time") {
    const std::vector<std::string> unit = {TheDevice().tree.HostPath(kSrgb),
                                           TheDevice().tree.HostPath(kP3),
                                           TheDevice().tree.HostPath(kPcc)};
    BENCHMARK(kCheckUnit) {
        return stc_host::CheckUnit(unit);
    };
    Figures().push_back(
        {"units checked per second", [] { return Format("%.0f", 1e9 / Means()[kCheckUnit]); }});
}

}  // namespace
}  // namespace snapdragoncolor
