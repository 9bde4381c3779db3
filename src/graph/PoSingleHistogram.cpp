#include <Quillon/graph/PoSingleHistogram.h>

#include <cmath>

PO_KIT_SOURCE(PoSingleHistogram, PoHistogram)

PoSingleHistogram::PoSingleHistogram() {
    init(SbVec2f(0.0f, 0.0f), 1.0f, 0, nullptr, nullptr);
}

PoSingleHistogram::PoSingleHistogram(const SbVec2f& start, float end, int numValues,
                                     const float* values, const char** names) {
    init(start, end, numValues, values, names);
}

// Writes only the fields that differ, so that fields left at their defaults
// stay default.
void PoSingleHistogram::init(const SbVec2f& startPoint, float endCoord, int numValues,
                             const float* values, const char** names) {
    SO_KIT_CONSTRUCTOR(PoSingleHistogram);
    SO_KIT_ADD_FIELD(value, (0.0f));
    SO_KIT_ADD_FIELD(name, (""));
    SO_KIT_INIT_INSTANCE();

    if (start.getValue() != startPoint)
        start = startPoint;
    if (end.getValue() != endCoord)
        end = endCoord;
    if (values && numValues > 0)
        value.setValues(0, numValues, values);
    if (names && numValues > 0)
        setStrings(name, numValues, names);
    watchFields({&value, &name});
}

PoSingleHistogram::~PoSingleHistogram() = default;

void PoSingleHistogram::rebuild(void) {
    RebuildScope scope(this);
    clearParts();
    setDefaultAttr();
    const int count = value.getNum();
    Row row;
    if (!computeRow(count, row))
        return;
    const float base = getBaseLine();
    std::vector<Bar> bars;
    std::vector<Name> names;
    for (int i = 0; i < count; ++i) {
        const bool shown = checkValue(value[i], i);
        Bar bar = row.makeBar(i, 0.0f, row.barWidth, base, shown ? value[i] : base);
        bar.room = std::fabs(row.pitch);
        if (i < name.getNum())
            names.push_back(Name{bar, name[i]});
        if (shown)
            bars.push_back(bar);
    }
    buildBars(bars, names);
}
