#pragma once
#include <Inventor/SbVec3f.h>

#include <vector>

// A crossing-point record of the contouring: one per isovalue per cut
// edge, numbered from 1 (record 0 is a dummy, so that 0 means "none").
struct PiCrossing {
    // Index of the isovalue in the adjusted list.
    int iso;
    // Index of the crossing's point in the point array.
    int point;
    // The neighbouring crossing through the edge's first and through its
    // second element; 0 while unknown, and for a boundary edge's missing
    // second element.
    int link[2];
    // The edge record (general path only; 0 on the fast grid path).
    int edge;
};

// Isolines as polylines: open lines from a boundary crossing to another,
// then closed lines, each in the order of its first crossing.  A closed
// line repeats its first point at its end.  A line that breaks off where a
// crossing found no continuation is open and starts at one of its ends.
class PiIsolines {
public:
    // Follows the links of the crossings (points[crossing.point] is the
    // position of a crossing), starting with the given boundary crossings.
    void build(const std::vector<PiCrossing>& crossings, const SbVec3f* points,
               const std::vector<int>& starts);
    void clear();

    int getNumLines() const { return static_cast<int>(m_sizes.size()); }
    // The first point of line i is getPoints()[getLineStart(i)].
    int getLineStart(int line) const { return m_starts[line]; }
    int getLineSize(int line) const { return m_sizes[line]; }
    int getIsoIndex(int line) const { return m_isoIndices[line]; }
    bool isClosed(int line) const { return m_closed[line] != 0; }
    const std::vector<SbVec3f>& getPoints() const { return m_points; }

    bool operator==(const PiIsolines& other) const;

private:
    int follow(const std::vector<PiCrossing>& crossings, int from, int previous,
               std::vector<char>& visited) const;
    void addLine(const std::vector<PiCrossing>& crossings, const SbVec3f* points, int first,
                 std::vector<char>& visited);
    // An end of the line through a crossing, or 0 when the line is closed.
    int findEnd(const std::vector<PiCrossing>& crossings, int crossing) const;

    std::vector<SbVec3f> m_points;
    std::vector<int> m_starts;
    std::vector<int> m_sizes;
    std::vector<int> m_isoIndices;
    std::vector<char> m_closed;
};
