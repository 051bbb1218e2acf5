// Profiles: the parser's own messages at the lines of their elements, libxml2's error, and the
// settings that are legal but do not do what they seem to.
#include <gtest/gtest.h>

#include "tests/check/check_support.h"

namespace stc_check_test {
namespace {

constexpr const char *kProfile = "zuva_stc_profile.xml";

// A profile whose root holds `body`, which starts on line 2.
std::string Profile(const std::string &body) {
    return "<ZuvaStcConfigs>\n" + body + "</ZuvaStcConfigs>\n";
}

TEST(ProfileCheck, NamesEachFindingAtItsElement) {
    const std::string lists = "<config id=\"panelList\">\n<prim>abc</prim>\n</config>\n";
    const Case cases[] = {
        {"no id", Profile("<config>\n</config>\n"), 2, Severity::kError,
         "StcXmlParse: no id present"},
        {"unsupported id", Profile("\n<config id=\"gamma\"/>\n"), 3, Severity::kWarning,
         "StcXmlParse: unsupported config: gamma"},
        {"wrong root", "<?xml version=\"1.0\"?>\n<Configs/>\n", 2, Severity::kError,
         "StcXmlParse: unexpected root node: Configs"},
        {"unclosed element", Profile("<config id=\"panelList\">\n<prim>abc\n</config>\n"), 4,
         Severity::kError, "the plug-in ignores the whole profile"},
        {"empty panel type", Profile("<panel name=\"abc\">\n<type></type>\n</panel>\n"), 3,
         Severity::kError, "StcXmlParse: panel type is empty for panel abc"},
        {"panel type main", Profile("<panel name=\"abc\">\n\n<type>main</type>\n</panel>\n"), 4,
         Severity::kWarning, "panel type \"main\" is neither primary nor cli"},
        {"both lists",
         Profile("<config id=\"panelList\">\n<prim>abc</prim>\n<cli>abc_363</cli>\n</config>\n"), 4,
         Severity::kWarning, "panel abc_363 is in both panel lists (prim at line 3)"},
        {"blanks", Profile("<config id=\"panelList\">\n<prim> abc\n</prim>\n</config>\n"), 3,
         Severity::kWarning, "\" abc\\n\" has blanks or line breaks around it"},
        {"non-linear panel not served",
         Profile(lists + "<config id=\"zgl_nonlinear_srgb\">\n<panelname>xyz</panelname>\n"
                         "</config>\n"),
         6, Severity::kWarning, "zgl_nonlinear_srgb names xyz, which no panel list serves"},
        {"two prim paths",
         Profile("<config id=\"panelNamePath\">\n<prim>/a</prim>\n<prim>/b</prim>\n</config>\n"), 4,
         Severity::kWarning, "reading the name from \"/a/b\""},
    };
    for (const Case &c : cases) {
        ExpectFinding(c, kProfile, FileKind::kProfile);
    }
}

TEST(ProfileCheck, ReportsProfilesThePlugInCannotRead) {
    const Findings unparsable = CheckText(kProfile, "<ZuvaStcConfigs>\n", FileKind::kProfile);
    EXPECT_NE(FindingWith(unparsable, "StcXmlParse: parse config file failed"), nullptr)
        << "the parser's own error";
    Findings missing;
    stc_host::CheckFile("/nonexistent/zuva_stc_profile.xml", FileKind::kProfile, missing);
    EXPECT_EQ(missing.errors(), 1) << "a missing profile, of which the parser logs no error";
}

TEST(ProfileCheck, PassesTheSampleProfileAndServedNonLinearPanels) {
    const Findings sample =
        CheckText(kProfile,
                  Profile("<config id=\"panelList\">\n<prim>abc</prim>\n</config>\n"
                          "<config id=\"zgl_nonlinear_srgb\">\n"
                          "<panelname>abc_video</panelname>\n</config>\n"
                          "<panel name=\"ab\">\n<type>cli</type>\n</panel>\n"),
                  FileKind::kProfile);
    EXPECT_EQ(sample.list().size(), 0u) << (sample.list().empty() ? "" : sample.list()[0].message);
}

}  // namespace
}  // namespace stc_check_test
