// Loads a plug-in library the way the colour framework does: dlopen, dlsym of the entry point,
// version 2.0, then only the virtual interface. The one home of that sequence for every command.
#ifndef STC_TOOLS_STC_HOST_PLUGIN_LIBRARY_H_
#define STC_TOOLS_STC_HOST_PLUGIN_LIBRARY_H_

#include <memory>
#include <string>

#include "sc_post_blend_interface.h"

namespace stc_host {

class PluginLibrary {
  public:
    PluginLibrary() = default;
    PluginLibrary(const PluginLibrary &) = delete;
    PluginLibrary &operator=(const PluginLibrary &) = delete;

    // Makes the stand-in `qdutils` reachable by its bare name (unless empty), then loads
    // `library` and resolves its entry point; false with a one-line reason on failure.
    bool Load(const std::string &library, const std::string &qdutils, std::string *error);
    // A new plug-in object of interface version 2.0, or null with the reason when the library
    // refuses it.
    std::unique_ptr<snapdragoncolor::ScPostBlendInterface> Create(std::string *error) const;

  private:
    std::string library_;
    using EntryPoint = snapdragoncolor::ScPostBlendInterface *(*)(int, int);
    EntryPoint entry_ = nullptr;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_PLUGIN_LIBRARY_H_
