#include "3Ddata/PiGridLevelSurface.h"

#include <Quillon/3Ddata/PbHexahedronCell.h>

#include "3Ddata/PiMarchingCase.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>

struct PiGridLevelSurface::Slab {
    int begin = 0;
    int end = 0;
    std::vector<int> pointNodes;
    std::vector<float> pointParams;
    std::vector<int32_t> coordIndex;
    // Points of the edges along i of the current layer of cells, by (j, k),
    // for the two rows j of nodes the current row of cells touches; and of
    // the edges along j and k on the layer's lower and upper planes, by
    // (j, k) and the axis (after the walk the lower plane is the slab's
    // top).
    // Left uninitialised: a slot is read only after the cell that makes its
    // point has written it.
    std::unique_ptr<int[]> xEdges, lower, upper;
    // How the rows of nodes of the lower and upper plane are cut.
    std::vector<PiGridLevelSurface::RowSpan> lowerSpans, upperSpans;
    bool onLevel = false;
    bool nan = false;
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
enum Cache { X_EDGES, LOWER_PLANE, UPPER_PLANE };
enum Position { I_FIRST = 1, J_FIRST = 2, K_FIRST = 4 };
struct GridEdge {
    int low, high;
    Cache cache;
    int axis;
    int dj, dk;
    int firstWhen;
};
const GridEdge s_gridEdges[12] = {{0, 1, X_EDGES, 0, 0, 0, J_FIRST | K_FIRST},
                                  {1, 2, UPPER_PLANE, 0, 0, 0, K_FIRST},
                                  {3, 2, X_EDGES, 0, 1, 0, K_FIRST},
                                  {0, 3, LOWER_PLANE, 0, 0, 0, I_FIRST | K_FIRST},
                                  {4, 5, X_EDGES, 0, 0, 1, J_FIRST},
                                  {5, 6, UPPER_PLANE, 0, 0, 1, 0},
                                  {7, 6, X_EDGES, 0, 1, 1, 0},
                                  {4, 7, LOWER_PLANE, 0, 0, 1, I_FIRST},
                                  {0, 4, LOWER_PLANE, 1, 0, 0, I_FIRST | J_FIRST},
                                  {1, 5, UPPER_PLANE, 1, 0, 0, J_FIRST},
                                  {2, 6, UPPER_PLANE, 1, 1, 0, 0},
                                  {3, 7, LOWER_PLANE, 1, 1, 0, I_FIRST}};

// Steps along i, j and k from a cell's node 0 to its other nodes.
const int s_localNodeSteps[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                    {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

// Facets of a cell towards the cells before it (i - 1, j - 1, k - 1) and
// the facet by which those cells touch it.
const int s_earlierFacets[3][2] = {{0, 1}, {2, 3}, {4, 5}};

// A point on the top plane of the slab below, by its place in the plane's
// cache (-1 ends faces).
int32_t lowerPlaneRef(size_t place) {
    return -2 - static_cast<int32_t>(place);
}

const int s_scanBlock = 32;

void addCut(PiGridLevelSurface::RowSpan& span, int edge) {
    if (span.numCuts < 2)
        span.cuts[span.numCuts] = edge;
    span.lastCut = edge;
    span.numCuts = std::min(span.numCuts + 1, 3);
}

// Counts, over values [k0, k0 + n) of a row, those above the level, those
// equal to it and the NaN ones; a loop the compiler turns into vector code.
template <class Row, int n>
void countBlock(const Row& row, int k0, float level, int& above, int& equal, int& nan) {
    for (int k = k0; k < k0 + n; ++k) {
        float v = row[k];
        above += v > level;
        equal += v == level;
        nan += v != v;
    }
}

// Classifies a row by reading every value: blocks of values on the side of
// the value before them pass without a look at each value.
template <class Row>
PiGridLevelSurface::RowSpan scanRow(const Row& row, int numZ, float level, bool flagAbove,
                                    bool& onLevel, bool& nan) {
    auto flag = [&](float v) { return (v > level) == flagAbove; };
    PiGridLevelSurface::RowSpan span{{-1, -1}, -1, 0, flag(row[0]), flag(row[numZ - 1])};
    bool previous = span.startFlag;
    int equal = 0, notANumber = 0;
    for (int k0 = 0; k0 < numZ; k0 += s_scanBlock) {
        int n = std::min(s_scanBlock, numZ - k0), above = 0;
        if (n == s_scanBlock)
            countBlock<Row, s_scanBlock>(row, k0, level, above, equal, notANumber);
        else
            for (int k = k0; k < numZ; ++k)
                countBlock<Row, 1>(row, k, level, above, equal, notANumber);
        int flagged = flagAbove ? above : n - above;
        if (flagged == (previous ? n : 0))
            continue;
        for (int k = std::max(k0, 1); k < k0 + n; ++k) {
            bool f = flag(row[k]);
            if (f != previous)
                addCut(span, k - 1);
            previous = f;
        }
    }
    onLevel |= equal > 0;
    nan |= notANumber > 0;
    return span;
}

// Classifies a row whose values never decrease (or never increase) along
// it: the level cuts it at most once, found by bisection.  Values equal to
// the level lie together on the lower side of the cut, next to it, or at
// an end of a row that the level does not cut.
template <class Row>
PiGridLevelSurface::RowSpan searchRow(const Row& row, int numZ, float level, bool flagAbove,
                                      bool& onLevel) {
    auto flag = [&](float v) { return (v > level) == flagAbove; };
    PiGridLevelSurface::RowSpan span{{-1, -1}, -1, 0, flag(row[0]), flag(row[numZ - 1])};
    int before = 0, after = numZ - 1;
    if (span.startFlag != span.endFlag) {
        int lo = 1, hi = numZ - 1;
        while (lo < hi) {
            int mid = (lo + hi) / 2;
            if (flag(row[mid]) != span.startFlag)
                hi = mid;
            else
                lo = mid + 1;
        }
        addCut(span, lo - 1);
        before = lo - 1;
        after = lo;
    }
    onLevel |= row[before] == level || row[after] == level;
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

bool PiGridLevelSurface::build(bool levelMayTouchNodes, std::vector<int>& pointNodes,
                               std::vector<float>& pointParams, std::vector<int32_t>& coordIndex) {
    if (!m_field.values) {
        const float* c = m_field.axisTerms[2];
        m_monotonic =
            std::is_sorted(c, c + m_numZ) || std::is_sorted(c, c + m_numZ, std::greater<float>());
        m_hasNaN = hasNaNValue(m_field.axisTerms[0], m_numX) ||
                   hasNaNValue(m_field.axisTerms[1], m_numY) || hasNaNValue(c, m_numZ);
        m_monotonic = m_monotonic && !m_hasNaN;
    }
    std::vector<Slab> slabs = walkSlabs();
    bool onLevel = std::any_of(slabs.begin(), slabs.end(), [](const Slab& s) { return s.onLevel; });
    if (onLevel && !levelMayTouchNodes)
        return false;
    // Cells left out for NaN values change which cell is the first around
    // an edge: the walk is made again, minding them, in the rare fields
    // that have them.
    if (!m_hasNaN && std::any_of(slabs.begin(), slabs.end(), [](const Slab& s) { return s.nan; })) {
        m_hasNaN = true;
        slabs = walkSlabs();
    }
    join(slabs, pointNodes, pointParams, coordIndex);
    return true;
}

std::vector<PiGridLevelSurface::Slab> PiGridLevelSurface::walkSlabs() const {
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
    return slabs;
}

template <class Field>
void PiGridLevelSurface::classifyPlane(const Field& field, int i, Slab& slab,
                                       std::vector<RowSpan>& spans) const {
    spans.resize(m_numY);
    for (int j = 0; j < m_numY; ++j) {
        auto row = field.row(i, j);
        spans[j] = m_monotonic ? searchRow(row, m_numZ, m_level, m_flagAbove, slab.onLevel)
                               : scanRow(row, m_numZ, m_level, m_flagAbove, slab.onLevel, slab.nan);
    }
}

// The four rows of nodes of a row of cells are each on one side of the
// level between their cuts; cells between the cuts of all four rows are
// cut only when the rows' sides differ there.  A row cut more than twice
// is not followed cut by cut: every cell from the first to the last cut
// of the four rows is looked at.
template <class Visit>
void PiGridLevelSurface::forEachCutRun(const Slab& slab, int j, Visit visit) const {
    const RowSpan* rows[4] = {&slab.lowerSpans[j], &slab.upperSpans[j], &slab.upperSpans[j + 1],
                              &slab.lowerSpans[j + 1]};
    bool many = false;
    int firstCut = m_numZ, lastCut = -1;
    for (const RowSpan* row : rows) {
        many = many || row->numCuts > 2;
        if (row->numCuts > 0) {
            firstCut = std::min(firstCut, row->cuts[0]);
            lastCut = std::max(lastCut, row->lastCut);
        }
    }
    bool sides[4];
    auto sidesDiffer = [&] {
        return sides[1] != sides[0] || sides[2] != sides[0] || sides[3] != sides[0];
    };
    for (int r = 0; r < 4; ++r)
        sides[r] = rows[r]->startFlag;
    if (many) {
        bool startsCut = sidesDiffer();
        for (int r = 0; r < 4; ++r)
            sides[r] = rows[r]->endFlag;
        visit(startsCut ? 0 : firstCut, sidesDiffer() ? m_numZ - 1 : lastCut + 1);
        return;
    }
    // The rows' cuts merged in order; the rows cut at a cell change sides
    // after it.
    int next = 0, head[4] = {0, 0, 0, 0};
    for (;;) {
        int cut = m_numZ;
        for (int r = 0; r < 4; ++r)
            if (head[r] < rows[r]->numCuts)
                cut = std::min(cut, rows[r]->cuts[head[r]]);
        if (cut == m_numZ)
            break;
        visit(sidesDiffer() ? next : cut, cut + 1);
        for (int r = 0; r < 4; ++r)
            if (head[r] < rows[r]->numCuts && rows[r]->cuts[head[r]] == cut) {
                sides[r] = !sides[r];
                ++head[r];
            }
        next = cut + 1;
    }
    if (sidesDiffer())
        visit(next, m_numZ - 1);
}

template <class Field> void PiGridLevelSurface::walkSlab(const Field& field, Slab& slab) const {
    size_t planeSize = size_t(m_numY) * m_numZ;
    slab.xEdges.reset(new int[2 * size_t(m_numZ)]);
    slab.lower.reset(new int[2 * planeSize]);
    slab.upper.reset(new int[2 * planeSize]);
    if (slab.begin > 0)
        for (size_t place = 0; place < 2 * planeSize; ++place)
            slab.lower[place] = lowerPlaneRef(place);
    auto flag = [this](float v) { return (v > m_level) == m_flagAbove; };
    classifyPlane(field, slab.begin, slab, slab.lowerSpans);
    for (int i = slab.begin; i < slab.end; ++i) {
        classifyPlane(field, i + 1, slab, slab.upperSpans);
        for (int j = 0; j < m_numY - 1; ++j) {
            auto r0 = field.row(i, j), r1 = field.row(i + 1, j);
            auto r2 = field.row(i + 1, j + 1), r3 = field.row(i, j + 1);
            auto code = [&](int k) {
                return flag(r0[k]) | flag(r1[k]) << 1 | flag(r2[k]) << 2 | flag(r3[k]) << 3;
            };
            forEachCutRun(slab, j, [&](int begin, int end) {
                int lower = begin < end ? code(begin) : 0;
                for (int k = begin; k < end; ++k) {
                    int upper = code(k + 1);
                    int caseId = lower | upper << 4;
                    lower = upper;
                    if (caseId != 0 && caseId != 255)
                        cutCell(field, slab, i, j, k, static_cast<unsigned char>(caseId));
                }
            });
        }
        slab.lower.swap(slab.upper);
        slab.lowerSpans.swap(slab.upperSpans);
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
    auto cacheSlot = [&](const GridEdge& e) -> int& {
        size_t row = size_t(j + e.dj), column = size_t(k + e.dk);
        if (e.cache == X_EDGES)
            return slab.xEdges[(row & 1) * nz + column];
        int* plane = e.cache == LOWER_PLANE ? slab.lower.get() : slab.upper.get();
        return plane[2 * (row * nz + column) + e.axis];
    };
    int position = (i == 0 ? I_FIRST : 0) | (j == 0 ? J_FIRST : 0) | (k == 0 ? K_FIRST : 0);
    int edgePoints[12];
    std::fill(edgePoints, edgePoints + 12, -1);
    auto pointOf = [&](int edge) {
        const GridEdge& e = s_gridEdges[edge];
        int& slot = cacheSlot(e);
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
                index = slabs[s - 1].lower[-2 - index] + static_cast<int32_t>(firstPoint[s - 1]);
            } else if (index >= 0) {
                index += offset;
            }
            *out++ = index;
        }
    });
}
