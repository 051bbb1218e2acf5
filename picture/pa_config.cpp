// Writing the recorded picture-quality levels into the host's picture-adjustment record, and the
// record's one-line dump for the logs.
#include "picture/pa_config.h"

#include <cstdarg>
#include <cstdio>

#include "picture/scene_items.h"
#include "stc_zuva_color.h"

namespace snapdragoncolor {

namespace {

// Sections of PaConfig::enable_flags that a written field makes valid.
constexpr uint32_t kPaEnableAdjustments = 0xF0;
constexpr uint32_t kPaEnableSkin = 0x200;
constexpr uint32_t kPaEnableSky = 0x400;
constexpr uint32_t kPaEnableFoliage = 0x800;

// A global control held in a float field.
struct GlobalFloatRow {
    uint32_t item;
    float PaGlobalAdj::*field;
    int32_t ZuvaColorLevels::*level;
};

constexpr GlobalFloatRow kGlobalFloatRows[] = {
    {kSceneSaturation, &PaGlobalAdj::saturation, &ZuvaColorLevels::saturation},
    {kSceneValue, &PaGlobalAdj::value, &ZuvaColorLevels::value},
    {kSceneContrast, &PaGlobalAdj::contrast, &ZuvaColorLevels::contrast},
};

// A memory colour: its section of the record, its type code and its three levels.
struct MemColorRow {
    uint32_t item;
    uint32_t enable_flags;
    PaMemColor PaConfig::*section;
    uint32_t type;
    int32_t ZuvaColorLevels::*hue;
    int32_t ZuvaColorLevels::*sat;
    int32_t ZuvaColorLevels::*val;
};

constexpr MemColorRow kMemColorRows[] = {
    {kSceneSkin, kPaEnableAdjustments | kPaEnableSkin, &PaConfig::skin, 0,
     &ZuvaColorLevels::skin_hue, &ZuvaColorLevels::skin_sat, &ZuvaColorLevels::skin_val},
    {kSceneSkyCloud, kPaEnableAdjustments | kPaEnableSky, &PaConfig::sky, 1,
     &ZuvaColorLevels::sky_hue, &ZuvaColorLevels::sky_sat, &ZuvaColorLevels::sky_val},
    {kSceneGrass, kPaEnableAdjustments | kPaEnableFoliage, &PaConfig::foliage, 2,
     &ZuvaColorLevels::foliage_hue, &ZuvaColorLevels::foliage_sat, &ZuvaColorLevels::foliage_val},
};

// printf into the end of `text`; floats may be as wide as 47 characters, so the size is measured.
__attribute__((format(printf, 2, 3))) void Appendf(std::string &text, const char *format, ...) {
    va_list args;
    va_start(args, format);
    va_list measure;
    va_copy(measure, args);
    int length = vsnprintf(nullptr, 0, format, measure);
    va_end(measure);
    if (length > 0) {
        size_t start = text.size();
        text.resize(start + static_cast<size_t>(length) + 1);
        vsnprintf(&text[start], static_cast<size_t>(length) + 1, format, args);
        text.resize(start + static_cast<size_t>(length));
    }
    va_end(args);
}

void AppendMemColor(std::string &text, const char *name, const PaMemColor &color) {
    Appendf(text, " %s{cfg [flag=%u type=%d (h%d s%f v%f)]}", name, color.flag,
            static_cast<int>(color.type), color.hue, double{color.saturation}, double{color.value});
}

}  // namespace

void StcZuvaColor::ComposePaConfig(PaConfig &config) {
    if (!config.enabled) {
        return;
    }
    if (curr_scene_id_ & kSceneHue) {
        config.enable_flags |= kPaEnableAdjustments;
        config.global.hue = pq_levels_.hue;
    }
    for (const GlobalFloatRow &row : kGlobalFloatRows) {
        if (curr_scene_id_ & row.item) {
            config.enable_flags |= kPaEnableAdjustments;
            config.global.*row.field = static_cast<float>(pq_levels_.*row.level);
        }
    }
    for (const MemColorRow &row : kMemColorRows) {
        if (curr_scene_id_ & row.item) {
            PaMemColor &color = config.*row.section;
            config.enable_flags |= row.enable_flags;
            color.type = row.type;
            color.hue = pq_levels_.*row.hue;
            color.saturation = static_cast<float>(pq_levels_.*row.sat);
            color.value = static_cast<float>(pq_levels_.*row.val);
        }
    }
}

std::string PaConfigToString(const PaConfig &config) {
    std::string text;
    Appendf(text, "PaConfig: (enabled=%d enable_flags=%u)", config.enabled, config.enable_flags);
    Appendf(text, " global{Flags=%u [h%d s%f v%f]}", config.global.flags, config.global.hue,
            double{config.global.saturation}, double{config.global.value});
    AppendMemColor(text, "skin", config.skin);
    AppendMemColor(text, "sky", config.sky);
    AppendMemColor(text, "foliage", config.foliage);
    return text;
}

}  // namespace snapdragoncolor
