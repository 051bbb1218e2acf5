// stc-host check: judges a unit's calibration files, gamma files, profiles and whole device trees
// by the plug-in's own reading rules, so that its verdict is what the phone will do.
#ifndef STC_TOOLS_STC_HOST_CHECK_CHECK_H_
#define STC_TOOLS_STC_HOST_CHECK_CHECK_H_

#include <optional>
#include <string>
#include <vector>

#include "tools/stc-host/check/findings.h"
#include "tools/stc-host/exit_codes.h"

namespace stc_host {

struct CheckOptions {
    std::vector<std::string> paths;  // files or directories (device trees)
    std::string as;                  // "", "lut", "pcc", "gamma" or "profile"
    bool json = false;
    std::string library;  // plug-in to drive for device trees
    std::string qdutils;  // stand-in libqdutils.so
};

// Prints the findings and the summary line to stdout; returns 0 (no error), 4 (an error found),
// 1 (bad command line, e.g. a --as value or a path whose kind cannot be guessed), 3 (a path that
// does not exist, or the plug-in library unusable for a tree).
int RunCheck(const CheckOptions &options);

enum class FileKind { kLut, kPcc, kGamma, kProfile };

// The kind named by a --as value.
std::optional<FileKind> KindByName(const std::string &name);
// The kind a file's name tells (its calibration or gamma suffix, or ".xml").
std::optional<FileKind> GuessKind(const std::string &path);

// Checks one file of `kind` at the workstation path `path`, without output; its findings are
// added to `findings` (which counts the file). Returns the number of errors in it.
int CheckFile(const std::string &path, FileKind kind, Findings &findings);

// Checks one calibration unit's files (kinds by their names) for the benchmark: no output;
// returns the error count, a file of unknown kind counting as one error.
int CheckUnit(const std::vector<std::string> &paths);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_CHECK_H_
