// The post-blend colour pipeline of the display, in hardware order:
// inverse gamma (IGC) -> PCC -> picture adjustment (PA) -> 3D LUT (gamut) -> gamma curve (GC).
#ifndef STC_TOOLS_PREVIEW_PIPELINE_H_
#define STC_TOOLS_PREVIEW_PIPELINE_H_

#include <optional>
#include <string>
#include <vector>

#include "sc_post_blend_interface.h"
#include "tools/preview/igc_stage.h"
#include "tools/preview/image.h"
#include "tools/preview/lut3d_stage.h"

namespace stc_preview {

// The records of one configuration list; a null record is an absent block.
struct PreviewBlocks {
    const IgcCurves *igc = nullptr;
    const snapdragoncolor::PccConfig *pcc = nullptr;
    const snapdragoncolor::PaConfig *pa = nullptr;
    const snapdragoncolor::GamutConfig *gamut = nullptr;
    const snapdragoncolor::GammaPostBlendConfig *gc = nullptr;
};

class PreviewPipeline {
  public:
    // Copies what it needs, so the records may go once it is built. Absent and disabled blocks
    // are skipped; an enabled block that cannot be modelled is skipped too and named in
    // refusals().
    explicit PreviewPipeline(const PreviewBlocks &blocks);

    // One line per refused block, "<block name>: <reason>"; the caller decides whether a preview
    // without those blocks is still worth showing.
    const std::vector<std::string> &refusals() const { return refusals_; }

    Rgb Apply(Rgb in) const;
    // Every pixel through Apply, rounded once at the end to the input's depth.
    Image Apply(const Image &in) const;

  private:
    void Refuse(const std::string &block, const std::string &reason);

    std::optional<IgcCurves> igc_;
    std::optional<snapdragoncolor::PccConfig> pcc_;
    std::optional<snapdragoncolor::PaConfig> pa_;
    std::optional<Lut3d> lut_;
    std::optional<snapdragoncolor::GammaPostBlendConfig> gc_;
    std::vector<std::string> refusals_;
};

}  // namespace stc_preview

#endif  // STC_TOOLS_PREVIEW_PIPELINE_H_
