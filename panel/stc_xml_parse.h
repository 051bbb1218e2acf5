// The device's XML profile: which panels the plug-in serves and where their names can be read.
#ifndef STC_PANEL_STC_XML_PARSE_H_
#define STC_PANEL_STC_XML_PARSE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace snapdragoncolor {

struct stcXmlresult {
    std::vector<std::string> prim_panel_list;
    std::vector<std::string> cli_panel_list;
    std::string prim_name_path;
    std::string cli_name_path;
    int32_t init_panel_type = -1;  // -1 not given, 0 primary, 1 CLI
    std::string init_name_path;
    std::vector<std::string> nonlinear_srgb_panels;
};

constexpr int32_t kPanelTypePrimary = 0;
constexpr int32_t kPanelTypeCli = 1;

// Panel names match profile and list entries by prefix: the name begins with the entry.
inline bool StartsWith(const std::string &text, const std::string &prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

// Reads the profile into `result`. 0: read; -17: no profile; -9: unparsable or wrong root.
int StcXmlParse(stcXmlresult *result, const std::string &panel_name);
// The same for a profile at another device path (the calibration checker's use).
int StcXmlParseAt(stcXmlresult *result, const std::string &panel_name, const char *profile);
// While the parser logs a message about an element, the line of that element in the profile
// (0 at other times): the checker reports the parser's messages against the profile's lines.
long StcXmlParseLine();

}  // namespace snapdragoncolor

#endif  // STC_PANEL_STC_XML_PARSE_H_
