#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

namespace {

class PbTetrahedronMesh3DTest : public LibraryTest {
protected:
    meshtest::TetBlock block = meshtest::makeTetBlock(3, 0.2f, 7);
    PbTetrahedronMesh3D mesh{block.numNodes, block.x.data(), block.y.data(),
                             block.z.data(), block.numCells, block.cells.data()};
};

float linear(const SbVec3f& p) {
    return 1.0f + 2.0f * p[0] + 3.0f * p[1] + 5.0f * p[2];
}

} // namespace

TEST_F(PbTetrahedronMesh3DTest, CellsCarryTheirMeshNodeIndices) {
    const PbCell* cell = mesh.getCell(6 * 13 + 2);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->getNumNodes(), 4);
    EXPECT_EQ(cell->getIndex(), 6 * 13 + 2);
    for (int local = 0; local < 4; ++local) {
        int node = block.cells[4 * (6 * 13 + 2) + local];
        EXPECT_EQ(cell->getNodeIndex(local), node);
        EXPECT_EQ(cell->getNodeCoord(local), mesh.getNodeCoord(node));
    }
    EXPECT_EQ(mesh.getCell(block.numCells), nullptr);
    ErrorRecorder errors;
    EXPECT_EQ(mesh.getNodeCoord(block.numNodes), SbVec3f(0, 0, 0));
    EXPECT_EQ(errors.messages().size(), 1u);
}

TEST_F(PbTetrahedronMesh3DTest, VolumeAndBoundaryAreaOfTheBlock) {
    EXPECT_NEAR(mesh.getVolume(), 27.0f, 1e-3f);
    EXPECT_NEAR(mesh.getArea(), 54.0f, 1e-3f);
    SbBox3f box = mesh.getBoundingBox();
    EXPECT_EQ(box.getMin(), SbVec3f(0, 0, 0));
    EXPECT_EQ(box.getMax(), SbVec3f(3, 3, 3));
}

TEST_F(PbTetrahedronMesh3DTest, OwnerCellsAreListedOnceInAscendingOrder) {
    PbArrayOfInt owners;
    mesh.getNodeOwnerCellsInd(0, owners);
    EXPECT_EQ(std::vector<int>(owners.get(), owners.get() + owners.getNum()),
              (std::vector<int>{0, 1, 2, 3, 4, 5}));
    int interior = (1 * 4 + 1) * 4 + 1;
    mesh.getNodeOwnerCellsInd(interior, owners);
    EXPECT_EQ(owners.getNum(), 24);
    EXPECT_TRUE(std::is_sorted(owners.get(), owners.get() + owners.getNum()));
    PbArrayOfInt neighbours;
    mesh.getAdjacentCellsIndByFacet(6 * 13, neighbours);
    EXPECT_EQ(neighbours.getNum(), 4);
}

TEST_F(PbTetrahedronMesh3DTest, InterpolationReadsValuesAtMeshNodeIndices) {
    std::vector<float> values;
    for (int n = 0; n < block.numNodes; ++n)
        values.push_back(linear(mesh.getNodeCoord(n)));
    mesh.addValuesSet(0, values.data(), "f");
    for (const SbVec3f& p :
         {SbVec3f(2.5f, 2.2f, 2.7f), SbVec3f(1.3f, 0.4f, 2.9f), SbVec3f(0.1f, 2.8f, 1.5f)}) {
        SbVec3f pcoord;
        const PbCell* cell = mesh.findContainingCell(p, 0.0f, pcoord);
        ASSERT_NE(cell, nullptr);
        EXPECT_NEAR(cell->getValue(pcoord, mesh.getValuesSet(0)), linear(p), 1e-4f);
    }
}

TEST_F(PbTetrahedronMesh3DTest, LocationFollowsNewCoordinates) {
    SbVec3f pcoord;
    ASSERT_NE(mesh.findContainingCell(SbVec3f(1.5f, 1.5f, 1.5f), 0.0f, pcoord), nullptr);
    std::vector<float> shifted = block.x;
    for (float& x : shifted)
        x += 10.0f;
    mesh.setCoordinates(shifted.data(), block.y.data(), block.z.data());
    EXPECT_EQ(mesh.findContainingCell(SbVec3f(1.5f, 1.5f, 1.5f), 0.0f, pcoord), nullptr);
    meshtest::expectLocationAgreesWithTestingEveryCell(mesh, meshtest::probePoints(mesh, 100, 5),
                                                       0.0f);
}

TEST_F(PbTetrahedronMesh3DTest, ADuplicatingMeshCopiesItsCoordinatesAReferencingOneKeepsThem) {
    PbTetrahedronMesh3D referencing(block.numNodes, block.x.data(), block.y.data(), block.z.data(),
                                    block.numCells, block.cells.data(), 0);
    const float *x, *y, *z;
    int sizeX, sizeY, sizeZ;
    referencing.getCoordinates(x, y, z, sizeX, sizeY, sizeZ);
    EXPECT_EQ(x, block.x.data());
    mesh.getCoordinates(x, y, z, sizeX, sizeY, sizeZ);
    EXPECT_NE(x, block.x.data());
    EXPECT_EQ(sizeZ, block.numNodes);
}
