// The exit codes of every stc-host command.
#ifndef STC_TOOLS_STC_HOST_EXIT_CODES_H_
#define STC_TOOLS_STC_HOST_EXIT_CODES_H_

namespace stc_host {

constexpr int kExitSuccess = 0;
constexpr int kExitUsageError = 1;        // bad command line
constexpr int kExitSessionError = 2;      // bad session file
constexpr int kExitEnvironmentError = 3;  // library or device unusable
constexpr int kExitFault = 4;             // a check, expectation or comparison found a fault

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_EXIT_CODES_H_
