// The rule of a PCC calibration line: eleven numbers as sscanf's "%lf" reads them.
#ifndef STC_CALIBRATION_PCC_LINE_H_
#define STC_CALIBRATION_PCC_LINE_H_

#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

constexpr int kPccLineValues = 11;

// Converts the line into `row`'s fields in the order c r g b rr gg bb rg gb rb rgb and returns
// how many were converted (-1 for a line of white space only); fields not converted keep their
// values.
int ScanPccLine(const char *line, PccCoeff *row);

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_PCC_LINE_H_
