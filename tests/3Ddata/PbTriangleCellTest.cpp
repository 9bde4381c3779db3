#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

namespace {

class PbTriangleCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords, bool hasZ = true) { m_cell.set(0, m_ids, coords.data(), hasZ); }
    PbTriangleCell m_cell;
    int m_ids[3] = {0, 1, 2};
    SbVec3f m_pcoord;
};

} // namespace

TEST_F(PbTriangleCellTest, ProjectsOnThePlaneMostFacingTheTriangle) {
    fill({{0, 0, 5}, {2, 0, 5}, {0, 2, 5}}, false);
    EXPECT_EQ(m_cell.getProjectionPlane(), 2);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(0.5f, 1.0f, 40.0f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));

    fill({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}});
    EXPECT_EQ(m_cell.getProjectionPlane(), 1);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(0.25f, 0.1f, 0.5f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));

    // Normal (1, 1, 0): the first of the equal components wins.
    fill({{1, 0, 0}, {0, 1, 0}, {1, 0, 1}});
    EXPECT_EQ(m_cell.getProjectionPlane(), 0);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-6f));
}

// With z coordinates the point must lie within a third of the mean edge
// length of the plane; without them the projected test alone decides.
TEST_F(PbTriangleCellTest, RejectsPointsFarFromItsPlaneOnlyWithZCoordinates) {
    Coords coords = {{0, 0, 0}, {3, 0, 0}, {0, 4, 0}}; // mean edge 4
    fill(coords);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1, 1, 1.3f), 0, m_pcoord), 1);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1, 1, -1.3f), 0, m_pcoord), 1);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1, 1, 1.4f), 0, m_pcoord), 0);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(1.0f / 3, 0.25f, 0), 1e-6f));
    fill(coords, false);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1, 1, 100), 0, m_pcoord), 1);
}

TEST_F(PbTriangleCellTest, PrintsItsProjectionMatrix) {
    int ids[3] = {4, 9, 2};
    Coords coords = {{1, 1, 0}, {3, 1, 0}, {1, 5, 0}};
    m_cell.set(11, ids, coords.data(), false);
    EXPECT_EQ(meshtest::printed(m_cell),
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
