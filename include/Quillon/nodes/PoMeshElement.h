#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbMesh1D;
class PbMesh2D;
class PbMesh3D;

// The current mesh, of one of the three dimensions; null when no mesh node
// was met.  Setting a mesh of one dimension clears the others.
class QUILLON_API PoMeshElement : public SoReplacedElement {
    PO_ELEMENT_HEADER(PoMeshElement);

public:
    void init(SoState* state) override;

    static void set(SoState* state, SoNode* node, const PbMesh1D* mesh);
    static void set(SoState* state, SoNode* node, const PbMesh2D* mesh);
    static void set(SoState* state, SoNode* node, const PbMesh3D* mesh);

    static const PbMesh1D* getMesh1D(SoState* state);
    static const PbMesh2D* getMesh2D(SoState* state);
    static const PbMesh3D* getMesh3D(SoState* state);
    // 1, 2 or 3 for the dimension of the current mesh, 0 when there is none.
    static int getDimension(SoState* state);

protected:
    ~PoMeshElement() override;

private:
    static PoMeshElement* getWritable(SoState* state, SoNode* node);
    static const PoMeshElement* getReadable(SoState* state);

    const PbMesh1D* m_mesh1D = nullptr;
    const PbMesh2D* m_mesh2D = nullptr;
    const PbMesh3D* m_mesh3D = nullptr;
};
