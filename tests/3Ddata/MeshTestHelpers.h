#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/PoQuillon.h>

#include "support/ErrorRecorder.h"
#include "support/TetBlock.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Helpers shared by the cell and mesh tests.
namespace meshtest {

// Starts the library and records the messages posted meanwhile.
class MeshTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        m_errors = std::make_unique<ErrorRecorder>();
    }
    void TearDown() override {
        m_errors.reset();
        PoQuillon::finish();
    }
    ErrorRecorder& errors() { return *m_errors; }

private:
    std::unique_ptr<ErrorRecorder> m_errors;
};

// The runs of a list between -1 separators (a last run without its -1
// too).
template <typename List> std::vector<std::vector<int>> runsOf(const List& list) {
    std::vector<std::vector<int>> runs(1);
    for (int value : list) {
        if (value < 0)
            runs.emplace_back();
        else
            runs.back().push_back(value);
    }
    if (runs.back().empty())
        runs.pop_back();
    return runs;
}

// Node coordinates of a cell in local order.
using Coords = std::vector<SbVec3f>;

inline std::vector<int> toVector(const PbArrayOfInt& array) {
    return std::vector<int>(array.get(), array.get() + array.getNum());
}

inline std::vector<int> ownerCells(const PbMesh& mesh, int node) {
    PbArrayOfInt cells;
    mesh.getNodeOwnerCellsInd(node, cells);
    return toVector(cells);
}

inline std::vector<int> cellNodes(const PbMesh& mesh, int cell) {
    PbArrayOfInt nodes;
    mesh.getCell(cell)->getNodesIndex(nodes);
    return toVector(nodes);
}

// What print writes, for a mesh or a cell.
template <typename Printable> std::string printed(const Printable& object) {
    FILE* fp = tmpfile();
    object.print(fp);
    std::string text(static_cast<size_t>(ftell(fp)), '\0');
    rewind(fp);
    size_t read = fread(&text[0], 1, text.size(), fp);
    fclose(fp);
    text.resize(read);
    return text;
}

// The point of the cell at parametric coordinates pcoord, from the cell's
// own weights (whose values are checked separately).
inline SbVec3f toWorld(const PbCell& cell, const SbVec3f& pcoord) {
    float weights[PbCell::MAX_NODES];
    cell.getWeight(pcoord, weights);
    SbVec3f point(0.0f, 0.0f, 0.0f);
    for (int node = 0; node < cell.getNumNodes(); ++node)
        point += weights[node] * cell.getNodeCoord(node);
    return point;
}

inline bool isFinite(const SbVec3f& v) {
    return v[0] == v[0] && v[1] == v[1] && v[2] == v[2] && v.length() < 1e30f;
}

// Node coordinates (x, y) of a numX by numY grid in node order (j fastest).
struct GridCoords {
    std::vector<float> x, y;
};

template <typename XOf, typename YOf> GridCoords gridCoords(int numX, int numY, XOf xOf, YOf yOf) {
    GridCoords coords;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            coords.x.push_back(xOf(i, j));
            coords.y.push_back(yOf(i, j));
        }
    return coords;
}

// The quadrangles of a numX by numY grid, in cell order and local node order.
inline std::vector<int> gridQuadrangles(int numX, int numY) {
    std::vector<int> cells;
    for (int i = 0; i + 1 < numX; ++i)
        for (int j = 0; j + 1 < numY; ++j)
            for (int node :
                 {i * numY + j, (i + 1) * numY + j, (i + 1) * numY + j + 1, i * numY + j + 1})
                cells.push_back(node);
    return cells;
}

// A quadrangle beside two triangles, whose cells read
//   3---4---5
//   |   | / |
//   0---1---2
namespace mixedsurface {
inline constexpr float x[] = {0, 1, 2, 0, 1, 2};
inline constexpr float y[] = {0, 0, 0, 1, 1, 1};
inline constexpr int types[] = {4, 3, 3};
inline constexpr int cells[] = {0, 1, 4, 3, 1, 2, 5, 1, 5, 4};
} // namespace mixedsurface

// A unit cube (hexahedron 0) with a pyramid on its top, a wedge against its
// x = 1 face and a tetrahedron below its bottom.
namespace mixedvolume {
inline constexpr float x[] = {0, 1, 1, 0, 0, 1, 1, 0, 0.5f, 2, 2, 0};
inline constexpr float y[] = {0, 0, 1, 1, 0, 0, 1, 1, 0.5f, 0, 0, 0};
inline constexpr float z[] = {0, 0, 0, 0, 1, 1, 1, 1, 2, 0, 1, -1};
inline constexpr int types[] = {8, 5, 6, 4};
inline constexpr int cells[] = {0, 1, 2, 3, 4, 5,  6, 7, 4, 5, 6, 7,
                                8, 1, 9, 2, 5, 10, 6, 0, 1, 3, 11};
} // namespace mixedvolume

// The first cell, in index order, that contains the point: what point
// location must find, computed by testing every cell.
inline int locateByTestingEveryCell(const PbMesh& mesh, const SbVec3f& point, float tolerance,
                                    SbVec3f& pcoord) {
    for (int c = 0; c < mesh.getNumCells(); ++c)
        if (mesh.getCell(c)->locatePoint(point, tolerance, pcoord))
            return c;
    return -1;
}

inline int locatedIndex(const PbCell* cell) {
    return cell ? cell->getIndex() : -1;
}

// Random points over the mesh's box enlarged by a tenth, the mesh's nodes,
// and a lattice of the given step over the lattice box (the mesh's box when
// empty), which hits sides and faces where several cells meet.
inline std::vector<SbVec3f> probePoints(const PbMesh& mesh, int count, unsigned seed,
                                        SbBox3f lattice = SbBox3f(), float step = 0.5f) {
    SbBox3f box = mesh.getBoundingBox();
    if (lattice.isEmpty())
        lattice = box;
    std::mt19937 random(seed);
    SbVec3f lo = box.getMin(), hi = box.getMax();
    std::vector<SbVec3f> points;
    for (int n = 0; n < count; ++n) {
        SbVec3f p;
        for (int axis = 0; axis < 3; ++axis) {
            float margin = 0.1f * (hi[axis] - lo[axis]);
            std::uniform_real_distribution<float> along(lo[axis] - margin, hi[axis] + margin);
            p[axis] = along(random);
        }
        points.push_back(p);
    }
    for (int node = 0; node < mesh.getNumNodes(); ++node)
        points.push_back(mesh.getNodeCoord(node));
    SbVec3f first = lattice.getMin(), last = lattice.getMax();
    for (float i = first[0]; i <= last[0]; i += step)
        for (float j = first[1]; j <= last[1]; j += step)
            for (float k = first[2]; k <= last[2]; k += step)
                points.push_back(SbVec3f(i, j, k));
    return points;
}

// Point location finds the cell and parametric coordinates that testing
// every cell in order finds; a search from a hint finds a cell that holds
// the point exactly when there is one.
inline void expectLocationAgreesWithTestingEveryCell(const PbMesh& mesh,
                                                     const std::vector<SbVec3f>& points,
                                                     float tolerance) {
    int found = 0, hint = 0;
    for (const SbVec3f& p : points) {
        SbVec3f expectedPcoord, pcoord;
        int expected = locateByTestingEveryCell(mesh, p, tolerance, expectedPcoord);
        int located = locatedIndex(mesh.findContainingCell(p, tolerance, pcoord));
        ASSERT_EQ(located, expected)
            << "point " << p[0] << " " << p[1] << " " << p[2] << " tolerance " << tolerance;
        if (located >= 0) {
            ++found;
            EXPECT_EQ(pcoord, expectedPcoord);
        }
        hint = (hint + 7) % mesh.getNumCells();
        const PbCell* cell = mesh.findContainingCell(p, tolerance, pcoord, mesh.getCell(hint));
        ASSERT_EQ(cell != nullptr, located >= 0) << "hint " << hint;
        if (cell) {
            EXPECT_TRUE(cell->locatePoint(p, tolerance, pcoord)) << "hint " << hint;
        }
    }
    EXPECT_GT(found, 0);
}

} // namespace meshtest
