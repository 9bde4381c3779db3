#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoLegend.h>

#include <Inventor/fields/SoSFVec2f.h>

class PbDataMapping;
class PbNumericDisplayFormat;

// Base of the value legends: a colour bar that shows a data mapping with
// its graduated values.
//
// The mapping is the kit's own (setDataMapping) or, without one, that of a
// PoDataMapping node above the kit; without any, only the background and
// the title are drawn.  The bar shows the values from minValue to maxValue
// when minValue is below maxValue, else the mapping's own range: value 1
// to value 2 of a linear mapping, the first to the last value of a
// piecewise one, 0 to 1 of a function-based one.  An enabled threshold
// within that range starts (or ends) the bar, and every enabled threshold
// is shown by a box beyond that end of the bar, in the threshold's colour,
// or empty when the threshold has none.  A mapping by levels
// (NON_LINEAR_PER_LEVEL) is shown as one box per level, all of one length,
// with the values between the levels written at their boundaries; any
// other mapping as a bar shaded continuously, graduated by the concrete
// legend's rule.
//
// The legend lies between the corners start and end.  With
// VERTICAL_INCREMENT the bar stands upright, its smallest value at the
// bottom, the values at its right (valuePosition POS_RIGHT, POS_TOP and
// POS_BOTTOM) or at its left (POS_LEFT); with HORIZONTAL_INCREMENT it lies
// along x, its smallest value at the left, the values below it (POS_BOTTOM,
// POS_RIGHT and POS_LEFT) or above it (POS_TOP).  Corners given in
// decreasing order along the bar turn it end for end.
//
// Sizes are in units of the value font size s: the bar is 0.975 * boxRatio
// thick and the threshold boxes 0.975 long, 0.325 beyond the bar's ends;
// ticks 0.325 long lead to the values, which stand 0.65 from the bar.  s is
// the largest size at which the values, 0.65 apart at least along the bar,
// and the bar fit the room inside the margins and the title; the bar and its
// values are centred across it.  When the number format divides the values
// by a power of ten, the factor "x10" with its exponent stands beyond the
// upper (or right) end of the bar.
//
// Values are written with the kit's number format (setFormat) or that of a
// PoNumericDisplayFormat node above the kit.  An empty range of values is
// reported and no bar is drawn.
class QUILLON_API PoValueLegend : public PoLegend {
    PO_KIT_ABSTRACT_HEADER(PoValueLegend);

public:
    SoSFVec2f start;
    SoSFVec2f end;
    SoSFFloat minValue;
    SoSFFloat maxValue;

    // A data mapping used in place of the traversal state's; null goes back
    // to the state's.  The kit connects to it but does not own it.
    void setDataMapping(PbDataMapping* mapping);
    PbDataMapping* getDataMapping(void) const { return m_mapping; }
    // A number format used in place of the traversal state's; null goes
    // back to the state's.  The kit connects to it but does not own it.
    void setFormat(PbNumericDisplayFormat* format);
    PbNumericDisplayFormat* getFormat(void) const { return m_format; }

    void basicObjectChange(PbBase* object) override;

protected:
    PoValueLegend();
    ~PoValueLegend() override;

    void rebuild(void) override;

    // The graduations of a continuous bar from min to max (min < max): their
    // values, ascending, with their texts, and the power of ten that the
    // texts leave out.
    virtual void computeGraduations(float min, float max, std::vector<float>& values,
                                    std::vector<SbString>& texts, int& tenPower) = 0;
    // The number format of the rebuild: the kit's, else the state's.
    const PbNumericDisplayFormat* getNumericFormat(void);

private:
    struct Bar;

    bool findRange(const PbDataMapping& mapping, float& min, float& max) const;
    bool collectValues(Bar& bar);
    void layOut(Bar& bar, const Rect& room);
    void addLevelBoxes(const Bar& bar, std::vector<LegendBox>& boxes) const;
    void addShadedBar(const Bar& bar, std::vector<LegendBox>& boxes) const;
    void addThresholdBoxes(const Bar& bar, std::vector<LegendBox>& boxes) const;
    void drawValues(const Bar& bar, std::vector<SbVec3f>& ticks);

    PbDataMapping* m_mapping = nullptr;
    PbNumericDisplayFormat* m_format = nullptr;
};
