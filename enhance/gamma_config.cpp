#include "enhance/glimra.h"

namespace snapdragoncolor {

std::vector<int> gamma_srgb;

bool readGammaConfigFromFile(std::vector<int> &gamma_values, const std::string &) {
    gamma_values.clear();
    return false;
}

}  // namespace snapdragoncolor
