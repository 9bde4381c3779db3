#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFVec2f.h>

#include <vector>

class PbDataMapping;
class PbNumericDisplayFormat;
class PiText;
class SoMaterial;

// Base of the bar charts: a row of cells between start and end, one bar
// (or one group of bars) centred in each cell.
//
// The row.  With type X the row runs along x from start[0] to end and the
// bars stand on the base line y = start[1], up to their values (down for
// values below it); with type Y the row runs along y from start[1] to end
// and the bars lie along x from the base line x = start[0].  The row is cut
// into cells of equal width; an end before the start lays the cells out
// backwards.  The bars fill a cell less the space between bars: with
// REL_SPACE that space is barSpaceValue times the cell width, with
// FIXED_SPACE it is barSpaceValue itself; a space beyond the cell gives bars
// of width 0, a negative space counts as 0.
//
// Colours.  With COLOR_LIST the bars take the colours of color in turn
// (starting again at the first when there are fewer colours than bars);
// with DATA_MAPPING each bar takes the colour of its value in the kit's data
// mapping (setDataMapping) or the traversal state's, and a value without
// colour leaves its bar out.  Without any mapping the list is used.
//
// Texts.  Each bar can show its value, written with the kit's number
// format (setFormat) or the traversal state's, chosen over all the values
// shown (a power of ten that the format divides by is written after the
// number, as "E6"), and followed by valueAddString when
// valueAddStringVisibility is on; each cell can show its name.  A position puts a text outside
// (_OUT) or inside (_IN) one side of the bar, or at its centre; the sides are those of the drawing
// (POS_TOP_OUT is above the bar whatever its sign). POS_DEPEND puts values outside the value end of
// their bar (above a bar that rises, below one that falls, or at the centre of a stacked part) and
// names outside the base end of their bar.  PATH_DEPEND reads from left to
// right.  Font sizes are relative to the domain's x extent; 0 gives 0.04,
// made smaller when needed so that texts do not run into their neighbours'.
// The texts keep their proportions in a domain whose extents differ: the
// drawing is scaled back along the direction that the domain stretches.
//
// Bad input is reported and drawn around: a row whose start, end or base
// line is not a number, or whose end equals its start, draws nothing; a
// value that is not a number leaves its bar out; an unknown enumerated
// value falls back to the field's default.
class QUILLON_API PoHistogram : public PoPlotwright {
    PO_KIT_ABSTRACT_HEADER(PoHistogram);

    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(bar);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(valueText);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(nameText);

public:
    enum Type { X = 0, Y = 1 };
    enum Position {
        POS_TOP_OUT = 0,
        POS_TOP_IN = 1,
        POS_BOTTOM_OUT = 2,
        POS_BOTTOM_IN = 3,
        POS_RIGHT_OUT = 4,
        POS_RIGHT_IN = 5,
        POS_LEFT_OUT = 6,
        POS_LEFT_IN = 7,
        POS_CENTER = 8,
        POS_DEPEND = 9
    };
    enum Visibility { VISIBILITY_OFF = 0, VISIBILITY_ON = 1 };
    enum TextPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3, PATH_DEPEND = 4 };
    enum BarSpaceType { REL_SPACE = 0, FIXED_SPACE = 1 };
    enum Coloring { COLOR_LIST = 0, DATA_MAPPING = 1 };

    SoSFVec2f start;
    SoSFFloat end;
    SoSFEnum type;
    SoMFColor color;
    SoSFEnum coloring;
    SoSFEnum valueVisibility;
    SoSFEnum valuePosition;
    SoSFEnum valuePath;
    SoSFFloat valueFontSize;
    SoSFString valueFontName;
    SoSFEnum valueAddStringVisibility;
    SoSFString valueAddString;
    SoSFEnum nameVisibility;
    SoSFEnum namePosition;
    SoSFEnum namePath;
    SoSFFloat nameFontSize;
    SoSFString nameFontName;
    SoSFEnum barSpaceType;
    SoSFFloat barSpaceValue;

    // Objects used in place of the traversal state's; null goes back to
    // the state's.  The kit connects to them but does not own them.
    void setDataMapping(PbDataMapping* mapping);
    PbDataMapping* getDataMapping(void) const { return m_mapping; }
    void setFormat(PbNumericDisplayFormat* format);
    PbNumericDisplayFormat* getFormat(void) const { return m_format; }

    void basicObjectChange(PbBase* object) override;

protected:
    PoHistogram();
    ~PoHistogram() override;

    // A bar, in the coordinates of the data: from one coordinate to another
    // along the row, and from the base line to its end along the values.
    struct Bar {
        float rowFrom, rowTo;
        float valueFrom, valueTo;
        // Room across the bar for its value text, along the row.
        float room;
        // What its colour is taken from: the value for a data mapping, the
        // index in the colour list.
        float colorValue;
        int colorIndex;
        // The value shown, and whether the bar is part of a stack.
        float shownValue;
        bool stacked;
    };
    // A cell's name, beside the bars of its cell (their union).
    struct Name {
        Bar extent;
        SbString text;
    };
    // The cells of the row: where the first is centred, the signed
    // distance from one to the next, and the width of the bars.
    struct Row {
        float firstCenter;
        float pitch;
        float barWidth;
        // A bar in a cell: offset from the start side of the cell's bar
        // width, that wide, from one value to another; its room is its
        // width, its colour its cell's, and it shows valueTo.
        Bar makeBar(int cell, float offset, float width, float valueFrom, float valueTo) const;
    };

    // Reads the enumerations and resolves the DEPEND paths; positions are
    // resolved bar by bar.
    void setDefaultAttr(void);
    // The row of numCells cells, after checking start and end; false (after
    // posting why) when nothing can be drawn.
    bool computeRow(int numCells, Row& row);
    // The base line, along the values.
    float getBaseLine(void) const;
    // The type, as a valid value.
    Type getType(void) const { return static_cast<Type>(m_type); }

    // Builds the transform, the bars with their colours, the value texts and
    // the names.
    void buildBars(const std::vector<Bar>& bars, const std::vector<Name>& names);
    // A new material with one colour per bar; bars without colour are
    // dropped from the list.
    SoMaterial* colorBars(std::vector<Bar>& bars);
    // Where a text stands for a bar's rectangle in the drawing and a
    // position (POS_DEPEND resolved): its anchor and the side of the anchor.
    SbVec3f computeTextPos(const SbBox2f& rect, int position, float gap) const;
    // Sets the text up to stand on the side of its anchor that the position
    // says, along the path.
    static void computeTextAlignPath(PiText& text, int position, int path);

    // Empties the parts that a rebuild fills.
    void clearParts(void);
    void setDefaultOnNonWritingFields(void) override;

    // Posts a warning for the value at index that is not a number; true
    // when the value is one.
    bool checkValue(float value, int index) const;
    // "<class>::rebuild", for messages.
    SbString rebuildMethod(void) const;

private:
    SbBox2f toDrawing(const Bar& bar) const;
    int resolvePosition(int position, const Bar& bar, bool isName) const;
    SbMatrix drawingTransform(void) const;
    void buildValueTexts(const std::vector<Bar>& bars);
    void buildNameTexts(const std::vector<Name>& names);
    float fitFontSize(const SoSFFloat& field, const PiText& text,
                      const std::vector<SbString>& texts, const std::vector<float>& rooms) const;
    void buildTexts(const char* part, const SbString& fontName, const SoSFFloat& fontSize,
                    int position, int path, const std::vector<Bar>& rects,
                    const std::vector<SbString>& texts, bool isName);

    PbDataMapping* m_mapping = nullptr;
    PbNumericDisplayFormat* m_format = nullptr;
    PiNumericFormat m_numericFormat;
    int m_type = X;
    int m_valuePath = PATH_RIGHT;
    int m_namePath = PATH_RIGHT;
    // Drawing units per data unit along the y direction.
    float m_yScale = 1.0f;
    float m_barWidth = 0.0f;
};
