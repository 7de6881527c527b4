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
            "qvdiag render: '" + rtd + "' is not a stored diagram: "), result.stderr)
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
                        ["session", "fork"], ["session", "remove"], ["render"]):
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
        self.assertEqual(sorted(listed - declared), [])

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
