#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/ContouringTestMeshes.h"
#include "3Ddata/MeshTestHelpers.h"
#include "3Ddata/PiBandColors.h"
#include "3Ddata/PiContouringFilled.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>

namespace {

using namespace contourtest;

// What fillSurf built.
struct Bands {
    std::vector<SbVec3f> points;
    std::vector<int> coordIndex;
    std::vector<int> faceBands;
    std::vector<SbColor> colors;
    std::vector<float> transparencies;
    int binding = -1;

    // The faces as point lists.
    std::vector<std::vector<SbVec3f>> faces() const {
        std::vector<std::vector<SbVec3f>> result(1);
        for (int index : coordIndex) {
            if (index < 0)
                result.emplace_back();
            else
                result.back().push_back(points[index]);
        }
        result.pop_back();
        return result;
    }
};

double signedArea(const std::vector<SbVec3f>& polygon) {
    double area = 0;
    for (size_t k = 0; k < polygon.size(); ++k) {
        const SbVec3f& a = polygon[k];
        const SbVec3f& b = polygon[(k + 1) % polygon.size()];
        area += double(a[0]) * b[1] - double(b[0]) * a[1];
    }
    return area / 2;
}

double meshArea(const PbMesh2D& mesh) {
    double area = 0;
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const PbCell* cell = mesh.getCell(c);
        std::vector<SbVec3f> nodes;
        for (int k = 0; k < cell->getNumNodes(); ++k)
            nodes.push_back(cell->getNodeCoord(k));
        area += std::fabs(signedArea(nodes));
    }
    return area;
}

class PiContouringFilledTest : public meshtest::MeshTest {
protected:
    void SetUp() override {
        MeshTest::SetUp();
        m_mapping.setValues(0, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
    }

    Bands fill(const PbMesh2D& mesh, const std::vector<float>& values,
               const std::vector<float>& isovalues, bool fastPath = true) {
        m_list.setIrregularIsoList(int(isovalues.size()), isovalues.data());
        m_contouring = std::make_unique<PiContouringFilled>();
        m_contouring->setIsovaluesList(&m_list);
        m_contouring->setDataMapping(&m_mapping);
        m_contouring->enableFastGridPath(fastPath);
        mesh.meshContouring(m_contouring.get(), nullptr);
        SoSeparator* group = new SoSeparator;
        group->ref();
        auto* material = new SoMaterial;
        material->ref();
        m_contouring->fillSurf(values.data(), nullptr, group, material, new SoMaterialBinding);
        Bands bands;
        for (int i = 0; i < group->getNumChildren(); ++i) {
            SoNode* child = group->getChild(i);
            if (auto* coords = dynamic_cast<SoCoordinate3*>(child))
                bands.points.assign(coords->point.getValues(0),
                                    coords->point.getValues(0) + coords->point.getNum());
            if (auto* faces = dynamic_cast<SoIndexedFaceSet*>(child)) {
                bands.coordIndex.assign(faces->coordIndex.getValues(0),
                                        faces->coordIndex.getValues(0) +
                                            faces->coordIndex.getNum());
                bands.faceBands.assign(faces->materialIndex.getValues(0),
                                       faces->materialIndex.getValues(0) +
                                           faces->materialIndex.getNum());
            }
            if (auto* binding = dynamic_cast<SoMaterialBinding*>(child))
                bands.binding = binding->value.getValue();
        }
        bands.colors.assign(material->diffuseColor.getValues(0),
                            material->diffuseColor.getValues(0) + material->diffuseColor.getNum());
        bands.transparencies.assign(material->transparency.getValues(0),
                                    material->transparency.getValues(0) +
                                        material->transparency.getNum());
        material->unref();
        group->unref();
        return bands;
    }

    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_list;
    std::unique_ptr<PiContouringFilled> m_contouring;
};

TEST_F(PiContouringFilledTest, BandFacesCoverTheMeshOnEveryMeshKind) {
    const std::vector<float> isovalues = {2, 4, 5, 6.5f, 8};
    for (const NamedMesh& m : allMeshKinds(10)) {
        const int numNodes = m.mesh->getNumNodes();
        for (const std::vector<float>& values :
             {randomValues(numNodes, 5), sampled(*m.mesh, waves)}) {
            const Bands bands = fill(*m.mesh, values, isovalues);
            const auto faces = bands.faces();
            ASSERT_EQ(bands.faceBands.size(), faces.size()) << m.name;
            double area = 0;
            for (const auto& face : faces)
                area += std::fabs(signedArea(face));
            EXPECT_NEAR(area, meshArea(*m.mesh), 1e-4) << m.name;
            // Each face is a proper polygon, and its nodes are of its band.
            size_t first = 0;
            for (size_t f = 0; f < faces.size(); ++f) {
                const size_t size = faces[f].size();
                ASSERT_GE(size, 3u) << m.name;
                const int band = bands.faceBands[f];
                for (size_t k = 0; k < size; ++k) {
                    const int index = bands.coordIndex[first + k];
                    EXPECT_NE(index, bands.coordIndex[first + (k + 1) % size]) << m.name;
                    if (index < numNodes) {
                        EXPECT_TRUE(band == 0 || values[index] > isovalues[band - 1]) << m.name;
                        EXPECT_TRUE(band == 5 || values[index] <= isovalues[band]) << m.name;
                    }
                }
                first += size + 1;
            }
            EXPECT_EQ(bands.binding, int(SoMaterialBinding::PER_FACE_INDEXED)) << m.name;
        }
    }
}

TEST_F(PiContouringFilledTest, EveryFaceLiesInItsBand) {
    // In triangles the values are linear, so a face's centre has a value
    // of the face's band.
    auto mesh = triangleMesh(10);
    const std::vector<float> values = randomValues(mesh->getNumNodes(), 6);
    const std::vector<float> isovalues = {2, 4, 5, 6.5f, 8};
    const Bands bands = fill(*mesh, values, isovalues);
    const auto faces = bands.faces();
    for (size_t f = 0; f < faces.size(); ++f) {
        SbVec3f centre(0, 0, 0);
        for (const SbVec3f& p : faces[f])
            centre += p / float(faces[f].size());
        SbVec3f pcoord;
        const PbCell* cell = mesh->findContainingCell(centre, 1e-4f, pcoord);
        ASSERT_NE(cell, nullptr);
        float weights[PbCell::MAX_NODES];
        cell->getWeight(pcoord, weights);
        float value = 0;
        for (int k = 0; k < 3; ++k)
            value += weights[k] * values[cell->getNodeIndex(k)];
        const int band = bands.faceBands[f];
        const float below = band > 0 ? isovalues[band - 1] : -1e30f;
        const float above = band < int(isovalues.size()) ? isovalues[band] : 1e30f;
        EXPECT_GE(value, below - 1e-4f) << "face " << f;
        EXPECT_LE(value, above + 1e-4f) << "face " << f;
    }
}

TEST_F(PiContouringFilledTest, FastGridPathGivesTheGeneralPathsFaces) {
    for (const auto& grid : allGridKinds(15)) {
        for (const std::vector<float>& values :
             {randomValues(grid->getNumNodes(), 8), sampled(*grid, waves)}) {
            const Bands general = fill(*grid, values, {2, 3, 5, 7.5f}, false);
            EXPECT_FALSE(m_contouring->usedFastGridPath());
            const Bands fast = fill(*grid, values, {2, 3, 5, 7.5f}, true);
            EXPECT_TRUE(m_contouring->usedFastGridPath());
            EXPECT_EQ(fast.points, general.points);
            EXPECT_EQ(fast.coordIndex, general.coordIndex);
            EXPECT_EQ(fast.faceBands, general.faceBands);
        }
    }
}

TEST_F(PiContouringFilledTest, BandsTakeTheirColourAndBandsWithoutColourAreLeftOut) {
    auto grid = regularGrid(8);
    const std::vector<float> values = sampled(*grid, [](float x, float) { return 10 * x; });
    const std::vector<float> isovalues = {2, 4, 6, 8};
    // The band below 2 meets the minimum threshold (1), which has no colour.
    m_mapping.setMinThreshold(1.0f);
    m_mapping.enableThresholds(1, 0);
    const Bands bands = fill(*grid, values, isovalues);
    ASSERT_EQ(bands.colors.size(), 5u);
    for (int b = 0; b < 5; ++b) {
        const PiBandColors::Color expected = PiBandColors::getValueColor(
            m_mapping, PiBandColors::getBandValue(isovalues.data(), 4, b));
        EXPECT_EQ(expected.visible, b > 0) << "band " << b;
        EXPECT_EQ(bands.colors[b], expected.color) << "band " << b;
    }
    EXPECT_TRUE(bands.transparencies.empty());
    EXPECT_EQ(std::count(bands.faceBands.begin(), bands.faceBands.end(), 0), 0);
    EXPECT_GT(std::count(bands.faceBands.begin(), bands.faceBands.end(), 1), 0);
}

TEST_F(PiContouringFilledTest, ThresholdWallsLeaveTheDeletedCornerUncovered) {
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
    const int cell[] = {0, 1, 2, 3};
    PbQuadrangleMesh2D quad;
    quad.setGeometry(4, x, y, 1, cell);
    m_mapping.enableTransparency(1);
    m_mapping.setMinThreshold(0.0f, SbColor(0, 0, 0), 1.0f);
    m_mapping.enableThresholds(1, 0);
    const Bands bands = fill(quad, {1, 2, 3, -5}, {2.5f});
    double area = 0;
    for (const auto& face : bands.faces())
        area += std::fabs(signedArea(face));
    EXPECT_NEAR(area, 0.5, 1e-6);
    EXPECT_EQ(std::count(bands.coordIndex.begin(), bands.coordIndex.end(), 3), 0);
    EXPECT_EQ(bands.transparencies.size(), bands.colors.size());
}

TEST_F(PiContouringFilledTest, ReversedCellsGiveReversedFaces) {
    // Two squares, the second given clockwise; with element orientation on
    // both come out counter-clockwise.
    const float x[] = {0, 1, 1, 0, 2, 2}, y[] = {0, 0, 1, 1, 0, 1};
    const int types[] = {4, 4};
    const int cells[] = {0, 1, 2, 3, 1, 2, 5, 4};
    PbIndexedMesh2D mesh;
    mesh.setGeometry(6, x, y, 2, types, cells);
    mesh.setElemOrientation(1);
    const Bands bands = fill(mesh, {0, 5, 5, 0, 10, 10}, {2.5f, 7.5f});
    const auto faces = bands.faces();
    ASSERT_EQ(faces.size(), 4u);
    for (const auto& face : faces)
        EXPECT_GT(signedArea(face), 0.0);
}

TEST(PiBandColorsTest, BandsTakeTheColourOfTheirMiddleValue) {
    const float isovalues[] = {0, 1, 3};
    const float expected[] = {-0.5f, 0.5f, 2.0f, 4.0f};
    for (int band = 0; band < 4; ++band)
        EXPECT_FLOAT_EQ(PiBandColors::getBandValue(isovalues, 3, band), expected[band]);
    const float single[] = {2};
    EXPECT_FLOAT_EQ(PiBandColors::getBandValue(single, 1, 0), 2.0f);
    EXPECT_FLOAT_EQ(PiBandColors::getBandValue(single, 1, 1), 2.0f);
}

} // namespace
