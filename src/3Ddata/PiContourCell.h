#pragma once
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <vector>

// One cell (a triangle or a quadrangle) as the contouring sees it: its
// nodes, the band of each node and the crossing points on each side.
// Crossing points are numbered from 1 in their order of creation; the
// crossings of one side are consecutive, by ascending isovalue from the
// side's lower node to its higher node.  Both the general path (element and
// edge records) and the fast grid path describe their cells this way, so
// that the joining rule and the band cutting below exist once.
//
// A node's band is the number of isovalues strictly below its value: the
// isovalues k with band(a) <= k < band(b) cut the side from a to b.
struct PiContourCell {
    struct Side {
        // 0 when the side is not cut.
        int firstCrossing = 0;
        // The isovalue index of the first crossing.
        int firstIso = 0;
        int count = 0;
    };

    int numSides = 0;
    // Point indices of the nodes; side s runs from node s to node s + 1.
    int nodes[4] = {0, 0, 0, 0};
    int bands[4] = {0, 0, 0, 0};
    Side sides[4];

    // The crossing of isovalue iso on side s; 0 when the side has none.
    int crossingOn(int s, int iso) const {
        const Side& side = sides[s];
        const int k = iso - side.firstIso;
        return side.count > 0 && k >= 0 && k < side.count ? side.firstCrossing + k : 0;
    }
    // The side that holds a crossing; -1 when none does.
    int sideOf(int crossing) const;
    int numCrossings() const;

    // The crossing that continues the isoline of isovalue iso arriving on
    // side s, or 0 when none is found.  In a quadrangle cut four times by
    // the same isovalue (a saddle), the pairing that contains the shortest
    // segment in x and y wins.  points[crossing] is the crossing's point.
    int nextCrossing(int s, int iso, const SbVec3f* points) const;

    // The point where iso crosses the edge from the node of the lower value
    // to the node of the higher one, by linear interpolation.
    static SbVec3f interpolate(const SbVec3f& low, const SbVec3f& high, float lowValue,
                               float highValue, float iso) {
        const float t = (iso - lowValue) / (highValue - lowValue);
        return SbVec3f(low[0] + t * (high[0] - low[0]), low[1] + t * (high[1] - low[1]),
                       low[2] + t * (high[2] - low[2]));
    }
};

// Cuts cells into the faces of the colour bands.  Within a cell the faces
// are bounded by the cell's sides and by the isoline segments that the
// joining rule draws there, so bands and isolines meet exactly.  Keeps its
// working arrays between cells; use one object per thread.
class PiBandCutter {
public:
    // Appends the cell's faces to coordIndex (point indices, each face ended
    // by -1) with the band of each face to faceBands.  A crossing's point
    // index is crossingPointBase + its number; points[crossing] is its
    // point.  reversed writes every face in the opposite order.  Faces of a
    // band whose entry in visibleBands is 0 are left out (visibleBands may
    // be null).  Returns the number of faces written.
    int cut(const PiContourCell& cell, const SbVec3f* points, int crossingPointBase, bool reversed,
            const char* visibleBands, std::vector<int32_t>& coordIndex,
            std::vector<int32_t>& faceBands);

    // The same for a polygon of its own (a triangle or a quadrangle, for
    // instance a piece of a level surface): corners with their values,
    // ascending isovalues.  Appends the corners and the crossing points to
    // points and the faces, as indices into points, to coordIndex with
    // their bands to faceBands.  Returns the number of faces written.
    int cutPolygon(const SbVec3f* corners, const float* values, int numCorners,
                   const float* isovalues, int numIsovalues, std::vector<SbVec3f>& points,
                   std::vector<int32_t>& coordIndex, std::vector<int32_t>& faceBands);

private:
    struct Entry {
        int point;
        // 0 for a node.
        int crossing;
        // The node's band, or the crossing's isovalue index.
        int value;
    };

    void collectEntries(const PiContourCell& cell, int crossingPointBase);
    bool pairCrossings(const PiContourCell& cell, const SbVec3f* points);
    int arcBand(int arc) const;

    std::vector<Entry> m_entries;
    std::vector<int> m_partner;
    std::vector<char> m_arcUsed;
    std::vector<int32_t> m_face;
    std::vector<SbVec3f> m_crossingPoints;
};
