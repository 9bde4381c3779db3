#pragma once
#include <Inventor/SbColor.h>

#include <vector>

class PbDataMapping;

// The colours of the bands between isovalues, for every representation
// that draws colour bands.  Of n ascending isovalues, band b lies between
// isovalue b - 1 and isovalue b; band 0 lies below the first isovalue and
// band n above the last.  A band takes the data mapping's colour (and
// transparency) of its middle value.  The two outer bands count as wide as
// the gap next to them, so band 0 takes the colour of
// iso[0] - (iso[1] - iso[0]) / 2; with a single isovalue both bands take
// the isovalue's own colour.
class PiBandColors {
public:
    struct Color {
        SbColor color = SbColor(0.0f, 0.0f, 0.0f);
        float transparency = 0.0f;
        // False when the mapping gives the value no colour (a threshold
        // without one): such parts are left out.
        bool visible = false;
    };

    // The value whose colour band b takes.
    static float getBandValue(const float* isovalues, int numIsovalues, int band);
    // The n + 1 band colours.
    static std::vector<Color> getBandColors(const PbDataMapping& mapping, const float* isovalues,
                                            int numIsovalues);
    static Color getValueColor(const PbDataMapping& mapping, float value);
};
