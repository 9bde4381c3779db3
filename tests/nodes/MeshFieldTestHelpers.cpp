#include "nodes/MeshFieldTestHelpers.h"

#include <sstream>

namespace meshfieldtest {

namespace {
// Nodes on a 3 x 2 x 2 lattice, x varying fastest, for the unstructured
// meshes; the surfaces take the first six.
const float kX[] = {0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2};
const float kY[] = {0, 0, 0, 1, 1, 1, 0, 0, 0, 1, 1, 1};
const float kZ[] = {0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1};
const float kHeights[] = {0.5f, -1.0f, 2.25f, 3.0f, 0.0f, 1.5f};
} // namespace

void setSampleGeometry(PbCartesianGrid2D& mesh) {
    static const float x[] = {0.0f, 0.5f, 1.0f, 1.25f, 2.0f, 2.5f};
    static const float y[] = {0.0f, 1.0f, 0.25f, 1.5f, 0.0f, 2.0f};
    mesh.setGeometry(3, 2, x, y, kHeights);
}

void setSampleGeometry(PbParalCartesianGrid2D& mesh) {
    static const float x[] = {0.0f, 1.0f, 3.5f}, y[] = {-1.0f, 2.0f};
    mesh.setGeometry(3, 2, x, y);
}

void setSampleGeometry(PbRegularCartesianGrid2D& mesh) {
    mesh.setGeometry(2, 3, -1.0f, 0.5f, 4.0f, 2.5f, kHeights);
}

void setSampleGeometry(PbPolarGrid2D& mesh) {
    static const float r[] = {1.0f, 2.0f, 4.0f}, t[] = {0.0f, 0.5f};
    mesh.setGeometry(3, 2, r, t);
}

void setSampleGeometry(PbIndexedMesh2D& mesh) {
    static const int types[] = {4, 3, 3}, indices[] = {0, 1, 4, 3, 1, 2, 5, 1, 5, 4};
    mesh.setGeometry(6, kX, kY, kHeights, 3, types, indices);
}

void setSampleGeometry(PbTriangleMesh2D& mesh) {
    static const int indices[] = {0, 1, 4, 0, 4, 3};
    mesh.setGeometry(5, kX, kY, 2, indices);
}

void setSampleGeometry(PbQuadrangleMesh2D& mesh) {
    static const int indices[] = {0, 1, 4, 3, 1, 2, 5, 4};
    mesh.setGeometry(6, kX, kY, kHeights, 2, indices);
}

void setSampleGeometry(PbCartesianGrid3D& mesh) {
    static const float x[] = {0, 0.25f, 0, 0.25f, 1, 1.25f, 1, 1.25f};
    static const float y[] = {0, 0, 1, 1, 0, 0, 1, 1};
    static const float z[] = {0, 1, 0, 1, -0.5f, 0.5f, -0.5f, 0.5f};
    mesh.setGeometry(2, 2, 2, x, y, z);
}

void setSampleGeometry(PbParalCartesianGrid3D& mesh) {
    static const float x[] = {0.0f, 2.0f}, y[] = {0.0f, 0.5f, 3.0f}, z[] = {-1.0f, 1.0f};
    mesh.setGeometry(2, 3, 2, x, y, z);
}

void setSampleGeometry(PbRegularCartesianGrid3D& mesh) {
    mesh.setGeometry(2, 2, 3, -1.0f, 0.0f, 0.5f, 1.0f, 4.0f, 2.5f);
}

void setSampleGeometry(PbIndexedMesh3D& mesh) {
    static const int types[] = {4, 5, 6, 8};
    static const int indices[] = {0, 1, 3, 6,                // tetrahedron
                                  0, 1, 4, 3, 6,             // pyramid
                                  0, 1, 3, 6, 7, 9,          // wedge
                                  1, 2, 5, 4, 7, 8, 11, 10}; // hexahedron
    mesh.setGeometry(12, kX, kY, kZ, 4, types, indices);
}

void setSampleGeometry(PbHexahedronMesh3D& mesh) {
    static const int indices[] = {0, 1, 4, 3, 6, 7, 10, 9, 1, 2, 5, 4, 7, 8, 11, 10};
    mesh.setGeometry(12, kX, kY, kZ, 2, indices);
}

void setSampleGeometry(PbTetrahedronMesh3D& mesh) {
    static const int indices[] = {0, 1, 3, 6, 1, 4, 3, 10};
    mesh.setGeometry(12, kX, kY, kZ, 2, indices);
}

void setSampleGeometry(PbIrregularMesh1D& mesh) {
    mesh.setGeometry(4, kHeights);
}

void setSampleGeometry(PbRegularMesh1D& mesh) {
    mesh.setGeometry(5, -1.0f, 3.0f);
}

void addSampleSets(PbMesh& mesh) {
    // Elements for up to 16 nodes or cells, kept for the whole run so that
    // meshes referencing them stay valid.
    struct Elements {
        float nodeValues[16], cellValues[16];
        SbString strings[16];
        SbVec3f vecs[16];
        Elements() {
            for (int i = 0; i < 16; ++i) {
                nodeValues[i] = 0.5f * static_cast<float>(i) - 1.0f;
                cellValues[i] = 10.0f + static_cast<float>(i);
                strings[i] = SbString("node \"") + SbString(i) + "\"";
                vecs[i].setValue(static_cast<float>(i), 0.25f, -static_cast<float>(i));
            }
        }
    };
    static const Elements sets;
    ASSERT_LE(mesh.getNumNodes(), 16);
    mesh.addValuesSet(0, sets.nodeValues, PbMesh::PER_NODE, "pressure");
    mesh.addValuesSet(1, sets.cellValues, PbMesh::PER_CELL, "cell volume");
    mesh.addStringsSet(0, sets.strings, "labels");
    mesh.addVecsSet(0, sets.vecs, PbMesh::PER_NODE, "velocity");
}

namespace {
template <typename T> std::vector<T> elements(const T* values, int count) {
    return values ? std::vector<T>(values, values + count) : std::vector<T>();
}

std::vector<int> cellNodes(const PbMesh& mesh, int cell) {
    PbArrayOfInt nodes;
    mesh.getCell(cell)->getNodesIndex(nodes);
    return elements(nodes.get(), nodes.getNum());
}

// The sets of one kind under the keys 0 to count - 1; string sets have no
// binding and are per node.
template <typename T>
void expectSameSetsOf(const PbMesh& expected, const PbMesh& actual,
                      int (PbMesh::*countOf)(void) const, const T* (PbMesh::*elementsOf)(int) const,
                      const SbString* (PbMesh::*nameOf)(int) const,
                      PbMesh::DataBinding (PbMesh::*bindingOf)(int) const) {
    ASSERT_EQ((actual.*countOf)(), (expected.*countOf)());
    for (int set = 0; set < (expected.*countOf)(); ++set) {
        const PbMesh::DataBinding binding =
            bindingOf ? (expected.*bindingOf)(set) : PbMesh::PER_NODE;
        const int count =
            binding == PbMesh::PER_NODE ? expected.getNumNodes() : expected.getNumCells();
        ASSERT_NE((actual.*elementsOf)(set), nullptr) << "set " << set;
        EXPECT_EQ(bindingOf ? (actual.*bindingOf)(set) : binding, binding);
        EXPECT_EQ(*(actual.*nameOf)(set), *(expected.*nameOf)(set));
        EXPECT_EQ(elements((actual.*elementsOf)(set), count),
                  elements((expected.*elementsOf)(set), count));
    }
}
} // namespace

void expectSameMesh(const PbMesh& expected, const PbMesh& actual) {
    ASSERT_EQ(expected.getNumNodes(), actual.getNumNodes());
    ASSERT_EQ(expected.getNumCells(), actual.getNumCells());
    for (int node = 0; node < expected.getNumNodes(); ++node)
        EXPECT_EQ(expected.getNodeCoord(node), actual.getNodeCoord(node)) << "node " << node;
    for (int cell = 0; cell < expected.getNumCells() && expected.getCell(cell); ++cell)
        EXPECT_EQ(cellNodes(expected, cell), cellNodes(actual, cell)) << "cell " << cell;
    if (const auto* expected2D = dynamic_cast<const PbMesh2D*>(&expected)) {
        const float* z = dynamic_cast<const PbMesh2D&>(actual).getZcoord();
        EXPECT_EQ(expected2D->getZcoord() == nullptr, z == nullptr);
        EXPECT_EQ(elements(expected2D->getZcoord(), expected.getNumNodes()),
                  elements(z, actual.getNumNodes()));
    }
    expectSameSetsOf(expected, actual, &PbMesh::getNumValuesSet, &PbMesh::getValuesSet,
                     &PbMesh::getValuesSetName, &PbMesh::getValuesBinding);
    expectSameSetsOf<SbString>(expected, actual, &PbMesh::getNumStringsSet, &PbMesh::getStringsSet,
                               &PbMesh::getStringsSetName, nullptr);
    expectSameSetsOf(expected, actual, &PbMesh::getNumVecsSet, &PbMesh::getVecsSet,
                     &PbMesh::getVecsSetName, &PbMesh::getVecsBinding);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace meshfieldtest
