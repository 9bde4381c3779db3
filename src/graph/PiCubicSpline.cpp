#include "graph/PiCubicSpline.h"

#include <algorithm>
#include <mutex>

namespace {
// Scratch room shared by every spline, grown to twice the size needed
// when too small.
std::mutex s_scratchMutex;
std::vector<float> s_scratch;

float* scratch(size_t size) {
    if (s_scratch.size() < size)
        s_scratch.resize(2 * size);
    return s_scratch.data();
}

// Derivatives of the natural spline through the n values (n >= 2), from
// the equations 2 D0 + D1 = 3 (p1 - p0), D(i-1) + 4 Di + D(i+1) =
// 3 (p(i+1) - p(i-1)) and D(n-2) + 2 D(n-1) = 3 (p(n-1) - p(n-2)),
// eliminated forward with the factors gamma.
void naturalDerivatives(const float* p, int n, float* gamma, float* d) {
    gamma[0] = 0.5f;
    d[0] = 3.0f * (p[1] - p[0]) * gamma[0];
    for (int i = 1; i < n - 1; ++i) {
        gamma[i] = 1.0f / (4.0f - gamma[i - 1]);
        d[i] = (3.0f * (p[i + 1] - p[i - 1]) - d[i - 1]) * gamma[i];
    }
    gamma[n - 1] = 1.0f / (2.0f - gamma[n - 2]);
    d[n - 1] = (3.0f * (p[n - 1] - p[n - 2]) - d[n - 2]) * gamma[n - 1];
    for (int i = n - 2; i >= 0; --i)
        d[i] -= gamma[i] * d[i + 1];
}

// Solves, in place, the tridiagonal system with the diagonal of the
// factors' making and 1 beside it, whose forward factors are gamma.
void solveWithFactors(const float* gamma, int m, float* r) {
    r[0] *= gamma[0];
    for (int i = 1; i < m; ++i)
        r[i] = (r[i] - r[i - 1]) * gamma[i];
    for (int i = m - 2; i >= 0; --i)
        r[i] -= gamma[i] * r[i + 1];
}

// Derivatives of the periodic spline through m values (m >= 3):
// D(i-1) + 4 Di + D(i+1) = 3 (p(i+1) - p(i-1)) with indices taken round.
// The cyclic system is solved as the tridiagonal one B, with 8 and 4.25 at
// the ends of its diagonal, corrected by one rank-one term
// (Sherman-Morrison): A = B + u v^T with u = (-4, 0, ..., 0, 1) and
// v = (1, 0, ..., 0, -0.25).
void periodicDerivatives(const float* const coordinates[2], int m, float* gamma, float* const d[2],
                         float* z) {
    gamma[0] = 1.0f / 8.0f;
    for (int i = 1; i < m; ++i) {
        const float diagonal = i == m - 1 ? 4.25f : 4.0f;
        gamma[i] = 1.0f / (diagonal - gamma[i - 1]);
    }
    std::fill(z, z + m, 0.0f);
    z[0] = -4.0f;
    z[m - 1] = 1.0f;
    solveWithFactors(gamma, m, z);
    const float vz = z[0] - 0.25f * z[m - 1];
    for (int c = 0; c < 2; ++c) {
        const float* p = coordinates[c];
        float* y = d[c];
        for (int i = 0; i < m; ++i)
            y[i] = 3.0f * (p[(i + 1) % m] - p[(i + m - 1) % m]);
        solveWithFactors(gamma, m, y);
        const float factor = (y[0] - 0.25f * y[m - 1]) / (1.0f + vz);
        for (int i = 0; i < m; ++i)
            y[i] -= factor * z[i];
    }
}
} // namespace

void PiCubicSpline::setPoints(const std::vector<SbVec2f>& points) {
    if (points == m_points)
        return;
    m_points = points;
    m_upToDate = false;
}

void PiCubicSpline::setSubdivision(int subdivision) {
    subdivision = std::max(subdivision, 1);
    if (subdivision == m_subdivision)
        return;
    m_subdivision = subdivision;
    m_upToDate = false;
}

const std::vector<SbVec2f>& PiCubicSpline::getCurve(void) {
    if (!m_upToDate) {
        compute();
        m_upToDate = true;
    }
    return m_curve;
}

void PiCubicSpline::compute(void) {
    m_curve.clear();
    const int n = static_cast<int>(m_points.size());
    if (n < 2) {
        m_curve = m_points;
        return;
    }
    const bool closed = m_points.front() == m_points.back();
    // The distinct points of a closed list.
    const int m = closed ? n - 1 : n;
    std::lock_guard<std::mutex> lock(s_scratchMutex);
    float* room = scratch(6 * static_cast<size_t>(m));
    float* x = room;
    float* y = room + m;
    float* const d[2] = {room + 2 * m, room + 3 * m};
    float* gamma = room + 4 * m;
    for (int i = 0; i < m; ++i) {
        x[i] = m_points[i][0];
        y[i] = m_points[i][1];
    }
    if (closed && m < 3) {
        // One or two distinct points: the curve goes straight (and back).
        std::fill(d[0], d[0] + m, 0.0f);
        std::fill(d[1], d[1] + m, 0.0f);
    } else if (closed) {
        const float* const coordinates[2] = {x, y};
        periodicDerivatives(coordinates, m, gamma, d, room + 5 * m);
    } else {
        naturalDerivatives(x, m, gamma, d[0]);
        naturalDerivatives(y, m, gamma, d[1]);
    }
    sample(d[0], d[1], closed);
}

// Each segment in cubic Hermite form from its two end points and
// derivatives, at subdivision equal steps; the last point closes the list.
void PiCubicSpline::sample(const float* derivativesX, const float* derivativesY, bool closed) {
    const int n = static_cast<int>(m_points.size());
    const int m = closed ? n - 1 : n;
    m_curve.reserve(static_cast<size_t>(n - 1) * m_subdivision + 1);
    for (int i = 0; i < n - 1; ++i) {
        const int j = (i + 1) % m;
        const SbVec2f& p0 = m_points[i];
        const SbVec2f& p1 = m_points[j];
        const SbVec2f d0(derivativesX[i], derivativesY[i]);
        const SbVec2f d1(derivativesX[j], derivativesY[j]);
        for (int k = 0; k < m_subdivision; ++k) {
            const float t = static_cast<float>(k) / static_cast<float>(m_subdivision);
            const float u = 1.0f - t;
            const float h00 = (1.0f + 2.0f * t) * u * u;
            const float h10 = t * u * u;
            const float h01 = t * t * (3.0f - 2.0f * t);
            const float h11 = -t * t * u;
            m_curve.push_back(h00 * p0 + h10 * d0 + h01 * p1 + h11 * d1);
        }
    }
    m_curve.push_back(m_points.back());
}
