#include <Quillon/graph/PoItemLegend.h>

#include "graph/PiText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_SOURCE(PoItemLegend, PoLegend)

namespace {
// Sizes in units of the entry font size.
const float s_boxSide = 0.975f;
const float s_capHeight = PiText::CAP_HEIGHT;
const float s_nameGap = 0.325f;
const float s_graphicGap = 0.65f;
const float s_columnGap = 1.3f;
const float s_rowGap = 0.975f;

// The entry of a per-item list, the list taken round.
template <class Field> auto roundEntry(const Field& field, int index) {
    return field[index % field.getNum()];
}

SoMaterial* colorNode(const SoMFColor& colors, int index) {
    auto* material = new SoMaterial;
    material->diffuseColor = roundEntry(colors, index);
    return material;
}
} // namespace

PoItemLegend::PoItemLegend() {
    init(SbVec2f(0, 0), SbVec2f(1, 1), 0, nullptr, nullptr);
}

PoItemLegend::PoItemLegend(const SbVec2f& start, const SbVec2f& end, int numItems,
                           const char** items, const SbColor* colors) {
    init(start, end, numItems, items, colors);
}

void PoItemLegend::init(const SbVec2f& startCorner, const SbVec2f& endCorner, int numItems,
                        const char** items, const SbColor* colors) {
    SO_KIT_CONSTRUCTOR(PoItemLegend);
    PO_KIT_ADD_PART_WITH_APPEARANCE(line, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(marker, SoGroup, alternateRep);
    SO_KIT_ADD_FIELD(start, (0.0f, 0.0f));
    SO_KIT_ADD_FIELD(end, (1.0f, 1.0f));
    SO_KIT_ADD_FIELD(item, (""));
    SO_KIT_ADD_FIELD(boxVisibility, (TRUE));
    SO_KIT_ADD_FIELD(boxColor, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(lineVisibility, (FALSE));
    SO_KIT_ADD_FIELD(lineColor, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(lineSize, (0.0f));
    SO_KIT_ADD_FIELD(linePattern, (0xFFFF));
    SO_KIT_ADD_FIELD(markerVisibility, (FALSE));
    SO_KIT_ADD_FIELD(markerColor, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(markerSize, (0.0f));
    SO_KIT_ADD_FIELD(markerString, ("."));
    SO_KIT_INIT_INSTANCE();

    if (start.getValue() != startCorner)
        start = startCorner;
    if (end.getValue() != endCorner)
        end = endCorner;
    if (items && numItems > 0) {
        item.setNum(numItems);
        for (int i = 0; i < numItems; ++i)
            item.set1Value(i, items[i] ? items[i] : "");
    }
    if (colors && numItems > 0) {
        boxColor.setNum(numItems);
        boxColor.setValues(0, numItems, colors);
    }
    watchFields({&start, &end, &item, &boxVisibility, &boxColor, &lineVisibility, &lineColor,
                 &lineSize, &linePattern, &markerVisibility, &markerColor, &markerSize,
                 &markerString});
    addGeneratedParts({"line", "marker"});
}

PoItemLegend::~PoItemLegend() = default;

bool PoItemLegend::textsBeside(void) const {
    return m_attr.valuePosition == POS_RIGHT || m_attr.valuePosition == POS_LEFT;
}

void PoItemLegend::gridPlace(int index, int count, int rows, int& row, int& column) const {
    if (isRevertOrder())
        index = count - 1 - index;
    if (m_attr.incrementType == VERTICAL_INCREMENT) {
        row = index % rows;
        column = index / rows;
    } else {
        row = index / m_attr.numColumns;
        column = index % m_attr.numColumns;
    }
}

PoItemLegend::ItemLayout PoItemLegend::computeItemFontSize(const std::vector<SbString>& texts,
                                                           const Rect& room) {
    ItemLayout layout;
    const int count = static_cast<int>(texts.size());
    if (count == 0)
        return layout;
    const int columnsAsked = m_attr.numColumns;
    layout.rows = (count + columnsAsked - 1) / columnsAsked;
    layout.columns = m_attr.incrementType == VERTICAL_INCREMENT
                         ? (count + layout.rows - 1) / layout.rows
                         : std::min(columnsAsked, count);
    const bool boxes = boxVisibility.getValue(), lines = lineVisibility.getValue();
    const bool markers = markerVisibility.getValue();
    layout.graphicWidth = boxes || lines ? s_boxSide * m_attr.boxRatio : 0.0f;
    if (markers)
        layout.graphicWidth = std::max(layout.graphicWidth, s_capHeight);
    const bool hasGraphic = boxes || lines || markers;
    const bool beside = textsBeside();
    if (beside) {
        layout.rowHeight = boxes ? s_boxSide : s_capHeight;
        layout.graphicHeight = layout.rowHeight;
    } else {
        layout.graphicHeight = boxes ? s_boxSide : markers ? s_capHeight : 0.0f;
        layout.rowHeight =
            hasGraphic ? layout.graphicHeight + s_graphicGap + s_capHeight : s_capHeight;
    }

    // Names measured at size 1, each column as wide as its graphic and
    // widest name.
    const PiText text = makeValueText(1.0f);
    const bool names = m_attr.valueVisibility == VISIBILITY_ON;
    std::vector<float> widest(layout.columns, 0.0f);
    for (int i = 0; i < count; ++i) {
        layout.textWidths.push_back(names ? text.getWidth(texts[i]) : 0.0f);
        int row, column;
        gridPlace(i, count, layout.rows, row, column);
        widest[column] = std::max(widest[column], layout.textWidths.back());
    }
    float totalWidth = s_columnGap * static_cast<float>(layout.columns - 1);
    for (float name : widest) {
        float width = std::max(layout.graphicWidth, name);
        if (beside)
            width = layout.graphicWidth + name + (name > 0.0f && hasGraphic ? s_nameGap : 0.0f);
        layout.columnWidths.push_back(width);
        totalWidth += width;
    }
    const float totalHeight = static_cast<float>(layout.rows) * layout.rowHeight +
                              s_rowGap * static_cast<float>(layout.rows - 1);

    layout.size = room.height / totalHeight;
    if (totalWidth > 0.0f)
        layout.size = std::min(layout.size, room.width / totalWidth);
    if (!(layout.size > 0.0f) || !std::isfinite(layout.size)) {
        layout.size = 0.0f;
        return layout;
    }
    if (layout.columns > 1)
        layout.columnGap =
            (room.width - (totalWidth - s_columnGap * (layout.columns - 1)) * layout.size) /
            static_cast<float>(layout.columns - 1);
    if (layout.rows > 1)
        layout.rowGap =
            (room.height - static_cast<float>(layout.rows) * layout.rowHeight * layout.size) /
            static_cast<float>(layout.rows - 1);
    return layout;
}

void PoItemLegend::rebuild(void) {
    RebuildScope scope(this);
    Rect room;
    if (!drawFrame(start.getValue(), end.getValue(), room))
        return;

    std::vector<SbString> texts;
    for (int i = 0; i < item.getNum(); ++i)
        texts.push_back(makeValueString(item[i]));
    const ItemLayout layout = computeItemFontSize(texts, room);
    if (!(layout.size > 0.0f))
        return;

    std::vector<Rect> graphics;
    std::vector<LegendText> names;
    placeEntries(layout, room, texts, graphics, names);
    if (boxVisibility.getValue())
        drawBoxes(graphics, layout.size);
    if (lineVisibility.getValue())
        drawLines(graphics);
    if (markerVisibility.getValue())
        drawMarkers(graphics, layout.size);
    if (m_attr.valueVisibility == VISIBILITY_ON)
        drawValuesLegendBoxesA(names, layout.size);
}

// Each entry's cell in the grid, from the top-left corner of the room.
void PoItemLegend::placeEntries(const ItemLayout& layout, const Rect& room,
                                const std::vector<SbString>& texts, std::vector<Rect>& graphics,
                                std::vector<LegendText>& names) const {
    const float s = layout.size;
    std::vector<float> columnLeft(1, room.origin[0]);
    for (int c = 0; c + 1 < layout.columns; ++c)
        columnLeft.push_back(columnLeft.back() + layout.columnWidths[c] * s + layout.columnGap);
    const float top = room.origin[1] + room.height;
    const int count = static_cast<int>(texts.size());
    for (int i = 0; i < count; ++i) {
        int row, column;
        gridPlace(i, count, layout.rows, row, column);
        Rect cell;
        cell.width = layout.columnWidths[column] * s;
        cell.height = layout.rowHeight * s;
        cell.origin.setValue(columnLeft[column],
                             top - static_cast<float>(row) * (cell.height + layout.rowGap) -
                                 cell.height);
        Rect graphic;
        LegendText name{texts[i], SbVec2f(), static_cast<Position>(m_attr.valuePosition)};
        placeEntry(layout, cell, graphic, name.anchor);
        graphics.push_back(graphic);
        names.push_back(name);
    }
}

// The graphic and the anchor of the name within the entry's cell.
void PoItemLegend::placeEntry(const ItemLayout& layout, const Rect& cell, Rect& graphic,
                              SbVec2f& anchor) const {
    const float s = layout.size;
    graphic.width = layout.graphicWidth * s;
    graphic.height = layout.graphicHeight * s;
    const bool hasGraphic = layout.graphicWidth > 0.0f;
    const float gap = hasGraphic ? s_nameGap * s : 0.0f;
    const float left = cell.origin[0], top = cell.origin[1] + cell.height;
    const float middle = left + 0.5f * cell.width;
    switch (m_attr.valuePosition) {
    case POS_RIGHT:
        graphic.origin.setValue(left, top - graphic.height);
        anchor.setValue(left + graphic.width + gap, cell.middle()[1]);
        break;
    case POS_LEFT:
        graphic.origin.setValue(left + cell.width - graphic.width, top - graphic.height);
        anchor.setValue(graphic.origin[0] - gap, cell.middle()[1]);
        break;
    case POS_TOP:
        anchor.setValue(middle, top - s_capHeight * s);
        graphic.origin.setValue(middle - 0.5f * graphic.width,
                                anchor[1] - s_graphicGap * s - graphic.height);
        break;
    default:
        graphic.origin.setValue(middle - 0.5f * graphic.width, top - graphic.height);
        anchor.setValue(middle, hasGraphic ? graphic.origin[1] - s_graphicGap * s : top);
        break;
    }
}

// A box in the middle of each graphic, in the item's colour.
void PoItemLegend::drawBoxes(const std::vector<Rect>& graphics, float size) {
    std::vector<LegendBox> boxes;
    const SbVec2f half = 0.5f * size * SbVec2f(s_boxSide * m_attr.boxRatio, s_boxSide);
    for (int i = 0; i < static_cast<int>(graphics.size()); ++i) {
        LegendBox box;
        box.min = graphics[i].middle() - half;
        box.max = graphics[i].middle() + half;
        box.colored = boxColor.getNum() > 0;
        if (box.colored)
            box.low = box.high = roundEntry(boxColor, i);
        boxes.push_back(box);
    }
    drawBoxesLegendBoxesA(boxes);
}

void PoItemLegend::drawLines(const std::vector<Rect>& graphics) {
    auto* group = new SoGroup;
    for (int i = 0; i < static_cast<int>(graphics.size()); ++i)
        drawHorLine(group, i, graphics[i]);
    setAnyPart("line", group);
}

// Across the middle of the graphic, in the item's colour, width and
// pattern.
void PoItemLegend::drawHorLine(SoGroup* group, int index, const Rect& graphic) {
    auto* sample = new SoSeparator;
    if (lineColor.getNum() > 0)
        sample->addChild(colorNode(lineColor, index));
    auto* style = new SoDrawStyle;
    if (lineSize.getNum() > 0 && roundEntry(lineSize, index) > 0.0f)
        style->lineWidth = roundEntry(lineSize, index);
    if (linePattern.getNum() > 0)
        style->linePattern = roundEntry(linePattern, index);
    sample->addChild(style);
    const float y = graphic.middle()[1];
    auto* coordinates = new SoCoordinate3;
    coordinates->point.set1Value(0, SbVec3f(graphic.origin[0], y, 0.0f));
    coordinates->point.set1Value(1, SbVec3f(graphic.origin[0] + graphic.width, y, 0.0f));
    sample->addChild(coordinates);
    sample->addChild(new SoLineSet);
    group->addChild(sample);
}

void PoItemLegend::drawMarkers(const std::vector<Rect>& graphics, float size) {
    if (markerString.getNum() == 0)
        return;
    auto* group = new SoGroup;
    for (int i = 0; i < static_cast<int>(graphics.size()); ++i)
        drawMarker(group, i, graphics[i], size);
    setAnyPart("marker", group);
}

// In the middle of the graphic, at the item's marker size or the entry
// size.
void PoItemLegend::drawMarker(SoGroup* group, int index, const Rect& graphic, float size) {
    if (markerSize.getNum() > 0) {
        const float own = roundEntry(markerSize, index) * m_attr.deltaX;
        if (own > 0.0f && std::isfinite(own))
            size = own;
    }
    PiText text;
    setUpText(text, m_attr.valueFontName, size);
    auto* holder = new SoSeparator;
    if (markerColor.getNum() > 0)
        holder->addChild(colorNode(markerColor, index));
    const SbVec2f middle = graphic.middle();
    holder->addChild(
        text.buildCentered(roundEntry(markerString, index), SbVec3f(middle[0], middle[1], 0.0f)));
    group->addChild(holder);
}
