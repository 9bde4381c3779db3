#include <Quillon/graph/PoLinearValueLegend.h>

#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/graph/PoLinearAxis.h>

#include <cmath>

PO_KIT_SOURCE(PoLinearValueLegend, PoValueLegend)

PoLinearValueLegend::PoLinearValueLegend() {
    init(SbVec2f(0, 0), SbVec2f(1, 1));
}

PoLinearValueLegend::PoLinearValueLegend(const SbVec2f& start, const SbVec2f& end) {
    init(start, end);
}

void PoLinearValueLegend::init(const SbVec2f& startCorner, const SbVec2f& endCorner) {
    SO_KIT_CONSTRUCTOR(PoLinearValueLegend);
    SO_KIT_ADD_FIELD(step, (0.0f));
    SO_KIT_INIT_INSTANCE();
    if (start.getValue() != startCorner)
        start = startCorner;
    if (end.getValue() != endCorner)
        end = endCorner;
    watchFields({&step});
}

PoLinearValueLegend::~PoLinearValueLegend() = default;

// The linear axis's graduations, at whole multiples of the step, written
// with the number format over them.
void PoLinearValueLegend::computeGraduations(float min, float max, std::vector<float>& values,
                                             std::vector<SbString>& texts, int& tenPower) {
    float gradStep = step.getValue();
    if (!std::isfinite(gradStep)) {
        PoDebugError::postWarning("PoLinearValueLegend::rebuild",
                                  "the step is not a number; it is chosen automatically");
        gradStep = 0.0f;
    }
    float first = min;
    int count = 0;
    PoLinearAxis::getLinGrads(PoLinearAxis::GRAD_UNFIT, min, max, first, gradStep, count);
    // Graduations that rounding puts a hair beyond the range still count.
    const float tolerance = 1e-5f * (max - min);
    PiNumericFormat format;
    const float last = first + static_cast<float>(std::max(count - 1, 0)) * gradStep;
    format.setFormat(getNumericFormat(), first, last, gradStep, 0);
    for (int i = 0; i < count; ++i) {
        const float value = first + static_cast<float>(i) * gradStep;
        if (value < min - tolerance || value > max + tolerance)
            continue;
        values.push_back(std::min(std::max(value, min), max));
        texts.push_back(format.getString(value));
    }
    tenPower = format.getTenPower();
}
