#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoBase.h>
#include <Quillon/nodes/PoBevelEdge.h>
#include <Quillon/nodes/PoBevelEdgeElement.h>
#include <Quillon/nodes/PoCellFilterElement.h>
#include <Quillon/nodes/PoCircularProfile.h>
#include <Quillon/nodes/PoCoordinateListFilter.h>
#include <Quillon/nodes/PoEllipticProfile.h>
#include <Quillon/nodes/PoIndexListFilter.h>
#include <Quillon/nodes/PoIntervalCellFilter.h>
#include <Quillon/nodes/PoLabelHints.h>
#include <Quillon/nodes/PoLabelHintsElement.h>
#include <Quillon/nodes/PoMesh1DFilterElement.h>
#include <Quillon/nodes/PoMesh1DHints.h>
#include <Quillon/nodes/PoMesh1DHintsElement.h>
#include <Quillon/nodes/PoPeriodFilter.h>
#include <Quillon/nodes/PoPeriodIndexFilter.h>
#include <Quillon/nodes/PoProfileCoordinate2.h>
#include <Quillon/nodes/PoProfileElement.h>
#include <Quillon/nodes/PoSquareProfile.h>

#include "support/ErrorRecorder.h"
#include "support/SceneIO.h"

#include <Inventor/actions/SoAudioRenderAction.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {
std::vector<int> toVector(const PbArrayOfInt& array) {
    return std::vector<int>(array.get(), array.get() + array.getNum());
}

// Records, at the callback's place in the graph, what a probe reads from
// the state of each action reaching it.
class StateProbe {
public:
    explicit StateProbe(std::function<void(SoState*)> read) : m_read(std::move(read)) {
        m_node = new SoCallback;
        m_node->setCallback(&StateProbe::reached, this);
    }
    SoCallback* node() const { return m_node; }

private:
    static void reached(void* data, SoAction* action) {
        static_cast<StateProbe*>(data)->m_read(action->getState());
    }
    std::function<void(SoState*)> m_read;
    SoCallback* m_node;
};
} // namespace

class PropertyNodeTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        root = new SoSeparator;
        root->ref();
    }
    void TearDown() override {
        root->unref();
        PoBase::setNodeWriteFormat(PoBase::FOLD_NODE_WRITE_FORMAT);
        PoQuillon::finish();
    }
    SoSeparator* root = nullptr;
};

TEST_F(PropertyNodeTest, IntervalCellFilterUsesAClosedInterval) {
    auto* filter = new PoIntervalCellFilter;
    root->addChild(filter);
    filter->min = 1.0f;
    filter->max = 2.0f;
    EXPECT_TRUE(filter->acceptCell(0, 1.0));
    EXPECT_TRUE(filter->acceptCell(1, 2.0));
    EXPECT_FALSE(filter->acceptCell(2, 2.5));
    EXPECT_FALSE(filter->acceptCell(3, 0.999));
    filter->in = FALSE;
    EXPECT_FALSE(filter->acceptCell(0, 1.0));
    EXPECT_TRUE(filter->acceptCell(2, 2.5));
}

TEST_F(PropertyNodeTest, LineMeshFiltersChooseNodes) {
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
}

TEST_F(PropertyNodeTest, InvalidPeriodsAreReportedAndKeepNothing) {
    ErrorRecorder errors;
    auto* byIndex = new PoPeriodIndexFilter;
    root->addChild(byIndex);
    byIndex->period = 0;
    EXPECT_EQ(byIndex->getFilteredIndices(5, nullptr).getNum(), 0);
    auto* period = new PoPeriodFilter;
    root->addChild(period);
    period->period = -1.0f;
    const float x[] = {0.0f, 1.0f};
    EXPECT_EQ(period->getFilteredIndices(2, x).getNum(), 0);
    EXPECT_EQ(errors.messages().size(), 2u);
    EXPECT_TRUE(errors.contains("Quillon error in PoPeriodIndexFilter::getFilteredIndices(): "));
}

TEST_F(PropertyNodeTest, ProfilesGiveTheirOutline) {
    auto* square = new PoSquareProfile;
    root->addChild(square);
    square->size = 2.0f;
    const std::vector<SbVec2f> corners = square->getProfilePoints();
    ASSERT_EQ(corners.size(), 4u);
    EXPECT_EQ(corners[0], SbVec2f(-1, -1));
    EXPECT_EQ(corners[2], SbVec2f(1, 1));

    auto* circle = new PoCircularProfile;
    root->addChild(circle);
    circle->radius = 2.0f;
    circle->numSides = 8;
    const std::vector<SbVec2f> round = circle->getProfilePoints();
    ASSERT_EQ(round.size(), 8u);
    for (const SbVec2f& p : round)
        EXPECT_NEAR(p.length(), 2.0f, 1e-5f);
    EXPECT_NEAR(round[2][1], 2.0f, 1e-5f);

    auto* ellipse = new PoEllipticProfile;
    root->addChild(ellipse);
    ellipse->numSides = 2;
    EXPECT_TRUE(ellipse->getProfilePoints().empty());

    auto* custom = new PoProfileCoordinate2;
    root->addChild(custom);
    custom->point.set1Value(0, SbVec2f(0, 0));
    custom->point.set1Value(1, SbVec2f(1, 0.5f));
    EXPECT_EQ(custom->getProfilePoints().size(), 2u);
    EXPECT_FALSE(custom->isClosed());
    EXPECT_TRUE(circle->isClosed());
}

TEST_F(PropertyNodeTest, ElementsHoldDefaultsWhenNoNodeWasMet) {
    std::vector<int> seen;
    StateProbe probe([&](SoState* state) {
        int on = 0;
        float radius = 0, angle = 0;
        PoBevelEdge::RadiusFlag flag = PoBevelEdge::ABSOLUTE_RADIUS;
        PoBevelEdgeElement::get(state, on, radius, flag, angle);
        EXPECT_EQ(on, 1);
        EXPECT_FLOAT_EQ(radius, 0.05f);
        EXPECT_EQ(flag, PoBevelEdge::RELATIVE_RADIUS);
        EXPECT_FLOAT_EQ(angle, 0.5f);
        PoLabelHints::LabelPath path;
        PoLabelHints::Justification justification;
        SbString text("x");
        EXPECT_EQ(PoLabelHintsElement::get(state, path, justification, text), 0);
        EXPECT_EQ(path, 4);
        EXPECT_EQ(justification, 3);
        EXPECT_EQ(text.getLength(), 0);
        EXPECT_EQ(PoMesh1DHintsElement::get(state), PoMesh1DHintsElement::getDefault());
        EXPECT_EQ(PoProfileElement::get(state), nullptr);
        EXPECT_EQ(PoCellFilterElement::get(state), nullptr);
        seen.push_back(1);
    });
    root->addChild(probe.node());
    SoCallbackAction action;
    action.apply(root);
    EXPECT_EQ(seen.size(), 1u);
}

TEST_F(PropertyNodeTest, PropertyNodeUnderSeparatorDoesNotLeak) {
    auto* inner = new SoSeparator;
    auto* hints = new PoMesh1DHints;
    hints->geomInterpretation = PoMesh1DHints::STAIRS_Y;
    auto* filter = new PoIntervalCellFilter;
    std::vector<PoMesh1DHints::GeomInterpretation> inside, after;
    std::vector<const PoCellFilter*> filters;
    StateProbe insideProbe([&](SoState* state) {
        inside.push_back(PoMesh1DHintsElement::get(state));
        filters.push_back(PoCellFilterElement::get(state));
    });
    StateProbe afterProbe(
        [&](SoState* state) { after.push_back(PoMesh1DHintsElement::get(state)); });
    inner->addChild(hints);
    inner->addChild(filter);
    inner->addChild(insideProbe.node());
    root->addChild(inner);
    root->addChild(afterProbe.node());

    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    action.apply(root);
    ASSERT_EQ(inside.size(), 1u);
    EXPECT_EQ(inside[0], PoMesh1DHints::STAIRS_Y);
    EXPECT_EQ(filters[0], filter);
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(after[0], PoMesh1DHints::AS_IS);
}

TEST_F(PropertyNodeTest, ActionsOutsideTheLibraryStateSetNothing) {
    root->addChild(new PoMesh1DHints);
    root->addChild(new PoProfileCoordinate2);
    SoAudioRenderAction action;
    action.apply(root); // must not touch elements the action does not carry
    SUCCEED();
}

TEST_F(PropertyNodeTest, ChangedNodeInvalidatesCachesThatRecordedIt) {
    auto* label = new PoLabelHints;
    root->addChild(label);
    SoCache* cache = nullptr;
    StateProbe probe([&](SoState* state) {
        PoLabelHints::LabelPath path;
        PoLabelHints::Justification justification;
        SbString text;
        PoLabelHintsElement::get(state, path, justification, text);
        if (!cache) {
            // A cache opened below this point records what is set above it.
            state->push();
            cache = new SoCache(state);
            state->pop();
            cache->ref();
            cache->addElement(PoClassRegistration::readableElement<PoLabelHintsElement>(state));
        } else {
            EXPECT_FALSE(cache->isValid(state));
        }
    });
    root->addChild(probe.node());
    SoCallbackAction action;
    action.apply(root);
    label->labelText = "changed";
    action.apply(root);
    cache->unref();
}

TEST_F(PropertyNodeTest, NodesRoundTripThroughSceneFiles) {
    auto* bevel = new PoBevelEdge;
    bevel->radius = 0.2f;
    bevel->radiusFlag = PoBevelEdge::ABSOLUTE_RADIUS;
    auto* label = new PoLabelHints;
    label->labelPath = PoLabelHints::PATH_UP;
    label->labelText = "T (K)";
    label->labelStep = 3;
    auto* interval = new PoIntervalCellFilter;
    interval->in = FALSE;
    auto* profile = new PoProfileCoordinate2;
    profile->point.set1Value(0, SbVec2f(0.5f, 0.25f));
    auto* list = new PoIndexListFilter;
    list->index.set1Value(0, 4);
    SoNode* nodes[] = {bevel,
                       label,
                       interval,
                       profile,
                       list,
                       new PoMesh1DHints,
                       new PoCircularProfile,
                       new PoPeriodFilter,
                       new PoCoordinateListFilter};
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

TEST_F(PropertyNodeTest, UnfoldedWriteFormatOmitsPropertyNodes) {
    root->addChild(new PoBevelEdge);
    EXPECT_NE(SceneIO::write(root).find("PoBevelEdge"), std::string::npos);
    PoBase::setNodeWriteFormat(PoBase::UNFOLD_NODE_WRITE_FORMAT);
    EXPECT_EQ(SceneIO::write(root).find("PoBevelEdge"), std::string::npos);
}
