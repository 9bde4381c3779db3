// Point location at scale: 100,000 random points located in an unstructured
// mesh of about a million tetrahedra (through the spatial index over the
// cell boxes) and in 200 x 200 x 200 grids (closed form for the axis-aligned
// kinds, the spatial index for the curvilinear one) and in flat 2000 x 2000
// surface grids, with the cost and the memory of building the index.
#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

#include "3Ddata/PiCellBoxIndex.h"
#include "support/TetBlock.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

const int s_numPoints = 100000;
// 56^3 hexahedra of six tetrahedra each: 1,053,696 cells.
const int s_tetBlockSide = 56;
const int s_gridSide = 200;
// Surface grids of 2000 x 2000 nodes.
const int s_surfaceSide = 2000;

const PbTetrahedronMesh3D& tetMesh() {
    static const meshtest::TetBlock block = meshtest::makeTetBlock(s_tetBlockSide, 0.2f);
    static const PbTetrahedronMesh3D mesh(block.numNodes, block.x.data(), block.y.data(),
                                          block.z.data(), block.numCells, block.cells.data(), 0);
    return mesh;
}

std::vector<SbVec3f> randomPoints(const SbBox3f& box) {
    std::mt19937 random(2);
    std::vector<SbVec3f> points;
    SbVec3f lo = box.getMin(), hi = box.getMax();
    for (int n = 0; n < s_numPoints; ++n) {
        SbVec3f p;
        for (int axis = 0; axis < 3; ++axis)
            p[axis] = std::uniform_real_distribution<float>(lo[axis], hi[axis])(random);
        points.push_back(p);
    }
    return points;
}

void locateAll(benchmark::State& state, const PbMesh& mesh) {
    std::vector<SbVec3f> points = randomPoints(mesh.getBoundingBox());
    SbVec3f pcoord;
    mesh.findContainingCell(points[0], 0.0f, pcoord); // builds what location needs
    int found = 0;
    for (auto _ : state) {
        found = 0;
        for (const SbVec3f& p : points)
            found += mesh.findContainingCell(p, 0.0f, pcoord) != nullptr;
        benchmark::DoNotOptimize(found);
    }
    state.counters["found"] = found;
    state.counters["cells"] = mesh.getNumCells();
    state.SetItemsProcessed(state.iterations() * s_numPoints);
}

void BM_TetMesh1M_Locate100k(benchmark::State& state) {
    locateAll(state, tetMesh());
}

void BM_TetMesh1M_BuildIndex(benchmark::State& state) {
    const PbTetrahedronMesh3D& mesh = tetMesh();
    size_t bytes = 0;
    int buckets = 0;
    for (auto _ : state) {
        PiCellBoxIndex index(mesh);
        bytes = index.getMemoryUsed();
        buckets = index.getNumBuckets();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["index_MB"] = bytes / 1048576.0;
    state.counters["buckets"] = buckets;
}

// For scale: the same location by testing every cell in order, on 100
// points only.
void BM_TetMesh1M_TestEveryCell100(benchmark::State& state) {
    const PbTetrahedronMesh3D& mesh = tetMesh();
    std::vector<SbVec3f> points = randomPoints(mesh.getBoundingBox());
    points.resize(100);
    SbVec3f pcoord;
    for (auto _ : state)
        for (const SbVec3f& p : points)
            for (int c = 0; c < mesh.getNumCells(); ++c)
                if (mesh.getCell(c)->locatePoint(p, 0.0f, pcoord))
                    break;
    state.SetItemsProcessed(state.iterations() * 100);
}

void BM_RegularGrid200_Locate100k(benchmark::State& state) {
    PbRegularCartesianGrid3D grid(s_gridSide, s_gridSide, s_gridSide, 0, 0, 0, 1, 1, 1);
    locateAll(state, grid);
}

void BM_ParalGrid200_Locate100k(benchmark::State& state) {
    std::vector<float> axis;
    for (int n = 0; n < s_gridSide; ++n)
        axis.push_back(n * (1.0f + 0.002f * n));
    PbParalCartesianGrid3D grid(s_gridSide, s_gridSide, s_gridSide, axis.data(), axis.data(),
                                axis.data(), 0);
    locateAll(state, grid);
}

void BM_CartesianGrid200_Locate100k(benchmark::State& state) {
    static const meshtest::BlockNodes nodes = meshtest::makeBlockNodes(s_gridSide - 1, 0.2f);
    PbCartesianGrid3D grid(s_gridSide, s_gridSide, s_gridSide, nodes.x.data(), nodes.y.data(),
                           nodes.z.data(), 0);
    locateAll(state, grid);
    state.counters["index_MB"] = PiCellBoxIndex(grid).getMemoryUsed() / 1048576.0;
}

void BM_RegularGrid2D2000_Locate100k(benchmark::State& state) {
    PbRegularCartesianGrid2D grid(0);
    grid.setGeometry(s_surfaceSide, s_surfaceSide, 0, 0, 1, 1);
    locateAll(state, grid);
}

void BM_ParalGrid2D2000_Locate100k(benchmark::State& state) {
    std::vector<float> axis;
    for (int n = 0; n < s_surfaceSide; ++n)
        axis.push_back(n * (1.0f + 0.0002f * n));
    PbParalCartesianGrid2D grid(0);
    grid.setGeometry(s_surfaceSide, s_surfaceSide, axis.data(), axis.data());
    locateAll(state, grid);
}

} // namespace

BENCHMARK(BM_TetMesh1M_Locate100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TetMesh1M_BuildIndex)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TetMesh1M_TestEveryCell100)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_RegularGrid200_Locate100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParalGrid200_Locate100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CartesianGrid200_Locate100k)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_RegularGrid2D2000_Locate100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParalGrid2D2000_Locate100k)->Unit(benchmark::kMillisecond);
