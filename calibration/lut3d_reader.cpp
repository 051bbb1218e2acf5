#include <algorithm>
#include <memory>
#include <new>
#include <optional>

#include "calibration/logged_read.h"
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

// Parses LUT lines into a scratch table, in file order; the destination takes them only once
// the file has been read whole.
class LutRead final : public LoggedCalibrationRead {
  public:
    LutRead(const char *path, lut3d_info *scratch)
        : LoggedCalibrationRead(kLutReader, path), scratch_(scratch) {}

    int count() const { return count_; }
    int stored() const { return std::min(count_, kLutLines); }

    void OnSize(size_t size) override {
        STC_LOGD("%s: read3DlutFromFile %s, size=%d\n", kLutReader, shown_, static_cast<int>(size));
    }
    void OnReadSize(size_t got) override {
        STC_LOGD("%s: read3DlutFromFile readsize=%d\n", kLutReader, static_cast<int>(got));
    }
    void OnTooLongLine(size_t) override { STC_LOGW("%s: too large line %d\n", kLutReader, count_); }

    void OnLine(const char *line, size_t) override {
        int32_t v[kLutLineValues];
        const int got = ScanLutLine(line, v);
        if (got < kLutLineValues) {
            STC_LOGE("%s: got %d params, wrong para line?\n", kLutReader, got);
            return;
        }
        // Lines past a full table are only counted, so that the closing step can refuse it.
        if (count_ < kLutLines) {
            std::copy(v, v + kLutLineValues, scratch_->entries[count_]);
        }
        if (count_ < kLutLogHead || count_ > kLutLogTailAfter) {
            STC_LOGD("%s: line %d: got %d params [(%d %d %d) -> (%d %d %d)], str=[%s]\n",
                     kLutReader, count_, got, v[0], v[1], v[2], v[3], v[4], v[5], line);
        }
        ++count_;
    }

  private:
    lut3d_info *scratch_;
    int count_ = 0;
};

}  // namespace

bool StcZuvaColor::read3DlutFromFile(char *file_path, lut3d_info *lut) {
    std::unique_ptr<lut3d_info> scratch(new (std::nothrow) lut3d_info);
    if (!scratch) {
        STC_LOGE("%s: Failed to allocate memory for file: %s\n", kLutReader, PathForLog(file_path));
        return false;
    }
    LutRead read(file_path, scratch.get());
    const CalibrationReadResult result = ReadCalibrationFile(file_path, read);
    if (result == CalibrationReadResult::kUnreadable) {
        return false;
    }
    // Entries parsed before a stop stay written, as they would have been line by line.
    std::copy_n(&scratch->entries[0][0], read.stored() * kLutLineValues, &lut->entries[0][0]);
    if (std::optional<bool> early = ResultBeforeClosing(result)) {
        return *early;
    }
    const int count = read.count();
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
