#include "3Ddata/PiCellLocator2D.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh2D.h>

#include <algorithm>
#include <cmath>

namespace {

const int MAX_NEWTON_STEPS = 20;
const double NEWTON_CONVERGENCE = 1e-7;
const int MAX_BUCKETS_PER_AXIS = 1024;

// Shape functions of the cell (3 or 4 nodes) at (r, s) and their
// derivatives along r and s.
void shape(int numNodes, double r, double s, double* w, double* dr, double* ds) {
    if (numNodes == 3) {
        w[0] = 1 - r - s, w[1] = r, w[2] = s;
        dr[0] = -1, dr[1] = 1, dr[2] = 0;
        ds[0] = -1, ds[1] = 0, ds[2] = 1;
        return;
    }
    w[0] = (1 - r) * (1 - s), w[1] = r * (1 - s), w[2] = r * s, w[3] = (1 - r) * s;
    dr[0] = -(1 - s), dr[1] = 1 - s, dr[2] = s, dr[3] = -s;
    ds[0] = -(1 - r), ds[1] = -r, ds[2] = r, ds[3] = 1 - r;
}

struct Jacobian {
    double xr = 0, xs = 0, yr = 0, ys = 0;
    double det() const { return xr * ys - xs * yr; }
};

bool isInside(int numNodes, double r, double s, double tolerance) {
    auto within = [tolerance](double v) { return v >= -tolerance && v <= 1 + tolerance; };
    return within(r) && within(s) && (numNodes == 4 || within(1 - r - s));
}

} // namespace

PiCellLocator2D::PiCellLocator2D(const PbMesh2D& mesh, float tolerance) : m_tolerance(tolerance) {
    m_nodes.reserve(mesh.getNumNodes());
    for (int n = 0; n < mesh.getNumNodes(); ++n) {
        SbVec3f p = mesh.getNodeCoord(n);
        m_nodes.emplace_back(p[0], p[1]);
    }
    m_cellStarts.reserve(mesh.getNumCells() + 1);
    m_cellStarts.push_back(0);
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const PbCell* cell = mesh.getCell(c);
        for (int k = 0; k < cell->getNumNodes(); ++k)
            m_cellNodes.push_back(cell->getNodeIndex(k));
        m_cellStarts.push_back(static_cast<int>(m_cellNodes.size()));
    }
    buildBuckets();
}

int PiCellLocator2D::bucketOf(float value, float origin, float size, int count) const {
    double position = size > 0 ? (double(value) - origin) / size * count : 0.0;
    // Written so that a value that is not a number lands in bucket 0.
    if (!(position >= 1.0))
        return 0;
    return position >= count ? count - 1 : static_cast<int>(position);
}

void PiCellLocator2D::buildBuckets() {
    int numCells = static_cast<int>(m_cellStarts.size()) - 1;
    std::vector<SbBox2f> boxes(std::max(numCells, 0));
    for (int c = 0; c < numCells; ++c) {
        for (int k = m_cellStarts[c]; k < m_cellStarts[c + 1]; ++k)
            boxes[c].extendBy(m_nodes[m_cellNodes[k]]);
        // Points accepted within the tolerance lie up to that fraction of the
        // cell's size outside its box.
        float dx, dy;
        boxes[c].getSize(dx, dy);
        float margin = (m_tolerance > 0 ? m_tolerance : 0) * std::max(dx, dy) * 1.01f + 1e-6f;
        boxes[c].extendBy(boxes[c].getMin() - SbVec2f(margin, margin));
        boxes[c].extendBy(boxes[c].getMax() + SbVec2f(margin, margin));
        m_extent.extendBy(boxes[c]);
    }
    int perAxis = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(numCells))));
    m_numBucketsX = m_numBucketsY = std::clamp(perAxis, 1, MAX_BUCKETS_PER_AXIS);
    m_buckets.assign(m_numBucketsX * m_numBucketsY, {});
    if (numCells <= 0)
        return;
    float sizeX, sizeY;
    m_extent.getSize(sizeX, sizeY);
    const SbVec2f& origin = m_extent.getMin();
    for (int c = 0; c < numCells; ++c) {
        int i0 = bucketOf(boxes[c].getMin()[0], origin[0], sizeX, m_numBucketsX);
        int i1 = bucketOf(boxes[c].getMax()[0], origin[0], sizeX, m_numBucketsX);
        int j0 = bucketOf(boxes[c].getMin()[1], origin[1], sizeY, m_numBucketsY);
        int j1 = bucketOf(boxes[c].getMax()[1], origin[1], sizeY, m_numBucketsY);
        for (int i = i0; i <= i1; ++i)
            for (int j = j0; j <= j1; ++j)
                m_buckets[i * m_numBucketsY + j].push_back(c);
    }
}

bool PiCellLocator2D::locate(const SbVec2f& point, Location& location) const {
    if (m_extent.isEmpty() || !m_extent.intersect(point))
        return false;
    float sizeX, sizeY;
    m_extent.getSize(sizeX, sizeY);
    const SbVec2f& origin = m_extent.getMin();
    int i = bucketOf(point[0], origin[0], sizeX, m_numBucketsX);
    int j = bucketOf(point[1], origin[1], sizeY, m_numBucketsY);
    for (int cell : m_buckets[i * m_numBucketsY + j])
        if (locateInCell(cell, point, location))
            return true;
    return false;
}

bool PiCellLocator2D::locateInCell(int cell, const SbVec2f& point, Location& location) const {
    int first = m_cellStarts[cell];
    int numNodes = m_cellStarts[cell + 1] - first;
    if (numNodes != 3 && numNodes != 4)
        return false;
    double w[4], dr[4], ds[4];
    double r = numNodes == 3 ? 1.0 / 3 : 0.5;
    double s = r;
    Jacobian jac;
    for (int step = 0;; ++step) {
        if (step == MAX_NEWTON_STEPS)
            return false;
        shape(numNodes, r, s, w, dr, ds);
        double fx = -point[0], fy = -point[1];
        jac = Jacobian();
        for (int k = 0; k < numNodes; ++k) {
            const SbVec2f& p = m_nodes[m_cellNodes[first + k]];
            fx += w[k] * p[0], fy += w[k] * p[1];
            jac.xr += dr[k] * p[0], jac.xs += ds[k] * p[0];
            jac.yr += dr[k] * p[1], jac.ys += ds[k] * p[1];
        }
        double det = jac.det();
        if (det == 0.0)
            return false;
        double deltaR = (fx * jac.ys - fy * jac.xs) / det;
        double deltaS = (jac.xr * fy - jac.yr * fx) / det;
        r -= deltaR, s -= deltaS;
        if (std::fabs(deltaR) < NEWTON_CONVERGENCE && std::fabs(deltaS) < NEWTON_CONVERGENCE)
            break;
    }
    if (!isInside(numNodes, r, s, m_tolerance))
        return false;
    shape(numNodes, r, s, w, dr, ds);
    jac = Jacobian();
    for (int k = 0; k < numNodes; ++k) {
        const SbVec2f& p = m_nodes[m_cellNodes[first + k]];
        jac.xr += dr[k] * p[0], jac.xs += ds[k] * p[0];
        jac.yr += dr[k] * p[1], jac.ys += ds[k] * p[1];
    }
    double det = jac.det();
    if (det == 0.0)
        return false;
    location.cell = cell;
    location.numNodes = numNodes;
    for (int k = 0; k < numNodes; ++k) {
        location.nodes[k] = m_cellNodes[first + k];
        location.weights[k] = static_cast<float>(w[k]);
        // (r, s) as functions of (x, y) have the inverse Jacobian as
        // derivatives.
        double dx = (dr[k] * jac.ys - ds[k] * jac.yr) / det;
        double dy = (ds[k] * jac.xr - dr[k] * jac.xs) / det;
        location.weightDerivs[k].setValue(static_cast<float>(dx), static_cast<float>(dy));
    }
    return true;
}
