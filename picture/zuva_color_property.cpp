// The colour property: records the item word, its value and the picture-quality levels, drives the
// factory-calibration switches and raises the flags that make the next operations rebuild the
// hardware configuration. It builds no configuration itself.
#include <cerrno>

#include "frame/payload.h"
#include "picture/scene_items.h"
#include "platform/stc_log.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

constexpr const char *kFunction = "SetZuvaColor";

// FAC_CALIBRATION values besides the gamut codes 1 and 12.
constexpr uint32_t kCaliRunStart = 0;
constexpr uint32_t kCaliRunEnd = kGamutNone;
constexpr uint32_t kCaliEmpty3dLut = 500;
constexpr uint32_t kCaliEmptyPcc = 501;
// LOAD_3DLUT value: reload, then drop what was loaded.
constexpr uint32_t kLoadThenDisable = 255;

}  // namespace

int StcZuvaColor::SetZuvaColor(const ScPayload &payload) {
    const auto *params = CheckedRecord<ZuvaColorParams>(payload, kFunction);
    if (!params) {
        return -EINVAL;
    }
    if (params->has_levels && !params->levels) {
        STC_LOGE("%s: has_levels %u without levels\n", kFunction, params->has_levels);
        return -EINVAL;
    }
    curr_scene_id_ = params->scene_id;
    curr_scene_val_ = params->value;
    if (params->scene_id == kSceneFacCalibration) {
        ApplyFacCalibration(params->value);
    }
    ApplyAloneItem(params->value);
    if (params->has_levels) {
        pq_levels_ = *params->levels;
    }
    if (curr_scene_id_ & kScenePqUpdateMask) {
        pq_update_pending_ = true;
    }
    if (curr_scene_id_ & kSceneSharpness) {
        de_update_pending_ = true;
    }
    if (curr_scene_id_ & kSceneForceUpdate) {
        pq_update_pending_ = true;
        de_update_pending_ = true;
    } else if (curr_scene_id_ == kSceneLoad3dLut) {
        ReloadCalibration();
    }
    if (curr_scene_id_ & kScenePrintLog) {
        print_log_ = curr_scene_val_ != 0;
    }
    if (curr_scene_id_ & kSceneCalib3dLutSwitch) {
        pq_update_pending_ = true;
        en_calibrated_3dlut_ = curr_scene_val_ == 0;
    }
    const ZuvaColorLevels &lv = pq_levels_;
    STC_LOGD(
        "%s: prop=%d scene=0x%x(0x%x) val=%d(%d) [H%d ST%d V%d C%d SP%d] skin[h%d s%d v%d] "
        "sky[h%d s%d v%d] foliage[h%d s%d v%d] curr_scene_id_=[%s], print_log_=%d, clr_trsfm=%d "
        "calibrtPccEn=(%d %d), has_calib_3dlut_=%d, en_calib_3dlut_=%d\n",
        kFunction, static_cast<int>(payload.prop), curr_scene_id_, params->scene_id,
        static_cast<int>(curr_scene_val_), static_cast<int>(params->value), lv.hue, lv.saturation,
        lv.value, lv.contrast, lv.sharpness, lv.skin_hue, lv.skin_sat, lv.skin_val, lv.sky_hue,
        lv.sky_sat, lv.sky_val, lv.foliage_hue, lv.foliage_sat, lv.foliage_val,
        SceneIdToString(curr_scene_id_).c_str(), print_log_, clr_trsfm_, calibrated_pcc_.enabled,
        en_calibrated_pcc_, has_calib_3dlut_, en_calibrated_3dlut_);
    return 0;
}

// The calibration station's commands; the stages read the resulting switches.
void StcZuvaColor::ApplyFacCalibration(uint32_t value) {
    cali_gamut_ = value;
    if (value == kCaliRunStart) {
        STC_LOGD(
            "%s: Calitration start: Keep origin/clean 3dlut/pcc during calitration process!!!\n",
            kFunction);
        en_calibrated_3dlut_ = false;
        en_calibrated_pcc_ = false;
        if (active_color_mode_.intent != kIntentCalibrationMode) {
            STC_LOGE("%s: Please set calibration color mode first before starting calibrating!!!\n",
                     kFunction);
        }
    } else if (value == kGamutSrgb || value == kGamutP3) {
        LatchItems(kSceneFacCalibration);
        en_calibrated_3dlut_ = true;
        en_calibrated_pcc_ = false;
        pq_update_pending_ = true;
    } else if (value == kCaliRunEnd) {
        STC_LOGD("%s: Calitration exit!!!\n", kFunction);
        // Without an accepted LUT nothing calibrated may stay in force after the run.
        if (!has_calib_3dlut_) {
            UnlatchItems(kSceneFacCalibration | kSceneColorTemperature);
        }
        en_calibrated_3dlut_ = has_calib_3dlut_;
        en_calibrated_pcc_ = has_calib_3dlut_;
    }

    if (value == kCaliEmpty3dLut) {
        STC_LOGD("%s: Empty 3dlut param by flag!!!\n", kFunction);
        UnlatchItems(kSceneFacCalibration);
        cali_gamut_ = kGamutNone;
    } else if (value == kCaliEmptyPcc) {
        STC_LOGD("%s: Empty pcc param by flag!!!\n", kFunction);
        UnlatchItems(kSceneColorTemperature);
        cali_gamut_ = kGamutNone;
    }
}

void StcZuvaColor::LatchItems(uint32_t mask) {
    latched_scene_id_ |= mask;
    curr_scene_id_ |= mask;
}

void StcZuvaColor::UnlatchItems(uint32_t mask) {
    latched_scene_id_ &= ~mask;
    curr_scene_id_ &= ~mask;
}

// Items recognised only when the item word is exactly theirs.
void StcZuvaColor::ApplyAloneItem(uint32_t value) {
    if (curr_scene_id_ == kSceneZuvaGlimra) {
        bool enable = value == 1;
        if (enable != glimra_enabled_) {
            glimra_enabled_ = enable;
            pq_update_pending_ = true;
        }
    } else if (curr_scene_id_ == kSceneColorTemperature) {
        pq_update_pending_ = true;
        if (value != 0) {
            latched_scene_id_ |= kSceneColorTemperature;
            en_calibrated_3dlut_ = false;
            en_calibrated_pcc_ = true;
        } else {
            en_calibrated_pcc_ = false;
        }
    }
}

// The station wrote new calibration files; a value of 255 reloads and then drops them.
void StcZuvaColor::ReloadCalibration() {
    STC_LOGD(
        "%s: Calitration complete: load calibration param!!!en_calibrated_3dlut_=%d "
        "en_calibrated_pcc_=%d curr_scene_val_=%d\n",
        kFunction, en_calibrated_3dlut_, en_calibrated_pcc_, static_cast<int>(curr_scene_val_));
    loadCalibratedParam(panel_name_);
    if (curr_scene_val_ == kLoadThenDisable) {
        STC_LOGD("%s: Calitration complete: disable cali param\n", kFunction);
        has_calib_3dlut_ = false;
        calibrated_pcc_.enabled = false;
    }
}

}  // namespace snapdragoncolor
