#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh.h>

#include "support/TetBlock.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

// Helpers shared by the volume mesh tests.
namespace meshtest {

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
