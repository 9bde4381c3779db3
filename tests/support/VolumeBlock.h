#pragma once
#include "support/TetBlock.h"

#include <random>
#include <vector>

// Test data: an n x n x n block of unit hexahedra (nodes as in TetBlock.h)
// filled with cells of one kind or a mix, every cell in the reference node
// order of its kind and every shared facet matching on both sides:
//   - HEXAHEDRA: the hexahedra themselves;
//   - TETRAHEDRA: six tetrahedra per hexahedron (TetBlock.h);
//   - PYRAMIDS: six pyramids per hexahedron, on its faces, with their apex
//     at a node added at its centre;
//   - WEDGES: two wedges per hexahedron, split along the diagonal plane
//     through its nodes 0, 2, 6 and 4;
//   - MIXED: columns of wedges, and hexahedra or six pyramids elsewhere.
// The cell types are the node counts, as PbIndexedMesh3D takes them.
namespace meshtest {

enum class BlockCells { HEXAHEDRA, TETRAHEDRA, PYRAMIDS, WEDGES, MIXED };

struct VolumeBlock : BlockNodes {
    int numNodes = 0;
    int numCells = 0;
    std::vector<int> types;
    std::vector<int> cells;

    void add(std::initializer_list<int> nodes) {
        types.push_back(static_cast<int>(nodes.size()));
        cells.insert(cells.end(), nodes);
        ++numCells;
    }
};

inline VolumeBlock makeVolumeBlock(int n, BlockCells kind, float jitter = 0.0f, unsigned seed = 1) {
    if (kind == BlockCells::TETRAHEDRA) {
        TetBlock tets = makeTetBlock(n, jitter, seed);
        VolumeBlock block;
        static_cast<BlockNodes&>(block) = tets;
        block.numNodes = tets.numNodes;
        block.numCells = tets.numCells;
        block.types.assign(tets.numCells, 4);
        block.cells = tets.cells;
        return block;
    }
    VolumeBlock block;
    static_cast<BlockNodes&>(block) = makeBlockNodes(n, jitter, seed);
    block.numNodes = static_cast<int>(block.x.size());
    std::mt19937 random(seed);
    static const int hexFacets[6][4] = {{0, 3, 7, 4}, {1, 5, 6, 2}, {0, 4, 5, 1},
                                        {3, 2, 6, 7}, {0, 1, 2, 3}, {4, 7, 6, 5}};
    int numHexahedra = 0;
    forEachBlockHexahedron(n, [&](const int* h) {
        int hexahedron = numHexahedra++, i = hexahedron / (n * n), j = hexahedron / n % n;
        BlockCells cellKind = kind;
        if (kind == BlockCells::MIXED)
            cellKind = (i + 2 * j) % 3 == 0 ? BlockCells::WEDGES
                       : random() % 2       ? BlockCells::HEXAHEDRA
                                            : BlockCells::PYRAMIDS;
        if (cellKind == BlockCells::HEXAHEDRA) {
            block.add({h[0], h[1], h[2], h[3], h[4], h[5], h[6], h[7]});
        } else if (cellKind == BlockCells::WEDGES) {
            block.add({h[0], h[1], h[2], h[4], h[5], h[6]});
            block.add({h[0], h[2], h[3], h[4], h[6], h[7]});
        } else {
            float centre[3] = {0, 0, 0};
            for (int c = 0; c < 8; ++c) {
                centre[0] += block.x[h[c]] / 8;
                centre[1] += block.y[h[c]] / 8;
                centre[2] += block.z[h[c]] / 8;
            }
            block.x.push_back(centre[0]);
            block.y.push_back(centre[1]);
            block.z.push_back(centre[2]);
            int apex = block.numNodes++;
            for (const auto& f : hexFacets)
                block.add({h[f[0]], h[f[1]], h[f[2]], h[f[3]], apex});
        }
    });
    return block;
}

} // namespace meshtest
