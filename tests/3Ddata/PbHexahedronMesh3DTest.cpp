#include <Quillon/3Ddata/PbHexahedronMesh3D.h>
#include <Quillon/PoQuillon.h>

#include "VolumeMeshTestHelpers.h"

#include <gtest/gtest.h>

namespace {

// An n x n x n block of hexahedra whose interior nodes are moved at random.
struct HexBlock : meshtest::BlockNodes {
    std::vector<int> cells;
};

HexBlock makeHexBlock(int n, float jitter) {
    HexBlock block;
    static_cast<meshtest::BlockNodes&>(block) = meshtest::makeBlockNodes(n, jitter, 3);
    int side = n + 1;
    auto node = [side](int i, int j, int k) { return (i * side + j) * side + k; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k)
                for (int up = 0; up < 2; ++up) {
                    block.cells.push_back(node(i, j, k + up));
                    block.cells.push_back(node(i + 1, j, k + up));
                    block.cells.push_back(node(i + 1, j + 1, k + up));
                    block.cells.push_back(node(i, j + 1, k + up));
                }
    return block;
}

class PbHexahedronMesh3DTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
};

} // namespace

TEST_F(PbHexahedronMesh3DTest, LocationAgreesWithTestingEveryCurvedCell) {
    HexBlock block = makeHexBlock(4, 0.25f);
    PbHexahedronMesh3D mesh(125, block.x.data(), block.y.data(), block.z.data(), 64,
                            block.cells.data());
    EXPECT_NEAR(mesh.getArea(), 96.0f, 1e-3f);
    meshtest::expectLocationAgreesWithTestingEveryCell(mesh, 9, 300, SbBox3f(1, 1, 1, 3, 3, 3));
}

TEST_F(PbHexahedronMesh3DTest, PrintListsTheNodesOfEveryCell) {
    HexBlock block = makeHexBlock(1, 0.0f);
    PbHexahedronMesh3D mesh(8, block.x.data(), block.y.data(), block.z.data(), 1,
                            block.cells.data(), 0);
    EXPECT_EQ(meshtest::printed(mesh),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = FALSE\n"
              "PbMesh:: numMeshNodes = 8\n"
              "PbMesh:: m_numMeshCells = 1\n"
              "PbHexahedronMesh3D:: elemIndex[0] = 0 4 6 2 1 5 7 3\n");
    EXPECT_FLOAT_EQ(mesh.getVolume(), 1.0f);
}
