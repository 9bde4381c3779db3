#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

// Point location in unstructured meshes goes through a spatial index over
// the cell boxes; it must find what testing every cell in order finds.
namespace {

class PiCellBoxIndexTest : public LibraryTest {};

} // namespace

TEST_F(PiCellBoxIndexTest, CellsOfVeryDifferentSizesKeepTheLowestIndexFirst) {
    // Small tetrahedra of a block, then one large tetrahedron over them all:
    // inside the block the small ones come first, outside only the large one
    // holds the point.
    meshtest::TetBlock block = meshtest::makeTetBlock(4, 0.0f);
    const float far[4][3] = {{-20, -20, -20}, {60, -20, -20}, {-20, 60, -20}, {-20, -20, 60}};
    for (const auto& corner : far) {
        block.x.push_back(corner[0]);
        block.y.push_back(corner[1]);
        block.z.push_back(corner[2]);
    }
    for (int n = 0; n < 4; ++n)
        block.cells.push_back(block.numNodes + n);
    std::vector<int> types(block.numCells + 1, 4);
    PbIndexedMesh3D mesh(block.numNodes + 4, block.x.data(), block.y.data(), block.z.data(),
                         block.numCells + 1, types.data(), block.cells.data());
    SbVec3f pcoord;
    EXPECT_LT(
        meshtest::locatedIndex(mesh.findContainingCell(SbVec3f(2.2f, 1.1f, 3.3f), 0.0f, pcoord)),
        block.numCells);
    EXPECT_EQ(meshtest::locatedIndex(mesh.findContainingCell(SbVec3f(5, 5, 5), 0.0f, pcoord)),
              block.numCells);
    for (float tolerance : {0.0f, 0.2f})
        meshtest::expectLocationAgreesWithTestingEveryCell(
            mesh, meshtest::probePoints(mesh, 300, 37, SbBox3f(1, 1, 1, 3, 3, 3)), tolerance);
}

TEST_F(PiCellBoxIndexTest, MeshWithoutCellsLocatesNothing) {
    PbTetrahedronMesh3D mesh;
    SbVec3f pcoord;
    EXPECT_EQ(mesh.findContainingCell(SbVec3f(0, 0, 0), 0.5f, pcoord), nullptr);
}
