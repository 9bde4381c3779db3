#!/usr/bin/python3
"""Times the contouring benchmarks of quillon_bench beside contourpy.

Runs quillon_bench's BM_Isolines2048 and BM_FilledContouring2048 and the
same work with contourpy's serial engine (the isolines of 20 levels and the
19 filled bands between them, on the same 2048 x 2048 grid over [-3, 3]^2),
and prints both with their ratio.  These machines are noisy: only ratios
measured in one run mean something.

    /usr/bin/python3 bench/contourpy_compare.py [path/to/quillon_bench]

The reference engine is installed for /usr/bin/python3 (Debian's
python3-contourpy), not necessarily for other interpreters.
"""
import json
import os
import subprocess
import sys
import time

import contourpy
import numpy as np

GRID_SIZE = 2048
NUM_LEVELS = 20
REPETITIONS = 5


def field():
    axis = np.linspace(-3.0, 3.0, GRID_SIZE)
    x, y = np.meshgrid(axis, axis)
    z = np.sin(2 * x) * np.cos(3 * y) + 0.3 * np.exp(-(x * x + y * y))
    levels = np.linspace(z.min(), z.max(), NUM_LEVELS + 2)[1:-1]
    return axis, z, levels


def best_time(work):
    best, result = float("inf"), None
    for _ in range(REPETITIONS):
        start = time.perf_counter()
        result = work()
        best = min(best, time.perf_counter() - start)
    return best * 1e3, result


def contourpy_times():
    axis, z, levels = field()
    generator = contourpy.contour_generator(axis, axis, z, name="serial",
                                            line_type=contourpy.LineType.Separate,
                                            fill_type=contourpy.FillType.OuterCode)

    def lines():
        return sum(len(line) for level in levels for line in generator.lines(level))

    def filled():
        return sum(len(generator.filled(lower, upper)[0])
                   for lower, upper in zip(levels[:-1], levels[1:]))

    lines_ms, points = best_time(lines)
    filled_ms, polygons = best_time(filled)
    return {"BM_Isolines2048": (lines_ms, "points", points),
            "BM_FilledContouring2048": (filled_ms, "polygons", polygons)}


def quillon_times(program):
    output = subprocess.run(
        [program, "--benchmark_filter=BM_Isolines2048|BM_FilledContouring2048",
         "--benchmark_format=json", "--benchmark_repetitions=%d" % REPETITIONS],
        check=True, capture_output=True, text=True).stdout
    times = {}
    for run in json.loads(output)["benchmarks"]:
        if run.get("run_type") == "aggregate":
            continue
        name = run["run_name"]
        scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}[run["time_unit"]]
        counters = {key: run[key] for key in ("points", "faces", "peak_memory_MB") if key in run}
        previous = times.get(name, (float("inf"), counters))
        times[name] = (min(previous[0], run["real_time"] * scale), counters)
    return times


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    program = sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "build", "bench",
                                                                  "quillon_bench")
    reference = contourpy_times()
    ours = quillon_times(program)
    print("%-26s %12s %14s %7s  %s" % ("benchmark", "quillon ms", "contourpy ms", "ratio",
                                       "counters"))
    for name, (ref_ms, ref_counter, ref_count) in reference.items():
        if name not in ours:
            print("%-26s %12s %14.1f" % (name, "missing", ref_ms))
            continue
        ms, counters = ours[name]
        details = ", ".join("%s %.0f" % item for item in counters.items())
        print("%-26s %12.1f %14.1f %7.2f  quillon: %s; contourpy: %s %d"
              % (name, ms, ref_ms, ms / ref_ms, details, ref_counter, ref_count))


if __name__ == "__main__":
    main()
