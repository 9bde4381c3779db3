#pragma once
#include <Quillon/3Ddata/PoMesh3D.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/fields/SoSFPlane.h>

// The outline of the section of a volume mesh by a plane: lines where the
// plane cuts the faces of the mesh's boundary, coloured by the data mapping
// from the value set valuesIndex unless the colouring is inherited.  A
// plane without a normal is refused with an error and draws nothing.
class QUILLON_API PoMeshCrossContour : public PoMesh3D {
    PO_KIT_HEADER(PoMeshCrossContour);
    SO_KIT_CATALOG_ENTRY_HEADER(groupCrossContour);

public:
    SoSFPlane plane;

    PoMeshCrossContour();

protected:
    ~PoMeshCrossContour() override;

    void rebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;
};
