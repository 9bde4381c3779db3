#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/nodes/PoDomain.h>
#include <Quillon/nodes/PoLinearDataMapping.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"
#include "support/RecordingKit.h"
#include "support/SceneIO.h"
#include "support/TestClassRegistration.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// A kit one level below the recording kit, watching a field of its own.
class LayeredKit : public RecordingKit {
    PO_KIT_HEADER(LayeredKit);

public:
    SoSFFloat extra;

    LayeredKit() {
        SO_KIT_CONSTRUCTOR(LayeredKit);
        SO_KIT_ADD_FIELD(extra, (0.0f));
        SO_KIT_INIT_INSTANCE();
        watchFields({&extra});
    }
    static void ensureRegistered() {
        RecordingKit::ensureRegistered();
        TestClassRegistration::registerForThisTest<LayeredKit>();
    }

    using PoBase::isFieldHasChanged;
    using PoBase::setUpConnections;
    using PoBase::storeFieldsChanged;

protected:
    ~LayeredKit() override = default;
};

PO_KIT_SOURCE(LayeredKit, RecordingKit)

namespace {
// The recording kit with the protected settings a derived kit would use.
class ExposedKit : public RecordingKit {
public:
    using PoBase::attachFieldSensorList;
    using PoBase::createFieldSensorList;
    using PoBase::deleteFieldSensorList;
    using PoBase::isFieldHasChanged;
    using PoBase::setDomainUsedForRebuild;
    using PoBase::setDrawStyleAK;
    using PoBase::setLightModel;
    using PoBase::storeFieldsChanged;
};

// Records the domain the kit sees at the end of each rebuild.
void recordDomain(void* data, PoBase* kit) {
    *static_cast<const PbDomain**>(data) = kit->getDomain();
}
} // namespace

class PoBaseTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        RecordingKit::ensureRegistered();
        kit = new ExposedKit;
        root->addChild(kit);
    }
    SoNode* domainTransform() { return kit->getPart("domainTransform", FALSE); }
    ExposedKit* kit = nullptr;
};

TEST_F(PoBaseTest, KitRebuildsOncePerChangeWhenItsUpdateMethodSays) {
    EXPECT_FALSE(kit->isBuilt());
    traverse();
    traverse();
    EXPECT_EQ(kit->rebuildCount, 1);
    EXPECT_TRUE(kit->isBuilt());
    EXPECT_FALSE(kit->isModified());
    struct Case {
        PoBase::UpdateMethodType method;
        bool touch; // touchKit() rather than a field change
        int rebuildsAtOnce;
    };
    for (const Case& c :
         {Case{PoBase::UPDATE_AT_TRAVERSAL, false, 0}, Case{PoBase::UPDATE_AT_TRAVERSAL, true, 0},
          Case{PoBase::UPDATE_IMMEDIATELY, false, 1}, Case{PoBase::UPDATE_IMMEDIATELY, true, 1}}) {
        SCOPED_TRACE(::testing::Message() << c.method << (c.touch ? " touchKit" : " field"));
        const int built = kit->rebuildCount;
        kit->setUpdateMethod(c.method);
        if (c.touch)
            kit->touchKit();
        else
            kit->value = kit->value.getValue() + 1.0f;
        EXPECT_EQ(kit->rebuildCount, built + c.rebuildsAtOnce);
        EXPECT_EQ(kit->isModified(), c.rebuildsAtOnce == 0);
        traverse();
        EXPECT_EQ(kit->rebuildCount, built + 1);
        kit->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    }
}

TEST_F(PoBaseTest, ChangedFieldsAreRecordedOnlyWhileStoring) {
    kit->value = 1.0f;
    EXPECT_FALSE(kit->isFieldHasChanged(&kit->value));
    kit->storeFieldsChanged(1);
    kit->value = 2.0f;
    EXPECT_TRUE(kit->isFieldHasChanged(&kit->value));
}

TEST_F(PoBaseTest, WatchedFieldsOfEveryLevelFollowTheKitsConnections) {
    LayeredKit::ensureRegistered();
    auto* layered = new LayeredKit;
    root->addChild(layered);
    layered->storeFieldsChanged(1);
    traverse();
    const struct {
        SoSFFloat* field;
        const char* name;
    } fields[] = {{&layered->value, "value"}, {&layered->extra, "extra"}};
    for (const auto& watched : fields) {
        SCOPED_TRACE(watched.name);
        layered->setUpConnections(FALSE);
        watched.field->setValue(watched.field->getValue() + 1.0f);
        EXPECT_FALSE(layered->isModified());
        EXPECT_FALSE(layered->isFieldHasChanged(watched.field));

        // Connecting again marks the kit changed, as after reading it.
        layered->setUpConnections(TRUE);
        EXPECT_TRUE(layered->isModified());
        traverse();
        watched.field->setValue(watched.field->getValue() + 1.0f);
        EXPECT_TRUE(layered->isModified());
        EXPECT_TRUE(layered->isFieldHasChanged(watched.field));
        traverse();
    }

    // A copy watches its own fields, and with update method 0 rebuilds
    // inside the assignment, where no traversal state is there to read.
    auto* copy = static_cast<LayeredKit*>(layered->copy());
    copy->ref();
    copy->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    const int built = copy->rebuildCount;
    copy->extra = 5.0f;
    EXPECT_EQ(copy->rebuildCount, built + 1);
    EXPECT_EQ(copy->lastDataMapping, nullptr);
    EXPECT_FALSE(layered->isModified());
    copy->unref();
}

TEST_F(PoBaseTest, SensorListsRefuseCountsThatDoNotFit) {
    ErrorRecorder errors;
    PoBase::FieldSensorList sensors;
    kit->createFieldSensorList(-1, &sensors);
    EXPECT_EQ(sensors.num, 0);
    EXPECT_TRUE(errors.contains("PoBase::createFieldSensorList(): negative number of sensors -1"));
    kit->createFieldSensorList(2, &sensors);
    SoFieldList fields;
    fields.append(&kit->value);
    kit->attachFieldSensorList(&sensors, fields);
    EXPECT_TRUE(
        errors.contains("PoBase::attachFieldSensorList(): fewer fields (1) than sensors (2)"));
    EXPECT_EQ(sensors.sensors[0]->getAttachedField(), nullptr);
    kit->deleteFieldSensorList(&sensors);
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

TEST_F(PoBaseTest, SearchingAllNodesRebuildsNothing) {
    SoBaseKit::setSearchingChildren(TRUE);
    SoSearchAction search;
    search.setType(SoCube::getClassTypeId());
    search.setSearchingAll(TRUE);
    search.apply(root);
    EXPECT_EQ(kit->rebuildCount, 0);
    search.setSearchingAll(FALSE);
    search.apply(root);
    EXPECT_EQ(kit->rebuildCount, 1);
    SoBaseKit::setSearchingChildren(FALSE);
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

TEST_F(PoBaseTest, KitReadFromAFileIsMarkedChangedAndRebuiltAtItsFirstTraversal) {
    // Every field at its default: reading sets none of them.
    for (PoBase::NodeWriteFormat format :
         {PoBase::FOLD_NODE_WRITE_FORMAT, PoBase::UNFOLD_NODE_WRITE_FORMAT}) {
        PoBase::setNodeWriteFormat(format);
        auto* copy = static_cast<RecordingKit*>(SceneIO::read(SceneIO::write(kit)));
        ASSERT_NE(copy, nullptr);
        copy->ref();
        EXPECT_TRUE(copy->isModified());
        EXPECT_EQ(copy->rebuildCount, 0);
        SoCallbackAction action;
        action.apply(copy);
        EXPECT_EQ(copy->rebuildCount, 1);
        copy->unref();
    }
}

TEST_F(PoBaseTest, DomainOfTheStateIsUsedUnlessOneWasSet) {
    auto* node = new PoDomain;
    node->max = SbVec3f(4, 2, 1);
    root->insertChild(node, 0);
    const PbDomain* seen = nullptr;
    kit->addPostRebuildCallback(recordDomain, &seen);
    traverse();
    EXPECT_EQ(seen, node->getDomain());
    EXPECT_NE(domainTransform(), nullptr);

    PbDomain own(0, 0, 2, 2, 0);
    kit->setDomain(&own);
    traverse();
    EXPECT_EQ(seen, &own);

    // Back to the node's domain, whose box now needs no transform.
    kit->setDomain(nullptr);
    node->max = SbVec3f(1, 1, 1);
    traverse();
    EXPECT_EQ(seen, node->getDomain());
    EXPECT_EQ(domainTransform(), nullptr);
}

TEST_F(PoBaseTest, DomainFallsBackToDefaultWhenDestroyed) {
    auto* domain = new PbDomain(0, 0, 4, 2, 0);
    kit->setDomain(domain);
    EXPECT_EQ(kit->getDomain(), domain);
    traverse();
    const int built = kit->rebuildCount;
    delete domain;
    EXPECT_NE(kit->getDomain(), domain);
    EXPECT_EQ(domainTransform(), nullptr);
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, built + 1);
}

TEST_F(PoBaseTest, KitStaysConnectedToItsCurrentDomainOnly) {
    PbDomain first(0, 0, 4, 2, 0);
    PbDomain second(0, 0, 4, 2, 0);
    kit->ref();
    kit->setDomain(&first);
    kit->setDomain(&second);
    EXPECT_EQ(first.removeConnection(kit), 0);
    root->removeAllChildren();
    kit->unref();
    EXPECT_EQ(second.removeConnection(kit), 0);
}

TEST_F(PoBaseTest, TransformTypeChangeOnlyUpdatesTheDomainTransform) {
    // A cube with a scaling transform type maps to the identity.
    PbDomain domain(0, 0, 0, 2, 2, 2, 0);
    kit->setDomain(&domain);
    EXPECT_EQ(domainTransform(), nullptr);
    traverse();
    const int built = kit->rebuildCount;
    domain.setTransformType(PbDomain::TRANSFORM_01);
    EXPECT_FALSE(kit->isModified());
    EXPECT_NE(domainTransform(), nullptr);
    domain.setDomain(0, 0, 0, 4, 2, 2, 0);
    EXPECT_TRUE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, built + 1);

    // A kit that does not rebuild for its domain only follows its transform.
    kit->setDomainUsedForRebuild(0);
    domain.setDomain(0, 0, 0, 8, 2, 2, 0);
    EXPECT_FALSE(kit->isModified());
    traverse();
    EXPECT_EQ(kit->rebuildCount, built + 1);
    kit->setDomain(nullptr);
}

TEST_F(PoBaseTest, AppearanceSettersFillTheAppearanceParts) {
    kit->setLightModel(SoLightModel::BASE_COLOR);
    kit->setDrawStyleAK("appearance", SoDrawStyle::LINES);
    auto* lightModel = static_cast<SoLightModel*>(kit->getPart("appearance.lightModel", FALSE));
    auto* drawStyle = static_cast<SoDrawStyle*>(kit->getPart("appearance.drawStyle", FALSE));
    ASSERT_NE(lightModel, nullptr);
    ASSERT_NE(drawStyle, nullptr);
    EXPECT_EQ(lightModel->model.getValue(), SoLightModel::BASE_COLOR);
    EXPECT_EQ(drawStyle->style.getValue(), SoDrawStyle::LINES);
}

TEST_F(PoBaseTest, CopiesCatchActionsForThemselves) {
    auto* deferred = static_cast<RecordingKit*>(kit->copy());
    deferred->ref();
    EXPECT_EQ(deferred->rebuildCount, 1);
    deferred->unref();

    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    auto* duplicate = static_cast<RecordingKit*>(kit->copy());
    duplicate->ref();
    EXPECT_EQ(duplicate->getUpdateMethod(), PoBase::UPDATE_IMMEDIATELY);
    EXPECT_EQ(duplicate->rebuildCount, 0);
    duplicate->unref();

    // A kit copied with the group above it is copied without its copy().
    auto* rootCopy = static_cast<SoSeparator*>(root->copy());
    rootCopy->ref();
    SoCallbackAction action;
    action.apply(rootCopy);
    EXPECT_EQ(static_cast<RecordingKit*>(rootCopy->getChild(0))->rebuildCount, 1);
    EXPECT_EQ(kit->rebuildCount, 0);
    rootCopy->unref();
}

TEST_F(PoBaseTest, ElementsReadByTheLastRebuildKeepCachesAboveTheKitHonest) {
    // A separator that caches its bounding box skips its children while
    // its cache holds; the cache must depend on the mapping the kit read,
    // also when it was made at a traversal that rebuilt nothing.
    auto* mapping = new PoLinearDataMapping;
    auto* caching = new SoSeparator;
    caching->boundingBoxCaching = SoSeparator::ON;
    caching->addChild(kit);
    root->replaceChild(kit, caching);
    root->insertChild(mapping, 0);
    SoGetBoundingBoxAction boxes(SbViewportRegion(100, 100));
    boxes.apply(root);
    EXPECT_EQ(kit->rebuildCount, 1);
    caching->addChild(new SoCube); // a new cache, made without a rebuild
    boxes.apply(root);
    EXPECT_EQ(kit->rebuildCount, 1);

    mapping->color2 = SbColor(1, 0, 0);
    boxes.apply(root);
    EXPECT_EQ(kit->rebuildCount, 2);
}
