#include "tools/stc-host/run/call_args.h"

#include <fmt/format.h>

#include "picture/scene_items.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

Json ItemNames(uint32_t scene_id) {
    Json names = Json::array();
    for (const SceneItemName &item : kSceneItemNames) {
        if (scene_id & item.mask) {
            names.push_back(item.name);
        }
    }
    return names;
}

std::string Joined(const Json &names) {
    std::string text;
    for (const Json &name : names) {
        text += (text.empty() ? "" : " ") + name.get<std::string>();
    }
    return text;
}

Shown ZuvaColorArgs(const Call &call) {
    const Json items = ItemNames(call.scene_id);
    Json json = {{"scene_id", call.scene_id}, {"items", items}, {"value", call.value}};
    if (call.levels) {
        Json levels = Json::object();
        for (const LevelField &f : kLevelFields) {
            levels[f.name] = (*call.levels).*f.field;
        }
        json["levels"] = levels;
    }
    return {fmt::format("scene=0x{:x} ({}) value={}{}", call.scene_id, Joined(items), call.value,
                        call.levels ? " with levels" : ""),
            json};
}

Json Matrix(const float *m) {
    Json numbers = Json::array();
    for (size_t i = 0; i < 16; ++i) {
        numbers.push_back(FloatJson(m[i]));
    }
    return numbers;
}

Shown ColorTransformArgs(const Call &call) {
    const float *m = call.matrix;
    // The text shows the 3x3 part that the plug-in reads; the JSON gives all 16 numbers.
    return {fmt::format("rows [{} {} {}] [{} {} {}] [{} {} {}]", m[0], m[1], m[2], m[4], m[5], m[6],
                        m[8], m[9], m[10]),
            {{"matrix", Matrix(m)}}};
}

Shown OperationArgs(const Call &call) {
    if (!call.has_input) {
        return {"no input", {{"mode", nullptr}}};
    }
    const ColorMode &mode = call.mode;
    return {fmt::format("mode gamut={} gamma={} intent={} id={}", mode.gamut, mode.gamma,
                        mode.intent, call.mode_id),
            {{"mode",
              {{"gamut", mode.gamut},
               {"gamma", mode.gamma},
               {"intent", mode.intent},
               {"id", call.mode_id},
               {"meta", call.meta}}}}};
}

}  // namespace

Shown CallArgs(const Call &call, const std::string &panel) {
    switch (call.kind) {
        case CallKind::kInit:
            return {"panel " + panel, {{"panel", panel}}};
        case CallKind::kZuvaColor:
            return ZuvaColorArgs(call);
        case CallKind::kColorTransform:
            return ColorTransformArgs(call);
        case CallKind::kDimming:
            return {fmt::format("factor {}", call.factor), {{"factor", call.factor}}};
        case CallKind::kHwCaps:
            return {fmt::format("entries {} width {}", call.caps_entries, call.caps_width),
                    {{"entries", call.caps_entries}, {"width", call.caps_width}}};
        case CallKind::kRenderIntent:
        case CallKind::kSwAssets:
            return OperationArgs(call);
        default:
            return {};
    }
}

Shown ModeListAnswer(const ColorModeList &modes) {
    Shown shown{"", Json::array()};
    for (const ColorMode &mode : modes.list) {
        shown.text +=
            fmt::format("{}{}(gamut={} gamma={} intent=0x{:x})", shown.text.empty() ? "" : " ",
                        mode.name, mode.gamut, mode.gamma, mode.intent);
        shown.json.push_back({{"name", mode.name},
                              {"gamut", mode.gamut},
                              {"gamma", mode.gamma},
                              {"intent", mode.intent}});
    }
    if (shown.text.empty()) {
        shown.text = "(no modes)";
    }
    return shown;
}

Shown FlagAnswer(bool flag) {
    return {flag ? "1" : "0", flag ? 1 : 0};
}

}  // namespace stc_host
