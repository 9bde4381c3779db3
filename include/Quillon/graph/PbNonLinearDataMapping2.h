#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDataMapping.h>

#include <memory>
#include <vector>

// Colours values piecewise from a list of values kept sorted ascending.
// NON_LINEAR_PER_LEVEL: the n values cut the axis into n + 1 levels with
// one colour each (level i covers value[i-1] <= v < value[i]).
// LINEAR_PER_LEVEL: n colours at the n values, interpolated in between and
// extrapolated (saturating) beyond the first and last intervals; a single
// value gives its colour everywhere.
class QUILLON_API PbNonLinearDataMapping2 : public PbDataMapping {
public:
    enum Type { NON_LINEAR_PER_LEVEL = 0, LINEAR_PER_LEVEL = 1 };
    // Hue (degrees), lightness, saturation.
    using HLSColor = float[3];

    PbNonLinearDataMapping2();

    // Colours count n + 1 for NON_LINEAR_PER_LEVEL and n for
    // LINEAR_PER_LEVEL, transparencies as many; without transparencies they
    // are 0.  Values may come in any order: each keeps its colour and
    // transparency when they are sorted.
    void setValues(Type type, int numValues, const float* values, const SbColor* colors);
    void setValues(Type type, int numValues, const float* values, const SbColor* colors,
                   const float* transparencies);
    void setValues(Type type, int numValues, const float* values, const HLSColor* colors);
    void setValues(Type type, int numValues, const float* values, const HLSColor* colors,
                   const float* transparencies);

    Type getType() const { return m_type; }
    const float* getValuesList(int& numValues) const;
    const SbColor* getRGBColorsList(int& numColors) const;
    // Converted on each call into a buffer of the mapping.
    const HLSColor* getHLSColorsList(int& numColors) const;
    const float* getTransparencyList(int& numTransparencies) const;

    ClassType getClassType() const override { return NON_LINEAR2; }
    void print(FILE* fp) const override;

protected:
    SbColor computeColor(float value, float& transparency) const override;

private:
    int colorCount(Type type, int numValues) const;
    bool isValidInput(Type type, int numValues, const float* values, const void* colors) const;
    std::vector<SbColor> toRgb(Type type, int numValues, const HLSColor* colors) const;
    void store(Type type, int numValues, const float* values, const SbColor* colors,
               const float* transparencies);
    void sortByValue();
    SbColor levelColor(float value, float& transparency) const;
    SbColor interpolatedColor(float value, float& transparency) const;

    Type m_type = LINEAR_PER_LEVEL;
    std::vector<float> m_values;
    std::vector<SbColor> m_colors;
    std::vector<float> m_transparencies;
    mutable std::unique_ptr<HLSColor[]> m_hlsColors;
};
