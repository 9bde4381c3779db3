#include "3Ddata/PiPlaneSection.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbCellFilterIterator.h>
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include <Inventor/SbPlane.h>

#include <cmath>
#include <numeric>

void PiPlaneSection::clear() {
    m_points.clear();
    m_coordIndex.clear();
}

void PiPlaneSection::cutCells(const PbMesh3D& mesh, const SbPlane& plane,
                              PbCellFilterIterator& cells) {
    clear();
    PbArrayOfInt cutEdges, cutNodes;
    PbArrayOfFloat ratios;
    std::vector<int> polygon;
    SbVec3f coords[2 * PbCell::MAX_NODES];
    for (int c = cells.first(); c < mesh.getNumCells(); c = cells.next()) {
        const PbCell* cell = mesh.getCell(c);
        cell->getEdgesCrossingPlane(plane, cutEdges, cutNodes, &ratios);
        if (cutEdges.getNum() < 3)
            continue;
        polygon.clear();
        for (int e = 0; e < cutEdges.getNum(); ++e) {
            int first = cutNodes[2 * e];
            float ratio = ratios[e];
            polygon.push_back(m_points.share(first, cutNodes[2 * e + 1], [&](int low, int) {
                return low == first ? ratio : 1.0f - ratio;
            }));
            const int* ends = cell->getNodesLocalIndexOfEdge(cutEdges[e]);
            SbVec3f p0 = cell->getNodeCoord(ends[0]), p1 = cell->getNodeCoord(ends[1]);
            coords[e] = p0 + (p1 - p0) * ratio;
        }
        addPolygon(polygon, coords, plane.getNormal());
    }
    m_points.releaseTable();
}

// The cut points of a cell surround the mean of them; their order about
// the normal is the order of their angles in the plane.
void PiPlaneSection::addPolygon(std::vector<int>& points, const SbVec3f* coords,
                                const SbVec3f& normal) {
    int count = static_cast<int>(points.size());
    SbVec3f centre(0.0f, 0.0f, 0.0f);
    for (int p = 0; p < count; ++p)
        centre += coords[p] / static_cast<float>(count);
    SbVec3f u = normal.cross(std::fabs(normal[0]) < 0.9f ? SbVec3f(1, 0, 0) : SbVec3f(0, 1, 0));
    u.normalize();
    SbVec3f v = normal.cross(u);
    float angles[2 * PbCell::MAX_NODES];
    int order[2 * PbCell::MAX_NODES];
    for (int p = 0; p < count; ++p) {
        SbVec3f offset = coords[p] - centre;
        angles[p] = std::atan2(offset.dot(v), offset.dot(u));
    }
    std::iota(order, order + count, 0);
    std::sort(order, order + count, [&](int a, int b) { return angles[a] < angles[b]; });
    for (int p = 0; p < count; ++p)
        m_coordIndex.push_back(points[order[p]]);
    m_coordIndex.push_back(-1);
}

void PiPlaneSection::cutAcrossAxis(const PbGrid3D& grid, const SbPlane& plane, int axis) {
    clear();
    int dims[3];
    grid.getDim(dims[0], dims[1], dims[2]);
    std::vector<float> along[3];
    for (int a = 0; a < 3; ++a)
        for (int n = 0; n < dims[a]; ++n) {
            int index[3] = {0, 0, 0};
            index[a] = n;
            along[a].push_back(grid.getNodeCoord(index[0], index[1], index[2])[a]);
        }
    float sign = plane.getNormal()[axis] < 0.0f ? -1.0f : 1.0f;
    float level = plane.getDistanceFromOrigin() * sign;
    auto positive = [&](float x) { return sign * (x - level) >= 0.0f; };
    int u = (axis + 1) % 3, v = (axis + 2) % 3;
    auto node = [&](int l, int a, int b) {
        int index[3];
        index[axis] = l;
        index[u] = a;
        index[v] = b;
        return (index[0] * dims[1] + index[1]) * dims[2] + index[2];
    };
    for (int l = 0; l + 1 < dims[axis]; ++l) {
        float x0 = along[axis][l], x1 = along[axis][l + 1];
        if (positive(x0) == positive(x1))
            continue;
        float param = (level - x0) / (x1 - x0);
        int first = m_points.getNum();
        for (int a = 0; a < dims[u]; ++a)
            for (int b = 0; b < dims[v]; ++b) {
                m_points.nodes().push_back(node(l, a, b));
                m_points.nodes().push_back(node(l + 1, a, b));
                m_points.params().push_back(param);
            }
        auto point = [&](int a, int b) { return first + a * dims[v] + b; };
        for (int a = 0; a + 1 < dims[u]; ++a)
            for (int b = 0; b + 1 < dims[v]; ++b) {
                int quad[4] = {point(a, b), point(a + 1, b), point(a + 1, b + 1), point(a, b + 1)};
                float turn = (along[u][a + 1] - along[u][a]) * (along[v][b + 1] - along[v][b]);
                if (turn * sign < 0.0f)
                    std::reverse(quad, quad + 4);
                m_coordIndex.insert(m_coordIndex.end(), {quad[0], quad[1], quad[2], quad[3], -1});
            }
    }
}
