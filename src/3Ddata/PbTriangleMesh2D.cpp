#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiCellLocator2D.h"

#include <Quillon/graph/PoDebugError.h>

PbTriangleMesh2D::PbTriangleMesh2D(int isDataDuplicate)
    : PbFixedCellMesh2D(isDataDuplicate, 3, "PbTriangleMesh2D") {}

int PbTriangleMesh2D::evaluateFaultNode(int nodeIndex, const PbMesh2D& source,
                                        const float* sourceValues, float& value) const {
    SbVec2f derivs;
    return evaluate("PbTriangleMesh2D::evaluateFaultNode", nodeIndex, source, sourceValues, value,
                    derivs);
}

int PbTriangleMesh2D::evaluateFaultNodeWithDerivs(int nodeIndex, const PbMesh2D& source,
                                                  const float* sourceValues, float& value,
                                                  SbVec2f& derivs) const {
    return evaluate("PbTriangleMesh2D::evaluateFaultNodeWithDerivs", nodeIndex, source,
                    sourceValues, value, derivs);
}

bool PbTriangleMesh2D::evaluate(const char* method, int nodeIndex, const PbMesh2D& source,
                                const float* sourceValues, float& value, SbVec2f& derivs) const {
    if (nodeIndex < 0 || nodeIndex >= getNumNodes()) {
        PoDebugError::post(method, "node %d is not one of the %d nodes", nodeIndex, getNumNodes());
        return false;
    }
    if (!sourceValues) {
        PoDebugError::post(method, "null source values");
        return false;
    }
    SbVec3f p = getNodeCoord(nodeIndex);
    PiCellLocator2D locator(source, PiCellLocator2D::ROUNDING_TOLERANCE);
    PiCellLocator2D::Location location;
    if (!locator.locate(SbVec2f(p[0], p[1]), location))
        return false;
    value = 0.0f;
    derivs.setValue(0.0f, 0.0f);
    for (int k = 0; k < location.numNodes; ++k) {
        float v = sourceValues[location.nodes[k]];
        value += location.weights[k] * v;
        derivs += location.weightDerivs[k] * v;
    }
    return true;
}

void PbTriangleMesh2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->triangleMeshFilled(this);
}
