#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoHistogram.h>

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>

// One series of values as one row of bars, a bar per value, each named by
// the name of the same index (names beyond the values are not shown).
// The value texts have the room of a whole cell.
class QUILLON_API PoSingleHistogram : public PoHistogram {
    PO_KIT_HEADER(PoSingleHistogram);

public:
    SoMFFloat value;
    SoMFString name;

    PoSingleHistogram();
    // A row from start to end of numValues bars; names may be null.
    PoSingleHistogram(const SbVec2f& start, float end, int numValues, const float* values,
                      const char** names = nullptr);

protected:
    ~PoSingleHistogram() override;

    void rebuild(void) override;

private:
    void init(const SbVec2f& start, float end, int numValues, const float* values,
              const char** names);
};
