#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <cfloat>
#include <cmath>
#include <limits>

using namespace meshfieldtest;

namespace {
const float kInf = std::numeric_limits<float>::infinity();
// NaN, the infinities, the extremes of the float range, denormal numbers,
// a negative zero and floats that need nine digits.
const float kSpecial[] = {std::numeric_limits<float>::quiet_NaN(),
                          kInf,
                          -kInf,
                          FLT_MAX,
                          -FLT_MAX,
                          FLT_TRUE_MIN,
                          -FLT_MIN / 3,
                          -0.0f,
                          0.1f,
                          16777215.0f,
                          1.0f / 3.0f,
                          0.104274996f,
                          -1e-30f};
const int kNumSpecial = sizeof kSpecial / sizeof kSpecial[0];

// count special values, starting at the offset-th.
std::vector<float> specials(int count, int offset = 0) {
    std::vector<float> values;
    for (int i = 0; i < count; ++i)
        values.push_back(kSpecial[(i + offset) % kNumSpecial]);
    return values;
}

// Names and strings that a file must quote faithfully.
const SbString kTricky[] = {
    "a \"quoted\" word", "back\\slash", "ends with \\", "\\\"", "# not a comment", "two\nlines", "",
    "tab\there"};

// Geometry of every kind with special coordinates: small meshes whose
// node values hold them all.
void setSpecialGeometry(PbCartesianGrid2D& mesh) {
    mesh.setGeometry(3, 2, specials(6).data(), specials(6, 6).data(), specials(6, 3).data());
}
void setSpecialGeometry(PbParalCartesianGrid2D& mesh) {
    mesh.setGeometry(3, 4, specials(3).data(), specials(4, 3).data(), specials(12, 7).data());
}
void setSpecialGeometry(PbRegularCartesianGrid2D& mesh) {
    mesh.setGeometry(3, 4, kSpecial[0], kSpecial[1], kSpecial[5], kSpecial[3], specials(12).data());
}
void setSpecialGeometry(PbPolarGrid2D& mesh) {
    mesh.setGeometry(4, 3, specials(4, 4).data(), specials(3, 8).data());
}
void setSpecialGeometry(PbIndexedMesh2D& mesh) {
    const int types[] = {3, 4}, indices[] = {0, 1, 2, 2, 1, 3, 4};
    mesh.setGeometry(6, specials(6).data(), specials(6, 6).data(), specials(6, 2).data(), 2, types,
                     indices);
}
void setSpecialGeometry(PbTriangleMesh2D& mesh) {
    const int indices[] = {0, 1, 2, 2, 1, 3, 3, 4, 5};
    mesh.setGeometry(6, specials(6).data(), specials(6, 6).data(), 3, indices);
}
void setSpecialGeometry(PbQuadrangleMesh2D& mesh) {
    const int indices[] = {0, 1, 2, 3, 2, 3, 4, 5};
    mesh.setGeometry(6, specials(6).data(), specials(6, 6).data(), specials(6, 3).data(), 2,
                     indices);
}
void setSpecialGeometry(PbCartesianGrid3D& mesh) {
    mesh.setGeometry(2, 2, 3, specials(12).data(), specials(12, 1).data(), specials(12, 2).data());
}
void setSpecialGeometry(PbParalCartesianGrid3D& mesh) {
    mesh.setGeometry(2, 3, 4, specials(2).data(), specials(3, 2).data(), specials(4, 5).data());
}
void setSpecialGeometry(PbRegularCartesianGrid3D& mesh) {
    mesh.setGeometry(2, 3, 2, kSpecial[0], kSpecial[2], kSpecial[5], kSpecial[1], kSpecial[4],
                     kSpecial[6]);
}
void setSpecialGeometry(PbIndexedMesh3D& mesh) {
    const int types[] = {4, 8}, indices[] = {0, 1, 2, 3, 0, 1, 2, 3, 4, 5, 6, 7};
    mesh.setGeometry(12, specials(12).data(), specials(12, 4).data(), specials(12, 8).data(), 2,
                     types, indices);
}
void setSpecialGeometry(PbHexahedronMesh3D& mesh) {
    const int indices[] = {0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 8, 9, 10, 11};
    mesh.setGeometry(12, specials(12).data(), specials(12, 4).data(), specials(12, 8).data(), 2,
                     indices);
}
void setSpecialGeometry(PbTetrahedronMesh3D& mesh) {
    const int indices[] = {0, 1, 2, 3, 8, 9, 10, 11};
    mesh.setGeometry(12, specials(12).data(), specials(12, 4).data(), specials(12, 8).data(), 2,
                     indices);
}
void setSpecialGeometry(PbIrregularMesh1D& mesh) {
    mesh.setGeometry(kNumSpecial, kSpecial);
}
void setSpecialGeometry(PbRegularMesh1D& mesh) {
    mesh.setGeometry(7, kSpecial[2], kSpecial[0]);
}

// Every special value in a set per node, a set per cell and a vector set,
// and every tricky text in names and strings.
void addSpecialSets(PbMesh& mesh) {
    const int numNodes = mesh.getNumNodes();
    mesh.addValuesSet(0, specials(numNodes, 1).data(), PbMesh::PER_NODE, kTricky[0]);
    mesh.addValuesSet(1, specials(mesh.getNumCells(), 2).data(), PbMesh::PER_CELL, kTricky[1]);
    std::vector<SbString> strings;
    for (int node = 0; node < numNodes; ++node)
        strings.push_back(kTricky[node % 8]);
    mesh.addStringsSet(0, strings.data(), kTricky[2]);
    const std::vector<float> components = specials(3 * numNodes, 5);
    std::vector<SbVec3f> vecs;
    for (int node = 0; node < numNodes; ++node)
        vecs.emplace_back(&components[3 * node]);
    mesh.addVecsSet(0, vecs.data(), PbMesh::PER_NODE, kTricky[5]);
}
} // namespace

template <class K> class MeshValueRoundTrip : public MeshFieldTest {};
TYPED_TEST_SUITE(MeshValueRoundTrip, AllKinds);

// A mesh read back writes again exactly as the original, in both formats:
// binary writes keep every float's bits, so equal binary texts mean equal
// meshes.
TYPED_TEST(MeshValueRoundTrip, EveryValueSurvivesAsciiAndBinaryFiles) {
    using Mesh = typename TypeParam::Mesh;
    using Node = typename TypeParam::Node;
    Mesh special(1);
    setSpecialGeometry(special);
    ASSERT_GT(special.getNumNodes(), 0);
    addSpecialSets(special);
    Mesh emptyWithSet(1);
    emptyWithSet.addValuesSet(0, nullptr, PbMesh::PER_NODE, kTricky[3]);
    for (const Mesh& mesh : {special, Mesh(1), emptyWithSet}) {
        auto* node = new Node;
        node->ref();
        node->mesh.setValue(mesh);
        const std::string binary = SceneIO::write(node, true);
        for (bool inBinary : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (inBinary ? "binary, " : "ASCII, ") << mesh.getNumNodes() << " nodes");
            const std::string text = inBinary ? binary : SceneIO::write(node);
            SoNode* read = SceneIO::read(text);
            ASSERT_NE(read, nullptr) << ::testing::PrintToString(this->readErrors()) << text;
            read->ref();
            EXPECT_EQ(SceneIO::write(read, true), binary) << text;
            EXPECT_EQ(SceneIO::write(read), SceneIO::write(node));
            EXPECT_TRUE(static_cast<Node*>(read)->mesh.isSame(node->mesh));
            read->unref();
        }
        node->unref();
    }
    EXPECT_TRUE(this->errors().messages().empty()) << this->errors().messages().front();
    EXPECT_TRUE(this->readErrors().empty());
}
