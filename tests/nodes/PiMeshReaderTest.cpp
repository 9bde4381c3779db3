#include "nodes/MeshFieldTestHelpers.h"

#include <cmath>
#include <limits>
#include <regex>

using namespace meshfieldtest;

namespace {
const char* const kLine1D = "3 # size\n# xmin and xmax coordinates of mesh nodes\n0 1\n";
const char* const kTriangle = "3 # num nodes\n# x coordinates of mesh nodes\n0 1 0\n"
                              "# y coordinates of mesh nodes\n0 0 1\n0 # 2D mesh\n1 # num cells\n";
} // namespace

class PiMeshReaderTest : public MeshFieldTest {};

TEST_F(PiMeshReaderTest, ReadsTheEarlierFormWithoutStringSetsAndNamesLaidOutFreely) {
    PoSFCartesianGrid2D field;
    ASSERT_TRUE(field.set("2\n 2 # num_x, num_y\n# x coordinates of mesh nodes\n0 0\n 1 1\n"
                          "# y coordinates of mesh nodes\n0 1 0 1\n0 # 2D mesh\n"
                          "2 # number of scalar data-set\n1 # number of vector data-set\n"
                          "# set of scalars, index 0, binding per node\n1 2\n 3 4\n"
                          "# set of scalars, index 1, binding per cell\n9\n"
                          "# set of vectors, index 0\n1 0 0 0 1 0 0 0 1 1 1 1\n"))
        << ::testing::PrintToString(readErrors());
    const PbCartesianGrid2D& mesh = field.getValue();
    EXPECT_EQ(mesh.getNodeCoord(2), SbVec3f(1, 0, 0));
    EXPECT_EQ(mesh.getNumStringsSet(), 0);
    ASSERT_EQ(mesh.getNumValuesSet(), 2);
    EXPECT_EQ(*mesh.getValuesSetName(0), SbString(""));
    EXPECT_EQ(mesh.getValuesSet(0)[3], 4.0f);
    EXPECT_EQ(mesh.getValuesBinding(1), PbMesh::PER_CELL);
    EXPECT_EQ(mesh.getValuesSet(1)[0], 9.0f);
    ASSERT_EQ(mesh.getNumVecsSet(), 1);
    EXPECT_EQ(mesh.getVecsSet(0)[3], SbVec3f(1, 1, 1));
}

TEST_F(PiMeshReaderTest, ReportsBadValuesWithTheLineOfTheFault) {
    struct Case {
        const char* type;
        std::string text;
        const char* message;
        int line;
    };
    const std::string noSets = "0 # number of string data-set\n";
    const std::vector<Case> cases = {
        {"PoSFRegularMesh1D", "-3 # size\n", "negative size -3 in size", 1},
        {"PoSFRegularMesh1D", "2.5 # size\n", "Couldn't read the size", 1},
        {"PoSFIrregularMesh1D", "2500000000 # size\n",
         "2500000000 in the size is too large: the largest integer is 2147483647", 1},
        {"PoSFTriangleMesh2D", std::string(kTriangle) + "# cell's indices\n0 1 -3000000000\n",
         "-3000000000 in value 3 of 3 of the cell's indices is too small: the smallest integer "
         "is -2147483648",
         9},
        {"PoSFIndexedMesh2D", "99999999999999999999 # num nodes\n",
         "99999999999999999999 in the num nodes is too large", 1},
        {"PoSFIrregularMesh1D", "2 # size\n# x coordinates of mesh nodes\n0 1.5.2\n",
         "Couldn't read value 2 of 2 of the x coordinates of mesh nodes", 3},
        {"PoSFIrregularMesh1D", "2 # size\n# x coordinates of mesh nodes\n0",
         "Couldn't read value 2 of 2 of the x coordinates of mesh nodes", 3},
        {"PoSFTriangleMesh2D", std::string(kTriangle) + "# cell's indices\n0 1 3\n",
         "node index 3 (value 3 of the cell's indices) is not in 0 to 2", 9},
        {"PoSFIndexedMesh2D", std::string(kTriangle) + "# cell's type\n5\n",
         "cell 0 has 5 nodes, not 3 or 4", 9},
        {"PoSFParalCartesianGrid2D",
         "1 1 # num_x, num_y\n# x coordinates of mesh\n0\n# y coordinates of mesh\n0\n2\n",
         "the 2D/3D flag is 2, not 0 or 1", 6},
        {"PoSFRegularCartesianGrid3D", "6 2147483647 0 # num_x, num_y, num_z\n",
         "the sizes in num_x, num_y, num_z give more than 2147483647 nodes", 1},
        {"PoSFRegularMesh1D", kLine1D + noSets + "-1\n0\n", "negative number of data-sets", 6},
        {"PoSFRegularMesh1D", kLine1D + noSets + "2000000000\n0\n",
         "the comment line that starts the scalars of set 0 is missing", 7},
        {"PoSFRegularMesh1D",
         kLine1D + noSets + "1\n0\n# set of scalars, index 0, binding per node\n\"p\"\n1 2\n",
         "Couldn't read value 3 of 3 of the scalars of set 0", 10},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        auto* field = static_cast<SoField*>(SoType::fromName(c.type).createInstance());
        const size_t before = readErrors().size();
        EXPECT_FALSE(field->set(c.text.c_str()));
        delete field;
        ASSERT_GT(readErrors().size(), before);
        const std::string& message = readErrors()[before];
        EXPECT_NE(message.find(std::string(c.type) + ": " + c.message), std::string::npos)
            << message;
        std::smatch line;
        ASSERT_TRUE(std::regex_search(message, line, std::regex("line +([0-9]+)"))) << message;
        EXPECT_EQ(std::stoi(line[1]), c.line) << message;
    }
}

// Comments carry nothing but the binding of a set and the form of the set
// counts: a file written by hand may leave them out or put others anywhere.
TEST_F(PiMeshReaderTest, ReadsAHandWrittenFileWithCommentsLeftOutOrAddedAnywhere) {
    PoSFIndexedMesh2D field;
    ASSERT_TRUE(field.set("# a square and a triangle\n"
                          "5   # nodes\n"
                          "0 1 1 0 2 # x\n"
                          "0 0 1 1 # y, four of five\n"
                          "0.5\n"
                          "1 # z follows\n"
                          "0 0 0 0 # flat\n"
                          "1E1 # but one\n"
                          "2 4 3 0 1 2 3 1 4 2\n"
                          "0 # number of string data-set\n"
                          "1 0\n"
                          "# set of scalars, index 0, binding per cell\n"
                          "\"a \\\"quoted\\\" name \\\\\" # with a backslash\n"
                          "nan # unknown\n"
                          "+.25e1\n"))
        << ::testing::PrintToString(readErrors());
    const PbIndexedMesh2D& mesh = field.getValue();
    ASSERT_EQ(mesh.getNumNodes(), 5);
    ASSERT_EQ(mesh.getNumCells(), 2);
    EXPECT_EQ(mesh.getNodeCoord(4), SbVec3f(2, 0.5f, 10));
    EXPECT_EQ(mesh.getCellNumNodes(1), 3);
    EXPECT_EQ(mesh.getCellNodeIndices(1)[2], 2);
    ASSERT_EQ(mesh.getNumValuesSet(), 1);
    EXPECT_EQ(*mesh.getValuesSetName(0), SbString("a \"quoted\" name \\"));
    EXPECT_EQ(mesh.getValuesBinding(0), PbMesh::PER_CELL);
    EXPECT_TRUE(std::isnan(mesh.getValuesSet(0)[0]));
    EXPECT_EQ(mesh.getValuesSet(0)[1], 2.5f);
}

TEST_F(PiMeshReaderTest, NumbersBeyondTheFloatRangeReadAsInfinitiesOrZeros) {
    PoSFIrregularMesh1D field;
    ASSERT_TRUE(field.set("4\n1e39 -1e400 1e-46 -INFINITY\n0 # number of string data-set\n0 0\n"))
        << ::testing::PrintToString(readErrors());
    const float* x = nullptr;
    int size = 0;
    field.getValue().getGeometry(size, x);
    ASSERT_EQ(size, 4);
    EXPECT_EQ(x[0], std::numeric_limits<float>::infinity());
    EXPECT_EQ(x[1], -std::numeric_limits<float>::infinity());
    EXPECT_EQ(x[2], 0.0f);
    EXPECT_EQ(x[3], -std::numeric_limits<float>::infinity());
}

TEST_F(PiMeshReaderTest, AFailedReadKeepsThePreviousMeshOrTheSetsReadBeforeTheFault) {
    PoSFRegularMesh1D field;
    field.setGeometry(4, 0.0f, 3.0f);
    const float values[] = {1, 2, 3, 4};
    field.addValuesSet(0, values, "kept");
    EXPECT_FALSE(field.set("2 # size\n# xmin and xmax coordinates of mesh nodes\n0"));
    EXPECT_EQ(field.getValue().getNumNodes(), 4);
    EXPECT_EQ(*field.getValue().getValuesSetName(0), SbString("kept"));

    EXPECT_FALSE(field.set((std::string(kLine1D) +
                            "0 # number of string data-set\n2\n0\n"
                            "# set of scalars, index 0, binding per node\n\"first\"\n5 6 7\n"
                            "# set of scalars, index 1, binding per node\n\"second\"\n8 x\n")
                               .c_str()));
    const PbRegularMesh1D& mesh = field.getValue();
    EXPECT_EQ(mesh.getNumNodes(), 3);
    EXPECT_EQ(mesh.getNumValuesSet(), 1);
    EXPECT_EQ(*mesh.getValuesSetName(0), SbString("first"));
    EXPECT_EQ(mesh.getValuesSet(0)[2], 7.0f);
}
