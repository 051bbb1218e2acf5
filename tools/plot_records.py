#!/usr/bin/python3
"""Turns a dump directory of configuration records into PNG plots and prints the name of each plot
written, one per line.

The dump holds one file per block per processing call, named <call>-<block>.json, each
{"call": N, "block": NAME, "entries": [{"index": I, "record": {...}}]}. Plotted:
  PostBlendGC     the three channel curves against the identity, one plot per entry; and, when
                  the dump holds gamma records that differ, all of them together, by call;
  PostBlendGamut  planes of the grid coloured by the size of output minus input, and the
                  output points against the input grid in the CIE xy diagram;
  PostBlendPCC    the coefficients as a heat map.
Other blocks and other files are passed over.
"""
import argparse
import json
import os
import re
import sys

try:
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
    import numpy as np
except ImportError as missing:
    sys.exit(f"plot_records.py: {missing}; Debian's python3-matplotlib serves /usr/bin/python3")

DUMP_NAME = re.compile(r"^(\d+)-(\w+)\.json$")
GAMMA_MAX_CODE = 1023
LUT_TEN_BIT_MAX, LUT_TWELVE_BIT_MAX = 1023, 4095
LUT_GRID_POINTS = 17
LUT_PLANES = (0, 4, 8, 12, 16)  # blue grid indices shown as slices
PCC_TERMS = ("c", "r", "g", "b", "rr", "gg", "bb", "rg", "gb", "rb", "rgb")
CHANNELS = (("r", "red"), ("g", "green"), ("b", "blue"))
# Linear sRGB to CIE XYZ (D65), and the sRGB primaries' and white's xy.
SRGB_TO_XYZ = np.array([[0.4124, 0.3576, 0.1805], [0.2126, 0.7152, 0.0722],
                        [0.0193, 0.1192, 0.9505]])
SRGB_PRIMARIES_XY = ((0.64, 0.33), (0.30, 0.60), (0.15, 0.06))
D65_XY = (0.3127, 0.3290)


class DumpError(Exception):
    pass


def load_dump(dump_dir):
    """Every entry of every dump file as (call, block, index, record), in call and index order."""
    entries = []
    for name in sorted(os.listdir(dump_dir)):
        if not DUMP_NAME.match(name):
            continue
        path = os.path.join(dump_dir, name)
        try:
            with open(path) as f:
                dump = json.load(f)
            for entry in dump["entries"]:
                entries.append((int(dump["call"]), dump["block"], int(entry["index"]),
                                entry["record"]))
        except (OSError, ValueError, KeyError, TypeError) as e:
            raise DumpError(f"{path}: not a readable dump file ({e})") from e
    return sorted(entries, key=lambda e: (e[0], e[2]))


def save(figure, out_dir, name):
    figure.savefig(os.path.join(out_dir, name), dpi=100)
    plt.close(figure)
    return name


def gamma_axes(axes, title):
    axes.plot([0, 1], [0, 1], color="0.6", linestyle="--", label="identity")
    axes.set_xlabel("input")
    axes.set_ylabel(f"output (code / {GAMMA_MAX_CODE})")
    axes.set_title(title)


def curve_points(curve):
    codes = np.asarray(curve, dtype=float)
    return np.linspace(0, 1, len(codes)), codes / GAMMA_MAX_CODE


def plot_gamma(call, block, index, record, out_dir):
    figure, axes = plt.subplots(figsize=(6, 5))
    gamma_axes(axes, f"{block}, call {call}, entry {index}")
    for key, colour in CHANNELS:
        if len(record[key]) > 1:
            axes.plot(*curve_points(record[key]), color=colour, label=f"{key} ({len(record[key])})")
    axes.legend()
    return [save(figure, out_dir, f"{call}-{block}-{index}-curves.png")]


def plot_gamma_comparison(gamma_entries, out_dir):
    """All differing gamma records of the dump together (for instance the enhanced and the base
    curve), each labelled by the first call that carried it."""
    distinct = []
    for call, _, index, record in gamma_entries:
        curves = [record.get(key, []) for key, _ in CHANNELS]
        if all(curves != seen for _, _, seen in distinct):
            distinct.append((call, index, curves))
    if len(distinct) < 2:
        return []
    figure, axes = plt.subplots(1, 3, figsize=(15, 5))
    for channel, (_, colour) in enumerate(CHANNELS):
        gamma_axes(axes[channel], f"{colour} channel")
        for call, index, curves in distinct:
            if len(curves[channel]) > 1:
                axes[channel].plot(*curve_points(curves[channel]),
                                   label=f"call {call}, entry {index}")
        axes[channel].legend()
    return [save(figure, out_dir, "PostBlendGC-compare.png")]


def lut_grid(record):
    """The LUT indexed by its input columns: (grid values per channel, inputs, outputs), the last
    two normalised and shaped 17 x 17 x 17 x 3 in red, green, blue index order."""
    rows = np.asarray(record["entries"], dtype=float)
    if rows.shape != (LUT_GRID_POINTS ** 3, 6):
        raise DumpError(f"3D LUT has {len(rows)} entries; {LUT_GRID_POINTS ** 3} are needed")
    max_code = LUT_TEN_BIT_MAX if rows[:, :3].max() <= LUT_TEN_BIT_MAX else LUT_TWELVE_BIT_MAX
    grids, indices = [], []
    for channel in range(3):
        values, index = np.unique(rows[:, channel], return_inverse=True)
        if len(values) != LUT_GRID_POINTS:
            raise DumpError(f"3D LUT input {CHANNELS[channel][1]} takes {len(values)} distinct "
                            f"values; a {LUT_GRID_POINTS}-point grid needs {LUT_GRID_POINTS}")
        grids.append(values)
        indices.append(index)
    shape = (LUT_GRID_POINTS,) * 3 + (3,)
    inputs, outputs = np.full(shape, np.nan), np.full(shape, np.nan)
    inputs[indices[0], indices[1], indices[2]] = rows[:, :3] / max_code
    outputs[indices[0], indices[1], indices[2]] = rows[:, 3:] / max_code
    if np.isnan(outputs).any():
        raise DumpError("3D LUT grid points appear more than once")
    return grids, inputs, outputs


def plot_lut_slices(call, block, index, grid, out_dir):
    grids, inputs, outputs = grid
    difference = np.linalg.norm(outputs - inputs, axis=-1)
    figure, axes = plt.subplots(1, len(LUT_PLANES), figsize=(4 * len(LUT_PLANES), 4.2))
    for plane, plane_axes in zip(LUT_PLANES, axes):
        image = plane_axes.imshow(difference[:, :, plane].T, origin="lower", cmap="viridis",
                                  vmin=0, vmax=max(difference.max(), 1e-6))
        plane_axes.set_title(f"blue input {grids[2][plane]:g}")
        plane_axes.set_xlabel("red grid index")
    axes[0].set_ylabel("green grid index")
    figure.colorbar(image, ax=list(axes), label="|output - input| (normalised)")
    figure.suptitle(f"{block}, call {call}, entry {index}")
    return [save(figure, out_dir, f"{call}-{block}-{index}-slices.png")]


def srgb_to_xy(values):
    """xy of normalised sRGB values (N x 3); black, which has none, is dropped."""
    linear = np.where(values <= 0.04045, values / 12.92, ((values + 0.055) / 1.055) ** 2.4)
    xyz = linear @ SRGB_TO_XYZ.T
    total = xyz.sum(axis=1)
    keep = total > 0
    return xyz[keep, :2] / total[keep, None], keep


def plot_lut_chromaticity(call, block, index, grid, out_dir):
    _, inputs, outputs = grid
    figure, axes = plt.subplots(figsize=(6, 6))
    triangle = np.array(SRGB_PRIMARIES_XY + SRGB_PRIMARIES_XY[:1])
    axes.plot(triangle[:, 0], triangle[:, 1], color="0.3", label="sRGB gamut")
    axes.plot(*D65_XY, marker="+", color="black", linestyle="none", label="D65")
    in_xy, _ = srgb_to_xy(np.clip(inputs.reshape(-1, 3), 0, 1))
    out_values = np.clip(outputs.reshape(-1, 3), 0, 1)
    out_xy, keep = srgb_to_xy(out_values)
    axes.scatter(in_xy[:, 0], in_xy[:, 1], s=4, color="0.75", label="input grid")
    axes.scatter(out_xy[:, 0], out_xy[:, 1], s=4, c=out_values[keep], label="outputs")
    axes.set_xlabel("x")
    axes.set_ylabel("y")
    axes.set_title(f"{block}, call {call}, entry {index}")
    axes.legend()
    return [save(figure, out_dir, f"{call}-{block}-{index}-xy.png")]


def plot_lut(call, block, index, record, out_dir):
    grid = lut_grid(record)
    return (plot_lut_slices(call, block, index, grid, out_dir) +
            plot_lut_chromaticity(call, block, index, grid, out_dir))


def plot_pcc(call, block, index, record, out_dir):
    matrix = np.array([[record[channel][term] for term in PCC_TERMS]
                       for channel in ("red", "green", "blue")], dtype=float)
    limit = max(np.abs(matrix).max(), 1e-6)
    figure, axes = plt.subplots(figsize=(11, 3.5))
    image = axes.imshow(matrix, cmap="coolwarm", vmin=-limit, vmax=limit)
    for (row, column), value in np.ndenumerate(matrix):
        axes.text(column, row, f"{value:.3f}", ha="center", va="center", fontsize=8)
    axes.set_xticks(range(len(PCC_TERMS)), PCC_TERMS)
    axes.set_yticks(range(3), ("red", "green", "blue"))
    axes.set_title(f"{block}, call {call}, entry {index}")
    figure.colorbar(image, ax=axes)
    return [save(figure, out_dir, f"{call}-{block}-{index}-coefficients.png")]


PLOTTERS = {"PostBlendGC": plot_gamma, "PostBlendGamut": plot_lut, "PostBlendPCC": plot_pcc}


def plot_dump(dump_dir, out_dir):
    entries = load_dump(dump_dir)
    names = []
    for call, block, index, record in entries:
        if block in PLOTTERS:
            try:
                names += PLOTTERS[block](call, block, index, record, out_dir)
            except DumpError as e:
                print(f"{call}-{block}.json, entry {index}: {e}; not plotted", file=sys.stderr)
            except (KeyError, TypeError, ValueError) as e:
                print(f"{call}-{block}.json, entry {index}: malformed record ({e}); not plotted",
                      file=sys.stderr)
    names += plot_gamma_comparison([e for e in entries if e[1] == "PostBlendGC"], out_dir)
    return names


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("dump_dir", metavar="DUMP_DIR",
                        help="directory of <call>-<block>.json files")
    parser.add_argument("out_dir", metavar="OUT_DIR",
                        help="directory for the plots (made if missing)")
    args = parser.parse_args()
    if not os.path.isdir(args.dump_dir):
        parser.error(f"{args.dump_dir}: no such directory")
    os.makedirs(args.out_dir, exist_ok=True)
    try:
        names = plot_dump(args.dump_dir, args.out_dir)
    except DumpError as e:
        print(f"plot_records.py: {e}", file=sys.stderr)
        return 1
    for name in names:
        print(name)
    return 0


if __name__ == "__main__":
    sys.exit(main())
