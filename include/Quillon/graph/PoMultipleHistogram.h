#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoHistogram.h>

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFShort.h>

// Several series of values over the same cells: numHistograms series of
// the same number of bars, given one after the other in value (series k's
// bar i is value[k * numBars + i], numBars being the number of values over
// numHistograms).  Each cell is named by the name of its index; each series
// takes the colour of its index in the colour list.
//
// Representations:
// - JUXTAPOSED: the bars of a cell stand side by side, series after series
//   from the start of the row, sharing the cell's bar width; each value
//   text has the room of its own bar.
// - ACCUMULATED: the bars of a cell are stacked, series after series from
//   the base line: values above the base line stack upwards and values
//   below it downwards, each on its own side, so that a stack always spans
//   the sums of its positive and of its negative values.  Values of 0 draw
//   nothing.  POS_DEPEND puts each value text at the centre of its part.
// - PERCENTAGE: the stacks of ACCUMULATED, each scaled so that it reaches
//   100 above the base line; a part shows its share of the cell's total in
//   percent (the added string can append a percent sign).  Shares are of
//   non-negative amounts: a negative value counts as 0, with a warning.
//   A cell whose values are all 0 draws nothing.
//
// Values that are not numbers leave their bar (or part) out, with a
// warning; values beyond the last whole series are not drawn, with a
// warning; a number of series below 1 draws nothing.
class QUILLON_API PoMultipleHistogram : public PoHistogram {
    PO_KIT_HEADER(PoMultipleHistogram);

public:
    enum Representation { JUXTAPOSED = 0, ACCUMULATED = 1, PERCENTAGE = 2 };

    SoSFShort numHistograms;
    SoMFFloat value;
    SoMFString name;
    SoSFEnum representation;

    PoMultipleHistogram();
    // numHistograms series of numBars values each, one series after the
    // other; names (numBars of them) may be null.
    PoMultipleHistogram(const SbVec2f& start, float end, int numHistograms, int numBars,
                        const float* values, const char** names = nullptr,
                        Representation representation = JUXTAPOSED);

protected:
    ~PoMultipleHistogram() override;

    void rebuild(void) override;

    // The bars and the names of the cells, for numBars cells of the row.
    void buildJuxtaposedHistog(const Row& row, int numBars, std::vector<Bar>& bars,
                               std::vector<Name>& names);
    void buildAccumulatedHistog(const Row& row, int numBars, std::vector<Bar>& bars,
                                std::vector<Name>& names);
    void buildPercentageHistog(const Row& row, int numBars, std::vector<Bar>& bars,
                               std::vector<Name>& names);

private:
    void init(const SbVec2f& start, float end, int numHistograms, int numBars, const float* values,
              const char** names, Representation representation);
    int countBars(void) const;
    // The values of a cell's bars, series after series; those that are not
    // numbers are reported and replaced by NaN.
    std::vector<float> cellValues(int cell, int numBars) const;
    void stack(const Row& row, int cell, const std::vector<float>& heights,
               const std::vector<float>& shown, std::vector<Bar>& bars,
               std::vector<Name>& names) const;
    void addName(int cell, const Bar& extent, std::vector<Name>& names) const;
};
