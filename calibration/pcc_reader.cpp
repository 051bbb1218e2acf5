#include <optional>

#include "calibration/logged_read.h"
#include "calibration/pcc_line.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kPccReader = "readPCCFromFile";
constexpr int kPccLines = 3;

// Parses line n into the red, green and blue rows of a scratch copy in turn (later lines land
// in blue again); the destination takes the rows once the file has been read whole.
class PccRead final : public LoggedCalibrationRead {
  public:
    PccRead(const char *path, PccConfig *scratch)
        : LoggedCalibrationRead(kPccReader, path), scratch_(scratch) {}

    int lines() const { return lines_; }

    void OnReadSize(size_t got) override {
        STC_LOGD("%s: readPCCFromFile readsize=%d\n", kPccReader, static_cast<int>(got));
    }
    void OnTooLongLine(size_t) override { STC_LOGW("%s: too large line %d\n", kPccReader, lines_); }

    void OnLine(const char *line, size_t) override {
        PccCoeff &row = lines_ == 0   ? scratch_->red
                        : lines_ == 1 ? scratch_->green
                                      : scratch_->blue;
        const int got = ScanPccLine(line, &row);
        if (got < kPccLineValues) {
            STC_LOGE("%s: got %d params, wrong para line?\n", kPccReader, got);
        }
        STC_LOGD("%s: got line %d:  %s\n", kPccReader, lines_, line);
        STC_LOGD(
            "%s: got %d params:  c=%lf r=%lf g=%lf b=%lf rr=%lf gg=%lf bb=%lf rg=%lf gb=%lf "
            "rb=%lf rgb=%lf\n",
            kPccReader, got, row.c, row.r, row.g, row.b, row.rr, row.gg, row.bb, row.rg, row.gb,
            row.rb, row.rgb);
        ++lines_;
    }

  private:
    PccConfig *scratch_;
    int lines_ = 0;
};

}  // namespace

bool StcZuvaColor::readPCCFromFile(char *file_path, PccConfig *pcc) {
    // Fields a line does not convert keep the destination's values, so the scratch starts as it.
    PccConfig scratch = *pcc;
    PccRead read(file_path, &scratch);
    const CalibrationReadResult result = ReadCalibrationFile(file_path, read);
    if (result == CalibrationReadResult::kUnreadable) {
        return false;
    }
    pcc->red = scratch.red;
    pcc->green = scratch.green;
    pcc->blue = scratch.blue;
    if (std::optional<bool> early = ResultBeforeClosing(result)) {
        return *early;
    }
    if (read.lines() != kPccLines) {
        STC_LOGW("%s: found %d lines, should have 3 lines!\n", kPccReader, read.lines());
        return true;
    }
    STC_LOGD("%s: readPCCFromFile success. totalLineCnt=%d, cali_gamut_=%d\n", kPccReader,
             kPccLines, static_cast<int>(cali_gamut_));
    pcc->enabled = true;
    en_calibrated_pcc_ = true;
    pq_update_pending_ = true;
    LatchItems(kSceneColorTemperature);
    return true;
}

}  // namespace snapdragoncolor
