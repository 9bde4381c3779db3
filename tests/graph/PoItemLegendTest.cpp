#include <Quillon/graph/PoItemLegend.h>

#include "graph/PiText.h"
#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoMaterial.h>

#include <string>
#include <vector>

namespace {

// An item legend that opens its layout steps to tests.
class OpenItemLegend : public PoItemLegend {
public:
    using PoItemLegend::computeItemFontSize;
    using PoItemLegend::ItemLayout;
    using PoLegend::computeMarginA;
    using PoLegend::Rect;
    using PoLegend::setDefaultAttr;
};

using Strings = std::vector<std::string>;

class PoItemLegendTest : public SceneTest {
protected:
    OpenItemLegend* addLegend(const Strings& items) {
        auto* legend = new OpenItemLegend;
        legend->item.setNum(static_cast<int>(items.size()));
        for (size_t i = 0; i < items.size(); ++i)
            legend->item.set1Value(static_cast<int>(i), items[i].c_str());
        root->addChild(legend);
        return legend;
    }
    // The middles of the boxes, in item order.
    static std::vector<SbVec2f> boxMiddles(PoItemLegend* legend) {
        std::vector<SbVec2f> middles;
        for (SoCoordinate3* c : findAll<SoCoordinate3>(legend->getPart("box", FALSE)))
            for (int i = 0; i + 3 < c->point.getNum(); i += 4) {
                const SbVec3f m = 0.5f * (c->point[i] + c->point[i + 2]);
                middles.emplace_back(m[0], m[1]);
            }
        return middles;
    }
    static OpenItemLegend::Rect rect(float x, float y, float width, float height) {
        OpenItemLegend::Rect r;
        r.origin.setValue(x, y);
        r.width = width;
        r.height = height;
        return r;
    }
};

TEST_F(PoItemLegendTest, MarginsKeepTheEntriesFromTheEdges) {
    OpenItemLegend* legend = addLegend({"a"});
    const struct {
        PoLegend::MarginType type;
        float left, right, bottom, top;
        float x, y, width, height;
    } cases[] = {
        // Fractions of the width and of the height.
        {PoLegend::REL_MARGIN, 0.05f, 0.05f, 0.05f, 0.05f, 1.5f, 2.2f, 9.0f, 3.6f},
        // Summing to 1 in x: dropped in x only.
        {PoLegend::REL_MARGIN, 0.6f, 0.4f, 0.25f, 0.25f, 1.0f, 3.0f, 10.0f, 2.0f},
        // A negative margin: 0.05 of the smaller side everywhere.
        {PoLegend::REL_MARGIN, 0.1f, 0.1f, 0.1f, -1.0f, 1.2f, 2.2f, 9.6f, 3.6f},
        {PoLegend::FIXED_MARGIN, 2.0f, 3.0f, 1.0f, 1.0f, 3.0f, 3.0f, 5.0f, 2.0f},
        // Leaving no room in x: dropped in x only.
        {PoLegend::FIXED_MARGIN, 6.0f, 4.0f, 1.0f, 1.0f, 1.0f, 3.0f, 10.0f, 2.0f},
    };
    for (const auto& c : cases) {
        legend->marginType = c.type;
        legend->marginLeft = c.left;
        legend->marginRight = c.right;
        legend->marginBottom = c.bottom;
        legend->marginTop = c.top;
        legend->setDefaultAttr();
        const OpenItemLegend::Rect inner = legend->computeMarginA(rect(1, 2, 10, 4));
        EXPECT_FLOAT_EQ(inner.origin[0], c.x) << c.type << " " << c.left;
        EXPECT_FLOAT_EQ(inner.origin[1], c.y) << c.type << " " << c.left;
        EXPECT_FLOAT_EQ(inner.width, c.width) << c.type << " " << c.left;
        EXPECT_FLOAT_EQ(inner.height, c.height) << c.type << " " << c.left;
    }
}

TEST_F(PoItemLegendTest, TheFontSizeFitsTheGridOfEntries) {
    const Strings items = {"one", "two", "three", "four", "five"};
    OpenItemLegend* legend = addLegend(items);
    legend->numColumns = 2;
    legend->setDefaultAttr();
    std::vector<SbString> texts;
    for (const std::string& each : items)
        texts.emplace_back(each.c_str());
    // Room to spare across: the height decides, 3 rows of boxes 0.975 high
    // with 2 gaps of 0.975; the width left over goes between the columns.
    OpenItemLegend::ItemLayout layout = legend->computeItemFontSize(texts, rect(0, 0, 100, 9.75f));
    EXPECT_EQ(layout.rows, 3);
    EXPECT_EQ(layout.columns, 2);
    EXPECT_FLOAT_EQ(layout.size, 2.0f);
    EXPECT_FLOAT_EQ(layout.rowGap, 0.975f * 2.0f);
    const float columns = layout.columnWidths[0] + layout.columnWidths[1];
    EXPECT_FLOAT_EQ(layout.columnGap, 100.0f - columns * 2.0f);

    // Room to spare in height: the width decides.  A column is a box, a gap
    // of 0.325 and the widest name; 1.3 between the columns.
    PiText text;
    text.setFontSize(1.0f);
    const float first = std::max(text.getWidth("three"), text.getWidth("one"));
    const float second = std::max(text.getWidth("four"), text.getWidth("five"));
    const float units = 2 * (0.975f + 0.325f) + first + second + 1.3f;
    layout = legend->computeItemFontSize(texts, rect(0, 0, 10, 100));
    EXPECT_NEAR(layout.size, 10.0f / units, 1e-4f);
    EXPECT_NEAR(layout.columnGap, 1.3f * layout.size, 1e-4f);

    // Names below the graphics: the row height by what the graphic holds.
    legend->valuePosition = PoLegend::POS_BOTTOM;
    const struct {
        bool box, line, marker;
        float rowHeight;
    } rows[] = {{true, false, false, 2.275f},
                {false, false, true, 1.95f},
                {false, true, false, 1.3f},
                {false, false, false, 0.65f}};
    for (const auto& r : rows) {
        legend->boxVisibility = r.box;
        legend->lineVisibility = r.line;
        legend->markerVisibility = r.marker;
        legend->setDefaultAttr();
        layout = legend->computeItemFontSize(texts, rect(0, 0, 100, 10));
        EXPECT_FLOAT_EQ(layout.rowHeight, r.rowHeight);
        EXPECT_NEAR(layout.size, 10.0f / (3 * r.rowHeight + 2 * 0.975f), 1e-4f);
    }
}

// Five items in two columns from (0, 0) to (10, 6), boxes 0.975 high.
TEST_F(PoItemLegendTest, EntriesFillTheGridInTheOrderOfIncrement) {
    OpenItemLegend* legend = addLegend({"a", "b", "c", "d", "e"});
    legend->numColumns = 2;
    legend->end = SbVec2f(10, 6);
    traverse();
    std::vector<SbVec2f> middles = boxMiddles(legend);
    ASSERT_EQ(middles.size(), 5u);
    auto rowOf = [&](int i) { return middles[i][1]; };
    auto columnOf = [&](int i) { return middles[i][0]; };
    // Down the first column, then the second.
    EXPECT_GT(rowOf(0), rowOf(1));
    EXPECT_GT(rowOf(1), rowOf(2));
    EXPECT_FLOAT_EQ(rowOf(3), rowOf(0));
    EXPECT_FLOAT_EQ(columnOf(2), columnOf(0));
    EXPECT_GT(columnOf(3), columnOf(0));

    legend->incrementType = PoLegend::HORIZONTAL_INCREMENT;
    traverse();
    middles = boxMiddles(legend);
    EXPECT_FLOAT_EQ(rowOf(1), rowOf(0));
    EXPECT_GT(columnOf(1), columnOf(0));
    EXPECT_FLOAT_EQ(columnOf(2), columnOf(0));
    EXPECT_GT(rowOf(0), rowOf(2));
    EXPECT_GT(rowOf(2), rowOf(4));

    // Corners given right to left: the order runs back.
    legend->start = SbVec2f(10, 0);
    legend->end = SbVec2f(0, 6);
    traverse();
    const std::vector<SbVec2f> reversed = boxMiddles(legend);
    for (int i = 0; i < 5; ++i) {
        EXPECT_FLOAT_EQ(reversed[i][0], middles[4 - i][0]) << i;
        EXPECT_FLOAT_EQ(reversed[i][1], middles[4 - i][1]) << i;
    }
}

TEST_F(PoItemLegendTest, PerItemListsAreTakenRound) {
    const char* names[] = {"a", "b", "c"};
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 1, 0), SbColor(0, 0, 1)};
    auto* legend = new PoItemLegend(SbVec2f(0, 0), SbVec2f(4, 3), 3, names, colors);
    root->addChild(legend);
    // More items than colours, line sizes and markers.
    legend->boxColor.setValues(0, 2, colors);
    legend->boxColor.setNum(2);
    legend->lineVisibility = TRUE;
    legend->lineSize.setValue(3);
    legend->linePattern.setValues(0, 2, std::vector<uint16_t>{0xFFFF, 0x0F0F}.data());
    legend->markerVisibility = TRUE;
    legend->markerString.setValues(0, 2, std::vector<const char*>{"x", "o"}.data());
    traverse();
    std::vector<SoMaterial*> boxes = findAll<SoMaterial>(legend->getPart("box", FALSE));
    ASSERT_EQ(boxes.size(), 1u);
    ASSERT_EQ(boxes[0]->diffuseColor.getNum(), 12);
    EXPECT_EQ(boxes[0]->diffuseColor[4], colors[1]);
    EXPECT_EQ(boxes[0]->diffuseColor[8], colors[0]);
    const std::vector<SoDrawStyle*> styles = findAll<SoDrawStyle>(legend->getPart("line", FALSE));
    ASSERT_EQ(styles.size(), 3u);
    EXPECT_FLOAT_EQ(styles[2]->lineWidth.getValue(), 3.0f);
    EXPECT_EQ(styles[1]->linePattern.getValue(), 0x0F0F);
    EXPECT_EQ(styles[2]->linePattern.getValue(), 0xFFFF);
    EXPECT_EQ(textsBelow(legend->getPart("marker", FALSE)), (Strings{"x", "o", "x"}));
    EXPECT_EQ(textsBelow(legend->getPart("valueText", FALSE)), (Strings{"a", "b", "c"}));

    // Without colours the boxes take their appearance's.
    legend->boxColor.setNum(0);
    traverse();
    EXPECT_TRUE(findAll<SoMaterial>(legend->getPart("box", FALSE)).empty());
    EXPECT_EQ(boxMiddles(legend).size(), 3u);
}

TEST_F(PoItemLegendTest, ALegendWithoutAreaIsReported) {
    ErrorRecorder errors;
    PoItemLegend* legend = addLegend({"a"});
    legend->end = SbVec2f(1, 0);
    traverse();
    EXPECT_TRUE(errors.contains("PoItemLegend::rebuild(): the legend from (0, 0) to (1, 0) has "
                                "no area; it is not drawn"));
    EXPECT_EQ(legend->getPart("background", FALSE), nullptr);
    legend->end = SbVec2f(NAN, 1);
    traverse();
    EXPECT_TRUE(errors.contains("the corners must be numbers"));
    legend->end = SbVec2f(1, 1);
    legend->item.setNum(0);
    traverse();
    EXPECT_NE(legend->getPart("background", FALSE), nullptr);
    EXPECT_EQ(legend->getPart("box", FALSE), nullptr);
}

// Two items, red and blue, in a legend from (0, 0) to (10, 10) filling a
// 100 x 100 picture on a white background.
TEST_F(PoItemLegendTest, BoxesAreDrawnInTheirColoursOverTheBackground) {
    QUILLON_REQUIRE_RENDERING();
    root->addChild(orthographicCamera(SbVec3f(5, 5, 5), 10));
    const char* names[] = {"r", "b"};
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 0, 1)};
    auto* legend = new PoItemLegend(SbVec2f(0, 0), SbVec2f(10, 10), 2, names, colors);
    legend->valueVisibility = PoLegend::VISIBILITY_OFF;
    root->addChild(legend);
    traverse();
    const std::vector<SbVec2f> middles = boxMiddles(legend);
    ASSERT_EQ(middles.size(), 2u);
    const RenderImage image = renderHeadless(root, smallPicture(100, 100, SbColor(1, 1, 1)));
    auto pixelAt = [](const SbVec2f& p, int& x, int& y) {
        x = static_cast<int>(p[0] * 10.0f);
        y = static_cast<int>((10.0f - p[1]) * 10.0f);
    };
    int x, y;
    pixelAt(middles[0], x, y);
    EXPECT_TRUE(pixelNear(image, x, y, Rgb{255, 0, 0}));
    pixelAt(middles[1], x, y);
    EXPECT_TRUE(pixelNear(image, x, y, Rgb{0, 0, 255}));
    // The black background within the legend, nothing outside it.
    EXPECT_TRUE(pixelNear(image, 50, 50, Rgb{0, 0, 0}));
    EXPECT_EQ(countPixelsNear(image, Rgb{255, 255, 255}), 0);
}

} // namespace
