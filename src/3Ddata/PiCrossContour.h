#pragma once
#include "3Ddata/PiEdgePoints.h"

#include <cstdint>
#include <vector>

class PbMesh3D;
class SbPlane;

// The outline of the section of a volume mesh by a plane: where the plane
// cuts the faces of the mesh's boundary (the sides of a grid, the facets of
// an unstructured mesh that belong to one cell only), joined into
// polylines through the points where it cuts the boundary's edges.  A node
// lies on the plane's positive side when its signed distance is 0 or more.
class PiCrossContour {
public:
    void build(const PbMesh3D& mesh, const SbPlane& plane);

    const PiEdgePoints& getPoints() const { return m_points; }
    // The polylines, each ended by -1; a closed one ends at its first point.
    const std::vector<int32_t>& getCoordIndex() const { return m_coordIndex; }

    // Adds the segments where the plane cuts one face (3 or 4 nodes, with
    // their signed distances): one, or two for a quadrangle whose diagonal
    // nodes lie on the same side, joining the positive ones when the
    // face's centre is on the positive side.
    void crossPlaneAndQuadrangle(const int* nodes, const float* distances, int count);

private:
    void joinSegments();

    PiEdgePoints m_points;
    std::vector<int> m_segments;
    std::vector<int32_t> m_coordIndex;
};
