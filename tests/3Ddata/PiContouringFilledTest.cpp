#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/ContouringTestMeshes.h"
#include "3Ddata/MeshTestHelpers.h"
#include "3Ddata/PiBandColors.h"
#include "3Ddata/PiContouringFilled.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>
#include <limits>

namespace {

using namespace contourtest;

std::vector<int> valuesOf(const SoMFInt32& field) {
    return std::vector<int>(field.getValues(0), field.getValues(0) + field.getNum());
}

// What fillSurf built.
struct Bands {
    std::vector<SbVec3f> points;
    std::vector<int> stripIndex;
    std::vector<int> stripBands;
    std::vector<int> coordIndex;
    std::vector<int> faceBands;
    std::vector<SbColor> colors;
    std::vector<float> transparencies;
    int binding = -1;

    // Every face as its point indices (the strips' triangles first), with
    // its band.
    std::vector<std::pair<std::vector<int>, int>> faces() const {
        std::vector<std::pair<std::vector<int>, int>> result;
        std::vector<int> run;
        int strip = 0;
        for (int index : stripIndex) {
            if (index >= 0) {
                run.push_back(index);
                continue;
            }
            for (size_t k = 2; k < run.size(); ++k)
                result.push_back({k % 2 ? std::vector<int>{run[k - 1], run[k - 2], run[k]}
                                        : std::vector<int>{run[k - 2], run[k - 1], run[k]},
                                  stripBands[strip]});
            run.clear();
            ++strip;
        }
        int face = 0;
        for (int index : coordIndex) {
            if (index >= 0) {
                run.push_back(index);
                continue;
            }
            result.push_back({run, faceBands[face++]});
            run.clear();
        }
        return result;
    }
    std::vector<SbVec3f> polygon(const std::vector<int>& indices) const {
        std::vector<SbVec3f> result;
        for (int index : indices)
            result.push_back(points[index]);
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
            if (auto* strips = dynamic_cast<SoIndexedTriangleStripSet*>(child)) {
                bands.stripIndex = valuesOf(strips->coordIndex);
                bands.stripBands = valuesOf(strips->materialIndex);
            }
            if (auto* faces = dynamic_cast<SoIndexedFaceSet*>(child)) {
                bands.coordIndex = valuesOf(faces->coordIndex);
                bands.faceBands = valuesOf(faces->materialIndex);
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
            double area = 0;
            for (const auto& face : bands.faces()) {
                const std::vector<int>& indices = face.first;
                const int band = face.second;
                area += std::fabs(signedArea(bands.polygon(indices)));
                // Each face is a proper polygon, and its nodes are of its band.
                ASSERT_GE(indices.size(), 3u) << m.name;
                for (size_t k = 0; k < indices.size(); ++k) {
                    EXPECT_NE(indices[k], indices[(k + 1) % indices.size()]) << m.name;
                    if (indices[k] < numNodes) {
                        EXPECT_TRUE(band == 0 || values[indices[k]] > isovalues[band - 1])
                            << m.name;
                        EXPECT_TRUE(band == 5 || values[indices[k]] <= isovalues[band]) << m.name;
                    }
                }
            }
            EXPECT_NEAR(area, meshArea(*m.mesh), 1e-4) << m.name;
            EXPECT_EQ(bands.binding, int(SoMaterialBinding::PER_PART_INDEXED)) << m.name;
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
        for (const SbVec3f& p : bands.polygon(faces[f].first))
            centre += p / float(faces[f].first.size());
        SbVec3f pcoord;
        const PbCell* cell = mesh->findContainingCell(centre, 1e-4f, pcoord);
        ASSERT_NE(cell, nullptr);
        float weights[PbCell::MAX_NODES];
        cell->getWeight(pcoord, weights);
        float value = 0;
        for (int k = 0; k < 3; ++k)
            value += weights[k] * values[cell->getNodeIndex(k)];
        const int band = faces[f].second;
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
            EXPECT_EQ(fast.stripIndex, general.stripIndex);
            EXPECT_EQ(fast.stripBands, general.stripBands);
            EXPECT_EQ(fast.coordIndex, general.coordIndex);
            EXPECT_EQ(fast.faceBands, general.faceBands);
            EXPECT_GT(fast.stripBands.size(), 0u);
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
    std::vector<int> faceBands;
    for (const auto& face : bands.faces())
        faceBands.push_back(face.second);
    EXPECT_EQ(std::count(faceBands.begin(), faceBands.end(), 0), 0);
    EXPECT_GT(std::count(faceBands.begin(), faceBands.end(), 1), 0);
}

TEST_F(PiContouringFilledTest, ThresholdWallsLeaveTheDeletedCornerUncovered) {
    auto quad = unitQuadrangle();
    m_mapping.enableTransparency(1);
    m_mapping.setMinThreshold(0.0f, SbColor(0, 0, 0), 1.0f);
    m_mapping.enableThresholds(1, 0);
    const Bands bands = fill(*quad, {1, 2, 3, -5}, {2.5f});
    double area = 0;
    for (const auto& face : bands.faces())
        area += std::fabs(signedArea(bands.polygon(face.first)));
    EXPECT_NEAR(area, 0.5, 1e-6);
    EXPECT_EQ(std::count(bands.coordIndex.begin(), bands.coordIndex.end(), 3), 0);
    EXPECT_EQ(bands.transparencies.size(), bands.colors.size());
}

TEST_F(PiContouringFilledTest, ReversedCellsGiveReversedFaces) {
    // Two squares, the second given clockwise; with element orientation on
    // both come out counter-clockwise.
    const Bands bands = fill(*twoSquaresOneReversed(), {0, 5, 5, 0, 10, 10}, {2.5f, 7.5f});
    const auto faces = bands.faces();
    ASSERT_EQ(faces.size(), 4u);
    for (const auto& face : faces)
        EXPECT_GT(signedArea(bands.polygon(face.first)), 0.0);
}

TEST(PiBandCutterTest, PolygonsOfTheirOwnAreCutByTheSameRule) {
    // A triangle in space with values 0, 2, 2 and the isovalue 1: a corner
    // triangle below it, the rest above.
    const SbVec3f corners[] = {SbVec3f(0, 0, 0), SbVec3f(2, 0, 2), SbVec3f(0, 2, 2)};
    const float values[] = {0, 2, 2}, isovalues[] = {1};
    std::vector<SbVec3f> points(1, SbVec3f(9, 9, 9));
    std::vector<int32_t> coordIndex, bands;
    PiBandCutter cutter;
    ASSERT_EQ(cutter.cutPolygon(corners, values, 3, isovalues, 1, points, coordIndex, bands), 2);
    EXPECT_EQ(bands, (std::vector<int32_t>{0, 1}));
    EXPECT_EQ(coordIndex, (std::vector<int32_t>{1, 4, 5, -1, 4, 2, 3, 5, -1}));
    EXPECT_EQ(points[4], SbVec3f(1, 0, 1));
    EXPECT_EQ(points[5], SbVec3f(0, 1, 1));
    const float notFinite[] = {0, std::numeric_limits<float>::quiet_NaN(), 2};
    EXPECT_EQ(cutter.cutPolygon(corners, notFinite, 3, isovalues, 1, points, coordIndex, bands), 0);
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
