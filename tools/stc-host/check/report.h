// The findings as text for editors and CI (PATH:LINE: severity: TEXT, then a summary line) or as
// one JSON object.
#ifndef STC_TOOLS_STC_HOST_CHECK_REPORT_H_
#define STC_TOOLS_STC_HOST_CHECK_REPORT_H_

#include <cstdio>
#include <string>

#include "tools/stc-host/check/findings.h"

namespace stc_host {

std::string SummaryLine(const Findings &findings);
void PrintFindingsText(const Findings &findings, std::FILE *out);
void PrintFindingsJson(const Findings &findings, std::FILE *out);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_REPORT_H_
