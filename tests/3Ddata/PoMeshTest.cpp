#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/3Ddata/PoMesh2D.h>
#include <Quillon/3Ddata/PoMesh3D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/nodes/PoIsovaluesList.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"
#include "support/SceneIO.h"
#include "support/TestClassRegistration.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>

#include <cmath>
#include <limits>

// A surface representation that records what its rebuilds see.
class MeshProbeKit : public PoMesh2D {
    PO_KIT_HEADER(MeshProbeKit);

public:
    MeshProbeKit() {
        SO_KIT_CONSTRUCTOR(MeshProbeKit);
        SO_KIT_INIT_INSTANCE();
        setUpdateMethod(UPDATE_IMMEDIATELY);
    }

    ColoringType coloring = COLOR_INHERITED;
    const PbMesh2D* mesh = nullptr;
    const PbDataMapping* mapping = nullptr;
    const PbIsovaluesList* isovalues = nullptr;
    int rebuilds = 0;

    using PoMesh::computeNormal;
    using PoMesh::getMaterial;
    using PoMesh::mapColor;
    using PoMesh::setGroup;

protected:
    ~MeshProbeKit() override = default;
    void rebuild() override {
        RebuildScope scope(this);
        ++rebuilds;
        coloring = getEffectiveColoring();
        mesh = getCurrentMesh2D();
        mapping = getCurrentDataMapping();
        isovalues = getCurrentIsovaluesList();
    }
};

PO_KIT_SOURCE(MeshProbeKit, PoMesh2D)

namespace {

class PoMeshTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        TestClassRegistration::registerForThisTest<MeshProbeKit>();
        m_errors = std::make_unique<ErrorRecorder>();
        m_grid.setGeometry(3, 3, 0.0f, 0.0f, 1.0f, 1.0f);
        const float values[] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
        m_grid.addValuesSet(0, values, "values");
        m_list.setRegularIsoList(1.0f, 7.0f, 4);
        m_kit = new MeshProbeKit;
        m_kit->ref();
    }
    void TearDown() override {
        m_kit->unref();
        m_errors.reset();
        SceneTest::TearDown();
    }

    std::unique_ptr<ErrorRecorder> m_errors;
    PbRegularCartesianGrid2D m_grid;
    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_list;
    MeshProbeKit* m_kit = nullptr;
};

TEST_F(PoMeshTest, EffectiveColouringDropsWhatItsInputsCannotGive) {
    PbIsovaluesList single;
    single.setRegularIsoList(1, 3.0f, 1.0f);
    struct Case {
        const char* name;
        PoMesh::ColoringType asked;
        PbDataMapping* mapping;
        PbIsovaluesList* list;
        int valuesIndex;
        PoMesh::ColoringType expected;
    } cases[] = {
        {"all inputs", PoMesh::COLOR_CONTOURING, &m_mapping, &m_list, 0, PoMesh::COLOR_CONTOURING},
        {"average", PoMesh::COLOR_AVERAGE, &m_mapping, nullptr, 0, PoMesh::COLOR_AVERAGE},
        {"contouring without list", PoMesh::COLOR_CONTOURING, &m_mapping, nullptr, 0,
         PoMesh::COLOR_MAPPING},
        {"texture without list", PoMesh::COLOR_TEXTURE_CONTOURING, &m_mapping, nullptr, 0,
         PoMesh::COLOR_MAPPING},
        {"one isovalue makes no bands", PoMesh::COLOR_CONTOURING, &m_mapping, &single, 0,
         PoMesh::COLOR_MAPPING},
        {"no value set", PoMesh::COLOR_MAPPING, &m_mapping, nullptr, -1, PoMesh::COLOR_INHERITED},
        {"unknown value set", PoMesh::COLOR_MAPPING, &m_mapping, nullptr, 5,
         PoMesh::COLOR_INHERITED},
        {"no data mapping", PoMesh::COLOR_CONTOURING, nullptr, &m_list, 0, PoMesh::COLOR_INHERITED},
    };
    m_kit->setMesh(&m_grid);
    for (const Case& c : cases) {
        m_kit->setDataMapping(c.mapping);
        m_kit->setIsovaluesList(c.list);
        m_kit->valuesIndex = c.valuesIndex;
        m_kit->coloringType = c.asked;
        EXPECT_EQ(m_kit->coloring, c.expected) << c.name;
    }
    EXPECT_TRUE(m_errors->contains("colour bands need two isovalues at least"));
}

TEST_F(PoMeshTest, ValueSetShorterThanTheNodesIsRefused) {
    // A grid that references its values keeps the set when it grows.
    PbRegularCartesianGrid2D grid(0);
    grid.setGeometry(2, 2, 0.0f, 0.0f, 1.0f, 1.0f);
    const float values[] = {0, 1, 2, 3};
    grid.addValuesSet(0, values, "four");
    grid.setGeometry(3, 3, 0.0f, 0.0f, 1.0f, 1.0f);
    m_kit->setMesh(&grid);
    m_kit->setDataMapping(&m_mapping);
    m_kit->valuesIndex = 0;
    m_kit->coloringType = PoMesh::COLOR_MAPPING;
    EXPECT_EQ(m_kit->coloring, PoMesh::COLOR_INHERITED);
    EXPECT_TRUE(m_errors->contains("value set 0 holds 4 values for 9 nodes"));
    m_kit->setMesh(nullptr);
}

TEST_F(PoMeshTest, StateObjectsServeDuringTraversalsOnlyAndObjectsSetOnTheKitWin) {
    m_kit->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    auto* gridNode = new PoRegularCartesianGrid2D;
    gridNode->mesh.setValue(m_grid);
    auto* mappingNode = new PoLinearDataMapping;
    auto* listNode = new PoIsovaluesList;
    root->addChild(gridNode);
    root->addChild(mappingNode);
    root->addChild(listNode);
    root->addChild(m_kit);
    m_kit->valuesIndex = 0;
    m_kit->coloringType = PoMesh::COLOR_CONTOURING;
    traverse();
    EXPECT_EQ(m_kit->mesh, &gridNode->mesh.getValue());
    EXPECT_EQ(m_kit->mapping, mappingNode->getDataMapping());
    EXPECT_NE(m_kit->isovalues, nullptr);
    EXPECT_EQ(m_kit->getDataMapping(), nullptr);
    EXPECT_EQ(m_kit->getMesh(), nullptr);

    m_kit->setDataMapping(&m_mapping);
    traverse();
    EXPECT_EQ(m_kit->mapping, &m_mapping);
    EXPECT_EQ(m_kit->getDataMapping(), &m_mapping);
    // A data-mapping node supplies the module data mapping.
    auto* moduleNode = new PoLinearDataMapping;
    m_kit->moduleDataMappingNode = moduleNode;
    EXPECT_EQ(m_kit->getModuleDataMapping(), moduleNode->getDataMapping());
}

TEST_F(PoMeshTest, InheritedColouringDoesNotDependOnTheStatesDataMapping) {
    m_kit->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    auto* mappingNode = new PoLinearDataMapping;
    root->addChild(mappingNode);
    root->addChild(m_kit);
    m_kit->setMesh(&m_grid);
    traverse();
    const int rebuilds = m_kit->rebuilds;
    mappingNode->value2 = 5.0f;
    traverse();
    EXPECT_EQ(m_kit->rebuilds, rebuilds);
    m_kit->coloringType = PoMesh::COLOR_MAPPING;
    traverse();
    mappingNode->value2 = 6.0f;
    traverse();
    EXPECT_EQ(m_kit->rebuilds, rebuilds + 2);
}

TEST_F(PoMeshTest, MapColorGivesTransparenciesOnlyWithTransparency) {
    m_kit->setMesh(&m_grid);
    m_kit->setDataMapping(&m_mapping);
    m_kit->valuesIndex = 0;
    m_kit->coloringType = PoMesh::COLOR_MAPPING;
    m_mapping.setMinThreshold(0.5f);
    m_mapping.enableThresholds(1, 0);
    const float values[] = {0.25f, 0.75f, std::numeric_limits<float>::quiet_NaN()};
    for (int transparency : {0, 1}) {
        m_mapping.enableTransparency(transparency);
        m_kit->touchKit();
        m_kit->mapColor(3, values, TRUE);
        // The kit's groups own the materials it makes; here the test does.
        SoMaterial* material = m_kit->getMaterial();
        material->ref();
        ASSERT_EQ(material->diffuseColor.getNum(), 3);
        EXPECT_EQ(material->diffuseColor[1], *m_mapping.getRGBColor(0.75f));
        // Below the colourless threshold, and not a number: black.
        EXPECT_EQ(material->diffuseColor[0], SbColor(0, 0, 0));
        EXPECT_EQ(material->diffuseColor[2], SbColor(0, 0, 0));
        if (transparency) {
            ASSERT_EQ(material->transparency.getNum(), 3);
            EXPECT_EQ(material->transparency[0], 1.0f);
            EXPECT_EQ(material->transparency[1], 0.0f);
        } else {
            EXPECT_TRUE(material->transparency.isDefault());
        }
        material->unref();
    }
}

TEST_F(PoMeshTest, ComputedNormalsFollowTheClockwiseOrderingOfTheShapeHints) {
    // A square counter-clockwise seen from above: clockwise hints make its
    // normals point down.
    auto* group = new SoSeparator;
    group->ref();
    auto* coordinates = new SoCoordinate3;
    const SbVec3f points[] = {SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(1, 1, 0),
                              SbVec3f(0, 1, 0)};
    coordinates->point.setValues(0, 4, points);
    auto* faces = new SoIndexedFaceSet;
    const int32_t indices[] = {0, 1, 2, 3, -1};
    faces->coordIndex.setValues(0, 5, indices);
    group->addChild(coordinates);
    group->addChild(faces);
    m_kit->setGroup(group);
    m_kit->computeNormal(faces, coordinates);
    auto* normals = static_cast<SoNormal*>(group->getChild(1));
    ASSERT_TRUE(normals->isOfType(SoNormal::getClassTypeId()));
    EXPECT_EQ(static_cast<SoNormalBinding*>(group->getChild(2))->value.getValue(),
              int(SoNormalBinding::PER_VERTEX_INDEXED));
    EXPECT_EQ(group->getChild(3), faces);
    ASSERT_EQ(faces->normalIndex.getNum(), 5);
    EXPECT_EQ(faces->normalIndex[4], -1);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(faces->normalIndex[i], i);
        EXPECT_TRUE(normals->vector[i].equals(SbVec3f(0, 0, -1), 1e-6f));
    }
    group->unref();
}

TEST_F(PoMeshTest, WrittenKitsKeepTheirFieldsButNotTheComputedMaterial) {
    auto* kit = new PoMeshFilled;
    root->addChild(kit);
    kit->setMesh(&m_grid);
    kit->setDataMapping(&m_mapping);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    traverse();
    const std::string folded = SceneIO::write(root);
    EXPECT_NE(folded.find("coloringType COLOR_MAPPING"), std::string::npos) << folded;
    EXPECT_EQ(folded.find("diffuseColor"), std::string::npos) << folded;
    PoBase::setNodeWriteFormat(PoBase::UNFOLD_NODE_WRITE_FORMAT);
    const std::string unfolded = SceneIO::write(root);
    EXPECT_EQ(unfolded.find("coloringType COLOR_MAPPING"), std::string::npos) << unfolded;
    EXPECT_NE(unfolded.find("QuadMesh"), std::string::npos) << unfolded;
}

TEST_F(PoMeshTest, LevelsRegisterTheirMissingParentsWithAMessage) {
    struct Case {
        void (*init)(void);
        const char* message;
    } cases[] = {{&PoMesh2D::initClass, "PoMesh2D initialized before parent class PoMesh\n"},
                 {&PoMesh3D::initClass, "PoMesh3D initialized before parent class PoMesh\n"}};
    for (const Case& c : cases) {
        PoVolumwright::exitClasses();
        m_errors->clear();
        c.init();
        EXPECT_TRUE(m_errors->contains(c.message));
        EXPECT_TRUE(m_errors->contains("PoMesh initialized before parent class PoVolumwright\n"));
        PoVolumwright::exitClasses();
        PoVolumwright::initClasses();
    }
}

} // namespace
