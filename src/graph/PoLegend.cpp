#include <Quillon/graph/PoLegend.h>

#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoLegend, PoPlotwright)

namespace {
// Share of the inner rectangle, across its side, that an automatic title
// may take.
const float s_titleShare = 0.15f;
// Gap between the title and the entries, in title sizes.
const float s_titleGap = 0.5f;
// Share of the smaller side given to each margin when one is negative.
const float s_fallbackMargin = 0.05f;

PiText::Side toSide(PoLegend::Position position) {
    switch (position) {
    case PoLegend::POS_TOP:
        return PiText::SIDE_ABOVE;
    case PoLegend::POS_RIGHT:
        return PiText::SIDE_RIGHT;
    case PoLegend::POS_LEFT:
        return PiText::SIDE_LEFT;
    default:
        return PiText::SIDE_BELOW;
    }
}

void addCorners(const SbVec2f& min, const SbVec2f& max, std::vector<SbVec3f>& points) {
    points.emplace_back(min[0], min[1], 0.0f);
    points.emplace_back(max[0], min[1], 0.0f);
    points.emplace_back(max[0], max[1], 0.0f);
    points.emplace_back(min[0], max[1], 0.0f);
}

// Line strips of the given vertex counts through the points.
SoGroup* lineStrips(const std::vector<SbVec3f>& points, const std::vector<int32_t>& counts) {
    auto* group = new SoGroup;
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    group->addChild(coordinates);
    auto* lines = new SoLineSet;
    lines->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
    group->addChild(lines);
    return group;
}

// Faces of four corners each.
SoGroup* quads(const std::vector<SbVec3f>& corners) {
    auto* group = new SoGroup;
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(corners.size()), corners.data());
    group->addChild(coordinates);
    auto* faces = new SoFaceSet;
    std::vector<int32_t> counts(corners.size() / 4, 4);
    faces->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
    group->addChild(faces);
    return group;
}

// Pushes faces behind what else lies in their plane; more units push
// further.
SoPolygonOffset* behind(float units) {
    auto* offset = new SoPolygonOffset;
    offset->units = units;
    return offset;
}
} // namespace

PoLegend::PoLegend() {
    SO_KIT_CONSTRUCTOR(PoLegend);
    PO_KIT_ADD_PART_WITH_APPEARANCE(background, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(backgroundBorder, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(box, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(boxBorder, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(title, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(valueText, SoGroup, alternateRep);

    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(IncrementType, VERTICAL_INCREMENT);
    SO_KIT_DEFINE_ENUM_VALUE(IncrementType, HORIZONTAL_INCREMENT);

    SO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_OFF));
    SO_KIT_ADD_FIELD(titlePosition, (POS_BOTTOM));
    SO_KIT_ADD_FIELD(titlePath, (PATH_RIGHT));
    SO_KIT_ADD_FIELD(titleFontSize, (0.0f));
    SO_KIT_ADD_FIELD(titleFontName, (""));
    SO_KIT_ADD_FIELD(titleString, (""));
    SO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(valuePosition, (POS_RIGHT));
    SO_KIT_ADD_FIELD(valueFontName, (""));
    SO_KIT_ADD_FIELD(valueAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(valueAddString, (""));
    SO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
    SO_KIT_ADD_FIELD(marginLeft, (0.05f));
    SO_KIT_ADD_FIELD(marginRight, (0.05f));
    SO_KIT_ADD_FIELD(marginBottom, (0.05f));
    SO_KIT_ADD_FIELD(marginTop, (0.05f));
    SO_KIT_ADD_FIELD(incrementType, (VERTICAL_INCREMENT));
    SO_KIT_ADD_FIELD(numColumns, (1));
    SO_KIT_ADD_FIELD(boxRatio, (1.0f));

    SO_KIT_SET_SF_ENUM_TYPE(titleVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(titlePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(titlePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(valueVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(valuePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(marginType, MarginType);
    SO_KIT_SET_SF_ENUM_TYPE(incrementType, IncrementType);
    SO_KIT_INIT_INSTANCE();

    watchFields({&titleVisibility, &titlePosition, &titlePath, &titleFontSize, &titleFontName,
                 &titleString, &valueVisibility, &valuePosition, &valueFontName,
                 &valueAddStringVisibility, &valueAddString, &marginType, &marginLeft, &marginRight,
                 &marginBottom, &marginTop, &incrementType, &numColumns, &boxRatio});
    set("backgroundApp.material", "diffuseColor 0 0 0");
    setLightModel(SoLightModel::BASE_COLOR);
    addGeneratedParts({"background", "backgroundBorder", "box", "boxBorder", "title", "valueText"});
    setDefaultAttr();
}

PoLegend::~PoLegend() = default;

void PoLegend::addGeneratedParts(std::initializer_list<const char*> parts) {
    m_generatedParts.insert(m_generatedParts.end(), parts.begin(), parts.end());
}

void PoLegend::clearLegendParts(void) {
    for (const char* part : m_generatedParts)
        setAnyPart(part, nullptr);
    m_titleSize = 0.0f;
}

void PoLegend::setDefaultOnNonWritingFields(void) {
    PoPlotwright::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : m_generatedParts) {
        markPartDefault(part);
        markPartDefault((SbString(part) + "Sep").getString());
    }
}

void PoLegend::setDefaultAttr(void) {
    LegendAttr& a = m_attr;
    a.titleVisibility = checkedEnum(titleVisibility, 2, VISIBILITY_OFF);
    a.titlePosition = checkedEnum(titlePosition, 4, POS_BOTTOM);
    a.titlePath = checkedEnum(titlePath, 4, PATH_RIGHT);
    a.valueVisibility = checkedEnum(valueVisibility, 2, VISIBILITY_ON);
    a.valuePosition = checkedEnum(valuePosition, 4, POS_RIGHT);
    a.marginType = checkedEnum(marginType, 2, REL_MARGIN);
    a.incrementType = checkedEnum(incrementType, 2, VERTICAL_INCREMENT);
    a.numColumns = std::max<int>(numColumns.getValue(), 1);
    const float ratio = boxRatio.getValue();
    a.boxRatio = ratio > 0.0f && std::isfinite(ratio) ? ratio : 1.0f;
    a.deltaX = getDomain()->getDeltaX();
    a.titleFontName = titleFontName.getValue();
    a.valueFontName = valueFontName.getValue();
}

bool PoLegend::drawFrame(const SbVec2f& corner1, const SbVec2f& corner2, Rect& room) {
    clearLegendParts();
    setDefaultAttr();
    Rect rect;
    if (!getLegendRect(corner1, corner2, rect))
        return false;
    const int along = m_attr.incrementType == VERTICAL_INCREMENT ? 1 : 0;
    setRevertOrder(corner1[along], corner2[along]);
    room = computeTitleSizeA(computeMarginA(rect));
    drawBackgroundA(rect);
    drawTitleA();
    return true;
}

bool PoLegend::getLegendRect(const SbVec2f& corner1, const SbVec2f& corner2, Rect& rect) const {
    const float values[] = {corner1[0], corner1[1], corner2[0], corner2[1]};
    const SbString method = SbString(getTypeId().getName().getString()) + "::rebuild";
    for (float value : values) {
        if (!std::isfinite(value)) {
            PoDebugError::post(method.getString(),
                               "the corners must be numbers; the legend is not drawn");
            return false;
        }
    }
    rect.origin.setValue(std::min(corner1[0], corner2[0]), std::min(corner1[1], corner2[1]));
    rect.width = std::fabs(corner2[0] - corner1[0]);
    rect.height = std::fabs(corner2[1] - corner1[1]);
    if (rect.width == 0.0f || rect.height == 0.0f) {
        PoDebugError::post(method.getString(),
                           "the legend from (%g, %g) to (%g, %g) has no area; it is not drawn",
                           corner1[0], corner1[1], corner2[0], corner2[1]);
        return false;
    }
    return true;
}

PoLegend::Rect PoLegend::computeMarginA(const Rect& rect) const {
    float left = marginLeft.getValue(), right = marginRight.getValue();
    float bottom = marginBottom.getValue(), top = marginTop.getValue();
    if (!(left >= 0.0f && right >= 0.0f && bottom >= 0.0f && top >= 0.0f)) {
        left = right = bottom = top = s_fallbackMargin * std::min(rect.width, rect.height);
    } else if (m_attr.marginType == REL_MARGIN) {
        const bool keepX = left + right < 1.0f, keepY = bottom + top < 1.0f;
        left = keepX ? rect.width * left : 0.0f;
        right = keepX ? rect.width * right : 0.0f;
        bottom = keepY ? rect.height * bottom : 0.0f;
        top = keepY ? rect.height * top : 0.0f;
    } else {
        if (!(rect.width > left + right))
            left = right = 0.0f;
        if (!(rect.height > bottom + top))
            bottom = top = 0.0f;
    }
    Rect inner;
    inner.origin = rect.origin + SbVec2f(left, bottom);
    inner.width = rect.width - left - right;
    inner.height = rect.height - bottom - top;
    return inner;
}

// What the title covers at size 1, along x and y.
SbVec2f PoLegend::titleExtent(const PiText& text) const {
    const SbBox2f box = text.getBox(titleString.getValue());
    if (box.isEmpty())
        return SbVec2f(0.0f, 0.0f);
    return box.getMax() - box.getMin();
}

PoLegend::Rect PoLegend::computeTitleSizeA(const Rect& inner) {
    m_titleSize = 0.0f;
    if (m_attr.titleVisibility != VISIBILITY_ON || titleString.getValue().getLength() == 0)
        return inner;
    PiText text;
    setUpText(text, m_attr.titleFontName, 1.0f);
    text.setPath(static_cast<PiText::Path>(m_attr.titlePath));
    const SbVec2f extent = titleExtent(text);
    if (!(extent[0] > 0.0f && extent[1] > 0.0f))
        return inner;
    // The title runs along x at the top or bottom, along y at the sides.
    const bool horizontalBand =
        m_attr.titlePosition == POS_TOP || m_attr.titlePosition == POS_BOTTOM;
    const float along = horizontalBand ? extent[0] : extent[1];
    const float across = horizontalBand ? extent[1] : extent[0];
    const float roomAlong = horizontalBand ? inner.width : inner.height;
    const float roomAcross = horizontalBand ? inner.height : inner.width;
    const float fixedSize = titleFontSize.getValue() * m_attr.deltaX;
    m_titleSize = fixedSize > 0.0f && std::isfinite(fixedSize)
                      ? fixedSize
                      : std::min(roomAlong / along, s_titleShare * roomAcross / across);
    const float band = across * m_titleSize;
    const float taken = std::min(band + s_titleGap * m_titleSize, roomAcross);
    Rect rest = inner;
    const SbVec2f middle = inner.middle();
    switch (m_attr.titlePosition) {
    case POS_TOP:
        m_titleAnchor.setValue(middle[0], inner.origin[1] + inner.height - 0.5f * band);
        rest.height -= taken;
        break;
    case POS_BOTTOM:
        m_titleAnchor.setValue(middle[0], inner.origin[1] + 0.5f * band);
        rest.origin[1] += taken;
        rest.height -= taken;
        break;
    case POS_RIGHT:
        m_titleAnchor.setValue(inner.origin[0] + inner.width - 0.5f * band, middle[1]);
        rest.width -= taken;
        break;
    default:
        m_titleAnchor.setValue(inner.origin[0] + 0.5f * band, middle[1]);
        rest.origin[0] += taken;
        rest.width -= taken;
        break;
    }
    return rest;
}

void PoLegend::drawTitleA(void) {
    if (!(m_titleSize > 0.0f))
        return;
    PiText text;
    setUpText(text, m_attr.titleFontName, m_titleSize);
    text.setPath(static_cast<PiText::Path>(m_attr.titlePath));
    auto* group = new SoGroup;
    group->addChild(text.buildCentered(titleString.getValue(),
                                       SbVec3f(m_titleAnchor[0], m_titleAnchor[1], 0.0f)));
    setAnyPart("title", group);
}

void PoLegend::drawBackgroundA(const Rect& rect) {
    const SbVec2f max = rect.origin + SbVec2f(rect.width, rect.height);
    std::vector<SbVec3f> corners;
    addCorners(rect.origin, max, corners);
    auto* face = new SoGroup;
    face->addChild(behind(2.0f));
    face->addChild(quads(corners));
    setAnyPart("background", face);
    corners.push_back(corners.front());
    setAnyPart("backgroundBorder", lineStrips(corners, {5}));
}

void PoLegend::drawBoxesLegendBoxesA(const std::vector<LegendBox>& boxes,
                                     const std::vector<SbVec3f>& segments) {
    std::vector<SbVec3f> colored, plain, outlines(segments);
    std::vector<SbColor> colors;
    std::vector<int32_t> outlineCounts(segments.size() / 2, 2);
    for (const LegendBox& box : boxes) {
        if (box.filled && box.colored) {
            addCorners(box.min, box.max, colored);
            // Corners counterclockwise from the lower left.
            const SbColor& low = box.low;
            const SbColor& high = box.high;
            if (box.alongY)
                colors.insert(colors.end(), {low, low, high, high});
            else
                colors.insert(colors.end(), {low, high, high, low});
        } else if (box.filled) {
            addCorners(box.min, box.max, plain);
        }
        if (box.outlined) {
            const size_t first = outlines.size();
            addCorners(box.min, box.max, outlines);
            outlines.push_back(outlines[first]);
            outlineCounts.push_back(5);
        }
    }
    if (!colored.empty() || !plain.empty()) {
        auto* group = new SoGroup;
        group->addChild(behind(1.0f));
        if (!plain.empty())
            group->addChild(quads(plain));
        if (!colored.empty()) {
            auto* material = new SoMaterial;
            material->diffuseColor.setValues(0, static_cast<int>(colors.size()), colors.data());
            group->addChild(material);
            auto* binding = new SoMaterialBinding;
            binding->value = SoMaterialBinding::PER_VERTEX;
            group->addChild(binding);
            group->addChild(quads(colored));
        }
        setAnyPart("box", group);
    }
    if (!outlines.empty())
        setAnyPart("boxBorder", lineStrips(outlines, outlineCounts));
}

SbString PoLegend::makeValueString(const SbString& text) const {
    if (!valueAddStringVisibility.getValue())
        return text;
    return text + valueAddString.getValue();
}

PiText PoLegend::makeValueText(float size) {
    PiText text;
    setUpText(text, m_attr.valueFontName, size);
    return text;
}

SoGroup* PoLegend::drawValuesLegendBoxesA(const std::vector<LegendText>& texts, float size) {
    if (texts.empty() || !(size > 0.0f))
        return nullptr;
    PiText text = makeValueText(size);
    auto* group = new SoGroup;
    for (const LegendText& each : texts) {
        text.setSide(toSide(each.side));
        group->addChild(text.build(each.text, SbVec3f(each.anchor[0], each.anchor[1], 0.0f)));
    }
    setAnyPart("valueText", group);
    return group;
}
