#pragma once
#include "3Ddata/PiContourCell.h"
#include "3Ddata/PiIsolines.h"

#include <Inventor/SbVec3f.h>

#include <vector>

class PbGrid2D;
class SoMFInt32;

// Contouring of a structured grid over raw arrays, spread over threads.
// Gives exactly what the general path (element and edge records, edge hash
// table) gives for the same grid: the same crossings with the same numbers,
// points, links and boundary starts, and the same band faces in the same
// order.  It relies on the grid's fixed numbering: cell (i, j) meets its
// sides in the order 0 to 3, and the edges that it shares with earlier
// cells (side 0 with cell (i, j - 1), side 3 with cell (i - 1, j)) already
// carry their crossings, so the crossings of a strip of cells i (all j) can
// be numbered from counts alone.
class PiGridContouring {
public:
    // Sorts every node of the grid into its band; false, with nothing else
    // usable, when a value is not finite (the general path skips such
    // cells).  values: one per node; z: one per node or null (then z is
    // 0); isovalues ascending.  The object keeps its arrays from one grid
    // to the next.
    bool computeBands(const PbGrid2D& grid, const float* values, const float* z,
                      const float* isovalues, int numIsovalues);
    // Numbers the crossings strip by strip; returns their count.
    int countCrossings();

    // The nodes' points (x, y and z) into points[node].
    void getNodePoints(SbVec3f* points) const;
    // The point of crossing c into points[c]; records[c] (when given) gets
    // the crossing's isovalue index and c as its point; the boundary
    // crossings are appended to starts (when given) in their order.
    // Remembers the cells that are cut, for joinCrossings.
    void emitCrossings(SbVec3f* points, PiCrossing* records, std::vector<int>* starts);
    // Links the crossings of every cut cell as the joining rule does;
    // returns the number of crossings for which no continuation was found.
    int joinCrossings(const SbVec3f* points, PiCrossing* records) const;
    // The colour bands, after emitCrossings: the whole cells (of one band)
    // as triangle strips (see PiBandStrips) into stripIndex with the band of
    // each strip in stripBands, the cut cells cut into faces (see
    // PiBandCutter) into faceIndex with their bands in faceBands, both cell
    // after cell.  The point of crossing c is points[c] and its index
    // crossingPointBase + c.  Bands whose entry in visibleBands is 0 are
    // left out.
    struct BandShapes {
        SoMFInt32& stripIndex;
        SoMFInt32& stripBands;
        SoMFInt32& faceIndex;
        SoMFInt32& faceBands;
    };
    void cutBands(const SbVec3f* points, int crossingPointBase, const char* visibleBands,
                  const BandShapes& shapes) const;

private:
    // Side numbers of the cell that were created by it (bit s for side s).
    using OwnSides = unsigned;
    struct CutCell {
        int j;
        int firstCrossings[4];
        OwnSides ownSides;
    };

    template <typename OnEdge, typename OnCell>
    void walkStrip(int i, const int* columnIn, int* columnOut, OnEdge&& onEdge,
                   OnCell&& onCell) const;
    template <typename OnEdge, typename OnCell>
    void walkStrips(OnEdge&& onEdge, OnCell&& onCell) const;
    // The whole cells of strip i, as strips.
    template <typename Out>
    void stripWholeCells(int i, const char* visibleBands, Out& coordIndex, Out& bands) const;
    // Cell (i, j) with the given first crossings on its sides.
    void describeCell(int i, int j, const int firstCrossings[4], PiContourCell& cell) const;
    // The crossings of the edge from node a to node b, numbered from
    // firstCrossing.
    PiContourCell::Side sideOf(int a, int b, int firstCrossing) const {
        PiContourCell::Side side;
        side.count = edgeCount(a, b);
        side.firstIso = m_bands[a] < m_bands[b] ? m_bands[a] : m_bands[b];
        side.firstCrossing = side.count ? firstCrossing : 0;
        return side;
    }
    int edgeCount(int a, int b) const {
        return m_bands[a] > m_bands[b] ? m_bands[a] - m_bands[b] : m_bands[b] - m_bands[a];
    }

    const PbGrid2D* m_grid = nullptr;
    int m_numX = 0;
    int m_numY = 0;
    const float* m_values = nullptr;
    const float* m_z = nullptr;
    const float* m_isovalues = nullptr;
    int m_numIsovalues = 0;
    std::vector<int> m_bands;
    // The first crossing of each strip of cells.
    std::vector<int> m_stripFirst;
    // The cut cells of each strip.
    std::vector<std::vector<CutCell>> m_cutCells;
};
