#pragma once
#include <Quillon/QuillonApi.h>

class PbMesh;

// Walks the cells of a mesh by index:
//   for (int i = it.first(); i < mesh.getNumCells(); i = it.next()) ...
class QUILLON_API PbCellIterator {
public:
    explicit PbCellIterator(const PbMesh* mesh) : m_mesh(mesh) {}

    // Restarts at cell 0 and returns 0.
    int first() {
        m_cellIndex = 0;
        return m_cellIndex;
    }
    // Moves to the next cell and returns its index.
    int next() { return ++m_cellIndex; }

    int getCellIndex() const { return m_cellIndex; }
    const PbMesh* getMesh() const { return m_mesh; }

private:
    const PbMesh* m_mesh;
    int m_cellIndex = 0;
};
