#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PoBase.h>

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <vector>

namespace {
template <typename Field> std::vector<int32_t> values(const Field& field) {
    return std::vector<int32_t>(field.getValues(0), field.getValues(0) + field.getNum());
}
} // namespace

class PoBaseTransparencyTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        group = new SoSeparator;
        group->ref();
        material = new SoMaterial;
        binding = new SoMaterialBinding;
        group->addChild(material);
        group->addChild(binding);
        mapping.setTransparencyValueDeletedParts(0.5f);
    }
    void TearDown() override {
        group->unref();
        PoQuillon::finish();
    }
    void setTransparencies(std::vector<float> t) {
        material->transparency.setValues(0, static_cast<int>(t.size()), t.data());
        material->transparency.setNum(static_cast<int>(t.size()));
    }
    SoIndexedFaceSet* threeFaces() {
        auto* faces = new SoIndexedFaceSet;
        const int32_t index[] = {0, 1, 2, -1, 1, 3, 2, -1, 2, 3, 4, 5, -1};
        faces->coordIndex.setValues(0, 13, index);
        group->addChild(faces);
        return faces;
    }
    PbLinearDataMapping mapping;
    SoSeparator* group = nullptr;
    SoMaterial* material = nullptr;
    SoMaterialBinding* binding = nullptr;
};

TEST_F(PoBaseTransparencyTest, FaceAtTheThresholdIsRemoved) {
    SoIndexedFaceSet* faces = threeFaces();
    binding->value = SoMaterialBinding::PER_FACE;
    setTransparencies({0.0f, 0.5f, 0.49f});
    SoIndexedFaceSet* kept =
        PoBase::deleteTransparencyParts(&mapping, material, binding, faces, group, 2);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(group->getChild(2), kept);
    EXPECT_EQ(binding->value.getValue(), SoMaterialBinding::PER_FACE_INDEXED);
    EXPECT_EQ(values(kept->coordIndex), (std::vector<int32_t>{0, 1, 2, -1, 2, 3, 4, 5, -1}));
    EXPECT_EQ(values(kept->materialIndex), (std::vector<int32_t>{0, 2}));
}

TEST_F(PoBaseTransparencyTest, PerVertexKeepsRunsOfMoreThanTwoVertices) {
    SoIndexedFaceSet* faces = threeFaces();
    binding->value = SoMaterialBinding::PER_VERTEX_INDEXED;
    // Vertex 3 is transparent: the second face keeps a run of 1 and one of
    // 1 (dropped); the third keeps 2 then 4, 5 (dropped).
    setTransparencies({0, 0, 0, 0.9f, 0, 0});
    SoIndexedFaceSet* kept =
        PoBase::deleteTransparencyParts(&mapping, material, binding, faces, group, 2);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(values(kept->coordIndex), (std::vector<int32_t>{0, 1, 2, -1}));
    EXPECT_EQ(kept->materialIndex.getNum(), 0);
    EXPECT_EQ(binding->value.getValue(), SoMaterialBinding::PER_VERTEX_INDEXED);
}

TEST_F(PoBaseTransparencyTest, OverallBindingOrNoTransparencyChangesNothing) {
    SoIndexedFaceSet* faces = threeFaces();
    binding->value = SoMaterialBinding::OVERALL;
    setTransparencies({0.9f});
    EXPECT_EQ(PoBase::deleteTransparencyParts(&mapping, material, binding, faces, group, 2),
              nullptr);
    binding->value = SoMaterialBinding::PER_FACE;
    setTransparencies({});
    EXPECT_EQ(PoBase::deleteTransparencyParts(&mapping, material, binding, faces, group, 2),
              nullptr);
    EXPECT_EQ(group->getChild(2), faces);
}

TEST_F(PoBaseTransparencyTest, QuadMeshAndStripsBecomeFaceSets) {
    auto* quads = new SoQuadMesh;
    quads->verticesPerRow = 3;
    quads->verticesPerColumn = 2;
    group->addChild(quads);
    binding->value = SoMaterialBinding::PER_FACE;
    setTransparencies({0.8f, 0.1f});
    SoIndexedFaceSet* kept =
        PoBase::deleteTransparencyParts(&mapping, material, binding, quads, group, 2);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(values(kept->coordIndex), (std::vector<int32_t>{1, 2, 5, 4, -1}));
    EXPECT_EQ(values(kept->materialIndex), (std::vector<int32_t>{1}));

    auto* strips = new SoIndexedTriangleStripSet;
    const int32_t strip[] = {0, 1, 2, 3, -1};
    strips->coordIndex.setValues(0, 5, strip);
    group->addChild(strips);
    binding->value = SoMaterialBinding::PER_FACE;
    setTransparencies({0.1f, 0.9f});
    kept = PoBase::deleteTransparencyParts(&mapping, material, binding, strips, group, 3);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(values(kept->coordIndex), (std::vector<int32_t>{0, 1, 2, -1}));
}

TEST_F(PoBaseTransparencyTest, LinesLoseSegmentsButLineSetsStayWhole) {
    auto* lines = new SoIndexedLineSet;
    const int32_t polyline[] = {0, 1, 2, 3, -1};
    lines->coordIndex.setValues(0, 5, polyline);
    group->addChild(lines);
    binding->value = SoMaterialBinding::PER_VERTEX_INDEXED;
    setTransparencies({0, 0, 0.7f, 0});
    SoIndexedLineSet* kept =
        PoBase::deleteTransparencyParts(&mapping, material, binding, lines, group, 2);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(values(kept->coordIndex), (std::vector<int32_t>{0, 1, -1}));

    auto* plain = new SoLineSet;
    group->addChild(plain);
    EXPECT_EQ(PoBase::deleteTransparencyParts(&mapping, material, binding, plain, group, 3), plain);
}

TEST_F(PoBaseTransparencyTest, GroupVariantVisitsEveryShape) {
    threeFaces();
    auto* lines = new SoIndexedLineSet;
    const int32_t polylines[] = {0, 1, -1, 2, 3, -1};
    lines->coordIndex.setValues(0, 6, polylines);
    group->addChild(lines);
    binding->value = SoMaterialBinding::PER_FACE;
    setTransparencies({0.9f, 0.0f, 0.0f});
    PoBase::deleteTransparencyParts(&mapping, material, binding, group);
    auto* keptFaces = static_cast<SoIndexedFaceSet*>(group->getChild(2));
    auto* keptLines = static_cast<SoIndexedLineSet*>(group->getChild(3));
    EXPECT_EQ(values(keptFaces->coordIndex), (std::vector<int32_t>{1, 3, 2, -1, 2, 3, 4, 5, -1}));
    EXPECT_EQ(values(keptLines->coordIndex), (std::vector<int32_t>{2, 3, -1}));
}
