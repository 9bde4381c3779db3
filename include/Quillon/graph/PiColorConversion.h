#pragma once
#include <Inventor/SbColor.h>
#include <Quillon/QuillonApi.h>

// Conversion between RGB and HLS colours (hue in degrees in [0, 360),
// lightness and saturation in [0, 1]), the double-hexcone model.  Data
// mappings and legends use it in both directions.
class QUILLON_API PiColorConversion {
public:
    static void rgbToHls(const SbColor& rgb, float hls[3]);
    // Any hue is accepted and taken modulo 360.
    static SbColor hlsToRgb(const float hls[3]);
};
