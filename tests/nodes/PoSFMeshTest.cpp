#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <Quillon/nodes/PoSFMesh.h>

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <cstring>

using namespace meshfieldtest;

namespace {
// Counts the notifications of a field.
class ChangeCounter {
public:
    explicit ChangeCounter(SoField* field) : m_sensor(&ChangeCounter::changed, this) {
        m_sensor.setPriority(0);
        m_sensor.attach(field);
    }
    int count() const { return m_count; }

private:
    static void changed(void* data, SoSensor*) { ++static_cast<ChangeCounter*>(data)->m_count; }

    SoFieldSensor m_sensor;
    int m_count = 0;
};
} // namespace

template <class K> class MeshFieldKindTest : public MeshFieldTest {};
TYPED_TEST_SUITE(MeshFieldKindTest, AllKinds);

TYPED_TEST(MeshFieldKindTest, RoundTripsThroughAsciiAndBinaryFiles) {
    using Node = typename TypeParam::Node;
    auto* node = new Node;
    node->ref();
    for (const typename TypeParam::Mesh& sample :
         {TypeParam::sample(), typename TypeParam::Mesh(1)}) {
        node->mesh.setValue(sample);
        for (bool binary : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (binary ? "binary, " : "ASCII, ") << sample.getNumNodes() << " nodes");
            SoNode* read = SceneIO::roundTrip(node, binary);
            ASSERT_NE(read, nullptr) << ::testing::PrintToString(this->readErrors());
            read->ref();
            ASSERT_EQ(read->getTypeId(), Node::getClassTypeId());
            const auto& mesh = static_cast<Node*>(read)->mesh.getValue();
            expectSameMesh(sample, mesh);
            EXPECT_TRUE(mesh.isDataDuplicated());
            EXPECT_TRUE(static_cast<Node*>(read)->mesh.isSame(node->mesh));
            read->unref();
        }
    }
    node->unref();
    EXPECT_TRUE(this->errors().messages().empty());
    EXPECT_TRUE(this->readErrors().empty());
}

TYPED_TEST(MeshFieldKindTest, OwnsACopyOfAMeshThatReferencesItsCallersArrays) {
    typename TypeParam::Field field;
    const typename TypeParam::Mesh referencing = TypeParam::sample(0);
    field.setValue(referencing);
    EXPECT_TRUE(field.getValue().isDataDuplicated());
    expectSameMesh(referencing, field.getValue());
    EXPECT_TRUE(this->errors().messages().empty());
}

TYPED_TEST(MeshFieldKindTest, ComparesGeometryAndSets) {
    typename TypeParam::Field a, b;
    a.setValue(TypeParam::sample());
    b.setValue(TypeParam::sample(0));
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a.isSame(b));

    typename TypeParam::Mesh renamed = TypeParam::sample();
    const float* values = renamed.getValuesSet(0);
    renamed.addValuesSet(0, std::vector<float>(values, values + renamed.getNumNodes()).data(),
                         PbMesh::PER_NODE, "other name");
    b.setValue(renamed);
    EXPECT_TRUE(a != b);

    b.setValue(typename TypeParam::Mesh());
    EXPECT_TRUE(a != b);
    b.copyFrom(a);
    EXPECT_TRUE(a == b);
}

class PoSFMeshTest : public MeshFieldTest {};

TEST_F(PoSFMeshTest, SameValueNotificationDecidesWhetherAnEqualMeshSignals) {
    auto* node = new PoCartesianGrid2D;
    node->ref();
    node->mesh.setValue(Kind<PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D>::sample());
    ChangeCounter changes(&node->mesh);
    const PbCartesianGrid2D equal = node->mesh.getValue();

    node->mesh.setValue(equal);
    EXPECT_EQ(changes.count(), 1);

    node->mesh.setSameValueNotificationEnabled(FALSE);
    node->mesh.setValue(equal);
    EXPECT_EQ(changes.count(), 1);
    node->mesh.setValue(PbCartesianGrid2D());
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(node->mesh.getValue().getNumNodes(), 0);
    node->unref();

    // Without a container the rule does not apply.
    PoSFCartesianGrid2D alone;
    alone.setSameValueNotificationEnabled(FALSE);
    ChangeCounter aloneChanges(&alone);
    alone.setValue(PbCartesianGrid2D());
    EXPECT_EQ(aloneChanges.count(), 1);
}

TEST_F(PoSFMeshTest, SetAdditionsAndGeometryChangesSignalUnlessRefused) {
    PoSFRegularMesh1D field;
    ChangeCounter changes(&field);
    field.setGeometry(3, 0.0f, 1.0f);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(field.getValue().getNumNodes(), 3);

    const float values[] = {1.0f, 2.0f, 3.0f};
    const SbString strings[] = {"a", "b", "c"};
    const SbVec3f vecs[] = {SbVec3f(1, 0, 0), SbVec3f(0, 1, 0), SbVec3f(0, 0, 1)};
    field.addValuesSet(4, values, "v");
    field.addValuesSet(5, values, PoMeshProperty::PER_CELL, "c");
    field.addStringsSet(2, strings, "s");
    field.addVecsSet(6, vecs, "w");
    EXPECT_EQ(changes.count(), 5);
    const PbRegularMesh1D& mesh = field.getValue();
    EXPECT_EQ(mesh.getValuesBinding(5), PbMesh::PER_CELL);
    EXPECT_EQ(mesh.getValuesSet(5)[1], 2.0f);
    EXPECT_EQ(mesh.getStringsSet(2)[2], SbString("c"));
    EXPECT_EQ(mesh.getVecsSet(6)[1], SbVec3f(0, 1, 0));
    EXPECT_TRUE(errors().messages().empty());

    // Refused: a missing array and a negative size leave the field as it was.
    field.addValuesSet(7, nullptr, "none");
    field.setGeometry(-2, 0.0f, 1.0f);
    EXPECT_EQ(changes.count(), 5);
    EXPECT_EQ(field.getValue().getNumNodes(), 3);
    EXPECT_EQ(field.getValue().getValuesSet(7), nullptr);
    EXPECT_EQ(errors().messages().size(), 2u);
}

TEST_F(PoSFMeshTest, RegistersItsFamilyWithTheToolkitMessages) {
    PoSFMesh::exitClasses();
    EXPECT_EQ(PoSFMesh::getClassTypeId(), SoType::badType());
    EXPECT_EQ(PoSFHexahedronMesh3D::getClassTypeId(), SoType::badType());

    PoSFHexahedronMesh3D::initClass();
    EXPECT_TRUE(
        errors().contains("PoSFHexahedronMesh3D initialized before parent class PoSFMesh\n"));
    EXPECT_EQ(PoSFHexahedronMesh3D::getClassTypeId().getParent(), PoSFMesh::getClassTypeId());
    EXPECT_EQ(PoSFMesh::getClassTypeId().getParent(), SoSField::getClassTypeId());
    EXPECT_EQ(SoType::fromName("PoSFHexahedronMesh3D"), PoSFHexahedronMesh3D::getClassTypeId());

    errors().clear();
    {
        PoSFRegularMesh1D field;
        EXPECT_TRUE(errors().contains("Can't construct a field of type PoSFRegularMesh1D until "
                                      "initClass() has been called"));
        EXPECT_EQ(field.getTypeId(), SoType::fromName("PoSFRegularMesh1D"));
    }

    PoSFRegularMesh1D::exitClass();
    errors().clear();
    PoSFRegularMesh1D::exitClass();
    EXPECT_TRUE(errors().contains("Unable to remove type (BadType) for this class. Check "
                                  "exitClass() method is implemented and is called only once.\n"));
    PoSFHexahedronMesh3D::exitClass();
    PoSFMesh::exitClass();
    PoSFMesh::initClasses();
    for (const char* name : {"PoSFMesh", "PoSFCartesianGrid3D", "PoSFRegularMesh1D"})
        EXPECT_NE(SoType::fromName(name), SoType::badType()) << name;
}

TEST_F(PoSFMeshTest, AFlatMeshReplacingOneWithZStaysFlat) {
    PoSFQuadrangleMesh2D field;
    field.setValue(Kind<PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D>::sample());
    ASSERT_NE(field.getValue().getZcoord(), nullptr);
    PbQuadrangleMesh2D flat;
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
    const int indices[] = {0, 1, 2, 3};
    flat.setGeometry(4, x, y, 1, indices);
    field.setValue(flat);
    EXPECT_EQ(field.getValue().getZcoord(), nullptr);
    EXPECT_EQ(field.getValue().getNodeCoord(2), SbVec3f(1, 1, 0));
    SbString text;
    field.get(text);
    EXPECT_NE(std::string(text.getString()).find("0    # 2D mesh"), std::string::npos);
}

TEST_F(PoSFMeshTest, DropsPerCellSetsWhenTheCellsChangeButNotTheNodes) {
    PoSFParalCartesianGrid3D field;
    const float axis[] = {0, 1, 2, 3, 4, 5};
    field.setGeometry(2, 2, 6, axis, axis, axis);
    ASSERT_EQ(field.getValue().getNumCells(), 5);
    const float values[24] = {};
    field.addValuesSet(0, values, "nodes");
    field.addValuesSet(1, values, PoMeshProperty::PER_CELL, "cells");

    field.setGeometry(2, 3, 4, axis, axis, axis);
    EXPECT_EQ(field.getValue().getNumNodes(), 24);
    EXPECT_EQ(field.getValue().getNumCells(), 6);
    EXPECT_NE(field.getValue().getValuesSet(0), nullptr);
    EXPECT_EQ(field.getValue().getValuesSet(1), nullptr);
}
