#include <Quillon/3Ddata/PbVolumeCell.h>
#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiMarchingCaseTable.h"

#include <cmath>

namespace {

const int s_maxIterations = 10;
const float s_convergence = 0.001f;

// Six times the signed volume of the tetrahedron (apex, a, b, c).
float tripleProduct(const SbVec3f& apex, const SbVec3f& a, const SbVec3f& b, const SbVec3f& c) {
    return (a - apex).dot((b - apex).cross(c - apex));
}

} // namespace

float PbVolumeCell::getArea() const {
    float area = 0.0f;
    for (int facet = 0; facet < getNumFacets(); ++facet)
        area += polygonArea(facetNodes(facet), facetSize(facet));
    return area;
}

float PbVolumeCell::getVolume() const {
    SbVec3f center = getCenter();
    float sum = 0.0f;
    for (int facet = 0; facet < getNumFacets(); ++facet) {
        const int* nodes = facetNodes(facet);
        int size = facetSize(facet);
        if (size == 3) {
            sum += tripleProduct(center, coord(nodes[0]), coord(nodes[1]), coord(nodes[2]));
            continue;
        }
        SbVec3f facetCenter(0.0f, 0.0f, 0.0f);
        for (int i = 0; i < size; ++i)
            facetCenter += coord(nodes[i]) / static_cast<float>(size);
        for (int i = 0; i < size; ++i)
            sum +=
                tripleProduct(center, coord(nodes[i]), coord(nodes[(i + 1) % size]), facetCenter);
    }
    return std::fabs(sum) / 6.0f;
}

const PiMarchingCase* PbVolumeCell::getMCcase(unsigned char caseId) const {
    PiMarchingCaseTable& table = caseTable();
    if (caseId >= table.getNumCases()) {
        PoDebugError::post("PbVolumeCell::getMCcase",
                           "case id %d is out of range: the cell kind has %d cases", caseId,
                           table.getNumCases());
        return nullptr;
    }
    return table.get(caseId);
}

unsigned char PbVolumeCell::getIsosurfCaseId(const std::vector<bool>& nodeFlags) const {
    const int* nodeIndex = getNodeIndexPtr();
    if (!nodeIndex) {
        PoDebugError::post("PbVolumeCell::getIsosurfCaseId",
                           "the cell has no node indices: it was not filled by a mesh");
        return 0;
    }
    unsigned int caseId = 0;
    for (int node = 0; node < getNumNodes(); ++node) {
        if (nodeIndex[node] < 0 || static_cast<size_t>(nodeIndex[node]) >= nodeFlags.size()) {
            PoDebugError::post("PbVolumeCell::getIsosurfCaseId",
                               "node %d has no flag: %d flags for the mesh nodes", nodeIndex[node],
                               static_cast<int>(nodeFlags.size()));
            return 0;
        }
        if (nodeFlags[nodeIndex[node]])
            caseId |= 1u << node;
    }
    unsigned int allSet = (1u << getNumNodes()) - 1;
    return static_cast<unsigned char>(caseId == allSet ? 0 : caseId);
}

int PbVolumeCell::locateByNewton(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    SbVec3f previous(0.5f, 0.5f, 0.5f);
    pcoord = previous;
    for (int iteration = 0; iteration < s_maxIterations; ++iteration) {
        float weights[MAX_NODES], dr[MAX_NODES], ds[MAX_NODES], dt[MAX_NODES];
        getWeight(pcoord, weights);
        getDerivs(pcoord, dr, ds, dt);
        SbVec3f f = -point;
        SbVec3f jr(0.0f, 0.0f, 0.0f), js(0.0f, 0.0f, 0.0f), jt(0.0f, 0.0f, 0.0f);
        for (int node = 0; node < getNumNodes(); ++node) {
            const SbVec3f& p = coord(node);
            f += weights[node] * p;
            jr += dr[node] * p;
            js += ds[node] * p;
            jt += dt[node] * p;
        }
        float det = jr.dot(js.cross(jt));
        if (det == 0.0f)
            return 0;
        pcoord.setValue(previous[0] - f.dot(js.cross(jt)) / det,
                        previous[1] - jr.dot(f.cross(jt)) / det,
                        previous[2] - jr.dot(js.cross(f)) / det);
        SbVec3f step = pcoord - previous;
        if (std::fabs(step[0]) < s_convergence && std::fabs(step[1]) < s_convergence &&
            std::fabs(step[2]) < s_convergence)
            return isInRange(pcoord[0], tolerance) && isInRange(pcoord[1], tolerance) &&
                   isInRange(pcoord[2], tolerance);
        previous = pcoord;
    }
    return 0;
}

int PbVolumeCell::orderingOf(int a, int b, int c) const {
    return tripleProduct(coord(0), coord(a), coord(b), coord(c)) > 0.0f ? 1 : 0;
}
