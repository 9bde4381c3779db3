#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

class PbTriangleCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbTriangleCell& cell, const Coords& coords, bool hasZ = true) {
        cell.set(0, m_ids, coords.data(), hasZ);
    }
    int m_ids[3] = {0, 1, 2};
};

} // namespace

TEST_F(PbTriangleCellTest, LocatesInTheXYPlaneIgnoringZWithoutZCoordinates) {
    PbTriangleCell cell;
    fill(cell, {{0, 0, 5}, {2, 0, 5}, {0, 2, 5}}, false);
    EXPECT_EQ(cell.getNodeCoord(1), SbVec3f(2, 0, 0));
    EXPECT_EQ(cell.getProjectionPlane(), 2);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 1.0f, 40.0f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));
    EXPECT_EQ(cell.locatePoint(SbVec3f(1.5f, 1.0f, 0), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.75f, 0.5f, 0), 1e-6f));
}

TEST_F(PbTriangleCellTest, ProjectsOnThePlaneMostFacingTheTriangle) {
    PbTriangleCell cell;
    fill(cell, {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}});
    EXPECT_EQ(cell.getProjectionPlane(), 1);
    EXPECT_TRUE(cell.getNormal().equals(SbVec3f(0, -1, 0), 1e-6f));
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.25f, 0.1f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));

    // Normal (1, 1, 0): the first of the equal components wins.
    fill(cell, {{1, 0, 0}, {0, 1, 0}, {1, 0, 1}});
    EXPECT_EQ(cell.getProjectionPlane(), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-6f));
}

// The point must lie within a third of the mean edge length of the plane.
TEST_F(PbTriangleCellTest, RejectsPointsFarFromItsPlaneWithZCoordinates) {
    PbTriangleCell cell;
    Coords coords = {{0, 0, 0}, {3, 0, 0}, {0, 4, 0}}; // mean edge 4
    fill(cell, coords);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1.3f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, -1.3f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1.4f), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(1.0f / 3, 0.25f, 0), 1e-6f));
    fill(cell, coords, false);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 100), 0, pcoord), 1);
}

TEST_F(PbTriangleCellTest, SharedEdgeAndTolerance) {
    PbTriangleCell lower, upper;
    fill(lower, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, false);
    fill(upper, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, false);
    SbVec3f onEdge(0.5f, 0.5f, 0), pcoord;
    EXPECT_EQ(lower.locatePoint(onEdge, 0, pcoord), 1);
    EXPECT_EQ(upper.locatePoint(onEdge, 0, pcoord), 1);
    EXPECT_EQ(lower.locatePoint(onEdge, -0.01f, pcoord), 0);
    EXPECT_EQ(upper.locatePoint(onEdge, -0.01f, pcoord), 0);
    EXPECT_EQ(lower.locatePoint(SbVec3f(0.2f, 0.2f, 0), -0.1f, pcoord), 1);
    EXPECT_EQ(lower.locatePoint(SbVec3f(0.05f, 0.5f, 0), -0.1f, pcoord), 0);
    EXPECT_EQ(lower.locatePoint(SbVec3f(-0.05f, 0.5f, 0), 0.1f, pcoord), 1);
}

TEST_F(PbTriangleCellTest, DegenerateTriangleLocatesNothing) {
    PbTriangleCell cell;
    fill(cell, {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    EXPECT_EQ(cell.isValid(), 0);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_EQ(cell.getArea(), 0.0f);
    fill(cell, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(cell.isValid(), 1);
}

TEST_F(PbTriangleCellTest, MeasuresAndSurfaceAnswers) {
    PbTriangleCell cell;
    fill(cell, {{0, 0, 0}, {0, 3, 0}, {0, 0, 4}});
    EXPECT_FLOAT_EQ(cell.getArea(), 6.0f);
    EXPECT_EQ(cell.getVolume(), 0.0f);
    EXPECT_FLOAT_EQ(cell.getLongestEdgeLength(), 5.0f);
    EXPECT_EQ(cell.getOrdering(), 1);
    EXPECT_EQ(cell.getMCcase(1), nullptr);
    std::vector<bool> flags = {true, true, false};
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
}

TEST_F(PbTriangleCellTest, PrintsItsProjectionMatrix) {
    PbTriangleCell cell;
    int ids[3] = {4, 9, 2};
    Coords coords = {{1, 1, 0}, {3, 1, 0}, {1, 5, 0}};
    cell.set(11, ids, coords.data(), false);
    EXPECT_EQ(celltest::printed(cell),
              "=====================print cell informations ==================== \n"
              "PbCell:: m_numFaces = 1\n"
              "PbCell:: m_numEdges = 3\n"
              "PbCell:: m_numNodes = 3\n"
              "PbCell:: m_index = 11\n"
              "PbCell:: node 4 : 1.000000 1.000000 0.000000\n"
              "PbCell:: node 9 : 3.000000 1.000000 0.000000\n"
              "PbCell:: node 2 : 1.000000 5.000000 0.000000\n"
              "m_coordToPcoordMatrix a,b,c,d 0.500000 -0.000000 -0.000000 0.250000\n"
              "m_translatePcoord x,y 0.500000 0.250000\n");
}
