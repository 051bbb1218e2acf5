#include <atomic>
#include <thread>
#include <vector>

#include "picture/scene_items.h"
#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using stc_test::EmptyEntry;
using stc_test::PayloadOf;

constexpr int kThreads = 4;
constexpr int kRounds = 60;

class ConcurrencyTest : public PipelineTest {
  protected:
    ConcurrencyTest() {
        A::en_calibrated_pcc_(plugin_) = true;
        A::en_calibrated_3dlut_(plugin_) = true;
        A::latched_scene_id_(plugin_) = 0x6000;
        A::cali_gamut_(plugin_) = kGamutSrgb;  // both stages act whatever the intent
    }

    // Host property traffic of one round; results do not matter, only that nothing races.
    void WriteProperties(int thread, int round) {
        ZuvaColorLevels levels{};
        levels.saturation = thread;
        const uint32_t items[] = {kSceneColorTemperature, kSceneCalib3dLutSwitch, kSceneSaturation};
        ZuvaColorParams params{items[round % 3], static_cast<uint32_t>(round % 2), &levels, 1, 0};
        plugin_.SetProperty(PayloadOf(&params, sizeof(params), kSetZuvaColor));
        ColorTransformMatrix identity;
        identity.m[0] = identity.m[5] = identity.m[10] = identity.m[15] = 1.0f;
        plugin_.SetProperty(PayloadOf(&identity, sizeof(identity), kSetColorTransform));
        bool needs_update = false;
        ScPayload query = PayloadOf(&needs_update, 1, kNeedsUpdate);
        plugin_.GetProperty(&query);
    }

    // Counts records that are neither the host's nor a complete calibrated copy.
    int TornRecords(const HwConfigOutputParams &output, const PccConfig &host_pcc) {
        const PccConfig &calibrated = A::calibrated_pcc_(plugin_);
        int torn = 0;
        for (const HwConfigPayload &entry : output.payload) {
            if (entry.hw_asset == kPbPCC && entry.hw_payload) {
                const auto &pcc = *stc_test::RecordOf<PccConfig>(entry);
                torn += !SamePccBody(pcc, host_pcc) && !SamePccBody(pcc, calibrated) &&
                        !SamePccBody(pcc, PccConfig());
            } else if (entry.hw_asset == kPbGamut) {
                const auto &gamut = *stc_test::RecordOf<GamutConfig>(entry);
                torn += !HoldsLut(gamut, A::calibrated_lut3d_srgb_(plugin_)) &&
                        !(gamut.flags == 0x55 && gamut.num == 2 && gamut.entries[1].out_b == 7);
            }
        }
        return torn;
    }
};

TEST_F(ConcurrencyTest, ParallelHostCallsNeverTearARecord) {
    const PccConfig host_pcc = MakePcc(2.0, true);
    std::atomic<int> torn{0};
    auto worker = [&](int thread) {
        ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, thread % 2);
        for (int round = 0; round < kRounds; ++round) {
            WriteProperties(thread, round);
            auto gamut = std::make_shared<GamutConfig>();
            gamut->flags = 0x55;
            gamut->num = 2;
            gamut->entries[1].out_b = 7;
            HwConfigOutputParams output;
            output.payload = {stc_test::Entry(kPbPCC, std::make_shared<PccConfig>(host_pcc)),
                              EmptyEntry(kPbPCC), stc_test::Entry(kPbGamut, gamut),
                              EmptyEntry(kPbPa), EmptyEntry(kPbGC)};
            RunOn(&input, &output);
            ScPayload in = PayloadOf(&input);
            ScPayload out = PayloadOf(&output);
            plugin_.ProcessOps(kScModeSwAssets, in, &out);
            torn += TornRecords(output, host_pcc);
        }
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(worker, t);
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(torn.load(), 0);
    EXPECT_EQ(A::process_cnt_(plugin_), static_cast<uint32_t>(2 * kThreads * kRounds));
}

}  // namespace
}  // namespace snapdragoncolor
