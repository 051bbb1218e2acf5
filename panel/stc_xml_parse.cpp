#include "panel/stc_xml_parse.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>

#include "platform/device_file.h"
#include "platform/device_path.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunc = "StcXmlParse";

// libxml2 hands out strings and documents that the caller frees.
struct XmlCharFree {
    void operator()(xmlChar *text) const { xmlFree(text); }
};
struct XmlDocFree {
    void operator()(xmlDoc *doc) const { xmlFreeDoc(doc); }
};
using XmlString = std::unique_ptr<xmlChar, XmlCharFree>;
using XmlDoc = std::unique_ptr<xmlDoc, XmlDocFree>;

std::string TakeString(xmlChar *raw) {
    XmlString owned(raw);
    return owned ? reinterpret_cast<const char *>(owned.get()) : "";
}

std::string Content(xmlNode *node) {
    return TakeString(xmlNodeGetContent(node));
}

std::string Attribute(xmlNode *node, const char *name) {
    return TakeString(xmlGetProp(node, reinterpret_cast<const xmlChar *>(name)));
}

// The line of the element being read, for the checker that reports the parser's messages
// against the profile's lines.
thread_local long g_current_line = 0;

void Visit(const xmlNode *node) {
    g_current_line = xmlGetLineNo(node);
}

bool NameIs(const xmlNode *node, const char *name) {
    return xmlStrcmp(node->name, reinterpret_cast<const xmlChar *>(name)) == 0;
}

// One kind of child element of a `config` section: where its text goes and what is said about it.
struct ItemRule {
    const char *element;
    const char *empty_error;  // "%s: ..." with the function name
    const char *added;        // "%s: ... %s ..." with the function name and the text
    void (*store)(stcXmlresult *result, const std::string &text);
};

struct Section {
    const char *id;
    const ItemRule *items;
    size_t item_count;
};

const ItemRule kPanelListItems[] = {
    {"prim", "%s: prim name should not be empty\n", "%s: add %s to supported prim panel list\n",
     [](stcXmlresult *r, const std::string &t) { r->prim_panel_list.push_back(t); }},
    {"cli", "%s: cli name should not be empty\n", "%s: add %s to supported cli panel list\n",
     [](stcXmlresult *r, const std::string &t) { r->cli_panel_list.push_back(t); }},
};

const ItemRule kNamePathItems[] = {
    {"prim", "%s: prim name path should not be empty\n", "%s: get prim panel name path: %s\n",
     [](stcXmlresult *r, const std::string &t) { r->prim_name_path += t; }},
    {"cli", "%s: cli name path should not be empty\n", "%s: get cli panel name path: %s\n",
     [](stcXmlresult *r, const std::string &t) { r->cli_name_path += t; }},
};

const ItemRule kNonLinearItems[] = {
    {"panelname", "%s: panelname should not be empty\n",
     "%s: add %s to supported nonLinearSRgb gamma panel list\n",
     [](stcXmlresult *r, const std::string &t) { r->nonlinear_srgb_panels.push_back(t); }},
};

// Tried in this order; an `id` selects the first keyword that begins with it.
const Section kSections[] = {
    {"panelList", kPanelListItems, std::size(kPanelListItems)},
    {"panelNamePath", kNamePathItems, std::size(kNamePathItems)},
    {"zgl_nonlinear_srgb", kNonLinearItems, std::size(kNonLinearItems)},
};

const Section *FindSection(const std::string &id) {
    for (const Section &section : kSections) {
        if (StartsWith(section.id, id)) {
            return &section;
        }
    }
    return nullptr;
}

void ParseSection(const Section &section, xmlNode *config, stcXmlresult *result) {
    for (xmlNode *child = config->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) {
            continue;
        }
        for (size_t i = 0; i < section.item_count; ++i) {
            const ItemRule &rule = section.items[i];
            if (!NameIs(child, rule.element)) {
                continue;
            }
            Visit(child);
            std::string text = Content(child);
            if (text.empty()) {
                STC_LOGE(rule.empty_error, kFunc);
            } else {
                STC_LOGD(rule.added, kFunc, text.c_str());
                rule.store(result, text);
            }
            break;
        }
    }
}

void ParseConfig(xmlNode *config, stcXmlresult *result) {
    Visit(config);
    std::string id = Attribute(config, "id");
    if (id.empty()) {
        STC_LOGE("%s: no id present\n", kFunc);
        return;
    }
    STC_LOGD("%s: parse top config: %s\n", kFunc, id.c_str());
    const Section *section = FindSection(id);
    if (!section) {
        STC_LOGW("%s: unsupported config: %s\n", kFunc, id.c_str());
        return;
    }
    ParseSection(*section, config, result);
}

void ParsePanelType(xmlNode *node, const std::string &panel_name, stcXmlresult *result) {
    Visit(node);
    std::string text = Content(node);
    if (text.empty()) {
        STC_LOGE("%s: panel type is empty for panel %s\n", kFunc, panel_name.c_str());
        return;
    }
    if (text == "primary") {
        result->init_panel_type = kPanelTypePrimary;
    } else if (text == "cli") {
        result->init_panel_type = kPanelTypeCli;
    }
    STC_LOGD("%s: panel %s is %s. panel (%d)\n", kFunc, panel_name.c_str(), text.c_str(),
             static_cast<int>(result->init_panel_type));
}

void ParsePanelPath(xmlNode *node, const std::string &panel_name, stcXmlresult *result) {
    Visit(node);
    std::string text = Content(node);
    if (text.empty()) {
        STC_LOGE("%s: name path is empty for init panel %s\n", kFunc, panel_name.c_str());
        return;
    }
    STC_LOGD("%s: name path is %s for init panel %s\n", kFunc, text.c_str(), panel_name.c_str());
    result->init_name_path += text;
}

void ParsePanel(xmlNode *panel, const std::string &panel_name, stcXmlresult *result) {
    Visit(panel);
    std::string name = Attribute(panel, "name");
    if (name.empty()) {
        STC_LOGE("%s: no panel name present\n", kFunc);
        return;
    }
    if (!StartsWith(panel_name, name)) {
        STC_LOGD("%s: Compare init panel %s with config node for pane %s\n", kFunc,
                 panel_name.c_str(), name.c_str());
        return;
    }
    STC_LOGD("%s: found init panel config for %s\n", kFunc, panel_name.c_str());
    for (xmlNode *child = panel->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) {
            continue;
        }
        if (NameIs(child, "type")) {
            ParsePanelType(child, panel_name, result);
        } else if (NameIs(child, "path")) {
            ParsePanelPath(child, panel_name, result);
        }
    }
}

// The document's root and its sections, once the file has been parsed.
int ParseRoot(xmlNode *root, const std::string &panel_name, stcXmlresult *result) {
    if (!root) {
        STC_LOGE("%s: config file is empty\n", kFunc);
        return -9;
    }
    Visit(root);
    if (!NameIs(root, "ZuvaStcConfigs")) {
        STC_LOGE("%s: unexpected root node: %s\n", kFunc,
                 reinterpret_cast<const char *>(root->name));
        return -9;
    }
    result->prim_name_path.clear();
    result->cli_name_path.clear();
    result->init_name_path.clear();
    for (xmlNode *child = root->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) {
            continue;
        }
        if (NameIs(child, "config")) {
            ParseConfig(child, result);
        } else if (NameIs(child, "panel")) {
            ParsePanel(child, panel_name, result);
        }
    }
    return 0;
}

}  // namespace

int StcXmlParse(stcXmlresult *result, const std::string &panel_name) {
    return StcXmlParseAt(result, panel_name, kProfilePath);
}

int StcXmlParseAt(stcXmlresult *result, const std::string &panel_name, const char *profile) {
    const std::string path = DevicePath(profile);
    int exists = access(path.c_str(), F_OK);
    if (exists != 0) {
        int err = errno;
        STC_LOGD("%s: %s not exist, %d, errno=%d, %s\n", kFunc, profile, exists, err,
                 std::strerror(err));
        return -17;
    }
    // The parser is set up once for the library, so that displays whose Init calls overlap do not
    // race in libxml2's lazy global set-up.
    static std::once_flag parser_ready;
    std::call_once(parser_ready, xmlInitParser);
    // A profile that is not a regular file (a FIFO would block the parse) cannot be parsed.
    XmlDoc doc(IsRegularDeviceFile(profile) ? xmlParseFile(path.c_str()) : nullptr);
    if (!doc) {
        STC_LOGE("%s: parse config file failed: %s\n", kFunc, profile);
        return -9;
    }
    const int parsed = ParseRoot(xmlDocGetRootElement(doc.get()), panel_name, result);
    g_current_line = 0;
    return parsed;
}

long StcXmlParseLine() {
    return g_current_line;
}

}  // namespace snapdragoncolor
