#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoCartesianAxis.h>

class PbNumericDisplayFormat;

// An axis with evenly spaced graduations.
//
// The step is chosen automatically (about 5 to 10 graduations, steps of 1,
// 2, 3, 4 or 5 times a power of ten) unless the step field gives one; with
// GRAD_UNFIT graduations stand at whole multiples of the step, with
// GRAD_FIT they are counted from the first graduation limit.  Values are
// written with the number format of the kit (setFormat) or of the
// traversal state; when that format divides them by a power of ten, the
// power is shown as a multiplication factor "x10" with its exponent, beyond
// the start or the end of the axis (or both), on the graduation side at
// multFactorDistAxis from the axis (by default level with the graduation
// texts), or appended to every graduation text as "E3" with
// MULT_FACTOR_GRAD.
//
// Bad input is reported and drawn around: an axis whose start and end
// coordinates are equal, or with a coordinate or value that is not a
// number, draws nothing; a step that is not a number counts as automatic;
// a step that would make more than 5000 graduations draws only the first
// 5000.
class QUILLON_API PoLinearAxis : public PoCartesianAxis {
    PO_KIT_HEADER(PoLinearAxis);

    PO_KIT_PART_WITH_APPEARANCE_HEADER(multFactor);

public:
    enum GradFit { GRAD_FIT = 0, GRAD_UNFIT = 1 };
    enum MultFactorPosition {
        MULT_FACTOR_START = 0,
        MULT_FACTOR_END = 1,
        MULT_FACTOR_EXTR = 2,
        MULT_FACTOR_GRAD = 3
    };

    SoSFFloat step;
    SoSFEnum gradFit;
    SoSFEnum multFactorPosition;
    SoSFFloat multFactorDistAxis;

    PoLinearAxis();
    PoLinearAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type, float step = 0.0f);
    PoLinearAxis(const SbVec3f& start, float end, PoCartesianAxis::Type type, float gradStart,
                 float gradEnd, float step = 0.0f);

    // A number format used in place of the traversal state's; null goes
    // back to the state's.  The kit connects to it but does not own it.
    void setFormat(PbNumericDisplayFormat* format);
    PbNumericDisplayFormat* getFormat(void) const { return m_format; }

    // The step of the last rebuild, or the field before the first.
    float getStep(void) const;
    // The factor's position and relative distance of the last rebuild, or
    // the fields before the first.
    void getMultFactor(MultFactorPosition& position, float& distance) const;

    // The graduations between min and max: the step (kept when not 0, else
    // chosen from the range; its sign made that of max - min), the first
    // graduation and their count.
    static void getLinGrads(GradFit fit, float min, float max, float& firstGrad, float& step,
                            int& numGrad);
    static void getLinGradStep(float range, float& step);
    static void getLinGradFirstGrad(GradFit fit, float min, float max, float step, float& firstGrad,
                                    int& numGrad);

    void basicObjectChange(PbBase* object) override;

protected:
    ~PoLinearAxis() override;

    void rebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

private:
    void init(const SbVec3f& start, float end, PoCartesianAxis::Type type, float gradStart,
              float gradEnd, float step);
    bool hasValidInput(void) const;
    float getGradCoord(float value) const;
    float getGradValue(float coord) const;
    void computeCandidates(float firstLimit, float lastLimit, std::vector<SbString>& texts,
                           std::vector<float>& coords);
    SbString makeGradString(float value) const;
    void buildMultFactor(void);

    PbNumericDisplayFormat* m_format = nullptr;
    PiNumericFormat m_numericFormat;
    int m_multFactorPosition = MULT_FACTOR_END;
    float m_multFactorDistance = 0.0f;
    float m_startCoord = 0.0f;
    float m_endCoord = 1.0f;
    float m_step = 0.0f;
    float m_firstGrad = 0.0f;
};
