#ifndef STC_CALIBRATION_LUT3D_INFO_H_
#define STC_CALIBRATION_LUT3D_INFO_H_

#include <cstddef>
#include <cstdint>

#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

// One calibrated 3D LUT, laid out exactly as GamutConfig from `flags` on so that the calibration
// stage can copy it there in one block.
struct lut3d_info {
    uint32_t flags;
    uint32_t lut3d_id;
    uint32_t uniform;
    uint32_t num;
    int32_t entries[kGamutEntries][6];
};

static_assert(sizeof(lut3d_info) == sizeof(GamutConfig) - offsetof(GamutConfig, flags),
              "lut3d_info must mirror GamutConfig from flags on");
static_assert(offsetof(lut3d_info, entries) ==
                  offsetof(GamutConfig, entries) - offsetof(GamutConfig, flags),
              "lut3d_info entries offset");

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_LUT3D_INFO_H_
