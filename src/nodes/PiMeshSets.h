#pragma once
#include <Quillon/3Ddata/PbMesh.h>

#include <algorithm>
#include <cmath>
#include <vector>

// The value, string and vector sets of a mesh taken as a whole: their
// copies and comparison.
class PiMeshSets {
public:
    // Number of elements of a set of that binding on the mesh.
    static int numValues(const PbMesh& mesh, PbMesh::DataBinding binding);

    // Adds every set of from to to, under the same keys, names and bindings;
    // to must have the same numbers of nodes and cells.
    static void copy(const PbMesh& from, PbMesh& to);
    // True when both meshes have sets under the same keys with equal names,
    // bindings and elements.
    static bool same(const PbMesh& a, const PbMesh& b);

    // True when both arrays hold the same count elements; a missing array
    // equals only an empty one.  A NaN equals a NaN: both arrays mark the
    // same value missing.
    template <typename T> static bool sameElements(const T* a, const T* b, int count) {
        return count <= 0 || (a && b && std::equal(a, a + count, b, [](const T& x, const T& y) {
                                  return sameValue(x, y);
                              }));
    }

private:
    static bool sameValue(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }
    static bool sameValue(const SbVec3f& a, const SbVec3f& b) {
        return sameValue(a[0], b[0]) && sameValue(a[1], b[1]) && sameValue(a[2], b[2]);
    }
    template <typename T> static bool sameValue(const T& a, const T& b) { return a == b; }
};
