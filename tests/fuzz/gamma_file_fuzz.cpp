// A non-linear panel's gamma code file: the reader against its line rule, and what the curves
// built from it can put into the gamma block.
#include <android/log.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "enhance/glimra.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/support/host_records.h"

namespace snapdragoncolor {
namespace {

constexpr const char *kReader = "readGammaConfigFromFile";
const std::string kPanel = "g";
const std::string kPath = "/vendor/etc/display/panel_g_gamma_srgb.txt";
constexpr size_t kCodes = 1280;

// The reader as written: each line (the last one also without its line feed) that is neither
// empty nor a comment gives the integer strtol reads at its start, when it fits in 32 bits.
std::vector<int> ReferenceCodes(const std::string &content, stc_fuzz::ExpectedLog *log) {
    std::vector<int> codes;
    size_t start = 0;
    for (int line_no = 1; start < content.size(); ++line_no) {
        size_t lf = content.find('\n', start);
        const std::string line =
            content.substr(start, lf == std::string::npos ? std::string::npos : lf - start);
        start = lf == std::string::npos ? content.size() : lf + 1;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        char *end = nullptr;
        errno = 0;
        const long value = std::strtol(line.c_str(), &end, 10);
        if (end == line.c_str() || errno == ERANGE || value < INT_MIN || value > INT_MAX) {
            log->Add(ANDROID_LOG_DEBUG, "%s: Warning: Invalid data at line %d: %s\n", kReader,
                     line_no, line.c_str());
        } else {
            codes.push_back(static_cast<int>(value));
        }
    }
    if (codes.empty()) {
        log->Add(ANDROID_LOG_DEBUG, "%s: No valid data found in gamma config file: %s\n", kReader,
                 kPath.c_str());
    } else {
        log->Add(ANDROID_LOG_DEBUG,
                 "%s: Successfully loaded %zu values from gamma config file: %s\n", kReader,
                 codes.size(), kPath.c_str());
    }
    return codes;
}

// Usable: 1280 codes, all within 10 bits and not all zero.
bool Usable(const std::vector<int> &codes) {
    if (codes.size() < kCodes) {
        return false;
    }
    const auto first = codes.begin(), last = codes.begin() + kCodes;
    return std::all_of(first, last, [](int code) { return code >= 0 && code <= 1023; }) &&
           std::any_of(first, last, [](int code) { return code != 0; });
}

void CheckReader(const std::string &content, const std::vector<int> &want) {
    stc_fuzz::ExpectedLog expected;
    ReferenceCodes(content, &expected);
    stc_fuzz::Log().Clear();
    std::vector<int> got = {-7};
    const bool result = readGammaConfigFromFile(got, kPath);
    STC_FUZZ_CHECK(result == !want.empty(), "reader result %d with %zu reference codes", result,
                   want.size());
    STC_FUZZ_CHECK(got == want, "reader gave %zu codes, reference %zu", got.size(), want.size());
    stc_fuzz::CheckSameLog(stc_fuzz::Log().Lines(), expected, "gamma reader");
}

// The enhancement on a host gamma block whose curves cannot be mistaken for the panel's.
void CheckApplied(std::vector<int> &curve, const char *which) {
    auto host = std::make_shared<GammaPostBlendConfig>();
    host->r.assign(256, 0xABCDu), host->g = host->r, host->b = host->r;
    HwConfigOutputParams output;
    output.payload = {stc_test::Entry(kPbGC, host)};
    ApplyZuvaGlimra(nullptr, &output, curve, false);
    for (const std::vector<uint32_t> *channel : {&host->r, &host->g, &host->b}) {
        if (*channel == std::vector<uint32_t>(256, 0xABCDu)) {
            continue;
        }
        STC_FUZZ_CHECK(host->enabled, "%s curve written into a disabled block", which);
        STC_FUZZ_CHECK(channel->size() == kCodes, "%s curve of %zu entries", which,
                       channel->size());
        STC_FUZZ_CHECK(std::any_of(channel->begin(), channel->end(), [](uint32_t v) { return v; }),
                       "%s curve of all zeros", which);
        const uint32_t top = *std::max_element(channel->begin(), channel->end());
        STC_FUZZ_CHECK(top <= 1023, "%s curve holds code %u", which, top);
    }
}

void CheckCurves(const std::vector<int> &codes) {
    std::vector<int> boost, base;
    const bool built = stcZuvaGlimraInit(boost, base, kPanel, false);
    STC_FUZZ_CHECK(built == Usable(codes), "curves built %d from %zu codes, usable %d", built,
                   codes.size(), Usable(codes));
    if (!built) {
        return;
    }
    for (size_t i = 0; i < kCodes; ++i) {
        const float g = static_cast<float>(codes[i]);
        const int enhanced = static_cast<int>(std::pow(g / 1023.0f, 0.7f) * 1023.0f + 0.5f);
        STC_FUZZ_CHECK(boost[i] == enhanced, "enhanced curve[%zu] %d, formula %d", i, boost[i],
                       enhanced);
        STC_FUZZ_CHECK(base[i] == codes[i], "base curve[%zu] %d, code %d", i, base[i], codes[i]);
    }
    CheckApplied(boost, "enhanced");
    CheckApplied(base, "base");
}

}  // namespace
}  // namespace snapdragoncolor

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string content = stc_fuzz::AsText(data, size);
    stc_fuzz::Device().WriteFile(snapdragoncolor::kPath, content);
    stc_fuzz::ExpectedLog ignored;
    const std::vector<int> codes = snapdragoncolor::ReferenceCodes(content, &ignored);
    snapdragoncolor::CheckReader(content, codes);
    snapdragoncolor::CheckCurves(codes);
    return 0;
}
