#include <Quillon/3Ddata/PbTriangleCell.h>

namespace {

const int s_edges[3][2] = {{0, 1}, {1, 2}, {2, 0}};
const int s_facets[1][4] = {{0, 1, 2, -1}};
const float s_reference[3][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

const PbCell::Shape s_shape = {1, 3, 3, s_edges, s_facets, s_reference};

} // namespace

PbTriangleCell::PbTriangleCell(const PbMesh* owner) : PbSurfaceCell(s_shape, owner) {
    nodesChanged(true);
}

float PbTriangleCell::getArea() const {
    return polygonArea(facetNodes(0), 3);
}

int PbTriangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    pcoord.setValue(0.0f, 0.0f, 0.0f);
    if (!m_valid)
        return 0;
    float h, k;
    project(point, h, k);
    float r = m_matrix[0] * h + m_matrix[1] * k - m_translate[0];
    float s = m_matrix[2] * h + m_matrix[3] * k - m_translate[1];
    pcoord.setValue(r, s, 0.0f);
    if (!isInRange(1.0f - r - s, tolerance) || !isInRange(r, tolerance) || !isInRange(s, tolerance))
        return 0;
    float meanEdge = ((coord(1) - coord(0)).length() + (coord(2) - coord(1)).length() +
                      (coord(0) - coord(2)).length()) /
                     3.0f;
    return isNearPlane(point, m_normal, meanEdge) ? 1 : 0;
}

void PbTriangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    weights[0] = 1.0f - pcoord[0] - pcoord[1];
    weights[1] = pcoord[0];
    weights[2] = pcoord[1];
}

void PbTriangleCell::print(FILE* fp) const {
    PbCell::print(fp);
    printFloats(fp, "m_coordToPcoordMatrix a,b,c,d",
                {m_matrix[0], m_matrix[1], m_matrix[2], m_matrix[3]});
    printFloats(fp, "m_translatePcoord x,y", {m_translate[0], m_translate[1]});
}

void PbTriangleCell::nodesChanged(bool hasZ) {
    PbSurfaceCell::nodesChanged(hasZ);
    m_normal = (coord(1) - coord(0)).cross(coord(2) - coord(0));
    m_plane = hasZ ? dominantAxis(m_normal) : 2;
    if (m_normal.length() > 0.0f)
        m_normal.normalize();

    float h[3], k[3];
    for (int node = 0; node < 3; ++node)
        project(coord(node), h[node], k[node]);
    float e1h = h[1] - h[0], e1k = k[1] - k[0];
    float e2h = h[2] - h[0], e2k = k[2] - k[0];
    float det = e1h * e2k - e2h * e1k;
    m_valid = det != 0.0f;
    if (!m_valid)
        return;
    m_matrix[0] = e2k / det;
    m_matrix[1] = -e2h / det;
    m_matrix[2] = -e1k / det;
    m_matrix[3] = e1h / det;
    m_translate[0] = m_matrix[0] * h[0] + m_matrix[1] * k[0];
    m_translate[1] = m_matrix[2] * h[0] + m_matrix[3] * k[0];
}

void PbTriangleCell::project(const SbVec3f& point, float& h, float& k) const {
    h = point[m_plane == 0 ? 1 : 0];
    k = point[m_plane == 2 ? 1 : 2];
}
