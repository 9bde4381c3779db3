#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

using namespace meshfieldtest;

class PoSFCartesianGrid2DTest : public MeshFieldTest {};

TEST_F(PoSFCartesianGrid2DTest, WritesTheSceneFileLayoutLetterForLetter) {
    // A 4 x 5 grid: 20 nodes cross the line of 15 floats; 12 cells.
    std::vector<float> x, y, nodeValues, cellValues;
    for (int node = 0; node < 20; ++node) {
        x.push_back(static_cast<float>(node / 5));
        y.push_back(0.5f * static_cast<float>(node % 5));
        nodeValues.push_back(static_cast<float>(node));
    }
    for (int cell = 0; cell < 12; ++cell)
        cellValues.push_back(-1.0f - static_cast<float>(cell));
    auto* node = new PoCartesianGrid2D;
    node->ref();
    node->setGeometry(4, 5, x.data(), y.data());
    node->mesh.addValuesSet(0, nodeValues.data(), "temperature");
    node->mesh.addValuesSet(1, cellValues.data(), PoMeshProperty::PER_CELL, "area");

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
        "    0    # number of string data-set",
        "    2    # number of scalar data-set",
        "    0    # number of vector data-set",
        "    # set of scalars, index 0, binding per node",
        "    \"temperature\"   # set name",
        "    0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 ",
        "    15 16 17 18 19 ",
        "    # set of scalars, index 1, binding per cell",
        "    \"area\"   # set name",
        "    -1 -2 -3 -4 -5 -6 -7 -8 -9 -10 -11 -12 ",
        "",
        "",
        "}",
    };
    const std::string text = SceneIO::write(node);
    EXPECT_EQ(linesOf(text), expected) << text;

    // The per-cell set comes back per cell, from the comment.
    SoNode* read = SceneIO::read(text);
    ASSERT_NE(read, nullptr) << ::testing::PrintToString(readErrors());
    read->ref();
    const PbCartesianGrid2D& mesh = static_cast<PoCartesianGrid2D*>(read)->mesh.getValue();
    EXPECT_EQ(mesh.getZcoord(), nullptr);
    EXPECT_EQ(mesh.getValuesBinding(1), PbMesh::PER_CELL);
    EXPECT_EQ(std::vector<float>(mesh.getValuesSet(1), mesh.getValuesSet(1) + 12), cellValues);
    read->unref();
    node->unref();
}
