#include "3Ddata/PiGridContouring.h"

#include "3Ddata/PiBandStrips.h"

#include <Quillon/3Ddata/PbGrid2D.h>

#include <Inventor/fields/SoMFInt32.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>

namespace {
// Nodes per task when sorting nodes into bands: small enough for the
// block's values and bands to stay in the first-level cache.
const int s_nodeGrain = 1024;
// Strips of cells per task; each task walks one strip more to learn the
// crossings of the column it starts on.
const int s_stripGrain = 16;
// Up to this many isovalues, a node's band is counted with one comparison
// per isovalue over a whole block (vectorised); beyond, searched.
const int s_linearBandLimit = 32;

void countBelow(const float* values, int count, const float* isovalues, int numIsovalues,
                int* bands) {
    std::fill(bands, bands + count, 0);
    for (int k = 0; k < numIsovalues; ++k) {
        const float iso = isovalues[k];
        for (int n = 0; n < count; ++n)
            bands[n] += iso < values[n];
    }
}

// The first index whose isovalue is not less than the value, without
// branches on the data.
int lowerBound(const float* isovalues, int numIsovalues, float value) {
    if (numIsovalues == 0)
        return 0;
    const float* base = isovalues;
    int length = numIsovalues;
    while (length > 1) {
        const int half = length / 2;
        base += base[half - 1] < value ? half : 0;
        length -= half;
    }
    return static_cast<int>(base - isovalues) + (*base < value);
}

// Infinities and NaN leave NaN when subtracted from themselves.
bool allFinite(const float* values, int count) {
    int numNotFinite = 0;
    for (int n = 0; n < count; ++n)
        numNotFinite += values[n] - values[n] != 0.0f;
    return numNotFinite == 0;
}

const auto s_noEdge = [](int, int, int, const PiContourCell::Side&, bool) {};
const auto s_noCell = [](int, int, const PiContourCell&, unsigned) {};

// Where a crossing's link through a cell is kept: the first link for the
// cell that created its edge, else the second.
int linkSlot(unsigned ownSides, int side) {
    return (ownSides >> side) & 1u ? 0 : 1;
}
} // namespace

bool PiGridContouring::computeBands(const PbGrid2D& grid, const float* values, const float* z,
                                    const float* isovalues, int numIsovalues) {
    m_grid = &grid;
    grid.getDim(m_numX, m_numY);
    m_values = values;
    m_z = z;
    m_isovalues = isovalues;
    m_numIsovalues = numIsovalues;
    const int numNodes = m_numX * m_numY;
    m_bands.resize(numNodes);
    return tbb::parallel_reduce(
        tbb::blocked_range<int>(0, numNodes, s_nodeGrain), true,
        [&](const tbb::blocked_range<int>& range, bool finite) {
            const int count = static_cast<int>(range.size());
            const float* values = m_values + range.begin();
            int* bands = m_bands.data() + range.begin();
            if (m_numIsovalues <= s_linearBandLimit) {
                countBelow(values, count, m_isovalues, m_numIsovalues, bands);
            } else {
                for (int n = 0; n < count; ++n)
                    bands[n] = lowerBound(m_isovalues, m_numIsovalues, values[n]);
            }
            return allFinite(values, count) && finite;
        },
        [](bool a, bool b) { return a && b; });
}

int PiGridContouring::countCrossings() {
    const int numStrips = m_numX >= 2 && m_numY >= 2 ? m_numX - 1 : 0;
    std::vector<int> counts(numStrips, 0);
    tbb::parallel_for(tbb::blocked_range<int>(0, numStrips), [&](const tbb::blocked_range<int>& r) {
        for (int i = r.begin(); i != r.end(); ++i) {
            const int left = i * m_numY, right = left + m_numY;
            int count = 0;
            for (int j = 0; j < m_numY; ++j)
                count += edgeCount(left + j, right + j);
            for (int j = 0; j + 1 < m_numY; ++j)
                count += edgeCount(right + j, right + j + 1);
            if (i == 0)
                for (int j = 0; j + 1 < m_numY; ++j)
                    count += edgeCount(left + j, left + j + 1);
            counts[i] = count;
        }
    });
    m_stripFirst.assign(numStrips + 1, 1);
    for (int i = 0; i < numStrips; ++i)
        m_stripFirst[i + 1] = m_stripFirst[i] + counts[i];
    return m_stripFirst.back() - 1;
}

// Strip i holds the cells (i, j).  Its own edges, in the order in which its
// cells create them, get consecutive crossing numbers from the strip's
// first; columnIn gives the first crossings of the edges along column i
// (made by strip i - 1) and columnOut receives those along column i + 1.
// onEdge meets every cut edge that the strip creates, onCell every cut
// cell.
template <typename OnEdge, typename OnCell>
void PiGridContouring::walkStrip(int i, const int* columnIn, int* columnOut, OnEdge&& onEdge,
                                 OnCell&& onCell) const {
    int next = m_stripFirst[i];
    auto own = [&](int a, int b, bool boundary) {
        const PiContourCell::Side side = sideOf(a, b, next);
        if (side.count) {
            onEdge(i, a, b, side, boundary);
            next += side.count;
        }
        return side;
    };
    PiContourCell cell;
    cell.numSides = 4;
    PiContourCell::Side top;
    const int* bands = m_bands.data();
    for (int j = 0; j + 1 < m_numY; ++j) {
        const int n0 = i * m_numY + j, n1 = n0 + m_numY, n2 = n1 + 1, n3 = n0 + 1;
        // Most cells lie in one band: no crossing on any side.
        if (bands[n0] == bands[n1] && bands[n0] == bands[n2] && bands[n0] == bands[n3]) {
            columnOut[j] = 0;
            top = PiContourCell::Side();
            continue;
        }
        OwnSides ownSides = 0x6;
        if (j == 0) {
            cell.sides[0] = own(n0, n1, true);
            ownSides |= 0x1;
        } else {
            cell.sides[0] = top;
        }
        cell.sides[1] = own(n1, n2, i == m_numX - 2);
        cell.sides[2] = own(n2, n3, j == m_numY - 2);
        if (i == 0) {
            cell.sides[3] = own(n3, n0, true);
            ownSides |= 0x8;
        } else {
            cell.sides[3] = columnIn ? sideOf(n3, n0, columnIn[j]) : PiContourCell::Side();
        }
        columnOut[j] = cell.sides[1].firstCrossing;
        top = cell.sides[2];
        const int nodes[4] = {n0, n1, n2, n3};
        for (int k = 0; k < 4; ++k) {
            cell.nodes[k] = nodes[k];
            cell.bands[k] = m_bands[nodes[k]];
        }
        onCell(i, j, cell, ownSides);
    }
}

template <typename OnEdge, typename OnCell>
void PiGridContouring::walkStrips(OnEdge&& onEdge, OnCell&& onCell) const {
    const int numStrips = static_cast<int>(m_stripFirst.size()) - 1;
    tbb::parallel_for(tbb::blocked_range<int>(0, numStrips, s_stripGrain),
                      [&](const tbb::blocked_range<int>& range) {
                          std::vector<int> columnIn(m_numY), columnOut(m_numY);
                          if (range.begin() > 0)
                              walkStrip(range.begin() - 1, nullptr, columnIn.data(), s_noEdge,
                                        s_noCell);
                          for (int i = range.begin(); i != range.end(); ++i) {
                              walkStrip(i, columnIn.data(), columnOut.data(), onEdge, onCell);
                              columnIn.swap(columnOut);
                          }
                      });
}

void PiGridContouring::getNodePoints(SbVec3f* points) const {
    tbb::parallel_for(tbb::blocked_range<int>(0, m_numX),
                      [&](const tbb::blocked_range<int>& range) {
                          for (int i = range.begin(); i != range.end(); ++i) {
                              for (int j = 0, n = i * m_numY; j < m_numY; ++j, ++n) {
                                  points[n] = m_grid->getNodeCoord(i, j);
                                  points[n][2] = m_z ? m_z[n] : 0.0f;
                              }
                          }
                      });
}

void PiGridContouring::describeCell(int i, int j, const int firstCrossings[4],
                                    PiContourCell& cell) const {
    const int n0 = i * m_numY + j;
    const int nodes[4] = {n0, n0 + m_numY, n0 + m_numY + 1, n0 + 1};
    cell.numSides = 4;
    for (int s = 0; s < 4; ++s) {
        cell.nodes[s] = nodes[s];
        cell.bands[s] = m_bands[nodes[s]];
        cell.sides[s] = sideOf(nodes[s], nodes[(s + 1) % 4], firstCrossings[s]);
    }
}

void PiGridContouring::emitCrossings(SbVec3f* points, PiCrossing* records,
                                     std::vector<int>* starts) {
    const int numStrips = static_cast<int>(m_stripFirst.size()) - 1;
    std::vector<std::vector<int>> stripStarts(starts ? numStrips : 0);
    m_cutCells.assign(numStrips, {});
    auto nodePoint = [this](int node) {
        SbVec3f p = m_grid->getNodeCoord(node);
        p[2] = m_z ? m_z[node] : 0.0f;
        return p;
    };
    auto onEdge = [&](int strip, int a, int b, const PiContourCell::Side& side, bool boundary) {
        if (m_values[b] < m_values[a])
            std::swap(a, b);
        const SbVec3f low = nodePoint(a), high = nodePoint(b);
        for (int k = 0; k < side.count; ++k) {
            const int crossing = side.firstCrossing + k, iso = side.firstIso + k;
            points[crossing] =
                PiContourCell::interpolate(low, high, m_values[a], m_values[b], m_isovalues[iso]);
            if (records)
                records[crossing] = {iso, crossing, {0, 0}, 0};
            if (starts && boundary)
                stripStarts[strip].push_back(crossing);
        }
    };
    auto onCell = [&](int i, int j, const PiContourCell& cell, OwnSides ownSides) {
        m_cutCells[i].push_back({j,
                                 {cell.sides[0].firstCrossing, cell.sides[1].firstCrossing,
                                  cell.sides[2].firstCrossing, cell.sides[3].firstCrossing},
                                 ownSides});
    };
    walkStrips(onEdge, onCell);
    for (const std::vector<int>& strip : stripStarts)
        starts->insert(starts->end(), strip.begin(), strip.end());
}

int PiGridContouring::joinCrossings(const SbVec3f* points, PiCrossing* records) const {
    std::atomic<int> failures{0};
    auto joinCell = [&](const PiContourCell& cell, OwnSides ownSides) {
        // The cell's crossings in their order of creation.
        int order[4], numCut = 0;
        for (int s = 0; s < 4; ++s) {
            if (!cell.sides[s].count)
                continue;
            int at = numCut++;
            for (; at > 0 && cell.sides[order[at - 1]].firstCrossing > cell.sides[s].firstCrossing;
                 --at)
                order[at] = order[at - 1];
            order[at] = s;
        }
        for (int o = 0; o < numCut; ++o) {
            const int s = order[o];
            const PiContourCell::Side& side = cell.sides[s];
            for (int k = 0; k < side.count; ++k) {
                const int crossing = side.firstCrossing + k;
                int& link = records[crossing].link[linkSlot(ownSides, s)];
                if (link)
                    continue;
                const int next = cell.nextCrossing(s, side.firstIso + k, points);
                if (!next) {
                    ++failures;
                    continue;
                }
                link = next;
                records[next].link[linkSlot(ownSides, cell.sideOf(next))] = crossing;
            }
        }
    };
    tbb::parallel_for(tbb::blocked_range<int>(0, static_cast<int>(m_cutCells.size())),
                      [&](const tbb::blocked_range<int>& range) {
                          PiContourCell cell;
                          for (int i = range.begin(); i != range.end(); ++i) {
                              for (const CutCell& cut : m_cutCells[i]) {
                                  describeCell(i, cut.j, cut.firstCrossings, cell);
                                  joinCell(cell, cut.ownSides);
                              }
                          }
                      });
    return failures;
}

template <typename Out>
void PiGridContouring::stripWholeCells(int i, const char* visibleBands, Out& coordIndex,
                                       Out& bands) const {
    PiBandStrips<Out> strips(coordIndex, bands);
    auto cut = m_cutCells[i].begin();
    for (int j = 0; j + 1 < m_numY; ++j) {
        const int n0 = i * m_numY + j;
        const int band = m_bands[n0];
        if (cut != m_cutCells[i].end() && cut->j == j) {
            ++cut;
            strips.end();
        } else if (visibleBands && !visibleBands[band]) {
            strips.end();
        } else {
            const int nodes[4] = {n0, n0 + m_numY, n0 + m_numY + 1, n0 + 1};
            strips.addCell(i, j, nodes, band);
        }
    }
}

// Cut cells are cut once, into the faces of their strip, and the strips of
// whole cells counted; then every strip writes its strips and copies its
// faces at their places.
void PiGridContouring::cutBands(const SbVec3f* points, int crossingPointBase,
                                const char* visibleBands, const BandShapes& shapes) const {
    struct Strip {
        PiVectorOut faceIndex;
        PiVectorOut faceBands;
        PiCountOut stripIndex;
        PiCountOut stripBands;
    };
    const int numStrips = static_cast<int>(m_cutCells.size());
    std::vector<Strip> strips(numStrips);
    tbb::parallel_for(tbb::blocked_range<int>(0, numStrips), [&](const tbb::blocked_range<int>& r) {
        PiBandCutter cutter;
        PiContourCell cell;
        for (int i = r.begin(); i != r.end(); ++i) {
            Strip& strip = strips[i];
            for (const CutCell& cut : m_cutCells[i]) {
                describeCell(i, cut.j, cut.firstCrossings, cell);
                cutter.cut(cell, points, crossingPointBase, false, visibleBands,
                           strip.faceIndex.values, strip.faceBands.values);
            }
            stripWholeCells(i, visibleBands, strip.stripIndex, strip.stripBands);
        }
    });
    // Where each strip's output starts in the four lists.
    std::vector<std::array<int, 4>> starts(numStrips + 1, {0, 0, 0, 0});
    for (int i = 0; i < numStrips; ++i) {
        const Strip& strip = strips[i];
        const int sizes[4] = {strip.stripIndex.count, strip.stripBands.count,
                              static_cast<int>(strip.faceIndex.values.size()),
                              static_cast<int>(strip.faceBands.values.size())};
        for (int k = 0; k < 4; ++k)
            starts[i + 1][k] = starts[i][k] + sizes[k];
    }
    SoMFInt32* lists[4] = {&shapes.stripIndex, &shapes.stripBands, &shapes.faceIndex,
                           &shapes.faceBands};
    int32_t* out[4];
    for (int k = 0; k < 4; ++k) {
        lists[k]->setNum(starts[numStrips][k]);
        out[k] = lists[k]->startEditing();
    }
    tbb::parallel_for(tbb::blocked_range<int>(0, numStrips), [&](const tbb::blocked_range<int>& r) {
        for (int i = r.begin(); i != r.end(); ++i) {
            PiPointerOut stripIndex{out[0] + starts[i][0]}, stripBands{out[1] + starts[i][1]};
            stripWholeCells(i, visibleBands, stripIndex, stripBands);
            const Strip& strip = strips[i];
            std::copy(strip.faceIndex.values.begin(), strip.faceIndex.values.end(),
                      out[2] + starts[i][2]);
            std::copy(strip.faceBands.values.begin(), strip.faceBands.values.end(),
                      out[3] + starts[i][3]);
        }
    });
    for (SoMFInt32* list : lists)
        list->finishEditing();
}
