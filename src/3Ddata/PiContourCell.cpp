#include "3Ddata/PiContourCell.h"

#include <algorithm>
#include <cmath>

namespace {
// For a crossing on side s of a quadrangle: the two adjacent sides and the
// opposite side, in the order in which the saddle rule looks at them.
const int s_saddleSides[4][3] = {{1, 3, 2}, {2, 0, 3}, {1, 3, 0}, {2, 0, 1}};

float distanceXY(const SbVec3f& a, const SbVec3f& b) {
    const float dx = a[0] - b[0], dy = a[1] - b[1];
    return dx * dx + dy * dy;
}
} // namespace

int PiContourCell::sideOf(int crossing) const {
    for (int s = 0; s < numSides; ++s)
        if (sides[s].count > 0 && crossing >= sides[s].firstCrossing &&
            crossing < sides[s].firstCrossing + sides[s].count)
            return s;
    return -1;
}

int PiContourCell::numCrossings() const {
    int total = 0;
    for (int s = 0; s < numSides; ++s)
        total += sides[s].count;
    return total;
}

int PiContourCell::nextCrossing(int s, int iso, const SbVec3f* points) const {
    int others = 0, other = 0;
    for (int t = 0; t < numSides; ++t) {
        if (t != s && crossingOn(t, iso)) {
            ++others;
            other = crossingOn(t, iso);
        }
    }
    if (others == 1)
        return other;
    if (numSides != 4 || others != 3)
        return 0;
    const SbVec3f& p = points[crossingOn(s, iso)];
    const int a = crossingOn(s_saddleSides[s][0], iso);
    const int b = crossingOn(s_saddleSides[s][1], iso);
    const int o = crossingOn(s_saddleSides[s][2], iso);
    const float pa = distanceXY(p, points[a]), pb = distanceXY(p, points[b]);
    const float ao = distanceXY(points[a], points[o]), bo = distanceXY(points[b], points[o]);
    const float shortest = std::min(std::min(pa, pb), std::min(ao, bo));
    if (pa == shortest)
        return a;
    if (pb == shortest || ao == shortest)
        return b;
    return a;
}

// ------------------------------------------------------------ band cutting

void PiBandCutter::collectEntries(const PiContourCell& cell, int crossingPointBase) {
    m_entries.clear();
    for (int s = 0; s < cell.numSides; ++s) {
        m_entries.push_back({cell.nodes[s], 0, cell.bands[s]});
        const PiContourCell::Side& side = cell.sides[s];
        // Crossings run from the lower node to the higher one.
        const bool ascending = cell.bands[s] < cell.bands[(s + 1) % cell.numSides];
        for (int k = 0; k < side.count; ++k) {
            const int index = ascending ? k : side.count - 1 - k;
            const int crossing = side.firstCrossing + index;
            m_entries.push_back({crossingPointBase + crossing, crossing, side.firstIso + index});
        }
    }
}

// Pairs the crossing entries of each isovalue as the isolines join them;
// false when some crossing has no partner.
bool PiBandCutter::pairCrossings(const PiContourCell& cell, const SbVec3f* points) {
    const int m = static_cast<int>(m_entries.size());
    m_partner.assign(m, -1);
    auto entryOf = [&](int crossing) {
        for (int e = 0; e < m; ++e)
            if (m_entries[e].crossing == crossing)
                return e;
        return -1;
    };
    for (int e = 0; e < m; ++e) {
        if (!m_entries[e].crossing || m_partner[e] >= 0)
            continue;
        // The first crossing (in creation order) of this isovalue still
        // unpaired chooses its partner, as when the isolines are joined.
        const int iso = m_entries[e].value;
        int first = e;
        for (int f = 0; f < m; ++f)
            if (m_entries[f].crossing && m_entries[f].value == iso && m_partner[f] < 0 &&
                m_entries[f].crossing < m_entries[first].crossing)
                first = f;
        const int next = cell.nextCrossing(cell.sideOf(m_entries[first].crossing), iso, points);
        const int partner = next ? entryOf(next) : -1;
        if (partner < 0 || m_partner[partner] >= 0)
            return false;
        m_partner[first] = partner;
        m_partner[partner] = first;
        // The remaining pair of a saddle is then the other two.
        int rest[2], numRest = 0;
        for (int f = 0; f < m; ++f)
            if (m_entries[f].crossing && m_entries[f].value == iso && m_partner[f] < 0 &&
                numRest < 2)
                rest[numRest++] = f;
        if (numRest == 2) {
            m_partner[rest[0]] = rest[1];
            m_partner[rest[1]] = rest[0];
        }
    }
    return true;
}

// The band of the face that the boundary arc from entry arc to the next
// one belongs to: that of a node at either end, else the band between the
// two crossings' isovalues.
int PiBandCutter::arcBand(int arc) const {
    const Entry& from = m_entries[arc];
    const Entry& to = m_entries[(arc + 1) % m_entries.size()];
    if (!from.crossing)
        return from.value;
    if (!to.crossing)
        return to.value;
    return std::max(from.value, to.value);
}

int PiBandCutter::cut(const PiContourCell& cell, const SbVec3f* points, int crossingPointBase,
                      bool reversed, const char* visibleBands, std::vector<int32_t>& coordIndex,
                      std::vector<int32_t>& faceBands) {
    collectEntries(cell, crossingPointBase);
    const int m = static_cast<int>(m_entries.size());
    const bool whole = m == cell.numSides || !pairCrossings(cell, points);
    m_arcUsed.assign(m, 0);
    int numFaces = 0;
    for (int start = 0; start < m; ++start) {
        if (m_arcUsed[start])
            continue;
        m_face.clear();
        const int band = whole ? cell.bands[0] : arcBand(start);
        if (whole) {
            for (int s = 0; s < cell.numSides; ++s)
                m_face.push_back(cell.nodes[s]);
            std::fill(m_arcUsed.begin(), m_arcUsed.end(), 1);
        } else {
            // Along the boundary, turning onto the isoline segment at each
            // crossing; at most every entry twice.
            int current = start;
            for (int steps = 0; steps <= 2 * m; ++steps) {
                m_face.push_back(m_entries[current].point);
                m_arcUsed[current] = 1;
                const int next = (current + 1) % m;
                if (m_entries[next].crossing) {
                    m_face.push_back(m_entries[next].point);
                    current = m_partner[next];
                } else {
                    current = next;
                }
                if (current == start)
                    break;
            }
        }
        if (visibleBands && !visibleBands[band])
            continue;
        if (reversed)
            std::reverse(m_face.begin(), m_face.end());
        coordIndex.insert(coordIndex.end(), m_face.begin(), m_face.end());
        coordIndex.push_back(-1);
        faceBands.push_back(band);
        ++numFaces;
    }
    return numFaces;
}

int PiBandCutter::cutPolygon(const SbVec3f* corners, const float* values, int numCorners,
                             const float* isovalues, int numIsovalues, std::vector<SbVec3f>& points,
                             std::vector<int32_t>& coordIndex, std::vector<int32_t>& faceBands) {
    if ((numCorners != 3 && numCorners != 4) ||
        !std::all_of(values, values + numCorners, [](float v) { return std::isfinite(v); }))
        return 0;
    // The polygon as a cell whose crossings are numbered from 1 side by side.
    PiContourCell cell;
    cell.numSides = numCorners;
    const int first = static_cast<int>(points.size());
    for (int k = 0; k < numCorners; ++k) {
        cell.nodes[k] = first + k;
        cell.bands[k] = static_cast<int>(
            std::lower_bound(isovalues, isovalues + numIsovalues, values[k]) - isovalues);
        points.push_back(corners[k]);
    }
    m_crossingPoints.assign(1, SbVec3f(0.0f, 0.0f, 0.0f));
    for (int s = 0; s < numCorners; ++s) {
        int low = s, high = (s + 1) % numCorners;
        if (values[high] < values[low])
            std::swap(low, high);
        PiContourCell::Side& side = cell.sides[s];
        side.firstIso = cell.bands[low];
        side.count = cell.bands[high] - cell.bands[low];
        side.firstCrossing = side.count ? static_cast<int>(m_crossingPoints.size()) : 0;
        for (int k = 0; k < side.count; ++k)
            m_crossingPoints.push_back(PiContourCell::interpolate(corners[low], corners[high],
                                                                  values[low], values[high],
                                                                  isovalues[side.firstIso + k]));
    }
    const int crossingPointBase = static_cast<int>(points.size()) - 1;
    points.insert(points.end(), m_crossingPoints.begin() + 1, m_crossingPoints.end());
    return cut(cell, m_crossingPoints.data(), crossingPointBase, false, nullptr, coordIndex,
               faceBands);
}
