#!/usr/bin/env python3
"""Writes the sample device tree under examples/sample-device.

The tree is what a phone with three panels would carry:
  zuva_a1_video    primary panel, with its unit calibration in the persistent partition
                   (sRGB and P3 3D LUTs that bend the 17-point grid smoothly, a PCC close to
                   identity), golden files in the vendor partition and a DSI-1 panel-name node;
  zuva_c2_cmd_363  CLI panel, named by the device-tree node, golden files only;
  zuva_b3_video    primary panel with a non-linear sRGB response and its 1280-code gamma file.

Usage: tools/gen_sample_device.py [OUTPUT_DIR]   (default: examples/sample-device)
The output is deterministic, so regenerating it leaves the committed files unchanged.
"""

import argparse
import math
import os

PRIMARY = "zuva_a1_video"
CLI = "zuva_c2_cmd_363"
NONLINEAR = "zuva_b3_video"

GRID = 17
MAX_CODE = 4095

PROFILE = f"""<?xml version="1.0" encoding="utf-8"?>
<!-- Panels served by the Zuva colour plug-in on this device. -->
<ZuvaStcConfigs>
    <config id="panelList">
        <prim>{PRIMARY}</prim>
        <prim>{NONLINEAR}</prim>
        <cli>{CLI}</cli>
    </config>
    <config id="panelNamePath">
        <prim>/sys/class/drm/card0-DSI-1/panelName</prim>
    </config>
    <config id="zgl_nonlinear_srgb">
        <panelname>{NONLINEAR}</panelname>
    </config>
    <panel name="zuva_c2_cmd">
        <type>cli</type>
    </panel>
</ZuvaStcConfigs>
"""


def grid_code(i):
    return min(i * 256, MAX_CODE)


def clamp(v):
    return max(0, min(MAX_CODE, int(round(v))))


def bend(r, g, b, strength, tint):
    """A smooth, calibration-like correction: mid-tones lifted a little per channel and a slight
    cross-talk between neighbouring channels; black and white stay (almost) fixed."""
    out = []
    for value, other, gain in ((r, g, tint[0]), (g, b, tint[1]), (b, r, tint[2])):
        x = value / MAX_CODE
        lift = strength * math.sin(math.pi * x) * MAX_CODE
        cross = 0.015 * (other - value) * math.sin(math.pi * x)
        out.append(clamp(value * gain + lift + cross))
    return out


def lut_text(strength, tint):
    lines = []
    for ri in range(GRID):
        for gi in range(GRID):
            for bi in range(GRID):
                r, g, b = grid_code(ri), grid_code(gi), grid_code(bi)
                o = bend(r, g, b, strength, tint)
                lines.append(f"{r} {g} {b} {o[0]} {o[1]} {o[2]}\n")
    return "".join(lines)


def pcc_text(rows):
    return "".join(" ".join(f"{v:.6f}" for v in row) + "\n" for row in rows)


def pcc_rows(diag, cross):
    rows = []
    for channel in range(3):
        row = [0.0] * 11
        row[1 + channel] = diag[channel]
        for other in range(3):
            if other != channel:
                row[1 + other] = cross
        rows.append(row)
    return rows


def gamma_text():
    lines = ["# sRGB gamma codes of zuva_b3_video, 1280 samples on a 10-bit scale\n"]
    for i in range(1280):
        x = i / 1279
        code = 12.92 * x if x <= 0.0031308 else 1.055 * x ** (1 / 2.4) - 0.055
        lines.append(f"{int(round(min(1.0, code) * 1023))}\n")
    return "".join(lines)


def write(root, device_path, text):
    path = os.path.join(root, device_path.lstrip("/"))
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", newline="\n") as f:
        f.write(text)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(
        description="Writes the sample device tree (profile, panel-name nodes, unit and golden "
                    "calibration files, a gamma code file); the output is the same on every run.")
    parser.add_argument("root", nargs="?",
                        default=os.path.join(here, "..", "examples", "sample-device"),
                        help="directory to write the tree into (default: examples/sample-device)")
    root = parser.parse_args().root
    persist = "/mnt/vendor/persist/display/"
    vendor = "/vendor/etc/display/"

    write(root, vendor + "zuva_stc_profile.xml", PROFILE)
    write(root, "/sys/class/drm/card0-DSI-1/panelName", PRIMARY + "\n")
    write(root, "/proc/device-tree/chosen/zvx,panel_name_s", CLI + "\n")

    unit = {
        "srgb.txt": lut_text(0.012, (0.985, 0.992, 0.978)),
        "p3.txt": lut_text(0.018, (0.990, 0.981, 0.986)),
        "pcc.txt": pcc_text(pcc_rows((0.9812, 0.9923, 0.9876), 0.0042)),
    }
    golden = {
        "srgb.txt": lut_text(0.010, (0.990, 0.990, 0.990)),
        "p3.txt": lut_text(0.015, (0.990, 0.990, 0.990)),
        "pcc.txt": pcc_text(pcc_rows((0.99, 0.99, 0.99), 0.0)),
    }
    for suffix, text in unit.items():
        write(root, f"{persist}panel_{PRIMARY}_C3D_cali_{suffix}", text)
    for panel in (PRIMARY, CLI):
        for suffix, text in golden.items():
            write(root, f"{vendor}panel_{panel}_C3D_cali_{suffix}", text)
    write(root, f"{vendor}panel_{NONLINEAR}_gamma_srgb.txt", gamma_text())


if __name__ == "__main__":
    main()
