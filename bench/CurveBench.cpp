// Curves at scale: the smoothing spline through 100,000 points, and the
// rebuild of a curve kit of 100,000 points drawn as a filled polyline or
// filled stairs with a marker at every tenth point.
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoCurve.h>

#include "graph/PiCubicSpline.h"

#include <Inventor/actions/SoCallbackAction.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

const int s_numPoints = 100000;

std::vector<SbVec2f> wave(void) {
    std::vector<SbVec2f> points;
    for (int i = 0; i < s_numPoints; ++i) {
        const float x = static_cast<float>(i) * 0.01f;
        points.emplace_back(x, std::sin(x) + 0.3f * std::sin(7.0f * x));
    }
    return points;
}

void BM_SplineThrough100kPoints(benchmark::State& state) {
    const std::vector<SbVec2f> points = wave();
    PiCubicSpline spline;
    for (auto _ : state) {
        spline.setPoints({});
        spline.setPoints(points);
        benchmark::DoNotOptimize(spline.getCurve().data());
    }
    state.SetItemsProcessed(state.iterations() * s_numPoints);
}
BENCHMARK(BM_SplineThrough100kPoints)->Unit(benchmark::kMillisecond);

void rebuildCurve(benchmark::State& state, PoCurve::CurveRep rep) {
    PoQuillon::init();
    const std::vector<SbVec2f> points = wave();
    auto* curve = new PoCurve(s_numPoints, points.data(), rep);
    curve->ref();
    curve->isCurveFilled = TRUE;
    curve->markerFilterType = PoCurve::INDEX_PERIOD;
    curve->markerIndexPeriod = 10;
    SoCallbackAction action;
    for (auto _ : state) {
        curve->touchKit();
        action.apply(curve);
    }
    state.SetItemsProcessed(state.iterations() * s_numPoints);
    curve->unref();
    PoQuillon::finish();
}

void BM_FilledPolylineWithMarkers(benchmark::State& state) {
    rebuildCurve(state, PoCurve::CURVE_POLYLINE);
}
BENCHMARK(BM_FilledPolylineWithMarkers)->Unit(benchmark::kMillisecond);

void BM_FilledStairsWithMarkers(benchmark::State& state) {
    rebuildCurve(state, PoCurve::CURVE_STAIRS_X);
}
BENCHMARK(BM_FilledStairsWithMarkers)->Unit(benchmark::kMillisecond);

} // namespace
