#pragma once
#include <Quillon/3Ddata/PoMesh3D.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

// The level surface (isosurface) of a volume mesh: where the values of one
// value set equal levelValue, coloured by the value set valuesIndex
// interpolated at the surface's points (see PoMesh3D).  The surface faces
// the side that surfOrientation chooses.  A level equal to some node values
// is moved a little towards the higher values first, so that the surface
// never passes through a node; cells with a NaN value at a node are left
// out (with a warning).
class QUILLON_API PoMeshLevelSurf : public PoMesh3D {
    PO_KIT_HEADER(PoMeshLevelSurf);
    SO_KIT_CATALOG_ENTRY_HEADER(groupLevelSurf);

public:
    enum SurfOrientation { ORIENTED_TO_MIN = 0, ORIENTED_TO_MAX = 1 };

    SoSFFloat levelValue;
    SoSFEnum surfOrientation;
    // The value set that defines the surface; -1 means valuesIndex.
    SoSFInt32 valuesIndexForLevel;

    PoMeshLevelSurf();

protected:
    ~PoMeshLevelSurf() override;

    void rebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

    const float* getIsosurfDataSet(void) override;
    float getIsosurfValue(void) override;
    int getSurfOrientation(void) override;
    unsigned int getIsosurfDataSetId(void) override;
    int getIsosurfDataSetIndex(void) override;
};
