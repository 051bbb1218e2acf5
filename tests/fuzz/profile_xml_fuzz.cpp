// The XML profile: whatever the file holds, the parser answers 0, -9 or -17, leaves the record
// alone when it refuses the file, and Init classifies the panel from what it got.
#include <libxml/parser.h>

#include <memory>
#include <string>

#include "panel/stc_xml_parse.h"
#include "platform/device_path.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

const char *const kPanels[] = {"zuva_a1_video", "panelC_cmd_363"};

int RefreshStandIn() {
    return 0;
}

stcXmlresult EarlierResult() {
    stcXmlresult r;
    r.prim_panel_list = {"old_prim"};
    r.cli_panel_list = {"old_cli"};
    r.prim_name_path = "/old/prim";
    r.cli_name_path = "/old/cli";
    r.init_panel_type = kPanelTypeCli;
    r.init_name_path = "/old/init";
    r.nonlinear_srgb_panels = {"old_nl"};
    return r;
}

bool Same(const stcXmlresult &a, const stcXmlresult &b) {
    return a.prim_panel_list == b.prim_panel_list && a.cli_panel_list == b.cli_panel_list &&
           a.prim_name_path == b.prim_name_path && a.cli_name_path == b.cli_name_path &&
           a.init_panel_type == b.init_panel_type && a.init_name_path == b.init_name_path &&
           a.nonlinear_srgb_panels == b.nonlinear_srgb_panels;
}

bool StartsWithList(const std::vector<std::string> &list, const std::vector<std::string> &head) {
    return list.size() >= head.size() && std::equal(head.begin(), head.end(), list.begin());
}

void CheckParse(const std::string &panel) {
    const stcXmlresult before = EarlierResult();
    stcXmlresult r = before;
    const int result = StcXmlParse(&r, panel);
    STC_FUZZ_CHECK(result == 0 || result == -9 || result == -17, "StcXmlParse returned %d", result);
    if (result != 0) {
        STC_FUZZ_CHECK(Same(r, before), "StcXmlParse %d changed the record", result);
        return;
    }
    // Lists only grow.
    STC_FUZZ_CHECK(StartsWithList(r.prim_panel_list, before.prim_panel_list) &&
                       StartsWithList(r.cli_panel_list, before.cli_panel_list) &&
                       StartsWithList(r.nonlinear_srgb_panels, before.nonlinear_srgb_panels),
                   "a successful parse dropped earlier list entries");
}

// Without a usable profile the name alone decides.
void CheckInit(const std::string &panel) {
    auto c = std::make_unique<StcZuvaColor>();
    A::refresh_screen_(*c) = RefreshStandIn;  // no utilities library to open
    STC_FUZZ_CHECK(c->Init(panel) == 0, "Init of %s failed", panel.c_str());
    STC_FUZZ_CHECK(A::init_done_(*c), "Init of %s did not complete", panel.c_str());
    stcXmlresult r;
    if (StcXmlParse(&r, panel) != 0) {
        const bool cli = panel.find("_363") != std::string::npos;
        STC_FUZZ_CHECK(A::is_cli_(*c) == cli && A::is_primary_(*c) == !cli,
                       "%s without a usable profile: primary %d, cli %d", panel.c_str(),
                       A::is_primary_(*c), A::is_cli_(*c));
    }
    c->DeInit();
}

void Silent(void *, const char *, ...) {}

}  // namespace
}  // namespace snapdragoncolor

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    // Parse errors are expected here; libxml2 would print every one of them.
    xmlSetGenericErrorFunc(nullptr, snapdragoncolor::Silent);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    stc_fuzz::Device().WriteFile(snapdragoncolor::kProfilePath, stc_fuzz::AsText(data, size));
    stc_fuzz::Log().Clear();  // only captured so that nothing is printed
    for (const char *panel : snapdragoncolor::kPanels) {
        snapdragoncolor::CheckParse(panel);
        snapdragoncolor::CheckInit(panel);
    }
    return 0;
}
