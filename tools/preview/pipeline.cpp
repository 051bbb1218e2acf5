#include "tools/preview/pipeline.h"

#include "tools/preview/curve.h"
#include "tools/preview/gamma_stage.h"
#include "tools/preview/pa_stage.h"
#include "tools/preview/pcc_stage.h"

namespace stc_preview {

namespace {

template <typename Record>
bool Active(const Record *record) {
    return record != nullptr && record->enabled;
}

}  // namespace

PreviewPipeline::PreviewPipeline(const PreviewBlocks &blocks) {
    if (Active(blocks.igc)) {
        const std::string problem = CheckCurves(blocks.igc->r, blocks.igc->g, blocks.igc->b);
        if (problem.empty()) {
            igc_ = *blocks.igc;
        } else {
            Refuse(snapdragoncolor::kPbIGC, problem);
        }
    }
    if (Active(blocks.pcc)) {
        pcc_ = *blocks.pcc;
    }
    if (Active(blocks.pa)) {
        pa_ = *blocks.pa;
    }
    if (Active(blocks.gamut)) {
        std::string problem;
        lut_ = Lut3d::FromConfig(*blocks.gamut, &problem);
        if (!lut_) {
            Refuse(snapdragoncolor::kPbGamut, problem);
        }
    }
    if (Active(blocks.gc)) {
        const std::string problem = CheckCurves(blocks.gc->r, blocks.gc->g, blocks.gc->b);
        if (problem.empty()) {
            gc_ = *blocks.gc;
        } else {
            Refuse(snapdragoncolor::kPbGC, problem);
        }
    }
}

void PreviewPipeline::Refuse(const std::string &block, const std::string &reason) {
    refusals_.push_back(block + ": " + reason);
}

Rgb PreviewPipeline::Apply(Rgb in) const {
    Rgb c = in;
    if (igc_) {
        c = ApplyIgc(*igc_, c);
    }
    if (pcc_) {
        c = ApplyPcc(*pcc_, c);
    }
    if (pa_) {
        c = ApplyPa(*pa_, c);
    }
    if (lut_) {
        c = lut_->Apply(c);
    }
    if (gc_) {
        c = ApplyGamma(*gc_, c);
    }
    return c;
}

Image PreviewPipeline::Apply(const Image &in) const {
    Image out = MakeImage(in.width, in.height, in.bit_depth);
    for (int y = 0; y < in.height; ++y) {
        for (int x = 0; x < in.width; ++x) {
            SetPixel(&out, x, y, Apply(PixelAt(in, x, y)));
        }
    }
    return out;
}

}  // namespace stc_preview
