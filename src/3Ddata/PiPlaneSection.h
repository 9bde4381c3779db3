#pragma once
#include "3Ddata/PiEdgePoints.h"

#include <cstdint>
#include <vector>

class PbCellFilterIterator;
class PbGrid3D;
class PbMesh3D;
class SbPlane;

// The section of a volume mesh by a plane, cut cell by cell: one polygon per
// cell that the plane crosses, through the points where it cuts the cell's
// edges (one point per mesh edge, shared by the cells around it), turning
// counter-clockwise about the plane's normal.  A node lies on the plane's
// positive side when its signed distance is 0 or more (as
// PbCell::getEdgesCrossingPlane decides).
class PiPlaneSection {
public:
    void clear();
    // Cuts the cells the iterator gives.
    void cutCells(const PbMesh3D& mesh, const SbPlane& plane, PbCellFilterIterator& cells);
    // Cuts a grid whose nodes lie on axes (regular or rectilinear) by a
    // plane across the given axis: the cells of the layers whose two node
    // planes lie on either side give one quadrangle each, without a look at
    // the other cells.
    void cutAcrossAxis(const PbGrid3D& grid, const SbPlane& plane, int axis);

    const PiEdgePoints& getPoints() const { return m_points; }
    // The polygons, each ended by -1.
    const std::vector<int32_t>& getCoordIndex() const { return m_coordIndex; }

private:
    void addPolygon(std::vector<int>& points, const SbVec3f* coords, const SbVec3f& normal);

    PiEdgePoints m_points;
    std::vector<int32_t> m_coordIndex;
};
