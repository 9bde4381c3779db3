#pragma once
#include "3Ddata/PiLabelBox.h"

#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <memory>
#include <vector>

class PiBoxGrid;

// Labels of contour lines: where they go along the lines, and the lines
// cut around them.  Everything is measured in the plane (x, y) of the
// points; z only follows.
//
// Placement.  Lines are walked in order.  Along a line that carries a
// label text, candidate positions follow one another every 1.5 label
// widths; a running length grows by that step at each one, and a
// candidate is tried only once the running length reaches the gap, after
// which it starts again from 0.  The first candidate of a line, half a gap
// from its start or at the middle of a line shorter than the gap, is
// always tried; lines shorter than two label widths get no label.  So
// labels stand about a gap apart along long lines, and shorter lines are
// labelled at their middle.  A candidate's box is centred on the line and
// turned along the chord that the line makes across the label's width
// (never upside down), or kept horizontal or vertical.  It is taken when
//  - its line passes through it: the piece of the line around the label
//    leaves the box on both sides;
//  - with a clipping polygon, the box's bounding rectangle lies inside the
//    polygon;
//  - it overlaps no label taken before;
//  - with crossings forbidden, no other line of a forbidden kind crosses
//    it (major lines for CROSS_MINOR_CONTOUR, any line for
//    DONT_CROSS_CONTOUR), nor does its own line elsewhere than in the
//    piece through the label.
// Labels already taken and the line segments are kept in grids of boxes,
// so each test looks only at what lies near the candidate.
class PiContourLabels {
public:
    enum Path { TANGENTIAL_PATH = 0, HORIZONTAL_PATH = 1, VERTICAL_PATH = 2 };
    enum CrossStatus { CROSS_CONTOUR = 0, CROSS_MINOR_CONTOUR = 1, DONT_CROSS_CONTOUR = 2 };

    struct Line {
        // The line's points are points[start] to points[start + size - 1]; a
        // closed line repeats its first point at its end.
        int start;
        int size;
        bool closed;
        bool major;
        // The label text that the line carries (an index of the text
        // frames), or -1 for none.
        int text;
    };
    struct Label {
        int line;
        SbVec3f anchor;
        // Of the text, about +Z.
        float angle;
        PiLabelBox box;
    };
    // A run of a line: from the point at parameter firstT of its segment
    // first (segment s joins the line's points s and s + 1) over
    // numSegments segments, to lastT of the last one; it may run over the
    // end of a closed line into its start.
    struct Piece {
        int line;
        int first;
        float firstT;
        int numSegments;
        float lastT;
    };

    // Keeps the points and the lines; they must outlive the object.
    PiContourLabels(const SbVec3f* points, const std::vector<Line>& lines);
    ~PiContourLabels();

    // For each label text, the rectangle that its label covers in its own
    // frame, around the anchor, margins included.
    void setTextFrames(const std::vector<SbBox2f>& frames) { m_frames = frames; }
    void setGap(float gap) { m_gap = gap; }
    void setPath(Path path) { m_path = path; }
    void setCrossStatus(CrossStatus status) { m_crossStatus = status; }
    // Fewer than three points restrict nothing.
    void setClipPolygon(const std::vector<SbVec2f>& polygon) { m_clipPolygon = polygon; }

    // Places the labels (see above) and returns them in the order in which
    // they were taken.
    const std::vector<Label>& computeContourLineAnnot();

    // The pieces of the lines that remain when the lines for which clip is
    // set are cut where they pass through boxes; the other lines stay
    // whole.  Pieces come line by line, along each line.
    static std::vector<Piece> clipContourLinesByAnnot(const SbVec3f* points,
                                                      const std::vector<Line>& lines,
                                                      const std::vector<char>& clip,
                                                      const std::vector<PiLabelBox>& boxes);
    // The points of a piece: numSegments + 1 of them, written from out on.
    static SbVec3f* getPiecePoints(const SbVec3f* points, const Line& line, const Piece& piece,
                                   SbVec3f* out);

private:
    class LineChunks;
    struct Position {
        int segment;
        float t;
    };

    void placeAlong(int line, std::vector<float>& lengths);
    bool tryCandidate(int line, const std::vector<float>& lengths, float arc);
    // The label of line at arc length arc (lengths: the line's running
    // lengths at its points), with its box.
    Label calculateAnnotBox(int line, const std::vector<float>& lengths, float arc) const;
    Position positionAt(const Line& line, const std::vector<float>& lengths, float arc) const;
    SbVec3f pointAt(const Line& line, const Position& position) const;
    float angleAt(const Line& line, const std::vector<float>& lengths, float arc,
                  const Position& position) const;
    SbVec2f planePoint(const Line& line, int index) const;

    // The acceptance tests of a candidate box.
    bool annotWithinClipPolygon(const PiLabelBox& box) const;
    bool isAvailableAnnotArea(const PiLabelBox& box) const;
    // The segments of the piece of line through a box around segment, as
    // first and last segment (last < first when it runs over the end of a
    // closed line); false when the box holds an end of an open line or the
    // whole line.
    bool findPieceThrough(const PiLabelBox& box, int line, int segment, int& first,
                          int& last) const;
    // Whether a line forbidden to cross crosses the box of a label on line,
    // the segments first to last of the piece through the label excepted.
    bool isIntersAnnotContourLines(const PiLabelBox& box, int line, int first, int last) const;

    const SbVec3f* m_points;
    const std::vector<Line>& m_lines;
    std::vector<SbBox2f> m_frames;
    float m_gap = 0.0f;
    Path m_path = TANGENTIAL_PATH;
    CrossStatus m_crossStatus = CROSS_CONTOUR;
    std::vector<SbVec2f> m_clipPolygon;

    std::vector<Label> m_labels;
    std::unique_ptr<PiBoxGrid> m_labelGrid;
    std::unique_ptr<LineChunks> m_forbidden;
};
