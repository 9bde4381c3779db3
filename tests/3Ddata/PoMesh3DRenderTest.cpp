#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/3Ddata/PoMeshCrossContour.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>
#include <Quillon/3Ddata/PoMeshLevelSurf.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/PiBandColors.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/TetBlock.h"

#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoLightModel.h>

#include <cmath>

namespace {

const SbColor s_background(0.2f, 0.3f, 0.4f);
const int s_size = 100;
const float s_view = 2.4f; // the picture spans [-1.2, 1.2] in x and y

// A 21 x 21 x 21 grid over [-1, 1]^3 with set 0 = x^2 + y^2 + z^2 and set
// 1 = x, seen from above by an orthographic camera, unlit; x is mapped from
// blue at -1 to red at 1, with isovalues -0.5, 0 and 0.5 for colour bands.
class PoMesh3DRenderTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        std::vector<float> squares, x;
        for (int n = 0; n < m_grid.getNumNodes(); ++n) {
            SbVec3f p = m_grid.getNodeCoord(n);
            squares.push_back(p.dot(p));
            x.push_back(p[0]);
        }
        m_grid.addValuesSet(0, squares.data(), "r2");
        m_grid.addValuesSet(1, x.data(), "x");
        m_mapping.setValues(-1, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
        const float isovalues[] = {-0.5f, 0.0f, 0.5f};
        m_isovalues.setIrregularIsoList(3, isovalues);

        root->addChild(orthographicCamera(SbVec3f(0.0f, 0.0f, 5.0f), s_view));
        auto* unlit = new SoLightModel;
        unlit->model = SoLightModel::BASE_COLOR;
        root->addChild(unlit);
    }

    template <class Kit> Kit* addKit(PoMesh::ColoringType coloring, PbMesh3D* mesh = nullptr) {
        auto* kit = new Kit;
        kit->setMesh(mesh ? mesh : &m_grid);
        kit->setDataMapping(&m_mapping);
        kit->setIsovaluesList(&m_isovalues);
        kit->valuesIndex = 1;
        kit->coloringType = coloring;
        root->addChild(kit);
        return kit;
    }

    RenderImage render() {
        return renderHeadless(root, smallPicture(s_size, s_size, s_background));
    }

    // The pixel of a world coordinate in x or y (rows grow downwards).
    static int column(float x) { return static_cast<int>((x + s_view / 2) / s_view * s_size); }
    static int row(float y) { return s_size - 1 - column(y); }

    Rgb mapped(float x) const { return toRgb(*m_mapping.getRGBColor(x)); }
    Rgb band(int b) const {
        const float isovalues[] = {-0.5f, 0.0f, 0.5f};
        return toRgb(
            PiBandColors::getValueColor(m_mapping, PiBandColors::getBandValue(isovalues, 3, b))
                .color);
    }

    PbRegularCartesianGrid3D m_grid{21, 21, 21, -1, -1, -1, 1, 1, 1};
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_isovalues;
};

} // namespace

// The sphere of radius 0.7, coloured by x: a disc with the mapped colours
// of x, background around it.
TEST_F(PoMesh3DRenderTest, LevelSurfaceColouredByASecondSet) {
    QUILLON_REQUIRE_RENDERING();
    auto* kit = addKit<PoMeshLevelSurf>(PoMesh::COLOR_MAPPING);
    kit->valuesIndexForLevel = 0;
    kit->levelValue = 0.49f;
    const RenderImage image = render();
    for (float x : {-0.5f, -0.2f, 0.0f, 0.3f, 0.55f}) {
        float centre = (column(x) + 0.5f) * s_view / s_size - s_view / 2;
        EXPECT_TRUE(pixelNear(image, column(x), row(0.1f), mapped(centre), 8)) << "x " << x;
    }
    for (float x : {-0.9f, 0.85f})
        EXPECT_TRUE(pixelNear(image, column(x), row(0.0f), toRgb(s_background), 2)) << "x " << x;
    EXPECT_TRUE(pixelNear(image, column(0.6f), row(0.6f), toRgb(s_background), 2));

    const float middles[] = {-0.6f, -0.25f, 0.25f, 0.6f};
    for (auto coloring : {PoMesh::COLOR_CONTOURING, PoMesh::COLOR_TEXTURE_CONTOURING}) {
        kit->coloringType = coloring;
        const RenderImage bands = render();
        for (int b = 0; b < 4; ++b)
            EXPECT_TRUE(pixelNear(bands, column(middles[b]), row(0.0f), band(b), 3))
                << "band " << b << ", colouring " << coloring;
    }
}

// A section across z of the grid, by either method, and an oblique section
// of a block of tetrahedra in colour bands, with its outline.
TEST_F(PoMesh3DRenderTest, CrossSectionsAndTheirOutline) {
    QUILLON_REQUIRE_RENDERING();
    auto* section = addKit<PoMeshCrossSection>(PoMesh::COLOR_MAPPING);
    section->plane = SbPlane(SbVec3f(0, 0, 1), 0.1f);
    for (auto method :
         {PoMeshCrossSection::NO_FORCED_METHOD, PoMeshCrossSection::FORCED_ISOSURFACE}) {
        section->setForcedMethod(method);
        const RenderImage image = render();
        for (float x : {-0.9f, -0.4f, 0.0f, 0.45f, 0.9f}) {
            float centre = (column(x) + 0.5f) * s_view / s_size - s_view / 2;
            EXPECT_TRUE(pixelNear(image, column(x), row(0.7f), mapped(centre), 8))
                << "x " << x << ", method " << method;
        }
        EXPECT_TRUE(pixelNear(image, column(1.1f), row(0.0f), toRgb(s_background), 2));
    }
    root->removeChild(section);

    // Tetrahedra over [-1, 1]^3 valued by x.
    meshtest::TetBlock block = meshtest::makeTetBlock(8, 0.1f);
    std::vector<float> x;
    for (float* axis : {block.x.data(), block.y.data(), block.z.data()})
        for (int n = 0; n < block.numNodes; ++n)
            axis[n] = axis[n] / 4.0f - 1.0f;
    PbTetrahedronMesh3D tetrahedra(block.numNodes, block.x.data(), block.y.data(), block.z.data(),
                                   block.numCells, block.cells.data());
    tetrahedra.addValuesSet(1, block.x.data(), "x");
    SbVec3f normal(0.0f, 0.3f, 1.0f);
    normal.normalize();
    auto* bands = addKit<PoMeshCrossSection>(PoMesh::COLOR_CONTOURING, &tetrahedra);
    bands->plane = SbPlane(normal, 0.0f);
    auto* outline = new PoMeshCrossContour;
    outline->setMesh(&tetrahedra);
    outline->plane = SbPlane(normal, 0.0f);
    auto* white = new SoBaseColor;
    white->rgb.setValue(1, 1, 1);
    root->addChild(white);
    root->addChild(outline);
    outline->ref();
    root->removeChild(outline);
    const RenderImage image = render();
    const float middles[] = {-0.75f, -0.25f, 0.25f, 0.75f};
    for (int b = 0; b < 4; ++b)
        EXPECT_TRUE(pixelNear(image, column(middles[b]), row(0.0f), band(b), 2)) << "band " << b;
    EXPECT_TRUE(pixelNear(image, column(0.0f), row(1.1f), toRgb(s_background), 2));

    // The outline alone (the section would hide it where they meet): along
    // x = -1 and x = 1 on the picture, and nothing inside.
    root->removeChild(bands);
    root->addChild(outline);
    const RenderImage lines = render();
    EXPECT_TRUE(pixelNear(lines, column(0.0f), row(0.0f), toRgb(s_background), 2));
    int onOutline = 0;
    for (int y = row(0.8f); y <= row(-0.8f); ++y)
        for (float side : {-1.0f, 1.0f})
            for (int dx = -1; dx <= 1; ++dx)
                if (isNear(lines.pixel(column(side) + dx, y), Rgb{255, 255, 255}, 10)) {
                    ++onOutline;
                    break;
                }
    EXPECT_GT(onOutline, 2 * (row(-0.8f) - row(0.8f)) * 9 / 10);
    outline->unref();
}
