#include "enhance/gamma_file.h"
#include "enhance/glimra.h"
#include "platform/stc_log.h"

namespace snapdragoncolor {

std::vector<int> gamma_srgb;
std::mutex gamma_srgb_mutex;

namespace {

constexpr const char *kGammaReader = "readGammaConfigFromFile";

// Collects the codes (and, when asked, the line each came from) and logs the invalid lines.
class GammaCodes final : public GammaFileEvents {
  public:
    GammaCodes(std::vector<int> &values, std::vector<int> *lines)
        : values_(values), lines_(lines) {}

    void OnCode(int value, int number) override {
        values_.push_back(value);
        if (lines_) {
            lines_->push_back(number);
        }
    }
    void OnInvalidLine(int number, const std::string &text) override {
        STC_LOGD("%s: Warning: Invalid data at line %d: %s\n", kGammaReader, number, text.c_str());
    }

  private:
    std::vector<int> &values_;
    std::vector<int> *lines_;
};

}  // namespace

bool ReadGammaCodes(const std::string &path, std::vector<int> &gamma_values,
                    std::vector<int> *lines) {
    gamma_values.clear();
    if (lines) {
        lines->clear();
    }
    GammaCodes codes(gamma_values, lines);
    switch (ReadGammaFile(path, codes)) {
        case GammaFileResult::kUnopened:
            STC_LOGD("%s: Failed to open gamma config file: %s\n", kGammaReader, path.c_str());
            return false;
        case GammaFileResult::kReadError:
            STC_LOGD("%s: Error occurred while reading file: %s\n", kGammaReader, path.c_str());
            return false;
        case GammaFileResult::kRead:
            break;
    }
    if (gamma_values.empty()) {
        STC_LOGD("%s: No valid data found in gamma config file: %s\n", kGammaReader, path.c_str());
        return false;
    }
    STC_LOGD("%s: Successfully loaded %zu values from gamma config file: %s\n", kGammaReader,
             gamma_values.size(), path.c_str());
    return true;
}

bool readGammaConfigFromFile(std::vector<int> &gamma_values, const std::string &path) {
    return ReadGammaCodes(path, gamma_values, nullptr);
}

}  // namespace snapdragoncolor
