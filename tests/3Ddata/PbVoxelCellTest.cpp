#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

namespace {

class PbVoxelCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
    PbVoxelCell m_cell;
    int m_ids[8] = {0, 1, 3, 2, 4, 5, 7, 6};
};

} // namespace

TEST_F(PbVoxelCellTest, LocatesInClosedFormFromItsBox) {
    m_cell.setBox(9, m_ids, SbVec3f(1, 2, 3), SbVec3f(2, 4, 0.5f));
    EXPECT_EQ(m_cell.getNodeCoord(7), SbVec3f(1, 6, 3.5f));
    SbVec3f pcoord;
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1.5f, 5, 3.1f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.75f, 0.2f), 1e-6f));
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1.5f, 5, 2.9f), 0, pcoord), 0);
    EXPECT_NEAR(pcoord[2], -0.2f, 1e-5f);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1.5f, 5, 2.9f), 0.25f, pcoord), 1);
    EXPECT_FLOAT_EQ(m_cell.getVolume(), 4.0f);
}

TEST_F(PbVoxelCellTest, PrintsItsExtent) {
    m_cell.setBox(4, m_ids, SbVec3f(0, -1, 2), SbVec3f(0.5f, 2, 1));
    EXPECT_EQ(meshtest::printed(m_cell),
              "=====================print cell informations ==================== \n"
              "PbCell:: m_numFaces = 6\n"
              "PbCell:: m_numEdges = 12\n"
              "PbCell:: m_numNodes = 8\n"
              "PbCell:: m_index = 4\n"
              "PbCell:: node 0 : 0.000000 -1.000000 2.000000\n"
              "PbCell:: node 1 : 0.500000 -1.000000 2.000000\n"
              "PbCell:: node 3 : 0.500000 1.000000 2.000000\n"
              "PbCell:: node 2 : 0.000000 1.000000 2.000000\n"
              "PbCell:: node 4 : 0.000000 -1.000000 3.000000\n"
              "PbCell:: node 5 : 0.500000 -1.000000 3.000000\n"
              "PbCell:: node 7 : 0.500000 1.000000 3.000000\n"
              "PbCell:: node 6 : 0.000000 1.000000 3.000000\n"
              "PbVoxelCell:: xmin xmax : 0.000000 0.500000\n"
              "PbVoxelCell:: ymin ymax : -1.000000 1.000000\n"
              "PbVoxelCell:: zmin zmax : 2.000000 3.000000\n");
}
