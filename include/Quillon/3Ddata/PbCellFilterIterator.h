#pragma once
#include <Quillon/QuillonApi.h>

class PbMesh;
class PoCellFilter;

// Walks the cells of a mesh that a cell filter accepts.  Without a filter
// every cell is accepted; with one, the filter sees each cell's value from
// cellValues (indexed by cell), or 0 when there are no values.
//   for (int i = it.first(); i < mesh.getNumCells(); i = it.next()) ...
class QUILLON_API PbCellFilterIterator {
public:
    PbCellFilterIterator(const PbMesh* mesh, const PoCellFilter* filter = nullptr,
                         const float* cellValues = nullptr);

    // Returns the first accepted cell, or getNumCells() when there is none.
    int first();
    // Returns the next accepted cell, or getNumCells() when there is none.
    int next();

    int getCellIndex() const { return m_cellIndex; }

private:
    bool isAccepted(int cellIndex) const;
    int skipRejected();

    const PbMesh* m_mesh;
    const PoCellFilter* m_filter;
    const float* m_cellValues;
    int m_cellIndex = 0;
};
