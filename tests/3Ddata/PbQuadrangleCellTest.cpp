#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

namespace {

class PbQuadrangleCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords, bool hasZ = true) { m_cell.set(0, m_ids, coords.data(), hasZ); }
    PbQuadrangleCell m_cell;
    int m_ids[4] = {0, 1, 2, 3};
    SbVec3f m_pcoord;
};

// The bilinear map of the quadrangle, written out independently.
SbVec3f bilinear(const Coords& p, float r, float s) {
    return (1 - r) * (1 - s) * p[0] + r * (1 - s) * p[1] + r * s * p[2] + (1 - r) * s * p[3];
}

} // namespace

TEST_F(PbQuadrangleCellTest, NewtonInvertsTheBilinearMap) {
    Coords coords = {{0, 0, 0}, {2, 0, 0}, {3, 2, 0}, {0, 1, 0}};
    fill(coords, false);
    for (float r : {0.1f, 0.9f}) {
        for (float s : {0.05f, 0.6f, 1.0f}) {
            ASSERT_EQ(m_cell.locatePoint(bilinear(coords, r, s), 0.001f, m_pcoord), 1);
            EXPECT_TRUE(m_pcoord.equals(SbVec3f(r, s, 0), 1e-3f));
        }
    }
    EXPECT_EQ(m_cell.locatePoint(bilinear(coords, 1.2f, 0.5f), 0, m_pcoord), 0);
    EXPECT_NEAR(m_pcoord[0], 1.2f, 1e-3f);
    EXPECT_EQ(m_cell.locatePoint(bilinear(coords, 1.2f, 0.5f), 0.25f, m_pcoord), 1);
}

TEST_F(PbQuadrangleCellTest, UsesTheTwoAxesItsNormalDoesNotDominate) {
    Coords coords = {{5, 0, 0}, {5, 1, 0}, {5, 1, 1}, {5, 0, 1}};
    fill(coords);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.25f, 0.75f, 0), 1e-3f));
    // Mean diagonal sqrt(2): points within sqrt(2)/3 of the plane are kept.
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(5.45f, 0.25f, 0.75f), 0, m_pcoord), 1);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(4.5f, 0.25f, 0.75f), 0, m_pcoord), 0);
    // Without z the same nodes collapse onto a segment of the x,y plane.
    fill(coords, false);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, m_pcoord), 0);
    // Normal (1, 0, 1): the lower axis (x) is dropped, y and z are used.
    fill({{0, 0, 1}, {0, 1, 1}, {1, 1, 0}, {1, 0, 0}});
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, m_pcoord), 1);
    EXPECT_TRUE(m_pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-3f));
}

TEST_F(PbQuadrangleCellTest, AreaIsHalfTheCrossProductOfTheDiagonals) {
    fill({{0, 0, 0}, {3, 0, 0}, {2, 2, 0}, {1, 2, 0}});
    EXPECT_FLOAT_EQ(m_cell.getArea(), 4.0f);
    EXPECT_FLOAT_EQ(m_cell.getLongestEdgeLength(), 3.0f);
}
