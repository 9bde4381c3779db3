#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"
#include "support/SceneSearch.h"
#include "support/TestClassRegistration.h"

#include <Quillon/graph/PoBase.h>
#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cctype>
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
        RebuildScope scope(this);
        ++rebuildCount;
        mesh = readElement<PoMeshElement>(&PoMeshElement::getMesh2D);
        numNodes = mesh ? mesh->getNumNodes() : -1;
    }
};

PO_KIT_SOURCE(MeshReadingKit, PoBase)

namespace {
// The current mesh and its dimension where the probe stands.
struct MeshProbe {
    SoCallback* node = new SoCallback;
    const PbMesh* mesh = nullptr;
    int dimension = -1;

    MeshProbe() { node->setCallback(&MeshProbe::reached, this); }
    static void reached(void* data, SoAction* action) {
        auto* probe = static_cast<MeshProbe*>(data);
        SoState* state = action->getState();
        probe->dimension = PoMeshElement::getDimension(state);
        const PbMesh* meshes[] = {nullptr, PoMeshElement::getMesh1D(state),
                                  PoMeshElement::getMesh2D(state), PoMeshElement::getMesh3D(state)};
        probe->mesh = meshes[probe->dimension];
    }
};
} // namespace

template <class K> class MeshPropertyKindTest : public MeshFieldTest {};
TYPED_TEST_SUITE(MeshPropertyKindTest, AllKinds);

TYPED_TEST(MeshPropertyKindTest, PutsItsMeshIntoTheStateUnlessIgnored) {
    using Mesh = typename TypeParam::Mesh;
    auto* root = new SoSeparator;
    root->ref();
    auto* node = new typename TypeParam::Node;
    node->mesh.setValue(TypeParam::sample());
    MeshProbe probe;
    root->addChild(node);
    root->addChild(probe.node);

    SoCallbackAction action;
    action.apply(root);
    EXPECT_EQ(probe.mesh, &node->mesh.getValue());
    EXPECT_EQ(probe.mesh, node->getMesh());
    const int dimension = std::is_base_of<PbMesh1D, Mesh>::value   ? 1
                          : std::is_base_of<PbMesh2D, Mesh>::value ? 2
                                                                   : 3;
    EXPECT_EQ(probe.dimension, dimension);
    EXPECT_EQ(static_cast<PoMeshProperty*>(node)->getSFieldMesh(), &node->mesh);

    node->mesh.setIgnored(TRUE);
    action.apply(root);
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

    root->unref();
}

namespace {
// The text with every run of white space made one space.
std::string squeezed(const std::string& text) {
    std::string result;
    for (char c : text)
        if (!std::isspace(static_cast<unsigned char>(c)))
            result += c;
        else if (!result.empty() && result.back() != ' ')
            result += ' ';
    return result;
}
} // namespace

// The example files are as the library writes their meshes today: each
// mesh node, written on its own, stands in its file as it is (indented
// there by its depth in the scene).
TEST_F(PoMeshPropertyTest, ExampleScenesHoldAMeshWithSetsAsTheLibraryWritesIt) {
    const std::string examples = QUILLON_EXAMPLES_DIR "/";
    for (const char* name :
         {"mesh-surface-grid.iv", "mesh-surface-unstructured.iv", "mesh-volume-grid.iv",
          "mesh-volume-unstructured.iv", "data/mesh-line.iv"}) {
        SCOPED_TRACE(name);
        std::ifstream file(examples + name);
        ASSERT_TRUE(file.good());
        const std::string text((std::istreambuf_iterator<char>(file)),
                               std::istreambuf_iterator<char>());
        EXPECT_NE(text.find("# set of scalars, index 0"), std::string::npos);
        SoNode* scene = SceneIO::read(text);
        ASSERT_NE(scene, nullptr) << ::testing::PrintToString(readErrors());
        scene->ref();
        const std::vector<PoMeshProperty*> meshes = findAll<PoMeshProperty>(scene);
        ASSERT_EQ(meshes.size(), 1u);
        const std::string written = SceneIO::write(meshes[0]);
        const std::string node = written.substr(written.find(meshes[0]->getTypeId().getName()));
        EXPECT_NE(squeezed(text).find(squeezed(node)), std::string::npos) << node;
        scene->unref();
    }
}
