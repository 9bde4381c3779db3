#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshContouring.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/nodes/PoNumericDisplayFormat.h>

#include "3Ddata/ContourKitHelpers.h"
#include "3Ddata/ContouringTestMeshes.h"
#include "graph/PiText.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"
#include "support/SceneIO.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoMaterial.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

using namespace contourkit;

namespace {

// The protected steps of the kit.
class ContouringProbe : public PoMeshContouring {
public:
    using PoMeshContouring::searchUpperLowerIsoval;
};

// A field over a grid, its isovalues, and a kit that draws them.
class PoMeshContouringTest : public SceneTest {
protected:
    // Values x over [0, 10] x [0, height]: the isoline of value v is the
    // vertical line x = v.
    void setRamp(const std::vector<float>& isovalues, float height = 2.5f) {
        m_grid.setGeometry(41, 11, 0.0f, 0.0f, 10.0f, height);
        setValues([](float x, float) { return x; });
        m_isovalues.setIrregularIsoList(static_cast<int>(isovalues.size()), isovalues.data());
    }
    // Hills and valleys crowded with isolines over [0, 10]^2.
    void setDenseMap(int numIsovalues = 39) {
        m_grid.setGeometry(81, 81, 0.0f, 0.0f, 10.0f, 10.0f);
        setValues([](float x, float y) { return contourtest::waves(0.1f * x, 0.1f * y); });
        m_isovalues.setRegularIsoList(1.0f, 10.5f, numIsovalues);
    }
    void setValues(float (*f)(float, float)) {
        m_values = contourtest::sampled(m_grid, f);
        m_grid.addValuesSet(0, m_values.data(), "field");
    }

    PoMeshContouring* addKit(PoMeshContouring* kit = nullptr) {
        m_kit = kit ? kit : new PoMeshContouring;
        m_kit->setMesh(&m_grid);
        m_kit->setIsovaluesList(&m_isovalues);
        m_kit->valuesIndex = 0;
        root->addChild(m_kit);
        return m_kit;
    }

    // The x of the vertical lines of a part, as isovalue indices of a
    // ramp with isovalues k + 0.5.
    std::set<int> rampIndices(const char* part) {
        std::set<int> indices;
        for (const Polyline& line : polylinesOf(m_kit, part))
            indices.insert(static_cast<int>(std::floor(line.front()[0])));
        return indices;
    }

    // The box of the labels' texts in the drawing.
    SbBox3f textBounds() {
        auto* probe = new SoSeparator;
        probe->ref();
        if (SoNode* transform = m_kit->getPart("transform", FALSE))
            probe->addChild(transform);
        probe->addChild(m_kit->getPart("annotText", FALSE));
        SoGetBoundingBoxAction action(SbViewportRegion(1, 1));
        action.apply(probe);
        probe->unref();
        return action.getBoundingBox();
    }

    PbRegularCartesianGrid2D m_grid;
    std::vector<float> m_values;
    PbIsovaluesList m_isovalues;
    PoMeshContouring* m_kit = nullptr;
};

std::vector<float> halves(int count) {
    std::vector<float> isovalues;
    for (int k = 0; k < count; ++k)
        isovalues.push_back(k + 0.5f);
    return isovalues;
}

} // namespace

TEST_F(PoMeshContouringTest, FieldsComeInTheirOrder) {
    PoMeshContouring* kit = addKit();
    SoFieldList fields;
    kit->getFields(fields);
    std::vector<std::string> own;
    for (int i = 0; i < fields.getLength(); ++i) {
        SbName name;
        kit->getFieldName(fields[i], name);
        own.emplace_back(name.getString());
    }
    const std::vector<std::string> expected{
        "majorPeriod",          "firstMajor",        "annotIsVisible",     "annotPath",
        "annotCrossStatus",     "annotIsBackground", "annotIsContourClip", "annotGap",
        "annotClippingPolygon", "annotFontSize",     "annotFontFactor"};
    const auto first = std::find(own.begin(), own.end(), "majorPeriod");
    ASSERT_NE(first, own.end());
    EXPECT_EQ(std::vector<std::string>(first, first + expected.size()), expected);
}

TEST_F(PoMeshContouringTest, WrittenKitKeepsItsFieldsAndLooksButNotWhatItBuilt) {
    setRamp(halves(4));
    addKit();
    m_kit->annotIsVisible = TRUE;
    m_kit->annotGap = 0.25f;
    m_kit->set("majorContourLineApp.material", "diffuseColor 1 0 0");
    traverse();
    ASSERT_NE(m_kit->getPart("majorContourLine", FALSE), nullptr);
    const std::string written = SceneIO::write(m_kit);
    EXPECT_NE(written.find("annotGap 0.25"), std::string::npos);
    EXPECT_NE(written.find("diffuseColor 1 0 0"), std::string::npos);
    for (const char* built : {"LineSet", "Text3", "Coordinate3"})
        EXPECT_EQ(written.find(built), std::string::npos) << built;
    SoNode* copy = SceneIO::read(written);
    ASSERT_NE(copy, nullptr);
    copy->ref();
    EXPECT_EQ(static_cast<PoMeshContouring*>(copy)->annotGap.getValue(), 0.25f);
    EXPECT_TRUE(static_cast<PoMeshContouring*>(copy)->annotIsVisible.getValue());
    copy->unref();
}

TEST_F(PoMeshContouringTest, MajorLinesFollowThePeriodFromTheFirstMajorBothWays) {
    setRamp(halves(10));
    addKit();
    const struct {
        int period, first;
        std::set<int> major;
    } cases[] = {
        {3, 1, {1, 4, 7}},    {3, 4, {1, 4, 7}},
        {3, 0, {0, 3, 6, 9}}, {1, 7, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
        {0, 2, {2}},          {2, 15, {1, 3, 5, 7, 9}},
        {0, 15, {}},
    };
    for (const auto& c : cases) {
        m_kit->majorPeriod = c.period;
        m_kit->firstMajor = c.first;
        traverse();
        EXPECT_EQ(rampIndices("majorContourLine"), c.major) << c.period << " " << c.first;
        std::set<int> all = rampIndices("minorContourLine");
        for (int index : c.major)
            EXPECT_TRUE(all.insert(index).second) << "major and minor " << index;
        EXPECT_EQ(all.size(), 10u);
    }
}

TEST_F(PoMeshContouringTest, TextHeightIsAShareOfTheLargerSideOrOfTheDrawnDomain) {
    setRamp({5.0f});
    addKit();
    m_kit->majorPeriod = 1;
    m_kit->annotIsVisible = TRUE;
    m_kit->annotPath = PoMeshContouring::HORIZONTAL_PATH;
    PbDomain domain(0.0f, 0.0f, 20.0f, 5.0f);
    const struct {
        float fontSize, factor;
        PbDomain* domain;
        float size;
    } cases[] = {
        {0.0f, 1.0f, nullptr, 0.4f},
        {0.0f, 2.0f, nullptr, 0.8f},
        {0.1f, 1.0f, nullptr, 1.0f},
        // Drawn, the domain's box is 20 on every side.
        {0.0f, 1.0f, &domain, 0.8f},
        {0.05f, 0.5f, &domain, 0.5f},
    };
    float widthPerHeight = 0.0f;
    for (const auto& c : cases) {
        m_kit->annotFontSize = c.fontSize;
        m_kit->annotFontFactor = c.factor;
        m_kit->setDomain(c.domain);
        traverse();
        ASSERT_EQ(m_kit->getNumAnnotations(), 1);
        EXPECT_EQ(m_kit->getPart("transform", FALSE) != nullptr, c.domain != nullptr);
        float width, height, depth;
        textBounds().getSize(width, height, depth);
        EXPECT_NEAR(height, PiText::CAP_HEIGHT * c.size, 0.05f * c.size) << c.size;
        // The domain's scaling does not stretch the text.
        if (widthPerHeight == 0.0f)
            widthPerHeight = width / height;
        EXPECT_NEAR(width / height, widthPerHeight, 0.03f);
    }
    // A new kind of transformation changes the drawing: the labels follow.
    domain.setTransformType(PbDomain::TRANSFORM_01);
    EXPECT_TRUE(m_kit->isModified());
}

// Placement and cutting are the labelling's own; the kit passes its
// settings on: which lines keep out of the labels.
TEST_F(PoMeshContouringTest, CrossingSettingsReachTheLabelsAndLines) {
    setDenseMap(20);
    addKit();
    m_kit->annotIsVisible = TRUE;
    m_kit->annotIsBackground = TRUE;
    m_kit->annotGap = 0.05f;
    const struct {
        PoMeshContouring::AnnotCrossStatus status;
        bool clip, majorsCross, minorsCross;
    } cases[] = {
        {PoMeshContouring::CROSS_MINOR_CONTOUR, false, false, true},
        {PoMeshContouring::DONT_CROSS_CONTOUR, false, false, false},
        {PoMeshContouring::CROSS_CONTOUR, true, false, false},
        {PoMeshContouring::CROSS_CONTOUR, false, true, true},
    };
    for (const auto& c : cases) {
        m_kit->annotCrossStatus = c.status;
        m_kit->annotIsContourClip = c.clip;
        traverse();
        const std::vector<PiLabelBox> boxes = labelBoxesOf(m_kit);
        ASSERT_GT(boxes.size(), 5u) << c.status;
        for (const char* part : {"majorContourLine", "minorContourLine"}) {
            int crossings = 0;
            for (const Polyline& line : polylinesOf(m_kit, part))
                for (size_t i = 1; i < line.size(); ++i)
                    for (const PiLabelBox& box : boxes)
                        crossings += reachesInto(box, line[i - 1], line[i]);
            const bool major = std::string(part) == "majorContourLine";
            EXPECT_EQ(crossings > 0, major ? c.majorsCross : c.minorsCross)
                << part << " " << c.status << " " << c.clip;
        }
    }
}

TEST_F(PoMeshContouringTest, LinesTakeTheColourAndTransparencyOfTheirIsovalue) {
    setRamp(halves(10));
    addKit();
    m_kit->majorPeriod = 1;
    m_kit->coloringType = PoMesh::COLOR_MAPPING;
    PbLinearDataMapping mapping;
    mapping.setValues(0.0f, SbColor(0, 0, 0), 0.0f, 10.0f, SbColor(1, 1, 1), 1.0f);
    m_kit->setDataMapping(&mapping);
    for (bool transparency : {false, true}) {
        mapping.enableTransparency(transparency);
        traverse();
        const std::vector<SoMaterial*> materials =
            findAll<SoMaterial>(m_kit->getPart("majorContourLine", FALSE));
        ASSERT_EQ(materials.size(), 1u);
        const std::vector<Polyline> lines = polylinesOf(m_kit, "majorContourLine");
        ASSERT_EQ(materials[0]->diffuseColor.getNum(), static_cast<int>(lines.size()));
        EXPECT_EQ(materials[0]->transparency.getNum(), transparency ? 10 : 1);
        for (size_t i = 0; i < lines.size(); ++i) {
            const float grey = std::floor(lines[i][0][0]) / 10.0f + 0.05f;
            EXPECT_NEAR(materials[0]->diffuseColor[static_cast<int>(i)][0], grey, 1e-4f);
            if (transparency) {
                EXPECT_NEAR(materials[0]->transparency[static_cast<int>(i)], grey, 1e-4f);
            }
        }
    }
    // Isovalues without colour draw no line.
    mapping.setMinThreshold(3.0f);
    mapping.enableThresholds(TRUE, FALSE);
    traverse();
    EXPECT_EQ(rampIndices("majorContourLine"), (std::set<int>{3, 4, 5, 6, 7, 8, 9}));
    // Inherited colouring leaves the colour to the appearance.
    m_kit->coloringType = PoMesh::COLOR_INHERITED;
    traverse();
    EXPECT_TRUE(findAll<SoMaterial>(m_kit->getPart("majorContourLine", FALSE)).empty());
    EXPECT_EQ(rampIndices("majorContourLine").size(), 10u);
}

TEST_F(PoMeshContouringTest, LabelTextsFollowTheFormatWithTheirCommonPowerOfTen) {
    setRamp({2000.0f, 5000.0f, 8000.0f}, 10.0f);
    setValues([](float x, float) { return 1000.0f * x; });
    addKit();
    m_kit->annotIsVisible = TRUE;
    m_kit->majorPeriod = 1;
    m_kit->annotGap = 5.0f;
    const auto texts = [&] {
        traverse();
        const std::vector<std::string> all = textsBelow(m_kit->getPart("annotText", FALSE));
        return std::set<std::string>(all.begin(), all.end());
    };
    // The power of ten follows as a raised exponent.
    EXPECT_EQ(texts(), (std::set<std::string>{"2x10", "5x10", "8x10", "3"}));
    auto* formatNode = new PoNumericDisplayFormat;
    formatNode->formatType = PbNumericDisplayFormat::FLOAT_FORMAT;
    formatNode->numDecimal = 1;
    root->insertChild(formatNode, 0);
    EXPECT_EQ(texts(), (std::set<std::string>{"2000.0", "5000.0", "8000.0"}));
    // The kit's own format wins, and when destroyed the state's serves again.
    auto* own = new PbNumericDisplayFormat(PbNumericDisplayFormat::INTEGER_FORMAT, 2, 0);
    m_kit->setFormat(own);
    EXPECT_EQ(texts(), (std::set<std::string>{"20x10", "50x10", "80x10", "2"}));
    delete own;
    EXPECT_EQ(m_kit->getFormat(), nullptr);
    EXPECT_EQ(texts(), (std::set<std::string>{"2000.0", "5000.0", "8000.0"}));
    // A kit that rebuilds at once forgets a destroyed format before it does:
    // outside a traversal the automatic format serves.
    m_kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    own = new PbNumericDisplayFormat(PbNumericDisplayFormat::INTEGER_FORMAT, 2, 0);
    m_kit->setFormat(own);
    delete own;
    const std::vector<std::string> atOnce = textsBelow(m_kit->getPart("annotText", FALSE));
    EXPECT_EQ(std::set<std::string>(atOnce.begin(), atOnce.end()),
              (std::set<std::string>{"2x10", "5x10", "8x10", "3"}));
    m_kit->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    // So for the text attributes.
    auto* attributes = new PbMiscTextAttr;
    attributes->setFontName("DejaVu Serif");
    m_kit->setMiscTextAttr(attributes);
    traverse();
    delete attributes;
    EXPECT_EQ(m_kit->getMiscTextAttr(), nullptr);
    EXPECT_EQ(texts().size(), 3u);
}

TEST_F(PoMeshContouringTest, LimitsReachOutToTheValuesBeyondTheIsovalues) {
    setRamp({2.0f, 3.0f, 4.0f});
    auto* probe = new ContouringProbe;
    addKit(probe);
    traverse();
    const struct {
        bool lower, upper;
        float low, high;
    } cases[] = {
        {false, false, 2, 4}, {true, false, 0, 4}, {false, true, 2, 10}, {true, true, 0, 10}};
    for (const auto& c : cases) {
        const auto limits = probe->searchUpperLowerIsoval(m_values.data(), c.lower, c.upper);
        EXPECT_EQ(limits.lower, c.low);
        EXPECT_EQ(limits.upper, c.high);
        EXPECT_EQ(limits.lowerFound, c.lower);
        EXPECT_EQ(limits.upperFound, c.upper);
    }
}

TEST_F(PoMeshContouringTest, BadSettingsTakeTheirDefaultsWithAWarning) {
    setDenseMap();
    addKit();
    m_kit->annotIsVisible = TRUE;
    traverse();
    const int usual = m_kit->getNumAnnotations();
    ASSERT_GT(usual, 0);
    const struct {
        SoSFFloat PoMeshContouring::*field;
        float value;
    } cases[] = {
        {&PoMeshContouring::annotGap, -1.0f},        {&PoMeshContouring::annotGap, NAN},
        {&PoMeshContouring::annotFontSize, -0.1f},   {&PoMeshContouring::annotFontFactor, 0.0f},
        {&PoMeshContouring::annotFontFactor, -2.0f},
    };
    for (const auto& c : cases) {
        const float previous = (m_kit->*c.field).getValue();
        (m_kit->*c.field).setValue(c.value);
        ErrorRecorder errors;
        traverse();
        EXPECT_EQ(errors.messages().size(), 1u) << c.value;
        EXPECT_EQ(m_kit->getNumAnnotations(), usual) << c.value;
        (m_kit->*c.field).setValue(previous);
    }
    // A polygon without area restricts nothing.
    for (const std::vector<SbVec2f>& polygon :
         {std::vector<SbVec2f>{SbVec2f(0, 0), SbVec2f(5, 5), SbVec2f(10, 10)},
          std::vector<SbVec2f>{SbVec2f(0, 0), SbVec2f(5, NAN), SbVec2f(10, 0)}}) {
        m_kit->annotClippingPolygon.setValues(0, 3, polygon.data());
        ErrorRecorder errors;
        traverse();
        EXPECT_TRUE(errors.contains("clipping polygon"));
        EXPECT_EQ(m_kit->getNumAnnotations(), usual);
    }
    // Nothing to contour: empty parts.
    m_kit->valuesIndex = 5;
    traverse();
    EXPECT_EQ(m_kit->getPart("majorContourLine", FALSE), nullptr);
    EXPECT_EQ(m_kit->getPart("annotText", FALSE), nullptr);
}
