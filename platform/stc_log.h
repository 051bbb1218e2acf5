// The plug-in's log: every line goes to the platform log under one tag. Each message begins with
// "%s: " naming the function that logs and ends with a newline; the format checks of
// __android_log_print apply to every call.
#ifndef STC_PLATFORM_STC_LOG_H_
#define STC_PLATFORM_STC_LOG_H_

#include <android/log.h>

namespace snapdragoncolor {
constexpr const char *kStcLogTag = "StcZuvaColor";
}  // namespace snapdragoncolor

#define STC_LOGD(...) \
    __android_log_print(ANDROID_LOG_DEBUG, ::snapdragoncolor::kStcLogTag, __VA_ARGS__)
#define STC_LOGW(...) \
    __android_log_print(ANDROID_LOG_WARN, ::snapdragoncolor::kStcLogTag, __VA_ARGS__)
#define STC_LOGE(...) \
    __android_log_print(ANDROID_LOG_ERROR, ::snapdragoncolor::kStcLogTag, __VA_ARGS__)

#endif  // STC_PLATFORM_STC_LOG_H_
