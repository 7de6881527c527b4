#!/usr/bin/python3
"""The Python package qvdiag, imported from the build tree, against a real qvdiag serve.

    qvdiag_package_test.py --package-dir BUILD/python --qvdiag BUILD/qvdiag --source-dir REPO
"""
import argparse
import inspect
import json
import os
import pydoc
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

ARGS = None
qvdiag = None

STAMP = "Mon Nov 23 09:00:00 2026"
PLATFORM = "qv_accel_h2_gen3x16"

# The import's ten strings and its flag, as the package takes them and as qvdiag build takes
# them, so that both flows make the same diagram.
IMPORT_FIELDS = dict(rtd_file="vector_pipeline.rtd.json", platform=PLATFORM,
                     generated_name="py", generated_version="3.1", generated_change_list="cl9",
                     generated_timestamp=STAMP, generated_detail_a="da", generated_detail_b="db",
                     kernels_file="kernels.txt", binary_label="vector_pipeline",
                     generated_flag=True)
BUILD_FLAGS = ["--rtd", "vector_pipeline.rtd.json", "--platform", PLATFORM,
               "--generated-name", "py", "--generated-version", "3.1",
               "--generated-change-list", "cl9", "--generated-timestamp", STAMP,
               "--generated-detail-a", "da", "--generated-detail-b", "db",
               "--kernels", "kernels.txt", "--label", "vector_pipeline", "--generated-flag"]
STAGES = ("synth", "place", "route")


def have_pandas():
    try:
        import pandas  # noqa: F401
    except ImportError:
        return False
    return True


def design_dir():
    return os.path.join(ARGS.source_dir, "examples", "design")


def start_server(**kwargs):
    return qvdiag.serve(executable=ARGS.qvdiag,
                        platform_path=os.path.join(ARGS.source_dir, "examples", "platforms"),
                        timestamp=STAMP, cwd=design_dir(), **kwargs)


def run_example_flow(session, out_dir):
    """The whole flow of the example through the package, as qvdiag build runs it."""
    session.make_initial_system_diagram(**IMPORT_FIELDS)
    with open(os.path.join(design_dir(), "vector_pipeline.requests.json")) as f:
        for entry in json.load(f):
            session.call(entry["type"], entry.get("payload", {}))
    session.update_system_diagram_after_brenlo_runs(
        rtd_file="vector_pipeline.post_impl.rtd.json")
    for stage in STAGES:
        session.utilization_during_brenlo_run(
            utilization_files=["vector_pipeline.%s.util.json" % stage])
    session.write_system_diagram(path=os.path.join(out_dir, "system_diagram.json"))
    session.write_flow_report(os.path.join(out_dir, "flow_report.txt"))


class ServedTestCase(unittest.TestCase):
    """One server for the class, with the example's design folder as its working directory."""

    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.mkdtemp(prefix="qvdiag-py-")
        cls.log = os.path.join(cls.tmp, "server.log")
        cls.server = start_server(log=cls.log, log_level=3)
        cls.client = cls.server.connect()

    @classmethod
    def tearDownClass(cls):
        cls.client.close()
        cls.server.stop()
        shutil.rmtree(cls.tmp, ignore_errors=True)

    def out(self, name):
        return os.path.join(self.tmp, name)

    def fresh_session(self):
        session = self.client.create_session()
        self.addCleanup(self.client.remove, session)
        return session

    def imported_session(self):
        session = self.fresh_session()
        session.make_initial_system_diagram(**IMPORT_FIELDS)
        return session

    def stored(self, session, name):
        path = self.out(name)
        session.write_system_diagram(path=path)
        with open(path) as f:
            return json.load(f)["system_diagram_metadata"]


class WholeFlowTest(ServedTestCase):
    def test_the_example_flow_through_the_package_writes_what_qvdiag_build_writes(self):
        session = self.client.create_session(uuid="py-flow", name="flow")
        self.assertEqual((session.uuid, session.name), ("py-flow", "flow"))
        run_example_flow(session, self.tmp)
        generated = session.get_qrx_bin_generated_by()
        self.assertEqual(type(generated).DESCRIPTOR.full_name,
                         "ProfileAnalyzerSystemDiagramSerializable.qrxBinGeneratedBy")
        self.assertEqual((generated.name, generated.version, generated.change_list,
                          generated.timestamp, generated.detail_a, generated.detail_b,
                          generated.label, generated.label_copy, generated.flag),
                         ("py", "3.1", "cl9", STAMP, "da", "db", "vector_pipeline",
                          "vector_pipeline", True))
        session.remove()

        build_out = os.path.join(self.tmp, "build-out")
        command = [ARGS.qvdiag, "build", *BUILD_FLAGS,
                   "--platform-path", os.path.join(ARGS.source_dir, "examples", "platforms"),
                   "--requests", "vector_pipeline.requests.json",
                   "--after-impl-rtd", "vector_pipeline.post_impl.rtd.json",
                   "--timestamp", STAMP, "--out-dir", build_out]
        for stage in STAGES:
            command += ["--utilization", "vector_pipeline.%s.util.json" % stage]
        built = subprocess.run(command, cwd=design_dir(), stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE, text=True, timeout=300)
        self.assertEqual(built.returncode, 0, built.stderr)
        for name in ("system_diagram.json", "flow_report.txt"):
            with open(os.path.join(self.tmp, name)) as ours, \
                    open(os.path.join(build_out, name)) as theirs:
                self.assertEqual(ours.read(), theirs.read(), name)

    def test_a_fork_copies_the_diagram_and_removing_it_leaves_the_source(self):
        source = self.imported_session()
        fork = source.fork(uuid="py-fork", name="copy")
        self.assertEqual((fork.uuid, fork.name), ("py-fork", "copy"))
        self.assertEqual(fork.get_qrx_bin_generated_by(), source.get_qrx_bin_generated_by())
        other = self.client.fork(source.uuid)
        self.assertEqual(len(other.uuid), 36)
        fork.remove()
        self.client.remove(other.uuid)
        self.assertEqual(source.get_qrx_bin_generated_by().name, "py")
        with self.assertRaises(qvdiag.NoSuchSession):
            fork.remove()


class RequestMethodTest(ServedTestCase):
    def test_there_is_one_method_per_request_type_of_the_service(self):
        from qvdiag._proto import system_diagram_server_pb2
        messages = set(system_diagram_server_pb2.DESCRIPTOR.message_types_by_name)
        self.assertEqual(len(qvdiag.REQUEST_TYPES), 16)
        self.assertEqual(messages - set(qvdiag.REQUEST_TYPES),
                         {"Version", "ActualResources", "ComputeUnitResourceUse",
                          "KernelResourceUse"})
        methods = sorted(name for name, value in vars(qvdiag.Session).items()
                         if inspect.isfunction(value) and name not in
                         ("__init__", "__repr__", "fork", "remove", "send", "call"))
        self.assertEqual(methods, [
            "after_running_brenlo", "get_qrx_bin_generated_by", "make_initial_system_diagram",
            "read_system_diagram", "update_compute_unit",
            "update_system_diagram_after_brenlo_runs", "upsert_connectivity", "upsert_kernel",
            "upsert_kernel_use", "upsert_platform", "upsert_qrx_bin",
            "upsert_qrx_bin_generated_by", "upsert_qsa_clock", "utilization_during_brenlo_run",
            "write_flow_report", "write_system_diagram"])

    def test_help_shows_each_method_with_its_fields(self):
        text = pydoc.render_doc(qvdiag.Session.upsert_kernel_use, renderer=pydoc.plaintext)
        self.assertIn(
            "upsert_kernel_use(self, *, kernel_uses: List[dict] = None, "
            "design_state: str = None, use_kind: int = None)\n"
            "    Merges a resource report given in the request.\n"
            "    \n"
            "    Sends dispatch.system_diagram_server.UpsertKernelUse for this session.\n"
            "    \n"
            "    Fields (argument: field of the message; one left out or None is not sent):\n"
            "        kernel_uses (list of dict or dispatch.system_diagram_server."
            "KernelResourceUse): kernelUses\n"
            "        design_state (str): designState\n"
            "        use_kind (int): useKind\n", text)
        self.assertEqual(str(inspect.signature(qvdiag.Session.write_flow_report)),
                         "(self, path: str = None)")
        self.assertEqual(str(inspect.signature(qvdiag.Session.get_qrx_bin_generated_by)),
                         "(self)")
        self.assertIn("\n |  make_initial_system_diagram(self, *, rtd_file: str = None, "
                      "platform: str = None, generated_name: str = None,",
                      pydoc.render_doc(qvdiag.Session, renderer=pydoc.plaintext))

    def test_python_names_are_the_snake_case_of_the_message_names(self):
        from qvdiag._protocol import snake_case
        for name, python in [("rtdFile", "rtd_file"), ("generatedDetailA", "generated_detail_a"),
                             ("qrxBin", "qrx_bin"), ("diagramInFile", "diagram_in_file"),
                             ("computeUnitUses", "compute_unit_uses"), ("path", "path"),
                             ("clock_refs", "clock_refs"),
                             ("UpdateSystemDiagramAfterBrenloRuns",
                              "update_system_diagram_after_brenlo_runs"),
                             ("GetQrxBinGeneratedBy", "get_qrx_bin_generated_by")]:
            self.assertEqual(snake_case(name), python)

    def test_every_request_method_does_its_work(self):
        session = self.imported_session()
        first = self.out("every-first.json")
        self.assertIsNone(session.write_system_diagram(first))
        self.assertIsNone(session.read_system_diagram(path=first))
        self.assertIsNone(session.upsert_kernel(kernel={
            "name": "vadd", "clockRefs": [{"name": "ap_clk_9", "requested_frequency": 125}]}))
        self.assertIsNone(session.update_compute_unit(compute_unit={
            "name": "vadd_1", "reset_pins": ["rst_py"],
            "slrResources": [{"slr": "SLR1", "utilization": [
                {"resource": "LUT", "used": "7", "available": "9"}]}]}))
        self.assertIsNone(session.upsert_connectivity(connectivity={
            "id": "99", "source": {"type": "compute_unit", "id": "0", "instance": "vadd_1",
                                   "pin": "po"},
            "destination": {"type": "compute_unit", "id": "1", "instance": "vadd_2",
                            "pin": "pi"}}))
        self.assertIsNone(session.upsert_qsa_clock(clock={"name": "clk_py", "id": 42,
                                                          "frequency": 125.5,
                                                          "status": "CLOCK_FIXED"}))
        self.assertIsNone(session.upsert_qrx_bin_generated_by(generated_by={"note": "by py"}))
        self.assertIsNone(session.upsert_platform(platform={"vendor": "py vendor",
                                                            "properties": ["a=1"]}))
        self.assertIsNone(session.upsert_qrx_bin(qrx_bin={"platform": {"path": "/p"}}))
        self.assertIsNone(session.update_system_diagram_after_brenlo_runs(
            rtd_file="vector_pipeline.post_impl.rtd.json"))
        self.assertIsNone(session.utilization_during_brenlo_run(
            utilization_files=["vector_pipeline.synth.util.json"]))
        self.assertIsNone(session.upsert_kernel_use(
            design_state="Routed", use_kind=1, kernel_uses=[{
                "kernel_name": "mmult", "computeUnitUses": [{
                    "compute_unit_name": "mmult_2",
                    "actual_resources": {"lut": "11", "reg": "12", "bram": "13", "uram": "14",
                                         "dsp": "15"}}]}]))
        generated = session.get_qrx_bin_generated_by()
        self.assertEqual((generated.name, generated.note), ("py", "by py"))
        self.assertIsNone(session.write_flow_report(path=self.out("every.txt")))
        self.assertIsNone(session.after_running_brenlo(
            diagram_in_file=first, rtd_file="vector_pipeline.post_impl.rtd.json",
            diagram_out_file=self.out("every-after.json")))

        diagram = qvdiag.load_diagram(self.out("every-after.json"))
        self.assertEqual([unit.base_address for unit in diagram.compute_units],
                         ["0x1c00000", "0x1c10000", "0x1c20000", "0x1c30000", "0x1c40000",
                          "0x1c50000"])
        stored = self.stored(session, "every-last.json")
        region = stored["qrxbin"]["user_regions"][0]
        vadd = [k for k in region["kernels"] if k["name"] == "vadd"][0]
        self.assertEqual([c["name"] for c in vadd["clock_refs"]], ["ap_clk", "ap_clk_9"])
        unit = region["compute_units"][0]
        self.assertEqual((unit["name"], unit["reset_pins"], unit["slr_resources"]),
                         ("vadd_1", ["rst_py"], [{"slr": "SLR1", "utilization": [
                             {"resource": "LUT", "used": "7", "available": "9"}]}]))
        connection = region["connectivity"][-1]
        self.assertEqual((connection["source"]["pin"], connection["destination"]["pin"]),
                         ("po", "pi"))
        clock = stored["qsa"]["clocks"][-1]
        self.assertEqual((clock["name"], clock["id"], clock["frequency"], clock["status"]),
                         ("clk_py", 42, 125.5, "CLOCK_FIXED"))
        self.assertEqual((stored["qrxbin"]["platform"]["vendor"],
                          stored["qrxbin"]["platform"]["properties"],
                          stored["qrxbin"]["platform"]["path"]), ("py vendor", ["a=1"], "/p"))
        units = {u["name"]: u for u in region["compute_units"]}
        # The report replaces the unit's entries with every state reported for it so far.
        self.assertEqual(sorted(units["mmult_2"]["actual_resources"],
                                key=lambda entry: entry["design_state"]), [
            {"lut": "11", "reg": "12", "bram": "13", "dsp": "15", "uram": "14",
             "design_state": "DESIGN_STATE_ROUTED"},
            {"lut": "18960", "reg": "27412", "bram": "32", "dsp": "160", "uram": "8",
             "design_state": "DESIGN_STATE_SYNTHESIZED"}])
        self.assertEqual([(r["lut"], r["design_state"]) for r in
                          units["vadd_1"]["actual_resources"]],
                         [("2490", "DESIGN_STATE_SYNTHESIZED")])
        with open(self.out("every.txt")) as f:
            self.assertIn("Compute Unit: vadd_1\nKernel: vadd\nBase Address: 0x1c00000\n",
                          f.read())

    def test_messages_are_taken_as_well_as_dicts(self):
        from qvdiag._proto import system_diagram_pb2
        session = self.imported_session()
        session.upsert_qsa_clock(clock=system_diagram_pb2.Clock(name="clk_msg", id=7))
        self.assertEqual(self.stored(session, "msg.json")["qsa"]["clocks"][-1]["name"],
                         "clk_msg")
        with self.assertRaises(TypeError) as raised:
            session.upsert_qsa_clock(clock=system_diagram_pb2.Board(name="b"))
        self.assertEqual(str(raised.exception),
                         "upsert_qsa_clock().clock: expected a "
                         "ProfileAnalyzerSystemDiagramSerializable.Clock message or a dict, not "
                         "a ProfileAnalyzerSystemDiagramSerializable.Board message")

    def test_arguments_that_do_not_fit_are_refused_before_sending(self):
        session = self.client.session("never-sent")
        cases = [
            (lambda: session.make_initial_system_diagram(rtdFile="x"), TypeError,
             "make_initial_system_diagram() got an unexpected keyword argument 'rtdFile' "
             "(the fields are named in snake_case: rtd_file)"),
            (lambda: session.write_system_diagram(pth="x"), TypeError,
             "write_system_diagram() got an unexpected keyword argument 'pth'"),
            (lambda: session.write_system_diagram("a", path="b"), TypeError,
             "write_system_diagram() got multiple values for argument 'path'"),
            (lambda: session.after_running_brenlo("a"), TypeError,
             "after_running_brenlo() takes 0 positional arguments; give the fields by "
             "keyword"),
            (lambda: session.upsert_kernel(kernel={"nme": "vadd"}), ValueError,
             "upsert_kernel().kernel: kernel has no field 'nme' (its fields: ports, "
             "arguments, clock_refs, name, description, estimated_resources)"),
            (lambda: session.upsert_kernel(kernel={"ports": {"name": "p"}}), TypeError,
             "upsert_kernel().kernel.ports: expected a list, not dict"),
            (lambda: session.upsert_kernel(kernel="vadd"), TypeError,
             "upsert_kernel().kernel: expected a dict or a ProfileAnalyzerSystemDiagram"
             "Serializable.kernel message, not str"),
            (lambda: session.upsert_kernel(kernel={"clock_refs": [{"name": "a"}],
                                                   "clockRefs": []}), ValueError,
             "upsert_kernel().kernel: the field clock_refs is given twice"),
            (lambda: session.write_system_diagram(path=5), ValueError,
             "write_system_diagram(): Failed to parse path field: expected string or bytes-like "
             "object, got 'int'."),
            (lambda: session.call("UpsertNothing"), ValueError,
             "'UpsertNothing' is not a request type of the diagram service; the types are: "
             "UtilizationDuringBrenloRun, AfterRunningBrenlo, MakeInitialSystemDiagram, "
             "ReadSystemDiagram, WriteSystemDiagram, UpsertKernelUse, UpsertKernel, "
             "UpsertQrxBin, UpsertQrxBinGeneratedBy, UpsertQsaClock, GetQrxBinGeneratedBy, "
             "UpdateSystemDiagramAfterBrenloRuns, UpdateComputeUnit, UpsertConnectivity, "
             "WriteFlowReport, UpsertPlatform"),
        ]
        for call, error, text in cases:
            with self.subTest(text=text):
                with self.assertRaises(error) as raised:
                    call()
                self.assertEqual(str(raised.exception), text)


class ErrorTest(ServedTestCase):
    def assertFailed(self, call, request_type, code, text):
        with self.assertRaises(qvdiag.RequestFailed) as raised:
            call()
        failure = raised.exception
        self.assertEqual((failure.request_type, failure.code, failure.text),
                         (request_type, code, text))
        self.assertEqual(str(failure), "%s was answered %d %s" % (request_type, code, text))
        return failure

    def test_a_missing_field_is_answered_400(self):
        session = self.fresh_session()
        fields = dict(IMPORT_FIELDS, kernels_file=None)
        failure = self.assertFailed(lambda: session.make_initial_system_diagram(**fields),
                                    "MakeInitialSystemDiagram", 400, "Bad Request")
        self.assertEqual(failure.session, session.uuid)
        self.assertFailed(lambda: session.write_flow_report(), "WriteFlowReport", 400,
                          "Bad Request")
        self.assertFailed(lambda: session.utilization_during_brenlo_run(
            utilization_files=["a", ""]), "UtilizationDuringBrenloRun", 400, "Bad Request")

    def test_an_unknown_session_is_answered_500(self):
        nobody = self.client.session("nobody")
        failure = self.assertFailed(lambda: nobody.write_system_diagram(self.out("x.json")),
                                    "WriteSystemDiagram", 500, "Internal Server Error")
        self.assertEqual(failure.session, "nobody")
        self.assertFalse(os.path.exists(self.out("x.json")))

    def test_a_failed_import_is_answered_500(self):
        session = self.fresh_session()
        fields = dict(IMPORT_FIELDS, rtd_file="absent.rtd.json")
        self.assertFailed(lambda: session.make_initial_system_diagram(**fields),
                          "MakeInitialSystemDiagram", 500, "Internal Server Error")
        self.assertFailed(lambda: session.read_system_diagram(path=self.out("absent.json")),
                          "ReadSystemDiagram", 500, "Internal Server Error")

    def test_the_servers_refusals_raise_their_own_classes(self):
        self.client.create_session(uuid="py-taken")
        self.addCleanup(self.client.remove, "py-taken")
        cases = [
            (lambda: self.client.create_session(uuid="py-taken"), qvdiag.SessionExists,
             "CreateSession", "ALREADY_EXISTS",
             "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'py-taken'"),
            (lambda: self.client.fork("py-taken", uuid="py-taken"), qvdiag.SessionExists,
             "ForkSession", "ALREADY_EXISTS",
             "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: 'py-taken'"),
            (lambda: self.client.remove("nobody"), qvdiag.NoSuchSession, "RemoveSession",
             "NOT_FOUND", "SYSTEM_DIAGRAM: ERROR, no session with UUID 'nobody' found to remove"),
            (lambda: self.client.fork("nobody"), qvdiag.NoSuchSession, "ForkSession",
             "NOT_FOUND",
             "SYSTEM_DIAGRAM: ERROR, no session with UUID 'nobody' found to fork from"),
            (lambda: self.client.fork(""), qvdiag.InvalidSession, "ForkSession",
             "INVALID_ARGUMENT", "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession"),
        ]
        for call, error, method, code, details in cases:
            with self.subTest(details=details):
                with self.assertRaises(error) as raised:
                    call()
                refusal = raised.exception
                self.assertIsInstance(refusal, qvdiag.CallFailed)
                self.assertEqual((refusal.method, refusal.grpc_code.name, refusal.details),
                                 (method, code, details))
                self.assertEqual(str(refusal), "%s failed with %s: %s"
                                 % (method, code, details))

    def test_a_server_that_is_not_there_is_unavailable(self):
        with qvdiag.Client("unix:" + self.out("nothing.sock"), timeout=5) as client:
            with self.assertRaises(qvdiag.ServerUnavailable) as raised:
                client.create_session()
        self.assertEqual(raised.exception.method, "CreateSession")
        self.assertEqual(raised.exception.grpc_code.name, "UNAVAILABLE")

    def test_a_type_the_service_does_not_serve_is_a_protocol_error(self):
        from qvdiag._proto import dispatch_pb2
        session = self.fresh_session()
        with self.assertRaises(qvdiag.ProtocolError) as raised:
            session.send(dispatch_pb2.Session(uuid="x"))
        self.assertEqual(str(raised.exception),
                         "the service answered dispatch.Session without a status: it does not "
                         "serve that type")

    def test_requests_carry_the_protocols_version(self):
        from qvdiag._protocol import protocol_version
        self.assertEqual(protocol_version(), (1, 0, 0))


class ServeTest(unittest.TestCase):
    def test_serve_listens_on_a_private_socket_and_stops_cleanly(self):
        with start_server() as server:
            self.assertTrue(server.ready_line.startswith(
                "qvdiag serve: listening on %s (service dispatch.system_diagram_server 1.0.0, "
                "library " % server.address), server.ready_line)
            self.assertEqual(server.address, "unix:" + server.socket_path)
            self.assertEqual(stat.S_IMODE(os.stat(server.directory).st_mode), 0o700)
            self.assertEqual(stat.S_IMODE(os.stat(server.socket_path).st_mode), 0o600)
            with server.connect() as client:
                session = client.create_session(uuid="serve-test")
                session.upsert_qsa_clock(clock={"name": "c"})
            self.assertTrue(server.running)
        self.assertFalse(server.running)
        self.assertEqual(server.returncode, 0)
        self.assertTrue(server.stderr.endswith("qvdiag serve: SIGTERM: finishing running "
                                               "requests\nqvdiag serve: stopped\n"),
                        server.stderr)
        self.assertFalse(os.path.exists(server.directory))
        server.stop()  # a second stop does nothing

    def test_a_server_that_cannot_start_raises_serve_error(self):
        with self.assertRaises(qvdiag.ServeError) as raised:
            start_server(library="/nonexistent/libqv_system_diagram.so")
        self.assertTrue(str(raised.exception).startswith(
            "qvdiag serve exited with code 1 before listening: "), str(raised.exception))
        self.assertIn("/nonexistent/libqv_system_diagram.so", str(raised.exception))
        with self.assertRaises(qvdiag.ServeError) as raised:
            qvdiag.serve(executable="/nonexistent/qvdiag")
        self.assertEqual(str(raised.exception), "cannot start /nonexistent/qvdiag: [Errno 2] No "
                         "such file or directory: '/nonexistent/qvdiag'")

    def fake_program(self, body):
        """A stand-in for qvdiag: a shell script; $3 is the address given with --listen."""
        directory = tempfile.mkdtemp(prefix="qvdiag-py-fake-")
        self.addCleanup(shutil.rmtree, directory, True)
        path = os.path.join(directory, "qvdiag")
        with open(path, "w") as f:
            f.write("#!/bin/sh\n" + body + "\n")
        os.chmod(path, 0o755)
        return path

    def test_a_server_that_does_not_listen_in_time_is_killed(self):
        program = self.fake_program("exec sleep 60")
        with self.assertRaises(qvdiag.ServeError) as raised:
            qvdiag.serve(executable=program, ready_timeout=0.5)
        self.assertEqual(str(raised.exception), "qvdiag serve did not listen within 0.5 s")

    def test_a_server_that_ignores_sigterm_is_killed_and_reported(self):
        # An ignored signal stays ignored across exec, so sleep keeps ignoring SIGTERM.
        program = self.fake_program(
            "trap '' TERM\necho \"qvdiag serve: listening on $3 (fake)\"\nexec sleep 60")
        server = qvdiag.serve(executable=program)
        self.assertEqual(server.ready_line, "qvdiag serve: listening on %s (fake)"
                         % server.address)
        with self.assertRaises(qvdiag.ServeError) as raised:
            server.stop(timeout=1)
        self.assertEqual(str(raised.exception), "qvdiag serve did not stop within 1 s after "
                         "SIGTERM and was killed")
        self.assertFalse(server.running)
        self.assertFalse(os.path.exists(server.directory))

    def test_an_error_in_the_with_block_is_the_one_raised(self):
        program = self.fake_program(
            "trap '' TERM\necho \"qvdiag serve: listening on $3 (fake)\"\nexec sleep 60")
        with self.assertRaises(KeyError):
            with qvdiag.serve(executable=program) as server:
                server.stop = lambda timeout=30.0, stop=server.stop: stop(timeout=0.5)
                raise KeyError("from the body")
        self.assertFalse(server.running)

    def test_the_program_is_found_beside_the_build_trees_package(self):
        previous = os.environ.pop("QVDIAG", None)
        try:
            self.assertEqual(os.path.realpath(qvdiag.find_executable()),
                             os.path.realpath(ARGS.qvdiag))
            os.environ["QVDIAG"] = "/somewhere/qvdiag"
            self.assertEqual(qvdiag.find_executable(), "/somewhere/qvdiag")
            self.assertEqual(qvdiag.find_executable("/mine/qvdiag"), "/mine/qvdiag")
            self.assertEqual(qvdiag.find_executable("qvdiag"), "qvdiag")
            self.assertEqual(qvdiag.find_executable("bin/qvdiag"),
                             os.path.join(os.getcwd(), "bin", "qvdiag"))
        finally:
            os.environ.pop("QVDIAG", None)
            if previous is not None:
                os.environ["QVDIAG"] = previous


class DiagramTest(unittest.TestCase):
    """load_diagram of the example's output."""

    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.mkdtemp(prefix="qvdiag-py-diagram-")
        with start_server() as server, server.connect() as client:
            run_example_flow(client.create_session(), cls.tmp)
        cls.path = os.path.join(cls.tmp, "system_diagram.json")
        cls.diagram = qvdiag.load_diagram(cls.path)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.tmp, ignore_errors=True)

    def test_the_diagram_as_a_whole(self):
        d = self.diagram
        self.assertEqual((d.path, d.schema_version, d.platform, d.label),
                         (self.path, "2.0.0", PLATFORM, "vector_pipeline"))
        self.assertEqual(d.message.system_diagram_metadata.qrxbin.generated_by.name, "py")
        self.assertEqual(d.states_reported, ["Synthesized", "Fully Placed", "Routed"])

    def test_memories(self):
        memories = self.diagram.memories
        self.assertEqual(len(memories), 37)
        self.assertEqual([m.tag for m in memories if m.used],
                         ["DDR[0]", "DDR[1]", "DDR[2]"] + ["HBM[%d]" % i for i in range(8)]
                         + [memories[36].tag])
        self.assertEqual(memories[1], qvdiag.Memory(
            index=1, tag="DDR[1]", type="MEM_DDR4", used=True, size_kb=8388608,
            base_address=memories[1].base_address, slr="SLR0", sp_tag="DDR[1]", id="1"))
        self.assertEqual(memories[1].base_address, "0x4400000000")
        self.assertEqual((memories[36].type, memories[36].slr),
                         ("MEM_STREAMING_CONNECTION", ""))
        self.assertEqual(sum(1 for m in memories if m.type == "MEM_HBM"), 32)

    def test_clocks(self):
        clocks = self.diagram.clocks
        self.assertEqual([(c.name, c.status) for c in clocks], [
            ("clk_kernel_00", "CLOCK_SCALABLE"), ("clk_kernel_01", "CLOCK_SCALABLE"),
            ("hbm_aclk", "CLOCK_FIXED"), ("clk_shell_ctrl", "CLOCK_FIXED"),
            ("clk_pcie_user", "CLOCK_RESERVED")])

    def test_kernels(self):
        kernels = self.diagram.kernels
        self.assertEqual([(k.name, k.clocks, k.lut, k.reg, k.bram, k.uram, k.dsp)
                          for k in kernels], [
            ("vadd", ("ap_clk",), 2490, 3842, 2, 0, 0),
            ("mmult", ("ap_clk", "ap_clk_2"), 18960, 27412, 32, 8, 160),
            ("producer", ("ap_clk",), 1436, 2108, 1, 0, 0),
            ("consumer", ("ap_clk",), 1712, 2389, 2, 0, 3)])
        self.assertEqual([(len(k.ports), len(k.arguments)) for k in kernels],
                         [(2, 4), (3, 3), (3, 3), (4, 2)])

    def test_compute_units(self):
        units = self.diagram.compute_units
        self.assertEqual([(u.name, u.kernel, u.id, u.base_address, u.slrs) for u in units], [
            ("vadd_1", "vadd", "0", "0x1c00000", ("SLR0",)),
            ("vadd_2", "vadd", "1", "0x1c10000", ("SLR1",)),
            ("mmult_1", "mmult", "2", "0x1c20000", ("SLR0",)),
            ("mmult_2", "mmult", "3", "0x1c30000", ("SLR0",)),
            ("producer_1", "producer", "4", "0x1c40000", ("SLR0",)),
            ("consumer_1", "consumer", "5", "0x1c50000", ("SLR0",))])
        self.assertEqual((units[2].clocks, units[2].reset_pins),
                         (("ap_clk", "ap_clk_2"), ("ap_rst_n",)))

    def test_connections(self):
        connections = self.diagram.connections
        self.assertEqual(len(connections), 32)
        self.assertEqual(connections[0].source_type, "compute_unit")
        self.assertEqual(connections[0].destination_type, "memory")
        self.assertEqual([c.id for c in connections], [str(i) for i in range(32)])

    def test_resources_per_state(self):
        resources = self.diagram.resources
        self.assertEqual(len(resources), 18)
        routed = self.diagram.resources_in("Routed")
        self.assertEqual(sorted((r.compute_unit, r.lut, r.reg, r.bram, r.uram, r.dsp)
                                for r in routed), [
            ("consumer_1", 1662, 2350, 2, 0, 3), ("mmult_1", 18371, 27164, 32, 8, 160),
            ("mmult_2", 18390, 27187, 32, 8, 160), ("producer_1", 1394, 2081, 1, 0, 0),
            ("vadd_1", 2398, 3790, 2, 0, 0), ("vadd_2", 2421, 3796, 2, 0, 0)])
        self.assertEqual({(r.state, r.lut) for r in resources if r.compute_unit == "vadd_2"},
                         {("Synthesized", 2490), ("Fully Placed", 2405), ("Routed", 2421)})
        with self.assertRaises(ValueError) as raised:
            self.diagram.resources_in("Placed")
        self.assertEqual(str(raised.exception), "'Placed' is not a design state; the states "
                         "are: Synthesized, Fully Placed, Routed")

    @unittest.skipUnless(have_pandas(), "pandas is not installed")
    def test_each_view_as_a_dataframe(self):
        frame = self.diagram.resources.to_dataframe()
        self.assertEqual(list(frame.columns), ["compute_unit", "kernel", "state", "lut", "reg",
                                               "bram", "uram", "dsp"])
        self.assertEqual(frame.shape, (18, 8))
        routed = frame[frame.state == "Routed"].set_index("compute_unit")
        self.assertEqual(int(routed.loc["mmult_2", "lut"]), 18390)
        self.assertEqual(int(frame.groupby("state")["dsp"].sum()["Routed"]), 323)
        self.assertEqual(self.diagram.memories.to_dataframe().shape, (37, 9))
        self.assertEqual(int(self.diagram.memories.to_dataframe()["used"].sum()), 12)
        self.assertEqual(self.diagram.compute_units.to_dataframe()["name"].tolist(),
                         ["vadd_1", "vadd_2", "mmult_1", "mmult_2", "producer_1",
                          "consumer_1"])
        self.assertEqual(self.diagram.connections.to_dataframe().shape, (32, 12))
        self.assertEqual(self.diagram.clocks.to_dataframe()["name"].tolist()[0],
                         "clk_kernel_00")
        self.assertEqual(self.diagram.kernels.to_dataframe()["lut"].tolist(),
                         [2490, 18960, 1436, 1712])


class CommandViewsTest(unittest.TestCase):
    """render, diff and report: the command line's views of stored diagrams, from Python. Each
    must give what the command itself prints, as data where it prints JSON."""

    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.mkdtemp(prefix="qvdiag-py-commands-")
        with start_server() as server, server.connect() as client:
            run_example_flow(client.create_session(), cls.tmp)
        cls.path = os.path.join(cls.tmp, "system_diagram.json")
        # The same diagram with vadd_1 moved to another base address.
        with open(cls.path) as f:
            text = f.read()
        cls.moved = os.path.join(cls.tmp, "moved.json")
        with open(cls.moved, "w") as f:
            f.write(text.replace('"base_address": "0x1c00000"', '"base_address": "0x1d00000"', 1))

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.tmp, ignore_errors=True)

    def cli(self, *arguments):
        return subprocess.run([ARGS.qvdiag] + list(arguments), stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, check=False)

    def test_render_gives_what_the_command_prints(self):
        svg = qvdiag.render(self.path, executable=ARGS.qvdiag)
        self.assertEqual(svg, self.cli("render", self.path, "--format", "svg").stdout)
        self.assertIn('id="cu:vadd_1"', svg)
        rtd = os.path.join(design_dir(), "vector_pipeline.rtd.json")
        self.assertEqual(qvdiag.render(self.path, "dot", rtd_file=rtd, executable=ARGS.qvdiag),
                         self.cli("render", self.path, "--format", "dot", "--rtd", rtd).stdout)

    def test_a_notebook_is_shown_the_picture_and_the_viewer(self):
        diagram = qvdiag.load_diagram(self.path)
        self.assertEqual(diagram._repr_svg_(), self.cli("render", self.path, "--format",
                                                        "svg").stdout)
        html = diagram._repr_html_()
        self.assertEqual(html, self.cli("render", self.path, "--format", "html").stdout)
        self.assertIn("<html", html)
        # A diagram with no file has no picture; a notebook shows its repr instead.
        self.assertIsNone(qvdiag.Diagram(diagram.message)._repr_svg_())

    def test_no_program_to_draw_with_shows_no_picture(self):
        previous = os.environ.get("QVDIAG")
        os.environ["QVDIAG"] = os.path.join(self.tmp, "no-such-qvdiag")
        try:
            self.assertIsNone(qvdiag.load_diagram(self.path)._repr_svg_())
            with self.assertRaises(qvdiag.ServeError) as raised:
                qvdiag.render(self.path)
            self.assertEqual(str(raised.exception), "cannot run " + os.path.join(
                self.tmp, "no-such-qvdiag") + ": No such file or directory")
        finally:
            os.environ.pop("QVDIAG", None)
            if previous is not None:
                os.environ["QVDIAG"] = previous

    def test_diff_gives_the_commands_json(self):
        same = qvdiag.diff(self.path, self.path, executable=ARGS.qvdiag)
        self.assertEqual(same, json.loads(self.cli("diff", self.path, self.path, "--format",
                                                   "json").stdout))
        moved = qvdiag.diff(self.path, self.moved, executable=ARGS.qvdiag)
        self.assertEqual(moved, json.loads(self.cli("diff", self.path, self.moved, "--format",
                                                    "json").stdout))
        self.assertNotEqual(moved, same)
        self.assertIn("0x1d00000", json.dumps(moved))
        self.assertEqual(qvdiag.diff(self.path, self.moved, all=True, executable=ARGS.qvdiag),
                         json.loads(self.cli("diff", self.path, self.moved, "--format", "json",
                                             "--all").stdout))

    def test_report_gives_the_commands_json(self):
        data = qvdiag.report(self.path, timestamp=STAMP, executable=ARGS.qvdiag)
        self.assertEqual(data, json.loads(self.cli("report", self.path, "--format", "json",
                                                   "--timestamp", STAMP).stdout))
        self.assertEqual(data["created"], STAMP)
        self.assertEqual([section["title"] for section in data["sections"]], [
            "Kernel and compute unit information", "Interface Connections", "Clock Connections",
            "Reset Connections", "Clock Summary", "SLR Utilization per Compute Unit",
            "Compute Unit Utilization per SLR"])

    def test_a_file_that_cannot_be_read_raises_command_failed_with_the_commands_words(self):
        missing = os.path.join(self.tmp, "absent.json")
        for call, word, code in [(lambda: qvdiag.render(missing, executable=ARGS.qvdiag),
                                  "render", 1),
                                 (lambda: qvdiag.diff(self.path, missing, executable=ARGS.qvdiag),
                                  "diff", 2),
                                 (lambda: qvdiag.report(missing, executable=ARGS.qvdiag),
                                  "report", 2)]:
            with self.assertRaises(qvdiag.CommandFailed) as raised:
                call()
            self.assertEqual(raised.exception.exit_code, code, word)
            self.assertEqual(raised.exception.stderr, "qvdiag " + word + ": cannot read '" +
                             missing + "': No such file or directory\n")
            self.assertEqual(raised.exception.command[1], word)


class DiagramErrorTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp(prefix="qvdiag-py-bad-")
        self.addCleanup(shutil.rmtree, self.tmp, True)

    def write(self, text, name="d.json"):
        path = os.path.join(self.tmp, name)
        with open(path, "wb") as f:
            f.write(text if isinstance(text, bytes) else text.encode())
        return path

    def test_what_is_not_a_diagram_is_refused_with_the_file_and_the_reason(self):
        missing = os.path.join(self.tmp, "absent.json")
        cases = [
            (missing, "cannot read the diagram: [Errno 2] No such file or directory: '%s'"
             % missing),
            (self.write('{"system_diagram_metadata": {"qsa": {"nmae": "x"}}}', "key.json"),
             'not a stored diagram: Failed to parse system_diagram_metadata field: Failed to '
             'parse qsa field: Message type "ProfileAnalyzerSystemDiagramSerializable.Qsa" has '
             'no field named "nmae" at "outerContainer.system_diagram_metadata.qsa".\n'
             ' Available Fields(except extensions): "[\'deviceTopology\', \'designIntent\', '
             '\'clocks\', \'vendor\', \'boardId\', \'name\', \'versionMajor\', '
             '\'versionMinor\', \'description\', \'generatedBy\', \'board\', '
             '\'availableResources\']"..'),
            (self.write('{"system_diagram_metadata": {"qsa": {"clocks": [{"status": '
                        '"CLOCK_BROKEN"}]}}}', "enum.json"),
             'not a stored diagram: Failed to parse system_diagram_metadata field: Failed to '
             'parse qsa field: Failed to parse clocks field: Failed to parse status field: '
             'Invalid enum value CLOCK_BROKEN for enum type '
             'ProfileAnalyzerSystemDiagramSerializable.ClockStatus at '
             'outerContainer.system_diagram_metadata.qsa.clocks[0].status....'),
            (self.write('{"system_diagram_metadata": ', "cut.json"), None),
            (self.write(b'\xff\xfe', "binary.json"), None),
            (self.write("[" * 100000 + "]" * 100000, "deep.json"), None),
        ]
        for path, reason in cases:
            with self.subTest(reason=reason, path=path):
                with self.assertRaises(qvdiag.DiagramError) as raised:
                    qvdiag.load_diagram(path)
                self.assertEqual(raised.exception.path, path)
                if reason is not None:
                    self.assertEqual(raised.exception.reason, reason)
                    self.assertEqual(str(raised.exception), path + ": " + reason)

    def test_a_count_that_is_not_a_number_is_named_by_its_place(self):
        path = self.write('{"system_diagram_metadata": {"qrxbin": {"user_regions": [{'
                          '"compute_units": [{"name": "u", "actual_resources": '
                          '[{"lut": "lots"}]}]}]}}}')
        diagram = qvdiag.load_diagram(path)
        self.assertEqual([u.name for u in diagram.compute_units], ["u"])
        self.assertEqual(diagram.kernels, ())
        with self.assertRaises(qvdiag.DiagramError) as raised:
            diagram.resources
        self.assertEqual(str(raised.exception), path + ": qrxbin.user_regions[0].compute_units"
                         "[0].actual_resources[0].lut: 'lots' is not a count")

    def test_wrong_shapes_that_protobuf_lets_through_are_diagram_errors(self):
        # Found by fuzz/python_diagram.py: protobuf's reader raised TypeError or OverflowError.
        for text, reason in [
                ("1", "'int' object is not iterable"),
                ("[]", "it is no JSON object"),
                ('{"system_diagram_metadata": {"qsa": {"clocks": [{"status": Infinity}]}}}',
                 "cannot convert float infinity to integer")]:
            path = self.write(text, "shape.json")
            with self.assertRaises(qvdiag.DiagramError) as raised:
                qvdiag.load_diagram(path)
            self.assertEqual(str(raised.exception), path + ": not a stored diagram: " + reason)

    def test_an_enumeration_number_without_a_name_reads_as_its_number(self):
        # Found by fuzz/python_diagram.py: the JSON form takes numbers for enumerations.
        path = self.write('{"system_diagram_metadata": {"qsa": {"clocks": [{"name": "c",'
                          ' "status": -1}], "device_topology": [{"tag": "m", "type": 99}]}}}',
                          "enum.json")
        diagram = qvdiag.load_diagram(path)
        self.assertEqual([clock.status for clock in diagram.clocks], ["-1"])
        self.assertEqual([memory.type for memory in diagram.memories], ["99"])

    def test_an_empty_count_is_none(self):
        path = self.write('{"system_diagram_metadata": {"qrxbin": {"user_regions": [{'
                          '"compute_units": [{"name": "u", "kernel_name": "k", '
                          '"actual_resources": [{"lut": "5", "design_state": '
                          '"DESIGN_STATE_ROUTED"}, {}]}]}]}}}', "empty.json")
        self.assertEqual(list(qvdiag.load_diagram(path).resources), [
            qvdiag.ResourceUse(compute_unit="u", kernel="k", state="Routed", lut=5, reg=None,
                               bram=None, uram=None, dsp=None),
            qvdiag.ResourceUse(compute_unit="u", kernel="k", state="", lut=None, reg=None,
                               bram=None, uram=None, dsp=None)])

    def test_every_seed_and_its_mutations_load_or_raise_diagram_error(self):
        corpus = os.path.join(ARGS.source_dir, "fuzz", "corpus", "stored_diagram")
        seeds = sorted(os.listdir(corpus))
        self.assertGreaterEqual(len(seeds), 6)
        loaded = 0
        for seed in seeds:
            with open(os.path.join(corpus, seed), "rb") as f:
                data = f.read()
            variants = [data]
            # Cut at many places, flip bytes, and swap the kinds of value.
            variants += [data[:cut] for cut in range(0, len(data), max(1, len(data) // 40))]
            variants += [data[:i] + bytes([data[i] ^ 0x20]) + data[i + 1:]
                         for i in range(0, len(data), max(1, len(data) // 40))]
            variants += [data.replace(b'"', b"'", 1), data.replace(b":", b": [", 1),
                         data.replace(b'"0"', b'"zero"'), data.replace(b'"', b'"\\u0000', 2)]
            for n, variant in enumerate(variants):
                path = self.write(variant, "%s.%d" % (seed, n))
                try:
                    diagram = qvdiag.load_diagram(path)
                    for view in (diagram.memories, diagram.clocks, diagram.kernels,
                                 diagram.compute_units, diagram.connections, diagram.resources):
                        self.assertIsInstance(view, qvdiag.View)
                    loaded += 1
                except qvdiag.DiagramError as error:
                    self.assertEqual(error.path, path)
        self.assertGreaterEqual(loaded, len(seeds))


def main():
    global ARGS, qvdiag
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--package-dir", required=True)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    ARGS.source_dir = os.path.abspath(ARGS.source_dir)
    ARGS.qvdiag = os.path.abspath(ARGS.qvdiag)
    sys.path.insert(0, ARGS.package_dir)
    import qvdiag as package
    qvdiag = package
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
