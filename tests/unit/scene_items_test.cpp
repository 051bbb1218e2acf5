#include "picture/scene_items.h"

#include <gtest/gtest.h>

namespace snapdragoncolor {
namespace {

TEST(SceneIdToStringTest, PrintsBitsInItemOrderWithGlimraLast) {
    EXPECT_EQ(SceneIdToString(0), "S{}");
    EXPECT_EQ(SceneIdToString(0x8000020), "S{SKIN ZUVA_GLIMRA }");
    EXPECT_EQ(SceneIdToString(0x40000100), "S{SHARPNESS FORCE_UPDATE }");
    EXPECT_EQ(SceneIdToString(0x78000000), "S{LOAD_3DLUT PRINT_LOG FORCE_UPDATE ZUVA_GLIMRA }");
}

TEST(SceneIdToStringTest, Bit26AndUnnamedBitsPrintNothing) {
    EXPECT_EQ(SceneIdToString(0x4000000 | 0x10000 | 0x80000000u), "S{}");
    EXPECT_EQ(SceneIdToString(0x6000), "S{COLOR_TEMPERATURE FAC_CALIBRATION }");
}

}  // namespace
}  // namespace snapdragoncolor
