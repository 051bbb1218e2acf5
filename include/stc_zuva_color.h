// The plug-in object: one per display, created by GetScPostBlendInterface and driven by the host.
#ifndef STC_INCLUDE_STC_ZUVA_COLOR_H_
#define STC_INCLUDE_STC_ZUVA_COLOR_H_

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "calibration/lut3d_info.h"
#include "panel/stc_xml_parse.h"
#include "sc_post_blend_interface.h"

#define STC_EXPORT __attribute__((visibility("default")))

extern "C" STC_EXPORT snapdragoncolor::ScPostBlendInterface *GetScPostBlendInterface(
    int major_version, int minor_version);

namespace snapdragoncolor {

constexpr int kStcMajorVersion = 3;
constexpr int kStcMinorVersion = 1;

constexpr uint32_t kGamutNone = 255;
constexpr uint32_t kGammaNone = 255;
constexpr uint32_t kGamutSrgb = 1;
constexpr uint32_t kGamutP3 = 12;
constexpr uint32_t kIntentConstructed = 0xFFFF;
constexpr uint32_t kIntentStandardMode = 0xFFFE;
constexpr uint32_t kIntentCalibrationMode = 0x103;

// The plug-in's own "standard" colour mode: no gamut, no gamma, and the given intent marker.
inline ColorMode StandardMode(uint32_t intent) {
    ColorMode mode;
    mode.gamut = kGamutNone;
    mode.gamma = kGammaNone;
    mode.intent = intent;
    mode.name = "standard";
    return mode;
}

STC_EXPORT void printCallStack(char *tag);

class StcZuvaColor : public ScPostBlendInterface {
  public:
    StcZuvaColor();
    ~StcZuvaColor() override;

    int Init(const std::string &panel_name) override;
    int DeInit() override;
    int SetProperty(const ScPayload &payload) override;
    int GetProperty(ScPayload *payload) override;
    int ProcessOps(ScOps op, const ScPayload &input, ScPayload *output) override;

  private:
    friend struct StcZuvaColorTestAccess;

    using SetHandler = int (StcZuvaColor::*)(const ScPayload &);
    using GetHandler = int (StcZuvaColor::*)(ScPayload *);
    using OpsHandler = int (StcZuvaColor::*)(const ScPayload &input, ScPayload *output);
    using RefreshScreenFunc = int (*)();

    // Frame: dispatch support and frame getters.
    void LogColorModeChange(ScOps op, const ModeRenderInputParams *params);
    void LogOutputSummary(ScOps op, const ModeRenderInputParams *params,
                          const HwConfigOutputParams *output);
    int GetModeList(ScPayload *payload);
    int GetNeedsUpdate(ScPayload *payload);
    int GetSupportTonemap(ScPayload *payload);

    // Panel: Init steps. ClassifyPanel is false for a panel the profile does not list.
    bool ClassifyPanel(const std::string &panel_name, int parse_result);
    bool MatchPanelLists(const std::string &panel_name);
    int OpenQdutils();
    void CheckNonLinearSrgb(const std::string &panel_name);

    // Calibration: discovery, loading, readers and the render stage.
    bool isQcCalibrtPresent(const std::string &panel_name);
    bool useIncomingPanelName(const std::string &panel_name);
    void loadCalibratedParam(const std::string &panel_name);
    bool read3DlutFromFile(char *file_path, lut3d_info *lut);
    bool readPCCFromFile(char *file_path, PccConfig *pcc);
    int ZuvaColorRenderIntentCalibration(ModeRenderInputParams *input,
                                         HwConfigOutputParams *output);

    // Render-intent pipeline.
    int ProcessModeRenderIntent(const ScPayload &in, ScPayload *out);
    int ZuvaColorRenderIntentPA(ModeRenderInputParams *input, HwConfigOutputParams *output);
    int ZuvaColorRenderIntentGamma(ModeRenderInputParams *input, HwConfigOutputParams *output);
    int ZuvaColorRenderIntentPCC(ModeRenderInputParams *input, HwConfigOutputParams *output);
    int SetDimmingPcc(const ScPayload &payload);
    int GetDimmingSupport(ScPayload *payload);
    int ApplyPccAttenuationFactor(HwConfigOutputParams *output, double factor);
    int SetPostBlendGamutConfig(const ScPayload &payload);
    int SetPostBlendGammaConfig(const ScPayload &payload);
    int SetPostBlendInvGammaConfig(const ScPayload &payload);
    int SetHwConfigPayloadParam(const ScPayload &payload);
    int GetHwConfigPayloadParamSupprt(ScPayload *payload);
    int SetColorTransform(const ScPayload &payload);

    // Picture-quality controls.
    int SetZuvaColor(const ScPayload &payload);
    void ApplyFacCalibration(uint32_t value);
    void ApplyAloneItem(uint32_t value);
    // Bits 0x2000/0x4000 say which calibrated data is in force; they live in both item words.
    void LatchItems(uint32_t mask);
    void UnlatchItems(uint32_t mask);
    void ReloadCalibration();
    void ComposePaConfig(PaConfig &config);
    int ProcessModeSwAssets(const ScPayload &input, ScPayload *output);
    int ZuvaColorSwAssetsSharpness(ModeRenderInputParams *input, HwConfigOutputParams *output);

    std::map<ScProperty, SetHandler> set_property_map_;
    std::map<ScProperty, GetHandler> get_property_map_;
    std::map<ScOps, OpsHandler> ops_map_;
    std::mutex mutex_;
    bool init_done_ = false;
    bool dimming_pending_ = false;
    std::vector<ColorMode> color_modes_;
    std::string qdutils_lib_name_ = "libqdutils.so";
    std::string refresh_func_name_ = "refreshScreen";
    RefreshScreenFunc refresh_screen_ = nullptr;
    void *qdutils_handle_ = nullptr;
    double pcc_attenuation_factor_ = 1.1;
    ZuvaColorLevels pq_levels_ = {};
    uint32_t latched_scene_id_ = 0;
    uint32_t curr_scene_id_ = 0;
    uint32_t curr_scene_val_ = 0;
    bool pq_update_pending_ = false;
    bool de_update_pending_ = false;
    uint32_t process_cnt_ = 0;
    lut3d_info calibrated_lut3d_srgb_ = {};
    lut3d_info calibrated_lut3d_p3_ = {};
    bool has_calib_3dlut_ = false;
    ColorMode active_color_mode_ = StandardMode(kIntentConstructed);
    PccConfig calibrated_pcc_;
    bool en_calibrated_3dlut_ = false;
    bool en_calibrated_pcc_ = false;
    int32_t active_mode_id_ = -1;
    uint32_t cali_gamut_ = kGamutNone;
    bool clr_trsfm_ = false;
    bool print_log_ = false;
    bool is_primary_ = false;
    bool glimra_enabled_ = false;
    bool is_cli_ = false;
    stcXmlresult xml_result_;
    bool has_dt_panel_name_ = false;
    std::string panel_name_;
    bool use_incoming_panel_name_ = false;
    std::vector<int> glimra_boost_curve_;
    std::vector<int> glimra_base_curve_;
    bool is_linear_gamma_ = true;
    bool glimra_disabled_ = false;
};

}  // namespace snapdragoncolor

#endif  // STC_INCLUDE_STC_ZUVA_COLOR_H_
