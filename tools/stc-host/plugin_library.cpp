#include "tools/stc-host/plugin_library.h"

#include <dlfcn.h>

namespace stc_host {

bool PluginLibrary::Load(const std::string &library, const std::string &qdutils,
                         std::string *error) {
    // The phone's libqdutils.so is opened by the plug-in by its bare name; loading the stand-in
    // first makes that name resolve to it without touching the plug-in's own search.
    if (!qdutils.empty() && !dlopen(qdutils.c_str(), RTLD_NOW | RTLD_GLOBAL)) {
        *error = "cannot load " + qdutils + ": " + dlerror();
        return false;
    }
    // Loaded for the life of the process, as a host keeps it: log text may outlive any object.
    void *handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        *error = "cannot load plug-in " + library + ": " + dlerror();
        return false;
    }
    entry_ = reinterpret_cast<EntryPoint>(dlsym(handle, "GetScPostBlendInterface"));
    if (!entry_) {
        *error = library + " has no GetScPostBlendInterface entry point";
        return false;
    }
    library_ = library;
    return true;
}

std::unique_ptr<snapdragoncolor::ScPostBlendInterface> PluginLibrary::Create(
    std::string *error) const {
    std::unique_ptr<snapdragoncolor::ScPostBlendInterface> plugin(entry_ ? entry_(2, 0) : nullptr);
    if (!plugin) {
        *error = library_ + " refused interface version 2.0";
    }
    return plugin;
}

}  // namespace stc_host
