// Loads the built plug-in the way the colour framework does: dlopen, dlsym of the entry point,
// then only the virtual interface.
#ifndef STC_TESTS_HOST_PLUGIN_HOST_H_
#define STC_TESTS_HOST_PLUGIN_HOST_H_

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>

#include "sc_post_blend_interface.h"
#include "tests/support/host_records.h"
#include "tests/support/log_capture.h"

namespace stc_test {

using EntryPoint = snapdragoncolor::ScPostBlendInterface *(*)(int, int);

class PluginHost : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        handle_ = dlopen(STC_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(handle_, nullptr) << dlerror();
        entry_ = reinterpret_cast<EntryPoint>(dlsym(handle_, "GetScPostBlendInterface"));
        ASSERT_NE(entry_, nullptr);
    }
    // The library stays loaded: liblog may still hold its formatted strings, and a real host
    // never unloads it either.
    static void TearDownTestSuite() {}

    std::unique_ptr<snapdragoncolor::ScPostBlendInterface> Create() {
        return std::unique_ptr<snapdragoncolor::ScPostBlendInterface>(entry_(2, 0));
    }

    // A property read with the standard envelope.
    template <typename T>
    int Get(snapdragoncolor::ScPostBlendInterface &plugin, snapdragoncolor::ScProperty prop,
            T *record, uint32_t len = sizeof(T)) {
        snapdragoncolor::ScPayload payload = PayloadOf(record, len, prop);
        return plugin.GetProperty(&payload);
    }
    template <typename T>
    int Set(snapdragoncolor::ScPostBlendInterface &plugin, snapdragoncolor::ScProperty prop,
            T *record, uint32_t len = sizeof(T)) {
        return plugin.SetProperty(PayloadOf(record, len, prop));
    }

    static inline void *handle_ = nullptr;
    static inline EntryPoint entry_ = nullptr;
    LogCapture log_;
};

}  // namespace stc_test

#endif  // STC_TESTS_HOST_PLUGIN_HOST_H_
