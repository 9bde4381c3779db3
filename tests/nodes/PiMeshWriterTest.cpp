#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <algorithm>

using namespace meshfieldtest;

class PiMeshWriterTest : public MeshFieldTest {};

TEST_F(PiMeshWriterTest, WritesAGridWithItsSetsLetterForLetter) {
    // A 4 x 5 grid: 20 nodes fill more than a line of 15 floats, 8 strings
    // or 5 vectors; 12 cells.
    std::vector<float> x, y, nodeValues, cellValues;
    std::vector<SbString> labels;
    std::vector<SbVec3f> vecs;
    for (int node = 0; node < 20; ++node) {
        x.push_back(static_cast<float>(node / 5));
        y.push_back(0.5f * static_cast<float>(node % 5));
        nodeValues.push_back(static_cast<float>(node));
        labels.push_back(SbString("n") + SbString(node));
        vecs.emplace_back(static_cast<float>(node), 0.0f, 1.0f);
    }
    for (int cell = 0; cell < 12; ++cell)
        cellValues.push_back(-1.0f - static_cast<float>(cell));
    auto* node = new PoCartesianGrid2D;
    node->ref();
    node->setGeometry(4, 5, x.data(), y.data());
    node->mesh.addValuesSet(0, nodeValues.data(), "temperature");
    node->mesh.addValuesSet(1, cellValues.data(), PoMeshProperty::PER_CELL, "area");
    node->mesh.addStringsSet(0, labels.data(), "labels");
    node->mesh.addVecsSet(0, vecs.data(), "wind");

    const std::vector<std::string> expected = {
        "#Inventor V2.1 ascii",
        "",
        "",
        "PoCartesianGrid2D {",
        "  fields [ PoSFCartesianGrid2D mesh ]",
        "  mesh ",
        "    4 5    # num_x, num_y",
        "    # x coordinates of mesh nodes",
        "    0 0 0 0 0 1 1 1 1 1 2 2 2 2 2 ",
        "    3 3 3 3 3 ",
        "    # y coordinates of mesh nodes",
        "    0 0.5 1 1.5 2 0 0.5 1 1.5 2 0 0.5 1 1.5 2 ",
        "    0 0.5 1 1.5 2 ",
        "    0    # 2D mesh",
        "    1    # number of string data-set",
        "    2    # number of scalar data-set",
        "    1    # number of vector data-set",
        "    # set of scalars, index 0, binding per node",
        "    \"temperature\"   # set name",
        "    0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 ",
        "    15 16 17 18 19 ",
        "    # set of scalars, index 1, binding per cell",
        "    \"area\"   # set name",
        "    -1 -2 -3 -4 -5 -6 -7 -8 -9 -10 -11 -12 ",
        "    # set of strings, index 0",
        "    \"labels\"   # set name",
        "    \"n0\" \"n1\" \"n2\" \"n3\" \"n4\" \"n5\" \"n6\" \"n7\" ",
        "    \"n8\" \"n9\" \"n10\" \"n11\" \"n12\" \"n13\" \"n14\" \"n15\" ",
        "    \"n16\" \"n17\" \"n18\" \"n19\" ",
        "    # set of vectors, index 0",
        "    \"wind\"   # set name",
        "    0 0 1 1 0 1 2 0 1 3 0 1 4 0 1 ",
        "    5 0 1 6 0 1 7 0 1 8 0 1 9 0 1 ",
        "    10 0 1 11 0 1 12 0 1 13 0 1 14 0 1 ",
        "    15 0 1 16 0 1 17 0 1 18 0 1 19 0 1 ",
        "",
        "",
        "}",
    };
    const std::string text = SceneIO::write(node);
    EXPECT_EQ(linesOf(text), expected) << text;

    // The per-cell set comes back per cell, from its comment.
    SoNode* read = SceneIO::read(text);
    ASSERT_NE(read, nullptr) << ::testing::PrintToString(readErrors());
    read->ref();
    const PbCartesianGrid2D& mesh = static_cast<PoCartesianGrid2D*>(read)->mesh.getValue();
    EXPECT_EQ(mesh.getValuesBinding(1), PbMesh::PER_CELL);
    EXPECT_EQ(std::vector<float>(mesh.getValuesSet(1), mesh.getValuesSet(1) + 12), cellValues);
    read->unref();
    node->unref();
}

TEST_F(PiMeshWriterTest, WritesCellsThirtyIndicesToALineAndRegularGridsByTheirCorners) {
    const auto linesAfter = [](SoField& field, const std::string& line, size_t count) {
        SbString text;
        field.get(text);
        const std::vector<std::string> lines = linesOf(text.getString());
        const auto found = std::find(lines.begin(), lines.end(), line);
        return found == lines.end() || lines.end() - found < static_cast<long>(count + 1)
                   ? std::vector<std::string>()
                   : std::vector<std::string>(found + 1, found + 1 + count);
    };
    PoSFIndexedMesh3D indexed;
    indexed.setValue(Kind<PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D>::sample());
    EXPECT_EQ(linesAfter(indexed, "  4    # num cells", 4),
              (std::vector<std::string>{"  # cell's type", "  4 5 6 8 ", "  # cell's indices",
                                        "  0 1 3 6 0 1 4 3 6 0 1 3 6 7 9 1 2 5 4 7 8 11 10 "}));

    std::vector<int> indices;
    std::string thirty = "  ";
    for (int cell = 0; cell < 11; ++cell) {
        indices.insert(indices.end(), {0, 1, 2});
        if (cell < 10)
            thirty += "0 1 2 ";
    }
    const float x[] = {0, 1, 0}, y[] = {0, 0, 1};
    PoSFTriangleMesh2D triangles;
    triangles.setGeometry(3, x, y, 11, indices.data());
    EXPECT_EQ(linesAfter(triangles, "  # cell's indices", 2),
              (std::vector<std::string>{thirty, "  0 1 2 "}));

    PoSFRegularCartesianGrid3D regular;
    regular.setGeometry(2, 2, 3, -1.0f, 0.0f, 0.5f, 1.0f, 4.0f, 2.5f);
    EXPECT_EQ(linesAfter(regular, "", 3),
              (std::vector<std::string>{"  2 2 3    # num_x, num_y, num_z",
                                        "  -1 0 0.5    # x_min, y_min, z_min",
                                        "  1 4 2.5    # x_max, y_max, z_max"}));
}

TEST_F(PiMeshWriterTest, WritesTheNthSetOfEachKindAsSetN) {
    PoSFRegularMesh1D field;
    field.setGeometry(2, 0.0f, 1.0f);
    const float three[] = {3.0f, 3.5f}, seven[] = {7.0f};
    const SbString strings[] = {"p", "q"};
    field.addValuesSet(7, seven, PoMeshProperty::PER_CELL, "seven");
    field.addValuesSet(3, three, "three");
    field.addValuesSet(-2000000000, three, "far");
    field.addStringsSet(-4, strings, "minus four");
    SbString text;
    field.get(text);
    const std::string written = text.getString();
    for (const char* set : {"# set of scalars, index 0, binding per node\n  \"far\"",
                            "# set of scalars, index 1, binding per node\n  \"three\"",
                            "# set of scalars, index 2, binding per cell\n  \"seven\"",
                            "# set of strings, index 0\n  \"minus four\""})
        EXPECT_NE(written.find(set), std::string::npos) << set << " in\n" << written;
}

TEST_F(PiMeshWriterTest, PerCellVectorSetsKeepTheirBindingInBinaryAndAreWrittenPerNodeInAscii) {
    auto* node = new PoIrregularMesh1D;
    node->ref();
    const float x[] = {0, 1, 2};
    node->setGeometry(3, x);
    PbIrregularMesh1D withVecs = node->mesh.getValue();
    const SbVec3f perCell[] = {SbVec3f(1, 2, 3), SbVec3f(4, 5, 6)};
    withVecs.addVecsSet(0, perCell, PbMesh::PER_CELL, "flux");
    node->mesh.setValue(withVecs);

    SoNode* read = SceneIO::roundTrip(node, true);
    ASSERT_NE(read, nullptr) << ::testing::PrintToString(readErrors());
    read->ref();
    const PbIrregularMesh1D& binary = static_cast<PoIrregularMesh1D*>(read)->mesh.getValue();
    EXPECT_EQ(binary.getVecsBinding(0), PbMesh::PER_CELL);
    EXPECT_EQ(std::vector<SbVec3f>(binary.getVecsSet(0), binary.getVecsSet(0) + 2),
              std::vector<SbVec3f>(perCell, perCell + 2));
    read->unref();
    EXPECT_TRUE(errors().messages().empty());

    const std::string text = SceneIO::write(node);
    EXPECT_TRUE(errors().contains("vector set 0 is bound per cell"));
    EXPECT_NE(text.find("\"flux\"   # set name\n    1 2 3 4 5 6 0 0 0 \n"), std::string::npos)
        << text;
    node->unref();
}
