// A PCC file: the plug-in's line rule and line count, numbers it would hand to the hardware
// although they are not numbers, and how far the correction moves white.
#include <cmath>
#include <cstdlib>

#include "calibration/pcc_line.h"
#include "tools/stc-host/check/file_checks.h"

namespace stc_host {

namespace {

using snapdragoncolor::kPccLineValues;
using snapdragoncolor::PccCoeff;

constexpr int kRows = 3;
constexpr const char *kRowNames[kRows] = {"red", "green", "blue"};
constexpr double kWhiteCode = 1023.0;
// A calibration trims white by a code or two; a larger move is a different white point.
constexpr double kWhiteTolerance = 4.0;

struct Term {
    const char *name;
    double PccCoeff::*field;
};
constexpr Term kTerms[kPccLineValues] = {
    {"c", &PccCoeff::c},   {"r", &PccCoeff::r},   {"g", &PccCoeff::g},     {"b", &PccCoeff::b},
    {"rr", &PccCoeff::rr}, {"gg", &PccCoeff::gg}, {"bb", &PccCoeff::bb},   {"rg", &PccCoeff::rg},
    {"gb", &PccCoeff::gb}, {"rb", &PccCoeff::rb}, {"rgb", &PccCoeff::rgb},
};

// The rows as the plug-in fills them on a fresh start: line n into row n, later lines into blue.
class PccScan final : public CalibrationFileCheck {
  public:
    explicit PccScan(FileFindings &out) : CalibrationFileCheck(out) {}

    void OnLine(const char *line, size_t number) override {
        const int row = lines_ < kRows ? lines_ : kRows - 1;
        rows_[row] = PccCoeff();
        row_lines_[row] = static_cast<long>(number);
        const int got = snapdragoncolor::ScanPccLine(line, &rows_[row]);
        if (got < kPccLineValues) {
            out_.Error("short-line", row_lines_[row],
                       ShortLine(got, "eleven") +
                           ": it still takes the file, and the terms it cannot read keep what "
                           "the plug-in held before (zeros at start-up)");
        }
        for (int t = 0; t < got; ++t) {
            const double value = rows_[row].*kTerms[t].field;
            if (!std::isfinite(value)) {
                out_.Error("non-finite", row_lines_[row],
                           Format("the %s term is %s: the plug-in hands it to the hardware",
                                  kTerms[t].name, std::isnan(value) ? "not a number" : "infinite"));
            }
        }
        ++lines_;
        if (lines_ == kRows + 1) {
            surplus_line_ = static_cast<long>(number);
        }
    }

    int lines() const { return lines_; }
    long surplus_line() const { return surplus_line_; }
    const PccCoeff &row(int i) const { return rows_[i]; }
    long row_line(int i) const { return row_lines_[i]; }

  private:
    PccCoeff rows_[kRows];
    long row_lines_[kRows] = {};
    int lines_ = 0;
    long surplus_line_ = 0;
};

// Each row at white (r = g = b = 1), where every term is its coefficient.
void CheckWhite(const PccScan &scan, FileFindings &out) {
    for (int i = 0; i < kRows; ++i) {
        double sum = 0;
        for (const Term &term : kTerms) {
            sum += scan.row(i).*term.field;
        }
        const double code = sum * kWhiteCode;
        if (std::isfinite(code) && std::fabs(code - kWhiteCode) > kWhiteTolerance) {
            out.Warning("white", scan.row_line(i),
                        Format("the %s row turns white's %.0f into %.1f, %.1f codes away (more "
                               "than %.0f)",
                               kRowNames[i], kWhiteCode, code, std::fabs(code - kWhiteCode),
                               kWhiteTolerance));
        }
    }
}

}  // namespace

void CheckPcc(const std::string &read_path, FileFindings &out) {
    PccScan scan(out);
    if (snapdragoncolor::ReadCalibrationFile(read_path.c_str(), scan) !=
        snapdragoncolor::CalibrationReadResult::kAllLines) {
        return;
    }
    if (scan.lines() > kRows) {
        out.Error("count", scan.surplus_line(),
                  Format("%d lines in all, the plug-in needs exactly three: it writes this one "
                         "over the blue row, then refuses the whole PCC and keeps what it held "
                         "before",
                         scan.lines()));
        return;
    }
    if (scan.lines() < kRows) {
        out.Error("count", 0,
                  Format("%d line%s, the plug-in needs three: it refuses the PCC and keeps what it "
                         "held before",
                         scan.lines(), scan.lines() == 1 ? "" : "s"));
        return;
    }
    CheckWhite(scan, out);
}

}  // namespace stc_host
