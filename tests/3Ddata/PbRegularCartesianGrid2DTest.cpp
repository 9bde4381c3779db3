#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>

#include "3Ddata/MeshTestHelpers.h"

namespace {

class PbRegularCartesianGrid2DTest : public meshtest::MeshTest {};

} // namespace

TEST_F(PbRegularCartesianGrid2DTest, APointOnASharedSideBelongsToTheLowerCell) {
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(3, 3, 0.0f, 0.0f, 2.0f, 2.0f);
    SbVec3f pcoord;
    const PbCell* cell = grid.findContainingCell(SbVec3f(1.0f, 1.0f, 0.0f), 0.0f, pcoord);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->getIndex(), 0);
    EXPECT_EQ(pcoord, SbVec3f(1, 1, 0));
    cell = grid.findContainingCell(SbVec3f(1.5f, 0.25f, 0.0f), 0.0f, pcoord);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->getIndex(), 2);
    EXPECT_EQ(pcoord, SbVec3f(0.5f, 0.25f, 0));
    EXPECT_EQ(grid.findContainingCell(SbVec3f(2.1f, 1.0f, 0.0f), 0.0f, pcoord), nullptr);
    EXPECT_NE(grid.findContainingCell(SbVec3f(2.1f, 1.0f, 0.0f), 0.2f, pcoord), nullptr);
}

TEST_F(PbRegularCartesianGrid2DTest, ASurfaceGridIsLocatedInSpace) {
    PbRegularCartesianGrid2D grid;
    const float z[] = {0, 0, 0, 0, 0, 0, 10, 10, 10};
    grid.setGeometry(3, 3, 0.0f, 0.0f, 2.0f, 2.0f, z);
    SbVec3f pcoord;
    // Cell 3 rises from z = 0 to z = 10 along x.
    const PbCell* cell = grid.findContainingCell(SbVec3f(1.5f, 1.5f, 5.0f), 0.0f, pcoord);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->getIndex(), 3);
    EXPECT_NEAR(pcoord[0], 0.5f, 1e-3f);
    EXPECT_EQ(grid.findContainingCell(SbVec3f(1.5f, 1.5f, 50.0f), 0.0f, pcoord), nullptr);
}
