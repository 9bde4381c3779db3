#include <Quillon/Quillon.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/RecordingKit.h"
#include "support/SceneIO.h"

#include <Inventor/SoOutput.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoAudioRenderAction.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {
std::vector<int> toVector(const PbArrayOfInt& array) {
    return std::vector<int>(array.get(), array.get() + array.getNum());
}

// Runs a function on the state of each action that reaches the callback.
SoCallback* probe(std::function<void(SoState*)>& read) {
    auto* node = new SoCallback;
    node->setCallback(
        [](void* data, SoAction* action) {
            (*static_cast<std::function<void(SoState*)>*>(data))(action->getState());
        },
        &read);
    return node;
}

// What the library's elements hold at one place of the graph.
struct Snapshot {
    // Data mapping, domain, isovalues, text attributes, numeric format, date
    // format, cell filter, line-mesh filter and profile.
    std::vector<const void*> objects;
    PoMesh1DHints::GeomInterpretation hints;
    std::tuple<int, float, PoBevelEdge::RadiusFlag, float> bevel;
    std::tuple<PoLabelHints::LabelPath, PoLabelHints::Justification, std::string, int, int> label;
};

Snapshot snapshotOf(SoState* state) {
    Snapshot s;
    s.objects = {PoDataMappingElement::get(state),
                 PoDomainElement::get(state),
                 PoIsovaluesListElement::get(state),
                 PoMiscTextAttrElement::get(state),
                 PoNumericDisplayFormatElement::get(state),
                 PoDateFormatMappingElement::get(state),
                 PoCellFilterElement::get(state),
                 PoMesh1DFilterElement::get(state),
                 PoProfileElement::get(state)};
    s.hints = PoMesh1DHintsElement::get(state);
    int on = 0;
    float radius = 0, angle = 0;
    PoBevelEdge::RadiusFlag radiusFlag = PoBevelEdge::ABSOLUTE_RADIUS;
    PoBevelEdgeElement::get(state, on, radius, radiusFlag, angle);
    s.bevel = std::make_tuple(on, radius, radiusFlag, angle);
    PoLabelHints::LabelPath path = PoLabelHints::PATH_RIGHT;
    PoLabelHints::Justification justification = PoLabelHints::LEFT;
    SbString text;
    const int labelStep = PoLabelHintsElement::get(state, path, justification, text);
    s.label = std::make_tuple(path, justification, std::string(text.getString()), labelStep,
                              PoLabelHintsElement::getFirstLabel(state));
    return s;
}

// Null but for the domain, text attributes and numeric format, which have
// default objects.
void expectDefaults(const Snapshot& s) {
    const auto* domain = static_cast<const PbDomain*>(s.objects[1]);
    const auto* text = static_cast<const PbMiscTextAttr*>(s.objects[3]);
    const auto* format = static_cast<const PbNumericDisplayFormat*>(s.objects[4]);
    ASSERT_TRUE(domain && text && format);
    EXPECT_EQ(domain->getDeltaX(), 1);
    EXPECT_TRUE(text->isOutliningEnabled());
    PbNumericDisplayFormat::FormatType type = PbNumericDisplayFormat::FLOAT_FORMAT;
    int tenPower = -1, numDecimal = -1;
    format->getFormat(type, tenPower, numDecimal);
    EXPECT_EQ(std::make_tuple(type, tenPower, numDecimal),
              std::make_tuple(PbNumericDisplayFormat::AUTO_FORMAT, 0, 0));
    EXPECT_EQ(s.objects, (std::vector<const void*>{nullptr, domain, nullptr, text, format, nullptr,
                                                   nullptr, nullptr, nullptr}));
    EXPECT_EQ(s.hints, PoMesh1DHintsElement::getDefault());
    EXPECT_EQ(s.bevel, std::make_tuple(1, 0.05f, PoBevelEdge::RELATIVE_RADIUS, 0.5f));
    const auto labelDefaults = std::make_tuple(
        PoLabelHints::PATH_DEPEND, PoLabelHints::JUSTIFICATION_DEPEND, std::string(), 0);
    EXPECT_EQ(s.label, std::tuple_cat(labelDefaults, std::make_tuple(0)));
    PoLabelHints::LabelPath path = PoLabelHints::PATH_UP;
    PoLabelHints::Justification justification = PoLabelHints::LEFT;
    SbString labelText("x");
    const int labelStep = PoLabelHintsElement::getDefault(path, justification, labelText);
    EXPECT_EQ(std::make_tuple(path, justification, std::string(labelText.getString()), labelStep),
              labelDefaults);
}

// One node for each element, its fields off their defaults.
struct PropertyNodes {
    PoNonLinearDataMapping2* mapping = new PoNonLinearDataMapping2;
    PoDomain* domain = new PoDomain;
    PoIsovaluesList* isovalues = new PoIsovaluesList;
    PoMiscTextAttr* text = new PoMiscTextAttr;
    PoNumericDisplayFormat* format = new PoNumericDisplayFormat;
    PoDateFormatMapping* dates = new PoDateFormatMapping;
    PoIntervalCellFilter* cellFilter = new PoIntervalCellFilter;
    PoIndexListFilter* lineFilter = new PoIndexListFilter;
    PoProfileCoordinate2* profile = new PoProfileCoordinate2;
    PoMesh1DHints* hints = new PoMesh1DHints;
    PoBevelEdge* bevel = new PoBevelEdge;
    PoLabelHints* label = new PoLabelHints;

    PropertyNodes() {
        mapping->type = PoNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
        // Every entry set: a multiple field grown by set1Value leaves the
        // entries it skips uninitialised.
        mapping->value.setValues(0, 2, std::array<float, 2>{0.0f, 3.5f}.data());
        mapping->color.setValues(
            0, 3,
            std::array<SbColor, 3>{SbColor(0, 0, 0), SbColor(0, 0, 0), SbColor(1, 0, 0)}.data());
        domain->max = SbVec3f(2, 3, 4);
        domain->transformType = PoDomain::SCALE_MAX_XYZ_FIXED;
        isovalues->setRegularIsoList(1.0f, 2.0f, 3);
        text->endLineChar = '/';
        text->outliningEnabled = FALSE;
        format->formatType = PoNumericDisplayFormat::INTEGER_FORMAT;
        dates->format = "%d/%m/%Y";
        cellFilter->in = FALSE;
        lineFilter->index.set1Value(0, 4);
        profile->point.set1Value(0, SbVec2f(0.5f, 0.25f));
        hints->geomInterpretation = PoMesh1DHints::STAIRS_Y;
        bevel->on = FALSE;
        bevel->radius = 0.2f;
        bevel->radiusFlag = PoBevelEdge::ABSOLUTE_RADIUS;
        bevel->angle = 0.75f;
        label->labelPath = PoLabelHints::PATH_UP;
        label->justification = PoLabelHints::CENTER;
        label->labelText = "T (K)";
        label->labelStep = 3;
        label->firstLabel = 2;
    }
    std::vector<SoNode*> all() const {
        return {mapping,    domain,     isovalues, text,  format, dates,
                cellFilter, lineFilter, profile,   hints, bevel,  label};
    }
};
} // namespace

class PropertyNodeTest : public SceneTest {};

// The nodes that carry a data object: their fields reach the object lazily.
using DataNodeTest = PropertyNodeTest;

TEST_F(PropertyNodeTest, ElementsHoldWhatTheNodesAboveSetWithinTheirSeparator) {
    const PropertyNodes nodes;
    std::vector<Snapshot> seen;
    std::function<void(SoState*)> record = [&](SoState* state) {
        seen.push_back(snapshotOf(state));
    };
    auto* inner = new SoSeparator;
    for (SoNode* node : nodes.all())
        inner->addChild(node);
    inner->addChild(probe(record));
    root->addChild(inner);
    root->addChild(probe(record));
    traverse();

    ASSERT_EQ(seen.size(), 2u);
    expectDefaults(seen[1]);
    const Snapshot& s = seen[0];
    EXPECT_EQ(s.objects, (std::vector<const void*>{
                             nodes.mapping->getDataMapping(), nodes.domain->getDomain(),
                             nodes.isovalues->getIsovaluesList(), nodes.text->getMiscTextAttr(),
                             nodes.format->getFormat(), nodes.dates->getDateFormatMapping(),
                             nodes.cellFilter, nodes.lineFilter, nodes.profile}));
    EXPECT_EQ(s.hints, PoMesh1DHints::STAIRS_Y);
    EXPECT_FALSE(nodes.text->getMiscTextAttr()->isOutliningEnabled());
    PbNumericDisplayFormat::FormatType type = PbNumericDisplayFormat::AUTO_FORMAT;
    int tenPower = 0, numDecimal = 0;
    nodes.format->getFormat()->getFormat(type, tenPower, numDecimal);
    EXPECT_EQ(type, PbNumericDisplayFormat::INTEGER_FORMAT);
    EXPECT_EQ(s.bevel, std::make_tuple(0, 0.2f, PoBevelEdge::ABSOLUTE_RADIUS, 0.75f));
    EXPECT_EQ(s.label, std::make_tuple(PoLabelHints::PATH_UP, PoLabelHints::CENTER,
                                       std::string("T (K)"), 3, 2));
}

TEST_F(PropertyNodeTest, ElementsLiveInExactlyTheNineActionsOfTheLibraryState) {
    const int stackIndices[] = {PoDataMappingElement::getClassStackIndex(),
                                PoDomainElement::getClassStackIndex(),
                                PoIsovaluesListElement::getClassStackIndex(),
                                PoMeshElement::getClassStackIndex(),
                                PoMiscTextAttrElement::getClassStackIndex(),
                                PoNumericDisplayFormatElement::getClassStackIndex(),
                                PoDateFormatMappingElement::getClassStackIndex(),
                                PoCellFilterElement::getClassStackIndex(),
                                PoMesh1DFilterElement::getClassStackIndex(),
                                PoProfileElement::getClassStackIndex(),
                                PoMesh1DHintsElement::getClassStackIndex(),
                                PoBevelEdgeElement::getClassStackIndex(),
                                PoLabelHintsElement::getClassStackIndex()};
    auto* hints = new PoMesh1DHints;
    hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
    std::vector<PoMesh1DHints::GeomInterpretation> seen;
    std::function<void(SoState*)> record = [&](SoState* state) {
        seen.push_back(PoMesh1DHintsElement::get(state));
    };
    root->addChild(new PoSquareProfile);
    root->addChild(hints);
    root->addChild(probe(record));
    // Applied to the path to the probe: some actions traverse no further.
    SoPath* toProbe = new SoPath(root);
    toProbe->ref();
    toProbe->append(2);

    const SbViewportRegion viewport(100, 100);
    SoOutput discarded;
    ASSERT_TRUE(discarded.openFile("/dev/null"));
    std::unique_ptr<SoAction> carrying[] = {std::make_unique<SoCallbackAction>(),
                                            std::make_unique<SoGLRenderAction>(viewport),
                                            std::make_unique<SoGetMatrixAction>(viewport),
                                            std::make_unique<SoSearchAction>(),
                                            std::make_unique<SoGetBoundingBoxAction>(viewport),
                                            std::make_unique<SoWriteAction>(&discarded),
                                            std::make_unique<SoHandleEventAction>(viewport),
                                            std::make_unique<SoRayPickAction>(viewport),
                                            std::make_unique<SoGetPrimitiveCountAction>()};
    for (const auto& action : carrying) {
        const char* name = action->getTypeId().getName().getString();
        for (int stackIndex : stackIndices)
            EXPECT_TRUE(action->getState()->isElementEnabled(stackIndex)) << name;
        // Rendering needs a context: it is traversed below when one can be had.
        if (action->isOfType(SoGLRenderAction::getClassTypeId()))
            continue;
        seen.clear();
        action->apply(toProbe);
        EXPECT_EQ(seen, std::vector<PoMesh1DHints::GeomInterpretation>{PoMesh1DHints::STAIRS_X})
            << name;
    }
    std::string whyNot;
    if (canRenderHeadless(whyNot)) {
        seen.clear();
        renderHeadless(root);
        EXPECT_FALSE(seen.empty());
        for (PoMesh1DHints::GeomInterpretation interpretation : seen)
            EXPECT_EQ(interpretation, PoMesh1DHints::STAIRS_X);
    }
    // Any other action leaves the library's state alone.
    SoAudioRenderAction other;
    for (int stackIndex : stackIndices)
        EXPECT_FALSE(other.getState()->isElementEnabled(stackIndex));
    other.apply(toProbe);
    toProbe->unref();
}

TEST_F(PropertyNodeTest, UnfoldedWriteFormatOmitsPropertyNodes) {
    root->addChild(new PoBevelEdge);
    EXPECT_NE(SceneIO::write(root).find("PoBevelEdge"), std::string::npos);
    PoBase::setNodeWriteFormat(PoBase::UNFOLD_NODE_WRITE_FORMAT);
    EXPECT_EQ(SceneIO::write(root).find("PoBevelEdge"), std::string::npos);
}

TEST_F(PropertyNodeTest, NodesRoundTripThroughSceneFiles) {
    auto* linear = new PoLinearDataMapping;
    linear->color2 = SbColor(0.25f, 0.5f, 1);
    linear->maxThresholdEnabled = TRUE;
    std::vector<SoNode*> nodes = PropertyNodes().all();
    nodes.insert(nodes.end(), {linear, new PoNonLinearDataMapping, new PoSquareProfile,
                               new PoCircularProfile, new PoEllipticProfile, new PoPeriodFilter,
                               new PoPeriodIndexFilter, new PoCoordinateListFilter});
    for (SoNode* node : nodes) {
        node->ref();
        for (bool binary : {false, true}) {
            SoNode* copy = SceneIO::roundTrip(node, binary);
            ASSERT_NE(copy, nullptr) << node->getTypeId().getName().getString();
            copy->ref();
            EXPECT_TRUE(SceneIO::sameFields(node, copy)) << node->getTypeId().getName().getString();
            copy->unref();
        }
        node->unref();
    }
}

TEST_F(PropertyNodeTest, IntervalCellFilterUsesAClosedInterval) {
    auto* filter = new PoIntervalCellFilter;
    root->addChild(filter);
    filter->min = 1.0f;
    filter->max = 2.0f;
    EXPECT_TRUE(filter->acceptCell(0, 1.0f));
    EXPECT_TRUE(filter->acceptCell(1, 2.0f));
    EXPECT_FALSE(filter->acceptCell(2, 2.5f));
    EXPECT_FALSE(filter->acceptCell(3, 0.999f));
    filter->in = FALSE;
    EXPECT_FALSE(filter->acceptCell(0, 1.0f));
    EXPECT_TRUE(filter->acceptCell(2, 2.5f));
}

TEST_F(PropertyNodeTest, LineMeshFiltersChooseNodes) {
    ErrorRecorder errors;
    const float x[] = {0.0f, 0.4f, 0.9f, 1.2f, 2.6f, 2.7f, 3.1f};
    auto* byIndex = new PoPeriodIndexFilter;
    root->addChild(byIndex);
    byIndex->firstIndex = 1;
    byIndex->period = 3;
    EXPECT_EQ(toVector(byIndex->getFilteredIndices(7, x)), (std::vector<int>{1, 4}));

    auto* list = new PoIndexListFilter;
    root->addChild(list);
    const int32_t wanted[] = {5, -1, 2, 9, 2};
    list->index.setValues(0, 5, wanted);
    EXPECT_EQ(toVector(list->getFilteredIndices(7, x)), (std::vector<int>{2, 5}));

    auto* period = new PoPeriodFilter;
    root->addChild(period);
    EXPECT_EQ(toVector(period->getFilteredIndices(7, x)), (std::vector<int>{0, 3, 4, 6}));

    auto* nearest = new PoCoordinateListFilter;
    root->addChild(nearest);
    const float targets[] = {2.62f, 1.0f};
    nearest->coordinate.setValues(0, 2, targets);
    EXPECT_EQ(toVector(nearest->getFilteredIndices(7, x)), (std::vector<int>{2, 4}));

    // Periods that cannot step forward are reported and keep nothing.
    byIndex->period = 0;
    EXPECT_EQ(byIndex->getFilteredIndices(5, nullptr).getNum(), 0);
    period->period = -1.0f;
    EXPECT_EQ(period->getFilteredIndices(7, x).getNum(), 0);
    EXPECT_EQ(errors.messages().size(), 2u);
    EXPECT_TRUE(errors.contains("Quillon error in PoPeriodIndexFilter::getFilteredIndices(): "));
}

TEST_F(PropertyNodeTest, ProfilesGiveTheirOutline) {
    auto* square = new PoSquareProfile;
    square->size = 2.0f;
    auto* circle = new PoCircularProfile;
    circle->radius = 2.0f;
    circle->numSides = 8;
    auto* ellipse = new PoEllipticProfile;
    ellipse->numSides = 2;
    auto* custom = new PoProfileCoordinate2;
    custom->point.setValues(0, 2, std::array<SbVec2f, 2>{SbVec2f(0, 0), SbVec2f(1, 0.5f)}.data());
    for (SoNode* node : std::initializer_list<SoNode*>{square, circle, ellipse, custom})
        root->addChild(node);

    const std::vector<SbVec2f> corners = square->getProfilePoints();
    ASSERT_EQ(corners.size(), 4u);
    EXPECT_EQ(corners[0], SbVec2f(-1, -1));
    EXPECT_EQ(corners[2], SbVec2f(1, 1));
    const std::vector<SbVec2f> round = circle->getProfilePoints();
    ASSERT_EQ(round.size(), 8u);
    for (const SbVec2f& p : round)
        EXPECT_NEAR(p.length(), 2.0f, 1e-5f);
    EXPECT_NEAR(round[2][1], 2.0f, 1e-5f);
    EXPECT_TRUE(ellipse->getProfilePoints().empty()); // too few sides
    EXPECT_EQ(custom->getProfilePoints().size(), 2u);
    EXPECT_FALSE(custom->isClosed());
    EXPECT_TRUE(circle->isClosed());
}

TEST_F(DataNodeTest, LinearMappingFollowsItsFieldsLazily) {
    auto* mapping = new PoLinearDataMapping;
    root->addChild(mapping);
    EXPECT_EQ(*mapping->getColor(0.5f), SbColor(0.5f, 0.5f, 0.5f));
    mapping->color2 = SbColor(1, 0, 0);
    mapping->value2 = 2.0f;
    float transparency = -1;
    EXPECT_EQ(*mapping->getColor(1.0f, transparency), SbColor(0.5f, 0, 0));
    EXPECT_EQ(transparency, 0.0f);
    mapping->minThresholdEnabled = TRUE;
    mapping->minThreshold = 0.2f;
    mapping->minThresholdColor = SbColor(0, 1, 0);
    EXPECT_EQ(*mapping->getColor(0.2f), SbColor(0, 1, 0));
    EXPECT_EQ(*mapping->getColor(0.4f), SbColor(0.2f, 0, 0));
    EXPECT_EQ(mapping->getDataMapping()->getClassType(), PbDataMapping::LINEAR);
}

TEST_F(DataNodeTest, ChangedMappingAboveAKitMakesItRebuild) {
    RecordingKit::ensureRegistered();
    auto* mapping = new PoLinearDataMapping;
    auto* kit = new RecordingKit;
    root->addChild(mapping);
    root->addChild(kit);
    traverse();
    traverse();
    EXPECT_EQ(kit->rebuildCount, 1);
    EXPECT_EQ(kit->lastDataMapping, mapping->getDataMapping());

    mapping->color1 = SbColor(0, 0, 1);
    traverse();
    EXPECT_EQ(kit->rebuildCount, 2);

    // Another mapping node in the state forces a rebuild as well, and so
    // does a new colour function, which changes no field.
    auto* other = new PoNonLinearDataMapping;
    root->replaceChild(mapping, other);
    traverse();
    EXPECT_EQ(kit->rebuildCount, 3);
    EXPECT_EQ(kit->lastDataMapping, other->getDataMapping());
    EXPECT_EQ(*other->getColor(2.0f), SbColor(1, 1, 1));
    other->setColorFunction([](float) { return SbColor(0, 1, 0); });
    traverse();
    EXPECT_EQ(kit->rebuildCount, 4);
    EXPECT_EQ(*other->getColor(2.0f), SbColor(0, 1, 0));

    // No mapping node: the kit finds none.
    root->removeChild(other);
    traverse();
    EXPECT_EQ(kit->lastDataMapping, nullptr);
}

TEST_F(DataNodeTest, LevelMappingKeepsOldLevelsOnTooFewColours) {
    ErrorRecorder errors;
    auto* levels = new PoNonLinearDataMapping2;
    root->addChild(levels);
    levels->type = PoNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
    const float values[] = {1.0f, 2.0f};
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 1, 0), SbColor(0, 0, 1)};
    levels->value.setValues(0, 2, values);
    levels->color.setValues(0, 3, colors);
    EXPECT_EQ(*levels->getColor(1.5f), SbColor(0, 1, 0));
    EXPECT_TRUE(errors.messages().empty());

    levels->color.setNum(2);
    EXPECT_EQ(*levels->getColor(1.5f), SbColor(0, 1, 0));
    ASSERT_EQ(errors.messages().size(), 1u);
    EXPECT_EQ(errors.messages()[0], "Quillon error in PoNonLinearDataMapping2(): The number of "
                                    "colours must be >= to number of values + 1");

    levels->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
    levels->color.setNum(1);
    levels->getDataMapping();
    ASSERT_EQ(errors.messages().size(), 2u);
    EXPECT_EQ(errors.messages()[1], "Quillon error in PoNonLinearDataMapping2(): The number of "
                                    "colours must be >= to number of values");
}

TEST_F(DataNodeTest, DomainNodeBuildsTwoAndThreeDimensionalBoxes) {
    auto* domain = new PoDomain;
    root->addChild(domain);
    domain->min = SbVec3f(0, 0, 2);
    domain->max = SbVec3f(4, 2, 2);
    float x0, y0, z0, x1, y1, z1;
    domain->getDomain()->getDomain(x0, y0, z0, x1, y1, z1);
    EXPECT_EQ(SbVec3f(x0, y0, z0), SbVec3f(0, 0, 0));
    EXPECT_EQ(SbVec3f(x1, y1, z1), SbVec3f(4, 2, 1));

    domain->setValues(SbVec2f(0, 0), SbVec2f(4, 2), PbDomain::MAX_BOUNDING_BOX);
    domain->getDomain()->getDomain(x0, y0, x1, y1);
    EXPECT_EQ(SbVec2f(x0, y0), SbVec2f(0, -1));
    EXPECT_EQ(SbVec2f(x1, y1), SbVec2f(4, 3));

    // A box the domain rejects is reported and leaves the fields alone.
    ErrorRecorder errors;
    domain->setValues(SbVec2f(4, 0), SbVec2f(0, 2), PbDomain::MAX_BOUNDING_BOX);
    EXPECT_EQ(errors.messages().size(), 1u);
    EXPECT_EQ(domain->min.getValue(), SbVec3f(0, -1, 0));
    EXPECT_EQ(domain->max.getValue(), SbVec3f(4, 3, 0));

    domain->transformType = PoDomain::TRANSFORM_01;
    EXPECT_EQ(domain->getDomain()->getTransformType(), PbDomain::TRANSFORM_01);
}

TEST_F(DataNodeTest, IsovaluesNodeSortsAndRecognisesRegularLists) {
    auto* list = new PoIsovaluesList;
    root->addChild(list);
    const float values[] = {3, 1, 2};
    list->isovaluesList.setValues(0, 3, values);
    int count = 0, regular = 0;
    float min = 0, max = 0, step = 0;
    const float* sorted = list->getIsoList(count, min, max, step, regular);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(sorted[0], 1.0f);
    EXPECT_EQ(sorted[2], 3.0f);
    EXPECT_EQ(regular, 1);

    list->setRegularIsoList(0.0f, 1.0f, 5);
    EXPECT_EQ(list->isovaluesList.getNum(), 5);
    EXPECT_EQ(list->isovaluesList[4], 1.0f);

    ErrorRecorder errors;
    list->setRegularIsoList(-3, nullptr);
    EXPECT_FALSE(errors.messages().empty());
    EXPECT_EQ(list->isovaluesList.getNum(), 5);
}
