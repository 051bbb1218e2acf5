// The gamma-curve contrast enhancement ("glimra"): the panel's gamma code file, the two curves
// built at Init and their application to the post-blend gamma block.
#ifndef STC_ENHANCE_GLIMRA_H_
#define STC_ENHANCE_GLIMRA_H_

#include <mutex>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

constexpr size_t kLinearCurveLength = 1024;
constexpr size_t kNonLinearCurveLength = 1280;

// Gamma codes of the last non-linear panel initialised; shared by every plug-in object.
extern std::vector<int> gamma_srgb;
// Held from reading gamma_srgb until its codes are in the curves, so that displays initialising
// at the same time do not interleave.
extern std::mutex gamma_srgb_mutex;

bool readGammaConfigFromFile(std::vector<int> &gamma_values, const std::string &path);
// As readGammaConfigFromFile, also giving the line (from 1) each code came from.
bool ReadGammaCodes(const std::string &path, std::vector<int> &gamma_values,
                    std::vector<int> *lines);

bool stcZuvaGlimraInit(std::vector<int> &boost_curve, std::vector<int> &base_curve,
                       const std::string &panel_name, bool isLinearGamma);

int ApplyZuvaGlimra(ModeRenderInputParams *input, HwConfigOutputParams *output,
                    std::vector<int> &curve, bool isLinearGamma);

}  // namespace snapdragoncolor

#endif  // STC_ENHANCE_GLIMRA_H_
