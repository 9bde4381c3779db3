#include "3Ddata/PiBandColors.h"

#include <Quillon/graph/PbDataMapping.h>

float PiBandColors::getBandValue(const float* isovalues, int numIsovalues, int band) {
    if (numIsovalues <= 0)
        return 0.0f;
    const int n = numIsovalues;
    if (n == 1)
        return isovalues[0];
    if (band <= 0)
        return isovalues[0] - (isovalues[1] - isovalues[0]) / 2.0f;
    if (band >= n)
        return isovalues[n - 1] + (isovalues[n - 1] - isovalues[n - 2]) / 2.0f;
    return (isovalues[band - 1] + isovalues[band]) / 2.0f;
}

PiBandColors::Color PiBandColors::getValueColor(const PbDataMapping& mapping, float value) {
    Color result;
    result.visible = mapping.getRGBColor(value, result.color, result.transparency);
    return result;
}

std::vector<PiBandColors::Color> PiBandColors::getBandColors(const PbDataMapping& mapping,
                                                             const float* isovalues,
                                                             int numIsovalues) {
    std::vector<Color> colors;
    for (int band = 0; band <= numIsovalues; ++band)
        colors.push_back(getValueColor(mapping, getBandValue(isovalues, numIsovalues, band)));
    return colors;
}
