// The 3D LUT reader against its written rules, on any file a station or a power cut can leave.
#include <android/log.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "picture/scene_items.h"
#include "tests/fuzz/calibration_reference.h"
#include "tests/fuzz/fuzz_support.h"
#include "tests/support/host_records.h"
#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;
using stc_fuzz::ExpectedLog;

constexpr const char *kFunc = "read3DlutFromFile";
const std::string kPath = "/mnt/vendor/persist/display/panel_f_C3D_cali_srgb.txt";
constexpr int kLines = 4913;

// The members a read may change.
struct LutState {
    lut3d_info lut;
    bool has_calib, enabled, pending;
    uint32_t latched, current;
};

LutState StateOf(StcZuvaColor &c) {
    LutState s;
    std::memcpy(&s.lut, &A::calibrated_lut3d_srgb_(c), sizeof(s.lut));
    s.has_calib = A::has_calib_3dlut_(c);
    s.enabled = A::en_calibrated_3dlut_(c);
    s.pending = A::pq_update_pending_(c);
    s.latched = A::latched_scene_id_(c);
    s.current = A::curr_scene_id_(c);
    return s;
}

// An object that already holds an accepted table, so that a refused file shows what it overwrote.
void GiveAcceptedTable(StcZuvaColor &c) {
    lut3d_info &lut = A::calibrated_lut3d_srgb_(c);
    lut.flags = 0, lut.lut3d_id = 1, lut.uniform = 1, lut.num = kLines;
    for (int i = 0; i < kLines; ++i) {
        for (int k = 0; k < 6; ++k) {
            lut.entries[i][k] = 7000 + i * 6 + k;
        }
    }
    A::has_calib_3dlut_(c) = A::en_calibrated_3dlut_(c) = true;
    A::latched_scene_id_(c) = A::curr_scene_id_(c) = kSceneFacCalibration | kSceneSkin;
}

// The reader as written: returns its result and leaves the expected state in `s`.
bool ReferenceRead(const std::string &content, LutState *s, ExpectedLog *log) {
    log->Add(ANDROID_LOG_DEBUG, "%s: read3DlutFromFile %s, size=%d\n", kFunc, kPath.c_str(),
             static_cast<int>(content.size()));
    log->Add(ANDROID_LOG_DEBUG, "%s: read3DlutFromFile readsize=%d\n", kFunc,
             static_cast<int>(content.size()));
    int count = 0;
    auto on_line = [&](const char *line) {
        int v[6];
        int got = std::sscanf(line, " %d %d %d %d %d %d", &v[0], &v[1], &v[2], &v[3], &v[4], &v[5]);
        if (got < 6) {
            log->Add(ANDROID_LOG_ERROR, "%s: got %d params, wrong para line?\n", kFunc, got);
            return;
        }
        if (count < kLines) {
            std::memcpy(s->lut.entries[count], v, sizeof(v));
        }
        if (count < 15 || count > 4900) {
            log->Add(ANDROID_LOG_DEBUG,
                     "%s: line %d: got %d params [(%d %d %d) -> (%d %d %d)], str=[%s]\n", kFunc,
                     count, got, v[0], v[1], v[2], v[3], v[4], v[5], line);
        }
        ++count;
    };
    auto end = stc_fuzz::SplitReferenceLines(
        content, kFunc, on_line, [&] { return count; }, log);
    if (end != stc_fuzz::ReferenceEnd::kAllLines) {
        return true;
    }
    if (count != kLines) {
        log->Add(ANDROID_LOG_WARN, "%s: found %d lines, should have %d lines!\n", kFunc, count,
                 kLines);
        if (count > kLines) {
            return true;
        }
    }
    log->Add(ANDROID_LOG_DEBUG, "%s: read3DlutFromFile success. totalLineCnt=%d\n", kFunc, count);
    s->lut.flags = 0, s->lut.lut3d_id = 1, s->lut.uniform = 1, s->lut.num = kLines;
    s->has_calib = s->enabled = s->pending = true;
    s->latched |= kSceneFacCalibration;
    s->current |= kSceneFacCalibration;
    return true;
}

void CheckSameState(const LutState &got, const LutState &want, const char *scenario) {
    STC_FUZZ_CHECK(std::memcmp(&got.lut, &want.lut, sizeof(got.lut)) == 0,
                   "%s: table differs from the reference (header %u/%u/%u/%u, reference %u)",
                   scenario, got.lut.flags, got.lut.lut3d_id, got.lut.uniform, got.lut.num,
                   want.lut.num);
    STC_FUZZ_CHECK(got.has_calib == want.has_calib, "%s: has_calib_3dlut_", scenario);
    STC_FUZZ_CHECK(got.enabled == want.enabled, "%s: en_calibrated_3dlut_", scenario);
    STC_FUZZ_CHECK(got.pending == want.pending, "%s: pq_update_pending_", scenario);
    STC_FUZZ_CHECK(got.latched == want.latched, "%s: latched_scene_id_ 0x%x, reference 0x%x",
                   scenario, got.latched, want.latched);
    STC_FUZZ_CHECK(got.current == want.current, "%s: curr_scene_id_ 0x%x, reference 0x%x", scenario,
                   got.current, want.current);
}

// A render-intent pass in an sRGB mode: an enabled gamut entry that took the calibrated table
// must carry the header of a complete one.
void CheckRenderedTables(StcZuvaColor &c, const char *scenario) {
    A::init_done_(c) = A::is_primary_(c) = true;
    auto host = std::make_shared<GamutConfig>();
    host->flags = 0x55;
    std::memset(host->entries, 0x7f, sizeof(host->entries));
    HwConfigOutputParams output;
    output.payload = {stc_test::Entry(kPbGamut, host), stc_test::EmptyEntry(kPbGamut)};
    ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, 1);
    ScPayload in = stc_test::PayloadOf(&input), out = stc_test::PayloadOf(&output);
    c.ProcessOps(kScModeRenderIntent, in, &out);
    const lut3d_info &table = A::calibrated_lut3d_srgb_(c);
    for (const HwConfigPayload &entry : output.payload) {
        const auto *config = stc_test::RecordOf<GamutConfig>(entry);
        if (!config || !config->enabled ||
            std::memcmp(config->entries, table.entries, sizeof(table.entries)) != 0) {
            continue;
        }
        STC_FUZZ_CHECK(config->flags == 0 && config->lut3d_id == 1 && config->uniform == 1 &&
                           config->num == kGamutEntries,
                       "%s: enabled gamut entry with the calibrated table has header %u/%u/%u/%u",
                       scenario, config->flags, config->lut3d_id, config->uniform, config->num);
    }
}

void RunScenario(const std::string &content, bool accepted_before) {
    const char *scenario = accepted_before ? "after an accepted table" : "fresh object";
    auto c = std::make_unique<StcZuvaColor>();
    if (accepted_before) {
        GiveAcceptedTable(*c);
    } else {
        A::curr_scene_id_(*c) = kSceneSkin;
    }
    LutState want = StateOf(*c);
    ExpectedLog expected;
    const bool want_result = ReferenceRead(content, &want, &expected);

    stc_fuzz::Log().Clear();
    std::string path = kPath;
    const bool result = A::read3DlutFromFile(*c, path.data(), &A::calibrated_lut3d_srgb_(*c));
    STC_FUZZ_CHECK(result == want_result, "%s: result %d, reference %d", scenario, result,
                   want_result);
    CheckSameState(StateOf(*c), want, scenario);
    stc_fuzz::CheckSameLog(stc_fuzz::Log().Lines(), expected, scenario);
    CheckRenderedTables(*c, scenario);
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
