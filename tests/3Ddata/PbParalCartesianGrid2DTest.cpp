#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>

#include "3Ddata/MeshTestHelpers.h"

namespace {

class PbParalCartesianGrid2DTest : public meshtest::MeshTest {};

} // namespace

TEST_F(PbParalCartesianGrid2DTest, ColumnAndRowSearchAgreesWithTheCellByCellSearch) {
    // Uneven spacing, a very narrow column next to a wide one, and a row axis
    // that runs backwards.
    const std::vector<float> x = {0.0f, 0.1f, 0.15f, 2.0f, 2.01f, 5.0f};
    const std::vector<float> y = {3.0f, 2.5f, 1.0f, 0.9f, -2.0f};
    PbParalCartesianGrid2D paral;
    paral.setGeometry(int(x.size()), int(y.size()), x.data(), y.data());
    std::vector<SbVec3f> points = meshtest::samplePoints(0.0f, -2.0f, 5.0f, 3.0f, 40);
    for (float xi : x)
        for (float yj : y)
            points.emplace_back(xi, yj, 0.0f);
    for (float tolerance : {0.0f, 0.3f, -0.1f, 2.0f})
        meshtest::expectSameAsTestingEveryCell(paral, points, tolerance);
}

TEST_F(PbParalCartesianGrid2DTest, AHintedSearchSkipsNothingItShouldFind) {
    const float x[] = {0, 1, 2, 3};
    const float y[] = {0, 1, 2};
    PbParalCartesianGrid2D grid;
    grid.setGeometry(4, 3, x, y);
    SbVec3f pcoord;
    const PbCell* hint = grid.getCell(0);
    // Far from the hint and its neighbours: the rest of the grid is searched.
    const PbCell* cell = grid.findContainingCell(SbVec3f(2.5f, 1.5f, 0.0f), 0.0f, pcoord, hint);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->getIndex(), 5);
    EXPECT_EQ(pcoord, SbVec3f(0.5f, 0.5f, 0));
}
