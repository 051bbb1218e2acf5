// A session file: the host's calls in order, read and checked completely before anything runs.
#ifndef STC_TOOLS_STC_HOST_SESSION_SESSION_H_
#define STC_TOOLS_STC_HOST_SESSION_SESSION_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/stc-host/records/host_records.h"
#include "tools/stc-host/session/json_input.h"

namespace stc_host {

// The fields an operation's output must hold: in every entry of `block`, the value at `field`
// (a path into the record's JSON form, such as "red.r" or "entries[4912]") equals `value`.
struct BlockExpectation {
    std::string block;
    std::string field;
    Json value;
};

// What a call must do; an empty part asks nothing.
struct Expectation {
    std::optional<int> result;
    std::vector<BlockExpectation> blocks;
    std::vector<std::string> log;  // texts that lines logged during the call must contain
};

// One block of the host's proposed configuration list.
struct BlockProposal {
    std::string name;
    BlockContent content = BlockContent::kEmpty;
    bool enabled = true;
    uint32_t curve_length = 1024;  // gamma: identity curves of this length
    uint32_t entries = 0;          // inverse gamma: number of entries
    snapdragoncolor::PaConfig pa;  // picture adjustment fields
    snapdragoncolor::DETuningConfig de;
    double pcc_scale = 1.0;  // PCC: diagonal of the host's matrix
};

// The session's names of the enhancement levels a zuva_color call may carry.
struct LevelField {
    const char *name;
    int32_t snapdragoncolor::ZuvaColorLevels::*field;
};

inline constexpr LevelField kLevelFields[] = {
    {"hue", &snapdragoncolor::ZuvaColorLevels::hue},
    {"saturation", &snapdragoncolor::ZuvaColorLevels::saturation},
    {"value", &snapdragoncolor::ZuvaColorLevels::value},
    {"contrast", &snapdragoncolor::ZuvaColorLevels::contrast},
    {"sharpness", &snapdragoncolor::ZuvaColorLevels::sharpness},
    {"skin_hue", &snapdragoncolor::ZuvaColorLevels::skin_hue},
    {"skin_sat", &snapdragoncolor::ZuvaColorLevels::skin_sat},
    {"skin_val", &snapdragoncolor::ZuvaColorLevels::skin_val},
    {"sky_hue", &snapdragoncolor::ZuvaColorLevels::sky_hue},
    {"sky_sat", &snapdragoncolor::ZuvaColorLevels::sky_sat},
    {"sky_val", &snapdragoncolor::ZuvaColorLevels::sky_val},
    {"foliage_hue", &snapdragoncolor::ZuvaColorLevels::foliage_hue},
    {"foliage_sat", &snapdragoncolor::ZuvaColorLevels::foliage_sat},
    {"foliage_val", &snapdragoncolor::ZuvaColorLevels::foliage_val},
};

enum class CallKind {
    kInit,
    kDeInit,
    kZuvaColor,
    kColorTransform,
    kDimming,
    kHwCaps,
    kHwConfigPayload,
    kGetNeedsUpdate,
    kGetModeList,
    kGetSupport,
    kRenderIntent,
    kSwAssets,
};

struct Call {
    CallKind kind;
    std::string json_path;
    std::string label;  // the call's name as written
    // init
    std::optional<std::string> panel;
    // zuva_color
    uint32_t scene_id = 0;
    uint32_t value = 0;
    std::optional<snapdragoncolor::ZuvaColorLevels> levels;
    // color_transform
    float matrix[16] = {};
    // dimming
    double factor = 1.0;
    // hw_caps and get
    snapdragoncolor::ScProperty property = snapdragoncolor::kInvalid;
    int32_t caps_entries = 0;
    uint32_t caps_width = 0;
    // operations
    bool has_input = true;
    bool has_output = true;
    snapdragoncolor::ColorMode mode;
    uint32_t mode_id = 0;
    bool meta = false;
    std::vector<BlockProposal> blocks;
    Expectation expect;
};

struct Session {
    std::optional<std::string> panel;
    std::vector<Call> calls;
};

// Reads and checks a session ("-": standard input); throws SessionError (with the JSON path) or
// std::runtime_error.
Session LoadSession(const std::string &path);

// The JSON value at a field path such as "red.r" or "entries[12][3]", or null.
const Json *FieldAt(const Json &record, const std::string &field);

// Item word of one item name ("SATURATION") or raw word ("0x4000000", "16").
std::optional<uint32_t> ParseItem(const std::string &item);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_SESSION_SESSION_H_
