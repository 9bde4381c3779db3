#include <Quillon/3Ddata/PbCellFilterIterator.h>
#include <Quillon/3Ddata/PbCellIterator.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularMesh1D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/nodes/PoIntervalCellFilter.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/ErrorRecorder.h"
#include "support/RecordingKit.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// Two tetrahedra sharing the facet 1 2 3; both boxes are the unit cube.
const float s_x[] = {0, 1, 0, 0, 1};
const float s_y[] = {0, 0, 1, 0, 1};
const float s_z[] = {0, 0, 0, 1, 1};
const int s_cells[] = {0, 1, 2, 3, 1, 2, 3, 4};

class PbMeshTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        RecordingKit::ensureRegistered();
        kit = new RecordingKit;
        kit->ref();
    }
    void TearDown() override {
        kit->unref();
        PoQuillon::finish();
    }
    std::vector<PbBase::ChangeType> changesSeen() const {
        std::vector<PbBase::ChangeType> changes;
        for (const auto& n : kit->notifications)
            changes.push_back(n.change);
        return changes;
    }

    PbTetrahedronMesh3D duplicating{5, s_x, s_y, s_z, 2, s_cells, 1};
    PbTetrahedronMesh3D referencing{5, s_x, s_y, s_z, 2, s_cells, 0};
    RecordingKit* kit = nullptr;
};

// A mesh kind whose geometry is set again: stage 0 with the same sizes,
// stage 1 with the same nodes and another number of cells (when the kind
// allows it), stage 2 with another number of nodes.
struct Resizable {
    const char* name;
    std::function<std::unique_ptr<PbMesh>(int isDuplicate)> make;
    std::function<bool(PbMesh&, int stage)> reshape; // false: no such stage
};

const float s_axis[] = {0, 1, 2, 3, 4, 5};

std::vector<Resizable> resizables() {
    auto grid2D = [](PbMesh& mesh, int stage) {
        const int sizes[3][2] = {{2, 6}, {3, 4}, {4, 2}};
        static_cast<PbParalCartesianGrid2D&>(mesh).setGeometry(sizes[stage][0], sizes[stage][1],
                                                               s_axis + (stage == 0), s_axis);
        return true;
    };
    auto grid3D = [](PbMesh& mesh, int stage) {
        const int sizes[3][3] = {{4, 3, 5}, {6, 2, 5}, {3, 3, 5}};
        static_cast<PbParalCartesianGrid3D&>(mesh).setGeometry(
            sizes[stage][0], sizes[stage][1], sizes[stage][2], s_axis + (stage == 0), s_axis,
            s_axis);
        return true;
    };
    auto line = [](PbMesh& mesh, int stage) {
        if (stage == 1)
            return false;
        static_cast<PbRegularMesh1D&>(mesh).setGeometry(stage == 0 ? 3 : 4, 0.0f, 5.0f);
        return true;
    };
    auto tetrahedra = [](PbMesh& mesh, int stage) {
        const int sizes[3][2] = {{5, 2}, {5, 1}, {4, 1}};
        static_cast<PbTetrahedronMesh3D&>(mesh).setGeometry(sizes[stage][0], s_x, s_y, s_z,
                                                            sizes[stage][1], s_cells);
        return true;
    };
    return {
        {"surface grid",
         [](int dup) { return std::unique_ptr<PbMesh>(new PbParalCartesianGrid2D(dup)); }, grid2D},
        {"volume grid",
         [](int dup) { return std::unique_ptr<PbMesh>(new PbParalCartesianGrid3D(dup)); }, grid3D},
        {"line", [](int dup) { return std::unique_ptr<PbMesh>(new PbRegularMesh1D(dup)); }, line},
        {"tetrahedra",
         [](int dup) { return std::unique_ptr<PbMesh>(new PbTetrahedronMesh3D(dup)); }, tetrahedra},
    };
}

} // namespace

// Sets whose length no longer matches the mesh would be read beyond their
// end; a mesh that references the caller's arrays leaves them to the caller.
TEST_F(PbMeshTest, ResizingDropsTheSetsThatNoLongerFitFromADuplicatingMeshOnly) {
    const std::vector<float> values(60, 1.0f);
    const std::vector<SbVec3f> vecs(60);
    const std::vector<SbString> strings(60);
    for (const Resizable& kind : resizables()) {
        SCOPED_TRACE(kind.name);
        for (int isDuplicate : {1, 0}) {
            std::unique_ptr<PbMesh> mesh = kind.make(isDuplicate);
            kind.reshape(*mesh, 0);
            mesh->addValuesSet(0, values.data(), "per node");
            mesh->addValuesSet(1, values.data(), PbMesh::PER_CELL, "per cell");
            mesh->addVecsSet(0, vecs.data(), PbMesh::PER_CELL, "per cell");
            mesh->addStringsSet(0, strings.data(), "per node");
            auto numSets = [&] {
                return mesh->getNumValuesSet() + mesh->getNumVecsSet() + mesh->getNumStringsSet();
            };
            kind.reshape(*mesh, 0);
            EXPECT_EQ(numSets(), 4) << "same sizes";
            if (kind.reshape(*mesh, 1)) {
                EXPECT_EQ(numSets(), isDuplicate ? 2 : 4) << "other cells";
                EXPECT_EQ(mesh->getValuesSet(1) == nullptr, isDuplicate != 0);
            }
            kind.reshape(*mesh, 2);
            EXPECT_EQ(numSets(), isDuplicate ? 0 : 4) << "other nodes";
        }
    }
}

TEST_F(PbMeshTest, DuplicatingMeshCopiesSetsReferencingMeshKeepsThePointer) {
    float values[5] = {1, 2, 3, 4, 5};
    SbString strings[5] = {"a", "b", "c", "d", "e"};
    duplicating.addValuesSet(3, values, "temperature");
    duplicating.addStringsSet(2, strings, "labels");
    referencing.addValuesSet(3, values, "temperature");
    PbTetrahedronMesh3D copy(duplicating);
    values[0] = 100;
    strings[4] = "changed";
    EXPECT_EQ(duplicating.getValuesSet(3)[0], 1.0f);
    EXPECT_EQ(duplicating.getStringsSet(2)[4], SbString("e"));
    EXPECT_EQ(referencing.getValuesSet(3), values);
    EXPECT_EQ(*duplicating.getValuesSetName(3), SbString("temperature"));
    EXPECT_EQ(*duplicating.getStringsSetName(2), SbString("labels"));
    EXPECT_EQ(duplicating.getValuesBinding(3), PbMesh::PER_NODE);

    // A copy owns copies of the owned sets and keeps every id.
    EXPECT_NE(copy.getValuesSet(3), duplicating.getValuesSet(3));
    EXPECT_EQ(copy.getFltDataSetId(3), duplicating.getFltDataSetId(3));
    EXPECT_EQ(copy.getGeometryId(), duplicating.getGeometryId());
    EXPECT_EQ(copy.getTopologyId(), duplicating.getTopologyId());
    duplicating.removeAllValuesSet();
    EXPECT_EQ(copy.getValuesSet(3)[4], 5.0f);
}

// The record keeps its duplicate flag and its storage unless the new
// values need more.
TEST_F(PbMeshTest, ReAddingReplacesValuesNameAndBinding) {
    float perNode[5] = {1, 2, 3, 4, 5};
    float perCell[2] = {7, 8};
    duplicating.addValuesSet(3, perCell, PbMesh::PER_CELL, "cells");
    const float* small = duplicating.getValuesSet(3);
    unsigned int firstId = duplicating.getFltDataSetId(3);
    duplicating.addValuesSet(3, perNode, "nodes");
    const float* large = duplicating.getValuesSet(3);
    EXPECT_NE(large, small);
    EXPECT_EQ(*duplicating.getValuesSetName(3), SbString("nodes"));
    EXPECT_EQ(duplicating.getValuesBinding(3), PbMesh::PER_NODE);
    EXPECT_GT(duplicating.getFltDataSetId(3), firstId);
    duplicating.addValuesSet(3, perCell, PbMesh::PER_CELL, "cells");
    EXPECT_EQ(duplicating.getNumValuesSet(), 1);
    EXPECT_EQ(duplicating.getValuesBinding(3), PbMesh::PER_CELL);
    EXPECT_EQ(duplicating.getValuesSet(3), large);
    EXPECT_EQ(duplicating.getValuesSet(3)[1], 8.0f);
}

TEST_F(PbMeshTest, UnknownSetIndicesGiveTheDocumentedDefaults) {
    float min = -42.0f;
    EXPECT_EQ(duplicating.getValuesSet(9), nullptr);
    EXPECT_EQ(duplicating.getVecsSetName(9), nullptr);
    EXPECT_EQ(duplicating.getStringsSet(9), nullptr);
    EXPECT_EQ(duplicating.getValuesBinding(9), PbMesh::PER_NODE);
    EXPECT_EQ(duplicating.getVecsBinding(9), PbMesh::PER_NODE);
    EXPECT_EQ(duplicating.getFltDataSetId(9), 0xFFFFFFFFu);
    EXPECT_EQ(duplicating.getVecDataSetId(9), 0xFFFFFFFFu);
    EXPECT_EQ(duplicating.getMinValuesSet(9, min), 0);
    EXPECT_EQ(duplicating.getMaxVecsSet(9, min), 0);
    EXPECT_EQ(min, -42.0f);
}

TEST_F(PbMeshTest, MinimumAndMaximumScanValuesAndVectorLengths) {
    float values[5] = {3, -1, 4, -1, 5};
    SbVec3f vecs[5] = {SbVec3f(3, 4, 0), SbVec3f(0, 0, 1), SbVec3f(0, 2, 0), SbVec3f(6, 8, 0),
                       SbVec3f(0, 0, -2)};
    duplicating.addValuesSet(1, values, "");
    duplicating.addVecsSet(1, vecs, "");
    float min, max;
    ASSERT_EQ(duplicating.getMinValuesSet(1, min), 1);
    ASSERT_EQ(duplicating.getMaxValuesSet(1, max), 1);
    EXPECT_EQ(min, -1.0f);
    EXPECT_EQ(max, 5.0f);
    ASSERT_EQ(duplicating.getMinVecsSet(1, min), 1);
    ASSERT_EQ(duplicating.getMaxVecsSet(1, max), 1);
    EXPECT_FLOAT_EQ(min, 1.0f);
    EXPECT_FLOAT_EQ(max, 10.0f);
}

TEST_F(PbMeshTest, SetChangesNotifyTheirOwnChangeTypes) {
    float values[5] = {};
    SbVec3f vecs[5];
    SbString strings[5] = {"a", "b", "c", "d", "e"};
    duplicating.addConnection(kit);
    duplicating.addValuesSet(0, values, "");
    duplicating.addStringsSet(0, strings, "");
    duplicating.addVecsSet(0, vecs, "");
    EXPECT_EQ(duplicating.removeValuesSet(7), 0);
    EXPECT_EQ(duplicating.removeStringsSet(0), 1);
    duplicating.removeAllVecsSet();
    std::vector<PbBase::ChangeType> expected = {PbBase::VALUE_SETS,  PbBase::STRING_SETS,
                                                PbBase::VECTOR_SETS, PbBase::VALUE_SETS,
                                                PbBase::STRING_SETS, PbBase::VECTOR_SETS};
    EXPECT_EQ(changesSeen(), expected);
    EXPECT_EQ(duplicating.getStringsSet(0), nullptr);
    duplicating.removeConnection(kit);
}

TEST_F(PbMeshTest, NullArrayIsRejectedByADuplicatingMeshAndKeptByAReferencingOne) {
    ErrorRecorder errors;
    duplicating.addValuesSet(0, nullptr, "");
    duplicating.addVecsSet(0, nullptr, "");
    duplicating.addStringsSet(0, nullptr, "");
    EXPECT_EQ(duplicating.getNumValuesSet(), 0);
    EXPECT_EQ(duplicating.getNumVecsSet(), 0);
    EXPECT_EQ(duplicating.getNumStringsSet(), 0);
    EXPECT_TRUE(errors.contains("PbMesh::addValuesSet"));
    EXPECT_TRUE(errors.contains("PbMesh::addStringsSet"));
    referencing.addValuesSet(0, nullptr, "");
    EXPECT_EQ(referencing.getNumValuesSet(), 1);
}

TEST_F(PbMeshTest, IdsComeFromProcessWideCounters) {
    PbTetrahedronMesh3D later;
    EXPECT_GT(later.getGeometryId(), referencing.getGeometryId());
    EXPECT_GT(later.getTopologyId(), referencing.getTopologyId());
    unsigned int geometry = duplicating.getGeometryId();
    unsigned int topology = duplicating.getTopologyId();
    duplicating.setCoordinates(s_x, s_y, s_z);
    EXPECT_GT(duplicating.getGeometryId(), geometry);
    EXPECT_EQ(duplicating.getTopologyId(), topology);
    duplicating.setGeometry(5, s_x, s_y, s_z, 1, s_cells);
    EXPECT_GT(duplicating.getTopologyId(), topology);
}

TEST_F(PbMeshTest, CellBoxStatisticsPreferTheLowestIndexAndFollowTheGeometry) {
    int index = -1;
    SbBox3f smallest = duplicating.getSmallestCellBox(index);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(smallest.getMax(), SbVec3f(1, 1, 1));
    duplicating.getBiggestCellBox(index);
    EXPECT_EQ(index, 0);

    const float farX[] = {0, 1, 0, 0, 3};
    duplicating.setCoordinates(farX, s_y, s_z);
    SbBox3f biggest = duplicating.getBiggestCellBox(index);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(biggest.getMax()[0], 3.0f);
}

TEST_F(PbMeshTest, OwnerCellsOfNodeSetsAndNeighbours) {
    PbArrayOfInt nodes, cells;
    nodes.add(1);
    duplicating.getNodesOwnerCellsInd(nodes, cells);
    EXPECT_EQ(cells.getNum(), 2);
    nodes.add(4);
    duplicating.getNodesOwnerCellsInd(nodes, cells);
    ASSERT_EQ(cells.getNum(), 1);
    EXPECT_EQ(cells[0], 1);
    nodes.add(0);
    duplicating.getNodesOwnerCellsInd(nodes, cells);
    EXPECT_EQ(cells.getNum(), 0);

    duplicating.getAdjacentCellsIndByFacet(0, cells);
    ASSERT_EQ(cells.getNum(), 1);
    EXPECT_EQ(cells[0], 1);
    duplicating.getAdjacentCellsIndByNode(1, cells);
    ASSERT_EQ(cells.getNum(), 1);
    EXPECT_EQ(cells[0], 0);
}

TEST_F(PbMeshTest, LocationOnASharedFacetPrefersTheLowestIndexUnlessTheHintHoldsIt) {
    SbVec3f onFacet(0.25f, 0.25f, 0.5f);
    SbVec3f pcoord;
    EXPECT_EQ(meshtest::locatedIndex(duplicating.findContainingCell(onFacet, 0.0f, pcoord)), 0);
    const PbCell* hint = duplicating.getCell(1);
    EXPECT_EQ(meshtest::locatedIndex(duplicating.findContainingCell(onFacet, 0.0f, pcoord, hint)),
              1);
    EXPECT_EQ(duplicating.findContainingCell(onFacet, -0.01f, pcoord), nullptr);
    EXPECT_EQ(duplicating.findContainingCell(SbVec3f(2, 2, 2), 0.0f, pcoord), nullptr);
}

TEST_F(PbMeshTest, PrintWritesTheMeshLinesThenTheKindsLines) {
    EXPECT_EQ(meshtest::printed(duplicating),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = TRUE\n"
              "PbMesh:: numMeshNodes = 5\n"
              "PbMesh:: m_numMeshCells = 2\n"
              "PbTetrahedronMesh3D:: elemIndex[0] = 0 1 2 3\n"
              "PbTetrahedronMesh3D:: elemIndex[1] = 1 2 3 4\n");
    EXPECT_EQ(meshtest::printed(PbTetrahedronMesh3D(0)),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = FALSE\n"
              "PbMesh:: numMeshNodes = 0\n"
              "PbMesh:: m_numMeshCells = 0\n");
    EXPECT_EQ(PbTetrahedronMesh3D().isEmpty(), 1);
    EXPECT_EQ(duplicating.isEmpty(), 0);
}

namespace {
// An application's own filter, overriding with the float value that the
// iterators pass.
class OddCellFilter : public PoCellFilter {
public:
    SbBool acceptCell(int cellIndex, float) const override { return cellIndex % 2 == 1; }
};
} // namespace

TEST_F(PbMeshTest, CellIteratorsVisitEveryCellOrTheAcceptedOnes) {
    std::vector<int> visited;
    PbCellIterator all(&duplicating);
    for (int c = all.first(); c < duplicating.getNumCells(); c = all.next())
        visited.push_back(c);
    EXPECT_EQ(visited, (std::vector<int>{0, 1}));

    PoIntervalCellFilter* filter = new PoIntervalCellFilter;
    filter->ref();
    filter->min = 5.0f;
    filter->max = 10.0f;
    const float cellValues[] = {1.0f, 7.0f};
    PbCellFilterIterator accepted(&duplicating, filter, cellValues);
    EXPECT_EQ(accepted.first(), 1);
    EXPECT_EQ(accepted.next(), 2);
    PbCellFilterIterator noValues(&duplicating, filter);
    EXPECT_EQ(noValues.first(), 2);
    PbCellFilterIterator noFilter(&duplicating);
    EXPECT_EQ(noFilter.first(), 0);
    filter->unref();

    auto* odd = new OddCellFilter;
    odd->ref();
    PbCellFilterIterator oddCells(&duplicating, odd);
    EXPECT_EQ(oddCells.first(), 1);
    EXPECT_EQ(oddCells.next(), 2);
    odd->unref();
}
