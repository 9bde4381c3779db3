#include "nodes/PiCellMeshHeader.h"

#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

#include <Quillon/3Ddata/PbFixedCellMesh2D.h>
#include <Quillon/3Ddata/PbIndexedMesh3D.h>

namespace {
const char* const kNumNodes = "   # num nodes";
const char* const kNumCells = "   # num cells";
const char* const kCoordinates[3] = {"# x coordinates of mesh nodes",
                                     "# y coordinates of mesh nodes",
                                     "# z coordinates of mesh nodes"};
const char* const kCellTypes = "# cell's type";
const char* const kCellIndices = "# cell's indices";
} // namespace

void PiCellMeshHeader::write(PiMeshSink& sink, bool surface, int numNodes, const float* x,
                             const float* y, const float* z, int numCells, int fixedCellSize,
                             const int* cellTypes, const int* cellIndices, int numIndices) {
    sink.intLine({numNodes}, kNumNodes);
    sink.floatArray(kCoordinates[0], x, numNodes);
    sink.floatArray(kCoordinates[1], y, numNodes);
    if (surface)
        sink.zBlock(kCoordinates[2], z, numNodes);
    else
        sink.floatArray(kCoordinates[2], z, numNodes);
    sink.intLine({numCells}, kNumCells);
    if (fixedCellSize == 0)
        sink.intArray(kCellTypes, cellTypes, numCells);
    sink.intArray(kCellIndices, cellIndices, numIndices);
}

bool PiCellMeshHeader::read(PiMeshSource& source, bool surface, int fixedCellSize,
                            std::initializer_list<int> cellTypes) {
    if (!source.readSizes(kNumNodes, &m_numNodes, 1) ||
        !source.readFloatArray(kCoordinates[0], m_numNodes, m_coords[0]) ||
        !source.readFloatArray(kCoordinates[1], m_numNodes, m_coords[1]))
        return false;
    m_hasZ = true;
    if (surface ? !source.readZBlock(kCoordinates[2], m_numNodes, m_coords[2], m_hasZ)
                : !source.readFloatArray(kCoordinates[2], m_numNodes, m_coords[2]))
        return false;
    if (!source.readSizes(kNumCells, &m_numCells, 1))
        return false;
    long long numIndices = static_cast<long long>(m_numCells) * fixedCellSize;
    if (fixedCellSize == 0) {
        int sum = 0;
        if (!source.readCellTypes(kCellTypes, m_numCells, cellTypes, m_cellTypes, sum))
            return false;
        numIndices = sum;
    }
    return source.readCellIndices(kCellIndices, numIndices, m_numNodes, m_cellIndices);
}

void PiCellMeshHeader::writeSurface(PiMeshSink& sink, const PbIndexedMesh2D& mesh) {
    int numNodes, numCells;
    const float *x, *y, *z;
    const int *cellTypes, *cellIndices;
    mesh.getGeometry(numNodes, x, y, z, numCells, cellTypes, cellIndices);
    int numIndices = 0;
    for (int cell = 0; cell < numCells; ++cell)
        numIndices += mesh.getCellNumNodes(cell);
    write(sink, true, numNodes, x, y, z, numCells, 0, cellTypes, cellIndices, numIndices);
}

bool PiCellMeshHeader::readSurface(PiMeshSource& source, PbIndexedMesh2D& mesh) {
    PiCellMeshHeader header;
    if (!header.read(source, true, 0, {3, 4}))
        return false;
    if (header.m_hasZ)
        mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.z(), header.m_numCells,
                         header.m_cellTypes.data(), header.m_cellIndices.data());
    else
        mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.m_numCells,
                         header.m_cellTypes.data(), header.m_cellIndices.data());
    return true;
}

void PiCellMeshHeader::writeSurface(PiMeshSink& sink, const PbFixedCellMesh2D& mesh) {
    int numNodes, numCells;
    const float *x, *y, *z;
    const int* cellIndices;
    mesh.getGeometry(numNodes, x, y, z, numCells, cellIndices);
    write(sink, true, numNodes, x, y, z, numCells, mesh.getCellSize(), nullptr, cellIndices,
          numCells * mesh.getCellSize());
}

bool PiCellMeshHeader::readSurface(PiMeshSource& source, PbFixedCellMesh2D& mesh) {
    PiCellMeshHeader header;
    if (!header.read(source, true, mesh.getCellSize(), {}))
        return false;
    if (header.m_hasZ)
        mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.z(), header.m_numCells,
                         header.m_cellIndices.data());
    else
        mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.m_numCells,
                         header.m_cellIndices.data());
    return true;
}

void PiCellMeshHeader::writeVolume(PiMeshSink& sink, const PbUnstructuredMesh3D& mesh,
                                   int fixedCellSize, const int* cellTypes) {
    const float *x, *y, *z;
    int sizeX, sizeY, sizeZ;
    mesh.getCoordinates(x, y, z, sizeX, sizeY, sizeZ);
    const int numCells = mesh.getNumCells();
    int numIndices = 0;
    const int* cellIndices = numCells > 0 ? mesh.getCellNodeIndices(0, numIndices) : nullptr;
    for (int cell = 1; cell < numCells; ++cell) {
        int cellSize = 0;
        mesh.getCellNodeIndices(cell, cellSize);
        numIndices += cellSize;
    }
    write(sink, false, mesh.getNumNodes(), x, y, z, numCells, fixedCellSize, cellTypes, cellIndices,
          numIndices);
}

void PiCellMeshHeader::writeVolume(PiMeshSink& sink, const PbIndexedMesh3D& mesh) {
    writeVolume(sink, mesh, 0, mesh.getCellTypes());
}

void PiCellMeshHeader::writeVolume(PiMeshSink& sink, const PbUnstructuredMesh3D& mesh,
                                   int cellSize) {
    writeVolume(sink, mesh, cellSize, nullptr);
}

bool PiCellMeshHeader::readVolume(PiMeshSource& source, PbIndexedMesh3D& mesh) {
    PiCellMeshHeader header;
    if (!header.read(source, false, 0, {4, 5, 6, 8}))
        return false;
    mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.z(), header.m_numCells,
                     header.m_cellTypes.data(), header.m_cellIndices.data());
    return true;
}
