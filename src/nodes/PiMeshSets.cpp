#include "nodes/PiMeshSets.h"

#include <algorithm>
#include <functional>

namespace {
// PbMesh finds a set by its key but does not list the keys, so they are
// looked for: upwards from 0, where keys usually are, then downwards from
// -1, each way as far as kSearchedKeys, until count sets are found.  Sets
// under keys further out are not found.
const int kSearchedKeys = 1 << 20;

std::vector<int> findKeys(int count, const std::function<bool(int)>& exists) {
    std::vector<int> keys;
    for (int key = 0; key < kSearchedKeys && static_cast<int>(keys.size()) < count; ++key)
        if (exists(key))
            keys.push_back(key);
    std::vector<int> negative;
    for (int key = -1;
         key >= -kSearchedKeys && static_cast<int>(keys.size() + negative.size()) < count; --key)
        if (exists(key))
            negative.push_back(key);
    keys.insert(keys.begin(), negative.rbegin(), negative.rend());
    return keys;
}

// How to reach the sets of one kind; string sets have no binding and are
// per node.
template <typename T> struct SetKind {
    std::vector<int> (*keys)(const PbMesh&);
    const T* (PbMesh::*elements)(int) const;
    const SbString* (PbMesh::*name)(int) const;
    PbMesh::DataBinding (PbMesh::*binding)(int) const;
};

template <typename T> bool sameSetsOf(const PbMesh& a, const PbMesh& b, const SetKind<T>& kind) {
    const std::vector<int> keys = kind.keys(a);
    if (keys != kind.keys(b))
        return false;
    for (int key : keys) {
        const PbMesh::DataBinding binding =
            kind.binding ? (a.*kind.binding)(key) : PbMesh::PER_NODE;
        if ((kind.binding && (b.*kind.binding)(key) != binding) ||
            *(a.*kind.name)(key) != *(b.*kind.name)(key) ||
            !PiMeshSets::sameElements((a.*kind.elements)(key), (b.*kind.elements)(key),
                                      PiMeshSets::numValues(a, binding)))
            return false;
    }
    return true;
}
} // namespace

std::vector<int> PiMeshSets::valuesKeys(const PbMesh& mesh) {
    return findKeys(mesh.getNumValuesSet(), [&](int key) { return mesh.getValuesSet(key); });
}

std::vector<int> PiMeshSets::stringsKeys(const PbMesh& mesh) {
    return findKeys(mesh.getNumStringsSet(), [&](int key) { return mesh.getStringsSet(key); });
}

std::vector<int> PiMeshSets::vecsKeys(const PbMesh& mesh) {
    return findKeys(mesh.getNumVecsSet(), [&](int key) { return mesh.getVecsSet(key); });
}

int PiMeshSets::numValues(const PbMesh& mesh, PbMesh::DataBinding binding) {
    return binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells();
}

void PiMeshSets::copy(const PbMesh& from, PbMesh& to) {
    for (int key : valuesKeys(from))
        to.addValuesSet(key, from.getValuesSet(key), from.getValuesBinding(key),
                        *from.getValuesSetName(key));
    for (int key : stringsKeys(from))
        to.addStringsSet(key, from.getStringsSet(key), *from.getStringsSetName(key));
    for (int key : vecsKeys(from))
        to.addVecsSet(key, from.getVecsSet(key), from.getVecsBinding(key),
                      *from.getVecsSetName(key));
}

bool PiMeshSets::same(const PbMesh& a, const PbMesh& b) {
    return sameSetsOf(a, b,
                      SetKind<float>{&valuesKeys, &PbMesh::getValuesSet, &PbMesh::getValuesSetName,
                                     &PbMesh::getValuesBinding}) &&
           sameSetsOf(a, b,
                      SetKind<SbString>{&stringsKeys, &PbMesh::getStringsSet,
                                        &PbMesh::getStringsSetName, nullptr}) &&
           sameSetsOf(a, b,
                      SetKind<SbVec3f>{&vecsKeys, &PbMesh::getVecsSet, &PbMesh::getVecsSetName,
                                       &PbMesh::getVecsBinding});
}
