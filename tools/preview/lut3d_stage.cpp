#include "tools/preview/lut3d_stage.h"

#include <algorithm>
#include <cstdint>

namespace stc_preview {

namespace {

using snapdragoncolor::GamutConfig;
using snapdragoncolor::GamutLutEntry;
using snapdragoncolor::kGamutEntries;
using snapdragoncolor::kGamutGridPoints;

constexpr int kPoints = static_cast<int>(kGamutGridPoints);
constexpr uint32_t kTenBitMax = 1023;
constexpr uint32_t kTwelveBitMax = 4095;
const char *const kChannelNames[] = {"red", "green", "blue"};

uint32_t InputOf(const GamutLutEntry &entry, int channel) {
    const uint32_t inputs[] = {entry.in_r, entry.in_g, entry.in_b};
    return inputs[channel];
}

// The distinct input values of one channel, ascending.
std::vector<uint32_t> DistinctInputs(const GamutConfig &config, int channel) {
    std::vector<uint32_t> values;
    values.reserve(kGamutEntries);
    for (const GamutLutEntry &entry : config.entries) {
        values.push_back(InputOf(entry, channel));
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

// Position of grid point (r, g, b) in the outputs, red index slowest.
size_t Slot(int r, int g, int b) {
    return (static_cast<size_t>(r) * kPoints + g) * kPoints + b;
}

int GridIndex(const std::vector<uint32_t> &grid, uint32_t value) {
    return static_cast<int>(std::lower_bound(grid.begin(), grid.end(), value) - grid.begin());
}

// The grid cell holding x and the position of x within it, clamped to the grid's span.
struct CellPosition {
    int index;
    double fraction;
};

CellPosition Locate(const Lut3d::Grid &grid, double x) {
    if (x <= grid.front()) {
        return {0, 0.0};
    }
    if (x >= grid.back()) {
        return {kPoints - 2, 1.0};
    }
    const int above =
        static_cast<int>(std::upper_bound(grid.begin(), grid.end(), x) - grid.begin());
    const int below = above - 1;
    return {below, (x - grid[below]) / (grid[above] - grid[below])};
}

// The grid values of each channel; why the table is not one full grid, or "".
std::string GridInputs(const GamutConfig &config, std::array<std::vector<uint32_t>, 3> *inputs) {
    if (config.num != kGamutEntries) {
        return "3D LUT has " + std::to_string(config.num) + " entries in use; a full " +
               std::to_string(kPoints) + "-point grid needs " + std::to_string(kGamutEntries);
    }
    for (int channel = 0; channel < 3; ++channel) {
        (*inputs)[channel] = DistinctInputs(config, channel);
        if ((*inputs)[channel].size() != kGamutGridPoints) {
            return std::string("3D LUT input ") + kChannelNames[channel] + " takes " +
                   std::to_string((*inputs)[channel].size()) + " distinct values; a " +
                   std::to_string(kPoints) + "-point grid needs " + std::to_string(kPoints);
        }
    }
    return "";
}

}  // namespace

std::optional<Lut3d> Lut3d::FromConfig(const GamutConfig &config, std::string *error) {
    std::array<std::vector<uint32_t>, 3> inputs;
    *error = GridInputs(config, &inputs);
    if (!error->empty()) {
        return std::nullopt;
    }
    Lut3d lut;
    const uint32_t largest = std::max({inputs[0].back(), inputs[1].back(), inputs[2].back()});
    lut.max_code_ = largest <= kTenBitMax ? kTenBitMax : kTwelveBitMax;
    const double max = lut.max_code_;
    for (int channel = 0; channel < 3; ++channel) {
        std::transform(inputs[channel].begin(), inputs[channel].end(), lut.grids_[channel].begin(),
                       [max](uint32_t v) { return v / max; });
    }
    lut.outputs_.resize(kGamutEntries);
    std::vector<bool> seen(kGamutEntries, false);
    for (const GamutLutEntry &entry : config.entries) {
        const size_t slot = Slot(GridIndex(inputs[0], entry.in_r), GridIndex(inputs[1], entry.in_g),
                                 GridIndex(inputs[2], entry.in_b));
        if (seen[slot]) {
            *error = "3D LUT grid point (" + std::to_string(entry.in_r) + ", " +
                     std::to_string(entry.in_g) + ", " + std::to_string(entry.in_b) +
                     ") appears more than once";
            return std::nullopt;
        }
        seen[slot] = true;
        lut.outputs_[slot] = {entry.out_r / max, entry.out_g / max, entry.out_b / max};
    }
    return lut;
}

const Rgb &Lut3d::Output(int r, int g, int b) const {
    return outputs_[Slot(r, g, b)];
}

// The cell is split into six tetrahedra along its grey diagonal; the one holding the point is
// chosen by the order of the three fractions. Walking from the cell's low corner along the axis
// of the largest fraction, then the next, reaches the high corner through the tetrahedron's four
// vertices, whose weights are the differences of the sorted fractions.
Rgb Lut3d::Apply(Rgb in) const {
    const CellPosition cells[] = {Locate(grids_[0], in.r), Locate(grids_[1], in.g),
                                  Locate(grids_[2], in.b)};
    std::array<int, 3> order = {0, 1, 2};
    std::sort(order.begin(), order.end(),
              [&cells](int a, int b) { return cells[a].fraction > cells[b].fraction; });

    std::array<int, 3> corner = {cells[0].index, cells[1].index, cells[2].index};
    double previous = 1.0;
    Rgb out;
    for (int step = 0; step <= 3; ++step) {
        const double fraction = step < 3 ? cells[order[step]].fraction : 0.0;
        const double weight = previous - fraction;
        const Rgb &vertex = Output(corner[0], corner[1], corner[2]);
        out.r += weight * vertex.r;
        out.g += weight * vertex.g;
        out.b += weight * vertex.b;
        if (step < 3) {
            ++corner[order[step]];
        }
        previous = fraction;
    }
    return out;
}

}  // namespace stc_preview
