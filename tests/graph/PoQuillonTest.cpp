#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"
#include "platform/FsInitModuleCmd.h"
#include "platform/PfToolkit.h"
#include "platform/SoFarspan.h"
#include "support/ErrorRecorder.h"
#include "support/RecordingKit.h"

#include <Inventor/SoDB.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {
SoType typeNamed(const char* name) {
    return SoType::fromName(SbName(name));
}

#define NAME_OF(_class_) #_class_,
#define NAME_OF_REPRESENTATION(_class_, _group_) #_class_,

// The classes, in the order the library registers them.
const std::vector<const char*> registrationOrder = {
    "PoBase", PO_CHART_KIT_CLASSES(NAME_OF) PO_MESH_REPRESENTATION_CLASSES(NAME_OF_REPRESENTATION)
                  PO_ELEMENT_CLASSES(NAME_OF) PO_PROPERTY_NODE_CLASSES(NAME_OF)
                      PO_MESH_FIELD_CLASSES(NAME_OF)};

bool isElement(const std::string& name) {
    return name.size() > 7 && name.compare(name.size() - 7, 7, "Element") == 0;
}

// Element types stay in the toolkit's type system for good (its actions
// keep them), so a second registration finds them with their first keys.
void expectRegistered(bool inOrder) {
    int previousKey = -1;
    for (const char* name : registrationOrder) {
        const SoType type = typeNamed(name);
        ASSERT_NE(type, SoType::badType()) << name;
        if (inOrder || !isElement(name)) {
            EXPECT_GT(static_cast<int>(type.getKey()), previousKey) << name;
            previousKey = type.getKey();
        }
    }
}

void expectNothingRegistered() {
    for (const char* name : registrationOrder) {
        if (!isElement(name)) {
            EXPECT_EQ(typeNamed(name), SoType::badType()) << name;
        }
    }
    EXPECT_EQ(PoDomainElement::getClassTypeId(), SoType::badType());
    EXPECT_EQ(PoLabelHintsElement::getClassTypeId(), SoType::badType());
    EXPECT_EQ(PoMeshElement::getClassTypeId(), SoType::badType());
}
} // namespace

TEST(PoQuillon, RegistersEveryFamilyInOrder) {
    // Only the first registration in the process creates the element types.
    SoDB::init();
    const bool first = typeNamed("PoDomainElement") == SoType::badType();
    PoQuillon::init();
    expectRegistered(first);
    EXPECT_EQ(PoBase::getClassTypeId().getParent(), SoBaseKit::getClassTypeId());
    EXPECT_TRUE(FsInitModuleCmd::Instance()->isRegistered("Quillon"));
    PoQuillon::finish();
}

TEST(PoQuillon, CountsInitAndFinish) {
    PoQuillon::init();
    PoQuillon::init();
    PoQuillon::finish();
    EXPECT_TRUE(PoQuillon::isInitialized());
    EXPECT_NE(typeNamed("PoBase"), SoType::badType());
    PoQuillon::finish();
    EXPECT_FALSE(PoQuillon::isInitialized());
    expectNothingRegistered();
}

TEST(PoQuillon, RegistersAgainAfterFullFinish) {
    PoQuillon::init();
    PoQuillon::finish();
    PoQuillon::init();
    expectRegistered(false);

    // Nodes of the new registration can be created and traversed.
    SoSeparator* root = new SoSeparator;
    root->ref();
    root->addChild(new PoMesh1DHints);
    SoCallbackAction action;
    action.apply(root);
    root->unref();
    PoQuillon::finish();
}

TEST(PoQuillon, FinishWithoutInitTouchesNothing) {
    const int toolkitCount = PfToolkit::getDBInitCount();
    const int clusterCount = SoFarspan::getInitCount();
    PoQuillon::finish();
    EXPECT_EQ(PfToolkit::getDBInitCount(), toolkitCount);
    EXPECT_EQ(SoFarspan::getInitCount(), clusterCount);
    EXPECT_FALSE(PoQuillon::isInitialized());
}

TEST(PoQuillon, ToolkitCallsAreMadeOnEveryInitAndFinish) {
    PoQuillon::init();
    PoQuillon::init();
    EXPECT_EQ(SoFarspan::getInitCount(), 2);
    PoQuillon::finish();
    PoQuillon::finish();
    EXPECT_EQ(SoFarspan::getInitCount(), 0);
    EXPECT_EQ(PfToolkit::getDBInitCount(), 0);
}

TEST(PoQuillon, KitKeepsLibraryRegisteredWhileItLives) {
    PoQuillon::init();
    RecordingKit::ensureRegistered();
    auto* kit = new RecordingKit;
    kit->ref();
    PoQuillon::finish();
    EXPECT_TRUE(PoQuillon::isInitialized());
    EXPECT_NE(typeNamed("PoBase"), SoType::badType());
    kit->unref();
    EXPECT_FALSE(PoQuillon::isInitialized());
    expectNothingRegistered();
    RecordingKit::exitClass();
}

TEST(PoQuillon, NodesAndFieldsUsedBeforeInitSayToCallIt) {
    SoDB::init();
    ErrorRecorder errors;
    { PoSFRegularMesh1D field; }
    EXPECT_TRUE(errors.contains("PoSFRegularMesh1D is used before PoQuillon::init()"));
    // A node starts the library for its lifetime, so that it works.
    auto* domain = new PoDomain;
    domain->ref();
    EXPECT_TRUE(errors.contains("a Quillon node is used before PoQuillon::init(); call "
                                "PoQuillon::init() once"));
    EXPECT_EQ(domain->getTypeId(), SoType::fromName("PoDomain"));
    EXPECT_TRUE(PoQuillon::isInitialized());
    domain->unref();
    EXPECT_FALSE(PoQuillon::isInitialized());

    PoQuillon::init();
    errors.clear();
    domain = new PoDomain;
    domain->ref();
    domain->unref();
    EXPECT_TRUE(errors.messages().empty()) << errors.messages().front();
    PoQuillon::finish();
}

TEST(PoQuillon, ProductNameAndVersion) {
    EXPECT_STREQ(PoQuillon::getProductName(), "Quillon");
    EXPECT_TRUE(std::regex_match(PoQuillon::getVersion(), std::regex(R"(\d+\.\d+\.\d+\.\d+)")))
        << PoQuillon::getVersion();
}

TEST(PoClassRegistration, ExitClassTwiceReportsAndChangesNothing) {
    PoQuillon::init();
    ErrorRecorder errors;
    PoLabelHints::exitClass();
    EXPECT_EQ(typeNamed("PoLabelHints"), SoType::badType());
    EXPECT_TRUE(errors.messages().empty());

    PoLabelHints::exitClass();
    ASSERT_FALSE(errors.messages().empty());
    EXPECT_TRUE(errors.contains("PoLabelHints::exitClass"));
    EXPECT_TRUE(errors.contains("Unable to remove type ("));
    EXPECT_TRUE(errors.contains(") for this class. Check exitClass() method is implemented and "
                                "is called only once.\n"));
    PoLabelHints::initClass();
    EXPECT_NE(typeNamed("PoLabelHints"), SoType::badType());
    PoQuillon::finish();
}

TEST(PoClassRegistration, ClassBeforeParentRegistersParentWithMessage) {
    PfToolkit::initDB();
    PfToolkit::initNodeKit();
    ErrorRecorder errors;
    ASSERT_EQ(PoBase::getClassTypeId(), SoType::badType());
    RecordingKit::initClass();
    EXPECT_TRUE(errors.contains("RecordingKit initialized before parent class PoBase\n"));
    EXPECT_TRUE(errors.contains("RecordingKit::initClass"));
    EXPECT_NE(PoBase::getClassTypeId(), SoType::badType());
    EXPECT_EQ(RecordingKit::getClassTypeId().getParent(), PoBase::getClassTypeId());
}

TEST(PoClassManifest, RepresentationKitsLeaveGroupByGroupEachGroupBackwards) {
    using Group = PoClassManifest::ExitGroup;
    // Registration interleaves the groups as the representation list does.
    const std::vector<Group> groups = {
        Group::BASES,   Group::BASES,   Group::PROBES_AND_CELLS, Group::PROBES_AND_CELLS,
        Group::STREAMS, Group::STREAMS, Group::SURFACES,         Group::SURFACES,
        Group::VOLUMES, Group::VOLUMES};
    EXPECT_EQ(PoClassManifest::exitOrder(groups),
              (std::vector<size_t>{5, 4, 3, 2, 7, 6, 9, 8, 1, 0}));
}
