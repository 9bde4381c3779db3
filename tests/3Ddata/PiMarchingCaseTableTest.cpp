#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingCubeCase.h"
#include "3Ddata/PiMarchingWedgeCase.h"
#include "support/ErrorRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace {

using Edge = std::pair<int, int>;

struct VolumeKind {
    const char* name;
    std::unique_ptr<PbVolumeCell> cell;
    std::vector<std::vector<int>> facets;
};

std::vector<VolumeKind> volumeKinds() {
    std::vector<VolumeKind> kinds;
    kinds.push_back({"tetrahedron", std::make_unique<PbTetrahedronCell>(), {}});
    kinds.push_back({"pyramid", std::make_unique<PbPyramidCell>(), {}});
    kinds.push_back({"wedge", std::make_unique<PbWedgeCell>(), {}});
    kinds.push_back({"hexahedron", std::make_unique<PbHexahedronCell>(), {}});
    PbArrayOfInt nodes;
    for (VolumeKind& kind : kinds) {
        for (int facet = 0; facet < kind.cell->getNumFacets(); ++facet) {
            kind.cell->getNodesLocalIndexOfFacet(facet, nodes);
            kind.facets.emplace_back(nodes.get(), nodes.get() + nodes.getNum());
        }
    }
    return kinds;
}

bool isAbove(int caseId, int node) {
    return (caseId >> node) & 1;
}

std::vector<std::vector<int>> runs(const std::vector<int>& list) {
    std::vector<std::vector<int>> result(1);
    for (int value : list) {
        if (value < 0)
            result.emplace_back();
        else
            result.back().push_back(value);
    }
    if (result.back().empty())
        result.pop_back();
    return result;
}

// Midpoint of an edge of the reference cell.
SbVec3f midpoint(const PbCell& cell, int edge) {
    const int* ends = cell.getNodesLocalIndexOfEdge(edge);
    return (cell.getNodeCoord(ends[0]) + cell.getNodeCoord(ends[1])) * 0.5f;
}

// Direction from the end below the level to the end above it.
SbVec3f upward(const PbCell& cell, int caseId, int edge) {
    const int* ends = cell.getNodesLocalIndexOfEdge(edge);
    SbVec3f along = cell.getNodeCoord(ends[1]) - cell.getNodeCoord(ends[0]);
    return isAbove(caseId, ends[1]) ? along : -along;
}

// The facet holding both edges, or -1.
int commonFacet(const PbCell& cell, const std::vector<std::vector<int>>& facets, int e0, int e1) {
    for (size_t facet = 0; facet < facets.size(); ++facet) {
        auto holds = [&](int edge) {
            const int* ends = cell.getNodesLocalIndexOfEdge(edge);
            const std::vector<int>& f = facets[facet];
            return std::count(f.begin(), f.end(), ends[0]) &&
                   std::count(f.begin(), f.end(), ends[1]);
        };
        if (holds(e0) && holds(e1))
            return static_cast<int>(facet);
    }
    return -1;
}

class PiMarchingCaseTableTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
};

} // namespace

TEST_F(PiMarchingCaseTableTest, EveryEntryIsFilledOnceWithoutMessages) {
    testing::internal::CaptureStdout();
    PbHexahedronCell::init();
    PbTetrahedronCell::init();
    PbPyramidCell::init();
    PbWedgeCell::init();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    for (VolumeKind& kind : volumeKinds()) {
        SCOPED_TRACE(kind.name);
        int numCases = 1 << kind.cell->getNumNodes();
        std::set<const PiMarchingCase*> distinct;
        for (int id = 0; id < numCases; ++id) {
            const PiMarchingCase* mc = kind.cell->getMCcase(static_cast<unsigned char>(id));
            ASSERT_NE(mc, nullptr) << id;
            EXPECT_EQ(mc->getId(), id);
            distinct.insert(mc);
        }
        EXPECT_EQ(static_cast<int>(distinct.size()), numCases);
    }
    PbHexahedronCell::finish();
    PbTetrahedronCell::finish();
    PbPyramidCell::finish();
    PbWedgeCell::finish();
}

// Each case cuts exactly the edges whose ends lie on different sides, its
// triangles face the nodes above the level, and its surface is closed
// except along the cell's facets.
TEST_F(PiMarchingCaseTableTest, EveryCaseSeparatesTheNodesAboveFromThoseBelow) {
    for (VolumeKind& kind : volumeKinds()) {
        const PbVolumeCell& cell = *kind.cell;
        for (int id = 0; id < (1 << cell.getNumNodes()); ++id) {
            SCOPED_TRACE(std::string(kind.name) + " case " + std::to_string(id));
            const PiMarchingCase* mc = cell.getMCcase(static_cast<unsigned char>(id));
            std::set<int> cut, used;
            for (int edge = 0; edge < cell.getNumEdges(); ++edge) {
                const int* ends = cell.getNodesLocalIndexOfEdge(edge);
                if (isAbove(id, ends[0]) != isAbove(id, ends[1]))
                    cut.insert(edge);
            }
            for (int edge : mc->getEdgeStripSet())
                if (edge >= 0)
                    used.insert(edge);
            EXPECT_EQ(used, cut);

            std::map<Edge, int> sides;
            for (const std::vector<int>& triangle : runs(mc->getEdgeFaceSet())) {
                ASSERT_EQ(triangle.size(), 3u);
                SbVec3f a = midpoint(cell, triangle[0]), b = midpoint(cell, triangle[1]),
                        c = midpoint(cell, triangle[2]);
                SbVec3f up = upward(cell, id, triangle[0]) + upward(cell, id, triangle[1]) +
                             upward(cell, id, triangle[2]);
                EXPECT_GT((b - a).cross(c - a).dot(up), 0.0f);
                for (int i = 0; i < 3; ++i) {
                    int e0 = triangle[i], e1 = triangle[(i + 1) % 3];
                    ++sides[{std::min(e0, e1), std::max(e0, e1)}];
                }
            }
            for (const auto& side : sides) {
                if (side.second == 2)
                    continue;
                EXPECT_EQ(side.second, 1);
                EXPECT_GE(commonFacet(cell, kind.facets, side.first.first, side.first.second), 0)
                    << "open side " << side.first.first << "-" << side.first.second;
            }
        }
    }
}

// The optional quadrangles are the cut points of facets whose diagonal
// nodes lie on the same side; the pyramid and wedge tables give one to every
// such facet.
TEST_F(PiMarchingCaseTableTest, OptionalQuadranglesLieOnAmbiguousFacets) {
    for (VolumeKind& kind : volumeKinds()) {
        const PbVolumeCell& cell = *kind.cell;
        for (int id = 0; id < (1 << cell.getNumNodes()); ++id) {
            SCOPED_TRACE(std::string(kind.name) + " case " + std::to_string(id));
            std::set<int> ambiguous;
            for (size_t facet = 0; facet < kind.facets.size(); ++facet) {
                const std::vector<int>& f = kind.facets[facet];
                if (f.size() == 4 && isAbove(id, f[0]) == isAbove(id, f[2]) &&
                    isAbove(id, f[1]) == isAbove(id, f[3]) &&
                    isAbove(id, f[0]) != isAbove(id, f[1]))
                    ambiguous.insert(static_cast<int>(facet));
            }
            std::set<int> covered;
            for (const std::vector<int>& quad :
                 runs(cell.getMCcase(static_cast<unsigned char>(id))->getOptQuad())) {
                ASSERT_EQ(quad.size(), 4u);
                int facet = commonFacet(cell, kind.facets, quad[0], quad[1]);
                EXPECT_EQ(commonFacet(cell, kind.facets, quad[2], quad[3]), facet);
                covered.insert(facet);
            }
            EXPECT_TRUE(
                std::includes(ambiguous.begin(), ambiguous.end(), covered.begin(), covered.end()));
            if (cell.getNumNodes() == 5 || cell.getNumNodes() == 6) {
                EXPECT_EQ(covered, ambiguous);
            }
        }
    }
}

TEST_F(PiMarchingCaseTableTest, ComplementsFlipTheSurface) {
    PbHexahedronCell cell;
    const PiMarchingCase* one = cell.getMCcase(1);
    const PiMarchingCase* notOne = cell.getMCcase(254);
    EXPECT_EQ(one->getEdgeFaceSet(), (std::vector<int>{0, 8, 3, -1}));
    EXPECT_EQ(notOne->getEdgeStripSet(), (std::vector<int>{3, 8, 0}));
    EXPECT_EQ(one->getNodeStripSet(), (std::vector<int>{0, 1, 0, 4, 3, 0}));
    EXPECT_TRUE(cell.getMCcase(255)->getEdgeStripSet().empty());
    EXPECT_EQ(one->getRevertId(), 254);

    const PiMarchingCase* five = cell.getMCcase(5);
    EXPECT_EQ(five->getOptQuad(), (std::vector<int>{0, 3, 2, 1}));
    EXPECT_EQ(cell.getMCcase(250)->getOptQuad(), (std::vector<int>{1, 2, 3, 0}));
}

TEST_F(PiMarchingCaseTableTest, StripsBecomeTrianglesOfOneOrientation) {
    PiMarchingCubeCase mc(2, 9);
    mc.setStripSet({11, 2, 8, 0, -1, 5, 10, 6});
    EXPECT_EQ(mc.getEdgeFaceSet(), (std::vector<int>{11, 2, 8, -1, 8, 2, 0, -1, 5, 10, 6, -1}));
    EXPECT_EQ(mc.getNodeFaceSet().size(), 3u * 7);
    std::unique_ptr<PiMarchingCase> reverse = mc.getReverse();
    EXPECT_EQ(reverse->getId(), 246);
    EXPECT_EQ(reverse->getEdgeStripSet(), (std::vector<int>{2, 11, 0, 8, -1, 6, 10, 5}));
    EXPECT_EQ(reverse->getEdgeFaceSet(),
              (std::vector<int>{2, 11, 0, -1, 0, 11, 8, -1, 6, 10, 5, -1}));
}

// The edge images of the hexahedron's turns, as listed for the case model.
TEST_F(PiMarchingCaseTableTest, HexahedronTurnsMoveNodesAndEdges) {
    const std::vector<int> nodeImages[3] = {
        {4, 0, 3, 7, 5, 1, 2, 6}, {3, 2, 6, 7, 0, 1, 5, 4}, {3, 0, 1, 2, 7, 4, 5, 6}};
    const std::vector<int> edgeImages[3] = {{8, 3, 11, 7, 9, 1, 10, 5, 4, 0, 2, 6},
                                            {2, 10, 6, 11, 0, 9, 4, 8, 3, 1, 5, 7},
                                            {3, 0, 1, 2, 7, 4, 5, 6, 11, 8, 9, 10}};
    std::vector<int> allEdges;
    for (int edge = 0; edge < 12; ++edge)
        allEdges.insert(allEdges.end(), {edge, -1});
    for (int axis = 0; axis < 3; ++axis) {
        for (int node = 0; node < 8; ++node) {
            PiMarchingCubeCase mc(0, static_cast<unsigned char>(1 << node));
            mc.setStripSet(allEdges);
            std::unique_ptr<PiMarchingCase> turned = axis == 0   ? mc.getRotX(1)
                                                     : axis == 1 ? mc.getRotY(1)
                                                                 : mc.getRotZ(1);
            EXPECT_EQ(turned->getId(), 1 << nodeImages[axis][node]);
            std::vector<int> images;
            for (int edge : turned->getEdgeStripSet())
                if (edge >= 0)
                    images.push_back(edge);
            EXPECT_EQ(images, edgeImages[axis]) << "axis " << axis;
        }
        PiMarchingCubeCase mc(0, 1);
        std::unique_ptr<PiMarchingCase> fourTurns = axis == 0   ? mc.getRotX(4)
                                                    : axis == 1 ? mc.getRotY(4)
                                                                : mc.getRotZ(4);
        EXPECT_EQ(fourTurns->getId(), 1);
    }
    PiMarchingWedgeCase wedge(0, 1);
    EXPECT_EQ(wedge.getRotY(1)->getId(), 1);
    EXPECT_EQ(wedge.getRotZ(3)->getId(), 1);
    EXPECT_EQ(wedge.getRotX(1)->getId(), 8);
}

TEST_F(PiMarchingCaseTableTest, CountedInitAndDuplicateMessages) {
    auto factory = [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
        return std::make_unique<PiMarchingWedgeCase>(base, id);
    };
    PiMarchingCaseTable table(6, "PbWedgeCell::addMC ", factory, {{0, {}, {}}});
    EXPECT_FALSE(table.isBuilt());
    EXPECT_EQ(table.init(), 1);
    EXPECT_EQ(table.init(), 1);
    EXPECT_EQ(table.getNumAdded(), 2);
    table.finish();
    EXPECT_TRUE(table.isBuilt());
    EXPECT_NE(table.get(63), nullptr);
    EXPECT_EQ(table.get(5), nullptr);

    testing::internal::CaptureStdout();
    table.addMC(factory(1, 5));
    table.addMC(factory(2, 5));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "PbWedgeCell::addMC   4 : error caseId   5 already set !!!\n");
    EXPECT_EQ(table.get(5)->getBaseNumber(), 1);
    table.finish();
    EXPECT_FALSE(table.isBuilt());
    table.finish();
    EXPECT_FALSE(table.isBuilt());
}

TEST_F(PiMarchingCaseTableTest, OutOfRangeCaseIdsArePosted) {
    PbTetrahedronCell cell;
    ErrorRecorder errors;
    EXPECT_EQ(cell.getMCcase(16), nullptr);
    EXPECT_TRUE(errors.contains("PbVolumeCell::getMCcase"));
}
