// The PCC reader against its written rules, on any file a station or a power cut can leave.
#include <android/log.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>

#include "picture/scene_items.h"
#include "tests/fuzz/calibration_reference.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_fuzz::ExpectedLog;

constexpr const char *kFunc = "readPCCFromFile";
const std::string kPath = "/mnt/vendor/persist/display/panel_f_C3D_cali_pcc.txt";

// The members a read may change, and the one it reads for the log.
struct PccState {
    PccConfig pcc;
    bool enabled, pending;
    uint32_t latched, current, cali_gamut;
};

PccState StateOf(StcZuvaColor &c) {
    PccState s;
    std::memcpy(static_cast<void *>(&s.pcc), &A::calibrated_pcc_(c), sizeof(s.pcc));
    s.enabled = A::en_calibrated_pcc_(c);
    s.pending = A::pq_update_pending_(c);
    s.latched = A::latched_scene_id_(c);
    s.current = A::curr_scene_id_(c);
    s.cali_gamut = A::cali_gamut_(c);
    return s;
}

void GiveAcceptedPcc(StcZuvaColor &c) {
    PccConfig &pcc = A::calibrated_pcc_(c);
    std::iota(&pcc.red.c, &pcc.red.c + 33, 0.25);
    pcc.enabled = true;
    A::en_calibrated_pcc_(c) = true;
    A::latched_scene_id_(c) = A::curr_scene_id_(c) = kSceneColorTemperature | kSceneSkin;
    A::cali_gamut_(c) = kGamutP3;
}

bool ReferenceRead(const std::string &content, PccState *s, ExpectedLog *log) {
    log->Add(ANDROID_LOG_DEBUG, "%s: readPCCFromFile readsize=%d\n", kFunc,
             static_cast<int>(content.size()));
    int lines = 0;
    auto on_line = [&](const char *line) {
        PccCoeff &row = lines == 0 ? s->pcc.red : lines == 1 ? s->pcc.green : s->pcc.blue;
        int got =
            std::sscanf(line, "%lf %lf %lf %lf %lf %lf %lf %lf %lf %lf %lf", &row.c, &row.r, &row.g,
                        &row.b, &row.rr, &row.gg, &row.bb, &row.rg, &row.gb, &row.rb, &row.rgb);
        if (got < 11) {
            log->Add(ANDROID_LOG_ERROR, "%s: got %d params, wrong para line?\n", kFunc, got);
        }
        log->Add(ANDROID_LOG_DEBUG, "%s: got line %d:  %s\n", kFunc, lines, line);
        log->Add(ANDROID_LOG_DEBUG,
                 "%s: got %d params:  c=%lf r=%lf g=%lf b=%lf rr=%lf gg=%lf bb=%lf rg=%lf gb=%lf "
                 "rb=%lf rgb=%lf\n",
                 kFunc, got, row.c, row.r, row.g, row.b, row.rr, row.gg, row.bb, row.rg, row.gb,
                 row.rb, row.rgb);
        ++lines;
    };
    auto end = stc_fuzz::SplitReferenceLines(
        content, kFunc, on_line, [&] { return lines; }, log);
    if (end != stc_fuzz::ReferenceEnd::kAllLines) {
        return true;
    }
    if (lines != 3) {
        log->Add(ANDROID_LOG_WARN, "%s: found %d lines, should have 3 lines!\n", kFunc, lines);
        return true;
    }
    log->Add(ANDROID_LOG_DEBUG, "%s: readPCCFromFile success. totalLineCnt=%d, cali_gamut_=%d\n",
             kFunc, 3, static_cast<int>(s->cali_gamut));
    s->pcc.enabled = true;
    s->enabled = s->pending = true;
    s->latched |= kSceneColorTemperature;
    s->current |= kSceneColorTemperature;
    return true;
}

void CheckSameState(const PccState &got, const PccState &want, const char *scenario) {
    // Bitwise, so that a NaN read from the file compares equal to itself.
    STC_FUZZ_CHECK(std::memcmp(&got.pcc, &want.pcc, sizeof(got.pcc)) == 0,
                   "%s: PCC record differs from the reference (enabled %d, reference %d)", scenario,
                   got.pcc.enabled, want.pcc.enabled);
    STC_FUZZ_CHECK(got.enabled == want.enabled, "%s: en_calibrated_pcc_", scenario);
    STC_FUZZ_CHECK(got.pending == want.pending, "%s: pq_update_pending_", scenario);
    STC_FUZZ_CHECK(got.latched == want.latched, "%s: latched_scene_id_ 0x%x, reference 0x%x",
                   scenario, got.latched, want.latched);
    STC_FUZZ_CHECK(got.current == want.current, "%s: curr_scene_id_ 0x%x, reference 0x%x", scenario,
                   got.current, want.current);
}

void RunScenario(const std::string &content, bool accepted_before) {
    const char *scenario = accepted_before ? "after an accepted PCC" : "fresh object";
    auto c = std::make_unique<StcZuvaColor>();
    if (accepted_before) {
        GiveAcceptedPcc(*c);
    }
    PccState want = StateOf(*c);
    ExpectedLog expected;
    const bool want_result = ReferenceRead(content, &want, &expected);

    stc_fuzz::Log().Clear();
    std::string path = kPath;
    const bool result = A::readPCCFromFile(*c, path.data(), &A::calibrated_pcc_(*c));
    STC_FUZZ_CHECK(result == want_result, "%s: result %d, reference %d", scenario, result,
                   want_result);
    CheckSameState(StateOf(*c), want, scenario);
    stc_fuzz::CheckSameLog(stc_fuzz::Log().Lines(), expected, scenario);
}

}  // namespace
}  // namespace snapdragoncolor

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string content = stc_fuzz::AsText(data, size);
    stc_fuzz::Device().WriteFile(snapdragoncolor::kPath, content);
    snapdragoncolor::RunScenario(content, false);
    snapdragoncolor::RunScenario(content, true);
    return 0;
}
