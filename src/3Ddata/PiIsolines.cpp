#include "3Ddata/PiIsolines.h"

namespace {
// The link that leads away from the crossing we came from.
int stepFrom(const PiCrossing& crossing, int previous) {
    return crossing.link[0] != previous ? crossing.link[0] : crossing.link[1];
}
} // namespace

void PiIsolines::clear() {
    m_points.clear();
    m_starts.clear();
    m_sizes.clear();
    m_isoIndices.clear();
    m_closed.clear();
}

void PiIsolines::build(const std::vector<PiCrossing>& crossings, const SbVec3f* points,
                       const std::vector<int>& starts) {
    clear();
    std::vector<char> visited(crossings.size(), 0);
    for (int start : starts)
        if (start > 0 && !visited[start])
            addLine(crossings, points, start, visited);
    for (int i = 1; i < static_cast<int>(crossings.size()); ++i) {
        if (visited[i])
            continue;
        const int end = findEnd(crossings, i);
        addLine(crossings, points, end && !visited[end] ? end : i, visited);
    }
}

int PiIsolines::findEnd(const std::vector<PiCrossing>& crossings, int crossing) const {
    const PiCrossing& first = crossings[crossing];
    if (!first.link[0] || !first.link[1])
        return crossing;
    int previous = first.link[0], current = crossing;
    for (size_t steps = 0; steps < crossings.size(); ++steps) {
        const int next = stepFrom(crossings[current], previous);
        if (!next)
            return current;
        if (next == crossing)
            return 0;
        previous = current;
        current = next;
    }
    return 0;
}

void PiIsolines::addLine(const std::vector<PiCrossing>& crossings, const SbVec3f* points, int first,
                         std::vector<char>& visited) {
    const int lineStart = static_cast<int>(m_points.size());
    bool closed = false;
    int previous = 0, current = first;
    for (;;) {
        visited[current] = 1;
        m_points.push_back(points[crossings[current].point]);
        const int next = stepFrom(crossings[current], previous);
        if (!next)
            break;
        if (visited[next]) {
            closed = next == first;
            break;
        }
        previous = current;
        current = next;
    }
    if (closed)
        m_points.push_back(m_points[lineStart]);
    const int size = static_cast<int>(m_points.size()) - lineStart;
    if (size < 2) {
        m_points.resize(lineStart);
        return;
    }
    m_starts.push_back(lineStart);
    m_sizes.push_back(size);
    m_isoIndices.push_back(crossings[first].iso);
    m_closed.push_back(closed);
}

bool PiIsolines::operator==(const PiIsolines& other) const {
    return m_points == other.m_points && m_starts == other.m_starts && m_sizes == other.m_sizes &&
           m_isoIndices == other.m_isoIndices && m_closed == other.m_closed;
}
