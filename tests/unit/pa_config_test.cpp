// Composition of the picture-adjustment record from the recorded levels, and its dump.
#include "picture/pa_config.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "tests/support/test_access.h"

namespace snapdragoncolor {
namespace {

using A = StcZuvaColorTestAccess;

class PaConfigTest : public ::testing::Test {
  protected:
    void SetUp() override {
        config_.enabled = true;
        A::pq_levels_(c_) = {-5, 20, 3, 9, 0, -1, -7, 4, 11, 12, -13, 21, 22, 23};
    }
    void Compose(uint32_t scene) {
        A::curr_scene_id_(c_) = scene;
        A::ComposePaConfig(c_, config_);
    }
    StcZuvaColor c_;
    PaConfig config_;
};

TEST_F(PaConfigTest, ItemsWriteOnlyTheirFields) {
    config_.enabled = false;
    PaConfig before = config_;
    Compose(0xFFFFFFFF);
    EXPECT_EQ(std::memcmp(&before, &config_, sizeof(PaConfig)), 0);
    config_.enabled = true;
    config_.global.contrast = 0.5f;
    Compose(0x1C00);
    EXPECT_EQ(std::tie(config_.global.hue, config_.global.saturation, config_.global.value,
                       config_.global.contrast),
              std::make_tuple(-5, 20.0f, 3.0f, 0.5f));
    EXPECT_EQ(config_.enable_flags, 0xF0u);
    config_.enable_flags = 0x1;
    Compose(0x23);
    EXPECT_EQ(config_.enable_flags, 0xEF1u);
    EXPECT_EQ(std::tie(config_.skin.type, config_.sky.type, config_.foliage.type),
              std::make_tuple(0u, 1u, 2u));
    EXPECT_EQ(config_.skin.saturation, -7.0f);
    EXPECT_EQ(config_.foliage.value, 23.0f);
}

TEST_F(PaConfigTest, DumpText) {
    std::string fresh = PaConfigToString(config_);
    EXPECT_EQ(fresh,
              "PaConfig: (enabled=1 enable_flags=0) global{Flags=0 [h0 s0.000000 v0.000000]} "
              "skin{cfg [flag=0 type=0 (h0 s0.000000 v0.000000)]} sky{cfg [flag=0 type=0 (h0 "
              "s0.000000 v0.000000)]} foliage{cfg [flag=0 type=0 (h0 s0.000000 v0.000000)]}");
    config_.global.contrast = 4.0f;
    EXPECT_EQ(PaConfigToString(config_), fresh);
    config_.global.flags = 3;
    config_.foliage.flag = 4;
    config_.skin.type = 0xFFFFFFFF;
    Compose(0x401);
    EXPECT_EQ(PaConfigToString(config_),
              "PaConfig: (enabled=1 enable_flags=1264) global{Flags=3 [h-5 s0.000000 v0.000000]} "
              "skin{cfg [flag=0 type=-1 (h0 s0.000000 v0.000000)]} sky{cfg [flag=0 type=1 (h11 "
              "s12.000000 v-13.000000)]} foliage{cfg [flag=4 type=0 (h0 s0.000000 v0.000000)]}");
}

}  // namespace
}  // namespace snapdragoncolor
