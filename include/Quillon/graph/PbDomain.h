#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbBox3f.h>
#include <Inventor/SbLinear.h>

#include <cstdio>

class SoMatrixTransform;
class SoTransform;

// The box in which a kit's data live, and how that box is mapped to the
// drawing space.
//
// Bounding-box types: AS_IS keeps the box as given.  For the 2D forms,
// MAX_BOUNDING_BOX replaces the x/y extent by a square of side max(dx, dy)
// and MIN_BOUNDING_BOX by a square of side min(dx, dy), both centred on the
// same point; z is then 0 to 1.  For the 3D forms the same rule makes a
// cube, of side max(dx, dy, dz) or min(dx, dy, dz), centred on the box.
class QUILLON_API PbDomain : public PbBase {
public:
    enum TransformType {
        TRANSFORM_01 = 0,
        SCALE_X_FIXED = 1,
        SCALE_Y_FIXED = 2,
        SCALE_Z_FIXED = 3,
        SCALE_MAX_XYZ_FIXED = 4
    };
    enum BoundingBoxType { AS_IS = 0, MAX_BOUNDING_BOX = 1, MIN_BOUNDING_BOX = 2 };

    // The unit cube, transform type SCALE_X_FIXED.
    PbDomain();
    PbDomain(float xmin, float ymin, float xmax, float ymax, int boundingBoxType = AS_IS);
    PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
             int boundingBoxType = AS_IS);
    explicit PbDomain(const SbBox2f& box, int boundingBoxType = AS_IS);
    explicit PbDomain(const SbBox3f& box, int boundingBoxType = AS_IS);
    PbDomain(const PbDomain& other);
    PbDomain& operator=(const PbDomain& other);

    // FALSE, after posting why, when the box is empty or the type unknown;
    // the domain is then left as it was.
    SbBool setDomain(float xmin, float ymin, float xmax, float ymax, int boundingBoxType = AS_IS);
    SbBool setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax,
                     int boundingBoxType = AS_IS);
    SbBool setDomain(const SbBox2f& box, int boundingBoxType = AS_IS);
    SbBool setDomain(const SbBox3f& box, int boundingBoxType = AS_IS);

    void getDomain(float& xmin, float& ymin, float& xmax, float& ymax) const;
    void getDomain(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax,
                   float& zmax) const;
    void getDomain(SbBox2f& box) const;
    void getDomain(SbBox3f& box) const;

    void getDelta(float& dx, float& dy, float& dz) const;
    float getDeltaX() const { return m_dx; }
    float getDeltaY() const { return m_dy; }
    float getDeltaZ() const { return m_dz; }

    // Notifies with change type DOMAIN_TRANSFORM_TYPE: kits only update
    // their domain transform.
    void setTransformType(TransformType type);
    TransformType getTransformType() const { return m_transformType; }

    // True when the three extents are exactly equal.
    SbBool isHomogeneous() const;

    SbMatrix getMatrix() const;
    // New nodes, not referenced, holding the transform of getMatrix().
    SoTransform* getTransform() const;
    SoMatrixTransform* getMatrixTransform() const;

    void print(FILE* fp) const;

private:
    SbBool setBox(SbVec3f min, SbVec3f max, int boundingBoxType, int numAxes);
    void storeBox(const SbVec3f& min, const SbVec3f& max);
    SbVec3f getScale() const;

    float m_xmin = 0, m_ymin = 0, m_zmin = 0;
    float m_xmax = 1, m_ymax = 1, m_zmax = 1;
    float m_dx = 1, m_dy = 1, m_dz = 1;
    TransformType m_transformType = SCALE_X_FIXED;
};
