#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbHexahedronMesh3D.h>
#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

#include "3Ddata/PiLevelSurface.h"
#include "MeshTestHelpers.h"
#include "support/LibraryTest.h"
#include "support/VolumeBlock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <set>

namespace {

using meshtest::BlockCells;
using Polygon = std::vector<int>;
using Edge = std::pair<int, int>;

// The faces of the surface as polygons: the triangles of each strip (every
// other one turned, as strips draw them) or the faces as they are.
std::vector<Polygon> polygonsOf(const PiLevelSurface& surface) {
    std::vector<Polygon> polygons;
    for (const Polygon& run : meshtest::runsOf(surface.getCoordIndex())) {
        if (surface.getStyle() == PiLevelSurface::FACES)
            polygons.push_back(run);
        else
            for (size_t i = 0; i + 2 < run.size(); ++i)
                polygons.push_back(i % 2 ? Polygon{run[i + 1], run[i], run[i + 2]}
                                         : Polygon{run[i], run[i + 1], run[i + 2]});
    }
    return polygons;
}

// For every mesh edge, the cells that have it.
std::map<Edge, std::set<int>> edgeCells(const PbMesh3D& mesh) {
    std::map<Edge, std::set<int>> cells;
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const PbCell* cell = mesh.getCell(c);
        const int* nodes = cell->getNodeIndexPtr();
        for (int e = 0; e < cell->getNumEdges(); ++e) {
            const int* ends = cell->getNodesLocalIndexOfEdge(e);
            cells[std::minmax(nodes[ends[0]], nodes[ends[1]])].insert(c);
        }
    }
    return cells;
}

PiLevelSurface::Outcome build(PiLevelSurface& surface, const PbMesh3D& mesh, const float* values,
                              float level, PiLevelSurface::Style style, bool cellByCell = false,
                              bool towardsHigher = true) {
    PiLevelSurface::Request request;
    request.mesh = &mesh;
    request.field.values = values;
    request.level = level;
    request.style = style;
    request.cellByCell = cellByCell;
    request.towardsHigher = towardsHigher;
    return surface.build(request);
}

// The properties every level surface has: one point per cut edge, on it at
// the level; every face on edges of one cell; and, for a surface that stays
// inside the mesh, closed and consistently oriented: each side of a face is
// met once in each direction.
void expectSurfaceProperties(const PbMesh3D& mesh, const std::vector<float>& values, float level,
                             const PiLevelSurface& surface, bool closed) {
    std::map<Edge, std::set<int>> cellsOf = edgeCells(mesh);
    std::set<Edge> cut, seen;
    for (const auto& entry : cellsOf)
        if ((values[entry.first.first] > level) != (values[entry.first.second] > level))
            cut.insert(entry.first);
    std::vector<SbVec3f> coords(surface.getNumPoints());
    surface.getPoints().computeCoords(mesh, coords.data());
    std::vector<float> pointValues(surface.getNumPoints());
    surface.getPoints().computeValues(values.data(), pointValues.data());
    for (int p = 0; p < surface.getNumPoints(); ++p) {
        int low = surface.getPoints().getNodes()[2 * p],
            high = surface.getPoints().getNodes()[2 * p + 1];
        float t = surface.getPoints().getParams()[p];
        ASSERT_LT(low, high);
        ASSERT_TRUE(cut.count({low, high})) << "point " << p << " is not on a cut edge";
        EXPECT_TRUE(seen.insert({low, high}).second) << "edge " << low << "-" << high;
        EXPECT_GE(t, 0.0f);
        EXPECT_LE(t, 1.0f);
        EXPECT_NEAR(pointValues[p], level, 1e-5f);
        SbVec3f a = mesh.getNodeCoord(low), b = mesh.getNodeCoord(high);
        EXPECT_LT((coords[p] - (a + (b - a) * t)).length(), 1e-5f);
    }
    EXPECT_EQ(seen, cut);

    std::map<Edge, int> sides;
    for (const Polygon& polygon : polygonsOf(surface)) {
        std::set<int> common;
        for (size_t i = 0; i < polygon.size(); ++i) {
            const int* nodes = &surface.getPoints().getNodes()[2 * polygon[i]];
            const std::set<int>& cells = cellsOf[{nodes[0], nodes[1]}];
            if (i == 0)
                common = cells;
            std::set<int> both;
            std::set_intersection(common.begin(), common.end(), cells.begin(), cells.end(),
                                  std::inserter(both, both.end()));
            common.swap(both);
            ++sides[{polygon[i], polygon[(i + 1) % polygon.size()]}];
        }
        EXPECT_FALSE(common.empty()) << "a face is not on the edges of one cell";
    }
    if (!closed)
        return;
    for (const auto& side : sides) {
        EXPECT_EQ(side.second, 1) << "side " << side.first.first << "-" << side.first.second;
        auto reverse = sides.find({side.first.second, side.first.first});
        EXPECT_TRUE(reverse != sides.end() && reverse->second == 1)
            << "open side " << side.first.first << "-" << side.first.second;
    }
}

// Values at random in [0, 1) with the block's boundary nodes at 0, so that
// the surface of a level in (0, 1) stays inside.
std::vector<float> randomInsideValues(const meshtest::VolumeBlock& block, int n, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    std::vector<float> values(block.numNodes);
    for (int node = 0; node < block.numNodes; ++node) {
        float x = block.x[node], y = block.y[node], z = block.z[node];
        bool boundary = std::min({x, y, z}) <= 0.0f || std::max({x, y, z}) >= float(n);
        values[node] = boundary ? 0.0f : value(random);
    }
    return values;
}

// The block as an indexed mesh, and as a mesh of its one cell kind when
// there is such a mesh class.
std::vector<std::unique_ptr<PbMesh3D>> meshesOf(const meshtest::VolumeBlock& block,
                                                BlockCells kind) {
    std::vector<std::unique_ptr<PbMesh3D>> meshes;
    const float *x = block.x.data(), *y = block.y.data(), *z = block.z.data();
    meshes.push_back(std::make_unique<PbIndexedMesh3D>(block.numNodes, x, y, z, block.numCells,
                                                       block.types.data(), block.cells.data()));
    if (kind == BlockCells::TETRAHEDRA)
        meshes.push_back(std::make_unique<PbTetrahedronMesh3D>(block.numNodes, x, y, z,
                                                               block.numCells, block.cells.data()));
    if (kind == BlockCells::HEXAHEDRA)
        meshes.push_back(std::make_unique<PbHexahedronMesh3D>(block.numNodes, x, y, z,
                                                              block.numCells, block.cells.data()));
    return meshes;
}

class PiLevelSurfaceTest : public LibraryTest {};

} // namespace

TEST_F(PiLevelSurfaceTest, RandomFieldsGiveClosedSurfacesOnEdgesOfOneCell) {
    const int n = 5;
    for (BlockCells kind : {BlockCells::TETRAHEDRA, BlockCells::HEXAHEDRA, BlockCells::PYRAMIDS,
                            BlockCells::WEDGES, BlockCells::MIXED})
        for (unsigned seed = 1; seed <= 4; ++seed)
            for (auto style : {PiLevelSurface::STRIPS, PiLevelSurface::FACES}) {
                SCOPED_TRACE("kind " + std::to_string(int(kind)) + " seed " + std::to_string(seed) +
                             " style " + std::to_string(style));
                meshtest::VolumeBlock block = meshtest::makeVolumeBlock(n, kind, 0.2f, seed);
                std::vector<float> values = randomInsideValues(block, n, seed);
                for (const auto& mesh : meshesOf(block, kind)) {
                    PiLevelSurface surface;
                    ASSERT_EQ(build(surface, *mesh, values.data(), 0.5f, style),
                              PiLevelSurface::BUILT);
                    EXPECT_GT(surface.getNumFaces(), 0);
                    expectSurfaceProperties(*mesh, values, 0.5f, surface, true);
                }
            }
}

namespace {

struct GridCase {
    const char* name;
    std::unique_ptr<PbGrid3D> grid;
};

// The grid kinds on 6 x 8 x 9 nodes: regular, rectilinear with uneven
// steps, curvilinear with moved nodes, and curvilinear mirrored along x
// (its first cell in the mirrored node order).
std::vector<GridCase> gridCases() {
    const int nx = 6, ny = 8, nz = 9;
    std::vector<GridCase> grids;
    grids.push_back({"regular", std::make_unique<PbRegularCartesianGrid3D>(
                                    nx, ny, nz, -1.0f, 0.0f, 2.0f, 1.0f, 3.0f, 4.0f)});
    std::vector<float> axes[3];
    for (int axis = 0, n = 0; axis < 3; ++axis, n = 0)
        for (int size : {nx, ny, nz})
            if (n++ == axis)
                for (int i = 0; i < size; ++i)
                    axes[axis].push_back(0.3f * i * i + i);
    grids.push_back(
        {"rectilinear", std::make_unique<PbParalCartesianGrid3D>(nx, ny, nz, axes[0].data(),
                                                                 axes[1].data(), axes[2].data())});
    std::mt19937 random(3);
    std::uniform_real_distribution<float> jitter(-0.2f, 0.2f);
    for (float xSign : {1.0f, -1.0f}) {
        std::vector<float> x, y, z;
        for (int i = 0; i < nx; ++i)
            for (int j = 0; j < ny; ++j)
                for (int k = 0; k < nz; ++k) {
                    x.push_back(xSign * (i + jitter(random)));
                    y.push_back(j + jitter(random));
                    z.push_back(k + 0.5f * i + jitter(random));
                }
        grids.push_back(
            {xSign > 0 ? "curvilinear" : "mirrored",
             std::make_unique<PbCartesianGrid3D>(nx, ny, nz, x.data(), y.data(), z.data())});
    }
    return grids;
}

void expectSameSurface(const PiLevelSurface& grid, const PiLevelSurface& cells) {
    EXPECT_EQ(grid.getPoints().getNodes(), cells.getPoints().getNodes());
    EXPECT_EQ(grid.getPoints().getParams(), cells.getPoints().getParams());
    EXPECT_EQ(grid.getCoordIndex(), cells.getCoordIndex());
    EXPECT_EQ(grid.hasSkippedNaN(), cells.hasSkippedNaN());
}

} // namespace

TEST_F(PiLevelSurfaceTest, GridWalkGivesTheCellByCellSurface) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    for (const GridCase& entry : gridCases()) {
        const PbGrid3D& mesh = *entry.grid;
        std::vector<float> values(mesh.getNumNodes());
        for (float& v : values)
            v = value(random);
        std::vector<float> withNaN = values;
        for (int node = 5; node < mesh.getNumNodes(); node += 37)
            withNaN[node] = NAN;
        for (const std::vector<float>* field : {&values, &withNaN})
            for (auto style : {PiLevelSurface::STRIPS, PiLevelSurface::FACES})
                for (bool towardsHigher : {true, false}) {
                    SCOPED_TRACE(std::string(entry.name) + " style " + std::to_string(style) +
                                 (towardsHigher ? " higher" : " lower") +
                                 (field == &withNaN ? " NaN" : ""));
                    PiLevelSurface grid, cells;
                    build(grid, mesh, field->data(), 0.4f, style, false, towardsHigher);
                    build(cells, mesh, field->data(), 0.4f, style, true, towardsHigher);
                    EXPECT_GT(grid.getNumFaces(), 100);
                    expectSameSurface(grid, cells);
                    if (field == &values)
                        expectSurfaceProperties(mesh, values, 0.4f, grid, false);
                }
    }
}

// Values that are sums of terms along the axes, the terms rising, falling
// or neither along k (so the rows are searched or read), and a level that
// the values reach at some nodes.
TEST_F(PiLevelSurfaceTest, GridWalkOfAxisSumsGivesTheCellByCellSurface) {
    PbRegularCartesianGrid3D mesh(7, 6, 10, 0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f);
    const float a[7] = {0.0f, 0.1f, 0.3f, 0.2f, 0.5f, 0.4f, 0.6f};
    const float b[6] = {0.0f, 0.25f, 0.1f, 0.4f, 0.3f, 0.2f};
    const float rising[10] = {-1.0f, -0.7f, -0.5f, -0.5f, -0.2f, 0.0f, 0.1f, 0.4f, 0.6f, 0.9f};
    const float falling[10] = {0.9f, 0.6f, 0.4f, 0.1f, 0.0f, -0.2f, -0.5f, -0.5f, -0.7f, -1.0f};
    const float neither[10] = {0.2f, -0.7f, 0.5f, -0.5f, -0.2f, 0.0f, 0.1f, -0.4f, 0.6f, 0.1f};
    for (const float* c : {rising, falling, neither})
        for (float level : {0.37f, 0.5f}) {
            SCOPED_TRACE("level " + std::to_string(level));
            PiLevelSurface::Outcome outcomes[2];
            PiLevelSurface surfaces[2];
            for (int cellByCell = 0; cellByCell < 2; ++cellByCell) {
                PiLevelSurface::Request request;
                request.mesh = &mesh;
                request.field.axisTerms[0] = a;
                request.field.axisTerms[1] = b;
                request.field.axisTerms[2] = c;
                request.level = level;
                request.cellByCell = cellByCell;
                outcomes[cellByCell] = surfaces[cellByCell].build(request);
                if (outcomes[cellByCell] == PiLevelSurface::LEVEL_ON_NODE) {
                    request.levelMayTouchNodes = true;
                    EXPECT_EQ(surfaces[cellByCell].build(request), PiLevelSurface::BUILT);
                }
            }
            EXPECT_EQ(outcomes[0], outcomes[1]);
            EXPECT_EQ(outcomes[0] == PiLevelSurface::LEVEL_ON_NODE, level == 0.5f);
            EXPECT_GT(surfaces[0].getNumFaces(), 10);
            expectSameSurface(surfaces[0], surfaces[1]);
        }
}

// The counter-clockwise side faces the higher values, on a grid in the
// reference node order and on a mirrored one alike, or the lower ones.
TEST_F(PiLevelSurfaceTest, FacesLookTowardsTheChosenSide) {
    const SbVec3f gradient(1.0f, 0.3f, 0.1f);
    for (const GridCase& entry : gridCases()) {
        const PbGrid3D& mesh = *entry.grid;
        std::vector<float> values(mesh.getNumNodes());
        for (int node = 0; node < mesh.getNumNodes(); ++node)
            values[node] = gradient.dot(mesh.getNodeCoord(node));
        float level = 0.5f * (values.front() + values.back()) + 0.01f;
        for (bool towardsHigher : {true, false}) {
            SCOPED_TRACE(std::string(entry.name) + (towardsHigher ? " higher" : " lower"));
            PiLevelSurface surface;
            build(surface, mesh, values.data(), level, PiLevelSurface::FACES, false, towardsHigher);
            std::vector<SbVec3f> coords(surface.getNumPoints());
            surface.getPoints().computeCoords(mesh, coords.data());
            std::vector<Polygon> polygons = polygonsOf(surface);
            ASSERT_FALSE(polygons.empty());
            for (const Polygon& p : polygons) {
                SbVec3f normal = (coords[p[1]] - coords[p[0]]).cross(coords[p[2]] - coords[p[0]]);
                EXPECT_EQ(normal.dot(gradient) > 0.0f, towardsHigher);
            }
        }
    }
}
