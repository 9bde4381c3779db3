#include <Quillon/3Ddata/PoMeshCrossSection.h>

#include <Quillon/3Ddata/PbCellFilterIterator.h>
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>

#include "3Ddata/PiPlaneSection.h"
#include "platform/SoPreferences.h"

#include <Inventor/SbPlane.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cctype>
#include <cmath>
#include <string>

PO_KIT_SOURCE(PoMeshCrossSection, PoMesh3D)

namespace {

// Distances computed again only when the normal turns further than this.
const float s_sameNormal = 0.9999f;

bool liesOnAxes(const PbMesh3D& mesh) {
    return dynamic_cast<const PbRegularCartesianGrid3D*>(&mesh) ||
           dynamic_cast<const PbParalCartesianGrid3D*>(&mesh);
}

// The preference's method, or -1 when it names none.
int preferredMethod() {
    std::string name = SoPreferences::getString("TEK_3DDATA_CROSS_SECTION_METHOD", "").getString();
    for (char& c : name)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (name == "ISOSURFACE")
        return PoMeshCrossSection::ISOSURFACE;
    if (name == "INTERSECTION")
        return PoMeshCrossSection::INTERSECTION;
    return -1;
}

} // namespace

PoMeshCrossSection::PoMeshCrossSection() {
    SO_KIT_CONSTRUCTOR(PoMeshCrossSection);
    SO_KIT_ADD_FIELD(plane, (SbPlane(SbVec3f(0.0f, 0.0f, 1.0f), 0.0f)));
    SO_KIT_ADD_CATALOG_ENTRY(groupCrossSection, SoGroup, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_INIT_INSTANCE();
    watchFields({&plane});
}

PoMeshCrossSection::~PoMeshCrossSection() = default;

void PoMeshCrossSection::setForcedMethod(ForcedMethod method) {
    m_forcedMethod = method;
    touchKit();
}

void PoMeshCrossSection::rebuild(void) {
    RebuildScope scope(this);
    const PbMesh3D* mesh =
        startRepresentation("groupCrossSection", &plane.getValue(), "PoMeshCrossSection::rebuild");
    if (!mesh)
        return;
    m_method = chooseMethod(*mesh);
    if (m_method == INTERSECTION) {
        drawIntersection(*mesh);
    } else {
        insertDefaultShapeHints();
        updateDistances(*mesh);
        meshLevelSurf(mesh);
    }
    finishRepresentation("groupCrossSection");
}

void PoMeshCrossSection::setDefaultOnNonWritingFields(void) {
    PoMesh3D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupCrossSection.setDefault(TRUE);
}

PoMeshCrossSection::CrossSectionMethod PoMeshCrossSection::chooseMethod(const PbMesh3D& mesh) {
    CrossSectionMethod method =
        mesh.isCrossSectionOptimal(plane.getValue()) ? INTERSECTION : ISOSURFACE;
    if (getCellFilter())
        method = ISOSURFACE;
    int preferred = preferredMethod();
    if (preferred >= 0)
        method = static_cast<CrossSectionMethod>(preferred);
    if (m_forcedMethod == FORCED_ISOSURFACE)
        method = ISOSURFACE;
    else if (m_forcedMethod == FORCED_INTERSECTION)
        method = INTERSECTION;
    return method;
}

// ------------------------------------------------------------ intersection

// One normal for the whole section, the plane's, with faces turning
// counter-clockwise about it.
void PoMeshCrossSection::drawIntersection(const PbMesh3D& mesh) {
    auto* binding = new SoNormalBinding;
    binding->value = SoNormalBinding::OVERALL;
    auto* normal = new SoNormal;
    normal->vector.setValue(plane.getValue().getNormal());
    auto* hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->creaseAngle = creaseAngle.getValue();
    getGroup()->addChild(binding);
    getGroup()->addChild(normal);
    getGroup()->addChild(hints);
    if (!m_section)
        m_section = std::make_unique<PiPlaneSection>();
    mesh.meshCrossSection(this);
    drawEdgeSurface(mesh, m_section->getPoints(), m_section->getCoordIndex(), false);
}

void PoMeshCrossSection::crossSectionCells(const PbMesh3D* mesh) {
    const PoCellFilter* filter = getCellFilter();
    PbCellFilterIterator cells(mesh, filter, filterCellValues(filter));
    m_section->cutCells(*mesh, plane.getValue(), cells);
}

void PoMeshCrossSection::crossSectionAcrossAxis(const PbGrid3D* grid, int axis) {
    m_section->cutAcrossAxis(*grid, plane.getValue(), axis);
}

// -------------------------------------------------------------- isosurface

void PoMeshCrossSection::updateDistances(const PbMesh3D& mesh) {
    const SbPlane& cut = plane.getValue();
    SbVec3f normal = cut.getNormal();
    float level = cut.getDistanceFromOrigin();
    if (!m_hasDistances || mesh.getGeometryId() != m_distancesGeometryId ||
        normal.dot(m_distancesNormal) <= s_sameNormal) {
        computeDistances(mesh, normal);
        m_hasDistances = true;
        m_distancesNormal = normal;
        m_distancesGeometryId = mesh.getGeometryId();
        ++m_changeCounter;
        ++m_numDistanceComputations;
    } else if (level != m_level) {
        ++m_changeCounter;
    }
    m_level = level;
}

// The distance of a node is the dot product of the normal with its
// coordinates; on axes it is the sum of one term per axis, the same sum.
void PoMeshCrossSection::computeDistances(const PbMesh3D& mesh, const SbVec3f& normal) {
    for (std::vector<float>& terms : m_axisDistances)
        terms.clear();
    if (liesOnAxes(mesh)) {
        std::vector<float>().swap(m_distances);
        const auto& grid = static_cast<const PbGrid3D&>(mesh);
        int dims[3];
        grid.getDim(dims[0], dims[1], dims[2]);
        for (int axis = 0; axis < 3; ++axis)
            for (int n = 0; n < dims[axis]; ++n) {
                int index[3] = {0, 0, 0};
                index[axis] = n;
                float coord = grid.getNodeCoord(index[0], index[1], index[2])[axis];
                m_axisDistances[axis].push_back(normal[axis] * coord);
            }
        return;
    }
    m_distances.resize(mesh.getNumNodes());
    const float *x, *y, *z;
    int sizes[3];
    mesh.getCoordinates(x, y, z, sizes[0], sizes[1], sizes[2]);
    bool arrays = x && y && z && sizes[0] == mesh.getNumNodes();
    tbb::parallel_for(
        tbb::blocked_range<int>(0, mesh.getNumNodes()), [&](const tbb::blocked_range<int>& nodes) {
            for (int n = nodes.begin(); n != nodes.end(); ++n)
                m_distances[n] =
                    normal.dot(arrays ? SbVec3f(x[n], y[n], z[n]) : mesh.getNodeCoord(n));
        });
}

const float* PoMeshCrossSection::getIsosurfDataSet(void) {
    return m_distances.empty() ? nullptr : m_distances.data();
}

float PoMeshCrossSection::getIsosurfValue(void) {
    return m_level;
}

unsigned int PoMeshCrossSection::getIsosurfDataSetId(void) {
    return m_changeCounter;
}

bool PoMeshCrossSection::getIsosurfAxisTerms(const float* terms[3]) {
    if (m_axisDistances[0].empty())
        return false;
    for (int axis = 0; axis < 3; ++axis)
        terms[axis] = m_axisDistances[axis].data();
    return true;
}

size_t PoMeshCrossSection::getMemorySize(void) const {
    size_t bytes = PoMesh3D::getMemorySize() + m_distances.capacity() * sizeof(float);
    for (const std::vector<float>& terms : m_axisDistances)
        bytes += terms.capacity() * sizeof(float);
    return bytes;
}
