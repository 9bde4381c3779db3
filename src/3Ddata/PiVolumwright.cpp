#include "3Ddata/PiVolumwright.h"

#include <Quillon/graph/PbIsovaluesList.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
// Up to three counted value arrays, seen as one.
struct ValueArrays {
    const float* values[3];
    int counts[3];

    template <typename F> void forEach(F&& function) const {
        for (int a = 0; a < 3; ++a)
            if (values[a])
                for (int i = 0; i < counts[a]; ++i)
                    function(values[a][i]);
    }
};

const float s_noDistance = 1e30f;

// Up to this many isovalues, each value is compared with every isovalue
// (vectorised over the values); beyond, the isovalues are searched.
const int s_linearSearchLimit = 32;

void markEqual(const float* values, int count, const std::vector<float>& isovalues,
               std::vector<char>& hit) {
    const int numIsovalues = static_cast<int>(isovalues.size());
    if (numIsovalues <= s_linearSearchLimit) {
        for (int k = 0; k < numIsovalues; ++k) {
            const float iso = isovalues[k];
            int numEqual = 0;
            for (int i = 0; i < count; ++i)
                numEqual += values[i] == iso;
            hit[k] |= numEqual > 0;
        }
        return;
    }
    std::vector<int> order(numIsovalues);
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&](int a, int b) { return isovalues[a] < isovalues[b]; });
    std::vector<float> sorted;
    for (int index : order)
        sorted.push_back(isovalues[index]);
    for (int i = 0; i < count; ++i)
        for (auto at = std::lower_bound(sorted.begin(), sorted.end(), values[i]);
             at != sorted.end() && *at == values[i]; ++at)
            hit[order[at - sorted.begin()]] = 1;
}

// The isovalues (by their index) that some value equals exactly.  One pass
// over the values, spread over threads: the arrays may be large and most
// isovalues are hit by none.
std::vector<char> isovaluesHit(const ValueArrays& arrays, const std::vector<float>& isovalues) {
    std::vector<char> hit(isovalues.size(), 0);
    auto merge = [](std::vector<char> a, const std::vector<char>& b) {
        for (size_t k = 0; k < a.size(); ++k)
            a[k] |= b[k];
        return a;
    };
    for (int a = 0; a < 3; ++a) {
        if (!arrays.values[a] || arrays.counts[a] <= 0)
            continue;
        const float* values = arrays.values[a];
        hit = merge(hit, tbb::parallel_reduce(
                             tbb::blocked_range<int>(0, arrays.counts[a], 1 << 14), hit,
                             [&](const tbb::blocked_range<int>& range, std::vector<char> found) {
                                 markEqual(values + range.begin(), static_cast<int>(range.size()),
                                           isovalues, found);
                                 return found;
                             },
                             merge));
    }
    return hit;
}
} // namespace

void PiVolumwright::adjustIsoval(int n, const float* values, float& iso) {
    adjustIsovalMultiple(n, values, 0, nullptr, 0, nullptr, iso);
}

void PiVolumwright::adjustIsovalMultiple(int n1, const float* values1, int n2, const float* values2,
                                         int n3, const float* values3, float& iso) {
    const ValueArrays arrays{{values1, values2, values3}, {n1, n2, n3}};
    m_isovalAdjusted = false;
    int numEqual = 0;
    bool anyGreater = false;
    arrays.forEach([&](float value) {
        numEqual += value == iso;
        anyGreater = anyGreater || value > iso;
    });
    if (numEqual == 0 || numEqual == n1)
        return;
    m_isovalAdjusted = true;
    const double direction = anyGreater ? 1.0 : -1.0;

    float step = 0.0f;
    for (;;) {
        iso = iso + step;
        const float start = iso;
        float nearest = s_noDistance;
        arrays.forEach([&](float value) {
            const float distance = std::fabs(value - iso);
            if (distance > step && distance < nearest)
                nearest = distance;
        });
        double fraction = 0.01;
        iso = iso + static_cast<float>(nearest * fraction * direction);
        while (iso == start && fraction < 0.1) {
            fraction += 0.01;
            iso = iso + static_cast<float>(nearest * fraction * direction);
        }
        // Without a farther value there is nothing left to step by.
        if (iso != start || nearest == s_noDistance)
            return;
        step = nearest;
    }
}

void PiVolumwright::adjustIsovalList(int n1, const float* values1, int n2, const float* values2,
                                     int n3, const float* values3) {
    m_numAdjusted = 0;
    m_isovalAdjusted = false;
    if (!m_isovaluesList)
        return;
    int count, regular;
    float min, max, step;
    const float* isovalues = m_isovaluesList->getIsoList(count, min, max, step, regular);
    if (!isovalues || count <= 0)
        return;
    if (static_cast<int>(m_adjusted.capacity()) < count)
        m_adjusted.reserve(2 * static_cast<size_t>(count));
    m_adjusted.assign(isovalues, isovalues + count);
    m_numAdjusted = count;

    const ValueArrays arrays{{values1, values2, values3}, {n1, n2, n3}};
    const std::vector<char> hit = isovaluesHit(arrays, m_adjusted);
    bool anyAdjusted = false;
    for (int i = 0; i < count; ++i) {
        if (!hit[i])
            continue;
        adjustIsovalMultiple(n1, values1, n2, values2, n3, values3, m_adjusted[i]);
        anyAdjusted = anyAdjusted || m_isovalAdjusted;
    }
    m_isovalAdjusted = anyAdjusted;
}
