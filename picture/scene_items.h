// Item bits of the colour property's item word, and the masks that select processing stages.
#ifndef STC_PICTURE_SCENE_ITEMS_H_
#define STC_PICTURE_SCENE_ITEMS_H_

#include <cstdint>
#include <string>

namespace snapdragoncolor {

constexpr uint32_t kSceneSkyCloud = 0x1;
constexpr uint32_t kSceneGrass = 0x2;
constexpr uint32_t kSceneDesert = 0x4;
constexpr uint32_t kSceneSnow = 0x8;
constexpr uint32_t kSceneSunRf = 0x10;
constexpr uint32_t kSceneSkin = 0x20;
constexpr uint32_t kSceneDark = 0x40;
constexpr uint32_t kSceneOverexposure = 0x80;
constexpr uint32_t kSceneSharpness = 0x100;
constexpr uint32_t kSceneContrast = 0x200;
constexpr uint32_t kSceneHue = 0x400;
constexpr uint32_t kSceneSaturation = 0x800;
constexpr uint32_t kSceneValue = 0x1000;
constexpr uint32_t kSceneColorTemperature = 0x2000;
constexpr uint32_t kSceneFacCalibration = 0x4000;
constexpr uint32_t kSceneWaterSurface = 0x8000;
constexpr uint32_t kSceneCalib3dLutSwitch = 0x4000000;  // bit 26, no name in logs
constexpr uint32_t kSceneZuvaGlimra = 0x8000000;
constexpr uint32_t kSceneLoad3dLut = 0x10000000;
constexpr uint32_t kScenePrintLog = 0x20000000;
constexpr uint32_t kSceneForceUpdate = 0x40000000;

// Items that raise the picture-quality update on their own bit.
constexpr uint32_t kScenePqUpdateMask = 0xFEE3;
// Stage selection of the render-intent update pass.
constexpr uint32_t kScenePaStageMask = 0x1E27;
constexpr uint32_t kSceneGammaStageMask = 0xC0;

struct SceneItemName {
    uint32_t mask;
    const char *name;
};

// Print order of the item-name string; bit 26 and unnamed bits print nothing.
inline constexpr SceneItemName kSceneItemNames[] = {
    {kSceneSkyCloud, "SKY_CLOUD"},
    {kSceneGrass, "GRASS"},
    {kSceneDesert, "DESERT"},
    {kSceneSnow, "SNOW"},
    {kSceneSunRf, "SUN_RF"},
    {kSceneSkin, "SKIN"},
    {kSceneDark, "DARK"},
    {kSceneOverexposure, "OVEREXPOSURE"},
    {kSceneSharpness, "SHARPNESS"},
    {kSceneContrast, "CONTRAST"},
    {kSceneHue, "HUE"},
    {kSceneSaturation, "SATURATION"},
    {kSceneValue, "VALUE"},
    {kSceneColorTemperature, "COLOR_TEMPERATURE"},
    {kSceneFacCalibration, "FAC_CALIBRATION"},
    {kSceneWaterSurface, "WATER_SURFACE"},
    {kSceneLoad3dLut, "LOAD_3DLUT"},
    {kScenePrintLog, "PRINT_LOG"},
    {kSceneForceUpdate, "FORCE_UPDATE"},
    {kSceneZuvaGlimra, "ZUVA_GLIMRA"},
};

// "S{NAME NAME }" for the bits set in `scene_id`.
std::string SceneIdToString(uint32_t scene_id);

}  // namespace snapdragoncolor

#endif  // STC_PICTURE_SCENE_ITEMS_H_
