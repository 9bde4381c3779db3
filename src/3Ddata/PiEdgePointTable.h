#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

// Open-addressing table from a mesh edge, given by its two node indices, to
// the index of the surface point on it.  Sized to the number of edges
// stored; clear() keeps the storage for the next surface.
class PiEdgePointTable {
public:
    // The point of the edge between node0 and node1 (in either order), or
    // -1 when the edge has none yet.
    int find(int node0, int node1) const;
    // Stores the point of an edge that has none yet.
    void insert(int node0, int node1, int point);
    void clear();
    size_t getMemorySize() const { return m_slots.capacity() * sizeof(Slot); }

private:
    struct Slot {
        uint64_t key;
        int point;
    };
    static constexpr uint64_t s_empty = ~uint64_t(0);

    static uint64_t keyOf(int node0, int node1);
    size_t slotOf(uint64_t key) const;
    void grow();

    std::vector<Slot> m_slots;
    size_t m_count = 0;
    // 64 - log2 of the slot count.
    int m_shift = 64;
};
