// Files for the checker's tests, written into a temporary directory, and the findings about them.
#ifndef STC_TESTS_CHECK_CHECK_SUPPORT_H_
#define STC_TESTS_CHECK_CHECK_SUPPORT_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/device_tree.h"
#include "tools/stc-host/check/check.h"

namespace stc_check_test {

using stc_host::FileKind;
using stc_host::Finding;
using stc_host::Findings;
using stc_host::Severity;

// Lines ended by line feeds.
inline std::string Join(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text += line + "\n";
    }
    return text;
}

// An identity LUT on the 17-point grid of 0..top: sixteen even steps of top/16 rounded down,
// then top itself; red slowest, blue fastest.
inline std::vector<std::string> LutLines(int top) {
    auto grid = [top](int i) { return i == 16 ? top : i * ((top + 1) / 16); };
    std::vector<std::string> lines;
    for (int i = 0; i < 4913; ++i) {
        const int r = grid(i / 289), g = grid(i / 17 % 17), b = grid(i % 17);
        lines.push_back(std::to_string(r) + " " + std::to_string(g) + " " + std::to_string(b) +
                        " " + std::to_string(r) + " " + std::to_string(g) + " " +
                        std::to_string(b));
    }
    return lines;
}

// Checks `text` saved under the name `name` as a file of `kind`.
inline Findings CheckText(const std::string &name, const std::string &text, FileKind kind) {
    stc_test::DeviceTree dir;
    dir.WriteFile("/" + name, text);
    Findings findings;
    stc_host::CheckFile(dir.HostPath("/" + name), kind, findings);
    return findings;
}

// The first finding whose message contains `fragment`, or null.
inline const Finding *FindingWith(const Findings &findings, const std::string &fragment) {
    for (const Finding &f : findings.list()) {
        if (f.message.find(fragment) != std::string::npos) {
            return &f;
        }
    }
    return nullptr;
}

// A finding whose message contains `fragment`, at `line` (0: none) with `severity`.
struct Case {
    const char *name;
    std::string text;
    long line;
    Severity severity;
    const char *fragment;
};

inline void ExpectFinding(const Case &c, const char *file, FileKind kind) {
    const Findings findings = CheckText(file, c.text, kind);
    const Finding *f = FindingWith(findings, c.fragment);
    ASSERT_NE(f, nullptr) << c.name << ": no finding with \"" << c.fragment << "\"";
    EXPECT_EQ(f->line, c.line) << c.name;
    EXPECT_EQ(f->severity, c.severity) << c.name;
}

}  // namespace stc_check_test

#endif  // STC_TESTS_CHECK_CHECK_SUPPORT_H_
