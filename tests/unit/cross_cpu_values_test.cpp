// The phone's CPU must compute exactly what the workstation computes: both enhancement curves of a
// linear and a non-linear panel and a composed picture-adjustment record, compared value by value
// with a table computed once on x86-64 (tests/data/cross_cpu_values.txt). Floats are compared by
// their bits.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "enhance/glimra.h"
#include "picture/scene_items.h"
#include "tests/support/device_tree.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using Table = std::map<std::string, std::vector<int64_t>>;

// Sections "name count" followed by count integers; '#' starts a comment line.
Table ReadTable(const std::string &path) {
    std::ifstream in(path);
    Table table;
    std::string line, name;
    size_t expected = 0;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::istringstream words(line);
        if (expected == 0 || table[name].size() == expected) {
            words >> name >> expected;
            continue;
        }
        for (int64_t v; words >> v;) {
            table[name].push_back(v);
        }
    }
    return table;
}

uint32_t Bits(float f) {
    uint32_t bits;
    std::memcpy(&bits, &f, sizeof(bits));
    return bits;
}

// A quadratic ramp of gamma codes, made with integer arithmetic only.
std::string QuadraticGammaFile() {
    std::string text;
    for (int64_t i = 0; i < 1280; ++i) {
        text += std::to_string(i * i * 1023 / (1279 * 1279)) + "\n";
    }
    return text;
}

std::vector<int64_t> Widen(const std::vector<int> &values) {
    return std::vector<int64_t>(values.begin(), values.end());
}

std::vector<int64_t> PaRecordValues() {
    auto plugin = std::make_unique<StcZuvaColor>();
    using A = StcZuvaColorTestAccess;
    A::curr_scene_id_(*plugin) = kSceneHue | kSceneSaturation | kSceneValue | kSceneContrast |
                                 kSceneSkin | kSceneSkyCloud | kSceneGrass;
    A::pq_levels_(*plugin) = {-5, 20, 3, -7, 9, 11, -13, 17, -19, 23, -29, 31, -37, 41};
    PaConfig pa;
    pa.enabled = true;
    A::ComposePaConfig(*plugin, pa);
    std::vector<int64_t> values = {pa.enable_flags,       pa.global.flags,
                                   pa.global.hue,         Bits(pa.global.saturation),
                                   Bits(pa.global.value), Bits(pa.global.contrast)};
    for (const PaMemColor *color : {&pa.skin, &pa.sky, &pa.foliage}) {
        values.insert(values.end(), {color->type, color->flag, color->hue, Bits(color->saturation),
                                     Bits(color->value)});
    }
    return values;
}

class CrossCpuValuesTest : public ::testing::Test {
  protected:
    void ExpectTable(const std::string &name, const std::vector<int64_t> &actual) {
        const std::vector<int64_t> &expected = table_[name];
        ASSERT_EQ(actual.size(), expected.size()) << name << ": number of values";
        for (size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(actual[i], expected[i]) << name << "[" << i << "]";
        }
    }

    Table table_ = ReadTable(STC_TEST_DATA_DIR "/cross_cpu_values.txt");
    stc_test::LogCapture log_;
};

// a*b+c rounds the product first unless the compiler fuses it: (1+2^-30)(1-2^-30) rounds to 1,
// so the sum is 0 without fusing and -2^-60 with it. The code is built with the library's flags.
TEST_F(CrossCpuValuesTest, MultiplyAddIsNotFused) {
    volatile double a = 1 + 0x1p-30, b = 1 - 0x1p-30, c = -1.0;
    const double x = a, y = b, z = c;
    EXPECT_EQ(x * y + z, 0.0) << "a*b+c was contracted into a fused multiply-add";
}

TEST_F(CrossCpuValuesTest, LinearPanelCurves) {
    std::vector<int> boost, base;
    ASSERT_TRUE(stcZuvaGlimraInit(boost, base, "lin", true));
    ExpectTable("linear_boost", Widen(boost));
    ExpectTable("linear_base", Widen(base));
}

TEST_F(CrossCpuValuesTest, NonLinearPanelCurves) {
    stc_test::DeviceTree tree;
    tree.WriteFile("/vendor/etc/display/panel_quad_gamma_srgb.txt", QuadraticGammaFile());
    std::vector<int> boost, base;
    ASSERT_TRUE(stcZuvaGlimraInit(boost, base, "quad", false));
    ExpectTable("nonlinear_boost", Widen(boost));
    ExpectTable("nonlinear_base", Widen(base));
}

TEST_F(CrossCpuValuesTest, ComposedPictureAdjustment) {
    ExpectTable("pa_record", PaRecordValues());
}

}  // namespace
}  // namespace snapdragoncolor
