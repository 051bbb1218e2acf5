// Two displays initialised at the same moment, both non-linear (so both read the profile and their
// gamma files into the library-wide table), while a third display is being served. Run under
// ThreadSanitizer (tests/tsan_suite.txt); each display must end with its own panel's curves.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "picture/scene_items.h"
#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

const std::string kFirst = "zuva_b3_video", kSecond = "zuva_e5_cmd_363", kServed = "zuva_a1_video";
constexpr int kRounds = 20;
constexpr int kCodes = 1280;

// Codes of each panel its own, so that a display holding the other's table is caught.
int Code(const std::string &panel, int i) {
    return panel == kFirst ? i * 1023 / (kCodes - 1) : 1023 - i * 1023 / (kCodes - 1);
}

class DisplayConcurrencyTest : public ::testing::Test {
  protected:
    DisplayConcurrencyTest() {
        tree_.WriteFile("/vendor/etc/display/zuva_stc_profile.xml",
                        "<ZuvaStcConfigs><config id=\"panelList\"><prim>" + kFirst +
                            "</prim><prim>" + kServed + "</prim><cli>" + kSecond +
                            "</cli></config><config id=\"zgl_nonlinear_srgb\"><panelname>" +
                            kFirst + "</panelname><panelname>" + kSecond +
                            "</panelname></config></ZuvaStcConfigs>");
        for (const std::string &panel : {kFirst, kSecond}) {
            std::string codes;
            for (int i = 0; i < kCodes; ++i) {
                codes += std::to_string(Code(panel, i)) + "\n";
            }
            tree_.WriteFile("/vendor/etc/display/panel_" + panel + "_gamma_srgb.txt", codes);
        }
        tree_.WriteFile("/mnt/vendor/persist/display/panel_" + kServed + "_C3D_cali_pcc.txt",
                        stc_test::MakePccText(0.9, 0.8, 0.7));
    }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;
};

// One round of host traffic on a serving display.
void Serve(StcZuvaColor &plugin, uint32_t round) {
    ZuvaColorParams color{round % 2 ? kSceneSaturation : kSceneZuvaGlimra, round % 2, nullptr, 0,
                          0};
    plugin.SetProperty(stc_test::PayloadOf(&color, sizeof(color), kSetZuvaColor));
    bool pending = false;
    ScPayload query = stc_test::PayloadOf(&pending, 1, kNeedsUpdate);
    plugin.GetProperty(&query);
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 0);
    HwConfigOutputParams output;
    output.payload = {stc_test::EmptyEntry(kPbPa), stc_test::EmptyEntry(kPbGC),
                      stc_test::EmptyEntry(kPbPCC)};
    ScPayload in = stc_test::PayloadOf(&input), out = stc_test::PayloadOf(&output);
    plugin.ProcessOps(kScModeRenderIntent, in, &out);
}

TEST_F(DisplayConcurrencyTest, TwoNonLinearDisplaysInitWhileAThirdIsServed) {
    StcZuvaColor served;
    ASSERT_EQ(served.Init(kServed), 0);
    for (int round = 0; round < kRounds; ++round) {
        StcZuvaColor first, second;
        std::atomic<int> ready{0}, inits_done{0};
        int first_result = -1, second_result = -1;
        auto init = [&](StcZuvaColor &plugin, const std::string &panel, int &result) {
            ++ready;
            while (ready < 2) {
            }
            result = plugin.Init(panel);
            ++inits_done;
        };
        std::thread host([&] {
            for (uint32_t n = 0; inits_done < 2 || n < 4; ++n) {
                Serve(served, n);
            }
        });
        std::thread a(init, std::ref(first), kFirst, std::ref(first_result));
        std::thread b(init, std::ref(second), kSecond, std::ref(second_result));
        a.join(), b.join(), host.join();

        ASSERT_EQ(first_result, 0) << "round " << round;
        ASSERT_EQ(second_result, 0) << "round " << round;
        for (StcZuvaColor *plugin : {&first, &second}) {
            const std::string &panel = A::panel_name_(*plugin);
            ASSERT_FALSE(A::glimra_disabled_(*plugin)) << panel << ", round " << round;
            const std::vector<int> &base = A::glimra_base_curve_(*plugin);
            ASSERT_EQ(base.size(), static_cast<size_t>(kCodes)) << panel;
            for (int i : {0, 1, 640, kCodes - 1}) {
                EXPECT_EQ(base[i], Code(panel, i)) << panel << " code " << i << ", round " << round;
            }
        }
    }
}

}  // namespace
}  // namespace snapdragoncolor
