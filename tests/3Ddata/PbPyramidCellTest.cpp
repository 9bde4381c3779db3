#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

namespace {

class PbPyramidCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords) { m_cell.set(0, m_ids, coords.data()); }
    PbPyramidCell m_cell;
    int m_ids[5] = {0, 1, 2, 3, 4};
};

// Base 2 x 2 at z = 0, apex above the centre of the base.
const Coords s_centred = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 1, 2}};

} // namespace

// With the weights of the model, (r, s, t) maps to base(r, s) (1 - t) + apex t.
TEST_F(PbPyramidCellTest, NewtonLocatesWithTheApexWeight) {
    fill(s_centred);
    SbVec3f pcoord;
    SbVec3f point = SbVec3f(0.4f, 1.4f, 0) * 0.75f + SbVec3f(1, 1, 2) * 0.25f;
    EXPECT_EQ(m_cell.locatePoint(point, 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.2f, 0.7f, 0.25f), 1e-3f));
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(1, 1, 2.5f), 0, pcoord), 0);
    EXPECT_NEAR(pcoord[2], 1.25f, 1e-3f);
}
