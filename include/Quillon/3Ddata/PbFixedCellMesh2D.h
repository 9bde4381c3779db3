#pragma once
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/SbString.h>

// Base of the unstructured surface meshes whose cells all have the same
// number of nodes (the triangle and quadrangle meshes): cells are given by
// that many node indices each, one cell after the other.
class QUILLON_API PbFixedCellMesh2D : public PbIndexedMesh2D {
public:
    // Refused with an error, leaving the mesh as it was, as for
    // PbIndexedMesh2D::setGeometry.
    void setGeometry(int numNodes, const float* x, const float* y, int numCells,
                     const int* cellIndices);
    void setGeometry(int numNodes, const float* x, const float* y, const float* z, int numCells,
                     const int* cellIndices);
    using PbIndexedMesh2D::getGeometry;
    void getGeometry(int& numNodes, const float*& x, const float*& y, const float*& z,
                     int& numCells, const int*& cellIndices) const;
    int getCellSize() const { return m_cellSize; }

protected:
    // className names the kind in error messages.
    PbFixedCellMesh2D(int isDataDuplicate, int cellSize, const char* className);

    bool acceptsCellSize(int numNodes) const override;

private:
    int m_cellSize;
    SbString m_setGeometryMethod;
};
