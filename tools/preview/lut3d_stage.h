// 3D LUT (gamut): tetrahedral interpolation on the 17 x 17 x 17 grid of the host's record.
#ifndef STC_TOOLS_PREVIEW_LUT3D_STAGE_H_
#define STC_TOOLS_PREVIEW_LUT3D_STAGE_H_

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/preview/image.h"

namespace stc_preview {

class Lut3d {
  public:
    using Grid = std::array<double, snapdragoncolor::kGamutGridPoints>;

    // Indexes the entries by their input columns, whatever their order in the table. The grid
    // and the bit depth are inferred from the inputs: 10-bit when no input exceeds 1023, else
    // 12-bit. A table that is not one full 17-point grid per channel with each point once is
    // refused: the result is empty and *error says why.
    static std::optional<Lut3d> FromConfig(const snapdragoncolor::GamutConfig &config,
                                           std::string *error);

    int max_code() const { return max_code_; }
    // The normalised grid values of channel 0 (red), 1 (green) or 2 (blue), ascending.
    const Grid &grid(int channel) const { return grids_[channel]; }

    Rgb Apply(Rgb in) const;

  private:
    Lut3d() = default;
    const Rgb &Output(int r, int g, int b) const;

    int max_code_ = 0;
    std::array<Grid, 3> grids_ = {};
    std::vector<Rgb> outputs_;  // normalised, red index slowest
};

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_LUT3D_STAGE_H_
