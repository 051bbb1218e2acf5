#include "panel/stc_xml_parse.h"

namespace snapdragoncolor {

int StcXmlParse(stcXmlresult *, const std::string &) {
    return -17;
}

}  // namespace snapdragoncolor
