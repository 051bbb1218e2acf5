// The device files that host_calls_fuzz changes between host calls, and a watchdog that turns a
// plug-in blocked on opening a FIFO into a reported failure instead of a hang.
#ifndef STC_TESTS_FUZZ_HOST_CALLS_FILES_H_
#define STC_TESTS_FUZZ_HOST_CALLS_FILES_H_

#include <string>

namespace stc_fuzz {

enum class FileSlot {
    kUnitSrgb,
    kUnitP3,
    kUnitPcc,
    kGoldenSrgb,
    kGoldenP3,
    kGoldenPcc,
    kGamma,
    kProfile,
    kNameNode,  // the display driver's panel-name node
};
constexpr int kFileSlots = 9;

// What a file slot can hold; the last kinds are not regular files.
enum class FileKind {
    kMissing,
    kValid,
    kOtherValid,
    kOneShort,  // 4912 LUT lines, two PCC lines, 1279 gamma codes
    kOneOver,   // 4914 LUT lines, four PCC lines, a gamma code of 1024
    kBroken,    // a too long LUT line, a ten-number PCC line, all gamma codes zero
    kEmpty,
    kFuzzBytes,
    kDirectory,
    kFifo,
};
constexpr int kFileKinds = 10;

// Empties the device tree and lays out a serving device for `panel`: name nodes, every
// calibration file valid in the unit's directory, a valid gamma file and, if asked, the profile
// (which lists the three panels of host_calls_fuzz and makes zuva_b3_video non-linear).
void ResetDevice(const std::string &panel, bool with_profile);

// Puts `kind` (with `bytes` for kFuzzBytes) into the slot's file of `panel`.
void SetFile(const std::string &panel, FileSlot slot, FileKind kind, const std::string &bytes);

// Brackets a plug-in call, so that the watchdog can tell a call that hangs.
void CallStarted();
void CallEnded();

// Starts the watchdog: a call still running after a second while a FIFO lies in the tree fails
// the run if the FIFO has a reader waiting.
void StartFifoWatchdog();

}  // namespace stc_fuzz

#endif  // STC_TESTS_FUZZ_HOST_CALLS_FILES_H_
