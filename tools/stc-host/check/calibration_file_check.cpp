#include "tools/stc-host/check/file_checks.h"

namespace stc_host {

namespace {

// What the plug-in does after each kind of failure, said once for all the messages below.
constexpr const char *kFallsBack =
    "the plug-in treats it as missing, so for a unit file it loads the golden file instead";
constexpr const char *kNoFallBack =
    "the plug-in takes nothing from the file and does not load the golden file instead";

}  // namespace

void CalibrationFileCheck::OnOpenFailed() {
    out_.Error("open", 0, Format("cannot be opened as a regular file: %s", kFallsBack));
}

void CalibrationFileCheck::OnShortRead(long got, size_t size) {
    out_.Error(
        "read", 0,
        Format("only %ld of its %zu bytes could be read: %s", got < 0 ? 0 : got, size, kFallsBack));
}

void CalibrationFileCheck::OnNoLine() {
    out_.Error(
        "no-line", 0,
        Format("%s: %s", size_ == 0 ? "empty file" : "no line feed in the file", kNoFallBack));
}

void CalibrationFileCheck::OnTooLongLine(size_t number) {
    out_.Error("long-line", static_cast<long>(number),
               Format("line is longer than %zu bytes: the plug-in stops reading here; %s",
                      snapdragoncolor::kCalibrationLineMax, kNoFallBack));
}

void CalibrationFileCheck::OnUnterminatedLine(size_t number, size_t) {
    out_.Error("unterminated", static_cast<long>(number),
               "last line has no line feed: the plug-in ignores it");
}

std::string CalibrationFileCheck::ShortLine(int got, const char *needed) {
    if (got < 0) {
        return Format("blank line, the plug-in needs %s numbers", needed);
    }
    if (got == 0) {
        return Format("line does not begin with a number, the plug-in needs %s", needed);
    }
    return Format("line has %d number%s, the plug-in needs %s", got, got == 1 ? "" : "s", needed);
}

}  // namespace stc_host
