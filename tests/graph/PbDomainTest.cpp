#include <Quillon/graph/PbDomain.h>

#include "PbDataObjectTestFixture.h"

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

#include <cmath>

namespace {
SbBox3f boxOf(const PbDomain& domain) {
    SbBox3f box;
    domain.getDomain(box);
    return box;
}

void expectBox(const PbDomain& domain, const SbVec3f& min, const SbVec3f& max) {
    const SbBox3f box = boxOf(domain);
    EXPECT_EQ(box.getMin(), min);
    EXPECT_EQ(box.getMax(), max);
    EXPECT_EQ(domain.getDeltaX(), max[0] - min[0]);
    EXPECT_EQ(domain.getDeltaY(), max[1] - min[1]);
    EXPECT_EQ(domain.getDeltaZ(), max[2] - min[2]);
}

SbVec3f transformed(const SbMatrix& matrix, const SbVec3f& point) {
    SbVec3f result;
    matrix.multVecMatrix(point, result);
    return result;
}
} // namespace

using PbDomainTest = PbDataObjectTest;

TEST_F(PbDomainTest, ConstructorsSquareOrCubeTheBoxOnRequest) {
    const struct {
        PbDomain domain;
        SbVec3f min, max;
        bool homogeneous;
    } cases[] = {
        {PbDomain(), SbVec3f(0, 0, 0), SbVec3f(1, 1, 1), true},
        {PbDomain(0, 0, 4, 2), SbVec3f(0, 0, 0), SbVec3f(4, 2, 1), false},
        {PbDomain(0, 0, 4, 2, PbDomain::MAX_BOUNDING_BOX), SbVec3f(0, -1, 0), SbVec3f(4, 3, 1),
         false},
        {PbDomain(SbBox2f(0, 0, 4, 2), PbDomain::MIN_BOUNDING_BOX), SbVec3f(1, 0, 0),
         SbVec3f(3, 2, 1), false},
        {PbDomain(0, 0, 2, 2), SbVec3f(0, 0, 0), SbVec3f(2, 2, 1), false}, // z stays 0 to 1
        {PbDomain(0, 0, 0, 4, 2, 1, PbDomain::MAX_BOUNDING_BOX), SbVec3f(0, -1, -1.5f),
         SbVec3f(4, 3, 2.5f), true},
        {PbDomain(SbBox3f(0, 0, 0, 4, 2, 1), PbDomain::MIN_BOUNDING_BOX), SbVec3f(1.5f, 0.5f, 0),
         SbVec3f(2.5f, 1.5f, 1), true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "box to " << c.max[0] << " " << c.max[1]);
        expectBox(c.domain, c.min, c.max);
        EXPECT_EQ(bool(c.domain.isHomogeneous()), c.homogeneous);
        EXPECT_EQ(c.domain.getTransformType(), PbDomain::SCALE_X_FIXED);
    }
}

TEST_F(PbDomainTest, RejectsEmptyBoxesAndUnknownTypesWithoutChange) {
    PbDomain domain(0, 0, 0, 4, 2, 1);
    domain.addConnection(kit);
    EXPECT_FALSE(domain.setDomain(1, 0, 1, 2));
    EXPECT_FALSE(domain.setDomain(0, 3, 4, 2));
    ASSERT_EQ(errors->messages().size(), 2u);
    EXPECT_TRUE(errors->contains("PbDomain::setDomain(): xmin >= xmax or ymin >= ymax !"));
    domain.setDomain(0, 0, 2, 4, 4, 2);
    EXPECT_TRUE(errors->contains("zmin >= zmax !"));
    domain.setDomain(0, 0, NAN, 1);
    EXPECT_FALSE(domain.setDomain(0, 0, 1, 1, 3));
    domain.setTransformType(static_cast<PbDomain::TransformType>(7));
    EXPECT_EQ(errors->messages().size(), 6u);
    expectBox(domain, SbVec3f(0, 0, 0), SbVec3f(4, 2, 1));
    EXPECT_EQ(domain.getTransformType(), PbDomain::SCALE_X_FIXED);
    EXPECT_TRUE(kit->notifications.empty());
    domain.removeConnection(kit);
}

TEST_F(PbDomainTest, TransformTypeChangesNotifyApart) {
    PbDomain domain;
    domain.addConnection(kit);
    EXPECT_TRUE(domain.setDomain(0, 0, 2, 1));
    domain.setTransformType(PbDomain::TRANSFORM_01);
    PbDomain other(SbBox3f(1, 1, 1, 2, 3, 4));
    domain = other;
    expectBox(domain, SbVec3f(1, 1, 1), SbVec3f(2, 3, 4));
    EXPECT_EQ(domain.getTransformType(), PbDomain::SCALE_X_FIXED);
    EXPECT_EQ(changes(), (std::vector<PbBase::ChangeType>{
                             PbBase::CHANGE, PbBase::DOMAIN_TRANSFORM_TYPE, PbBase::CHANGE}));
    domain.removeConnection(kit);
}

TEST_F(PbDomainTest, MatricesMapTheBoxAsTheTransformTypeSays) {
    PbDomain domain(1, 2, 3, 3, 6, 11); // extents 2, 4, 8
    domain.setTransformType(PbDomain::TRANSFORM_01);
    EXPECT_EQ(transformed(domain.getMatrix(), SbVec3f(1, 2, 3)), SbVec3f(0, 0, 0));
    EXPECT_EQ(transformed(domain.getMatrix(), SbVec3f(3, 6, 11)), SbVec3f(1, 1, 1));
    const SbVec3f corner(2, 4, 8);
    const struct {
        PbDomain::TransformType type;
        SbVec3f image;
    } cases[] = {{PbDomain::SCALE_X_FIXED, SbVec3f(2, 2, 2)},
                 {PbDomain::SCALE_Y_FIXED, SbVec3f(4, 4, 4)},
                 {PbDomain::SCALE_Z_FIXED, SbVec3f(8, 8, 8)},
                 {PbDomain::SCALE_MAX_XYZ_FIXED, SbVec3f(8, 8, 8)}};
    for (const auto& c : cases) {
        domain.setTransformType(c.type);
        EXPECT_EQ(transformed(domain.getMatrix(), corner), c.image) << c.type;
    }
    // Largest extent on x, then a tie between x and y: no strict largest
    // among them, so z is kept.
    domain.setDomain(0, 0, 0, 8, 2, 4);
    EXPECT_EQ(transformed(domain.getMatrix(), SbVec3f(8, 2, 4)), SbVec3f(8, 8, 8));
    domain.setDomain(0, 0, 0, 4, 4, 2);
    EXPECT_EQ(transformed(domain.getMatrix(), SbVec3f(4, 4, 2)), SbVec3f(2, 2, 2));
}

TEST_F(PbDomainTest, TransformNodesHoldTheMatrix) {
    PbDomain domain(1, 2, 3, 3, 6, 11);
    domain.setTransformType(PbDomain::TRANSFORM_01);
    SoMatrixTransform* matrix = domain.getMatrixTransform();
    SoTransform* transform = domain.getTransform();
    matrix->ref();
    transform->ref();
    EXPECT_EQ(matrix->matrix.getValue(), domain.getMatrix());
    EXPECT_TRUE(transform->scaleFactor.getValue().equals(SbVec3f(0.5f, 0.25f, 0.125f), 1e-6f));
    EXPECT_TRUE(transform->translation.getValue().equals(SbVec3f(-0.5f, -0.5f, -0.375f), 1e-6f));
    matrix->unref();
    transform->unref();
}

TEST_F(PbDomainTest, PrintsOneLinePerMember) {
    const std::string text = printed(PbDomain(0, 0, 2.5f, 2));
    EXPECT_EQ(text.rfind("=====", 0), 0u) << text;
    EXPECT_NE(text.find("PbDomain:: xmax = 2.5\n"), std::string::npos) << text;
    EXPECT_NE(text.find("PbDomain:: transformType = SCALE_X_FIXED\n"), std::string::npos);
}
