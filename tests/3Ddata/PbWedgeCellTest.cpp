#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>

using celltest::Coords;

namespace {

class PbWedgeCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords) { m_cell.set(0, m_ids, coords.data()); }
    PbWedgeCell m_cell;
    int m_ids[6] = {0, 1, 2, 3, 4, 5};
};

} // namespace

TEST_F(PbWedgeCellTest, NewtonLocatesAndTestsTheTriangle) {
    fill({{0, 0, 0}, {2, 0, 0}, {0, 2, 0.5f}, {0, 0, 2}, {2.5f, 0, 2}, {0, 2, 2}});
    SbVec3f pcoord;
    for (const SbVec3f& expected :
         {SbVec3f(0.2f, 0.3f, 0.4f), SbVec3f(0.5f, 0.5f, 0.9f), SbVec3f(0.05f, 0.9f, 0.1f)}) {
        ASSERT_EQ(m_cell.locatePoint(celltest::toWorld(m_cell, expected), 0.001f, pcoord), 1);
        EXPECT_TRUE(pcoord.equals(expected, 1e-3f));
    }
    // r and s lie in [0, 1] but 1 - r - s does not.
    SbVec3f beyond(0.8f, 0.8f, 0.5f);
    EXPECT_EQ(m_cell.locatePoint(celltest::toWorld(m_cell, beyond), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(beyond, 1e-3f));
}

TEST_F(PbWedgeCellTest, VolumeOrderingAndCaseIds) {
    fill({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}});
    EXPECT_FLOAT_EQ(m_cell.getVolume(), 0.5f);
    EXPECT_FLOAT_EQ(m_cell.getArea(), 3.0f + std::sqrt(2.0f));
    EXPECT_EQ(m_cell.getOrdering(), 1);
    fill({{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 1}, {1, 0, 1}});
    EXPECT_EQ(m_cell.getOrdering(), 0);
    std::vector<bool> flags(6, true);
    EXPECT_EQ(m_cell.getIsosurfCaseId(flags), 0);
    flags[0] = false;
    EXPECT_EQ(m_cell.getIsosurfCaseId(flags), 62);
}
