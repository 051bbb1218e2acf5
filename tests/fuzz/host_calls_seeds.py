#!/usr/bin/env python3
"""Writes the hand-made seeds of host_calls_fuzz: host sessions in the byte encoding that
host_calls_fuzz.cpp reads front to back. Rerun after changing that encoding."""
import os
import struct
import sys

PANELS = ["zuva_a1_video", "zuva_b3_video", "zuva_c2_cmd_363"]
ITEMS = {"FAC_CALIBRATION": 0, "COLOR_TEMPERATURE": 1, "LOAD_3DLUT": 2, "ZUVA_GLIMRA": 3,
         "BIT26": 4, "SATURATION_SKIN": 5, "SHARPNESS": 6, "DARK": 7}
VALUES = {0: 0, 1: 1, 12: 2, 255: 3, 500: 4, 501: 5, 2: 6}
GAMUTS = {"srgb": 0, "p3": 1, "none": 2}
INTENTS = {0: 0, 1: 1, 0x103: 2}
BLOCKS = ["PostBlendPCC", "PostBlendPa", "PostBlendGamut", "PostBlendGC", "PostBlendDE",
          "PostBlendIGC", "PostBlendDither", "PostBlendPaDither", "PostBlendGc", "PostBlendGamut ",
          "postblendpcc", "PostBlendGCX", ""]
SLOTS = {"unit_srgb": 0, "unit_p3": 1, "unit_pcc": 2, "golden_srgb": 3, "golden_p3": 4,
         "golden_pcc": 5, "gamma": 6, "profile": 7, "name_node": 8}
KINDS = {"missing": 0, "valid": 1, "other": 2, "one_short": 3, "one_over": 4, "broken": 5,
         "empty": 6, "bytes": 7, "directory": 8, "fifo": 9}


def u32(v):
    return list(struct.pack("<I", v & 0xFFFFFFFF))


def start(panel, profile=True):
    return [PANELS.index(panel), int(profile)]


def init(other=None):
    return [0, 1] if other is None else [0, 0, other]


def deinit():
    return [1]


def colour(item, value, levels=True):
    # saturation and sharpness levels, has_levels, then a right length
    return [6, ITEMS[item], VALUES[value], 140, 150, int(levels)] + ([] if levels else [0]) + [0]


def change(slot, kind, text=b""):
    return [5, SLOTS[slot], KINDS[kind], len(text) & 0xFF, len(text) >> 8] + list(text)


def entry(block, empty=False, enabled=True, gamma_length=2):
    kind = BLOCKS.index(block)
    if empty:
        return [kind, 1]
    out = [kind, 0, int(enabled)]
    if block == "PostBlendGamut":
        out += u32(4913)
    if block == "PostBlendGC":
        out += [gamma_length]
    return out


def operation(blocks, gamut="srgb", intent=1, sw_assets=False):
    out = [4] + u32(0) + [1 if sw_assets else 0, GAMUTS[gamut], 2, INTENTS[intent]] + u32(7)
    out += [0, len(blocks)]
    for b in blocks:
        out += b
    return out + [0, 0]


def set_transform_wrong_length():
    # table pick of kSetColorTransform, matrix slot and value, caps, factor, one list entry,
    # the right version, a length one too long, a payload
    return [2, 1, 1, 0] + [0] * 4 + [0] * 8 + [0] * 8 + entry("PostBlendPCC", empty=True) + [0, 1, 0]


def get_mode_list_wrong_version():
    return [3, 0, 7] + u32(25) + [0, 0, 0]


GAMUT = [entry("PostBlendGamut")]
SEEDS = {
    # The P3 file is refused (4914 lines) while the sRGB one is accepted: a P3 mode must not get
    # the half-read P3 table switched on.
    "p3_file_refused_p3_mode": start("zuva_a1_video") + change("unit_p3", "one_over") + init()
    + operation(GAMUT, gamut="p3"),
    # A panel the profile does not list has no curves; switching the enhancement on must not
    # give the gamma block a curve of zeros.
    "glimra_on_refused_panel": start("zuva_a1_video") + init(other=2) + colour("ZUVA_GLIMRA", 1)
    + operation([entry("PostBlendGC")]),
    "nonlinear_all_zero_gamma": start("zuva_b3_video") + change("gamma", "broken") + init()
    + colour("ZUVA_GLIMRA", 1) + operation([entry("PostBlendGC", gamma_length=3)]),
    "fifo_calibration_file": start("zuva_a1_video") + change("unit_pcc", "fifo") + init(),
    "fifo_profile_and_name": start("zuva_a1_video") + change("profile", "fifo") + init()
    + change("profile", "valid") + change("unit_srgb", "missing") + change("name_node", "fifo")
    + init(),
    "profile_and_name_changing": start("zuva_c2_cmd_363") + change("profile", "broken") + init()
    + deinit() + change("profile", "other") + change("name_node", "broken") + init()
    + colour("LOAD_3DLUT", 0) + change("profile", "one_short") + init() + operation(GAMUT),
    "calibration_run": start("zuva_a1_video") + init() + operation(GAMUT, intent=0x103)
    + colour("FAC_CALIBRATION", 0) + change("unit_srgb", "other") + colour("LOAD_3DLUT", 0)
    + colour("FAC_CALIBRATION", 1) + operation(GAMUT + [entry("PostBlendPCC")], intent=0x103)
    + colour("FAC_CALIBRATION", 255) + operation(GAMUT, gamut="srgb"),
    "files_changing": start("zuva_a1_video") + init() + operation(GAMUT)
    + change("unit_srgb", "broken") + colour("LOAD_3DLUT", 0) + operation(GAMUT)
    + change("unit_srgb", "missing") + change("golden_srgb", "valid") + colour("LOAD_3DLUT", 255)
    + operation(GAMUT) + deinit() + init() + operation(GAMUT, intent=0),
    "refused_properties": start("zuva_c2_cmd_363", profile=False) + set_transform_wrong_length()
    + init() + set_transform_wrong_length() + get_mode_list_wrong_version()
    + colour("SHARPNESS", 1, levels=False),
    "near_miss_blocks": start("zuva_a1_video") + init() + colour("SATURATION_SKIN", 2)
    + operation([entry(b) for b in ["PostBlendPaDither", "PostBlendGc", "PostBlendGamut ",
                                     "postblendpcc", "PostBlendPa", "PostBlendPa", ""]]
                + [entry("PostBlendGC", empty=True)])
    + colour("SHARPNESS", 1) + operation([entry("PostBlendDE"), entry("PostBlendDE", empty=True)],
                                         sw_assets=True),
}

if __name__ == "__main__":
    out_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.join(
        os.path.dirname(__file__), "corpus", "host_calls_fuzz")
    os.makedirs(out_dir, exist_ok=True)
    for name, data in SEEDS.items():
        with open(os.path.join(out_dir, name), "wb") as f:
            f.write(bytes(data))
