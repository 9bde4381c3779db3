#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <cstring>
#include <sstream>

using namespace meshfieldtest;

namespace {
// The comments of a field's header, in order, each from its '#'.
template <class K> std::vector<std::string> headerComments() {
    typename K::Field field;
    field.setValue(K::sample());
    SbString text;
    field.get(text);
    std::vector<std::string> comments;
    for (const std::string& line : linesOf(text.getString())) {
        const size_t hash = line.find('#');
        if (hash == std::string::npos)
            continue;
        if (line.find("number of string data-set") != std::string::npos)
            break;
        comments.push_back(line.substr(hash));
    }
    return comments;
}

// The number of values on each line of a field's text that follow the
// line containing after, up to the next comment.
std::vector<int> valuesPerLine(const std::string& text, const std::string& after) {
    std::vector<int> counts;
    bool inside = false;
    for (const std::string& line : linesOf(text)) {
        if (inside && (line.find('#') != std::string::npos || line.empty()))
            break;
        if (inside) {
            std::istringstream values(line);
            int count = 0;
            for (std::string value; values >> value;)
                ++count;
            counts.push_back(count);
        }
        inside = inside || line.find(after) != std::string::npos;
    }
    return counts;
}
} // namespace

class PiMeshWriterTest : public MeshFieldTest {};

TEST_F(PiMeshWriterTest, WritesTheHeaderCommentsOfEveryFieldTypeInOrder) {
    const std::string numX = "# num_x, num_y";
    const std::string num3D = "# num_x, num_y, num_z";
    const std::string xNodes = "# x coordinates of mesh nodes";
    const std::string yNodes = "# y coordinates of mesh nodes";
    const std::string zNodes = "# z coordinates of mesh nodes";
    const std::string nodes = "# num nodes", cells = "# num cells", types = "# cell's type",
                      indices = "# cell's indices";
    using Strings = std::vector<std::string>;
    EXPECT_EQ((headerComments<Kind<PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D>>()),
              (Strings{numX, xNodes, yNodes, "# 3D mesh", zNodes}));
    EXPECT_EQ(
        (headerComments<
            Kind<PoParalCartesianGrid2D, PoSFParalCartesianGrid2D, PbParalCartesianGrid2D>>()),
        (Strings{numX, "# x coordinates of mesh", "# y coordinates of mesh", "# 2D mesh"}));
    EXPECT_EQ((headerComments<Kind<PoRegularCartesianGrid2D, PoSFRegularCartesianGrid2D,
                                   PbRegularCartesianGrid2D>>()),
              (Strings{numX, "# x_min, y_min", "# x_max, y_max", "# 3D mesh",
                       "# z coordinates of mesh"}));
    EXPECT_EQ((headerComments<Kind<PoPolarGrid2D, PoSFPolarGrid2D, PbPolarGrid2D>>()),
              (Strings{"# num_r, num_t", "# r coordinates of mesh nodes",
                       "# t coordinates of mesh nodes", "# 2D mesh"}));
    EXPECT_EQ((headerComments<Kind<PoIndexedMesh2D, PoSFIndexedMesh2D, PbIndexedMesh2D>>()),
              (Strings{nodes, xNodes, yNodes, "# 3D mesh", zNodes, cells, types, indices}));
    EXPECT_EQ((headerComments<Kind<PoTriangleMesh2D, PoSFTriangleMesh2D, PbTriangleMesh2D>>()),
              (Strings{nodes, xNodes, yNodes, "# 2D mesh", cells, indices}));
    EXPECT_EQ(
        (headerComments<Kind<PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D>>()),
        (Strings{nodes, xNodes, yNodes, "# 3D mesh", zNodes, cells, indices}));
    EXPECT_EQ((headerComments<Kind<PoCartesianGrid3D, PoSFCartesianGrid3D, PbCartesianGrid3D>>()),
              (Strings{num3D, xNodes, yNodes, zNodes}));
    EXPECT_EQ(
        (headerComments<
            Kind<PoParalCartesianGrid3D, PoSFParalCartesianGrid3D, PbParalCartesianGrid3D>>()),
        (Strings{num3D, "# x coordinates of mesh", "# y coordinates of mesh",
                 "# z coordinates of mesh"}));
    EXPECT_EQ((headerComments<Kind<PoRegularCartesianGrid3D, PoSFRegularCartesianGrid3D,
                                   PbRegularCartesianGrid3D>>()),
              (Strings{num3D, "# x_min, y_min, z_min", "# x_max, y_max, z_max"}));
    EXPECT_EQ((headerComments<Kind<PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D>>()),
              (Strings{nodes, xNodes, yNodes, zNodes, cells, types, indices}));
    for (const Strings& comments :
         {headerComments<Kind<PoHexahedronMesh3D, PoSFHexahedronMesh3D, PbHexahedronMesh3D>>(),
          headerComments<Kind<PoTetrahedronMesh3D, PoSFTetrahedronMesh3D, PbTetrahedronMesh3D>>()})
        EXPECT_EQ(comments, (Strings{nodes, xNodes, yNodes, zNodes, cells, indices}));
    EXPECT_EQ((headerComments<Kind<PoIrregularMesh1D, PoSFIrregularMesh1D, PbIrregularMesh1D>>()),
              (Strings{"# size", xNodes}));
    EXPECT_EQ((headerComments<Kind<PoRegularMesh1D, PoSFRegularMesh1D, PbRegularMesh1D>>()),
              (Strings{"# size", "# xmin and xmax coordinates of mesh nodes"}));
}

TEST_F(PiMeshWriterTest, WritesTheValuesOfUnstructuredAndRegularHeaders) {
    PoSFIndexedMesh3D indexed;
    indexed.setValue(Kind<PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D>::sample());
    SbString text;
    indexed.get(text);
    const std::vector<std::string> lines = linesOf(text.getString());
    const auto cellTypes = std::find(lines.begin(), lines.end(), "  # cell's type");
    ASSERT_NE(cellTypes, lines.end());
    EXPECT_EQ(*(cellTypes - 1), "  4    # num cells");
    EXPECT_EQ(*(cellTypes + 1), "  4 5 6 8 ");
    EXPECT_EQ(*(cellTypes + 2), "  # cell's indices");
    EXPECT_EQ(*(cellTypes + 3), "  0 1 3 6 0 1 4 3 6 0 1 3 6 7 9 0 1 4 3 6 7 8 9 ");

    PoSFRegularCartesianGrid3D regular;
    regular.setValue(Kind<PoRegularCartesianGrid3D, PoSFRegularCartesianGrid3D,
                          PbRegularCartesianGrid3D>::sample());
    regular.get(text);
    const std::vector<std::string> regularLines = linesOf(text.getString());
    const std::vector<std::string> header(regularLines.begin() + 1, regularLines.begin() + 4);
    EXPECT_EQ(header, (std::vector<std::string>{"  2 2 3    # num_x, num_y, num_z",
                                                "  -1 0 0.5    # x_min, y_min, z_min",
                                                "  1 4 2.5    # x_max, y_max, z_max"}));
}

TEST_F(PiMeshWriterTest, PutsThirtyIntegersEightStringsAndFiveVectorsToALine) {
    std::vector<int> indices;
    for (int cell = 0; cell < 11; ++cell)
        indices.insert(indices.end(), {0, 1, 2});
    const float x[] = {0, 1, 0}, y[] = {0, 0, 1};
    PoSFTriangleMesh2D triangles;
    triangles.setGeometry(3, x, y, 11, indices.data());
    SbString text;
    triangles.get(text);
    EXPECT_EQ(valuesPerLine(text.getString(), "# cell's indices"), (std::vector<int>{30, 3}));

    PoSFHexahedronMesh3D hexahedra;
    hexahedra.setValue(
        Kind<PoHexahedronMesh3D, PoSFHexahedronMesh3D, PbHexahedronMesh3D>::sample());
    hexahedra.get(text);
    EXPECT_EQ(valuesPerLine(text.getString(), "# x coordinates"), (std::vector<int>{12}));
    // Strings hold two words each ("node", "\"3\""): 8 + 4 strings.
    EXPECT_EQ(valuesPerLine(text.getString(), "\"labels\""), (std::vector<int>{16, 8}));
    // Three floats a vector: 5 + 5 + 2 vectors.
    EXPECT_EQ(valuesPerLine(text.getString(), "\"velocity\""), (std::vector<int>{15, 15, 6}));
}

TEST_F(PiMeshWriterTest, WritesTheNthSetOfEachKindAsSetN) {
    PoSFRegularMesh1D field;
    field.setGeometry(2, 0.0f, 1.0f);
    const float three[] = {3.0f, 3.5f}, seven[] = {7.0f};
    const SbString strings[] = {"p", "q"};
    field.addValuesSet(7, seven, PoMeshProperty::PER_CELL, "seven");
    field.addValuesSet(3, three, "three");
    field.addStringsSet(-4, strings, "minus four");
    SbString text;
    field.get(text);
    const std::string written = text.getString();
    EXPECT_NE(written.find("# set of scalars, index 0, binding per node\n  \"three\""),
              std::string::npos)
        << written;
    EXPECT_NE(written.find("# set of scalars, index 1, binding per cell\n  \"seven\""),
              std::string::npos);
    EXPECT_NE(written.find("# set of strings, index 0\n  \"minus four\""), std::string::npos);

    PoSFRegularMesh1D read;
    ASSERT_TRUE(read.set(text.getString()));
    const PbRegularMesh1D& mesh = read.getValue();
    EXPECT_EQ(*mesh.getValuesSetName(0), SbString("three"));
    EXPECT_EQ(mesh.getValuesSet(1)[0], 7.0f);
    EXPECT_EQ(mesh.getValuesBinding(1), PbMesh::PER_CELL);
    EXPECT_EQ(mesh.getStringsSet(0)[1], SbString("q"));
    EXPECT_EQ(mesh.getValuesSet(3), nullptr);
}

TEST_F(PiMeshWriterTest, BinaryFilesKeepEveryBitAndEveryBinding) {
    const float awkward[] = {1.0f / 3.0f, 1e-40f, -0.0f, 16777215.0f, 3.4028235e38f, 0.1f};
    auto* node = new PoIrregularMesh1D;
    node->ref();
    node->setGeometry(6, awkward);
    node->mesh.addValuesSet(0, awkward, PoMeshProperty::PER_CELL, "cells");
    const SbVec3f vecs[] = {SbVec3f(1.0f / 7.0f, 2, 3), SbVec3f(4, 5, 6), SbVec3f(7, 8, 9),
                            SbVec3f(1, 1, 1), SbVec3f(2, 2, 2)};
    PbIrregularMesh1D withVecs = node->mesh.getValue();
    withVecs.addVecsSet(0, vecs, PbMesh::PER_CELL, "per cell");
    node->mesh.setValue(withVecs);

    SoNode* read = SceneIO::roundTrip(node, true);
    ASSERT_NE(read, nullptr) << ::testing::PrintToString(readErrors());
    read->ref();
    const PbIrregularMesh1D& mesh = static_cast<PoIrregularMesh1D*>(read)->mesh.getValue();
    const float* x;
    int size;
    mesh.getGeometry(size, x);
    ASSERT_EQ(size, 6);
    EXPECT_EQ(std::memcmp(x, awkward, sizeof awkward), 0);
    EXPECT_EQ(std::memcmp(mesh.getValuesSet(0), awkward, 5 * sizeof(float)), 0);
    EXPECT_EQ(mesh.getVecsBinding(0), PbMesh::PER_CELL);
    EXPECT_EQ(std::vector<SbVec3f>(mesh.getVecsSet(0), mesh.getVecsSet(0) + 5),
              std::vector<SbVec3f>(vecs, vecs + 5));
    read->unref();
    node->unref();
    EXPECT_TRUE(errors().messages().empty());
}

TEST_F(PiMeshWriterTest, AsciiFilesKeepOneVectorPerNode) {
    PoSFIrregularMesh1D field;
    const float x[] = {0, 1, 2};
    field.setGeometry(3, x);
    PbIrregularMesh1D mesh = field.getValue();
    const SbVec3f perCell[] = {SbVec3f(1, 2, 3), SbVec3f(4, 5, 6)};
    mesh.addVecsSet(0, perCell, PbMesh::PER_CELL, "flux");
    field.setValue(mesh);

    SbString text;
    field.get(text);
    EXPECT_TRUE(errors().contains("vector set 0 is bound per cell"));
    EXPECT_NE(std::string(text.getString()).find("\"flux\"   # set name\n  1 2 3 4 5 6 0 0 0 \n"),
              std::string::npos)
        << text.getString();
    PoSFIrregularMesh1D read;
    ASSERT_TRUE(read.set(text.getString()));
    EXPECT_EQ(read.getValue().getVecsBinding(0), PbMesh::PER_NODE);
    EXPECT_EQ(read.getValue().getVecsSet(0)[1], SbVec3f(4, 5, 6));
}
