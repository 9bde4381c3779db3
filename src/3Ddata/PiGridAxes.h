#pragma once
#include <Inventor/SbVec3f.h>

#include <memory>
#include <vector>

class PbCell;
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
    // The x and y axes; the cells of a surface grid have k = 0.
    explicit PiGridAxes(const PbGrid2D& grid);

    // The axes of a grid, kept in cache and built anew when the grid's
    // geometry changed.
    template <class Grid>
    static const PiGridAxes& of(const Grid& grid, std::unique_ptr<PiGridAxes>& cache) {
        if (!cache || cache->m_geometryId != grid.getGeometryId())
            cache = std::make_unique<PiGridAxes>(grid);
        return *cache;
    }

    // Gives test(i, j, k) the candidate cells for the point (see
    // candidateCells) in ascending order of i, then j, then k, and returns
    // the first cell that test returns, or null.
    template <class Test>
    const PbCell* firstCandidate(const SbVec3f& point, float tolerance, Test test) const {
        int lo[3], hi[3];
        for (int axis = 0; axis < 3; ++axis)
            candidateCells(axis, point[axis], tolerance, lo[axis], hi[axis]);
        for (int i = lo[0]; i <= hi[0]; ++i)
            for (int j = lo[1]; j <= hi[1]; ++j)
                for (int k = lo[2]; k <= hi[2]; ++k)
                    if (const PbCell* cell = test(i, j, k))
                        return cell;
        return nullptr;
    }

private:
    // The cells lo to hi along an axis (empty when lo > hi) include every
    // cell whose span, enlarged by tolerance times its width, holds x.  A
    // small slack keeps cells that accept x only through rounding.
    void candidateCells(int axis, float x, float tolerance, int& lo, int& hi) const;

    struct Axis {
        // Coordinates times direction, so that they never decrease.
        std::vector<float> coords;
        // 1 or -1 for a monotone axis, 0 otherwise.
        int direction = 0;
        float maxWidth = 0.0f;
    };

    static Axis makeAxis(std::vector<float> coords);

    unsigned int m_geometryId;
    int m_numAxes;
    Axis m_axes[3];
};
