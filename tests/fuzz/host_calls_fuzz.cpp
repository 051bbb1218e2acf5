// A host driving one plug-in object with any sequence of calls, while the station rewrites the
// calibration and gamma files between them. Refused calls change nothing; an enabled gamut or
// gamma block that the plug-in filled always holds a complete table or a 10-bit curve.
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "picture/scene_items.h"
#include "tests/fuzz/byte_reader.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/fuzz/host_calls_files.h"
#include "tests/fuzz/member_snapshot.h"
#include "tests/support/host_records.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_fuzz::ByteReader;
using stc_fuzz::FileKind;
using stc_fuzz::FileSlot;
using stc_fuzz::Pick;
using stc_fuzz::Snapshot;

constexpr int kRefused = -22;
constexpr int kMaxCalls = 24;
constexpr uint32_t kHostFill = 0x7f7f7f7f;
constexpr uint32_t kHostCode = 0xABCD;

const char *const kPanels[] = {"zuva_a1_video", "zuva_b3_video", "zuva_c2_cmd_363"};
const char *const kOtherPanels[] = {"zuva_a1_video", "zuva_c2_cmd_363", "other_panel", ""};
const ScProperty kSetProps[] = {kHwConfigPayloadParam,
                                kSetColorTransform,
                                kPostBlendGamutHwConfig,
                                kPostBlendGammaHwConfig,
                                kPostBlendInverseGammaHwConfig,
                                kPrivateSetDimmingPcc,
                                kSetZuvaColor,
                                kSupportToneMap,
                                kModeList,
                                kInvalid};
const ScProperty kGetProps[] = {
    kModeList,     kNeedsUpdate, kSupportToneMap, kPrivateDimmingSupport, kHwConfigPayloadParam,
    kSetZuvaColor, kInvalid};
const uint32_t kItems[] = {kSceneFacCalibration,
                           kSceneColorTemperature,
                           kSceneLoad3dLut,
                           kSceneZuvaGlimra,
                           kSceneCalib3dLutSwitch,
                           kSceneSaturation | kSceneSkin,
                           kSceneSharpness,
                           kSceneDark,
                           kSceneForceUpdate,
                           kScenePrintLog,
                           kSceneFacCalibration | kSceneHue};
const uint32_t kItemValues[] = {0, 1, 12, 255, 500, 501, 2};
const uint32_t kGamuts[] = {kGamutSrgb, kGamutP3, kGamutNone, 0};
const uint32_t kIntents[] = {0, 1, kIntentCalibrationMode, 256, 300, kIntentStandardMode};
// Names the plug-in edits, then names it must leave alone.
const char *const kBlocks[] = {"PostBlendPCC",
                               "PostBlendPa",
                               "PostBlendGamut",
                               "PostBlendGC",
                               "PostBlendDE",
                               "PostBlendIGC",
                               "PostBlendDither",
                               "PostBlendPaDither",
                               "PostBlendGc",
                               "PostBlendGamut ",
                               "postblendpcc",
                               "PostBlendGCX",
                               ""};
constexpr int kEditedBlocks = 5;

// A record of a block the plug-in has no business with (IGC and Dither read only by the log).
struct HostBlob {
    uint32_t version = sizeof(HostBlob);
    uint32_t word = 3;
    uint8_t bytes[56];
};

int RefreshStandIn() {
    return 0;
}

// A length that is right, one off either way, zero or anything.
uint32_t Length(ByteReader &in, uint32_t right) {
    switch (in.Range(6)) {
        case 1:
            return right + 1;
        case 2:
            return right - 1;
        case 3:
            return 0;
        case 4:
            return in.U32();
        default:
            return right;
    }
}

// One entry of the host's proposed list, with what it held before the call.
struct ProposedEntry {
    std::string block;
    std::shared_ptr<void> record;
    std::vector<uint8_t> bytes;  // blocks the plug-in must not touch
};

HwConfigPayload MakeEntry(ByteReader &in, std::vector<ProposedEntry> *proposed) {
    const int kind = in.Range(std::size(kBlocks));
    HwConfigPayload entry;
    entry.hw_asset = kBlocks[kind];
    if (in.Bool()) {  // empty payload
        proposed->push_back({entry.hw_asset, nullptr, {}});
        return entry;
    }
    const bool enabled = in.Bool();
    switch (kind) {
        case 0: {
            auto pcc = std::make_shared<PccConfig>();
            pcc->enabled = enabled, pcc->red.r = pcc->green.g = pcc->blue.b = 2.0;
            entry.hw_payload = pcc;
            break;
        }
        case 1: {
            auto pa = std::make_shared<PaConfig>();
            pa->enabled = enabled, pa->global.hue = 17;
            entry.hw_payload = pa;
            break;
        }
        case 2: {
            auto gamut = std::make_shared<GamutConfig>();
            gamut->enabled = enabled, gamut->flags = 0x55, gamut->num = in.U32();
            std::memset(gamut->entries, kHostFill & 0xff, sizeof(gamut->entries));
            entry.hw_payload = gamut;
            break;
        }
        case 3: {
            auto gc = std::make_shared<GammaPostBlendConfig>();
            const size_t lengths[] = {0, 256, 1024, 1280, 2048};
            gc->enabled = enabled;
            gc->r.assign(Pick(in, lengths), kHostCode), gc->g = gc->r, gc->b = gc->r;
            entry.hw_payload = gc;
            break;
        }
        case 4: {
            auto de = std::make_shared<DETuningConfig>();
            de->enabled = enabled, de->sharp_factor = 9;
            entry.hw_payload = de;
            break;
        }
        default: {
            auto blob = std::make_shared<HostBlob>();
            std::memset(blob->bytes, kind, sizeof(blob->bytes));
            blob->word = enabled;
            entry.hw_payload = blob;
            break;
        }
    }
    std::vector<uint8_t> bytes;
    if (kind >= kEditedBlocks) {
        stc_fuzz::AddBytes(bytes, *static_cast<HostBlob *>(entry.hw_payload.get()));
    }
    proposed->push_back({entry.hw_asset, entry.hw_payload, bytes});
    return entry;
}

class HostSession {
  public:
    HostSession(ByteReader &in, std::string panel) : in_(in), panel_(std::move(panel)) {
        A::refresh_screen_(c_) = RefreshStandIn;  // no utilities library to open
    }

    void Step() {
        switch (in_.Range(7)) {
            case 0:
                return Init();
            case 1:
                return DeInit();
            case 2:
                return SetProperty();
            case 3:
                return GetProperty();
            case 4:
                return ProcessOps();
            case 5:
                return ChangeFile();
            default:
                return ColourCommand();
        }
    }

  private:
    // Runs one host call; a refused one must leave every member as it was.
    template <typename F>
    int Call(F call, bool refusal_keeps_state) {
        const Snapshot before = refusal_keeps_state ? stc_fuzz::Take(c_) : Snapshot();
        stc_fuzz::CallStarted();
        const int result = call();
        stc_fuzz::CallEnded();
        stc_fuzz::Log().Clear();
        if (refusal_keeps_state && result == kRefused) {
            STC_FUZZ_CHECK(stc_fuzz::Take(c_) == before, "a refused call changed a member");
        }
        return result;
    }

    void DeInit() {
        Call([&] { return c_.DeInit(); }, false);
    }

    void Init() {
        const std::string name = in_.Bool() ? panel_ : Pick(in_, kOtherPanels);
        Call([&] { return c_.Init(name); }, false);
    }

    void ChangeFile() {
        const auto slot = static_cast<FileSlot>(in_.Range(stc_fuzz::kFileSlots));
        const auto kind = static_cast<FileKind>(in_.Range(stc_fuzz::kFileKinds));
        stc_fuzz::SetFile(panel_, slot, kind, in_.Text());
    }

    // The colour property's meaningful item words and values.
    void ColourCommand() {
        const uint32_t items = Pick(in_, kItems);
        SetZuvaColor(items, Pick(in_, kItemValues));
    }

    void SetZuvaColor(uint32_t items, uint32_t value) {
        ZuvaColorLevels levels;
        levels.saturation = in_.Byte() - 128;
        levels.sharpness = in_.Byte() - 128;
        const bool has_levels = in_.Bool();
        ZuvaColorParams params{items, value, has_levels || in_.Bool() ? &levels : nullptr,
                               has_levels, 0};
        ScPayload payload =
            stc_test::PayloadOf(&params, Length(in_, sizeof(params)), kSetZuvaColor);
        Call([&] { return c_.SetProperty(payload); }, true);
    }

    void SetProperty() {
        const ScProperty prop =
            in_.Bool() ? Pick(in_, kSetProps) : static_cast<ScProperty>(in_.U32());
        if (prop == kSetZuvaColor) {
            const uint32_t items = in_.U32();
            return SetZuvaColor(items, in_.U32());
        }
        ColorTransformMatrix matrix;
        for (int i = 0; i < 16; i += 5) {
            matrix.m[i] = 1.0f;
        }
        matrix.m[in_.Range(16)] = in_.F32();
        PostBlendHwCaps caps;
        caps.num_of_entries = in_.I32();
        caps.entries_width = in_.U32();
        double factor = in_.F64();
        HwConfigOutputParams list;
        std::vector<ProposedEntry> ignored;
        list.payload.push_back(MakeEntry(in_, &ignored));
        void *record = prop == kSetColorTransform      ? static_cast<void *>(&matrix)
                       : prop == kPrivateSetDimmingPcc ? static_cast<void *>(&factor)
                       : prop == kHwConfigPayloadParam ? static_cast<void *>(&list)
                                                       : static_cast<void *>(&caps);
        const uint32_t right = prop == kSetColorTransform      ? sizeof(matrix)
                               : prop == kPrivateSetDimmingPcc ? sizeof(factor)
                               : prop == kHwConfigPayloadParam ? sizeof(list)
                                                               : sizeof(caps);
        ScPayload payload;
        payload.version = in_.Range(8) == 7 ? in_.U32() : sizeof(ScPayload);
        payload.len = Length(in_, right);
        payload.prop = prop;
        payload.payload = in_.Range(8) == 7 ? 0 : reinterpret_cast<uint64_t>(record);
        Call([&] { return c_.SetProperty(payload); }, true);
    }

    void GetProperty() {
        const ScProperty prop = Pick(in_, kGetProps);
        ColorModeList modes;
        modes.list.push_back(StandardMode(1));
        bool flag = true;
        ScPayload payload;
        payload.version = in_.Range(8) == 7 ? in_.U32() : sizeof(ScPayload);
        payload.prop = prop;
        payload.len = Length(in_, prop == kModeList ? sizeof(modes) : sizeof(flag));
        void *record = prop == kModeList ? static_cast<void *>(&modes) : static_cast<void *>(&flag);
        payload.payload = in_.Range(8) == 7 ? 0 : reinterpret_cast<uint64_t>(record);
        const bool none = in_.Range(16) == 15;
        Call([&] { return c_.GetProperty(none ? nullptr : &payload); }, true);
    }

    void ProcessOps() {
        const ScOps ops[] = {kScModeRenderIntent, kScModeSwAssets, kScOpsMax,
                             static_cast<ScOps>(in_.U32())};
        const ScOps op = Pick(in_, ops);
        const uint32_t gamut = Pick(in_, kGamuts), gamma = in_.Byte();
        const uint32_t intent = Pick(in_, kIntents);
        ModeRenderInputParams input = stc_test::ModeInput(gamut, gamma, intent, in_.U32());
        ScPayload in;
        if (in_.Range(8) != 7) {
            in = stc_test::PayloadOf(&input);
        }
        HwConfigOutputParams output;
        std::vector<ProposedEntry> proposed;
        for (int n = in_.Range(7); n > 0; --n) {
            output.payload.push_back(MakeEntry(in_, &proposed));
        }
        ScPayload out = stc_test::PayloadOf(&output);
        if (in_.Range(16) == 15) {
            out.payload = 0;
        }
        const bool no_output = in_.Range(16) == 15;
        const int result =
            Call([&] { return c_.ProcessOps(op, in, no_output ? nullptr : &out); }, true);
        if (result == 0) {
            CheckOutput(output, proposed);
        }
    }

    void CheckOutput(const HwConfigOutputParams &output,
                     const std::vector<ProposedEntry> &proposed) {
        STC_FUZZ_CHECK(output.payload.size() >= proposed.size(), "an entry was removed");
        for (size_t i = 0; i < output.payload.size(); ++i) {
            const HwConfigPayload &entry = output.payload[i];
            if (i < proposed.size()) {
                CheckKept(entry, proposed[i]);
            }
            if (entry.hw_asset == kPbGamut && entry.hw_payload) {
                CheckGamut(*stc_test::RecordOf<GamutConfig>(entry));
            }
            if (entry.hw_asset == kPbGC && entry.hw_payload) {
                CheckGamma(*stc_test::RecordOf<GammaPostBlendConfig>(entry));
            }
        }
    }

    static void CheckKept(const HwConfigPayload &entry, const ProposedEntry &was) {
        STC_FUZZ_CHECK(entry.hw_asset == was.block, "entry %s renamed %s", was.block.c_str(),
                       entry.hw_asset.c_str());
        const bool edited = std::find(std::begin(kBlocks), std::begin(kBlocks) + kEditedBlocks,
                                      was.block) != std::begin(kBlocks) + kEditedBlocks;
        if (edited) {
            STC_FUZZ_CHECK(!was.record || entry.hw_payload == was.record, "%s record replaced",
                           was.block.c_str());
            return;
        }
        STC_FUZZ_CHECK(entry.hw_payload == was.record, "%s record replaced", was.block.c_str());
        if (was.record) {
            std::vector<uint8_t> now;
            stc_fuzz::AddBytes(now, *static_cast<HostBlob *>(entry.hw_payload.get()));
            STC_FUZZ_CHECK(stc_fuzz::SameBytes(now, was.bytes), "%s record changed",
                           was.block.c_str());
        }
    }

    // An enabled entry holding a calibrated table holds all of it, header included. The stage
    // copies the table of the mode's gamut whenever a LUT is latched, also one whose file was
    // refused or never read (its header still says num 0): that is the plug-in's defined
    // behaviour, so what counts as a fault here is a torn copy or a header of another size.
    void CheckGamut(const GamutConfig &config) {
        if (!config.enabled) {
            return;
        }
        for (const lut3d_info *table :
             {&A::calibrated_lut3d_srgb_(c_), &A::calibrated_lut3d_p3_(c_)}) {
            if (std::memcmp(config.entries, table->entries, sizeof(table->entries)) != 0) {
                continue;
            }
            STC_FUZZ_CHECK(std::memcmp(&config.flags, table, sizeof(*table)) == 0,
                           "enabled gamut entry with a torn calibrated table");
            STC_FUZZ_CHECK(config.num == 0 || config.num == kGamutEntries,
                           "enabled gamut entry with a calibrated table of %u entries", config.num);
        }
    }

    // A curve the plug-in wrote (anything but the host's code) is a full 10-bit curve.
    static void CheckGamma(const GammaPostBlendConfig &gc) {
        for (const std::vector<uint32_t> *channel : {&gc.r, &gc.g, &gc.b}) {
            if (std::all_of(channel->begin(), channel->end(),
                            [](uint32_t v) { return v == kHostCode; })) {
                continue;
            }
            STC_FUZZ_CHECK(gc.enabled, "a written gamma curve in a disabled block");
            STC_FUZZ_CHECK(
                std::any_of(channel->begin(), channel->end(), [](uint32_t v) { return v != 0; }),
                "an enabled gamma curve of %zu zeros", channel->size());
            const uint32_t top = *std::max_element(channel->begin(), channel->end());
            STC_FUZZ_CHECK(top <= 1023, "an enabled gamma curve holds code %u", top);
        }
    }

    ByteReader &in_;
    std::string panel_;
    StcZuvaColor c_;
};

}  // namespace
}  // namespace snapdragoncolor

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    stc_fuzz::StartFifoWatchdog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    stc_fuzz::ByteReader in(data, size);
    const std::string panel = stc_fuzz::Pick(in, snapdragoncolor::kPanels);
    stc_fuzz::ResetDevice(panel, in.Bool());
    stc_fuzz::Log().Clear();
    auto session = std::make_unique<snapdragoncolor::HostSession>(in, panel);
    for (int i = 0; i < snapdragoncolor::kMaxCalls && in.Remaining() > 0; ++i) {
        session->Step();
    }
    return 0;
}
