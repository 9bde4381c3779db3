#include <Quillon/graph/PbIsovaluesList.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
const float s_belowList = -1e20f;
const float s_aboveList = 1e20f;

// Sorts ascending by selection: each position takes the first smallest of
// the values after it.
void selectionSort(std::vector<float>& values) {
    for (size_t i = 0; i + 1 < values.size(); ++i) {
        size_t smallest = i;
        for (size_t j = i + 1; j < values.size(); ++j)
            if (values[j] < values[smallest])
                smallest = j;
        std::swap(values[i], values[smallest]);
    }
}
} // namespace

PbIsovaluesList::PbIsovaluesList() {
    regularFromBounds(1, 10, 10);
}

PbIsovaluesList::PbIsovaluesList(float min, float max, int count) : PbIsovaluesList() {
    setRegularIsoList(min, max, count);
}

PbIsovaluesList::PbIsovaluesList(const PbIsovaluesList& other)
    : PbBase(other), m_min(other.m_min), m_max(other.m_max), m_values(other.m_values),
      m_step(other.m_step), m_smallestGap(other.m_smallestGap),
      m_dependsOnRep(other.m_dependsOnRep), m_regular(other.m_regular) {}

PbIsovaluesList& PbIsovaluesList::operator=(const PbIsovaluesList& other) {
    if (this == &other)
        return *this;
    m_min = other.m_min;
    m_max = other.m_max;
    m_values = other.m_values;
    m_step = other.m_step;
    m_smallestGap = other.m_smallestGap;
    m_dependsOnRep = other.m_dependsOnRep;
    m_regular = other.m_regular;
    PbBase::operator=(other);
    return *this;
}

void PbIsovaluesList::setRegularIsoList(int count) {
    regularFromBounds(m_min, m_max, count);
}

void PbIsovaluesList::setRegularIsoList(float min, float max) {
    regularFromBounds(min, max, static_cast<int>(m_values.size()));
}

void PbIsovaluesList::setRegularIsoList(float min, float max, int count) {
    regularFromBounds(min, max, count);
}

void PbIsovaluesList::setRegularIsoList(int count, const float* values) {
    setRegularIsoList(count, values, count);
}

void PbIsovaluesList::setRegularIsoList(int count, const float* values, int isoCount) {
    if (!isValidList("PbIsovaluesList::setRegularIsoList", count, values))
        return;
    if (count == 0) {
        PoDebugError::post("PbIsovaluesList::setRegularIsoList", "no values to take bounds from");
        return;
    }
    const auto bounds = std::minmax_element(values, values + count);
    regularFromBounds(*bounds.first, *bounds.second, isoCount);
}

void PbIsovaluesList::setRegularIsoList(int count, float start, float step) {
    if (count < 1) {
        PoDebugError::post("PbIsovaluesList::setRegularIsoList",
                           "count %d: at least one isovalue expected", count);
        return;
    }
    m_values.assign(count, 0.0f);
    float value = start;
    if (step >= 0) {
        for (int i = 0; i < count; ++i, value += step)
            m_values[i] = value;
    } else {
        for (int i = count - 1; i >= 1; --i, value += step)
            m_values[i] = value;
    }
    m_min = m_values.front();
    m_max = m_values.back();
    storeRegular(step);
}

void PbIsovaluesList::setIrregularIsoList(int count, const float* values) {
    if (!isValidList("PbIsovaluesList::setIrregularIsoList", count, values))
        return;
    m_values.assign(values, values + count);
    selectionSort(m_values);
    m_min = count ? m_values.front() : 0;
    m_max = count ? m_values.back() : 0;
    m_regular = 1;
    m_smallestGap = 0;
    if (count > 1) {
        const float firstGap = m_values[1] - m_values[0];
        m_smallestGap = firstGap;
        for (int i = 2; i < count; ++i) {
            const float gap = m_values[i] - m_values[i - 1];
            if (gap != firstGap)
                m_regular = 0;
            if (std::fabs(gap) < std::fabs(m_smallestGap))
                m_smallestGap = gap;
        }
    }
    m_step = m_smallestGap;
    setChangeType(CHANGE);
    notifyChange();
}

const float* PbIsovaluesList::getIsoList(int& count, float& min, float& max, float& step,
                                         int& regular) const {
    count = static_cast<int>(m_values.size());
    min = m_min;
    max = m_max;
    step = m_step;
    regular = m_regular;
    return m_values.data();
}

int PbIsovaluesList::getIndex(float value) const {
    if (m_values.empty())
        return 0;
    return m_regular ? regularIndex(value) : irregularIndex(value);
}

float PbIsovaluesList::getLowerIsovalue(float value) const {
    if (m_values.empty() || value < m_values.front())
        return s_belowList;
    float lower = s_belowList;
    for (float isovalue : m_values)
        if (isovalue <= value && isovalue > lower)
            lower = isovalue;
    return lower;
}

float PbIsovaluesList::getUpperIsovalue(float value) const {
    if (m_values.empty() || value > m_values.back())
        return s_aboveList;
    float upper = s_aboveList;
    for (float isovalue : m_values)
        if (isovalue >= value && isovalue < upper)
            upper = isovalue;
    return upper;
}

void PbIsovaluesList::isoListDependsOnRep(int flag) {
    m_dependsOnRep = flag;
    setChangeType(CHANGE);
    notifyChange();
}

void PbIsovaluesList::print(FILE* fp) const {
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbIsovaluesList", "min", m_min);
    PbPrintout::member(fp, "PbIsovaluesList", "max", m_max);
    PbPrintout::member(fp, "PbIsovaluesList", "count", static_cast<int>(m_values.size()));
    PbPrintout::member(fp, "PbIsovaluesList", "step", m_step);
    PbPrintout::member(fp, "PbIsovaluesList", "smallestGap", m_smallestGap);
    PbPrintout::member(fp, "PbIsovaluesList", "regular", m_regular);
    PbPrintout::member(fp, "PbIsovaluesList", "dependsOnRep", m_dependsOnRep);
    PbPrintout::list(fp, "PbIsovaluesList", "values", static_cast<int>(m_values.size()),
                     m_values.data());
}

bool PbIsovaluesList::isValidList(const char* methodName, int count, const float* values) const {
    if (count < 0 || (count > 0 && !values)) {
        PoDebugError::post(methodName, "bad value list (count %d, values %p)", count,
                           static_cast<const void*>(values));
        return false;
    }
    return true;
}

void PbIsovaluesList::regularFromBounds(float bound1, float bound2, int count) {
    if (count < 2) {
        PoDebugError::post("PbIsovaluesList::setRegularIsoList",
                           "count %d: at least two isovalues expected between two bounds", count);
        return;
    }
    m_min = std::min(bound1, bound2);
    m_max = std::max(bound1, bound2);
    const float step = (m_max - m_min) / (count - 1);
    m_values.resize(count);
    float value = m_min;
    for (int i = 0; i < count - 1; ++i, value += step)
        m_values[i] = value;
    m_values[count - 1] = m_max;
    storeRegular(step);
}

void PbIsovaluesList::storeRegular(float step) {
    m_step = step;
    m_smallestGap = step;
    m_regular = 1;
    setChangeType(CHANGE);
    notifyChange();
}

int PbIsovaluesList::regularIndex(float value) const {
    const int count = static_cast<int>(m_values.size());
    if (value <= m_values.front())
        return 0;
    if (value > m_values.back())
        return count;
    const float quotient = (value - m_values.front()) / m_step;
    // Rounding, a zero or negative step and NaN all stay inside the list.
    int k = 0;
    if (quotient >= count - 1)
        k = count - 1;
    else if (quotient > 0)
        k = static_cast<int>(quotient);
    return m_values[k] == value ? k : k + 1;
}

// Binary search whose upper end starts one past the last value; that slot
// reads as above every value.
int PbIsovaluesList::irregularIndex(float value) const {
    const int count = static_cast<int>(m_values.size());
    int low = 0, high = count;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const float at = middle < count ? m_values[middle] : std::numeric_limits<float>::infinity();
        if (at == value)
            return middle;
        if (at > value)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return std::min(low, count);
}
