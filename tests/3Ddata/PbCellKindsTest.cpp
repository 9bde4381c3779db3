#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPixelCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>

#include "3Ddata/MeshTestHelpers.h"

// What each kind of cell does in its own way: closed-form or iterative
// location, projection of surface cells, and the kinds' own print lines.
using meshtest::Coords;
using meshtest::printed;
using meshtest::toWorld;

namespace {

class PbCellKindsTest : public meshtest::MeshTest {
protected:
    SbVec3f pcoord;
};

const int s_ids[8] = {0, 1, 2, 3, 4, 5, 6, 7};

} // namespace

TEST_F(PbCellKindsTest, PixelAndVoxelLocateInClosedFormFromTheirBox) {
    PbPixelCell pixel;
    const int pixelIds[4] = {6, 7, 9, 8};
    pixel.setBox(3, pixelIds, SbVec3f(1, 2, 0.5f), SbVec3f(4, 0.5f, 0));
    EXPECT_EQ(pixel.getNodeCoord(2), SbVec3f(5, 2.5f, 0.5f));
    EXPECT_EQ(pixel.locatePoint(SbVec3f(2, 2.4f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.8f, 0), 1e-6f));
    EXPECT_EQ(pixel.locatePoint(SbVec3f(5.2f, 2.4f, 0), 0, pcoord), 0);
    EXPECT_FLOAT_EQ(pcoord[0], 1.05f);
    EXPECT_EQ(pixel.locatePoint(SbVec3f(5.2f, 2.4f, 0), 0.05f, pcoord), 1);
    EXPECT_FLOAT_EQ(pixel.getArea(), 2.0f);

    PbVoxelCell voxel;
    voxel.setBox(9, s_ids, SbVec3f(1, 2, 3), SbVec3f(2, 4, 0.5f));
    EXPECT_EQ(voxel.getNodeCoord(7), SbVec3f(1, 6, 3.5f));
    EXPECT_EQ(voxel.locatePoint(SbVec3f(1.5f, 5, 3.1f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.75f, 0.2f), 1e-6f));
    EXPECT_EQ(voxel.locatePoint(SbVec3f(1.5f, 5, 2.9f), 0, pcoord), 0);
    EXPECT_NEAR(pcoord[2], -0.2f, 1e-5f);
    EXPECT_EQ(voxel.locatePoint(SbVec3f(1.5f, 5, 2.9f), 0.25f, pcoord), 1);
    EXPECT_FLOAT_EQ(voxel.getVolume(), 4.0f);
}

TEST_F(PbCellKindsTest, TetrahedronLocatesInClosedFormAndForgetsTheInverseOnRefill) {
    PbTetrahedronCell cell;
    Coords coords = {{1, 1, 1}, {3, 1, 1}, {2, 3, 1}, {1.5f, 1.5f, 4}};
    cell.set(0, s_ids, coords.data());
    // node0 + r (node1 - node0) + s (node2 - node0) + t (node3 - node0)
    SbVec3f point = SbVec3f(1, 1, 1) + 0.2f * SbVec3f(2, 0, 0) + 0.3f * SbVec3f(1, 2, 0) +
                    0.1f * SbVec3f(0.5f, 0.5f, 3);
    EXPECT_EQ(cell.locatePoint(point, 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.2f, 0.3f, 0.1f), 1e-6f));
    EXPECT_EQ(cell.locatePoint(SbVec3f(3, 3, 1), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 1, 0), 1e-6f));

    coords = {{10, 0, 0}, {12, 0, 0}, {10, 2, 0}, {10, 0, 2}};
    cell.set(0, s_ids, coords.data());
    EXPECT_EQ(cell.locatePoint(point, 0, pcoord), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(10.4f, 0.4f, 0.4f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.2f, 0.2f, 0.2f), 1e-5f));
}

// Points built from the cell's own weights are found back at their
// parametric coordinates; outside ones are refused unless the tolerance
// reaches them.  The wedge also refuses r + s > 1 with r and s in [0, 1];
// the pyramid's (r, s, t) maps to base(r, s) (1 - t) + apex t.
TEST_F(PbCellKindsTest, NewtonInvertsTheMultilinearMaps) {
    PbHexahedronCell hexahedron; // no two faces parallel
    Coords hexNodes = {{0, 0, 0},       {2, 0, 0.2f}, {2.5f, 2, 0}, {0, 1.5f, 0.3f},
                       {0.2f, 0.1f, 2}, {2, 0, 2.5f}, {2, 2, 2},    {0, 2, 1.8f}};
    hexahedron.set(0, s_ids, hexNodes.data());
    PbWedgeCell wedge;
    Coords wedgeNodes = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0.5f}, {0, 0, 2}, {2.5f, 0, 2}, {0, 2, 2}};
    wedge.set(0, s_ids, wedgeNodes.data());
    PbPyramidCell pyramid;
    Coords pyramidNodes = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {1, 1, 2}};
    pyramid.set(0, s_ids, pyramidNodes.data());
    PbQuadrangleCell quadrangle;
    Coords quadNodes = {{0, 0, 0}, {2, 0, 0}, {3, 2, 0}, {0, 1, 0}};
    quadrangle.set(0, s_ids, quadNodes.data(), false);
    struct Case {
        const PbCell* cell;
        std::vector<SbVec3f> inside;
        SbVec3f outside;
        float reachingTolerance;
    };
    const Case cases[] = {
        {&hexahedron,
         {{0.5f, 0.5f, 0.5f}, {0.1f, 0.8f, 0.3f}, {0.95f, 0.05f, 0.99f}, {0, 1, 0.5f}},
         {0.5f, 1.3f, 0.5f},
         0.35f},
        {&wedge,
         {{0.2f, 0.3f, 0.4f}, {0.5f, 0.5f, 0.9f}, {0.05f, 0.9f, 0.1f}},
         {0.8f, 0.8f, 0.5f},
         0.65f},
        {&pyramid, {{0.2f, 0.7f, 0.25f}, {0.5f, 0.5f, 0.9f}}, {0.5f, 0.5f, 1.25f}, 0.3f},
        {&quadrangle, {{0.1f, 0.05f, 0}, {0.1f, 1, 0}, {0.9f, 0.6f, 0}}, {1.2f, 0.5f, 0}, 0.25f},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.cell->getNumNodes());
        for (const SbVec3f& expected : c.inside) {
            ASSERT_EQ(c.cell->locatePoint(toWorld(*c.cell, expected), 0.001f, pcoord), 1);
            EXPECT_TRUE(pcoord.equals(expected, 1e-3f));
        }
        SbVec3f outside = toWorld(*c.cell, c.outside);
        EXPECT_EQ(c.cell->locatePoint(outside, 0, pcoord), 0);
        EXPECT_TRUE(pcoord.equals(c.outside, 1e-3f));
        EXPECT_EQ(c.cell->locatePoint(outside, c.reachingTolerance, pcoord), 1);
    }
    // The pyramid's apex weight, written out: (0.2, 0.7) on the base.
    EXPECT_EQ(
        pyramid.locatePoint(SbVec3f(0.4f, 1.4f, 0) * 0.75f + SbVec3f(1, 1, 2) * 0.25f, 0, pcoord),
        1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.2f, 0.7f, 0.25f), 1e-3f));

    // A unit cube's top face pressed onto its bottom one: the Jacobian vanishes.
    Coords flat = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                   {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    hexahedron.set(0, s_ids, flat.data());
    EXPECT_EQ(hexahedron.locatePoint(SbVec3f(0.5f, 0.5f, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(meshtest::isFinite(pcoord));
    // Area of a quadrangle: half the cross product of its diagonals.
    quadNodes = {{0, 0, 0}, {3, 0, 0}, {2, 2, 0}, {1, 2, 0}};
    quadrangle.set(0, s_ids, quadNodes.data(), false);
    EXPECT_FLOAT_EQ(quadrangle.getArea(), 4.0f);
    EXPECT_FLOAT_EQ(quadrangle.getLongestEdgeLength(), 3.0f);
}

TEST_F(PbCellKindsTest, QuadrangleUsesTheTwoAxesItsNormalDoesNotDominate) {
    PbQuadrangleCell cell;
    Coords coords = {{5, 0, 0}, {5, 1, 0}, {5, 1, 1}, {5, 0, 1}};
    cell.set(0, s_ids, coords.data(), true);
    EXPECT_EQ(cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.75f, 0), 1e-3f));
    // Mean diagonal sqrt(2): points within sqrt(2)/3 of the plane are kept.
    EXPECT_EQ(cell.locatePoint(SbVec3f(5.45f, 0.25f, 0.75f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(4.5f, 0.25f, 0.75f), 0, pcoord), 0);
    // Without z the same nodes collapse onto a segment of the x,y plane.
    cell.set(0, s_ids, coords.data(), false);
    EXPECT_EQ(cell.locatePoint(SbVec3f(5, 0.25f, 0.75f), 0, pcoord), 0);
    // Normal (1, 0, 1): the lower axis (x) is dropped, y and z are used.
    coords = {{0, 0, 1}, {0, 1, 1}, {1, 1, 0}, {1, 0, 0}};
    cell.set(0, s_ids, coords.data(), true);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-3f));
}

TEST_F(PbCellKindsTest, TriangleProjectsOnThePlaneMostFacingIt) {
    PbTriangleCell cell;
    Coords coords = {{0, 0, 5}, {2, 0, 5}, {0, 2, 5}};
    cell.set(0, s_ids, coords.data(), false);
    EXPECT_EQ(cell.getProjectionPlane(), 2);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 1.0f, 40.0f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));

    coords = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}};
    cell.set(0, s_ids, coords.data(), true);
    EXPECT_EQ(cell.getProjectionPlane(), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.25f, 0.1f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.25f, 0.5f, 0), 1e-6f));

    // Normal (1, 1, 0): the first of the equal components wins.
    coords = {{1, 0, 0}, {0, 1, 0}, {1, 0, 1}};
    cell.set(0, s_ids, coords.data(), true);
    EXPECT_EQ(cell.getProjectionPlane(), 0);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), 0, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-6f));
}

// With z coordinates the point must lie within a third of the mean edge
// length of the plane; without them the projected test alone decides.
TEST_F(PbCellKindsTest, TriangleRejectsPointsFarFromItsPlaneOnlyWithZCoordinates) {
    PbTriangleCell cell;
    Coords coords = {{0, 0, 0}, {3, 0, 0}, {0, 4, 0}}; // mean edge 4
    cell.set(0, s_ids, coords.data(), true);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1.3f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, -1.3f), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1.4f), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(SbVec3f(1.0f / 3, 0.25f, 0), 1e-6f));
    cell.set(0, s_ids, coords.data(), false);
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 100), 0, pcoord), 1);
}

// The cell lines, node lines with the mesh node ids, then each kind's own.
TEST_F(PbCellKindsTest, PrintsLetterForLetter) {
    const std::string header =
        "=====================print cell informations ==================== \n";
    PbPixelCell pixel;
    const int pixelIds[4] = {6, 7, 9, 8};
    pixel.setBox(2, pixelIds, SbVec3f(-1, 0.5f, 0), SbVec3f(2, 0.25f, 0));
    EXPECT_EQ(printed(pixel), header + "PbCell:: m_numFaces = 1\n"
                                       "PbCell:: m_numEdges = 4\n"
                                       "PbCell:: m_numNodes = 4\n"
                                       "PbCell:: m_index = 2\n"
                                       "PbCell:: node 6 : -1.000000 0.500000 0.000000\n"
                                       "PbCell:: node 7 : 1.000000 0.500000 0.000000\n"
                                       "PbCell:: node 9 : 1.000000 0.750000 0.000000\n"
                                       "PbCell:: node 8 : -1.000000 0.750000 0.000000\n"
                                       "PbPixelCell:: xmin xmax : -1.000000 1.000000\n"
                                       "PbPixelCell:: ymin ymax : 0.500000 0.750000\n");

    PbVoxelCell voxel;
    const int voxelIds[8] = {0, 1, 3, 2, 4, 5, 7, 6};
    voxel.setBox(4, voxelIds, SbVec3f(0, -1, 2), SbVec3f(0.5f, 2, 1));
    std::string text = printed(voxel);
    EXPECT_NE(text.find("PbCell:: m_numFaces = 6\n"
                        "PbCell:: m_numEdges = 12\n"
                        "PbCell:: m_numNodes = 8\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("PbCell:: node 6 : 0.000000 1.000000 3.000000\n"
                        "PbVoxelCell:: xmin xmax : 0.000000 0.500000\n"
                        "PbVoxelCell:: ymin ymax : -1.000000 1.000000\n"
                        "PbVoxelCell:: zmin zmax : 2.000000 3.000000\n"),
              std::string::npos)
        << text;

    PbTriangleCell triangle;
    const int triangleIds[3] = {4, 9, 2};
    Coords coords = {{1, 1, 0}, {3, 1, 0}, {1, 5, 0}};
    triangle.set(11, triangleIds, coords.data(), false);
    EXPECT_EQ(printed(triangle),
              header + "PbCell:: m_numFaces = 1\n"
                       "PbCell:: m_numEdges = 3\n"
                       "PbCell:: m_numNodes = 3\n"
                       "PbCell:: m_index = 11\n"
                       "PbCell:: node 4 : 1.000000 1.000000 0.000000\n"
                       "PbCell:: node 9 : 3.000000 1.000000 0.000000\n"
                       "PbCell:: node 2 : 1.000000 5.000000 0.000000\n"
                       "m_coordToPcoordMatrix a,b,c,d 0.500000 -0.000000 -0.000000 0.250000\n"
                       "m_translatePcoord x,y 0.500000 0.250000\n");

    PbTetrahedronCell tetrahedron;
    coords = {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {0, 0, 1}};
    tetrahedron.set(0, s_ids, coords.data());
    tetrahedron.locatePoint(SbVec3f(0, 0, 0), 0, pcoord);
    text = printed(tetrahedron);
    EXPECT_NE(text.find("PbCell:: node 3 : 0.000000 0.000000 1.000000\n"
                        "PbTetrahedronCell:: affine transformation matrix ...\n"
                        "PbTetrahedronCell:: 0.500000 0.000000 0.000000\n"
                        "PbTetrahedronCell:: 0.000000 0.250000 0.000000\n"),
              std::string::npos)
        << text;
}
