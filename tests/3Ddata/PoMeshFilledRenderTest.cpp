#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/PiBandColors.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneIO.h"

#include <Inventor/nodes/SoLightModel.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

namespace {

const SbColor s_background(0.2f, 0.3f, 0.4f);
const int s_size = 100;

// A 21 x 21 grid over the unit square with values 10 x, seen from above by
// an orthographic camera that fills the picture with it, unlit.
class PoMeshFilledRenderTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        m_grid.setGeometry(21, 21, 0.0f, 0.0f, 1.0f, 1.0f);
        std::vector<float> values;
        for (int n = 0; n < m_grid.getNumNodes(); ++n)
            values.push_back(10.0f * m_grid.getNodeCoord(n)[0]);
        m_grid.addValuesSet(0, values.data(), "ramp");
        m_mapping.setValues(0, SbColor(0, 0, 1), 10, SbColor(1, 1, 0));
        const float isovalues[] = {2, 4, 6, 8};
        m_isovalues.setIrregularIsoList(4, isovalues);

        root->addChild(orthographicCamera(SbVec3f(0.5f, 0.5f, 5.0f), 1.0f));
        auto* unlit = new SoLightModel;
        unlit->model = SoLightModel::BASE_COLOR;
        root->addChild(unlit);
    }

    PoMeshFilled* addKit(PoMesh::ColoringType coloring) {
        auto* kit = new PoMeshFilled;
        kit->setMesh(&m_grid);
        kit->setDataMapping(&m_mapping);
        kit->setIsovaluesList(&m_isovalues);
        kit->valuesIndex = 0;
        kit->coloringType = coloring;
        root->addChild(kit);
        return kit;
    }

    RenderImage render() {
        return renderHeadless(root, smallPicture(s_size, s_size, s_background));
    }

    // The pixel column at x in [0, 1], in the middle row.
    static int column(float x) { return static_cast<int>(x * s_size); }

    Rgb bandColor(int band) const {
        const float isovalues[] = {2, 4, 6, 8};
        return toRgb(
            PiBandColors::getValueColor(m_mapping, PiBandColors::getBandValue(isovalues, 4, band))
                .color);
    }

    PbRegularCartesianGrid2D m_grid;
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_isovalues;
};

TEST_F(PoMeshFilledRenderTest, LinearMappingGivesAGradientAcrossTheGrid) {
    QUILLON_REQUIRE_RENDERING();
    addKit(PoMesh::COLOR_MAPPING);
    const RenderImage image = render();
    for (float x : {0.05f, 0.3f, 0.55f, 0.8f, 0.95f}) {
        const float value = 10.0f * (column(x) + 0.5f) / s_size;
        EXPECT_TRUE(pixelNear(image, column(x), 50, toRgb(*m_mapping.getRGBColor(value)), 6))
            << "x " << x;
    }
}

TEST_F(PoMeshFilledRenderTest, LitGridFacingTheLightShowsItsColours) {
    QUILLON_REQUIRE_RENDERING();
    root->removeChild(1);
    // Seen and lit from above: full diffuse light plus some ambient.
    for (PoMesh::ColoringType coloring : {PoMesh::COLOR_MAPPING, PoMesh::COLOR_CONTOURING}) {
        PoMeshFilled* kit = addKit(coloring);
        const RenderImage image = render();
        root->removeChild(kit);
        const Rgb pixel = image.pixel(column(0.5f), 50);
        EXPECT_GT(pixel.r + pixel.g + pixel.b, 300) << coloring << ": " << pixel;
    }
}

TEST_F(PoMeshFilledRenderTest, ContouringDrawsTheBandColours) {
    QUILLON_REQUIRE_RENDERING();
    addKit(PoMesh::COLOR_CONTOURING);
    const RenderImage image = render();
    // Band b covers x from 0.2 (b - 1) to 0.2 b.
    for (int band = 0; band <= 4; ++band)
        for (float offset : {0.05f, 0.1f, 0.15f})
            EXPECT_TRUE(pixelNear(image, column(0.2f * band + offset), 30, bandColor(band), 2))
                << "band " << band;
}

TEST_F(PoMeshFilledRenderTest, TextureContouringShowsTheSameBandsAsContouring) {
    QUILLON_REQUIRE_RENDERING();
    PoMeshFilled* kit = addKit(PoMesh::COLOR_CONTOURING);
    const RenderImage contoured = render();
    kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
    const RenderImage textured = render();
    int compared = 0;
    for (int x = 0; x < s_size; ++x) {
        // Away from the band borders at x = 20, 40, 60, 80.
        if (std::abs((x + 10) % 20 - 10) < 3)
            continue;
        for (int y : {10, 50, 90}) {
            EXPECT_TRUE(isNear(textured.pixel(x, y), contoured.pixel(x, y), 3))
                << "x " << x << " y " << y << ": " << textured.pixel(x, y) << " against "
                << contoured.pixel(x, y);
            ++compared;
        }
    }
    EXPECT_GT(compared, 200);
}

TEST_F(PoMeshFilledRenderTest, ClippedRegionOfATransparentThresholdShowsTheBackground) {
    QUILLON_REQUIRE_RENDERING();
    m_mapping.enableTransparency(1);
    m_mapping.setMaxThreshold(7.0f, SbColor(1, 0, 0), 1.0f);
    m_mapping.enableThresholds(0, 1);
    for (PoMesh::ColoringType coloring : {PoMesh::COLOR_AVERAGE, PoMesh::COLOR_CONTOURING}) {
        PoMeshFilled* kit = addKit(coloring);
        const RenderImage image = render();
        root->removeChild(kit);
        EXPECT_TRUE(pixelNear(image, column(0.9f), 50, toRgb(s_background), 2)) << coloring;
        EXPECT_TRUE(pixelNear(image, column(0.95f), 20, toRgb(s_background), 2)) << coloring;
        const float value = 10.0f * (column(0.3f) + 0.5f) / s_size;
        const Rgb expected = coloring == PoMesh::COLOR_CONTOURING
                                 ? bandColor(1)
                                 : toRgb(*m_mapping.getRGBColor(value));
        EXPECT_TRUE(pixelNear(image, column(0.3f), 50, expected, 12)) << coloring;
    }
}

TEST_F(PoMeshFilledRenderTest, ExampleScenesAreAsWrittenAndDrawASurface) {
    QUILLON_REQUIRE_RENDERING();
    const std::string examples = QUILLON_EXAMPLES_DIR "/";
    for (const char* name :
         {"filled-elevation-map.iv", "filled-polar-bands.iv", "filled-scattered-texture-bands.iv",
          "filled-curvilinear-average.iv"}) {
        SCOPED_TRACE(name);
        std::ifstream file(examples + name);
        ASSERT_TRUE(file.good());
        const std::string text((std::istreambuf_iterator<char>(file)),
                               std::istreambuf_iterator<char>());
        SoNode* scene = SceneIO::read(text);
        ASSERT_NE(scene, nullptr);
        scene->ref();
        EXPECT_EQ(SceneIO::write(scene), text);
        const RenderImage image = renderHeadless(scene, smallPicture(80, 60, s_background));
        const int surface = 80 * 60 - countPixelsNear(image, toRgb(s_background), 4);
        EXPECT_GT(surface, 80 * 60 / 10);
        scene->unref();
    }
}

} // namespace
