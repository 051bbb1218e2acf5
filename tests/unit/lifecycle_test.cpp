// A display's whole life, many times over: created, initialised with full calibration, served,
// shut down and destroyed. Under LeakSanitizer (the asan suite) anything a cycle leaves behind
// fails the run.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "picture/scene_items.h"
#include "stc_zuva_color.h"
#include "tests/support/device_tree.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"

namespace snapdragoncolor {
namespace {

const std::string kPanel = "zuva_a1_video";
const std::string kUnitFiles = "/mnt/vendor/persist/display/panel_zuva_a1_video_C3D_cali_";
// A cross build runs this under qemu-user, where a cycle takes about 50 ms of CPU (measured:
// 100 cycles in 5.3 s) against 8 ms natively even under ASan; a tenth of the cycles keeps the
// AArch64 suite short and still repeats every path many times.
#ifdef STC_TESTS_EMULATED
constexpr int kCycles = 100;
#else
constexpr int kCycles = 1000;
#endif

class LifecycleTest : public ::testing::Test {
  protected:
    LifecycleTest() {
        tree_.WriteFile("/vendor/etc/display/zuva_stc_profile.xml",
                        "<ZuvaStcConfigs><config id=\"panelList\"><prim>" + kPanel +
                            "</prim></config></ZuvaStcConfigs>");
        tree_.WriteFile(kUnitFiles + "srgb.txt", stc_test::MakeLutText(4913, 3));
        tree_.WriteFile(kUnitFiles + "p3.txt", stc_test::MakeLutText(4913, 5));
        tree_.WriteFile(kUnitFiles + "pcc.txt", stc_test::MakePccText(0.9, 0.8, 0.7));
    }

    stc_test::DeviceTree tree_;
    stc_test::LogCapture log_;  // keeps the run quiet; also exercises every format
};

// Property writes and reads, then an update pass and a plain pass over every edited block.
void Serve(ScPostBlendInterface &plugin) {
    ZuvaColorLevels levels;
    levels.saturation = 12;
    ZuvaColorParams color{kSceneSaturation | kSceneZuvaGlimra, 1, &levels, 1, 0};
    EXPECT_EQ(plugin.SetProperty(stc_test::PayloadOf(&color, sizeof(color), kSetZuvaColor)), 0);
    ColorTransformMatrix matrix;
    matrix.m[0] = 0.5f;
    EXPECT_EQ(plugin.SetProperty(stc_test::PayloadOf(&matrix, sizeof(matrix), kSetColorTransform)),
              0);
    ColorModeList modes;
    ScPayload query = stc_test::PayloadOf(&modes, sizeof(modes), kModeList);
    EXPECT_EQ(plugin.GetProperty(&query), 0);
    EXPECT_EQ(modes.list.size(), 1u);

    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 1);
    for (int pass = 0; pass < 2; ++pass) {
        HwConfigOutputParams output;
        output.payload = {stc_test::EmptyEntry(kPbPCC), stc_test::EmptyEntry(kPbPa),
                          stc_test::EmptyEntry(kPbGamut), stc_test::EmptyEntry(kPbGC),
                          stc_test::EmptyEntry(kPbDE)};
        ScPayload in = stc_test::PayloadOf(&input), out = stc_test::PayloadOf(&output);
        EXPECT_EQ(plugin.ProcessOps(kScModeRenderIntent, in, &out), 0);
        EXPECT_EQ(plugin.ProcessOps(kScModeSwAssets, in, &out), 0);
        EXPECT_TRUE(stc_test::RecordOf<GamutConfig>(output.payload[2])->enabled) << "pass " << pass;
    }
}

TEST_F(LifecycleTest, ThousandDisplayLifetimesLeaveNothingBehind) {
    for (int cycle = 0; cycle < kCycles; ++cycle) {
        std::unique_ptr<ScPostBlendInterface> plugin(GetScPostBlendInterface(2, 0));
        ASSERT_TRUE(plugin);
        ASSERT_EQ(plugin->Init(kPanel), 0) << "cycle " << cycle;
        Serve(*plugin);
        ASSERT_EQ(plugin->DeInit(), 0) << "cycle " << cycle;
        log_.Clear();
        if (HasFailure()) {
            FAIL() << "cycle " << cycle;
        }
    }
}

}  // namespace
}  // namespace snapdragoncolor
