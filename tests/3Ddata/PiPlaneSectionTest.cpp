#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbCellFilterIterator.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

#include "3Ddata/PiCrossContour.h"
#include "3Ddata/PiPlaneSection.h"
#include "MeshTestHelpers.h"
#include "support/LibraryTest.h"
#include "support/TetBlock.h"

#include <Inventor/SbPlane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>

namespace {

using meshtest::runsOf;

std::vector<SbVec3f> coordsOf(const PiEdgePoints& points, const PbMesh3D& mesh) {
    std::vector<SbVec3f> coords(points.getNum());
    points.computeCoords(mesh, coords.data());
    return coords;
}

// Each polygon's area vector (half the sum of the cross products of its
// sides seen from its first point): along the plane's normal when the
// polygon turns counter-clockwise about it.
float sectionArea(const PiPlaneSection& section, const PbMesh3D& mesh, const SbPlane& plane) {
    std::vector<SbVec3f> coords = coordsOf(section.getPoints(), mesh);
    float area = 0.0f;
    for (const std::vector<int>& polygon : runsOf(section.getCoordIndex())) {
        SbVec3f vector(0.0f, 0.0f, 0.0f);
        for (size_t i = 1; i + 1 < polygon.size(); ++i)
            vector += (coords[polygon[i]] - coords[polygon[0]])
                          .cross(coords[polygon[i + 1]] - coords[polygon[0]]) *
                      0.5f;
        EXPECT_GT(vector.dot(plane.getNormal()), 0.0f);
        area += vector.length();
    }
    for (const SbVec3f& p : coords)
        EXPECT_NEAR(plane.getDistance(p), 0.0f, 1e-5f);
    return area;
}

float contourLength(const PiCrossContour& contour, const PbMesh3D& mesh, int& numLines) {
    std::vector<SbVec3f> coords = coordsOf(contour.getPoints(), mesh);
    float length = 0.0f;
    std::vector<std::vector<int>> lines = runsOf(contour.getCoordIndex());
    numLines = static_cast<int>(lines.size());
    for (const std::vector<int>& line : lines)
        for (size_t i = 0; i + 1 < line.size(); ++i)
            length += (coords[line[i + 1]] - coords[line[i]]).length();
    return length;
}

// The unit cube as a regular, a rectilinear (uneven steps), a curvilinear
// grid and a block of tetrahedra.
std::vector<std::unique_ptr<PbMesh3D>> unitCubes() {
    std::vector<std::unique_ptr<PbMesh3D>> meshes;
    meshes.push_back(std::make_unique<PbRegularCartesianGrid3D>(5, 6, 7, 0, 0, 0, 1, 1, 1));
    const float x[] = {0.0f, 0.1f, 0.5f, 1.0f}, y[] = {0.0f, 0.7f, 1.0f},
                z[] = {0.0f, 0.2f, 0.25f, 0.9f, 1.0f};
    meshes.push_back(std::make_unique<PbParalCartesianGrid3D>(4, 3, 5, x, y, z));
    std::vector<float> cx, cy, cz;
    for (float xi : x)
        for (float yj : y)
            for (float zk : z) {
                cx.push_back(xi);
                cy.push_back(yj);
                cz.push_back(zk);
            }
    meshes.push_back(std::make_unique<PbCartesianGrid3D>(4, 3, 5, cx.data(), cy.data(), cz.data()));
    meshtest::TetBlock block = meshtest::makeTetBlock(4);
    for (std::vector<float>* axis : {&block.x, &block.y, &block.z})
        for (float& value : *axis)
            value /= 4.0f;
    meshes.push_back(std::make_unique<PbTetrahedronMesh3D>(block.numNodes, block.x.data(),
                                                           block.y.data(), block.z.data(),
                                                           block.numCells, block.cells.data()));
    return meshes;
}

class PiPlaneSectionTest : public LibraryTest {};

} // namespace

// The plane z = 0.31 + 0.2 x crosses the unit cube in a rectangle of sides 1
// and sqrt(1.04); cut either way its area and outline are those of that
// rectangle, and the polygons turn counter-clockwise about either normal.
TEST_F(PiPlaneSectionTest, ObliqueSectionAndOutlineOfTheUnitCube) {
    SbVec3f normal(-0.2f, 0.0f, 1.0f);
    normal.normalize();
    for (float side : {1.0f, -1.0f}) {
        SbPlane plane(side * normal, SbVec3f(0.0f, 0.0f, 0.31f));
        for (const auto& mesh : unitCubes()) {
            PiPlaneSection section;
            PbCellFilterIterator cells(mesh.get());
            section.cutCells(*mesh, plane, cells);
            EXPECT_NEAR(sectionArea(section, *mesh, plane), std::sqrt(1.04f), 1e-4f);
            std::set<std::pair<int, int>> edges;
            for (int p = 0; p < section.getPoints().getNum(); ++p)
                EXPECT_TRUE(edges
                                .insert({section.getPoints().getNodes()[2 * p],
                                         section.getPoints().getNodes()[2 * p + 1]})
                                .second);

            PiCrossContour contour;
            contour.build(*mesh, plane);
            int numLines = 0;
            EXPECT_NEAR(contourLength(contour, *mesh, numLines), 2.0f + 2.0f * std::sqrt(1.04f),
                        1e-4f);
            EXPECT_EQ(numLines, 1);
            std::vector<int32_t> line = contour.getCoordIndex();
            EXPECT_EQ(line.front(), line[line.size() - 2]) << "the outline is closed";
        }
    }
}

// A plane across an axis of a grid whose nodes lie on axes is cut in the
// layer it crosses, as cutting every cell would cut it.
TEST_F(PiPlaneSectionTest, CutAcrossAnAxisAsCutCellByCell) {
    for (const auto& mesh : unitCubes()) {
        auto grid = dynamic_cast<const PbGrid3D*>(mesh.get());
        bool onAxes = dynamic_cast<const PbRegularCartesianGrid3D*>(grid) ||
                      dynamic_cast<const PbParalCartesianGrid3D*>(grid);
        if (!onAxes)
            continue;
        for (int axis = 0; axis < 3; ++axis)
            for (float side : {1.0f, -1.0f})
                for (float at : {0.35f, 0.5f}) {
                    SbVec3f normal(0.0f, 0.0f, 0.0f);
                    normal[axis] = side;
                    SbPlane plane(normal, side * at);
                    PiPlaneSection fast, cells;
                    fast.cutAcrossAxis(*grid, plane, axis);
                    PbCellFilterIterator all(grid);
                    cells.cutCells(*grid, plane, all);
                    EXPECT_NEAR(sectionArea(fast, *grid, plane), 1.0f, 1e-5f);
                    EXPECT_NEAR(sectionArea(cells, *grid, plane), 1.0f, 1e-5f);
                    EXPECT_EQ(fast.getPoints().getNum(), cells.getPoints().getNum());
                }
    }
}
