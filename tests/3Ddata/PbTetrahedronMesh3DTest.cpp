#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

namespace {

class PbTetrahedronMesh3DTest : public LibraryTest {
protected:
    meshtest::TetBlock block = meshtest::makeTetBlock(3, 0.2f, 7);
    PbTetrahedronMesh3D mesh{block.numNodes, block.x.data(), block.y.data(),
                             block.z.data(), block.numCells, block.cells.data()};
};

} // namespace

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
