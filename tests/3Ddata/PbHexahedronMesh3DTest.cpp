#include <Quillon/3Ddata/PbHexahedronMesh3D.h>

#include "3Ddata/MeshTestHelpers.h"

namespace {

class PbHexahedronMesh3DTest : public meshtest::MeshTest {};

} // namespace

TEST_F(PbHexahedronMesh3DTest, PrintListsTheNodesOfEveryCell) {
    const float x[] = {0, 0, 0, 0, 1, 1, 1, 1};
    const float y[] = {0, 0, 1, 1, 0, 0, 1, 1};
    const float z[] = {0, 1, 0, 1, 0, 1, 0, 1};
    const int cell[] = {0, 4, 6, 2, 1, 5, 7, 3};
    PbHexahedronMesh3D mesh(8, x, y, z, 1, cell, 0);
    EXPECT_EQ(meshtest::printed(mesh),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = FALSE\n"
              "PbMesh:: numMeshNodes = 8\n"
              "PbMesh:: m_numMeshCells = 1\n"
              "PbHexahedronMesh3D:: elemIndex[0] = 0 4 6 2 1 5 7 3\n");
    EXPECT_FLOAT_EQ(mesh.getVolume(), 1.0f);
}
