#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>

#include "3Ddata/MeshTestHelpers.h"

#include <cmath>
#include <limits>
#include <memory>

namespace {

class PbTriangleMesh2DTest : public meshtest::MeshTest {
protected:
    // A quadrangle with no four points on a circle once cut, so that its
    // Delaunay triangles are unique.
    void makeTrapezoid(PbQuadrangleMesh2D& mesh) {
        const float x[] = {0, 4, 3, 0};
        const float y[] = {0, 0, 2, 2};
        const int cell[] = {0, 1, 2, 3};
        mesh.setGeometry(4, x, y, 1, cell);
    }

    std::unique_ptr<PbTriangleMesh2D> faultMesh(const PbMesh2D& mesh,
                                                const std::vector<std::vector<SbVec2f>>& lines,
                                                bool split = false) {
        std::vector<int> sizes;
        std::vector<SbVec2f> points;
        for (const auto& line : lines) {
            sizes.push_back(int(line.size()));
            points.insert(points.end(), line.begin(), line.end());
        }
        return std::unique_ptr<PbTriangleMesh2D>(
            mesh.getFaultMesh(int(lines.size()), sizes.data(), points.data(), split));
    }

    static std::vector<int> triangles(const PbTriangleMesh2D& mesh) {
        int numNodes, numCells;
        const float *x, *y, *z;
        const int* cells;
        mesh.getGeometry(numNodes, x, y, z, numCells, cells);
        return std::vector<int>(cells, cells + 3 * numCells);
    }

    static SbVec2f xy(const PbMesh& mesh, int node) {
        SbVec3f p = mesh.getNodeCoord(node);
        return SbVec2f(p[0], p[1]);
    }
};

float linear(const SbVec3f& p) {
    return 2 * p[0] + 3 * p[1] + 1;
}

} // namespace

TEST_F(PbTriangleMesh2DTest, AFaultAcrossAQuadrangleGivesTheKnownTriangles) {
    PbQuadrangleMesh2D trapezoid;
    makeTrapezoid(trapezoid);
    auto mesh = faultMesh(trapezoid, {{SbVec2f(1, -1), SbVec2f(2, 3)}});
    ASSERT_NE(mesh, nullptr);
    // The fault's ends lie outside and are dropped; it crosses the boundary
    // at (1.25, 0) and (1.75, 2).
    ASSERT_EQ(mesh->getNumNodes(), 6);
    for (int n = 0; n < 4; ++n)
        EXPECT_EQ(mesh->getNodeCoord(n), trapezoid.getNodeCoord(n));
    EXPECT_TRUE(mesh->getNodeCoord(4).equals(SbVec3f(1.25f, 0, 0), 1e-6f));
    EXPECT_TRUE(mesh->getNodeCoord(5).equals(SbVec3f(1.75f, 2, 0), 1e-6f));
    EXPECT_EQ(triangles(*mesh), (std::vector<int>{0, 4, 3, 1, 2, 4, 2, 5, 4, 3, 4, 5}));
    EXPECT_FLOAT_EQ(mesh->getArea(), trapezoid.getArea());
    EXPECT_TRUE(mesh->isDataDuplicated());
}

TEST_F(PbTriangleMesh2DTest, FaultNodesTakeValuesInterpolatedInTheSourceMesh) {
    PbQuadrangleMesh2D trapezoid;
    makeTrapezoid(trapezoid);
    std::vector<float> values, z;
    std::vector<SbVec3f> vecs;
    for (int n = 0; n < 4; ++n) {
        SbVec3f p = trapezoid.getNodeCoord(n);
        values.push_back(linear(p));
        z.push_back(-p[0]);
        vecs.emplace_back(p[1], p[0], 1);
    }
    trapezoid.setZCoord(z.data());
    trapezoid.addValuesSet(0, values.data(), "depth");
    const float cellValue = 42;
    trapezoid.addValuesSet(1, &cellValue, PbMesh::PER_CELL, "zone");
    trapezoid.addVecsSet(0, vecs.data(), "flow");
    const SbString names[] = {"a", "b", "c", "d"};
    trapezoid.addStringsSet(0, names, "labels");

    auto mesh = faultMesh(trapezoid, {{SbVec2f(1, -1), SbVec2f(2, 3)}});
    ASSERT_NE(mesh, nullptr);
    const float* depth = mesh->getValuesSet(0);
    ASSERT_NE(depth, nullptr);
    EXPECT_EQ(*mesh->getValuesSetName(0), SbString("depth"));
    for (int n = 0; n < mesh->getNumNodes(); ++n) {
        SbVec3f p = mesh->getNodeCoord(n);
        EXPECT_NEAR(depth[n], linear(p), 1e-4f) << "node " << n;
        EXPECT_NEAR(p[2], -p[0], 1e-5f) << "z of node " << n;
        EXPECT_TRUE(mesh->getVecsSet(0)[n].equals(SbVec3f(p[1], p[0], 1), 1e-5f));
    }
    EXPECT_EQ(mesh->getValuesBinding(1), PbMesh::PER_CELL);
    for (int c = 0; c < mesh->getNumCells(); ++c)
        EXPECT_EQ(mesh->getValuesSet(1)[c], 42.0f);
    // (1.25, 0) weighs most on node 0, (1.75, 2) on node 2.
    EXPECT_EQ(mesh->getStringsSet(0)[4], SbString("a"));
    EXPECT_EQ(mesh->getStringsSet(0)[5], SbString("c"));

    float value = 0;
    SbVec2f derivs;
    ASSERT_EQ(mesh->evaluateFaultNodeWithDerivs(5, trapezoid, values.data(), value, derivs), 1);
    EXPECT_NEAR(value, linear(SbVec3f(1.75f, 2, 0)), 1e-4f);
    EXPECT_TRUE(derivs.equals(SbVec2f(2, 3), 1e-4f));
    ASSERT_EQ(mesh->evaluateFaultNode(4, trapezoid, values.data(), value), 1);
    EXPECT_NEAR(value, linear(SbVec3f(1.25f, 0, 0)), 1e-4f);

    // A node outside the source mesh finds nothing and keeps the output.
    const float x[] = {0, 10, 0};
    const float y[] = {0, 0, 10};
    const int cell[] = {0, 1, 2};
    PbTriangleMesh2D big;
    big.setGeometry(3, x, y, 1, cell);
    value = -1;
    EXPECT_EQ(big.evaluateFaultNodeWithDerivs(1, trapezoid, values.data(), value, derivs), 0);
    EXPECT_EQ(value, -1.0f);
    EXPECT_TRUE(errors().messages().empty());
    EXPECT_EQ(big.evaluateFaultNode(3, trapezoid, values.data(), value), 0);
    EXPECT_EQ(big.evaluateFaultNode(0, trapezoid, nullptr, value), 0);
    EXPECT_EQ(errors().messages().size(), 2u);
    EXPECT_TRUE(errors().contains("PbTriangleMesh2D::evaluateFaultNode"));
}

TEST_F(PbTriangleMesh2DTest, PerCellValuesFollowTheCellHoldingEachTriangle) {
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(3, 3, 0.0f, 0.0f, 2.0f, 2.0f);
    const float zones[] = {10, 20, 30, 40};
    grid.addValuesSet(0, zones, PbMesh::PER_CELL, "zone");
    auto mesh = faultMesh(grid, {{SbVec2f(0.5f, -1), SbVec2f(0.5f, 3)}});
    ASSERT_NE(mesh, nullptr);
    EXPECT_FLOAT_EQ(mesh->getArea(), 4.0f);
    for (int c = 0; c < mesh->getNumCells(); ++c) {
        SbVec3f centre = mesh->getCell(c)->getCenter();
        SbVec3f pcoord;
        const PbCell* source = grid.findContainingCell(centre, 0.0f, pcoord);
        ASSERT_NE(source, nullptr);
        EXPECT_EQ(mesh->getValuesSet(0)[c], zones[source->getIndex()]) << "triangle " << c;
    }
}

TEST_F(PbTriangleMesh2DTest, TrianglesFollowTheFaultAndStayInsideAConcaveMesh) {
    // An L of three unit squares; the fault runs from outside, through the
    // notch, to the far corner region.
    //   6---7
    //   |   |
    //   3---4---5
    //   |   |   |
    //   0---1---2
    const float x[] = {0, 1, 2, 0, 1, 2, 0, 1};
    const float y[] = {0, 0, 0, 1, 1, 1, 2, 2};
    const int cells[] = {0, 1, 4, 3, 1, 2, 5, 4, 3, 4, 7, 6};
    PbQuadrangleMesh2D l;
    l.setGeometry(8, x, y, 3, cells);
    std::vector<SbVec2f> fault = {SbVec2f(0.2f, 0.3f), SbVec2f(1.6f, 0.7f), SbVec2f(2.5f, 2.5f)};
    auto mesh = faultMesh(l, {fault});
    ASSERT_NE(mesh, nullptr);
    EXPECT_NEAR(mesh->getArea(), 3.0f, 1e-5f);
    // Every triangle lies inside the L (the notch [1, 2] x [1, 2] is empty).
    for (int c = 0; c < mesh->getNumCells(); ++c) {
        SbVec3f centre = mesh->getCell(c)->getCenter();
        EXPECT_FALSE(centre[0] > 1 && centre[1] > 1) << "triangle " << c;
    }
    // The inner fault points are nodes 8 and 9, and the fault's first
    // segment is a side of the triangles.
    EXPECT_TRUE(xy(*mesh, 8).equals(fault[0], 1e-6f));
    EXPECT_TRUE(xy(*mesh, 9).equals(fault[1], 1e-6f));
    PbArrayOfInt pair, shared;
    pair.add(8);
    pair.add(9);
    mesh->getNodesOwnerCellsInd(pair, shared);
    EXPECT_EQ(shared.getNum(), 2);
}

TEST_F(PbTriangleMesh2DTest, CrossingFaultsMeetAtANewNode) {
    PbRegularCartesianGrid2D grid;
    grid.setGeometry(2, 2, 0.0f, 0.0f, 4.0f, 4.0f);
    auto mesh = faultMesh(grid, {{SbVec2f(1, 1), SbVec2f(3, 3)}, {SbVec2f(1, 3), SbVec2f(3, 1)}});
    ASSERT_NE(mesh, nullptr);
    // The four fault points, then the crossing.
    ASSERT_EQ(mesh->getNumNodes(), 9);
    EXPECT_TRUE(xy(*mesh, 8).equals(SbVec2f(2, 2), 1e-5f));
    EXPECT_EQ(meshtest::ownerCells(*mesh, 8).size(), 4u);
    EXPECT_FLOAT_EQ(mesh->getArea(), 16.0f);
}

TEST_F(PbTriangleMesh2DTest, SplittingCutsEncroachedFaultSegmentsOnTheFault) {
    const float x[] = {0, 4, 3.9f, 0.1f};
    const float y[] = {0, 0, 0.5f, 0.6f};
    const int cell[] = {0, 1, 2, 3};
    PbQuadrangleMesh2D thin;
    thin.setGeometry(4, x, y, 1, cell);
    std::vector<SbVec2f> fault = {SbVec2f(-1, 0.3f), SbVec2f(5, 0.31f)};
    auto kept = faultMesh(thin, {fault}, false);
    auto split = faultMesh(thin, {fault}, true);
    ASSERT_NE(kept, nullptr);
    ASSERT_NE(split, nullptr);
    EXPECT_EQ(kept->getNumNodes(), 6);
    EXPECT_GT(split->getNumNodes(), kept->getNumNodes());
    EXPECT_NEAR(split->getArea(), thin.getArea(), 1e-5f);
    auto onFault = [&](const SbVec2f& p) {
        float t = (p[0] - fault[0][0]) / (fault[1][0] - fault[0][0]);
        return std::fabs(p[1] - (fault[0][1] + t * (fault[1][1] - fault[0][1]))) < 1e-5f;
    };
    for (int n = 4; n < split->getNumNodes(); ++n)
        EXPECT_TRUE(onFault(xy(*split, n))) << "node " << n;
    // No node lies inside the circle on any piece of the fault.
    std::vector<int> tris = triangles(*split);
    for (size_t t = 0; t < tris.size(); t += 3) {
        for (int k = 0; k < 3; ++k) {
            int a = tris[t + k], b = tris[t + (k + 1) % 3];
            if (a < 4 || b < 4)
                continue;
            SbVec2f pa = xy(*split, a), pb = xy(*split, b);
            for (int n = 0; n < split->getNumNodes(); ++n)
                EXPECT_GE((pa - xy(*split, n)).dot(pb - xy(*split, n)), -1e-6f)
                    << "node " << n << " encroaches " << a << "-" << b;
        }
    }
}

TEST_F(PbTriangleMesh2DTest, BadFaultInputIsReportedAndGivesNoMesh) {
    PbQuadrangleMesh2D trapezoid;
    makeTrapezoid(trapezoid);
    const SbVec2f points[] = {SbVec2f(1, 1), SbVec2f(2, 1)};
    const SbVec2f notFinite[] = {SbVec2f(1, 1),
                                 SbVec2f(std::numeric_limits<float>::quiet_NaN(), 1)};
    const int two[] = {2}, one[] = {1};
    EXPECT_EQ(trapezoid.getFaultMesh(-1, two, points), nullptr);
    EXPECT_EQ(trapezoid.getFaultMesh(1, nullptr, points), nullptr);
    EXPECT_EQ(trapezoid.getFaultMesh(1, two, nullptr), nullptr);
    EXPECT_EQ(trapezoid.getFaultMesh(1, one, points), nullptr);
    EXPECT_EQ(trapezoid.getFaultMesh(1, two, notFinite), nullptr);
    PbQuadrangleMesh2D empty;
    EXPECT_EQ(empty.getFaultMesh(1, two, points), nullptr);
    EXPECT_EQ(errors().messages().size(), 6u);
    EXPECT_TRUE(errors().contains("PbMesh2D::getFaultMesh"));
    std::unique_ptr<PbTriangleMesh2D> plain(trapezoid.getFaultMesh(0, nullptr, nullptr));
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->getNumCells(), 2);
}
