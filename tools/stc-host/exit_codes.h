// The exit codes of every stc-host command.
#ifndef STC_TOOLS_STC_HOST_EXIT_CODES_H_
#define STC_TOOLS_STC_HOST_EXIT_CODES_H_

#include <cstdio>
#include <string>

namespace stc_host {

constexpr int kExitSuccess = 0;
constexpr int kExitUsageError = 1;        // bad command line
constexpr int kExitSessionError = 2;      // bad session file
constexpr int kExitEnvironmentError = 3;  // library or device unusable
constexpr int kExitFault = 4;             // a check, expectation or comparison found a fault

// Prints the one line of an error, "stc-host: error: MESSAGE", and returns `code`.
inline int Fail(int code, const std::string &message) {
    std::fprintf(stderr, "stc-host: error: %s\n", message.c_str());
    return code;
}

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_EXIT_CODES_H_
