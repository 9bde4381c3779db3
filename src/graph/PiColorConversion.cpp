#include <Quillon/graph/PiColorConversion.h>

#include <algorithm>
#include <cmath>

namespace {
// One RGB channel of the double-hexcone model: the channel's hue is the
// colour's hue shifted by a third of the circle for red and blue.
float hueChannel(float low, float high, float hue) {
    hue = std::fmod(hue, 360.0f);
    if (hue < 0)
        hue += 360;
    if (hue < 60)
        return low + (high - low) * hue / 60;
    if (hue < 180)
        return high;
    if (hue < 240)
        return low + (high - low) * (240 - hue) / 60;
    return low;
}
} // namespace

void PiColorConversion::rgbToHls(const SbColor& rgb, float hls[3]) {
    const float r = rgb[0], g = rgb[1], b = rgb[2];
    const float high = std::max({r, g, b});
    const float low = std::min({r, g, b});
    const float lightness = (high + low) / 2;
    hls[0] = 0;
    hls[1] = lightness;
    hls[2] = 0;
    if (high == low)
        return;
    const float range = high - low;
    hls[2] = lightness <= 0.5f ? range / (high + low) : range / (2 - high - low);
    float hue;
    if (r == high)
        hue = (g - b) / range;
    else if (g == high)
        hue = 2 + (b - r) / range;
    else
        hue = 4 + (r - g) / range;
    hue *= 60;
    hls[0] = hue < 0 ? hue + 360 : hue;
}

SbColor PiColorConversion::hlsToRgb(const float hls[3]) {
    const float hue = hls[0], lightness = hls[1], saturation = hls[2];
    if (saturation == 0)
        return SbColor(lightness, lightness, lightness);
    const float high = lightness <= 0.5f ? lightness * (1 + saturation)
                                         : lightness + saturation - lightness * saturation;
    const float low = 2 * lightness - high;
    return SbColor(hueChannel(low, high, hue + 120), hueChannel(low, high, hue),
                   hueChannel(low, high, hue - 120));
}
