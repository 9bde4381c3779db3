#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDataMapping.h>

// Colours values by interpolating between two (value, colour, transparency)
// points; values outside extrapolate and saturate channel by channel.  The
// default runs from black at 0 to white at 1, both opaque.
class QUILLON_API PbLinearDataMapping : public PbDataMapping {
public:
    PbLinearDataMapping();

    // The forms without transparencies make both transparencies 0.
    void setValues(float value1, const SbColor& color1, float value2, const SbColor& color2);
    void setValues(float value1, const SbColor& color1, float transparency1, float value2,
                   const SbColor& color2, float transparency2);
    void setValues(float value1, const float color1[3], float value2, const float color2[3]);
    void setValues(float value1, const float color1[3], float transparency1, float value2,
                   const float color2[3], float transparency2);

    void getValues(float& value1, SbColor& color1, float& value2, SbColor& color2) const;
    void getValues(float& value1, SbColor& color1, float& transparency1, float& value2,
                   SbColor& color2, float& transparency2) const;
    void getValues(float& value1, float color1[3], float& value2, float color2[3]) const;
    void getValues(float& value1, float color1[3], float& transparency1, float& value2,
                   float color2[3], float& transparency2) const;

    ClassType getClassType() const override { return LINEAR; }
    void print(FILE* fp) const override;

protected:
    SbColor computeColor(float value, float& transparency) const override;

private:
    float m_value1 = 0;
    float m_value2 = 1;
    SbColor m_color1 = SbColor(0, 0, 0);
    SbColor m_color2 = SbColor(1, 1, 1);
    float m_transparency1 = 0;
    float m_transparency2 = 0;
};
