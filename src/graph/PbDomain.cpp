#include <Quillon/graph/PbDomain.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

#include <algorithm>

namespace {
const char* const s_transformTypeNames[] = {"TRANSFORM_01", "SCALE_X_FIXED", "SCALE_Y_FIXED",
                                            "SCALE_Z_FIXED", "SCALE_MAX_XYZ_FIXED"};

// Replaces [lo, hi] by an interval of the given length with the same centre.
void centreOn(float& lo, float& hi, float length) {
    const float sum = lo + hi;
    lo = (sum - length) / 2;
    hi = (sum + length) / 2;
}

// Written as negated comparisons so that NaN bounds are rejected too.
bool isEmptyInterval(float lo, float hi) {
    return !(hi > lo);
}

// Posts why and returns false when the x or the y interval is empty.
bool isValidFlatBox(float xmin, float ymin, float xmax, float ymax) {
    if (!isEmptyInterval(xmin, xmax) && !isEmptyInterval(ymin, ymax))
        return true;
    PoDebugError::post("PbDomain::setDomain", "xmin >= xmax or ymin >= ymax !");
    return false;
}
} // namespace

PbDomain::PbDomain() = default;

PbDomain::PbDomain(float xmin, float ymin, float xmax, float ymax, int boundingBoxType) {
    setDomain(xmin, ymin, xmax, ymax, boundingBoxType);
}

PbDomain::PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                   int boundingBoxType) {
    setDomain(xmin, ymin, zmin, xmax, ymax, zmax, boundingBoxType);
}

PbDomain::PbDomain(const SbBox2f& box, int boundingBoxType) {
    setDomain(box, boundingBoxType);
}

PbDomain::PbDomain(const SbBox3f& box, int boundingBoxType) {
    setDomain(box, boundingBoxType);
}

PbDomain::PbDomain(const PbDomain& other)
    : PbBase(other), m_xmin(other.m_xmin), m_ymin(other.m_ymin), m_zmin(other.m_zmin),
      m_xmax(other.m_xmax), m_ymax(other.m_ymax), m_zmax(other.m_zmax), m_dx(other.m_dx),
      m_dy(other.m_dy), m_dz(other.m_dz), m_transformType(other.m_transformType) {}

PbDomain& PbDomain::operator=(const PbDomain& other) {
    if (this == &other)
        return *this;
    storeBox(SbVec3f(other.m_xmin, other.m_ymin, other.m_zmin),
             SbVec3f(other.m_xmax, other.m_ymax, other.m_zmax));
    m_transformType = other.m_transformType;
    PbBase::operator=(other);
    return *this;
}

SbBool PbDomain::setDomain(float xmin, float ymin, float xmax, float ymax, int boundingBoxType) {
    if (!isValidFlatBox(xmin, ymin, xmax, ymax))
        return FALSE;
    return setBox(SbVec3f(xmin, ymin, 0), SbVec3f(xmax, ymax, 1), boundingBoxType, 2);
}

SbBool PbDomain::setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                           int boundingBoxType) {
    if (!isValidFlatBox(xmin, ymin, xmax, ymax))
        return FALSE;
    if (isEmptyInterval(zmin, zmax)) {
        PoDebugError::post("PbDomain::setDomain", "zmin >= zmax !");
        return FALSE;
    }
    return setBox(SbVec3f(xmin, ymin, zmin), SbVec3f(xmax, ymax, zmax), boundingBoxType, 3);
}

SbBool PbDomain::setDomain(const SbBox2f& box, int boundingBoxType) {
    const SbVec2f& min = box.getMin();
    const SbVec2f& max = box.getMax();
    return setDomain(min[0], min[1], max[0], max[1], boundingBoxType);
}

SbBool PbDomain::setDomain(const SbBox3f& box, int boundingBoxType) {
    const SbVec3f& min = box.getMin();
    const SbVec3f& max = box.getMax();
    return setDomain(min[0], min[1], min[2], max[0], max[1], max[2], boundingBoxType);
}

void PbDomain::getDomain(float& xmin, float& ymin, float& xmax, float& ymax) const {
    xmin = m_xmin;
    ymin = m_ymin;
    xmax = m_xmax;
    ymax = m_ymax;
}

void PbDomain::getDomain(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax,
                         float& zmax) const {
    getDomain(xmin, ymin, xmax, ymax);
    zmin = m_zmin;
    zmax = m_zmax;
}

void PbDomain::getDomain(SbBox2f& box) const {
    box.setBounds(m_xmin, m_ymin, m_xmax, m_ymax);
}

void PbDomain::getDomain(SbBox3f& box) const {
    box.setBounds(m_xmin, m_ymin, m_zmin, m_xmax, m_ymax, m_zmax);
}

void PbDomain::getDelta(float& dx, float& dy, float& dz) const {
    dx = m_dx;
    dy = m_dy;
    dz = m_dz;
}

void PbDomain::setTransformType(TransformType type) {
    if (type < TRANSFORM_01 || type > SCALE_MAX_XYZ_FIXED) {
        PoDebugError::post("PbDomain::setTransformType",
                           "unknown transform type %d (0 to 4 expected)", static_cast<int>(type));
        return;
    }
    m_transformType = type;
    setChangeType(DOMAIN_TRANSFORM_TYPE);
    notifyChange();
}

SbBool PbDomain::isHomogeneous() const {
    return m_dx == m_dy && m_dy == m_dz;
}

SbMatrix PbDomain::getMatrix() const {
    SbMatrix scale;
    if (m_transformType != TRANSFORM_01) {
        scale.setScale(getScale());
        return scale;
    }
    scale.setScale(SbVec3f(1 / m_dx, 1 / m_dy, 1 / m_dz));
    SbMatrix matrix;
    matrix.setTranslate(SbVec3f(-m_xmin, -m_ymin, -m_zmin));
    // Row vectors: the translation applies first, then the scale.
    matrix.multRight(scale);
    return matrix;
}

SoTransform* PbDomain::getTransform() const {
    auto* transform = new SoTransform;
    transform->setMatrix(getMatrix());
    return transform;
}

SoMatrixTransform* PbDomain::getMatrixTransform() const {
    auto* transform = new SoMatrixTransform;
    transform->matrix.setValue(getMatrix());
    return transform;
}

void PbDomain::print(FILE* fp) const {
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbDomain", "xmin", m_xmin);
    PbPrintout::member(fp, "PbDomain", "ymin", m_ymin);
    PbPrintout::member(fp, "PbDomain", "zmin", m_zmin);
    PbPrintout::member(fp, "PbDomain", "xmax", m_xmax);
    PbPrintout::member(fp, "PbDomain", "ymax", m_ymax);
    PbPrintout::member(fp, "PbDomain", "zmax", m_zmax);
    PbPrintout::member(fp, "PbDomain", "dx", m_dx);
    PbPrintout::member(fp, "PbDomain", "dy", m_dy);
    PbPrintout::member(fp, "PbDomain", "dz", m_dz);
    PbPrintout::member(fp, "PbDomain", "transformType", s_transformTypeNames[m_transformType]);
}

// Squares (or cubes) the first numAxes axes as the bounding-box type asks,
// then stores the box and notifies.
SbBool PbDomain::setBox(SbVec3f min, SbVec3f max, int boundingBoxType, int numAxes) {
    if (boundingBoxType < AS_IS || boundingBoxType > MIN_BOUNDING_BOX) {
        PoDebugError::post("PbDomain::setDomain",
                           "unknown bounding box type %d (0, 1 or 2 expected)", boundingBoxType);
        return FALSE;
    }
    if (boundingBoxType != AS_IS) {
        const SbVec3f delta = max - min;
        const float* first = delta.getValue();
        const float side = boundingBoxType == MAX_BOUNDING_BOX
                               ? *std::max_element(first, first + numAxes)
                               : *std::min_element(first, first + numAxes);
        for (int axis = 0; axis < numAxes; ++axis)
            centreOn(min[axis], max[axis], side);
    }
    storeBox(min, max);
    setChangeType(CHANGE);
    notifyChange();
    return TRUE;
}

void PbDomain::storeBox(const SbVec3f& min, const SbVec3f& max) {
    m_xmin = min[0];
    m_ymin = min[1];
    m_zmin = min[2];
    m_xmax = max[0];
    m_ymax = max[1];
    m_zmax = max[2];
    const SbVec3f delta = max - min;
    m_dx = delta[0];
    m_dy = delta[1];
    m_dz = delta[2];
}

// Scale that keeps one extent and stretches the others to it; the extent
// kept is the transform type's, or for SCALE_MAX_XYZ_FIXED the strictly
// largest of x and y, else z.
SbVec3f PbDomain::getScale() const {
    float kept = m_dz;
    if (m_transformType == SCALE_X_FIXED ||
        (m_transformType == SCALE_MAX_XYZ_FIXED && m_dx > m_dy && m_dx > m_dz))
        kept = m_dx;
    else if (m_transformType == SCALE_Y_FIXED ||
             (m_transformType == SCALE_MAX_XYZ_FIXED && m_dy > m_dx && m_dy > m_dz))
        kept = m_dy;
    return SbVec3f(kept / m_dx, kept / m_dy, kept / m_dz);
}
