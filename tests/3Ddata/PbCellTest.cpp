#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPixelCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include "3Ddata/CellTestHelpers.h"
#include "support/ErrorRecorder.h"

#include <Inventor/SbPlane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

using celltest::Coords;

namespace {

using Pairs = std::vector<std::vector<int>>;

// Each kind with its tables as the cell model states them.
struct Kind {
    const char* name;
    std::function<std::unique_ptr<PbCell>()> make;
    int numFacets;
    Pairs edges;
    Pairs facets;
    Coords reference;
};

const Coords s_quadRef = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
const Coords s_hexRef = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                         {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
const Pairs s_quadEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
const Pairs s_hexEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                          {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
const Pairs s_hexFacets = {{0, 3, 7, 4}, {1, 5, 6, 2}, {0, 4, 5, 1},
                           {3, 2, 6, 7}, {0, 1, 2, 3}, {4, 7, 6, 5}};

template <typename T> std::function<std::unique_ptr<PbCell>()> maker() {
    return [] { return std::unique_ptr<PbCell>(new T(nullptr)); };
}

std::vector<Kind> allKinds() {
    return {
        {"triangle",
         maker<PbTriangleCell>(),
         1,
         {{0, 1}, {1, 2}, {2, 0}},
         {{0, 1, 2}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}},
        {"quadrangle", maker<PbQuadrangleCell>(), 1, s_quadEdges, {{0, 1, 2, 3}}, s_quadRef},
        {"pixel", maker<PbPixelCell>(), 1, s_quadEdges, {{0, 1, 2, 3}}, s_quadRef},
        {"tetrahedron",
         maker<PbTetrahedronCell>(),
         4,
         {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}},
         {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
        {"pyramid",
         maker<PbPyramidCell>(),
         5,
         {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}},
         {{0, 1, 2, 3}, {0, 4, 1}, {1, 4, 2}, {2, 4, 3}, {3, 4, 0}},
         {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}}},
        {"wedge",
         maker<PbWedgeCell>(),
         5,
         {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}},
         {{0, 1, 2}, {3, 5, 4}, {0, 2, 5, 3}, {1, 4, 5, 2}, {0, 3, 4, 1}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}}},
        {"hexahedron", maker<PbHexahedronCell>(), 6, s_hexEdges, s_hexFacets, s_hexRef},
        {"voxel", maker<PbVoxelCell>(), 6, s_hexEdges, s_hexFacets, s_hexRef},
    };
}

std::vector<int> toVector(const PbArrayOfInt& array) {
    return std::vector<int>(array.get(), array.get() + array.getNum());
}

// Mesh node ids far from 0..numNodes-1 and out of order.
std::vector<int> meshIds(int numNodes) {
    std::vector<int> ids;
    for (int node = 0; node < numNodes; ++node)
        ids.push_back(1000 + 37 * ((node * 7) % numNodes));
    return ids;
}

class PbCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
};

} // namespace

TEST_F(PbCellTest, CountsEdgesFacetsAndReferenceNodesFollowTheCellModel) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        EXPECT_EQ(cell->getNumFacets(), kind.numFacets);
        EXPECT_EQ(cell->getNumEdges(), static_cast<int>(kind.edges.size()));
        EXPECT_EQ(cell->getNumNodes(), static_cast<int>(kind.reference.size()));
        EXPECT_EQ(cell->getIndex(), -1);
        for (int node = 0; node < cell->getNumNodes(); ++node)
            EXPECT_EQ(cell->getNodeCoord(node), kind.reference[node]) << "node " << node;
        PbArrayOfInt nodes;
        for (int edge = 0; edge < cell->getNumEdges(); ++edge) {
            const int* pair = cell->getNodesLocalIndexOfEdge(edge);
            ASSERT_NE(pair, nullptr);
            EXPECT_EQ(std::vector<int>(pair, pair + 2), kind.edges[edge]) << "edge " << edge;
            cell->getNodesLocalIndexOfEdge(edge, nodes);
            EXPECT_EQ(toVector(nodes), kind.edges[edge]) << "edge " << edge;
        }
        for (int facet = 0; facet < cell->getNumFacets(); ++facet) {
            cell->getNodesLocalIndexOfFacet(facet, nodes);
            EXPECT_EQ(toVector(nodes), kind.facets[facet]) << "facet " << facet;
        }
    }
}

TEST_F(PbCellTest, NodeEdgeAndFacetQueriesAnswerMeshNodeIds) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        std::vector<int> ids = meshIds(cell->getNumNodes());
        cell->set(42, ids.data(), kind.reference.data());
        EXPECT_EQ(cell->getIndex(), 42);
        EXPECT_EQ(cell->getNodeIndexPtr(), ids.data());
        PbArrayOfInt nodes;
        cell->getNodesIndex(nodes);
        EXPECT_EQ(toVector(nodes), ids);
        for (int node = 0; node < cell->getNumNodes(); ++node)
            EXPECT_EQ(cell->getNodeIndex(node), ids[node]);
        for (int edge = 0; edge < cell->getNumEdges(); ++edge) {
            cell->getNodesIndexOfEdge(edge, nodes);
            EXPECT_EQ(toVector(nodes),
                      (std::vector<int>{ids[kind.edges[edge][0]], ids[kind.edges[edge][1]]}));
        }
        for (int facet = 0; facet < cell->getNumFacets(); ++facet) {
            cell->getNodesIndexOfFacet(facet, nodes);
            std::vector<int> expected;
            for (int local : kind.facets[facet])
                expected.push_back(ids[local]);
            EXPECT_EQ(toVector(nodes), expected);
        }
    }
}

TEST_F(PbCellTest, OutOfRangeNumbersGiveEmptyAnswersAndAMessage) {
    ErrorRecorder errors;
    PbHexahedronCell cell;
    std::vector<int> ids = meshIds(8);
    cell.set(0, ids.data(), s_hexRef.data());
    PbArrayOfInt nodes;
    nodes.add(5);
    cell.getNodesIndexOfFacet(6, nodes);
    EXPECT_EQ(nodes.getNum(), 0);
    EXPECT_TRUE(errors.contains("PbCell::getNodesIndexOfFacet"));
    nodes.add(5);
    cell.getNodesLocalIndexOfFacet(-1, nodes);
    EXPECT_EQ(nodes.getNum(), 0);
    EXPECT_EQ(cell.getNodesLocalIndexOfEdge(12), nullptr);
    cell.getNodesIndexOfEdge(-1, nodes);
    EXPECT_EQ(nodes.getNum(), 0);
    EXPECT_EQ(cell.getNodeIndex(8), -1);
    EXPECT_EQ(cell.getNodeCoord(-1), SbVec3f(0, 0, 0));
    EXPECT_EQ(errors.messages().size(), 6u);
    EXPECT_TRUE(errors.contains("PbCell::getNodeCoord"));
}

TEST_F(PbCellTest, WeightsAreOneAtTheirNodeAndSumToOne) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        float weights[PbCell::MAX_NODES];
        for (int node = 0; node < cell->getNumNodes(); ++node) {
            cell->getWeight(kind.reference[node], weights);
            for (int other = 0; other < cell->getNumNodes(); ++other)
                EXPECT_EQ(weights[other], other == node ? 1.0f : 0.0f)
                    << "node " << node << " weight " << other;
        }
        cell->getWeight(SbVec3f(0.2f, 0.3f, 0.4f), weights);
        float sum = 0.0f;
        for (int node = 0; node < cell->getNumNodes(); ++node)
            sum += weights[node];
        EXPECT_NEAR(sum, 1.0f, 1e-6f);
    }
}

TEST_F(PbCellTest, WeightsMatchTheirFormulas) {
    const float r = 0.2f, s = 0.3f, t = 0.4f;
    const SbVec3f p(r, s, t);
    float w[8];
    PbTriangleCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[0], 0.5f);
    PbTetrahedronCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[0], 0.1f);
    EXPECT_FLOAT_EQ(w[3], t);
    PbQuadrangleCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[2], r * s);
    EXPECT_FLOAT_EQ(w[3], (1 - r) * s);
    PbPyramidCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[1], r * (1 - s) * (1 - t));
    EXPECT_FLOAT_EQ(w[4], t);
    PbWedgeCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[0], (1 - r - s) * (1 - t));
    EXPECT_FLOAT_EQ(w[3], (1 - r - s) * t);
    EXPECT_FLOAT_EQ(w[5], s * t);
    PbHexahedronCell().getWeight(p, w);
    EXPECT_FLOAT_EQ(w[6], r * s * t);
    EXPECT_FLOAT_EQ(w[7], (1 - r) * s * t);
}

TEST_F(PbCellTest, DerivativesMatchFiniteDifferencesOfTheWeights) {
    std::vector<std::unique_ptr<PbVolumeCell>> cells;
    cells.emplace_back(new PbTetrahedronCell);
    cells.emplace_back(new PbPyramidCell);
    cells.emplace_back(new PbWedgeCell);
    cells.emplace_back(new PbHexahedronCell);
    const SbVec3f p(0.3f, 0.2f, 0.6f);
    const float h = 1e-2f;
    for (const auto& cell : cells) {
        float d[3][8], plus[8], minus[8];
        cell->getDerivs(p, d[0], d[1], d[2]);
        for (int axis = 0; axis < 3; ++axis) {
            SbVec3f step(0, 0, 0);
            step[axis] = h;
            cell->getWeight(p + step, plus);
            cell->getWeight(p - step, minus);
            for (int node = 0; node < cell->getNumNodes(); ++node)
                EXPECT_NEAR(d[axis][node], (plus[node] - minus[node]) / (2 * h), 1e-3f)
                    << cell->getNumNodes() << " nodes, axis " << axis << ", node " << node;
        }
    }
    float dr[4], ds[4], plus[4], minus[4];
    PbQuadrangleCell quad;
    PbQuadrangleCell::getDerivs(p, dr, ds);
    quad.getWeight(p + SbVec3f(h, 0, 0), plus);
    quad.getWeight(p - SbVec3f(h, 0, 0), minus);
    for (int node = 0; node < 4; ++node)
        EXPECT_NEAR(dr[node], (plus[node] - minus[node]) / (2 * h), 1e-3f);
    quad.getWeight(p + SbVec3f(0, h, 0), plus);
    quad.getWeight(p - SbVec3f(0, h, 0), minus);
    for (int node = 0; node < 4; ++node)
        EXPECT_NEAR(ds[node], (plus[node] - minus[node]) / (2 * h), 1e-3f);
}

// The values live at the mesh node ids of the cell: a value array of a
// large mesh whose entries 0..7 would give a different answer.
TEST_F(PbCellTest, InterpolationReadsValuesAtMeshNodeIds) {
    auto linear = [](const SbVec3f& p) { return 2 * p[0] + 3 * p[1] + 5 * p[2] + 1; };
    const SbVec3f pcoord(0.2f, 0.3f, 0.4f);
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        std::vector<int> ids = meshIds(cell->getNumNodes());
        cell->set(3, ids.data(), kind.reference.data());
        std::vector<float> values(2000, -100.0f);
        std::vector<SbVec3f> vectors(2000, SbVec3f(-100, -100, -100));
        for (int node = 0; node < cell->getNumNodes(); ++node) {
            values[ids[node]] = linear(kind.reference[node]);
            vectors[ids[node]] = kind.reference[node] * 2.0f;
        }
        bool surface = cell->getNumFacets() == 1;
        SbVec3f where = surface ? SbVec3f(0.2f, 0.3f, 0.0f) : pcoord;
        if (std::string(kind.name) == "pyramid")
            where.setValue(0.2f * 0.6f, 0.3f * 0.6f, 0.4f); // apex at (0,0,1)
        EXPECT_NEAR(cell->getValue(pcoord, values.data()), linear(where), 1e-5f);
        SbVec3f vector = cell->getValue(pcoord, vectors.data());
        EXPECT_TRUE(vector.equals(where * 2.0f, 1e-5f));

        float weights[PbCell::MAX_NODES];
        cell->getWeight(pcoord, weights);
        EXPECT_FLOAT_EQ(cell->getValue(weights, values.data()),
                        cell->getValue(pcoord, values.data()));
    }
}

TEST_F(PbCellTest, InterpolationWithoutNodeIdsPostsAnError) {
    ErrorRecorder errors;
    PbHexahedronCell cell;
    float values[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(cell.getValue(SbVec3f(0.5f, 0.5f, 0.5f), values), 0.0f);
    EXPECT_TRUE(errors.contains("PbCell::getValue"));
}

TEST_F(PbCellTest, FillingFromMeshArraysReadsAtTheNodeIds) {
    float x[6] = {9, 0, 9, 2, 9, 0};
    float y[6] = {9, 0, 9, 0, 9, 3};
    float z[6] = {9, 1, 9, 1, 9, 1};
    int ids[3] = {1, 3, 5};
    PbTriangleCell triangle;
    triangle.set(7, ids, x, y, z);
    EXPECT_EQ(triangle.getNodeCoord(1), SbVec3f(2, 0, 1));
    EXPECT_EQ(triangle.getNodeCoord(2), SbVec3f(0, 3, 1));
    EXPECT_TRUE(triangle.hasZ());
    triangle.set(7, ids, x, y, nullptr);
    EXPECT_EQ(triangle.getNodeCoord(2), SbVec3f(0, 3, 0));
    EXPECT_FALSE(triangle.hasZ());

    ErrorRecorder errors;
    triangle.set(8, nullptr, x, y, z);
    EXPECT_TRUE(errors.contains("PbCell::set"));
    EXPECT_EQ(triangle.getIndex(), 7);
    EXPECT_EQ(triangle.getNodeCoord(1), SbVec3f(2, 0, 0));
}

TEST_F(PbCellTest, BoxCentreAndLongestEdge) {
    PbHexahedronCell cell;
    Coords coords;
    for (const SbVec3f& p : s_hexRef)
        coords.push_back(SbVec3f(1 + 2 * p[0], -1 + 3 * p[1], 4 * p[2] - p[0]));
    cell.set(0, nullptr, coords.data());
    float bounds[6];
    cell.getBounds(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]);
    EXPECT_EQ(std::vector<float>(bounds, bounds + 6), (std::vector<float>{1, -1, -1, 3, 2, 4}));
    EXPECT_EQ(cell.getBoundingBox().getMin(), SbVec3f(1, -1, -1));
    EXPECT_TRUE(cell.getCenter().equals(SbVec3f(2, 0.5f, 1.5f), 1e-6f));
    EXPECT_FLOAT_EQ(cell.getLongestEdgeLength(), 4.0f);
}

TEST_F(PbCellTest, EdgesCrossingAPlane) {
    PbHexahedronCell cell;
    std::vector<int> ids = meshIds(8);
    cell.set(0, ids.data(), s_hexRef.data());
    PbArrayOfInt edges, edgeNodes;
    PbArrayOfFloat ratios;
    edges.add(99);
    cell.getEdgesCrossingPlane(SbPlane(SbVec3f(0, 0, 1), 0.25f), edges, edgeNodes, &ratios);
    EXPECT_EQ(toVector(edges), (std::vector<int>{8, 9, 10, 11}));
    EXPECT_EQ(toVector(edgeNodes),
              (std::vector<int>{ids[0], ids[4], ids[1], ids[5], ids[2], ids[6], ids[3], ids[7]}));
    ASSERT_EQ(ratios.getNum(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_FLOAT_EQ(ratios[i], 0.25f);

    // A plane x + y = 1.5 cuts the edges around node 2 only.
    SbPlane corner(SbVec3f(1, 1, 0), 1.5f / std::sqrt(2.0f));
    cell.getEdgesCrossingPlane(corner, edges, edgeNodes, nullptr);
    EXPECT_EQ(toVector(edges), (std::vector<int>{1, 2, 5, 6}));
}

TEST_F(PbCellTest, ACopyKeepsItsCoordinatesWhenTheOriginalIsRefilled) {
    PbWedgeCell cell;
    std::vector<int> ids = meshIds(6);
    Coords coords = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {2, 0, 2}, {0, 2, 2}};
    cell.set(5, ids.data(), coords.data());
    PbWedgeCell copy(cell);
    Coords other(6, SbVec3f(7, 7, 7));
    cell.set(6, ids.data(), other.data());
    EXPECT_EQ(copy.getIndex(), 5);
    EXPECT_EQ(copy.getNodeCoord(4), SbVec3f(2, 0, 2));
    SbVec3f pcoord;
    EXPECT_EQ(copy.locatePoint(SbVec3f(0.5f, 0.5f, 1), 0, pcoord), 1);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 1), 0, pcoord), 0);
}
