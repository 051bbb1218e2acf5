// A 3D LUT file: the plug-in's line rule and entry count, then what the plug-in does not check
// itself: that the inputs are the 17x17x17 grid, each point once, and the outputs in range.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "calibration/lut3d_line.h"
#include "sc_post_blend_interface.h"
#include "tools/stc-host/check/file_checks.h"

namespace stc_host {

namespace {

using snapdragoncolor::kGamutEntries;
using snapdragoncolor::kGamutGridPoints;
using snapdragoncolor::kLutLineValues;

constexpr long kEntries = kGamutEntries;
constexpr int kGrid = kGamutGridPoints;
constexpr int kChannels = 3;
constexpr const char *kChannelNames[kChannels] = {"red", "green", "blue"};
constexpr int kTenBitTop = 1023;
constexpr int kTwelveBitTop = 4095;
// An output more than an eighth of the range away from its input is far beyond what a panel's
// calibration corrects (the sample units move at most about 2%), so it is likely a typo or a
// swapped column.
constexpr int kFarFraction = 8;

struct LutEntry {
    int32_t values[kLutLineValues];
    long line;
};

// The accepted lines of a full table, in file order, and how many there were in all.
class LutScan final : public CalibrationFileCheck {
  public:
    explicit LutScan(FileFindings &out) : CalibrationFileCheck(out) { entries_.reserve(kEntries); }

    void OnLine(const char *line, size_t number) override {
        LutEntry entry;
        entry.line = static_cast<long>(number);
        const int got = snapdragoncolor::ScanLutLine(line, entry.values);
        if (got < kLutLineValues) {
            out_.Error("short-line", entry.line,
                       ShortLine(got, "six") +
                           ": it skips the line and every later entry moves up by one");
            return;
        }
        ++accepted_;
        if (accepted_ <= kEntries) {
            entries_.push_back(entry);
        } else if (accepted_ == kEntries + 1) {
            surplus_line_ = entry.line;
        }
    }

    const std::vector<LutEntry> &entries() const { return entries_; }
    long accepted() const { return accepted_; }
    long surplus_line() const { return surplus_line_; }

  private:
    std::vector<LutEntry> entries_;
    long accepted_ = 0;
    long surplus_line_ = 0;  // the first accepted line beyond a full table
};

void CheckCount(const LutScan &scan, FileFindings &out) {
    const long accepted = scan.accepted();
    if (accepted > kEntries) {
        out.Error("count", scan.surplus_line(),
                  Format("%ld entries in all, the plug-in needs exactly %ld: from this one on it "
                         "refuses the whole table and keeps what it held before",
                         accepted, kEntries));
    } else if (accepted < kEntries) {
        const long stale = kEntries - accepted;
        out.Error("count", 0,
                  Format("%ld entries, the plug-in needs %ld: it takes the table anyway, and its "
                         "last %ld %s what the plug-in held before (zeros at start-up)",
                         accepted, kEntries, stale, stale == 1 ? "entry keeps" : "entries keep"));
    }
}

// How often each value of one input channel occurs, in order of first appearance. A grid has
// 17 values, and the last one found is usually the one wanted again, so a plain search is quick.
std::vector<std::pair<int32_t, long>> CountValues(const std::vector<LutEntry> &entries,
                                                  int channel) {
    std::vector<std::pair<int32_t, long>> counts;
    size_t last = 0;
    for (const LutEntry &e : entries) {
        const int32_t value = e.values[channel];
        if (last >= counts.size() || counts[last].first != value) {
            last = 0;
            while (last < counts.size() && counts[last].first != value) {
                ++last;
            }
            if (last == counts.size()) {
                counts.emplace_back(value, 0);
            }
        }
        ++counts[last].second;
    }
    return counts;
}

// The grid values of one input channel: the 17 values the entries use most, in ascending order.
// Fewer than 17 distinct values leave it empty.
std::vector<int32_t> ChannelGrid(const std::vector<LutEntry> &entries, int channel) {
    std::vector<std::pair<int32_t, long>> counts = CountValues(entries, channel);
    if (counts.size() < static_cast<size_t>(kGrid)) {
        return {};
    }
    std::stable_sort(counts.begin(), counts.end(),
                     [](const auto &a, const auto &b) { return a.second > b.second; });
    std::vector<int32_t> grid;
    for (int i = 0; i < kGrid; ++i) {
        grid.push_back(counts[i].first);
    }
    std::sort(grid.begin(), grid.end());
    return grid;
}

int GridIndex(const std::vector<int32_t> &grid, int32_t value) {
    auto it = std::lower_bound(grid.begin(), grid.end(), value);
    return it != grid.end() && *it == value ? static_cast<int>(it - grid.begin()) : -1;
}

using Grid = std::array<std::vector<int32_t>, kChannels>;

// Infers the grid; false (with the finding) when a channel has too few distinct values.
bool InferGrid(const std::vector<LutEntry> &entries, Grid *grid, FileFindings &out) {
    bool complete = true;
    for (int c = 0; c < kChannels; ++c) {
        (*grid)[c] = ChannelGrid(entries, c);
        if ((*grid)[c].empty()) {
            out.Error("grid", 0,
                      Format("the %s inputs take fewer than %d distinct values: the table is not "
                             "the %dx%dx%d grid, yet the plug-in takes it by position",
                             kChannelNames[c], kGrid, kGrid, kGrid, kGrid));
            complete = false;
        }
    }
    return complete;
}

// Each grid point exactly once, every input on the grid.
void CheckPoints(const std::vector<LutEntry> &entries, const Grid &grid, FileFindings &out) {
    std::vector<long> first_line(kEntries, 0);
    for (const LutEntry &e : entries) {
        int index = 0;
        bool on_grid = true;
        for (int c = 0; c < kChannels && on_grid; ++c) {
            const int i = GridIndex(grid[c], e.values[c]);
            if (i < 0) {
                out.Error("off-grid", e.line,
                          Format("%s input %d is not one of the %d grid values the other entries "
                                 "use: the plug-in takes the entry by its position, not its input",
                                 kChannelNames[c], e.values[c], kGrid));
                on_grid = false;
            }
            index = index * kGrid + i;
        }
        if (!on_grid) {
            continue;
        }
        if (first_line[index] != 0) {
            out.Error("duplicate", e.line,
                      Format("input (%d %d %d) is given again (first at line %ld): the plug-in "
                             "takes both, so another grid point has no entry of its own",
                             e.values[0], e.values[1], e.values[2], first_line[index]));
            continue;
        }
        first_line[index] = e.line;
    }
    for (long index = 0; index < kEntries; ++index) {
        if (first_line[index] == 0) {
            out.Error("missing-point", 0,
                      Format("grid point (%d %d %d) has no entry", grid[0][index / (kGrid * kGrid)],
                             grid[1][index / kGrid % kGrid], grid[2][index % kGrid]));
        }
    }
}

// The top code of the range the grid spans: 10 bits, else 12 bits.
int RangeTop(const std::vector<LutEntry> &entries, const Grid &grid, FileFindings &out) {
    int32_t low = 0;
    int32_t high = 0;
    for (int c = 0; c < kChannels; ++c) {
        if (!grid[c].empty()) {
            low = std::min(low, grid[c].front());
            high = std::max(high, grid[c].back());
            continue;
        }
        for (const LutEntry &e : entries) {
            low = std::min(low, e.values[c]);
            high = std::max(high, e.values[c]);
        }
    }
    if (low < 0 || high > kTwelveBitTop) {
        out.Error(
            "input-range", 0,
            Format("inputs span %d..%d, beyond the 12-bit range 0..%d", low, high, kTwelveBitTop));
    }
    return high <= kTenBitTop ? kTenBitTop : kTwelveBitTop;
}

void CheckOutputs(const std::vector<LutEntry> &entries, int top, FileFindings &out) {
    const int bits = top == kTenBitTop ? 10 : 12;
    const int far = (top + 1) / kFarFraction;
    for (const LutEntry &e : entries) {
        for (int c = 0; c < kChannels; ++c) {
            const int32_t in = e.values[c];
            const int32_t output = e.values[kChannels + c];
            const long distance = std::labs(static_cast<long>(output) - in);
            if (output < 0 || output > top) {
                out.Error("output-range", e.line,
                          Format("%s output %d is outside 0..%d of the %d-bit grid: the plug-in "
                                 "hands it to the hardware unchecked",
                                 kChannelNames[c], output, top, bits));
            } else if (distance > far) {
                out.Warning("output-far", e.line,
                            Format("%s output %d is %ld codes from its input %d (more than %d, an "
                                   "eighth of the %d-bit range)",
                                   kChannelNames[c], output, distance, in, far, bits));
            }
        }
    }
}

}  // namespace

void CheckLut(const std::string &read_path, FileFindings &out) {
    LutScan scan(out);
    if (snapdragoncolor::ReadCalibrationFile(read_path.c_str(), scan) !=
        snapdragoncolor::CalibrationReadResult::kAllLines) {
        return;
    }
    CheckCount(scan, out);
    if (scan.entries().empty()) {
        return;
    }
    Grid grid;
    if (InferGrid(scan.entries(), &grid, out)) {
        CheckPoints(scan.entries(), grid, out);
    }
    CheckOutputs(scan.entries(), RangeTop(scan.entries(), grid, out), out);
}

}  // namespace stc_host
