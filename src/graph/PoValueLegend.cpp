#include <Quillon/graph/PoValueLegend.h>

#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PbNonLinearDataMapping2.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "graph/PiText.h"

#include <Inventor/nodes/SoGroup.h>

#include <algorithm>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoValueLegend, PoLegend)

namespace {
// Sizes in units of the value font size.
const float s_barThickness = 0.975f;
const float s_thresholdBox = 0.975f;
const float s_thresholdGap = 0.325f;
const float s_tick = 0.325f;
const float s_valueDistance = 0.65f;
const float s_valueGap = 0.65f;
// A line of the factor in a vertical legend.
const float s_factorBand = 1.3f;
// What a factor's exponent measures against its base (as the text builder
// draws it).
const float s_exponentScale = 0.7f;
// Steps of a continuously shaded bar.
const int s_shadingSteps = 64;
} // namespace

// A bar's contents and its place: along the bar the coordinate u, from the
// room's lower or left edge; across it v.
struct PoValueLegend::Bar {
    const PbDataMapping* mapping = nullptr;
    bool levels = false;
    float min = 0.0f, max = 1.0f;
    // Places of the graduations along the bar, 0 at its smallest value, 1
    // at its largest, with their texts.
    std::vector<float> places;
    std::vector<SbString> texts;
    int tenPower = 0;
    bool minThreshold = false, maxThreshold = false;
    bool minHasColor = false, maxHasColor = false;
    SbColor minColor, maxColor;

    Rect room;
    bool vertical = true;
    // +1 when the values stand toward increasing v, else -1.
    float textSide = 1.0f;
    float size = 0.0f;
    float u0 = 0.0f, u1 = 0.0f;
    float v0 = 0.0f, v1 = 0.0f;
    // Where the room for the factor starts, along the bar.
    float factorStart = 0.0f;
    bool reverted = false;

    float along(float place) const {
        return reverted ? u1 - place * (u1 - u0) : u0 + place * (u1 - u0);
    }
    SbVec2f at(float u, float v) const {
        return room.origin + (vertical ? SbVec2f(v, u) : SbVec2f(u, v));
    }
    // The box from u = a to u = b across the bar.
    void span(float a, float b, LegendBox& box) const {
        box.min = at(std::min(a, b), v0);
        box.max = at(std::max(a, b), v1);
        box.alongY = vertical;
    }
    float valueEdge(void) const { return textSide > 0.0f ? v1 : v0; }
};

PoValueLegend::PoValueLegend() {
    SO_KIT_CONSTRUCTOR(PoValueLegend);
    SO_KIT_ADD_FIELD(start, (0.0f, 0.0f));
    SO_KIT_ADD_FIELD(end, (1.0f, 1.0f));
    SO_KIT_ADD_FIELD(minValue, (0.0f));
    SO_KIT_ADD_FIELD(maxValue, (0.0f));
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end, &minValue, &maxValue});
}

PoValueLegend::~PoValueLegend() {
    changeConnection(m_mapping, nullptr);
    changeConnection(m_format, nullptr);
}

void PoValueLegend::setDataMapping(PbDataMapping* mapping) {
    connectObject(m_mapping, mapping);
}

void PoValueLegend::setFormat(PbNumericDisplayFormat* format) {
    connectObject(m_format, format);
}

void PoValueLegend::basicObjectChange(PbBase* object) {
    if (!manageConnectedObject(object, m_mapping) && !manageConnectedObject(object, m_format))
        PoLegend::basicObjectChange(object);
}

const PbNumericDisplayFormat* PoValueLegend::getNumericFormat(void) {
    return m_format ? m_format : readElement<PoNumericDisplayFormatElement>();
}

// The mapping's own range, or the fields', narrowed by the enabled
// thresholds that fall within it.
bool PoValueLegend::findRange(const PbDataMapping& mapping, float& min, float& max) const {
    min = 0.0f, max = 1.0f;
    if (const auto* linear = dynamic_cast<const PbLinearDataMapping*>(&mapping)) {
        SbColor color1, color2;
        linear->getValues(min, color1, max, color2);
        if (min > max)
            std::swap(min, max);
    } else if (const auto* piecewise = dynamic_cast<const PbNonLinearDataMapping2*>(&mapping)) {
        int count = 0;
        const float* values = piecewise->getValuesList(count);
        if (count > 0)
            min = values[0], max = values[count - 1];
    }
    const float low = minValue.getValue(), high = maxValue.getValue();
    if (low < high && std::isfinite(low) && std::isfinite(high))
        min = low, max = high;
    int minEnabled = 0, maxEnabled = 0;
    mapping.thresholdsEnabled(minEnabled, maxEnabled);
    float threshold = 0.0f;
    mapping.getMinRGBThreshold(threshold);
    if (minEnabled && threshold > min && threshold < max)
        min = threshold;
    mapping.getMaxRGBThreshold(threshold);
    if (maxEnabled && threshold > min && threshold < max)
        max = threshold;
    return min < max && std::isfinite(min) && std::isfinite(max);
}

void PoValueLegend::rebuild(void) {
    RebuildScope scope(this);
    Rect room;
    if (!drawFrame(start.getValue(), end.getValue(), room))
        return;

    Bar bar;
    bar.mapping = m_mapping ? m_mapping : readElement<PoDataMappingElement>();
    if (!bar.mapping || !collectValues(bar))
        return;
    layOut(bar, room);
    if (!(bar.size > 0.0f))
        return;
    std::vector<LegendBox> boxes;
    if (bar.levels)
        addLevelBoxes(bar, boxes);
    else
        addShadedBar(bar, boxes);
    addThresholdBoxes(bar, boxes);
    std::vector<SbVec3f> ticks;
    drawValues(bar, ticks);
    drawBoxesLegendBoxesA(boxes, ticks);
}

// What the bar shows: its levels or its range with their graduations, and
// the thresholds; false, after posting why, when there is nothing to show.
bool PoValueLegend::collectValues(Bar& bar) {
    const auto* piecewise = dynamic_cast<const PbNonLinearDataMapping2*>(bar.mapping);
    bar.levels = piecewise && piecewise->getType() == PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
    if (bar.levels) {
        int count = 0;
        const float* values = piecewise->getValuesList(count);
        PiNumericFormat format;
        format.setFormat(getNumericFormat(), count, values, 0);
        for (int i = 0; i < count; ++i) {
            bar.places.push_back(static_cast<float>(i + 1) / static_cast<float>(count + 1));
            bar.texts.push_back(format.getString(values[i]));
        }
        bar.tenPower = format.getTenPower();
    } else if (findRange(*bar.mapping, bar.min, bar.max)) {
        std::vector<float> values;
        computeGraduations(bar.min, bar.max, values, bar.texts, bar.tenPower);
        for (float value : values)
            bar.places.push_back((value - bar.min) / (bar.max - bar.min));
    } else {
        PoDebugError::postWarning(
            (SbString(getTypeId().getName().getString()) + "::rebuild").getString(),
            "the values shown run from %g to %g; no bar is drawn", bar.min, bar.max);
        return false;
    }
    int minEnabled = 0, maxEnabled = 0;
    bar.mapping->thresholdsEnabled(minEnabled, maxEnabled);
    float threshold;
    bar.minThreshold = minEnabled != 0;
    bar.maxThreshold = maxEnabled != 0;
    if (const SbColor* color = bar.mapping->getMinRGBThreshold(threshold))
        bar.minHasColor = true, bar.minColor = *color;
    if (const SbColor* color = bar.mapping->getMaxRGBThreshold(threshold))
        bar.maxHasColor = true, bar.maxColor = *color;
    for (SbString& text : bar.texts)
        text = makeValueString(text);
    return true;
}

// The font size and the bar's place: the largest size at which the bar and
// its values fit across the room, and the values, with the threshold boxes
// and the factor, along it.
void PoValueLegend::layOut(Bar& bar, const Rect& room) {
    bar.room = room;
    bar.vertical = m_attr.incrementType == VERTICAL_INCREMENT;
    bar.textSide = bar.vertical ? (m_attr.valuePosition == POS_LEFT ? -1.0f : 1.0f)
                                : (m_attr.valuePosition == POS_TOP ? 1.0f : -1.0f);
    bar.reverted = isRevertOrder();
    const float length = bar.vertical ? room.height : room.width;
    const float depth = bar.vertical ? room.width : room.height;

    const bool values = m_attr.valueVisibility == VISIBILITY_ON && !bar.texts.empty();
    const PiText text = makeValueText(1.0f);
    float textAlong = 0.0f, textAcross = 0.0f;
    for (const SbString& t : values ? bar.texts : std::vector<SbString>()) {
        const float width = text.getWidth(t), height = text.getHeight(t);
        textAlong = std::max(textAlong, bar.vertical ? height : width);
        textAcross = std::max(textAcross, bar.vertical ? width : height);
    }
    float factor = 0.0f;
    if (values && bar.tenPower != 0) {
        SbString exponent;
        exponent.sprintf("%d", bar.tenPower);
        factor = bar.vertical ? s_factorBand
                              : text.getWidth("x10") + s_exponentScale * text.getWidth(exponent) +
                                    s_valueGap;
    }
    const float thickness = s_barThickness * m_attr.boxRatio;
    const float across = thickness + (values ? s_valueDistance + textAcross : 0.0f);
    const float reserve = (bar.minThreshold ? s_thresholdBox + s_thresholdGap : 0.0f) +
                          (bar.maxThreshold ? s_thresholdBox + s_thresholdGap : 0.0f) + factor;
    float size = std::min(depth / across, length / (reserve + 1.0f));
    if (values) {
        // Two neighbouring values stand at least s_valueGap apart.
        const float share = bar.levels ? 1.0f / static_cast<float>(bar.texts.size() + 1)
                            : bar.places.size() >= 2 ? std::fabs(bar.places[1] - bar.places[0])
                                                     : 1.0f;
        size = std::min(size, length * share / (textAlong + s_valueGap + reserve * share));
    }
    if (!(size > 0.0f) || !std::isfinite(size))
        return;
    bar.size = size;
    const float low = bar.minThreshold ? (s_thresholdBox + s_thresholdGap) * size : 0.0f;
    const float high = bar.maxThreshold ? (s_thresholdBox + s_thresholdGap) * size : 0.0f;
    bar.u0 = bar.reverted ? high : low;
    bar.factorStart = length - factor * size;
    bar.u1 = bar.factorStart - (bar.reverted ? low : high);
    const float blockStart = 0.5f * (depth - across * size);
    if (bar.textSide > 0.0f) {
        bar.v0 = blockStart;
        bar.v1 = blockStart + thickness * size;
    } else {
        bar.v1 = blockStart + across * size;
        bar.v0 = bar.v1 - thickness * size;
    }
}

void PoValueLegend::addLevelBoxes(const Bar& bar, std::vector<LegendBox>& boxes) const {
    int count = 0;
    const SbColor* colors =
        static_cast<const PbNonLinearDataMapping2*>(bar.mapping)->getRGBColorsList(count);
    for (int i = 0; i < count; ++i) {
        LegendBox box;
        bar.span(bar.along(static_cast<float>(i) / static_cast<float>(count)),
                 bar.along(static_cast<float>(i + 1) / static_cast<float>(count)), box);
        box.low = box.high = colors[i];
        boxes.push_back(box);
    }
}

// Strips shaded from the colour at one end to that at the other, cut at
// even steps and at the mapping's own values, so that a piecewise linear
// mapping is shown exactly; the whole bar outlined once.
void PoValueLegend::addShadedBar(const Bar& bar, std::vector<LegendBox>& boxes) const {
    std::vector<float> values;
    for (int i = 0; i <= s_shadingSteps; ++i)
        values.push_back(bar.min + (bar.max - bar.min) * static_cast<float>(i) / s_shadingSteps);
    if (const auto* linear = dynamic_cast<const PbLinearDataMapping*>(bar.mapping)) {
        float value1, value2;
        SbColor color1, color2;
        linear->getValues(value1, color1, value2, color2);
        values.insert(values.end(), {value1, value2});
    } else if (const auto* piecewise = dynamic_cast<const PbNonLinearDataMapping2*>(bar.mapping)) {
        int count = 0;
        const float* own = piecewise->getValuesList(count);
        values.insert(values.end(), own, own + count);
    }
    values.erase(std::remove_if(values.begin(), values.end(),
                                [&](float v) { return !(v >= bar.min && v <= bar.max); }),
                 values.end());
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    // The ends of the bar are at the thresholds' values, which the
    // thresholds' colours would take: their colours are taken just inside.
    const float inside = 1e-5f * (bar.max - bar.min);
    std::vector<SbColor> colors(values.size());
    std::vector<bool> colored(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        const float value = std::min(std::max(values[i], bar.min + inside), bar.max - inside);
        colored[i] = bar.mapping->getRGBColor(value, colors[i]);
    }
    for (size_t i = 0; i + 1 < values.size(); ++i) {
        if (!colored[i] || !colored[i + 1])
            continue;
        const float a = bar.along((values[i] - bar.min) / (bar.max - bar.min));
        const float b = bar.along((values[i + 1] - bar.min) / (bar.max - bar.min));
        LegendBox strip;
        bar.span(a, b, strip);
        strip.low = a < b ? colors[i] : colors[i + 1];
        strip.high = a < b ? colors[i + 1] : colors[i];
        strip.outlined = false;
        boxes.push_back(strip);
    }
    LegendBox outline;
    bar.span(bar.u0, bar.u1, outline);
    outline.filled = false;
    boxes.push_back(outline);
}

// Beyond the end of the smallest values for the minimum threshold, of the
// largest for the maximum.
void PoValueLegend::addThresholdBoxes(const Bar& bar, std::vector<LegendBox>& boxes) const {
    const float gap = s_thresholdGap * bar.size, length = s_thresholdBox * bar.size;
    auto addBox = [&](float barEnd, float outward, bool hasColor, const SbColor& color) {
        LegendBox box;
        bar.span(barEnd + outward * gap, barEnd + outward * (gap + length), box);
        box.filled = hasColor;
        box.low = box.high = color;
        boxes.push_back(box);
    };
    const float lowEnd = bar.along(0.0f), highEnd = bar.along(1.0f);
    const float outward = bar.reverted ? -1.0f : 1.0f;
    if (bar.minThreshold)
        addBox(lowEnd, -outward, bar.minHasColor, bar.minColor);
    if (bar.maxThreshold)
        addBox(highEnd, outward, bar.maxHasColor, bar.maxColor);
}

// Ticks from the bar to the values, the values, and the factor beyond the
// bar's upper or right end.
void PoValueLegend::drawValues(const Bar& bar, std::vector<SbVec3f>& ticks) {
    if (m_attr.valueVisibility != VISIBILITY_ON || bar.texts.empty())
        return;
    const float s = bar.size;
    const float edge = bar.valueEdge();
    const float tickEnd = edge + bar.textSide * s_tick * s;
    const float anchor = edge + bar.textSide * s_valueDistance * s;
    const Position side = bar.vertical ? (bar.textSide > 0 ? POS_RIGHT : POS_LEFT)
                                       : (bar.textSide > 0 ? POS_TOP : POS_BOTTOM);
    std::vector<LegendText> texts;
    for (size_t i = 0; i < bar.texts.size(); ++i) {
        const float u = bar.along(bar.places[i]);
        const SbVec2f from = bar.at(u, edge), to = bar.at(u, tickEnd);
        ticks.emplace_back(from[0], from[1], 0.0f);
        ticks.emplace_back(to[0], to[1], 0.0f);
        texts.push_back({bar.texts[i], bar.at(u, anchor), side});
    }
    SoGroup* group = drawValuesLegendBoxesA(texts, s);
    if (!group || bar.tenPower == 0)
        return;
    PiText text = makeValueText(s);
    SbVec2f place;
    if (bar.vertical) {
        text.setSide(bar.textSide > 0 ? PiText::SIDE_RIGHT : PiText::SIDE_LEFT, PiText::SIDE_ABOVE);
        place = bar.at(bar.factorStart + s_tick * s, anchor);
    } else {
        text.setSide(PiText::SIDE_RIGHT);
        place = bar.at(bar.factorStart + s_valueGap * s, 0.5f * (bar.v0 + bar.v1));
    }
    SbString exponent;
    exponent.sprintf("%d", bar.tenPower);
    group->addChild(text.buildWithExponent("x10", exponent, SbVec3f(place[0], place[1], 0.0f)));
}
