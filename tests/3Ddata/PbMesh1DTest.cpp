#include <Quillon/3Ddata/PbIrregularMesh1D.h>
#include <Quillon/3Ddata/PbRegularMesh1D.h>

#include "3Ddata/MeshTestHelpers.h"

using meshtest::ownerCells;

namespace {

class PbMesh1DTest : public meshtest::MeshTest {};

} // namespace

TEST_F(PbMesh1DTest, NodesLieAlongTheXAxis) {
    PbRegularMesh1D regular;
    regular.setGeometry(5, 1.0f, 3.0f);
    EXPECT_EQ(regular.getSize(), 5);
    EXPECT_EQ(regular.getNumCells(), 4);
    EXPECT_FLOAT_EQ(regular.getStart(), 1.0f);
    EXPECT_FLOAT_EQ(regular.getStep(), 0.5f);
    EXPECT_EQ(regular.getNodeCoord(3), SbVec3f(2.5f, 0, 0));
    EXPECT_EQ(regular.getBoundingBox().getMax(), SbVec3f(3, 0, 0));

    PbIrregularMesh1D irregular;
    const float x[] = {0, 0.5f, 4};
    irregular.setGeometry(3, x);
    EXPECT_EQ(irregular.getNodeCoord(2), SbVec3f(4, 0, 0));
    EXPECT_EQ(irregular.getCell(0), nullptr);
    EXPECT_EQ(ownerCells(irregular, 1), (std::vector<int>{0, 1}));
    EXPECT_EQ(ownerCells(irregular, 2), (std::vector<int>{1}));
    EXPECT_TRUE(ownerCells(irregular, 3).empty());
}

TEST_F(PbMesh1DTest, SegmentsAreFoundAlikeByEveryPath) {
    // The same nodes in a regular mesh (closed form), an irregular mesh with
    // increasing x (bisection) and one given backwards (scan in order).
    PbRegularMesh1D regular;
    regular.setGeometry(9, -2.0f, 2.0f);
    std::vector<float> x, reversed;
    for (int i = 0; i < 9; ++i)
        x.push_back(regular.getX(i));
    reversed.assign(x.rbegin(), x.rend());
    PbIrregularMesh1D increasing, decreasing;
    increasing.setGeometry(9, x.data());
    decreasing.setGeometry(9, reversed.data());
    for (int k = -30; k <= 30; ++k) {
        float p = k * 0.1f;
        float fr = -1, fi = -1, fd = -1;
        int r = regular.findSegment(p, fr);
        int i = increasing.findSegment(p, fi);
        int d = decreasing.findSegment(p, fd);
        EXPECT_EQ(r, i) << "x " << p;
        if (r < 0) {
            EXPECT_EQ(d, -1) << "x " << p;
            continue;
        }
        EXPECT_NEAR(fr, fi, 1e-5f) << "x " << p;
        // Backwards, segment 7 - s runs the other way.
        EXPECT_EQ(d, p == regular.getX(r + 1) && r + 1 < 8 ? 6 - r : 7 - r) << "x " << p;
        float value = regular.getX(r) + fr * regular.getStep();
        EXPECT_NEAR(value, p, 1e-5f);
    }
    float fraction;
    EXPECT_EQ(regular.findSegment(0.0f, fraction), 3);
    EXPECT_FLOAT_EQ(fraction, 1.0f);
    EXPECT_EQ(regular.findSegment(-2.0f, fraction), 0);
    EXPECT_FLOAT_EQ(fraction, 0.0f);
}

TEST_F(PbMesh1DTest, ValuesAreInterpolatedAlongTheLine) {
    PbIrregularMesh1D mesh;
    const float x[] = {0, 1, 3};
    const float y[] = {10, 20, 0};
    mesh.setGeometry(3, x);
    mesh.addValuesSet(0, y, "curve");
    float value = -1;
    ASSERT_EQ(mesh.getValue(2.0f, mesh.getValuesSet(0), value), 1);
    EXPECT_FLOAT_EQ(value, 10.0f);
    EXPECT_EQ(mesh.getValue(3.5f, y, value), 0);
    EXPECT_FLOAT_EQ(value, 10.0f);
    EXPECT_EQ(mesh.getValue(0.5f, nullptr, value), 0);
    EXPECT_TRUE(errors().contains("PbMesh1D::getValue"));
}

TEST_F(PbMesh1DTest, Prints) {
    PbRegularMesh1D regular;
    regular.setGeometry(2, -0.5f, 0.25f);
    EXPECT_EQ(meshtest::printed(regular),
              "=====================print mesh informations ==================== \n"
              "PbMesh:: isDataDuplicate = TRUE\n"
              "PbMesh:: numMeshNodes = 2\n"
              "PbMesh:: m_numMeshCells = 1\n"
              "PbRegularMesh1D:: m_xmin -0.500000, m_xmax 0.250000\n");
    PbIrregularMesh1D irregular;
    std::string text = meshtest::printed(irregular);
    EXPECT_NE(text.find("PbIrregularMesh1D:: x = NULL\n"), std::string::npos) << text;
}
