// A gamma code file of a non-linear panel: the plug-in's line rule, then the codes its
// enhancement needs (1280 of them in 0..1023, not all 0) and whether they rise.
#include "enhance/gamma_file.h"
#include "enhance/glimra.h"
#include "tools/stc-host/check/file_checks.h"

namespace stc_host {

namespace {

// The plug-in builds its curves from the first 1280 codes on a 10-bit scale.
constexpr long kCodesNeeded = snapdragoncolor::kNonLinearCurveLength;
constexpr int kTopCode = 1023;
constexpr const char *kDisabled = "the plug-in switches the contrast enhancement off";

class GammaScan final : public snapdragoncolor::GammaFileEvents {
  public:
    explicit GammaScan(FileFindings &out) : out_(out) {}

    void OnCode(int value, int number) override {
        ++codes_;
        if (codes_ > kCodesNeeded) {
            surplus_line_ = surplus_line_ ? surplus_line_ : number;
            return;
        }
        if (value < 0 || value > kTopCode) {
            out_.Error("range", number,
                       Format("code %d is outside 0..%d: %s", value, kTopCode, kDisabled));
        } else if (codes_ > 1 && value < previous_) {
            out_.Warning("falling", number,
                         Format("code %d is below the code before it (%d): the ramp falls here",
                                value, previous_));
        }
        all_zero_ = all_zero_ && value == 0;
        previous_ = value;
    }

    void OnInvalidLine(int number, const std::string &) override {
        out_.Warning("invalid", number, "line does not begin with a code: the plug-in skips it");
    }

    long codes() const { return codes_; }
    bool all_zero() const { return all_zero_; }
    int surplus_line() const { return surplus_line_; }

  private:
    FileFindings &out_;
    long codes_ = 0;
    int previous_ = 0;
    bool all_zero_ = true;
    int surplus_line_ = 0;  // the line of the first code beyond those used
};

}  // namespace

void CheckGamma(const std::string &read_path, FileFindings &out) {
    GammaScan scan(out);
    switch (snapdragoncolor::ReadGammaFile(read_path, scan)) {
        case snapdragoncolor::GammaFileResult::kUnopened:
            out.Error("open", 0, Format("cannot be opened as a regular file: %s", kDisabled));
            return;
        case snapdragoncolor::GammaFileResult::kReadError:
            out.Error("read", 0, Format("a read failed before the end of the file: %s", kDisabled));
            return;
        case snapdragoncolor::GammaFileResult::kRead:
            break;
    }
    if (scan.codes() < kCodesNeeded) {
        out.Error("count", 0,
                  Format("%ld valid codes, the plug-in needs %ld: %s", scan.codes(), kCodesNeeded,
                         kDisabled));
    } else if (scan.all_zero()) {
        out.Error("all-zero", 0,
                  Format("the first %ld codes are all 0: %s", kCodesNeeded, kDisabled));
    }
    if (scan.surplus_line()) {
        const long surplus = scan.codes() - kCodesNeeded;
        out.Warning("surplus", scan.surplus_line(),
                    Format("%ld more code%s from here on: the plug-in uses the first %ld and "
                           "ignores the rest",
                           surplus, surplus == 1 ? "" : "s", kCodesNeeded));
    }
}

}  // namespace stc_host
