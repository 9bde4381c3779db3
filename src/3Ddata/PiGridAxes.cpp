#include "3Ddata/PiGridAxes.h"

#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/3Ddata/PbGrid3D.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>

namespace {

// Fraction of the widest cell added around x, covering the rounding of a
// cell's own parametric test.
const float s_slack = 1e-3f;

} // namespace

PiGridAxes::PiGridAxes(const PbGrid3D& grid) : m_geometryId(grid.getGeometryId()), m_numAxes(3) {
    int dims[3];
    grid.getDim(dims[0], dims[1], dims[2]);
    for (int axis = 0; axis < 3; ++axis) {
        std::vector<float> coords(std::max(dims[axis], 0));
        for (int n = 0; n < dims[axis]; ++n) {
            int index[3] = {0, 0, 0};
            index[axis] = n;
            coords[n] = grid.getNodeCoord(index[0], index[1], index[2])[axis];
        }
        m_axes[axis] = makeAxis(std::move(coords));
    }
}

PiGridAxes::PiGridAxes(const PbGrid2D& grid) : m_geometryId(grid.getGeometryId()), m_numAxes(2) {
    int dims[2];
    grid.getDim(dims[0], dims[1]);
    for (int axis = 0; axis < 2; ++axis) {
        std::vector<float> coords(std::max(dims[axis], 0));
        for (int n = 0; n < dims[axis]; ++n)
            coords[n] = grid.getNodeCoord(axis == 0 ? n : 0, axis == 1 ? n : 0)[axis];
        m_axes[axis] = makeAxis(std::move(coords));
    }
}

PiGridAxes::Axis PiGridAxes::makeAxis(std::vector<float> coords) {
    Axis axis;
    if (std::is_sorted(coords.begin(), coords.end()))
        axis.direction = 1;
    else if (std::is_sorted(coords.begin(), coords.end(), std::greater<float>()))
        axis.direction = -1;
    for (size_t n = 1; n < coords.size(); ++n)
        axis.maxWidth = std::max(axis.maxWidth, std::fabs(coords[n] - coords[n - 1]));
    if (axis.direction < 0)
        for (float& c : coords)
            c = -c;
    axis.coords = std::move(coords);
    return axis;
}

void PiGridAxes::candidateCells(int axisIndex, float x, float tolerance, int& lo, int& hi) const {
    if (axisIndex >= m_numAxes) {
        lo = hi = 0;
        return;
    }
    const Axis& axis = m_axes[axisIndex];
    int numCells = static_cast<int>(axis.coords.size()) - 1;
    lo = 0;
    hi = numCells - 1;
    if (axis.direction == 0 || numCells < 1)
        return;
    float position = x * axis.direction;
    float reach = (std::max(tolerance, 0.0f) + s_slack) * axis.maxWidth +
                  std::fabs(position) * FLT_EPSILON + FLT_MIN;
    const std::vector<float>& coords = axis.coords;
    auto firstAtOrAbove = std::lower_bound(coords.begin(), coords.end(), position - reach);
    auto firstAbove = std::upper_bound(coords.begin(), coords.end(), position + reach);
    lo = std::max(static_cast<int>(firstAtOrAbove - coords.begin()) - 1, 0);
    hi = std::min(static_cast<int>(firstAbove - coords.begin()) - 1, numCells - 1);
}
