#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/PoQuillon.h>

#include "3Ddata/CellTestHelpers.h"
#include "3Ddata/PiMarchingCase.h"
#include "support/ErrorRecorder.h"

#include <gtest/gtest.h>

using celltest::Coords;

namespace {

const Coords s_unit = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                       {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

// A hexahedron with no parallel faces.
const Coords s_distorted = {{0, 0, 0},       {2, 0, 0.2f}, {2.5f, 2, 0}, {0, 1.5f, 0.3f},
                            {0.2f, 0.1f, 2}, {2, 0, 2.5f}, {2, 2, 2},    {0, 2, 1.8f}};

Coords shifted(const Coords& coords, const SbVec3f& offset) {
    Coords result;
    for (const SbVec3f& p : coords)
        result.push_back(p + offset);
    return result;
}

class PbHexahedronCellTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }

    void fill(PbHexahedronCell& cell, const Coords& coords) { cell.set(0, m_ids, coords.data()); }
    int m_ids[8] = {0, 1, 2, 3, 4, 5, 6, 7};
};

} // namespace

TEST_F(PbHexahedronCellTest, NewtonInvertsTheTrilinearMap) {
    PbHexahedronCell cell;
    fill(cell, s_distorted);
    SbVec3f pcoord;
    for (const SbVec3f& expected : {SbVec3f(0.5f, 0.5f, 0.5f), SbVec3f(0.1f, 0.8f, 0.3f),
                                    SbVec3f(0.95f, 0.05f, 0.99f), SbVec3f(0, 1, 0.5f)}) {
        ASSERT_EQ(cell.locatePoint(celltest::toWorld(cell, expected), 0.001f, pcoord), 1);
        EXPECT_TRUE(pcoord.equals(expected, 1e-3f)) << expected[0] << " " << expected[1];
    }
    SbVec3f outside(0.5f, 1.3f, 0.5f);
    EXPECT_EQ(cell.locatePoint(celltest::toWorld(cell, outside), 0, pcoord), 0);
    EXPECT_TRUE(pcoord.equals(outside, 1e-3f));
    EXPECT_EQ(cell.locatePoint(celltest::toWorld(cell, outside), 0.35f, pcoord), 1);
}

TEST_F(PbHexahedronCellTest, SharedFaceAndNegativeTolerance) {
    PbHexahedronCell left, right;
    fill(left, s_unit);
    fill(right, shifted(s_unit, SbVec3f(1, 0, 0)));
    SbVec3f onFace(1, 0.3f, 0.6f), pcoord;
    EXPECT_EQ(left.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(right.locatePoint(onFace, 0, pcoord), 1);
    EXPECT_EQ(left.locatePoint(onFace, -0.01f, pcoord), 0);
    EXPECT_EQ(right.locatePoint(onFace, -0.01f, pcoord), 0);
    EXPECT_EQ(left.locatePoint(SbVec3f(0.5f, 0.5f, 0.5f), -0.45f, pcoord), 1);
    EXPECT_EQ(left.locatePoint(SbVec3f(0.5f, 0.5f, 0.9f), -0.2f, pcoord), 0);
}

TEST_F(PbHexahedronCellTest, DegenerateCellsLocateNothing) {
    PbHexahedronCell cell;
    SbVec3f pcoord;
    fill(cell, Coords(8, SbVec3f(1, 1, 1)));
    EXPECT_EQ(cell.locatePoint(SbVec3f(1, 1, 1), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_EQ(cell.getVolume(), 0.0f);

    Coords flat = s_unit;
    for (int node = 4; node < 8; ++node)
        flat[node][2] = 0;
    fill(cell, flat);
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.5f, 0.5f, 0), 1.0f, pcoord), 0);
    EXPECT_TRUE(celltest::isFinite(pcoord));
    EXPECT_EQ(cell.getVolume(), 0.0f);
}

TEST_F(PbHexahedronCellTest, VolumeAreaAndOrdering) {
    PbHexahedronCell cell;
    Coords box;
    for (const SbVec3f& p : s_unit)
        box.push_back(SbVec3f(2 * p[0], 3 * p[1], 4 * p[2]));
    fill(cell, box);
    EXPECT_FLOAT_EQ(cell.getVolume(), 24.0f);
    EXPECT_FLOAT_EQ(cell.getArea(), 52.0f);
    EXPECT_EQ(cell.getOrdering(), 1);
    Coords mirrored = box;
    for (SbVec3f& p : mirrored)
        p[2] = -p[2];
    fill(cell, mirrored);
    EXPECT_EQ(cell.getOrdering(), 0);
    EXPECT_FLOAT_EQ(cell.getVolume(), 24.0f);
    // A wedge-shaped hexahedron: top edge 4-5 pulled down onto the bottom.
    Coords sloped = s_unit;
    sloped[4][2] = sloped[5][2] = 0;
    fill(cell, sloped);
    EXPECT_FLOAT_EQ(cell.getVolume(), 0.5f);
}

TEST_F(PbHexahedronCellTest, CaseIdsAndMarchingCases) {
    PbHexahedronCell cell;
    int ids[8] = {50, 51, 53, 52, 60, 61, 63, 62};
    cell.set(0, ids, s_unit.data());
    std::vector<bool> flags(64, false);
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
    flags[50] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 1);
    flags[50] = false;
    flags[62] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 128);
    flags[51] = flags[52] = true;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 128 + 2 + 8);
    std::fill(flags.begin(), flags.end(), true);
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);

    const PiMarchingCase* mc = cell.getMCcase(1);
    ASSERT_NE(mc, nullptr);
    EXPECT_EQ(mc->getEdgeStripSet(), (std::vector<int>{0, 8, 3}));
    EXPECT_TRUE(cell.getMCcase(0)->getEdgeStripSet().empty());
}

TEST_F(PbHexahedronCellTest, ShortFlagArraysArePostedNotRead) {
    PbHexahedronCell cell;
    int ids[8] = {0, 1, 2, 3, 4, 5, 6, 700};
    cell.set(0, ids, s_unit.data());
    std::vector<bool> flags(8, true);
    ErrorRecorder errors;
    EXPECT_EQ(cell.getIsosurfCaseId(flags), 0);
    EXPECT_TRUE(errors.contains("PbVolumeCell::getIsosurfCaseId"));
}

TEST_F(PbHexahedronCellTest, PrintsTheCellLines) {
    PbHexahedronCell cell;
    int ids[8] = {0, 1, 4, 3, 9, 10, 13, 12};
    cell.set(5, ids, s_unit.data());
    EXPECT_EQ(celltest::printed(cell),
              "=====================print cell informations ==================== \n"
              "PbCell:: m_numFaces = 6\n"
              "PbCell:: m_numEdges = 12\n"
              "PbCell:: m_numNodes = 8\n"
              "PbCell:: m_index = 5\n"
              "PbCell:: node 0 : 0.000000 0.000000 0.000000\n"
              "PbCell:: node 1 : 1.000000 0.000000 0.000000\n"
              "PbCell:: node 4 : 1.000000 1.000000 0.000000\n"
              "PbCell:: node 3 : 0.000000 1.000000 0.000000\n"
              "PbCell:: node 9 : 0.000000 0.000000 1.000000\n"
              "PbCell:: node 10 : 1.000000 0.000000 1.000000\n"
              "PbCell:: node 13 : 1.000000 1.000000 1.000000\n"
              "PbCell:: node 12 : 0.000000 1.000000 1.000000\n");
}
