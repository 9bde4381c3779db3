#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"

#include <gtest/gtest.h>

using meshtest::Coords;

namespace {

const Coords s_unit = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                       {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

class PbHexahedronCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(const Coords& coords) { m_cell.set(0, m_ids, coords.data()); }
    PbHexahedronCell m_cell;
    int m_ids[8] = {50, 51, 53, 52, 60, 61, 63, 62};
};

} // namespace

TEST_F(PbHexahedronCellTest, NewtonInvertsTheTrilinearMap) {
    // No two faces parallel.
    fill({{0, 0, 0},
          {2, 0, 0.2f},
          {2.5f, 2, 0},
          {0, 1.5f, 0.3f},
          {0.2f, 0.1f, 2},
          {2, 0, 2.5f},
          {2, 2, 2},
          {0, 2, 1.8f}});
    SbVec3f pcoord;
    for (const SbVec3f& expected : {SbVec3f(0.5f, 0.5f, 0.5f), SbVec3f(0.1f, 0.8f, 0.3f),
                                    SbVec3f(0.95f, 0.05f, 0.99f), SbVec3f(0, 1, 0.5f)}) {
        ASSERT_EQ(m_cell.locatePoint(meshtest::toWorld(m_cell, expected), 0.001f, pcoord), 1);
        EXPECT_TRUE(pcoord.equals(expected, 1e-3f)) << expected[0] << " " << expected[1];
    }
    SbVec3f outside(0.5f, 1.3f, 0.5f);
    EXPECT_EQ(m_cell.locatePoint(meshtest::toWorld(m_cell, outside), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(outside, 1e-3f));
    EXPECT_EQ(m_cell.locatePoint(meshtest::toWorld(m_cell, outside), 0.35f, pcoord), 1);

    // Top face pressed onto the bottom one: the Jacobian vanishes.
    Coords flat = s_unit;
    for (int node = 4; node < 8; ++node)
        flat[node][2] = 0;
    fill(flat);
    EXPECT_EQ(m_cell.locatePoint(SbVec3f(0.5f, 0.5f, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(meshtest::isFinite(pcoord));
}
