#!/usr/bin/env python3
"""Runs programs that draw the same pictures in turn, and prints medians and ratios.

compare.py ROUNDS JSON NAME=COMMAND...: each command is called as KIND SIZE FRAMES (see pictures.cpp);
one that does not know a kind fails and is left out of that row. Ratios are the first program's
figure to each of the others'; above 1 is worse, but for pictures a second.
"""
import json
import os
import resource
import shlex
import statistics
import subprocess
import sys
import tempfile

# kind, size, frames
CASES = [("filled", n, 5 if n < 1000 else 3) for n in (100, 500, 1000, 2000)]
CASES += [("outlined", n, 5 if n < 1000 else 3) for n in (100, 500, 1000, 2000)]
CASES += [("line", n, 5) for n in (100_000, 1_000_000)]
CASES += [("bars", 1_000_000, 1), ("cubes", 1_000_000, 1)]
CASES += [("start", "FILE", 0), ("reuse", 30, 0), ("renew", 30, 0)]
STARTS = 5  # processes a round


def run(command, case, folder):
    """The figures that one process prints, and its CPU time in ms; {} when it cannot do this."""
    kind, size, frames = case
    if size == "FILE":
        size = os.path.join(folder, "picture.png")
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    done = subprocess.run([*shlex.split(command), kind, str(size), str(frames)],
                          capture_output=True, text=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if done.returncode != 0:
        return {}
    figures = {name: float(value) for name, value in
               (line.split() for line in done.stdout.splitlines() if len(line.split()) == 2)}
    spent = after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
    if kind == "start":
        if not os.path.exists(size):
            return {}
        os.remove(size)
        figures["process_ms"] = 1e3 * spent
    return figures


def measure(programs, rounds, wanted):
    """{case: {figure: {program: [values]}}}, the programs in turn."""
    out = {}
    cases = [c for c in CASES if not wanted or f"{c[0]}:{c[1]}" in wanted or c[0] in wanted]
    with tempfile.TemporaryDirectory() as folder:
        for case in cases:
            rows = out.setdefault(f"{case[0]} {case[1]}", {})
            for _ in range(rounds * (STARTS if case[0] == "start" else 1)):
                for name, command in programs.items():
                    for figure, value in run(command, case, folder).items():
                        rows.setdefault(figure, {}).setdefault(name, []).append(value)
            show(f"{case[0]} {case[1]}", rows, list(programs))
    return out


def show(case, rows, names):
    for figure, values in rows.items():
        medians = {n: statistics.median(v) for n, v in values.items()}
        cells = [f"{medians[n]:.4g}" if n in medians else "" for n in names]
        own = medians.get(names[0])
        ratios = [f"{own / medians[n]:.2f}" if own and medians.get(n) else "" for n in names[1:]]
        print("| " + " | ".join([case, figure, *cells, *ratios]) + " |", flush=True)


def main():
    rounds, output = int(sys.argv[1]), sys.argv[2]
    programs = dict(argument.split("=", 1) for argument in sys.argv[3:])
    names = list(programs)
    header = ["case", "figure", *names, *(f"{names[0]} : {n}" for n in names[1:])]
    print("| " + " | ".join(header) + " |\n|" + "---|" * len(header))
    out = measure(programs, rounds, os.environ.get("BENCH_CASES", "").split())
    with open(output, "w") as file:
        json.dump(out, file, indent=1)


main()
