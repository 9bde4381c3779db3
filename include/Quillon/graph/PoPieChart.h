#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Inventor/SbLinear.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFShort.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

#include <utility>
#include <vector>

class PbNumericDisplayFormat;
class PiText;
class SoGroup;
class SoPickedPoint;

// Base of the pie charts: values shown as slices of a disc of the given
// radius, counterclockwise from +x in the order of the values.
//
// Slices.  Slices are numbered from 1 in the order of sliceValue; only
// those with a positive value are shown (negative values count as 0), each
// taking its share of the sum of the positive values.  With
// sliceGroupActive, slices smaller than sliceGroupMinValue (a percentage of
// that sum with PERCENTAGE, a value with ABSOLUTE) are gathered into one
// last slice named sliceGroupString, but only when there are at least two
// of them.  Slice k takes colour k - 1 of sliceColor (modulo the number of
// colours), the gathered slice the last colour.  The slices numbered in
// sliceToTranslateNumber are pulled out of the disc along their middle by
// the distance of the same index in sliceToTranslateValue (in the units of
// the radius).  Arcs are cut into steps of sliceAngleStep radians.  Each
// slice is outlined in sliceBorder.
//
// Annotations.  Each slice can show its name (sliceText), its value
// (written with the kit's number format, setFormat, or the traversal
// state's, chosen over all the values shown, with the power of ten that it
// divides by written after the number as "E6", and followed by the added
// string when its visibility is on) and its share ("25.0%"): inside the
// slice (intAnnot*) and outside it (extAnnot*), one line under the other
// in a box.  The boxes are drawn with the box parts' appearance (the
// kit starts them white, with black texts), over the slices.
// - Inside, the annotation is centred at intAnnotDistance from the slice's
//   centre along its middle (by default 0.6 radius), read horizontally
//   (HOR_INT_POS) or along the radius (RADIAL_INT_POS).  An annotation
//   that would cover one placed before it moves along its middle, and is
//   left out when no place inside the disc is free.
// - Outside, an arrow leads from the slice's rim outwards along its middle
//   by extAnnotDistance1, then sideways by extAnnotDistance2, and ends
//   extAnnotDistance3 from the box (by default 0.1, 0.15 and 0.04 radius).
//   RADIAL_EXT_POS puts the box at the end of the first leg, HOR_EXT_POS at
//   the end of the second; HOR_ALIGNED_EXT_POS aligns the boxes in a
//   column on each side of the disc, VERT_ALIGNED_EXT_POS in a row above
//   and below it, SQUARE_ALIGNED_EXT_POS along the four sides of a square
//   around it.  Boxes that would overlap are moved apart along their
//   column or row, as little as possible, and never cover the disc.  The
//   arrow's head points at the slice (arrowHeight long, arrowWidth wide).
// Alignment justifies the lines within an annotation: INWARDS_ALIGN toward
// the disc's centre, OUTWARDS_ALIGN away from it.
//
// Sizes.  Font sizes, distances and arrow sizes are relative to the
// domain's x extent; 0 gives a size proportional to the radius: fonts of
// 0.1 radius, arrow heads 0.06 radius long and 0.04 wide.
//
// Bad input is reported and drawn around: a radius or a centre that is not
// a positive number draws nothing; a value that is not a number counts as
// 0; translations of slices that do not exist or without a distance are
// ignored; an angle step that is not positive takes the default, and one
// that would cut a circle into more than 10000 steps is widened.
class QUILLON_API PoPieChart : public PoPlotwright {
    PO_KIT_ABSTRACT_HEADER(PoPieChart);

    PO_KIT_PART_WITH_APPEARANCE_HEADER(slice);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(sliceBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(extAnnotBox);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(extAnnotBoxBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(extAnnotText);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(extAnnotValue);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(extAnnotPercent);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(arrow);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(intAnnotBox);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(intAnnotBoxBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(intAnnotText);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(intAnnotValue);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(intAnnotPercent);

public:
    enum IntAnnotPosition { RADIAL_INT_POS = 0, HOR_INT_POS = 1 };
    enum ExtAnnotPosition {
        RADIAL_EXT_POS = 0,
        HOR_EXT_POS = 1,
        HOR_ALIGNED_EXT_POS = 2,
        VERT_ALIGNED_EXT_POS = 3,
        SQUARE_ALIGNED_EXT_POS = 4
    };
    enum Alignment {
        LEFT_ALIGN = 0,
        CENTER_ALIGN = 1,
        RIGHT_ALIGN = 2,
        INWARDS_ALIGN = 3,
        OUTWARDS_ALIGN = 4
    };
    enum PercentStatus { ABSOLUTE = 0, PERCENTAGE = 1 };

    // What getPickedSliceNumber answers for the slice of the gathered
    // small slices, and for a pick on none.
    static constexpr int GROUP_SLICE = 0;
    static constexpr int NO_SLICE = -1;

    SoSFFloat radius;
    SoMFString sliceText;
    SoMFFloat sliceValue;
    SoMFColor sliceColor;
    SoSFEnum intAnnotPosition;
    SoSFEnum intAnnotAlignment;
    SoSFBool intAnnotTextVisibility;
    SoSFBool intAnnotValueVisibility;
    SoSFBool intAnnotPercentVisibility;
    SoSFBool intAnnotAddStringVisibility;
    SoSFString intAnnotTextFontName;
    SoSFFloat intAnnotTextFontSize;
    SoSFString intAnnotValueFontName;
    SoSFFloat intAnnotValueFontSize;
    SoSFString intAnnotPercentFontName;
    SoSFFloat intAnnotPercentFontSize;
    SoSFString intAnnotAddString;
    SoSFFloat intAnnotDistance;
    SoSFEnum extAnnotPosition;
    SoSFEnum extAnnotAlignment;
    SoSFBool extAnnotTextVisibility;
    SoSFBool extAnnotValueVisibility;
    SoSFBool extAnnotPercentVisibility;
    SoSFBool extAnnotAddStringVisibility;
    SoSFString extAnnotTextFontName;
    SoSFFloat extAnnotTextFontSize;
    SoSFString extAnnotValueFontName;
    SoSFFloat extAnnotValueFontSize;
    SoSFString extAnnotPercentFontName;
    SoSFFloat extAnnotPercentFontSize;
    SoSFString extAnnotAddString;
    SoSFFloat extAnnotDistance1;
    SoSFFloat extAnnotDistance2;
    SoSFFloat extAnnotDistance3;
    SoSFBool arrowVisibility;
    SoSFFloat arrowHeight;
    SoSFFloat arrowWidth;
    SoSFBool sliceGroupActive;
    SoSFFloat sliceGroupMinValue;
    SoSFEnum sliceGroupFlagMin;
    SoSFString sliceGroupString;
    SoMFShort sliceToTranslateNumber;
    SoMFFloat sliceToTranslateValue;
    SoSFFloat sliceAngleStep;

    // A number format used in place of the traversal state's; null goes
    // back to the state's.  The kit connects to it but does not own it.
    void setFormat(PbNumericDisplayFormat* format);
    PbNumericDisplayFormat* getFormat(void) const { return m_format; }

    // Pulls slice sliceNumber (from 1) out by distance, or puts it back
    // with a distance of 0, editing the two translate lists.
    void setSliceToTranslate(short sliceNumber, float distance);
    // How far the slice is pulled out: 0 when it is not.
    float getSliceToTranslate(short sliceNumber) const;

    // The number (from 1) of the slice that a pick hit, on its slice, its
    // border, its annotations or its arrow; GROUP_SLICE for the gathered
    // slice; NO_SLICE when the pick hit none of them.  Valid until the next
    // rebuild.
    int getPickedSliceNumber(const SoPickedPoint* pickedPoint) const;

    void basicObjectChange(PbBase* object) override;

protected:
    PoPieChart();
    ~PoPieChart() override;

    // A slice shown: its number (GROUP_SLICE for the gathered one), value,
    // share in percent and texts.
    struct DisplayedSlice {
        int number;
        float value;
        float percent;
        SbString name, valueText, percentText;
    };
    // Where a shown slice lies in the plane of the disc: the centre it
    // turns about (pulled out or not) and its angles, counterclockwise from
    // +x.
    struct SliceGeometry {
        SbVec2f center;
        float startAngle, endAngle;
        float middle(void) const { return 0.5f * (startAngle + endAngle); }
    };
    // The fields as plain values, sizes in scene units with defaults
    // resolved.
    struct AnnotationAttr {
        int position, alignment;
        bool textVisible, valueVisible, percentVisible, addStringVisible;
        SbString textFont, valueFont, percentFont, addString;
        float textSize, valueSize, percentSize;
    };

    // Reads the fields into the working record; false (after posting why)
    // when the pie cannot be drawn.
    bool savePieChartAttr(void);
    // The slices to show, small ones gathered.
    void computeSlicePartValuesToDisplay(void);
    // The value and share texts of the slices shown.
    void computeStringsToDisplay(void);
    void computeSliceNames(void);
    // The translation distance of each slice shown, in scene units.
    std::vector<float> computeTranslations(void) const;
    // Annotations of the slices laid out as given, in the plane z = 0.
    void drawInternalAnnotations(const std::vector<SliceGeometry>& geometry);
    void drawExternalAnnotations(const std::vector<SliceGeometry>& geometry, const SbVec2f& center,
                                 float outerRadius);
    // Empties the parts that a rebuild fills and forgets the picked nodes.
    void resetAllPart(void);
    // Records that picking node means picking the slice shown at index.
    void recordPickable(const SoNode* node, int index);
    void setDefaultOnNonWritingFields(void) override;

    // The colour of a slice shown.
    SbColor getSliceColor(const DisplayedSlice& slice) const;
    // The arc step after checking the field.
    float getAngleStep(void) const;

    const std::vector<DisplayedSlice>& getDisplayedSlices(void) const { return m_slices; }
    float getRadius(void) const { return m_radius; }
    // Heights above the plane of the layers drawn over the slices.
    float getBorderOffset(void) const { return 0.0001f * m_radius; }
    float getBoxOffset(void) const { return 0.001f * m_radius; }
    float getTextOffset(void) const { return 0.0015f * m_radius; }

    // The part's group, made when missing.
    SoGroup* partGroup(const char* part);

private:
    struct Block;
    struct Placed;
    void readAnnotationAttr(bool internal, AnnotationAttr& attr) const;
    float sizeOf(const SoSFFloat& field, float defaultShare) const;
    Block makeBlock(bool internal, const DisplayedSlice& slice);
    std::vector<Placed> collectBlocks(bool internal, const std::vector<SliceGeometry>& geometry);
    void drawBlocks(const std::vector<Placed>& placed, bool internal);
    void drawArrows(const std::vector<Placed>& placed);

    PbNumericDisplayFormat* m_format = nullptr;
    std::vector<DisplayedSlice> m_slices;
    AnnotationAttr m_intAttr, m_extAttr;
    float m_radius = 1.0f;
    float m_unit = 1.0f;
    float m_distance1 = 0.0f, m_distance2 = 0.0f, m_distance3 = 0.0f;
    float m_arrowHeight = 0.0f, m_arrowWidth = 0.0f;
    // The nodes made for each slice shown, by its index.
    std::vector<std::pair<const SoNode*, int>> m_pickable;
};
