#include <Quillon/nodes/PoIndexListFilter.h>

#include <algorithm>
#include <vector>

PO_NODE_SOURCE(PoIndexListFilter, PoMesh1DFilter)

PoIndexListFilter::PoIndexListFilter() {
    SO_NODE_CONSTRUCTOR(PoIndexListFilter);
    SO_NODE_ADD_EMPTY_MFIELD(index);
}

PoIndexListFilter::~PoIndexListFilter() = default;

PbArrayOfInt PoIndexListFilter::getFilteredIndices(int numNodes, const float*) const {
    std::vector<int> kept;
    for (int i = 0; i < index.getNum(); ++i)
        if (index[i] >= 0 && index[i] < numNodes)
            kept.push_back(index[i]);
    std::sort(kept.begin(), kept.end());
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    PbArrayOfInt indices;
    for (int i : kept)
        indices.add(i);
    return indices;
}
