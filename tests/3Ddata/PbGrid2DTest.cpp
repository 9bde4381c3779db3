#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>

#include "3Ddata/MeshTestHelpers.h"

#include <cmath>

using meshtest::cellNodes;
using meshtest::ownerCells;
using meshtest::toVector;

namespace {

class PbGrid2DTest : public meshtest::MeshTest {
protected:
    // A 3 x 2 grid with x = 10 i and y = j.
    void makeParal(PbParalCartesianGrid2D& grid) {
        const float x[] = {0, 10, 20};
        const float y[] = {0, 1};
        grid.setGeometry(3, 2, x, y);
    }
};

} // namespace

TEST_F(PbGrid2DTest, NumbersNodesAndCellsWithYFastest) {
    PbParalCartesianGrid2D grid;
    makeParal(grid);
    EXPECT_EQ(grid.getNumCells(), 2);
    int i, j, ci, cj;
    grid.getNodeIndices(4, i, j);
    grid.getCellIndices(1, ci, cj);
    EXPECT_EQ((std::vector<int>{i, j, ci, cj}), (std::vector<int>{2, 0, 1, 0}));
    int* ids = grid.getCellNodeIds(1);
    EXPECT_EQ(std::vector<int>(ids, ids + 4), (std::vector<int>{2, 4, 5, 3}));
    EXPECT_EQ(cellNodes(grid, 1), (std::vector<int>{2, 4, 5, 3}));
    EXPECT_EQ(grid.getCell(1)->getNodeCoord(1), SbVec3f(20, 0, 0));
    EXPECT_EQ(grid.getNodeCoord(2, 1), SbVec3f(20, 1, 0));
    EXPECT_EQ(grid.getCell(-1), nullptr);
    EXPECT_EQ(grid.getCell(2), nullptr);

    const float x[] = {0}, y[] = {0, 1, 2};
    grid.setGeometry(1, 3, x, y);
    EXPECT_EQ(grid.getNumNodes(), 3);
    EXPECT_EQ(grid.getNumCells(), 0);
    PbArrayOfInt limit, sizes;
    grid.getLimitIndices(limit, sizes);
    EXPECT_EQ(limit.getNum(), 0);
}

TEST_F(PbGrid2DTest, EachKindPlacesItsNodes) {
    meshtest::GridCoords c = meshtest::gridCoords(
        2, 2, [](int i, int j) { return i + 0.5f * j; },
        [](int i, int j) { return j + 0.25f * i; });
    PbCartesianGrid2D cartesian;
    cartesian.setGeometry(2, 2, c.x.data(), c.y.data());
    EXPECT_EQ(cartesian.getNodeCoord(1, 1), SbVec3f(1.5f, 1.25f, 0));
    EXPECT_EQ(cartesian.getNodeCoord(3), SbVec3f(1.5f, 1.25f, 0));

    PbRegularCartesianGrid2D regular;
    regular.setGeometry(3, 5, -1.0f, 2.0f, 3.0f, 4.0f);
    float dx, dy;
    regular.getSteps(dx, dy);
    EXPECT_FLOAT_EQ(dx, 2.0f);
    EXPECT_FLOAT_EQ(dy, 0.5f);
    EXPECT_EQ(regular.getNodeCoord(2, 3), SbVec3f(3.0f, 3.5f, 0));

    PbPolarGrid2D polar;
    const float r[] = {1, 2};
    const float t[] = {0, float(M_PI / 2)};
    const float z[] = {5, 6, 7, 8};
    polar.setGeometry(2, 2, r, t, z);
    SbVec3f onAxis = polar.getNodeCoord(1, 1);
    EXPECT_NEAR(onAxis[0], 0.0f, 1e-6f);
    EXPECT_FLOAT_EQ(onAxis[1], 2.0f);
    EXPECT_FLOAT_EQ(onAxis[2], 8.0f);
    EXPECT_EQ(polar.getNodeCoord(2), SbVec3f(2, 0, 7));
}

TEST_F(PbGrid2DTest, ARegularGridGivenArraysKeepsTheirExtremes) {
    PbRegularCartesianGrid2D grid;
    const float x[] = {3, -2, 7, 1};
    const float y[] = {5, 9, -4};
    grid.setGeometry(4, 3, x, y);
    int numX, numY;
    float xmin, ymin, xmax, ymax;
    const float* z;
    grid.getGeometry(numX, numY, xmin, ymin, xmax, ymax, z);
    EXPECT_EQ((std::vector<float>{float(numX), float(numY), xmin, xmax, ymin, ymax}),
              (std::vector<float>{4, 3, -2, 7, -4, 9}));
}

TEST_F(PbGrid2DTest, ClosedFormTopologyAgreesWithTheSameQuadrangleMesh) {
    const int numX = 4, numY = 3;
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(numX, numY, 0.0f, 0.0f, 3.0f, 2.0f);
    meshtest::GridCoords c = meshtest::gridCoords(
        numX, numY, [](int i, int) { return float(i); }, [](int, int j) { return float(j); });
    std::vector<int> quads = meshtest::gridQuadrangles(numX, numY);
    PbQuadrangleMesh2D mesh;
    mesh.setGeometry(numX * numY, c.x.data(), c.y.data(), (numX - 1) * (numY - 1), quads.data());

    PbArrayOfInt gridLimit, gridSizes, meshLimit, meshSizes;
    grid.getLimitIndices(gridLimit, gridSizes);
    mesh.getLimitIndices(meshLimit, meshSizes);
    EXPECT_EQ(toVector(gridLimit), (std::vector<int>{0, 3, 6, 9, 10, 11, 8, 5, 2, 1, 0}));
    EXPECT_EQ(toVector(gridSizes), (std::vector<int>{11}));
    EXPECT_EQ(toVector(meshLimit), toVector(gridLimit));
    EXPECT_EQ(toVector(meshSizes), toVector(gridSizes));
    for (int node = -1; node <= numX * numY; ++node)
        EXPECT_EQ(ownerCells(grid, node), ownerCells(mesh, node)) << "node " << node;
    EXPECT_EQ(ownerCells(grid, 7), (std::vector<int>{2, 3, 4, 5}));
    EXPECT_FLOAT_EQ(grid.getArea(), 6.0f);
    EXPECT_FLOAT_EQ(mesh.getArea(), 6.0f);
}

TEST_F(PbGrid2DTest, ADuplicatingGridCopiesItsArraysAndAReferencingOneKeepsThem) {
    float x[] = {0, 1};
    float y[] = {0, 1};
    float z[] = {1, 2, 3, 4};
    PbParalCartesianGrid2D duplicating(1), referencing(0);
    duplicating.setGeometry(2, 2, x, y, z);
    referencing.setGeometry(2, 2, x, y, z);
    x[1] = 5;
    z[3] = 9;
    EXPECT_EQ(duplicating.getNodeCoord(3), SbVec3f(1, 1, 4));
    EXPECT_EQ(referencing.getNodeCoord(3), SbVec3f(5, 1, 9));
    PbParalCartesianGrid2D copy(duplicating);
    duplicating.setGeometry(2, 2, y, x);
    EXPECT_EQ(copy.getNodeCoord(3), SbVec3f(1, 1, 4));

    // Taking "no z" from another grid or from the z stack leaves no z behind.
    duplicating.pushZCoord(z);
    duplicating.popZCoord();
    EXPECT_EQ(duplicating.getZcoord(), nullptr);
    copy = duplicating;
    EXPECT_EQ(copy.getZcoord(), nullptr);
}

TEST_F(PbGrid2DTest, SettingTheGeometryNotifiesAndDrawsNewIds) {
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(2, 2, 0.0f, 0.0f, 1.0f, 1.0f);
    unsigned int geometry = grid.getGeometryId(), topology = grid.getTopologyId();
    grid.setGeometry(2, 2, 0.0f, 0.0f, 2.0f, 2.0f);
    EXPECT_NE(grid.getGeometryId(), geometry);
    EXPECT_EQ(grid.getTopologyId(), topology);
    EXPECT_EQ(grid.getChangeType(), PbBase::GEOMETRY);
    grid.setGeometry(3, 2, 0.0f, 0.0f, 2.0f, 2.0f);
    EXPECT_NE(grid.getTopologyId(), topology);
}

TEST_F(PbGrid2DTest, PrintsTheRegularGridLineByLine) {
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(3, 2, 0.0f, -1.0f, 2.0f, 1.5f);
    EXPECT_EQ(meshtest::printed(grid),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = TRUE\n"
              "PbMesh:: numMeshNodes = 6\n"
              "PbMesh:: m_numMeshCells = 2\n"
              "PbMesh2D:: m_numZCoord = 0 , m_zCoord (adress (nil)) \n"
              "PbGrid2D:: numX,numY 3 2\n"
              "PbRegularCartesianGrid2D:: m_xmin 0.000000, m_xmax 2.000000\n"
              "PbRegularCartesianGrid2D:: m_ymin -1.000000, m_ymax 1.500000\n");
}

TEST_F(PbGrid2DTest, PrintsArrayAddressesOfTheOtherKinds) {
    const float x[] = {0, 1};
    const float y[] = {0, 1};
    PbParalCartesianGrid2D paral(0);
    paral.setGeometry(2, 2, x, y);
    char expected[256];
    snprintf(expected, sizeof expected,
             "PbGrid2D:: numX,numY 2 2\nPbParalCartesianGrid2D:: x = %p ...\n"
             "PbParalCartesianGrid2D:: y = %p ...\n",
             static_cast<const void*>(x), static_cast<const void*>(y));
    std::string text = meshtest::printed(paral);
    EXPECT_NE(text.find(expected), std::string::npos) << text;

    PbCartesianGrid2D cartesian;
    std::string empty = meshtest::printed(cartesian);
    EXPECT_NE(empty.find("PbCartesianGrid2D:: numX, numY = 0 0\n"
                         "PbCartesianGrid2D:: x = NULL\nPbCartesianGrid2D:: y = NULL\n"),
              std::string::npos)
        << empty;
}
