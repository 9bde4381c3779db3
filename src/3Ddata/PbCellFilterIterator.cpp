#include <Quillon/3Ddata/PbCellFilterIterator.h>

#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/nodes/PoCellFilter.h>

PbCellFilterIterator::PbCellFilterIterator(const PbMesh* mesh, const PoCellFilter* filter,
                                           const float* cellValues)
    : m_mesh(mesh), m_filter(filter), m_cellValues(cellValues) {}

int PbCellFilterIterator::first() {
    m_cellIndex = 0;
    return skipRejected();
}

int PbCellFilterIterator::next() {
    ++m_cellIndex;
    return skipRejected();
}

bool PbCellFilterIterator::isAccepted(int cellIndex) const {
    if (!m_filter)
        return true;
    const float cellValue = m_cellValues ? m_cellValues[cellIndex] : 0.0f;
    return m_filter->acceptCell(cellIndex, cellValue);
}

int PbCellFilterIterator::skipRejected() {
    while (m_cellIndex < m_mesh->getNumCells() && !isAccepted(m_cellIndex))
        ++m_cellIndex;
    return m_cellIndex;
}
