#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>

#include "3Ddata/ContouringTestMeshes.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>

#include <limits>
#include <memory>

namespace {

using namespace contourtest;

// A 3 x 3 grid with the values 0 to 8 in node order.
std::shared_ptr<PbRegularCartesianGrid2D> rampGrid() {
    auto grid = regularGrid(3);
    const float values[] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    grid->addValuesSet(0, values, "values");
    return grid;
}

class PoMeshFilledTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        m_errors = std::make_unique<ErrorRecorder>();
        m_mapping.setValues(0, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
        const float isovalues[] = {2, 4, 6, 8};
        m_list.setIrregularIsoList(4, isovalues);
        m_kit = new PoMeshFilled;
        root->addChild(m_kit);
    }
    void TearDown() override {
        m_errors.reset();
        SceneTest::TearDown();
    }

    // Draws the mesh with its value set 0 in the colouring.
    void draw(PbMesh2D& mesh, PoMesh::ColoringType coloring) {
        m_kit->setMesh(&mesh);
        m_kit->setDataMapping(&m_mapping);
        m_kit->setIsovaluesList(&m_list);
        m_kit->valuesIndex = 0;
        m_kit->coloringType = coloring;
        traverse();
    }

    SoGroup* group() { return static_cast<SoGroup*>(m_kit->getPart("groupFilled", FALSE)); }
    SoMaterial* material() {
        return static_cast<SoMaterial*>(m_kit->getPart("appearance.material", FALSE));
    }
    template <typename T> T* child() {
        SoGroup* g = group();
        for (int i = 0; g && i < g->getNumChildren(); ++i)
            if (g->getChild(i)->isOfType(T::getClassTypeId()))
                return static_cast<T*>(g->getChild(i));
        return nullptr;
    }

    std::unique_ptr<ErrorRecorder> m_errors;
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_list;
    PoMeshFilled* m_kit = nullptr;
};

TEST_F(PoMeshFilledTest, EveryMeshKindDrawsItsShapeInEveryColouring) {
    struct Coloring {
        PoMesh::ColoringType type;
        // The material binding (-1: none); average colours grids per
        // quadrangle, face sets per face.
        int gridBinding;
        int faceBinding;
    } colorings[] = {
        {PoMesh::COLOR_INHERITED, -1, -1},
        {PoMesh::COLOR_AVERAGE, SoMaterialBinding::PER_FACE, SoMaterialBinding::PER_PART},
        {PoMesh::COLOR_MAPPING, SoMaterialBinding::PER_VERTEX_INDEXED,
         SoMaterialBinding::PER_VERTEX_INDEXED},
        {PoMesh::COLOR_CONTOURING, SoMaterialBinding::PER_PART_INDEXED,
         SoMaterialBinding::PER_PART_INDEXED},
        {PoMesh::COLOR_TEXTURE_CONTOURING, -1, -1},
    };
    for (const NamedMesh& m : allMeshKinds(6)) {
        const bool grid = dynamic_cast<PbGrid2D*>(m.mesh.get()) != nullptr;
        const std::vector<float> values = sampled(*m.mesh, waves);
        m.mesh->addValuesSet(0, values.data(), "waves");
        for (const Coloring& c : colorings) {
            draw(*m.mesh, c.type);
            const std::string name = m.name + " " + std::to_string(c.type);
            ASSERT_NE(group(), nullptr) << name;
            const auto* binding = child<SoMaterialBinding>();
            const int expectedBinding = grid ? c.gridBinding : c.faceBinding;
            EXPECT_EQ(binding ? binding->value.getValue() : -1, expectedBinding) << name;
            if (c.type == PoMesh::COLOR_CONTOURING) {
                EXPECT_NE(child<SoIndexedTriangleStripSet>(), nullptr) << name;
            } else if (grid) {
                EXPECT_NE(child<SoQuadMesh>(), nullptr) << name;
            } else {
                EXPECT_NE(child<SoIndexedFaceSet>(), nullptr) << name;
            }
            const int numColors = material() ? material()->diffuseColor.getNum() : 0;
            const int expectedColors = c.type == PoMesh::COLOR_AVERAGE      ? m.mesh->getNumCells()
                                       : c.type == PoMesh::COLOR_MAPPING    ? m.mesh->getNumNodes()
                                       : c.type == PoMesh::COLOR_CONTOURING ? 5
                                       // The white material under the texture.
                                       : c.type == PoMesh::COLOR_TEXTURE_CONTOURING ? 1
                                                                                    : 0;
            EXPECT_EQ(numColors, expectedColors) << name;
            const bool textured = c.type == PoMesh::COLOR_TEXTURE_CONTOURING;
            EXPECT_EQ(m_kit->getPart("appearance.texture2", FALSE) != nullptr, textured) << name;
            if (textured) {
                EXPECT_NE(child<SoTextureCoordinateBinding>(), nullptr) << name;
                EXPECT_EQ(child<SoTextureCoordinate2>()->point.getNum(), m.mesh->getNumNodes())
                    << name;
            }
        }
    }
}

TEST_F(PoMeshFilledTest, ValuesBoundPerCellDrawInTheInheritedMaterial) {
    auto grid = regularGrid(3);
    const float perCell[] = {1, 2, 3, 4};
    grid->addValuesSet(0, perCell, PbMesh::PER_CELL, "cells");
    draw(*grid, PoMesh::COLOR_MAPPING);
    EXPECT_EQ(material(), nullptr);
    EXPECT_EQ(child<SoMaterialBinding>(), nullptr);
    EXPECT_NE(child<SoQuadMesh>(), nullptr);
}

TEST_F(PoMeshFilledTest, OverallNormalOfAFlatMeshSetsTheVertexOrdering) {
    // Cells counter-clockwise (normal up) or, with x reversed, clockwise.
    auto square = [](bool up, bool grid) -> std::shared_ptr<PbMesh2D> {
        const float x0 = up ? 0.0f : 1.0f, x1 = 1.0f - x0;
        if (grid) {
            auto regular = std::make_shared<PbRegularCartesianGrid2D>();
            regular->setGeometry(2, 2, x0, 0.0f, x1, 1.0f);
            return regular;
        }
        auto quad = std::make_shared<PbQuadrangleMesh2D>();
        const float x[] = {x0, x1, x1, x0}, y[] = {0, 0, 1, 1};
        const int cell[] = {0, 1, 2, 3};
        quad->setGeometry(4, x, y, 1, cell);
        return quad;
    };
    const int CW = SoShapeHints::CLOCKWISE, CCW = SoShapeHints::COUNTERCLOCKWISE;
    struct Case {
        const char* name;
        bool up, grid, useOverallNormal;
        int ordering;
    } cases[] = {
        {"overall normal up", true, false, true, CCW},
        {"overall normal down", false, false, true, CW},
        {"no overall normal", true, false, false, CW},
        // The toolkit lights a quad mesh on its front side only.
        {"quad mesh up", true, true, false, CCW},
        {"quad mesh down", false, true, false, CW},
    };
    for (const Case& c : cases) {
        std::shared_ptr<PbMesh2D> mesh = square(c.up, c.grid);
        m_kit->useOverallNormal = c.useOverallNormal;
        draw(*mesh, PoMesh::COLOR_INHERITED);
        EXPECT_EQ(child<SoShapeHints>()->vertexOrdering.getValue(), c.ordering) << c.name;
        const SoNormal* normal = child<SoNormal>();
        ASSERT_EQ(normal != nullptr, c.useOverallNormal) << c.name;
        if (normal) {
            EXPECT_EQ(normal->vector[0], mesh->getFirstCellNormal()) << c.name;
        }
    }
}

TEST_F(PoMeshFilledTest, ZValuesIndexGivesTheElevation) {
    auto grid = regularGrid(3);
    const std::vector<float> own(9, 5.0f), heights = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    grid->setZCoord(own.data());
    grid->addValuesSet(0, heights.data(), "values");
    grid->addValuesSet(2, heights.data(), "heights");
    m_kit->zValuesIndex = 2;
    m_kit->useOverallNormal = TRUE;
    draw(*grid, PoMesh::COLOR_MAPPING);
    const SoCoordinate3* coordinates = child<SoCoordinate3>();
    for (int n = 0; n < 9; ++n)
        EXPECT_EQ(coordinates->point[n][2], heights[n]);
    // An elevated mesh has no overall normal.
    EXPECT_EQ(child<SoNormal>(), nullptr);
    m_kit->zValuesIndex = -1;
    traverse();
    EXPECT_EQ(child<SoCoordinate3>()->point[4][2], 5.0f);
}

TEST_F(PoMeshFilledTest, AverageTakesAReachedThresholdNotTheMean) {
    auto quad = unitQuadrangle();
    const float values[] = {0, 0, 0, 100};
    quad->addValuesSet(0, values, "values");
    m_mapping.setValues(0, SbColor(0, 0, 0), 100, SbColor(1, 1, 1));
    m_mapping.setMaxThreshold(50.0f, SbColor(1, 0, 0), 0.0f);
    for (int enabled : {0, 1}) {
        m_mapping.enableThresholds(0, enabled);
        draw(*quad, PoMesh::COLOR_AVERAGE);
        EXPECT_EQ(material()->diffuseColor[0],
                  enabled ? SbColor(1, 0, 0) : SbColor(0.25f, 0.25f, 0.25f));
    }
}

TEST_F(PoMeshFilledTest, CellsOrientedAgainstTheMeshAreReversed) {
    // The second square is given clockwise.
    auto mesh = twoSquaresOneReversed();
    draw(*mesh, PoMesh::COLOR_INHERITED);
    const SoIndexedFaceSet* faces = child<SoIndexedFaceSet>();
    const std::vector<int> expected = {0, 1, 2, 3, -1, 4, 5, 2, 1, -1};
    ASSERT_EQ(faces->coordIndex.getNum(), 10);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(faces->coordIndex[i], expected[i]);
}

TEST_F(PoMeshFilledTest, BadInputDrawsWhatItCanWithoutFailing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    auto grid = regularGrid(5);
    std::vector<float> values = sampled(*grid, waves);
    values[6] = nan;
    values[12] = inf;
    values[13] = -inf;
    grid->addValuesSet(0, values.data(), "holes");
    for (PoMesh::ColoringType coloring :
         {PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING, PoMesh::COLOR_CONTOURING,
          PoMesh::COLOR_TEXTURE_CONTOURING}) {
        draw(*grid, coloring);
        EXPECT_NE(group(), nullptr) << coloring;
    }
    // Contouring leaves out the cells around the values that are not finite.
    draw(*grid, PoMesh::COLOR_CONTOURING);
    EXPECT_GT(m_kit->getNumContouringFaces(), 0);
    for (const SoIndexedShape* shape :
         {static_cast<SoIndexedShape*>(child<SoIndexedFaceSet>()),
          static_cast<SoIndexedShape*>(child<SoIndexedTriangleStripSet>())})
        for (int i = 0; i < shape->coordIndex.getNum(); ++i)
            EXPECT_TRUE(shape->coordIndex[i] != 6 && shape->coordIndex[i] != 12 &&
                        shape->coordIndex[i] != 13);

    // A grid of one row has nodes but no cells; a mesh without nodes draws
    // nothing.
    auto row = std::make_shared<PbRegularCartesianGrid2D>();
    row->setGeometry(1, 5, 0.0f, 0.0f, 1.0f, 1.0f);
    const float rowValues[] = {1, 3, 5, 7, 9};
    row->addValuesSet(0, rowValues, "row");
    draw(*row, PoMesh::COLOR_CONTOURING);
    EXPECT_EQ(m_kit->getNumContouringFaces(), 0);
    PbTriangleMesh2D empty;
    draw(empty, PoMesh::COLOR_MAPPING);
    EXPECT_EQ(group(), nullptr);
    EXPECT_EQ(material(), nullptr);
}

TEST_F(PoMeshFilledTest, DataMappingRemovedBetweenRebuildsFallsBackToTheInheritedMaterial) {
    auto* gridNode = new PoRegularCartesianGrid2D;
    gridNode->mesh.setValue(*rampGrid());
    auto* mappingNode = new PoLinearDataMapping;
    root->insertChild(gridNode, 0);
    root->insertChild(mappingNode, 1);
    m_kit->valuesIndex = 0;
    m_kit->coloringType = PoMesh::COLOR_MAPPING;
    traverse();
    EXPECT_EQ(material()->diffuseColor.getNum(), 9);
    root->removeChild(mappingNode);
    traverse();
    EXPECT_EQ(material(), nullptr);
    EXPECT_NE(child<SoQuadMesh>(), nullptr);
}

// A kit that rebuilds at once hears of the mesh's end only when nothing of
// the mesh is left to draw from, and then draws nothing.
TEST_F(PoMeshFilledTest, AMeshDestroyedUnderAnImmediateKitLeavesItEmpty) {
    std::shared_ptr<PbRegularCartesianGrid2D> grid = rampGrid();
    m_kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    draw(*grid, PoMesh::COLOR_MAPPING);
    ASSERT_NE(child<SoQuadMesh>(), nullptr);
    grid.reset();
    EXPECT_EQ(m_kit->getMesh(), nullptr);
    EXPECT_EQ(group(), nullptr);
}

} // namespace
