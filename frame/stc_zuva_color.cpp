// Entry point, construction and the front doors through which the host drives the plug-in.
#include "stc_zuva_color.h"

#include <dlfcn.h>

#include <cerrno>
#include <cstring>

#include <utils/CallStack.h>

#include "frame/names.h"
#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"

using snapdragoncolor::ScPostBlendInterface;
using snapdragoncolor::StcZuvaColor;

ScPostBlendInterface *GetScPostBlendInterface(int major_version, int minor_version) {
    if (major_version == 2 && minor_version == 0) {
        auto *plugin = new StcZuvaColor();
        STC_LOGD("%s: StcZuvaColor created\n", "GetScPostBlendInterface");
        return plugin;
    }
    STC_LOGE("%s: Invalid major_version %d minor_version %d\n", "GetScPostBlendInterface",
             major_version, minor_version);
    return nullptr;
}

namespace snapdragoncolor {

namespace {

constexpr uint32_t kScPayloadVersion = sizeof(ScPayload);
constexpr int kBlockAbsent = 5;

// The blocks of the diagnostic summary, in the order the summary prints them.
enum SummaryBlock { kSumPcc, kSumPa, kSumDither, kSumGc, kSumIgc, kSumGamut, kSumDe, kSumCount };

const std::string *const kSummaryBlockNames[kSumCount] = {
    &kPbPCC, &kPbPa, &kPbDither, &kPbGC, &kPbIGC, &kPbGamut, &kPbDE,
};

// Every block record carries a byte `enabled` at offset 4; the inverse-gamma record has its
// number of entries there instead.
int SummaryValue(SummaryBlock block, const void *record) {
    if (!record) {
        return kBlockAbsent;
    }
    const auto *bytes = static_cast<const uint8_t *>(record);
    if (block == kSumIgc) {
        uint32_t count;
        std::memcpy(&count, bytes + 4, sizeof(count));
        return static_cast<int>(count);
    }
    return bytes[4];
}

}  // namespace

StcZuvaColor::StcZuvaColor() {
    set_property_map_[kPostBlendInverseGammaHwConfig] = &StcZuvaColor::SetPostBlendInvGammaConfig;
    set_property_map_[kPostBlendGammaHwConfig] = &StcZuvaColor::SetPostBlendGammaConfig;
    set_property_map_[kPostBlendGamutHwConfig] = &StcZuvaColor::SetPostBlendGamutConfig;
    set_property_map_[kSetColorTransform] = &StcZuvaColor::SetColorTransform;
    set_property_map_[kPrivateSetDimmingPcc] = &StcZuvaColor::SetDimmingPcc;
    set_property_map_[kHwConfigPayloadParam] = &StcZuvaColor::SetHwConfigPayloadParam;
    set_property_map_[kSetZuvaColor] = &StcZuvaColor::SetZuvaColor;

    get_property_map_[kModeList] = &StcZuvaColor::GetModeList;
    get_property_map_[kNeedsUpdate] = &StcZuvaColor::GetNeedsUpdate;
    get_property_map_[kSupportToneMap] = &StcZuvaColor::GetSupportTonemap;
    get_property_map_[kPrivateDimmingSupport] = &StcZuvaColor::GetDimmingSupport;
    get_property_map_[kHwConfigPayloadParam] = &StcZuvaColor::GetHwConfigPayloadParamSupprt;

    ops_map_[kScModeRenderIntent] = &StcZuvaColor::ProcessModeRenderIntent;
    ops_map_[kScModeSwAssets] = &StcZuvaColor::ProcessModeSwAssets;
}

StcZuvaColor::~StcZuvaColor() = default;

int StcZuvaColor::SetProperty(const ScPayload &payload) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!init_done_ || payload.version != kScPayloadVersion) {
        return -EINVAL;
    }
    STC_LOGD("%s: SetProperty %d(%s) gamut(%d %d)\n", "SetProperty", payload.prop,
             ScPropertyName(payload.prop), cali_gamut_, active_color_mode_.gamut);
    auto it = set_property_map_.find(payload.prop);
    if (it == set_property_map_.end()) {
        return -EINVAL;
    }
    return (this->*(it->second))(payload);
}

int StcZuvaColor::GetProperty(ScPayload *payload) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!payload || !init_done_ || payload->version != kScPayloadVersion) {
        return -EINVAL;
    }
    // The host polls kNeedsUpdate on every frame; logging it would flood the log.
    if (payload->prop != kNeedsUpdate) {
        STC_LOGD("%s: GetProperty %d\n", "GetProperty", payload->prop);
    }
    auto it = get_property_map_.find(payload->prop);
    if (it == get_property_map_.end()) {
        return -EINVAL;
    }
    return (this->*(it->second))(payload);
}

int StcZuvaColor::ProcessOps(ScOps op, const ScPayload &input, ScPayload *output) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!output || !init_done_) {
        STC_LOGE("%s: Invalid params init_done_ %d output %pK\n", "ProcessOps", init_done_,
                 static_cast<void *>(output));
        return -EINVAL;
    }
    auto it = ops_map_.find(op);
    if (it == ops_map_.end()) {
        STC_LOGE("%s: Invalid ops %d\n", "ProcessOps", op);
        return -EINVAL;
    }
    curr_scene_val_ = UINT32_MAX;
    ++process_cnt_;

    auto *params = RecordAt<ModeRenderInputParams>(input);
    LogColorModeChange(op, params);
    if (pq_update_pending_ || (de_update_pending_ && (curr_scene_id_ & kSceneSharpness))) {
        LogOutputSummary(op, params, RecordAt<HwConfigOutputParams>(*output));
    }
    return (this->*(it->second))(input, output);
}

void StcZuvaColor::LogColorModeChange(ScOps op, const ModeRenderInputParams *params) {
    if (!params) {
        return;
    }
    const ColorMode &mode = params->color_mode;
    if (mode.gamut == active_color_mode_.gamut && mode.gamma == active_color_mode_.gamma &&
        mode.intent == active_color_mode_.intent) {
        return;
    }
    STC_LOGD(
        "%s: op = %s, colormode changed: gamut(%d->%d) gamma(%d->%d) intent(%d->%d) id(%d->%d), "
        "clr_trsfm=%d, caliPccEn=%d, cali_3dlut_=%d, cali_gamut_=%d, is_primary_=%d "
        "curr_scene:%d%s%s\n",
        "ProcessOps", ScOpsName(op), active_color_mode_.gamut, mode.gamut, active_color_mode_.gamma,
        mode.gamma, active_color_mode_.intent, mode.intent, active_mode_id_,
        static_cast<int32_t>(params->id), clr_trsfm_, en_calibrated_pcc_, en_calibrated_3dlut_,
        cali_gamut_, is_primary_, curr_scene_id_, SceneIdToString(curr_scene_id_).c_str(),
        SceneIdToString(latched_scene_id_).c_str());
    active_color_mode_.gamut = mode.gamut;
    active_color_mode_.gamma = mode.gamma;
    active_color_mode_.intent = mode.intent;
    active_mode_id_ = static_cast<int32_t>(params->id);
}

// Logs the configuration as the host proposed it, before the handler amends it.
void StcZuvaColor::LogOutputSummary(ScOps op, const ModeRenderInputParams *params,
                                    const HwConfigOutputParams *output) {
    const void *records[kSumCount] = {};
    if (output) {
        for (const HwConfigPayload &entry : output->payload) {
            for (int block = 0; block < kSumCount; ++block) {
                if (entry.hw_asset == *kSummaryBlockNames[block]) {
                    records[block] = entry.hw_payload.get();
                }
            }
        }
    }
    int value[kSumCount];
    for (int block = 0; block < kSumCount; ++block) {
        value[block] = SummaryValue(static_cast<SummaryBlock>(block), records[block]);
    }
    int meta = params ? params->meta : -1;
    int gamut = params ? static_cast<int>(params->color_mode.gamut) : -1;
    int gamma = params ? static_cast<int>(params->color_mode.gamma) : -1;
    int intent = params ? static_cast<int>(params->color_mode.intent) : -1;
    STC_LOGD(
        "%s: op = %s, meta=%d, colorMode[gmt=%d, gma=%d, itt=%d], RenderIntent[pcc=%d, pa=%d, "
        "dither=%d, gc=%d IgcNum=%d gamut=%d] SwAssets[deEn=%d]  processCnt=%d, clr_trsfm=%d, "
        "caliPccEn=%d, cali_3dlut_=%d, cali_gamut_=%d, is_primary_=%d, curr_scene:%d%s%s\n",
        "ProcessOps", ScOpsName(op), meta, gamut, gamma, intent, value[kSumPcc], value[kSumPa],
        value[kSumDither], value[kSumGc], value[kSumIgc], value[kSumGamut], value[kSumDe],
        process_cnt_, clr_trsfm_, en_calibrated_pcc_, en_calibrated_3dlut_, cali_gamut_,
        is_primary_, curr_scene_id_, SceneIdToString(curr_scene_id_).c_str(),
        SceneIdToString(latched_scene_id_).c_str());
}

int StcZuvaColor::GetModeList(ScPayload *payload) {
    auto *mode_list = SizedRecord<ColorModeList>(*payload);
    if (!mode_list) {
        return -EINVAL;
    }
    if (&mode_list->list != &color_modes_) {
        mode_list->list = color_modes_;
    }
    return 0;
}

int StcZuvaColor::GetNeedsUpdate(ScPayload *payload) {
    auto *needs_update = SizedRecord<bool>(*payload);
    if (!needs_update) {
        return -EINVAL;
    }
    *needs_update = dimming_pending_ || pq_update_pending_ || de_update_pending_;
    return 0;
}

int StcZuvaColor::GetSupportTonemap(ScPayload *payload) {
    auto *supported = SizedRecord<bool>(*payload);
    if (!supported) {
        return -EINVAL;
    }
    *supported = false;
    return 0;
}

int StcZuvaColor::DeInit() {
    std::lock_guard<std::mutex> lock(mutex_);
    STC_LOGD("%s: Entering\n", "DeInit");
    // refresh_screen_ stays set on purpose: a later Init then does not reopen the library.
    if (refresh_screen_) {
        if (qdutils_handle_) {
            dlclose(qdutils_handle_);
        }
        qdutils_handle_ = nullptr;
    }
    init_done_ = false;
    return 0;
}

void printCallStack(char *tag) {
    android::CallStack stack;
    stack.update(1, -1);
    stack.log(tag, ANDROID_LOG_DEBUG, nullptr);
}

}  // namespace snapdragoncolor
