// Where the plug-in's log lines go inside stc-host: liblog's logger hook forwards every line to
// the sink installed at the moment (a reporter, a checker collecting messages, or nothing).
#ifndef STC_TOOLS_STC_HOST_LOG_SINK_H_
#define STC_TOOLS_STC_HOST_LOG_SINK_H_

#include <functional>
#include <string>

namespace stc_host {

// priority (ANDROID_LOG_*), tag, message as logged (its final line feed included).
using LogSink = std::function<void(int priority, const std::string &tag, const std::string &)>;

// Installs `sink` for the lifetime of this object; the previous one comes back afterwards.
class ScopedLogSink {
  public:
    explicit ScopedLogSink(LogSink sink);
    ~ScopedLogSink();
    ScopedLogSink(const ScopedLogSink &) = delete;
    ScopedLogSink &operator=(const ScopedLogSink &) = delete;

  private:
    LogSink previous_;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_LOG_SINK_H_
