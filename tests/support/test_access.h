// White-box access to the plug-in object for tests: every member by reference and every private
// operation by forwarding. The one definition of the class the plug-in befriends.
#ifndef STC_TESTS_SUPPORT_TEST_ACCESS_H_
#define STC_TESTS_SUPPORT_TEST_ACCESS_H_

#include <utility>

#include "stc_zuva_color.h"

namespace snapdragoncolor {

struct StcZuvaColorTestAccess {
#define STC_MEMBER(name)                 \
    static auto &name(StcZuvaColor &c) { \
        return c.name;                   \
    }
#define STC_METHOD(name)                                          \
    template <typename... Args>                                   \
    static decltype(auto) name(StcZuvaColor &c, Args &&...args) { \
        return c.name(std::forward<Args>(args)...);               \
    }
    // clang-format off
    STC_MEMBER(set_property_map_) STC_MEMBER(get_property_map_) STC_MEMBER(ops_map_)
    STC_MEMBER(mutex_) STC_MEMBER(init_done_) STC_MEMBER(dimming_pending_)
    STC_MEMBER(color_modes_) STC_MEMBER(qdutils_lib_name_) STC_MEMBER(refresh_func_name_)
    STC_MEMBER(refresh_screen_) STC_MEMBER(qdutils_handle_) STC_MEMBER(pcc_attenuation_factor_)
    STC_MEMBER(pq_levels_) STC_MEMBER(latched_scene_id_) STC_MEMBER(curr_scene_id_)
    STC_MEMBER(curr_scene_val_) STC_MEMBER(pq_update_pending_) STC_MEMBER(de_update_pending_)
    STC_MEMBER(process_cnt_) STC_MEMBER(calibrated_lut3d_srgb_) STC_MEMBER(calibrated_lut3d_p3_)
    STC_MEMBER(has_calib_3dlut_) STC_MEMBER(active_color_mode_) STC_MEMBER(calibrated_pcc_)
    STC_MEMBER(en_calibrated_3dlut_) STC_MEMBER(en_calibrated_pcc_) STC_MEMBER(active_mode_id_)
    STC_MEMBER(cali_gamut_) STC_MEMBER(clr_trsfm_) STC_MEMBER(print_log_) STC_MEMBER(is_primary_)
    STC_MEMBER(glimra_enabled_) STC_MEMBER(is_cli_) STC_MEMBER(xml_result_)
    STC_MEMBER(has_dt_panel_name_) STC_MEMBER(panel_name_) STC_MEMBER(use_incoming_panel_name_)
    STC_MEMBER(glimra_boost_curve_) STC_MEMBER(glimra_base_curve_) STC_MEMBER(is_linear_gamma_)
    STC_MEMBER(glimra_disabled_)

    STC_METHOD(isQcCalibrtPresent) STC_METHOD(useIncomingPanelName)
    STC_METHOD(loadCalibratedParam) STC_METHOD(read3DlutFromFile) STC_METHOD(readPCCFromFile)
    STC_METHOD(ZuvaColorRenderIntentCalibration) STC_METHOD(ZuvaColorRenderIntentPA)
    STC_METHOD(ZuvaColorRenderIntentGamma) STC_METHOD(ZuvaColorRenderIntentPCC)
    STC_METHOD(ApplyPccAttenuationFactor) STC_METHOD(ComposePaConfig)
    STC_METHOD(ZuvaColorSwAssetsSharpness)
    // clang-format on
#undef STC_MEMBER
#undef STC_METHOD
};

}  // namespace snapdragoncolor

#endif  // STC_TESTS_SUPPORT_TEST_ACCESS_H_
