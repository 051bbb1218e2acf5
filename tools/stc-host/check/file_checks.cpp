// One file of a known kind: the dispatch, the kinds by name, and the entry points for a file or a
// unit without output.
#include <cstdlib>

#include "platform/device_path.h"
#include "tools/stc-host/check/file_checks.h"

namespace stc_host {

namespace {

struct KindName {
    const char *name;
    FileKind kind;
};
constexpr KindName kKindNames[] = {
    {"lut", FileKind::kLut},
    {"pcc", FileKind::kPcc},
    {"gamma", FileKind::kGamma},
    {"profile", FileKind::kProfile},
};

}  // namespace

std::optional<FileKind> KindByName(const std::string &name) {
    for (const KindName &k : kKindNames) {
        if (name == k.name) {
            return k.kind;
        }
    }
    return std::nullopt;
}

std::optional<FileKind> GuessKind(const std::string &path) {
    using namespace snapdragoncolor;
    const std::string infix = kCalibrationInfix;
    const std::pair<std::string, FileKind> kSuffixes[] = {
        {infix + kSrgbLutSuffix, FileKind::kLut},
        {infix + kP3LutSuffix, FileKind::kLut},
        {infix + kPccSuffix, FileKind::kPcc},
        {kGammaFileSuffix, FileKind::kGamma},
        {".xml", FileKind::kProfile},
    };
    for (const auto &[suffix, kind] : kSuffixes) {
        if (EndsWith(path, suffix)) {
            return kind;
        }
    }
    return std::nullopt;
}

void CheckFileOfKind(const std::string &read_path, FileKind kind, FileFindings &out) {
    switch (kind) {
        case FileKind::kLut:
            CheckLut(read_path, out);
            break;
        case FileKind::kPcc:
            CheckPcc(read_path, out);
            break;
        case FileKind::kGamma:
            CheckGamma(read_path, out);
            break;
        case FileKind::kProfile: {
            ProfileFacts facts;
            CheckProfile(read_path, out, &facts);
            break;
        }
    }
}

int CheckFile(const std::string &path, FileKind kind, Findings &findings) {
    // A workstation path is read as it stands, whatever tree the caller has set up.
    ScopedDeviceRoot no_root("");
    FileFindings out(findings, path);
    findings.CountFile();
    CheckFileOfKind(path, kind, out);
    return static_cast<int>(out.errors());
}

int CheckUnit(const std::vector<std::string> &paths) {
    Findings findings;
    int errors = 0;
    for (const std::string &path : paths) {
        const std::optional<FileKind> kind = GuessKind(path);
        errors += kind ? CheckFile(path, *kind, findings) : 1;
    }
    return errors;
}

using snapdragoncolor::kDeviceRootVariable;

ScopedDeviceRoot::ScopedDeviceRoot(const std::string &root) {
    const char *previous = std::getenv(kDeviceRootVariable);
    had_previous_ = previous != nullptr;
    previous_ = previous ? previous : "";
    if (root.empty()) {
        unsetenv(kDeviceRootVariable);
    } else {
        setenv(kDeviceRootVariable, root.c_str(), 1);
    }
}

ScopedDeviceRoot::~ScopedDeviceRoot() {
    if (had_previous_) {
        setenv(kDeviceRootVariable, previous_.c_str(), 1);
    } else {
        unsetenv(kDeviceRootVariable);
    }
}

}  // namespace stc_host
