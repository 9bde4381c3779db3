#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>

#include "3Ddata/MeshTestHelpers.h"

#include <Inventor/fields/SoMFVec3f.h>

#include <cmath>

using meshtest::cellNodes;
using meshtest::ownerCells;
using meshtest::toVector;

namespace {

// A quadrangle beside two triangles.
const auto& X = meshtest::mixedsurface::x;
const auto& Y = meshtest::mixedsurface::y;
const auto& TYPES = meshtest::mixedsurface::types;
const auto& CELLS = meshtest::mixedsurface::cells;

class PbIndexedMesh2DTest : public meshtest::MeshTest {
protected:
    void makeMixed(PbIndexedMesh2D& mesh, const float* z = nullptr) {
        mesh.setGeometry(6, X, Y, z, 3, TYPES, CELLS);
    }
};

// A 4 x 4 grid of nodes with the eight quadrangles around the middle one.
void makeFrame(PbQuadrangleMesh2D& mesh) {
    meshtest::GridCoords c = meshtest::gridCoords(
        4, 4, [](int i, int) { return float(i); }, [](int, int j) { return float(j); });
    std::vector<int> all = meshtest::gridQuadrangles(4, 4), frame;
    for (int cell = 0; cell < 9; ++cell)
        if (cell != 4)
            frame.insert(frame.end(), all.begin() + 4 * cell, all.begin() + 4 * cell + 4);
    mesh.setGeometry(16, c.x.data(), c.y.data(), 8, frame.data());
}

} // namespace

TEST_F(PbIndexedMesh2DTest, CellsAreFilledWithTheirKindAndNodesKnowTheirOwners) {
    PbIndexedMesh2D mesh;
    makeMixed(mesh);
    EXPECT_EQ(mesh.getNumNodes(), 6);
    EXPECT_EQ(mesh.getNumCells(), 3);
    ASSERT_EQ(mesh.getCell(0)->getNumNodes(), 4);
    EXPECT_EQ(cellNodes(mesh, 0), (std::vector<int>{0, 1, 4, 3}));
    ASSERT_EQ(mesh.getCell(2)->getNumNodes(), 3);
    EXPECT_EQ(cellNodes(mesh, 2), (std::vector<int>{1, 5, 4}));
    EXPECT_EQ(mesh.getCell(2)->getNodeCoord(1), SbVec3f(2, 1, 0));
    EXPECT_EQ(mesh.getCell(3), nullptr);
    EXPECT_EQ(mesh.getCell(-1), nullptr);
    EXPECT_EQ(mesh.getCellNumNodes(1), 3);
    EXPECT_EQ(mesh.getCellNodeIndices(1)[2], 5);
    EXPECT_EQ(mesh.getCellNodeIndices(7), nullptr);
    EXPECT_EQ(ownerCells(mesh, 1), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ownerCells(mesh, 4), (std::vector<int>{0, 2}));
    EXPECT_EQ(ownerCells(mesh, 2), (std::vector<int>{1}));
    EXPECT_TRUE(ownerCells(mesh, 6).empty());
    PbArrayOfInt nodes, shared;
    nodes.add(1);
    nodes.add(5);
    mesh.getNodesOwnerCellsInd(nodes, shared);
    EXPECT_EQ(toVector(shared), (std::vector<int>{1, 2}));
}

TEST_F(PbIndexedMesh2DTest, TheBoundaryIsAClosedLoopWithOutwardNormals) {
    PbIndexedMesh2D mesh;
    makeMixed(mesh);
    PbArrayOfInt limit, sizes;
    mesh.getLimitIndices(limit, sizes);
    EXPECT_EQ(toVector(limit), (std::vector<int>{0, 1, 2, 5, 4, 3, 0}));
    EXPECT_EQ(toVector(sizes), (std::vector<int>{7}));
    ASSERT_TRUE(mesh.hasSidesNormals());
    SbVec3f* normals = nullptr;
    mesh.getSidesNormals(normals, limit);
    ASSERT_NE(normals, nullptr);
    const float d = float(M_SQRT1_2);
    SbVec3f expected[] = {{-d, -d, 0}, {0, -1, 0}, {d, -d, 0}, {d, d, 0},
                          {0, 1, 0},   {-d, d, 0}, {-d, -d, 0}};
    for (int k = 0; k < 7; ++k)
        EXPECT_TRUE(normals[k].equals(expected[k], 1e-6f)) << "entry " << k;
}

TEST_F(PbIndexedMesh2DTest, AMeshWithAHoleHasTwoBoundaryLoops) {
    PbQuadrangleMesh2D mesh;
    makeFrame(mesh);
    PbArrayOfInt limit, sizes;
    mesh.getLimitIndices(limit, sizes);
    ASSERT_EQ(toVector(sizes), (std::vector<int>{13, 5}));
    std::vector<int> nodes = toVector(limit);
    EXPECT_EQ(nodes[0], nodes[12]);
    EXPECT_EQ(nodes[13], nodes[17]);
    std::vector<int> hole(nodes.begin() + 13, nodes.end() - 1);
    std::sort(hole.begin(), hole.end());
    EXPECT_EQ(hole, (std::vector<int>{5, 6, 9, 10}));
    // Normals of the hole's sides point into the hole.
    SbVec3f* normals;
    mesh.getSidesNormals(normals, limit);
    for (int k = 13; k < 18; ++k) {
        SbVec3f towardsCentre = SbVec3f(1.5f, 1.5f, 0) - mesh.getNodeCoord(nodes[k]);
        EXPECT_GT(normals[k].dot(towardsCentre), 0.0f) << "entry " << k;
    }
    EXPECT_FLOAT_EQ(mesh.getArea(), 8.0f);
}

TEST_F(PbIndexedMesh2DTest, AreaSumsTheCellsAndASurfaceHasNoVolume) {
    PbIndexedMesh2D mesh;
    const float z[] = {0, 0, 0, 1, 1, 1};
    makeMixed(mesh, z);
    EXPECT_NEAR(mesh.getArea(), 2.0f * std::sqrt(2.0f), 1e-5f);
    EXPECT_EQ(mesh.getVolume(), 0.0f);
    SbVec3f normal = mesh.getFirstCellNormal();
    EXPECT_TRUE(normal.equals(SbVec3f(0, -float(M_SQRT1_2), float(M_SQRT1_2)), 1e-6f));
    SbBox2f box = mesh.getBoundingBox();
    EXPECT_EQ(box.getMin(), SbVec2f(0, 0));
    EXPECT_EQ(box.getMax(), SbVec2f(2, 1));
    EXPECT_EQ(mesh.PbMesh::getBoundingBox().getMax(), SbVec3f(2, 1, 1));
}

TEST_F(PbIndexedMesh2DTest, OrientationFlagsMakeEveryCellWindTheSameWay) {
    // The left square counter-clockwise, the lower right triangle clockwise,
    // the upper one counter-clockwise, and a lone clockwise triangle apart.
    const float x[] = {0, 1, 2, 0, 1, 2, 5, 6, 5};
    const float y[] = {0, 0, 0, 1, 1, 1, 0, 0, 1};
    const int types[] = {4, 3, 3, 3};
    const int cells[] = {0, 1, 4, 3, 1, 5, 2, 1, 5, 4, 6, 8, 7};
    PbIndexedMesh2D mesh;
    mesh.setGeometry(9, x, y, 4, types, cells);
    EXPECT_EQ(mesh.getElemOrientation(), 0);
    EXPECT_EQ(mesh.getOrientFlags(), nullptr);
    mesh.setElemOrientation(1);
    ASSERT_NE(mesh.getOrientFlags(), nullptr);
    EXPECT_EQ(std::vector<int>(mesh.getOrientFlags(), mesh.getOrientFlags() + 4),
              (std::vector<int>{1, 0, 1, 0}));
    // New cells, new flags.
    mesh.setGeometry(6, X, Y, 3, TYPES, CELLS);
    EXPECT_EQ(std::vector<int>(mesh.getOrientFlags(), mesh.getOrientFlags() + 3),
              (std::vector<int>{1, 1, 1}));
}

TEST_F(PbIndexedMesh2DTest, OrientationFollowsAFoldedSurfaceAcrossSharedSides) {
    // A floor square and a wall square standing on its far side; the wall is
    // given in the winding that disagrees with the floor.
    const float x[] = {0, 1, 1, 0, 1, 0};
    const float y[] = {0, 0, 1, 1, 1, 1};
    const float z[] = {0, 0, 0, 0, 1, 1};
    const int cells[] = {0, 1, 2, 3, 2, 3, 5, 4};
    PbQuadrangleMesh2D mesh;
    mesh.setGeometry(6, x, y, z, 2, cells);
    mesh.setElemOrientation(1);
    EXPECT_EQ(mesh.getOrientFlags()[0], 1);
    EXPECT_EQ(mesh.getOrientFlags()[1], 0);
}

TEST_F(PbIndexedMesh2DTest, ZCoordinatesCanBeReplacedPushedAndPopped) {
    PbIndexedMesh2D mesh;
    makeMixed(mesh);
    const float heights[] = {1, 2, 3, 4, 5, 6};
    const float other[] = {7, 7, 7, 7, 7, 7};
    mesh.setZCoord(heights);
    EXPECT_EQ(mesh.getChangeType(), PbBase::GEOMETRY);
    EXPECT_EQ(mesh.getNodeCoord(5), SbVec3f(2, 1, 6));
    mesh.pushZCoord(other);
    EXPECT_EQ(mesh.getNodeCoord(5), SbVec3f(2, 1, 7));
    SoMFVec3f coords;
    mesh.getNodesCoord(heights, coords);
    EXPECT_EQ(coords[4], SbVec3f(1, 1, 5));
    mesh.getNodesCoord(nullptr, coords);
    EXPECT_EQ(coords[4], SbVec3f(1, 1, 7));
    mesh.popZCoord();
    EXPECT_EQ(mesh.getNodeCoord(5), SbVec3f(2, 1, 6));
    mesh.setZCoord(nullptr);
    EXPECT_EQ(mesh.getZcoord(), nullptr);
    mesh.getNodesCoord(nullptr, coords);
    EXPECT_EQ(coords[4], SbVec3f(1, 1, 0));
    EXPECT_TRUE(errors().messages().empty());
    mesh.popZCoord();
    EXPECT_TRUE(errors().contains("PbMesh2D::popZCoord"));
}

TEST_F(PbIndexedMesh2DTest, PrintsItsCells) {
    PbIndexedMesh2D mesh(0);
    makeMixed(mesh);
    char expected[512];
    snprintf(expected, sizeof expected,
             "PbMesh2D:: m_numZCoord = 0 , m_zCoord (adress (nil)) \n"
             "PbIndexedMesh2D:: x = %p ...\nPbIndexedMesh2D:: y = %p ...\n"
             "PbIndexedMesh2D:: elemIndexSize = 10\n"
             "PbIndexedMesh2D:: elemIndex[0] = 0 1 4 3\n"
             "PbIndexedMesh2D:: elemIndex[1] = 1 2 5\n"
             "PbIndexedMesh2D:: elemIndex[2] = 1 5 4\n",
             static_cast<const void*>(X), static_cast<const void*>(Y));
    std::string text = meshtest::printed(mesh);
    EXPECT_NE(text.find(expected), std::string::npos) << text;
}
