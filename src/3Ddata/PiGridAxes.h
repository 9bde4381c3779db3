#pragma once
#include <vector>

class PbGrid2D;
class PbGrid3D;

// The node coordinates along each axis of a grid whose node (i, j, k) lies
// at (X(i), Y(j), Z(k)), or (i, j) at (X(i), Y(j)) for a flat surface grid,
// for locating points without visiting every cell.  Axes whose coordinates
// are monotone are searched by bisection; others offer all their cells as
// candidates.
class PiGridAxes {
public:
    explicit PiGridAxes(const PbGrid3D& grid);
    // The x and y axes; z has no cells.
    explicit PiGridAxes(const PbGrid2D& grid);

    bool isBuiltFor(unsigned int geometryId) const { return geometryId == m_geometryId; }

    // The cells lo to hi along an axis (empty when lo > hi) include every
    // cell whose span, enlarged by tolerance times its width, holds x.  A
    // small slack keeps cells that accept x only through rounding.
    void candidateCells(int axis, float x, float tolerance, int& lo, int& hi) const;

private:
    struct Axis {
        // Coordinates times direction, so that they never decrease.
        std::vector<float> coords;
        // 1 or -1 for a monotone axis, 0 otherwise.
        int direction = 0;
        float maxWidth = 0.0f;
    };

    static Axis makeAxis(std::vector<float> coords);

    unsigned int m_geometryId;
    Axis m_axes[3];
};
