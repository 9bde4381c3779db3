#pragma once
#include "3Ddata/PiLevelSurface.h"

#include <cstdint>
#include <vector>

class PiMarchingCase;

// The level surface of a structured grid of numX x numY x numZ nodes, cut
// over raw arrays instead of cell objects.  It gives exactly what the
// cell-by-cell walk of PiLevelSurface gives on the same grid (same points
// in the same order, same faces in the same order), only faster:
//   1. every row of nodes along k is classified once: where the level cuts
//      it first and last, and on which side its two ends lie;
//   2. a row of cells is visited only between the first and the last cut of
//      its four rows of nodes, unless their ends lie on different sides;
//   3. the layers of cells are cut in slabs, in parallel; each slab numbers
//      its points as the serial walk would, refers to the points on its
//      lower plane (made by the slab below) by their place, and the slabs
//      are joined in order once all are done.
// An edge's point is made by the first cell in index order that shares the
// edge, which is known from the cell's position alone.
class PiGridLevelSurface {
public:
    PiGridLevelSurface(int numX, int numY, int numZ, const PiLevelSurface::Field& field,
                       float level, bool flagAbove, PiLevelSurface::Style style);
    ~PiGridLevelSurface();

    // Step 1.  Returns false at once when a node value equals the level and
    // levelMayTouchNodes is false.
    bool classifyRows(bool levelMayTouchNodes);
    // True when a value of the field is NaN; cells with such a node are
    // left out.
    bool hasNaN() const { return m_hasNaN; }
    // Steps 2 and 3, into the lists of PiLevelSurface (which are replaced).
    void build(std::vector<int>& pointNodes, std::vector<float>& pointParams,
               std::vector<int32_t>& coordIndex);

    struct RowSpan {
        // First and last cut edge along the row (edge k joins nodes k and
        // k + 1); numZ and -1 when the level does not cut the row.
        int firstCut;
        int lastCut;
        bool startFlag;
        bool endFlag;
    };
    struct Slab;

private:
    template <class Field> void classifyRowsOf(const Field& field);
    template <class Field> void walkSlab(const Field& field, Slab& slab) const;
    template <class Field>
    void cutCell(const Field& field, Slab& slab, int i, int j, int k, unsigned char caseId) const;
    // The values at the corners of cell (i, j, k) in local order; false when
    // one is NaN.
    template <class Field>
    bool cornerValues(const Field& field, int i, int j, int k, float* values) const;
    template <class Field>
    bool hasEarlierCutSharer(const Field& field, int i, int j, int k, int edge) const;
    // The range [begin, end) of cells of row (i, j) that may be cut.
    bool cellRange(int i, int j, int& begin, int& end) const;
    void join(std::vector<Slab>& slabs, std::vector<int>& pointNodes,
              std::vector<float>& pointParams, std::vector<int32_t>& coordIndex) const;

    int m_numX, m_numY, m_numZ;
    PiLevelSurface::Field m_field;
    float m_level;
    bool m_flagAbove;
    PiLevelSurface::Style m_style;
    bool m_hasNaN = false;
    bool m_levelOnNode = false;
    std::vector<RowSpan> m_rows;
    const PiMarchingCase* m_cases[256];
};
