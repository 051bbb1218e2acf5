#include "tools/stc-host/log_sink.h"

#include <android/log.h>

#include <utility>

namespace stc_host {

namespace {

LogSink &CurrentSink() {
    static LogSink sink;
    return sink;
}

void Forward(const struct __android_logger_data *data, const char *message) {
    if (CurrentSink()) {
        CurrentSink()(data->priority, data->tag ? data->tag : "", message ? message : "");
    }
}

}  // namespace

ScopedLogSink::ScopedLogSink(LogSink sink) : previous_(std::move(CurrentSink())) {
    CurrentSink() = std::move(sink);
    __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
    __android_log_set_logger(Forward);
}

ScopedLogSink::~ScopedLogSink() {
    CurrentSink() = std::move(previous_);
}

}  // namespace stc_host
