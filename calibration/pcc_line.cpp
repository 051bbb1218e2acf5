#include "calibration/pcc_line.h"

#include <cstdio>

namespace snapdragoncolor {

int ScanPccLine(const char *line, PccCoeff *row) {
    return std::sscanf(line, "%lf %lf %lf %lf %lf %lf %lf %lf %lf %lf %lf", &row->c, &row->r,
                       &row->g, &row->b, &row->rr, &row->gg, &row->bb, &row->rg, &row->gb, &row->rb,
                       &row->rgb);
}

}  // namespace snapdragoncolor
