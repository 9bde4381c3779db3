#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <Inventor/SbLinear.h>

#include <gtest/gtest.h>

namespace {

class PbGrid3DTest : public LibraryTest {};

std::vector<int> asVector(const PbArrayOfInt& array) {
    return std::vector<int>(array.get(), array.get() + array.getNum());
}

// A rectilinear grid with uneven steps, and the same nodes as a curvilinear
// grid (one coordinate per node).
const float s_xs[] = {0.0f, 1.0f, 3.0f, 3.5f};
const float s_ys[] = {-1.0f, 0.0f, 2.0f};
const float s_zs[] = {0.0f, 0.5f, 1.0f, 2.0f, 4.0f};

PbCartesianGrid3D curvilinearCopy(const PbParalCartesianGrid3D& grid) {
    int nx, ny, nz;
    grid.getDim(nx, ny, nz);
    std::vector<float> coords[3];
    for (int node = 0; node < grid.getNumNodes(); ++node)
        for (int axis = 0; axis < 3; ++axis)
            coords[axis].push_back(grid.getNodeCoord(node)[axis]);
    return PbCartesianGrid3D(nx, ny, nz, coords[0].data(), coords[1].data(), coords[2].data());
}

} // namespace

TEST_F(PbGrid3DTest, NumbersNodesAndCellsWithKFastest) {
    PbRegularCartesianGrid3D grid(2, 2, 3, 0, 0, 0, 1, 1, 2);
    int i, j, k;
    grid.getNodeIndices(7, i, j, k);
    EXPECT_EQ((std::vector<int>{i, j, k}), (std::vector<int>{1, 0, 1}));
    const int* nodes = grid.getCellNodeIds(0);
    EXPECT_EQ(std::vector<int>(nodes, nodes + 8), (std::vector<int>{0, 6, 9, 3, 1, 7, 10, 4}));
    grid.getCellIndices(1, i, j, k);
    EXPECT_EQ((std::vector<int>{i, j, k}), (std::vector<int>{0, 0, 1}));
    PbArrayOfInt cellNodes;
    grid.getCell(1)->getNodesIndex(cellNodes);
    EXPECT_EQ(asVector(cellNodes), (std::vector<int>{1, 7, 10, 4, 2, 8, 11, 5}));
    EXPECT_EQ(grid.getNodeCoord(7), SbVec3f(1, 0, 1));
    EXPECT_EQ(grid.getCell(-1), nullptr);
    EXPECT_EQ(grid.getCell(grid.getNumCells()), nullptr);
    EXPECT_EQ(PbRegularCartesianGrid3D(1, 3, 3, 0, 0, 0, 0, 1, 1).getNumCells(), 0);
    ErrorRecorder errors;
    EXPECT_EQ(grid.getNodeCoord(2, 0, 0), SbVec3f(0, 0, 0));
    EXPECT_EQ(grid.getCellNodeIds(1, 0, 0), nullptr);
    EXPECT_EQ(errors.messages().size(), 2u);
}

TEST_F(PbGrid3DTest, DuplicatingGridCopiesCoordinatesReferencingGridKeepsThem) {
    float xs[] = {0, 1, 2};
    PbParalCartesianGrid3D duplicating(3, 3, 5, xs, s_ys, s_zs, 1);
    PbParalCartesianGrid3D referencing(3, 3, 5, xs, s_ys, s_zs, 0);
    xs[2] = 10;
    EXPECT_EQ(duplicating.getNodeCoord(2, 0, 0)[0], 2.0f);
    EXPECT_EQ(referencing.getNodeCoord(2, 0, 0)[0], 10.0f);
    const float *duplicatingX, *copyX, *referencedX, *y, *z;
    int nx, ny, nz;
    duplicating.getGeometry(nx, ny, nz, duplicatingX, y, z);
    PbParalCartesianGrid3D(duplicating).getGeometry(nx, ny, nz, copyX, y, z);
    PbParalCartesianGrid3D(referencing).getGeometry(nx, ny, nz, referencedX, y, z);
    EXPECT_NE(copyX, duplicatingX);
    EXPECT_EQ(referencedX, xs);
}

TEST_F(PbGrid3DTest, RegularGridFromArraysKeepsTheirExtremes) {
    const float xs[] = {3, -1, 2};
    const float ys[] = {5, 4};
    const float zs[] = {0, 9, -2, 1};
    PbRegularCartesianGrid3D grid;
    grid.setGeometry(3, 2, 4, xs, ys, zs);
    float xmin, ymin, zmin, xmax, ymax, zmax;
    grid.getMinMax(xmin, ymin, zmin, xmax, ymax, zmax);
    EXPECT_EQ((std::vector<float>{xmin, ymin, zmin, xmax, ymax, zmax}),
              (std::vector<float>{-1, 4, -2, 3, 5, 9}));
    EXPECT_EQ(grid.getNodeCoord(1, 1, 3), SbVec3f(1, 5, 9));
}

TEST_F(PbGrid3DTest, OwnerCellsAndNeighboursStopAtTheBoundary) {
    PbRegularCartesianGrid3D grid(4, 3, 5, 0, 0, 0, 3, 2, 4);
    PbArrayOfInt cells;
    grid.getNodeOwnerCellsInd(0, cells);
    EXPECT_EQ(asVector(cells), (std::vector<int>{0}));
    int interior = (1 * 3 + 1) * 5 + 2;
    grid.getNodeOwnerCellsInd(interior, cells);
    EXPECT_EQ(asVector(cells), (std::vector<int>{1, 2, 5, 6, 9, 10, 13, 14}));
    grid.getNodeOwnerCellsInd(grid.getNumNodes(), cells);
    EXPECT_EQ(cells.getNum(), 0);

    grid.getAdjacentCellsIndByFacet(0, cells);
    EXPECT_EQ(asVector(cells), (std::vector<int>{8, 4, 1}));
    for (int cell = 0; cell < grid.getNumCells(); ++cell) {
        PbArrayOfInt general;
        grid.getAdjacentCellsIndByFacet(cell, cells);
        grid.PbMesh::getAdjacentCellsIndByFacet(cell, general);
        ASSERT_EQ(asVector(cells), asVector(general)) << "cell " << cell;
    }
    grid.getAdjacentCellsIndByNode(0, cells);
    EXPECT_EQ(asVector(cells), (std::vector<int>{8, 4, 12, 1, 9, 5, 13}));
}

TEST_F(PbGrid3DTest, VolumeAreaAndLongestEdgeAgreeAcrossKinds) {
    PbParalCartesianGrid3D paral(4, 3, 5, s_xs, s_ys, s_zs);
    PbCartesianGrid3D curvilinear = curvilinearCopy(paral);
    float volume = 3.5f * 3.0f * 4.0f;
    float area = 2 * (3.5f * 3.0f + 3.0f * 4.0f + 3.5f * 4.0f);
    for (const PbMesh3D* grid :
         {static_cast<const PbMesh3D*>(&paral), static_cast<const PbMesh3D*>(&curvilinear)}) {
        EXPECT_NEAR(grid->getVolume(), volume, 1e-4f);
        EXPECT_NEAR(grid->getArea(), area, 1e-4f);
        EXPECT_FLOAT_EQ(grid->getLongestEdgeLength(), 2.0f);
    }
    EXPECT_NEAR(paral.PbMesh3D::getArea(), area, 1e-4f);
    PbRegularCartesianGrid3D regular(3, 5, 2, 0, 0, 0, 2, 1, 3);
    EXPECT_FLOAT_EQ(regular.getVolume(), 6.0f);
    EXPECT_FLOAT_EQ(regular.getArea(), 22.0f);
    EXPECT_FLOAT_EQ(regular.getLongestEdgeLength(), 3.0f);
    EXPECT_NEAR(regular.PbMesh3D::getVolume(), 6.0f, 1e-5f);
    EXPECT_EQ(PbRegularCartesianGrid3D(1, 2, 2, 0, 0, 0, 0, 1, 1).getVolume(), 0.0f);
    EXPECT_EQ(regular.evaluateSkinFacesNum(), 2 * (2 * 4 + 4 * 1 + 2 * 1));
}

TEST_F(PbGrid3DTest, BoundingBoxCoversEveryNode) {
    const float xs[] = {2, -3, 1};
    PbParalCartesianGrid3D grid(3, 3, 5, xs, s_ys, s_zs);
    SbBox3f box = grid.getBoundingBox();
    EXPECT_EQ(box.getMin(), SbVec3f(-3, -1, 0));
    EXPECT_EQ(box.getMax(), SbVec3f(2, 2, 4));
    const float moved[] = {0, 1, 7};
    grid.setCoordinates(moved, s_ys, s_zs);
    EXPECT_EQ(grid.getBoundingBox().getMax()[0], 7.0f);
}

TEST_F(PbGrid3DTest, CrossSectionIsOptimalForAxisAlignedGridsCutAcrossAnAxis) {
    PbRegularCartesianGrid3D regular(3, 3, 3, 0, 0, 0, 1, 1, 1);
    PbParalCartesianGrid3D paral(4, 3, 5, s_xs, s_ys, s_zs);
    PbCartesianGrid3D curvilinear = curvilinearCopy(paral);
    SbPlane across(SbVec3f(0, -1, 0), 0.5f);
    SbPlane slanted(SbVec3f(1, 1, 0), 0.5f);
    EXPECT_EQ(regular.isCrossSectionOptimal(across), 1);
    EXPECT_EQ(paral.isCrossSectionOptimal(across), 1);
    EXPECT_EQ(regular.isCrossSectionOptimal(slanted), 0);
    EXPECT_EQ(curvilinear.isCrossSectionOptimal(across), 0);
}

TEST_F(PbGrid3DTest, PrintWritesTheGridLines) {
    PbRegularCartesianGrid3D grid(2, 3, 4, 0, -1, 0.5f, 1, 1, 2);
    EXPECT_EQ(meshtest::printed(grid),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = TRUE\n"
              "PbMesh:: numMeshNodes = 24\n"
              "PbMesh:: m_numMeshCells = 6\n"
              "PbGrid3D:: numX,numY,numZ 2 3 4\n"
              "PbRegularCartesianGrid3D:: m_xmin 0.000000, m_xmax 1.000000\n"
              "PbRegularCartesianGrid3D:: m_ymin -1.000000, m_ymax 1.000000\n"
              "PbRegularCartesianGrid3D:: m_zmin 0.500000, m_zmax 2.000000\n");
    PbCartesianGrid3D empty(0);
    EXPECT_EQ(meshtest::printed(empty),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = FALSE\n"
              "PbMesh:: numMeshNodes = 0\n"
              "PbMesh:: m_numMeshCells = 0\n"
              "PbGrid3D:: numX,numY,numZ 0 0 0\n"
              "PbCartesianGrid3D:: x = NULL\n"
              "PbCartesianGrid3D:: y = NULL\n"
              "PbCartesianGrid3D:: z = NULL\n");
}
