#include <Quillon/graph/PoAxis.h>

#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoAxis, PoBaseAxis)

namespace {
// Relative default sizes.
const float s_gradFontSize = 0.04f;
const float s_titleFontSize = 0.055f;
const float s_arrowHeight = 0.03f;
const float s_arrowLength = 0.05f;
// Share of the distance between two graduations that a text may fill.
const float s_gradRoom = 0.8f;
// Sub graduations beyond this many are not drawn.
const int s_maxSubGrads = 100000;

// The parts that rebuilds fill, and their separators.
const char* const s_contentParts[] = {"body",         "arrow",       "title",
                                      "subGradTick",  "subGradGrid", "mainGradTick",
                                      "mainGradGrid", "mainGradText"};
const char* const s_separatorParts[] = {"transform",       "bodySep",         "arrowSep",
                                        "titleSep",        "subGradTickSep",  "subGradGridSep",
                                        "mainGradTickSep", "mainGradGridSep", "mainGradTextSep"};

bool isOn(int visibility) {
    return visibility == PoAxis::VISIBILITY_ON;
}

SoGroup* lineSet(const std::vector<SbVec3f>& points) {
    auto* group = new SoGroup;
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    group->addChild(coordinates);
    auto* lines = new SoLineSet;
    for (int i = 0; i < static_cast<int>(points.size()) / 2; ++i)
        lines->numVertices.set1Value(i, 2);
    group->addChild(lines);
    return group;
}
} // namespace

PoAxis::PoAxis() {
    SO_KIT_CONSTRUCTOR(PoAxis);

    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, "", TRUE);
    PO_KIT_ADD_PART_WITH_APPEARANCE(body, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(arrow, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(title, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(subGradTick, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(subGradGrid, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(mainGradTick, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(mainGradGrid, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(mainGradText, SoGroup, alternateRep);

    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_ABOVE);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_BELOW);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_SIDE);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_OTHER_SIDE);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_ACROSS_AXIS);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_MIDDLE);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_END);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(TickSubDef, NUM_SUB_TICK);
    SO_KIT_DEFINE_ENUM_VALUE(TickSubDef, PERIOD_MAIN_TICK);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_NO_REVERSE);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE_DEPEND);

    SO_KIT_ADD_FIELD(gradVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(gradPosition, (GRAD_DEPEND));
    SO_KIT_ADD_FIELD(gradPath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(gradFontName, (""));
    SO_KIT_ADD_FIELD(gradFontSize, (0.0f));
    SO_KIT_ADD_FIELD(gradDistAxis, (0.0f));
    SO_KIT_ADD_FIELD(gradAddStringVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(gradAddString, (""));
    SO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
    SO_KIT_ADD_FIELD(marginStart, (0.0f));
    SO_KIT_ADD_FIELD(marginEnd, (0.0f));
    SO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(titlePosition, (TITLE_DEPEND));
    SO_KIT_ADD_FIELD(titlePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(titleFontName, (""));
    SO_KIT_ADD_FIELD(titleFontSize, (0.0f));
    SO_KIT_ADD_FIELD(titleDistAxis, (0.0f));
    SO_KIT_ADD_FIELD(titleString, (""));
    SO_KIT_ADD_FIELD(gridVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(gridLengthGradSide, (0.0f));
    SO_KIT_ADD_FIELD(gridLengthGradOtherSide, (1.0f));
    SO_KIT_ADD_FIELD(arrowVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(arrowHeight, (0.0f));
    SO_KIT_ADD_FIELD(arrowLength, (0.0f));
    SO_KIT_ADD_FIELD(tickVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(tickPosition, (TICK_GRAD_SIDE));
    SO_KIT_ADD_FIELD(tickMainLength, (0.0f));
    SO_KIT_ADD_FIELD(tickSubLength, (0.0f));
    SO_KIT_ADD_FIELD(tickSubDef, (PERIOD_MAIN_TICK));
    SO_KIT_ADD_FIELD(tickNumOrPeriod, (1));
    SO_KIT_ADD_FIELD(tickFirstGrad, (1));
    SO_KIT_ADD_FIELD(tickLastGrad, (1));
    SO_KIT_ADD_FIELD(reverseFlag, (AXIS_REVERSE_DEPEND));

    SO_KIT_SET_SF_ENUM_TYPE(gradVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(gradPosition, GradPosition);
    SO_KIT_SET_SF_ENUM_TYPE(gradPath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(gradAddStringVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(marginType, MarginType);
    SO_KIT_SET_SF_ENUM_TYPE(titleVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(titlePosition, TitlePosition);
    SO_KIT_SET_SF_ENUM_TYPE(titlePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(gridVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(arrowVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(tickVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(tickPosition, TickPosition);
    SO_KIT_SET_SF_ENUM_TYPE(tickSubDef, TickSubDef);
    SO_KIT_SET_SF_ENUM_TYPE(reverseFlag, AxisReverse);

    SO_KIT_INIT_INSTANCE();

    watchFields({&gradVisibility,
                 &gradPosition,
                 &gradPath,
                 &gradFontName,
                 &gradFontSize,
                 &gradDistAxis,
                 &gradAddStringVisibility,
                 &gradAddString,
                 &marginType,
                 &marginStart,
                 &marginEnd,
                 &titleVisibility,
                 &titlePosition,
                 &titlePath,
                 &titleFontName,
                 &titleFontSize,
                 &titleDistAxis,
                 &titleString,
                 &gridVisibility,
                 &gridLengthGradSide,
                 &gridLengthGradOtherSide,
                 &arrowVisibility,
                 &arrowHeight,
                 &arrowLength,
                 &tickVisibility,
                 &tickPosition,
                 &tickMainLength,
                 &tickSubLength,
                 &tickSubDef,
                 &tickNumOrPeriod,
                 &tickFirstGrad,
                 &tickLastGrad,
                 &reverseFlag});

    setLightModel(SoLightModel::BASE_COLOR);
    readFieldsIntoRecord();
}

PoAxis::~PoAxis() = default;

// Without its representation a kit is written with its fields and the
// appearances set on it, not with what its rebuilds made.
void PoAxis::setDefaultOnNonWritingFields(void) {
    PoBaseAxis::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : s_contentParts)
        markPartDefault(part);
    for (const char* part : s_separatorParts)
        markPartDefault(part);
}

// ------------------------------------------------------ working record

void PoAxis::readFieldsIntoRecord(void) {
    AxisAttr& a = m_attr;
    a.gradVisibility = checkedEnum(gradVisibility, 3, VISIBILITY_DEPEND);
    a.gradPosition = checkedEnum(gradPosition, 3, GRAD_DEPEND);
    a.gradPath = checkedEnum(gradPath, 5, PATH_DEPEND);
    a.gradFontName = gradFontName.getValue();
    a.gradFontSize = relativeSize(gradFontSize);
    a.gradDistAxis = relativeSize(gradDistAxis);
    a.gradAddStringVisibility = checkedEnum(gradAddStringVisibility, 3, VISIBILITY_DEPEND);
    a.gradAddString = gradAddString.getValue();
    a.marginType = checkedEnum(marginType, 2, REL_MARGIN);
    a.marginStart = relativeSize(marginStart);
    a.marginEnd = relativeSize(marginEnd);
    a.titleVisibility = checkedEnum(titleVisibility, 3, VISIBILITY_DEPEND);
    a.titlePosition = checkedEnum(titlePosition, 3, TITLE_DEPEND);
    a.titlePath = checkedEnum(titlePath, 5, PATH_DEPEND);
    a.titleFontName = titleFontName.getValue();
    a.titleFontSize = relativeSize(titleFontSize);
    a.titleDistAxis = relativeSize(titleDistAxis);
    a.titleString = titleString.getValue();
    a.gridVisibility = checkedEnum(gridVisibility, 3, VISIBILITY_DEPEND);
    a.gridLengthGradSide = relativeSize(gridLengthGradSide);
    a.gridLengthGradOtherSide = relativeSize(gridLengthGradOtherSide);
    a.arrowVisibility = checkedEnum(arrowVisibility, 3, VISIBILITY_DEPEND);
    a.arrowHeight = relativeSize(arrowHeight);
    a.arrowLength = relativeSize(arrowLength);
    a.tickVisibility = checkedEnum(tickVisibility, 3, VISIBILITY_DEPEND);
    a.tickPosition = checkedEnum(tickPosition, 3, TICK_GRAD_SIDE);
    a.tickMainLength = relativeSize(tickMainLength);
    a.tickSubLength = relativeSize(tickSubLength);
    a.tickSubDef = checkedEnum(tickSubDef, 2, PERIOD_MAIN_TICK);
    a.tickNumOrPeriod = tickNumOrPeriod.getValue();
    a.tickFirstGrad = tickFirstGrad.getValue();
    a.tickLastGrad = tickLastGrad.getValue();
    a.reverseFlag = checkedEnum(reverseFlag, 3, AXIS_REVERSE_DEPEND);
    a.endLineChar = ' ';
    a.lineLength = 0;
    a.deltaX = a.deltaY = 1.0f;
}

void PoAxis::saveAxisAttr(void) {
    readFieldsIntoRecord();
    if (const PbMiscTextAttr* attributes = getTextAttributes())
        attributes->getLineLength(m_attr.endLineChar, m_attr.lineLength);
    const PbDomain* domain = getDomain();
    m_attr.deltaX = domain->getDeltaX();
    m_attr.deltaY = domain->getDeltaY();
}

void PoAxis::setDefaultAttr(int axisType) {
    if (axisType < 0 || axisType > 5)
        return;
    const bool xy = axisType == 0;
    auto resolve = [](int& value, int depend, int resolved) {
        if (value == depend)
            value = resolved;
    };
    AxisAttr& a = m_attr;
    resolve(a.gradVisibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    resolve(a.gradPosition, GRAD_DEPEND, xy ? GRAD_BELOW : GRAD_ABOVE);
    resolve(a.gradPath, PATH_DEPEND, xy ? PATH_RIGHT : PATH_DOWN);
    resolve(a.titleVisibility, VISIBILITY_DEPEND, VISIBILITY_OFF);
    resolve(a.titlePosition, TITLE_DEPEND, xy ? TITLE_MIDDLE : TITLE_END);
    resolve(a.titlePath, PATH_DEPEND, xy ? PATH_RIGHT : PATH_DOWN);
    resolve(a.arrowVisibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    resolve(a.gridVisibility, VISIBILITY_DEPEND, VISIBILITY_OFF);
    resolve(a.tickVisibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    resolve(a.reverseFlag, AXIS_REVERSE_DEPEND, AXIS_NO_REVERSE);
}

// ------------------------------------------------------------ getters

void PoAxis::getGrad(Visibility& visibility, GradPosition& position, TextPath& path,
                     SbString& fontName, float& fontSize, float& distAxis,
                     Visibility& addStringVisibility, SbString& addString) const {
    visibility = static_cast<Visibility>(m_attr.gradVisibility);
    position = static_cast<GradPosition>(m_attr.gradPosition);
    path = static_cast<TextPath>(m_attr.gradPath);
    fontName = m_attr.gradFontName;
    fontSize = m_attr.gradFontSize;
    distAxis = m_attr.gradDistAxis;
    addStringVisibility = static_cast<Visibility>(m_attr.gradAddStringVisibility);
    addString = m_attr.gradAddString;
}

void PoAxis::getMargin(MarginType& type, float& start, float& end) const {
    type = static_cast<MarginType>(m_attr.marginType);
    start = m_attr.marginStart;
    end = m_attr.marginEnd;
}

void PoAxis::getTitle(Visibility& visibility, TitlePosition& position, TextPath& path,
                      SbString& fontName, float& fontSize, float& distAxis,
                      SbString& string) const {
    visibility = static_cast<Visibility>(m_attr.titleVisibility);
    position = static_cast<TitlePosition>(m_attr.titlePosition);
    path = static_cast<TextPath>(m_attr.titlePath);
    fontName = m_attr.titleFontName;
    fontSize = m_attr.titleFontSize;
    distAxis = m_attr.titleDistAxis;
    string = m_attr.titleString;
}

void PoAxis::getGrid(Visibility& visibility, float& lengthGradSide,
                     float& lengthGradOtherSide) const {
    visibility = static_cast<Visibility>(m_attr.gridVisibility);
    lengthGradSide = m_attr.gridLengthGradSide;
    lengthGradOtherSide = m_attr.gridLengthGradOtherSide;
}

void PoAxis::getArrow(Visibility& visibility, float& height, float& length) const {
    visibility = static_cast<Visibility>(m_attr.arrowVisibility);
    height = m_attr.arrowHeight;
    length = m_attr.arrowLength;
}

void PoAxis::getTick(Visibility& visibility, TickPosition& position, float& mainLength,
                     float& subLength, TickSubDef& subDef, int& numOrPeriod, int& firstGrad,
                     int& lastGrad) const {
    visibility = static_cast<Visibility>(m_attr.tickVisibility);
    position = static_cast<TickPosition>(m_attr.tickPosition);
    mainLength = m_attr.tickMainLength;
    subLength = m_attr.tickSubLength;
    subDef = static_cast<TickSubDef>(m_attr.tickSubDef);
    numOrPeriod = m_attr.tickNumOrPeriod;
    firstGrad = m_attr.tickFirstGrad;
    lastGrad = m_attr.tickLastGrad;
}

PoAxis::AxisReverse PoAxis::getReverseFlag(void) const {
    return static_cast<AxisReverse>(m_attr.reverseFlag);
}

// ------------------------------------------------------- graduations

void PoAxis::computeGradLimit(float start, float end, float& firstLimit, float& lastLimit) const {
    const float length = std::fabs(end - start);
    const bool relative = m_attr.marginType == REL_MARGIN;
    const float startMargin = std::fabs(m_attr.marginStart) * (relative ? length : 1.0f);
    const float endMargin = std::fabs(m_attr.marginEnd) * (relative ? length : 1.0f);
    const bool increasing = end > start;
    firstLimit = increasing ? start + startMargin : start - startMargin;
    lastLimit = increasing ? end - endMargin : end + endMargin;
    if (increasing ? firstLimit >= lastLimit : firstLimit <= lastLimit)
        firstLimit = lastLimit;
}

void PoAxis::computeGradList(float start, float end, float subStep,
                             const std::vector<SbString>& texts, const std::vector<float>& coords,
                             std::vector<SbString>& mainTexts) {
    m_mainGradCoords.clear();
    m_subGradCoords.clear();
    mainTexts.clear();
    const int count = static_cast<int>(coords.size());
    const int first = std::max(m_attr.tickFirstGrad, 1) - 1;
    const int last = count - std::max(m_attr.tickLastGrad, 1);
    const int period = m_attr.tickNumOrPeriod;
    if (m_attr.tickSubDef == PERIOD_MAIN_TICK) {
        for (int i = 0; i < count; ++i) {
            const bool main = i >= first && i <= last && (period <= 1 || (i - first) % period == 0);
            (main ? m_mainGradCoords : m_subGradCoords).push_back(coords[i]);
            if (main)
                mainTexts.push_back(texts[i]);
        }
        return;
    }
    for (int i = first; i <= last; ++i) {
        m_mainGradCoords.push_back(coords[i]);
        mainTexts.push_back(texts[i]);
    }
    const int mains = static_cast<int>(m_mainGradCoords.size());
    float spacing = 0.0f;
    if (period > 0 && subStep != 0.0f)
        spacing = subStep / static_cast<float>(period + 1);
    else if (period > 0 && mains >= 2)
        spacing = (m_mainGradCoords[1] - m_mainGradCoords[0]) / static_cast<float>(period + 1);
    if (spacing == 0.0f || mains == 0) {
        m_attr.tickNumOrPeriod = 0;
        return;
    }
    // Whole spacings between the first main graduation and start, and
    // between the last one and end.
    const double below = std::trunc((m_mainGradCoords.front() - start) / spacing);
    const double above = std::trunc((end - m_mainGradCoords.back()) / spacing);
    const double total =
        static_cast<double>(period) * (mains - 1) + std::max(below, 0.0) + std::max(above, 0.0);
    if (!(total <= s_maxSubGrads)) {
        PoDebugError::postWarning("PoAxis::computeGradList",
                                  "%.0f sub graduations asked; none are drawn beyond %d", total,
                                  s_maxSubGrads);
        return;
    }
    for (int k = static_cast<int>(below); k >= 1; --k)
        m_subGradCoords.push_back(m_mainGradCoords.front() - static_cast<float>(k) * spacing);
    for (int i = 0; i + 1 < mains; ++i)
        for (int k = 1; k <= period; ++k)
            m_subGradCoords.push_back(m_mainGradCoords[i] + static_cast<float>(k) * spacing);
    for (int k = 1; k <= static_cast<int>(above); ++k)
        m_subGradCoords.push_back(m_mainGradCoords.back() + static_cast<float>(k) * spacing);
}

void PoAxis::computeTickLen(int numMainGrads) {
    if (!(m_attr.tickMainLength > 0.0f))
        m_attr.tickMainLength = numMainGrads < 12 ? 0.025f : numMainGrads <= 24 ? 0.016f : 0.012f;
    if (!(m_attr.tickSubLength > 0.0f))
        m_attr.tickSubLength = 0.5f * m_attr.tickMainLength;
}

// ---------------------------------------------------------- building

float PoAxis::getGradSide(void) const {
    return m_attr.gradPosition == GRAD_BELOW ? -1.0f : 1.0f;
}

void PoAxis::clearAxisParts(void) {
    for (const char* part : s_contentParts)
        setAnyPart(part, nullptr);
    m_gradFarEdge = 0.0f;
}

void PoAxis::buildBody(float start, float end) {
    setAnyPart("body", lineSet({SbVec3f(start, 0, 0), SbVec3f(end, 0, 0)}));
}

void PoAxis::buildArrow(float start, float end) {
    if (!isOn(m_attr.arrowVisibility))
        return;
    if (!(m_attr.arrowHeight > 0.0f))
        m_attr.arrowHeight = s_arrowHeight;
    if (!(m_attr.arrowLength > 0.0f))
        m_attr.arrowLength = s_arrowLength;
    const float halfHeight = 0.5f * m_attr.arrowHeight * m_unitLength;
    const float length = m_attr.arrowLength * m_unitLength;
    const float tip = end < start ? end - length : end + length;
    auto* group = new SoGroup;
    auto* coordinates = new SoCoordinate3;
    const SbVec3f points[] = {SbVec3f(end, halfHeight, 0), SbVec3f(end, -halfHeight, 0),
                              SbVec3f(tip, 0, 0)};
    coordinates->point.setValues(0, 3, points);
    group->addChild(coordinates);
    auto* face = new SoFaceSet;
    face->numVertices.setValue(3);
    group->addChild(face);
    setAnyPart("arrow", group);
}

// Ticks of the given length run from the axis toward the graduations, away
// from them, or across the axis.
void PoAxis::buildTick(void) {
    if (!isOn(m_attr.tickVisibility))
        return;
    const float side = getGradSide();
    auto span = [&](float length, float& from, float& to) {
        switch (m_attr.tickPosition) {
        case TICK_GRAD_OTHER_SIDE:
            from = 0.0f, to = -side * length;
            break;
        case TICK_ACROSS_AXIS:
            from = -0.5f * length, to = 0.5f * length;
            break;
        default:
            from = 0.0f, to = side * length;
            break;
        }
    };
    float from, to;
    span(m_attr.tickMainLength * m_unitLength, from, to);
    buildLines("mainGradTick", m_mainGradCoords, from, to);
    span(m_attr.tickSubLength * m_unitLength, from, to);
    buildLines("subGradTick", m_subGradCoords, from, to);
}

void PoAxis::buildGridLines(void) {
    if (!isOn(m_attr.gridVisibility))
        return;
    const float side = getGradSide();
    const float from = side * m_attr.gridLengthGradSide * m_unitLength;
    const float to = -side * m_attr.gridLengthGradOtherSide * m_unitLength;
    buildLines("mainGradGrid", m_mainGradCoords, from, to);
    buildLines("subGradGrid", m_subGradCoords, from, to);
}

// Lines across the axis at the coordinates, from one height to another.
void PoAxis::buildLines(const char* part, const std::vector<float>& coords, float from, float to) {
    if (coords.empty())
        return;
    std::vector<SbVec3f> points;
    for (float c : coords) {
        points.emplace_back(c, from, 0.0f);
        points.emplace_back(c, to, 0.0f);
    }
    setAnyPart(part, lineSet(points));
}

// How far the ticks reach on the graduation side of the axis.
float PoAxis::tickBoundOnGradSide(void) const {
    if (!isOn(m_attr.tickVisibility))
        return 0.0f;
    const float length = m_attr.tickMainLength * m_unitLength;
    switch (m_attr.tickPosition) {
    case TICK_GRAD_OTHER_SIDE:
        return 0.0f;
    case TICK_ACROSS_AXIS:
        return 0.5f * length;
    default:
        return length;
    }
}

PiText PoAxis::makeAxisText(const SbString& fontName, float size, int path) {
    PiText text;
    setUpText(text, fontName, size);
    text.setLineBreak(m_attr.endLineChar, m_attr.lineLength);
    text.setPath(static_cast<PiText::Path>(path));
    text.setMirrored(m_attr.reverseFlag == AXIS_REVERSE);
    text.setSide(getGradSide() > 0 ? PiText::SIDE_ABOVE : PiText::SIDE_BELOW);
    return text;
}

// The font size of the graduation texts: the one asked for, or a default
// small enough for neighbouring texts not to run into each other.
float PoAxis::fitGradFontSize(const std::vector<SbString>& texts) {
    if (m_attr.gradFontSize > 0.0f)
        return m_attr.gradFontSize * m_unitLength;
    float size = s_gradFontSize * m_unitLength;
    if (m_mainGradCoords.size() >= 2) {
        const float room = s_gradRoom * std::fabs(m_mainGradCoords[1] - m_mainGradCoords[0]);
        const PiText text = makeAxisText(m_attr.gradFontName, size, m_attr.gradPath);
        const bool vertical = m_attr.gradPath == PATH_UP || m_attr.gradPath == PATH_DOWN;
        if (vertical) {
            size_t lines = 1;
            for (const SbString& t : texts)
                lines = std::max(lines, text.getLines(t).size());
            const float tallest = (static_cast<float>(lines) - 1.0f + PiText::CAP_HEIGHT) * size;
            if (tallest > room)
                size = room / static_cast<float>(lines);
        } else {
            float widest = 0.0f;
            for (const SbString& t : texts)
                widest = std::max(widest, text.getWidth(t));
            if (widest > room)
                size *= room / widest;
        }
    }
    if (size > 0.0f)
        m_attr.gradFontSize = size / m_unitLength;
    return size;
}

void PoAxis::buildGrads(const std::vector<SbString>& texts) {
    m_gradFarEdge = tickBoundOnGradSide();
    if (!isOn(m_attr.gradVisibility) || texts.empty())
        return;
    const float size = fitGradFontSize(texts);
    if (!(size > 0.0f))
        return;
    const float side = getGradSide();
    if (m_attr.gradDistAxis == 0.0f)
        m_attr.gradDistAxis = (tickBoundOnGradSide() + PiText::CAP_HEIGHT * size) / m_unitLength;
    const float distance = m_attr.gradDistAxis * m_unitLength;
    const PiText text = makeAxisText(m_attr.gradFontName, size, m_attr.gradPath);
    auto* group = new SoGroup;
    for (size_t i = 0; i < texts.size() && i < m_mainGradCoords.size(); ++i) {
        group->addChild(text.build(texts[i], SbVec3f(m_mainGradCoords[i], side * distance, 0)));
        const SbBox2f box = text.getBox(texts[i]);
        if (!box.isEmpty())
            m_gradFarEdge =
                std::max(m_gradFarEdge, distance + (side > 0 ? box.getMax()[1] : -box.getMin()[1]));
    }
    setAnyPart("mainGradText", group);
}

void PoAxis::buildTitle(float start, float end) {
    const float coordinate = m_attr.titlePosition == TITLE_MIDDLE ? 0.5f * (start + end) : end;
    buildTitleP(coordinate);
}

void PoAxis::buildTitleP(float coordinate) {
    if (!isOn(m_attr.titleVisibility) || m_attr.titleString.getLength() == 0)
        return;
    if (!(m_attr.titleFontSize > 0.0f))
        m_attr.titleFontSize = s_titleFontSize;
    const float size = m_attr.titleFontSize * m_unitLength;
    if (m_attr.titleDistAxis == 0.0f)
        m_attr.titleDistAxis = (m_gradFarEdge + PiText::CAP_HEIGHT * size) / m_unitLength;
    const float side = getGradSide();
    const PiText text = makeAxisText(m_attr.titleFontName, size, m_attr.titlePath);
    auto* group = new SoGroup;
    group->addChild(text.build(m_attr.titleString,
                               SbVec3f(coordinate, side * m_attr.titleDistAxis * m_unitLength, 0)));
    setAnyPart("title", group);
}

void PoAxis::buildMultFactorAtExtr(SoGroup* group, float extremity, float outward, int tenPower,
                                   float distance) {
    const float size = m_attr.gradFontSize * m_unitLength;
    if (!(size > 0.0f))
        return;
    PiText text = makeAxisText(m_attr.gradFontName, size, m_attr.gradPath);
    const float side = getGradSide();
    text.setSide(outward > 0 ? PiText::SIDE_RIGHT : PiText::SIDE_LEFT,
                 side > 0 ? PiText::SIDE_ABOVE : PiText::SIDE_BELOW);
    const SbVec3f anchor(extremity + outward * 0.5f * size, side * distance, 0.0f);
    SbString exponent;
    exponent.sprintf("%d", tenPower);
    group->addChild(text.buildWithExponent("x10", exponent, anchor));
}
