#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFVec3f.h>

#include <memory>

class PoFieldWatch;

class SoMatrixTransform;
class SoTransform;

// Puts a domain into the traversal state for the kits below.  With equal
// min and max z the domain is two-dimensional, its z range 0 to 1.
class QUILLON_API PoDomain : public PoNode {
    PO_NODE_HEADER(PoDomain);

public:
    enum TransformType {
        TRANSFORM_01 = PbDomain::TRANSFORM_01,
        SCALE_X_FIXED = PbDomain::SCALE_X_FIXED,
        SCALE_Y_FIXED = PbDomain::SCALE_Y_FIXED,
        SCALE_Z_FIXED = PbDomain::SCALE_Z_FIXED,
        SCALE_MAX_XYZ_FIXED = PbDomain::SCALE_MAX_XYZ_FIXED
    };

    SoSFVec3f min;
    SoSFVec3f max;
    SoSFEnum transformType;

    PoDomain();

    void setValues(const SbVec2f& min, const SbVec2f& max,
                   PbDomain::BoundingBoxType boundingBoxType = PbDomain::AS_IS);
    void setValues(const SbVec3f& min, const SbVec3f& max,
                   PbDomain::BoundingBoxType boundingBoxType = PbDomain::AS_IS);

    // The owned domain, brought up to date with the fields.
    const PbDomain* getDomain(void);
    SoTransform* getTransform(void);
    SoMatrixTransform* getMatrixTransform(void);

    void doAction(SoAction* action) override;

protected:
    ~PoDomain() override;

private:
    void updateDomain(void);

    PbDomain m_domain;
    std::unique_ptr<PoFieldWatch> m_boxChanged;
    std::unique_ptr<PoFieldWatch> m_transformChanged;
};
