#!/usr/bin/env python3
"""The host simulator run as a user runs it: the demo against its reviewed output, log levels,
JSON lines, expectations, dumps and diffs, and every user error with its one line and exit code.

Usage: stc_host_test.py STC_HOST REFUSING_PLUGIN REPO_ROOT
A cross build names its emulator in $STC_EMULATOR (a command line prefix).
"""
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

STC_HOST, REFUSING_PLUGIN, ROOT = sys.argv[1:4]
EMULATOR = shlex.split(os.environ.get("STC_EMULATOR", ""))
SESSIONS = os.path.join(ROOT, "examples", "sessions")
DEMO = os.path.join(SESSIONS, "demo.json")
SAMPLE = os.path.join(ROOT, "examples", "sample-device")
PERSIST = os.path.join("mnt", "vendor", "persist", "display")

# The persistent directory is scanned in the order the file system yields its entries, which
# differs between machines; those lines are compared apart from the rest.
SCAN_FUNCTIONS = ("isQcCalibrtPresent: ", "useIncomingPanelName: ")


def stable_lines(text):
    return [l for l in text.splitlines() if not any(f in l for f in SCAN_FUNCTIONS)]


def run(*args, stdin=None):
    return subprocess.run([*EMULATOR, STC_HOST, *args], capture_output=True, text=True,
                          timeout=120, input=stdin)


def json_lines(*args):
    result = run("--json", *args)
    assert result.returncode == 0, result.stderr
    return [json.loads(line) for line in result.stdout.splitlines()]


class TempDirTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.tmp)

    def session(self, calls, **extra):
        path = os.path.join(self.tmp, "s%d.json" % len(os.listdir(self.tmp)))
        with open(path, "w") as f:
            f.write(json.dumps({"calls": calls, **extra}) if not isinstance(calls, str) else calls)
        return path


class DemoSession(unittest.TestCase):
    def test_output_matches_the_reviewed_demo(self):
        result = run("--session", DEMO)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(os.path.join(SESSIONS, "demo.expected")) as f:
            expected = f.read()
        self.assertNotIn("0x7f", result.stdout, "no addresses leak into the output")
        self.assertEqual(stable_lines(result.stdout), stable_lines(expected))


class LogLevels(TempDirTest):
    def levels_shown(self, level):
        # FAC_CALIBRATION 0 outside the calibration mode logs debug, and an error line.
        path = self.session([{"call": "init"},
                             {"call": "zuva_color", "items": "FAC_CALIBRATION", "value": 0}])
        lines = json_lines("--session", path, *(["--log-level", level] if level else []))
        return {l["priority"] for l in lines if l["type"] == "log"}

    def test_each_level_shows_itself_and_above(self):
        cases = [("V", {"D", "W", "E"}), ("d", {"D", "W", "E"}), ("i", {"W", "E"}),
                 ("W", {"W", "E"}), ("e", {"E"}), (None, {"W", "E"})]
        for level, shown in cases:
            self.assertEqual(self.levels_shown(level), shown, "level %s" % level)

    def test_every_line_of_a_message_keeps_its_priority_and_tag(self):
        result = run("--log-level", "D", "--session", self.session([{"call": "init"}]))
        self.assertIn("D StcZuvaColor: Init: Current version 3.1.\n"
                      "D StcZuvaColor:          V3.1: Disable 3dlut/pcc param during calibraton",
                      result.stdout)

    def test_unknown_level_is_a_usage_error(self):
        for level in ["X", "F", "DE"]:
            self.assertEqual(run("--log-level", level).returncode, 1, level)


class JsonLines(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lines = json_lines("--log-level", "D", "--session", DEMO)

    def test_log_lines_carry_the_call_they_belong_to(self):
        created = next(l for l in self.lines if l["type"] == "log")
        self.assertIsNone(created["call"], "the entry point logs before any call")
        init = [l for l in self.lines if l["type"] == "log" and "Init done" in l["message"]]
        self.assertEqual(init[0]["call"], 0)

    def line(self, kind, call):
        return next(l for l in self.lines if l["type"] == kind and l["call"] == call)

    def test_arguments_and_answers_are_numbers(self):
        cases = [  # (line type, call, key, expected)
            ("call", 0, "args", {"panel": "zuva_a1_video"}),
            ("call", 2, "args", {"entries": 17, "width": 12}),
            ("result", 1, "answer", [{"name": "standard", "gamut": 255, "gamma": 255,
                                      "intent": 0xfffe}]),
            ("result", 4, "answer", 1),
            ("result", 6, "answer", 0),
            ("call", 7, "args", {"mode": {"gamut": 12, "gamma": 2, "intent": 1, "id": 1,
                                          "meta": False}}),
        ]
        for kind, call, key, expected in cases:
            self.assertEqual(self.line(kind, call)[key], expected, "%s %d" % (kind, call))
        skin = self.line("call", 9)["args"]
        self.assertEqual((skin["scene_id"], skin["items"]), (0x820, ["SKIN", "SATURATION"]))
        self.assertEqual(skin["levels"]["skin_sat"], 8, "a level by its session name")
        matrix = self.line("call", 18)["args"]["matrix"]
        self.assertEqual(matrix[:3], [0.9, 0.1, 0.0], "floats as the session wrote them")
        self.assertEqual(len(matrix), 16)
        self.assertNotIn("args", self.line("call", 22), "deinit has no arguments")

    def test_changes_are_numbers_with_a_count(self):
        summary = next(l for l in self.lines if l["type"] == "summary" and l["call"] == 8)
        pcc = summary["blocks"][1]
        self.assertEqual(pcc["state"], "changed")
        self.assertEqual(pcc["change_count"], 9)
        self.assertEqual(pcc["changes"][0], {"field": "red.r", "before": 1.0, "after": 0.9812})
        gamut = next(l for l in self.lines if l["type"] == "summary" and l["call"] == 5)["blocks"][3]
        self.assertEqual(gamut["changed_entries"], 4912)
        self.assertEqual(gamut["largest_entry_change"], [0, 0, 0, 61, 69, 90])


class Expectations(TempDirTest):
    def test_failures_name_call_field_values_and_the_session_still_ends(self):
        path = self.session([
            {"call": "init", "expect": {"result": -22}},
            {"call": "render_intent", "mode": {"gamut": 0, "intent": 0},
             "blocks": [{"block": "PostBlendPCC"}],
             "expect": {"blocks": {"PostBlendPCC": {"red.r": 0.5, "enabled": 1},
                                   "PostBlendGC": {"enabled": 1}},
                        "log": ["GetPccCoeff: Active PCC is not preset", "no such text"]}},
            {"call": "deinit", "expect": {"result": 0,
                                          "log": ["GetPccCoeff: Active PCC is not preset"]}}])
        result = run("--session", path)
        self.assertEqual(result.returncode, 4)
        failures = [l for l in result.stdout.splitlines() if l.startswith("!!!")]
        self.assertEqual(failures, [
            "!!! [0] expectation failed: result: expected -22, actual 0",
            "!!! [1] expectation failed: PostBlendPCC[0].red.r: expected 0.5, actual 0.9812",
            "!!! [1] expectation failed: PostBlendPCC[1].red.r: expected 0.5, actual 0.9812",
            "!!! [1] expectation failed: PostBlendGC.enabled: expected 1, actual \"no such block\"",
            "!!! [1] expectation failed: log: expected \"no such text\", actual "
            "\"no line contains it\"",
            "!!! [2] expectation failed: log: expected \"GetPccCoeff: Active PCC is not preset\", "
            "actual \"no line contains it\""])
        self.assertIn("<<< [2] deinit -> 0", result.stdout)
        self.assertEqual(result.stderr, "stc-host: error: 6 expectations failed\n")


class DumpAndDiff(TempDirTest):
    def dump(self, device, name):
        out = os.path.join(self.tmp, name)
        result = run("--session", DEMO, "--device", device, "--dump-dir", out)
        self.assertEqual(result.returncode, 0, result.stderr)
        return out

    def test_dump_holds_complete_records(self):
        out = self.dump(SAMPLE, "a")
        with open(os.path.join(out, "5-PostBlendGamut.json")) as f:
            dump = json.load(f)
        self.assertEqual((dump["call"], dump["block"]), (5, "PostBlendGamut"))
        entry = dump["entries"][0]
        self.assertEqual((entry["index"], entry["state"]), (3, "changed"))
        self.assertEqual(len(entry["record"]["entries"]), 4913)
        self.assertEqual(entry["record"]["entries"][1], [0, 0, 256, 0, 0, 259])
        with open(os.path.join(out, "8-PostBlendPCC.json")) as f:
            pcc = json.load(f)["entries"]
        self.assertEqual([e["state"] for e in pcc], ["changed", "appended"])
        self.assertEqual(pcc[1]["record"]["blue"]["b"], 0.9876)
        self.assertFalse(os.path.exists(os.path.join(out, "5-PostBlendIGC.json")), "unchanged")

    def test_diff_names_block_field_and_entry(self):
        device = os.path.join(self.tmp, "unit2")
        shutil.copytree(SAMPLE, device, symlinks=True)
        def edit(kind, row, change):  # changes the words of one row of a unit file
            path = os.path.join(device, PERSIST, "panel_zuva_a1_video_C3D_cali_%s.txt" % kind)
            with open(path) as f:
                rows = f.read().splitlines()
            before = rows[row].split()
            rows[row] = " ".join(change(before))
            with open(path, "w") as f:
                f.write("\n".join(rows) + "\n")
            return before
        shifted = lambda v: v[:3] + [str(int(x) + d) for x, d in zip(v[3:], (7, 4, 44))]
        old = [int(v) for v in edit("srgb", 100, shifted)]
        new = old[:3] + [old[3] + 7, old[4] + 4, old[5] + 44]
        edit("pcc", 0, lambda t: t[:4] + ["0.25"] + t[5:])  # red.rr
        a, b = self.dump(SAMPLE, "a"), self.dump(device, "b")

        same = run("diff", a, a)
        self.assertEqual(same.returncode, 0, same.stdout)
        self.assertTrue(same.stdout.endswith("0 of 10 files differ\n"), same.stdout)
        result = run("diff", a, b)
        self.assertEqual(result.returncode, 4, result.stdout)
        compact = lambda values: json.dumps(values, separators=(",", ":"))
        self.assertIn("5-PostBlendGamut.json: entry 0 (output index 3): 1 field differs\n"
                      "    1 LUT entries differ, largest difference out_r 7, out_g 4, out_b 44\n"
                      "    entries[100]: %s -> %s\n" % (compact(old), compact(new)), result.stdout)
        self.assertIn("8-PostBlendPCC.json: entry 1 (output index 6): 1 field differs\n"
                      "    red.rr: 0.0 -> 0.25\n", result.stdout)

    def test_diff_compares_arrays_of_different_lengths(self):
        def dump(name, curve):
            os.makedirs(os.path.join(self.tmp, name))
            with open(os.path.join(self.tmp, name, "3-PostBlendGC.json"), "w") as f:
                json.dump({"call": 3, "block": "PostBlendGC",
                           "entries": [{"index": 0, "record": {"enabled": 1, "r": curve}}]}, f)
            return os.path.join(self.tmp, name)
        result = run("diff", dump("a", [1, 2]), dump("b", [1, 5, 3]))
        self.assertEqual(result.returncode, 4, result.stdout)
        self.assertEqual(result.stdout, "3-PostBlendGC.json: entry 0 (output index 0): 2 fields "
                                        "differ\n    r[1]: 2 -> 5\n    r[2]: null -> 3\n"
                                        "1 of 1 files differ\n")

    def test_diff_of_a_missing_directory(self):
        self.assertEqual(run("diff", self.tmp, os.path.join(self.tmp, "none")).returncode, 3)


class Preview(TempDirTest):
    def png_size(self, path):
        with open(path, "rb") as f:
            header = f.read(24)
        self.assertEqual(header[:8], b"\x89PNG\r\n\x1a\n")
        return int.from_bytes(header[16:20], "big"), int.from_bytes(header[20:24], "big")

    def test_chart_side_by_side_and_report(self):
        out, report = os.path.join(self.tmp, "p.png"), os.path.join(self.tmp, "r.json")
        single = os.path.join(self.tmp, "single.png")
        result = run("preview", "--session", DEMO, "--chart", "patches", "--out", out,
                     "--report", report, "--side-by-side", "--at", "5")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(result.stdout.startswith("wrote %s; CIEDE2000 over 36 patches: mean "
                                                 % out), result.stdout)
        run("preview", "--session", DEMO, "--chart", "patches", "--out", single, "--at", "5")
        width, height = self.png_size(single)
        self.assertEqual(self.png_size(out), (2 * width, height))
        with open(report) as f:
            data = json.load(f)
        self.assertEqual(len(data["samples"]), 36)
        self.assertEqual(data["delta_e"]["count"], 36)
        white = next(p for p in data["samples"] if p["before"]["rgb"] == [255, 255, 255])
        self.assertGreater(white["delta_e"], 0, "the sRGB LUT moves white")

    def test_entries_without_a_record_are_left_out(self):
        session = self.session([{"call": "init"}, {"call": "render_intent", "mode": {"intent": 1},
                                 "blocks": [{"block": "PostBlendIGC", "empty": True},
                                            {"block": "PostBlendGC", "length": 1024}]}])
        result = run("preview", "--session", session, "--chart", "ramps",
                     "--out", os.path.join(self.tmp, "r.png"))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("mean 0.00, 95th percentile 0.00, max 0.00", result.stdout)

    def test_errors(self):
        out = os.path.join(self.tmp, "x.png")
        cases = [(["--chart", "bogus"], 1, 'unknown chart "bogus"; valid charts: patches, ramps, '
                                            "skin-sky-foliage"),
                 (["--image", DEMO], 1, DEMO + ": not a PNG file"),
                 ([], 1, "preview needs --image or --chart"),
                 (["--chart", "ramps", "--at", "4"], 2,
                  "the session plays no processing operation with an output list up to call 4")]
        for args, code, message in cases:
            result = run("preview", "--session", DEMO, "--out", out, *args)
            self.assertEqual(result.returncode, code, args)
            self.assertEqual(result.stderr, "stc-host: error: %s\n" % message, args)


class Check(TempDirTest):
    def test_sample_device_is_clean_of_errors(self):
        result = run("check", SAMPLE)
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertTrue(result.stdout.endswith("0 errors, 8 warnings in 8 files\n"), result.stdout)

    def test_broken_unit_file_in_compiler_format(self):
        tree = os.path.join(self.tmp, "tree")
        shutil.copytree(SAMPLE, tree, symlinks=True)
        lut = os.path.join(tree, PERSIST, "panel_zuva_a1_video_C3D_cali_p3.txt")
        open(lut, "w").close()  # an empty unit file: read, so no golden fall-back
        result = run("check", tree)
        self.assertEqual(result.returncode, 4, result.stdout)
        self.assertIn(lut + ": error: ", result.stdout)
        as_json = json.loads(run("check", "--json", lut).stdout)
        self.assertEqual([(f["line"], f["severity"]) for f in as_json["findings"]], [(None, "error")])

    def test_usage_and_environment_errors(self):
        self.assertEqual(run("check", "--as", "bogus", DEMO).returncode, 1)
        self.assertEqual(run("check", os.path.join(self.tmp, "none")).returncode, 3)


class Panels(TempDirTest):
    def init_panels(self, *args, **session):
        path = self.session([{"call": "init"}, {"call": "init", "panel": "own_panel"}], **session)
        out = run("--session", path, *args).stdout
        return [l.split("init panel ")[1] for l in out.splitlines() if "init panel" in l]

    def test_panel_precedence(self):
        self.assertEqual(self.init_panels(), ["zuva_a1_video", "own_panel"])
        self.assertEqual(self.init_panels(panel="from_session"), ["from_session", "own_panel"])
        self.assertEqual(self.init_panels("--panel", "cli", panel="from_session"),
                         ["cli", "own_panel"])


class UserErrors(TempDirTest):
    def assertError(self, args, code, message, stdin=None):
        result = run(*args, stdin=stdin)
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertEqual(result.stderr.strip().splitlines(), ["stc-host: error: " + message])
        self.assertEqual(result.stdout, "")

    def test_session_errors_name_the_json_path(self):
        cases = [
            ('{"calls": [{"call": "zuva_color", "items": ["SKIN", "SATURATON"]}]}',
             '$.calls[0].items[1]: unknown item name "SATURATON"; valid items: SKY_CLOUD, GRASS, '),
            ('{"calls": [{"call": "render_intent", "blocks": [{"block": "PostBlendPCC"}, '
             '{"block": "PostBlendPaDitherX"}]}]}',
             '$.calls[0].blocks[1].block: unknown block name "PostBlendPaDitherX"; valid blocks: '
             'PostBlendGamut, PostBlendIGC, '),
            ('{"calls": [{"call": "inti"}]}', '$.calls[0].call: unknown call "inti"; valid calls: '),
            ('{"calls": [{"call": "zuva_color", "items": "SKIN", "levels": {"skin_hew": 1}}]}',
             '$.calls[0].levels.skin_hew: unknown key "skin_hew"; valid keys: contrast, '),
            ('{"calls": [{"call": "zuva_color", "items": "SKIN", "value": 4294967296}]}',
             '$.calls[0].value: integer out of range -2147483648..4294967295'),
            ('{"calls": [{"call": "zuva_color", "items": ["-0"]}]}',
             '$.calls[0].items[0]: unknown item name "-0"'),
            ('{"calls": [{"call": "color_transform", "matrix": [%s]}]}' % ",".join(["0"] * 17),
             '$.calls[0].matrix: expected 16 numbers'),
            ('{"calls": [{"call": "dimming", "factor": 1e309}]}',
             '$.calls[0].factor: number 1e309 out of range'),
            ('{"calls": [{"call": "init", "panel": "a", "panel": "b"}]}',
             '$.calls[0].panel: key "panel" given twice'),
            ('{"calls": [{"call": "render_intent", "expect": {"blocks": {"PostBlendPCC": '
             '{"red.x": 1}}}}]}',
             '$.calls[0].expect.blocks.PostBlendPCC.red.x: unknown field "red.x" of PostBlendPCC;'
             ' valid fields: version, enabled, red.c, '),
            ('{"calls": [', '$: malformed JSON'),
        ]
        for text, message in cases:
            path = self.session(text)
            result = run("-s", path)
            self.assertEqual(result.returncode, 2, text)
            self.assertTrue(result.stderr.startswith("stc-host: error: %s: %s" % (path, message)),
                            result.stderr)

    def test_session_from_standard_input(self):
        result = run("-s", "-", stdin='{"calls": [{"call": "inti"}]}')
        self.assertTrue(result.stderr.startswith(
            'stc-host: error: standard input: $.calls[0].call: unknown call "inti"'), result.stderr)
        ok = run("-s", "-", stdin='{"calls": [{"call": "init", "expect": {"result": 0}}]}')
        self.assertEqual(ok.returncode, 0, ok.stderr)

    def test_paths_of_the_wrong_kind(self):
        self.assertError(["-s", "/nonexistent/s.json"], 2,
                         "/nonexistent/s.json: cannot open session file: No such file or directory")
        self.assertError(["-s", self.tmp], 2, self.tmp + ": is a directory, not a session file")
        self.assertError(["--device", "/nonexistent/dev"], 3,
                         "device directory /nonexistent/dev does not exist")
        self.assertError(["--device", DEMO], 3,
                         "device directory " + DEMO + " is a file, not a directory")

    def test_unusable_libraries(self):
        result = run("--lib", "/nonexistent/libx.so")
        self.assertEqual(result.returncode, 3)
        self.assertTrue(result.stderr.startswith(
            "stc-host: error: cannot load plug-in /nonexistent/libx.so: "))
        qdutils = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(STC_HOST))),
                               "qdutils", "libqdutils.so")
        self.assertError(["--lib", qdutils], 3,
                         qdutils + " has no GetScPostBlendInterface entry point")
        self.assertError(["--lib", REFUSING_PLUGIN], 3,
                         REFUSING_PLUGIN + " refused interface version 2.0")

    def test_help_documents_every_option_with_an_example(self):
        result = run("--help")
        self.assertEqual(result.returncode, 0)
        for option in ["--session", "--lib", "--device", "--panel", "--qdutils", "--no-qdutils",
                       "--log-level", "--json", "--dump-dir", "diff"]:
            self.assertIn(option, result.stdout)
        self.assertIn("Example:", result.stdout)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
