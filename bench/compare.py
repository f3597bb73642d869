#!/usr/bin/env python3
"""Runs programs that draw the same pictures in turn, and prints medians and ratios.

compare.py ROUNDS JSON CSV NAME=COMMAND...: each command is called as KIND SIZE FRAMES (see pictures.cpp);
one that does not know a kind fails and is left out of that row. Ratios are the first program's
figure to each of the others'; above 1 is worse, but for pictures a second. CSV gets the ratios, turned
round for those, so that below 1 is better everywhere.
"""
import csv
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
CASES += [("changed", n, 3) for n in (500, 1000, 2000)]
CASES += [("line", n, 5) for n in (100_000, 1_000_000)]
CASES += [("bars", n, 3) for n in (10_000, 100_000)] + [("bars", 1_000_000, 1)]
CASES += [("cubes", n, 3) for n in (10_000, 100_000)] + [("cubes", 1_000_000, 1)]
CASES += [("contours", 1000, 5), ("triangles", 100_000, 5), ("triangles", 1_000_000, 3)]
CASES += [("start", "FILE", 0), ("reuse", 100, 0), ("renew", 30, 0)]
CASES += [("reuse", 5000, 0)]  # once: does the memory stay as it is?
STARTS = 5  # processes a round
HEADINGS = {"first_ms": "first picture", "frame_ms": "frame", "work_ms": "", "process_ms": "",
            "pictures_per_s": "a second", "two_per_s": "two processes",
            "resident_mb": "memory, MB", "bytes_per_datum": "bytes a datum"}
BEST_HIGH = ("pictures_per_s", "two_per_s")


def run(command, case, folder):
    """The figures that one process prints, and its CPU time in ms; {} when it cannot do this."""
    kind, size, frames = case
    if size == "FILE":
        size = os.path.join(folder, "picture.png")
    command = [*shlex.split(command), kind, str(size), str(frames)]
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    figures = figures_of(subprocess.run(command, capture_output=True, text=True))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    spent = after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
    if kind == "start":
        if not os.path.exists(size):
            return {}
        os.remove(size)
        return {"process_ms": 1e3 * spent}
    if figures and kind in ("reuse", "renew") and size < 1000:
        both = [subprocess.Popen(command, stdout=subprocess.PIPE, text=True) for _ in range(2)]
        outputs = [process.communicate()[0] for process in both]
        figures["two_per_s"] = sum(lines_of(output)["pictures_per_s"] for output in outputs)
    return figures


def lines_of(output):
    pairs = (line.split() for line in output.splitlines())
    return {pair[0]: float(pair[1]) for pair in pairs if len(pair) == 2 and pair[0] in HEADINGS}


def figures_of(done):
    return lines_of(done.stdout) if done.returncode == 0 else {}


def measure(programs, rounds, wanted):
    """{case: {figure: {program: [values]}}}, the programs in turn."""
    out = {}
    cases = [c for c in CASES if not wanted or f"{c[0]}:{c[1]}" in wanted or c[0] in wanted]
    with tempfile.TemporaryDirectory() as folder:
        for case in cases:
            rows = out.setdefault(f"{case[0]} {case[1]}", {})
            times = rounds * (STARTS if case[0] == "start" else 1)
            alone = case[1] == 5000  # a matter of ours
            for _ in range(1 if alone else times):
                for name, command in list(programs.items())[:1 if alone else None]:
                    for figure, value in run(command, case, folder).items():
                        rows.setdefault(figure, {}).setdefault(name, []).append(value)
            show(f"{case[0]} {case[1]}", rows, list(programs))
    return out


def ratios(rows, names):
    """{figure: (medians, {peer: ratio})}"""
    out = {}
    for figure, values in rows.items():
        medians = {n: statistics.median(v) for n, v in values.items()}
        own = medians.get(names[0])
        out[figure] = medians, {n: own / medians[n] for n in names[1:] if own and medians.get(n)}
    return out


def row_name(case, figure):
    kind, size = case.split()
    return f"{kind} {size if size != 'FILE' else 'to PNG'} {HEADINGS[figure]}".strip()


def show(case, rows, names):
    for figure, (medians, found) in ratios(rows, names).items():
        cells = [f"{medians[n]:.4g}" if n in medians else "" for n in names]
        cells += [f"{found[n]:.2f}" if n in found else "" for n in names[1:]]
        print("| " + " | ".join([row_name(case, figure), *cells]) + " |", flush=True)


def write_ratios(file, measured, names):
    out = csv.writer(file)
    out.writerow(["row", *names[1:]])
    for case, rows in measured.items():
        for figure, (_, found) in ratios(rows, names).items():
            if found and figure != "resident_mb":
                turned = {n: 1 / r if figure in BEST_HIGH else r for n, r in found.items()}
                out.writerow([row_name(case, figure), *(turned.get(n, "") for n in names[1:])])


def main():
    rounds, output, table = int(sys.argv[1]), sys.argv[2], sys.argv[3]
    programs = dict(argument.split("=", 1) for argument in sys.argv[4:])
    names = list(programs)
    header = ["case", *names, *(f"{names[0]} : {n}" for n in names[1:])]
    print("| " + " | ".join(header) + " |\n|" + "---|" * len(header))
    out = measure(programs, rounds, os.environ.get("BENCH_CASES", "").split())
    with open(output, "w") as file:
        json.dump(out, file, indent=1)
    with open(table, "w", newline="") as file:
        write_ratios(file, out, names)


main()
