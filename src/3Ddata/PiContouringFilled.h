#pragma once
#include "3Ddata/PiContouring.h"
#include "3Ddata/PiGridContouring.h"

class SoGroup;
class SoMaterial;
class SoMaterialBinding;

// Colour bands: the cells of a surface mesh cut along the isolines into
// faces, each face in the colour of its band (see PiBandColors).
class PiContouringFilled : public PiContouring {
public:
    // Appends to group the material binding (per part, indexed), an
    // SoCoordinate3 holding the nodes and then the crossing points, an
    // SoIndexedTriangleStripSet of the grid cells that lie whole in one
    // band (see PiBandStrips) and an SoIndexedFaceSet of the other band
    // faces, each cell after cell; a strip's or a face's material index is
    // its band.  The material gets one colour per band (and one
    // transparency per band when the data mapping has transparency on).
    // Bands without colour are left out, and so are the walls along the
    // regions that the thresholds delete.  The current isovalues list gives
    // the bands; nothing is built without values, mesh or list.
    void fillSurf(const float* values, const float* z, SoGroup* group, SoMaterial* material,
                  SoMaterialBinding* binding);

    // The faces of the last fillSurf, a cell of a strip counting as one.
    int getNumFaces() const { return m_numFaces; }

private:
    std::vector<char> setBandColors(SoMaterial* material) const;
    void cutElements(const float* values, const std::vector<char>& visible,
                     const PiGridContouring::BandShapes& shapes);

    int m_numFaces = 0;
};
