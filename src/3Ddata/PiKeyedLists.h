#pragma once
#include <cstddef>
#include <vector>

// Lists items under keys in compressed rows, by counting then filling: the
// items of key k are items[starts[k]] to items[starts[k + 1] - 1], in
// ascending item order.  Used for the owner cells of nodes and the cells of
// spatial buckets.
class PiKeyedLists {
public:
    // forEachKey(item, add) calls add(key) once for every key of the item.
    template <typename Start, typename ForEachKey>
    static void build(int numItems, size_t numKeys, ForEachKey forEachKey,
                      std::vector<Start>& starts, std::vector<int>& items) {
        starts.assign(numKeys + 1, 0);
        for (int item = 0; item < numItems; ++item)
            forEachKey(item, [&](size_t key) { ++starts[key + 1]; });
        for (size_t key = 0; key < numKeys; ++key)
            starts[key + 1] += starts[key];
        items.resize(starts[numKeys]);
        std::vector<Start> next(starts.begin(), starts.end() - 1);
        for (int item = 0; item < numItems; ++item)
            forEachKey(item, [&](size_t key) { items[next[key]++] = item; });
    }
};
