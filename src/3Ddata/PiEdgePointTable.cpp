#include "3Ddata/PiEdgePointTable.h"

#include <algorithm>

namespace {

const size_t s_initialSlots = 1024;

} // namespace

uint64_t PiEdgePointTable::keyOf(int node0, int node1) {
    auto lo = static_cast<uint32_t>(std::min(node0, node1));
    auto hi = static_cast<uint32_t>(std::max(node0, node1));
    return (uint64_t(lo) << 32) | hi;
}

// Fibonacci hashing: the high bits of the key times 2^64 / golden ratio.
size_t PiEdgePointTable::slotOf(uint64_t key) const {
    return static_cast<size_t>((key * 0x9E3779B97F4A7C15ull) >> m_shift);
}

int PiEdgePointTable::find(int node0, int node1) const {
    if (m_slots.empty())
        return -1;
    uint64_t key = keyOf(node0, node1);
    size_t mask = m_slots.size() - 1;
    for (size_t slot = slotOf(key);; slot = (slot + 1) & mask) {
        if (m_slots[slot].key == key)
            return m_slots[slot].point;
        if (m_slots[slot].key == s_empty)
            return -1;
    }
}

void PiEdgePointTable::insert(int node0, int node1, int point) {
    if (2 * (m_count + 1) > m_slots.size())
        grow();
    uint64_t key = keyOf(node0, node1);
    size_t mask = m_slots.size() - 1;
    size_t slot = slotOf(key);
    while (m_slots[slot].key != s_empty)
        slot = (slot + 1) & mask;
    m_slots[slot] = {key, point};
    ++m_count;
}

void PiEdgePointTable::clear() {
    std::fill(m_slots.begin(), m_slots.end(), Slot{s_empty, -1});
    m_count = 0;
}

void PiEdgePointTable::grow() {
    std::vector<Slot> old(std::max(s_initialSlots, 2 * m_slots.size()), Slot{s_empty, -1});
    old.swap(m_slots);
    for (m_shift = 64; size_t(1) << (64 - m_shift) < m_slots.size();)
        --m_shift;
    size_t mask = m_slots.size() - 1;
    for (const Slot& entry : old) {
        if (entry.key == s_empty)
            continue;
        size_t slot = slotOf(entry.key);
        while (m_slots[slot].key != s_empty)
            slot = (slot + 1) & mask;
        m_slots[slot] = entry;
    }
}
