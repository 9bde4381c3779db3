#include "nodes/PiMeshGeometry.h"

#include "nodes/PiMeshSets.h"

#include <Quillon/3Ddata/PbHexahedronMesh3D.h>
#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/3Ddata/PbIrregularMesh1D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularMesh1D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

namespace {

template <typename T> bool sameArray(const T* a, const T* b, int count) {
    return PiMeshSets::sameElements(a, b, count);
}

// Both surfaces flat, or both with equal z.
bool sameZ(const PbMesh2D& a, const PbMesh2D& b) {
    const float* za = a.getZcoord();
    const float* zb = b.getZcoord();
    return (za == nullptr) == (zb == nullptr) && sameArray(za, zb, za ? a.getNumNodes() : 0);
}

// The sizes and coordinate arrays of a grid given by arrays
// (getGeometry(numX, numY, x, y, z)), one value per node or one per index
// along the axis.
struct Grid2DArrays {
    int numX = 0, numY = 0;
    const float *x = nullptr, *y = nullptr, *z = nullptr;

    template <class Grid> explicit Grid2DArrays(const Grid& grid) {
        grid.getGeometry(numX, numY, x, y, z);
    }
    bool same(const Grid2DArrays& other, bool perNode) const {
        const int numNodes = numX * numY;
        return numX == other.numX && numY == other.numY &&
               sameArray(x, other.x, perNode ? numNodes : numX) &&
               sameArray(y, other.y, perNode ? numNodes : numY);
    }
    void copyTo(PbGrid2D& grid) const {
        if (z)
            grid.setGeometry(numX, numY, x, y, z);
        else
            grid.setGeometry(numX, numY, x, y);
    }
};

template <class Grid> bool sameGrid2D(const Grid& a, const Grid& b, bool perNode) {
    return Grid2DArrays(a).same(Grid2DArrays(b), perNode) && sameZ(a, b);
}

struct Grid3DArrays {
    int numX = 0, numY = 0, numZ = 0;
    const float *x = nullptr, *y = nullptr, *z = nullptr;

    explicit Grid3DArrays(const PbGrid3D& grid) { grid.getGeometry(numX, numY, numZ, x, y, z); }
    bool same(const Grid3DArrays& other, bool perNode) const {
        const int numNodes = numX * numY * numZ;
        return numX == other.numX && numY == other.numY && numZ == other.numZ &&
               sameArray(x, other.x, perNode ? numNodes : numX) &&
               sameArray(y, other.y, perNode ? numNodes : numY) &&
               sameArray(z, other.z, perNode ? numNodes : numZ);
    }
};

// Nodes and cells of an unstructured volume mesh.
struct VolumeArrays {
    int numNodes = 0, numCells = 0, numIndices = 0;
    const float *x = nullptr, *y = nullptr, *z = nullptr;
    const int* cellIndices = nullptr;

    explicit VolumeArrays(const PbUnstructuredMesh3D& mesh) : numNodes(mesh.getNumNodes()) {
        int sizes[3];
        mesh.getCoordinates(x, y, z, sizes[0], sizes[1], sizes[2]);
        numCells = mesh.getNumCells();
        cellIndices = numCells > 0 ? mesh.getCellNodeIndices(0, numIndices) : nullptr;
        for (int cell = 1; cell < numCells; ++cell) {
            int cellSize = 0;
            mesh.getCellNodeIndices(cell, cellSize);
            numIndices += cellSize;
        }
    }
    bool same(const VolumeArrays& other) const {
        return numNodes == other.numNodes && numCells == other.numCells &&
               numIndices == other.numIndices && sameArray(x, other.x, numNodes) &&
               sameArray(y, other.y, numNodes) && sameArray(z, other.z, numNodes) &&
               sameArray(cellIndices, other.cellIndices, numIndices);
    }
};

template <class Mesh> void copyFixedCellVolume(const Mesh& from, Mesh& to) {
    const VolumeArrays arrays(from);
    to.setGeometry(arrays.numNodes, arrays.x, arrays.y, arrays.z, arrays.numCells,
                   arrays.cellIndices);
}

// The cells of a surface mesh: each one's number of nodes and all their
// node indices.
int numCellIndices(const PbIndexedMesh2D& mesh) {
    int numIndices = 0;
    for (int cell = 0; cell < mesh.getNumCells(); ++cell)
        numIndices += mesh.getCellNumNodes(cell);
    return numIndices;
}

} // namespace

bool PiMeshGeometry::same(const PbCartesianGrid2D& a, const PbCartesianGrid2D& b) {
    return sameGrid2D(a, b, true);
}

void PiMeshGeometry::copy(const PbCartesianGrid2D& from, PbCartesianGrid2D& to) {
    Grid2DArrays(from).copyTo(to);
}

bool PiMeshGeometry::same(const PbParalCartesianGrid2D& a, const PbParalCartesianGrid2D& b) {
    return sameGrid2D(a, b, false);
}

bool PiMeshGeometry::same(const PbPolarGrid2D& a, const PbPolarGrid2D& b) {
    return sameGrid2D(a, b, false);
}

void PiMeshGeometry::copy(const PbPolarGrid2D& from, PbPolarGrid2D& to) {
    Grid2DArrays(from).copyTo(to);
}

namespace {
struct RegularGrid2D {
    int numX = 0, numY = 0;
    float extent[4] = {0, 0, 0, 0};
    const float* z = nullptr;
    explicit RegularGrid2D(const PbRegularCartesianGrid2D& grid) {
        grid.getGeometry(numX, numY, extent[0], extent[1], extent[2], extent[3], z);
    }
};
} // namespace

bool PiMeshGeometry::same(const PbRegularCartesianGrid2D& a, const PbRegularCartesianGrid2D& b) {
    const RegularGrid2D ga(a), gb(b);
    return ga.numX == gb.numX && ga.numY == gb.numY && sameArray(ga.extent, gb.extent, 4) &&
           sameZ(a, b);
}

void PiMeshGeometry::copy(const PbRegularCartesianGrid2D& from, PbRegularCartesianGrid2D& to) {
    const RegularGrid2D grid(from);
    const float* e = grid.extent;
    if (grid.z)
        to.setGeometry(grid.numX, grid.numY, e[0], e[1], e[2], e[3], grid.z);
    else
        to.setGeometry(grid.numX, grid.numY, e[0], e[1], e[2], e[3]);
}

namespace {
struct SurfaceArrays {
    int numNodes = 0, numCells = 0;
    const float *x = nullptr, *y = nullptr, *z = nullptr;
    const int *cellTypes = nullptr, *cellIndices = nullptr;
    explicit SurfaceArrays(const PbIndexedMesh2D& mesh) {
        mesh.getGeometry(numNodes, x, y, z, numCells, cellTypes, cellIndices);
    }
};
} // namespace

bool PiMeshGeometry::same(const PbIndexedMesh2D& a, const PbIndexedMesh2D& b) {
    const SurfaceArrays sa(a), sb(b);
    const int numIndices = numCellIndices(a);
    return sa.numNodes == sb.numNodes && sa.numCells == sb.numCells &&
           numIndices == numCellIndices(b) && sameArray(sa.x, sb.x, sa.numNodes) &&
           sameArray(sa.y, sb.y, sa.numNodes) && sameZ(a, b) &&
           sameArray(sa.cellIndices, sb.cellIndices, numIndices) &&
           (!sa.cellTypes || !sb.cellTypes || sameArray(sa.cellTypes, sb.cellTypes, sa.numCells));
}

void PiMeshGeometry::copy(const PbIndexedMesh2D& from, PbIndexedMesh2D& to) {
    const SurfaceArrays s(from);
    if (s.z)
        to.setGeometry(s.numNodes, s.x, s.y, s.z, s.numCells, s.cellTypes, s.cellIndices);
    else
        to.setGeometry(s.numNodes, s.x, s.y, s.numCells, s.cellTypes, s.cellIndices);
}

void PiMeshGeometry::copy(const PbFixedCellMesh2D& from, PbFixedCellMesh2D& to) {
    const SurfaceArrays s(from);
    if (s.z)
        to.setGeometry(s.numNodes, s.x, s.y, s.z, s.numCells, s.cellIndices);
    else
        to.setGeometry(s.numNodes, s.x, s.y, s.numCells, s.cellIndices);
}

bool PiMeshGeometry::same(const PbCartesianGrid3D& a, const PbCartesianGrid3D& b) {
    return Grid3DArrays(a).same(Grid3DArrays(b), true);
}

void PiMeshGeometry::copy(const PbCartesianGrid3D& from, PbCartesianGrid3D& to) {
    const Grid3DArrays grid(from);
    to.setGeometry(grid.numX, grid.numY, grid.numZ, grid.x, grid.y, grid.z);
}

bool PiMeshGeometry::same(const PbParalCartesianGrid3D& a, const PbParalCartesianGrid3D& b) {
    return Grid3DArrays(a).same(Grid3DArrays(b), false);
}

namespace {
struct RegularGrid3D {
    int sizes[3] = {0, 0, 0};
    float extent[6] = {0, 0, 0, 0, 0, 0};
    explicit RegularGrid3D(const PbRegularCartesianGrid3D& grid) {
        grid.getDim(sizes[0], sizes[1], sizes[2]);
        grid.getMinMax(extent[0], extent[1], extent[2], extent[3], extent[4], extent[5]);
    }
};
} // namespace

bool PiMeshGeometry::same(const PbRegularCartesianGrid3D& a, const PbRegularCartesianGrid3D& b) {
    const RegularGrid3D ga(a), gb(b);
    return sameArray(ga.sizes, gb.sizes, 3) && sameArray(ga.extent, gb.extent, 6);
}

void PiMeshGeometry::copy(const PbRegularCartesianGrid3D& from, PbRegularCartesianGrid3D& to) {
    const RegularGrid3D grid(from);
    const float* e = grid.extent;
    to.setGeometry(grid.sizes[0], grid.sizes[1], grid.sizes[2], e[0], e[1], e[2], e[3], e[4], e[5]);
}

bool PiMeshGeometry::same(const PbIndexedMesh3D& a, const PbIndexedMesh3D& b) {
    return VolumeArrays(a).same(VolumeArrays(b)) &&
           sameArray(a.getCellTypes(), b.getCellTypes(), a.getNumCells());
}

void PiMeshGeometry::copy(const PbIndexedMesh3D& from, PbIndexedMesh3D& to) {
    const VolumeArrays arrays(from);
    to.setGeometry(arrays.numNodes, arrays.x, arrays.y, arrays.z, arrays.numCells,
                   from.getCellTypes(), arrays.cellIndices);
}

bool PiMeshGeometry::same(const PbTetrahedronMesh3D& a, const PbTetrahedronMesh3D& b) {
    return VolumeArrays(a).same(VolumeArrays(b));
}

void PiMeshGeometry::copy(const PbTetrahedronMesh3D& from, PbTetrahedronMesh3D& to) {
    copyFixedCellVolume(from, to);
}

bool PiMeshGeometry::same(const PbHexahedronMesh3D& a, const PbHexahedronMesh3D& b) {
    return VolumeArrays(a).same(VolumeArrays(b));
}

void PiMeshGeometry::copy(const PbHexahedronMesh3D& from, PbHexahedronMesh3D& to) {
    copyFixedCellVolume(from, to);
}

bool PiMeshGeometry::same(const PbIrregularMesh1D& a, const PbIrregularMesh1D& b) {
    int sizeA, sizeB;
    const float *xa, *xb;
    a.getGeometry(sizeA, xa);
    b.getGeometry(sizeB, xb);
    return sizeA == sizeB && sameArray(xa, xb, sizeA);
}

void PiMeshGeometry::copy(const PbIrregularMesh1D& from, PbIrregularMesh1D& to) {
    int size;
    const float* x;
    from.getGeometry(size, x);
    to.setGeometry(size, x);
}

bool PiMeshGeometry::same(const PbRegularMesh1D& a, const PbRegularMesh1D& b) {
    int sizes[2];
    float extents[2][2];
    a.getGeometry(sizes[0], extents[0][0], extents[0][1]);
    b.getGeometry(sizes[1], extents[1][0], extents[1][1]);
    return sizes[0] == sizes[1] && sameArray(extents[0], extents[1], 2);
}

void PiMeshGeometry::copy(const PbRegularMesh1D& from, PbRegularMesh1D& to) {
    int size;
    float xmin, xmax;
    from.getGeometry(size, xmin, xmax);
    to.setGeometry(size, xmin, xmax);
}
