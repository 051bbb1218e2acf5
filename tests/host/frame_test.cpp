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
constexpr int kD = ANDROID_LOG_DEBUG, kE = ANDROID_LOG_ERROR;

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
    int Operation(ModeRenderInputParams *input, HwConfigOutputParams *output,
                  ScOps op = kScModeRenderIntent) {
        ScPayload in = PayloadOf(input), out = PayloadOf(output);
        return plugin_->ProcessOps(op, in, &out);
    }
    // The only line logged since the last Clear(), which must begin with `start`.
    void ExpectOnlyLine(int priority, const std::string &start) {
        const auto lines = log_.Lines();
        ASSERT_EQ(lines.size(), 1u) << log_.Dump();
        EXPECT_EQ(lines[0].message.substr(0, start.size()), start);
        EXPECT_EQ(lines[0].priority, priority) << start;
        EXPECT_EQ(lines[0].tag, "StcZuvaColor") << start;
    }

    DeviceTree device_;
    std::unique_ptr<ScPostBlendInterface> plugin_;
};

TEST_F(FrameTest, EntryPointAcceptsOnlyVersionTwoZero) {
    for (auto [major, minor] : {std::pair{2, 1}, {3, 0}, {1, 0}}) {
        log_.Clear();
        EXPECT_EQ(entry_(major, minor), nullptr) << major << "." << minor;
        ExpectOnlyLine(kE, "GetScPostBlendInterface: Invalid major_version " +
                               std::to_string(major) + " minor_version " + std::to_string(minor) +
                               "\n");
    }
    log_.Clear();
    EXPECT_NE(Create(), nullptr);
    ExpectOnlyLine(kD, "GetScPostBlendInterface: StcZuvaColor created\n");
}

// Before Init and with a wrong envelope version only ProcessOps says why it refuses.
TEST_F(FrameTest, RefusalsBeforeInitAndOnWrongVersion) {
    log_.Clear();
    bool flag = true;
    HwConfigOutputParams output;
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), -22) << "get before Init";
    EXPECT_EQ(Set(*plugin_, kSetZuvaColor, &flag, 24), -22) << "set before Init";
    EXPECT_EQ(Operation(nullptr, &output), -22) << "operation before Init";
    ExpectOnlyLine(kE, "ProcessOps: Invalid params init_done_ 0 output ");
    InitPlugin();
    for (uint32_t version : {23u, 25u}) {
        ScPayload payload = PayloadOf(&flag, 1, kNeedsUpdate);
        payload.version = version;
        EXPECT_EQ(plugin_->GetProperty(&payload), -22) << "get, version " << version;
        EXPECT_EQ(plugin_->SetProperty(payload), -22) << "set, version " << version;
    }
    EXPECT_EQ(plugin_->GetProperty(nullptr), -22) << "get without payload";
    EXPECT_TRUE(log_.Lines().empty()) << log_.Dump();
}

TEST_F(FrameTest, PropertyCallsLogTheirCodeAndName) {
    InitPlugin();
    // Every code the host names, its neighbours, and the codes between its ranges.
    const std::pair<uint32_t, const char *> cases[] = {
        // clang-format off
        {0, "kInvalid"}, {1, "kModeList"}, {2, "kNeedsUpdate"}, {3, "kModeRenderInputParams"},
        {4, "kHwConfigPayloadParam"}, {5, "kSetColorTransform"}, {6, "kPostBlendGamutHwConfig"},
        {7, "kPostBlendGammaHwConfig"}, {8, "kPostBlendInverseGammaHwConfig"},
        {9, "kSupportToneMap"}, {10, "kGetNumRenderIntents"}, {11, "kGetRenderIntents"},
        {12, "kNotifyDisplayCalibrationMode"}, {13, "kSetLtmPccConfig"},
        {14, "kGetGlobalDitherHwConfig"}, {15, "kDisplayIntf"}, {16, "unsupported"},
        {510, "unsupported"}, {511, "kPropertyMax"}, {512, "kCustomPropertyStart"},
        {513, "kPrivateDimmingSupport"}, {514, "kPrivateSetDimmingPcc"}, {515, "kZuvaColorSupport"},
        {516, "kSetZuvaColor"}, {517, "kGetZuvaColor"}, {518, "unsupported"},
        {1023, "unsupported"}, {1024, "kCustomPropertyEnd"}, {1025, "unsupported"},
        // clang-format on
    };
    for (const auto &[code, name] : cases) {
        log_.Clear();
        bool flag = false;
        Set(*plugin_, static_cast<ScProperty>(code), &flag, 1);  // refused by most handlers
        Get(*plugin_, static_cast<ScProperty>(code), &flag);
        EXPECT_EQ(log_.Count(kD, "SetProperty: SetProperty " + std::to_string(code) + "(" + name +
                                     ") gamut(255 255)\n"),
                  1)
            << code;
        EXPECT_EQ(log_.Count(kD, "GetProperty: GetProperty " + std::to_string(code) + "\n"),
                  code == kNeedsUpdate ? 0 : 1)
            << code;
    }
    bool flag = true;
    log_.Clear();
    EXPECT_EQ(Get(*plugin_, kNeedsUpdate, &flag), 0);
    EXPECT_FALSE(flag) << "nothing pending";
    EXPECT_TRUE(log_.Lines().empty()) << "the needs-update query is never logged";
    flag = true;
    EXPECT_EQ(Get(*plugin_, kSupportToneMap, &flag), 0);
    EXPECT_FALSE(flag) << "no tone mapping";
}

TEST_F(FrameTest, ModeListIsReplacedByThePluginsModes) {
    InitPlugin();
    ColorModeList modes;
    modes.list.resize(3);
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
    for (uint32_t op : {255u, 7u}) {
        log_.Clear();
        EXPECT_EQ(Operation(nullptr, &output, static_cast<ScOps>(op)), -22) << op;
        ExpectOnlyLine(kE, "ProcessOps: Invalid ops " + std::to_string(op) + "\n");
    }
    log_.Clear();
    ScPayload in;
    EXPECT_EQ(plugin_->ProcessOps(kScModeRenderIntent, in, nullptr), -22);
    ExpectOnlyLine(kE, "ProcessOps: Invalid params init_done_ 1 output ");
}

// The first operation compares with the constructed mode (255, 255, 0xFFFF, id -1); an id alone
// is neither a change nor stored.
TEST_F(FrameTest, ColourModeChangeIsLoggedOncePerModeAndIgnoresId) {
    InitPlugin();
    const std::string sw = "ProcessOps: op = kScModeSwAssets, colormode changed: ";
    const std::string tail =
        ", clr_trsfm=0, caliPccEn=0, cali_3dlut_=0, cali_gamut_=255, "
        "is_primary_=1 curr_scene:0S{}S{}\n";
    const struct {
        ScOps op;
        uint32_t gamut, gamma, intent, id;
        std::string change;  // empty: none logged
    } steps[] = {
        {kScModeRenderIntent, 255, 255, 0xFFFF, 3, ""},
        {kScModeRenderIntent, 1, 2, 3, 7,
         "ProcessOps: op = kScModeRenderIntent, colormode changed: gamut(255->1) gamma(255->2) "
         "intent(65535->3) id(-1->7)" +
             tail},
        {kScModeSwAssets, 1, 2, 3, 9, ""},
        {kScModeSwAssets, 1, 5, 3, 9, sw + "gamut(1->1) gamma(2->5) intent(3->3) id(7->9)" + tail},
        {kScModeSwAssets, 1, 5, 4, 2, sw + "gamut(1->1) gamma(5->5) intent(3->4) id(9->2)" + tail},
        {kScModeSwAssets, 6, 5, 4, 2, sw + "gamut(1->6) gamma(5->5) intent(4->4) id(2->2)" + tail},
    };
    HwConfigOutputParams output;
    for (const auto &s : steps) {
        log_.Clear();
        ModeRenderInputParams input = ModeInput(s.gamut, s.gamma, s.intent, s.id);
        Operation(&input, &output, s.op);
        const auto changes = log_.Matching("colormode changed");
        ASSERT_EQ(changes.size(), s.change.empty() ? 0u : 1u) << s.gamut << s.gamma << s.intent;
        if (!s.change.empty()) {
            EXPECT_EQ(changes[0].message, s.change);
        }
    }
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
