#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/nodes/PoDomainElement.h>

#include "support/ErrorRecorder.h"
#include "support/RecordingKit.h"
#include "support/SceneIO.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

class PoBaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        RecordingKit::ensureRegistered();
        root = new SoSeparator;
        root->ref();
        kit = new RecordingKit;
        root->addChild(kit);
    }
    void TearDown() override {
        root->unref();
        PoBase::setNodeWriteFormat(PoBase::FOLD_NODE_WRITE_FORMAT);
        PoQuillon::finish();
    }
    void traverse() {
        SoCallbackAction action;
        action.apply(root);
    }
    SoSeparator* root = nullptr;
    RecordingKit* kit = nullptr;
};

TEST_F(PoBaseTest, TwoTraversalsRebuildOnce) {
    traverse();
    traverse();
    EXPECT_EQ(kit->rebuildCount, 1);
    EXPECT_TRUE(kit->isBuilt());
    EXPECT_FALSE(kit->isModified());
}

TEST_F(PoBaseTest, DeferredUpdateWaitsForTraversal) {
    traverse();
    kit->value = 2.0f;
    EXPECT_EQ(kit->rebuildCount, 1);
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, 2);
}

TEST_F(PoBaseTest, ImmediateUpdateRebuildsInsideAssignment) {
    traverse();
    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    kit->value = 3.0f;
    EXPECT_EQ(kit->rebuildCount, 2);
    EXPECT_FALSE(kit->isModified());
}

TEST_F(PoBaseTest, TouchKitSchedulesRebuild) {
    traverse();
    kit->touchKit();
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, 2);
}

TEST_F(PoBaseTest, RebuildCallbacksAreSingleSlots) {
    int pre = 0;
    int post = 0;
    auto count = [](void* data, PoBase*) { ++*static_cast<int*>(data); };
    kit->addPreRebuildCallback(count, &pre);
    kit->addPostRebuildCallback(count, &post);
    kit->removePostRebuildCallback(count, &pre); // other data: ignored
    traverse();
    EXPECT_EQ(pre, 1);
    EXPECT_EQ(post, 1);
    kit->removePreRebuildCallback(count, &pre);
    kit->touchKit();
    traverse();
    EXPECT_EQ(pre, 1);
    EXPECT_EQ(post, 2);
}

TEST_F(PoBaseTest, WriteActionRebuildsOnlyWhileWriting) {
    // A write action runs a reference-counting pass and then the writing
    // pass over what it is applied to; a pending rebuild waits for the
    // second.
    traverse();
    kit->touchKit();
    std::vector<int> stages;
    kit->addPreRebuildCallback(
        [](void* data, PoBase* self) {
            auto* writer = static_cast<SoWriteAction*>(self->getState()->getAction());
            static_cast<std::vector<int>*>(data)->push_back(writer->getOutput()->getStage());
        },
        &stages);
    SceneIO::write(kit->getPart("catchActionCallback", FALSE));
    EXPECT_EQ(stages, std::vector<int>{SoOutput::WRITE});
}

TEST_F(PoBaseTest, WriteFormatDecidesWhetherRepresentationIsWritten) {
    traverse();
    // What a rebuild would have put into the representation.
    kit->getRepresentation()->addChild(new SoCube);
    PoBase::setNodeWriteFormat(PoBase::FOLD_NODE_WRITE_FORMAT);
    // Part fields are declared in the header of the kit; only written
    // values are followed by the part's node.
    const std::string folded = SceneIO::write(kit);
    EXPECT_EQ(folded.find("Separator"), std::string::npos) << folded;
    EXPECT_EQ(folded.find("Callback {"), std::string::npos) << folded;
    PoBase::setNodeWriteFormat(PoBase::UNFOLD_NODE_WRITE_FORMAT);
    const std::string unfolded = SceneIO::write(kit);
    EXPECT_NE(unfolded.find("Cube"), std::string::npos) << unfolded;
    EXPECT_EQ(unfolded.find("catchActionCallback "), std::string::npos) << unfolded;
}

TEST_F(PoBaseTest, UnfoldedKitIsReadBackAndRebuiltOnItsFirstTraversal) {
    traverse();
    kit->getRepresentation()->addChild(new SoCube);
    PoBase::setNodeWriteFormat(PoBase::UNFOLD_NODE_WRITE_FORMAT);
    auto* copy = static_cast<RecordingKit*>(SceneIO::read(SceneIO::write(kit)));
    ASSERT_NE(copy, nullptr);
    copy->ref();
    EXPECT_EQ(copy->rebuildCount, 0);
    SoCallbackAction action;
    action.apply(copy);
    EXPECT_EQ(copy->rebuildCount, 1);
    copy->unref();
}

TEST_F(PoBaseTest, DomainFallsBackToDefaultWhenDestroyed) {
    auto* domain = new PbDomain(0, 0, 4, 2, 0);
    kit->setDomain(domain);
    EXPECT_EQ(kit->getDomain(), domain);
    traverse();
    const int built = kit->rebuildCount;
    delete domain;
    EXPECT_NE(kit->getDomain(), nullptr);
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, built + 1);
}

TEST_F(PoBaseTest, DomainOfTheStateIsUsedUnlessOneWasSet) {
    PbDomain own(0, 0, 2, 2, 0);
    kit->setDomain(&own);
    kit->setDomain(nullptr);
    const PbDomain* seen = nullptr;
    kit->addPostRebuildCallback(
        [](void* data, PoBase* self) { *static_cast<const PbDomain**>(data) = self->getDomain(); },
        &seen);
    traverse();
    EXPECT_NE(seen, &own);
    EXPECT_NE(seen, nullptr);
}

TEST_F(PoBaseTest, DomainTransformTypeChangeDoesNotRebuild) {
    PbDomain domain(0, 0, 4, 2, 0);
    kit->setDomain(&domain);
    traverse();
    const int built = kit->rebuildCount;
    domain.setTransformType(PbDomain::TRANSFORM_01);
    EXPECT_FALSE(kit->isModified());
    EXPECT_NE(kit->getPart("domainTransform", FALSE), nullptr);
    domain.setDomain(0, 0, 8, 2, 0);
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, built + 1);
    kit->setDomain(nullptr);
}

TEST_F(PoBaseTest, CopyGetsItsOwnCallbacks) {
    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    auto* duplicate = static_cast<RecordingKit*>(kit->copy());
    duplicate->ref();
    EXPECT_EQ(duplicate->getUpdateMethod(), PoBase::UPDATE_IMMEDIATELY);
    auto* catcher = static_cast<SoCallback*>(duplicate->getPart("catchActionCallback", FALSE));
    ASSERT_NE(catcher, nullptr);
    duplicate->touchKit();
    const int before = duplicate->rebuildCount;
    duplicate->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    duplicate->touchKit();
    SoCallbackAction action;
    action.apply(duplicate);
    EXPECT_EQ(duplicate->rebuildCount, before + 1);
    EXPECT_EQ(kit->rebuildCount, 0);
    duplicate->unref();
}
