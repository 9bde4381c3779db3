#pragma once
#include <cstddef>
#include <vector>

// The library's classes, family by family.  Everything that names them
// (registration and unregistration, the umbrella header's check, the
// registration-order test, the fuzzer) expands these lists, so a new class
// is one line, inserted at its place in its list: keep the lists in
// registration order, and list a class only once it exists.
//
// Each list applies a macro X to the name of every class in turn; the mesh
// representation kits also give their exit group.

// Chart node kits.
#define PO_CHART_KIT_CLASSES(X)                                                                    \
    X(PoPlotwright)                                                                                \
    X(PoCurve)                                                                                     \
    X(PoBaseAxis)                                                                                  \
    X(PoAxis)                                                                                      \
    X(PoCartesianAxis)                                                                             \
    X(PoLinearAxis)                                                                                \
    X(PoLegend)                                                                                    \
    X(PoItemLegend)                                                                                \
    X(PoValueLegend)                                                                               \
    X(PoLinearValueLegend)                                                                         \
    X(PoHistogram)                                                                                 \
    X(PoSingleHistogram)                                                                           \
    X(PoMultipleHistogram)                                                                         \
    X(PoPieChart)                                                                                  \
    X(PoPieChart2D)

// Mesh representation node kits.  Unregistration does not simply reverse
// their registration: it goes through the exit groups in the order of
// PoClassManifest::ExitGroup, each group's classes backwards.
#define PO_MESH_REPRESENTATION_CLASSES(X)                                                          \
    X(PoVolumwright, BASES)                                                                        \
    X(PoMesh, BASES)                                                                               \
    X(PoMesh2D, SURFACES)                                                                          \
    X(PoMeshFilled, SURFACES)                                                                      \
    X(PoMeshContouring, SURFACES)                                                                  \
    X(PoMesh3D, VOLUMES)                                                                           \
    X(PoMeshLevelSurf, VOLUMES)                                                                    \
    X(PoMeshCrossSection, VOLUMES)                                                                 \
    X(PoMeshCrossContour, VOLUMES)

// Traversal-state elements.
#define PO_ELEMENT_CLASSES(X)                                                                      \
    X(PoDomainElement)                                                                             \
    X(PoNumericDisplayFormatElement)                                                               \
    X(PoIsovaluesListElement)                                                                      \
    X(PoDateFormatMappingElement)                                                                  \
    X(PoMiscTextAttrElement)                                                                       \
    X(PoDataMappingElement)                                                                        \
    X(PoCellFilterElement)                                                                         \
    X(PoMeshElement)                                                                               \
    X(PoBevelEdgeElement)                                                                          \
    X(PoMesh1DFilterElement)                                                                       \
    X(PoMesh1DHintsElement)                                                                        \
    X(PoProfileElement)                                                                            \
    X(PoLabelHintsElement)

// The property nodes that hold a mesh, a run of the property node list.
#define PO_MESH_NODE_CLASSES(X)                                                                    \
    X(PoCartesianGrid3D)                                                                           \
    X(PoParalCartesianGrid3D)                                                                      \
    X(PoRegularCartesianGrid3D)                                                                    \
    X(PoIndexedMesh3D)                                                                             \
    X(PoHexahedronMesh3D)                                                                          \
    X(PoTetrahedronMesh3D)                                                                         \
    X(PoCartesianGrid2D)                                                                           \
    X(PoParalCartesianGrid2D)                                                                      \
    X(PoRegularCartesianGrid2D)                                                                    \
    X(PoPolarGrid2D)                                                                               \
    X(PoIndexedMesh2D)                                                                             \
    X(PoTriangleMesh2D)                                                                            \
    X(PoQuadrangleMesh2D)                                                                          \
    X(PoIrregularMesh1D)                                                                           \
    X(PoRegularMesh1D)

// Property nodes.
#define PO_PROPERTY_NODE_CLASSES(X)                                                                \
    X(PoNode)                                                                                      \
    X(PoDomain)                                                                                    \
    X(PoNumericDisplayFormat)                                                                      \
    X(PoIsovaluesList)                                                                             \
    X(PoDateFormatMapping)                                                                         \
    X(PoMiscTextAttr)                                                                              \
    X(PoDataMapping)                                                                               \
    X(PoLinearDataMapping)                                                                         \
    X(PoNonLinearDataMapping)                                                                      \
    X(PoNonLinearDataMapping2)                                                                     \
    X(PoMeshProperty)                                                                              \
    PO_MESH_NODE_CLASSES(X)                                                                        \
    X(PoBevelEdge)                                                                                 \
    X(PoMesh1DFilter)                                                                              \
    X(PoPeriodIndexFilter)                                                                         \
    X(PoIndexListFilter)                                                                           \
    X(PoPeriodFilter)                                                                              \
    X(PoCoordinateListFilter)                                                                      \
    X(PoMesh1DHints)                                                                               \
    X(PoProfile)                                                                                   \
    X(PoCircularProfile)                                                                           \
    X(PoEllipticProfile)                                                                           \
    X(PoSquareProfile)                                                                             \
    X(PoProfileCoordinate2)                                                                        \
    X(PoLabelHints)                                                                                \
    X(PoCellFilter)                                                                                \
    X(PoIntervalCellFilter)

// Mesh-valued fields.
#define PO_MESH_FIELD_CLASSES(X)                                                                   \
    X(PoSFMesh)                                                                                    \
    X(PoSFCartesianGrid3D)                                                                         \
    X(PoSFParalCartesianGrid3D)                                                                    \
    X(PoSFRegularCartesianGrid3D)                                                                  \
    X(PoSFIndexedMesh3D)                                                                           \
    X(PoSFHexahedronMesh3D)                                                                        \
    X(PoSFTetrahedronMesh3D)                                                                       \
    X(PoSFCartesianGrid2D)                                                                         \
    X(PoSFPolarGrid2D)                                                                             \
    X(PoSFParalCartesianGrid2D)                                                                    \
    X(PoSFRegularCartesianGrid2D)                                                                  \
    X(PoSFIndexedMesh2D)                                                                           \
    X(PoSFTriangleMesh2D)                                                                          \
    X(PoSFQuadrangleMesh2D)                                                                        \
    X(PoSFIrregularMesh1D)                                                                         \
    X(PoSFRegularMesh1D)

namespace PoClassManifest {

// The exit groups of the mesh representation kits, in the order in which
// they leave: stream lines and their motions; probe points and cell
// representations; surface representations (PoMesh2D and below); volume
// representations (PoMesh3D and below); the bases PoVolumwright and PoMesh.
enum class ExitGroup { STREAMS, PROBES_AND_CELLS, SURFACES, VOLUMES, BASES };

// Given the exit groups of a list's classes in registration order, the
// positions of the classes in the order in which they leave.
inline std::vector<size_t> exitOrder(const std::vector<ExitGroup>& groups) {
    std::vector<size_t> order;
    for (ExitGroup group : {ExitGroup::STREAMS, ExitGroup::PROBES_AND_CELLS, ExitGroup::SURFACES,
                            ExitGroup::VOLUMES, ExitGroup::BASES}) {
        for (size_t i = groups.size(); i-- > 0;)
            if (groups[i] == group)
                order.push_back(i);
    }
    return order;
}

// One class of a list: its registration and unregistration.
struct Entry {
    void (*init)(void);
    void (*exit)(void);
};

// Registers the classes of a list in order, or unregisters them in the
// reverse order.
template <size_t N> void initAll(const Entry (&classes)[N]) {
    for (const Entry& entry : classes)
        entry.init();
}
template <size_t N> void exitAllReversed(const Entry (&classes)[N]) {
    for (size_t i = N; i-- > 0;)
        classes[i].exit();
}

} // namespace PoClassManifest

// Expands a list into the elements of an array of PoClassManifest::Entry.
#define PO_CLASS_ENTRY(_class_) PoClassManifest::Entry{&_class_::initClass, &_class_::exitClass},
