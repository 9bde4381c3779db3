#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <cstdio>
#include <vector>

// The ascending list of values at which isolines, isosurfaces and filled
// levels are drawn, regular (evenly spaced) or irregular.  The default
// list is 1, 2, ..., 10.
class QUILLON_API PbIsovaluesList : public PbBase {
public:
    PbIsovaluesList();
    PbIsovaluesList(float min, float max, int count);
    PbIsovaluesList(const PbIsovaluesList& other);
    PbIsovaluesList& operator=(const PbIsovaluesList& other);

    // Regular lists from two bounds need at least two values; the last
    // value is exactly the larger bound.
    void setRegularIsoList(int count);
    void setRegularIsoList(float min, float max);
    void setRegularIsoList(float min, float max, int count);
    // Bounds taken from the given values; count values, or isoCount.
    void setRegularIsoList(int count, const float* values);
    void setRegularIsoList(int count, const float* values, int isoCount);
    // start, start + step, ...  With a negative step the values are written
    // from the last index down to index 1 and the first value is 0.
    void setRegularIsoList(int count, float start, float step);
    // The values sorted ascending; the list is regular again when all gaps
    // are equal.  The step becomes the smallest gap.
    void setIrregularIsoList(int count, const float* values);

    const float* getIsoList(int& count, float& min, float& max, float& step, int& regular) const;

    // The number of isovalues strictly below the value, or the index of an
    // isovalue equal to it.
    int getIndex(float value) const;
    // The largest isovalue <= value, or -1e20 below the list.
    float getLowerIsovalue(float value) const;
    // The smallest isovalue >= value, or 1e20 above the list.
    float getUpperIsovalue(float value) const;

    void isoListDependsOnRep(int flag);
    int isIsoListDependsOnRep() const { return m_dependsOnRep; }

    void print(FILE* fp) const;

private:
    bool isValidList(const char* methodName, int count, const float* values) const;
    void regularFromBounds(float bound1, float bound2, int count);
    void storeRegular(float step);
    int regularIndex(float value) const;
    int irregularIndex(float value) const;

    float m_min = 1;
    float m_max = 10;
    std::vector<float> m_values;
    float m_step = 1;
    float m_smallestGap = 1;
    int m_dependsOnRep = 0;
    int m_regular = 1;
};
