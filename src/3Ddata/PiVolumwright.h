#pragma once
#include <vector>

class PbIsovaluesList;

// Base of the contouring algorithms: the current isovalues list and the
// isovalue adjustment.  An isovalue equal to some node values exactly would
// make contours pass through those nodes and give degenerate pieces, so
// such isovalues are moved a little before contouring.  The representation
// kits adjust their isovalues with this same code.
class PiVolumwright {
public:
    PiVolumwright() = default;
    virtual ~PiVolumwright() = default;

    void setIsovaluesList(const PbIsovaluesList* list) { m_isovaluesList = list; }
    const PbIsovaluesList* getIsovaluesList() const { return m_isovaluesList; }

    // Moves iso when some of the n values equal it exactly (but not all):
    // by 1 % of the distance to the nearest other value, towards the larger
    // values when there are any and downwards otherwise.  When that step is
    // lost in the float's precision, the step grows by 1 % at a time up to
    // 10 %, and then the search starts again from the next nearest value.
    void adjustIsoval(int n, const float* values, float& iso);
    // The same over the union of three arrays (any may be empty).  Only the
    // first array's count is compared with the number of equal values when
    // deciding that all values equal the isovalue.
    void adjustIsovalMultiple(int n1, const float* values1, int n2, const float* values2, int n3,
                              const float* values3, float& iso);
    // Copies the current list's isovalues into the adjusted isovalues and
    // adjusts each against the three arrays.
    void adjustIsovalList(int n1, const float* values1, int n2 = 0, const float* values2 = nullptr,
                          int n3 = 0, const float* values3 = nullptr);

    // Whether the last adjustment moved an isovalue (for a list: any one).
    bool isIsovalAdjusted() const { return m_isovalAdjusted; }
    const float* getAdjustedIsovalues(int& count) const {
        count = m_numAdjusted;
        return m_adjusted.data();
    }

private:
    const PbIsovaluesList* m_isovaluesList = nullptr;
    std::vector<float> m_adjusted;
    int m_numAdjusted = 0;
    bool m_isovalAdjusted = false;
};
