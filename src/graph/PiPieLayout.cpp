#include "graph/PiPieLayout.h"

#include "graph/PiText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {
// Inside, a box that covers another moves along its slice's middle by
// this share of the radius at a time, at most this many times each way.
const float s_insideStep = 0.08f;
const int s_insideTries = 12;

SbVec2f direction(float angle) {
    return SbVec2f(std::cos(angle), std::sin(angle));
}

// The corners of a box turned about its centre.
void corners(const SbVec2f& center, const SbVec2f& size, float angle, SbVec2f out[4]) {
    const SbVec2f u = direction(angle) * (0.5f * size[0]);
    const SbVec2f v = direction(angle + static_cast<float>(M_PI_2)) * (0.5f * size[1]);
    out[0] = center - u - v;
    out[1] = center + u - v;
    out[2] = center + u + v;
    out[3] = center - u + v;
}

// Whether the projections of the two boxes' corners on the axis are apart.
bool apart(const SbVec2f a[4], const SbVec2f b[4], const SbVec2f& axis) {
    float minA = std::numeric_limits<float>::max(), maxA = -minA;
    float minB = minA, maxB = -minA;
    for (int i = 0; i < 4; ++i) {
        minA = std::min(minA, a[i].dot(axis));
        maxA = std::max(maxA, a[i].dot(axis));
        minB = std::min(minB, b[i].dot(axis));
        maxB = std::max(maxB, b[i].dot(axis));
    }
    return maxA <= minB || maxB <= minA;
}
} // namespace

PiPieLayout::PiPieLayout(const SbVec2f& center, float radius, float outerRadius, float gap)
    : m_center(center), m_radius(radius), m_outerRadius(std::max(outerRadius, radius)), m_gap(gap) {
}

bool PiPieLayout::overlap(const SbVec2f& centerA, const SbVec2f& sizeA, float angleA,
                          const SbVec2f& centerB, const SbVec2f& sizeB, float angleB) {
    SbVec2f a[4], b[4];
    corners(centerA, sizeA, angleA, a);
    corners(centerB, sizeB, angleB, b);
    const float axes[] = {angleA, angleA + static_cast<float>(M_PI_2), angleB,
                          angleB + static_cast<float>(M_PI_2)};
    for (float axis : axes)
        if (apart(a, b, direction(axis)))
            return false;
    return true;
}

// ------------------------------------------------------------- inside

std::vector<PiPieLayout::Placement> PiPieLayout::placeInside(const std::vector<Slice>& slices,
                                                             const std::vector<SbVec2f>& sizes,
                                                             float distance, bool radial) const {
    std::vector<Placement> placements(slices.size());
    std::vector<SbVec2f> grown;
    for (const SbVec2f& size : sizes)
        grown.push_back(size + SbVec2f(m_gap, m_gap));
    for (size_t i = 0; i < slices.size(); ++i) {
        Placement& placement = placements[i];
        placement.angle = radial ? PiText::readableAngle(slices[i].middle) : 0.0f;
        const SbVec2f outward = direction(slices[i].middle);
        for (int k = 0; k <= 2 * s_insideTries && !placement.placed; ++k) {
            // distance, then a step further out, a step further in, ...
            const float shift = static_cast<float>((k + 1) / 2) * (k % 2 ? 1.0f : -1.0f);
            const float t = distance + shift * s_insideStep * m_radius;
            if (t <= 0.0f || t >= m_radius)
                continue;
            const SbVec2f center = slices[i].center + outward * t;
            bool free = true;
            for (size_t j = 0; j < i && free; ++j)
                free = !placements[j].placed ||
                       !overlap(center, grown[i], placement.angle, placements[j].center, grown[j],
                                placements[j].angle);
            if (free) {
                placement.center = center;
                placement.placed = true;
            }
        }
    }
    return placements;
}

// ------------------------------------------------------------ outside

bool PiPieLayout::spread(std::vector<Interval>& intervals, float gap, float low, float high) {
    const size_t n = intervals.size();
    std::vector<size_t> order(n);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return intervals[a].wanted < intervals[b].wanted; });
    float total = 0.0f;
    for (const Interval& interval : intervals)
        total += interval.length;
    total += gap * static_cast<float>(n > 0 ? n - 1 : 0);
    const bool fits = total <= high - low;
    if (!fits) {
        low = -std::numeric_limits<float>::infinity();
        high = std::numeric_limits<float>::infinity();
    }

    // Runs of intervals (first, end in the order) held together, with the
    // low end of the run: the mean of what each member asks for, kept
    // within the bounds.
    struct Run {
        size_t first, end;
        float start, length;
    };
    auto place = [&](Run& run) {
        float sum = 0.0f, offset = 0.0f;
        for (size_t k = run.first; k < run.end; ++k) {
            const Interval& interval = intervals[order[k]];
            sum += interval.wanted - offset - 0.5f * interval.length;
            offset += interval.length + gap;
        }
        run.length = offset - gap;
        run.start = sum / static_cast<float>(run.end - run.first);
        run.start = std::max(low, std::min(run.start, high - run.length));
    };
    std::vector<Run> runs;
    for (size_t k = 0; k < n; ++k) {
        runs.push_back(Run{k, k + 1, 0.0f, 0.0f});
        place(runs.back());
        while (runs.size() >= 2) {
            Run& before = runs[runs.size() - 2];
            const Run& last = runs.back();
            if (before.start + before.length + gap <= last.start)
                break;
            before.end = last.end;
            runs.pop_back();
            place(runs.back());
        }
    }
    for (const Run& run : runs) {
        float position = run.start;
        for (size_t k = run.first; k < run.end; ++k) {
            Interval& interval = intervals[order[k]];
            interval.middle = position + 0.5f * interval.length;
            position += interval.length + gap;
        }
    }
    return fits;
}

PiPieLayout::Side PiPieLayout::sideOf(float middle, Outside outside) const {
    const SbVec2f d = direction(middle);
    switch (outside) {
    case ROWS:
        return d[1] >= 0.0f ? TOP : BOTTOM;
    case SQUARE:
        if (std::fabs(d[0]) >= std::fabs(d[1]))
            return d[0] >= 0.0f ? RIGHT : LEFT;
        return d[1] >= 0.0f ? TOP : BOTTOM;
    default:
        return d[0] >= 0.0f ? RIGHT : LEFT;
    }
}

float PiPieLayout::clearance(float low, float high) const {
    const float distance =
        low <= 0.0f && high >= 0.0f ? 0.0f : std::min(std::fabs(low), std::fabs(high));
    if (distance >= m_outerRadius)
        return 0.0f;
    return std::sqrt(m_outerRadius * m_outerRadius - distance * distance);
}

std::vector<PiPieLayout::Placement> PiPieLayout::placeOutside(const std::vector<Slice>& slices,
                                                              const std::vector<SbVec2f>& sizes,
                                                              Outside outside, float legOut,
                                                              float legSide, float boxGap) const {
    std::vector<Placement> placements(slices.size());
    std::vector<int> members[4];
    for (size_t i = 0; i < slices.size(); ++i)
        members[sideOf(slices[i].middle, outside)].push_back(static_cast<int>(i));
    // The rows of a square keep between its columns, or give their boxes to
    // the columns.
    for (Side row : {TOP, BOTTOM}) {
        if (members[row].empty() || placeSide(row, members[row], slices, sizes, outside, legOut,
                                              legSide, boxGap, placements))
            continue;
        for (int i : members[row])
            members[direction(slices[i].middle)[0] >= 0.0f ? RIGHT : LEFT].push_back(i);
    }
    for (Side column : {RIGHT, LEFT})
        if (!members[column].empty())
            placeSide(column, members[column], slices, sizes, outside, legOut, legSide, boxGap,
                      placements);
    return placements;
}

// Spreads the side's boxes along it, then sets each box beyond the end of
// its leader.  False, with nothing placed, when the side is a row of a
// square that the boxes do not fit.
bool PiPieLayout::placeSide(Side side, const std::vector<int>& members,
                            const std::vector<Slice>& slices, const std::vector<SbVec2f>& sizes,
                            Outside outside, float legOut, float legSide, float boxGap,
                            std::vector<Placement>& placements) const {
    const int across = side == RIGHT || side == LEFT ? 0 : 1;
    const int along = 1 - across;
    const float sign = side == RIGHT || side == TOP ? 1.0f : -1.0f;
    const float square = m_outerRadius + legOut + legSide + boxGap;
    const bool bounded = outside == SQUARE && across == 1;
    std::vector<Interval> intervals;
    for (int i : members) {
        const SbVec2f elbow = m_center + direction(slices[i].middle) * (m_outerRadius + legOut);
        intervals.push_back(Interval{elbow[along], sizes[i][along], 0.0f});
    }
    const float infinity = std::numeric_limits<float>::infinity();
    const bool fits = spread(intervals, m_gap, bounded ? m_center[along] - square : -infinity,
                             bounded ? m_center[along] + square : infinity);
    if (bounded && !fits)
        return false;
    for (size_t k = 0; k < members.size(); ++k) {
        const int i = members[k];
        const SbVec2f outward = direction(slices[i].middle);
        const SbVec2f rim = slices[i].center + outward * m_radius;
        const SbVec2f elbow = m_center + outward * (m_outerRadius + legOut);
        float inner;
        if (outside == RADIAL || outside == HORIZONTAL) {
            inner = elbow[across] + sign * ((outside == HORIZONTAL ? legSide : 0.0f) + boxGap);
            const float low = intervals[k].middle - 0.5f * sizes[i][along] - m_center[along];
            const float high = low + sizes[i][along];
            const float clear = m_center[across] + sign * (clearance(low, high) + boxGap);
            inner = sign > 0.0f ? std::max(inner, clear) : std::min(inner, clear);
        } else {
            inner = m_center[across] + sign * square;
        }
        Placement& placement = placements[i];
        placement.placed = true;
        placement.center[across] = inner + sign * 0.5f * sizes[i][across];
        placement.center[along] = intervals[k].middle;
        SbVec2f tip;
        tip[across] = inner - sign * boxGap;
        tip[along] = intervals[k].middle;
        placement.leader = outside == RADIAL ? std::vector<SbVec2f>{rim, tip}
                                             : std::vector<SbVec2f>{rim, elbow, tip};
    }
    return true;
}
