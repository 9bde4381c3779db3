#pragma once
#include <Inventor/SbLinear.h>

#include <vector>

// A smooth curve through a list of points: x and y are splined separately
// as cubic functions of the point index, each segment sampled at a number
// of equal parameter steps.
//
// An open list (first point differing from the last) gets the natural
// spline, whose second derivative vanishes at both ends; a closed list
// (first point equal to the last) gets the periodic spline over its
// distinct points, so that the curve closes without a corner.  A list of n
// points gives (n - 1) * subdivisions + 1 points, the given points among
// them every subdivisions points; a single point gives itself.
//
// The curve is computed when asked for, and again only after the points or
// the subdivision count changed.
class PiCubicSpline {
public:
    void setPoints(const std::vector<SbVec2f>& points);
    // At least 1.
    void setSubdivision(int subdivision);

    const std::vector<SbVec2f>& getCurve(void);

private:
    void compute(void);
    void sample(const float* derivativesX, const float* derivativesY, bool closed);

    std::vector<SbVec2f> m_points;
    int m_subdivision = 10;
    bool m_upToDate = false;
    std::vector<SbVec2f> m_curve;
};
