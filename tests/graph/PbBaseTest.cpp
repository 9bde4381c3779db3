#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbBase.h>

#include "support/RecordingKit.h"

#include <gtest/gtest.h>

class PbBaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        RecordingKit::ensureRegistered();
        first = new RecordingKit;
        second = new RecordingKit;
        first->ref();
        second->ref();
    }
    void TearDown() override {
        first->unref();
        second->unref();
        PoQuillon::finish();
    }
    RecordingKit* first = nullptr;
    RecordingKit* second = nullptr;
};

TEST_F(PbBaseTest, NotifiesNewestConnectionFirst) {
    PbBase object;
    object.addConnection(first);
    object.addConnection(second);
    object.touch();
    ASSERT_EQ(first->notifications.size(), 1u);
    ASSERT_EQ(second->notifications.size(), 1u);
    EXPECT_EQ(first->notifications[0].change, PbBase::CHANGE);
    EXPECT_EQ(first->notifications[0].object, &object);
    EXPECT_LT(second->notifications[0].sequence, first->notifications[0].sequence);
    object.removeConnection(first);
    object.removeConnection(second);
}

TEST_F(PbBaseTest, DestructionIsNotifiedEvenWhenDisabled) {
    auto* object = new PbBase;
    object->addConnection(first);
    object->enableConnection(0);
    object->touch();
    EXPECT_TRUE(first->notifications.empty());
    delete object;
    ASSERT_EQ(first->notifications.size(), 1u);
    EXPECT_EQ(first->notifications[0].change, PbBase::DESTROYED);
}

TEST_F(PbBaseTest, ConnectingTwiceNeedsTwoRemovals) {
    PbBase object;
    object.addConnection(first);
    object.addConnection(first);
    object.touch();
    EXPECT_EQ(first->notifications.size(), 2u);
    EXPECT_EQ(object.removeConnection(first), 1);
    object.touch();
    EXPECT_EQ(first->notifications.size(), 3u);
    EXPECT_EQ(object.removeConnection(first), 1);
    EXPECT_EQ(object.removeConnection(first), 0);
}

TEST_F(PbBaseTest, CopiesStartUnconnectedAssignmentsNotifyTheirOwn) {
    PbBase original;
    original.addConnection(first);
    original.enableConnection(0);

    PbBase copy(original);
    EXPECT_EQ(copy.isConnectionEnabled(), 0);
    EXPECT_EQ(copy.removeConnection(first), 0);

    PbBase target;
    target.addConnection(second);
    target = original;
    // The target copied the disabled flag, so its own kit hears nothing.
    EXPECT_TRUE(second->notifications.empty());
    target.enableConnection(1);
    target = target;
    EXPECT_TRUE(second->notifications.empty());
    PbBase enabled;
    target = enabled;
    ASSERT_EQ(second->notifications.size(), 1u);
    EXPECT_EQ(second->notifications[0].change, PbBase::CHANGE);
    EXPECT_TRUE(first->notifications.empty());
    original.removeConnection(first);
    target.removeConnection(second);
}
