// A session file: the host's calls in order, read and checked completely before anything runs.
#ifndef STC_TOOLS_STC_HOST_SESSION_H_
#define STC_TOOLS_STC_HOST_SESSION_H_

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"

namespace stc_host {

// A mistake in the session file, with the JSON path of the value at fault.
class SessionError : public std::runtime_error {
  public:
    SessionError(const std::string &json_path, const std::string &message)
        : std::runtime_error(message), json_path_(json_path) {}
    const std::string &json_path() const { return json_path_; }

  private:
    std::string json_path_;
};

// What record a block carries; kEmpty for blocks whose records only the host reads.
enum class BlockContent { kEmpty, kPcc, kGamut, kGamma, kPa, kDe, kIgc, kDither };

// The record kind of a host block name; nullopt for a name the host does not define.
std::optional<BlockContent> BlockContentOf(const std::string &block);

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
};

struct Session {
    std::optional<std::string> panel;
    std::vector<Call> calls;
};

// Reads and checks a session; throws SessionError (with the JSON path) or std::runtime_error.
Session LoadSession(const std::string &path);

// Item word of one item name ("SATURATION") or raw word ("0x4000000", "16").
std::optional<uint32_t> ParseItem(const std::string &item);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_SESSION_H_
