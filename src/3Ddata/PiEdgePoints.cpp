#include "3Ddata/PiEdgePoints.h"

#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace {

// Node coordinates read the fastest way the mesh allows: from one array per
// axis for the grids whose nodes lie on axes, from one array per coordinate
// for the others that keep them, else through getNodeCoord.
class NodeCoordinates {
public:
    explicit NodeCoordinates(const PbMesh3D& mesh) : m_mesh(mesh) {
        auto grid = dynamic_cast<const PbGrid3D*>(&mesh);
        if (grid && (dynamic_cast<const PbRegularCartesianGrid3D*>(grid) ||
                     dynamic_cast<const PbParalCartesianGrid3D*>(grid))) {
            int dims[3];
            grid->getDim(dims[0], dims[1], dims[2]);
            for (int axis = 0; axis < 3; ++axis)
                for (int n = 0; n < dims[axis]; ++n) {
                    int index[3] = {0, 0, 0};
                    index[axis] = n;
                    m_axes[axis].push_back(grid->getNodeCoord(index[0], index[1], index[2])[axis]);
                }
            m_numY = dims[1];
            m_numZ = dims[2];
            return;
        }
        int sizes[3];
        mesh.getCoordinates(m_xyz[0], m_xyz[1], m_xyz[2], sizes[0], sizes[1], sizes[2]);
        if (sizes[0] != mesh.getNumNodes() || !m_xyz[0] || !m_xyz[1] || !m_xyz[2])
            m_xyz[0] = nullptr;
    }

    SbVec3f operator()(int node) const {
        if (!m_axes[0].empty()) {
            int k = node % m_numZ, m = node / m_numZ;
            return SbVec3f(m_axes[0][m / m_numY], m_axes[1][m % m_numY], m_axes[2][k]);
        }
        if (m_xyz[0])
            return SbVec3f(m_xyz[0][node], m_xyz[1][node], m_xyz[2][node]);
        return m_mesh.getNodeCoord(node);
    }

private:
    const PbMesh3D& m_mesh;
    std::vector<float> m_axes[3];
    int m_numY = 0, m_numZ = 0;
    const float* m_xyz[3] = {nullptr, nullptr, nullptr};
};

// Runs fn(point) for every point, in parallel for large surfaces.
template <class Fn> void forEachPoint(int numPoints, Fn fn) {
    tbb::parallel_for(tbb::blocked_range<int>(0, numPoints, 4096),
                      [&](const tbb::blocked_range<int>& points) {
                          for (int p = points.begin(); p != points.end(); ++p)
                              fn(p);
                      });
}

} // namespace

void PiEdgePoints::clear() {
    m_nodes.clear();
    m_params.clear();
    m_table.clear();
}

void PiEdgePoints::computeCoords(const PbMesh3D& mesh, SbVec3f* coords) const {
    NodeCoordinates nodeCoord(mesh);
    forEachPoint(getNum(), [&](int p) {
        SbVec3f low = nodeCoord(m_nodes[2 * p]), high = nodeCoord(m_nodes[2 * p + 1]);
        coords[p] = low + (high - low) * m_params[p];
    });
}

void PiEdgePoints::computeValues(const float* nodeValues, float* pointValues) const {
    forEachPoint(getNum(), [&](int p) {
        float low = nodeValues[m_nodes[2 * p]], high = nodeValues[m_nodes[2 * p + 1]];
        pointValues[p] = low + (high - low) * m_params[p];
    });
}

size_t PiEdgePoints::getMemorySize() const {
    return m_nodes.capacity() * sizeof(int) + m_params.capacity() * sizeof(float) +
           m_table.getMemorySize();
}
