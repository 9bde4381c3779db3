#!/usr/bin/python3
"""Level surfaces and cross sections of a 256^3 grid: Quillon beside VTK and
scikit-image, measured in one run on the same machine.

    /usr/bin/python3 bench/compare_level_surface.py [build/bench/quillon_bench]

The field is v = x^2 + y^2 + z^2 + 0.2 sin(6x) cos(5y) sampled on 256 nodes
along each axis of [-1, 1]^3 (computed in double precision, stored as
float), the level 0.5; the cutting plane has the normal (0.2, 0.3, 1) and
passes through (0, 0, 0.1), then moves along its normal.  Every case runs in
a process of its own so that its peak resident memory is its own; the
engines' figures include the Python interpreter, the engine's libraries and
the field (numpy array and image data), whose size is shown as the baseline.  Needs the Debian packages
python3-vtk9 and python3-skimage (for /usr/bin/python3).
"""
import json
import os
import resource
import statistics
import subprocess
import sys
import time

SIDE = 256
LEVEL = 0.5
NORMAL = (0.2, 0.3, 1.0)
ORIGIN = (0.0, 0.0, 0.1)
MOVED_ORIGIN = (0.0, 0.0, 0.2)
REPEATS = 5


def peak_mb():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024.0


def field():
    """The values indexed [z, y, x] (x varies fastest, as VTK's image data
    wants it), computed one plane of z at a time to keep the memory low."""
    import numpy as np
    t = -1.0 + np.arange(SIDE) * (2.0 / (SIDE - 1))
    x, y = t[np.newaxis, :], t[:, np.newaxis]
    squares = x * x + y * y
    waves = 0.2 * np.sin(6 * x) * np.cos(5 * y)
    values = np.empty((SIDE, SIDE, SIDE), dtype=np.float32)
    for k, z in enumerate(t):
        values[k] = (squares + z * z) + waves
    return values


def image_data(values):
    import vtk
    from vtk.util import numpy_support
    image = vtk.vtkImageData()
    image.SetDimensions(SIDE, SIDE, SIDE)
    image.SetOrigin(-1.0, -1.0, -1.0)
    image.SetSpacing(*(2.0 / (SIDE - 1),) * 3)
    array = numpy_support.numpy_to_vtk(values.ravel(), deep=1)
    array.SetName("v")
    image.GetPointData().SetScalars(array)
    return image


def timed(run):
    """Median and best wall time of REPEATS runs after a warm-up, in ms."""
    result = run()
    times = []
    for _ in range(REPEATS):
        start = time.perf_counter()
        result = run()
        times.append((time.perf_counter() - start) * 1000.0)
    return statistics.median(times), min(times), result


def vtk_counts(output):
    return output.GetNumberOfPoints(), output.GetNumberOfCells()


def run_engine_case(name):
    import vtk
    values = field()
    image = image_data(values)
    baseline = peak_mb()
    threads = 1
    if name.endswith("/2"):
        threads = 2
        name = name[:-2]
    vtk.vtkSMPTools.Initialize(threads)

    def update(algorithm):
        def run():
            algorithm.Modified()
            algorithm.Update()
            return vtk_counts(algorithm.GetOutput())
        return run

    if name in ("vtkMarchingCubes", "vtkFlyingEdges3D", "vtkFlyingEdges3D sweep"):
        algorithm = getattr(vtk, name.split()[0])()
        algorithm.SetInputData(image)
        algorithm.SetValue(0, LEVEL)
        algorithm.ComputeNormalsOff()
        algorithm.ComputeGradientsOff()
        algorithm.ComputeScalarsOff()
        run = update(algorithm)
        if name.endswith("sweep"):
            def run():
                for step in range(10):
                    algorithm.SetValue(0, 0.3 + step * 0.4 / 9)
                    algorithm.Update()
                return vtk_counts(algorithm.GetOutput())
        median, best, (points, cells) = timed(run)
    elif name in ("vtkCutter", "vtkCutter moved", "vtkFlyingEdgesPlaneCutter",
                  "vtkFlyingEdgesPlaneCutter moved"):
        plane = vtk.vtkPlane()
        plane.SetNormal(*NORMAL)
        plane.SetOrigin(*ORIGIN)
        if name.startswith("vtkCutter"):
            algorithm = vtk.vtkCutter()
            algorithm.SetCutFunction(plane)
        else:
            algorithm = vtk.vtkFlyingEdgesPlaneCutter()
            algorithm.SetPlane(plane)
            algorithm.ComputeNormalsOff()
        algorithm.SetInputData(image)
        run = update(algorithm)
        if name.endswith("moved"):
            origins = [ORIGIN, MOVED_ORIGIN]

            def run(step=[0]):
                step[0] += 1
                plane.SetOrigin(*origins[step[0] % 2])
                algorithm.Update()
                return vtk_counts(algorithm.GetOutput())
        median, best, (points, cells) = timed(run)
    elif name == "skimage marching_cubes":
        from skimage import measure
        spacing = (2.0 / (SIDE - 1),) * 3

        def run():
            verts, faces, _, _ = measure.marching_cubes(values, LEVEL, spacing=spacing)
            return len(verts), len(faces)
        median, best, (points, cells) = timed(run)
    else:
        raise SystemExit("unknown case " + name)
    print(json.dumps({"median_ms": median, "best_ms": best, "points": points,
                      "triangles": cells, "peak_MB": peak_mb(), "baseline_MB": baseline}))


def run_quillon_case(bench, name):
    output = subprocess.run(
        [bench, "--benchmark_filter=^" + name + "$", "--benchmark_format=json",
         "--benchmark_repetitions=%d" % REPEATS, "--benchmark_report_aggregates_only=true"],
        check=True, capture_output=True, text=True).stdout
    runs = json.loads(output)["benchmarks"]
    by_aggregate = {run["aggregate_name"]: run for run in runs}
    median = by_aggregate["median"]
    return {"median_ms": median["real_time"], "best_ms": None,
            "points": int(median.get("points", 0)), "triangles": int(median.get("triangles", 0)),
            "peak_MB": median.get("peak_MB"), "baseline_MB": None}


def run_in_process(name):
    output = subprocess.run([sys.executable, os.path.abspath(__file__), "--case", name],
                            check=True, capture_output=True, text=True).stdout
    return json.loads(output.strip().splitlines()[-1])


GROUPS = [
    ("level surface, one thread", "BM_LevelSurface256/1",
     ["vtkMarchingCubes", "vtkFlyingEdges3D", "skimage marching_cubes"]),
    ("level surface, two threads", "BM_LevelSurface256/2", ["vtkFlyingEdges3D/2"]),
    ("ten levels from 0.3 to 0.7, two threads", "BM_LevelSweep256/2",
     ["vtkFlyingEdges3D sweep/2"]),
    ("cross section, one thread", "BM_CrossSection256/1",
     ["vtkCutter", "vtkFlyingEdgesPlaneCutter"]),
    ("cross section, two threads", "BM_CrossSection256/2",
     ["vtkCutter/2", "vtkFlyingEdgesPlaneCutter/2"]),
    ("cross section moved along its normal, two threads", "BM_CrossSectionMoved256/2",
     ["vtkCutter moved/2", "vtkFlyingEdgesPlaneCutter moved/2"]),
]


def row(name, figures, reference=None):
    ratio = ""
    if reference:
        ratio = "%.2f" % (figures["median_ms"] / reference)
    peak = "" if figures["peak_MB"] is None else "%.0f" % figures["peak_MB"]
    baseline = "" if figures["baseline_MB"] is None else "%.0f" % figures["baseline_MB"]
    print("| %s | %.1f | %s | %d | %d | %s | %s |" % (
        name, figures["median_ms"], ratio, figures["points"], figures["triangles"], peak,
        baseline))


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "--case":
        run_engine_case(sys.argv[2])
        return
    bench = sys.argv[1] if len(sys.argv) > 1 else "build/bench/quillon_bench"
    print("| case | median ms | ratio to Quillon | points | triangles | peak MB | baseline MB |")
    print("|---|---|---|---|---|---|---|")
    for title, quillon_case, engine_cases in GROUPS:
        print("| **%s** | | | | | | |" % title)
        ours = run_quillon_case(bench, quillon_case)
        row("Quillon " + quillon_case, ours)
        for case in engine_cases:
            row(case, run_in_process(case), ours["median_ms"])


if __name__ == "__main__":
    main()
