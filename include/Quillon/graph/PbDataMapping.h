#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbColor.h>

#include <cstdio>

// Turns a scalar value into a colour and a transparency.  Values at or
// beyond an enabled threshold take that threshold's colour, or no colour at
// all (a null result: users leave such parts out) when the threshold has
// none; other values are coloured by the kind's rule.
//
// The colours that the pointer forms return point into the mapping and are
// overwritten by the next call on the same mapping.  The forms that fill a
// colour given by the caller keep nothing in the mapping, so several
// threads may colour with one mapping at once, as long as no one changes
// the mapping meanwhile (and, for function-based mappings, the user
// functions allow it).
class QUILLON_API PbDataMapping : public PbBase {
public:
    enum ClassType { LINEAR = 0, NON_LINEAR = 2, NON_LINEAR2 = 3 };

    PbDataMapping(const PbDataMapping&) = delete;
    PbDataMapping& operator=(const PbDataMapping&) = delete;

    const SbColor* getRGBColor(float value) const;
    const SbColor* getRGBColor(float value, float& transparency) const;
    // The colour of a value into color; FALSE, with color left as it was,
    // when the value has no colour.  The transparency is given either way.
    SbBool getRGBColor(float value, SbColor& color) const;
    SbBool getRGBColor(float value, SbColor& color, float& transparency) const;
    // The same colour as hue (degrees), lightness, saturation.
    const float* getHLSColor(float value) const;
    const float* getHLSColor(float value, float& transparency) const;

    // Thresholds notify only while enabled.  The form without a colour
    // makes values beyond the threshold colourless.
    void setMinThreshold(float value);
    void setMinThreshold(float value, const SbColor& color, float transparency = 0);
    void setMinThreshold(float value, const float hlsColor[3], float transparency = 0);
    void setMaxThreshold(float value);
    void setMaxThreshold(float value, const SbColor& color, float transparency = 0);
    void setMaxThreshold(float value, const float hlsColor[3], float transparency = 0);

    // Null when the threshold has no colour.
    const SbColor* getMinRGBThreshold(float& value) const;
    const SbColor* getMinRGBThreshold(float& value, float& transparency) const;
    const float* getMinHLSThreshold(float& value) const;
    const float* getMinHLSThreshold(float& value, float& transparency) const;
    const SbColor* getMaxRGBThreshold(float& value) const;
    const SbColor* getMaxRGBThreshold(float& value, float& transparency) const;
    const float* getMaxHLSThreshold(float& value) const;
    const float* getMaxHLSThreshold(float& value, float& transparency) const;

    void enableThresholds(int minEnabled, int maxEnabled);
    void thresholdsEnabled(int& minEnabled, int& maxEnabled) const;

    // Whether users apply the transparency that the mapping computes.
    void enableTransparency(int flag);
    int isTransparencyEnabled() const { return m_transparencyEnabled; }

    // Parts at or above this transparency are removed from generated
    // shapes.  Setting it does not notify.
    void setTransparencyValueDeletedParts(float transparency);
    float getTransparencyValueDeletedParts() const { return m_transparencyValueDeletedParts; }

    unsigned int getId() const { return m_id; }
    virtual ClassType getClassType() const { return LINEAR; }

    virtual void print(FILE* fp) const;

protected:
    PbDataMapping();

    // The colour of a value that no threshold caught, and its
    // transparency.  Called concurrently by the thread-safe forms: it keeps
    // nothing in the mapping.
    virtual SbColor computeColor(float value, float& transparency) const = 0;

    // Interpolates (and extrapolates) between two colours and transparencies
    // at two values; each channel and the transparency are clamped to
    // [0, 1].
    static SbColor interpolate(float value, float valueA, const SbColor& colorA,
                               float transparencyA, float valueB, const SbColor& colorB,
                               float transparencyB, float& transparency);
    void notifyChanged();

private:
    struct Threshold {
        float value;
        float transparency = 0;
        SbColor color = SbColor(0, 0, 0);
        int enabled = 0;
        int hasColor = 0;
    };

    const Threshold* catchingThreshold(float value) const;
    void setThreshold(Threshold& threshold, float value, const SbColor* color, float transparency);
    void setHlsThreshold(Threshold& threshold, const char* methodName, float value,
                         const float hlsColor[3], float transparency);
    const SbColor* getThreshold(const Threshold& threshold, float& value,
                                float& transparency) const;
    const float* toHls(const SbColor* color) const;
    static void printThreshold(FILE* fp, const char* name, const Threshold& threshold);

    float m_transparencyValueDeletedParts = 0.95f;
    mutable SbColor m_resultColor = SbColor(0, 0, 0);
    mutable float m_resultHls[3] = {0, 0, 0};
    int m_transparencyEnabled = 0;
    unsigned int m_id;
    Threshold m_min{0};
    Threshold m_max{1};
};
