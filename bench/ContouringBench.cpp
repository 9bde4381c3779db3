// Isolines of f(x, y) = sin(2x) cos(3y) + 0.3 exp(-(x^2 + y^2)) sampled on a
// 2048 x 2048 regular grid over [-3, 3]^2, for the 20 isovalues spaced
// evenly strictly inside [min, max].  bench/contourpy_compare.py times the
// same work with contourpy and prints the two side by side.
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/graph/PbIsovaluesList.h>

#include "3Ddata/PiContouring.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

const int s_gridSize = 2048;
const int s_numIsovalues = 20;

struct Field {
    PbRegularCartesianGrid2D grid;
    std::vector<float> values;
    PbIsovaluesList isovalues;

    Field() {
        grid.setGeometry(s_gridSize, s_gridSize, -3.0f, -3.0f, 3.0f, 3.0f);
        values.resize(grid.getNumNodes());
        for (int n = 0; n < grid.getNumNodes(); ++n) {
            const SbVec3f p = grid.getNodeCoord(n);
            const double x = p[0], y = p[1];
            values[n] = static_cast<float>(std::sin(2 * x) * std::cos(3 * y) +
                                           0.3 * std::exp(-(x * x + y * y)));
        }
        const auto range = std::minmax_element(values.begin(), values.end());
        const double min = *range.first, max = *range.second;
        std::vector<float> levels;
        for (int k = 1; k <= s_numIsovalues; ++k)
            levels.push_back(static_cast<float>(min + k * (max - min) / (s_numIsovalues + 1)));
        isovalues.setIrregularIsoList(s_numIsovalues, levels.data());
    }
};

const Field& field() {
    static const Field f;
    return f;
}

void BM_Isolines2048(benchmark::State& state) {
    const Field& f = field();
    PiContouring contouring;
    contouring.setIsovaluesList(&f.isovalues);
    int numLines = 0;
    for (auto _ : state) {
        f.grid.meshContouring(&contouring, nullptr);
        contouring.computeContouringPoints(f.values.data(), nullptr);
        numLines = contouring.getIsolines().getNumLines();
        benchmark::DoNotOptimize(numLines);
    }
    state.counters["points"] = contouring.getNumCrossingPoints();
    state.counters["lines"] = numLines;
}
BENCHMARK(BM_Isolines2048)->Unit(benchmark::kMillisecond);

} // namespace
