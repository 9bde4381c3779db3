#pragma once
#include "3Ddata/PiMarchingCase.h"

#include <memory>
#include <vector>

// The process-wide table of every marching case of one volume cell kind
// (2^numNodes entries), built from a few base cases by turns and
// complements.  init() is counted: the first call builds the table, later
// ones only count; finish() frees it when the count returns to 0.  A lookup
// before any init() builds the table on the spot.
class PiMarchingCaseTable {
public:
    // A base case: its id, its strips (edge indices) and its optional
    // quadrangles (positions in the strips' list of cut points).
    struct BaseCase {
        unsigned char id;
        std::vector<int> strips;
        std::vector<int> optQuadPositions;
    };
    using Factory = std::unique_ptr<PiMarchingCase> (*)(unsigned char baseNumber, unsigned char id);

    // messagePrefix heads the "already set" message of addMC.
    PiMarchingCaseTable(int numNodes, const char* messagePrefix, Factory factory,
                        std::vector<BaseCase> baseCases);

    int init();
    void finish();
    bool isBuilt() const { return m_built; }

    const PiMarchingCase* get(unsigned char caseId);
    int getNumCases() const { return static_cast<int>(m_cases.size()); }
    // Cases handed to addMC since the table was last cleared.
    int getNumAdded() const { return m_numAdded; }

    // Stores a case under its id.  An id already set keeps its first case
    // and prints "<prefix>%3d : error caseId %3d already set !!!\n" with the
    // running count and the id; the count grows in either case.
    void addMC(std::unique_ptr<PiMarchingCase> mc);
    // Stores a case and its complement.
    void addMCBoth(std::unique_ptr<PiMarchingCase> mc);

private:
    void build();
    void clear();
    // Adds every turned form of the base case not yet in the table, turning
    // each new form again about X, Y and Z until no new id appears.
    void addTurns(const PiMarchingCase& baseCase);

    const char* m_messagePrefix;
    Factory m_factory;
    std::vector<BaseCase> m_baseCases;
    std::vector<std::unique_ptr<PiMarchingCase>> m_cases;
    int m_initCount = 0;
    int m_numAdded = 0;
    bool m_built = false;
};
