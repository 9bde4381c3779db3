#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

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
        ASSERT_EQ(m_cell.locatePoint(meshtest::toWorld(m_cell, expected), 0.001f, pcoord), 1);
        EXPECT_TRUE(pcoord.equals(expected, 1e-3f));
    }
    // r and s lie in [0, 1] but 1 - r - s does not.
    SbVec3f beyond(0.8f, 0.8f, 0.5f);
    EXPECT_EQ(m_cell.locatePoint(meshtest::toWorld(m_cell, beyond), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(beyond, 1e-3f));
}
