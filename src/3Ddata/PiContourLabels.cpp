#include "3Ddata/PiContourLabels.h"

#include "3Ddata/PiBoxGrid.h"
#include "graph/PiText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
// Lines are kept in the grids by runs of this many segments.
const int s_chunkSegments = 16;
// Candidates follow one another every this many label widths.
const float s_candidateStep = 1.5f;

SbVec2f plane(const SbVec3f& point) {
    return SbVec2f(point[0], point[1]);
}

// The bounding rectangle of the points first to last of a line.
SbBox2f boundsOf(const SbVec3f* points, const PiContourLabels::Line& line, int first, int last) {
    SbBox2f bounds;
    for (int i = first; i <= last; ++i)
        bounds.extendBy(plane(points[line.start + i]));
    return bounds;
}

SbVec3f lerp(const SbVec3f* points, const PiContourLabels::Line& line, int segment, float t) {
    const SbVec3f& a = points[line.start + segment];
    const SbVec3f& b = points[line.start + segment + 1];
    return t <= 0.0f ? a : t >= 1.0f ? b : a + (b - a) * t;
}

// Even-odd rule.
bool isInside(const std::vector<SbVec2f>& polygon, const SbVec2f& point) {
    bool inside = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const SbVec2f& a = polygon[i];
        const SbVec2f& b = polygon[j];
        if ((a[1] > point[1]) != (b[1] > point[1]) &&
            point[0] < a[0] + (b[0] - a[0]) * (point[1] - a[1]) / (b[1] - a[1]))
            inside = !inside;
    }
    return inside;
}

PiLabelBox rectangle(const SbBox2f& bounds) {
    const SbVec2f& low = bounds.getMin();
    const SbVec2f& high = bounds.getMax();
    return PiLabelBox{{low, SbVec2f(high[0], low[1]), high, SbVec2f(low[0], high[1])}};
}

bool isInPiece(int segment, int first, int last) {
    return first <= last ? segment >= first && segment <= last
                         : segment >= first || segment <= last;
}
} // namespace

// The lines of the kinds forbidden to cross labels, by runs of segments.
class PiContourLabels::LineChunks {
public:
    struct Chunk {
        int line;
        // Segments first to end - 1.
        int first;
        int end;
    };

    LineChunks(const SbVec3f* points, const std::vector<Line>& lines,
               const std::vector<char>& included, float cellSize) {
        std::vector<SbBox2f> bounds;
        SbBox2f all;
        for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
            if (!included[i])
                continue;
            const int numSegments = lines[i].size - 1;
            for (int first = 0; first < numSegments; first += s_chunkSegments) {
                const int end = std::min(first + s_chunkSegments, numSegments);
                m_chunks.push_back(Chunk{i, first, end});
                bounds.push_back(boundsOf(points, lines[i], first, end));
                all.extendBy(bounds.back());
            }
        }
        const int maxCells = std::max(64, 2 * static_cast<int>(m_chunks.size()));
        m_grid.reset(new PiBoxGrid(all, cellSize, maxCells));
        for (const SbBox2f& box : bounds)
            m_grid->add(box);
    }

    // Calls visit with every run whose rectangle meets box, until it
    // returns true; returns whether it did.
    template <class Visit> bool findNear(const SbBox2f& box, Visit&& visit) const {
        return m_grid->findOverlapping(box, [&](int item) { return visit(m_chunks[item]); });
    }

private:
    std::vector<Chunk> m_chunks;
    std::unique_ptr<PiBoxGrid> m_grid;
};

PiContourLabels::PiContourLabels(const SbVec3f* points, const std::vector<Line>& lines)
    : m_points(points), m_lines(lines) {}

PiContourLabels::~PiContourLabels() = default;

const std::vector<PiContourLabels::Label>& PiContourLabels::computeContourLineAnnot() {
    m_labels.clear();
    float labelSize = 0.0f;
    for (const SbBox2f& frame : m_frames) {
        if (!frame.isEmpty())
            labelSize = std::max({labelSize, frame.getMax()[0] - frame.getMin()[0],
                                  frame.getMax()[1] - frame.getMin()[1]});
    }
    SbBox2f bounds;
    for (const Line& line : m_lines)
        bounds.extendBy(boundsOf(m_points, line, 0, line.size - 1));
    m_labelGrid.reset(new PiBoxGrid(bounds, labelSize, 1 << 16));
    m_forbidden.reset();
    if (m_crossStatus != CROSS_CONTOUR) {
        std::vector<char> forbidden(m_lines.size());
        for (size_t i = 0; i < m_lines.size(); ++i)
            forbidden[i] = m_crossStatus == DONT_CROSS_CONTOUR || m_lines[i].major;
        m_forbidden.reset(new LineChunks(m_points, m_lines, forbidden, 0.5f * labelSize));
    }
    std::vector<float> lengths;
    for (int line = 0; line < static_cast<int>(m_lines.size()); ++line)
        placeAlong(line, lengths);
    return m_labels;
}

void PiContourLabels::placeAlong(int index, std::vector<float>& lengths) {
    const Line& line = m_lines[index];
    if (line.text < 0 || line.text >= static_cast<int>(m_frames.size()) || line.size < 2 ||
        m_frames[line.text].isEmpty())
        return;
    const float width = m_frames[line.text].getMax()[0] - m_frames[line.text].getMin()[0];
    lengths.resize(line.size);
    lengths[0] = 0.0f;
    for (int i = 1; i < line.size; ++i)
        lengths[i] = lengths[i - 1] + (planePoint(line, i) - planePoint(line, i - 1)).length();
    const float total = lengths.back();
    if (!(width > 0.0f) || !(total >= 2.0f * width))
        return;
    const float step = s_candidateStep * width;
    const float end = line.closed ? total : total - 0.5f * width;
    // The first candidate half a gap from the start, or at the middle of a
    // line shorter than the gap, with the running length at the gap.
    float arc = 0.5f * std::min(m_gap, total) - step;
    float running = m_gap - step;
    for (;;) {
        // On to the first candidate at which the running length reaches the
        // gap.
        const float steps = std::max(1.0f, std::ceil((m_gap - running) / step));
        arc += steps * step;
        running += steps * step;
        if (!(arc <= end))
            return;
        if (tryCandidate(index, lengths, arc))
            running = 0.0f;
    }
}

bool PiContourLabels::tryCandidate(int index, const std::vector<float>& lengths, float arc) {
    const Label label = calculateAnnotBox(index, lengths, arc);
    const int segment = positionAt(m_lines[index], lengths, arc).segment;
    int first, last;
    if (!annotWithinClipPolygon(label.box) || !isAvailableAnnotArea(label.box) ||
        !findPieceThrough(label.box, index, segment, first, last) ||
        isIntersAnnotContourLines(label.box, index, first, last))
        return false;
    m_labels.push_back(label);
    m_labelGrid->add(label.box.getBounds());
    return true;
}

PiContourLabels::Label
PiContourLabels::calculateAnnotBox(int index, const std::vector<float>& lengths, float arc) const {
    const Line& line = m_lines[index];
    const Position at = positionAt(line, lengths, arc);
    const SbVec3f anchor = pointAt(line, at);
    const float angle = angleAt(line, lengths, arc, at);
    return Label{index, anchor, angle,
                 PiLabelBox::around(plane(anchor), m_frames[line.text], angle)};
}

PiContourLabels::Position
PiContourLabels::positionAt(const Line& line, const std::vector<float>& lengths, float arc) const {
    const float total = lengths.back();
    if (line.closed) {
        arc = std::fmod(arc, total);
        if (arc < 0.0f)
            arc += total;
    } else {
        arc = std::min(std::max(arc, 0.0f), total);
    }
    const int last = line.size - 2;
    const int segment = std::min(
        last, std::max(0, static_cast<int>(std::upper_bound(lengths.begin(), lengths.end(), arc) -
                                           lengths.begin()) -
                              1));
    const float length = lengths[segment + 1] - lengths[segment];
    const float t = length > 0.0f ? (arc - lengths[segment]) / length : 0.0f;
    return Position{segment, std::min(std::max(t, 0.0f), 1.0f)};
}

SbVec3f PiContourLabels::pointAt(const Line& line, const Position& position) const {
    return lerp(m_points, line, position.segment, position.t);
}

SbVec2f PiContourLabels::planePoint(const Line& line, int index) const {
    return plane(m_points[line.start + index]);
}

float PiContourLabels::angleAt(const Line& line, const std::vector<float>& lengths, float arc,
                               const Position& position) const {
    if (m_path == HORIZONTAL_PATH)
        return 0.0f;
    if (m_path == VERTICAL_PATH)
        return static_cast<float>(M_PI_2);
    // Along the chord that the line makes across the label.
    const float half = 0.5f * (m_frames[line.text].getMax()[0] - m_frames[line.text].getMin()[0]);
    SbVec2f direction = plane(pointAt(line, positionAt(line, lengths, arc + half))) -
                        plane(pointAt(line, positionAt(line, lengths, arc - half)));
    if (!(direction.length() > 0.0f))
        direction = planePoint(line, position.segment + 1) - planePoint(line, position.segment);
    return PiText::readableAngle(std::atan2(direction[1], direction[0]));
}

bool PiContourLabels::findPieceThrough(const PiLabelBox& box, int index, int segment, int& first,
                                       int& last) const {
    const Line& line = m_lines[index];
    const int numSegments = line.size - 1;
    int count = 1;
    // Segment s starts at point s and ends at point s + 1.
    first = segment;
    while (box.contains(planePoint(line, first))) {
        if (first == 0 && !line.closed)
            return false;
        first = first == 0 ? numSegments - 1 : first - 1;
        if (++count >= numSegments)
            return false;
    }
    last = segment;
    while (box.contains(planePoint(line, last + 1))) {
        if (last + 1 == numSegments && !line.closed)
            return false;
        last = last + 1 == numSegments ? 0 : last + 1;
        if (++count >= numSegments)
            return false;
    }
    return true;
}

bool PiContourLabels::annotWithinClipPolygon(const PiLabelBox& box) const {
    if (m_clipPolygon.size() < 3)
        return true;
    const SbBox2f bounds = box.getBounds();
    const PiLabelBox inner = rectangle(bounds);
    for (const SbVec2f& corner : inner.corners) {
        if (!isInside(m_clipPolygon, corner))
            return false;
    }
    // A polygon that is not convex may still reach into the rectangle.
    for (size_t i = 0, j = m_clipPolygon.size() - 1; i < m_clipPolygon.size(); j = i++) {
        if (inner.crosses(m_clipPolygon[j], m_clipPolygon[i]))
            return false;
    }
    return true;
}

bool PiContourLabels::isAvailableAnnotArea(const PiLabelBox& box) const {
    return !m_labelGrid->findOverlapping(
        box.getBounds(), [&](int label) { return m_labels[label].box.overlaps(box); });
}

bool PiContourLabels::isIntersAnnotContourLines(const PiLabelBox& box, int index, int first,
                                                int last) const {
    if (!m_forbidden)
        return false;
    return m_forbidden->findNear(box.getBounds(), [&](const LineChunks::Chunk& chunk) {
        const Line& line = m_lines[chunk.line];
        for (int s = chunk.first; s < chunk.end; ++s) {
            if (chunk.line == index && isInPiece(s, first, last))
                continue;
            if (box.crosses(planePoint(line, s), planePoint(line, s + 1)))
                return true;
        }
        return false;
    });
}

// ------------------------------------------------------------ clipping

namespace {
// Cuts one line where it passes through the boxes of the grid.
class LineCutter {
public:
    LineCutter(const SbVec3f* points, const PiContourLabels::Line& line, int index,
               const PiBoxGrid& grid, const std::vector<PiLabelBox>& boxes,
               std::vector<PiContourLabels::Piece>& pieces)
        : m_points(points), m_line(line), m_index(index), m_grid(grid), m_boxes(boxes),
          m_pieces(pieces) {}

    void cut() {
        const int numSegments = m_line.size - 1;
        const size_t firstPiece = m_pieces.size();
        bool firstKept = false, wasCut = false;
        for (int first = 0; first < numSegments; first += s_chunkSegments) {
            const int end = std::min(first + s_chunkSegments, numSegments);
            const SbBox2f bounds = boundsOf(m_points, m_line, first, end);
            if (!m_grid.findOverlapping(bounds, [](int) { return true; }))
                continue;
            for (int s = first; s < end; ++s) {
                for (const auto& cut : cutsOf(s)) {
                    const bool kept = emit(s, cut.first);
                    if (!wasCut)
                        firstKept = kept;
                    wasCut = true;
                    m_from = s;
                    m_fromT = cut.second;
                }
            }
        }
        if (!wasCut) {
            m_pieces.push_back(PiContourLabels::Piece{m_index, 0, 0.0f, numSegments, 1.0f});
            return;
        }
        // A closed line goes on over its end into its first piece.
        if (m_line.closed && firstKept) {
            PiContourLabels::Piece& start = m_pieces[firstPiece];
            PiContourLabels::Piece joined{m_index, m_from, m_fromT,
                                          numSegments - m_from + start.numSegments, start.lastT};
            if (trimmed(joined))
                start = joined;
            return;
        }
        emit(numSegments - 1, 1.0f);
    }

private:
    // The merged parts of segment s inside boxes, in order along it.
    const std::vector<std::pair<float, float>>& cutsOf(int s) {
        m_cuts.clear();
        const SbVec2f a = plane(m_points[m_line.start + s]);
        const SbVec2f b = plane(m_points[m_line.start + s + 1]);
        SbBox2f bounds(a, a);
        bounds.extendBy(b);
        m_grid.findOverlapping(bounds, [&](int box) {
            float t0, t1;
            if (m_boxes[box].clipSegment(a, b, t0, t1))
                m_cuts.emplace_back(t0, t1);
            return false;
        });
        std::sort(m_cuts.begin(), m_cuts.end());
        size_t merged = 0;
        for (size_t i = 0; i < m_cuts.size(); ++i) {
            if (merged > 0 && m_cuts[i].first <= m_cuts[merged - 1].second)
                m_cuts[merged - 1].second = std::max(m_cuts[merged - 1].second, m_cuts[i].second);
            else
                m_cuts[merged++] = m_cuts[i];
        }
        m_cuts.resize(merged);
        return m_cuts;
    }

    // Adds the piece from where the last cut ended to (segment, t), unless
    // it has no length; returns whether it was added.
    bool emit(int segment, float t) {
        PiContourLabels::Piece piece{m_index, m_from, m_fromT, segment - m_from + 1, t};
        if (!trimmed(piece))
            return false;
        m_pieces.push_back(piece);
        return true;
    }

    // Drops a first segment that the piece leaves at its end and a last one
    // that it enters at its start; false when nothing of length remains.
    bool trimmed(PiContourLabels::Piece& piece) const {
        if (piece.firstT >= 1.0f && piece.numSegments > 1) {
            piece.first = piece.first + 1 == m_line.size - 1 ? 0 : piece.first + 1;
            piece.firstT = 0.0f;
            --piece.numSegments;
        }
        if (piece.lastT <= 0.0f && piece.numSegments > 1) {
            --piece.numSegments;
            piece.lastT = 1.0f;
        }
        return piece.numSegments > 1 || piece.lastT > piece.firstT;
    }

    const SbVec3f* m_points;
    const PiContourLabels::Line& m_line;
    int m_index;
    const PiBoxGrid& m_grid;
    const std::vector<PiLabelBox>& m_boxes;
    std::vector<PiContourLabels::Piece>& m_pieces;
    std::vector<std::pair<float, float>> m_cuts;
    int m_from = 0;
    float m_fromT = 0.0f;
};
} // namespace

std::vector<PiContourLabels::Piece>
PiContourLabels::clipContourLinesByAnnot(const SbVec3f* points, const std::vector<Line>& lines,
                                         const std::vector<char>& clip,
                                         const std::vector<PiLabelBox>& boxes) {
    SbBox2f bounds;
    float boxSize = 0.0f;
    for (const PiLabelBox& box : boxes) {
        const SbBox2f each = box.getBounds();
        bounds.extendBy(each);
        boxSize = std::max(
            {boxSize, each.getMax()[0] - each.getMin()[0], each.getMax()[1] - each.getMin()[1]});
    }
    PiBoxGrid grid(bounds, boxSize, 1 << 16);
    for (const PiLabelBox& box : boxes)
        grid.add(box.getBounds());
    std::vector<Piece> pieces;
    for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
        const Line& line = lines[i];
        if (line.size < 2)
            continue;
        if (clip[i] && !boxes.empty())
            LineCutter(points, line, i, grid, boxes, pieces).cut();
        else
            pieces.push_back(Piece{i, 0, 0.0f, line.size - 1, 1.0f});
    }
    return pieces;
}

SbVec3f* PiContourLabels::getPiecePoints(const SbVec3f* points, const Line& line,
                                         const Piece& piece, SbVec3f* out) {
    const int numSegments = line.size - 1;
    int segment = piece.first;
    *out++ = lerp(points, line, segment, piece.firstT);
    for (int k = 1; k < piece.numSegments; ++k) {
        *out++ = points[line.start + segment + 1];
        segment = segment + 1 == numSegments ? 0 : segment + 1;
    }
    *out++ = lerp(points, line, segment, piece.lastT);
    return out;
}
