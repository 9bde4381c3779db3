#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoValueLegend.h>

// A value legend graduated as a linear axis is: evenly spaced graduations at
// whole multiples of the step, which is chosen automatically (about 5 to 10
// graduations, steps of 1, 2, 3, 4 or 5 times a power of ten) unless the
// step field gives one.
class QUILLON_API PoLinearValueLegend : public PoValueLegend {
    PO_KIT_HEADER(PoLinearValueLegend);

public:
    SoSFFloat step;

    PoLinearValueLegend();
    // The legend between two corners.
    PoLinearValueLegend(const SbVec2f& start, const SbVec2f& end);

protected:
    ~PoLinearValueLegend() override;

    void computeGraduations(float min, float max, std::vector<float>& values,
                            std::vector<SbString>& texts, int& tenPower) override;

private:
    void init(const SbVec2f& start, const SbVec2f& end);
};
