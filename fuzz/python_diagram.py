#!/usr/bin/python3
"""Fuzzes the Python package's reader of stored diagrams (qvdiag.load_diagram and the tables of
a Diagram) for a while.

libFuzzer has no Python front end among Debian's packages, so this is a mutation fuzzer of its
own: it starts from the stored diagram seeds (fuzz/corpus/stored_diagram/), and each round takes
one of them or an input it made before, mutates it (flips, inserts, deletes and repeats bytes,
splices two inputs, swaps JSON tokens for others) and reads it. Every input must either load,
with all six tables readable, or raise qvdiag.DiagramError naming the file; any other exception
is a finding, saved with its traceback in --findings. Inputs that load are kept for later
rounds, so the run drifts towards diagrams the reader accepts.

    python_diagram.py --package-dir BUILD/python --source-dir REPO --seconds 600 [--seed N]
"""
import argparse
import os
import random
import sys
import tempfile
import time
import traceback

TOKENS = [b'"', b"{", b"}", b"[", b"]", b":", b",", b"null", b"true", b"-1", b"1e999", b'""',
          b'"lots"', b'"0x10"', b'"DESIGN_STATE_ROUTED"', b'"MEM_DDR4"', b"\\u0000", b"0",
          b'"18446744073709551616"', b'"compute_units"', b'"actual_resources"',
          b'"connectivity"', b'"clock_refs"', b"\xff", b"\xc3\xa9"]


def mutate(rng, data, pool):
    data = bytearray(data)
    for _ in range(rng.randint(1, 4)):
        kind = rng.randrange(6)
        at = rng.randrange(len(data) + 1)
        if kind == 0 and data:
            data[min(at, len(data) - 1)] ^= 1 << rng.randrange(8)
        elif kind == 1:
            data[at:at] = rng.choice(TOKENS)
        elif kind == 2 and data:
            del data[at:at + rng.randint(1, 16)]
        elif kind == 3 and data:
            end = min(len(data), at + rng.randint(1, 64))
            data[at:at] = data[at:end] * rng.randint(1, 3)
        elif kind == 4:
            other = rng.choice(pool)
            cut = rng.randrange(len(other) + 1)
            data = data[:at] + other[cut:]
        else:
            start = data.find(b'"', at)
            if start >= 0:
                end = data.find(b'"', start + 1)
                if end > start:
                    data[start:end + 1] = rng.choice(TOKENS)
    return bytes(data)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--package-dir", required=True, help="build/python of a build tree")
    parser.add_argument("--source-dir", required=True, help="the repository")
    parser.add_argument("--seconds", type=float, default=600)
    parser.add_argument("--seed", type=int, default=None, help="random seed (default: time)")
    parser.add_argument("--findings", default="fuzz-findings/python_diagram")
    args = parser.parse_args()
    sys.path.insert(0, args.package_dir)
    import qvdiag

    corpus = os.path.join(args.source_dir, "fuzz", "corpus", "stored_diagram")
    pool = []
    for name in sorted(os.listdir(corpus)):
        with open(os.path.join(corpus, name), "rb") as f:
            pool.append(f.read())
    if not pool:
        print("python_diagram: no seeds in " + corpus, file=sys.stderr)
        return 2
    seed = args.seed if args.seed is not None else int(time.time())
    rng = random.Random(seed)
    runs = loaded = findings = 0
    deadline = time.monotonic() + args.seconds
    with tempfile.TemporaryDirectory(prefix="qvdiag-fuzz-") as scratch:
        path = os.path.join(scratch, "input.json")
        while time.monotonic() < deadline:
            data = mutate(rng, rng.choice(pool), pool)
            with open(path, "wb") as f:
                f.write(data)
            runs += 1
            try:
                diagram = qvdiag.load_diagram(path)
                for view in (diagram.memories, diagram.clocks, diagram.kernels,
                             diagram.compute_units, diagram.connections, diagram.resources):
                    if not isinstance(view, qvdiag.View):
                        raise AssertionError("a table is a %s, not a View" % type(view))
                loaded += 1
                if len(pool) < 2000 and len(data) < 200000:
                    pool.append(data)
            except qvdiag.DiagramError as error:
                if error.path != path:
                    raise AssertionError("DiagramError names %r, not the file" % error.path)
            except Exception:  # noqa: BLE001 -- anything else is what we look for
                findings += 1
                os.makedirs(args.findings, exist_ok=True)
                stem = os.path.join(args.findings, "finding-%d-%d" % (seed, runs))
                with open(stem + ".json", "wb") as f:
                    f.write(data)
                with open(stem + ".txt", "w") as f:
                    f.write(traceback.format_exc())
    print("python_diagram: %d runs in %.0f s (seed %d), %d loaded, %d findings%s"
          % (runs, args.seconds, seed, loaded, findings,
             "" if not findings else " in " + args.findings))
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
