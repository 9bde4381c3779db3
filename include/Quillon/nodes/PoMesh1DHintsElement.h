#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMesh1DHints.h>

#include <Inventor/elements/SoReplacedElement.h>

// How the points of line meshes are joined; AS_IS when no hints node was met.
class QUILLON_API PoMesh1DHintsElement : public SoReplacedElement {
    PO_ELEMENT_HEADER(PoMesh1DHintsElement);

public:
    void init(SoState* state) override;
    static void set(SoState* state, SoNode* node, PoMesh1DHints::GeomInterpretation interpretation);
    static PoMesh1DHints::GeomInterpretation get(SoState* state);
    static PoMesh1DHints::GeomInterpretation getDefault(void) { return PoMesh1DHints::AS_IS; }

protected:
    ~PoMesh1DHintsElement() override;

private:
    PoMesh1DHints::GeomInterpretation m_interpretation = getDefault();
};
