#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/VolumeMeshTestHelpers.h"
#include "support/ErrorRecorder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// Helpers shared by the tests of the surface and line meshes.
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

} // namespace meshtest

namespace meshtest {

// Point location finds, for every point, the cell and parametric
// coordinates that testing every cell in order finds.
inline void expectSameAsTestingEveryCell(const PbMesh& mesh, const std::vector<SbVec3f>& points,
                                         float tolerance) {
    int found = 0;
    for (const SbVec3f& p : points) {
        SbVec3f expectedPcoord, pcoord;
        int expected = locateByTestingEveryCell(mesh, p, tolerance, expectedPcoord);
        const PbCell* cell = mesh.findContainingCell(p, tolerance, pcoord);
        ASSERT_EQ(locatedIndex(cell), expected)
            << "point " << p[0] << " " << p[1] << " tolerance " << tolerance;
        if (cell) {
            ++found;
            EXPECT_EQ(pcoord, expectedPcoord) << "point " << p[0] << " " << p[1];
        }
    }
    EXPECT_GT(found, 0);
}

// Points spread over and around a box: a lattice finer than the cells, which
// hits nodes and sides exactly, plus scattered points.
inline std::vector<SbVec3f> samplePoints(float xmin, float ymin, float xmax, float ymax,
                                         int steps) {
    std::vector<SbVec3f> points;
    float dx = (xmax - xmin) / steps, dy = (ymax - ymin) / steps;
    for (int a = -2; a <= steps + 2; ++a)
        for (int b = -2; b <= steps + 2; ++b)
            points.emplace_back(xmin + a * dx, ymin + b * dy, 0.0f);
    unsigned int state = 12345;
    auto next = [&state]() {
        state = state * 1103515245u + 12345u;
        return float((state >> 8) & 0xFFFF) / 65535.0f;
    };
    for (int k = 0; k < 200; ++k)
        points.emplace_back(xmin + (xmax - xmin) * (1.2f * next() - 0.1f),
                            ymin + (ymax - ymin) * (1.2f * next() - 0.1f), 0.0f);
    return points;
}

} // namespace meshtest
