#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"
#include "3Ddata/PiMarchingCase.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

// Base 2 x 2 at z = 0, apex above the centre of the base.
const Coords s_centred = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 1, 2}};

class PbPyramidCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbPyramidCell& cell, const Coords& coords) { cell.set(0, m_ids, coords.data()); }
    int m_ids[5] = {0, 1, 2, 3, 4};
};

} // namespace

TEST_F(PbPyramidCellTest, NewtonLocatesWithTheApexWeight) {
    PbPyramidCell cell;
    fill(cell, s_centred);
    SbVec3f pcoord;
    // With the weights of the model, (r, s, t) maps to
    // base(r, s) (1 - t) + apex t.
    EXPECT_EQ(cell.locatePoint(SbVec3f(1.0f, 1.0f, 1.0f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0.5f), 1e-3f));
    SbVec3f expected(0.2f, 0.7f, 0.25f);
    SbVec3f point = SbVec3f(0.4f, 1.4f, 0) * 0.75f + SbVec3f(1, 1, 2) * 0.25f;
    EXPECT_EQ(cell.locatePoint(point, 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(expected, 1e-3f));
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 2.5f), 0, pcoord), 0);
    EXPECT_NEAR(pcoord[2], 1.25f, 1e-3f);
}

TEST_F(PbPyramidCellTest, SharedBaseAndTolerance) {
    PbPyramidCell up, down;
    fill(up, s_centred);
    fill(down, {{0, 0, 0}, {0, 2, 0}, {2, 2, 0}, {2, 0, 0}, {1, 1, -2}});
    SbVec3f onBase(0.5f, 1.5f, 0), pcoord;
    EXPECT_EQ(up.locatePoint(onBase, 0, pcoord), 1);
    EXPECT_EQ(down.locatePoint(onBase, 0, pcoord), 1);
    EXPECT_EQ(up.locatePoint(onBase, -0.01f, pcoord), 0);
    EXPECT_EQ(down.locatePoint(onBase, -0.01f, pcoord), 0);
}

TEST_F(PbPyramidCellTest, FlatPyramidLocatesNothing) {
    PbPyramidCell cell;
    fill(cell, {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 1, 0}});
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_NEAR(cell.getVolume(), 0.0f, 1e-6f);
}

TEST_F(PbPyramidCellTest, VolumeOrderingAndCaseIds) {
    PbPyramidCell cell;
    fill(cell, s_centred);
    EXPECT_NEAR(cell.getVolume(), 8.0f / 3, 1e-5f);
    EXPECT_NEAR(cell.getArea(), 4 + 4 * 0.5f * 2 * std::sqrt(5.0f), 1e-5f);
    EXPECT_EQ(cell.getOrdering(), 1);
    fill(cell, {{0, 0, 0}, {0, 2, 0}, {2, 2, 0}, {2, 0, 0}, {1, 1, 2}});
    EXPECT_EQ(cell.getOrdering(), 0);

    std::vector<bool> flags(5, true);
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
    flags[4] = false;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 15);
    ASSERT_NE(cell.getMCcase(15), nullptr);
    EXPECT_EQ(cell.getMCcase(15)->getId(), 15);
    EXPECT_EQ(cell.getMCcase(16)->getEdgeStripSet().size(), 4u);
}
