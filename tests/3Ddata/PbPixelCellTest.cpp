#include <Quillon/3Ddata/PbPixelCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

namespace {

class PbPixelCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
    PbPixelCell m_cell;
    int m_ids[4] = {6, 7, 9, 8};
};

} // namespace

TEST_F(PbPixelCellTest, LocatesInClosedFormFromItsBox) {
    m_cell.setBox(3, m_ids, SbVec3f(1, 2, 0.5f), SbVec3f(4, 0.5f, 0));
    EXPECT_EQ(m_cell.getNodeCoord(2), SbVec3f(5, 2.5f, 0.5f));
    SbVec3f pcoord;
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(2, 2.4f, 0.5f), 0, pcoord), 1);
    EXPECT_FLOAT_EQ(pcoord[0], 0.25f);
    EXPECT_FLOAT_EQ(pcoord[1], 0.8f);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(5.2f, 2.4f, 0), 0, pcoord), 0);
    EXPECT_FLOAT_EQ(pcoord[0], 1.05f);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(5.2f, 2.4f, 0), 0.05f, pcoord), 1);
    EXPECT_FLOAT_EQ(m_cell.getArea(), 2.0f);
}

TEST_F(PbPixelCellTest, PrintsItsExtent) {
    m_cell.setBox(2, m_ids, SbVec3f(-1, 0.5f, 0), SbVec3f(2, 0.25f, 0));
    EXPECT_EQ(meshtest::printed(m_cell),
              "=====================print cell informations ==================== \n"
              "PbCell:: m_numFaces = 1\n"
              "PbCell:: m_numEdges = 4\n"
              "PbCell:: m_numNodes = 4\n"
              "PbCell:: m_index = 2\n"
              "PbCell:: node 6 : -1.000000 0.500000 0.000000\n"
              "PbCell:: node 7 : 1.000000 0.500000 0.000000\n"
              "PbCell:: node 9 : 1.000000 0.750000 0.000000\n"
              "PbCell:: node 8 : -1.000000 0.750000 0.000000\n"
              "PbPixelCell:: xmin xmax : -1.000000 1.000000\n"
              "PbPixelCell:: ymin ymax : 0.500000 0.750000\n");
}
