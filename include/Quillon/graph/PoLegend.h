#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Inventor/SbColor.h>
#include <Inventor/SbLinear.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFUShort.h>

#include <vector>

class PiText;
class SoGroup;

// Base of the legends: a rectangle in the plane z = 0 with a background, a
// border, an optional title and entries, each a graphic (a coloured box,
// and for some legends a line sample or a marker) with a text.
//
// The rectangle is the legend's; margins (marginType, marginLeft ...) keep
// the title and the entries away from its edges.  Relative margins are
// fractions of the rectangle's width (left, right) and height (bottom,
// top), dropped in a direction where they would sum to 1 or more; fixed
// margins are lengths, dropped in a direction where they leave no room; a
// margin that is negative or not a number makes all four 0.05 times the
// smaller side of the rectangle.
//
// The title stands on its titlePosition side of the inner rectangle,
// centred there, along titlePath, at titleFontSize (relative: times the
// domain's x extent) or, when that is 0, at the largest size at which it
// fits along its side and takes at most 0.15 of the inner rectangle
// across it; the entries keep the rest, less a gap of half the title's
// size.
//
// Texts are drawn with the text attributes (setMiscTextAttr, else a
// PoMiscTextAttr node above), in valueFontName or titleFontName when these
// are not empty; valueAddString is appended to every entry text when
// valueAddStringVisibility is on.  A boxRatio that is not above 0 counts as
// 1, a titleFontSize that is not above 0 as automatic.  The background is filled in the colour
// of backgroundApp (black unless changed) behind the boxes, and the lines
// and texts stand in front of both.
class QUILLON_API PoLegend : public PoPlotwright {
    PO_KIT_ABSTRACT_HEADER(PoLegend);

    PO_KIT_PART_WITH_APPEARANCE_HEADER(background);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(backgroundBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(box);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(boxBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(title);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(valueText);

public:
    enum Position { POS_BOTTOM = 0, POS_TOP = 1, POS_RIGHT = 2, POS_LEFT = 3 };
    enum Visibility { VISIBILITY_OFF = 0, VISIBILITY_ON = 1 };
    enum TextPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3 };
    enum MarginType { REL_MARGIN = 0, FIXED_MARGIN = 1 };
    enum IncrementType { VERTICAL_INCREMENT = 0, HORIZONTAL_INCREMENT = 1 };

    SoSFEnum titleVisibility;
    SoSFEnum titlePosition;
    SoSFEnum titlePath;
    SoSFFloat titleFontSize;
    SoSFString titleFontName;
    SoSFString titleString;
    SoSFEnum valueVisibility;
    SoSFEnum valuePosition;
    SoSFString valueFontName;
    SoSFBool valueAddStringVisibility;
    SoSFString valueAddString;
    SoSFEnum marginType;
    SoSFFloat marginLeft;
    SoSFFloat marginRight;
    SoSFFloat marginBottom;
    SoSFFloat marginTop;
    SoSFEnum incrementType;
    SoSFUShort numColumns;
    SoSFFloat boxRatio;

protected:
    PoLegend();
    ~PoLegend() override;

    // A rectangle of the plane: its lower-left corner and its size.
    struct Rect {
        SbVec2f origin;
        float width = 0.0f, height = 0.0f;
        SbVec2f middle(void) const { return origin + 0.5f * SbVec2f(width, height); }
    };
    // A box of the entries: filled in a colour that runs from low to high
    // along x or y (equal colours for a plain box), or in the colour of the
    // box appearance when not coloured, or left empty; outlined or not.
    struct LegendBox {
        SbVec2f min, max;
        bool filled = true;
        bool colored = true;
        SbColor low = SbColor(0, 0, 0), high = SbColor(0, 0, 0);
        bool alongY = true;
        bool outlined = true;
    };
    // An entry text with its anchor and the side of the anchor it stands on.
    struct LegendText {
        SbString text;
        SbVec2f anchor;
        Position side;
    };

    // The start of every legend's rebuild: empties the parts, reads the
    // fields (setDefaultAttr), takes the rectangle between the corners,
    // orders the entries by the corners along the direction of increment,
    // draws the background and the title, and gives the room left for the
    // entries.  False when there is no legend to draw.
    bool drawFrame(const SbVec2f& corner1, const SbVec2f& corner2, Rect& room);
    // The fields the rebuild reads, checked: an unknown enumerated value
    // counts as its default (with a warning), a boxRatio that is not above
    // 0 as 1, and numColumns 0 as 1.
    virtual void setDefaultAttr(void);
    // The legend's rectangle from two opposite corners, in either order;
    // false, after posting why, when it has no area or a corner is not a
    // number.
    bool getLegendRect(const SbVec2f& corner1, const SbVec2f& corner2, Rect& rect) const;
    // The inner rectangle, within the margins.
    Rect computeMarginA(const Rect& rect) const;
    // The title's size and place within the inner rectangle; returns what
    // the entries keep.
    Rect computeTitleSizeA(const Rect& inner);
    void drawBackgroundA(const Rect& rect);
    void drawTitleA(void);
    // The filled boxes into box; the outlines of the outlined ones, and the
    // line segments given (pairs of ends), into boxBorder.
    void drawBoxesLegendBoxesA(const std::vector<LegendBox>& boxes,
                               const std::vector<SbVec3f>& segments = {});
    // The entry texts at that size into valueText, which is returned (null
    // when nothing is drawn).
    SoGroup* drawValuesLegendBoxesA(const std::vector<LegendText>& texts, float size);

    // An entry text as drawn: the added string appended when visible.
    SbString makeValueString(const SbString& text) const;
    // The text builder of the entry texts at that size.
    PiText makeValueText(float size);
    // Empties the parts that the rebuild fills.
    void clearLegendParts(void);
    void setDefaultOnNonWritingFields(void) override;
    // Names parts of the kit's own that rebuilds fill, with their
    // separators: they are emptied by clearLegendParts and not written.
    void addGeneratedParts(std::initializer_list<const char*> parts);

    // Entries are placed in the reverse of their natural order when first
    // is above last: the corners given along the direction of increment.
    void setRevertOrder(float first, float last) { m_revertOrder = first > last; }
    bool isRevertOrder(void) const { return m_revertOrder; }

    // The checked values of the last setDefaultAttr.
    struct LegendAttr {
        int titleVisibility, titlePosition, titlePath;
        int valueVisibility, valuePosition;
        int marginType, incrementType;
        int numColumns;
        float boxRatio;
        float deltaX;
        SbString titleFontName, valueFontName;
    };
    LegendAttr m_attr;

private:
    SbVec2f titleExtent(const PiText& text) const;

    bool m_revertOrder = false;
    std::vector<const char*> m_generatedParts;
    // Where the title goes, set by computeTitleSizeA.
    SbVec2f m_titleAnchor;
    float m_titleSize = 0.0f;
};
