#pragma once
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoBase.h>

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

// A test that runs with the library initialised.
class LibraryTest : public ::testing::Test {
protected:
    void SetUp() override { PoQuillon::init(); }
    void TearDown() override { PoQuillon::finish(); }
};

// A library test with a scene root to fill and traverse; it puts the node
// write format back to its default.
class SceneTest : public LibraryTest {
protected:
    void SetUp() override {
        LibraryTest::SetUp();
        root = new SoSeparator;
        root->ref();
    }
    void TearDown() override {
        root->unref();
        PoBase::setNodeWriteFormat(PoBase::FOLD_NODE_WRITE_FORMAT);
        LibraryTest::TearDown();
    }
    void traverse() {
        SoCallbackAction action;
        action.apply(root);
    }

    SoSeparator* root = nullptr;
};
