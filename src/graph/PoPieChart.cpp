#include <Quillon/graph/PoPieChart.h>

#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "graph/PiPieLayout.h"
#include "graph/PiText.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoPieChart, PoPlotwright)

namespace {
const float s_defaultAngleStep = 0.034906585f;
// A circle is cut into at most this many steps.
const float s_maxStepsPerCircle = 10000.0f;
// Default sizes, in radii.
const float s_fontSize = 0.1f;
const float s_intDistance = 0.6f;
const float s_extDistance1 = 0.1f;
const float s_extDistance2 = 0.15f;
const float s_extDistance3 = 0.04f;
const float s_arrowHeight = 0.06f;
const float s_arrowWidth = 0.04f;
// Within an annotation: the space between lines and around them, in font
// sizes.
const float s_lineGap = 0.3f;
const float s_boxMargin = 0.3f;
// Between neighbouring boxes, in font sizes.
const float s_boxGap = 0.3f;

const char* const s_triples[] = {
    "slice",         "sliceBorder",     "extAnnotBox",    "extAnnotBoxBorder", "extAnnotText",
    "extAnnotValue", "extAnnotPercent", "arrow",          "intAnnotBox",       "intAnnotBoxBorder",
    "intAnnotText",  "intAnnotValue",   "intAnnotPercent"};

SbVec2f direction(float angle) {
    return SbVec2f(std::cos(angle), std::sin(angle));
}

SbVec3f at(const SbVec2f& point, float z) {
    return SbVec3f(point[0], point[1], z);
}

// A shape of its own: the points, then the shape that draws them.
SoSeparator* shape(const std::vector<SbVec3f>& points, SoNode* drawing) {
    auto* holder = new SoSeparator;
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    holder->addChild(coordinates);
    holder->addChild(drawing);
    return holder;
}

SoNode* faceOf(int numVertices) {
    auto* face = new SoFaceSet;
    face->numVertices.setValue(numVertices);
    return face;
}

SoNode* lineOf(int numVertices) {
    auto* line = new SoLineSet;
    line->numVertices.setValue(numVertices);
    return line;
}

PiText::HorizontalJustification justificationOf(int alignment, float centerOnReading) {
    switch (alignment) {
    case PoPieChart::LEFT_ALIGN:
        return PiText::JUSTIFY_LEFT;
    case PoPieChart::RIGHT_ALIGN:
        return PiText::JUSTIFY_RIGHT;
    case PoPieChart::INWARDS_ALIGN:
        return centerOnReading < 0.0f ? PiText::JUSTIFY_LEFT : PiText::JUSTIFY_RIGHT;
    case PoPieChart::OUTWARDS_ALIGN:
        return centerOnReading < 0.0f ? PiText::JUSTIFY_RIGHT : PiText::JUSTIFY_LEFT;
    default:
        return PiText::JUSTIFY_CENTER;
    }
}
} // namespace

// The lines of an annotation, one under the other, and the box around them.
struct PoPieChart::Block {
    struct Line {
        PiText text;
        SbString string;
        const char* part;
        // Below the top of the lines.
        float top;
    };
    std::vector<Line> lines;
    SbVec2f size;
    float margin = 0.0f;
};

// An annotation with its place, for the slice shown at index; inward is
// the point that INWARDS_ALIGN turns the lines toward.
struct PoPieChart::Placed {
    int index;
    Block block;
    PiPieLayout::Placement placement;
    SbVec2f inward;
};

PoPieChart::PoPieChart() {
    SO_KIT_CONSTRUCTOR(PoPieChart);

    PO_KIT_ADD_PART_WITH_APPEARANCE(slice, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(sliceBorder, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(extAnnotBox, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(extAnnotBoxBorder, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(extAnnotText, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(extAnnotValue, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(extAnnotPercent, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(arrow, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(intAnnotBox, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(intAnnotBoxBorder, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(intAnnotText, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(intAnnotValue, SoAnnotation, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(intAnnotPercent, SoAnnotation, alternateRep);

    SO_KIT_DEFINE_ENUM_VALUE(IntAnnotPosition, RADIAL_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(IntAnnotPosition, HOR_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, RADIAL_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, HOR_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, HOR_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, VERT_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(ExtAnnotPosition, SQUARE_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(Alignment, LEFT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(Alignment, CENTER_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(Alignment, RIGHT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(Alignment, INWARDS_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(Alignment, OUTWARDS_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(PercentStatus, ABSOLUTE);
    SO_KIT_DEFINE_ENUM_VALUE(PercentStatus, PERCENTAGE);

    SO_KIT_ADD_FIELD(radius, (1.0f));
    SO_KIT_ADD_FIELD(sliceText, (""));
    SO_KIT_ADD_FIELD(sliceValue, (0.0f));
    SO_KIT_ADD_FIELD(sliceColor, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(intAnnotPosition, (HOR_INT_POS));
    SO_KIT_ADD_FIELD(intAnnotAlignment, (CENTER_ALIGN));
    SO_KIT_ADD_FIELD(intAnnotTextVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotValueVisibility, (TRUE));
    SO_KIT_ADD_FIELD(intAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotTextFontSize, (0.0f));
    SO_KIT_ADD_FIELD(intAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotValueFontSize, (0.0f));
    SO_KIT_ADD_FIELD(intAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotPercentFontSize, (0.0f));
    SO_KIT_ADD_FIELD(intAnnotAddString, (""));
    SO_KIT_ADD_FIELD(intAnnotDistance, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotPosition, (HOR_EXT_POS));
    SO_KIT_ADD_FIELD(extAnnotAlignment, (INWARDS_ALIGN));
    SO_KIT_ADD_FIELD(extAnnotTextVisibility, (TRUE));
    SO_KIT_ADD_FIELD(extAnnotValueVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotTextFontSize, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotValueFontSize, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotPercentFontSize, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotAddString, (""));
    SO_KIT_ADD_FIELD(extAnnotDistance1, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotDistance2, (0.0f));
    SO_KIT_ADD_FIELD(extAnnotDistance3, (0.0f));
    SO_KIT_ADD_FIELD(arrowVisibility, (TRUE));
    SO_KIT_ADD_FIELD(arrowHeight, (0.0f));
    SO_KIT_ADD_FIELD(arrowWidth, (0.0f));
    SO_KIT_ADD_FIELD(sliceGroupActive, (TRUE));
    SO_KIT_ADD_FIELD(sliceGroupMinValue, (5.0f));
    SO_KIT_ADD_FIELD(sliceGroupFlagMin, (PERCENTAGE));
    SO_KIT_ADD_FIELD(sliceGroupString, ("Others"));
    SO_KIT_ADD_FIELD(sliceToTranslateNumber, (0));
    SO_KIT_ADD_FIELD(sliceToTranslateValue, (0.0f));
    SO_KIT_ADD_FIELD(sliceAngleStep, (s_defaultAngleStep));

    SO_KIT_SET_SF_ENUM_TYPE(intAnnotPosition, IntAnnotPosition);
    SO_KIT_SET_SF_ENUM_TYPE(intAnnotAlignment, Alignment);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotPosition, ExtAnnotPosition);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotAlignment, Alignment);
    SO_KIT_SET_SF_ENUM_TYPE(sliceGroupFlagMin, PercentStatus);

    SO_KIT_INIT_INSTANCE();

    watchFields({&radius,
                 &sliceText,
                 &sliceValue,
                 &sliceColor,
                 &intAnnotPosition,
                 &intAnnotAlignment,
                 &intAnnotTextVisibility,
                 &intAnnotValueVisibility,
                 &intAnnotPercentVisibility,
                 &intAnnotAddStringVisibility,
                 &intAnnotTextFontName,
                 &intAnnotTextFontSize,
                 &intAnnotValueFontName,
                 &intAnnotValueFontSize,
                 &intAnnotPercentFontName,
                 &intAnnotPercentFontSize,
                 &intAnnotAddString,
                 &intAnnotDistance,
                 &extAnnotPosition,
                 &extAnnotAlignment,
                 &extAnnotTextVisibility,
                 &extAnnotValueVisibility,
                 &extAnnotPercentVisibility,
                 &extAnnotAddStringVisibility,
                 &extAnnotTextFontName,
                 &extAnnotTextFontSize,
                 &extAnnotValueFontName,
                 &extAnnotValueFontSize,
                 &extAnnotPercentFontName,
                 &extAnnotPercentFontSize,
                 &extAnnotAddString,
                 &extAnnotDistance1,
                 &extAnnotDistance2,
                 &extAnnotDistance3,
                 &arrowVisibility,
                 &arrowHeight,
                 &arrowWidth,
                 &sliceGroupActive,
                 &sliceGroupMinValue,
                 &sliceGroupFlagMin,
                 &sliceGroupString,
                 &sliceToTranslateNumber,
                 &sliceToTranslateValue,
                 &sliceAngleStep});

    setLightModel(SoLightModel::BASE_COLOR);
    // Boxes start white and their texts black, readable over any slice or
    // background; the appearances can change that.
    auto colour = [this](const char* appearance, float grey) {
        auto* material = new SoMaterial;
        material->diffuseColor.setValue(grey, grey, grey);
        setAnyPart((SbString(appearance) + ".material").getString(), material);
    };
    for (const char* appearance : {"extAnnotBoxApp", "intAnnotBoxApp"})
        colour(appearance, 1.0f);
    for (const char* appearance : {"extAnnotTextApp", "extAnnotValueApp", "extAnnotPercentApp",
                                   "intAnnotTextApp", "intAnnotValueApp", "intAnnotPercentApp"})
        colour(appearance, 0.0f);
}

PoPieChart::~PoPieChart() {
    changeConnection(m_format, nullptr);
}

void PoPieChart::setFormat(PbNumericDisplayFormat* format) {
    connectObject(m_format, format);
}

void PoPieChart::basicObjectChange(PbBase* object) {
    if (!manageConnectedObject(object, m_format))
        PoPlotwright::basicObjectChange(object);
}

void PoPieChart::setDefaultOnNonWritingFields(void) {
    PoPlotwright::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : s_triples) {
        markPartDefault(part);
        markPartDefault((SbString(part) + "Sep").getString());
    }
}

// ---------------------------------------------------- slices to translate

void PoPieChart::setSliceToTranslate(short sliceNumber, float distance) {
    const int count = sliceToTranslateNumber.getNum();
    int index = 0;
    while (index < count && sliceToTranslateNumber[index] != sliceNumber)
        ++index;
    if (index < count && distance == 0.0f) {
        sliceToTranslateNumber.deleteValues(index, 1);
        if (index < sliceToTranslateValue.getNum())
            sliceToTranslateValue.deleteValues(index, 1);
        return;
    }
    if (distance == 0.0f)
        return;
    for (int i = sliceToTranslateValue.getNum(); i < index; ++i)
        sliceToTranslateValue.set1Value(i, 0.0f);
    sliceToTranslateNumber.set1Value(index, sliceNumber);
    sliceToTranslateValue.set1Value(index, distance);
}

float PoPieChart::getSliceToTranslate(short sliceNumber) const {
    for (int i = 0; i < sliceToTranslateNumber.getNum(); ++i)
        if (sliceToTranslateNumber[i] == sliceNumber)
            return i < sliceToTranslateValue.getNum() ? sliceToTranslateValue[i] : 0.0f;
    return 0.0f;
}

std::vector<float> PoPieChart::computeTranslations(void) const {
    std::vector<float> distances(m_slices.size(), 0.0f);
    for (int j = 0; j < sliceToTranslateNumber.getNum(); ++j) {
        const int number = sliceToTranslateNumber[j];
        if (number == 0)
            continue;
        if (number < 0 || number > sliceValue.getNum()) {
            PoDebugError::postWarning("PoPieChart::rebuild",
                                      "slice %d to translate does not exist; it is ignored",
                                      number);
            continue;
        }
        if (j >= sliceToTranslateValue.getNum()) {
            PoDebugError::postWarning("PoPieChart::rebuild",
                                      "slice %d to translate has no distance; it stays in place",
                                      number);
            continue;
        }
        const float distance = sliceToTranslateValue[j];
        for (size_t i = 0; i < m_slices.size(); ++i)
            if (m_slices[i].number == number && distance > 0.0f && std::isfinite(distance))
                distances[i] = distance;
    }
    return distances;
}

// ------------------------------------------------------------- picking

void PoPieChart::recordPickable(const SoNode* node, int index) {
    m_pickable.emplace_back(node, index);
}

int PoPieChart::getPickedSliceNumber(const SoPickedPoint* pickedPoint) const {
    if (!pickedPoint)
        return NO_SLICE;
    // The path runs through the kit's hidden parts: one of the nodes
    // recorded for a slice is on it.
    const SoPath* path = pickedPoint->getPath();
    for (const auto& entry : m_pickable)
        if (path->containsNode(entry.first))
            return m_slices[entry.second].number;
    return NO_SLICE;
}

void PoPieChart::resetAllPart(void) {
    for (const char* part : s_triples)
        setAnyPart(part, nullptr);
    m_pickable.clear();
    m_slices.clear();
}

// --------------------------------------------------------- attributes

float PoPieChart::sizeOf(const SoSFFloat& field, float defaultShare) const {
    const float relative = relativeSize(field);
    return relative > 0.0f ? relative * m_unit : defaultShare * m_radius;
}

// The fields of both kinds of annotation differ only by their prefix.
void PoPieChart::readAnnotationAttr(bool internal, AnnotationAttr& attr) const {
    const SbString prefix = internal ? "intAnnot" : "extAnnot";
    auto field = [&](const char* name) { return getField((prefix + name).getString()); };
    auto visible = [&](const char* name) {
        return static_cast<const SoSFBool*>(field(name))->getValue() != FALSE;
    };
    auto string = [&](const char* name) {
        return static_cast<const SoSFString*>(field(name))->getValue();
    };
    auto size = [&](const char* name) {
        return sizeOf(*static_cast<const SoSFFloat*>(field(name)), s_fontSize);
    };
    attr.position = internal ? checkedEnum(intAnnotPosition, 2, HOR_INT_POS)
                             : checkedEnum(extAnnotPosition, 5, HOR_EXT_POS);
    attr.alignment = checkedEnum(*static_cast<const SoSFEnum*>(field("Alignment")), 5,
                                 internal ? CENTER_ALIGN : INWARDS_ALIGN);
    attr.textVisible = visible("TextVisibility");
    attr.valueVisible = visible("ValueVisibility");
    attr.percentVisible = visible("PercentVisibility");
    attr.addStringVisible = visible("AddStringVisibility");
    attr.textFont = string("TextFontName");
    attr.valueFont = string("ValueFontName");
    attr.percentFont = string("PercentFontName");
    attr.addString = string("AddString");
    attr.textSize = size("TextFontSize");
    attr.valueSize = size("ValueFontSize");
    attr.percentSize = size("PercentFontSize");
}

bool PoPieChart::savePieChartAttr(void) {
    m_radius = radius.getValue();
    if (!(m_radius > 0.0f) || !std::isfinite(m_radius)) {
        PoDebugError::post("PoPieChart::rebuild",
                           "radius %g is not a positive number; the pie is not drawn", m_radius);
        return false;
    }
    m_unit = getDomain()->getDeltaX();
    readAnnotationAttr(true, m_intAttr);
    readAnnotationAttr(false, m_extAttr);
    m_distance1 = sizeOf(extAnnotDistance1, s_extDistance1);
    m_distance2 = sizeOf(extAnnotDistance2, s_extDistance2);
    m_distance3 = sizeOf(extAnnotDistance3, s_extDistance3);
    m_arrowHeight = sizeOf(arrowHeight, s_arrowHeight);
    m_arrowWidth = sizeOf(arrowWidth, s_arrowWidth);
    return true;
}

float PoPieChart::getAngleStep(void) const {
    const float step = sliceAngleStep.getValue();
    const float smallest = 2.0f * static_cast<float>(M_PI) / s_maxStepsPerCircle;
    if (!(step > 0.0f) || !std::isfinite(step)) {
        PoDebugError::postWarning("PoPieChart::rebuild",
                                  "sliceAngleStep %g is not a positive number; %g is used", step,
                                  s_defaultAngleStep);
        return s_defaultAngleStep;
    }
    if (step < smallest) {
        PoDebugError::postWarning("PoPieChart::rebuild",
                                  "sliceAngleStep %g cuts a circle into more than %g steps; %g "
                                  "is used",
                                  step, s_maxStepsPerCircle, smallest);
        return smallest;
    }
    return step;
}

// -------------------------------------------------------------- values

void PoPieChart::computeSlicePartValuesToDisplay(void) {
    m_slices.clear();
    double total = 0.0;
    for (int i = 0; i < sliceValue.getNum(); ++i) {
        const float value = sliceValue[i];
        if (!std::isfinite(value))
            PoDebugError::postWarning("PoPieChart::rebuild",
                                      "slice value %d is not a number; it counts as 0", i + 1);
        else if (value > 0.0f)
            total += value;
    }
    if (!(total > 0.0) || !std::isfinite(total))
        return;
    const bool grouping = sliceGroupActive.getValue() != FALSE;
    const float minimum = sliceGroupMinValue.getValue();
    const float threshold = checkedEnum(sliceGroupFlagMin, 2, PERCENTAGE) == PERCENTAGE
                                ? static_cast<float>(minimum * total / 100.0)
                                : minimum;
    std::vector<bool> small;
    for (int i = 0; i < sliceValue.getNum(); ++i) {
        const float value = sliceValue[i];
        if (!(value > 0.0f) || !std::isfinite(value))
            continue;
        m_slices.push_back(
            DisplayedSlice{i + 1, value, static_cast<float>(value / total * 100.0), "", "", ""});
        small.push_back(grouping && threshold > value);
    }
    // A single small slice is shown as it is.
    if (std::count(small.begin(), small.end(), true) < 2)
        return;
    DisplayedSlice group{GROUP_SLICE, 0.0f, 0.0f, "", "", ""};
    std::vector<DisplayedSlice> kept;
    for (size_t i = 0; i < m_slices.size(); ++i)
        if (small[i])
            group.value += m_slices[i].value;
        else
            kept.push_back(m_slices[i]);
    group.percent = static_cast<float>(group.value / total * 100.0);
    kept.push_back(group);
    m_slices.swap(kept);
}

void PoPieChart::computeSliceNames(void) {
    for (DisplayedSlice& slice : m_slices) {
        if (slice.number == GROUP_SLICE)
            slice.name = sliceGroupString.getValue();
        else if (slice.number <= sliceText.getNum())
            slice.name = sliceText[slice.number - 1];
    }
}

void PoPieChart::computeStringsToDisplay(void) {
    std::vector<float> values;
    for (const DisplayedSlice& slice : m_slices)
        values.push_back(slice.value);
    const PbNumericDisplayFormat* format =
        m_format ? m_format : readElement<PoNumericDisplayFormatElement>();
    PiNumericFormat valueFormat, percentFormat;
    valueFormat.setFormat(format, static_cast<int>(values.size()), values.data(), 1);
    percentFormat.setFormatFloatingPoint(1, 0);
    for (DisplayedSlice& slice : m_slices) {
        slice.valueText = valueString(valueFormat, slice.value);
        slice.percentText = percentFormat.getString(slice.percent) + "%";
    }
}

SbColor PoPieChart::getSliceColor(const DisplayedSlice& slice) const {
    const int count = sliceColor.getNum();
    if (count == 0)
        return SbColor(0.0f, 0.0f, 0.0f);
    return sliceColor[slice.number == GROUP_SLICE ? count - 1 : (slice.number - 1) % count];
}

// --------------------------------------------------------- annotations

PoPieChart::Block PoPieChart::makeBlock(bool internal, const DisplayedSlice& slice) {
    const AnnotationAttr& attr = internal ? m_intAttr : m_extAttr;
    Block block;
    SbString value = slice.valueText;
    if (attr.addStringVisible)
        value = PiText::fromLatin1((value + PiText::toLatin1(attr.addString)).getString());
    struct {
        bool visible;
        const SbString& string;
        const SbString& font;
        float size;
        const char* part;
    } const candidates[] = {{attr.textVisible, slice.name, attr.textFont, attr.textSize,
                             internal ? "intAnnotText" : "extAnnotText"},
                            {attr.valueVisible, value, attr.valueFont, attr.valueSize,
                             internal ? "intAnnotValue" : "extAnnotValue"},
                            {attr.percentVisible, slice.percentText, attr.percentFont,
                             attr.percentSize, internal ? "intAnnotPercent" : "extAnnotPercent"}};
    float height = 0.0f, width = 0.0f, largest = 0.0f;
    for (const auto& candidate : candidates) {
        if (!candidate.visible || candidate.string.getLength() == 0 || !(candidate.size > 0.0f))
            continue;
        PiText text;
        setUpText(text, candidate.font, candidate.size);
        if (!block.lines.empty())
            height += s_lineGap * candidate.size;
        block.lines.push_back(Block::Line{text, candidate.string, candidate.part, height});
        height += text.getHeight(candidate.string);
        width = std::max(width, text.getWidth(candidate.string));
        largest = std::max(largest, candidate.size);
    }
    block.margin = s_boxMargin * largest;
    block.size = SbVec2f(width + 2.0f * block.margin, height + 2.0f * block.margin);
    return block;
}

// Boxes, borders and lines of the annotations placed, over the slices.
void PoPieChart::drawBlocks(const std::vector<Placed>& placed, bool internal) {
    const int alignment = (internal ? m_intAttr : m_extAttr).alignment;
    SoGroup* boxes = partGroup(internal ? "intAnnotBox" : "extAnnotBox");
    SoGroup* borders = partGroup(internal ? "intAnnotBoxBorder" : "extAnnotBoxBorder");
    for (const Placed& p : placed) {
        if (!p.placement.placed)
            continue;
        const Block& block = p.block;
        const SbVec2f& center = p.placement.center;
        const float angle = p.placement.angle;
        const SbVec2f along = direction(angle);
        const SbVec2f across = direction(angle + static_cast<float>(M_PI_2));
        auto place = [&](float x, float y, float z) {
            return at(center + along * x + across * y, z);
        };
        const float w = 0.5f * block.size[0], h = 0.5f * block.size[1];
        SoNode* box = shape({place(-w, -h, getBoxOffset()), place(w, -h, getBoxOffset()),
                             place(w, h, getBoxOffset()), place(-w, h, getBoxOffset())},
                            faceOf(4));
        boxes->addChild(box);
        recordPickable(box, p.index);
        const float z = getTextOffset();
        SoNode* border = shape(
            {place(-w, -h, z), place(w, -h, z), place(w, h, z), place(-w, h, z), place(-w, -h, z)},
            lineOf(5));
        borders->addChild(border);
        recordPickable(border, p.index);

        const PiText::HorizontalJustification justification =
            justificationOf(alignment, (p.inward - center).dot(along));
        const float inner = w - block.margin;
        const float x = justification == PiText::JUSTIFY_LEFT    ? -inner
                        : justification == PiText::JUSTIFY_RIGHT ? inner
                                                                 : 0.0f;
        for (const Block::Line& line : block.lines) {
            PiText text = line.text;
            text.setJustification(justification, PiText::JUSTIFY_TOP);
            SoNode* node = text.build(line.string, place(x, h - block.margin - line.top, z), angle);
            partGroup(line.part)->addChild(node);
            recordPickable(node, p.index);
        }
    }
}

SoGroup* PoPieChart::partGroup(const char* part) {
    return static_cast<SoGroup*>(getAnyPart(part, TRUE));
}

// The annotations of the slices that have one.
std::vector<PoPieChart::Placed>
PoPieChart::collectBlocks(bool internal, const std::vector<SliceGeometry>& geometry) {
    std::vector<Placed> placed;
    for (size_t i = 0; i < m_slices.size(); ++i) {
        Block block = makeBlock(internal, m_slices[i]);
        if (!block.lines.empty())
            placed.push_back(Placed{static_cast<int>(i), block, {}, geometry[i].center});
    }
    return placed;
}

namespace {
// What the layout needs of the annotations: their slices and sizes.
template <class Placed, class Geometry>
void layoutInput(const std::vector<Placed>& placed, const std::vector<Geometry>& geometry,
                 std::vector<PiPieLayout::Slice>& slices, std::vector<SbVec2f>& sizes) {
    for (const Placed& p : placed) {
        const Geometry& g = geometry[p.index];
        slices.push_back(PiPieLayout::Slice{g.center, g.middle()});
        sizes.push_back(p.block.size);
    }
}
} // namespace

void PoPieChart::drawInternalAnnotations(const std::vector<SliceGeometry>& geometry) {
    std::vector<Placed> placed = collectBlocks(true, geometry);
    if (placed.empty())
        return;
    std::vector<PiPieLayout::Slice> slices;
    std::vector<SbVec2f> sizes;
    layoutInput(placed, geometry, slices, sizes);
    const PiPieLayout layout(SbVec2f(0.0f, 0.0f), m_radius, m_radius,
                             s_boxGap * m_intAttr.valueSize);
    const std::vector<PiPieLayout::Placement> placements =
        layout.placeInside(slices, sizes, sizeOf(intAnnotDistance, s_intDistance),
                           m_intAttr.position == RADIAL_INT_POS);
    for (size_t k = 0; k < placed.size(); ++k)
        placed[k].placement = placements[k];
    drawBlocks(placed, true);
}

void PoPieChart::drawExternalAnnotations(const std::vector<SliceGeometry>& geometry,
                                         const SbVec2f& center, float outerRadius) {
    std::vector<Placed> placed = collectBlocks(false, geometry);
    if (placed.empty())
        return;
    std::vector<PiPieLayout::Slice> slices;
    std::vector<SbVec2f> sizes;
    layoutInput(placed, geometry, slices, sizes);
    const PiPieLayout layout(center, m_radius, outerRadius, s_boxGap * m_extAttr.textSize);
    const std::vector<PiPieLayout::Placement> placements =
        layout.placeOutside(slices, sizes, static_cast<PiPieLayout::Outside>(m_extAttr.position),
                            m_distance1, m_distance2, m_distance3);
    for (size_t k = 0; k < placed.size(); ++k) {
        placed[k].placement = placements[k];
        placed[k].inward = center;
    }
    drawBlocks(placed, false);
    if (arrowVisibility.getValue())
        drawArrows(placed);
}

// Each leader as a line from its box to the base of a head that points at
// the slice's rim.
void PoPieChart::drawArrows(const std::vector<Placed>& placed) {
    SoGroup* arrows = partGroup("arrow");
    const float z = getTextOffset();
    for (const Placed& p : placed) {
        const std::vector<SbVec2f>& leader = p.placement.leader;
        if (leader.size() < 2)
            continue;
        SbVec2f way = leader[0] - leader[1];
        const float length = std::min(m_arrowHeight, way.normalize());
        const SbVec2f base = leader[0] - way * length;
        const SbVec2f side = SbVec2f(-way[1], way[0]) * (0.5f * m_arrowWidth);
        auto* arrowNode = new SoSeparator;
        std::vector<SbVec3f> line{at(base, z)};
        for (size_t k = 1; k < leader.size(); ++k)
            line.push_back(at(leader[k], z));
        arrowNode->addChild(shape(line, lineOf(static_cast<int>(line.size()))));
        arrowNode->addChild(
            shape({at(leader[0], z), at(base + side, z), at(base - side, z)}, faceOf(3)));
        arrows->addChild(arrowNode);
        recordPickable(arrowNode, p.index);
    }
}
