#include <cstdio>
#include <optional>

#include "calibration/calibration_file.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kPccReader = "readPCCFromFile";
constexpr int kPccCoeffCount = 11;
constexpr int kPccLines = 3;

// Parses line n into the red, green and blue rows in turn; later lines land in blue again.
class PccLineHandler final : public CalibrationLineHandler {
  public:
    explicit PccLineHandler(PccConfig *pcc) : pcc_(pcc) {}

    int lines() const { return lines_; }

    void LogReadSize(int read_size) const override {
        STC_LOGD("%s: readPCCFromFile readsize=%d\n", kPccReader, read_size);
    }
    int TooLargeLineValue() const override { return lines_; }

    void OnLine(const char *line) override {
        PccCoeff &row = lines_ == 0 ? pcc_->red : lines_ == 1 ? pcc_->green : pcc_->blue;
        // Fields the line does not convert keep their values.
        int got =
            std::sscanf(line, "%lf %lf %lf %lf %lf %lf %lf %lf %lf %lf %lf", &row.c, &row.r, &row.g,
                        &row.b, &row.rr, &row.gg, &row.bb, &row.rg, &row.gb, &row.rb, &row.rgb);
        if (got < kPccCoeffCount) {
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
    PccConfig *pcc_;
    int lines_ = 0;
};

}  // namespace

bool StcZuvaColor::readPCCFromFile(char *file_path, PccConfig *pcc) {
    PccLineHandler handler(pcc);
    if (std::optional<bool> early =
            ResultBeforeClosing(ReadCalibrationFile(file_path, kPccReader, handler))) {
        return *early;
    }
    if (handler.lines() != kPccLines) {
        STC_LOGW("%s: found %d lines, should have 3 lines!\n", kPccReader, handler.lines());
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
