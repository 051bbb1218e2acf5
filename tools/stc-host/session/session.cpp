#include "tools/stc-host/session/session.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include <sys/stat.h>

#include <iostream>

#include "picture/scene_items.h"
#include "tools/stc-host/records/record_json.h"

namespace stc_host {

namespace {

using json = Json;
using namespace snapdragoncolor;

template <typename Names>
std::string ListOf(const Names &names) {
    std::string text;
    for (const auto &name : names) {
        text += (text.empty() ? "" : ", ") + std::string(name);
    }
    return text;
}

// A JSON value with the path that leads to it, so every complaint can name its place.
class Node {
  public:
    Node(const json &value, std::string path) : value_(value), path_(std::move(path)) {}

    const json &value() const { return value_; }
    const std::string &path() const { return path_; }

    [[noreturn]] void Fail(const std::string &message) const { throw SessionError(path_, message); }

    const Node Key(const std::string &key) const { return Node(value_.at(key), path_ + "." + key); }
    bool Has(const std::string &key) const { return value_.contains(key); }
    bool IsNull(const std::string &key) const { return Has(key) && value_.at(key).is_null(); }

    void ExpectObject(const std::set<std::string> &allowed) const {
        if (!value_.is_object()) {
            Fail("expected an object");
        }
        for (const auto &item : value_.items()) {
            if (!allowed.count(item.key())) {
                Node(item.value(), path_ + "." + item.key())
                    .Fail("unknown key \"" + item.key() + "\"; valid keys: " + ListOf(allowed));
            }
        }
    }
    std::vector<Node> Elements() const {
        if (!value_.is_array()) {
            Fail("expected an array");
        }
        std::vector<Node> nodes;
        for (size_t i = 0; i < value_.size(); ++i) {
            nodes.emplace_back(value_[i], path_ + "[" + std::to_string(i) + "]");
        }
        return nodes;
    }
    std::string String() const {
        if (!value_.is_string()) {
            Fail("expected a string");
        }
        return value_.get<std::string>();
    }
    bool Bool() const {
        if (!value_.is_boolean()) {
            Fail("expected true or false");
        }
        return value_.get<bool>();
    }
    double Number() const {
        if (!value_.is_number()) {
            Fail("expected a number");
        }
        return value_.get<double>();
    }
    int64_t Integer(int64_t min, int64_t max) const {
        if (!value_.is_number_integer()) {
            Fail("expected an integer");
        }
        int64_t v = value_.is_number_unsigned() ? static_cast<int64_t>(value_.get<uint64_t>())
                                                : value_.get<int64_t>();
        if (v < min || v > max) {
            Fail("integer out of range " + std::to_string(min) + ".." + std::to_string(max));
        }
        return v;
    }
    // An unsigned 32-bit value, also accepted as a string such as "0x4000".
    uint32_t Word() const {
        if (value_.is_string()) {
            auto parsed = ParseItem(value_.get<std::string>());
            if (!parsed) {
                Fail("expected a number");
            }
            return *parsed;
        }
        return static_cast<uint32_t>(Integer(INT32_MIN, UINT32_MAX));
    }

  private:
    const json &value_;
    std::string path_;
};

std::string ItemNames() {
    std::vector<std::string> names;
    for (const SceneItemName &item : kSceneItemNames) {
        names.push_back(item.name);
    }
    return ListOf(names);
}

ZuvaColorLevels ParseLevels(const Node &node) {
    std::set<std::string> names;
    for (const LevelField &f : kLevelFields) {
        names.insert(f.name);
    }
    node.ExpectObject(names);
    ZuvaColorLevels levels;
    for (const LevelField &f : kLevelFields) {
        if (node.Has(f.name)) {
            levels.*f.field = static_cast<int32_t>(node.Key(f.name).Integer(INT32_MIN, INT32_MAX));
        }
    }
    return levels;
}

void ParseMemColor(const Node &node, PaMemColor &color) {
    node.ExpectObject({"hue", "saturation", "value", "flag"});
    if (node.Has("hue"))
        color.hue = static_cast<int32_t>(node.Key("hue").Integer(INT32_MIN, INT32_MAX));
    if (node.Has("saturation"))
        color.saturation = static_cast<float>(node.Key("saturation").Number());
    if (node.Has("value"))
        color.value = static_cast<float>(node.Key("value").Number());
    if (node.Has("flag"))
        color.flag = node.Key("flag").Word();
}

void ParsePa(const Node &node, PaConfig &pa) {
    if (node.Has("enable_flags"))
        pa.enable_flags = node.Key("enable_flags").Word();
    if (node.Has("hue"))
        pa.global.hue = static_cast<int32_t>(node.Key("hue").Integer(INT32_MIN, INT32_MAX));
    if (node.Has("saturation"))
        pa.global.saturation = static_cast<float>(node.Key("saturation").Number());
    if (node.Has("value"))
        pa.global.value = static_cast<float>(node.Key("value").Number());
    if (node.Has("contrast"))
        pa.global.contrast = static_cast<float>(node.Key("contrast").Number());
    const std::pair<const char *, PaMemColor PaConfig::*> colors[] = {
        {"skin", &PaConfig::skin}, {"sky", &PaConfig::sky}, {"foliage", &PaConfig::foliage}};
    for (const auto &[name, member] : colors) {
        if (node.Has(name))
            ParseMemColor(node.Key(name), pa.*member);
    }
    pa.skin.type = 0;
    pa.sky.type = 1;
    pa.foliage.type = 2;
}

BlockProposal ParseBlock(const Node &node) {
    if (node.value().is_string()) {
        return ParseBlock(Node(json{{"block", node.value()}}, node.path()));
    }
    node.ExpectObject({"block", "empty", "enabled", "length", "entries", "pcc_scale",
                       "enable_flags", "hue", "saturation", "value", "contrast", "skin", "sky",
                       "foliage", "sharp_factor"});
    if (!node.Has("block")) {
        node.Fail("missing \"block\"");
    }
    BlockProposal block;
    block.name = node.Key("block").String();
    std::optional<BlockContent> content = BlockContentOf(block.name);
    if (!content) {
        node.Key("block").Fail("unknown block name \"" + block.name +
                               "\"; valid blocks: " + ListOf(KnownBlockNames()));
    }
    if (node.Has("enabled"))
        block.enabled = node.Key("enabled").Bool();
    if (node.Has("empty") && node.Key("empty").Bool()) {
        return block;
    }
    block.content = *content;
    if (node.Has("pcc_scale"))
        block.pcc_scale = node.Key("pcc_scale").Number();
    if (node.Has("length"))
        block.curve_length = static_cast<uint32_t>(node.Key("length").Integer(0, 65536));
    if (node.Has("sharp_factor"))
        block.de.sharp_factor = node.Key("sharp_factor").Word();
    if (node.Has("entries"))
        block.entries = static_cast<uint32_t>(node.Key("entries").Integer(0, UINT32_MAX));
    if (block.content == BlockContent::kPa)
        ParsePa(node, block.pa);
    return block;
}

void ParseOperation(const Node &node, Call &call) {
    node.ExpectObject({"call", "mode", "blocks"});
    if (node.IsNull("mode")) {
        call.has_input = false;
    } else if (node.Has("mode")) {
        Node mode = node.Key("mode");
        mode.ExpectObject({"gamut", "gamma", "intent", "id", "meta", "name"});
        if (mode.Has("gamut"))
            call.mode.gamut = mode.Key("gamut").Word();
        if (mode.Has("gamma"))
            call.mode.gamma = mode.Key("gamma").Word();
        if (mode.Has("intent"))
            call.mode.intent = mode.Key("intent").Word();
        if (mode.Has("id"))
            call.mode_id = mode.Key("id").Word();
        if (mode.Has("meta"))
            call.meta = mode.Key("meta").Bool();
        if (mode.Has("name"))
            call.mode.name = mode.Key("name").String();
    }
    if (node.IsNull("blocks")) {
        call.has_output = false;
    } else if (node.Has("blocks")) {
        for (const Node &block : node.Key("blocks").Elements()) {
            call.blocks.push_back(ParseBlock(block));
        }
    }
}

void ParseZuvaColor(const Node &node, Call &call) {
    node.ExpectObject({"call", "items", "value", "levels"});
    if (!node.Has("items")) {
        node.Fail("missing \"items\"");
    }
    Node items = node.Key("items");
    std::vector<Node> list = items.value().is_array() ? items.Elements() : std::vector<Node>{items};
    for (const Node &item : list) {
        std::string text = item.String();
        auto bits = ParseItem(text);
        if (!bits) {
            item.Fail("unknown item name \"" + text + "\"; valid items: " + ItemNames() +
                      ", or a number such as \"0x4000000\"");
        }
        call.scene_id |= *bits;
    }
    if (node.Has("value"))
        call.value = node.Key("value").Word();
    if (node.Has("levels"))
        call.levels = ParseLevels(node.Key("levels"));
}

void ParseColorTransform(const Node &node, Call &call) {
    node.ExpectObject({"call", "matrix", "identity"});
    if (node.Has("identity") && node.Key("identity").Bool()) {
        call.matrix[0] = call.matrix[5] = call.matrix[10] = call.matrix[15] = 1.0f;
        return;
    }
    if (!node.Has("matrix")) {
        node.Fail("missing \"matrix\" (16 numbers, four per row) or \"identity\": true");
    }
    std::vector<Node> values = node.Key("matrix").Elements();
    if (values.size() != 16) {
        node.Key("matrix").Fail("expected 16 numbers");
    }
    for (size_t i = 0; i < 16; ++i) {
        call.matrix[i] = static_cast<float>(values[i].Number());
    }
}

void ParseHwCaps(const Node &node, Call &call) {
    node.ExpectObject({"call", "block", "entries", "width"});
    static const std::map<std::string, ScProperty> kCapsBlocks = {
        {"gamut", kPostBlendGamutHwConfig},
        {"gamma", kPostBlendGammaHwConfig},
        {"inverse_gamma", kPostBlendInverseGammaHwConfig},
    };
    std::string block = node.Has("block") ? node.Key("block").String() : "";
    auto it = kCapsBlocks.find(block);
    if (it == kCapsBlocks.end()) {
        (node.Has("block") ? node.Key("block") : node)
            .Fail("expected \"block\": gamut, gamma or inverse_gamma");
    }
    call.property = it->second;
    if (node.Has("entries"))
        call.caps_entries = static_cast<int32_t>(node.Key("entries").Integer(INT32_MIN, INT32_MAX));
    if (node.Has("width"))
        call.caps_width = node.Key("width").Word();
}

struct CallParser {
    CallKind kind;
    ScProperty property;
    std::function<void(const Node &, Call &)> parse;
};

void NoArguments(const Node &node, Call &) {
    node.ExpectObject({"call"});
}

const std::map<std::string, CallParser> &CallParsers() {
    static const std::map<std::string, CallParser> parsers = {
        {"init",
         {CallKind::kInit, kInvalid,
          [](const Node &node, Call &call) {
              node.ExpectObject({"call", "panel"});
              if (node.Has("panel"))
                  call.panel = node.Key("panel").String();
          }}},
        {"deinit", {CallKind::kDeInit, kInvalid, NoArguments}},
        {"zuva_color", {CallKind::kZuvaColor, kSetZuvaColor, ParseZuvaColor}},
        {"color_transform", {CallKind::kColorTransform, kSetColorTransform, ParseColorTransform}},
        {"dimming",
         {CallKind::kDimming, kPrivateSetDimmingPcc,
          [](const Node &node, Call &call) {
              node.ExpectObject({"call", "factor"});
              if (!node.Has("factor"))
                  node.Fail("missing \"factor\"");
              call.factor = node.Key("factor").Number();
          }}},
        {"hw_caps", {CallKind::kHwCaps, kInvalid, ParseHwCaps}},
        {"hw_config_payload",
         {CallKind::kHwConfigPayload, kHwConfigPayloadParam,
          [](const Node &node, Call &call) {
              node.ExpectObject({"call", "blocks"});
              if (node.Has("blocks")) {
                  for (const Node &b : node.Key("blocks").Elements()) {
                      call.blocks.push_back(ParseBlock(b));
                  }
              }
          }}},
        {"needs_update", {CallKind::kGetNeedsUpdate, kNeedsUpdate, NoArguments}},
        {"mode_list", {CallKind::kGetModeList, kModeList, NoArguments}},
        {"tonemap_support", {CallKind::kGetSupport, kSupportToneMap, NoArguments}},
        {"dimming_support", {CallKind::kGetSupport, kPrivateDimmingSupport, NoArguments}},
        {"hw_config_payload_support", {CallKind::kGetSupport, kHwConfigPayloadParam, NoArguments}},
        {"render_intent", {CallKind::kRenderIntent, kInvalid, ParseOperation}},
        {"sw_assets", {CallKind::kSwAssets, kInvalid, ParseOperation}},
    };
    return parsers;
}

// Flattens {"red": {"r": 1}} into ("red.r", 1); arrays and numbers are values.
void FlattenFields(const Node &node, const std::string &prefix,
                   std::vector<std::pair<std::string, Node>> *fields) {
    for (const auto &item : node.value().items()) {
        const std::string field = prefix.empty() ? item.key() : prefix + "." + item.key();
        Node value(item.value(), node.path() + "." + item.key());
        if (item.value().is_object()) {
            FlattenFields(value, field, fields);
        } else {
            fields->emplace_back(field, value);
        }
    }
}

std::vector<std::string> FieldNames(const Json &record, const std::string &prefix = "") {
    std::vector<std::string> names;
    for (const auto &item : record.items()) {
        const std::string name = prefix.empty() ? item.key() : prefix + "." + item.key();
        if (item.value().is_object()) {
            const auto inner = FieldNames(item.value(), name);
            names.insert(names.end(), inner.begin(), inner.end());
        } else {
            names.push_back(item.value().is_array() ? name + "[i]" : name);
        }
    }
    return names;
}

Expectation ParseExpectation(const Node &node, const Call &call) {
    const bool operation = call.kind == CallKind::kRenderIntent || call.kind == CallKind::kSwAssets;
    std::set<std::string> keys = {"result", "log"};
    if (operation) {
        keys.insert("blocks");
    }
    node.ExpectObject(keys);
    Expectation expect;
    if (node.Has("result")) {
        expect.result = static_cast<int>(node.Key("result").Integer(INT32_MIN, INT32_MAX));
    }
    if (node.Has("log")) {
        for (const Node &text : node.Key("log").Elements()) {
            expect.log.push_back(text.String());
        }
    }
    if (node.Has("blocks")) {
        Node blocks = node.Key("blocks");
        if (!blocks.value().is_object()) {
            blocks.Fail("expected an object of block names");
        }
        for (const auto &item : blocks.value().items()) {
            Node block(item.value(), blocks.path() + "." + item.key());
            const Json blank = BlankRecordJson(item.key());
            if (blank.is_null()) {
                block.Fail("no record of block \"" + item.key() + "\" to expect; blocks with " +
                           "records: PostBlendPCC, PostBlendGamut, PostBlendGC, PostBlendPa, " +
                           "PostBlendDE, PostBlendIGC, PostBlendDither");
            }
            if (!item.value().is_object()) {
                block.Fail("expected an object of fields");
            }
            std::vector<std::pair<std::string, Node>> fields;
            FlattenFields(block, "", &fields);
            for (const auto &[field, value] : fields) {
                if (!FieldAt(blank, field.substr(0, field.find('[')))) {
                    value.Fail("unknown field \"" + field + "\" of " + item.key() +
                               "; valid fields: " + ListOf(FieldNames(blank)));
                }
                expect.blocks.push_back({item.key(), field, value.value()});
            }
        }
    }
    return expect;
}

Call ParseCall(const Node &node) {
    if (!node.value().is_object() || !node.Has("call")) {
        node.Fail("expected an object with a \"call\"");
    }
    std::string name = node.Key("call").String();
    auto it = CallParsers().find(name);
    if (it == CallParsers().end()) {
        std::vector<std::string> calls;
        for (const auto &parser : CallParsers()) {
            calls.push_back(parser.first);
        }
        node.Key("call").Fail("unknown call \"" + name + "\"; valid calls: " + ListOf(calls));
    }
    Call call;
    call.kind = it->second.kind;
    call.property = it->second.property;
    call.json_path = node.path();
    call.label = name;
    // The expectation is every call's own; the call's parser sees the object without it.
    Json without = node.value();
    without.erase("expect");
    it->second.parse(Node(without, node.path()), call);
    if (node.Has("expect")) {
        call.expect = ParseExpectation(node.Key("expect"), call);
    }
    return call;
}

}  // namespace

std::optional<uint32_t> ParseItem(const std::string &item) {
    for (const SceneItemName &named : kSceneItemNames) {
        if (item == named.name) {
            return named.mask;
        }
    }
    if (item.empty()) {
        return std::nullopt;
    }
    errno = 0;
    char *end = nullptr;
    unsigned long long word = std::strtoull(item.c_str(), &end, 0);
    if (errno || *end || word > UINT32_MAX || item[0] == '-') {
        return std::nullopt;
    }
    return static_cast<uint32_t>(word);
}

const Json *FieldAt(const Json &record, const std::string &field) {
    const Json *at = &record;
    size_t pos = 0;
    while (pos < field.size()) {
        if (field[pos] == '[') {
            const size_t close = field.find(']', pos);
            if (close == std::string::npos || !at->is_array()) {
                return nullptr;
            }
            const size_t index = std::strtoul(field.c_str() + pos + 1, nullptr, 10);
            if (index >= at->size()) {
                return nullptr;
            }
            at = &(*at)[index];
            pos = close + 1;
            continue;
        }
        pos += field[pos] == '.';
        const size_t end = field.find_first_of(".[", pos);
        const std::string key = field.substr(pos, end - pos);
        if (!at->is_object() || !at->contains(key)) {
            return nullptr;
        }
        at = &(*at)[key];
        pos = end == std::string::npos ? field.size() : end;
    }
    return at;
}

Session LoadSession(const std::string &path) {
    struct stat info;
    if (path != "-" && stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
        throw std::runtime_error("is a directory, not a session file");
    }
    std::ifstream file;
    if (path != "-") {
        file.open(path);
        if (!file) {
            throw std::runtime_error(std::string("cannot open session file: ") +
                                     std::strerror(errno));
        }
    }
    json document = ParseStrictJson(path == "-" ? std::cin : file);
    Node root(document, "$");
    root.ExpectObject({"panel", "calls", "description"});
    Session session;
    if (root.Has("panel")) {
        session.panel = root.Key("panel").String();
    }
    if (!root.Has("calls")) {
        root.Fail("missing \"calls\"");
    }
    for (const Node &call : root.Key("calls").Elements()) {
        session.calls.push_back(ParseCall(call));
    }
    return session;
}

}  // namespace stc_host
