#include <Quillon/3Ddata/PoMeshContouring.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PoCurve.h>
#include <Quillon/graph/PoItemLegend.h>
#include <Quillon/graph/PoLinearAxis.h>
#include <Quillon/graph/PoLinearValueLegend.h>
#include <Quillon/graph/PoMultipleHistogram.h>
#include <Quillon/graph/PoPieChart2D.h>
#include <Quillon/graph/PoSingleHistogram.h>

#include "support/LibraryTest.h"
#include "support/SceneIO.h"

#include <Inventor/fields/SoSFNode.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodekits/SoNodekitCatalog.h>
#include <Inventor/nodes/SoMaterial.h>

#include <functional>
#include <string>
#include <vector>

// What every representation kit shares: each drawn part sits with its own
// separator and appearance under the alternate representation, and a
// written kit keeps its fields and appearances but none of what it built.
namespace {

using Strings = std::vector<std::string>;

class ChartKitSchemeTest : public SceneTest {};

// The parts in catalogue order, each "part" or "part:ContentType" (Group by
// default).
void expectPartTriples(const SoNodekitCatalog* catalog, const Strings& parts) {
    int previous = -1;
    for (const std::string& entry : parts) {
        const size_t colon = entry.find(':');
        const std::string part = entry.substr(0, colon);
        const std::string type = colon == std::string::npos ? "Group" : entry.substr(colon + 1);
        const std::string sep = part + "Sep";
        const struct {
            std::string name, parent, type;
            bool isPublic;
        } triple[] = {{sep, "alternateRep", "Separator", false},
                      {part + "App", sep, "AppearanceKit", true},
                      {part, sep, type, true}};
        for (const auto& p : triple) {
            const int number = catalog->getPartNumber(SbName(p.name.c_str()));
            ASSERT_GE(number, 0) << p.name;
            EXPECT_EQ(catalog->getParentName(number), SbName(p.parent.c_str())) << p.name;
            EXPECT_STREQ(catalog->getType(number).getName().getString(), p.type.c_str()) << p.name;
            EXPECT_EQ(catalog->isPublic(number), p.isPublic) << p.name;
            EXPECT_TRUE(catalog->isNullByDefault(number)) << p.name;
        }
        const int number = catalog->getPartNumber(SbName(sep.c_str()));
        EXPECT_GT(number, previous) << sep;
        previous = number;
    }
}

TEST_F(ChartKitSchemeTest, EachPartHasItsSeparatorAndAppearanceInCatalogueOrder) {
    const Strings axis = {"body",         "arrow",        "title",
                          "subGradTick",  "subGradGrid",  "mainGradTick",
                          "mainGradGrid", "mainGradText", "multFactor"};
    const Strings legend = {"background", "backgroundBorder", "box", "boxBorder",
                            "title",      "valueText"};
    Strings itemLegend = legend;
    itemLegend.insert(itemLegend.end(), {"line", "marker"});
    const struct {
        SoBaseKit* kit;
        Strings parts;
        bool transformFirst;
    } cases[] = {
        {new PoLinearAxis, axis, true},
        {new PoSingleHistogram, {"bar", "valueText", "nameText"}, true},
        {new PoCurve, {"curveFilling", "curvePoint", "raisePoint", "marker"}, false},
        {new PoItemLegend, itemLegend, false},
        {new PoLinearValueLegend, legend, false},
        {new PoPieChart2D,
         {"slice", "sliceBorder", "extAnnotBox:Annotation", "extAnnotBoxBorder:Annotation",
          "extAnnotText:Annotation", "extAnnotValue:Annotation", "extAnnotPercent:Annotation",
          "arrow", "intAnnotBox:Annotation", "intAnnotBoxBorder:Annotation",
          "intAnnotText:Annotation", "intAnnotValue:Annotation", "intAnnotPercent:Annotation"},
         false},
        {new PoMeshContouring,
         {"majorContourLine", "minorContourLine", "annotBackground", "annotBackgroundBorder",
          "annotText"},
         true},
    };
    for (const auto& c : cases) {
        c.kit->ref();
        const SoNodekitCatalog* catalog = c.kit->getNodekitCatalog();
        SCOPED_TRACE(c.kit->getTypeId().getName().getString());
        expectPartTriples(catalog, c.parts);
        const int transform = catalog->getPartNumber("transform");
        EXPECT_EQ(transform >= 0, c.transformFirst);
        if (c.transformFirst) {
            EXPECT_STREQ(catalog->getType(transform).getName().getString(), "MatrixTransform");
            EXPECT_TRUE(catalog->isPublic(transform));
            EXPECT_LT(transform, catalog->getPartNumber(SbName((c.parts[0] + "Sep").c_str())));
        }
        c.kit->unref();
    }
}

TEST_F(ChartKitSchemeTest, WrittenKitsKeepTheirFieldsAndAppearancesButNotWhatTheyBuilt) {
    static PbLinearDataMapping mapping;
    const float values[] = {1, 2};
    const char* names[] = {"x", "y"};
    const SbVec2f points[] = {SbVec2f(0, 0), SbVec2f(1, 2), SbVec2f(2, 1)};
    const struct {
        std::function<SoBaseKit*()> make;
        const char* appearance;
    } cases[] = {
        {[&] {
             auto* axis = new PoLinearAxis(SbVec3f(0, 1, 0), 5, PoCartesianAxis::XY, 1);
             axis->titleString = "Time";
             axis->titleVisibility = PoAxis::VISIBILITY_ON;
             return axis;
         },
         "bodyApp.material"},
        {[&] {
             return new PoMultipleHistogram(SbVec2f(1, 1), 5, 2, 1, values, nullptr,
                                            PoMultipleHistogram::ACCUMULATED);
         },
         "barApp.material"},
        {[&] {
             auto* curve = new PoCurve(3, points, PoCurve::CURVE_SMOOTH);
             curve->isCurveFilled = TRUE;
             curve->markerFilterType = PoCurve::ALL_POINTS;
             return curve;
         },
         "curvePointApp.material"},
        {[&] {
             auto* legend = new PoItemLegend(SbVec2f(0, 0), SbVec2f(4, 3), 2, names, nullptr);
             legend->titleVisibility = PoLegend::VISIBILITY_ON;
             legend->titleString = "Title";
             return legend;
         },
         "boxApp.material"},
        {[&] {
             auto* legend = new PoLinearValueLegend(SbVec2f(0, 0), SbVec2f(2, 10));
             legend->setDataMapping(&mapping);
             legend->step = 0.5f;
             legend->incrementType = PoLegend::HORIZONTAL_INCREMENT;
             return legend;
         },
         "boxApp.material"},
        {[&] { return new PoPieChart2D(SbVec2f(2, 1), 0.5f, 2, names, values, 0, nullptr); },
         "sliceApp.material"},
    };
    for (const auto& c : cases) {
        SoBaseKit* kit = c.make();
        root->addChild(kit);
        kit->set(c.appearance, "diffuseColor 0 1 0");
        traverse();
        const std::string text = SceneIO::write(kit);
        SCOPED_TRACE(text);
        // Nothing built is written, and no part comes out named by the
        // writer (a name that would change at each round trip).
        for (const char* built :
             {"Coordinate3", "Text3", "FaceSet", "LineSet", "MatrixTransform", "DEF "})
            EXPECT_EQ(text.find(built), std::string::npos) << built;
        SoNode* read = SceneIO::read(text);
        ASSERT_NE(read, nullptr);
        read->ref();
        ASSERT_EQ(read->getTypeId(), kit->getTypeId());
        auto* copy = static_cast<SoBaseKit*>(read);
        SoFieldList fields, copied;
        kit->getFields(fields);
        copy->getFields(copied);
        ASSERT_EQ(fields.getLength(), copied.getLength());
        for (int i = 0; i < fields.getLength(); ++i) {
            if (!fields[i]->isOfType(SoSFNode::getClassTypeId())) {
                EXPECT_TRUE(fields[i]->isSame(*copied[i])) << i;
            }
        }
        auto* material = static_cast<SoMaterial*>(copy->getPart(c.appearance, FALSE));
        ASSERT_NE(material, nullptr);
        EXPECT_EQ(material->diffuseColor[0], SbColor(0, 1, 0));
        // Legends keep their black background.
        if (copy->getNodekitCatalog()->getPartNumber("backgroundApp") >= 0) {
            auto* background =
                static_cast<SoMaterial*>(copy->getPart("backgroundApp.material", FALSE));
            ASSERT_NE(background, nullptr);
            EXPECT_EQ(background->diffuseColor[0], SbColor(0, 0, 0));
        }
        read->unref();
        root->removeChild(kit);
    }
}

} // namespace
