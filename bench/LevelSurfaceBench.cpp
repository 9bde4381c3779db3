// Level surfaces and cross sections of a 256 x 256 x 256 regular grid over
// [-1, 1]^3 holding v = x^2 + y^2 + z^2 + 0.2 sin(6x) cos(5y).  The argument
// of each benchmark is the number of threads allowed.  Counters: the points
// and triangles of the surface, and the peak resident memory of the process
// so far (run one benchmark per process for a clean figure).
// bench/compare_level_surface.py runs the same cases with VTK and
// scikit-image beside these.
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>

#include "3Ddata/PiLevelSurface.h"

#include <benchmark/benchmark.h>
#include <tbb/global_control.h>

#include <sys/resource.h>

#include <cmath>
#include <vector>

namespace {

const int s_side = 256;

struct Field {
    PbRegularCartesianGrid3D grid{s_side, s_side, s_side, -1, -1, -1, 1, 1, 1};
    std::vector<float> values;

    Field() {
        values.resize(size_t(s_side) * s_side * s_side);
        size_t node = 0;
        for (int i = 0; i < s_side; ++i)
            for (int j = 0; j < s_side; ++j)
                for (int k = 0; k < s_side; ++k) {
                    double x = -1.0 + i * (2.0 / (s_side - 1));
                    double y = -1.0 + j * (2.0 / (s_side - 1));
                    double z = -1.0 + k * (2.0 / (s_side - 1));
                    values[node++] = static_cast<float>(x * x + y * y + z * z +
                                                        0.2 * std::sin(6 * x) * std::cos(5 * y));
                }
    }
};

const Field& field() {
    static const Field s_field;
    return s_field;
}

double peakMegabytes() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024.0;
}

void setCounters(benchmark::State& state, int points, int triangles) {
    state.counters["points"] = points;
    state.counters["triangles"] = triangles;
    state.counters["peak_MB"] = peakMegabytes();
}

// The surface's topology and coordinates, without the scene-graph kit.
void BM_LevelSurfaceExtraction256(benchmark::State& state) {
    tbb::global_control threads(tbb::global_control::max_allowed_parallelism, state.range(0));
    const Field& f = field();
    PiLevelSurface surface;
    std::vector<SbVec3f> coords;
    PiLevelSurface::Request request;
    request.mesh = &f.grid;
    request.field.values = f.values.data();
    request.level = 0.5f;
    request.style = PiLevelSurface::FACES;
    for (auto _ : state) {
        surface.build(request);
        coords.resize(surface.getNumPoints());
        surface.getPoints().computeCoords(f.grid, coords.data());
        benchmark::DoNotOptimize(coords.data());
    }
    setCounters(state, surface.getNumPoints(), surface.getNumFaces());
}
BENCHMARK(BM_LevelSurfaceExtraction256)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace
