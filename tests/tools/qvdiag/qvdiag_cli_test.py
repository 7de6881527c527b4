#!/usr/bin/python3
"""The qvdiag command line as a person uses it: outputs, messages and exit codes.

    qvdiag_cli_test.py --qvdiag BUILD/qvdiag --source-dir REPO

With QV_UPDATE_GOLDEN set, the golden files of qvdiag build are rewritten instead of compared
(scripts/regen-golden does that and shows the difference).
"""
import argparse
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

ARGS = None
FIXED_STAMP = "Mon Nov 23 09:00:00 2026"


def run(*arguments, timeout=60, cwd=None):
    return subprocess.run([ARGS.qvdiag] + list(arguments), stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, timeout=timeout, cwd=cwd)


NUMBER = re.compile(r"-?[0-9]+(\.[0-9]+)?( MHz)?")


def report_text_values(text):
    """Every value the text report prints, in order, read by the report's layout."""
    lines = text.split("\n")
    values = [("Version", lines[1][12:]), ("Copyright", lines[2][12:]), ("Created", lines[3][12:])]
    i = 6
    while i < len(lines):
        line = lines[i]
        following = lines[i + 1] if i + 1 < len(lines) else ""
        if line and following == "=" * len(line):
            values.append(("section", line))
            i += 2
            continue
        if line and following == "-" * len(line) and not line.startswith("+"):
            values.append(("group", line))
            i += 2
            continue
        if not line or line.startswith("+"):
            i += 1
            continue
        if line.startswith("|"):
            kind = "column" if lines[i - 1].startswith("+") and lines[i + 1].startswith("+") \
                and (i < 2 or not lines[i - 2].startswith("|")) else "cell"
            values.extend((kind, cell.strip()) for cell in line.split("|")[1:-1])
            i += 1
            continue
        key, colon, value = line.partition(": ")
        values.append((key, value) if colon else ("label", line))
        i += 1
    return values


def report_json_values(document):
    """The same values from the JSON of the report, in the same order."""
    values = [("Version", document["version"]), ("Copyright", document["copyright"]),
              ("Created", document["created"])]
    for section in document["sections"]:
        if not section["written"]:
            continue
        values.append(("section", "%d. %s" % (section["number"], section["title"])))
        group = None
        for item in section["items"]:
            if item["group"] != group:
                group = item["group"]
                values.append(("group", group))
            if "values" in item:
                values.extend(item["values"].items())
                continue
            if item["label"] is not None:
                key, colon, value = item["label"].partition(": ")
                values.append((key, value) if colon else ("label", item["label"]))
            values.extend(("column", column) for column in item["columns"])
            for row in item["rows"]:
                values.extend(("cell", cell) for cell in row)
    return values



# qvdiag diff of the example built without and with the rtd file after implementation: the
# compute units get their base addresses, the memories move and two banks fall out of use.
BEFORE_AND_AFTER_IMPLEMENTATION = """\
compute units: 0 added, 0 removed, 6 changed
  ~ consumer_1
      base address      "" → 0x1c50000
  ~ mmult_1
      base address      "" → 0x1c20000
  ~ mmult_2
      base address      "" → 0x1c30000
  ~ producer_1
      base address      "" → 0x1c40000
  ~ vadd_1
      base address      "" → 0x1c00000
  ~ vadd_2
      base address      "" → 0x1c10000

memories: 0 added, 0 removed, 36 changed
  ~ DDR[1]
      size KB           16,777,216 → 8,388,608 (−8,388,608, −50.0%)
      base address      0x400000000 → 0x4400000000
  ~ DDR[0]
      base address      0x0 → 0x4000000000
  ~ DDR[2]
      base address      0x800000000 → 0x4800000000
  ~ DDR[3]
      used              yes → no
      base address      0xc00000000 → 0x4c00000000
  ~ HBM[0]
      base address      0x1000000000 → 0x0
  ~ HBM[1]
      base address      0x1010000000 → 0x10000000
  ~ HBM[2]
      base address      0x1020000000 → 0x20000000
  ~ HBM[3]
      base address      0x1030000000 → 0x30000000
  ~ HBM[4]
      base address      0x1040000000 → 0x40000000
  ~ HBM[5]
      base address      0x1050000000 → 0x50000000
  ~ HBM[6]
      base address      0x1060000000 → 0x60000000
  ~ HBM[7]
      base address      0x1070000000 → 0x70000000
  ~ HBM[8]
      used              yes → no
      base address      0x1080000000 → 0x80000000
  ~ HBM[9]
      used              yes → no
      base address      0x1090000000 → 0x90000000
  ~ HBM[10]
      base address      0x10a0000000 → 0xa0000000
  ~ HBM[11]
      base address      0x10b0000000 → 0xb0000000
  ~ HBM[12]
      base address      0x10c0000000 → 0xc0000000
  ~ HBM[13]
      base address      0x10d0000000 → 0xd0000000
  ~ HBM[14]
      base address      0x10e0000000 → 0xe0000000
  ~ HBM[15]
      base address      0x10f0000000 → 0xf0000000
  ~ HBM[16]
      base address      0x1100000000 → 0x100000000
  ~ HBM[17]
      base address      0x1110000000 → 0x110000000
  ~ HBM[18]
      base address      0x1120000000 → 0x120000000
  ~ HBM[19]
      base address      0x1130000000 → 0x130000000
  ~ HBM[20]
      base address      0x1140000000 → 0x140000000
  ~ HBM[21]
      base address      0x1150000000 → 0x150000000
  ~ HBM[22]
      base address      0x1160000000 → 0x160000000
  ~ HBM[23]
      base address      0x1170000000 → 0x170000000
  ~ HBM[24]
      base address      0x1180000000 → 0x180000000
  ~ HBM[25]
      base address      0x1190000000 → 0x190000000
  ~ HBM[26]
      base address      0x11a0000000 → 0x1a0000000
  ~ HBM[27]
      base address      0x11b0000000 → 0x1b0000000
  ~ HBM[28]
      base address      0x11c0000000 → 0x1c0000000
  ~ HBM[29]
      base address      0x11d0000000 → 0x1d0000000
  ~ HBM[30]
      base address      0x11e0000000 → 0x1e0000000
  ~ HBM[31]
      base address      0x11f0000000 → 0x1f0000000

summary: 0 added, 0 removed, 42 changed
"""


class QvdiagTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp(prefix="qvdiag-cli-")
        self.examples = os.path.join(ARGS.source_dir, "examples")
        self.golden_dir = os.path.join(ARGS.source_dir, "tests", "data", "golden", "qvdiag_build")

    def tearDown(self):
        shutil.rmtree(self.tmp, ignore_errors=True)

    def design(self, name):
        return os.path.join(self.examples, "design", name)

    def assertRun(self, result, code, stdout=None, stderr=None):
        self.assertEqual(result.returncode, code, result.stderr)
        if stdout is not None:
            self.assertEqual(result.stdout, stdout)
        if stderr is not None:
            self.assertEqual(result.stderr, stderr)

    def version(self):
        return run("--version").stdout.strip().split(" ")[1]

    def assertGolden(self, text, name):
        # The tool's version is kept out of the golden files, so that they outlive a release.
        text = text.replace(self.version(), "@VERSION@")
        path = os.path.join(self.golden_dir, name)
        if os.environ.get("QV_UPDATE_GOLDEN"):
            os.makedirs(self.golden_dir, exist_ok=True)
            with open(path, "w") as f:
                f.write(text)
            return
        with open(path) as f:
            self.assertEqual(text, f.read(), "differs from " + path)

    # --- qvdiag diff --------------------------------------------------------------------------
    def example_diagram(self):
        return os.path.join(self.golden_dir, "system_diagram.json")

    def write(self, name, text):
        path = os.path.join(self.tmp, name)
        with open(path, "w") as f:
            f.write(text)
        return path

    def test_diff_of_the_example_with_itself_prints_nothing(self):
        self.assertRun(run("diff", self.example_diagram(), self.example_diagram()), 0,
                       stdout="", stderr="")

    def test_diff_json_of_the_example_with_itself_says_same(self):
        result = run("diff", "--format", "json", self.example_diagram(), self.example_diagram())
        self.assertRun(result, 0, stderr="")
        document = json.loads(result.stdout)
        self.assertEqual(document["same"], True)
        self.assertEqual(document["summary"],
                         {"added": 0, "removed": 0, "changed": 0, "unchanged": 119})

    def test_diff_of_the_example_before_and_after_implementation(self):
        before = os.path.join(self.tmp, "before")
        after = os.path.join(self.tmp, "after")
        self.assertRun(run("build", "--rtd", self.design("vector_pipeline.rtd.json"),
                           "--platform", "qv_accel_h2_gen3x16",
                           "--platform-path", os.path.join(self.examples, "platforms"),
                           "--requests", self.design("vector_pipeline.requests.json"),
                           "--utilization", self.design("vector_pipeline.synth.util.json"),
                           "--utilization", self.design("vector_pipeline.place.util.json"),
                           "--utilization", self.design("vector_pipeline.route.util.json"),
                           "--out-dir", before, "--timestamp", FIXED_STAMP,
                           cwd=os.path.join(self.examples, "design")), 0)
        self.assertRun(self.build_example(after), 0)
        old = os.path.join(before, "system_diagram.json")
        new = os.path.join(after, "system_diagram.json")
        result = run("diff", old, new)
        self.assertRun(result, 1, stderr="")
        self.assertEqual(result.stdout, BEFORE_AND_AFTER_IMPLEMENTATION)
        result = run("diff", "--format", "json", old, new)
        self.assertRun(result, 1, stderr="")
        document = json.loads(result.stdout)
        self.assertEqual(document["old"], old)
        self.assertEqual(document["summary"],
                         {"added": 0, "removed": 0, "changed": 42, "unchanged": 77})
        groups = {group["group"]: group for group in document["groups"]}
        self.assertEqual(groups["compute_units"]["entries"][0],
                         {"change": "changed", "key": "consumer_1", "fields": [
                             {"field": "base_address", "name": "base address", "old": "",
                              "new": "0x1c50000", "delta": None, "percent": None,
                              "share_of": None, "old_share": None, "new_share": None}]})
        self.assertEqual(groups["memories"]["entries"][0]["fields"][0],
                         {"field": "size_kb", "name": "size KB", "old": 16777216,
                          "new": 8388608, "delta": -8388608, "percent": -50,
                          "share_of": None, "old_share": None, "new_share": None})

    def test_diff_of_an_unreadable_file_names_it(self):
        bad = self.write("b.json", '{"system_diagram_metadata": {"colour": 1}}')
        self.assertRun(run("diff", self.example_diagram(), bad), 2, stdout="",
                       stderr="qvdiag diff: " + bad + ": Deserializing failed with error: "
                              "(system_diagram_metadata) colour: Cannot find field..\n")
        truncated = self.write("t.json", "{")
        result = run("diff", truncated, self.example_diagram())
        self.assertRun(result, 2, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag diff: " + truncated + ": Deserializing failed with error: "), result.stderr)
        missing = os.path.join(self.tmp, "missing.json")
        self.assertRun(run("diff", self.example_diagram(), missing), 2, stdout="",
                       stderr="qvdiag diff: cannot read '" + missing +
                              "': No such file or directory\n")

    def test_diff_bad_usage(self):
        self.assertRun(run("diff", self.example_diagram()), 2, stdout="")
        result = run("diff", "--format", "xml", self.example_diagram(), self.example_diagram())
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0], "--format: xml not in {text,json}")

    def test_diff_help_explains_the_marks_and_the_exit_codes(self):
        result = run("diff", "--help")
        self.assertRun(result, 0, stderr="")
        self.assertIn("Text marks: + added, - removed,\n~ changed, = unchanged (--all)",
                      result.stdout)
        self.assertIn("300.00 \u2192 281.25 MHz (\u22126.2%)", result.stdout)
        self.assertIn("Exit 0: the same; 1: different; 2: bad usage or unreadable input",
                      result.stdout)

    # --- qvdiag report ------------------------------------------------------------------------
    def golden_report(self):
        with open(os.path.join(self.golden_dir, "flow_report.txt")) as f:
            return f.read().replace("@VERSION@", self.version())

    def test_report_of_the_example_is_the_report_of_its_build(self):
        result = run("report", self.example_diagram(), "--timestamp", FIXED_STAMP)
        self.assertRun(result, 0, stderr="")
        self.assertEqual(result.stdout, self.golden_report())

    def test_report_to_a_file_leaves_nothing_else_behind(self):
        out = os.path.join(self.tmp, "report.txt")
        result = run("report", self.example_diagram(), "-o", out, "--timestamp", FIXED_STAMP)
        self.assertRun(result, 0, stdout="", stderr="")
        with open(out) as f:
            self.assertEqual(f.read(), self.golden_report())
        self.assertEqual(os.listdir(self.tmp), ["report.txt"])

    def test_report_of_an_unreadable_file_names_it(self):
        bad = self.write("b.json", '{"system_diagram_metadata": {"colour": 1}}')
        self.assertRun(run("report", bad), 2, stdout="",
                       stderr="qvdiag report: " + bad + ": Deserializing failed with error: "
                              "(system_diagram_metadata) colour: Cannot find field..\n")
        missing = os.path.join(self.tmp, "missing.json")
        self.assertRun(run("report", missing), 2, stdout="",
                       stderr="qvdiag report: cannot read '" + missing +
                              "': No such file or directory\n")
        self.assertRun(run("report"), 2, stdout="")

    def assertReportJsonHoldsEveryValue(self, diagram):
        text = run("report", diagram, "--timestamp", FIXED_STAMP)
        self.assertRun(text, 0, stderr="")
        result = run("report", "--format", "json", diagram, "--timestamp", FIXED_STAMP)
        self.assertRun(result, 0, stderr="")
        printed = report_text_values(text.stdout)
        data = report_json_values(json.loads(result.stdout))
        self.assertEqual([key for key, _ in data], [key for key, _ in printed])
        for (key, shown), (_, value) in zip(printed, data):
            with self.subTest(key=key, shown=shown):
                if shown in ("", "N/A", "not_specified"):
                    self.assertIsNone(value)
                elif NUMBER.fullmatch(shown):
                    self.assertIsInstance(value, (int, float))
                    self.assertEqual(value, float(shown.replace(" MHz", "")))
                    if "." not in shown:
                        self.assertIsInstance(value, int)
                else:
                    self.assertEqual(value, shown)
        return printed

    def test_report_json_of_the_example_holds_every_value_of_the_text(self):
        printed = self.assertReportJsonHoldsEveryValue(self.example_diagram())
        self.assertIn(("Achieved Kernel Clock Frequency", "450.00 MHz"), printed)
        self.assertIn(("section", "7. Compute Unit Utilization per SLR"), printed)

    def test_report_json_of_a_multi_slr_multi_state_diagram_holds_every_value(self):
        with open(self.example_diagram()) as f:
            diagram = json.load(f)
        region = diagram["system_diagram_metadata"]["qrxbin"]["user_regions"][0]
        # mmult_1 spreads over both SLRs, with the same rows in each, as the report's tables
        # need; every compute unit has three design states already.
        unit = next(u for u in region["compute_units"] if u["name"] == "mmult_1")
        unit["slr_resources"].append({"slr": "SLR1", "utilization": [
            {"resource": "LUT", "used": "1200", "available": "427200"},
            {"resource": "REG", "used": "2300", "available": "854400"},
            {"resource": "BRAM", "used": "4", "available": "696"}]})
        path = self.write("multi_slr.json", json.dumps(diagram))
        printed = self.assertReportJsonHoldsEveryValue(path)
        self.assertIn(("column", "SLR1 %"), printed)

    def test_report_json_at_build_time_matches_the_report_command(self):
        out_dir = os.path.join(self.tmp, "out")
        result = self.build_example(out_dir, "--report-format", "both")
        self.assertRun(result, 0)
        self.assertIn("  report as JSON   " + os.path.join(out_dir, "flow_report.json") + "\n",
                      result.stdout)
        self.assertEqual(sorted(os.listdir(out_dir)),
                         ["flow_report.json", "flow_report.txt", "system_diagram.html",
                          "system_diagram.json", "system_diagram.svg"])
        with open(os.path.join(out_dir, "flow_report.json")) as f:
            built = f.read()
        reported = run("report", "--format", "json", os.path.join(out_dir, "system_diagram.json"),
                       "--timestamp", FIXED_STAMP)
        self.assertRun(reported, 0, stderr="")
        self.assertEqual(built, reported.stdout)

    # --- qvdiag build -------------------------------------------------------------------------
    def build_example(self, out_dir, *extra):
        return run("build", "--rtd", self.design("vector_pipeline.rtd.json"),
                   "--platform", "qv_accel_h2_gen3x16",
                   "--platform-path", os.path.join(self.examples, "platforms"),
                   "--requests", self.design("vector_pipeline.requests.json"),
                   "--after-impl-rtd", self.design("vector_pipeline.post_impl.rtd.json"),
                   "--utilization", self.design("vector_pipeline.synth.util.json"),
                   "--utilization", self.design("vector_pipeline.place.util.json"),
                   "--utilization", self.design("vector_pipeline.route.util.json"),
                   "--out-dir", out_dir, "--timestamp", FIXED_STAMP, *extra,
                   # The example's kernels file names its kernel directories from here.
                   cwd=os.path.join(self.examples, "design"))

    def test_build_on_the_examples_matches_the_reviewed_output(self):
        out_dir = os.path.join(self.tmp, "out")
        result = self.build_example(out_dir)
        self.assertRun(result, 0)
        with open(os.path.join(out_dir, "system_diagram.json")) as f:
            self.assertGolden(f.read(), "system_diagram.json")
        with open(os.path.join(out_dir, "flow_report.txt")) as f:
            self.assertGolden(f.read(), "flow_report.txt")
        self.assertGolden(result.stdout.replace(out_dir, "<out>"), "summary.txt")
        steps = [line for line in result.stderr.splitlines() if line.startswith("[")]
        requests = self.design("vector_pipeline.requests.json")
        self.assertEqual(len(steps), 31)
        self.assertEqual(steps[:3] + steps[-6:], [
            "[1/31] MakeInitialSystemDiagram from " + self.design("vector_pipeline.rtd.json") +
            " on qv_accel_h2_gen3x16",
            "[2/31] UpsertKernel from " + requests + " entry 1",
            "[3/31] UpdateComputeUnit from " + requests + " entry 2",
            "[26/31] UpdateSystemDiagramAfterBrenloRuns from " +
            self.design("vector_pipeline.post_impl.rtd.json"),
            "[27/31] UtilizationDuringBrenloRun from " +
            self.design("vector_pipeline.synth.util.json"),
            "[28/31] UtilizationDuringBrenloRun from " +
            self.design("vector_pipeline.place.util.json"),
            "[29/31] UtilizationDuringBrenloRun from " +
            self.design("vector_pipeline.route.util.json"),
            "[30/31] WriteSystemDiagram to " + os.path.join(out_dir, "system_diagram.json"),
            "[31/31] WriteFlowReport to " + os.path.join(out_dir, "flow_report.txt")])
        self.assertRegex(result.stderr.splitlines()[-1],
                         r"^qvdiag build: 31 requests served in \d+ ms$")
        self.assertEqual(sorted(os.listdir(out_dir)),
                         ["flow_report.txt", "system_diagram.html", "system_diagram.json",
                          "system_diagram.svg"])
        # The pictures are those of qvdiag render with the rtd file that made the diagram.
        rendered = run("render", os.path.join(out_dir, "system_diagram.json"), "--rtd",
                       self.design("vector_pipeline.rtd.json"))
        self.assertRun(rendered, 0, stderr="")
        with open(os.path.join(out_dir, "system_diagram.svg")) as f:
            self.assertEqual(f.read(), rendered.stdout)

    def test_build_without_pictures(self):
        out_dir = os.path.join(self.tmp, "out")
        result = self.build_example(out_dir, "--no-pictures")
        self.assertRun(result, 0)
        self.assertEqual(sorted(os.listdir(out_dir)), ["flow_report.txt", "system_diagram.json"])
        self.assertEqual(result.stdout.splitlines()[-1],
                         "  flow report      " + os.path.join(out_dir, "flow_report.txt"))

    def test_build_twice_gives_the_same_bytes(self):
        first = os.path.join(self.tmp, "a")
        second = os.path.join(self.tmp, "b")
        self.assertRun(self.build_example(first), 0)
        self.assertRun(self.build_example(second), 0)
        for name in ("system_diagram.json", "flow_report.txt"):
            with open(os.path.join(first, name)) as a, open(os.path.join(second, name)) as b:
                self.assertEqual(a.read(), b.read(), name)

    def test_build_options_reach_the_build_record(self):
        out_dir = os.path.join(self.tmp, "out")
        self.assertRun(self.build_example(out_dir, "--label", "mine", "--generated-name", "tc",
                                          "--generated-change-list", "cl9", "--generated-flag"),
                       0)
        with open(os.path.join(out_dir, "system_diagram.json")) as f:
            record = json.load(f)["system_diagram_metadata"]["qrxbin"]["generated_by"]
        self.assertEqual((record["name"], record["change_list"], record["label"],
                          record["label_copy"], record["flag"], record["timestamp"]),
                         ("tc", "cl9", "mine", "mine", True, FIXED_STAMP))

    def test_build_with_a_missing_file_is_bad_usage(self):
        missing = os.path.join(self.tmp, "missing.rtd.json")
        result = run("build", "--rtd", missing, "--platform", "p")
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0],
                         "--rtd: File does not exist: " + missing)

    def test_build_with_a_bad_request_file_is_bad_usage_and_sends_nothing(self):
        bad = os.path.join(self.tmp, "bad.json")
        with open(bad, "w") as f:
            f.write('[{"type": "UpsertKernel", "payload": {"kernel": {"nam": "x"}}}]')
        result = run("build", "--rtd", self.design("vector_pipeline.rtd.json"), "--platform",
                     "p", "--requests", bad, "--out-dir", os.path.join(self.tmp, "out"))
        self.assertRun(result, 2, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag build: " + bad + ": entry 1: the payload is not a valid UpsertKernel in "
            "JSON: "), result.stderr)
        self.assertFalse(os.path.exists(os.path.join(self.tmp, "out")))

    def test_build_without_required_options_is_bad_usage(self):
        result = run("build")
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0], "--rtd is required")

    def test_build_on_an_unknown_platform_fails_with_the_reason_and_writes_nothing(self):
        out_dir = os.path.join(self.tmp, "out")
        result = run("build", "--rtd", self.design("vector_pipeline.rtd.json"),
                     "--platform", "no_such_card", "--out-dir", out_dir)
        self.assertRun(result, 1, stdout="")
        self.assertEqual(
            result.stderr.splitlines()[-1],
            "qvdiag build: MakeInitialSystemDiagram failed: 500 Internal Server Error: "
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Platform \"no_such_card\" not found: it is "
            "not a readable file and the platform search path is empty..")
        self.assertEqual(os.listdir(out_dir), [])

    def test_build_with_an_unloadable_library_fails(self):
        result = run("build", "--rtd", self.design("vector_pipeline.rtd.json"), "--platform", "p",
                     "--library", os.path.join(self.tmp, "libnone.so"))
        self.assertRun(result, 1, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag build: cannot load service library '" +
            os.path.join(self.tmp, "libnone.so") + "': "), result.stderr)

    # --- qvdiag render ------------------------------------------------------------------------
    def example_diagram(self):
        return os.path.join(ARGS.source_dir, "tests", "data", "golden", "qvdiag_build",
                            "system_diagram.json")

    def reviewed_dot(self):
        with open(os.path.join(ARGS.source_dir, "tests", "data", "golden", "views",
                               "example.dot")) as f:
            return f.read()

    def test_render_takes_the_format_from_the_output_else_svg(self):
        rtd = self.design("vector_pipeline.rtd.json")
        svg = run("render", self.example_diagram(), "--rtd", rtd)
        self.assertRun(svg, 0, stderr="")
        self.assertTrue(svg.stdout.startswith('<?xml version="1.0" encoding="UTF-8" '
                                              'standalone="no"?>\n'), svg.stdout[:100])
        self.assertIn('<g id="cu:vadd_1" class="node cu">', svg.stdout)
        self.assertTrue(svg.stdout.endswith("</svg>\n"))
        self.assertRun(run("render", self.example_diagram(), "--rtd", rtd, "--format", "dot"),
                       0, stdout=self.reviewed_dot(), stderr="")
        for name in ("picture.DOT", "picture.gv"):
            path = os.path.join(self.tmp, name)
            self.assertRun(run("render", self.example_diagram(), "--rtd", rtd, "-o", path), 0,
                           stdout="", stderr="")
            with open(path) as f:
                self.assertEqual(f.read(), self.reviewed_dot())
        page = os.path.join(self.tmp, "page.html")
        self.assertRun(run("render", self.example_diagram(), "--rtd", rtd, "--output", page), 0,
                       stdout="", stderr="")
        with open(page) as f:
            text = f.read()
        self.assertTrue(text.startswith("<!DOCTYPE html>\n"))
        self.assertIn('<span id="cu-count">6</span>', text)
        forced = os.path.join(self.tmp, "picture.txt")
        self.assertRun(run("render", self.example_diagram(), "--format", "SVG", "-o", forced), 0,
                       stdout="", stderr="")
        with open(forced) as f:
            self.assertTrue(f.read().startswith("<?xml"))
        self.assertEqual(sorted(os.listdir(self.tmp)),
                         ["page.html", "picture.DOT", "picture.gv", "picture.txt"])

    def test_render_of_what_is_not_a_stored_diagram_fails_with_the_path(self):
        rtd = self.design("vector_pipeline.rtd.json")
        result = run("render", rtd, "-o", os.path.join(self.tmp, "x.svg"))
        self.assertRun(result, 1, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag render: " + rtd + ": Deserializing failed with error: "), result.stderr)
        self.assertEqual(len(result.stderr.splitlines()), 1)
        missing = os.path.join(self.tmp, "absent.json")
        self.assertRun(run("render", missing), 1, stdout="", stderr=(
            "qvdiag render: cannot read '" + missing + "': No such file or directory\n"))
        self.assertRun(run("render", self.example_diagram(), "--rtd", missing), 1, stdout="",
                       stderr="qvdiag render: cannot read '" + missing +
                       "': No such file or directory\n")
        self.assertEqual(os.listdir(self.tmp), [])

    def test_render_to_an_unwritable_place_fails_and_leaves_nothing(self):
        nowhere = os.path.join(self.tmp, "no", "dir", "x.svg")
        self.assertRun(run("render", self.example_diagram(), "-o", nowhere), 1, stdout="",
                       stderr="qvdiag render: cannot write '" + nowhere +
                       "': No such file or directory\n")
        taken = os.path.join(self.tmp, "taken.html")
        os.mkdir(taken)
        self.assertRun(run("render", self.example_diagram(), "-o", taken), 1, stdout="",
                       stderr="qvdiag render: cannot write '" + taken + "': Is a directory\n")
        self.assertEqual(os.listdir(self.tmp), ["taken.html"])
        self.assertEqual(os.listdir(taken), [])

    def test_render_bad_usage(self):
        self.assertRun(run("render", self.example_diagram(), "--format", "png"), 2, stdout="",
                       stderr="qvdiag render: --format must be svg, dot or html, not 'png'\n")
        self.assertRun(run("render", self.example_diagram(), "-o", "x.png"), 2, stdout="",
                       stderr="qvdiag render: cannot tell the format from the name 'x.png': "
                       "give --format svg, dot or html\n")
        result = run("render")
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0], "diagram is required")

    # --- help and usage -----------------------------------------------------------------------
    def test_every_command_answers_help(self):
        for command in ([], ["build"], ["serve"], ["call"], ["session"], ["session", "create"],
                        ["session", "fork"], ["session", "remove"], ["diff"], ["report"], ["render"]):
            with self.subTest(command=command):
                result = run(*command, "--help")
                self.assertRun(result, 0, stderr="")
                self.assertIn("Usage: ", result.stdout)

    def test_no_command_is_bad_usage(self):
        result = run()
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0], "A subcommand is required")

    def test_bad_listen_address_is_bad_usage(self):
        result = run("serve", "--listen", "server")
        self.assertRun(result, 2, stdout="", stderr=(
            "qvdiag serve: 'server' is not an address: expected unix:PATH, tcp:PORT, PORT or "
            "HOST:PORT\n"))

    def test_serving_beyond_loopback_needs_allow_remote(self):
        result = run("serve", "--listen", "0.0.0.0:0")
        self.assertRun(result, 2, stdout="", stderr=(
            "qvdiag serve: 0.0.0.0:0 is not a loopback address and the server has no "
            "authentication; give --allow-remote to serve on it anyway (see docs/security.md)\n"))
        server = subprocess.Popen([ARGS.qvdiag, "serve", "--listen", "0.0.0.0:0",
                                   "--allow-remote"],
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        try:
            ready = server.stdout.readline()
            self.assertTrue(ready.startswith("qvdiag serve: listening on 0.0.0.0:"), ready)
        finally:
            server.send_signal(signal.SIGTERM)
            _, stderr = server.communicate(timeout=30)
        self.assertEqual(server.returncode, 0)
        self.assertEqual(stderr.splitlines()[0],
                         "qvdiag serve: warning: 0.0.0.0:0 is not a loopback address; the server "
                         "has no authentication")

    def test_unknown_request_type_is_bad_usage(self):
        result = run("call", "--session", "s", "--type", "UpsertEverything")
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0],
                         "--type: unknown request type 'UpsertEverything'; the request types "
                         "are: UtilizationDuringBrenloRun AfterRunningBrenlo "
                         "MakeInitialSystemDiagram ReadSystemDiagram WriteSystemDiagram "
                         "UpsertKernelUse UpsertKernel UpsertQrxBin UpsertQrxBinGeneratedBy "
                         "UpsertQsaClock GetQrxBinGeneratedBy UpdateSystemDiagramAfterBrenloRuns "
                         "UpdateComputeUnit UpsertConnectivity WriteFlowReport UpsertPlatform")

    def test_malformed_json_is_bad_usage(self):
        result = run("call", "--session", "s", "--type", "WriteSystemDiagram", "--json",
                     '{"path": ')
        self.assertRun(result, 2, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag call: the payload is not a valid WriteSystemDiagram in JSON: "),
            result.stderr)

    def test_call_without_a_server_fails(self):
        socket = os.path.join(self.tmp, "nobody.sock")
        result = run("call", "--server", "unix:" + socket, "--session", "s", "--type",
                     "GetQrxBinGeneratedBy")
        self.assertRun(result, 1, stdout="")
        self.assertTrue(result.stderr.startswith(
            "qvdiag call: Dispatch at unix:" + socket + " failed with UNAVAILABLE: "),
            result.stderr)

    # --- qvdiag repo --------------------------------------------------------------------------
    def repository(self):
        return os.path.join(self.examples, "repository", "qd_ip_db.xml")

    def test_repo_check_of_the_example_passes(self):
        self.assertRun(run("repo", self.repository(), "--check"), 0, stderr="", stdout=(
            self.repository() + ": 10 components, 6 hardware functions: every function maps "
            "onto an accelerator or the platform\n"))

    def test_repo_check_of_a_function_on_a_generic_block_fails(self):
        bad = os.path.join(self.tmp, "bad.xml")
        with open(bad, "w") as f:
            f.write('<qd:repository xmlns:qd="urn:quarrix:qd"><qd:component qd:name="g" '
                    'qd:type="generic"/><qd:fcnMap qd:fcnName="f" qd:componentRef="g"/>'
                    '</qd:repository>')
        result = run("repo", bad, "--check")
        self.assertRun(result, 1, stdout=bad + ": 1 components, 1 hardware functions: the "
                       "check failed (see the messages above)\n")
        self.assertEqual(result.stderr,
                         "ERROR: [Morvane 83-1020] Function 'f' does not map to accelerator or "
                         "platform hardware.  This can occur if the hardware function specifier "
                         "is in error.  Declared hardware functions: f\n")

    def test_repo_queries_and_expressions(self):
        self.assertRun(run("repo", self.repository(), "--query", "getIthAvailableClockId", "1",
                           "qv_accel_h2_gen3x16"), 0, stdout="1\n", stderr="")
        self.assertRun(run("repo", self.repository(), "--query", "getQdHwFcnReturnOffset",
                           "vadd"), 0, stdout='"0x40"\n', stderr="")
        self.assertRun(run("repo", self.repository(), "--xpath", "count(//qd:component)"), 0,
                       stdout="number 10\n", stderr="")
        listed = run("repo", "--list-queries")
        self.assertRun(listed, 0, stderr="")
        self.assertIn("\ngetIthQdHwFcnArg1 function i\n", listed.stdout)

    def test_repo_lists_every_query_method_of_the_repository(self):
        # The methods that --query does not serve have options of their own (--xpath for the
        # typed queries, --dump, --interactive) or make the repository itself.
        served_otherwise = {"QDSRepo", "createRepo", "getFileName", "intQuery", "longLongQuery",
                            "floatQuery", "booleanQuery", "stringQuery", "stringListQuery",
                            "queryDocInteractive", "toString"}
        with open(os.path.join(ARGS.source_dir, "host", "qd", "qdrepo", "QDSRepo.h")) as f:
            header = f.read()
        body = header[header.index("class QV_EXPORT QDSRepo"):header.index("// ---- State")]
        declared = set(re.findall(r"^\s+(?:static\s+)?[\w:<>, ]+?[\s&*]+(\w+)\(", body,
                                  re.M))
        listed = {line.split()[0] for line in run("repo", "--list-queries").stdout.splitlines()}
        self.assertGreater(len(declared), 60)
        self.assertEqual(sorted(declared - served_otherwise - listed), [])
        conversions, readers = self.exported_functions()
        self.assertEqual(sorted(listed - declared - conversions - readers), [])

    def exported_functions(self):
        """The vocabulary conversions of QDEnumerations.h, and the file-level functions that
        QDSRepo.h exports beside the class."""
        qdrepo = os.path.join(ARGS.source_dir, "host", "qd", "qdrepo")
        with open(os.path.join(qdrepo, "QDEnumerations.h")) as f:
            conversions = set(re.findall(r"^QV_EXPORT [\w:]+ (\w+)\(", f.read(), re.M))
        with open(os.path.join(qdrepo, "QDSRepo.h")) as f:
            header = f.read()
        file_level = header[header.index("// ---- State"):]
        readers = set(re.findall(r"^QV_EXPORT [\w:<>, ]+?[\s&*]+(\w+)\(", file_level, re.M))
        return conversions, readers

    def test_repo_lists_every_vocabulary_conversion_and_exported_reader(self):
        # Each str2X and X2str of the vocabularies, and each file-level reader that the library
        # exports beside the class, can be asked from the shell too.
        conversions, readers = self.exported_functions()
        self.assertEqual(len(conversions), 23)
        self.assertEqual(sorted(readers), ["getQdCompBusInterfaceIntAttrByIndex",
                                           "getQdCompBusInterfaceStringAttrByIndex"])
        listed = run("repo", "--list-queries").stdout.splitlines()
        self.assertEqual(sorted((conversions | readers) - {line.split()[0] for line in listed}),
                         [])
        for line in ("str2comp_t word", "str2noc_resource_t word", "comp_t2str value",
                     "noc_resource_t2str value",
                     "getQdCompBusInterfaceStringAttrByIndex component i attribute caller",
                     "getQdCompBusInterfaceIntAttrByIndex component i attribute caller"):
            self.assertIn(line, listed)

    def test_repo_vocabulary_conversions(self):
        def query(*arguments):
            return run("repo", self.repository(), "--query", *arguments)
        # The repository opened for the query has filled the word tables.
        self.assertRun(query("str2comp_t", "kernel"), 0, stdout="10\n", stderr="")
        self.assertRun(query("str2cpu_t", "cortex-a53"), 0, stdout="1\n", stderr="")
        self.assertRun(query("str2port_t", "acc_fifo_read"), 0, stdout="21\n", stderr="")
        self.assertRun(query("str2channel_t", ""), 0, stdout="4\n", stderr="")
        self.assertRun(query("str2noc_resource_t", "no_noc_resourcepl_nsu"), 0, stdout="0\n",
                       stderr="")
        self.assertRun(query("cpu_t2str", "1"), 0, stdout='"cortex_a53"\n', stderr="")
        self.assertRun(query("port_t2str", "21"), 0, stdout='"fifo"\n', stderr="")
        self.assertRun(query("port_t2str", "3"), 0, stdout='""\n', stderr="")
        self.assertRun(query("memport_t2str", "2"), 0, stdout='"M_AXI_NOC"\n', stderr="")
        self.assertRun(query("noc_resource_t2str", "0"), 0, stdout='"no_noc_resourcepl_nsu"\n',
                       stderr="")
        # Past the end of its word table a value has no word: the work fails.
        self.assertRun(query("noc_resource_t2str", "3"), 1, stdout="", stderr=(
            "qvdiag repo: qd::noc_resource_t2str: 3 has no word (the table has 3)\n"))
        # A number the type cannot hold never reaches the conversion.
        self.assertRun(query("comp_t2str", "16"), 2, stdout="", stderr=(
            "qvdiag repo: comp_t2str: 16 is out of the range of comp_t, 0 to 15\n"))
        self.assertRun(query("comp_t2str", "-1"), 2, stdout="", stderr=(
            "qvdiag repo: comp_t2str: -1 is out of the range of comp_t, 0 to 15\n"))

    def test_repo_interface_attributes_by_index(self):
        self.assertRun(run("repo", self.repository(), "--query",
                           "getQdCompBusInterfaceStringAttrByIndex", "vadd", "3", "qd:name",
                           "qvdiag"), 0, stdout='"m_axi_gmem"\n', stderr="")
        self.assertRun(run("repo", self.repository(), "--query",
                           "getQdCompBusInterfaceIntAttrByIndex", "vadd", "3", "qd:dataWidth",
                           "qvdiag"), 0, stdout="512\n", stderr="")
        self.assertRun(run("repo", self.repository(), "--query",
                           "getQdCompBusInterfaceIntAttrByIndex", "vadd", "5", "qd:dataWidth",
                           "qvdiag"), 0, stdout="-1\n", stderr=(
            "WARNING: [Morvane 83-1001]  Index 5 out of range for component vadd\n"))

    def test_repo_dump_starts_with_the_file(self):
        result = run("repo", self.repository(), "--dump")
        self.assertRun(result, 0, stderr="")
        self.assertTrue(result.stdout.startswith(
            self.repository() + "\n available components: \n    qv_accel_h2_gen3x16  "
            "(platform)\n"), result.stdout)

    def test_repo_bad_use(self):
        result = run("repo", self.repository(), "--query", "nope")
        self.assertRun(result, 2, stdout="", stderr=(
            "qvdiag repo: unknown query 'nope'; qvdiag repo --list-queries shows them\n"))
        missing = os.path.join(self.tmp, "absent.xml")
        result = run("repo", missing, "--check")
        self.assertRun(result, 2, stdout="")
        self.assertEqual(result.stderr.splitlines()[0], "file: File does not exist: " + missing)

    def test_repo_of_a_file_that_is_not_xml_fails(self):
        text = os.path.join(self.tmp, "text.xml")
        with open(text, "w") as f:
            f.write("not xml")
        result = run("repo", text, "--dump")
        self.assertRun(result, 1, stdout="")
        self.assertEqual(result.stderr.splitlines()[-2:], [
            "ERROR: [Morvane 83-1019] Cannot read IP database " + text + ": it cannot be "
            "opened or is not well-formed XML",
            "qvdiag repo: cannot open the repository '" + text + "': cannot read IP database " +
            text])

    # --- call and session against a running server --------------------------------------------
    def test_a_session_driven_with_call(self):
        socket = os.path.join(self.tmp, "s.sock")
        server = subprocess.Popen(
            [ARGS.qvdiag, "serve", "--listen", "unix:" + socket,
             "--platform-path", os.path.join(self.examples, "platforms")],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        try:
            self.assertIn("listening on unix:" + socket, server.stdout.readline())
            at = ["--server", "unix:" + socket]
            created = run("session", *at, "create", "--name", "demo")
            self.assertRun(created, 0, stderr="")
            uuid = created.stdout.strip()
            self.assertRegex(uuid, r"^[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-"
                                   r"[0-9a-f]{12}$")

            payload = os.path.join(self.tmp, "make.json")
            with open(payload, "w") as f:
                json.dump({"rtdFile": self.design("vector_pipeline.rtd.json"),
                           "platform": "qv_accel_h2_gen3x16", "generatedName": "me",
                           "generatedVersion": "1", "generatedChangeList": "2",
                           "generatedTimestamp": "now", "generatedDetailA": "a",
                           "generatedDetailB": "b", "kernelsFile": "none.txt",
                           "binaryLabel": "vp"}, f)
            made = run("call", *at, "--session", uuid, "--type", "MakeInitialSystemDiagram",
                       "--json-file", payload)
            self.assertRun(made, 0, stderr="", stdout=(
                '{\n "status": {\n  "code": 200,\n  "message": "OK"\n }\n}\n'))

            forked = run("session", *at, "fork", uuid, "--uuid", "the-copy")
            self.assertRun(forked, 0, stdout="the-copy\n", stderr="")
            asked = run("call", *at, "--session", "the-copy", "--type", "GetQrxBinGeneratedBy")
            self.assertRun(asked, 0, stderr="")
            answer = json.loads(asked.stdout)
            self.assertEqual(answer["status"], {"code": 200, "message": "OK"})
            self.assertEqual((answer["payload"]["name"], answer["payload"]["label"]),
                             ("me", "vp"))

            missing = run("call", *at, "--session", "nobody", "--type", "WriteSystemDiagram",
                          "--json", '{"path": "%s"}' % os.path.join(self.tmp, "x.json"))
            self.assertRun(missing, 1, stderr=(
                "qvdiag call: WriteSystemDiagram was answered 500 Internal Server Error; the "
                "reason is in the server's log\n"))
            self.assertEqual(json.loads(missing.stdout)["status"]["code"], 500)
            empty = run("call", *at, "--session", uuid, "--type", "WriteSystemDiagram")
            self.assertRun(empty, 1, stderr=(
                "qvdiag call: WriteSystemDiagram was answered 400 Bad Request\n"))

            self.assertRun(run("session", *at, "remove", "the-copy"), 0, stdout="", stderr="")
            again = run("session", *at, "remove", "the-copy")
            self.assertRun(again, 1, stdout="", stderr=(
                "qvdiag session: RemoveSession at unix:" + socket + " failed with NOT_FOUND: "
                "SYSTEM_DIAGRAM: ERROR, no session with UUID 'the-copy' found to remove\n"))
            taken = run("session", *at, "create", "--uuid", uuid)
            self.assertRun(taken, 1, stdout="", stderr=(
                "qvdiag session: CreateSession at unix:" + socket + " failed with "
                "ALREADY_EXISTS: SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: '" +
                uuid + "'\n"))
        finally:
            server.send_signal(signal.SIGINT)
            _, err = server.communicate(timeout=30)
        self.assertEqual(server.returncode, 0)
        self.assertIn("qvdiag serve: SIGINT: finishing running requests\n", err)


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
