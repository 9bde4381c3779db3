#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoPieChart.h>

#include <Inventor/fields/SoSFVec2f.h>

// A flat pie chart in the plane z = 0 about center.
class QUILLON_API PoPieChart2D : public PoPieChart {
    PO_KIT_HEADER(PoPieChart2D);

public:
    SoSFVec2f center;

    PoPieChart2D();
    // numSlices slices of the values, named by the texts (which may be
    // null), in numColors colours (which may be null).
    PoPieChart2D(const SbVec2f& center, float radius, short numSlices, const char** sliceTexts,
                 const float* values, int numColors, const SbColor* colors);

protected:
    ~PoPieChart2D() override;

    void rebuild(void) override;

private:
    void init(const SbVec2f& center, float radius, short numSlices, const char** sliceTexts,
              const float* values, int numColors, const SbColor* colors);
    void buildSlice(const DisplayedSlice& slice, const SliceGeometry& geometry, float step,
                    int index);
};
