#!/usr/bin/env python3
"""contourpy beside pictures.cpp: contours N [TIMES], lines joined, one thread."""
import sys
import time

import contourpy
import numpy


def mixed(z):
    """The numbers of measure.h."""
    mask = (1 << 64) - 1
    z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & mask
    z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & mask
    return ((z ^ (z >> 31)) >> 11) * 2.0**-53


def rough(n):
    at = numpy.linspace(-1, 1, n)
    z = numpy.zeros((n, n))
    for wave in range(20):
        a, b = (60 * mixed((2 * wave + k) * 0x9E3779B97F4A7C15 & ((1 << 64) - 1)) - 30
                for k in (1, 2))
        z += 0.06 * numpy.sin(a * at[None, :] + b * at[:, None] + wave)
    return z


def main():
    if sys.argv[1] != "contours":
        sys.exit(1)
    z = rough(int(sys.argv[2]))
    spent = []
    for _ in range(int(sys.argv[3]) if len(sys.argv) > 3 else 5):
        start = time.process_time()
        generator = contourpy.contour_generator(z=z, name="serial",
                                                line_type=contourpy.LineType.Separate)
        lines = [generator.lines(-0.285 + 0.03 * k) for k in range(20)]
        spent.append(time.process_time() - start)
    print("work_ms", 1e3 * sorted(spent)[len(spent) // 2])
    print("lines", sum(len(level) for level in lines))


main()
