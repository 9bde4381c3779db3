#pragma once
#include <cstdint>
#include <vector>

// The whole cells of a grid (cells that lie in one band) as triangle strips:
// consecutive cells (i, j), (i, j + 1) ... of one band make one strip
// through the nodes (i, j), (i + 1, j), (i, j + 1), (i + 1, j + 1) ...,
// each strip ended by -1 and carrying its band.  This takes two or three
// indices a cell where faces take five.  Out receives the indices and the
// bands through push(value): a counter, a vector or a pointer.
template <typename Out> class PiBandStrips {
public:
    PiBandStrips(Out& coordIndex, Out& bands) : m_coordIndex(coordIndex), m_bands(bands) {}
    ~PiBandStrips() { end(); }
    PiBandStrips(const PiBandStrips&) = delete;
    PiBandStrips& operator=(const PiBandStrips&) = delete;

    // nodes: the cell's nodes (i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1).
    void addCell(int i, int j, const int nodes[4], int band) {
        if (!m_open || i != m_i || j != m_j + 1 || band != m_band) {
            end();
            m_coordIndex.push(nodes[0]);
            m_coordIndex.push(nodes[1]);
            m_bands.push(band);
            m_open = true;
            m_i = i;
            m_band = band;
        }
        m_coordIndex.push(nodes[3]);
        m_coordIndex.push(nodes[2]);
        m_j = j;
        ++m_numCells;
    }
    // Ends the current strip (a cell that is not whole breaks it).
    void end() {
        if (m_open)
            m_coordIndex.push(-1);
        m_open = false;
    }
    int getNumCells() const { return m_numCells; }

private:
    Out& m_coordIndex;
    Out& m_bands;
    bool m_open = false;
    int m_i = 0;
    int m_j = 0;
    int m_band = 0;
    int m_numCells = 0;
};

// Outputs for PiBandStrips.
struct PiCountOut {
    int count = 0;
    void push(int32_t) { ++count; }
};

struct PiVectorOut {
    std::vector<int32_t> values;
    void push(int32_t value) { values.push_back(value); }
};

struct PiPointerOut {
    int32_t* next;
    void push(int32_t value) { *next++ = value; }
};
