#pragma once
#include <Quillon/3Ddata/PoMesh.h>
#include <Quillon/QuillonApi.h>

class PbMesh3D;

// Base of the representations of volume meshes.
class QUILLON_API PoMesh3D : public PoMesh {
    PO_KIT_ABSTRACT_HEADER(PoMesh3D);

public:
    void setMesh(PbMesh3D* mesh);
    const PbMesh3D* getMesh(void);

protected:
    PoMesh3D();
    ~PoMesh3D() override;

    const PbMesh* readStateMesh(void) override;
    void preRebuild(void) override;

    // The volume mesh of the current rebuild.
    const PbMesh3D* getCurrentMesh3D(void) const { return m_currentMesh3D; }

private:
    const PbMesh3D* m_currentMesh3D = nullptr;
};
