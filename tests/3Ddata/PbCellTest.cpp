#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPixelCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>

using meshtest::Coords;

namespace {

using Lists = std::vector<std::vector<int>>;

// Each kind with its tables as the cell model states them.
struct Kind {
    const char* name;
    std::function<std::unique_ptr<PbCell>()> make;
    Lists edges;
    Lists facets;
    Coords reference;
    float volume; // of the reference cell
    float area;
};

const Coords s_quadRef = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
const Coords s_hexRef = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                         {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
const Lists s_quadEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
const Lists s_hexEdges = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                          {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
const Lists s_hexFacets = {{0, 3, 7, 4}, {1, 5, 6, 2}, {0, 4, 5, 1},
                           {3, 2, 6, 7}, {0, 1, 2, 3}, {4, 7, 6, 5}};

template <typename T> std::function<std::unique_ptr<PbCell>()> maker() {
    return [] { return std::unique_ptr<PbCell>(new T(nullptr)); };
}

std::vector<Kind> allKinds() {
    return {
        {"triangle",
         maker<PbTriangleCell>(),
         {{0, 1}, {1, 2}, {2, 0}},
         {{0, 1, 2}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
         0.0f,
         0.5f},
        {"quadrangle", maker<PbQuadrangleCell>(), s_quadEdges, {{0, 1, 2, 3}}, s_quadRef, 0, 1},
        {"pixel", maker<PbPixelCell>(), s_quadEdges, {{0, 1, 2, 3}}, s_quadRef, 0, 1},
        {"tetrahedron",
         maker<PbTetrahedronCell>(),
         {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}},
         {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
         1.0f / 6,
         1.5f + std::sqrt(3.0f) / 2},
        {"pyramid",
         maker<PbPyramidCell>(),
         {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}},
         {{0, 1, 2, 3}, {0, 4, 1}, {1, 4, 2}, {2, 4, 3}, {3, 4, 0}},
         {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}},
         1.0f / 3, // apex above node 0
         2.0f + std::sqrt(2.0f)},
        {"wedge",
         maker<PbWedgeCell>(),
         {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}},
         {{0, 1, 2}, {3, 5, 4}, {0, 2, 5, 3}, {1, 4, 5, 2}, {0, 3, 4, 1}},
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
         0.5f,
         3.0f + std::sqrt(2.0f)},
        {"hexahedron", maker<PbHexahedronCell>(), s_hexEdges, s_hexFacets, s_hexRef, 1, 6},
        {"voxel", maker<PbVoxelCell>(), s_hexEdges, s_hexFacets, s_hexRef, 1, 6},
    };
}

bool isSurface(const PbCell& cell) {
    return cell.getNumFacets() == 1;
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

class PbCellTest : public LibraryTest {};

} // namespace

TEST_F(PbCellTest, TablesAndNodeIdsFollowTheCellModel) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        EXPECT_EQ(cell->getNumFacets(), static_cast<int>(kind.facets.size()));
        EXPECT_EQ(cell->getNumEdges(), static_cast<int>(kind.edges.size()));
        EXPECT_EQ(cell->getIndex(), -1);
        float weights[PbCell::MAX_NODES];
        for (int node = 0; node < cell->getNumNodes(); ++node) {
            EXPECT_EQ(cell->getNodeCoord(node), kind.reference[node]) << "node " << node;
            cell->getWeight(kind.reference[node], weights); // one at its node only
            for (int other = 0; other < cell->getNumNodes(); ++other)
                EXPECT_EQ(weights[other], other == node ? 1.0f : 0.0f) << node << ", " << other;
        }

        std::vector<int> ids = meshIds(cell->getNumNodes());
        cell->set(42, ids.data(), kind.reference.data());
        EXPECT_EQ(cell->getIndex(), 42);
        PbArrayOfInt nodes;
        cell->getNodesIndex(nodes);
        EXPECT_EQ(toVector(nodes), ids);
        for (int edge = 0; edge < cell->getNumEdges(); ++edge) {
            const int* pair = cell->getNodesLocalIndexOfEdge(edge);
            EXPECT_EQ(std::vector<int>(pair, pair + 2), kind.edges[edge]) << "edge " << edge;
            cell->getNodesIndexOfEdge(edge, nodes);
            EXPECT_EQ(toVector(nodes),
                      (std::vector<int>{ids[kind.edges[edge][0]], ids[kind.edges[edge][1]]}));
        }
        for (int facet = 0; facet < cell->getNumFacets(); ++facet) {
            cell->getNodesLocalIndexOfFacet(facet, nodes);
            EXPECT_EQ(toVector(nodes), kind.facets[facet]) << "facet " << facet;
            cell->getNodesIndexOfFacet(facet, nodes);
            for (size_t i = 0; i < kind.facets[facet].size(); ++i)
                EXPECT_EQ(nodes[static_cast<int>(i)], ids[kind.facets[facet][i]]);
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
    EXPECT_EQ(cell.getNodesLocalIndexOfEdge(12), nullptr);
    EXPECT_EQ(cell.getNodeIndex(8), -1);
    EXPECT_EQ(cell.getNodeCoord(-1), SbVec3f(0, 0, 0));
    const float x[8] = {};
    cell.set(8, nullptr, x, x, x);
    EXPECT_TRUE(errors.contains("PbCell::set"));
    EXPECT_EQ(cell.getIndex(), 0);
    EXPECT_EQ(errors.messages().size(), 5u);
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
        SbVec3f where = isSurface(*cell) ? SbVec3f(0.2f, 0.3f, 0.0f) : pcoord;
        if (std::string(kind.name) == "pyramid")
            where.setValue(0.2f * 0.6f, 0.3f * 0.6f, 0.4f); // apex at (0,0,1)
        EXPECT_NEAR(cell->getValue(pcoord, values.data()), linear(where), 1e-5f);
        EXPECT_TRUE(cell->getValue(pcoord, vectors.data()).equals(where * 2.0f, 1e-5f));
    }
    ErrorRecorder errors;
    EXPECT_EQ(PbHexahedronCell().getValue(pcoord, std::vector<float>(8, 1).data()), 0.0f);
    EXPECT_TRUE(errors.contains("PbCell::getValue"));
}

// Each cell and its mirror image through its facet (or edge) at z = 0
// (y = 0 for surface cells) share that facet.
TEST_F(PbCellTest, SharedFacetsAndTolerance) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make(), mirror = kind.make();
        int axis = isSurface(*cell) ? 1 : 2;
        Coords mirrored = kind.reference;
        for (SbVec3f& p : mirrored)
            p[axis] = -p[axis];
        cell->set(0, nullptr, kind.reference.data());
        mirror->set(1, nullptr, mirrored.data());
        SbVec3f onFacet(0.2f, 0.2f, 0), inside(0.2f, 0.2f, 0.2f), pcoord;
        onFacet[axis] = 0;
        if (isSurface(*cell))
            inside[2] = 0;
        EXPECT_EQ(cell->locatePoint(onFacet, 0, pcoord), 1);
        EXPECT_EQ(mirror->locatePoint(onFacet, 0, pcoord), 1);
        EXPECT_EQ(cell->locatePoint(onFacet, -0.01f, pcoord), 0);
        EXPECT_EQ(mirror->locatePoint(onFacet, -0.01f, pcoord), 0);
        EXPECT_EQ(cell->locatePoint(inside, -0.1f, pcoord), 1);
        EXPECT_EQ(cell->locatePoint(inside, -0.3f, pcoord), 0);
        EXPECT_EQ(mirror->locatePoint(inside, 0.05f, pcoord), 0);
    }
}

// Mirrored volume cells turn inside out, except the voxel whose order is
// fixed; case ids read the flags at the mesh node ids and turn "every node
// set" into 0, as "none set".
TEST_F(PbCellTest, MeasuresOrderingCaseIdsAndDegenerateCells) {
    for (const Kind& kind : allKinds()) {
        SCOPED_TRACE(kind.name);
        std::unique_ptr<PbCell> cell = kind.make();
        int numNodes = cell->getNumNodes();
        std::vector<int> ids = meshIds(numNodes);
        cell->set(0, ids.data(), kind.reference.data());
        EXPECT_NEAR(cell->getVolume(), kind.volume, 1e-6f);
        EXPECT_NEAR(cell->getArea(), kind.area, 1e-5f);
        EXPECT_EQ(cell->getOrdering(), 1);
        bool surface = isSurface(*cell);
        std::vector<bool> flags(2000, false);
        flags[ids[numNodes - 1]] = true;
        EXPECT_EQ(cell->getIsosurfCaseId(flags), surface ? 0 : 1 << (numNodes - 1));
        for (int node = 1; node < numNodes; ++node)
            flags[ids[node]] = true;
        EXPECT_EQ(cell->getIsosurfCaseId(flags), surface ? 0 : (1 << numNodes) - 2);
        flags[ids[0]] = true;
        EXPECT_EQ(cell->getIsosurfCaseId(flags), 0);
        EXPECT_EQ(cell->getMCcase(1) != nullptr, !surface);

        Coords mirrored = kind.reference;
        for (SbVec3f& p : mirrored)
            p[2] = -p[2];
        cell->set(0, ids.data(), mirrored.data());
        bool keepsOrder = surface || std::string(kind.name) == "voxel";
        EXPECT_EQ(cell->getOrdering(), keepsOrder ? 1 : 0);
        EXPECT_NEAR(cell->getVolume(), kind.volume, 1e-6f);

        // All nodes at one point: nothing is located, nothing is measured.
        Coords collapsed(kind.reference.size(), SbVec3f(1, 2, 3));
        cell->set(0, ids.data(), collapsed.data());
        SbVec3f pcoord;
        EXPECT_EQ(cell->locatePoint(SbVec3f(1, 2, 3), 1.0f, pcoord), 0);
        EXPECT_TRUE(meshtest::isFinite(pcoord));
        EXPECT_EQ(cell->getVolume(), 0.0f);
        EXPECT_EQ(cell->getArea(), 0.0f);
    }
    EXPECT_EQ(PbVoxelCell().getMCcase(37), PbHexahedronCell().getMCcase(37));
    // The top edge 4-5 of a cube pulled down onto its bottom: half the cube.
    PbHexahedronCell sloped;
    Coords nodes = s_hexRef;
    nodes[4][2] = nodes[5][2] = 0;
    sloped.set(0, nullptr, nodes.data());
    EXPECT_FLOAT_EQ(sloped.getVolume(), 0.5f);

    ErrorRecorder errors;
    std::vector<int> ids = meshIds(8);
    sloped.set(0, ids.data(), s_hexRef.data());
    EXPECT_EQ(sloped.getIsosurfCaseId(std::vector<bool>(ids[0], true)), 0);
    EXPECT_TRUE(errors.contains("PbVolumeCell::getIsosurfCaseId"));
}
