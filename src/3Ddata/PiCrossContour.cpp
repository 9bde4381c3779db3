#include "3Ddata/PiCrossContour.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/graph/PbArrayOfInt.h>

#include <Inventor/SbPlane.h>

#include <algorithm>
#include <array>
#include <map>

namespace {

// Calls fn(nodes, count) for every face of the mesh's boundary: the
// quadrangles of a grid's six sides, or the facets of the other meshes that
// no two cells share, in the order of the cells.
template <class Fn> void forEachBoundaryFace(const PbMesh3D& mesh, Fn fn) {
    if (auto grid = dynamic_cast<const PbGrid3D*>(&mesh)) {
        int dims[3];
        grid->getDim(dims[0], dims[1], dims[2]);
        if (mesh.getNumCells() <= 0)
            return;
        for (int axis = 0; axis < 3; ++axis) {
            int u = (axis + 1) % 3, v = (axis + 2) % 3;
            for (int side : {0, dims[axis] - 1})
                for (int a = 0; a + 1 < dims[u]; ++a)
                    for (int b = 0; b + 1 < dims[v]; ++b) {
                        int nodes[4];
                        const int corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
                        for (int c = 0; c < 4; ++c) {
                            int index[3];
                            index[axis] = side;
                            index[u] = a + corners[c][0];
                            index[v] = b + corners[c][1];
                            nodes[c] = (index[0] * dims[1] + index[1]) * dims[2] + index[2];
                        }
                        fn(nodes, 4);
                    }
        }
        return;
    }
    using Key = std::array<int, 4>;
    struct Face {
        Key nodes;
        int count;
        int owners;
    };
    std::vector<Face> faces;
    std::map<Key, size_t> found;
    PbArrayOfInt facetNodes;
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const PbCell* cell = mesh.getCell(c);
        for (int f = 0; f < cell->getNumFacets(); ++f) {
            cell->getNodesIndexOfFacet(f, facetNodes);
            Face face{{-1, -1, -1, -1}, std::min(facetNodes.getNum(), 4), 1};
            std::copy(facetNodes.get(), facetNodes.get() + face.count, face.nodes.begin());
            Key key = face.nodes;
            std::sort(key.begin(), key.end());
            auto entry = found.emplace(key, faces.size());
            if (entry.second)
                faces.push_back(face);
            else
                ++faces[entry.first->second].owners;
        }
    }
    for (const Face& face : faces)
        if (face.owners == 1)
            fn(face.nodes.data(), face.count);
}

} // namespace

void PiCrossContour::build(const PbMesh3D& mesh, const SbPlane& plane) {
    m_points.clear();
    m_segments.clear();
    m_coordIndex.clear();
    forEachBoundaryFace(mesh, [&](const int* nodes, int count) {
        float distances[4];
        for (int n = 0; n < count; ++n)
            distances[n] = plane.getDistance(mesh.getNodeCoord(nodes[n]));
        crossPlaneAndQuadrangle(nodes, distances, count);
    });
    m_points.releaseTable();
    joinSegments();
}

void PiCrossContour::crossPlaneAndQuadrangle(const int* nodes, const float* distances, int count) {
    auto positive = [&](int corner) { return distances[corner] >= 0.0f; };
    // The point on the side from corner s to the next one.
    auto sidePoint = [&](int s) {
        int a = s, b = (s + 1) % count;
        return m_points.share(nodes[a], nodes[b], [&](int low, int) {
            float dLow = low == nodes[a] ? distances[a] : distances[b];
            float dHigh = low == nodes[a] ? distances[b] : distances[a];
            return dLow / (dLow - dHigh);
        });
    };
    int cut[4], numCut = 0;
    for (int s = 0; s < count; ++s)
        if (positive(s) != positive((s + 1) % count))
            cut[numCut++] = s;
    if (numCut == 2) {
        m_segments.insert(m_segments.end(), {sidePoint(cut[0]), sidePoint(cut[1])});
        return;
    }
    if (numCut != 4)
        return;
    float centre = (distances[0] + distances[1] + distances[2] + distances[3]) / 4.0f;
    bool cutOffPositive = centre < 0.0f;
    for (int corner = 0; corner < 4; ++corner)
        if (positive(corner) == cutOffPositive)
            m_segments.insert(m_segments.end(), {sidePoint((corner + 3) % 4), sidePoint(corner)});
}

// Chains the segments through their shared points: the open chains first,
// from their ends in the order of the points, then the closed ones.
void PiCrossContour::joinSegments() {
    int numPoints = m_points.getNum();
    int numSegments = static_cast<int>(m_segments.size() / 2);
    std::vector<std::vector<int>> segmentsAt(numPoints);
    for (int s = 0; s < numSegments; ++s) {
        segmentsAt[m_segments[2 * s]].push_back(s);
        segmentsAt[m_segments[2 * s + 1]].push_back(s);
    }
    std::vector<bool> used(numSegments, false);
    auto follow = [&](int start) {
        int point = start;
        m_coordIndex.push_back(point);
        for (;;) {
            auto next = std::find_if(segmentsAt[point].begin(), segmentsAt[point].end(),
                                     [&](int s) { return !used[s]; });
            if (next == segmentsAt[point].end())
                break;
            used[*next] = true;
            point =
                m_segments[2 * *next] == point ? m_segments[2 * *next + 1] : m_segments[2 * *next];
            m_coordIndex.push_back(point);
        }
        m_coordIndex.push_back(-1);
    };
    for (int point = 0; point < numPoints; ++point)
        if (segmentsAt[point].size() % 2)
            while (std::any_of(segmentsAt[point].begin(), segmentsAt[point].end(),
                               [&](int s) { return !used[s]; }))
                follow(point);
    for (int s = 0; s < numSegments; ++s)
        if (!used[s])
            follow(m_segments[2 * s]);
}
