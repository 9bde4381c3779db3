#include "nodes/PiMeshRecord.h"

#include "nodes/PiMeshSets.h"

#include <Quillon/graph/PoDebugError.h>

#include <algorithm>

void PiMeshRecord::intLine(std::initializer_list<int> values, const char*) {
    m_items.emplace_back(Item::INT_LINE).ints = values;
}

void PiMeshRecord::floatLine(std::initializer_list<float> values, const char*) {
    m_items.emplace_back(Item::FLOAT_LINE).floats = values;
}

void PiMeshRecord::intArray(const char*, const int* values, int count) {
    Item& item = m_items.emplace_back(Item::INT_ARRAY);
    item.intArray = values;
    item.arrayCount = count;
}

void PiMeshRecord::floatArray(const char*, const float* values, int count) {
    Item& item = m_items.emplace_back(Item::FLOAT_ARRAY);
    item.floatArray = values;
    item.arrayCount = count;
}

void PiMeshRecord::floatList(const char*, std::initializer_list<float> values) {
    Item& item = m_items.emplace_back(Item::FLOAT_ARRAY);
    item.floats = values;
    item.arrayCount = static_cast<int>(values.size());
}

const PiMeshRecord::Item* PiMeshRecord::next(const char* comment, Item::Kind kind) {
    if (m_next < m_items.size() && m_items[m_next].kind == kind)
        return &m_items[m_next++];
    fail("the mesh's %s do not match", describe(comment));
    return nullptr;
}

namespace {
template <typename T> bool copyLine(const std::vector<T>& line, T* values, int count) {
    if (static_cast<int>(line.size()) != count)
        return false;
    std::copy(line.begin(), line.end(), values);
    return true;
}

template <typename T>
bool copyArray(const T* array, int arrayCount, int count, std::vector<T>& values) {
    if (arrayCount != count || (count > 0 && !array))
        return false;
    values.assign(array, array + count);
    return true;
}
} // namespace

bool PiMeshRecord::readIntLine(const char* comment, int* values, int count) {
    const Item* item = next(comment, Item::INT_LINE);
    return item && (copyLine(item->ints, values, count) ||
                    fail("the mesh's %s do not match", describe(comment)));
}

bool PiMeshRecord::readFloatLine(const char* comment, float* values, int count) {
    const Item* item = next(comment, Item::FLOAT_LINE);
    return item && (copyLine(item->floats, values, count) ||
                    fail("the mesh's %s do not match", describe(comment)));
}

bool PiMeshRecord::readIntArray(const char* comment, int count, std::vector<int>& values) {
    const Item* item = next(comment, Item::INT_ARRAY);
    return item && (copyArray(item->intArray, item->arrayCount, count, values) ||
                    fail("the mesh's %s do not match", describe(comment)));
}

bool PiMeshRecord::readFloatArray(const char* comment, int count, std::vector<float>& values) {
    const Item* item = next(comment, Item::FLOAT_ARRAY);
    return item && (copyArray(item->floatData(), item->arrayCount, count, values) ||
                    fail("the mesh's %s do not match", describe(comment)));
}

void PiMeshRecord::report(const SbString& message) {
    PoDebugError::post("PoSFMesh::setValue", "%s", message.getString());
}

bool PiMeshRecord::Item::operator==(const Item& other) const {
    if (kind != other.kind || arrayCount != other.arrayCount)
        return false;
    switch (kind) {
    case INT_LINE:
        return ints == other.ints;
    case FLOAT_LINE:
        return floats == other.floats;
    case INT_ARRAY:
        return PiMeshSets::sameElements(intArray, other.intArray, arrayCount);
    default:
        return PiMeshSets::sameElements(floatData(), other.floatData(), arrayCount);
    }
}

bool PiMeshRecord::operator==(const PiMeshRecord& other) const {
    return m_items == other.m_items;
}
