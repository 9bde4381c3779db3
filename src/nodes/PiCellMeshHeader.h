#pragma once
#include <initializer_list>
#include <vector>

class PbFixedCellMesh2D;
class PbIndexedMesh2D;
class PbIndexedMesh3D;
class PbUnstructuredMesh3D;
class PiMeshSink;
class PiMeshSource;

// The header of an unstructured mesh: the number of nodes, their x and y
// coordinates and z (after the 2D/3D flag for a surface mesh), the number
// of cells, each cell's number of nodes (unless the mesh has cells of one
// kind) and the node indices of the cells one after the other.
class PiCellMeshHeader {
public:
    static void writeSurface(PiMeshSink& sink, const PbIndexedMesh2D& mesh);
    static bool readSurface(PiMeshSource& source, PbIndexedMesh2D& mesh);
    static void writeSurface(PiMeshSink& sink, const PbFixedCellMesh2D& mesh);
    static bool readSurface(PiMeshSource& source, PbFixedCellMesh2D& mesh);

    static void writeVolume(PiMeshSink& sink, const PbIndexedMesh3D& mesh);
    static bool readVolume(PiMeshSource& source, PbIndexedMesh3D& mesh);
    // A volume mesh of cells of cellSize nodes each, read with its
    // setGeometry for such cells.
    static void writeVolume(PiMeshSink& sink, const PbUnstructuredMesh3D& mesh, int cellSize);
    template <class Mesh> static bool readVolume(PiMeshSource& source, Mesh& mesh, int cellSize) {
        PiCellMeshHeader header;
        if (!header.read(source, false, cellSize, {}))
            return false;
        mesh.setGeometry(header.m_numNodes, header.x(), header.y(), header.z(), header.m_numCells,
                         header.m_cellIndices.data());
        return true;
    }

private:
    // Without a fixed cell size, the cell types are written.
    static void write(PiMeshSink& sink, bool surface, int numNodes, const float* x, const float* y,
                      const float* z, int numCells, int fixedCellSize, const int* cellTypes,
                      const int* cellIndices, int numIndices);
    static void writeVolume(PiMeshSink& sink, const PbUnstructuredMesh3D& mesh, int fixedCellSize,
                            const int* cellTypes);
    // Reads and checks the header; without a fixed cell size, each cell's
    // number of nodes is read and must be one of cellTypes.
    bool read(PiMeshSource& source, bool surface, int fixedCellSize,
              std::initializer_list<int> cellTypes);

    const float* x() const { return m_coords[0].data(); }
    const float* y() const { return m_coords[1].data(); }
    // Null for a surface mesh without z.
    const float* z() const { return m_hasZ ? m_coords[2].data() : nullptr; }

    int m_numNodes = 0;
    std::vector<float> m_coords[3];
    bool m_hasZ = false;
    int m_numCells = 0;
    std::vector<int> m_cellTypes;
    std::vector<int> m_cellIndices;
};
