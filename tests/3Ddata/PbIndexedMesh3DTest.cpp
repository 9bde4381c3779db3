#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

namespace {

const auto& s_x = meshtest::mixedvolume::x;
const auto& s_y = meshtest::mixedvolume::y;
const auto& s_z = meshtest::mixedvolume::z;
const auto& s_types = meshtest::mixedvolume::types;
const auto& s_cells = meshtest::mixedvolume::cells;

class PbIndexedMesh3DTest : public LibraryTest {
protected:
    PbIndexedMesh3D mesh{12, s_x, s_y, s_z, 4, s_types, s_cells};
};

} // namespace

TEST_F(PbIndexedMesh3DTest, EachCellComesAsItsKind) {
    const int* indices = s_cells;
    for (int c = 0; c < 4; ++c) {
        const PbCell* cell = mesh.getCell(c);
        ASSERT_EQ(cell->getNumNodes(), s_types[c]);
        PbArrayOfInt nodes;
        cell->getNodesIndex(nodes);
        EXPECT_EQ(std::vector<int>(nodes.get(), nodes.get() + nodes.getNum()),
                  std::vector<int>(indices, indices + s_types[c]));
        indices += s_types[c];
    }
    int numCellNodes;
    const int* wedge = mesh.getCellNodeIndices(2, numCellNodes);
    ASSERT_EQ(numCellNodes, 6);
    EXPECT_EQ(std::vector<int>(wedge, wedge + 6), std::vector<int>(s_cells + 13, s_cells + 19));
    EXPECT_EQ(mesh.getCellNodeIndices(4, numCellNodes), nullptr);
}

TEST_F(PbIndexedMesh3DTest, VolumeSumsTheCellsAndFacetNeighboursOwnTheWholeFacet) {
    EXPECT_NEAR(mesh.getVolume(), 1.0f + 1.0f / 3 + 0.5f + 1.0f / 6, 1e-5f);
    PbArrayOfInt neighbours;
    mesh.getAdjacentCellsIndByFacet(0, neighbours);
    EXPECT_EQ(std::vector<int>(neighbours.get(), neighbours.get() + neighbours.getNum()),
              (std::vector<int>{2, 1}));
    // The tetrahedron's facet 0 1 3 lies on the cube's bottom quadrangle.
    mesh.getAdjacentCellsIndByFacet(3, neighbours);
    EXPECT_EQ(std::vector<int>(neighbours.get(), neighbours.get() + neighbours.getNum()),
              (std::vector<int>{0}));
}

TEST_F(PbIndexedMesh3DTest, PrintReportsItsStorage) {
    EXPECT_EQ(meshtest::printed(mesh),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = TRUE\n"
              "PbMesh:: numMeshNodes = 12\n"
              "PbMesh:: m_numMeshCells = 4\n"
              "PbIndexedMesh3D:: allocElem = 4\n"
              "PbIndexedMesh3D:: elemIndexSize = 23\n"
              "PbIndexedMesh3D:: allocElemIndex = 23\n");
    EXPECT_EQ(mesh.getCellTypes()[1], 5);
}
