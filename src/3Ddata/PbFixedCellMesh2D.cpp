#include <Quillon/3Ddata/PbFixedCellMesh2D.h>

PbFixedCellMesh2D::PbFixedCellMesh2D(int isDataDuplicate, int cellSize, const char* className)
    : PbIndexedMesh2D(isDataDuplicate), m_cellSize(cellSize),
      m_setGeometryMethod(SbString(className) + "::setGeometry") {}

void PbFixedCellMesh2D::setGeometry(int numNodes, const float* x, const float* y, int numCells,
                                    const int* cellIndices) {
    setGeometry(numNodes, x, y, nullptr, numCells, cellIndices);
}

void PbFixedCellMesh2D::setGeometry(int numNodes, const float* x, const float* y, const float* z,
                                    int numCells, const int* cellIndices) {
    storeGeometry(m_setGeometryMethod.getString(), numNodes, x, y, z, numCells, nullptr, m_cellSize,
                  cellIndices);
}

void PbFixedCellMesh2D::getGeometry(int& numNodes, const float*& x, const float*& y,
                                    const float*& z, int& numCells, const int*& cellIndices) const {
    const int* cellTypes;
    getGeometry(numNodes, x, y, z, numCells, cellTypes, cellIndices);
}

bool PbFixedCellMesh2D::acceptsCellSize(int numNodes) const {
    return numNodes == m_cellSize;
}
