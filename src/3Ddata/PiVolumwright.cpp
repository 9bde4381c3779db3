#include "3Ddata/PiVolumwright.h"

#include <Quillon/graph/PbIsovaluesList.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>

namespace {
// Up to three counted value arrays, seen as one.
struct ValueArrays {
    const float* values[3];
    int counts[3];

    // Combines the results of block over the values, block by block and
    // spread over threads: the arrays may be large.
    template <typename T, typename Block, typename Combine>
    T reduce(T identity, Block&& block, Combine&& combine) const {
        T result = identity;
        for (int a = 0; a < 3; ++a) {
            if (!values[a] || counts[a] <= 0)
                continue;
            const float* array = values[a];
            result = combine(result, tbb::parallel_reduce(
                                         tbb::blocked_range<int>(0, counts[a], 1 << 14), identity,
                                         [&](const tbb::blocked_range<int>& range, T partial) {
                                             return combine(partial,
                                                            block(array + range.begin(),
                                                                  static_cast<int>(range.size())));
                                         },
                                         combine));
        }
        return result;
    }
};

// How many values equal an isovalue, and how many lie above it.
struct Around {
    int equal = 0;
    int greater = 0;
};

Around countAround(const ValueArrays& arrays, float iso) {
    return arrays.reduce(
        Around(),
        [iso](const float* values, int count) {
            Around around;
            for (int i = 0; i < count; ++i) {
                around.equal += values[i] == iso;
                around.greater += values[i] > iso;
            }
            return around;
        },
        [](Around a, Around b) {
            return Around{a.equal + b.equal, a.greater + b.greater};
        });
}

const float s_noDistance = 1e30f;

// The smallest distance from iso to a value that exceeds step.  Distances
// are not negative, so their bit patterns order as they do: the search
// runs on integers, which vectorises.
float nearestBeyond(const ValueArrays& arrays, float iso, float step) {
    auto bitsOf = [](float value) {
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof(bits));
        return bits;
    };
    const uint32_t stepBits = bitsOf(step), none = bitsOf(s_noDistance);
    const uint32_t nearest = arrays.reduce(
        none,
        [&](const float* values, int count) {
            uint32_t found = none;
            for (int i = 0; i < count; ++i) {
                const uint32_t distance = bitsOf(std::fabs(values[i] - iso));
                const uint32_t candidate = distance > stepBits ? distance : none;
                found = candidate < found ? candidate : found;
            }
            return found;
        },
        [](uint32_t a, uint32_t b) { return std::min(a, b); });
    float distance;
    std::memcpy(&distance, &nearest, sizeof(distance));
    return distance;
}

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
    return arrays.reduce(
        std::vector<char>(isovalues.size(), 0),
        [&](const float* values, int count) {
            std::vector<char> hit(isovalues.size(), 0);
            markEqual(values, count, isovalues, hit);
            return hit;
        },
        [](std::vector<char> a, const std::vector<char>& b) {
            for (size_t k = 0; k < a.size(); ++k)
                a[k] |= b[k];
            return a;
        });
}
} // namespace

void PiVolumwright::adjustIsoval(int n, const float* values, float& iso) {
    adjustIsovalMultiple(n, values, 0, nullptr, 0, nullptr, iso);
}

void PiVolumwright::adjustIsovalMultiple(int n1, const float* values1, int n2, const float* values2,
                                         int n3, const float* values3, float& iso) {
    const ValueArrays arrays{{values1, values2, values3}, {n1, n2, n3}};
    m_isovalAdjusted = false;
    const Around around = countAround(arrays, iso);
    if (around.equal == 0 || around.equal == n1)
        return;
    m_isovalAdjusted = true;
    const double direction = around.greater > 0 ? 1.0 : -1.0;

    float step = 0.0f;
    for (;;) {
        iso = iso + step;
        const float start = iso;
        const float nearest = nearestBeyond(arrays, iso, step);
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
