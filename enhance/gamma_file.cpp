#include "enhance/gamma_file.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "calibration/text_number.h"
#include "platform/device_file.h"

namespace snapdragoncolor {

namespace {

struct FileCloser {
    void operator()(FILE *file) const { std::fclose(file); }
};

}  // namespace

bool ParseGammaCode(const char *line, int *value) {
    long parsed;
    if (!ScanDecimal(&line, &parsed) || parsed < INT_MIN || parsed > INT_MAX) {
        return false;
    }
    *value = static_cast<int>(parsed);
    return true;
}

GammaFileResult ReadGammaFile(const std::string &path, GammaFileEvents &events) {
    ScopedFd fd(OpenDeviceFile(path));
    std::unique_ptr<FILE, FileCloser> file(fd.get() < 0 ? nullptr : fdopen(fd.get(), "r"));
    if (!file) {
        return GammaFileResult::kUnopened;
    }
    fd.release();
    // One line buffer for the whole file, grown only by a longer line than any before.
    char *buffer = nullptr;
    size_t capacity = 0;
    ssize_t length;
    for (int number = 1; (length = getline(&buffer, &capacity, file.get())) >= 0; ++number) {
        if (length > 0 && buffer[length - 1] == '\n') {
            buffer[--length] = '\0';
        }
        if (length == 0 || buffer[0] == '#') {
            continue;
        }
        int value;
        if (ParseGammaCode(buffer, &value)) {
            events.OnCode(value, number);
        } else {
            events.OnInvalidLine(number, std::string(buffer, static_cast<size_t>(length)));
        }
    }
    std::free(buffer);
    return std::ferror(file.get()) ? GammaFileResult::kReadError : GammaFileResult::kRead;
}

}  // namespace snapdragoncolor
