#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingCubeCase.h"
#include "3Ddata/PiMarchingWedgeCase.h"
#include "MeshTestHelpers.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace {

std::vector<std::unique_ptr<PbVolumeCell>> volumeCells() {
    std::vector<std::unique_ptr<PbVolumeCell>> cells;
    cells.emplace_back(new PbTetrahedronCell);
    cells.emplace_back(new PbPyramidCell);
    cells.emplace_back(new PbWedgeCell);
    cells.emplace_back(new PbHexahedronCell);
    return cells;
}

bool isAbove(int caseId, int node) {
    return (caseId >> node) & 1;
}

// The facet of the reference cell holding both edges, or -1.
int commonFacet(const PbCell& cell, int e0, int e1) {
    PbArrayOfInt nodes;
    for (int facet = 0; facet < cell.getNumFacets(); ++facet) {
        cell.getNodesLocalIndexOfFacet(facet, nodes);
        auto holds = [&](int edge) {
            const int* ends = cell.getNodesLocalIndexOfEdge(edge);
            return nodes.find(ends[0]) >= 0 && nodes.find(ends[1]) >= 0;
        };
        if (holds(e0) && holds(e1))
            return facet;
    }
    return -1;
}

// Checks one case on the reference cell: it cuts exactly the edges whose
// ends lie on different sides, its triangles face the nodes above the level
// and its surface is closed except along the cell's facets.
void checkSurface(const PbCell& cell, int id, const PiMarchingCase& mc) {
    EXPECT_EQ(mc.getId(), id);
    std::set<int> cut, used;
    for (int edge = 0; edge < cell.getNumEdges(); ++edge) {
        const int* ends = cell.getNodesLocalIndexOfEdge(edge);
        if (isAbove(id, ends[0]) != isAbove(id, ends[1]))
            cut.insert(edge);
    }
    for (int edge : mc.getEdgeStripSet())
        if (edge >= 0)
            used.insert(edge);
    EXPECT_EQ(used, cut);

    std::map<std::pair<int, int>, int> sides;
    for (const std::vector<int>& triangle : meshtest::runsOf(mc.getEdgeFaceSet())) {
        ASSERT_EQ(triangle.size(), 3u);
        SbVec3f points[3], up(0, 0, 0);
        for (int i = 0; i < 3; ++i) {
            const int* ends = cell.getNodesLocalIndexOfEdge(triangle[i]);
            SbVec3f p0 = cell.getNodeCoord(ends[0]), p1 = cell.getNodeCoord(ends[1]);
            points[i] = (p0 + p1) * 0.5f;
            up += isAbove(id, ends[1]) ? p1 - p0 : p0 - p1;
            int a = triangle[i], b = triangle[(i + 1) % 3];
            ++sides[{std::min(a, b), std::max(a, b)}];
        }
        EXPECT_GT((points[1] - points[0]).cross(points[2] - points[0]).dot(up), 0.0f);
    }
    for (const auto& side : sides) {
        if (side.second == 2)
            continue;
        EXPECT_EQ(side.second, 1);
        EXPECT_GE(commonFacet(cell, side.first.first, side.first.second), 0)
            << "open side " << side.first.first << "-" << side.first.second;
    }
}

// Facets whose diagonal nodes lie on the same side, and the facets of the
// optional quadrangles.
void checkOptionalQuadrangles(const PbCell& cell, int id, const PiMarchingCase& mc) {
    std::set<int> ambiguous, covered;
    PbArrayOfInt f;
    for (int facet = 0; facet < cell.getNumFacets(); ++facet) {
        cell.getNodesLocalIndexOfFacet(facet, f);
        if (f.getNum() == 4 && isAbove(id, f[0]) == isAbove(id, f[2]) &&
            isAbove(id, f[1]) == isAbove(id, f[3]) && isAbove(id, f[0]) != isAbove(id, f[1]))
            ambiguous.insert(facet);
    }
    for (const std::vector<int>& quad : meshtest::runsOf(mc.getOptQuad())) {
        ASSERT_EQ(quad.size(), 4u);
        int facet = commonFacet(cell, quad[0], quad[1]);
        EXPECT_EQ(commonFacet(cell, quad[2], quad[3]), facet);
        covered.insert(facet);
    }
    EXPECT_TRUE(std::includes(ambiguous.begin(), ambiguous.end(), covered.begin(), covered.end()));
    // The pyramid and wedge tables give every such facet its quadrangle.
    if (cell.getNumNodes() == 5 || cell.getNumNodes() == 6) {
        EXPECT_EQ(covered, ambiguous);
    }
}

class PiMarchingCaseTableTest : public LibraryTest {};

} // namespace

TEST_F(PiMarchingCaseTableTest, EveryCaseIsBuiltOnceAndSeparatesTheNodes) {
    testing::internal::CaptureStdout();
    PbHexahedronCell::init();
    PbTetrahedronCell::init();
    PbPyramidCell::init();
    PbWedgeCell::init();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    for (const auto& cell : volumeCells()) {
        std::set<const PiMarchingCase*> distinct;
        for (int id = 0; id < (1 << cell->getNumNodes()); ++id) {
            SCOPED_TRACE(std::to_string(cell->getNumNodes()) + " nodes, case " +
                         std::to_string(id));
            const PiMarchingCase* mc = cell->getMCcase(static_cast<unsigned char>(id));
            ASSERT_NE(mc, nullptr);
            distinct.insert(mc);
            checkSurface(*cell, id, *mc);
            checkOptionalQuadrangles(*cell, id, *mc);
        }
        EXPECT_EQ(distinct.size(), 1u << cell->getNumNodes());
    }
    PbHexahedronCell::finish();
    PbTetrahedronCell::finish();
    PbPyramidCell::finish();
    PbWedgeCell::finish();
}

TEST_F(PiMarchingCaseTableTest, ComplementsFlipStripsAndQuadrangles) {
    PbHexahedronCell cell;
    EXPECT_EQ(cell.getMCcase(1)->getEdgeFaceSet(), (std::vector<int>{0, 8, 3, -1}));
    EXPECT_EQ(cell.getMCcase(254)->getEdgeStripSet(), (std::vector<int>{3, 8, 0}));
    EXPECT_EQ(cell.getMCcase(1)->getNodeStripSet(), (std::vector<int>{0, 1, 0, 4, 3, 0}));
    EXPECT_TRUE(cell.getMCcase(255)->getEdgeStripSet().empty());
    EXPECT_EQ(cell.getMCcase(5)->getOptQuad(), (std::vector<int>{0, 3, 2, 1}));
    EXPECT_EQ(cell.getMCcase(250)->getOptQuad(), (std::vector<int>{1, 2, 3, 0}));

    PiMarchingCubeCase mc(2, 9);
    mc.setStripSet({11, 2, 8, 0, -1, 5, 10, 6});
    EXPECT_EQ(mc.getEdgeFaceSet(), (std::vector<int>{11, 2, 8, -1, 8, 2, 0, -1, 5, 10, 6, -1}));
    std::unique_ptr<PiMarchingCase> reverse = mc.getReverse();
    EXPECT_EQ(reverse->getId(), 246);
    EXPECT_EQ(reverse->getEdgeFaceSet(),
              (std::vector<int>{2, 11, 0, -1, 0, 11, 8, -1, 6, 10, 5, -1}));
}

// On a facet whose diagonal nodes lie on the same side, a case and its
// complement cross differently: the nodes that one cuts off, the other
// joins.  Case 5 (nodes 0 and 2 above) cuts them off on the bottom facet.
TEST_F(PiMarchingCaseTableTest, ComplementsCrossAmbiguousFacetsTheOtherWay) {
    PbHexahedronCell cell;
    EXPECT_EQ(cell.getMCcase(5)->getFacetCrossing(4), PiMarchingCase::FACET_SEPARATES_ABOVE);
    EXPECT_EQ(cell.getMCcase(250)->getFacetCrossing(4), PiMarchingCase::FACET_JOINS_ABOVE);
    EXPECT_EQ(cell.getMCcase(5)->getFacetCrossing(0), PiMarchingCase::FACET_UNAMBIGUOUS);
    int ambiguous = 0;
    for (const auto& kind : volumeCells()) {
        int numCases = 1 << kind->getNumNodes();
        for (int id = 1; id + 1 < numCases; ++id) {
            const PiMarchingCase* mc = kind->getMCcase(static_cast<unsigned char>(id));
            const PiMarchingCase* complement = kind->getMCcase(mc->getRevertId());
            for (int facet = 0; facet < mc->getNumFacets(); ++facet) {
                PiMarchingCase::FacetCrossing crossing = mc->getFacetCrossing(facet);
                if (crossing == PiMarchingCase::FACET_UNAMBIGUOUS) {
                    EXPECT_EQ(complement->getFacetCrossing(facet), crossing);
                    continue;
                }
                ++ambiguous;
                EXPECT_NE(complement->getFacetCrossing(facet), crossing)
                    << kind->getNumNodes() << " nodes, case " << id << ", facet " << facet;
            }
        }
    }
    // Six facets of the hexahedron, the base of the pyramid and three
    // facets of the wedge, each ambiguous for two of its classifications.
    EXPECT_EQ(ambiguous, 6 * 2 * 16 + 1 * 2 * 2 + 3 * 2 * 4);
}

TEST_F(PiMarchingCaseTableTest, CountedInitAndDuplicateMessages) {
    auto factory = [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
        return std::make_unique<PiMarchingWedgeCase>(base, id);
    };
    PiMarchingCaseTable table(6, "PbWedgeCell::addMC ", factory, {{0, {}, {}}});
    EXPECT_EQ(table.init(), 1);
    EXPECT_EQ(table.init(), 1);
    EXPECT_EQ(table.getNumAdded(), 2);
    table.finish();
    EXPECT_TRUE(table.isBuilt());
    EXPECT_EQ(table.get(5), nullptr);

    testing::internal::CaptureStdout();
    table.addMC(factory(1, 5));
    table.addMC(factory(2, 5));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "PbWedgeCell::addMC   4 : error caseId   5 already set !!!\n");
    EXPECT_EQ(table.get(5)->getBaseNumber(), 1);
    table.finish();
    EXPECT_FALSE(table.isBuilt());

    ErrorRecorder errors;
    EXPECT_EQ(PbTetrahedronCell().getMCcase(16), nullptr);
    EXPECT_TRUE(errors.contains("PbVolumeCell::getMCcase"));
}
