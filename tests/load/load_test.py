#!/usr/bin/python3
"""Load and fault test of qvdiag serve: many clients, many sessions, every request type, bad
input of every kind, and sessions removed while others work.

    load_test.py --qvdiag BUILD/qvdiag --protoc PROTOC --source-dir REPO
                 [--clients 16] [--sessions 64] [--requests 100000] [--seconds 900] [--keep]

Each client owns sessions of its own, so the order of one session's requests is the order in
which its client sent them. Every answer is checked against the status the protocol documents
for that request (200, 400, 404, 500 or none). At the end each surviving session's diagram is
written and compared with the diagram of a fresh session that was sent that session's
successful requests alone, in order: whatever else ran at the same time must have left no trace.

The server listens on a Unix socket in a temporary directory. The run stops at --requests or
at --seconds, whichever comes first, and prints requests per second and latency percentiles.
"""
import argparse
import json
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

import grpc

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support"))
from protocol_messages import FIXED_STAMP, generate_messages  # noqa: E402

ARGS = None
SERVICE = "dispatch.system_diagram_server"


class Failure(Exception):
    pass


class Workload:
    """The requests of the mix, each with the status the protocol gives it."""

    def __init__(self, tmp):
        from google.protobuf import json_format
        from proto import system_diagram_server_pb2 as server_pb2
        from proto import system_diagram_pb2 as diagram_pb2
        self.pb = server_pb2
        self.diagram = diagram_pb2
        self.tmp = tmp
        design = os.path.join(ARGS.source_dir, "examples", "design")
        self.rtd = os.path.join(design, "vector_pipeline.rtd.json")
        self.post_impl = os.path.join(design, "vector_pipeline.post_impl.rtd.json")
        self.reports = [os.path.join(design, "vector_pipeline.%s.util.json" % stage)
                        for stage in ("synth", "place", "route")]
        self.kernels_file = os.path.join(tmp, "no-kernels.txt")
        self.missing = os.path.join(tmp, "missing", "absent.json")
        with open(os.path.join(design, "vector_pipeline.requests.json")) as f:
            examples = json.load(f)
        # The example design's upserts, as messages.
        self.upserts = []
        for entry in examples:
            message = getattr(server_pb2, entry["type"])()
            json_format.ParseDict(entry["payload"], message)
            self.upserts.append(message)

    def make_initial(self, **overrides):
        fields = dict(rtdFile=self.rtd, platform="qv_accel_h2_gen3x16", generatedName="load",
                      generatedVersion="1.0", generatedChangeList="cl1",
                      generatedTimestamp=FIXED_STAMP, generatedDetailA="a",
                      generatedDetailB="b", kernelsFile=self.kernels_file,
                      binaryLabel="vector_pipeline", generatedFlag=True)
        fields.update(overrides)
        return self.pb.MakeInitialSystemDiagram(**fields)

    def valid(self, rng, client):
        """A request that must succeed on a live session whose diagram was made: (payload, 200)."""
        pb, d = self.pb, self.diagram
        kind = rng.randrange(14)
        if kind == 0:
            return self.make_initial()
        if kind == 1:
            return pb.UpsertQsaClock(clock=d.Clock(name="clk_%d" % rng.randrange(8),
                                                   id=rng.randrange(8),
                                                   frequency=float(rng.choice([100, 250, 300]))))
        if kind == 2:
            return rng.choice(self.upserts)
        if kind == 3:
            return pb.UpsertQrxBinGeneratedBy(generatedBy=d.qrxBinGeneratedBy(
                name="gen%d" % rng.randrange(4), version="2.%d" % rng.randrange(4)))
        if kind == 4:
            return pb.UpsertPlatform(platform=d.Platform(name="qv_accel_h2_gen3x16",
                                                         vendor="v%d" % rng.randrange(3)))
        if kind == 5:
            return pb.GetQrxBinGeneratedBy()
        if kind == 6:
            return pb.UpdateSystemDiagramAfterBrenloRuns(rtdFile=self.post_impl)
        if kind == 7:
            return pb.UtilizationDuringBrenloRun(
                utilizationFiles=rng.sample(self.reports, rng.randrange(1, 4)))
        if kind == 8:
            return pb.WriteSystemDiagram(path=client.new_path("json"))
        if kind == 9:
            return pb.WriteFlowReport(path=client.new_path("txt"))
        if kind == 10 and client.written:
            return pb.ReadSystemDiagram(path=rng.choice(client.written))
        if kind == 11 and client.written:
            return pb.AfterRunningBrenlo(diagramInFile=rng.choice(client.written),
                                         rtdFile=self.post_impl,
                                         diagramOutFile=client.new_path("after.json"))
        if kind == 12:
            return pb.UpsertKernelUse(designState="Routed", kernelUses=[
                pb.KernelResourceUse(kernelName="vadd", computeUnitUses=[
                    pb.ComputeUnitResourceUse(computeUnitName="vadd_1",
                                              actualResources=pb.ActualResources(
                                                  lut=str(rng.randrange(1000, 3000)),
                                                  reg="100", bram="2", uram="0", dsp="1",
                                                  lutMem="0"))])])
        return pb.UpsertQrxBin(
            qrxBin=d.qrxBin(platform=d.Platform(name="qv_accel_h2_gen3x16")))

    def faulty(self, rng, client):
        """A request with a fault of its own: (payload, expected status, how to send it)."""
        pb = self.pb
        kind = rng.randrange(9)
        if kind == 0:  # a required field missing: refused before the session is looked up
            return self.make_initial(binaryLabel=""), 400, {}
        if kind == 1:
            return pb.WriteSystemDiagram(path=""), 400, {}
        if kind == 2:
            return pb.UtilizationDuringBrenloRun(utilizationFiles=[self.reports[0], ""]), 400, {}
        if kind == 3:  # missing input files
            return pb.ReadSystemDiagram(path=self.missing), 500, {}
        if kind == 4:
            return pb.UpdateSystemDiagramAfterBrenloRuns(rtdFile=self.missing), 500, {}
        if kind == 5:
            return pb.UtilizationDuringBrenloRun(utilizationFiles=[self.missing]), 500, {}
        if kind == 6:  # bytes that are not the declared type
            return pb.WriteSystemDiagram(path=client.new_path("json")), 400, {"garble": True}
        if kind == 7:
            return pb.GetQrxBinGeneratedBy(), 404, {"service": "dispatch.other"}
        return pb.GetQrxBinGeneratedBy(), 400, {"major": 2}


class Client(threading.Thread):
    """One client thread with the sessions it owns."""

    def __init__(self, index, run):
        super().__init__(name="client-%d" % index)
        self.index = index
        self.run_ = run
        self.rng = random.Random(1000 + index)
        self.sessions = ["load-%02d-%d" % (index, k) for k in range(run.sessions_per_client)]
        self.removed = set()
        # Per live session: the successful requests in order, and whether it has a diagram.
        self.history = {uuid: [] for uuid in self.sessions}
        self.made = {uuid: False for uuid in self.sessions}
        self.written = []
        self.paths = 0
        self.latencies = []
        self.counts = {}
        self.error = None
        self.remove_at = self.rng.randrange(run.per_client // 4, run.per_client // 2 + 1)

    def new_path(self, suffix):
        self.paths += 1
        return os.path.join(self.run_.out, "c%02d-%06d.%s" % (self.index, self.paths, suffix))

    def send(self, uuid, payload, expected, garble=False, service=SERVICE, major=1):
        run = self.run_
        request = run.dispatch_pb2.Request(service=service, session_uuid=uuid,
                                           version=run.dispatch_pb2.Version(major=major))
        request.payload.Pack(payload)
        if garble:
            request.payload.value = b"\xff\xff\xff"
        started = time.perf_counter()
        response = run.calls["Dispatch"](request, timeout=120)
        self.latencies.append(time.perf_counter() - started)
        got = response.status.code if response.HasField("status") else None
        name = type(payload).__name__
        self.counts[(name, got)] = self.counts.get((name, got), 0) + 1
        if got != expected:
            raise Failure("%s on session %s answered %s, expected %s" %
                          (name, uuid, got, expected))
        return response

    def one(self, step):
        rng, work = self.rng, self.run_.workload
        if step == self.remove_at:
            # A session goes away in the middle of the run; its requests fail from now on.
            uuid = self.sessions[0]
            started = time.perf_counter()
            removed = self.run_.calls["RemoveSession"](
                self.run_.dispatch_pb2.Session(uuid=uuid), timeout=30)
            self.latencies.append(time.perf_counter() - started)
            self.counts[("RemoveSession", removed.code)] = (
                self.counts.get(("RemoveSession", removed.code), 0) + 1)
            if (removed.code, removed.message) != (200, "OK"):
                raise Failure("removing %s answered %d %s" % (uuid, removed.code,
                                                              removed.message))
            self.removed.add(uuid)
            del self.history[uuid]
            return
        # The mix: 2 % to removed sessions, 2 % to sessions nobody made, 12 % faulty requests,
        # 1 % of a type the service does not serve, the rest valid.
        roll = rng.random()
        if roll < 0.02 and self.removed:
            self.send(rng.choice(sorted(self.removed)), work.valid(rng, self), 500)
            return
        if roll < 0.04:
            self.send("nobody-%d" % rng.randrange(1000), work.valid(rng, self), 500)
            return
        uuid = rng.choice(sorted(self.history))
        if roll < 0.16:
            payload, expected, how = work.faulty(rng, self)
            self.send(uuid, payload, expected, **how)
            return
        if roll < 0.17:  # no status at all
            self.send(uuid, self.run_.dispatch_pb2.Session(uuid="x"), None)
            return
        payload = work.valid(rng, self) if self.made[uuid] else work.make_initial()
        self.send(uuid, payload, 200)
        self.history[uuid].append(payload)
        self.made[uuid] = True
        if isinstance(payload, work.pb.WriteSystemDiagram):
            self.written.append(payload.path)

    def run(self):
        try:
            for uuid in self.sessions:
                self.run_.calls["CreateSession"](self.run_.dispatch_pb2.Session(uuid=uuid),
                                                 timeout=30)
            for step in range(self.run_.per_client):
                if time.monotonic() > self.run_.deadline:
                    break
                self.one(step)
        except Exception as error:  # reported by the main thread
            self.error = "%s: %s" % (self.name, error)


class Run:
    def __init__(self, tmp):
        global dispatch_pb2
        generate_messages(ARGS.protoc, ARGS.source_dir, os.path.join(tmp, "py"))
        from proto import dispatch_pb2
        self.dispatch_pb2 = dispatch_pb2
        self.out = os.path.join(tmp, "out")
        os.makedirs(self.out)
        self.workload = Workload(tmp)
        self.sessions_per_client = ARGS.sessions // ARGS.clients
        self.per_client = ARGS.requests // ARGS.clients
        self.deadline = time.monotonic() + ARGS.seconds
        self.socket = os.path.join(tmp, "load.sock")
        self.stderr = open(os.path.join(tmp, "server.stderr"), "w")
        self.server = subprocess.Popen(
            [ARGS.qvdiag, "serve", "--listen", "unix:" + self.socket,
             "--platform-path", os.path.join(ARGS.source_dir, "examples", "platforms"),
             "--timestamp", FIXED_STAMP, "--log", os.path.join(tmp, "server.log"),
             "--log-level", "0"],
            stdout=subprocess.PIPE, stderr=self.stderr, text=True)
        ready = self.server.stdout.readline()
        if not ready.startswith("qvdiag serve: listening on"):
            raise Failure("the server did not start: %r" % ready)
        options = [("grpc.max_receive_message_length", 64 << 20)]
        self.channel = grpc.insecure_channel("unix:" + self.socket, options=options)
        self.calls = {}
        for method, request, reply in [
                ("CreateSession", dispatch_pb2.Session, dispatch_pb2.Session),
                ("RemoveSession", dispatch_pb2.Session, dispatch_pb2.StatusResponse),
                ("Dispatch", dispatch_pb2.Request, dispatch_pb2.Response)]:
            self.calls[method] = self.channel.unary_unary(
                "/dispatch.CompileServer/" + method,
                request_serializer=request.SerializeToString,
                response_deserializer=reply.FromString)

    def diagram_of(self, uuid, path):
        response = self.calls["Dispatch"](self.request(uuid, self.workload.pb.WriteSystemDiagram(
            path=path)), timeout=120)
        if response.status.code != 200:
            raise Failure("writing the diagram of %s answered %d" % (uuid, response.status.code))
        with open(path) as f:
            return json.load(f)

    def request(self, uuid, payload):
        request = self.dispatch_pb2.Request(service=SERVICE, session_uuid=uuid,
                                            version=self.dispatch_pb2.Version(major=1))
        request.payload.Pack(payload)
        return request

    def replay(self, clients):
        """Each surviving session against a fresh one fed its successful requests alone."""
        compared = 0
        for client in clients:
            for uuid, history in sorted(client.history.items()):
                fresh = "replay-" + uuid
                self.calls["CreateSession"](self.dispatch_pb2.Session(uuid=fresh), timeout=30)
                for payload in history:
                    if isinstance(payload, (self.workload.pb.WriteSystemDiagram,
                                            self.workload.pb.WriteFlowReport)):
                        continue  # writes change no diagram, and their files are kept
                    if isinstance(payload, self.workload.pb.AfterRunningBrenlo):
                        continue  # works on files only
                    response = self.calls["Dispatch"](self.request(fresh, payload), timeout=120)
                    if response.status.code != 200:
                        raise Failure("replaying %s on %s answered %d" %
                                      (type(payload).__name__, fresh, response.status.code))
                original = self.diagram_of(uuid, os.path.join(self.out, uuid + ".final.json"))
                replayed = self.diagram_of(fresh, os.path.join(self.out, fresh + ".final.json"))
                if original != replayed:
                    raise Failure("the diagram of session %s differs from its replay (%s, %s)" %
                                  (uuid, uuid + ".final.json", fresh + ".final.json"))
                compared += 1
        return compared

    def stop(self):
        self.channel.close()
        self.server.send_signal(signal.SIGTERM)
        self.server.communicate(timeout=60)
        self.stderr.close()
        return self.server.returncode


def percentile(values, fraction):
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(fraction * len(ordered)))]


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--protoc", required=True)
    parser.add_argument("--source-dir", required=True)
    parser.add_argument("--clients", type=int, default=16)
    parser.add_argument("--sessions", type=int, default=64)
    # QV_LOAD_REQUESTS lets a slow build (a sanitizer's) run a shorter load.
    parser.add_argument("--requests", type=int,
                        default=int(os.environ.get("QV_LOAD_REQUESTS", "100000")))
    parser.add_argument("--seconds", type=float, default=900,
                        help="stop sending new requests after this long")
    parser.add_argument("--keep", action="store_true", help="keep the temporary directory")
    ARGS = parser.parse_args()
    if ARGS.sessions < ARGS.clients or ARGS.requests < 8 * ARGS.clients:
        parser.error("need at least one session and eight requests per client")

    tmp = tempfile.mkdtemp(prefix="qvdiag-load-")
    run = None
    try:
        run = Run(tmp)
        clients = [Client(i, run) for i in range(ARGS.clients)]
        started = time.perf_counter()
        for client in clients:
            client.start()
        for client in clients:
            client.join()
        elapsed = time.perf_counter() - started
        errors = [c.error for c in clients if c.error]
        if run.server.poll() is not None:
            errors.append("the server is gone (exit %s)" % run.server.returncode)
        if errors:
            raise Failure("; ".join(errors))
        latencies = [t for c in clients for t in c.latencies]
        counts = {}
        for client in clients:
            for key, n in client.counts.items():
                counts[key] = counts.get(key, 0) + n
        print("load: %d requests from %d clients over %d sessions in %.1f s: %.0f requests/s" %
              (len(latencies), ARGS.clients, ARGS.sessions, elapsed, len(latencies) / elapsed))
        print("load: latency p50 %.2f ms, p99 %.2f ms, max %.2f ms" %
              (1e3 * percentile(latencies, 0.5), 1e3 * percentile(latencies, 0.99),
               1e3 * max(latencies)))
        for (name, status), n in sorted(counts.items(), key=lambda kv: (kv[0][0], str(kv[0][1]))):
            print("load:   %-36s %-4s %6d" % (name, status, n))
        compared = run.replay(clients)
        print("load: %d surviving sessions equal their replays" % compared)
        code = run.stop()
        run = None
        if code != 0:
            raise Failure("the server stopped with exit code %d" % code)
        print("load: passed")
        return 0
    except Failure as failure:
        print("load: FAILED: %s (files in %s)" % (failure, tmp), file=sys.stderr)
        ARGS.keep = True
        return 1
    finally:
        if run is not None and run.server.poll() is None:
            run.server.kill()
        if not ARGS.keep:
            shutil.rmtree(tmp, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
