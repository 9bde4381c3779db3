#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoLegend.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoMFUShort.h>
#include <Inventor/fields/SoSFVec2f.h>

// A legend of named items, as used to explain the curves or bars of a
// chart: per item a graphic (a box in its colour, a line sample, a marker,
// each when visible) and the item's name.
//
// Entries form a grid of ceil(items / numColumns) rows.  With
// VERTICAL_INCREMENT they fill the first column from top to bottom, then
// the next column; with HORIZONTAL_INCREMENT the first row from left to
// right, then the next row.  Giving the corners start and end in decreasing
// order along the direction of increment (start above end in y, or right
// of it in x) fills the grid in the reverse order.  A numColumns of 0
// counts as 1.
//
// Sizes are in units of the entry font size s, the line pitch of the item
// names: a box is 0.975 * boxRatio wide and 0.975 high; a marker alone
// takes 0.65.  With the names beside the graphics (valuePosition POS_RIGHT
// or POS_LEFT) a name stands 0.325 from its graphic, a row is as high as a
// box (0.65 without boxes) and rows stand 0.975 apart; with the names below
// or above (POS_BOTTOM, POS_TOP) the graphic and its name stand 0.65 apart
// and a column is as wide as the wider of them.  Columns stand 1.3 apart.
// s is the largest size at which the grid fits the room left inside the
// margins and the title; the room still left over spreads evenly between
// the columns and between the rows.
//
// A line sample runs across the middle of the graphic, lineSize pixels wide
// (0: the toolkit's width) in linePattern; a marker (markerString) stands
// in the middle of the graphic at markerSize (relative: times the domain's
// x extent; 0: the size s).  The per-item lists (boxColor, lineColor,
// lineSize, linePattern, markerColor, markerSize, markerString) are taken
// round when they are shorter than the item list; an empty colour list
// leaves the graphics in the colour of their appearance part.
class QUILLON_API PoItemLegend : public PoLegend {
    PO_KIT_HEADER(PoItemLegend);

    PO_KIT_PART_WITH_APPEARANCE_HEADER(line);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(marker);

public:
    SoSFVec2f start;
    SoSFVec2f end;
    SoMFString item;
    SoSFBool boxVisibility;
    SoMFColor boxColor;
    SoSFBool lineVisibility;
    SoMFColor lineColor;
    SoMFFloat lineSize;
    SoMFUShort linePattern;
    SoSFBool markerVisibility;
    SoMFColor markerColor;
    SoMFFloat markerSize;
    SoMFString markerString;

    PoItemLegend();
    PoItemLegend(const SbVec2f& start, const SbVec2f& end, int numItems, const char** items,
                 const SbColor* colors);

protected:
    ~PoItemLegend() override;

    void rebuild(void) override;

    // The grid of entries, in units of the font size s where not said
    // otherwise.
    struct ItemLayout {
        int rows = 0, columns = 0;
        float size = 0.0f;               // s, in scene units
        float columnGap = 0.0f;          // scene units
        float rowGap = 0.0f;             // scene units
        float rowHeight = 0.0f;          // of an entry
        float graphicWidth = 0.0f;       // the box, line or marker cell
        float graphicHeight = 0.0f;      // what the graphic covers
        std::vector<float> columnWidths; // graphic and name
        std::vector<float> textWidths;   // per item, at size 1
    };

    // The entries' grid and font size in the room.
    ItemLayout computeItemFontSize(const std::vector<SbString>& texts, const Rect& room);
    void drawLines(const std::vector<Rect>& graphics);
    void drawHorLine(SoGroup* group, int index, const Rect& graphic);
    void drawMarkers(const std::vector<Rect>& graphics, float size);
    void drawMarker(SoGroup* group, int index, const Rect& graphic, float size);

private:
    void init(const SbVec2f& start, const SbVec2f& end, int numItems, const char** items,
              const SbColor* colors);
    // Row and column of the item.
    void gridPlace(int index, int count, int rows, int& row, int& column) const;
    void placeEntries(const ItemLayout& layout, const Rect& room,
                      const std::vector<SbString>& texts, std::vector<Rect>& graphics,
                      std::vector<LegendText>& names) const;
    void placeEntry(const ItemLayout& layout, const Rect& cell, Rect& graphic,
                    SbVec2f& anchor) const;
    void drawBoxes(const std::vector<Rect>& graphics, float size);
    bool textsBeside(void) const;
};
