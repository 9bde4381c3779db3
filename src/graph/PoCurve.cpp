#include <Quillon/graph/PoCurve.h>

#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PiCubicSpline.h"
#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
#include <cmath>
#include <utility>

PO_KIT_SOURCE(PoCurve, PoPlotwright)

namespace {
using Points = std::vector<SbVec2f>;

const int s_smoothSubdivision = 10;
// Relative size of the markers.
const float s_markerSize = 0.03f;
// A filter selects at most this many points.
const int s_maxSelected = 100000;

const char* const s_parts[] = {"curveFilling", "curvePoint", "raisePoint", "marker"};

// Appends the point unless it equals the last one.
void emit(Points& out, const SbVec2f& p) {
    if (out.empty() || out.back() != p)
        out.push_back(p);
}

Points withoutRepeats(const Points& points) {
    Points out;
    for (const SbVec2f& p : points)
        emit(out, p);
    return out;
}

SbVec2f swapped(const SbVec2f& p) {
    return SbVec2f(p[1], p[0]);
}

// A representation along y: the one along x of the points with x and y
// exchanged, exchanged back.
template <class Along> Points alongY(Along alongX, const Points& points) {
    Points swappedPoints;
    for (const SbVec2f& p : points)
        swappedPoints.push_back(swapped(p));
    Points out;
    for (const SbVec2f& p : alongX(swappedPoints))
        out.push_back(swapped(p));
    return out;
}

// Horizontally at the old level, then vertically.
Points stairs(const Points& p) {
    Points out;
    emit(out, p[0]);
    for (size_t i = 1; i < p.size(); ++i) {
        emit(out, SbVec2f(p[i][0], p[i - 1][1]));
        emit(out, p[i]);
    }
    return out;
}

// The jumps between the points' levels, halfway between the points.
void appendMiddleJumps(const Points& p, Points& out) {
    for (size_t i = 1; i < p.size(); ++i) {
        const float middle = 0.5f * (p[i - 1][0] + p[i][0]);
        emit(out, SbVec2f(middle, p[i - 1][1]));
        emit(out, SbVec2f(middle, p[i][1]));
    }
}

// From point 0 to point n - 1.
Points histogramSteps(const Points& p) {
    Points out;
    emit(out, p.front());
    appendMiddleJumps(p, out);
    emit(out, p.back());
    return out;
}

// The end levels as wide on both sides of their points.
Points centredStairs(const Points& p) {
    if (p.size() < 2)
        return p;
    const size_t last = p.size() - 1;
    Points out;
    emit(out, SbVec2f(p[0][0] - 0.5f * (p[1][0] - p[0][0]), p[0][1]));
    appendMiddleJumps(p, out);
    emit(out, SbVec2f(p[last][0] + 0.5f * (p[last][0] - p[last - 1][0]), p[last][1]));
    return out;
}

SbVec3f inPlane(const SbVec2f& p) {
    return SbVec3f(p[0], p[1], 0.0f);
}

SoCoordinate3* coordinates(const std::vector<SbVec3f>& points) {
    auto* node = new SoCoordinate3;
    node->point.setValues(0, static_cast<int>(points.size()), points.data());
    return node;
}

// y at x on the first segment of the polyline that brackets x.
float yOnPolyline(float x, const Points& points) {
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        if ((x - points[i][0]) * (x - points[i + 1][0]) <= 0.0f)
            return PoCurve::calculateInterpolation(x, points[i], points[i + 1]);
    }
    return points.front()[1];
}
} // namespace

PoCurve::PoCurve() {
    init(0, nullptr, CURVE_POLYLINE);
}

PoCurve::PoCurve(int numPoints, const SbVec2f* points, CurveRep rep) {
    init(numPoints, points, rep);
}

void PoCurve::init(int numPoints, const SbVec2f* points, CurveRep rep) {
    SO_KIT_CONSTRUCTOR(PoCurve);
    PO_KIT_ADD_PART_WITH_APPEARANCE(curveFilling, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(curvePoint, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(raisePoint, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(marker, SoGroup, alternateRep);

    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_NONE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_POLYLINE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_SMOOTH);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_Y);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_Y);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2Y);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INACTIVE);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, ALL_POINTS);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_PERIOD);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_LIST);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, X_PERIOD);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, X_LIST);

    SO_KIT_ADD_FIELD(point, (0.0f, 0.0f));
    SO_KIT_ADD_FIELD(curveRep, (CURVE_POLYLINE));
    SO_KIT_ADD_FIELD(isCurveFilled, (FALSE));
    SO_KIT_ADD_FIELD(fillingThreshold, (0.0f));
    SO_KIT_ADD_FIELD(markerFilterType, (INACTIVE));
    SO_KIT_ADD_FIELD(markerIndexPeriod, (0));
    SO_KIT_ADD_FIELD(markerIndexList, (0));
    SO_KIT_ADD_FIELD(markerXPeriod, (0.0f));
    SO_KIT_ADD_FIELD(markerXList, (0.0f));
    SO_KIT_ADD_FIELD(markerString, ("."));
    SO_KIT_ADD_FIELD(raiseFilterType, (INACTIVE));
    SO_KIT_ADD_FIELD(raiseIndexPeriod, (0));
    SO_KIT_ADD_FIELD(raiseIndexList, (0));
    SO_KIT_ADD_FIELD(raiseXPeriod, (0.0f));
    SO_KIT_ADD_FIELD(raiseXList, (0.0f));
    SO_KIT_ADD_FIELD(raiseThreshold, (0.0f));

    SO_KIT_SET_SF_ENUM_TYPE(curveRep, CurveRep);
    SO_KIT_SET_SF_ENUM_TYPE(markerFilterType, FilterType);
    SO_KIT_SET_SF_ENUM_TYPE(raiseFilterType, FilterType);
    SO_KIT_INIT_INSTANCE();

    if (points) {
        point.setNum(std::max(numPoints, 0));
        point.setValues(0, std::max(numPoints, 0), points);
    }
    if (curveRep.getValue() != rep)
        curveRep = rep;
    m_spline = std::make_unique<PiCubicSpline>();
    m_spline->setSubdivision(s_smoothSubdivision);
    // The marker appearance is watched too: its font gives the markers'
    // size.
    watchFields({&point, &curveRep, &isCurveFilled, &fillingThreshold, &markerFilterType,
                 &markerIndexPeriod, &markerIndexList, &markerXPeriod, &markerXList, &markerString,
                 &raiseFilterType, &raiseIndexPeriod, &raiseIndexList, &raiseXPeriod, &raiseXList,
                 &raiseThreshold, &markerApp});
    setLightModel(SoLightModel::BASE_COLOR);
}

PoCurve::~PoCurve() = default;

float PoCurve::calculateInterpolation(float x, const SbVec2f& p1, const SbVec2f& p2) {
    if (p1[0] == p2[0])
        return std::min(p1[1], p2[1]);
    return p1[1] + (x - p1[0]) * (p2[1] - p1[1]) / (p2[0] - p1[0]);
}

float PoCurve::calculateInterpolation2(float y, const SbVec2f& p1, const SbVec2f& p2) {
    if (p1[1] == p2[1])
        return 0.5f * (p1[0] + p2[0]);
    if (p1[0] == p2[0])
        return p1[0];
    return p1[0] + (y - p1[1]) * (p2[0] - p1[0]) / (p2[1] - p1[1]);
}

void PoCurve::setDefaultOnNonWritingFields(void) {
    PoPlotwright::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : s_parts) {
        markPartDefault(part);
        markPartDefault((SbString(part) + "Sep").getString());
    }
}

// ---------------------------------------------------------- rebuild

bool PoCurve::hasValidPoints(void) const {
    for (int i = 0; i < point.getNum(); ++i) {
        const SbVec2f& p = point[i];
        if (!std::isfinite(p[0]) || !std::isfinite(p[1])) {
            PoDebugError::post("PoCurve::rebuild",
                               "point %d is (%g, %g); every coordinate must be a number and the "
                               "curve is not drawn",
                               i, p[0], p[1]);
            return false;
        }
    }
    return true;
}

void PoCurve::rebuild(void) {
    RebuildScope scope(this);
    for (const char* part : s_parts)
        setAnyPart(part, nullptr);
    if (point.getNum() == 0 || !hasValidPoints())
        return;
    const Points points(point.getValues(0), point.getValues(0) + point.getNum());
    const int rep = checkedEnum(curveRep, 9, CURVE_POLYLINE);
    const Points curve = makeCurvePoints(points, rep);
    if (isCurveFilled.getValue())
        drawFilling(curve);
    if (rep != CURVE_NONE)
        drawCurve(curve);
    drawRaisePoints(selectPoints(
        {"raise", raiseFilterType, raiseIndexPeriod, raiseIndexList, raiseXPeriod, raiseXList},
        points));
    drawMarkers(selectPoints({"marker", markerFilterType, markerIndexPeriod, markerIndexList,
                              markerXPeriod, markerXList},
                             points));
}

Points PoCurve::makeCurvePoints(const Points& points, int rep) {
    switch (rep) {
    case CURVE_SMOOTH:
        m_spline->setPoints(points);
        return withoutRepeats(m_spline->getCurve());
    case CURVE_STAIRS_X:
        return stairs(points);
    case CURVE_STAIRS_Y:
        return alongY(stairs, points);
    case CURVE_HISTO_X:
        return histogramSteps(points);
    case CURVE_HISTO_Y:
        return alongY(histogramSteps, points);
    case CURVE_STAIRS_2X:
        return centredStairs(points);
    case CURVE_STAIRS_2Y:
        return alongY(centredStairs, points);
    default:
        return withoutRepeats(points);
    }
}

// One line through the points; a single point is drawn as a point.
void PoCurve::drawCurve(const Points& curve) {
    std::vector<SbVec3f> points;
    for (const SbVec2f& p : curve)
        points.push_back(inPlane(p));
    auto* group = new SoGroup;
    group->addChild(coordinates(points));
    if (points.size() == 1) {
        group->addChild(new SoPointSet);
    } else {
        auto* line = new SoLineSet;
        line->numVertices.setValue(static_cast<int32_t>(points.size()));
        group->addChild(line);
    }
    setAnyPart("curvePoint", group);
}

// Per segment, the face between it and the threshold: a trapezoid, or two
// triangles that meet where the segment crosses the threshold.
void PoCurve::drawFilling(const Points& curve) {
    const float threshold = fillingThreshold.getValue();
    std::vector<SbVec3f> points;
    std::vector<int32_t> counts;
    auto addFace = [&](std::initializer_list<SbVec2f> corners) {
        const Points face = withoutRepeats(corners);
        if (face.size() < 3)
            return;
        for (const SbVec2f& p : face)
            points.push_back(inPlane(p));
        counts.push_back(static_cast<int32_t>(face.size()));
    };
    for (size_t i = 0; i + 1 < curve.size(); ++i) {
        const SbVec2f& a = curve[i];
        const SbVec2f& b = curve[i + 1];
        if (a[0] == b[0])
            continue;
        const SbVec2f footA(a[0], threshold), footB(b[0], threshold);
        if ((a[1] - threshold) * (b[1] - threshold) < 0.0f) {
            const SbVec2f crossing(calculateInterpolation2(threshold, a, b), threshold);
            addFace({footA, a, crossing});
            addFace({crossing, b, footB});
        } else {
            addFace({footA, a, b, footB});
        }
    }
    if (counts.empty())
        return;
    auto* group = new SoGroup;
    // Behind the line and the raise lines in the same plane.
    group->addChild(new SoPolygonOffset);
    group->addChild(coordinates(points));
    auto* faces = new SoFaceSet;
    faces->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
    group->addChild(faces);
    setAnyPart("curveFilling", group);
}

Points PoCurve::selectPoints(const Filter& filter, const Points& points) const {
    const int n = static_cast<int>(points.size());
    Points selected;
    auto warn = [&](const char* field, const char* problem) {
        PoDebugError::postWarning("PoCurve::rebuild", "%s%s %s", filter.what, field, problem);
    };
    const auto xRange =
        std::minmax_element(points.begin(), points.end(),
                            [](const SbVec2f& a, const SbVec2f& b) { return a[0] < b[0]; });
    const float xMin = (*xRange.first)[0], xMax = (*xRange.second)[0];
    auto addAtX = [&](float x) {
        if (x >= xMin && x <= xMax && static_cast<int>(selected.size()) < s_maxSelected)
            selected.emplace_back(x, yOnPolyline(x, points));
    };
    switch (checkedEnum(filter.type, 6, INACTIVE)) {
    case ALL_POINTS:
        selected = points;
        break;
    case INDEX_PERIOD: {
        const int period = filter.indexPeriod.getValue();
        if (period <= 0) {
            warn("IndexPeriod", "is not above 0; no point is selected");
            break;
        }
        for (int i = 0; i < n; i += period)
            selected.push_back(points[i]);
        break;
    }
    case INDEX_LIST:
        for (int i = 0; i < filter.indexList.getNum(); ++i) {
            const int32_t index = filter.indexList[i];
            if (index >= 0 && index < n)
                selected.push_back(points[index]);
        }
        break;
    case X_PERIOD: {
        const float period = std::fabs(filter.xPeriod.getValue());
        if (!(period > 0.0f) || !std::isfinite(period)) {
            warn("XPeriod", "is not a number above 0; no point is selected");
            break;
        }
        const double first = std::ceil(xMin / period), last = std::floor(xMax / period);
        if (last - first + 1.0 > s_maxSelected)
            warn("XPeriod", "selects more than 100000 points; only the first are kept");
        for (double k = first; k <= last && static_cast<int>(selected.size()) < s_maxSelected; ++k)
            addAtX(static_cast<float>(k * period));
        break;
    }
    case X_LIST:
        for (int i = 0; i < filter.xList.getNum(); ++i)
            addAtX(filter.xList[i]);
        break;
    default:
        break;
    }
    if (static_cast<int>(selected.size()) > s_maxSelected)
        selected.resize(s_maxSelected);
    return selected;
}

// Lines parallel to y from the points to the raise threshold.
void PoCurve::drawRaisePoints(const Points& points) {
    if (points.empty())
        return;
    const float threshold = raiseThreshold.getValue();
    std::vector<SbVec3f> ends;
    for (const SbVec2f& p : points) {
        ends.push_back(inPlane(p));
        ends.emplace_back(p[0], threshold, 0.0f);
    }
    auto* group = new SoGroup;
    group->addChild(coordinates(ends));
    auto* lines = new SoLineSet;
    std::vector<int32_t> counts(points.size(), 2);
    lines->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
    group->addChild(lines);
    setAnyPart("raisePoint", group);
}

void PoCurve::drawMarkers(const Points& points) {
    if (points.empty() || markerString.getValue().getLength() == 0)
        return;
    SbString fontName;
    const float size = markerSize(fontName);
    if (!(size > 0.0f))
        return;
    PiText text;
    setUpText(text, fontName, size);
    // One marker, shared by every point.
    SoNode* shape = text.buildCentered(markerString.getValue(), SbVec3f(0.0f, 0.0f, 0.0f));
    auto* group = new SoGroup;
    for (const SbVec2f& p : points) {
        auto* marker = new SoSeparator;
        auto* place = new SoTranslation;
        place->translation = inPlane(p);
        marker->addChild(place);
        marker->addChild(shape);
        group->addChild(marker);
    }
    setAnyPart("marker", group);
}

// The size (and the font, when named) of the marker appearance's font, else
// the default size in the text attributes' font.
float PoCurve::markerSize(SbString& fontName) {
    fontName = "";
    if (auto* font = static_cast<SoFont*>(getPart("markerApp.font", FALSE))) {
        if (!font->name.isDefault())
            fontName = font->name.getValue().getString();
        const float size = font->size.getValue();
        if (size > 0.0f && std::isfinite(size))
            return size;
    }
    return s_markerSize * getDomain()->getDeltaX();
}
