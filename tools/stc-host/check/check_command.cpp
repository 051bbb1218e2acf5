// The check command: what each path is, the checks, the report and the exit code.
#include <sys/stat.h>

#include <cstdio>

#include "tools/stc-host/check/check.h"
#include "tools/stc-host/check/file_checks.h"
#include "tools/stc-host/check/report.h"
#include "tools/stc-host/check/tree_check.h"

namespace stc_host {

int RunCheck(const CheckOptions &options) {
    const std::optional<FileKind> forced = KindByName(options.as);
    if (!options.as.empty() && !forced) {
        return Fail(kExitUsageError,
                    "--as " + options.as + ": expected lut, pcc, gamma or profile");
    }
    if (options.paths.empty()) {
        return Fail(kExitUsageError, "no file or device tree to check");
    }
    Findings findings;
    for (const std::string &path : options.paths) {
        struct stat status;
        if (stat(path.c_str(), &status) != 0) {
            return Fail(kExitEnvironmentError, path + " does not exist");
        }
        if (S_ISDIR(status.st_mode)) {
            if (forced) {
                return Fail(kExitUsageError, "--as applies to files, and " + path +
                                                 " is a directory (a device tree)");
            }
            const int result = CheckTree(path, options, findings);
            if (result != 0) {
                return result;
            }
            continue;
        }
        const std::optional<FileKind> kind = forced ? forced : GuessKind(path);
        if (!kind) {
            return Fail(kExitUsageError,
                        "cannot tell from its name what " + path + " is; name the kind with --as");
        }
        CheckFile(path, *kind, findings);
    }
    if (options.json) {
        PrintFindingsJson(findings, stdout);
    } else {
        PrintFindingsText(findings, stdout);
    }
    return findings.errors() > 0 ? kExitFault : kExitSuccess;
}

}  // namespace stc_host
