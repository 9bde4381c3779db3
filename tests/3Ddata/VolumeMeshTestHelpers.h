#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

// Helpers shared by the volume mesh tests.
namespace meshtest {

// Nodes and tetrahedra of an n x n x n block of unit hexahedra, each split
// into six tetrahedra around its diagonal from node 0 to node 6 (the split
// matches across shared faces).  With jitter > 0 the interior nodes are
// moved at random by up to jitter along each axis.
struct TetBlock {
    int numNodes = 0;
    int numCells = 0;
    std::vector<float> x, y, z;
    std::vector<int> cells;
};

inline TetBlock makeTetBlock(int n, float jitter = 0.0f, unsigned seed = 1) {
    TetBlock block;
    int side = n + 1;
    auto node = [side](int i, int j, int k) { return (i * side + j) * side + k; };
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> move(-jitter, jitter);
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j)
            for (int k = 0; k < side; ++k) {
                bool interior = i > 0 && j > 0 && k > 0 && i < n && j < n && k < n;
                float dx = 0, dy = 0, dz = 0;
                if (interior && jitter > 0.0f) {
                    dx = move(random);
                    dy = move(random);
                    dz = move(random);
                }
                block.x.push_back(i + dx);
                block.y.push_back(j + dy);
                block.z.push_back(k + dz);
            }
    static const int tets[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6},
                                   {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            for (int k = 0; k < n; ++k) {
                int hex[8] = {node(i, j, k),
                              node(i + 1, j, k),
                              node(i + 1, j + 1, k),
                              node(i, j + 1, k),
                              node(i, j, k + 1),
                              node(i + 1, j, k + 1),
                              node(i + 1, j + 1, k + 1),
                              node(i, j + 1, k + 1)};
                for (const auto& tet : tets)
                    for (int local : tet)
                        block.cells.push_back(hex[local]);
            }
    block.numNodes = side * side * side;
    block.numCells = 6 * n * n * n;
    return block;
}

// The first cell, in index order, that contains the point: what point
// location must find, computed by testing every cell.
inline int locateByTestingEveryCell(const PbMesh& mesh, const SbVec3f& point, float tolerance,
                                    SbVec3f& pcoord) {
    for (int c = 0; c < mesh.getNumCells(); ++c)
        if (mesh.getCell(c)->locatePoint(point, tolerance, pcoord))
            return c;
    return -1;
}

inline int locatedIndex(const PbCell* cell) {
    return cell ? cell->getIndex() : -1;
}

// Random points over the box enlarged by a margin, plus the points of a
// lattice of step 0.5 over the lattice box: on a block of unit cells these
// are the nodes, edge midpoints and face centres, where several cells meet.
inline std::vector<SbVec3f> probePoints(const SbBox3f& box, int count, unsigned seed,
                                        const SbBox3f& lattice) {
    std::mt19937 random(seed);
    SbVec3f lo = box.getMin(), hi = box.getMax();
    std::vector<SbVec3f> points;
    for (int n = 0; n < count; ++n) {
        SbVec3f p;
        for (int axis = 0; axis < 3; ++axis) {
            float margin = 0.1f * (hi[axis] - lo[axis]);
            std::uniform_real_distribution<float> along(lo[axis] - margin, hi[axis] + margin);
            p[axis] = along(random);
        }
        points.push_back(p);
    }
    SbVec3f first = lattice.getMin(), last = lattice.getMax();
    for (float i = first[0]; i <= last[0]; i += 0.5f)
        for (float j = first[1]; j <= last[1]; j += 0.5f)
            for (float k = first[2]; k <= last[2]; k += 0.5f)
                points.push_back(SbVec3f(i, j, k));
    return points;
}

// Point location, with a null, a positive and a negative tolerance, finds
// the cell and parametric coordinates that testing every cell finds.
// The lattice box defaults to the mesh's box.
inline void expectLocationAgreesWithTestingEveryCell(const PbMesh& mesh, unsigned seed,
                                                     int numRandomPoints = 300,
                                                     SbBox3f lattice = SbBox3f()) {
    SbBox3f box = mesh.getBoundingBox();
    if (lattice.isEmpty())
        lattice = box;
    for (float tolerance : {0.0f, 0.2f, -0.1f})
        for (const SbVec3f& p : probePoints(box, numRandomPoints, seed, lattice)) {
            SbVec3f expectedPcoord, pcoord;
            int expected = locateByTestingEveryCell(mesh, p, tolerance, expectedPcoord);
            const PbCell* found = mesh.findContainingCell(p, tolerance, pcoord);
            ASSERT_EQ(locatedIndex(found), expected)
                << "point " << p[0] << " " << p[1] << " " << p[2] << " tolerance " << tolerance;
            if (found) {
                EXPECT_EQ(pcoord, expectedPcoord);
            }
        }
}

inline std::string printed(const PbMesh& mesh) {
    FILE* fp = tmpfile();
    mesh.print(fp);
    std::string text(static_cast<size_t>(ftell(fp)), '\0');
    rewind(fp);
    size_t read = fread(&text[0], 1, text.size(), fp);
    fclose(fp);
    text.resize(read);
    return text;
}

} // namespace meshtest
