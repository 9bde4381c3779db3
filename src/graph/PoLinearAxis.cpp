#include <Quillon/graph/PoLinearAxis.h>

#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>

PO_KIT_SOURCE(PoLinearAxis, PoCartesianAxis)

namespace {
// Graduations beyond this many are not drawn.
const int s_maxGradCount = 5000;
} // namespace

PoLinearAxis::PoLinearAxis() {
    init(SbVec3f(0, 0, 0), 1.0f, XY, 0.0f, 0.0f, 0.0f);
}

PoLinearAxis::PoLinearAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type,
                           float step) {
    init(start, end, type, 0.0f, 0.0f, step);
}

PoLinearAxis::PoLinearAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type,
                           float gradStart, float gradEnd, float step) {
    init(start, end, type, gradStart, gradEnd, step);
}

// Writes only the fields that differ, so that fields left at their defaults
// stay default (and are not written to files).
void PoLinearAxis::init(const SbVec3f& startPoint, float endCoord, PoCartesianAxis::Type axisType,
                        float startValue, float endValue, float stepValue) {
    SO_KIT_CONSTRUCTOR(PoLinearAxis);
    PO_KIT_ADD_PART_WITH_APPEARANCE(multFactor, SoGroup, alternateRep);
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_FIT);
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_UNFIT);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_START);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_END);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_EXTR);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_GRAD);
    SO_KIT_ADD_FIELD(step, (0.0f));
    SO_KIT_ADD_FIELD(gradFit, (GRAD_UNFIT));
    SO_KIT_ADD_FIELD(multFactorPosition, (MULT_FACTOR_END));
    SO_KIT_ADD_FIELD(multFactorDistAxis, (0.0f));
    SO_KIT_SET_SF_ENUM_TYPE(gradFit, GradFit);
    SO_KIT_SET_SF_ENUM_TYPE(multFactorPosition, MultFactorPosition);
    SO_KIT_INIT_INSTANCE();

    if (start.getValue() != startPoint)
        start = startPoint;
    if (end.getValue() != endCoord)
        end = endCoord;
    if (type.getValue() != axisType)
        type = axisType;
    if (gradStart.getValue() != startValue)
        gradStart = startValue;
    if (gradEnd.getValue() != endValue)
        gradEnd = endValue;
    if (step.getValue() != stepValue)
        step = stepValue;
    watchFields({&step, &gradFit, &multFactorPosition, &multFactorDistAxis});
}

PoLinearAxis::~PoLinearAxis() {
    changeConnection(m_format, nullptr);
}

void PoLinearAxis::setFormat(PbNumericDisplayFormat* format) {
    connectObject(m_format, format);
}

void PoLinearAxis::basicObjectChange(PbBase* object) {
    if (!manageConnectedObject(object, m_format))
        PoCartesianAxis::basicObjectChange(object);
}

float PoLinearAxis::getStep(void) const {
    return isBuilt() ? m_step : step.getValue();
}

void PoLinearAxis::getMultFactor(MultFactorPosition& position, float& distance) const {
    position = static_cast<MultFactorPosition>(isBuilt() ? m_multFactorPosition
                                                         : multFactorPosition.getValue());
    distance = isBuilt() ? m_multFactorDistance : multFactorDistAxis.getValue();
}

// ------------------------------------------------------ step rules

void PoLinearAxis::getLinGrads(GradFit fit, float min, float max, float& firstGrad, float& step,
                               int& numGrad) {
    getLinGradStep(max - min, step);
    getLinGradFirstGrad(fit, min, max, step, firstGrad, numGrad);
}

// A tenth of the range, written n * 10^(e+1) with n in (0.1, 1], gives the
// step: the mantissa chosen from n times that power of ten.
void PoLinearAxis::getLinGradStep(float range, float& step) {
    if (range == 0.0f || !std::isfinite(range))
        return;
    if (step == 0.0f) {
        const float x = std::fabs(range) / 10.0f;
        int e = 0;
        if (x > 1.0f) {
            e = static_cast<int>(std::trunc(std::log10(x)));
        } else {
            float p = 1.0f;
            do {
                p /= 10.0f;
                --e;
            } while (p > x && p > 0.0f);
        }
        const float power = std::pow(10.0f, static_cast<float>(e + 1));
        const float n = x / power;
        const float mantissa = n > 0.49f   ? 1.0f
                               : n > 0.39f ? 0.5f
                               : n > 0.29f ? 0.4f
                               : n > 0.19f ? 0.3f
                                           : 0.2f;
        step = mantissa * power;
    }
    step = std::copysign(step, range);
}

void PoLinearAxis::getLinGradFirstGrad(GradFit fit, float min, float max, float step,
                                       float& firstGrad, int& numGrad) {
    numGrad = 0;
    firstGrad = min;
    if (step == 0.0f || !std::isfinite(min) || !std::isfinite(max) || !std::isfinite(step))
        return;
    double count;
    if (fit == GRAD_FIT) {
        count = std::trunc((max - min) / step) + 1.0;
    } else {
        const float s = std::fabs(step);
        float i0 = std::trunc(min / s), i1 = std::trunc(max / s);
        if (max >= min) {
            if (i0 * s < min)
                i0 += 1.0f;
            if (i1 * s > max)
                i1 -= 1.0f;
            count = static_cast<double>(i1) - i0 + 1.0;
        } else {
            if (i0 * s > min)
                i0 -= 1.0f;
            if (i1 * s < max)
                i1 += 1.0f;
            count = static_cast<double>(i0) - i1 + 1.0;
        }
        firstGrad = i0 * s;
    }
    if (count > s_maxGradCount) {
        PoDebugError::postWarning("PoLinearAxis::getLinGradFirstGrad",
                                  "a step of %g makes %.0f graduations; only the first %d are "
                                  "drawn",
                                  step, count, s_maxGradCount);
        count = s_maxGradCount;
    }
    numGrad = count > 0.0 ? static_cast<int>(count) : 0;
}

// ---------------------------------------------------------- rebuild

float PoLinearAxis::getGradCoord(float value) const {
    const float v0 = gradStart.getValue(), v1 = gradEnd.getValue();
    if (v0 == v1)
        return value;
    return m_startCoord + (m_endCoord - m_startCoord) * (value - v0) / (v1 - v0);
}

float PoLinearAxis::getGradValue(float coord) const {
    const float v0 = gradStart.getValue(), v1 = gradEnd.getValue();
    if (v0 == v1)
        return coord;
    return v0 + (coord - m_startCoord) * (v1 - v0) / (m_endCoord - m_startCoord);
}

bool PoLinearAxis::hasValidInput(void) const {
    const SbVec3f& s = start.getValue();
    const float values[] = {
        s[0], s[1], s[2], end.getValue(), gradStart.getValue(), gradEnd.getValue()};
    for (float value : values) {
        if (!std::isfinite(value)) {
            PoDebugError::post("PoLinearAxis::rebuild",
                               "start, end, gradStart and gradEnd must be numbers; the axis is "
                               "not drawn");
            return false;
        }
    }
    if (m_startCoord == m_endCoord) {
        PoDebugError::postWarning("PoLinearAxis::rebuild",
                                  "the axis starts and ends at %g; it is not drawn", m_endCoord);
        return false;
    }
    return true;
}

SbString PoLinearAxis::makeGradString(float value) const {
    // The text is put together in Latin-1, as the added string is.
    SbString text = m_multFactorPosition == MULT_FACTOR_GRAD ? valueString(m_numericFormat, value)
                                                             : m_numericFormat.getString(value);
    if (m_attr.gradAddStringVisibility == VISIBILITY_ON)
        text += PiText::toLatin1(m_attr.gradAddString);
    return PiText::fromLatin1(text.getString());
}

// The graduations from the step rules, up to the first one that falls
// outside the limits.
void PoLinearAxis::computeCandidates(float firstLimit, float lastLimit,
                                     std::vector<SbString>& texts, std::vector<float>& coords) {
    float stepValue = step.getValue();
    if (!std::isfinite(stepValue)) {
        PoDebugError::postWarning("PoLinearAxis::rebuild",
                                  "the step is not a number; it is chosen automatically");
        stepValue = 0.0f;
    }
    int count = 0;
    getLinGrads(static_cast<GradFit>(checkedEnum(gradFit, 2, GRAD_UNFIT)), getGradValue(firstLimit),
                getGradValue(lastLimit), m_firstGrad, stepValue, count);
    m_step = stepValue;
    const PbNumericDisplayFormat* format =
        m_format ? m_format : readElement<PoNumericDisplayFormatElement>();
    const float lastGrad = m_firstGrad + static_cast<float>(std::max(count - 1, 0)) * m_step;
    m_numericFormat.setFormat(format, m_firstGrad, lastGrad, m_step, 0);
    const bool increasing = lastLimit >= firstLimit;
    for (int i = 0; i < count; ++i) {
        const float value = m_firstGrad + static_cast<float>(i) * m_step;
        const float coord = getGradCoord(value);
        const bool inside = increasing ? coord >= firstLimit && coord <= lastLimit
                                       : coord <= firstLimit && coord >= lastLimit;
        if (!inside)
            break;
        coords.push_back(coord);
        texts.push_back(makeGradString(value));
    }
}

void PoLinearAxis::rebuild(void) {
    RebuildScope scope(this);
    clearAxisParts();
    setAnyPart("multFactor", nullptr);
    saveAxisAttr();
    setDefaultAttr(getAxisType());
    m_multFactorPosition = checkedEnum(multFactorPosition, 4, MULT_FACTOR_END);
    m_multFactorDistance =
        std::isfinite(multFactorDistAxis.getValue()) ? multFactorDistAxis.getValue() : 0.0f;
    m_startCoord = getStartCoord();
    m_endCoord = end.getValue();
    if (!hasValidInput())
        return;

    float axisExtent, gradExtent;
    auto* transformNode = new SoMatrixTransform;
    transformNode->matrix = computeTransfo(axisExtent, gradExtent);
    setAnyPart("transform", transformNode);
    setUnitLength(axisExtent);

    float firstLimit, lastLimit;
    computeGradLimit(m_startCoord, m_endCoord, firstLimit, lastLimit);
    std::vector<SbString> texts, mainTexts;
    std::vector<float> coords;
    computeCandidates(firstLimit, lastLimit, texts, coords);
    const float coordStep = getGradCoord(m_firstGrad + m_step) - getGradCoord(m_firstGrad);
    computeGradList(firstLimit, lastLimit, coordStep, texts, coords, mainTexts);
    computeTickLen(static_cast<int>(getMainGradCoords().size()));

    buildBody(m_startCoord, m_endCoord);
    buildArrow(m_startCoord, m_endCoord);
    buildTick();
    buildGridLines();
    buildGrads(mainTexts);
    buildMultFactor();
    buildTitle(m_startCoord, m_endCoord);
}

// Beyond the end (and its arrow) or before the start, on the graduation
// side.
void PoLinearAxis::buildMultFactor(void) {
    const int tenPower = m_numericFormat.getTenPower();
    if (m_attr.gradVisibility != VISIBILITY_ON || m_multFactorPosition == MULT_FACTOR_GRAD ||
        tenPower == 0 || getMainGradCoords().empty())
        return;
    if (m_multFactorDistance == 0.0f)
        m_multFactorDistance = m_attr.gradDistAxis;
    const float distance = m_multFactorDistance * getUnitLength();
    const float direction = m_endCoord > m_startCoord ? 1.0f : -1.0f;
    const float arrow =
        m_attr.arrowVisibility == VISIBILITY_ON ? m_attr.arrowLength * getUnitLength() : 0.0f;
    auto* group = new SoGroup;
    if (m_multFactorPosition != MULT_FACTOR_START)
        buildMultFactorAtExtr(group, m_endCoord + direction * arrow, direction, tenPower, distance);
    if (m_multFactorPosition != MULT_FACTOR_END)
        buildMultFactorAtExtr(group, m_startCoord, -direction, tenPower, distance);
    setAnyPart("multFactor", group);
}

void PoLinearAxis::setDefaultOnNonWritingFields(void) {
    PoCartesianAxis::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    markPartDefault("multFactorSep");
    markPartDefault("multFactor");
}
