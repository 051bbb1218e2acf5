#!/usr/bin/env python3
"""Injects single small faults into the sources, one at a time, and tells which ones the project's
own tests catch. A developer tool, not part of CI.

Each catalogue entry (tests/tools/mutations.txt) names a file, an exact text to replace and its
replacement. For each selected entry the file is changed, the library, the test programs and
stc-host are rebuilt in the given build directory, ctest runs, and the file is restored whatever
happens (also on Ctrl-C; a copy of the original waits in BUILD/mutate-backup until then, and a
later run puts back any copy an earlier run left behind).

Results: caught (some test failed or timed out), survived (every test passed), no-build (the
fault does not compile).

Examples:
  tests/tools/mutate.py --build build/plain
  tests/tools/mutate.py --build build/plain --file pipeline/ --kind message --kind priority
  tests/tools/mutate.py --build build/plain --only 12,40-45 --save after.json
  tests/tools/mutate.py --show after.json --survivors
  tests/tools/mutate.py --check          # every entry applies exactly once; nothing is built
"""
import argparse
import collections
import json
import os
import signal
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TARGETS = ["stcZuvaColor", "stc_unit_tests", "stc_host_tests", "stc-host", "refusing_plugin",
           "stc_check_tests", "stc_preview_tests"]
KINDS = ["bound", "swap", "flag", "message", "priority", "check", "row", "prefix", "lock",
         "value"]

class CatalogueError(Exception):
    pass


def read_catalogue(path):
    """Entries: '== FILE[@N] | KIND | NOTE', then '-' lines (the text to find) and '+' lines
    (its replacement, none to delete it). A marker is followed by one blank, which is not part of
    the text; '#' lines and blank lines between entries are ignored."""
    entries, current = [], None
    with open(path) as f:
        for line_no, line in enumerate(f.read().splitlines(), 1):
            if line.startswith("== "):
                fields = [field.strip() for field in line[3:].split("|", 2)]
                if len(fields) != 3 or fields[1] not in KINDS:
                    raise CatalogueError(f"{path}:{line_no}: bad entry header")
                file, _, occurrence = fields[0].partition("@")
                current = {"file": file, "occurrence": int(occurrence or 0), "kind": fields[1],
                           "note": fields[2], "find": [], "replace": [], "line": line_no}
                entries.append(current)
            elif line[:1] in ("-", "+") and current is not None:
                current["find" if line[0] == "-" else "replace"].append(line[2:])
            elif line.strip() and not line.startswith("#"):
                raise CatalogueError(f"{path}:{line_no}: stray line")
    for number, e in enumerate(entries, 1):
        if not e["find"]:
            raise CatalogueError(f"{path}:{e['line']}: entry without a text to find")
        e.update(number=number, find="\n".join(e["find"]), replace="\n".join(e["replace"]))
    return entries


def apply(text, m):
    """The text with the mutation made; the text to find must occur once, or at least
    `occurrence` times when an occurrence (1-based) is given."""
    count = text.count(m["find"])
    if m["occurrence"] == 0 and count != 1:
        raise CatalogueError(f"entry {m['number']}: found {count} times in {m['file']}")
    start = -1
    for _ in range(max(m["occurrence"], 1)):
        start = text.find(m["find"], start + 1)
        if start < 0:
            raise CatalogueError(f"entry {m['number']}: occurrence {m['occurrence']} not in "
                                 f"{m['file']}")
    return text[:start] + m["replace"] + text[start + len(m["find"]):]


class Restorer:
    """Keeps the original of the file being mutated, in memory and in BUILD/mutate-backup."""

    def __init__(self, build):
        self.dir = os.path.join(build, "mutate-backup")
        self.path = self.original = None

    def recover(self):
        for dirpath, _, files in os.walk(self.dir):
            for name in files:
                backup = os.path.join(dirpath, name)
                source = os.path.join(ROOT, os.path.relpath(backup, self.dir))
                print(f"restoring {source} left mutated by an earlier run", file=sys.stderr)
                with open(backup) as f:
                    write(source, f.read())
                os.remove(backup)

    def save(self, path, original):
        self.path, self.original = path, original
        backup = self.backup_path()
        os.makedirs(os.path.dirname(backup), exist_ok=True)
        write(backup, original)

    def restore(self):
        if self.path is not None:
            write(self.path, self.original)
            os.remove(self.backup_path())
            os.removedirs(os.path.dirname(self.backup_path()))  # the empty ones, up to BUILD
            self.path = self.original = None

    def backup_path(self):
        return os.path.join(self.dir, os.path.relpath(self.path, ROOT))


def write(path, text):
    with open(path, "w") as f:
        f.write(text)


def run(command, timeout):
    """The finished process, or None when it ran out of time; the whole process group (compilers,
    test programs) is killed on a timeout or an interrupt."""
    process = subprocess.Popen(command, cwd=ROOT, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True, start_new_session=True)
    try:
        process.stdout_text = process.communicate(timeout=timeout)[0]
        return process
    except BaseException as error:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        if isinstance(error, subprocess.TimeoutExpired):
            return None
        raise


def failed_tests(ctest_output):
    marker = "The following tests FAILED:"
    if marker not in ctest_output:
        return []
    names = []
    for line in ctest_output.split(marker, 1)[1].splitlines():
        parts = line.split(" - ", 1)
        if len(parts) == 2:
            names.append(parts[1].split(" (")[0].strip())
    return names


def try_mutation(m, args, restorer):
    path = os.path.join(ROOT, m["file"])
    with open(path) as f:
        original = f.read()
    mutated = apply(original, m)
    restorer.save(path, original)
    try:
        write(path, mutated)
        build = run(["ninja", "-C", args.build, "-j", str(args.jobs), *TARGETS],
                    args.build_timeout)
        if build is None or build.returncode != 0:
            return {"result": "no-build", "tests": []}
        tests = run(["ctest", "--test-dir", args.build, "-j", str(args.jobs), "--timeout",
                     str(args.test_timeout)], args.test_timeout * 4)
        if tests is None:
            return {"result": "caught", "tests": ["(ctest timed out)"]}
        if tests.returncode == 0:
            return {"result": "survived", "tests": []}
        return {"result": "caught", "tests": failed_tests(tests.stdout_text) or ["(ctest failed)"]}
    finally:
        restorer.restore()


def area(file):
    parts = file.split("/")
    return "/".join(parts[:2]) if parts[0] == "tools" else parts[0]


def print_table(results, survivors_only):
    print(f"{'#':>4}  {'result':9} {'kind':9} {'file':42} note")
    for r in results:
        if survivors_only and r["result"] != "survived":
            continue
        print(f"{r['number']:>4}  {r['result']:9} {r['kind']:9} {r['file']:42} {r['note']}")
        if r["tests"] and not survivors_only:
            shown = ", ".join(r["tests"][:3]) + (" ..." if len(r["tests"]) > 3 else "")
            print(f"{'':25}caught by {shown}")


def print_totals(results):
    def line(label, group):
        counts = collections.Counter(r["result"] for r in group)
        built = counts["caught"] + counts["survived"]
        share = f"{100 * counts['caught'] / built:5.1f}%" if built else "    -"
        print(f"  {label:22} {counts['caught']:4} caught {counts['survived']:4} survived "
              f"{counts['no-build']:3} no-build   {share} of those built caught")

    print("\nTotals")
    line("all", results)
    line("library", [r for r in results if not r["file"].startswith("tools/")])
    groups = (("By directory", lambda r: area(r["file"])), ("By kind", lambda r: r["kind"]))
    for title, key in groups:
        print(title)
        for name in sorted({key(r) for r in results}):
            line(name, [r for r in results if key(r) == name])


def select(entries, args):
    wanted = set()
    for part in filter(None, (args.only or "").split(",")):
        low, _, high = part.partition("-")
        wanted.update(range(int(low), int(high or low) + 1))
    return [e for e in entries
            if (not wanted or e["number"] in wanted)
            and (not args.file or any(f in e["file"] for f in args.file))
            and (not args.kind or e["kind"] in args.kind)]


def source_dir(build):
    with open(os.path.join(build, "CMakeCache.txt")) as f:
        for line in f:
            if line.startswith("CMAKE_HOME_DIRECTORY:"):
                return os.path.realpath(line.split("=", 1)[1].strip())
    return None


def interrupt(*_):
    raise KeyboardInterrupt


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", help="configured plain build directory (Ninja)")
    parser.add_argument("--catalogue", default=os.path.join(ROOT, "tests/tools/mutations.txt"))
    parser.add_argument("--file", action="append", help="only entries whose file contains this")
    parser.add_argument("--kind", action="append", choices=KINDS, help="only entries of this kind")
    parser.add_argument("--only", help="entry numbers, e.g. 3,10-12")
    parser.add_argument("--jobs", type=int, default=2, help="ninja and ctest -j (default 2)")
    parser.add_argument("--test-timeout", type=int, default=60, help="seconds per test")
    parser.add_argument("--build-timeout", type=int, default=900, help="seconds per build")
    parser.add_argument("--save", help="write the results as JSON to this file")
    parser.add_argument("--show", help="print the results saved in this file; nothing runs")
    parser.add_argument("--survivors", action="store_true", help="list only the survivors")
    parser.add_argument("--check", action="store_true",
                        help="only check that every selected entry applies")
    args = parser.parse_args()

    if args.show:
        with open(args.show) as f:
            results = select(json.load(f), args)
        print_table(results, args.survivors)
        print_totals(results)
        return 0

    mutations = select(read_catalogue(args.catalogue), args)
    if args.check:
        bad = 0
        for m in mutations:
            with open(os.path.join(ROOT, m["file"])) as f:
                try:
                    apply(f.read(), m)
                except CatalogueError as error:
                    print(error, file=sys.stderr)
                    bad += 1
        print(f"{len(mutations) - bad} of {len(mutations)} entries apply")
        return 1 if bad else 0
    if not args.build or not os.path.exists(os.path.join(args.build, "build.ninja")):
        parser.error("--build must name a configured Ninja build directory")
    args.build = os.path.abspath(args.build)
    if source_dir(args.build) != os.path.realpath(ROOT):
        parser.error(f"{args.build} is not a build directory of {ROOT}")

    restorer = Restorer(args.build)
    restorer.recover()
    signal.signal(signal.SIGINT, interrupt)
    signal.signal(signal.SIGTERM, interrupt)
    baseline = run(["ninja", "-C", args.build, "-j", str(args.jobs), *TARGETS],
                   args.build_timeout)
    if baseline is None or baseline.returncode != 0:
        print("the unmutated tree does not build", file=sys.stderr)
        return 1
    baseline = run(["ctest", "--test-dir", args.build, "-j", str(args.jobs)], args.build_timeout)
    if baseline is None or baseline.returncode != 0:
        print("the unmutated tree fails its tests", file=sys.stderr)
        return 1

    results = []
    try:
        for m in mutations:
            started = time.monotonic()
            outcome = try_mutation(m, args, restorer)
            results.append({**m, **outcome, "seconds": round(time.monotonic() - started, 1)})
            print(f"[{m['number']}] {outcome['result']:9} {m['file']}: {m['note']}", flush=True)
    except KeyboardInterrupt:
        print("interrupted; the file is restored", file=sys.stderr)
    if args.save:
        with open(args.save, "w") as f:
            json.dump(results, f, indent=1)
    print()
    print_table(results, args.survivors)
    print_totals(results)
    return 0


if __name__ == "__main__":
    sys.exit(main())
