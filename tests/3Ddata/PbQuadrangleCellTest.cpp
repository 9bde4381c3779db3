#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

class PbQuadrangleCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbQuadrangleCell& cell, const Coords& coords, bool hasZ = true) {
        cell.set(0, m_ids, coords.data(), hasZ);
    }
    int m_ids[4] = {0, 1, 2, 3};
};

// The bilinear map of the quadrangle, written out independently.
SbVec3f bilinear(const Coords& p, float r, float s) {
    return (1 - r) * (1 - s) * p[0] + r * (1 - s) * p[1] + r * s * p[2] + (1 - r) * s * p[3];
}

} // namespace

TEST_F(PbQuadrangleCellTest, NewtonFindsTheParametricCoordinatesOfADistortedQuadrangle) {
    PbQuadrangleCell cell;
    Coords coords = {{0, 0, 0}, {2, 0, 0}, {3, 2, 0}, {0, 1, 0}};
    fill(cell, coords, false);
    SbVec3f pcoord;
    for (float r : {0.1f, 0.3f, 0.9f}) {
        for (float s : {0.05f, 0.6f, 1.0f}) {
            ASSERT_EQ(cell.locatePoint(bilinear(coords, r, s), 0.001f, pcoord), 1);
            EXPECT_NEAR(pcoord[0], r, 1e-3f);
            EXPECT_NEAR(pcoord[1], s, 1e-3f);
            EXPECT_EQ(pcoord[2], 0.0f);
        }
    }
    EXPECT_EQ(cell.locatePoint(bilinear(coords, 1.2f, 0.5f), 0, pcoord), 0);
    EXPECT_NEAR(pcoord[0], 1.2f, 1e-3f);
    EXPECT_EQ(cell.locatePoint(bilinear(coords, 1.2f, 0.5f), 0.25f, pcoord), 1);
}

TEST_F(PbQuadrangleCellTest, UsesTheTwoAxesItsNormalDoesNotDominate) {
    PbQuadrangleCell cell;
    Coords coords = {{5, 0, 0}, {5, 1, 0}, {5, 1, 1}, {5, 0, 1}};
    fill(cell, coords);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.75f, 0), 1e-3f));
    // Mean diagonal sqrt(2): points within sqrt(2)/3 of the plane are kept.
    EXPECT_EQ(cell.locatePoint(SbVec3f(5.45f, 0.25f, 0.75f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(4.5f, 0.25f, 0.75f), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.75f, 0), 1e-3f));

    // Without z the same nodes collapse onto a segment of the x,y plane.
    fill(cell, coords, false);
    EXPECT_EQ(cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, pcoord), 0);

    // Normal (1, 0, 1): the lower axis (x) is dropped, y and z are used.
    fill(cell, {{0, 0, 1}, {0, 1, 1}, {1, 1, 0}, {1, 0, 0}});
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-3f));
}

TEST_F(PbQuadrangleCellTest, SharedEdgeAndTolerance) {
    PbQuadrangleCell left, right;
    fill(left, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, false);
    fill(right, {{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}}, false);
    SbVec3f onEdge(1, 0.5f, 0), pcoord;
    EXPECT_EQ(left.locatePoint(onEdge, 0, pcoord), 1);
    EXPECT_EQ(right.locatePoint(onEdge, 0, pcoord), 1);
    EXPECT_EQ(left.locatePoint(onEdge, -0.01f, pcoord), 0);
    EXPECT_EQ(right.locatePoint(onEdge, -0.01f, pcoord), 0);
}

TEST_F(PbQuadrangleCellTest, DegenerateQuadrangleLocatesNothing) {
    PbQuadrangleCell cell;
    fill(cell, Coords(4, SbVec3f(1, 2, 3)));
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 2, 3), 10.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_EQ(cell.getArea(), 0.0f);
}

TEST_F(PbQuadrangleCellTest, AreaIsHalfTheCrossProductOfTheDiagonals) {
    PbQuadrangleCell cell;
    fill(cell, {{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {0, 2, 0}});
    EXPECT_FLOAT_EQ(cell.getArea(), 8.0f);
    fill(cell, {{0, 0, 0}, {3, 0, 0}, {2, 2, 0}, {1, 2, 0}});
    EXPECT_FLOAT_EQ(cell.getArea(), 4.0f);
    EXPECT_FLOAT_EQ(cell.getLongestEdgeLength(), 3.0f);
}

TEST_F(PbQuadrangleCellTest, PrintsTheCellLines) {
    PbQuadrangleCell cell;
    int ids[4] = {10, 11, 21, 20};
    Coords coords = {{0, 0, 0}, {1.5f, 0, 0}, {1.5f, 2, 0.25f}, {0, 2, -1}};
    cell.set(7, ids, coords.data());
    EXPECT_EQ(celltest::printed(cell),
              "=====================print cell informations ==================== \n"
              "PbCell:: m_numFaces = 1\n"
              "PbCell:: m_numEdges = 4\n"
              "PbCell:: m_numNodes = 4\n"
              "PbCell:: m_index = 7\n"
              "PbCell:: node 10 : 0.000000 0.000000 0.000000\n"
              "PbCell:: node 11 : 1.500000 0.000000 0.000000\n"
              "PbCell:: node 21 : 1.500000 2.000000 0.250000\n"
              "PbCell:: node 20 : 0.000000 2.000000 -1.000000\n");
}
