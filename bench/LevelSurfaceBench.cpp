// Level surfaces and cross sections of a 256 x 256 x 256 regular grid over
// [-1, 1]^3 holding v = x^2 + y^2 + z^2 + 0.2 sin(6x) cos(5y), level 0.5:
// the extraction alone, and the kits' rebuilds (the level surface, a sweep
// of ten levels, a cross section and the same plane moved along its
// normal).  The argument of each benchmark is the number of threads
// allowed.  Counters: the points
// and triangles of the surface, and the peak resident memory of the process
// so far (run one benchmark per process for a clean figure).
// bench/compare_level_surface.py runs the same cases with VTK and
// scikit-image beside these.
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>
#include <Quillon/3Ddata/PoMeshLevelSurf.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/PiLevelSurface.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoSeparator.h>

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

Field& field() {
    static Field s_field;
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
    Field& f = field();
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

// A scene holding the grid (with the field as value set 0) and the kits
// under test, rebuilt by traversing it.
class KitScene {
public:
    KitScene() {
        PoQuillon::init();
        Field& f = field();
        f.grid.addValuesSet(0, f.values.data(), "v");
        m_root = new SoSeparator;
        m_root->ref();
    }
    ~KitScene() {
        m_root->unref();
        PoQuillon::finish();
    }
    template <class Kit> Kit* add() {
        auto* kit = new Kit;
        kit->setMesh(&field().grid);
        m_root->addChild(kit);
        return kit;
    }
    void clear() { m_root->removeAllChildren(); }
    void rebuild() {
        SoCallbackAction traversal;
        traversal.apply(m_root);
    }
    // The points and triangles that a kit drew into its part.
    void count(SoBaseKit* kit, const char* part, int& points, int& triangles) {
        SoNode* group = kit->getPart(part, FALSE);
        points = triangles = 0;
        if (!group)
            return;
        SoSearchAction search;
        search.setType(SoCoordinate3::getClassTypeId());
        search.apply(group);
        points = search.getPath()
                     ? static_cast<SoCoordinate3*>(search.getPath()->getTail())->point.getNum()
                     : 0;
        search.setType(SoIndexedShape::getClassTypeId());
        search.apply(group);
        if (!search.getPath())
            return;
        const SoMFInt32& index =
            static_cast<SoIndexedShape*>(search.getPath()->getTail())->coordIndex;
        for (int i = 0, run = 0; i < index.getNum(); ++i, ++run)
            if (index[i] < 0) {
                triangles += run - 2;
                run = -1;
            }
    }

private:
    SoSeparator* m_root;
};

void setKitCounters(benchmark::State& state, KitScene& scene, SoBaseKit* kit, const char* part) {
    int points = 0, triangles = 0;
    scene.count(kit, part, points, triangles);
    setCounters(state, points, triangles);
}

// Rebuilds a new kit, set up by setup, at each iteration.
template <class Kit, class Setup>
void rebuildNewKits(benchmark::State& state, const char* part, Setup setup) {
    tbb::global_control threads(tbb::global_control::max_allowed_parallelism, state.range(0));
    KitScene scene;
    Kit* kit = nullptr;
    for (auto _ : state) {
        scene.clear();
        kit = scene.add<Kit>();
        setup(kit);
        scene.rebuild();
    }
    setKitCounters(state, scene, kit, part);
}

// A full rebuild of a new level-surface kit: topology, coordinates, shape.
void BM_LevelSurface256(benchmark::State& state) {
    rebuildNewKits<PoMeshLevelSurf>(state, "groupLevelSurf", [](PoMeshLevelSurf* kit) {
        kit->valuesIndex = 0;
        kit->levelValue = 0.5f;
    });
}
BENCHMARK(BM_LevelSurface256)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// Ten levels from 0.3 to 0.7, one after the other, on the same kit.
void BM_LevelSweep256(benchmark::State& state) {
    tbb::global_control threads(tbb::global_control::max_allowed_parallelism, state.range(0));
    KitScene scene;
    auto* kit = scene.add<PoMeshLevelSurf>();
    kit->valuesIndex = 0;
    for (auto _ : state)
        for (int step = 0; step < 10; ++step) {
            kit->levelValue = 0.3f + step * (0.4f / 9);
            scene.rebuild();
        }
    setKitCounters(state, scene, kit, "groupLevelSurf");
}
BENCHMARK(BM_LevelSweep256)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

SbPlane cuttingPlane(float height) {
    SbVec3f normal(0.2f, 0.3f, 1.0f);
    normal.normalize();
    return SbPlane(normal, SbVec3f(0.0f, 0.0f, height));
}

// A new cross-section kit for the plane of normal (0.2, 0.3, 1) through
// (0, 0, 0.1): the distances to the plane and the section.
void BM_CrossSection256(benchmark::State& state) {
    rebuildNewKits<PoMeshCrossSection>(state, "groupCrossSection", [](PoMeshCrossSection* kit) {
        kit->plane = cuttingPlane(0.1f);
    });
}
BENCHMARK(BM_CrossSection256)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// The same plane moved along its normal, back and forth, on one kit.
void BM_CrossSectionMoved256(benchmark::State& state) {
    tbb::global_control threads(tbb::global_control::max_allowed_parallelism, state.range(0));
    KitScene scene;
    auto* kit = scene.add<PoMeshCrossSection>();
    kit->plane = cuttingPlane(0.1f);
    scene.rebuild();
    int move = 0;
    for (auto _ : state) {
        kit->plane = cuttingPlane(++move % 2 ? 0.2f : 0.1f);
        scene.rebuild();
    }
    setKitCounters(state, scene, kit, "groupCrossSection");
}
BENCHMARK(BM_CrossSectionMoved256)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace
