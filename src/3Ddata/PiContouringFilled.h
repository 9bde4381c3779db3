#pragma once
#include "3Ddata/PiContouring.h"

class SoGroup;
class SoMaterial;
class SoMaterialBinding;

// Colour bands: the cells of a surface mesh cut along the isolines into
// faces, each face in the colour of its band (see PiBandColors).
class PiContouringFilled : public PiContouring {
public:
    // Appends to group the material binding (per face, indexed), an
    // SoCoordinate3 holding the nodes and then the crossing points, and an
    // SoIndexedFaceSet of the band faces, cell after cell, whose material
    // index is the band.  The material gets one colour per band (and one
    // transparency per band when the data mapping has transparency on).
    // Bands without colour are left out, and so are the walls along the
    // regions that the thresholds delete.  The current isovalues list gives
    // the bands; nothing is built without values, mesh or list.
    void fillSurf(const float* values, const float* z, SoGroup* group, SoMaterial* material,
                  SoMaterialBinding* binding);

    // The faces of the last fillSurf.
    int getNumFaces() const { return m_numFaces; }

private:
    std::vector<char> setBandColors(SoMaterial* material) const;
    void cutElements(const float* values, const std::vector<char>& visible, SoMFInt32& coordIndex,
                     SoMFInt32& faceBands);

    int m_numFaces = 0;
};
