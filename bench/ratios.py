#!/usr/bin/python3
"""Runs each product path beside its floor, in turns, and prints the ratio tables.

    bench/ratios.py --build-dir build                      every suite, 7 rounds
    bench/ratios.py --build-dir build --suite import       one suite
    bench/ratios.py --build-dir build --quick              every benchmark once, small sizes only

A row compares two Google Benchmark runs: the path (what the product does) and its floor (what
its dependencies alone cost for the same input), or the same path at two sizes (its growth).
The machines that run this are shared, so a path measured now and its floor measured a minute
later can see different loads. Each round therefore runs the path and then its floor, one
process each and one benchmark each (--benchmark_filter), and the ratio of a round compares two
runs that saw nearly the same machine. The table gives the median of each side over the rounds,
the ratio of the medians, the lowest and highest ratio of a single round, and the goal.

A benchmark that a program does not have (yet) prints "n/a" and is no failure; a program that
crashes or reports an error is, and the driver then exits with 1. Goals that are missed are
marked and counted; they do not change the exit status, since a loaded machine can miss a goal
that the code meets.
"""

import argparse
import json
import os
import re
import statistics
import subprocess
import sys
import time

# One row of a suite.
#   kind "ratio":  path and floor are (program, benchmark); goal (op, number) on path / floor
#   kind "growth": path at the large size over path at the small size
#   kind "time":   the path alone, goal on its median in seconds
# "clock" picks Google Benchmark's real_time (for benchmarks that time several threads by hand)
# or cpu_time (single-threaded, steadier when other processes share the cores).
# "quick" marks the rows that the smoke test runs: the small sizes.


def ratio(name, path, floor, goal=None, clock="cpu", quick=False):
    return {"kind": "ratio", "name": name, "path": path, "floor": floor, "goal": goal,
            "clock": clock, "quick": quick}


def growth(name, large, small, goal=None, clock="cpu"):
    return {"kind": "growth", "name": name, "path": large, "floor": small, "goal": goal,
            "clock": clock, "quick": False}


def absolute(name, path, goal=None, clock="cpu", quick=False):
    return {"kind": "time", "name": name, "path": path, "floor": None, "goal": goal,
            "clock": clock, "quick": quick}


SUITES = [
    ("import", "the rtd import (MakeInitialSystemDiagram) against Boost's JSON reader alone", [
        ratio("import, 1,000 CUs", ("import_bench", "BM_Import/1000"),
              ("import_bench", "BM_BareReadJson/1000"), ("<=", 2.0), quick=True),
        ratio("import, 10,000 CUs", ("import_bench", "BM_Import/10000"),
              ("import_bench", "BM_BareReadJson/10000"), ("<=", 2.0)),
        growth("import growth, 10x the CUs", ("import_bench", "BM_Import/10000"),
               ("import_bench", "BM_Import/1000"), ("<=", 11.0)),
    ]),
    ("diagram", "the stored diagram's JSON against protobuf's JSON conversion alone", [
        ratio("write JSON", ("diagram_bench", "BM_SerializeToJson"),
              ("diagram_bench", "BM_BareMessageToJsonString"), quick=True),
        ratio("read JSON", ("diagram_bench", "BM_SerializeFromJson"),
              ("diagram_bench", "BM_BareJsonStringToMessage"), quick=True),
    ]),
    ("server", "the compile server with the library against one whose handler does nothing", [
        ratio("8 clients, 4,000 requests", ("server_bench", "BM_Requests/library:1/manual_time"),
              ("server_bench", "BM_Requests/library:0/manual_time"), clock="real", quick=True),
    ]),
    ("repo", "the hardware repository against libxml2 alone", [
        # index:1 is the repository as it ships, index:0 with its name index and answer
        # caches off (the way every query used to scan the whole document).
        absolute("createRepo, a tenth", ("repo_bench", "BM_CreateRepo/tenths:1/index:1/iterations:1"),
                 quick=True),
        ratio("createRepo, full size", ("repo_bench", "BM_CreateRepo/tenths:10/index:1/iterations:1"),
              ("repo_bench", "BM_BareParse"), ("<=", 20.0)),
        absolute("createRepo, full size, time",
                 ("repo_bench", "BM_CreateRepo/tenths:10/index:1/iterations:1"), ("<", 5.0)),
        growth("createRepo growth, 10x", ("repo_bench", "BM_CreateRepo/tenths:10/index:1/iterations:1"),
               ("repo_bench", "BM_CreateRepo/tenths:1/index:1/iterations:1"), ("<=", 12.0)),
        ratio("query mix", ("repo_bench", "BM_QueryMix/index:1/iterations:1"),
              ("repo_bench", "BM_BareQueryMix/iterations:1"), ("<=", 0.1)),
    ]),
    ("resources", "the kernel use (UtilizationDuringBrenloRun) against the bare read of its reports", [
        ratio("kernel use, 100 CUs x 3 files", ("resources_bench", "BM_UtilizationDuringBrenloRun/100"),
              ("resources_bench", "BM_BareReadReports/100"), quick=True),
        ratio("kernel use, 1,000 CUs x 3 files", ("resources_bench", "BM_UtilizationDuringBrenloRun/1000"),
              ("resources_bench", "BM_BareReadReports/1000")),
        absolute("kernel use, 1,000 CUs x 3 files, time",
                 ("resources_bench", "BM_UtilizationDuringBrenloRun/1000"), ("<", 1.0)),
        growth("kernel use growth, 10x", ("resources_bench", "BM_UtilizationDuringBrenloRun/10000"),
               ("resources_bench", "BM_UtilizationDuringBrenloRun/1000"), ("<=", 15.0)),
    ]),
    ("report", "the flow report", [
        absolute("flow report, 500 CUs", ("report_bench", "BM_WriteFlowReport/500"), quick=True),
        growth("flow report growth, 10x", ("report_bench", "BM_WriteFlowReport/5000"),
               ("report_bench", "BM_WriteFlowReport/500"), ("<=", 11.0)),
    ]),
    ("render", "the pictures against Graphviz's layout alone", [
        ratio("render, 64 CUs", ("render_bench", "BM_Render/64/iterations:3"),
              ("render_bench", "BM_Layout/64/iterations:3"), quick=True),
        absolute("render, 64 CUs, time", ("render_bench", "BM_Render/64/iterations:3"), ("<", 1.0)),
        ratio("render, 1,000 CUs", ("render_bench", "BM_Render/1000/iterations:3"),
              ("render_bench", "BM_Layout/1000/iterations:3")),
        absolute("render, 1,000 CUs, time", ("render_bench", "BM_Render/1000/iterations:3"),
                 ("<", 10.0)),
    ]),
    ("diff", "qvdiag diff against the bare read of the two diagrams", [
        ratio("diff, 5,000 CUs", ("diff_bench", "BM_Diff/5000"), ("diff_bench", "BM_BareRead/5000"),
              quick=True),
        absolute("diff, 5,000 CUs / 50,000 connections, time", ("diff_bench", "BM_Diff/5000"),
                 ("<", 2.0)),
        growth("diff growth, 10x", ("diff_bench", "BM_Diff/50000"), ("diff_bench", "BM_Diff/5000"),
               ("<=", 12.0)),
    ]),
]

UNIT_SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


class ProgramFailed(Exception):
    pass


class Runner:
    """Runs one benchmark of one program and answers its time per iteration in seconds, or
    None when the program or the benchmark does not exist."""

    def __init__(self, bench_dir, min_time, warmup_time, verbose):
        self.bench_dir = bench_dir
        self.min_time = min_time
        self.warmup_time = warmup_time
        self.verbose = verbose
        self.listed = {}

    def names(self, program):
        # Asking for the list first tells a missing benchmark from one that failed to run.
        if program not in self.listed:
            path = os.path.join(self.bench_dir, program)
            if not os.access(path, os.X_OK):
                self.listed[program] = None
            else:
                done = subprocess.run([path, "--benchmark_list_tests=true"], capture_output=True,
                                      text=True, check=False)
                if done.returncode != 0:
                    raise ProgramFailed(f"{program} --benchmark_list_tests: exit {done.returncode}\n"
                                        + done.stderr)
                self.listed[program] = set(done.stdout.split())
        return self.listed[program]

    def has(self, benchmark):
        program, name = benchmark
        names = self.names(program)
        return names is not None and name in names

    def run(self, benchmark, clock):
        program, name = benchmark
        if not self.has(benchmark):
            return None
        # The name is matched whole: "BM_Import/1000" must not also pick "BM_Import/10000".
        pattern = "^" + re.escape(name) + "$"
        command = [os.path.join(self.bench_dir, program), f"--benchmark_filter={pattern}",
                   "--benchmark_format=json", f"--benchmark_min_time={self.min_time}"]
        if self.warmup_time > 0:
            # Each run is a fresh process: its first iterations also fetch the heap's pages from
            # the system and fill the caches of the process, which no later iteration pays.
            command.append(f"--benchmark_min_warmup_time={self.warmup_time}")
        started = time.monotonic()
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        if self.verbose:
            print(f"    {program} {name}: {time.monotonic() - started:.1f} s", file=sys.stderr)
        if done.returncode != 0:
            raise ProgramFailed(f"{' '.join(command)}: exit {done.returncode}\n{done.stderr[-2000:]}")
        try:
            report = json.loads(done.stdout)
        except json.JSONDecodeError as error:
            raise ProgramFailed(f"{' '.join(command)}: output is not JSON ({error})") from error
        runs = [b for b in report.get("benchmarks", []) if b.get("run_type", "iteration") == "iteration"]
        if not runs:
            return None
        result = runs[0]
        if result.get("error_occurred"):
            raise ProgramFailed(f"{program} {name}: {result.get('error_message', 'error')}")
        key = "real_time" if clock == "real" else "cpu_time"
        return result[key] * UNIT_SECONDS[result.get("time_unit", "ns")]


def seconds_text(value):
    if value is None:
        return "n/a"
    if value >= 1.0:
        return f"{value:.3g} s"
    if value >= 1e-3:
        return f"{value * 1e3:.3g} ms"
    return f"{value * 1e6:.3g} us"


def goal_text(goal, kind):
    if goal is None:
        return ""
    op, number = goal
    sign = {"<=": "≤", "<": "<", ">=": "≥"}[op]
    if kind == "time":
        return f"{sign} {number:g} s"
    return f"{sign} {number:g}x"


def meets(goal, value):
    op, number = goal
    return {"<=": value <= number, "<": value < number, ">=": value >= number}[op]


def measure(runner, row, rounds):
    """Path and floor in turns, `rounds` times; the per-round samples of each."""
    paths, floors = [], []
    for _ in range(rounds):
        a = runner.run(row["path"], row["clock"])
        if a is None:
            return None, None
        paths.append(a)
        if row["floor"] is not None:
            b = runner.run(row["floor"], row["clock"])
            if b is None:
                return paths, None
            floors.append(b)
    return paths, floors


def table_row(row, paths, floors):
    """The cells of one row of the table and whether its goal is met (None: no verdict)."""
    path_name = f"{row['path'][0]} {row['path'][1]}"
    floor_name = "" if row["floor"] is None else f"{row['floor'][0]} {row['floor'][1]}"
    goal = goal_text(row["goal"], row["kind"])
    if paths is None:
        return [row["name"], "n/a", seconds_text(None), "", "", "", goal, ""], None, path_name, floor_name
    path_median = statistics.median(paths)
    if row["kind"] == "time":
        verdict = None if row["goal"] is None else meets(row["goal"], path_median)
        mark = "" if verdict is None else ("✔" if verdict else "✘")
        return ([row["name"], seconds_text(path_median), "", "", "", "", goal, mark], verdict,
                path_name, floor_name)
    if floors is None:
        return ([row["name"], seconds_text(path_median), "n/a", "n/a", "", "", goal, ""], None,
                path_name, floor_name)
    floor_median = statistics.median(floors)
    per_round = [p / f for p, f in zip(paths, floors)]
    value = path_median / floor_median
    verdict = None if row["goal"] is None else meets(row["goal"], value)
    mark = "" if verdict is None else ("✔" if verdict else "✘")
    return ([row["name"], seconds_text(path_median), seconds_text(floor_median), f"{value:.2f}x",
             f"{min(per_round):.2f}–{max(per_round):.2f}", str(len(per_round)), goal, mark],
            verdict, path_name, floor_name)


HEADINGS = ["row", "path", "floor", "ratio", "rounds' range", "rounds", "goal", ""]


def print_table(title, description, cells, names):
    widths = [max(len(str(line[i])) for line in [HEADINGS] + cells) for i in range(len(HEADINGS))]
    print(f"== {title}: {description}")
    print("  ".join(h.ljust(w) for h, w in zip(HEADINGS, widths)).rstrip())
    for line in cells:
        print("  ".join(str(c).ljust(w) for c, w in zip(line, widths)).rstrip())
    for name, (path, floor) in names:
        against = f" / {floor}" if floor else ""
        print(f"   {name}: {path}{against}")
    print(flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--build-dir", default="build", help="the build tree (default: build)")
    parser.add_argument("--suite", action="append", choices=[s[0] for s in SUITES],
                        help="run this suite only (repeatable)")
    parser.add_argument("--rounds", type=int, default=7, help="rounds of each row (default: 7)")
    parser.add_argument("--min-time", type=float, default=0.5,
                        help="--benchmark_min_time of each run, in seconds (default: 0.5)")
    parser.add_argument("--warmup-time", type=float, default=0.2,
                        help="--benchmark_min_warmup_time of each run, in seconds (default: 0.2)")
    parser.add_argument("--quick", action="store_true",
                        help="smoke test: the small rows only, one round, one iteration each")
    parser.add_argument("--verbose", action="store_true", help="print each run's duration")
    args = parser.parse_args()

    rounds = 1 if args.quick else args.rounds
    # Google Benchmark 1.7 runs at least one iteration whatever the minimum time.
    min_time = 0.0001 if args.quick else args.min_time
    warmup_time = 0.0 if args.quick else args.warmup_time
    runner = Runner(os.path.join(args.build_dir, "bench"), min_time, warmup_time, args.verbose)
    missed = 0
    failed = 0
    for title, description, rows in SUITES:
        if args.suite and title not in args.suite:
            continue
        cells, names = [], []
        for row in rows:
            if args.quick and not row["quick"]:
                continue
            try:
                paths, floors = measure(runner, row, rounds)
            except ProgramFailed as error:
                print(f"bench/ratios.py: {error}", file=sys.stderr)
                failed += 1
                cells.append([row["name"], "failed", "", "", "", "", goal_text(row["goal"], row["kind"]), "✘"])
                names.append((row["name"], (f"{row['path'][0]} {row['path'][1]}", "")))
                continue
            line, verdict, path_name, floor_name = table_row(row, paths, floors)
            cells.append(line)
            names.append((row["name"], (path_name, floor_name)))
            if verdict is False:
                missed += 1
        if cells:
            print_table(title, description, cells, names)
    if not args.quick:
        print(f"goals missed: {missed}")
    if failed:
        print(f"bench/ratios.py: {failed} row(s) failed to run", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
