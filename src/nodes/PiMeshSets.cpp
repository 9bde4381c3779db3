#include "nodes/PiMeshSets.h"

#include <algorithm>

namespace {
// How to reach the sets of one kind; string sets have no binding and are
// per node.
template <typename T> struct SetKind {
    std::vector<int> (PbMesh::*keys)() const;
    const T* (PbMesh::*elements)(int) const;
    const SbString* (PbMesh::*name)(int) const;
    PbMesh::DataBinding (PbMesh::*binding)(int) const;
};

template <typename T> bool sameSetsOf(const PbMesh& a, const PbMesh& b, const SetKind<T>& kind) {
    const std::vector<int> keys = (a.*kind.keys)();
    if (keys != (b.*kind.keys)())
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

int PiMeshSets::numValues(const PbMesh& mesh, PbMesh::DataBinding binding) {
    return binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells();
}

void PiMeshSets::copy(const PbMesh& from, PbMesh& to) {
    for (int key : from.getValuesSetIndices())
        to.addValuesSet(key, from.getValuesSet(key), from.getValuesBinding(key),
                        *from.getValuesSetName(key));
    for (int key : from.getStringsSetIndices())
        to.addStringsSet(key, from.getStringsSet(key), *from.getStringsSetName(key));
    for (int key : from.getVecsSetIndices())
        to.addVecsSet(key, from.getVecsSet(key), from.getVecsBinding(key),
                      *from.getVecsSetName(key));
}

bool PiMeshSets::same(const PbMesh& a, const PbMesh& b) {
    return sameSetsOf(a, b,
                      SetKind<float>{&PbMesh::getValuesSetIndices, &PbMesh::getValuesSet,
                                     &PbMesh::getValuesSetName, &PbMesh::getValuesBinding}) &&
           sameSetsOf(a, b,
                      SetKind<SbString>{&PbMesh::getStringsSetIndices, &PbMesh::getStringsSet,
                                        &PbMesh::getStringsSetName, nullptr}) &&
           sameSetsOf(a, b,
                      SetKind<SbVec3f>{&PbMesh::getVecsSetIndices, &PbMesh::getVecsSet,
                                       &PbMesh::getVecsSetName, &PbMesh::getVecsBinding});
}
