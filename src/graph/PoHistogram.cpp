#include <Quillon/graph/PoHistogram.h>

#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoHistogram, PoPlotwright)

namespace {
// Relative default font size.
const float s_fontSize = 0.04f;
// Share of its room across the bars that a text may fill.
const float s_textRoom = 0.9f;
// Distance of a text from the side of its bar, in font sizes.
const float s_textGap = 0.25f;
// Depth of the bars in VRML2 mode, in bar widths.
const float s_vrml2Depth = 0.01f;

const char* const s_contentParts[] = {"transform", "bar",          "valueText",  "nameText",
                                      "barSep",    "valueTextSep", "nameTextSep"};
} // namespace

PoHistogram::PoHistogram() {
    SO_KIT_CONSTRUCTOR(PoHistogram);

    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, "", TRUE);
    PO_KIT_ADD_PART_WITH_APPEARANCE(bar, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(valueText, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(nameText, SoGroup, alternateRep);

    SO_KIT_DEFINE_ENUM_VALUE(Type, X);
    SO_KIT_DEFINE_ENUM_VALUE(Type, Y);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_CENTER);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, REL_SPACE);
    SO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, FIXED_SPACE);
    SO_KIT_DEFINE_ENUM_VALUE(Coloring, COLOR_LIST);
    SO_KIT_DEFINE_ENUM_VALUE(Coloring, DATA_MAPPING);

    SO_KIT_ADD_FIELD(start, (0.0f, 0.0f));
    SO_KIT_ADD_FIELD(end, (1.0f));
    SO_KIT_ADD_FIELD(type, (X));
    SO_KIT_ADD_FIELD(color, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(coloring, (COLOR_LIST));
    SO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(valuePosition, (POS_DEPEND));
    SO_KIT_ADD_FIELD(valuePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(valueFontSize, (0.0f));
    SO_KIT_ADD_FIELD(valueFontName, (""));
    SO_KIT_ADD_FIELD(valueAddStringVisibility, (VISIBILITY_OFF));
    SO_KIT_ADD_FIELD(valueAddString, (""));
    SO_KIT_ADD_FIELD(nameVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(namePosition, (POS_DEPEND));
    SO_KIT_ADD_FIELD(namePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(nameFontSize, (0.0f));
    SO_KIT_ADD_FIELD(nameFontName, (""));
    SO_KIT_ADD_FIELD(barSpaceType, (REL_SPACE));
    SO_KIT_ADD_FIELD(barSpaceValue, (0.25f));

    SO_KIT_SET_SF_ENUM_TYPE(type, Type);
    SO_KIT_SET_SF_ENUM_TYPE(coloring, Coloring);
    SO_KIT_SET_SF_ENUM_TYPE(valueVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(valuePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(valuePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(valueAddStringVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(nameVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(namePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(namePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(barSpaceType, BarSpaceType);

    SO_KIT_INIT_INSTANCE();

    watchFields({&start, &end, &type, &color, &coloring, &valueVisibility, &valuePosition,
                 &valuePath, &valueFontSize, &valueFontName, &valueAddStringVisibility,
                 &valueAddString, &nameVisibility, &namePosition, &namePath, &nameFontSize,
                 &nameFontName, &barSpaceType, &barSpaceValue});
    setLightModel(SoLightModel::BASE_COLOR);
}

PoHistogram::~PoHistogram() {
    changeConnection(m_mapping, nullptr);
    changeConnection(m_format, nullptr);
}

void PoHistogram::setDataMapping(PbDataMapping* mapping) {
    connectObject(m_mapping, mapping);
}

void PoHistogram::setFormat(PbNumericDisplayFormat* format) {
    connectObject(m_format, format);
}

void PoHistogram::basicObjectChange(PbBase* object) {
    if (!manageConnectedObject(object, m_mapping) && !manageConnectedObject(object, m_format))
        PoPlotwright::basicObjectChange(object);
}

void PoHistogram::setDefaultOnNonWritingFields(void) {
    PoPlotwright::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : s_contentParts)
        markPartDefault(part);
}

void PoHistogram::clearParts(void) {
    for (const char* part : {"transform", "bar", "valueText", "nameText"})
        setAnyPart(part, nullptr);
}

// ---------------------------------------------------------------- row

void PoHistogram::setDefaultAttr(void) {
    m_type = checkedEnum(type, 2, X);
    auto path = [](const SoSFEnum& field) {
        const int value = checkedEnum(field, 5, PATH_DEPEND);
        return value == PATH_DEPEND ? PATH_RIGHT : value;
    };
    m_valuePath = path(valuePath);
    m_namePath = path(namePath);
}

float PoHistogram::getBaseLine(void) const {
    return start.getValue()[m_type == X ? 1 : 0];
}

SbString PoHistogram::rebuildMethod(void) const {
    return SbString(getTypeId().getName().getString()) + "::rebuild";
}

bool PoHistogram::checkValue(float value, int index) const {
    if (std::isfinite(value))
        return true;
    PoDebugError::postWarning(rebuildMethod().getString(),
                              "value %d is not a number; its bar is left out", index);
    return false;
}

bool PoHistogram::computeRow(int numCells, Row& row) {
    const SbVec2f& origin = start.getValue();
    const float rowStart = origin[m_type == X ? 0 : 1];
    const float length = end.getValue() - rowStart;
    const SbString method = rebuildMethod();
    if (!std::isfinite(origin[0]) || !std::isfinite(origin[1]) || !std::isfinite(length)) {
        PoDebugError::post(method.getString(),
                           "start and end must be numbers; the histogram is not drawn");
        return false;
    }
    if (length == 0.0f) {
        PoDebugError::postWarning(method.getString(),
                                  "the row starts and ends at %g; the histogram is not drawn",
                                  rowStart);
        return false;
    }
    if (numCells <= 0)
        return false;
    float space = barSpaceValue.getValue();
    if (!std::isfinite(space)) {
        PoDebugError::postWarning(method.getString(),
                                  "barSpaceValue is not a number; the bars fill their cells");
        space = 0.0f;
    }
    const float cell = std::fabs(length) / static_cast<float>(numCells);
    float width;
    if (checkedEnum(barSpaceType, 2, REL_SPACE) == REL_SPACE)
        width = cell * (1.0f - space);
    else
        width = space > 0.0f ? cell - space : cell;
    const float direction = length > 0.0f ? 1.0f : -1.0f;
    row.firstCenter = rowStart + direction * 0.5f * cell;
    row.pitch = direction * cell;
    row.barWidth = std::min(std::max(width, 0.0f), cell);
    m_barWidth = row.barWidth;
    return true;
}

PoHistogram::Bar PoHistogram::Row::makeBar(int cell, float offset, float width, float valueFrom,
                                           float valueTo) const {
    const float direction = pitch > 0.0f ? 1.0f : -1.0f;
    const float from =
        firstCenter + pitch * static_cast<float>(cell) + direction * (offset - 0.5f * barWidth);
    return Bar{from, from + direction * width, valueFrom, valueTo, width, valueTo, cell, valueTo,
               false};
}

// ------------------------------------------------------------ drawing

// The drawing is the data's frame moved to the base line and scaled along
// y by the domain's extents, so that the domain transform makes it
// isotropic again and texts keep their proportions.
SbMatrix PoHistogram::drawingTransform(void) const {
    SbMatrix scale, move;
    scale.setScale(SbVec3f(1.0f, 1.0f / m_yScale, 1.0f));
    move.setTranslate(SbVec3f(0.0f, start.getValue()[1], 0.0f));
    scale.multRight(move);
    return scale;
}

SbBox2f PoHistogram::toDrawing(const Bar& bar) const {
    const float y0 = start.getValue()[1];
    SbBox2f box;
    if (m_type == X) {
        box.extendBy(SbVec2f(bar.rowFrom, (bar.valueFrom - y0) * m_yScale));
        box.extendBy(SbVec2f(bar.rowTo, (bar.valueTo - y0) * m_yScale));
    } else {
        box.extendBy(SbVec2f(bar.valueFrom, (bar.rowFrom - y0) * m_yScale));
        box.extendBy(SbVec2f(bar.valueTo, (bar.rowTo - y0) * m_yScale));
    }
    return box;
}

void PoHistogram::buildBars(const std::vector<Bar>& bars, const std::vector<Name>& names) {
    const PbDomain* domain = getDomain();
    m_yScale = domain->getDeltaX() / domain->getDeltaY();
    auto* transformNode = new SoMatrixTransform;
    transformNode->matrix = drawingTransform();
    setAnyPart("transform", transformNode);

    std::vector<Bar> shown(bars);
    SoMaterial* material = colorBars(shown);
    if (!shown.empty()) {
        const float z = isVRML2Mode() ? -s_vrml2Depth * m_barWidth : 0.0f;
        auto* coordinates = new SoCoordinate3;
        auto* faces = new SoFaceSet;
        for (int i = 0; i < static_cast<int>(shown.size()); ++i) {
            const SbBox2f box = toDrawing(shown[i]);
            const SbVec2f& low = box.getMin();
            const SbVec2f& high = box.getMax();
            const SbVec3f corners[] = {SbVec3f(low[0], low[1], z), SbVec3f(high[0], low[1], z),
                                       SbVec3f(high[0], high[1], z), SbVec3f(low[0], high[1], z)};
            coordinates->point.setValues(4 * i, 4, corners);
            faces->numVertices.set1Value(i, 4);
        }
        auto* binding = new SoMaterialBinding;
        binding->value = SoMaterialBinding::PER_FACE;
        auto* group = new SoGroup;
        group->addChild(material);
        group->addChild(binding);
        group->addChild(coordinates);
        group->addChild(faces);
        setAnyPart("bar", group);
    } else {
        material->ref();
        material->unref();
    }
    if (checkedEnum(valueVisibility, 2, VISIBILITY_ON) == VISIBILITY_ON)
        buildValueTexts(shown);
    if (checkedEnum(nameVisibility, 2, VISIBILITY_ON) == VISIBILITY_ON)
        buildNameTexts(names);
}

SoMaterial* PoHistogram::colorBars(std::vector<Bar>& bars) {
    auto* material = new SoMaterial;
    const PbDataMapping* mapping = nullptr;
    if (checkedEnum(coloring, 2, COLOR_LIST) == DATA_MAPPING) {
        mapping = m_mapping ? m_mapping : readElement<PoDataMappingElement>();
        if (!mapping)
            PoDebugError::postWarning(rebuildMethod().getString(),
                                      "no data mapping to colour the bars; the colour list is "
                                      "used");
    }
    std::vector<SbColor> colors;
    std::vector<float> transparencies;
    std::vector<Bar> kept;
    const int numColors = color.getNum();
    for (const Bar& bar : bars) {
        SbColor c(0.0f, 0.0f, 0.0f);
        float transparency = 0.0f;
        if (mapping) {
            if (!mapping->getRGBColor(bar.colorValue, c, transparency))
                continue;
            if (!mapping->isTransparencyEnabled())
                transparency = 0.0f;
        } else if (numColors > 0) {
            c = color[bar.colorIndex % numColors];
        }
        colors.push_back(c);
        transparencies.push_back(transparency);
        kept.push_back(bar);
    }
    bars.swap(kept);
    material->diffuseColor.setValues(0, static_cast<int>(colors.size()), colors.data());
    if (std::any_of(transparencies.begin(), transparencies.end(), [](float t) { return t > 0; }))
        material->transparency.setValues(0, static_cast<int>(transparencies.size()),
                                         transparencies.data());
    return material;
}

// ------------------------------------------------------------- texts

int PoHistogram::resolvePosition(int position, const Bar& bar, bool isName) const {
    if (position != POS_DEPEND)
        return position;
    if (bar.stacked && !isName)
        return POS_CENTER;
    // Values stand beyond the end of their bars, names beyond the base.
    const bool rises = (bar.valueTo >= bar.valueFrom) != isName;
    if (m_type == X)
        return rises ? POS_TOP_OUT : POS_BOTTOM_OUT;
    return rises ? POS_RIGHT_OUT : POS_LEFT_OUT;
}

SbVec3f PoHistogram::computeTextPos(const SbBox2f& rect, int position, float gap) const {
    const SbVec2f center = rect.getCenter();
    const float cx = center[0], cy = center[1];
    const SbVec2f& low = rect.getMin();
    const SbVec2f& high = rect.getMax();
    switch (position) {
    case POS_TOP_OUT:
        return SbVec3f(cx, high[1] + gap, 0.0f);
    case POS_TOP_IN:
        return SbVec3f(cx, high[1] - gap, 0.0f);
    case POS_BOTTOM_OUT:
        return SbVec3f(cx, low[1] - gap, 0.0f);
    case POS_BOTTOM_IN:
        return SbVec3f(cx, low[1] + gap, 0.0f);
    case POS_RIGHT_OUT:
        return SbVec3f(high[0] + gap, cy, 0.0f);
    case POS_RIGHT_IN:
        return SbVec3f(high[0] - gap, cy, 0.0f);
    case POS_LEFT_OUT:
        return SbVec3f(low[0] - gap, cy, 0.0f);
    case POS_LEFT_IN:
        return SbVec3f(low[0] + gap, cy, 0.0f);
    default:
        return SbVec3f(cx, cy, 0.0f);
    }
}

void PoHistogram::computeTextAlignPath(PiText& text, int position, int path) {
    static const PiText::Side sides[] = {
        PiText::SIDE_ABOVE, PiText::SIDE_BELOW, PiText::SIDE_BELOW,
        PiText::SIDE_ABOVE, PiText::SIDE_RIGHT, PiText::SIDE_LEFT,
        PiText::SIDE_LEFT,  PiText::SIDE_RIGHT, PiText::SIDE_CENTER};
    text.setPath(static_cast<PiText::Path>(path));
    text.setSide(sides[position]);
}

void PoHistogram::buildValueTexts(const std::vector<Bar>& bars) {
    std::vector<float> values;
    for (const Bar& bar : bars)
        values.push_back(bar.shownValue);
    const PbNumericDisplayFormat* format =
        m_format ? m_format : readElement<PoNumericDisplayFormatElement>();
    // The step between values is rounded, so that it asks for no more
    // decimals than the values show.
    m_numericFormat.setFormat(format, static_cast<int>(values.size()), values.data(), 1);
    const bool addString =
        checkedEnum(valueAddStringVisibility, 2, VISIBILITY_OFF) == VISIBILITY_ON;
    std::vector<SbString> texts;
    for (float value : values) {
        // The text is put together in Latin-1, as the added string is.
        SbString text = valueString(m_numericFormat, value);
        if (addString)
            text += PiText::toLatin1(valueAddString.getValue());
        texts.push_back(PiText::fromLatin1(text.getString()));
    }
    buildTexts("valueText", valueFontName.getValue(), valueFontSize,
               checkedEnum(valuePosition, 10, POS_DEPEND), m_valuePath, bars, texts, false);
}

void PoHistogram::buildNameTexts(const std::vector<Name>& names) {
    std::vector<Bar> extents;
    std::vector<SbString> texts;
    for (const Name& name : names) {
        if (name.text.getLength() == 0)
            continue;
        extents.push_back(name.extent);
        texts.push_back(name.text);
    }
    buildTexts("nameText", nameFontName.getValue(), nameFontSize,
               checkedEnum(namePosition, 10, POS_DEPEND), m_namePath, extents, texts, true);
}

// The size asked for, or the default made small enough for every text to
// fit in its room across the bars; the text is set up at size 1.
float PoHistogram::fitFontSize(const SoSFFloat& field, const PiText& text,
                               const std::vector<SbString>& texts,
                               const std::vector<float>& rooms) const {
    const float unit = getDomain()->getDeltaX();
    const float asked = relativeSize(field);
    if (asked > 0.0f)
        return asked * unit;
    float size = s_fontSize * unit;
    const int across = m_type == X ? 0 : 1;
    for (size_t i = 0; i < texts.size(); ++i) {
        const SbBox2f box = text.getBox(texts[i]);
        if (box.isEmpty())
            continue;
        const float extent = box.getMax()[across] - box.getMin()[across];
        if (extent > 0.0f)
            size = std::min(size, s_textRoom * rooms[i] / extent);
    }
    return size;
}

void PoHistogram::buildTexts(const char* part, const SbString& fontName, const SoSFFloat& fontSize,
                             int position, int path, const std::vector<Bar>& rects,
                             const std::vector<SbString>& texts, bool isName) {
    if (texts.empty())
        return;
    PiText text;
    setUpText(text, fontName, 1.0f);
    text.setPath(static_cast<PiText::Path>(path));
    std::vector<float> rooms;
    for (const Bar& rect : rects)
        rooms.push_back(std::fabs(rect.room) * (m_type == X ? 1.0f : m_yScale));
    const float size = fitFontSize(fontSize, text, texts, rooms);
    if (!(size > 0.0f) || !std::isfinite(size))
        return;
    text.setFontSize(size);
    auto* group = new SoGroup;
    for (size_t i = 0; i < texts.size(); ++i) {
        const int resolved = resolvePosition(position, rects[i], isName);
        computeTextAlignPath(text, resolved, path);
        const SbVec3f anchor = computeTextPos(toDrawing(rects[i]), resolved, s_textGap * size);
        group->addChild(text.build(texts[i], anchor));
    }
    setAnyPart(part, group);
}
