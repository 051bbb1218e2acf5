#include "tools/stc-host/runner.h"

#include <dlfcn.h>

#include <cstdio>

#include "picture/scene_items.h"
#include "tools/stc-host/host_blocks.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

template <typename T>
ScPayload PayloadOf(T *record, uint32_t len, ScProperty prop = kInvalid) {
    ScPayload payload;
    payload.len = len;
    payload.prop = prop;
    payload.payload = reinterpret_cast<uint64_t>(record);
    return payload;
}

std::string ItemNames(uint32_t scene_id) {
    std::string names;
    for (const SceneItemName &item : kSceneItemNames) {
        if (scene_id & item.mask) {
            names += (names.empty() ? "" : " ") + std::string(item.name);
        }
    }
    return names;
}

std::string Describe(const Call &call) {
    char text[256] = "";
    switch (call.kind) {
        case CallKind::kZuvaColor: {
            std::snprintf(text, sizeof(text), "scene=0x%x (%s) value=%u%s", call.scene_id,
                          ItemNames(call.scene_id).c_str(), call.value,
                          call.levels ? " with levels" : "");
            break;
        }
        case CallKind::kColorTransform:
            std::snprintf(text, sizeof(text), "rows [%g %g %g] [%g %g %g] [%g %g %g]",
                          call.matrix[0], call.matrix[1], call.matrix[2], call.matrix[4],
                          call.matrix[5], call.matrix[6], call.matrix[8], call.matrix[9],
                          call.matrix[10]);
            break;
        case CallKind::kDimming:
            std::snprintf(text, sizeof(text), "factor %g", call.factor);
            break;
        case CallKind::kHwCaps:
            std::snprintf(text, sizeof(text), "entries %d width %u", call.caps_entries,
                          call.caps_width);
            break;
        case CallKind::kRenderIntent:
        case CallKind::kSwAssets:
            if (call.has_input) {
                std::snprintf(text, sizeof(text), "mode gamut=%u gamma=%u intent=%u id=%u",
                              call.mode.gamut, call.mode.gamma, call.mode.intent, call.mode_id);
            } else {
                std::snprintf(text, sizeof(text), "no input");
            }
            break;
        default:
            break;
    }
    return text;
}

std::string ModeListText(const ColorModeList &modes) {
    std::string text;
    for (const ColorMode &mode : modes.list) {
        char line[160];
        std::snprintf(line, sizeof(line), "%s%s(gamut=%u gamma=%u intent=0x%x)",
                      text.empty() ? "" : " ", mode.name.c_str(), mode.gamut, mode.gamma,
                      mode.intent);
        text += line;
    }
    return text.empty() ? "(no modes)" : text;
}

}  // namespace

Runner::Runner(const Options &options, const Session &session, Reporter &reporter)
    : options_(options), session_(session), reporter_(reporter) {}

Runner::~Runner() {
    plugin_.reset();  // deleted through the interface's virtual destructor, as the host does
}

bool Runner::Load(std::string *error) {
    if (!library_.Load(options_.library, options_.no_qdutils ? "" : options_.qdutils, error)) {
        return false;
    }
    plugin_ = library_.Create(error);
    return plugin_ != nullptr;
}

void Runner::Run() {
    for (size_t i = 0; i < session_.calls.size(); ++i) {
        RunCall(i, session_.calls[i]);
    }
}

std::string Runner::PanelFor(const Call &call) const {
    if (call.panel)
        return *call.panel;
    if (!options_.panel.empty())
        return options_.panel;
    if (session_.panel)
        return *session_.panel;
    return kDefaultPanel;
}

void Runner::RunCall(size_t index, const Call &call) {
    std::string what = call.kind == CallKind::kInit ? "panel " + PanelFor(call) : Describe(call);
    reporter_.Begin(index, call, what);
    std::string answer;
    int result = 0;
    switch (call.kind) {
        case CallKind::kInit:
            result = plugin_->Init(PanelFor(call));
            break;
        case CallKind::kDeInit:
            result = plugin_->DeInit();
            break;
        case CallKind::kRenderIntent:
        case CallKind::kSwAssets:
            Operation(index, call);
            return;
        default:
            result = Property(call, &answer);
            break;
    }
    reporter_.End(index, call, result, answer);
}

int Runner::Property(const Call &call, std::string *answer) {
    switch (call.kind) {
        case CallKind::kZuvaColor: {
            ZuvaColorLevels levels = call.levels.value_or(ZuvaColorLevels{});
            ZuvaColorParams params{call.scene_id, call.value, &levels, call.levels ? 1u : 0u, 0};
            return plugin_->SetProperty(PayloadOf(&params, sizeof(params), call.property));
        }
        case CallKind::kColorTransform: {
            ColorTransformMatrix matrix;
            std::copy(std::begin(call.matrix), std::end(call.matrix), matrix.m);
            return plugin_->SetProperty(PayloadOf(&matrix, sizeof(matrix), call.property));
        }
        case CallKind::kDimming: {
            double factor = call.factor;
            return plugin_->SetProperty(PayloadOf(&factor, sizeof(factor), call.property));
        }
        case CallKind::kHwCaps: {
            PostBlendHwCaps caps;
            caps.num_of_entries = call.caps_entries;
            caps.entries_width = call.caps_width;
            return plugin_->SetProperty(PayloadOf(&caps, sizeof(caps), call.property));
        }
        case CallKind::kHwConfigPayload: {
            HwConfigOutputParams list;
            for (const BlockProposal &block : call.blocks) {
                list.payload.push_back(MakeEntry(block));
            }
            return plugin_->SetProperty(PayloadOf(&list, sizeof(list), call.property));
        }
        case CallKind::kGetModeList: {
            ColorModeList modes;
            ScPayload payload = PayloadOf(&modes, sizeof(modes), call.property);
            int result = plugin_->GetProperty(&payload);
            *answer = ModeListText(modes);
            return result;
        }
        default: {  // one-byte answers
            bool flag = false;
            ScPayload payload = PayloadOf(&flag, sizeof(flag), call.property);
            int result = plugin_->GetProperty(&payload);
            *answer = flag ? "1" : "0";
            return result;
        }
    }
}

int Runner::Operation(size_t index, const Call &call) {
    auto input = std::make_unique<ModeRenderInputParams>();
    input->color_mode = call.mode;
    input->id = call.mode_id;
    input->meta = call.meta;
    HwConfigOutputParams output;
    for (const BlockProposal &block : call.blocks) {
        output.payload.push_back(MakeEntry(block));
    }
    std::vector<EntryView> proposal = stc_host::Describe(output);

    ScPayload in = call.has_input ? PayloadOf(input.get(), sizeof(*input)) : ScPayload{};
    ScPayload out = call.has_output ? PayloadOf(&output, sizeof(output)) : ScPayload{};
    ScOps op = call.kind == CallKind::kRenderIntent ? kScModeRenderIntent : kScModeSwAssets;
    int result = plugin_->ProcessOps(op, in, &out);
    reporter_.End(index, call, result, "");
    if (call.has_output) {
        reporter_.Summary(index, Compare(proposal, stc_host::Describe(output)));
    }
    return result;
}

}  // namespace stc_host
