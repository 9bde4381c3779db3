#pragma once
#include <random>
#include <vector>

// Test and benchmark data: an n x n x n block of unit hexahedra, each split
// into six tetrahedra around its diagonal from node 0 to node 6 (the split
// matches across shared faces).  Nodes are numbered (i * (n + 1) + j) *
// (n + 1) + k, as the nodes of a grid.  With jitter > 0 the interior nodes
// are moved at random by up to jitter along each axis.
namespace meshtest {

struct BlockNodes {
    std::vector<float> x, y, z;
};

struct TetBlock : BlockNodes {
    int numNodes = 0;
    int numCells = 0;
    std::vector<int> cells;
};

inline BlockNodes makeBlockNodes(int n, float jitter = 0.0f, unsigned seed = 1) {
    BlockNodes nodes;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> move(-jitter, jitter);
    for (int i = 0; i <= n; ++i)
        for (int j = 0; j <= n; ++j)
            for (int k = 0; k <= n; ++k) {
                bool interior = i > 0 && j > 0 && k > 0 && i < n && j < n && k < n;
                bool moved = interior && jitter > 0.0f;
                nodes.x.push_back(i + (moved ? move(random) : 0.0f));
                nodes.y.push_back(j + (moved ? move(random) : 0.0f));
                nodes.z.push_back(k + (moved ? move(random) : 0.0f));
            }
    return nodes;
}

// Calls fn(hex) for every hexahedron (i, j, k) of the block, in that order,
// with its eight nodes in the hexahedron's local order.
template <class Fn> void forEachBlockHexahedron(int n, Fn fn) {
    int side = n + 1;
    auto node = [side](int i, int j, int k) { return (i * side + j) * side + k; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k) {
                const int hex[8] = {node(i, j, k),
                                    node(i + 1, j, k),
                                    node(i + 1, j + 1, k),
                                    node(i, j + 1, k),
                                    node(i, j, k + 1),
                                    node(i + 1, j, k + 1),
                                    node(i + 1, j + 1, k + 1),
                                    node(i, j + 1, k + 1)};
                fn(hex);
            }
}

inline TetBlock makeTetBlock(int n, float jitter = 0.0f, unsigned seed = 1) {
    TetBlock block;
    static_cast<BlockNodes&>(block) = makeBlockNodes(n, jitter, seed);
    int side = n + 1;
    static const int tets[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6},
                                   {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
    forEachBlockHexahedron(n, [&](const int* hex) {
        for (const auto& tet : tets)
            for (int local : tet)
                block.cells.push_back(hex[local]);
    });
    block.numNodes = side * side * side;
    block.numCells = 6 * n * n * n;
    return block;
}

} // namespace meshtest
