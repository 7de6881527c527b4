#!/usr/bin/python3
"""qvdiag check, and build --check, as a person runs them: lines, summary, JSON and exit codes.

    qvdiag_check_cli_test.py --qvdiag BUILD/qvdiag --source-dir REPO
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile
import unittest

ARGS = None

# The demo's command line (scripts/demo), from examples/design.
FLOW = ["--rtd", "vector_pipeline.rtd.json",
        "--platform", "qv_accel_h2_gen3x16", "--platform-path", "../platforms",
        "--requests", "vector_pipeline.requests.json",
        "--after-impl-rtd", "vector_pipeline.post_impl.rtd.json",
        "--utilization", "vector_pipeline.synth.util.json",
        "--utilization", "vector_pipeline.place.util.json",
        "--utilization", "vector_pipeline.route.util.json"]

GOOD_RTD = """{
 "schema_version": {"major": "1", "minor": "0", "patch": "0"},
 "mem_topology": {"m_count": "1", "m_mem_data": [{"m_type": "MEM_DDR4", "m_tag": "DDR[0]"}]},
 "ip_layout": {"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "m_name": "vadd:vadd_1"}]},
 "connectivity": {"m_count": "0"}
}
"""


def run(*arguments, cwd=None):
    return subprocess.run([ARGS.qvdiag] + list(arguments), stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, timeout=120, cwd=cwd)


class CheckCommandLine(unittest.TestCase):
    def setUp(self):
        self.design = os.path.join(ARGS.source_dir, "examples", "design")
        self.scratch = tempfile.TemporaryDirectory()
        self.dir = self.scratch.name

    def tearDown(self):
        self.scratch.cleanup()

    def write(self, name, text):
        path = os.path.join(self.dir, name)
        with open(path, "w") as out:
            out.write(text)
        return path

    def assertRun(self, result, code, stdout=None, stderr=None):
        message = "stdout:\n" + result.stdout + "\nstderr:\n" + result.stderr
        self.assertEqual(result.returncode, code, message)
        if stdout is not None:
            self.assertEqual(result.stdout, stdout, message)
        if stderr is not None:
            self.assertEqual(result.stderr, stderr, message)

    def test_the_example_checks_clean_with_builds_own_command_line(self):
        # The demo's build command with the word changed, its output directory included.
        result = run("check", *FLOW, "--out-dir", self.dir, cwd=self.design)
        self.assertRun(result, 0, stdout="check: 0 errors, 0 warnings, 0 notes in 18 files\n",
                       stderr="")
        self.assertEqual(os.listdir(self.dir), [])  # build's outputs are not written

    def test_the_example_repository_and_a_stored_diagram_check_clean(self):
        diagram = os.path.join(ARGS.source_dir, "tests", "data", "diagrams", "base.json")
        result = run("check", "--repository", "link/sys_link/_sysl/.cdb/qd_ip_db.xml",
                     "--diagram", diagram, cwd=self.design)
        self.assertRun(result, 0, stdout="check: 0 errors, 0 warnings, 0 notes in 2 files\n")

    def test_a_finding_prints_as_a_compiler_line_and_errors_exit_1(self):
        rtd = self.write("a.rtd.json", GOOD_RTD.replace('"minor": "0"', '"minor": "2"'))
        result = run("check", "--rtd", rtd, "--kernels", "/nonexistent/kernels.txt")
        self.assertRun(result, 1, stderr="", stdout=(
            rtd + ":2:2: error: schema_version: version 1.2.0 is not supported; the import "
            "accepts major version 1 or one that sorts after it as text, with minor version 0 and "
            "patch level 0 (1.0.0, 2.0.0, ...); the import refuses the file "
            "[QV-RTD-VERSION-UNSUPPORTED]\n"
            "/nonexistent/kernels.txt: warning: does not exist or cannot be read; the import "
            "makes no kernels from it [QV-KERNELS-FILE-MISSING]\n"
            "check: 1 error, 1 warning, 0 notes in 1 file\n"))

    def test_warnings_fail_only_with_strict(self):
        rtd = self.write("a.rtd.json", GOOD_RTD.replace('"m_tag"', '"m_tga"'))
        line = (rtd + ":3:73: warning: mem_topology.m_mem_data[0]: m_tga is not a key of a "
                "memory (did you mean m_tag?); the import skips it [QV-RTD-UNKNOWN-KEY]\n")
        # No kernels file beside it: a note, which fails nothing.
        note = (os.path.join(self.dir, "kernels.txt") + ": note: does not exist or cannot be "
                "read; the import makes no kernels from it [QV-KERNELS-FILE-MISSING]\n")
        summary = "check: 0 errors, 1 warning, 1 note in 1 file\n"
        self.assertRun(run("check", "--rtd", rtd), 0, stdout=line + note + summary)
        self.assertRun(run("check", "--rtd", rtd, "--strict"), 1, stdout=line + note + summary)

    def test_json_for_scripts(self):
        rtd = self.write("a.rtd.json", GOOD_RTD.replace('"m_count": "0"', '"m_count": "none"'))
        kernels = self.write("kernels.txt", "# none yet\n")
        result = run("check", "--rtd", rtd, "--kernels", kernels, "--format", "json")
        self.assertRun(result, 0, stderr="")
        document = json.loads(result.stdout)
        self.assertEqual(document["summary"], {"errors": 0, "warnings": 1, "notes": 0})
        self.assertEqual(document["files"], [rtd, kernels])
        first = document["findings"][0]
        self.assertEqual(first, {
            "severity": "warning", "code": "QV-RTD-COUNT-NOT-NUMBER", "file": rtd, "line": 5,
            "column": 19, "key_path": "connectivity.m_count",
            "text": "the string \"none\" does not read as a count (a decimal number from 1 to "
                    "4294967295)",
            "effect": "the import takes the section as absent"})
        self.assertEqual(len(document["findings"]), 1)

    def test_a_stored_diagram_with_an_unknown_key(self):
        diagram = self.write("d.json", '{\n "system_diagram_metadata": {\n  "qsa": {"vendr": "x"}}}\n')
        self.assertRun(run("check", "--diagram", diagram), 1, stdout=(
            diagram + ":3:11: error: system_diagram_metadata.qsa: vendr is not a field of Qsa (did "
            "you mean vendor?); the reader refuses the file [QV-DIAGRAM-UNKNOWN-KEY]\n"
            "check: 1 error, 0 warnings, 0 notes in 1 file\n"))

    def test_a_repository_whose_readings_disagree(self):
        repository = os.path.join(ARGS.source_dir, "fuzz", "disagreement", "two_platforms.xml")
        result = run("check", "--repository", repository)
        self.assertRun(result, 1)
        self.assertIn("[QV-REPO-DISAGREEMENT]\n", result.stdout)
        self.assertIn(repository + ": error: the file's two readings disagree: Equivalency "
                      "violation found for ", result.stdout)

    def test_bad_usage_exits_2(self):
        self.assertRun(run("check"), 2, stdout="", stderr=(
            "qvdiag check: nothing to check: give at least one input (--rtd, --platform, "
            "--kernels, --after-impl-rtd, --utilization, --diagram, --repository)\n"))
        rtd = self.write("a.rtd.json", GOOD_RTD)
        self.assertEqual(run("check", "--rtd", rtd, "--format", "xml").returncode, 2)
        self.assertEqual(run("check", "--rtd", os.path.join(self.dir, "none.json")).returncode, 2)

    def test_help_says_which_options_are_ignored(self):
        result = run("check", "--help")
        self.assertRun(result, 0)
        for option in ("--out-dir", "--label", "--report-format", "--no-pictures", "--requests"):
            line = next(l for l in result.stdout.split("\n") if l.strip().startswith(option))
            self.assertIn(option, line)
        self.assertIn("(check: accepted and ignored)", result.stdout)
        self.assertIn("--strict", result.stdout)

    def test_build_check_stops_before_the_first_request_on_an_error(self):
        rtd = self.write("a.rtd.json", GOOD_RTD.replace('"m_count": "1", "m_mem_data"',
                                                        '"m_mem_data"'))
        out = os.path.join(self.dir, "out")
        result = run("build", "--check", "--rtd", rtd, "--platform", "qv_accel_h2_gen3x16",
                     "--platform-path", os.path.join(ARGS.source_dir, "examples", "platforms"),
                     "--out-dir", out)
        self.assertRun(result, 1, stdout="")
        self.assertIn(rtd + ":3:2: error: mem_topology.m_count: missing (even a section with no "
                      "entries needs its count); the import refuses the file "
                      "[QV-RTD-COUNT-MISSING]\n", result.stderr)
        self.assertTrue(result.stderr.endswith(
            "qvdiag build: the check found errors; nothing was sent\n"), result.stderr)
        self.assertFalse(os.path.exists(out))

    def test_build_check_goes_on_when_the_check_is_clean(self):
        out = os.path.join(self.dir, "out")
        result = run("build", "--check", *FLOW, "--out-dir", out, "--no-pictures",
                     cwd=self.design)
        self.assertRun(result, 0)
        self.assertIn("check: 0 errors, 0 warnings, 0 notes in 18 files\n", result.stderr)
        self.assertTrue(os.path.exists(os.path.join(out, "system_diagram.json")))


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
