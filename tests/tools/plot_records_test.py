#!/usr/bin/env python3
"""tools/plot_records.py on a small dump written here: the plots it names, and its user errors.

Usage: plot_records_test.py REPO_ROOT
"""
import json
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.join(sys.argv[1], "tools", "plot_records.py")
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
GRID = [min(i * 256, 4095) for i in range(17)]


def run(*args):
    return subprocess.run([sys.executable, SCRIPT, *args], capture_output=True, text=True,
                          timeout=300)


def write_dump(directory, call, block, records):
    entries = [{"index": index, "record": record} for index, record in records]
    with open(os.path.join(directory, f"{call}-{block}.json"), "w") as f:
        json.dump({"call": call, "block": block, "entries": entries}, f)


def gamma(curve):
    return {"version": 88, "enabled": 1, "r": curve, "g": curve, "b": curve, "dither_en": 0,
            "dither_strength": 0}


def gamut(entries):
    return {"version": 117936, "enabled": 1, "flags": 0, "lut3d_id": 1, "uniform": 1,
            "num": len(entries), "entries": entries}


# A LUT in blue-slowest order that pulls every point a little towards grey.
LUT = [[r, g, b, (3 * r + b) // 4, g, (r + 3 * b) // 4] for b in GRID for g in GRID for r in GRID]
PCC_ROW = dict.fromkeys(("c", "r", "g", "b", "rr", "gg", "bb", "rg", "gb", "rb", "rgb"), 0.0)
PCC = {"version": 280, "enabled": 1, "red": {**PCC_ROW, "r": 0.98, "g": 0.02},
       "green": {**PCC_ROW, "g": 1.0}, "blue": {**PCC_ROW, "b": 0.95, "c": 0.01}}


class PlotRecords(unittest.TestCase):
    def test_each_block_gives_its_plots_and_differing_gammas_are_compared(self):
        with tempfile.TemporaryDirectory() as dump, tempfile.TemporaryDirectory() as out:
            base = list(range(1024))
            boosted = [min(1023, int(i * 1.1)) for i in range(1024)]
            write_dump(dump, 3, "PostBlendGC", [(1, gamma(base))])
            write_dump(dump, 3, "PostBlendGamut", [(0, gamut(LUT))])
            write_dump(dump, 3, "PostBlendPCC", [(2, PCC)])
            write_dump(dump, 3, "PostBlendPa", [(4, {"version": 15752, "enabled": 1})])
            write_dump(dump, 12, "PostBlendGC", [(1, gamma(boosted))])
            write_dump(dump, 12, "PostBlendGamut", [(0, gamut(LUT[:-1]))])  # not plotted
            with open(os.path.join(dump, "notes.txt"), "w") as f:
                f.write("not a dump file")
            result = run(dump, out)
            self.assertEqual(result.returncode, 0, result.stderr)
            names = result.stdout.splitlines()
            # By call, then by position in the output list.
            self.assertEqual(names, ["3-PostBlendGamut-0-slices.png", "3-PostBlendGamut-0-xy.png",
                                     "3-PostBlendGC-1-curves.png",
                                     "3-PostBlendPCC-2-coefficients.png",
                                     "12-PostBlendGC-1-curves.png", "PostBlendGC-compare.png"])
            self.assertIn("12-PostBlendGamut.json, entry 0: 3D LUT has 4912 entries", result.stderr)
            for name in names:
                with open(os.path.join(out, name), "rb") as f:
                    self.assertEqual(f.read(8), PNG_SIGNATURE, name)

    def test_equal_gamma_records_are_not_compared(self):
        with tempfile.TemporaryDirectory() as dump, tempfile.TemporaryDirectory() as out:
            write_dump(dump, 1, "PostBlendGC", [(0, gamma([0, 1023]))])
            write_dump(dump, 2, "PostBlendGC", [(0, gamma([0, 1023]))])
            result = run(dump, out)
            self.assertEqual(result.stdout.splitlines(),
                             ["1-PostBlendGC-0-curves.png", "2-PostBlendGC-0-curves.png"])

    def test_user_errors(self):
        with tempfile.TemporaryDirectory() as dump:
            missing = os.path.join(dump, "missing")
            result = run(missing, dump)
            self.assertEqual(result.returncode, 2, "missing dump directory")
            self.assertIn(f"{missing}: no such directory", result.stderr)
            with open(os.path.join(dump, "5-PostBlendGC.json"), "w") as f:
                f.write("{")
            result = run(dump, dump)
            self.assertEqual(result.returncode, 1, "malformed dump file")
            self.assertIn("5-PostBlendGC.json: not a readable dump file", result.stderr)
        usage = run("--help")
        self.assertEqual(usage.returncode, 0)
        self.assertIn("DUMP_DIR OUT_DIR", usage.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
