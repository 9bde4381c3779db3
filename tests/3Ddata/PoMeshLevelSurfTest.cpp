#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/3Ddata/PoMeshCrossContour.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>
#include <Quillon/3Ddata/PoMeshLevelSurf.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/nodes/PoIntervalCellFilter.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"
#include "support/TetBlock.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>

namespace {

// The coordinates and the faces' coordinate index that a kit drew into one
// of its parts (none when the part is empty).
struct Drawn {
    std::vector<SbVec3f> points;
    std::vector<int32_t> coordIndex;
    bool hasPart = false;
};

// The first node of the type below the group, or null.
template <class Node> Node* firstIn(SoNode* group) {
    std::vector<Node*> found = findAll<Node>(group);
    return found.empty() ? nullptr : found.front();
}

Drawn drawnIn(SoBaseKit* kit, const char* part) {
    Drawn drawn;
    SoNode* group = kit->getPart(part, FALSE);
    drawn.hasPart = group != nullptr;
    if (!group)
        return drawn;
    if (auto* coordinates = firstIn<SoCoordinate3>(group))
        drawn.points.assign(coordinates->point.getValues(0),
                            coordinates->point.getValues(0) + coordinates->point.getNum());
    if (auto* shape = firstIn<SoIndexedShape>(group))
        drawn.coordIndex.assign(shape->coordIndex.getValues(0),
                                shape->coordIndex.getValues(0) + shape->coordIndex.getNum());
    return drawn;
}

// An 11 x 11 x 11 grid over the unit cube with set 0 = 10 x, set 1 = 10 y
// and set 2 = 10 z per node, and set 3 one value per cell.
class VolumeKitTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        m_errors = std::make_unique<ErrorRecorder>();
        for (int set = 0; set < 3; ++set) {
            std::vector<float> values;
            for (int n = 0; n < m_grid.getNumNodes(); ++n)
                values.push_back(std::round(10.0f * m_grid.getNodeCoord(n)[set]));
            m_grid.addValuesSet(set, values.data(), "coordinate");
        }
        std::vector<float> perCell(m_grid.getNumCells(), 1.0f);
        m_grid.addValuesSet(3, perCell.data(), PbMesh::PER_CELL, "per cell");
        m_mapping.setValues(0, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
    }
    void TearDown() override {
        m_errors.reset();
        SceneTest::TearDown();
    }

    template <class Kit> Kit* addKit() {
        auto* kit = new Kit;
        kit->setMesh(&m_grid);
        kit->setDataMapping(&m_mapping);
        root->addChild(kit);
        return kit;
    }

    std::unique_ptr<ErrorRecorder> m_errors;
    PbRegularCartesianGrid3D m_grid{11, 11, 11, 0, 0, 0, 1, 1, 1};
    PbLinearDataMapping m_mapping;
};

} // namespace

TEST_F(VolumeKitTest, TopologyIsKeptForANewColouringOnlyAndFollowsValuesIndex) {
    auto* kit = addKit<PoMeshLevelSurf>();
    kit->valuesIndex = 2;
    kit->levelValue = 4.5f;
    traverse();
    EXPECT_EQ(kit->getNumLevelSurfCuts(), 1u);
    Drawn surface = drawnIn(kit, "groupLevelSurf");
    ASSERT_FALSE(surface.points.empty());
    for (const SbVec3f& p : surface.points)
        EXPECT_NEAR(p[2], 0.45f, 1e-6f) << "valuesIndexForLevel -1 follows valuesIndex";

    struct Step {
        const char* change;
        std::function<void()> apply;
        unsigned int cuts;
    };
    std::vector<float> shifted;
    for (int n = 0; n < m_grid.getNumNodes(); ++n)
        shifted.push_back(m_grid.getValuesSet(2)[n] + 1.0f);
    const Step steps[] = {
        {"colouring", [&] { kit->coloringType = PoMesh::COLOR_MAPPING; }, 1},
        {"other colouring", [&] { kit->coloringType = PoMesh::COLOR_AVERAGE; }, 1},
        {"level", [&] { kit->levelValue = 3.5f; }, 2},
        {"values of the set", [&] { m_grid.addValuesSet(2, shifted.data(), "shifted"); }, 3},
        {"set", [&] { kit->valuesIndexForLevel = 1; }, 4},
        {"cell filter", [&] { root->insertChild(new PoIntervalCellFilter, 0); }, 5},
        {"nothing", [] {}, 5},
    };
    for (const Step& step : steps) {
        step.apply();
        traverse();
        EXPECT_EQ(kit->getNumLevelSurfCuts(), step.cuts) << step.change;
    }
}

// The strip preference draws the same triangles as strips or as faces.
TEST_F(VolumeKitTest, StripPreferenceChoosesStripsOrFaces) {
    auto* kit = addKit<PoMeshLevelSurf>();
    kit->valuesIndexForLevel = 2;
    kit->levelValue = 4.5f;
    traverse();
    SoNode* group = kit->getPart("groupLevelSurf", FALSE);
    auto* strips = firstIn<SoIndexedTriangleStripSet>(group);
    ASSERT_NE(strips, nullptr);
    EXPECT_EQ(firstIn<SoIndexedFaceSet>(group), nullptr);
    int numTriangles = 0;
    for (int i = 0, run = 0; i < strips->coordIndex.getNum(); ++i)
        if (strips->coordIndex[i] < 0)
            numTriangles += run - 2, run = 0;
        else
            ++run;

    setenv("TEK_3DDATA_USE_TRIANGLE_STRIP_SET", "false", 1);
    kit->coloringType = PoMesh::COLOR_MAPPING;
    traverse();
    unsetenv("TEK_3DDATA_USE_TRIANGLE_STRIP_SET");
    group = kit->getPart("groupLevelSurf", FALSE);
    EXPECT_EQ(firstIn<SoIndexedTriangleStripSet>(group), nullptr);
    Drawn faces = drawnIn(kit, "groupLevelSurf");
    ASSERT_NE(firstIn<SoIndexedFaceSet>(group), nullptr);
    EXPECT_EQ(static_cast<int>(faces.coordIndex.size()), 4 * numTriangles);
    EXPECT_EQ(kit->getNumLevelSurfCuts(), 2u);
}

// A level equal to node values is moved up by 1 % of the distance to the
// next value: the surface of x = 0.5 lies at x = 0.501.
TEST_F(VolumeKitTest, LevelOnNodesIsShiftedTowardsHigherValues) {
    auto* kit = addKit<PoMeshLevelSurf>();
    kit->valuesIndexForLevel = 0;
    kit->levelValue = 5.0f;
    traverse();
    Drawn surface = drawnIn(kit, "groupLevelSurf");
    ASSERT_EQ(surface.points.size(), 121u);
    for (const SbVec3f& p : surface.points)
        EXPECT_NEAR(p[0], 0.501f, 1e-6f);
    EXPECT_TRUE(m_errors->messages().empty());
}

// Bad input leaves an empty surface, with a message where the input is at
// fault, and never a crash.
TEST_F(VolumeKitTest, BadInputGivesAnEmptySurfaceOrAMessage) {
    auto* kit = addKit<PoMeshLevelSurf>();
    kit->valuesIndexForLevel = 0;
    struct Case {
        const char* what;
        std::function<void()> apply;
        const char* message;
        bool faces;
    };
    std::vector<float> x(m_grid.getValuesSet(0), m_grid.getValuesSet(0) + 1331), withNaN = x;
    withNaN[605] = NAN;
    auto* filter = new PoIntervalCellFilter;
    filter->min = 2.0f;
    filter->max = 3.0f;
    const Case cases[] = {
        {"level above the values", [&] { kit->levelValue = 20.0f; }, nullptr, false},
        {"level below the values", [&] { kit->levelValue = -1.0f; }, nullptr, false},
        {"set per cell", [&] { kit->levelValue = 0.5f, kit->valuesIndexForLevel = 3; },
         "bound per cell", false},
        {"no such set", [&] { kit->valuesIndexForLevel = 9; }, nullptr, false},
        {"NaN values",
         [&] {
             kit->valuesIndexForLevel = 0;
             m_grid.addValuesSet(0, withNaN.data(), "x");
         },
         "NaN", true},
        {"cell filter that removes every cell",
         [&] {
             m_grid.addValuesSet(0, x.data(), "x");
             kit->valuesIndexForCellFilter = 3;
             root->insertChild(filter, 0);
         },
         nullptr, false},
    };
    for (const Case& c : cases) {
        m_errors->clear();
        c.apply();
        traverse();
        Drawn surface = drawnIn(kit, "groupLevelSurf");
        EXPECT_TRUE(surface.hasPart) << c.what;
        EXPECT_EQ(!surface.coordIndex.empty(), c.faces) << c.what;
        if (c.message)
            EXPECT_TRUE(m_errors->contains(c.message)) << c.what;
        else
            EXPECT_TRUE(m_errors->messages().empty()) << c.what << ": " << m_errors->messages()[0];
    }
}

// A cell filter of the state keeps the surface to the cells it accepts,
// judged by the per-cell values of valuesIndexForCellFilter.
TEST_F(VolumeKitTest, CellFilterKeepsTheSurfaceToTheCellsItAccepts) {
    std::vector<float> cellX;
    for (int c = 0; c < m_grid.getNumCells(); ++c)
        cellX.push_back(static_cast<float>(c / 100));
    m_grid.addValuesSet(4, cellX.data(), PbMesh::PER_CELL, "cell column");
    auto* filter = new PoIntervalCellFilter;
    filter->min = 0.0f;
    filter->max = 3.0f;
    root->addChild(filter);
    auto* kit = addKit<PoMeshLevelSurf>();
    kit->valuesIndexForLevel = 2;
    kit->levelValue = 4.5f;
    kit->valuesIndexForCellFilter = 4;
    traverse();
    Drawn surface = drawnIn(kit, "groupLevelSurf");
    ASSERT_FALSE(surface.coordIndex.empty());
    float xMax = 0.0f;
    for (const SbVec3f& p : surface.points)
        xMax = std::max(xMax, p[0]);
    EXPECT_FLOAT_EQ(xMax, 0.4f) << "the cells of columns 0 to 3 only";
}

// A missing or empty mesh empties the parts quietly; a plane without a
// normal empties them with a message.
TEST_F(VolumeKitTest, MissingOrEmptyMeshOrPlaneWithoutNormalEmptiesTheParts) {
    auto* surface = addKit<PoMeshLevelSurf>();
    auto* section = addKit<PoMeshCrossSection>();
    auto* contour = addKit<PoMeshCrossContour>();
    surface->valuesIndexForLevel = 0;
    surface->levelValue = 4.5f;
    section->plane = SbPlane(SbVec3f(0, 0, 1), 0.5f);
    contour->plane = SbPlane(SbVec3f(0, 0, 1), 0.5f);
    auto expectParts = [&](bool drawn) {
        traverse();
        EXPECT_EQ(drawnIn(surface, "groupLevelSurf").hasPart, drawn);
        EXPECT_EQ(drawnIn(section, "groupCrossSection").hasPart, drawn);
        EXPECT_EQ(drawnIn(contour, "groupCrossContour").hasPart, drawn);
    };
    expectParts(true);
    PbRegularCartesianGrid3D empty;
    for (PbMesh3D* mesh : {static_cast<PbMesh3D*>(&empty), static_cast<PbMesh3D*>(nullptr)}) {
        surface->setMesh(mesh);
        section->setMesh(mesh);
        contour->setMesh(mesh);
        expectParts(false);
    }
    EXPECT_TRUE(m_errors->messages().empty());

    section->setMesh(&m_grid);
    contour->setMesh(&m_grid);
    section->plane.setValue(SbPlane(SbVec3f(0, 0, 0), 0.5f));
    contour->plane.setValue(SbPlane(SbVec3f(0, 0, 0), 0.5f));
    traverse();
    EXPECT_TRUE(m_errors->contains("PoMeshCrossSection::rebuild"));
    EXPECT_TRUE(m_errors->contains("PoMeshCrossContour::rebuild"));
    EXPECT_FALSE(drawnIn(section, "groupCrossSection").hasPart);
    EXPECT_FALSE(drawnIn(contour, "groupCrossContour").hasPart);
}

// The method of each rebuild: the mesh's optimal cut, then the cell filter,
// the preference (in any case) and the forced method.
TEST_F(VolumeKitTest, CrossSectionMethodChoice) {
    meshtest::TetBlock block = meshtest::makeTetBlock(2);
    PbTetrahedronMesh3D tetrahedra(block.numNodes, block.x.data(), block.y.data(), block.z.data(),
                                   block.numCells, block.cells.data());
    auto* kit = addKit<PoMeshCrossSection>();
    const SbPlane across(SbVec3f(0, 1, 0), 0.35f), oblique(SbVec3f(0, 1, 1), 0.35f);
    struct Case {
        PbMesh3D* mesh;
        const SbPlane* plane;
        bool filter;
        const char* preference;
        PoMeshCrossSection::ForcedMethod forced;
        PoMeshCrossSection::CrossSectionMethod expected;
    };
    using K = PoMeshCrossSection;
    const Case cases[] = {
        {&m_grid, &across, false, nullptr, K::NO_FORCED_METHOD, K::INTERSECTION},
        {&m_grid, &oblique, false, nullptr, K::NO_FORCED_METHOD, K::ISOSURFACE},
        {&tetrahedra, &across, false, nullptr, K::NO_FORCED_METHOD, K::ISOSURFACE},
        {&m_grid, &across, true, nullptr, K::NO_FORCED_METHOD, K::ISOSURFACE},
        {&m_grid, &oblique, false, "intersection", K::NO_FORCED_METHOD, K::INTERSECTION},
        {&m_grid, &across, false, "IsoSurface", K::NO_FORCED_METHOD, K::ISOSURFACE},
        {&m_grid, &across, true, "INTERSECTION", K::NO_FORCED_METHOD, K::INTERSECTION},
        {&m_grid, &across, false, "neither", K::NO_FORCED_METHOD, K::INTERSECTION},
        {&m_grid, &across, false, "intersection", K::FORCED_ISOSURFACE, K::ISOSURFACE},
        {&tetrahedra, &across, true, "isosurface", K::FORCED_INTERSECTION, K::INTERSECTION},
    };
    for (const Case& c : cases) {
        if (c.preference)
            setenv("TEK_3DDATA_CROSS_SECTION_METHOD", c.preference, 1);
        else
            unsetenv("TEK_3DDATA_CROSS_SECTION_METHOD");
        PoIntervalCellFilter* filter = nullptr;
        if (c.filter) {
            filter = new PoIntervalCellFilter;
            filter->min = -1e30f;
            filter->max = 1e30f;
            root->insertChild(filter, 0);
        }
        kit->setMesh(c.mesh);
        kit->plane = *c.plane;
        kit->setForcedMethod(c.forced);
        traverse();
        EXPECT_EQ(kit->getMethod(), c.expected)
            << (c.preference ? c.preference : "no preference") << ", forced " << c.forced;
        EXPECT_FALSE(drawnIn(kit, "groupCrossSection").coordIndex.empty());
        if (filter)
            root->removeChild(filter);
    }
    unsetenv("TEK_3DDATA_CROSS_SECTION_METHOD");
}

// The distances along the normal are computed again only for a new
// geometry or a normal turned further than the kept one's 0.9999 dot
// product; moving the plane along its normal moves the section.
TEST_F(VolumeKitTest, MovingThePlaneAlongItsNormalKeepsTheDistances) {
    meshtest::TetBlock block = meshtest::makeTetBlock(3, 0.1f);
    PbTetrahedronMesh3D tetrahedra(block.numNodes, block.x.data(), block.y.data(), block.z.data(),
                                   block.numCells, block.cells.data());
    for (PbMesh3D* mesh : {static_cast<PbMesh3D*>(&m_grid), static_cast<PbMesh3D*>(&tetrahedra)}) {
        auto* kit = addKit<PoMeshCrossSection>();
        kit->setMesh(mesh);
        kit->setForcedMethod(PoMeshCrossSection::FORCED_ISOSURFACE);
        SbVec3f normal(0.2f, 0.3f, 1.0f);
        normal.normalize();
        float size = mesh == &m_grid ? 1.0f : 3.0f;
        kit->plane = SbPlane(normal, 0.4f * size);
        traverse();
        EXPECT_EQ(kit->getNumDistanceComputations(), 1u);
        kit->plane = SbPlane(normal, 0.6f * size);
        traverse();
        EXPECT_EQ(kit->getNumDistanceComputations(), 1u);
        Drawn section = drawnIn(kit, "groupCrossSection");
        ASSERT_FALSE(section.points.empty());
        for (const SbVec3f& p : section.points)
            EXPECT_NEAR(p.dot(normal), 0.6f * size, 1e-5f);
        SbVec3f slightly = normal + SbVec3f(0.005f, 0.0f, 0.0f);
        slightly.normalize();
        kit->plane = SbPlane(slightly, 0.6f * size);
        traverse();
        EXPECT_EQ(kit->getNumDistanceComputations(), 1u) << "a turn within 0.9999";
        kit->plane = SbPlane(SbVec3f(0, 0, 1), 0.6f * size);
        traverse();
        EXPECT_EQ(kit->getNumDistanceComputations(), 2u);
        if (mesh == &m_grid) {
            m_grid.setGeometry(11, 11, 11, 0, 0, 0, 2, 2, 2);
            traverse();
            EXPECT_EQ(kit->getNumDistanceComputations(), 3u) << "a new geometry";
        }
        root->removeChild(kit);
    }
}
