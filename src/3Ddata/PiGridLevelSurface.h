#pragma once
#include "3Ddata/PiLevelSurface.h"

#include <cstdint>
#include <vector>

class PiMarchingCase;

// The level surface of a structured grid of numX x numY x numZ nodes, cut
// over raw arrays instead of cell objects.  It gives exactly what the
// cell-by-cell walk of PiLevelSurface gives on the same grid (same points
// in the same order, same faces in the same order), only faster:
//   - the layers of cells (along i) are cut in slabs, in parallel; each slab
//     numbers its points as the serial walk would, refers to the points on
//     its lower plane (made by the slab below) by their place, and the
//     slabs are joined in order once all are done;
//   - before a layer is cut, the rows of nodes along k on its upper plane
//     are classified: where the level cuts them and on which side they
//     start and end (read while the plane is still in the cache);
//   - in a row of cells, only the cells at a cut of one of its four rows of
//     nodes, or between cuts where the rows lie on different sides, are
//     looked at.
// An edge's point is made by the first cell in index order that shares the
// edge, which is known from the cell's position alone.
class PiGridLevelSurface {
public:
    PiGridLevelSurface(int numX, int numY, int numZ, const PiLevelSurface::Field& field,
                       float level, bool flagAbove, PiLevelSurface::Style style);
    ~PiGridLevelSurface();

    // Cuts the grid into the lists of PiLevelSurface (which are replaced).
    // Returns false, with the lists left as they were, when a node value
    // equals the level and levelMayTouchNodes is false.
    bool build(bool levelMayTouchNodes, std::vector<int>& pointNodes,
               std::vector<float>& pointParams, std::vector<int32_t>& coordIndex);
    // True when a value of the field is NaN; cells with such a node are
    // left out.
    bool hasNaN() const { return m_hasNaN; }

    struct RowSpan {
        // The first two cut edges along the row (edge k joins nodes k and
        // k + 1), the last one and their number, counted up to 3.
        int cuts[2];
        int lastCut;
        int numCuts;
        bool startFlag;
        bool endFlag;
    };
    struct Slab;

private:
    std::vector<Slab> walkSlabs() const;
    template <class Field> void walkSlab(const Field& field, Slab& slab) const;
    // Classifies the rows of nodes of plane i.
    template <class Field>
    void classifyPlane(const Field& field, int i, Slab& slab, std::vector<RowSpan>& spans) const;
    template <class Field>
    void cutCell(const Field& field, Slab& slab, int i, int j, int k, unsigned char caseId) const;
    // The values at the corners of cell (i, j, k) in local order; false when
    // one is NaN.
    template <class Field>
    bool cornerValues(const Field& field, int i, int j, int k, float* values) const;
    template <class Field>
    bool hasEarlierCutSharer(const Field& field, int i, int j, int k, int edge) const;
    // Calls visit(begin, end) for the runs of cells of row j of the slab's
    // current layer that may be cut, in order.
    template <class Visit> void forEachCutRun(const Slab& slab, int j, Visit visit) const;
    void join(std::vector<Slab>& slabs, std::vector<int>& pointNodes,
              std::vector<float>& pointParams, std::vector<int32_t>& coordIndex) const;

    int m_numX, m_numY, m_numZ;
    PiLevelSurface::Field m_field;
    float m_level;
    bool m_flagAbove;
    PiLevelSurface::Style m_style;
    bool m_hasNaN = false;
    // For values summed along the axes: whether the terms along k never
    // decrease (or never increase), so that rows are searched, not read.
    bool m_monotonic = false;
    const PiMarchingCase* m_cases[256];
};
