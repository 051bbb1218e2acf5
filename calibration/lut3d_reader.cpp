#include <optional>

#include "calibration/calibration_file.h"
#include "calibration/lut3d_line.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kLutReader = "read3DlutFromFile";
constexpr int kLutLines = static_cast<int>(kGamutEntries);
// Accepted lines echoed to the log: the first fifteen and every one past the 4900th, which is the
// tail of a full table and any surplus line.
constexpr int kLutLogHead = 15;
constexpr int kLutLogTailAfter = 4900;

// Parses LUT lines straight into the destination's entries, in file order.
class LutLineHandler final : public CalibrationLineHandler {
  public:
    explicit LutLineHandler(lut3d_info *lut) : lut_(lut) {}

    int count() const { return count_; }

    void LogSize(const char *shown_path, int size) const override {
        STC_LOGD("%s: read3DlutFromFile %s, size=%d\n", kLutReader, shown_path, size);
    }
    void LogReadSize(int read_size) const override {
        STC_LOGD("%s: read3DlutFromFile readsize=%d\n", kLutReader, read_size);
    }
    int TooLargeLineValue() const override { return count_; }

    void OnLine(const char *line) override {
        int32_t v[kLutLineValues];
        int got = ScanLutLine(line, v);
        if (got < kLutLineValues) {
            STC_LOGE("%s: got %d params, wrong para line?\n", kLutReader, got);
            return;
        }
        // Lines past a full table are only counted, so that the closing step can refuse it.
        if (count_ < kLutLines) {
            for (int k = 0; k < 6; ++k) {
                lut_->entries[count_][k] = v[k];
            }
        }
        if (count_ < kLutLogHead || count_ > kLutLogTailAfter) {
            STC_LOGD("%s: line %d: got %d params [(%d %d %d) -> (%d %d %d)], str=[%s]\n",
                     kLutReader, count_, got, v[0], v[1], v[2], v[3], v[4], v[5], line);
        }
        ++count_;
    }

  private:
    lut3d_info *lut_;
    int count_ = 0;
};

}  // namespace

bool StcZuvaColor::read3DlutFromFile(char *file_path, lut3d_info *lut) {
    LutLineHandler handler(lut);
    if (std::optional<bool> early =
            ResultBeforeClosing(ReadCalibrationFile(file_path, kLutReader, handler))) {
        return *early;
    }
    const int count = handler.count();
    if (count != kLutLines) {
        STC_LOGW("%s: found %d lines, should have %d lines!\n", kLutReader, count, kLutLines);
        if (count > kLutLines) {
            return true;
        }
    }
    STC_LOGD("%s: read3DlutFromFile success. totalLineCnt=%d\n", kLutReader, count);
    // A short table still counts as complete: the entries it did not reach keep their values.
    lut->flags = 0;
    lut->lut3d_id = 1;
    lut->uniform = 1;
    lut->num = kGamutEntries;
    has_calib_3dlut_ = true;
    en_calibrated_3dlut_ = true;
    pq_update_pending_ = true;
    LatchItems(kSceneFacCalibration);
    return true;
}

}  // namespace snapdragoncolor
