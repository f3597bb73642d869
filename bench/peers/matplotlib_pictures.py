#!/usr/bin/env python3
"""matplotlib beside pictures.cpp: start FILE, reuse COUNT, renew COUNT (a figure a picture)."""
import os
import sys
import tempfile
import time

import matplotlib

matplotlib.use("agg")
from matplotlib.backends.backend_agg import FigureCanvasAgg
from matplotlib.figure import Figure


def new_figure():
    figure = Figure(figsize=(6.4, 4.8), dpi=100)
    FigureCanvasAgg(figure)
    return figure


def ten_bars(figure, file):
    figure.add_subplot(111).bar(range(10), [1 + i % 4 for i in range(10)], color="b")
    figure.savefig(file)
    figure.clear()


def main():
    kind, argument = sys.argv[1:3]
    if kind not in ("start", "reuse", "renew"):
        sys.exit(1)
    if kind == "start":
        ten_bars(new_figure(), argument)
        return
    shared = new_figure() if kind == "reuse" else None
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "bars.png")
        ten_bars(shared or new_figure(), file)
        start = time.process_time()
        for _ in range(int(argument)):
            ten_bars(shared or new_figure(), file)
        print("pictures_per_s", int(argument) / (time.process_time() - start))


main()
