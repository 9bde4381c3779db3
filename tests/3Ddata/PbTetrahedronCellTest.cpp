#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

namespace {

class PbTetrahedronCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords) { m_cell.set(0, m_ids, coords.data()); }
    PbTetrahedronCell m_cell;
    int m_ids[4] = {7, 2, 5, 0};
    SbVec3f m_pcoord;
};

} // namespace

TEST_F(PbTetrahedronCellTest, LocatesInClosedFormAndForgetsTheInverseOnRefill) {
    fill({{1, 1, 1}, {3, 1, 1}, {2, 3, 1}, {1.5f, 1.5f, 4}});
    // node0 + r (node1 - node0) + s (node2 - node0) + t (node3 - node0)
    SbVec3f point = SbVec3f(1, 1, 1) + 0.2f * SbVec3f(2, 0, 0) + 0.3f * SbVec3f(1, 2, 0) +
                    0.1f * SbVec3f(0.5f, 0.5f, 3);
    EXPECT_EQ(m_cell.locatePoint(point, 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.2f, 0.3f, 0.1f), 1e-6f));
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(3, 3, 1), 0, m_pcoord), 0);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.5f, 1, 0), 1e-6f));

    fill({{10, 0, 0}, {12, 0, 0}, {10, 2, 0}, {10, 0, 2}});
    EXPECT_EQ(m_cell.locatePoint(point, 0, m_pcoord), 0);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(10.4f, 0.4f, 0.4f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.2f, 0.2f, 0.2f), 1e-5f));
}

TEST_F(PbTetrahedronCellTest, PrintFollowsTheCellLinesWithItsMatrix) {
    fill({{0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {0, 0, 1}});
    m_cell.locatePoint(SbVec3f(0, 0, 0), 0, m_pcoord);
    std::string text = meshtest::printed(m_cell);
    EXPECT_NE(text.find("PbCell:: node 0 : 0.000000 0.000000 1.000000\n"
                        "PbTetrahedronCell:: affine transformation matrix ...\n"
                        "PbTetrahedronCell:: 0.500000 0.000000 0.000000\n"
                        "PbTetrahedronCell:: 0.000000 0.250000 0.000000\n"),
              std::string::npos)
        << text;
}
