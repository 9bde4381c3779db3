#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"
#include "3Ddata/PiMarchingCase.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

const Coords s_unit = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};

class PbWedgeCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbWedgeCell& cell, const Coords& coords) { cell.set(0, m_ids, coords.data()); }
    int m_ids[6] = {0, 1, 2, 3, 4, 5};
};

} // namespace

TEST_F(PbWedgeCellTest, NewtonLocatesAndTestsTheTriangle) {
    PbWedgeCell cell;
    fill(cell, {{0, 0, 0}, {2, 0, 0}, {0, 2, 0.5f}, {0, 0, 2}, {2.5f, 0, 2}, {0, 2, 2}});
    SbVec3f pcoord;
    for (const SbVec3f& expected :
         {SbVec3f(0.2f, 0.3f, 0.4f), SbVec3f(0.5f, 0.5f, 0.9f), SbVec3f(0.05f, 0.9f, 0.1f)}) {
        ASSERT_EQ(cell.locatePoint(celltest::toWorld(cell, expected), 0.001f, pcoord), 1);
        EXPECT_TRUE(pcoord.equals(expected, 1e-3f));
    }
    // r and s lie in [0, 1] but 1 - r - s does not.
    SbVec3f beyond(0.8f, 0.8f, 0.5f);
    EXPECT_EQ(cell.locatePoint(celltest::toWorld(cell, beyond), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(beyond, 1e-3f));
}

TEST_F(PbWedgeCellTest, SharedFaceAndTolerance) {
    PbWedgeCell lower, other;
    fill(lower, s_unit);
    fill(other, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}});
    SbVec3f onFace(0.5f, 0.5f, 0.5f), pcoord;
    EXPECT_EQ(lower.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(other.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(lower.locatePoint(onFace, -0.01f, pcoord), 0);
    EXPECT_EQ(other.locatePoint(onFace, -0.01f, pcoord), 0);
}

TEST_F(PbWedgeCellTest, FlatWedgeLocatesNothing) {
    PbWedgeCell cell;
    Coords flat = s_unit;
    for (int node = 3; node < 6; ++node)
        flat[node][2] = 0;
    fill(cell, flat);
    SbVec3f pcoord;
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.2f, 0.2f, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
}

TEST_F(PbWedgeCellTest, VolumeOrderingAndCaseIds) {
    PbWedgeCell cell;
    fill(cell, s_unit);
    EXPECT_FLOAT_EQ(cell.getVolume(), 0.5f);
    EXPECT_FLOAT_EQ(cell.getArea(), 0.5f + 0.5f + 1 + 1 + std::sqrt(2.0f));
    EXPECT_EQ(cell.getOrdering(), 1);
    fill(cell, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 1}, {1, 0, 1}});
    EXPECT_EQ(cell.getOrdering(), 0);
    std::vector<bool> flags(6, true);
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
    flags[0] = false;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 62);
    EXPECT_EQ(cell.getMCcase(62)->getId(), 62);
}
