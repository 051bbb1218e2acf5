// stc-host preview: plays a session and shows what the configured pipeline does to an image.
#ifndef STC_TOOLS_STC_HOST_PREVIEW_PREVIEW_COMMAND_H_
#define STC_TOOLS_STC_HOST_PREVIEW_PREVIEW_COMMAND_H_

#include <optional>
#include <string>

#include "tools/stc-host/options.h"

namespace stc_host {

struct PreviewOptions {
    std::string image;  // a PNG, or
    std::string chart;  // a built-in chart
    std::string out;
    std::optional<size_t> at;  // the last call to play
    std::string report;
    bool side_by_side = false;
};

// `run` carries the session, device, library and stand-in options.
int RunPreview(const Options &run, const PreviewOptions &options);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_PREVIEW_PREVIEW_COMMAND_H_
