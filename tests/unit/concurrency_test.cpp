#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "tests/support/device_tree.h"
#include "tests/unit/pipeline_fixture.h"

namespace snapdragoncolor {
namespace {

using ConcurrencyTest = PipelineTest;

TEST_F(ConcurrencyTest, ParallelHostCallsLeaveEveryRecordUntouchedOrFullyCalibrated) {
    A::en_calibrated_pcc_(plugin_) = A::en_calibrated_3dlut_(plugin_) = true;
    A::latched_scene_id_(plugin_) = kSceneColorTemperature | kSceneFacCalibration;
    A::cali_gamut_(plugin_) = kGamutSrgb;  // both stages act whatever the intent
    const PccConfig host = MakePcc(2.0), &calibrated = A::calibrated_pcc_(plugin_);
    std::atomic<int> torn{0}, calibrated_seen{0};
    auto worker = [&](uint32_t thread) {
        ModeRenderInputParams input = stc_test::ModeInput(kGamutSrgb, 2, thread % 2);
        // The colour property switches both stages on and off while other threads render.
        const uint32_t items[] = {kSceneColorTemperature, kSceneCalib3dLutSwitch, kSceneSaturation};
        for (uint32_t round = 0; round < 60; ++round) {
            ZuvaColorParams params{items[round % 3], round % 2, nullptr, 0, 0};
            plugin_.SetProperty(stc_test::PayloadOf(&params, sizeof(params), kSetZuvaColor));
            auto pcc = std::make_shared<PccConfig>(host);
            auto gamut = std::make_shared<GamutConfig>(GamutConfig{117936, false, 0x55, 0, 0, ~0u});
            HwConfigOutputParams output;  // the gamut record's count runs past its table
            output.payload = {Entry(kPbPCC, pcc), Entry(kPbGamut, gamut), EmptyEntry(kPbPa),
                              EmptyEntry(kPbGC)};
            Run(&input, &output);
            calibrated_seen += SameBody(*pcc, calibrated) + gamut->enabled;
            torn += !pcc->enabled || !(SameBody(*pcc, host) || SameBody(*pcc, calibrated));
            torn += gamut->enabled ? !HoldsLut(*gamut, A::calibrated_lut3d_srgb_(plugin_))
                                   : gamut->flags != 0x55;
        }
    };
    std::thread a(worker, 0), b(worker, 1), c(worker, 2), d(worker, 3);
    a.join(), b.join(), c.join(), d.join();
    EXPECT_EQ(torn.load(), 0);
    EXPECT_GT(calibrated_seen.load(), 0);
    EXPECT_EQ(A::process_cnt_(plugin_), 4u * 60);
}

// While the object's lock is held elsewhere, no front door returns.
TEST_F(ConcurrencyTest, EveryFrontDoorWaitsForTheLock) {
    stc_test::DeviceTree device;  // what Init reads
    ScPayload none;
    const std::pair<const char *, std::function<void()>> doors[] = {
        {"Init", [&] { plugin_.Init("p"); }},
        {"DeInit", [&] { plugin_.DeInit(); }},
        {"SetProperty", [&] { plugin_.SetProperty(none); }},
        {"GetProperty", [&] { plugin_.GetProperty(&none); }},
        {"ProcessOps", [&] { plugin_.ProcessOps(kScModeRenderIntent, none, &none); }},
    };
    for (const auto &[name, call] : doors) {
        std::atomic<bool> returned{false};
        std::unique_lock<std::mutex> held(A::mutex_(plugin_));
        std::thread caller([&, &call = call] {
            call();
            returned = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(returned) << name << " returned while the lock was held";
        held.unlock();
        caller.join();
        EXPECT_TRUE(returned) << name;
    }
}

}  // namespace
}  // namespace snapdragoncolor
