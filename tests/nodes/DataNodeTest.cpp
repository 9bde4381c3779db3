#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoDateFormatMapping.h>
#include <Quillon/nodes/PoDateFormatMappingElement.h>
#include <Quillon/nodes/PoDomain.h>
#include <Quillon/nodes/PoDomainElement.h>
#include <Quillon/nodes/PoIsovaluesList.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoMiscTextAttr.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>
#include <Quillon/nodes/PoNonLinearDataMapping.h>
#include <Quillon/nodes/PoNonLinearDataMapping2.h>
#include <Quillon/nodes/PoNumericDisplayFormat.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "support/ErrorRecorder.h"
#include "support/RecordingKit.h"
#include "support/SceneIO.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

class DataNodeTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        root = new SoSeparator;
        root->ref();
    }
    void TearDown() override {
        root->unref();
        PoQuillon::finish();
    }
    void traverse() {
        SoCallbackAction action;
        action.apply(root);
    }
    SoSeparator* root = nullptr;
};

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

    // Another mapping node in the state forces a rebuild as well.
    auto* other = new PoLinearDataMapping;
    root->replaceChild(mapping, other);
    traverse();
    EXPECT_EQ(kit->rebuildCount, 3);
    EXPECT_EQ(kit->lastDataMapping, other->getDataMapping());

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

TEST_F(DataNodeTest, FunctionMappingUsesTheApplicationsFunction) {
    auto* functions = new PoNonLinearDataMapping;
    root->addChild(functions);
    EXPECT_EQ(*functions->getColor(2.0f), SbColor(1, 1, 1));
    functions->setColorFunction([](float) { return SbColor(0, 1, 0); });
    EXPECT_EQ(*functions->getColor(2.0f), SbColor(0, 1, 0));
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

    domain->transformType = PoDomain::TRANSFORM_01;
    EXPECT_EQ(domain->getDomain()->getTransformType(), PbDomain::TRANSFORM_01);
}

TEST_F(DataNodeTest, EachKitSeesTheDomainAboveIt) {
    RecordingKit::ensureRegistered();
    const PbDomain* seen[2] = {nullptr, nullptr};
    PoDomain* domains[2];
    for (int i = 0; i < 2; ++i) {
        auto* branch = new SoSeparator;
        domains[i] = new PoDomain;
        domains[i]->max = SbVec3f(1.0f + i, 1, 1);
        auto* kit = new RecordingKit;
        kit->addPostRebuildCallback(
            [](void* data, PoBase* self) {
                *static_cast<const PbDomain**>(data) = self->getDomain();
            },
            &seen[i]);
        branch->addChild(domains[i]);
        branch->addChild(kit);
        root->addChild(branch);
    }
    traverse();
    EXPECT_EQ(seen[0], domains[0]->getDomain());
    EXPECT_EQ(seen[1], domains[1]->getDomain());
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

TEST_F(DataNodeTest, FormatAndTextElementsHaveDefaultObjects) {
    const PbNumericDisplayFormat* formats[2] = {nullptr, nullptr};
    const PbMiscTextAttr* attributes[2] = {nullptr, nullptr};
    int visit = 0;
    auto probe = [&](SoState* state) {
        formats[visit] = PoNumericDisplayFormatElement::get(state);
        attributes[visit] = PoMiscTextAttrElement::get(state);
        ++visit;
    };
    auto* callback = new SoCallback;
    using Probe = decltype(probe);
    callback->setCallback(
        [](void* data, SoAction* action) { (*static_cast<Probe*>(data))(action->getState()); },
        &probe);
    auto* format = new PoNumericDisplayFormat;
    format->formatType = PoNumericDisplayFormat::FLOAT_FORMAT;
    format->numDecimal = 2;
    auto* text = new PoMiscTextAttr;
    text->outliningEnabled = FALSE;
    text->fontName = "Serif";
    root->addChild(callback);
    root->addChild(format);
    root->addChild(text);
    root->addChild(callback);
    traverse();
    ASSERT_EQ(visit, 2);
    ASSERT_NE(formats[0], nullptr);
    ASSERT_NE(attributes[0], nullptr);
    PbNumericDisplayFormat::FormatType type;
    int tenPower = 0, numDecimal = 0;
    formats[0]->getFormat(type, tenPower, numDecimal);
    EXPECT_EQ(type, PbNumericDisplayFormat::AUTO_FORMAT);
    EXPECT_TRUE(attributes[0]->isOutliningEnabled());
    formats[1]->getFormat(type, tenPower, numDecimal);
    EXPECT_EQ(type, PbNumericDisplayFormat::FLOAT_FORMAT);
    EXPECT_EQ(numDecimal, 2);
    EXPECT_FALSE(attributes[1]->isOutliningEnabled());
    EXPECT_STREQ(attributes[1]->getFontName().getString(), "Serif");
}

TEST_F(DataNodeTest, NodesRoundTripThroughSceneFiles) {
    auto* linear = new PoLinearDataMapping;
    linear->color2 = SbColor(0.25f, 0.5f, 1);
    linear->maxThresholdEnabled = TRUE;
    auto* levels = new PoNonLinearDataMapping2;
    levels->value.set1Value(1, 3.5f);
    levels->type = PoNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
    auto* domain = new PoDomain;
    domain->max = SbVec3f(2, 3, 4);
    domain->transformType = PoDomain::SCALE_MAX_XYZ_FIXED;
    auto* format = new PoNumericDisplayFormat;
    format->formatType = PoNumericDisplayFormat::INTEGER_FORMAT;
    auto* text = new PoMiscTextAttr;
    text->endLineChar = '/';
    auto* list = new PoIsovaluesList;
    list->setRegularIsoList(1.0f, 2.0f, 3);
    auto* dates = new PoDateFormatMapping;
    dates->format = "%d/%m/%Y";
    SoNode* nodes[] = {linear, levels, domain, format,
                       text,   list,   dates,  new PoNonLinearDataMapping};
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

TEST_F(DataNodeTest, DateFormatNodeSetsItsElement) {
    auto* dates = new PoDateFormatMapping;
    dates->format = "%Y";
    const PbDateFormatMapping* seen = nullptr;
    auto* callback = new SoCallback;
    callback->setCallback(
        [](void* data, SoAction* action) {
            *static_cast<const PbDateFormatMapping**>(data) =
                PoDateFormatMappingElement::get(action->getState());
        },
        &seen);
    root->addChild(dates);
    root->addChild(callback);
    traverse();
    ASSERT_EQ(seen, dates->getDateFormatMapping());
    SbString text;
    ASSERT_TRUE(seen->getString(86400.0 * 365, text));
    EXPECT_STREQ(text.getString(), "1971");
}
