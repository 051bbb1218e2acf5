// Every member of a plug-in object but the constant dispatch tables and the mutex, to tell
// whether a call changed anything.
#ifndef STC_TESTS_FUZZ_MEMBER_SNAPSHOT_H_
#define STC_TESTS_FUZZ_MEMBER_SNAPSHOT_H_

#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/test_access.h"

namespace stc_fuzz {

// Bytes by memcpy: an element-wise copy of two LUTs per call would dominate the run.
template <typename T>
void AddBytes(std::vector<uint8_t> &out, const T &value) {
    const size_t at = out.size();
    out.resize(at + sizeof(T));
    std::memcpy(out.data() + at, &value, sizeof(T));
}

inline bool SameBytes(const std::vector<uint8_t> &a, const std::vector<uint8_t> &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

struct Snapshot {
    std::vector<uint8_t> plain;  // the plain members' bytes
    std::vector<std::tuple<uint32_t, uint32_t, uint32_t, std::vector<std::string>, std::string>>
        modes;
    std::vector<std::vector<std::string>> lists;
    std::vector<std::string> texts;
    std::vector<std::vector<int>> curves;
    int32_t panel_type;

    bool operator==(const Snapshot &o) const {
        return SameBytes(plain, o.plain) &&
               std::tie(modes, lists, texts, curves, panel_type) ==
                   std::tie(o.modes, o.lists, o.texts, o.curves, o.panel_type);
    }
};

inline Snapshot Take(snapdragoncolor::StcZuvaColor &c) {
    using A = snapdragoncolor::StcZuvaColorTestAccess;
    Snapshot s;
    std::vector<uint8_t> &p = s.plain;
    AddBytes(p, A::init_done_(c)), AddBytes(p, A::dimming_pending_(c));
    AddBytes(p, A::refresh_screen_(c)), AddBytes(p, A::qdutils_handle_(c));
    AddBytes(p, A::pcc_attenuation_factor_(c)), AddBytes(p, A::pq_levels_(c));
    AddBytes(p, A::latched_scene_id_(c)), AddBytes(p, A::curr_scene_id_(c));
    AddBytes(p, A::curr_scene_val_(c)), AddBytes(p, A::pq_update_pending_(c));
    AddBytes(p, A::de_update_pending_(c)), AddBytes(p, A::process_cnt_(c));
    AddBytes(p, A::calibrated_lut3d_srgb_(c)), AddBytes(p, A::calibrated_lut3d_p3_(c));
    AddBytes(p, A::has_calib_3dlut_(c)), AddBytes(p, A::calibrated_pcc_(c));
    AddBytes(p, A::en_calibrated_3dlut_(c)), AddBytes(p, A::en_calibrated_pcc_(c));
    AddBytes(p, A::active_mode_id_(c)), AddBytes(p, A::cali_gamut_(c));
    AddBytes(p, A::clr_trsfm_(c)), AddBytes(p, A::print_log_(c)), AddBytes(p, A::is_primary_(c));
    AddBytes(p, A::glimra_enabled_(c)), AddBytes(p, A::is_cli_(c));
    AddBytes(p, A::has_dt_panel_name_(c)), AddBytes(p, A::use_incoming_panel_name_(c));
    AddBytes(p, A::is_linear_gamma_(c)), AddBytes(p, A::glimra_disabled_(c));
    std::vector<snapdragoncolor::ColorMode> modes = A::color_modes_(c);
    modes.push_back(A::active_color_mode_(c));
    for (const snapdragoncolor::ColorMode &m : modes) {
        s.modes.emplace_back(m.gamut, m.gamma, m.intent, m.hw_assets, m.name);
    }
    const snapdragoncolor::stcXmlresult &x = A::xml_result_(c);
    s.lists = {x.prim_panel_list, x.cli_panel_list, x.nonlinear_srgb_panels};
    s.texts = {x.prim_name_path,  x.cli_name_path,         x.init_name_path,
               A::panel_name_(c), A::qdutils_lib_name_(c), A::refresh_func_name_(c)};
    s.curves = {A::glimra_boost_curve_(c), A::glimra_base_curve_(c)};
    s.panel_type = x.init_panel_type;
    return s;
}

}  // namespace stc_fuzz

#endif  // STC_TESTS_FUZZ_MEMBER_SNAPSHOT_H_
