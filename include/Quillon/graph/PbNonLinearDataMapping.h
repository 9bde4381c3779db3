#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDataMapping.h>

#include <Inventor/SbLinear.h>

// Colours values through user functions.  At most one colour function is
// active: setting one clears the others.  Without one, values run from
// black at 0 to white at 1 (saturating outside).  The transparency is that
// of the transparency function of the value if set, else of the one with
// user data if set, else 0.  The user data pointer is shared by the forms
// that take one.
class QUILLON_API PbNonLinearDataMapping : public PbDataMapping {
public:
    using RGBFunction = SbColor (*)(float value);
    using RGBFunctionWithData = SbColor (*)(void* userData, float value);
    // Return hue (degrees), lightness, saturation.
    using HLSFunction = SbVec3f (*)(float value);
    using HLSFunctionWithData = SbVec3f (*)(void* userData, float value);
    using TransparencyFunction = float (*)(float value);
    using TransparencyFunctionWithData = float (*)(void* userData, float value);

    PbNonLinearDataMapping();

    void setRGBFunction(RGBFunction function);
    void setRGBFunction(RGBFunctionWithData function, void* userData);
    void setHLSFunction(HLSFunction function);
    void setHLSFunction(HLSFunctionWithData function, void* userData);
    void setTransparencyFunction(TransparencyFunction function);
    void setTransparencyFunction(TransparencyFunctionWithData function, void* userData);

    ClassType getClassType() const override { return NON_LINEAR; }
    void print(FILE* fp) const override;

protected:
    SbColor computeColor(float value, float& transparency) const override;

private:
    // Makes the function the only colour function, with its user data.
    template <typename Function>
    void useColorFunction(Function& slot, Function function, void* userData) {
        clearColorFunctions();
        slot = function;
        m_userData = userData;
        notifyChanged();
    }
    void clearColorFunctions();
    SbColor colorOf(float value) const;
    float transparencyOf(float value) const;

    RGBFunction m_rgbFunction = nullptr;
    RGBFunctionWithData m_rgbFunctionWithData = nullptr;
    HLSFunction m_hlsFunction = nullptr;
    HLSFunctionWithData m_hlsFunctionWithData = nullptr;
    TransparencyFunction m_transparencyFunction = nullptr;
    TransparencyFunctionWithData m_transparencyFunctionWithData = nullptr;
    void* m_userData = nullptr;
};
