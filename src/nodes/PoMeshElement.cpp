#include <Quillon/nodes/PoMeshElement.h>

PO_ELEMENT_SOURCE(PoMeshElement, SoReplacedElement)

PoMeshElement::~PoMeshElement() = default;

void PoMeshElement::init(SoState* state) {
    SoReplacedElement::init(state);
    m_mesh1D = nullptr;
    m_mesh2D = nullptr;
    m_mesh3D = nullptr;
}

PoMeshElement* PoMeshElement::getWritable(SoState* state, SoNode* node) {
    auto* element = PO_WRITABLE_ELEMENT(PoMeshElement, state, node);
    if (element) {
        element->m_mesh1D = nullptr;
        element->m_mesh2D = nullptr;
        element->m_mesh3D = nullptr;
    }
    return element;
}

const PoMeshElement* PoMeshElement::getReadable(SoState* state) {
    return PoClassRegistration::readableElement<PoMeshElement>(state);
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh1D* mesh) {
    if (PoMeshElement* element = getWritable(state, node))
        element->m_mesh1D = mesh;
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh2D* mesh) {
    if (PoMeshElement* element = getWritable(state, node))
        element->m_mesh2D = mesh;
}

void PoMeshElement::set(SoState* state, SoNode* node, const PbMesh3D* mesh) {
    if (PoMeshElement* element = getWritable(state, node))
        element->m_mesh3D = mesh;
}

const PbMesh1D* PoMeshElement::getMesh1D(SoState* state) {
    const PoMeshElement* element = getReadable(state);
    return element ? element->m_mesh1D : nullptr;
}

const PbMesh2D* PoMeshElement::getMesh2D(SoState* state) {
    const PoMeshElement* element = getReadable(state);
    return element ? element->m_mesh2D : nullptr;
}

const PbMesh3D* PoMeshElement::getMesh3D(SoState* state) {
    const PoMeshElement* element = getReadable(state);
    return element ? element->m_mesh3D : nullptr;
}

int PoMeshElement::getDimension(SoState* state) {
    const PoMeshElement* element = getReadable(state);
    if (!element)
        return 0;
    return element->m_mesh3D ? 3 : element->m_mesh2D ? 2 : element->m_mesh1D ? 1 : 0;
}
