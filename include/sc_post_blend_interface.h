// Records, enumerations and constants shared with the display HAL's colour framework (the host).
//
// The host passes these records across the library boundary by address, and several of them
// embed std::string, std::vector and std::shared_ptr. The plug-in must therefore be built against
// the host's own standard library (libc++) so that every offset below matches byte for byte; the
// static_asserts turn a build against any other layout into a compile error.
#ifndef STC_INCLUDE_SC_POST_BLEND_INTERFACE_H_
#define STC_INCLUDE_SC_POST_BLEND_INTERFACE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace snapdragoncolor {

// Processing operations of ProcessOps.
enum ScOps : uint32_t {
    kScModeRenderIntent = 0,
    kScModeSwAssets = 1,
    kScOpsMax = 0xff,
};

// Property codes of SetProperty and GetProperty.
enum ScProperty : uint32_t {
    kInvalid = 0,
    kModeList = 1,
    kNeedsUpdate = 2,
    kModeRenderInputParams = 3,
    kHwConfigPayloadParam = 4,
    kSetColorTransform = 5,
    kPostBlendGamutHwConfig = 6,
    kPostBlendGammaHwConfig = 7,
    kPostBlendInverseGammaHwConfig = 8,
    kSupportToneMap = 9,
    kGetNumRenderIntents = 10,
    kGetRenderIntents = 11,
    kNotifyDisplayCalibrationMode = 12,
    kSetLtmPccConfig = 13,
    kGetGlobalDitherHwConfig = 14,
    kDisplayIntf = 15,
    kPropertyMax = 511,
    kCustomPropertyStart = 512,
    kPrivateDimmingSupport = 513,
    kPrivateSetDimmingPcc = 514,
    kZuvaColorSupport = 515,
    kSetZuvaColor = 516,
    kGetZuvaColor = 517,
    kCustomPropertyEnd = 1024,
};

// One typed argument or result of SetProperty, GetProperty and ProcessOps.
struct ScPayload {
    uint32_t version = sizeof(ScPayload);
    uint32_t len = 0;
    ScProperty prop = kInvalid;
    uint64_t payload = 0;  // address of the record; 0 means none
};

struct ColorMode {
    uint32_t gamut = 0;
    uint32_t gamma = 0;
    uint32_t intent = 0;
    std::vector<std::string> hw_assets;
    std::string name;
};

struct ColorModeList {
    uint32_t version = sizeof(ColorModeList);
    uint32_t reserved = 0;
    std::vector<ColorMode> list;
};

// Input of both processing operations. Only color_mode, meta and id are read by the plug-in; the
// rest belongs to the host and keeps the host's offsets.
struct ModeRenderInputParams {
    uint32_t version = sizeof(ModeRenderInputParams);
    uint8_t host_head[28] = {};
    ColorMode color_mode;
    bool meta = false;
    uint8_t host_body[2807] = {};
    uint32_t id = 0;
    uint32_t host_tail = 0;
};

// One entry of HwConfigOutputParams::payload: a hardware block and its configuration record.
struct HwConfigPayload {
    uint32_t version = sizeof(HwConfigPayload);
    std::string hw_asset;
    std::shared_ptr<void> hw_payload;
    uint32_t hw_payload_len = 0;
};

// Output of both processing operations: the list of blocks the host is about to program.
struct HwConfigOutputParams {
    uint32_t version = sizeof(HwConfigOutputParams);
    uint32_t reserved = 0;
    std::vector<HwConfigPayload> payload;
};

struct PccCoeff {
    double c = 0, r = 0, g = 0, b = 0;
    double rr = 0, gg = 0, bb = 0;
    double rg = 0, gb = 0, rb = 0;
    double rgb = 0;
};

struct PccConfig {
    uint32_t version = sizeof(PccConfig);
    bool enabled = false;
    uint64_t host_word = 0;
    PccCoeff red;
    PccCoeff green;
    PccCoeff blue;
};

struct GamutLutEntry {
    uint32_t in_r, in_g, in_b;
    uint32_t out_r, out_g, out_b;
};

constexpr uint32_t kGamutGridPoints = 17;
constexpr uint32_t kGamutEntries = kGamutGridPoints * kGamutGridPoints * kGamutGridPoints;

struct GamutConfig {
    uint32_t version = sizeof(GamutConfig);
    bool enabled = false;
    uint32_t flags = 0;
    uint32_t lut3d_id = 0;
    uint32_t uniform = 0;
    uint32_t num = 0;
    GamutLutEntry entries[kGamutEntries] = {};
};

constexpr size_t kGammaCurveReserve = 256;

struct GammaPostBlendConfig {
    GammaPostBlendConfig() {
        r.reserve(kGammaCurveReserve);
        g.reserve(kGammaCurveReserve);
        b.reserve(kGammaCurveReserve);
    }
    uint32_t version = sizeof(GammaPostBlendConfig);
    bool enabled = false;
    std::vector<uint32_t> r;
    std::vector<uint32_t> g;
    std::vector<uint32_t> b;
    bool dither_en = false;
    uint32_t dither_strength = 0;
};

struct PaGlobalAdj {
    uint32_t flags = 0;
    int32_t hue = 0;
    float saturation = 0;
    float value = 0;
    float contrast = 0;
    float host_field = 0;
};

struct PaMemColor {
    uint32_t type = 0;
    uint32_t flag = 0;
    int32_t hue = 0;
    float saturation = 0;
    float value = 0;
    uint8_t host_data[64] = {};
};

struct PaConfig {
    uint32_t version = sizeof(PaConfig);
    bool enabled = false;
    uint32_t enable_flags = 0;
    uint32_t host_word = 0;
    PaGlobalAdj global;
    PaMemColor skin;
    PaMemColor sky;
    PaMemColor foliage;
    uint8_t host_data[15460] = {};
};

struct DETuningConfig {
    uint32_t version = sizeof(DETuningConfig);
    bool enabled = false;
    uint32_t host_word = 0;
    uint32_t flags = 0;
    uint32_t sharp_factor = 0;
    uint16_t thr_quiet = 0;
    uint16_t thr_dieout = 0;
    uint16_t thr_low = 0;
    uint16_t thr_high = 0;
    uint16_t clip = 0;
    uint32_t quality = 0;
    uint32_t content_type = 0;
    uint32_t de_blend = 0;
    uint32_t de_lpf_h = 0;
    uint32_t de_lpf_m = 0;
    uint32_t de_lpf_l = 0;
    uint32_t host_field = 0;
};

// Capability report of the post-blend gamut, gamma and inverse-gamma blocks; the gamut form names
// its two fields differently.
struct PostBlendHwCaps {
    uint32_t version = sizeof(PostBlendHwCaps);
    union {
        int32_t num_of_entries;
        int32_t num_of_grid_entires;
    };
    union {
        uint32_t entries_width;
        uint32_t grid_entries_width;
    };
    uint8_t host_data[28] = {};
};

// 4 x 4 matrix stored four per row: m[0..3] is the first row.
struct ColorTransformMatrix {
    uint32_t version = sizeof(ColorTransformMatrix);
    float m[16] = {};
};

// The fourteen picture-quality levels of the colour property.
struct ZuvaColorLevels {
    int32_t hue = 0;
    int32_t saturation = 0;
    int32_t value = 0;
    int32_t contrast = 0;
    int32_t sharpness = 0;
    int32_t skin_hue = 0;
    int32_t skin_sat = 0;
    int32_t skin_val = 0;
    int32_t sky_hue = 0;
    int32_t sky_sat = 0;
    int32_t sky_val = 0;
    int32_t foliage_hue = 0;
    int32_t foliage_sat = 0;
    int32_t foliage_val = 0;
};

// Payload of kSetZuvaColor.
struct ZuvaColorParams {
    uint32_t scene_id = 0;
    uint32_t value = 0;
    ZuvaColorLevels *levels = nullptr;
    uint32_t has_levels = 0;
    uint32_t reserved = 0;
};

// The host's abstract plug-in; slot order: destructor, deleting destructor, Init, DeInit,
// SetProperty, GetProperty, ProcessOps.
class ScPostBlendInterface {
  public:
    virtual ~ScPostBlendInterface() {}
    virtual int Init(const std::string &panel_name) = 0;
    virtual int DeInit() = 0;
    virtual int SetProperty(const ScPayload &payload) = 0;
    virtual int GetProperty(ScPayload *payload) = 0;
    virtual int ProcessOps(ScOps op, const ScPayload &input, ScPayload *output) = 0;
};

// Hardware block names; HwConfigPayload::hw_asset is compared with them by full equality.
static const std::string kPbGamut = "PostBlendGamut";
static const std::string kPbIGC = "PostBlendIGC";
static const std::string kPbGC = "PostBlendGC";
static const std::string kPbCWBDither = "PostBlendCWBDither";
static const std::string kPbHdrBlob = "PostBlendHdrBlob";
static const std::string kHwCapIgcDither = "HwCapIgcDither";
static const std::string kPbPCC = "PostBlendPCC";
static const std::string kPbPa = "PostBlendPa";
static const std::string kPbDither = "PostBlendDither";
static const std::string kPbPaDither = "PostBlendPaDither";
static const std::string kPbMixerGc = "PostBlendMixerGc";
static const std::string kPbDE = "PostBlendDE";
static const std::string kPbGameBlob = "PostBlendGameBlob";

// Colour-mode attribute keys of the host; the plug-in does not read them.
static const std::string kDynamicRangeAttribute = "DynamicRange";
static const std::string kColorGamutAttribute = "ColorGamut";
static const std::string kPictureQualityAttribute = "PictureQuality";
static const std::string kGammaTransferAttribute = "GammaTransfer";
static const std::string kRenderIntentAttribute = "RenderIntent";

// Layouts of the platform's standard library that the records rely on.
static_assert(sizeof(std::string) == 24, "std::string must have the host's 24-byte layout");
static_assert(sizeof(std::vector<int>) == 24, "std::vector must have the host's 24-byte layout");
static_assert(sizeof(std::shared_ptr<void>) == 16, "std::shared_ptr must be 16 bytes");

static_assert(sizeof(ScOps) == 4 && sizeof(ScProperty) == 4, "32-bit enumerations");

static_assert(sizeof(ScPayload) == 24, "ScPayload size");
static_assert(offsetof(ScPayload, len) == 4, "ScPayload::len");
static_assert(offsetof(ScPayload, prop) == 8, "ScPayload::prop");
static_assert(offsetof(ScPayload, payload) == 16, "ScPayload::payload");

static_assert(offsetof(ColorMode, gamma) == 4, "ColorMode::gamma");
static_assert(offsetof(ColorMode, intent) == 8, "ColorMode::intent");
static_assert(offsetof(ColorMode, hw_assets) == 16, "ColorMode::hw_assets");
static_assert(offsetof(ColorMode, name) == 40, "ColorMode::name");
static_assert(sizeof(ColorMode) == 64, "ColorMode size");

static_assert(offsetof(ColorModeList, list) == 8, "ColorModeList::list");
static_assert(sizeof(ColorModeList) == 32, "ColorModeList size");

static_assert(offsetof(ModeRenderInputParams, color_mode) == 32,
              "ModeRenderInputParams::color_mode");
static_assert(offsetof(ModeRenderInputParams, meta) == 96, "ModeRenderInputParams::meta");
static_assert(offsetof(ModeRenderInputParams, id) == 2904, "ModeRenderInputParams::id");

static_assert(offsetof(HwConfigOutputParams, payload) == 8, "HwConfigOutputParams::payload");
static_assert(sizeof(HwConfigOutputParams) == 32, "HwConfigOutputParams size");

static_assert(offsetof(HwConfigPayload, hw_asset) == 8, "HwConfigPayload::hw_asset");
static_assert(offsetof(HwConfigPayload, hw_payload) == 32, "HwConfigPayload::hw_payload");
static_assert(offsetof(HwConfigPayload, hw_payload_len) == 48, "HwConfigPayload::hw_payload_len");
static_assert(sizeof(HwConfigPayload) == 56, "HwConfigPayload size");

static_assert(sizeof(PccCoeff) == 88, "PccCoeff size");
static_assert(offsetof(PccCoeff, rgb) == 80, "PccCoeff::rgb");
static_assert(offsetof(PccConfig, enabled) == 4, "PccConfig::enabled");
static_assert(offsetof(PccConfig, host_word) == 8, "PccConfig host word");
static_assert(offsetof(PccConfig, red) == 16, "PccConfig::red");
static_assert(offsetof(PccConfig, green) == 104, "PccConfig::green");
static_assert(offsetof(PccConfig, blue) == 192, "PccConfig::blue");
static_assert(sizeof(PccConfig) == 280, "PccConfig size");

static_assert(sizeof(GamutLutEntry) == 24, "GamutLutEntry size");
static_assert(offsetof(GamutConfig, enabled) == 4, "GamutConfig::enabled");
static_assert(offsetof(GamutConfig, flags) == 8, "GamutConfig::flags");
static_assert(offsetof(GamutConfig, lut3d_id) == 12, "GamutConfig::lut3d_id");
static_assert(offsetof(GamutConfig, uniform) == 16, "GamutConfig::uniform");
static_assert(offsetof(GamutConfig, num) == 20, "GamutConfig::num");
static_assert(offsetof(GamutConfig, entries) == 24, "GamutConfig::entries");
static_assert(sizeof(GamutConfig) == 117936, "GamutConfig size");

static_assert(offsetof(GammaPostBlendConfig, enabled) == 4, "GammaPostBlendConfig::enabled");
static_assert(offsetof(GammaPostBlendConfig, r) == 8, "GammaPostBlendConfig::r");
static_assert(offsetof(GammaPostBlendConfig, g) == 32, "GammaPostBlendConfig::g");
static_assert(offsetof(GammaPostBlendConfig, b) == 56, "GammaPostBlendConfig::b");
static_assert(offsetof(GammaPostBlendConfig, dither_en) == 80, "GammaPostBlendConfig::dither_en");
static_assert(offsetof(GammaPostBlendConfig, dither_strength) == 84,
              "GammaPostBlendConfig::dither_strength");
static_assert(sizeof(GammaPostBlendConfig) == 88, "GammaPostBlendConfig size");

static_assert(offsetof(PaGlobalAdj, hue) == 4, "PaGlobalAdj::hue");
static_assert(offsetof(PaGlobalAdj, saturation) == 8, "PaGlobalAdj::saturation");
static_assert(offsetof(PaGlobalAdj, value) == 12, "PaGlobalAdj::value");
static_assert(offsetof(PaGlobalAdj, contrast) == 16, "PaGlobalAdj::contrast");
static_assert(offsetof(PaMemColor, flag) == 4, "PaMemColor::flag");
static_assert(offsetof(PaMemColor, hue) == 8, "PaMemColor::hue");
static_assert(offsetof(PaMemColor, saturation) == 12, "PaMemColor::saturation");
static_assert(offsetof(PaMemColor, value) == 16, "PaMemColor::value");
static_assert(sizeof(PaMemColor) == 84, "PaMemColor size");
static_assert(offsetof(PaConfig, enabled) == 4, "PaConfig::enabled");
static_assert(offsetof(PaConfig, enable_flags) == 8, "PaConfig::enable_flags");
static_assert(offsetof(PaConfig, global) == 16, "PaConfig::global");
static_assert(offsetof(PaConfig, skin) == 40, "PaConfig::skin");
static_assert(offsetof(PaConfig, sky) == 124, "PaConfig::sky");
static_assert(offsetof(PaConfig, foliage) == 208, "PaConfig::foliage");
static_assert(sizeof(PaConfig) == 15752, "PaConfig size");

static_assert(offsetof(DETuningConfig, enabled) == 4, "DETuningConfig::enabled");
static_assert(offsetof(DETuningConfig, flags) == 12, "DETuningConfig::flags");
static_assert(offsetof(DETuningConfig, sharp_factor) == 16, "DETuningConfig::sharp_factor");
static_assert(offsetof(DETuningConfig, thr_quiet) == 20, "DETuningConfig::thr_quiet");
static_assert(offsetof(DETuningConfig, thr_dieout) == 22, "DETuningConfig::thr_dieout");
static_assert(offsetof(DETuningConfig, thr_low) == 24, "DETuningConfig::thr_low");
static_assert(offsetof(DETuningConfig, thr_high) == 26, "DETuningConfig::thr_high");
static_assert(offsetof(DETuningConfig, clip) == 28, "DETuningConfig::clip");
static_assert(offsetof(DETuningConfig, quality) == 32, "DETuningConfig::quality");
static_assert(offsetof(DETuningConfig, content_type) == 36, "DETuningConfig::content_type");
static_assert(offsetof(DETuningConfig, de_blend) == 40, "DETuningConfig::de_blend");
static_assert(offsetof(DETuningConfig, de_lpf_h) == 44, "DETuningConfig::de_lpf_h");
static_assert(offsetof(DETuningConfig, de_lpf_m) == 48, "DETuningConfig::de_lpf_m");
static_assert(offsetof(DETuningConfig, de_lpf_l) == 52, "DETuningConfig::de_lpf_l");
static_assert(sizeof(DETuningConfig) == 60, "DETuningConfig size");

static_assert(offsetof(PostBlendHwCaps, num_of_entries) == 4, "PostBlendHwCaps::num_of_entries");
static_assert(offsetof(PostBlendHwCaps, entries_width) == 8, "PostBlendHwCaps::entries_width");
static_assert(sizeof(PostBlendHwCaps) == 40, "PostBlendHwCaps size");

static_assert(offsetof(ColorTransformMatrix, m) == 4, "ColorTransformMatrix::m");
static_assert(sizeof(ColorTransformMatrix) == 68, "ColorTransformMatrix size");

static_assert(sizeof(ZuvaColorLevels) == 56, "ZuvaColorLevels size");
static_assert(offsetof(ZuvaColorParams, value) == 4, "ZuvaColorParams::value");
static_assert(offsetof(ZuvaColorParams, levels) == 8, "ZuvaColorParams::levels");
static_assert(offsetof(ZuvaColorParams, has_levels) == 16, "ZuvaColorParams::has_levels");
static_assert(sizeof(ZuvaColorParams) == 24, "ZuvaColorParams size");

}  // namespace snapdragoncolor

#endif  // STC_INCLUDE_SC_POST_BLEND_INTERFACE_H_
