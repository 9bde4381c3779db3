#include "nodes/MeshFieldTestHelpers.h"

#include <Inventor/errors/SoReadError.h>

#include <sstream>

namespace meshfieldtest {

namespace {
const float kX4[] = {0.0f, 1.5f, 1.0f, -0.25f};
const float kY4[] = {0.0f, 0.0f, 2.0f, 1.75f};
const float kZ4[] = {0.5f, -1.0f, 2.25f, 3.0f};
} // namespace

void setSampleGeometry(PbCartesianGrid2D& mesh) {
    static const float x[] = {0.0f, 0.5f, 1.0f, 1.25f, 2.0f, 2.5f};
    static const float y[] = {0.0f, 1.0f, 0.25f, 1.5f, 0.0f, 2.0f};
    static const float z[] = {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.5f};
    mesh.setGeometry(3, 2, x, y, z);
}

void setSampleGeometry(PbParalCartesianGrid2D& mesh) {
    static const float x[] = {0.0f, 1.0f, 3.5f};
    static const float y[] = {-1.0f, 2.0f};
    mesh.setGeometry(3, 2, x, y);
}

void setSampleGeometry(PbRegularCartesianGrid2D& mesh) {
    static const float z[] = {0.0f, 0.5f, 1.0f, 1.5f, 2.0f, 2.5f};
    mesh.setGeometry(2, 3, -1.0f, 0.5f, 4.0f, 2.5f, z);
}

void setSampleGeometry(PbPolarGrid2D& mesh) {
    static const float r[] = {1.0f, 2.0f, 4.0f};
    static const float t[] = {0.0f, 0.5f};
    mesh.setGeometry(3, 2, r, t);
}

void setSampleGeometry(PbIndexedMesh2D& mesh) {
    static const float x[] = {0.0f, 1.0f, 1.0f, 0.0f, 2.0f};
    static const float y[] = {0.0f, 0.0f, 1.0f, 1.0f, 0.5f};
    static const float z[] = {0.0f, 0.25f, 0.5f, 0.75f, 1.0f};
    static const int types[] = {4, 3};
    static const int indices[] = {0, 1, 2, 3, 1, 4, 2};
    mesh.setGeometry(5, x, y, z, 2, types, indices);
}

void setSampleGeometry(PbTriangleMesh2D& mesh) {
    static const int indices[] = {0, 1, 2, 0, 2, 3};
    mesh.setGeometry(4, kX4, kY4, 2, indices);
}

void setSampleGeometry(PbQuadrangleMesh2D& mesh) {
    static const float x[] = {0.0f, 1.0f, 2.0f, 0.0f, 1.0f, 2.0f};
    static const float y[] = {0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f};
    static const float z[] = {0.0f, 1.0f, 0.0f, 1.0f, 0.0f, 1.0f};
    static const int indices[] = {0, 1, 4, 3, 1, 2, 5, 4};
    mesh.setGeometry(6, x, y, z, 2, indices);
}

void setSampleGeometry(PbCartesianGrid3D& mesh) {
    static float x[8], y[8], z[8];
    for (int node = 0; node < 8; ++node) {
        x[node] = static_cast<float>(node / 4) + 0.25f * static_cast<float>(node % 2);
        y[node] = static_cast<float>(node / 2 % 2);
        z[node] = static_cast<float>(node % 2) - 0.5f * static_cast<float>(node / 4);
    }
    mesh.setGeometry(2, 2, 2, x, y, z);
}

void setSampleGeometry(PbParalCartesianGrid3D& mesh) {
    static const float x[] = {0.0f, 2.0f};
    static const float y[] = {0.0f, 0.5f, 3.0f};
    static const float z[] = {-1.0f, 1.0f};
    mesh.setGeometry(2, 3, 2, x, y, z);
}

void setSampleGeometry(PbRegularCartesianGrid3D& mesh) {
    mesh.setGeometry(2, 2, 3, -1.0f, 0.0f, 0.5f, 1.0f, 4.0f, 2.5f);
}

void setSampleGeometry(PbIndexedMesh3D& mesh) {
    static float x[10], y[10], z[10];
    for (int node = 0; node < 10; ++node) {
        x[node] = static_cast<float>(node % 3);
        y[node] = static_cast<float>(node / 3 % 2);
        z[node] = 0.5f * static_cast<float>(node / 6);
    }
    static const int types[] = {4, 5, 6, 8};
    static const int indices[] = {0, 1, 3, 6,              // tetrahedron
                                  0, 1, 4, 3, 6,           // pyramid
                                  0, 1, 3, 6, 7, 9,        // wedge
                                  0, 1, 4, 3, 6, 7, 8, 9}; // hexahedron
    mesh.setGeometry(10, x, y, z, 4, types, indices);
}

void setSampleGeometry(PbHexahedronMesh3D& mesh) {
    static float x[12], y[12], z[12];
    for (int node = 0; node < 12; ++node) {
        x[node] = static_cast<float>(node % 3);
        y[node] = static_cast<float>(node / 3 % 2);
        z[node] = static_cast<float>(node / 6);
    }
    static const int indices[] = {0, 1, 4, 3, 6, 7, 10, 9, 1, 2, 5, 4, 7, 8, 11, 10};
    mesh.setGeometry(12, x, y, z, 2, indices);
}

void setSampleGeometry(PbTetrahedronMesh3D& mesh) {
    static const float x[] = {0.0f, 1.0f, 0.0f, 0.0f, 1.0f};
    static const float y[] = {0.0f, 0.0f, 1.0f, 0.0f, 1.0f};
    static const float z[] = {0.0f, 0.0f, 0.0f, 1.0f, 1.0f};
    static const int indices[] = {0, 1, 2, 3, 1, 2, 3, 4};
    mesh.setGeometry(5, x, y, z, 2, indices);
}

void setSampleGeometry(PbIrregularMesh1D& mesh) {
    mesh.setGeometry(4, kZ4);
}

void setSampleGeometry(PbRegularMesh1D& mesh) {
    mesh.setGeometry(5, -1.0f, 3.0f);
}

namespace {
// Set elements for up to kMaxElements nodes or cells, kept for the whole
// run so that meshes referencing them stay valid.
const int kMaxElements = 16;

struct SampleSets {
    float nodeValues[kMaxElements];
    float cellValues[kMaxElements];
    SbString strings[kMaxElements];
    SbVec3f vecs[kMaxElements];

    SampleSets() {
        for (int i = 0; i < kMaxElements; ++i) {
            nodeValues[i] = 0.5f * static_cast<float>(i) - 1.0f;
            cellValues[i] = 10.0f + static_cast<float>(i);
            strings[i] = SbString("node \"") + SbString(i) + "\"";
            vecs[i].setValue(static_cast<float>(i), 0.25f, -static_cast<float>(i));
        }
    }
};

const SampleSets& sampleSets() {
    static const SampleSets sets;
    return sets;
}
} // namespace

void addSampleSets(PbMesh& mesh) {
    ASSERT_LE(mesh.getNumNodes(), kMaxElements);
    const SampleSets& sets = sampleSets();
    mesh.addValuesSet(0, sets.nodeValues, PbMesh::PER_NODE, "pressure");
    mesh.addValuesSet(1, sets.cellValues, PbMesh::PER_CELL, "cell volume");
    mesh.addStringsSet(0, sets.strings, "labels");
    mesh.addVecsSet(0, sets.vecs, PbMesh::PER_NODE, "velocity");
}

namespace {
template <typename T> std::vector<T> elements(const T* values, int count) {
    return values ? std::vector<T>(values, values + count) : std::vector<T>();
}

int countOf(const PbMesh& mesh, PbMesh::DataBinding binding) {
    return binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells();
}

std::vector<int> cellNodes(const PbMesh& mesh, int cell) {
    PbArrayOfInt nodes;
    mesh.getCell(cell)->getNodesIndex(nodes);
    return std::vector<int>(nodes.get(), nodes.get() + nodes.getNum());
}

void expectSameZ(const PbMesh& expected, const PbMesh& actual) {
    const auto* expected2D = dynamic_cast<const PbMesh2D*>(&expected);
    if (!expected2D)
        return;
    const float* z = dynamic_cast<const PbMesh2D&>(actual).getZcoord();
    EXPECT_EQ(expected2D->getZcoord() == nullptr, z == nullptr);
    EXPECT_EQ(elements(expected2D->getZcoord(), expected.getNumNodes()),
              elements(z, actual.getNumNodes()));
}

// The sets of one kind under the keys 0 to count - 1; string sets have no
// binding and are per node.
template <typename T>
void expectSameSetsOf(const PbMesh& expected, const PbMesh& actual, int count,
                      const T* (PbMesh::*elementsOf)(int) const,
                      const SbString* (PbMesh::*nameOf)(int) const,
                      PbMesh::DataBinding (PbMesh::*bindingOf)(int) const) {
    for (int set = 0; set < count; ++set) {
        const PbMesh::DataBinding binding =
            bindingOf ? (expected.*bindingOf)(set) : PbMesh::PER_NODE;
        ASSERT_NE((actual.*elementsOf)(set), nullptr) << "set " << set;
        if (bindingOf) {
            EXPECT_EQ((actual.*bindingOf)(set), binding);
        }
        EXPECT_EQ(*(actual.*nameOf)(set), *(expected.*nameOf)(set));
        EXPECT_EQ(elements((actual.*elementsOf)(set), countOf(actual, binding)),
                  elements((expected.*elementsOf)(set), countOf(expected, binding)));
    }
}

void expectSameSets(const PbMesh& expected, const PbMesh& actual) {
    ASSERT_EQ(expected.getNumValuesSet(), actual.getNumValuesSet());
    ASSERT_EQ(expected.getNumStringsSet(), actual.getNumStringsSet());
    ASSERT_EQ(expected.getNumVecsSet(), actual.getNumVecsSet());
    expectSameSetsOf(expected, actual, expected.getNumValuesSet(), &PbMesh::getValuesSet,
                     &PbMesh::getValuesSetName, &PbMesh::getValuesBinding);
    expectSameSetsOf<SbString>(expected, actual, expected.getNumStringsSet(),
                               &PbMesh::getStringsSet, &PbMesh::getStringsSetName, nullptr);
    expectSameSetsOf(expected, actual, expected.getNumVecsSet(), &PbMesh::getVecsSet,
                     &PbMesh::getVecsSetName, &PbMesh::getVecsBinding);
}
} // namespace

void expectSameMesh(const PbMesh& expected, const PbMesh& actual) {
    ASSERT_EQ(expected.getNumNodes(), actual.getNumNodes());
    ASSERT_EQ(expected.getNumCells(), actual.getNumCells());
    for (int node = 0; node < expected.getNumNodes(); ++node)
        EXPECT_EQ(expected.getNodeCoord(node), actual.getNodeCoord(node)) << "node " << node;
    for (int cell = 0; cell < expected.getNumCells() && expected.getCell(cell); ++cell)
        EXPECT_EQ(cellNodes(expected, cell), cellNodes(actual, cell)) << "cell " << cell;
    expectSameZ(expected, actual);
    expectSameSets(expected, actual);
}

ReadErrorRecorder::ReadErrorRecorder()
    : m_previousHandler(SoReadError::getHandlerCallback()),
      m_previousData(SoReadError::getHandlerData()) {
    SoReadError::setHandlerCallback(&ReadErrorRecorder::record, this);
}

ReadErrorRecorder::~ReadErrorRecorder() {
    SoReadError::setHandlerCallback(m_previousHandler, m_previousData);
}

void ReadErrorRecorder::record(const SoError* error, void* data) {
    static_cast<ReadErrorRecorder*>(data)->m_messages.push_back(
        error->getDebugString().getString());
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace meshfieldtest
