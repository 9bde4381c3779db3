#include "3Ddata/PiGridLevelSurface.h"

#include <Quillon/3Ddata/PbHexahedronCell.h>

#include "3Ddata/PiMarchingCase.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <atomic>
#include <cmath>

struct PiGridLevelSurface::Slab {
    int begin = 0;
    int end = 0;
    std::vector<int> pointNodes;
    std::vector<float> pointParams;
    std::vector<int32_t> coordIndex;
    // Points of the edges along i of the current layer of cells, and of the
    // edges along j and k on its lower and upper planes, by (j, k).
    std::vector<int> xEdges, lowerY, lowerZ, upperY, upperZ;
};

namespace {

// Node values read from an array of one value per node.
struct ArrayField {
    const float* values;
    int numY, numZ;

    struct Row {
        const float* p;
        float operator[](int k) const { return p[k]; }
    };
    Row row(int i, int j) const { return {values + (size_t(i) * numY + j) * numZ}; }
};

// Node values (a[i] + b[j]) + c[k].
struct SumField {
    const float* a;
    const float* b;
    const float* c;

    struct Row {
        float s;
        const float* c;
        float operator[](int k) const { return s + c[k]; }
    };
    Row row(int i, int j) const { return {a[i] + b[j], c}; }
};

// The edges of a grid cell (the hexahedron's edges in order): the local
// node with the lower mesh index, the other one, where the point is kept
// (the cache of the edges along i, or along j or k on the cell's lower or
// upper plane), the offset of its slot from (j, k), and the positions of
// the cell (i, j or k equal to 0) in which the cell is the first to share
// the edge.
enum Cache { X_EDGES, LOWER_Y, UPPER_Y, LOWER_Z, UPPER_Z };
enum Position { I_FIRST = 1, J_FIRST = 2, K_FIRST = 4 };
struct GridEdge {
    int low, high;
    Cache cache;
    int dj, dk;
    int firstWhen;
};
const GridEdge s_gridEdges[12] = {{0, 1, X_EDGES, 0, 0, J_FIRST | K_FIRST},
                                  {1, 2, UPPER_Y, 0, 0, K_FIRST},
                                  {3, 2, X_EDGES, 1, 0, K_FIRST},
                                  {0, 3, LOWER_Y, 0, 0, I_FIRST | K_FIRST},
                                  {4, 5, X_EDGES, 0, 1, J_FIRST},
                                  {5, 6, UPPER_Y, 0, 1, 0},
                                  {7, 6, X_EDGES, 1, 1, 0},
                                  {4, 7, LOWER_Y, 0, 1, I_FIRST},
                                  {0, 4, LOWER_Z, 0, 0, I_FIRST | J_FIRST},
                                  {1, 5, UPPER_Z, 0, 0, J_FIRST},
                                  {2, 6, UPPER_Z, 1, 0, 0},
                                  {3, 7, LOWER_Z, 1, 0, I_FIRST}};

// Steps along i, j and k from a cell's node 0 to its other nodes.
const int s_localNodeSteps[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                    {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

// Facets of a cell towards the cells before it (i - 1, j - 1, k - 1) and
// the facet by which those cells touch it.
const int s_earlierFacets[3][2] = {{0, 1}, {2, 3}, {4, 5}};

// A point on a plane of the slab below, by its place: -2 - (2 slot + axis)
// with axis 0 for an edge along j and 1 along k (-1 ends faces).
int32_t lowerPlaneRef(int slot, int axis) {
    return -2 - (2 * slot + axis);
}

const int s_scanBlock = 32;

// Classifies a row by reading every value: blocks of values on one side,
// the side of the block before, pass without a look at each value.
template <class Row>
PiGridLevelSurface::RowSpan scanRow(const Row& row, int numZ, float level, bool flagAbove,
                                    bool& onLevel, bool& nan) {
    auto flag = [&](float v) { return (v > level) == flagAbove; };
    PiGridLevelSurface::RowSpan span{numZ, -1, flag(row[0]), flag(row[numZ - 1])};
    bool previous = span.startFlag;
    for (int k0 = 0; k0 < numZ; k0 += s_scanBlock) {
        int n = std::min(s_scanBlock, numZ - k0);
        int above = 0;
        bool equal = false, notANumber = false;
        for (int k = k0; k < k0 + n; ++k) {
            float v = row[k];
            above += v > level;
            equal |= v == level;
            notANumber |= std::isnan(v);
        }
        onLevel |= equal;
        nan |= notANumber;
        int flagged = flagAbove ? above : n - above;
        if (flagged == (previous ? n : 0))
            continue;
        for (int k = std::max(k0, 1); k < k0 + n; ++k) {
            bool f = flag(row[k]);
            if (f != previous) {
                span.firstCut = std::min(span.firstCut, k - 1);
                span.lastCut = k - 1;
            }
            previous = f;
        }
    }
    return span;
}

// Classifies a row whose values never decrease (or never increase) along
// it: the level cuts it at most once, found by bisection.
template <class Row>
PiGridLevelSurface::RowSpan searchRow(const Row& row, int numZ, float level, bool flagAbove,
                                      bool increasing, bool& onLevel) {
    auto flag = [&](float v) { return (v > level) == flagAbove; };
    PiGridLevelSurface::RowSpan span{numZ, -1, flag(row[0]), flag(row[numZ - 1])};
    auto firstWhere = [numZ](auto predicate) {
        int lo = 0, hi = numZ;
        while (lo < hi) {
            int mid = (lo + hi) / 2;
            if (predicate(mid))
                hi = mid;
            else
                lo = mid + 1;
        }
        return lo;
    };
    if (span.startFlag != span.endFlag)
        span.firstCut = span.lastCut =
            firstWhere([&](int k) { return flag(row[k]) != span.startFlag; }) - 1;
    int reach = firstWhere([&](int k) { return increasing ? row[k] >= level : row[k] <= level; });
    onLevel |= reach < numZ && row[reach] == level;
    return span;
}

bool hasNaNValue(const float* values, int count) {
    return std::any_of(values, values + count, [](float v) { return std::isnan(v); });
}

int numSlabsFor(int numLayers) {
    return std::max(1, std::min(numLayers, 4 * tbb::this_task_arena::max_concurrency()));
}

} // namespace

PiGridLevelSurface::PiGridLevelSurface(int numX, int numY, int numZ,
                                       const PiLevelSurface::Field& field, float level,
                                       bool flagAbove, PiLevelSurface::Style style)
    : m_numX(numX), m_numY(numY), m_numZ(numZ), m_field(field), m_level(level),
      m_flagAbove(flagAbove), m_style(style) {
    PbHexahedronCell hexahedron;
    for (int id = 0; id < 256; ++id)
        m_cases[id] = hexahedron.getMCcase(static_cast<unsigned char>(id));
}

PiGridLevelSurface::~PiGridLevelSurface() = default;

bool PiGridLevelSurface::classifyRows(bool levelMayTouchNodes) {
    m_rows.resize(size_t(m_numX) * m_numY);
    if (m_field.values)
        classifyRowsOf(ArrayField{m_field.values, m_numY, m_numZ});
    else
        classifyRowsOf(SumField{m_field.axisTerms[0], m_field.axisTerms[1], m_field.axisTerms[2]});
    return levelMayTouchNodes || !m_levelOnNode;
}

template <class Field> void PiGridLevelSurface::classifyRowsOf(const Field& field) {
    bool increasing = false, monotonic = false;
    if constexpr (std::is_same_v<Field, SumField>) {
        const float* c = field.c;
        increasing = std::is_sorted(c, c + m_numZ);
        monotonic = increasing || std::is_sorted(c, c + m_numZ, std::greater<float>());
        m_hasNaN =
            hasNaNValue(field.a, m_numX) || hasNaNValue(field.b, m_numY) || hasNaNValue(c, m_numZ);
        monotonic = monotonic && !m_hasNaN;
    }
    std::atomic<bool> onLevel{false}, nan{false};
    tbb::parallel_for(
        tbb::blocked_range<int>(0, m_numX * m_numY), [&](const tbb::blocked_range<int>& rows) {
            bool rangeOnLevel = false, rangeNaN = false;
            for (int r = rows.begin(); r != rows.end(); ++r) {
                auto row = field.row(r / m_numY, r % m_numY);
                m_rows[r] =
                    monotonic
                        ? searchRow(row, m_numZ, m_level, m_flagAbove, increasing, rangeOnLevel)
                        : scanRow(row, m_numZ, m_level, m_flagAbove, rangeOnLevel, rangeNaN);
            }
            if (rangeOnLevel)
                onLevel = true;
            if (rangeNaN)
                nan = true;
        });
    m_levelOnNode = onLevel;
    m_hasNaN = m_hasNaN || nan;
}

void PiGridLevelSurface::build(std::vector<int>& pointNodes, std::vector<float>& pointParams,
                               std::vector<int32_t>& coordIndex) {
    int numLayers = m_numX - 1;
    std::vector<Slab> slabs(numSlabsFor(numLayers));
    for (size_t s = 0; s < slabs.size(); ++s) {
        slabs[s].begin = static_cast<int>(numLayers * s / slabs.size());
        slabs[s].end = static_cast<int>(numLayers * (s + 1) / slabs.size());
    }
    tbb::parallel_for(size_t(0), slabs.size(), [&](size_t s) {
        if (m_field.values)
            walkSlab(ArrayField{m_field.values, m_numY, m_numZ}, slabs[s]);
        else
            walkSlab(SumField{m_field.axisTerms[0], m_field.axisTerms[1], m_field.axisTerms[2]},
                     slabs[s]);
    });
    join(slabs, pointNodes, pointParams, coordIndex);
}

bool PiGridLevelSurface::cellRange(int i, int j, int& begin, int& end) const {
    const RowSpan* rows[4] = {&m_rows[size_t(i) * m_numY + j], &m_rows[size_t(i + 1) * m_numY + j],
                              &m_rows[size_t(i + 1) * m_numY + j + 1],
                              &m_rows[size_t(i) * m_numY + j + 1]};
    int firstCut = m_numZ, lastCut = -1;
    bool sameStart = true, sameEnd = true;
    for (const RowSpan* row : rows) {
        firstCut = std::min(firstCut, row->firstCut);
        lastCut = std::max(lastCut, row->lastCut);
        sameStart = sameStart && row->startFlag == rows[0]->startFlag;
        sameEnd = sameEnd && row->endFlag == rows[0]->endFlag;
    }
    if (firstCut > lastCut) {
        begin = 0;
        end = sameStart ? 0 : m_numZ - 1;
    } else {
        begin = sameStart ? firstCut : 0;
        end = sameEnd ? lastCut + 1 : m_numZ - 1;
    }
    return begin < end;
}

template <class Field> void PiGridLevelSurface::walkSlab(const Field& field, Slab& slab) const {
    size_t planeSize = size_t(m_numY) * m_numZ;
    for (std::vector<int>* cache :
         {&slab.xEdges, &slab.lowerY, &slab.lowerZ, &slab.upperY, &slab.upperZ})
        cache->resize(planeSize);
    if (slab.begin > 0)
        for (size_t slot = 0; slot < planeSize; ++slot) {
            slab.lowerY[slot] = lowerPlaneRef(static_cast<int>(slot), 0);
            slab.lowerZ[slot] = lowerPlaneRef(static_cast<int>(slot), 1);
        }
    auto flag = [this](float v) { return (v > m_level) == m_flagAbove; };
    for (int i = slab.begin; i < slab.end; ++i) {
        for (int j = 0; j < m_numY - 1; ++j) {
            int begin, end;
            if (!cellRange(i, j, begin, end))
                continue;
            auto r0 = field.row(i, j), r1 = field.row(i + 1, j);
            auto r2 = field.row(i + 1, j + 1), r3 = field.row(i, j + 1);
            auto code = [&](int k) {
                return flag(r0[k]) | flag(r1[k]) << 1 | flag(r2[k]) << 2 | flag(r3[k]) << 3;
            };
            int lower = code(begin);
            for (int k = begin; k < end; ++k) {
                int upper = code(k + 1);
                int caseId = lower | upper << 4;
                lower = upper;
                if (caseId != 0 && caseId != 255)
                    cutCell(field, slab, i, j, k, static_cast<unsigned char>(caseId));
            }
        }
        slab.lowerY.swap(slab.upperY);
        slab.lowerZ.swap(slab.upperZ);
    }
}

template <class Field>
bool PiGridLevelSurface::cornerValues(const Field& field, int i, int j, int k,
                                      float* values) const {
    auto r0 = field.row(i, j), r1 = field.row(i + 1, j);
    auto r2 = field.row(i + 1, j + 1), r3 = field.row(i, j + 1);
    for (int layer = 0; layer < 2; ++layer) {
        values[4 * layer] = r0[k + layer];
        values[4 * layer + 1] = r1[k + layer];
        values[4 * layer + 2] = r2[k + layer];
        values[4 * layer + 3] = r3[k + layer];
    }
    return !m_hasNaN || std::none_of(values, values + 8, [](float v) { return std::isnan(v); });
}

template <class Field>
void PiGridLevelSurface::cutCell(const Field& field, Slab& slab, int i, int j, int k,
                                 unsigned char caseId) const {
    float values[8];
    if (!cornerValues(field, i, j, k, values))
        return;
    int nz = m_numZ, nyz = m_numY * m_numZ;
    int base = (i * m_numY + j) * nz + k;
    const int nodeOffsets[8] = {0, nyz, nyz + nz, nz, 1, nyz + 1, nyz + nz + 1, nz + 1};
    std::vector<int>* caches[5] = {&slab.xEdges, &slab.lowerY, &slab.upperY, &slab.lowerZ,
                                   &slab.upperZ};
    int position = (i == 0 ? I_FIRST : 0) | (j == 0 ? J_FIRST : 0) | (k == 0 ? K_FIRST : 0);
    int edgePoints[12];
    std::fill(edgePoints, edgePoints + 12, -1);
    auto pointOf = [&](int edge) {
        const GridEdge& e = s_gridEdges[edge];
        int& slot = (*caches[e.cache])[size_t(j + e.dj) * nz + k + e.dk];
        bool first = (e.firstWhen & ~position) == 0 ||
                     (m_hasNaN && !hasEarlierCutSharer(field, i, j, k, edge));
        if (first) {
            slot = static_cast<int>(slab.pointParams.size());
            slab.pointNodes.push_back(base + nodeOffsets[e.low]);
            slab.pointNodes.push_back(base + nodeOffsets[e.high]);
            slab.pointParams.push_back((m_level - values[e.low]) /
                                       (values[e.high] - values[e.low]));
        }
        return slot;
    };
    const PiMarchingCase& mc = *m_cases[caseId];
    for (int edge : PiLevelSurface::caseList(mc, m_style)) {
        if (edge >= 0 && edgePoints[edge] < 0)
            edgePoints[edge] = pointOf(edge);
        slab.coordIndex.push_back(edge < 0 ? -1 : edgePoints[edge]);
    }
    PiLevelSurface::endLastStrip(slab.coordIndex, m_style);

    const int cell[3] = {i, j, k};
    for (int axis = 0; axis < 3; ++axis) {
        int facet = s_earlierFacets[axis][0];
        PiMarchingCase::FacetCrossing crossing = mc.getFacetCrossing(facet);
        if (crossing == PiMarchingCase::FACET_UNAMBIGUOUS || cell[axis] == 0)
            continue;
        int neighbour[3] = {i, j, k};
        --neighbour[axis];
        float neighbourValues[8];
        if (!cornerValues(field, neighbour[0], neighbour[1], neighbour[2], neighbourValues))
            continue;
        unsigned int neighbourCase = 0;
        for (int node = 0; node < 8; ++node)
            neighbourCase |=
                static_cast<unsigned int>((neighbourValues[node] > m_level) == m_flagAbove) << node;
        if (m_cases[neighbourCase]->getFacetCrossing(s_earlierFacets[axis][1]) != crossing)
            PiLevelSurface::appendClosingQuad(slab.coordIndex, mc, facet, edgePoints, crossing,
                                              m_style);
    }
}

// Whether a cell before (i, j, k) in index order shares the edge and is
// cut, i.e. has no NaN node.  Cells left out for NaN values make the next
// cell around an edge the first to meet it.
template <class Field>
bool PiGridLevelSurface::hasEarlierCutSharer(const Field& field, int i, int j, int k,
                                             int edge) const {
    const int* low = s_localNodeSteps[s_gridEdges[edge].low];
    const int* high = s_localNodeSteps[s_gridEdges[edge].high];
    const int cell[3] = {i, j, k}, numCells[3] = {m_numX - 1, m_numY - 1, m_numZ - 1};
    int lowNode[3], along = 0;
    for (int axis = 0; axis < 3; ++axis) {
        lowNode[axis] = cell[axis] + low[axis];
        if (high[axis] != low[axis])
            along = axis;
    }
    for (int sharer = 0; sharer < 4; ++sharer) {
        int other[3], step = 0;
        for (int axis = 0; axis < 3; ++axis)
            other[axis] = axis == along ? lowNode[axis] : lowNode[axis] - ((sharer >> step++) & 1);
        bool inside = true;
        for (int axis = 0; axis < 3; ++axis)
            inside = inside && other[axis] >= 0 && other[axis] < numCells[axis];
        float values[8];
        if (inside && std::lexicographical_compare(other, other + 3, cell, cell + 3) &&
            cornerValues(field, other[0], other[1], other[2], values))
            return true;
    }
    return false;
}

// Numbers the slabs' points one after the other and turns the references to
// a lower plane into the points that the slab below made there.
void PiGridLevelSurface::join(std::vector<Slab>& slabs, std::vector<int>& pointNodes,
                              std::vector<float>& pointParams,
                              std::vector<int32_t>& coordIndex) const {
    std::vector<size_t> firstPoint(slabs.size() + 1, 0), firstIndex(slabs.size() + 1, 0);
    for (size_t s = 0; s < slabs.size(); ++s) {
        firstPoint[s + 1] = firstPoint[s] + slabs[s].pointParams.size();
        firstIndex[s + 1] = firstIndex[s] + slabs[s].coordIndex.size();
    }
    pointNodes.resize(2 * firstPoint.back());
    pointParams.resize(firstPoint.back());
    coordIndex.resize(firstIndex.back());
    tbb::parallel_for(size_t(0), slabs.size(), [&](size_t s) {
        const Slab& slab = slabs[s];
        std::copy(slab.pointNodes.begin(), slab.pointNodes.end(),
                  pointNodes.begin() + 2 * firstPoint[s]);
        std::copy(slab.pointParams.begin(), slab.pointParams.end(),
                  pointParams.begin() + firstPoint[s]);
        auto offset = static_cast<int32_t>(firstPoint[s]);
        auto out = coordIndex.begin() + firstIndex[s];
        for (int32_t index : slab.coordIndex) {
            if (index < -1) {
                int place = -2 - index;
                const Slab& below = slabs[s - 1];
                const std::vector<int>& plane = place % 2 ? below.lowerZ : below.lowerY;
                index = plane[place / 2] + static_cast<int32_t>(firstPoint[s - 1]);
            } else if (index >= 0) {
                index += offset;
            }
            *out++ = index;
        }
    });
}
