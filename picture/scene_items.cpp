#include "picture/scene_items.h"

namespace snapdragoncolor {

namespace {

struct SceneItemName {
    uint32_t mask;
    const char *name;
};

// Print order of the item-name string; bit 26 and unnamed bits print nothing.
constexpr SceneItemName kSceneItemNames[] = {
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

}  // namespace

std::string SceneIdToString(uint32_t scene_id) {
    std::string text = "S{";
    for (const SceneItemName &item : kSceneItemNames) {
        if (scene_id & item.mask) {
            text += item.name;
            text += ' ';
        }
    }
    text += '}';
    return text;
}

}  // namespace snapdragoncolor
