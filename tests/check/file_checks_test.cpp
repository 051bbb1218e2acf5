// LUT, PCC and gamma files: each fault at the line the checker must name, and the files that must
// pass clean (the bounds just inside each rule).
#include <gtest/gtest.h>

#include "tests/check/check_support.h"

namespace stc_check_test {
namespace {

void ExpectClean(const char *name, const std::string &text, const char *file, FileKind kind) {
    const Findings findings = CheckText(file, text, kind);
    EXPECT_EQ(findings.list().size(), 0u)
        << name << ": " << (findings.list().empty() ? "" : findings.list()[0].message);
}

// Line `n` (from 1) of a 10-bit LUT replaced.
std::string LutWith(int n, const std::string &line, int top = 1023) {
    std::vector<std::string> lines = LutLines(top);
    lines[n - 1] = line;
    return Join(lines);
}

constexpr const char *kLut = "panel_x_C3D_cali_srgb.txt";
constexpr Severity kError = Severity::kError;
constexpr Severity kWarning = Severity::kWarning;

TEST(LutCheck, NamesEachFaultAtItsLine) {
    const std::string lut = Join(LutLines(1023));
    const std::string line0 = lut.substr(0, lut.find('\n') + 1);
    // clang-format off
    const Case cases[] = {
        {"empty", "", 0, kError, "empty file"},
        {"no line feed", "0 0 0 0 0 0", 0, kError, "no line feed"},
        {"512-byte line", LutWith(17, "0 0 1023 0 0 1023" + std::string(495, ' ')), 17, kError,
         "longer than 511 bytes"},
        {"five numbers", LutWith(17, "0 0 1023 0 0"), 17, kError,
         "line has 5 numbers, the plug-in needs six"},
        {"blank line", LutWith(17, " "), 17, kError, "blank line"},
        {"last line unterminated", lut.substr(0, lut.size() - 1), 4913, kError,
         "last line has no line feed"},
        {"4912 entries", lut.substr(0, lut.rfind('\n', lut.size() - 2) + 1), 0, kError,
         "4912 entries, the plug-in needs 4913"},
        {"4914 entries", lut + line0, 4914, kError, "4914 entries in all"},
        {"point twice", LutWith(100, "0 320 832 0 320 832"), 100, kError,
         "(0 320 832) is given again (first at line 99)"},
        {"point missing", LutWith(100, "0 320 832 0 320 832"), 0, kError,
         "grid point (0 320 896) has no entry"},
        {"off the grid", LutWith(18, "1 64 0 1 64 0"), 18, kError,
         "red input 1 is not one of the 17 grid values"},
        {"one grid value", Join(std::vector<std::string>(4913, "0 0 0 0 0 0")), 0, kError,
         "red inputs take fewer than 17 distinct values"},
        {"10-bit output 1024", LutWith(30, "0 64 768 1024 64 768"), 30, kError,
         "red output 1024 is outside 0..1023 of the 10-bit grid"},
        {"12-bit output 4096", LutWith(30, "0 256 3072 0 4096 3072", 4095), 30, kError,
         "green output 4096 is outside 0..4095 of the 12-bit grid"},
        {"output -1", LutWith(30, "0 64 768 0 64 -1"), 30, kError, "blue output -1 is outside"},
        {"output 129 away", LutWith(40, "0 128 320 0 128 449"), 40, kWarning,
         "blue output 449 is 129 codes from its input 320"},
    };
    // clang-format on
    for (const Case &c : cases) {
        ExpectFinding(c, kLut, FileKind::kLut);
    }
}

TEST(LutCheck, PassesTablesJustInsideTheRules) {
    ExpectClean("10-bit identity", Join(LutLines(1023)), kLut, FileKind::kLut);
    ExpectClean("12-bit identity, outputs past 1023", Join(LutLines(4095)), kLut, FileKind::kLut);
    ExpectClean("511-byte line", LutWith(17, "0 0 1023 0 0 1023" + std::string(494, ' ')), kLut,
                FileKind::kLut);
    ExpectClean("output 128 away", LutWith(40, "0 128 320 0 128 448"), kLut, FileKind::kLut);
}

TEST(LutCheck, CapsRepeatsButCountsThemAll) {
    std::vector<std::string> lines = LutLines(1023);
    for (int i = 0; i < 7; ++i) {
        lines[i] = lines[i].substr(0, lines[i].rfind(' ') + 1) + "2000";
    }
    const Findings findings = CheckText(kLut, Join(lines), FileKind::kLut);
    EXPECT_EQ(findings.errors(), 7) << "every out-of-range output counts";
    ASSERT_EQ(findings.list().size(), 6u) << "five shown and one summary line";
    EXPECT_EQ(findings.list()[4].line, 5) << "the fifth shown is line 5";
    EXPECT_EQ(findings.list()[5].message, "and 2 more lines like this");
    EXPECT_EQ(findings.list()[5].line, 0) << "the summary names no line";
}

constexpr const char *kPcc = "panel_x_C3D_cali_pcc.txt";
const std::string kRed = "0 1 0 0 0 0 0 0 0 0 0";
const std::string kGreen = "0 0 1 0 0 0 0 0 0 0 0";
const std::string kBlue = "0 0 0 1 0 0 0 0 0 0 0";

TEST(PccCheck, NamesEachFaultAtItsLine) {
    // clang-format off
    const Case cases[] = {
        {"ten numbers", Join({kRed, "0 0 1 0 0 0 0 0 0 0", kBlue}), 2, kError,
         "line has 10 numbers, the plug-in needs eleven"},
        {"four lines", Join({kRed, kGreen, kBlue, kBlue}), 4, kError,
         "4 lines in all, the plug-in needs exactly three"},
        {"two lines", Join({kRed, kGreen}), 0, kError, "2 lines, the plug-in needs three"},
        {"nan", Join({kRed, kGreen, "0 0 0 1 0 0 0 0 0 0 nan"}), 3, kError,
         "the rgb term is not a number"},
        {"inf", Join({"inf 1 0 0 0 0 0 0 0 0 0", kGreen, kBlue}), 1, kError,
         "the c term is infinite"},
        {"last line unterminated", Join({kRed, kGreen}) + kBlue, 3, kError,
         "last line has no line feed"},
        {"600-byte line", Join({kRed, kGreen + std::string(589, ' '), kBlue}), 2, kError,
         "longer than 511 bytes"},
        {"red gain 1.004", Join({"0 1.004 0 0 0 0 0 0 0 0 0", kGreen, kBlue}), 1, kWarning,
         "the red row turns white's 1023 into 1027.1, 4.1 codes away"},
        {"green offset 0.01", Join({kRed, "0.01 0 1 0 0 0 0 0 0 0 0", kBlue}), 2, kWarning,
         "the green row turns white's 1023 into 1033.2"},
    };
    // clang-format on
    for (const Case &c : cases) {
        ExpectFinding(c, kPcc, FileKind::kPcc);
    }
}

TEST(PccCheck, PassesPccsJustInsideTheRules) {
    ExpectClean("identity", Join({kRed, kGreen, kBlue}), kPcc, FileKind::kPcc);
    ExpectClean("red gain 1.0039", Join({"0 1.0039 0 0 0 0 0 0 0 0 0", kGreen, kBlue}), kPcc,
                FileKind::kPcc);
    ExpectClean("cross terms summing to 1", Join({"0 0.5 0 0 0 0 0 0.25 0 0 0.25", kGreen, kBlue}),
                kPcc, FileKind::kPcc);
}

constexpr const char *kGamma = "panel_x_gamma_srgb.txt";

// A rising ramp of `count` codes, code i on line i + 1; line `n` (from 1) replaced when given.
std::string Ramp(int count, int n = 0, const std::string &line = "") {
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) {
        lines.push_back(std::to_string(i * 1023 / 1279));
    }
    if (n > 0) {
        lines[n - 1] = line;
    }
    return Join(lines);
}

TEST(GammaCheck, NamesEachFaultAtItsLine) {
    const Case cases[] = {
        {"1279 codes", Ramp(1279), 0, kError, "1279 valid codes, the plug-in needs 1280"},
        {"code 1024", Ramp(1280, 7, "1024"), 7, kError, "code 1024 is outside 0..1023"},
        {"code -1", Ramp(1280, 8, "-1"), 8, kError, "code -1 is outside 0..1023"},
        {"all zero", Join(std::vector<std::string>(1280, "0")), 0, kError,
         "the first 1280 codes are all 0"},
        {"falling", Ramp(1280, 10, "3"), 10, kWarning, "code 3 is below the code before it (6)"},
        {"invalid after a comment", "# codes\n" + Ramp(1280, 4, "abc") + "5\n", 5, kWarning,
         "line does not begin with a code"},
        {"1281 codes", Ramp(1281), 1281, kWarning, "1 more code from here on"},
    };
    for (const Case &c : cases) {
        ExpectFinding(c, kGamma, FileKind::kGamma);
    }
}

TEST(GammaCheck, PassesFilesJustInsideTheRules) {
    ExpectClean("1280 rising codes", Ramp(1280), kGamma, FileKind::kGamma);
    ExpectClean("comments and empty lines", "# header\n\n" + Ramp(1280), kGamma, FileKind::kGamma);
}

}  // namespace
}  // namespace stc_check_test
