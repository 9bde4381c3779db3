#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoBaseAxis.h>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFUShort.h>

#include <vector>

class PiText;
class SoGroup;

// Base of the axes: what every axis draws and how it lays its graduations
// out.
//
// An axis is built in its own frame, along +X from its start to its end
// coordinate, with the "above" side toward +Y; concrete axes put that frame
// in place with the transform part.  Lengths and font sizes in the fields
// are relative: multiplied by the axis's unit length (the domain's extent
// along the axis direction; the X extent for an axis along X) they give
// scene units.  A relative size of 0 asks for a computed default.
//
// What is drawn, part by part:
// - body: the line from start to end; arrow: a filled triangle beyond the
//   end;
// - ticks: with TICK_GRAD_SIDE from the axis toward the graduation texts,
//   with TICK_GRAD_OTHER_SIDE away from them, with TICK_ACROSS_AXIS half
//   on each side; sub ticks likewise with their own length;
// - grid lines at every main (mainGradGrid) and sub (subGradGrid)
//   graduation, gridLengthGradSide long on the graduation side and
//   gridLengthGradOtherSide on the other: with the default 0 and 1 a
//   bottom axis draws its grid up across its domain;
// - graduation texts beside their ticks, their edge nearest to the axis at
//   gradDistAxis from it, centred on their graduation;
// - the title beyond the graduation texts, at the middle or at the end of
//   the axis.
//
// At every rebuild the fields are copied into a working record; DEPEND
// values are resolved there and computed sizes written back there, never
// into the fields, and the getters report the record.  An enumerated field
// holding an unknown value (from a scene file) is taken at its default,
// with a warning; a size that is not a number counts as 0.
class QUILLON_API PoAxis : public PoBaseAxis {
    PO_KIT_ABSTRACT_HEADER(PoAxis);

    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(body);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(arrow);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(title);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(subGradTick);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(subGradGrid);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(mainGradTick);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(mainGradGrid);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(mainGradText);

public:
    enum Visibility { VISIBILITY_OFF = 0, VISIBILITY_ON = 1, VISIBILITY_DEPEND = 2 };
    enum TextPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3, PATH_DEPEND = 4 };
    enum GradPosition { GRAD_ABOVE = 0, GRAD_BELOW = 1, GRAD_DEPEND = 2 };
    enum MarginType { REL_MARGIN = 0, FIXED_MARGIN = 1 };
    enum TickPosition { TICK_GRAD_SIDE = 0, TICK_GRAD_OTHER_SIDE = 1, TICK_ACROSS_AXIS = 2 };
    enum TitlePosition { TITLE_MIDDLE = 0, TITLE_END = 1, TITLE_DEPEND = 2 };
    enum TickSubDef { NUM_SUB_TICK = 0, PERIOD_MAIN_TICK = 1 };
    enum AxisReverse { AXIS_NO_REVERSE = 0, AXIS_REVERSE = 1, AXIS_REVERSE_DEPEND = 2 };

    SoSFEnum gradVisibility;
    SoSFEnum gradPosition;
    SoSFEnum gradPath;
    SoSFString gradFontName;
    SoSFFloat gradFontSize;
    SoSFFloat gradDistAxis;
    SoSFEnum gradAddStringVisibility;
    SoSFString gradAddString;
    SoSFEnum marginType;
    SoSFFloat marginStart;
    SoSFFloat marginEnd;
    SoSFEnum titleVisibility;
    SoSFEnum titlePosition;
    SoSFEnum titlePath;
    SoSFString titleFontName;
    SoSFFloat titleFontSize;
    SoSFFloat titleDistAxis;
    SoSFString titleString;
    SoSFEnum gridVisibility;
    SoSFFloat gridLengthGradSide;
    SoSFFloat gridLengthGradOtherSide;
    SoSFEnum arrowVisibility;
    SoSFFloat arrowHeight;
    SoSFFloat arrowLength;
    SoSFEnum tickVisibility;
    SoSFEnum tickPosition;
    SoSFFloat tickMainLength;
    SoSFFloat tickSubLength;
    SoSFEnum tickSubDef;
    SoSFUShort tickNumOrPeriod;
    SoSFUShort tickFirstGrad;
    SoSFUShort tickLastGrad;
    SoSFEnum reverseFlag;

    // The values of the last rebuild (the fields' values before the first).
    void getGrad(Visibility& visibility, GradPosition& position, TextPath& path, SbString& fontName,
                 float& fontSize, float& distAxis, Visibility& addStringVisibility,
                 SbString& addString) const;
    void getMargin(MarginType& type, float& start, float& end) const;
    void getTitle(Visibility& visibility, TitlePosition& position, TextPath& path,
                  SbString& fontName, float& fontSize, float& distAxis, SbString& string) const;
    void getGrid(Visibility& visibility, float& lengthGradSide, float& lengthGradOtherSide) const;
    void getArrow(Visibility& visibility, float& height, float& length) const;
    void getTick(Visibility& visibility, TickPosition& position, float& mainLength,
                 float& subLength, TickSubDef& subDef, int& numOrPeriod, int& firstGrad,
                 int& lastGrad) const;
    AxisReverse getReverseFlag(void) const;

    // Coordinates along the axis of the main and sub graduations of the
    // last rebuild.
    const std::vector<float>& getMainGradCoords(void) const { return m_mainGradCoords; }
    const std::vector<float>& getSubGradCoords(void) const { return m_subGradCoords; }

protected:
    PoAxis();
    ~PoAxis() override;

    // The working record: the fields as plain values, the text
    // attributes' line breaking and the domain's extents.
    struct AxisAttr {
        int gradVisibility, gradPosition, gradPath;
        SbString gradFontName;
        float gradFontSize, gradDistAxis;
        int gradAddStringVisibility;
        SbString gradAddString;
        int marginType;
        float marginStart, marginEnd;
        int titleVisibility, titlePosition, titlePath;
        SbString titleFontName;
        float titleFontSize, titleDistAxis;
        SbString titleString;
        int gridVisibility;
        float gridLengthGradSide, gridLengthGradOtherSide;
        int arrowVisibility;
        float arrowHeight, arrowLength;
        int tickVisibility, tickPosition;
        float tickMainLength, tickSubLength;
        int tickSubDef, tickNumOrPeriod, tickFirstGrad, tickLastGrad;
        int reverseFlag;
        char endLineChar;
        int lineLength;
        float deltaX, deltaY;
    };

    // The rebuild's steps, in the order a concrete axis calls them.
    virtual void saveAxisAttr(void);
    // Resolves the DEPEND values for an axis type (0 to 5, as
    // PoCartesianAxis::Type); any other type changes nothing.
    virtual void setDefaultAttr(int axisType);
    // The first and last coordinates where graduations may stand.
    virtual void computeGradLimit(float start, float end, float& firstLimit,
                                  float& lastLimit) const;
    virtual void computeTickLen(int numMainGrads);
    virtual void buildArrow(float start, float end);
    virtual void buildTick(void);
    virtual void buildGridLines(void);
    // The texts of the main graduations, beside their coordinates.
    virtual void buildGrads(const std::vector<SbString>& texts);

    // Splits the candidate graduations (coordinates along the axis and
    // their texts) into main graduations, which keep their texts, and sub
    // graduations, as tickSubDef says; subStep is the distance between two
    // candidates (0 when unknown).
    void computeGradList(float start, float end, float subStep, const std::vector<SbString>& texts,
                         const std::vector<float>& coords, std::vector<SbString>& mainTexts);
    void buildBody(float start, float end);
    void buildTitle(float start, float end);
    // The title with its anchor at that coordinate along the axis.
    void buildTitleP(float coordinate);
    // A power of ten, as "x10" and its exponent, beyond one end of the
    // axis: the extremity's coordinate, +1 or -1 for the direction away
    // from the axis, and the distance across the axis (scene units).
    void buildMultFactorAtExtr(SoGroup* group, float extremity, float outward, int tenPower,
                               float distance);

    // Scene units per relative unit: the concrete axis sets it before the
    // building steps.
    void setUnitLength(float length) { m_unitLength = length; }
    float getUnitLength(void) const { return m_unitLength; }
    // +1 when the graduations lie toward +Y of the axis's frame, else -1.
    float getGradSide(void) const;
    // Distance from the axis of the graduation texts' far edge (or of the
    // ticks when there are no texts), in scene units.
    float getGradFarEdge(void) const { return m_gradFarEdge; }
    // A text builder set up from the record (text attributes, line
    // breaking, mirroring) with that font, size and path, the texts on the
    // graduation side of their anchors.
    PiText makeAxisText(const SbString& fontName, float size, int path);
    void setDefaultOnNonWritingFields(void) override;
    // Empties the parts that a rebuild fills.
    void clearAxisParts(void);

    AxisAttr m_attr;

private:
    void readFieldsIntoRecord(void);
    float tickBoundOnGradSide(void) const;
    float fitGradFontSize(const std::vector<SbString>& texts);
    void buildLines(const char* part, const std::vector<float>& coords, float from, float to);

    std::vector<float> m_mainGradCoords;
    std::vector<float> m_subGradCoords;
    float m_unitLength = 1.0f;
    float m_gradFarEdge = 0.0f;
};
