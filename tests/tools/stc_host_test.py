#!/usr/bin/env python3
"""The host simulator run as a user runs it: the demo against its checked-in output, the factory
calibration session's key results, and every user error with its one line and exit code.

Usage: stc_host_test.py STC_HOST REFUSING_PLUGIN REPO_ROOT
A cross build names its emulator in $STC_EMULATOR (a command line prefix).
"""
import json
import os
import shlex
import subprocess
import sys
import tempfile
import unittest

STC_HOST, REFUSING_PLUGIN, ROOT = sys.argv[1:4]
EMULATOR = shlex.split(os.environ.get("STC_EMULATOR", ""))
SESSIONS = os.path.join(ROOT, "examples", "sessions")


# The persistent directory is scanned in the order the file system yields its entries, which
# differs between machines; those lines are compared apart from the rest.
SCAN_FUNCTIONS = ("isQcCalibrtPresent: ", "useIncomingPanelName: ")


def stable_lines(text):
    return [l for l in text.splitlines() if not any(f in l for f in SCAN_FUNCTIONS)]


def run(*args):
    return subprocess.run([*EMULATOR, STC_HOST, *args], capture_output=True, text=True,
                          timeout=120)


def json_lines(*args):
    result = run("--json", *args)
    assert result.returncode == 0, result.stderr
    return [json.loads(line) for line in result.stdout.splitlines()]


class DemoSession(unittest.TestCase):
    def test_output_matches_the_checked_in_demo(self):
        result = run("--session", os.path.join(SESSIONS, "demo.json"))
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(os.path.join(SESSIONS, "demo.expected")) as f:
            expected = f.read()
        self.assertNotIn("0x7f", result.stdout)  # no addresses leak into the output
        self.assertEqual(stable_lines(result.stdout), stable_lines(expected))
        self.assertIn("W StcZuvaColor: useIncomingPanelName: Found calibration param file named "
                      "by panel_name: /mnt/vendor/persist/display/panel_zuva_a1_video_C3D_cali_",
                      result.stdout)


class FactoryCalibrationSession(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lines = json_lines("--session", os.path.join(SESSIONS, "factory_calibration.json"))

    def summary_after(self, call_index):
        return next(l for l in self.lines if l["type"] == "summary" and l["index"] == call_index)

    def gamut_block(self, call_index):
        blocks = self.summary_after(call_index)["blocks"]
        return next(b for b in blocks if b["block"] == "PostBlendGamut")

    def messages(self):
        return [l["message"] for l in self.lines if l["type"] == "log"]

    def test_every_call_succeeds(self):
        results = [l["result"] for l in self.lines if l["type"] == "result"]
        self.assertEqual(results, [0] * len(results))

    def test_start_keeps_the_raw_panel(self):
        self.assertIn("SetZuvaColor: Calitration start: Keep origin/clean 3dlut/pcc during "
                      "calitration process!!!", self.messages())
        self.assertEqual(self.gamut_block(3)["state"], "unchanged")
        self.assertEqual(self.summary_after(3)["blocks"][0]["state"], "unchanged")

    def test_reload_then_srgb_and_p3_views_load_their_tables(self):
        self.assertTrue(any(m.startswith("SetZuvaColor: Calitration complete: load calibration "
                                         "param!!!") for m in self.messages()))
        srgb = self.gamut_block(6)
        p3 = self.gamut_block(8)
        self.assertEqual(srgb["after"]["header"], "flags=0x0 lut3d_id=1 uniform=1 num=4913")
        self.assertNotEqual(srgb["after"]["last"], p3["after"]["last"])
        with open(os.path.join(ROOT, "examples", "sample-device", "mnt", "vendor", "persist",
                               "display", "panel_zuva_a1_video_C3D_cali_p3.txt")) as f:
            p3_rows = f.read().splitlines()
        self.assertEqual(p3["after"]["last"], "[{} {} {} -> {} {} {}]".format(*p3_rows[-1].split()))

    def test_exit_keeps_the_calibration_on(self):
        self.assertIn("SetZuvaColor: Calitration exit!!!", self.messages())
        self.assertEqual(self.gamut_block(10)["state"], "changed")


class UserErrors(unittest.TestCase):
    def write_session(self, text):
        handle, path = tempfile.mkstemp(suffix=".json")
        with os.fdopen(handle, "w") as f:
            f.write(text)
        self.addCleanup(os.remove, path)
        return path

    def assertError(self, args, code, message):
        result = run(*args)
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertEqual(result.stderr.strip().splitlines(), ["stc-host: error: " + message])
        self.assertEqual(result.stdout, "")

    def test_unknown_item_names_the_json_path(self):
        path = self.write_session('{"calls": [{"call": "zuva_color", "items": ["SKIN", "SATURATON"]}]}')
        self.assertError(["-s", path], 2, path + ': $.calls[0].items[1]: unknown item name "SATURATON"')

    def test_unknown_block_names_the_json_path(self):
        path = self.write_session(
            '{"calls": [{"call": "render_intent", "blocks": [{"block": "PostBlendPCC"}, '
            '{"block": "PostBlendPaDitherX"}]}]}')
        self.assertError(["-s", path], 2,
                         path + ': $.calls[0].blocks[1].block: unknown block name "PostBlendPaDitherX"')

    def test_malformed_session(self):
        path = self.write_session('{"calls": [')
        result = run("-s", path)
        self.assertEqual(result.returncode, 2)
        self.assertTrue(result.stderr.startswith("stc-host: error: " + path + ": $: malformed JSON"))

    def test_missing_session(self):
        self.assertError(["-s", "/nonexistent/s.json"], 2,
                         "/nonexistent/s.json: cannot open session file: No such file or directory")

    def test_missing_device_directory(self):
        self.assertError(["--device", "/nonexistent/dev"], 3,
                         "device directory /nonexistent/dev does not exist")

    def test_missing_library(self):
        result = run("--lib", "/nonexistent/libx.so")
        self.assertEqual(result.returncode, 3)
        self.assertTrue(result.stderr.startswith("stc-host: error: cannot load plug-in /nonexistent/libx.so: "))

    def test_library_without_entry_point(self):
        qdutils = os.path.join(os.path.dirname(os.path.dirname(STC_HOST)), "..", "qdutils",
                               "libqdutils.so")
        self.assertError(["--lib", qdutils], 3, qdutils + " has no GetScPostBlendInterface entry point")

    def test_library_refusing_version_two(self):
        self.assertError(["--lib", REFUSING_PLUGIN], 3,
                         REFUSING_PLUGIN + " refused interface version 2.0")

    def test_bad_option_value(self):
        result = run("--log-level", "X")
        self.assertEqual(result.returncode, 1)

    def test_help_documents_every_option_with_an_example(self):
        result = run("--help")
        self.assertEqual(result.returncode, 0)
        for option in ["--session", "--lib", "--device", "--panel", "--qdutils", "--no-qdutils",
                       "--log-level", "--json"]:
            self.assertIn(option, result.stdout)
        self.assertIn("Example:", result.stdout)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
