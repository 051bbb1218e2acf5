#include "picture/scene_items.h"

namespace snapdragoncolor {

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
