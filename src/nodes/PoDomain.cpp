#include <Quillon/nodes/PoDomain.h>

#include <Quillon/nodes/PoDomainElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoDomain, PoNode)

PoDomain::PoDomain() {
    SO_NODE_CONSTRUCTOR(PoDomain);
    SO_NODE_ADD_FIELD(min, (0.0f, 0.0f, 0.0f));
    SO_NODE_ADD_FIELD(max, (1.0f, 1.0f, 1.0f));
    SO_NODE_ADD_FIELD(transformType, (SCALE_X_FIXED));
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, TRANSFORM_01);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_X_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Y_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Z_FIXED);
    SO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_MAX_XYZ_FIXED);
    SO_NODE_SET_SF_ENUM_TYPE(transformType, TransformType);
    m_boxChanged.reset(new PoFieldWatch({&min, &max}));
    m_transformChanged.reset(new PoFieldWatch({&transformType}));
}

PoDomain::~PoDomain() = default;

void PoDomain::setValues(const SbVec2f& minimum, const SbVec2f& maximum,
                         PbDomain::BoundingBoxType boundingBoxType) {
    setValues(SbVec3f(minimum[0], minimum[1], 0.0f), SbVec3f(maximum[0], maximum[1], 0.0f),
              boundingBoxType);
}

void PoDomain::setValues(const SbVec3f& minimum, const SbVec3f& maximum,
                         PbDomain::BoundingBoxType boundingBoxType) {
    // The bounding-box type settles the box once; the fields keep the result.
    // A box the domain rejects leaves the fields as they were.
    const bool flat = minimum[2] == maximum[2];
    PbDomain shaped;
    const SbBool accepted =
        flat ? shaped.setDomain(minimum[0], minimum[1], maximum[0], maximum[1], boundingBoxType)
             : shaped.setDomain(minimum[0], minimum[1], minimum[2], maximum[0], maximum[1],
                                maximum[2], boundingBoxType);
    if (!accepted)
        return;
    float x0, y0, z0, x1, y1, z1;
    shaped.getDomain(x0, y0, z0, x1, y1, z1);
    min.setValue(x0, y0, flat ? minimum[2] : z0);
    max.setValue(x1, y1, flat ? maximum[2] : z1);
}

void PoDomain::updateDomain(void) {
    if (m_boxChanged->takeRaised()) {
        const SbVec3f& low = min.getValue();
        const SbVec3f& high = max.getValue();
        if (low[2] != high[2])
            m_domain.setDomain(low[0], low[1], low[2], high[0], high[1], high[2], PbDomain::AS_IS);
        else
            m_domain.setDomain(low[0], low[1], 0.0f, high[0], high[1], 1.0f, PbDomain::AS_IS);
    }
    if (m_transformChanged->takeRaised())
        m_domain.setTransformType(static_cast<PbDomain::TransformType>(transformType.getValue()));
}

const PbDomain* PoDomain::getDomain(void) {
    updateDomain();
    return &m_domain;
}

SoTransform* PoDomain::getTransform(void) {
    return getDomain()->getTransform();
}

SoMatrixTransform* PoDomain::getMatrixTransform(void) {
    return getDomain()->getMatrixTransform();
}

void PoDomain::doAction(SoAction* action) {
    PoDomainElement::set(action->getState(), this, getDomain());
}
