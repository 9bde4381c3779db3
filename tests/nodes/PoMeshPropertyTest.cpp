#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"
#include "support/TestClassRegistration.h"

#include <Quillon/graph/PoBase.h>
#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>

#include <fstream>
#include <iterator>

using namespace meshfieldtest;

// A kit that reads the current mesh while rebuilding, so that a change of
// the mesh node above it invalidates its cache.
class MeshReadingKit : public PoBase {
    PO_KIT_HEADER(MeshReadingKit);

public:
    MeshReadingKit() {
        SO_KIT_CONSTRUCTOR(MeshReadingKit);
        SO_KIT_INIT_INSTANCE();
    }
    static void ensureRegistered() { TestClassRegistration::registerForThisTest<MeshReadingKit>(); }

    int rebuildCount = 0;
    const PbMesh2D* mesh = nullptr;
    int numNodes = -1;

protected:
    ~MeshReadingKit() override = default;
    void rebuild() override {
        preRebuild();
        ++rebuildCount;
        if (isStateValid()) {
            SoState* state = getState();
            mesh = PoMeshElement::getMesh2D(state);
            numNodes = mesh ? mesh->getNumNodes() : -1;
            addElementToCache(PoClassRegistration::readableElement<PoMeshElement>(state));
        }
        postRebuild();
    }
};

PO_KIT_SOURCE(MeshReadingKit, PoBase)

namespace {
// What the state holds where the probe stands: the current mesh of any
// dimension.
struct MeshProbe {
    SoCallback* node = new SoCallback;
    const PbMesh* mesh = nullptr;
    int dimension = -1;

    MeshProbe() { node->setCallback(&MeshProbe::reached, this); }
    static void reached(void* data, SoAction* action) {
        auto* probe = static_cast<MeshProbe*>(data);
        SoState* state = action->getState();
        probe->dimension = PoMeshElement::getDimension(state);
        const PbMesh* meshes[] = {PoMeshElement::getMesh1D(state), PoMeshElement::getMesh2D(state),
                                  PoMeshElement::getMesh3D(state)};
        probe->mesh = nullptr;
        for (const PbMesh* mesh : meshes)
            probe->mesh = mesh ? mesh : probe->mesh;
    }
};

template <class Mesh> int dimensionOf() {
    return std::is_base_of<PbMesh1D, Mesh>::value   ? 1
           : std::is_base_of<PbMesh2D, Mesh>::value ? 2
                                                    : 3;
}
} // namespace

template <class K> class MeshPropertyKindTest : public MeshFieldTest {};
TYPED_TEST_SUITE(MeshPropertyKindTest, AllKinds);

TYPED_TEST(MeshPropertyKindTest, PutsItsMeshIntoTheStateUnlessIgnored) {
    auto* root = new SoSeparator;
    root->ref();
    auto* node = new typename TypeParam::Node;
    node->mesh.setValue(TypeParam::sample());
    MeshProbe probe;
    root->addChild(node);
    root->addChild(probe.node);

    SoCallbackAction action;
    action.apply(root);
    EXPECT_EQ(probe.mesh, node->getMesh());
    EXPECT_EQ(probe.mesh, &node->mesh.getValue());
    EXPECT_EQ(probe.dimension, dimensionOf<typename TypeParam::Mesh>());
    EXPECT_EQ(node->getSFieldMesh(), &node->mesh);
    PoMeshProperty* property = node;
    EXPECT_EQ(property->getSFieldMesh()->getTypeId(), TypeParam::Field::getClassTypeId());
    EXPECT_EQ(node->getTypeId().getParent(), PoMeshProperty::getClassTypeId());

    node->mesh.setIgnored(TRUE);
    action.apply(root);
    EXPECT_EQ(probe.mesh, nullptr);
    EXPECT_EQ(probe.dimension, 0);
    root->unref();
}

class PoMeshPropertyTest : public MeshFieldTest {};

TEST_F(PoMeshPropertyTest, AChangedMeshNodeMakesTheKitBelowRebuild) {
    MeshReadingKit::ensureRegistered();
    auto* root = new SoSeparator;
    root->ref();
    auto* grid = new PoPolarGrid2D;
    auto* kit = new MeshReadingKit;
    root->addChild(grid);
    root->addChild(kit);
    const float r[] = {1, 2}, t[] = {0, 1, 2};
    grid->setGeometry(2, 3, r, t);

    SoCallbackAction action;
    action.apply(root);
    EXPECT_EQ(kit->rebuildCount, 1);
    EXPECT_EQ(kit->mesh, grid->getMesh());
    EXPECT_EQ(kit->numNodes, 6);
    action.apply(root);
    EXPECT_EQ(kit->rebuildCount, 1);

    grid->setGeometry(2, 2, r, t);
    action.apply(root);
    EXPECT_EQ(kit->rebuildCount, 2);
    EXPECT_EQ(kit->numNodes, 4);

    const float values[] = {1, 2, 3, 4};
    grid->mesh.addValuesSet(0, values, "v");
    action.apply(root);
    EXPECT_EQ(kit->rebuildCount, 3);

    // A refused change tells no one.
    grid->setGeometry(-1, 2, r, t);
    action.apply(root);
    EXPECT_EQ(kit->rebuildCount, 3);
    root->unref();
}

TEST_F(PoMeshPropertyTest, ExampleScenesHoldAMeshWithSetsAsTheLibraryWritesIt) {
    const std::string examples =
        std::string(__FILE__).substr(0, std::string(__FILE__).rfind("/tests/")) + "/examples/";
    for (const char* name :
         {"mesh-surface-grid.iv", "mesh-surface-unstructured.iv", "mesh-volume-grid.iv",
          "mesh-volume-unstructured.iv", "mesh-line.iv"}) {
        SCOPED_TRACE(name);
        std::ifstream file(examples + name);
        ASSERT_TRUE(file.good());
        const std::string text((std::istreambuf_iterator<char>(file)),
                               std::istreambuf_iterator<char>());
        SoNode* scene = SceneIO::read(text);
        ASSERT_NE(scene, nullptr) << ::testing::PrintToString(readErrors());
        scene->ref();
        SoSearchAction search;
        search.setType(PoMeshProperty::getClassTypeId());
        search.setInterest(SoSearchAction::ALL);
        search.apply(scene);
        ASSERT_EQ(search.getPaths().getLength(), 1);
        const auto* node = static_cast<PoMeshProperty*>(search.getPaths()[0]->getTail());
        EXPECT_GT(node->getMesh()->getNumNodes(), 0);
        EXPECT_GT(node->getMesh()->getNumValuesSet(), 0);
        EXPECT_EQ(SceneIO::write(scene), text);
        scene->unref();
    }
}
