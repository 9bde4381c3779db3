// Isolines, colour bands and labelled lines of f(x, y) = sin(2x) cos(3y) +
// 0.3 exp(-(x^2 + y^2)) sampled on a 2048 x 2048 regular grid over
// [-3, 3]^2, for the 20 isovalues spaced evenly strictly inside [min, max].
// bench/contourpy_compare.py times the same work with contourpy and prints
// the two side by side.
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshContouring.h>
#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/PiContouring.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

namespace {

const int s_gridSize = 2048;
const int s_numIsovalues = 20;

struct Field {
    PbRegularCartesianGrid2D grid;
    std::vector<float> values;
    PbIsovaluesList isovalues;
    PbLinearDataMapping mapping;

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
        grid.addValuesSet(0, values.data(), "f");
        mapping.setValues(static_cast<float>(min), SbColor(0, 0, 1), static_cast<float>(max),
                          SbColor(1, 0, 0));
    }
};

// The process's peak resident memory in megabytes since the last reset.
double peakMemoryMB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.compare(0, 6, "VmHWM:") == 0)
            return std::stod(line.substr(6)) / 1024.0;
    return 0.0;
}

// Lets the peak resident memory start again from the current use.
void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

const Field& field() {
    static const Field f;
    return f;
}

// Rebuilds the kit once per iteration and reports the peak resident memory,
// in all and over the use before the first rebuild.
void rebuildEachIteration(benchmark::State& state, PoBase* kit) {
    resetPeakMemory();
    const double before = peakMemoryMB();
    double peak = 0.0;
    for (auto _ : state) {
        kit->touchKit();
        peak = std::max(peak, peakMemoryMB());
    }
    state.counters["peak_memory_MB"] = peak;
    state.counters["peak_over_start_MB"] = peak - before;
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

// A filled kit's whole rebuild in colour bands: the band faces cut in the
// grid's cells and their shape, coordinates and material built.
void BM_FilledContouring2048(benchmark::State& state) {
    PoQuillon::init();
    Field& f = const_cast<Field&>(field());
    auto* kit = new PoMeshFilled;
    kit->ref();
    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    kit->setMesh(&f.grid);
    kit->setDataMapping(&f.mapping);
    kit->setIsovaluesList(&f.isovalues);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_CONTOURING;
    rebuildEachIteration(state, kit);
    state.counters["faces"] = kit->getNumContouringFaces();
    kit->unref();
    PoQuillon::finish();
}
BENCHMARK(BM_FilledContouring2048)->Unit(benchmark::kMillisecond);

// The contour lines kit's whole rebuild with labels that no line crosses:
// contouring, placing the labels, cutting the lines around them and
// filling the parts.
void BM_ContourLabels2048(benchmark::State& state) {
    PoQuillon::init();
    Field& f = const_cast<Field&>(field());
    auto* kit = new PoMeshContouring;
    kit->ref();
    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    kit->setMesh(&f.grid);
    kit->setIsovaluesList(&f.isovalues);
    kit->valuesIndex = 0;
    kit->annotIsVisible = TRUE;
    kit->annotCrossStatus = PoMeshContouring::DONT_CROSS_CONTOUR;
    // Texts small enough to fit, often, between lines that crowd this much.
    kit->annotFontSize = 0.01f;
    kit->annotGap = 0.1f;
    rebuildEachIteration(state, kit);
    state.counters["labels"] = kit->getNumAnnotations();
    kit->unref();
    PoQuillon::finish();
}
BENCHMARK(BM_ContourLabels2048)->Unit(benchmark::kMillisecond);

} // namespace
