#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

class PbTetrahedronCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbTetrahedronCell& cell, const Coords& coords) { cell.set(0, m_ids, coords.data()); }
    int m_ids[4] = {0, 1, 2, 3};
};

const Coords s_sheared = {{1, 1, 1}, {3, 1, 1}, {2, 3, 1}, {1.5f, 1.5f, 4}};

} // namespace

TEST_F(PbTetrahedronCellTest, LocatesInClosedForm) {
    PbTetrahedronCell cell;
    fill(cell, s_sheared);
    SbVec3f pcoord;
    const SbVec3f expected(0.2f, 0.3f, 0.1f);
    // node0 + r (node1-node0) + s (node2-node0) + t (node3-node0)
    SbVec3f point = s_sheared[0] + 0.2f * SbVec3f(2, 0, 0) + 0.3f * SbVec3f(1, 2, 0) +
                    0.1f * SbVec3f(0.5f, 0.5f, 3);
    EXPECT_EQ(cell.locatePoint(point, 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(expected, 1e-6f));
    EXPECT_EQ(cell.locatePoint(s_sheared[0] + SbVec3f(2, 2, 0), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 1, 0), 1e-6f));
}

TEST_F(PbTetrahedronCellTest, RefillingForgetsTheCachedInverse) {
    PbTetrahedronCell cell;
    fill(cell, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord), 1);
    fill(cell, {{10, 0, 0}, {12, 0, 0}, {10, 2, 0}, {10, 0, 2}});
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(10.4f, 0.4f, 0.4f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.2f, 0.2f, 0.2f), 1e-5f));
}

TEST_F(PbTetrahedronCellTest, SharedFaceAndTolerance) {
    PbTetrahedronCell below, above;
    fill(below, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    fill(above, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}});
    SbVec3f onFace(0.25f, 0.25f, 0.5f), pcoord;
    EXPECT_EQ(below.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(above.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(below.locatePoint(onFace, -0.01f, pcoord), 0);
    EXPECT_EQ(above.locatePoint(onFace, -0.01f, pcoord), 0);
    EXPECT_EQ(below.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), -0.15f, pcoord), 1);
    EXPECT_EQ(below.locatePoint(SbVec3f(0.1f, 0.2f, 0.2f), -0.15f, pcoord), 0);
}

TEST_F(PbTetrahedronCellTest, FlatTetrahedronLocatesNothing) {
    PbTetrahedronCell cell;
    fill(cell, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.3f, 0.3f, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_EQ(cell.getVolume(), 0.0f);
}

TEST_F(PbTetrahedronCellTest, VolumeAreaAndOrdering) {
    PbTetrahedronCell cell;
    fill(cell, {{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {0, 0, 4}});
    EXPECT_FLOAT_EQ(cell.getVolume(), 4.0f);
    EXPECT_FLOAT_EQ(cell.getArea(), 3.0f + 4.0f + 6.0f + 0.5f * std::sqrt(144.0f + 64 + 36));
    EXPECT_EQ(cell.getOrdering(), 1);
    fill(cell, {{0, 0, 0}, {0, 3, 0}, {2, 0, 0}, {0, 0, 4}});
    EXPECT_EQ(cell.getOrdering(), 0);
    EXPECT_FLOAT_EQ(cell.getVolume(), 4.0f);
}

TEST_F(PbTetrahedronCellTest, CaseIdsReadFlagsAtMeshNodeIds) {
    PbTetrahedronCell cell;
    int ids[4] = {7, 2, 5, 0};
    Coords coords = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    cell.set(0, ids, coords.data());
    std::vector<bool> flags(8, false);
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
    flags[7] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 1);
    flags[0] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 9);
    flags[2] = flags[5] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
}

TEST_F(PbTetrahedronCellTest, PrintHeadsItsMatrix) {
    PbTetrahedronCell cell;
    fill(cell, {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {0, 0, 1}});
    SbVec3f pcoord;
    cell.locatePoint(SbVec3f(0, 0, 0), 0, pcoord);
    std::string text = celltest::printed(cell);
    EXPECT_NE(text.find("PbCell:: m_numFaces = 4\nPbCell:: m_numEdges = 6\n"), std::string::npos);
    EXPECT_NE(text.find("PbCell:: node 3 : 0.000000 0.000000 1.000000\n"
                        "PbTetrahedronCell:: affine transformation matrix ...\n"
                        "PbTetrahedronCell:: 0.500000 0.000000 0.000000\n"
                        "PbTetrahedronCell:: 0.000000 0.250000 0.000000\n"),
              std::string::npos)
        << text;
}
