#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <Quillon/nodes/PoSFMesh.h>

#include <Inventor/sensors/SoFieldSensor.h>

#include <map>
#include <sstream>

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

// The comments of the header of each field type written with its sample
// mesh, in order, joined by '|'.
const std::string kXYNodes = "# x coordinates of mesh nodes|# y coordinates of mesh nodes|";
const std::string kXY = "# x coordinates of mesh|# y coordinates of mesh|";
const std::string kZNodes = "# z coordinates of mesh nodes";
const std::string kCells = "# num cells|";
const std::map<std::string, std::string> kHeaderComments = {
    {"PoSFCartesianGrid2D", "# num_x, num_y|" + kXYNodes + "# 3D mesh|" + kZNodes},
    {"PoSFParalCartesianGrid2D", "# num_x, num_y|" + kXY + "# 2D mesh"},
    {"PoSFRegularCartesianGrid2D",
     "# num_x, num_y|# x_min, y_min|# x_max, y_max|# 3D mesh|# z coordinates of mesh"},
    {"PoSFPolarGrid2D",
     "# num_r, num_t|# r coordinates of mesh nodes|# t coordinates of mesh nodes|# 2D mesh"},
    {"PoSFIndexedMesh2D", "# num nodes|" + kXYNodes + "# 3D mesh|" + kZNodes + "|" + kCells +
                              "# cell's type|"
                              "# cell's indices"},
    {"PoSFTriangleMesh2D", "# num nodes|" + kXYNodes + "# 2D mesh|" + kCells + "# cell's indices"},
    {"PoSFQuadrangleMesh2D",
     "# num nodes|" + kXYNodes + "# 3D mesh|" + kZNodes + "|" + kCells + "# cell's indices"},
    {"PoSFCartesianGrid3D", "# num_x, num_y, num_z|" + kXYNodes + kZNodes},
    {"PoSFParalCartesianGrid3D", "# num_x, num_y, num_z|" + kXY + "# z coordinates of mesh"},
    {"PoSFRegularCartesianGrid3D",
     "# num_x, num_y, num_z|# x_min, y_min, z_min|# x_max, y_max, z_max"},
    {"PoSFIndexedMesh3D",
     "# num nodes|" + kXYNodes + kZNodes + "|" + kCells + "# cell's type|# cell's indices"},
    {"PoSFHexahedronMesh3D",
     "# num nodes|" + kXYNodes + kZNodes + "|" + kCells + "# cell's indices"},
    {"PoSFTetrahedronMesh3D",
     "# num nodes|" + kXYNodes + kZNodes + "|" + kCells + "# cell's indices"},
    {"PoSFIrregularMesh1D", "# size|# x coordinates of mesh nodes"},
    {"PoSFRegularMesh1D", "# size|# xmin and xmax coordinates of mesh nodes"},
};

// The comments of a written field's header, each from its '#'.
std::string headerComments(const std::string& text) {
    std::string comments;
    bool inHeader = false;
    for (const std::string& line : linesOf(text)) {
        if (line.find("number of string data-set") != std::string::npos)
            break;
        const size_t hash = line.find('#');
        if (inHeader && hash != std::string::npos)
            comments += (comments.empty() ? "" : "|") + line.substr(hash);
        inHeader = inHeader || line.find("  mesh") == 0;
    }
    return comments;
}
} // namespace

template <class K> class MeshFieldKindTest : public MeshFieldTest {};
TYPED_TEST_SUITE(MeshFieldKindTest, AllKinds);

TYPED_TEST(MeshFieldKindTest, RoundTripsThroughAsciiAndBinaryFilesWithTheHeaderOfItsType) {
    using Node = typename TypeParam::Node;
    const std::string typeName = TypeParam::Field::getClassTypeId().getName().getString();
    auto* node = new Node;
    node->ref();
    // A sample that references its caller's arrays, which the field copies.
    for (const typename TypeParam::Mesh& sample :
         {TypeParam::sample(0), typename TypeParam::Mesh(1)}) {
        node->mesh.setValue(sample);
        EXPECT_TRUE(node->mesh.getValue().isDataDuplicated());
        EXPECT_EQ(node->mesh.isSame(typename TypeParam::Field()), sample.getNumNodes() == 0);
        for (bool binary : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (binary ? "binary, " : "ASCII, ") << sample.getNumNodes() << " nodes");
            const std::string text = SceneIO::write(node, binary);
            if (!binary && sample.getNumNodes() > 0) {
                EXPECT_EQ(headerComments(text), kHeaderComments.at(typeName)) << text;
            }
            SoNode* read = SceneIO::read(text);
            ASSERT_NE(read, nullptr) << ::testing::PrintToString(this->readErrors());
            read->ref();
            ASSERT_EQ(read->getTypeId(), Node::getClassTypeId());
            expectSameMesh(sample, static_cast<Node*>(read)->mesh.getValue());
            EXPECT_TRUE(static_cast<Node*>(read)->mesh.isSame(node->mesh));
            read->unref();
        }
    }
    node->unref();
    EXPECT_TRUE(this->errors().messages().empty());
    EXPECT_TRUE(this->readErrors().empty());
}

// Every number of a mesh's header counts in the comparison of two fields:
// each one changed in turn (when the mesh still reads) makes another mesh.
TYPED_TEST(MeshFieldKindTest, EveryHeaderValueTellsMeshesApart) {
    typename TypeParam::Field field;
    field.setValue(TypeParam::sample());
    SbString written;
    field.get(written);
    const std::vector<std::string> lines = linesOf(written.getString());
    int compared = 0;
    for (size_t line = 0; line < lines.size(); ++line) {
        if (lines[line].find("number of string data-set") != std::string::npos)
            break;
        const std::string values = lines[line].substr(0, lines[line].find('#'));
        std::istringstream words(values);
        for (std::string word; words >> word;) {
            // "0.5" becomes "0.51", "3" becomes "31".
            std::vector<std::string> changed = lines;
            changed[line].replace(changed[line].find(word), word.size(), word + "1");
            std::string text;
            for (const std::string& each : changed)
                text += each + "\n";
            typename TypeParam::Field other;
            if (!other.set(text.c_str()))
                continue;
            ++compared;
            EXPECT_FALSE(other.isSame(field)) << word << " on line " << line << ":\n" << text;
        }
    }
    EXPECT_GE(compared, 2);
}

class PoSFMeshTest : public MeshFieldTest {};

TEST_F(PoSFMeshTest, SameValueNotificationDecidesWhetherAnEqualMeshSignals) {
    using Grid = Kind<PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D>;
    auto* node = new PoCartesianGrid2D;
    node->ref();
    node->mesh.setValue(Grid::sample());
    ChangeCounter changes(&node->mesh);
    node->mesh.setValue(Grid::sample());
    EXPECT_EQ(changes.count(), 1);

    node->mesh.setSameValueNotificationEnabled(FALSE);
    node->mesh.setValue(Grid::sample(0));
    EXPECT_EQ(changes.count(), 1);
    // A set of another name makes another mesh.
    PbCartesianGrid2D renamed = Grid::sample();
    const std::vector<float> values(renamed.getValuesSet(0),
                                    renamed.getValuesSet(0) + renamed.getNumNodes());
    renamed.addValuesSet(0, values.data(), PbMesh::PER_NODE, "other name");
    node->mesh.setValue(renamed);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(*node->mesh.getValue().getValuesSetName(0), SbString("other name"));
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
    const float values[] = {1.0f, 2.0f, 3.0f};
    const SbString strings[] = {"a", "b", "c"};
    const SbVec3f vecs[] = {SbVec3f(1, 0, 0), SbVec3f(0, 1, 0), SbVec3f(0, 0, 1)};
    field.addValuesSet(4, values, "v");
    field.addValuesSet(5, values, PoMeshProperty::PER_CELL, "c");
    field.addStringsSet(2, strings, "s");
    field.addVecsSet(6, vecs, "w");
    EXPECT_EQ(changes.count(), 5);
    EXPECT_EQ(field.getValue().getValuesBinding(5), PbMesh::PER_CELL);
    EXPECT_EQ(field.getValue().getVecsSet(6)[1], SbVec3f(0, 1, 0));

    // Refused: a missing array and a negative size leave the field as it was.
    field.addValuesSet(7, nullptr, "none");
    field.setGeometry(-2, 0.0f, 1.0f);
    EXPECT_EQ(changes.count(), 5);
    EXPECT_EQ(field.getValue().getNumNodes(), 3);
    EXPECT_EQ(errors().messages().size(), 2u);
}

TEST_F(PoSFMeshTest, RegistersItsFamilyWithTheToolkitMessages) {
    PoSFMesh::exitClasses();
    EXPECT_EQ(PoSFMesh::getClassTypeId(), SoType::badType());
    PoSFHexahedronMesh3D::initClass();
    EXPECT_TRUE(
        errors().contains("PoSFHexahedronMesh3D initialized before parent class PoSFMesh\n"));
    EXPECT_EQ(PoSFHexahedronMesh3D::getClassTypeId().getParent(), PoSFMesh::getClassTypeId());
    EXPECT_EQ(PoSFMesh::getClassTypeId().getParent(), SoSField::getClassTypeId());
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
}

TEST_F(PoSFMeshTest, AFlatMeshReplacingOneWithZStaysFlat) {
    PoSFQuadrangleMesh2D field;
    field.setValue(Kind<PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D>::sample());
    PbQuadrangleMesh2D flat;
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
    const int indices[] = {0, 1, 2, 3};
    flat.setGeometry(4, x, y, 1, indices);
    field.setValue(flat);
    EXPECT_EQ(field.getValue().getZcoord(), nullptr);
    SbString text;
    field.get(text);
    EXPECT_NE(std::string(text.getString()).find("0    # 2D mesh"), std::string::npos);
}
