// The frame as a host sees it: entry point, refusals, property and operation dispatch, logging.
#include <android/log.h>
#include <sys/uio.h>
#include <unistd.h>

#include <string>

#include "tests/host/plugin_host.h"
#include "tests/support/device_tree.h"

namespace stc_test {
namespace {

using namespace snapdragoncolor;

class FrameTest : public PluginHost {
  protected:
    void SetUp() override {
        plugin_ = Create();
        ASSERT_NE(plugin_, nullptr);
    }
    void InitPlugin() {
        ASSERT_EQ(plugin_->Init("panelA_video"), 0);
        log_.Clear();
    }
    int RenderIntent(ModeRenderInputParams *input, HwConfigOutputParams *output,
                     ScOps op = kScModeRenderIntent) {
        ScPayload in = PayloadOf(input);
        ScPayload out = PayloadOf(output);
        return plugin_->ProcessOps(op, in, &out);
    }

    DeviceTree device_;
    std::unique_ptr<ScPostBlendInterface> plugin_;
};

TEST_F(FrameTest, EntryPointAcceptsOnlyVersionTwoZero) {
    log_.Clear();
    EXPECT_EQ(entry_(2, 1), nullptr);
    EXPECT_EQ(entry_(3, 0), nullptr);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_ERROR,
                         "GetScPostBlendInterface: Invalid major_version 2 minor_version 1\n"));
    EXPECT_TRUE(log_.Has(ANDROID_LOG_ERROR,
                         "GetScPostBlendInterface: Invalid major_version 3 minor_version 0\n"));
    auto plugin = Create();
    EXPECT_NE(plugin, nullptr);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG, "GetScPostBlendInterface: StcZuvaColor created\n"));
}

// Before Init and with a wrong envelope version only ProcessOps says why it refuses.
TEST_F(FrameTest, RefusalsBeforeInitAndOnWrongVersion) {
    log_.Clear();
    bool flag = true;
    HwConfigOutputParams output;
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), -22);
    EXPECT_EQ(Set(*plugin_, kSetZuvaColor, &flag, 24), -22);
    EXPECT_EQ(RenderIntent(nullptr, &output), -22);
    ASSERT_EQ(log_.Lines().size(), 1u) << log_.Dump();
    EXPECT_EQ(log_.Lines()[0].priority, ANDROID_LOG_ERROR);
    EXPECT_EQ(log_.Lines()[0].message.rfind("ProcessOps: Invalid params init_done_ 0 output ", 0),
              0u);

    InitPlugin();
    ScPayload payload = PayloadOf(&flag, 1, kNeedsUpdate);
    payload.version = 23;
    EXPECT_EQ(plugin_->GetProperty(&payload), -22);
    EXPECT_EQ(plugin_->SetProperty(payload), -22);
    EXPECT_EQ(plugin_->GetProperty(nullptr), -22);
    EXPECT_TRUE(log_.Lines().empty()) << log_.Dump();
}

TEST_F(FrameTest, SetPropertyLogsNameOfEveryCode) {
    InitPlugin();
    // clang-format off
    const std::pair<uint32_t, const char *> cases[] = {
        {0, "kInvalid"}, {9, "kSupportToneMap"}, {15, "kDisplayIntf"}, {16, "unsupported"},
        {510, "unsupported"}, {511, "kPropertyMax"}, {512, "kCustomPropertyStart"},
        {515, "kZuvaColorSupport"}, {517, "kGetZuvaColor"}, {518, "unsupported"},
        {1023, "unsupported"}, {1024, "kCustomPropertyEnd"},
    };
    // clang-format on
    for (const auto &[code, name] : cases) {
        log_.Clear();
        bool flag = false;
        EXPECT_EQ(Set(*plugin_, static_cast<ScProperty>(code), &flag, 1), -22) << code;
        std::string expected =
            "SetProperty: SetProperty " + std::to_string(code) + "(" + name + ") gamut(255 255)\n";
        ASSERT_EQ(log_.Lines().size(), 1u) << log_.Dump();
        EXPECT_EQ(log_.Lines()[0].message, expected);
        EXPECT_EQ(log_.Lines()[0].priority, ANDROID_LOG_DEBUG);
        EXPECT_EQ(log_.Lines()[0].tag, "StcZuvaColor");
    }
}

TEST_F(FrameTest, GetPropertyLogsEveryCodeButNeedsUpdate) {
    InitPlugin();
    bool flag = true;
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), 0);
    EXPECT_FALSE(flag);
    EXPECT_TRUE(log_.Lines().empty()) << log_.Dump();

    EXPECT_EQ(Get(*plugin_, kSetZuvaColor, &flag), -22);
    EXPECT_TRUE(log_.Has(ANDROID_LOG_DEBUG, "GetProperty: GetProperty 516\n"));

    flag = true;
    EXPECT_EQ(Get(*plugin_, kSupportToneMap, &flag), 0);
    EXPECT_FALSE(flag);
    EXPECT_EQ(Get(*plugin_, kSupportToneMap, &flag, 4), -22);
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag, 4), -22);
    EXPECT_EQ(Get<bool>(*plugin_, kNeedsUpdate, nullptr, 1), -22);
}

TEST_F(FrameTest, ModeListIsReplacedByThePluginsModes) {
    InitPlugin();
    ColorModeList modes;
    modes.list.resize(3);
    EXPECT_EQ(Get(*plugin_, kModeList, &modes, 31), -22);
    EXPECT_EQ(modes.list.size(), 3u);
    EXPECT_EQ(Get(*plugin_, kModeList, &modes), 0);
    ASSERT_EQ(modes.list.size(), 1u);
    EXPECT_EQ(modes.list[0].name, "standard");
    EXPECT_EQ(modes.list[0].gamut, 255u);
    EXPECT_EQ(modes.list[0].gamma, 255u);
    EXPECT_EQ(modes.list[0].intent, 0xFFFEu);
}

TEST_F(FrameTest, UnknownOperationAndNullOutputAreRefused) {
    InitPlugin();
    HwConfigOutputParams output;
    EXPECT_EQ(RenderIntent(nullptr, &output, kScOpsMax), -22);
    EXPECT_EQ(RenderIntent(nullptr, &output, static_cast<ScOps>(7)), -22);
    ScPayload in;
    EXPECT_EQ(plugin_->ProcessOps(kScModeRenderIntent, in, nullptr), -22);
    auto lines = log_.Lines();
    ASSERT_EQ(lines.size(), 3u) << log_.Dump();
    EXPECT_EQ(lines[0].message, "ProcessOps: Invalid ops 255\n");
    EXPECT_EQ(lines[1].message, "ProcessOps: Invalid ops 7\n");
    EXPECT_EQ(lines[2].message.rfind("ProcessOps: Invalid params init_done_ 1 output ", 0), 0u);
    for (const LogLine &line : lines) {
        EXPECT_EQ(line.priority, ANDROID_LOG_ERROR);
    }
}

TEST_F(FrameTest, ColourModeChangeIsLoggedOncePerModeAndIgnoresId) {
    InitPlugin();
    HwConfigOutputParams output;
    ModeRenderInputParams input = ModeInput(1, 2, 3, 7);
    RenderIntent(&input, &output);
    auto changes = log_.Matching("colormode changed");
    ASSERT_EQ(changes.size(), 1u) << log_.Dump();
    EXPECT_EQ(changes[0].message,
              "ProcessOps: op = kScModeRenderIntent, colormode changed: gamut(255->1) "
              "gamma(255->2) intent(65535->3) id(-1->7), clr_trsfm=0, caliPccEn=0, cali_3dlut_=0, "
              "cali_gamut_=255, is_primary_=1 curr_scene:0S{}S{}\n");

    input.id = 9;
    RenderIntent(&input, &output, kScModeSwAssets);
    input.color_mode.intent = 4;
    RenderIntent(&input, &output, kScModeSwAssets);
    changes = log_.Matching("colormode changed");
    ASSERT_EQ(changes.size(), 2u);
    // The id change alone was not stored: the old id is still 7.
    EXPECT_NE(changes[1].message.find("op = kScModeSwAssets, colormode changed: gamut(1->1) "
                                      "gamma(2->2) intent(3->4) id(7->9)"),
              std::string::npos)
        << changes[1].message;
}

TEST_F(FrameTest, DeInitTwiceThenOperationsAreRefused) {
    InitPlugin();
    // A host mode equal to the constructed one is no change.
    ModeRenderInputParams input = ModeInput(255, 255, 0xFFFF, 3);
    HwConfigOutputParams output;
    RenderIntent(&input, &output);
    EXPECT_TRUE(log_.Matching("colormode changed").empty()) << log_.Dump();
    EXPECT_EQ(plugin_->DeInit(), 0);
    EXPECT_EQ(plugin_->DeInit(), 0);
    EXPECT_EQ(log_.Count(ANDROID_LOG_DEBUG, "DeInit: Entering\n"), 2);
    EXPECT_EQ(RenderIntent(nullptr, &output), -22);
    EXPECT_EQ(log_.Matching("ProcessOps: Invalid params init_done_ 0 output ").size(), 1u);
    bool flag;
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), -22);
    // Init serves again after DeInit.
    EXPECT_EQ(plugin_->Init("panelA_video"), 0);
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), 0);
}

// Whether the process can read its own memory the way libunwindstack does.
bool CanReadOwnMemory() {
    int probe = 42, copy = 0;
    iovec local{&copy, sizeof(copy)}, remote{&probe, sizeof(probe)};
    return process_vm_readv(getpid(), &local, 1, &remote, 1, 0) == sizeof(copy) && copy == probe;
}

TEST_F(FrameTest, PrintCallStackLogsUnderTheGivenTag) {
    using PrintCallStack = void (*)(char *);
    auto print =
        reinterpret_cast<PrintCallStack>(dlsym(handle_, "_ZN15snapdragoncolor14printCallStackEPc"));
    ASSERT_NE(print, nullptr);
    char tag[] = "StcTrace";
    log_.Clear();
    print(tag);
    auto lines = log_.Lines();
    if (lines.empty() && !CanReadOwnMemory()) {
        GTEST_SKIP() << "no frames: the stack unwinder reads this process through "
                        "process_vm_readv, which this machine does not implement (qemu-user)";
    }
    ASSERT_FALSE(lines.empty());
    for (const LogLine &line : lines) {
        EXPECT_EQ(line.tag, "StcTrace");
        EXPECT_EQ(line.priority, ANDROID_LOG_DEBUG);
    }
}

}  // namespace
}  // namespace stc_test
