#include <Quillon/graph/PoMultipleHistogram.h>

#include <Quillon/graph/PoDebugError.h>

#include <algorithm>
#include <cmath>

PO_KIT_SOURCE(PoMultipleHistogram, PoHistogram)

PoMultipleHistogram::PoMultipleHistogram() {
    init(SbVec2f(0.0f, 0.0f), 1.0f, 1, 0, nullptr, nullptr, JUXTAPOSED);
}

PoMultipleHistogram::PoMultipleHistogram(const SbVec2f& start, float end, int numHistograms,
                                         int numBars, const float* values, const char** names,
                                         Representation representation) {
    init(start, end, numHistograms, numBars, values, names, representation);
}

// Writes only the fields that differ, so that fields left at their defaults
// stay default.
void PoMultipleHistogram::init(const SbVec2f& startPoint, float endCoord, int series, int numBars,
                               const float* values, const char** names,
                               Representation representationValue) {
    SO_KIT_CONSTRUCTOR(PoMultipleHistogram);
    SO_KIT_DEFINE_ENUM_VALUE(Representation, JUXTAPOSED);
    SO_KIT_DEFINE_ENUM_VALUE(Representation, ACCUMULATED);
    SO_KIT_DEFINE_ENUM_VALUE(Representation, PERCENTAGE);
    SO_KIT_ADD_FIELD(numHistograms, (1));
    SO_KIT_ADD_FIELD(value, (0.0f));
    SO_KIT_ADD_FIELD(name, (""));
    SO_KIT_ADD_FIELD(representation, (JUXTAPOSED));
    SO_KIT_SET_SF_ENUM_TYPE(representation, Representation);
    SO_KIT_INIT_INSTANCE();

    if (start.getValue() != startPoint)
        start = startPoint;
    if (end.getValue() != endCoord)
        end = endCoord;
    if (numHistograms.getValue() != series)
        numHistograms = static_cast<short>(series);
    if (values && series > 0 && numBars > 0)
        value.setValues(0, series * numBars, values);
    if (names && numBars > 0)
        setStrings(name, numBars, names);
    if (representation.getValue() != representationValue)
        representation = representationValue;
    watchFields({&numHistograms, &value, &name, &representation});
}

PoMultipleHistogram::~PoMultipleHistogram() = default;

int PoMultipleHistogram::countBars(void) const {
    const int series = numHistograms.getValue();
    if (series < 1) {
        PoDebugError::post("PoMultipleHistogram::rebuild",
                           "numHistograms is %d; at least one series is needed", series);
        return 0;
    }
    const int count = value.getNum();
    const int left = count % series;
    if (left != 0)
        PoDebugError::postWarning("PoMultipleHistogram::rebuild",
                                  "%d values do not make %d whole series; the last %d are not "
                                  "drawn",
                                  count, series, left);
    return count / series;
}

std::vector<float> PoMultipleHistogram::cellValues(int cell, int numBars) const {
    std::vector<float> values;
    for (int k = 0; k < numHistograms.getValue(); ++k) {
        const int index = k * numBars + cell;
        values.push_back(checkValue(value[index], index) ? value[index] : NAN);
    }
    return values;
}

// Names stand beside the whole extent of their cell's bars, toward the base
// unless every bar falls below it.
void PoMultipleHistogram::addName(int cell, const Bar& extent, std::vector<Name>& names) const {
    if (cell < name.getNum())
        names.push_back(Name{extent, name[cell]});
}

void PoMultipleHistogram::rebuild(void) {
    RebuildScope scope(this);
    clearParts();
    setDefaultAttr();
    const int numBars = countBars();
    Row row;
    if (!computeRow(numBars, row))
        return;
    std::vector<Bar> bars;
    std::vector<Name> names;
    switch (checkedEnum(representation, 3, JUXTAPOSED)) {
    case ACCUMULATED:
        buildAccumulatedHistog(row, numBars, bars, names);
        break;
    case PERCENTAGE:
        buildPercentageHistog(row, numBars, bars, names);
        break;
    default:
        buildJuxtaposedHistog(row, numBars, bars, names);
        break;
    }
    buildBars(bars, names);
}

namespace {
// The extent of a cell's bars from low to high, turned toward the base line
// when every bar falls below it.
void orientExtent(float base, float low, float high, float& from, float& to) {
    const bool falls = high <= base && low < base;
    from = falls ? high : low;
    to = falls ? low : high;
}
} // namespace

void PoMultipleHistogram::buildJuxtaposedHistog(const Row& row, int numBars, std::vector<Bar>& bars,
                                                std::vector<Name>& names) {
    const int series = numHistograms.getValue();
    const float width = row.barWidth / static_cast<float>(series);
    const float base = getBaseLine();
    for (int i = 0; i < numBars; ++i) {
        const std::vector<float> values = cellValues(i, numBars);
        float low = base, high = base;
        for (int k = 0; k < series; ++k) {
            if (std::isnan(values[k]))
                continue;
            Bar bar = row.makeBar(i, static_cast<float>(k) * width, width, base, values[k]);
            bar.colorIndex = k;
            bars.push_back(bar);
            low = std::min(low, values[k]);
            high = std::max(high, values[k]);
        }
        float from, to;
        orientExtent(base, low, high, from, to);
        Bar extent = row.makeBar(i, 0.0f, row.barWidth, from, to);
        extent.room = std::fabs(row.pitch);
        addName(i, extent, names);
    }
}

// Stacks a cell's parts of the given heights from the base line, upwards
// and downwards; each part keeps its value for its colour and shows its
// height.
void PoMultipleHistogram::stack(const Row& row, int cell, const std::vector<float>& values,
                                const std::vector<float>& heights, std::vector<Bar>& bars,
                                std::vector<Name>& names) const {
    const float base = getBaseLine();
    float above = base, below = base;
    for (size_t k = 0; k < heights.size(); ++k) {
        const float height = heights[k];
        if (std::isnan(height) || height == 0.0f)
            continue;
        float& top = height > 0.0f ? above : below;
        Bar bar = row.makeBar(cell, 0.0f, row.barWidth, top, top + height);
        top += height;
        bar.colorIndex = static_cast<int>(k);
        bar.colorValue = values[k];
        bar.shownValue = height;
        bar.stacked = true;
        bars.push_back(bar);
    }
    float from, to;
    orientExtent(base, below, above, from, to);
    Bar extent = row.makeBar(cell, 0.0f, row.barWidth, from, to);
    extent.room = std::fabs(row.pitch);
    addName(cell, extent, names);
}

void PoMultipleHistogram::buildAccumulatedHistog(const Row& row, int numBars,
                                                 std::vector<Bar>& bars, std::vector<Name>& names) {
    for (int i = 0; i < numBars; ++i) {
        const std::vector<float> values = cellValues(i, numBars);
        stack(row, i, values, values, bars, names);
    }
}

void PoMultipleHistogram::buildPercentageHistog(const Row& row, int numBars, std::vector<Bar>& bars,
                                                std::vector<Name>& names) {
    for (int i = 0; i < numBars; ++i) {
        const std::vector<float> values = cellValues(i, numBars);
        float total = 0.0f;
        for (size_t k = 0; k < values.size(); ++k) {
            if (values[k] < 0.0f)
                PoDebugError::postWarning("PoMultipleHistogram::rebuild",
                                          "value %d is negative; it counts as 0 in percentages",
                                          static_cast<int>(k) * numBars + i);
            else if (values[k] > 0.0f)
                total += values[k];
        }
        std::vector<float> shares;
        for (float v : values)
            shares.push_back(std::isnan(v) ? v : v > 0.0f ? 100.0f * v / total : 0.0f);
        stack(row, i, values, shares, bars, names);
    }
}
