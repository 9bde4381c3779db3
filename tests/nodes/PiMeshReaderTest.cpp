#include "nodes/MeshFieldTestHelpers.h"
#include "support/SceneIO.h"

#include <regex>

using namespace meshfieldtest;

namespace {
const char* const kHeader = "#Inventor V2.1 ascii\n\n";

// A 2 x 2 grid node around the given sets text.
std::string gridScene(const std::string& sets) {
    return std::string(kHeader) +
           "PoCartesianGrid2D {\n"
           "  mesh\n"
           "    2 2    # num_x, num_y\n"
           "    # x coordinates of mesh nodes\n"
           "    0 0 1 1\n"
           "    # y coordinates of mesh nodes\n"
           "    0 1 0 1\n"
           "    0    # 2D mesh\n" +
           sets + "}\n";
}
} // namespace

class PiMeshReaderTest : public MeshFieldTest {
protected:
    // Reads a scene that must fail, and returns the read error naming the
    // mesh field.
    std::string failingRead(const std::string& text) {
        const size_t before = readErrors().size();
        EXPECT_EQ(SceneIO::read(text), nullptr);
        for (size_t i = before; i < readErrors().size(); ++i)
            if (readErrors()[i].find("PoSF") != std::string::npos)
                return readErrors()[i];
        ADD_FAILURE() << "no read error from the mesh field";
        return std::string();
    }
};

TEST_F(PiMeshReaderTest, ReadsTheEarlierFormWithoutStringSetsAndNames) {
    SoNode* read = SceneIO::read(gridScene("    2    # number of scalar data-set\n"
                                           "    1    # number of vector data-set\n"
                                           "    # set of scalars, index 0, binding per node\n"
                                           "    1 2 3 4\n"
                                           "    # set of scalars, index 1, binding per cell\n"
                                           "    9\n"
                                           "    # set of vectors, index 0\n"
                                           "    1 0 0 0 1 0 0 0 1 1 1 1\n"));
    ASSERT_NE(read, nullptr) << ::testing::PrintToString(readErrors());
    read->ref();
    const PbCartesianGrid2D& mesh = static_cast<PoCartesianGrid2D*>(read)->mesh.getValue();
    EXPECT_EQ(mesh.getNumStringsSet(), 0);
    ASSERT_EQ(mesh.getNumValuesSet(), 2);
    EXPECT_EQ(*mesh.getValuesSetName(0), SbString(""));
    EXPECT_EQ(mesh.getValuesSet(0)[3], 4.0f);
    EXPECT_EQ(mesh.getValuesBinding(1), PbMesh::PER_CELL);
    EXPECT_EQ(mesh.getValuesSet(1)[0], 9.0f);
    ASSERT_EQ(mesh.getNumVecsSet(), 1);
    EXPECT_EQ(mesh.getVecsSet(0)[3], SbVec3f(1, 1, 1));
    read->unref();
    EXPECT_TRUE(readErrors().empty());
}

TEST_F(PiMeshReaderTest, ReportsBadFilesWithTheLineOfTheFault) {
    struct Case {
        const char* what;
        std::string text;
        const char* message;
        int line;
    };
    const std::string noSets = "    0 # number of string data-set\n    0\n    0\n";
    const std::vector<Case> cases = {
        {"negative size",
         std::string(kHeader) +
             "PoRegularMesh1D {\n  mesh\n    -3    # size\n"
             "    # xmin and xmax coordinates of mesh nodes\n    0 1\n" +
             noSets + "}\n",
         "negative size -3 in size", 5},
        {"too few coordinates",
         std::string(kHeader) +
             "PoIrregularMesh1D {\n  mesh\n    4    # size\n"
             "    # x coordinates of mesh nodes\n    0 1 2\n" +
             noSets + "}\n",
         "a comment follows value 4 of 4 of the x coordinates of mesh nodes", 8},
        {"too many coordinates",
         std::string(kHeader) +
             "PoIrregularMesh1D {\n  mesh\n    2    # size\n"
             "    # x coordinates of mesh nodes\n    0 1 2\n" +
             noSets + "}\n",
         "more values follow the 2 values of the x coordinates of mesh nodes", 7},
        {"cell index beyond the nodes",
         std::string(kHeader) +
             "PoTriangleMesh2D {\n  mesh\n    3    # num nodes\n"
             "    # x coordinates of mesh nodes\n    0 1 0\n"
             "    # y coordinates of mesh nodes\n    0 0 1\n"
             "    0    # 2D mesh\n    1    # num cells\n"
             "    # cell's indices\n    0 1 3\n" +
             noSets + "}\n",
         "node index 3 (value 3 of the cell's indices) is not in 0 to 2", 13},
        {"unknown cell type",
         std::string(kHeader) +
             "PoIndexedMesh3D {\n  mesh\n    4    # num nodes\n"
             "    # x coordinates of mesh nodes\n    0 1 0 0\n"
             "    # y coordinates of mesh nodes\n    0 0 1 0\n"
             "    # z coordinates of mesh nodes\n    0 0 0 1\n"
             "    1    # num cells\n    # cell's type\n    7\n"
             "    # cell's indices\n    0 1 2 3\n" +
             noSets + "}\n",
         "cell 0 has 7 nodes, not 4, 5, 6 or 8", 14},
        {"bad 2D/3D flag",
         gridScene(noSets).replace(gridScene(noSets).find("0    # 2D mesh"), 1, "2"),
         "the 2D/3D flag is 2, not 0 or 1", 10},
        {"too many nodes",
         std::string(kHeader) +
             "PoRegularCartesianGrid3D {\n  mesh\n"
             "    100000 100000 100000    # num_x, num_y, num_z\n"
             "    0 0 0\n    1 1 1\n" +
             noSets + "}\n",
         "the sizes in num_x, num_y, num_z give more than 2147483647 nodes", 5},
        {"sizes whose partial product overflows",
         std::string(kHeader) +
             "PoRegularCartesianGrid3D {\n  mesh\n"
             "    6 2147483647 0    # num_x, num_y, num_z\n"
             "    0 0 0\n    1 1 1\n" +
             noSets + "}\n",
         "the sizes in num_x, num_y, num_z give more than 2147483647 nodes", 5},
        {"a float for an integer",
         std::string(kHeader) + "PoRegularMesh1D {\n  mesh\n    2.5    # size\n" + noSets + "}\n",
         "Couldn't read the size", 5},
        {"negative set count", gridScene("    0 # number of string data-set\n    -1\n    0\n"),
         "negative number of data-sets", 13},
        {"countless sets of nothing",
         std::string(kHeader) + "PoRegularMesh1D {\n  mesh\n    0    # size\n"
                                "    # xmin and xmax coordinates of mesh nodes\n    0 1\n"
                                "    2000000000    # number of scalar data-set\n    0\n}\n",
         "the comment line that starts the scalars of set 0 is missing", 10},
        {"truncated set",
         gridScene("    0    # number of string data-set\n    1\n    0\n"
                   "    # set of scalars, index 0, binding per node\n"
                   "    \"p\"   # set name\n    1 2\n"),
         "Couldn't read value 3 of 4 of the scalars of set 0", 17},
        {"truncated file", gridScene("").substr(0, gridScene("").find("0 1 0 1")) + "0 1",
         "Couldn't read value 3 of 4 of the y coordinates of mesh nodes", 9},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const std::string message = failingRead(c.text);
        EXPECT_NE(message.find(c.message), std::string::npos) << message;
        if (c.line > 0) {
            std::smatch line;
            ASSERT_TRUE(std::regex_search(message, line, std::regex("line +([0-9]+)"))) << message;
            EXPECT_EQ(std::stoi(line[1]), c.line) << message;
        }
    }
}

TEST_F(PiMeshReaderTest, KeepsTheSetsReadBeforeAFailure) {
    PoSFCartesianGrid2D field;
    const std::string value = gridScene("    0    # number of string data-set\n"
                                        "    2    # number of scalar data-set\n"
                                        "    0    # number of vector data-set\n"
                                        "    # set of scalars, index 0, binding per node\n"
                                        "    \"first\"   # set name\n    1 2 3 4\n"
                                        "    # set of scalars, index 1, binding per node\n"
                                        "    \"second\"   # set name\n    5 6 x\n");
    const size_t start = value.find("2 2");
    EXPECT_FALSE(field.set(value.substr(start, value.rfind('}') - start).c_str()));
    const PbCartesianGrid2D& mesh = field.getValue();
    EXPECT_EQ(mesh.getNumNodes(), 4);
    EXPECT_EQ(mesh.getNumValuesSet(), 1);
    EXPECT_EQ(mesh.getValuesSet(0)[2], 3.0f);
    EXPECT_EQ(mesh.getValuesSet(1), nullptr);
}

TEST_F(PiMeshReaderTest, KeepsThePreviousValueWhenTheHeaderFails) {
    PoSFRegularMesh1D field;
    field.setGeometry(4, 0.0f, 3.0f);
    const float values[] = {1, 2, 3, 4};
    field.addValuesSet(0, values, "kept");
    EXPECT_FALSE(field.set("2  # size\n # xmin and xmax coordinates of mesh nodes\n 0"));
    EXPECT_EQ(field.getValue().getNumNodes(), 4);
    EXPECT_EQ(*field.getValue().getValuesSetName(0), SbString("kept"));
}

TEST_F(PiMeshReaderTest, TakesValuesLaidOutFreely) {
    PoSFParalCartesianGrid3D field;
    ASSERT_TRUE(field.set("1 2\n 2 # num_x, num_y, num_z\n"
                          "# x coordinates of mesh\n 5\n"
                          "# y coordinates of mesh\n 0\n 1\n"
                          "# z coordinates of mesh\n -1 1\n"
                          "0 # number of string data-set\n 1 # number of scalar data-set\n 0\n"
                          "# set of scalars, index 0, binding per node\n"
                          "\"free\" 1 2\n 3 4"));
    EXPECT_EQ(field.getValue().getNumNodes(), 4);
    EXPECT_EQ(field.getValue().getNodeCoord(3), SbVec3f(5, 1, 1));
    EXPECT_EQ(field.getValue().getValuesSet(0)[3], 4.0f);
    EXPECT_TRUE(readErrors().empty());
}
