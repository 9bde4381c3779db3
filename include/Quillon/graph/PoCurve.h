#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFString.h>

#include <memory>
#include <vector>

class PiCubicSpline;

// A 2D curve through a list of points, in the plane z = 0: a line in one of
// nine representations, the area between it and a horizontal line filled,
// texts marking chosen points, and raise lines from chosen points down (or
// up) to a horizontal line.
//
// Representations (n points; a point equal to the one before it is never
// emitted, so steps of zero length vanish):
// - CURVE_POLYLINE: the points joined by straight lines.
// - CURVE_NONE: no line; filling, markers and raise lines still follow the
//   points as a polyline.
// - CURVE_SMOOTH: a cubic spline through the points, 10 steps per segment:
//   the natural spline, or the periodic one when the first point equals the
//   last, which closes without a corner.
// - CURVE_STAIRS_X: from each point horizontally to the next point's x,
//   then vertically to it; CURVE_STAIRS_Y: vertically first, then
//   horizontally.
// - CURVE_HISTO_X: each point's y holds from halfway to its previous
//   neighbour to halfway to its next one, the jumps standing halfway; the
//   line starts at point 0 and ends at point n - 1, so the first and last
//   levels are half as wide as the others.  CURVE_HISTO_Y: the same with x
//   and y exchanged.
// - CURVE_STAIRS_2X: the same steps centred on the points, the first and
//   last levels reaching as far beyond their points as halfway to their
//   neighbour, so that every point stands in the middle of its level.
//   CURVE_STAIRS_2Y: the same with x and y exchanged.
//
// Filling (isCurveFilled): the area between the line and y =
// fillingThreshold, one face per segment of the line (a trapezoid, or two
// triangles meeting where the segment crosses the threshold), so a curve
// that turns back in x fills as well.
//
// Markers and raise lines select points with a filter: ALL_POINTS every
// point; INDEX_PERIOD the points 0, p, 2p, ...; INDEX_LIST the listed
// indices (those outside 0 to n - 1 are ignored); X_PERIOD the multiples of
// the period within the x range of the points; X_LIST the listed x within
// that range.  For the x-based filters y is taken on the first segment of
// the polyline through the points that brackets x.  A marker is the text
// markerString with the middle of its glyphs on its point, in the font of
// the text attributes at 0.03 of the domain's x extent; a font node set as
// the part markerApp.font gives its size (and its name, unless empty)
// instead.
//
// Bad input is reported and drawn around: a point that is not a number
// makes the kit draw nothing; without points nothing is drawn; a period
// that is not above 0 selects no point; a filter or a period that would
// select more than 100000 points selects only the first 100000.
class QUILLON_API PoCurve : public PoPlotwright {
    PO_KIT_HEADER(PoCurve);

    PO_KIT_PART_WITH_APPEARANCE_HEADER(curveFilling);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(curvePoint);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(raisePoint);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(marker);

public:
    enum CurveRep {
        CURVE_NONE = 0,
        CURVE_POLYLINE = 1,
        CURVE_SMOOTH = 2,
        CURVE_STAIRS_X = 3,
        CURVE_STAIRS_Y = 4,
        CURVE_HISTO_X = 5,
        CURVE_HISTO_Y = 6,
        CURVE_STAIRS_2X = 7,
        CURVE_STAIRS_2Y = 8
    };
    enum FilterType {
        INACTIVE = 0,
        ALL_POINTS = 1,
        INDEX_PERIOD = 2,
        INDEX_LIST = 3,
        X_PERIOD = 4,
        X_LIST = 5
    };

    SoMFVec2f point;
    SoSFEnum curveRep;
    SoSFBool isCurveFilled;
    SoSFFloat fillingThreshold;
    SoSFEnum markerFilterType;
    SoSFInt32 markerIndexPeriod;
    SoMFInt32 markerIndexList;
    SoSFFloat markerXPeriod;
    SoMFFloat markerXList;
    SoSFString markerString;
    SoSFEnum raiseFilterType;
    SoSFInt32 raiseIndexPeriod;
    SoMFInt32 raiseIndexList;
    SoSFFloat raiseXPeriod;
    SoMFFloat raiseXList;
    SoSFFloat raiseThreshold;

    PoCurve();
    PoCurve(int numPoints, const SbVec2f* points, CurveRep rep);

    // y on the segment p1-p2 at x; for a vertical segment the smaller y.
    static float calculateInterpolation(float x, const SbVec2f& p1, const SbVec2f& p2);
    // x on the segment p1-p2 at y; for a horizontal segment the mean x, for
    // a vertical one the x of p1.
    static float calculateInterpolation2(float y, const SbVec2f& p1, const SbVec2f& p2);

protected:
    ~PoCurve() override;

    void rebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

    void drawRaisePoints(const std::vector<SbVec2f>& points);
    void drawMarkers(const std::vector<SbVec2f>& points);

private:
    // The fields of one point filter.
    struct Filter {
        const char* what;
        const SoSFEnum& type;
        const SoSFInt32& indexPeriod;
        const SoMFInt32& indexList;
        const SoSFFloat& xPeriod;
        const SoMFFloat& xList;
    };

    void init(int numPoints, const SbVec2f* points, CurveRep rep);
    bool hasValidPoints(void) const;
    std::vector<SbVec2f> makeCurvePoints(const std::vector<SbVec2f>& points, int rep);
    void drawCurve(const std::vector<SbVec2f>& curve);
    void drawFilling(const std::vector<SbVec2f>& curve);
    std::vector<SbVec2f> selectPoints(const Filter& filter,
                                      const std::vector<SbVec2f>& points) const;
    float markerSize(SbString& fontName);

    std::unique_ptr<PiCubicSpline> m_spline;
};
