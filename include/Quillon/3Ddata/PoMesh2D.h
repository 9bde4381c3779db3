#pragma once
#include <Quillon/3Ddata/PoMesh.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/fields/SoSFShort.h>

class PbMesh2D;

// Base of the representations of surface meshes.
class QUILLON_API PoMesh2D : public PoMesh {
    PO_KIT_ABSTRACT_HEADER(PoMesh2D);

public:
    // The value set drawn as the nodes' z (the elevation); negative: the
    // mesh's own z coordinates, or 0 without them.
    SoSFShort zValuesIndex;

    void setMesh(PbMesh2D* mesh);
    const PbMesh2D* getMesh(void);

protected:
    PoMesh2D();
    ~PoMesh2D() override;

    const PbMesh* readStateMesh(void) override;
    void preRebuild(void) override;

    // The surface mesh of the current rebuild.
    const PbMesh2D* getCurrentMesh2D(void) const { return m_currentMesh2D; }
    // An SoCoordinate3 with the current surface mesh's nodes, the value
    // set zValuesSetIndex giving their z (negative: the mesh's own z); it
    // becomes the kit's coordinate node.
    SoCoordinate3* makeSoCoordinate3(int zValuesSetIndex);

private:
    const PbMesh2D* m_currentMesh2D = nullptr;
};
