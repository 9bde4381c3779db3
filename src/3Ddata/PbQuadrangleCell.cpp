#include <Quillon/3Ddata/PbQuadrangleCell.h>

#include <cmath>

namespace {

const int s_edges[4][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
const int s_facets[1][4] = {{0, 1, 2, 3}};
const float s_reference[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

const PbCell::Shape s_shape = {1, 4, 4, s_edges, s_facets, s_reference};

const int s_maxIterations = 10;
const float s_convergence = 0.001f;

} // namespace

PbQuadrangleCell::PbQuadrangleCell(const PbMesh* owner) : PbSurfaceCell(s_shape, owner) {
    nodesChanged(true);
}

float PbQuadrangleCell::getArea() const {
    return polygonArea(facetNodes(0), 4);
}

int PbQuadrangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    int axisU = m_droppedAxis == 0 ? 1 : 0;
    int axisV = m_droppedAxis == 2 ? 1 : 2;
    if (!locatePointOnXY(point, axisU, axisV, pcoord))
        return 0;
    if (!isInRange(pcoord[0], tolerance) || !isInRange(pcoord[1], tolerance))
        return 0;
    float meanDiagonal = ((coord(2) - coord(0)).length() + (coord(3) - coord(1)).length()) / 2.0f;
    return isNearPlane(point, m_unitNormal, meanDiagonal) ? 1 : 0;
}

void PbQuadrangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    float r = pcoord[0], s = pcoord[1];
    weights[0] = (1.0f - r) * (1.0f - s);
    weights[1] = r * (1.0f - s);
    weights[2] = r * s;
    weights[3] = (1.0f - r) * s;
}

void PbQuadrangleCell::getDerivs(const SbVec3f& pcoord, float* dr, float* ds) {
    float r = pcoord[0], s = pcoord[1];
    dr[0] = -(1.0f - s);
    dr[1] = 1.0f - s;
    dr[2] = s;
    dr[3] = -s;
    ds[0] = -(1.0f - r);
    ds[1] = -r;
    ds[2] = r;
    ds[3] = 1.0f - r;
}

void PbQuadrangleCell::nodesChanged(bool hasZ) {
    PbSurfaceCell::nodesChanged(hasZ);
    m_unitNormal = (coord(2) - coord(0)).cross(coord(3) - coord(1));
    m_droppedAxis = hasZ ? dominantAxis(m_unitNormal) : 2;
    if (m_unitNormal.length() > 0.0f)
        m_unitNormal.normalize();
}

int PbQuadrangleCell::locatePointOnXY(const SbVec3f& point, int axisU, int axisV,
                                      SbVec3f& pcoord) const {
    float rPrev = 0.5f, sPrev = 0.5f;
    pcoord.setValue(rPrev, sPrev, 0.0f);
    for (int iteration = 0; iteration < s_maxIterations; ++iteration) {
        float weights[4], dr[4], ds[4];
        getWeight(pcoord, weights);
        getDerivs(pcoord, dr, ds);
        float fu = -point[axisU], fv = -point[axisV];
        float jru = 0.0f, jrv = 0.0f, jsu = 0.0f, jsv = 0.0f;
        for (int node = 0; node < 4; ++node) {
            const SbVec3f& p = coord(node);
            fu += weights[node] * p[axisU];
            fv += weights[node] * p[axisV];
            jru += dr[node] * p[axisU];
            jrv += dr[node] * p[axisV];
            jsu += ds[node] * p[axisU];
            jsv += ds[node] * p[axisV];
        }
        float det = jru * jsv - jsu * jrv;
        if (det == 0.0f)
            return 0;
        float r = rPrev - (fu * jsv - jsu * fv) / det;
        float s = sPrev - (jru * fv - fu * jrv) / det;
        pcoord.setValue(r, s, 0.0f);
        if (std::fabs(r - rPrev) < s_convergence && std::fabs(s - sPrev) < s_convergence)
            return 1;
        rPrev = r;
        sPrev = s;
    }
    return 0;
}
