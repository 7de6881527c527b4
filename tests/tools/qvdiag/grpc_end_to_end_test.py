#!/usr/bin/python3
"""qvdiag serve driven by a client that is not ours: Python, Debian's grpcio and protobuf.

The messages are generated here with protoc --python_out from proto/; the calls are made with
channel.unary_unary on the method paths of dispatch.CompileServer, so nothing of the server's
own code is used on the client side.

    grpc_end_to_end_test.py --qvdiag BUILD/qvdiag --protoc PROTOC --source-dir REPO
"""
import argparse
import json
import os
import re
import shutil
import signal
import subprocess
import socket
import struct
import sys
import tempfile
import time
import unittest

import grpc

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "support"))
from protocol_messages import FIXED_STAMP, generate_messages  # noqa: E402

ARGS = None


class Server:
    """One qvdiag serve process on a Unix socket, stopped by SIGTERM."""

    def __init__(self, socket_path, log_path, extra=()):
        self.socket_path = socket_path
        self.process = subprocess.Popen(
            [ARGS.qvdiag, "serve", "--listen", "unix:" + socket_path,
             "--platform-path", os.path.join(ARGS.source_dir, "examples", "platforms"),
             "--timestamp", FIXED_STAMP, "--log", log_path, "--log-level", "3"] + list(extra),
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.ready_line = self.process.stdout.readline()

    def stop(self, sig=signal.SIGTERM, timeout=30):
        self.process.send_signal(sig)
        out, err = self.process.communicate(timeout=timeout)
        return self.process.returncode, out, err


class CompileServerEndToEndTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.mkdtemp(prefix="qvdiag-e2e-")
        generate_messages(ARGS.protoc, ARGS.source_dir, os.path.join(cls.tmp, "py"))
        global dispatch_pb2, server_pb2, diagram_pb2
        from proto import dispatch_pb2, system_diagram_pb2 as diagram_pb2
        from proto import system_diagram_server_pb2 as server_pb2
        cls.socket = os.path.join(cls.tmp, "compile.sock")
        cls.log = os.path.join(cls.tmp, "server.log")
        cls.server = Server(cls.socket, cls.log)
        cls.channel = grpc.insecure_channel("unix:" + cls.socket)
        cls.calls = {}
        for method, request, reply in [
                ("CreateSession", dispatch_pb2.Session, dispatch_pb2.Session),
                ("ForkSession", dispatch_pb2.ForkSessionRequest, dispatch_pb2.Session),
                ("RemoveSession", dispatch_pb2.Session, dispatch_pb2.StatusResponse),
                ("Dispatch", dispatch_pb2.Request, dispatch_pb2.Response)]:
            cls.calls[method] = cls.channel.unary_unary(
                "/dispatch.CompileServer/" + method,
                request_serializer=request.SerializeToString,
                response_deserializer=reply.FromString)

    @classmethod
    def tearDownClass(cls):
        cls.channel.close()
        if cls.server.process.poll() is None:
            cls.server.stop(signal.SIGKILL)
        shutil.rmtree(cls.tmp, ignore_errors=True)

    # --- helpers ------------------------------------------------------------------------------
    def example(self, name):
        return os.path.join(ARGS.source_dir, "examples", "design", name)

    def out(self, name):
        return os.path.join(self.tmp, name)

    def health(self):
        check = self.channel.unary_unary("/grpc.health.v1.Health/Check",
                                         request_serializer=lambda raw: raw,
                                         response_deserializer=lambda raw: raw)
        # HealthCheckRequest{service: ""} is empty; HealthCheckResponse{status: SERVING} is 08 01.
        return check(b"", timeout=10)

    def session(self, uuid="", name=""):
        return self.calls["CreateSession"](dispatch_pb2.Session(uuid=uuid, name=name), timeout=10)

    def request(self, uuid, payload, service="dispatch.system_diagram_server", major=1):
        request = dispatch_pb2.Request(service=service, session_uuid=uuid,
                                       version=dispatch_pb2.Version(major=major))
        request.payload.Pack(payload)
        return request

    def send(self, uuid, payload, **kwargs):
        return self.calls["Dispatch"](self.request(uuid, payload, **kwargs), timeout=60)

    def assertStatus(self, response, code, text):
        self.assertTrue(response.HasField("status"))
        self.assertEqual(response.status.code, code)
        self.assertEqual(response.status.message, text)

    def assertGrpcError(self, call, code, details):
        with self.assertRaises(grpc.RpcError) as raised:
            call()
        self.assertEqual(raised.exception.code(), code)
        self.assertEqual(raised.exception.details(), details)

    def make_initial(self, uuid, **overrides):
        fields = dict(rtdFile=self.example("vector_pipeline.rtd.json"),
                      platform="qv_accel_h2_gen3x16", generatedName="e2e",
                      generatedVersion="1.2.3", generatedChangeList="cl7",
                      generatedTimestamp=FIXED_STAMP, generatedDetailA="a", generatedDetailB="b",
                      kernelsFile=self.out("kernels.txt"), binaryLabel="vector_pipeline",
                      generatedFlag=True)
        fields.update(overrides)
        return self.send(uuid, server_pb2.MakeInitialSystemDiagram(**fields))

    # --- the flow -----------------------------------------------------------------------------
    def test_1_server_announces_itself_and_is_healthy(self):
        self.assertTrue(self.server.ready_line.startswith(
            "qvdiag serve: listening on unix:" + self.socket + " (service "
            "dispatch.system_diagram_server 1.0.0, library "), self.server.ready_line)
        self.assertEqual(os.stat(self.socket).st_mode & 0o777, 0o600)
        self.assertEqual(self.health(), b"\x08\x01")

    def test_2_whole_flow_over_two_sessions_and_a_fork(self):
        first = self.session(uuid="e2e-first", name="first")
        self.assertEqual((first.uuid, first.name), ("e2e-first", "first"))
        second = self.session(name="second")
        self.assertEqual(len(second.uuid), 36)
        self.assertGrpcError(lambda: self.session(uuid="e2e-first"),
                             grpc.StatusCode.ALREADY_EXISTS,
                             "SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: "
                             "'e2e-first'")

        self.assertStatus(self.make_initial("e2e-first"), 200, "OK")
        # Each of the ten strings is required; the session is not looked up then.
        self.assertStatus(self.make_initial("e2e-first", kernelsFile=""), 400, "Bad Request")
        self.assertStatus(self.make_initial("no-such-session", binaryLabel=""), 400,
                          "Bad Request")

        clock = diagram_pb2.Clock(name="clk_e2e", id=9, frequency=250.0)
        self.assertStatus(self.send("e2e-first", server_pb2.UpsertQsaClock(clock=clock)), 200,
                          "OK")
        answer = self.send("e2e-first", server_pb2.GetQrxBinGeneratedBy())
        self.assertStatus(answer, 200, "OK")
        generated = diagram_pb2.qrxBinGeneratedBy()
        self.assertTrue(answer.payload.Unpack(generated))
        self.assertEqual((generated.name, generated.version, generated.change_list,
                          generated.label, generated.label_copy, generated.flag),
                         ("e2e", "1.2.3", "cl7", "vector_pipeline", "vector_pipeline", True))

        fork = self.calls["ForkSession"](dispatch_pb2.ForkSessionRequest(
            source_uuid="e2e-first", target=dispatch_pb2.Session(name="copy")), timeout=10)
        self.assertEqual(len(fork.uuid), 36)
        copied = diagram_pb2.qrxBinGeneratedBy()
        self.send(fork.uuid, server_pb2.GetQrxBinGeneratedBy()).payload.Unpack(copied)
        self.assertEqual(copied, generated)

        self.assertStatus(self.send("e2e-first", server_pb2.UpdateSystemDiagramAfterBrenloRuns(
            rtdFile=self.example("vector_pipeline.post_impl.rtd.json"))), 200, "OK")
        reports = [self.example("vector_pipeline.%s.util.json" % stage)
                   for stage in ("synth", "place", "route")]
        self.assertStatus(self.send("e2e-first", server_pb2.UtilizationDuringBrenloRun(
            utilizationFiles=reports)), 200, "OK")
        self.assertStatus(self.send("e2e-first", server_pb2.WriteSystemDiagram(
            path=self.out("first.json"))), 200, "OK")
        self.assertStatus(self.send("e2e-first", server_pb2.WriteFlowReport(
            path=self.out("first.txt"))), 200, "OK")
        self.assertStatus(self.send(fork.uuid, server_pb2.WriteSystemDiagram(
            path=self.out("fork.json"))), 200, "OK")
        self.assertStatus(self.send(second.uuid, server_pb2.WriteSystemDiagram(
            path=self.out("second.json"))), 200, "OK")
        self.assertStatus(self.send("e2e-first", server_pb2.AfterRunningBrenlo(
            diagramInFile=self.out("fork.json"),
            rtdFile=self.example("vector_pipeline.post_impl.rtd.json"),
            diagramOutFile=self.out("fork_after.json"))), 200, "OK")

        with open(self.out("first.json")) as f:
            first_diagram = json.load(f)["system_diagram_metadata"]
        units = first_diagram["qrxbin"]["user_regions"][0]["compute_units"]
        self.assertEqual([u["name"] for u in units],
                         ["vadd_1", "vadd_2", "mmult_1", "mmult_2", "producer_1", "consumer_1"])
        self.assertEqual([u["base_address"] for u in units],
                         ["0x1c00000", "0x1c10000", "0x1c20000", "0x1c30000", "0x1c40000",
                          "0x1c50000"])
        self.assertEqual(sorted(r["design_state"] for r in units[0]["actual_resources"]),
                         ["DESIGN_STATE_FULLY_PLACED", "DESIGN_STATE_ROUTED",
                          "DESIGN_STATE_SYNTHESIZED"])
        self.assertIn("clk_e2e", [c["name"] for c in first_diagram["qsa"]["clocks"]])
        with open(self.out("first.txt")) as f:
            report = f.read()
        self.assertIn("Created:    " + FIXED_STAMP + "\n", report)
        self.assertIn("Compute Unit: consumer_1\nKernel: consumer\nBase Address: 0x1c50000\n",
                      report)

        # The fork took the diagram as it was: no update, no resources, no later files.
        with open(self.out("fork.json")) as f:
            fork_units = json.load(f)["system_diagram_metadata"]["qrxbin"]["user_regions"][0][
                "compute_units"]
        self.assertEqual([u["base_address"] for u in fork_units], [""] * 6)
        with open(self.out("fork_after.json")) as f:
            after_units = json.load(f)["system_diagram_metadata"]["qrxbin"]["user_regions"][0][
                "compute_units"]
        self.assertEqual(after_units[0]["base_address"], "0x1c00000")
        with open(self.out("second.json")) as f:
            self.assertNotIn("qrxbin", json.load(f)["system_diagram_metadata"])

        for uuid in ("e2e-first", second.uuid, fork.uuid):
            removed = self.calls["RemoveSession"](dispatch_pb2.Session(uuid=uuid), timeout=10)
            self.assertEqual((removed.code, removed.message), (200, "OK"))
        self.assertGrpcError(
            lambda: self.calls["RemoveSession"](dispatch_pb2.Session(uuid="e2e-first"),
                                                timeout=10),
            grpc.StatusCode.NOT_FOUND,
            "SYSTEM_DIAGRAM: ERROR, no session with UUID 'e2e-first' found to remove")

    def test_3_bad_requests_are_answered_and_the_server_keeps_serving(self):
        self.session(uuid="e2e-bad")
        write = server_pb2.WriteSystemDiagram(path=self.out("bad.json"))
        # A session that is not there: the service fails the request, the reason goes to the log.
        self.assertStatus(self.send("nobody", write), 500, "Internal Server Error")
        # A missing input file.
        self.assertStatus(self.send("e2e-bad", server_pb2.UpdateSystemDiagramAfterBrenloRuns(
            rtdFile=self.out("absent.rtd.json"))), 500, "Internal Server Error")
        # Another service, another major version.
        self.assertStatus(self.send("e2e-bad", write, service="dispatch.other"), 404,
                          "Not Found")
        self.assertStatus(self.send("e2e-bad", write, major=2), 400, "Bad Request")
        # A payload whose bytes are not its declared type: empty after unpacking, so 400.
        garbled = self.request("e2e-bad", write)
        garbled.payload.value = b"\xff\xff\xff"
        self.assertStatus(self.calls["Dispatch"](garbled, timeout=10), 400, "Bad Request")
        # A type the service does not serve gets no status at all.
        unknown = self.send("e2e-bad", dispatch_pb2.Session(uuid="x"))
        self.assertFalse(unknown.HasField("status"))
        # Session events with bad input.
        self.assertGrpcError(
            lambda: self.calls["ForkSession"](dispatch_pb2.ForkSessionRequest(
                source_uuid="nobody", target=dispatch_pb2.Session(uuid="t")), timeout=10),
            grpc.StatusCode.NOT_FOUND,
            "SYSTEM_DIAGRAM: ERROR, no session with UUID 'nobody' found to fork from")
        self.assertGrpcError(
            lambda: self.calls["ForkSession"](dispatch_pb2.ForkSessionRequest(
                source_uuid="", target=dispatch_pb2.Session(uuid="t")), timeout=10),
            grpc.StatusCode.INVALID_ARGUMENT,
            "SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession")

        self.assertEqual(self.health(), b"\x08\x01")
        self.assertStatus(self.send("e2e-bad", write), 200, "OK")
        with open(self.log) as f:
            log = f.read()
        self.assertIn("SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no "
                      "session with UUID 'nobody'.\n", log)
        self.assertIn("SYSTEM_DIAGRAM: creating session with uuid: 'e2e-bad'", log)

    def test_4_a_socket_in_use_is_refused(self):
        second = subprocess.run(
            [ARGS.qvdiag, "serve", "--listen", "unix:" + self.socket],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=30)
        self.assertEqual(second.returncode, 1)
        self.assertEqual(second.stderr,
                         "qvdiag serve: the socket path '" + self.socket + "' is in use by a "
                         "running server; stop it or choose another with --listen unix:PATH\n")
        self.assertEqual(self.health(), b"\x08\x01")

    def test_5_sigterm_stops_the_server_and_removes_its_socket(self):
        code, out, err = self.server.stop()
        self.assertEqual(code, 0)
        self.assertEqual(out, "")
        self.assertTrue(err.endswith("qvdiag serve: SIGTERM: finishing running requests\n"
                                     "qvdiag serve: stopped\n"), err)
        self.assertFalse(os.path.exists(self.socket))


def listening_tcp_sockets(pid):
    """The listening TCP sockets of process `pid` as "address:port", from /proc: the socket
    inodes among its open files, looked up in the kernel's TCP tables. An IPv4 address mapped
    into IPv6 (a dual-stack socket bound to ::ffff:127.0.0.1) shows as the IPv4 address."""
    inodes = set()
    for fd in os.listdir("/proc/%d/fd" % pid):
        try:
            link = os.readlink("/proc/%d/fd/%s" % (pid, fd))
        except OSError:
            continue  # closed meanwhile
        if link.startswith("socket:["):
            inodes.add(link[len("socket:["):-1])
    found = []
    for table, family in (("tcp", socket.AF_INET), ("tcp6", socket.AF_INET6)):
        with open("/proc/%d/net/%s" % (pid, table)) as f:
            next(f)  # the heading
            for line in f:
                fields = line.split()
                local, state, inode = fields[1], fields[3], fields[9]
                if state != "0A" or inode not in inodes:  # 0A: LISTEN
                    continue
                hexaddress, hexport = local.split(":")
                # Each 32-bit word of the address is printed as a number in host order.
                raw = b"".join(struct.pack("=I", int(hexaddress[i:i + 8], 16))
                               for i in range(0, len(hexaddress), 8))
                address = socket.inet_ntop(family, raw)
                if address.startswith("::ffff:") and "." in address:
                    address = address[len("::ffff:"):]
                found.append("%s:%d" % (address, int(hexport, 16)))
    return found


class TcpListeningTest(unittest.TestCase):
    """qvdiag serve on loopback TCP: one socket, on the port it announces, and that port its
    own."""

    READY = re.compile(r"^qvdiag serve: listening on (127\.0\.0\.1:(\d+)) \(service ")

    def serve(self, listen):
        server = subprocess.Popen([ARGS.qvdiag, "serve", "--listen", listen],
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.addCleanup(self.stop, server)
        ready = server.stdout.readline()
        match = self.READY.match(ready)
        self.assertIsNotNone(match, ready)
        return server, match.group(1), match.group(2)

    @staticmethod
    def stop(server):
        if server.poll() is None:
            server.send_signal(signal.SIGTERM)
        server.communicate(timeout=30)

    @staticmethod
    def health(target):
        with grpc.insecure_channel(target) as channel:
            check = channel.unary_unary("/grpc.health.v1.Health/Check",
                                        request_serializer=lambda raw: raw,
                                        response_deserializer=lambda raw: raw)
            return check(b"", timeout=10)

    def test_port_zero_gives_one_socket_on_the_announced_port(self):
        server, target, _ = self.serve("tcp:0")
        self.assertEqual(listening_tcp_sockets(server.pid), [target])
        self.assertEqual(self.health(target), b"\x08\x01")

    def test_a_port_in_use_is_refused_and_its_server_keeps_serving(self):
        first, target, port = self.serve("tcp:0")
        second = subprocess.run([ARGS.qvdiag, "serve", "--listen", "tcp:" + port],
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                timeout=30)
        self.assertEqual(second.returncode, 1, second.stderr)
        self.assertEqual(second.stdout, "")
        # gRPC may say first, in its own words, that the bind failed; ours is the last line.
        self.assertEqual(second.stderr.splitlines()[-1],
                         "qvdiag serve: the address 127.0.0.1:" + port + " is in use; stop what "
                         "listens there or choose another port with --listen tcp:PORT (port 0 "
                         "takes a free one)")
        self.assertEqual(self.health(target), b"\x08\x01")
        self.assertEqual(listening_tcp_sockets(first.pid), [target])


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--protoc", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
