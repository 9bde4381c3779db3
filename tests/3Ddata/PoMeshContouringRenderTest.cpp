#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshContouring.h>
#include <Quillon/graph/PbIsovaluesList.h>

#include "3Ddata/ContourKitHelpers.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"

#include <Inventor/nodes/SoMaterial.h>

#include <algorithm>
#include <string>

using namespace contourkit;

namespace {

const int s_size = 200;
const SbColor s_line(1, 0, 0), s_text(0, 1, 0), s_box(0, 0, 1);

// The vertical isoline x = 5 of the values x over [0, 10]^2, red, with a
// green label, seen from above on black, 20 pixels to a unit.
class PoMeshContouringRenderTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        m_grid.setGeometry(11, 11, 0.0f, 0.0f, 10.0f, 10.0f);
        std::vector<float> values;
        for (int n = 0; n < m_grid.getNumNodes(); ++n)
            values.push_back(m_grid.getNodeCoord(n)[0]);
        m_grid.addValuesSet(0, values.data(), "x");
        const float isovalue = 5.5f;
        m_isovalues.setIrregularIsoList(1, &isovalue);
        root->addChild(orthographicCamera(SbVec3f(5.0f, 5.0f, 5.0f), 10.0f));
        m_kit = new PoMeshContouring;
        m_kit->setMesh(&m_grid);
        m_kit->setIsovaluesList(&m_isovalues);
        m_kit->valuesIndex = 0;
        m_kit->majorPeriod = 1;
        m_kit->firstMajor = 0;
        m_kit->annotIsVisible = TRUE;
        m_kit->annotFontSize = 0.08f;
        setColor("majorContourLineApp", s_line);
        setColor("annotTextApp", s_text);
        setColor("annotBackgroundApp", s_box);
        m_kit->set("majorContourLineApp.drawStyle", "lineWidth 3");
        root->addChild(m_kit);
    }

    void setColor(const char* app, const SbColor& color) {
        auto* material = new SoMaterial;
        material->diffuseColor = color;
        m_kit->setPart((std::string(app) + ".material").c_str(), material);
        m_kit->set((std::string(app) + ".lightModel").c_str(), "model BASE_COLOR");
    }

    RenderImage render() { return renderHeadless(root, smallPicture(s_size, s_size)); }

    // The pixels of a colour within a rectangle of the picture.
    static int countIn(const RenderImage& image, const PixelRect& rect, const SbColor& color) {
        int count = 0;
        for (int y = std::max(rect.y0, 0); y <= std::min(rect.y1, s_size - 1); ++y)
            for (int x = std::max(rect.x0, 0); x <= std::min(rect.x1, s_size - 1); ++x)
                count += isNear(image.pixel(x, y), toRgb(color), 60);
        return count;
    }
    // Where the pixels of a colour are.
    static PixelRect extentOf(const RenderImage& image, const SbColor& color) {
        PixelRect rect{s_size, s_size, -1, -1};
        for (int y = 0; y < s_size; ++y)
            for (int x = 0; x < s_size; ++x)
                if (isNear(image.pixel(x, y), toRgb(color), 60)) {
                    rect.x0 = std::min(rect.x0, x);
                    rect.y0 = std::min(rect.y0, y);
                    rect.x1 = std::max(rect.x1, x);
                    rect.y1 = std::max(rect.y1, y);
                }
        return rect;
    }

    PbRegularCartesianGrid2D m_grid;
    PbIsovaluesList m_isovalues;
    PoMeshContouring* m_kit = nullptr;
};

} // namespace

TEST_F(PoMeshContouringRenderTest, ClippedLineLeavesTheLabelItsOwnGap) {
    QUILLON_REQUIRE_RENDERING();
    for (bool clip : {false, true}) {
        m_kit->annotIsContourClip = clip;
        const RenderImage image = render();
        const PixelRect text = extentOf(image, s_text);
        ASSERT_FALSE(text.empty());
        // The label reads along the line, upwards.
        EXPECT_GT(text.y1 - text.y0, text.x1 - text.x0);
        const int lineInText = countIn(image, text, s_line);
        EXPECT_EQ(lineInText == 0, clip);
        // The line goes on above and below the label.
        EXPECT_GT(countIn(image, PixelRect{0, 0, s_size - 1, text.y0 - 3}, s_line), 0);
        EXPECT_GT(countIn(image, PixelRect{0, text.y1 + 3, s_size - 1, s_size - 1}, s_line), 0);
    }
}

TEST_F(PoMeshContouringRenderTest, BackgroundBoxHoldsItsText) {
    QUILLON_REQUIRE_RENDERING();
    m_kit->annotIsBackground = TRUE;
    const RenderImage image = render();
    const std::vector<PiLabelBox> boxes = labelBoxesOf(m_kit);
    ASSERT_EQ(boxes.size(), 1u);
    // The box in pixels (the camera shows [0, 10]^2).
    const SbBox2f bounds = boxes[0].getBounds();
    const PixelRect box{static_cast<int>(bounds.getMin()[0] * 20) + 1,
                        s_size - static_cast<int>(bounds.getMax()[1] * 20) + 1,
                        static_cast<int>(bounds.getMax()[0] * 20) - 2,
                        s_size - static_cast<int>(bounds.getMin()[1] * 20) - 2};
    const int area = (box.x1 - box.x0 + 1) * (box.y1 - box.y0 + 1);
    EXPECT_GT(countIn(image, box, s_text), area / 20);
    EXPECT_GT(countIn(image, box, s_box), area / 2);
    // The box hides the line and the background.
    EXPECT_EQ(countIn(image, box, s_line), 0);
    EXPECT_EQ(countIn(image, box, SbColor(0, 0, 0)), 0);
}
