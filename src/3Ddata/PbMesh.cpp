#include <Quillon/3Ddata/PbMesh.h>

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiCellBoxIndex.h"

#include <algorithm>
#include <cfloat>
#include <map>
#include <new>

namespace {

unsigned int s_geometryIdCounter = 1;
unsigned int s_topologyIdCounter = 1;
unsigned int s_fltDataIdCounter = 1;
unsigned int s_vecDataIdCounter = 1;
unsigned int s_strDataIdCounter = 1;
unsigned int s_dataSetIdCounter = 1;

void drawId(unsigned int& id, unsigned int& counter) {
    id = counter++;
}

// One value, string or vector set.  A duplicating record owns its storage,
// whose capacity may exceed numValues after a set was replaced by a smaller
// one; a referencing record keeps the caller's pointer.
template <typename T> class SetRecord {
public:
    explicit SetRecord(int isDuplicate) : m_isDuplicate(isDuplicate) {}
    SetRecord(const SetRecord& other)
        : m_name(other.m_name), m_dataSetId(other.m_dataSetId), m_binding(other.m_binding),
          m_isDuplicate(other.m_isDuplicate), m_numValues(other.m_numValues),
          m_values(other.m_values) {
        if (m_isDuplicate && other.m_owned) {
            m_owned.reset(new T[other.m_capacity]);
            m_capacity = other.m_capacity;
            std::copy(other.m_owned.get(), other.m_owned.get() + m_numValues, m_owned.get());
            m_values = m_owned.get();
        }
    }
    SetRecord& operator=(const SetRecord&) = delete;

    // Returns false, keeping the record as it was, when storage cannot be had.
    bool store(const T* values, int count) {
        if (!m_isDuplicate) {
            m_values = values;
        } else {
            if (!m_owned || m_capacity < count) {
                T* storage = new (std::nothrow) T[std::max(count, 1)];
                if (!storage)
                    return false;
                m_owned.reset(storage);
                m_capacity = count;
            }
            std::copy(values, values + count, m_owned.get());
            m_values = m_owned.get();
        }
        m_numValues = count;
        drawId(m_dataSetId, s_dataSetIdCounter);
        return true;
    }

    SbString m_name;
    unsigned int m_dataSetId = 0;
    PbMesh::DataBinding m_binding = PbMesh::PER_NODE;
    int m_isDuplicate;
    int m_numValues = 0;
    const T* m_values = nullptr;

private:
    std::unique_ptr<T[]> m_owned;
    int m_capacity = 0;
};

template <typename T> using SetMap = std::map<int, SetRecord<T>>;

template <typename T> const SetRecord<T>* findSet(const SetMap<T>& sets, int setIndex) {
    auto found = sets.find(setIndex);
    return found == sets.end() ? nullptr : &found->second;
}

float magnitude(float value) {
    return value;
}
float magnitude(const SbVec3f& vec) {
    return vec.length();
}

// Scans the set with a strict comparison, starting from the first element.
template <typename T, typename Better>
int extremeOfSet(const SetMap<T>& sets, int setIndex, float& result, Better better) {
    const SetRecord<T>* set = findSet(sets, setIndex);
    if (!set || set->m_numValues < 1 || !set->m_values)
        return 0;
    float extreme = magnitude(set->m_values[0]);
    for (int i = 1; i < set->m_numValues; ++i) {
        float value = magnitude(set->m_values[i]);
        if (better(value, extreme))
            extreme = value;
    }
    result = extreme;
    return 1;
}

bool isLess(float a, float b) {
    return a < b;
}
bool isGreater(float a, float b) {
    return a > b;
}

// Returns whether a set was removed.
template <typename T> bool removePerCellSets(SetMap<T>& sets) {
    bool removed = false;
    for (auto it = sets.begin(); it != sets.end();) {
        bool perCell = it->second.m_binding != PbMesh::PER_NODE;
        removed |= perCell;
        it = perCell ? sets.erase(it) : std::next(it);
    }
    return removed;
}

void appendIfNew(PbArrayOfInt& list, int value) {
    if (list.find(value) < 0)
        list.add(value);
}

} // namespace

struct PbMesh::SetStore {
    SetMap<float> values;
    SetMap<SbString> strings;
    SetMap<SbVec3f> vecs;

    // Adds or replaces a set; posts an error under methodName and keeps the
    // sets as they were when a duplicating mesh gets no array or no memory.
    template <typename T>
    static bool add(SetMap<T>& sets, const char* methodName, const char* elements, int setIndex,
                    const T* values, DataBinding binding, const SbString& name, int count,
                    int isDuplicate) {
        if (isDuplicate && !values && count > 0) {
            PoDebugError::post(methodName, "set %d has no %s", setIndex, elements);
            return false;
        }
        auto found = sets.find(setIndex);
        bool isNew = found == sets.end();
        if (isNew)
            found = sets.emplace(setIndex, SetRecord<T>(isDuplicate)).first;
        if (!found->second.store(values, count)) {
            if (isNew)
                sets.erase(found);
            PoDebugError::post(methodName, "no memory for %d %s", count, elements);
            return false;
        }
        found->second.m_name = name;
        found->second.m_binding = binding;
        return true;
    }
};

PbMesh::PbMesh(int isDataDuplicate)
    : m_isDataDuplicate(isDataDuplicate), m_sets(std::make_unique<SetStore>()) {
    updateGeometryId();
    updateTopologyId();
}

PbMesh::PbMesh(const PbMesh& other)
    : PbBase(other), m_isDataDuplicate(other.m_isDataDuplicate), m_numNodes(other.m_numNodes),
      m_numCells(other.m_numCells), m_boundingBox(other.m_boundingBox),
      m_cellBoxesValid(other.m_cellBoxesValid), m_sets(std::make_unique<SetStore>(*other.m_sets)),
      m_smallestCellBox(other.m_smallestCellBox), m_biggestCellBox(other.m_biggestCellBox),
      m_smallestCellIndex(other.m_smallestCellIndex), m_biggestCellIndex(other.m_biggestCellIndex),
      m_geometryId(other.m_geometryId), m_topologyId(other.m_topologyId) {}

PbMesh& PbMesh::operator=(const PbMesh& other) {
    if (this == &other)
        return *this;
    m_isDataDuplicate = other.m_isDataDuplicate;
    m_numNodes = other.m_numNodes;
    m_numCells = other.m_numCells;
    m_boundingBox = other.m_boundingBox;
    m_cellBoxesValid = other.m_cellBoxesValid;
    m_sets = std::make_unique<SetStore>(*other.m_sets);
    m_smallestCellBox = other.m_smallestCellBox;
    m_biggestCellBox = other.m_biggestCellBox;
    m_smallestCellIndex = other.m_smallestCellIndex;
    m_biggestCellIndex = other.m_biggestCellIndex;
    m_geometryId = other.m_geometryId;
    m_topologyId = other.m_topologyId;
    m_cellIndex.reset();
    PbBase::operator=(other);
    return *this;
}

PbMesh::~PbMesh() {
    // What derives from the mesh is gone already: connected kits hear only of
    // its end (from the base), not of a half-destroyed mesh losing its sets,
    // which a kit that rebuilds at once would draw from.
    enableConnection(0);
    removeAllValuesSet();
    removeAllStringsSet();
    removeAllVecsSet();
}

void PbMesh::notify(ChangeType type) {
    setChangeType(type);
    notifyChange();
}

void PbMesh::geometryChanged(bool topologyChanged) {
    m_cellBoxesValid = 0;
    updateGeometryId();
    if (topologyChanged)
        updateTopologyId();
    notify(GEOMETRY);
}

void PbMesh::addValuesSet(int setIndex, const float* values, const SbString& name) {
    addValuesSet(setIndex, values, PER_NODE, name);
}

void PbMesh::addStringsSet(int setIndex, const SbString* strings, const SbString& name) {
    if (SetStore::add(m_sets->strings, "PbMesh::addStringsSet", "strings", setIndex, strings,
                      PER_NODE, name, m_numNodes, m_isDataDuplicate))
        notify(STRING_SETS);
}

void PbMesh::addVecsSet(int setIndex, const SbVec3f* vecs, const SbString& name) {
    addVecsSet(setIndex, vecs, PER_NODE, name);
}

void PbMesh::addValuesSet(int setIndex, const float* values, DataBinding binding,
                          const SbString& name) {
    if (SetStore::add(m_sets->values, "PbMesh::addValuesSet", "values", setIndex, values, binding,
                      name, numValuesFor(binding), m_isDataDuplicate))
        notify(VALUE_SETS);
}

void PbMesh::addVecsSet(int setIndex, const SbVec3f* vecs, DataBinding binding,
                        const SbString& name) {
    if (SetStore::add(m_sets->vecs, "PbMesh::addVecsSet", "vectors", setIndex, vecs, binding, name,
                      numValuesFor(binding), m_isDataDuplicate))
        notify(VECTOR_SETS);
}

int PbMesh::numValuesFor(DataBinding binding) const {
    return binding == PER_NODE ? m_numNodes : m_numCells;
}

const SbString* PbMesh::getValuesSetName(int setIndex) const {
    const SetRecord<float>* set = findSet(m_sets->values, setIndex);
    return set ? &set->m_name : nullptr;
}

const SbString* PbMesh::getStringsSetName(int setIndex) const {
    const SetRecord<SbString>* set = findSet(m_sets->strings, setIndex);
    return set ? &set->m_name : nullptr;
}

const SbString* PbMesh::getVecsSetName(int setIndex) const {
    const SetRecord<SbVec3f>* set = findSet(m_sets->vecs, setIndex);
    return set ? &set->m_name : nullptr;
}

const float* PbMesh::getValuesSet(int setIndex) const {
    const SetRecord<float>* set = findSet(m_sets->values, setIndex);
    return set ? set->m_values : nullptr;
}

const SbString* PbMesh::getStringsSet(int setIndex) const {
    const SetRecord<SbString>* set = findSet(m_sets->strings, setIndex);
    return set ? set->m_values : nullptr;
}

const SbVec3f* PbMesh::getVecsSet(int setIndex) const {
    const SetRecord<SbVec3f>* set = findSet(m_sets->vecs, setIndex);
    return set ? set->m_values : nullptr;
}

int PbMesh::removeValuesSet(int setIndex) {
    int removed = static_cast<int>(m_sets->values.erase(setIndex));
    notify(VALUE_SETS);
    return removed;
}

int PbMesh::removeStringsSet(int setIndex) {
    int removed = static_cast<int>(m_sets->strings.erase(setIndex));
    notify(STRING_SETS);
    return removed;
}

int PbMesh::removeVecsSet(int setIndex) {
    int removed = static_cast<int>(m_sets->vecs.erase(setIndex));
    notify(VECTOR_SETS);
    return removed;
}

void PbMesh::removeAllValuesSet() {
    m_sets->values.clear();
    notify(VALUE_SETS);
}

void PbMesh::removeAllStringsSet() {
    m_sets->strings.clear();
    notify(STRING_SETS);
}

void PbMesh::removeAllVecsSet() {
    m_sets->vecs.clear();
    notify(VECTOR_SETS);
}

void PbMesh::removeSetsNotFitting(int numNodes, int numCells) {
    if (!m_isDataDuplicate)
        return;
    if (numNodes != m_numNodes) {
        removeAllValuesSet();
        removeAllStringsSet();
        removeAllVecsSet();
    } else if (numCells != m_numCells) {
        if (removePerCellSets(m_sets->values))
            notify(VALUE_SETS);
        if (removePerCellSets(m_sets->vecs))
            notify(VECTOR_SETS);
    }
}

namespace {
template <typename T> std::vector<int> keysOf(const SetMap<T>& sets) {
    std::vector<int> keys;
    keys.reserve(sets.size());
    for (const auto& entry : sets)
        keys.push_back(entry.first);
    return keys;
}
} // namespace

std::vector<int> PbMesh::getValuesSetIndices() const {
    return keysOf(m_sets->values);
}
std::vector<int> PbMesh::getStringsSetIndices() const {
    return keysOf(m_sets->strings);
}
std::vector<int> PbMesh::getVecsSetIndices() const {
    return keysOf(m_sets->vecs);
}

int PbMesh::getNumValuesSet() const {
    return static_cast<int>(m_sets->values.size());
}
int PbMesh::getNumStringsSet() const {
    return static_cast<int>(m_sets->strings.size());
}
int PbMesh::getNumVecsSet() const {
    return static_cast<int>(m_sets->vecs.size());
}

int PbMesh::getMinValuesSet(int setIndex, float& min) const {
    return extremeOfSet(m_sets->values, setIndex, min, isLess);
}

int PbMesh::getMinVecsSet(int setIndex, float& min) const {
    return extremeOfSet(m_sets->vecs, setIndex, min, isLess);
}

int PbMesh::getMaxValuesSet(int setIndex, float& max) const {
    return extremeOfSet(m_sets->values, setIndex, max, isGreater);
}

int PbMesh::getMaxVecsSet(int setIndex, float& max) const {
    return extremeOfSet(m_sets->vecs, setIndex, max, isGreater);
}

PbMesh::DataBinding PbMesh::getValuesBinding(int setIndex) const {
    const SetRecord<float>* set = findSet(m_sets->values, setIndex);
    return set ? set->m_binding : PER_NODE;
}

PbMesh::DataBinding PbMesh::getVecsBinding(int setIndex) const {
    const SetRecord<SbVec3f>* set = findSet(m_sets->vecs, setIndex);
    return set ? set->m_binding : PER_NODE;
}

int PbMesh::getValuesSetSize(int setIndex) const {
    const SetRecord<float>* set = findSet(m_sets->values, setIndex);
    return set ? set->m_numValues : 0;
}

unsigned int PbMesh::getFltDataSetId(int setIndex) const {
    const SetRecord<float>* set = findSet(m_sets->values, setIndex);
    return set ? set->m_dataSetId : 0xFFFFFFFFu;
}

unsigned int PbMesh::getVecDataSetId(int setIndex) const {
    const SetRecord<SbVec3f>* set = findSet(m_sets->vecs, setIndex);
    return set ? set->m_dataSetId : 0xFFFFFFFFu;
}

unsigned int PbMesh::getStrDataSetId(int setIndex) const {
    const SetRecord<SbString>* set = findSet(m_sets->strings, setIndex);
    return set ? set->m_dataSetId : 0xFFFFFFFFu;
}

void PbMesh::getNodesOwnerCellsInd(const PbArrayOfInt& nodeIndices,
                                   PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndices.getNum() < 1)
        return;
    PbArrayOfInt firstOwners;
    getNodeOwnerCellsInd(nodeIndices[0], firstOwners);
    std::vector<PbArrayOfInt> otherOwners(nodeIndices.getNum() - 1);
    for (int n = 1; n < nodeIndices.getNum(); ++n)
        getNodeOwnerCellsInd(nodeIndices[n], otherOwners[n - 1]);
    for (int c = 0; c < firstOwners.getNum(); ++c) {
        int cell = firstOwners[c];
        bool ownedByAll = std::all_of(otherOwners.begin(), otherOwners.end(),
                                      [cell](const PbArrayOfInt& o) { return o.find(cell) >= 0; });
        if (ownedByAll)
            cellIndices.add(cell);
    }
}

void PbMesh::getAdjacentCellsIndByNode(int cellIndex, PbArrayOfInt& adjacentCells) const {
    adjacentCells.empty();
    const PbCell* cell = getCell(cellIndex);
    if (!cell)
        return;
    PbArrayOfInt nodes;
    cell->getNodesIndex(nodes);
    PbArrayOfInt owners;
    for (int n = 0; n < nodes.getNum(); ++n) {
        getNodeOwnerCellsInd(nodes[n], owners);
        for (int o = 0; o < owners.getNum(); ++o)
            if (owners[o] != cellIndex)
                appendIfNew(adjacentCells, owners[o]);
    }
}

void PbMesh::getAdjacentCellsIndByFacet(int cellIndex, PbArrayOfInt& adjacentCells) const {
    adjacentCells.empty();
    const PbCell* cell = getCell(cellIndex);
    if (!cell)
        return;
    // Facet node lists first: the cell object is refilled by later getCell calls.
    std::vector<PbArrayOfInt> facets(cell->getNumFacets());
    for (size_t f = 0; f < facets.size(); ++f)
        cell->getNodesIndexOfFacet(static_cast<int>(f), facets[f]);
    PbArrayOfInt owners;
    for (const PbArrayOfInt& facet : facets) {
        getNodesOwnerCellsInd(facet, owners);
        for (int o = 0; o < owners.getNum(); ++o)
            if (owners[o] != cellIndex)
                appendIfNew(adjacentCells, owners[o]);
    }
}

void PbMesh::updateCellBoundingBox() const {
    float smallest = FLT_MAX;
    float biggest = -1.0f;
    m_smallestCellBox.makeEmpty();
    m_biggestCellBox.makeEmpty();
    m_smallestCellIndex = -1;
    m_biggestCellIndex = -1;
    for (int i = 0; i < m_numCells; ++i) {
        SbBox3f box = getCell(i)->getBoundingBox();
        float volume = box.getVolume();
        if (volume < smallest) {
            smallest = volume;
            m_smallestCellBox = box;
            m_smallestCellIndex = i;
        }
        if (volume > biggest) {
            biggest = volume;
            m_biggestCellBox = box;
            m_biggestCellIndex = i;
        }
    }
    m_cellBoxesValid = 1;
}

SbBox3f PbMesh::getSmallestCellBox(int& cellIndex) const {
    if (!m_cellBoxesValid)
        updateCellBoundingBox();
    cellIndex = m_smallestCellIndex;
    return m_smallestCellBox;
}

SbBox3f PbMesh::getBiggestCellBox(int& cellIndex) const {
    if (!m_cellBoxesValid)
        updateCellBoundingBox();
    cellIndex = m_biggestCellIndex;
    return m_biggestCellBox;
}

const PbCell* PbMesh::findContainingCell(const SbVec3f& point, float tolerance,
                                         SbVec3f& pcoord) const {
    m_testedCells.empty();
    return findContainingCellProtected(point, tolerance, pcoord, m_testedCells);
}

const PbCell* PbMesh::findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                         const PbCell* adjacentCell) const {
    if (!adjacentCell)
        return findContainingCell(point, tolerance, pcoord);
    if (adjacentCell->locatePoint(point, tolerance, pcoord))
        return adjacentCell;
    int hintIndex = adjacentCell->getIndex();

    getAdjacentCellsIndByFacet(hintIndex, m_testedCells);
    for (int n = 0; n < m_testedCells.getNum(); ++n) {
        const PbCell* cell = getCell(m_testedCells[n]);
        if (cell->locatePoint(point, tolerance, pcoord))
            return cell;
    }

    PbArrayOfInt nodeNeighbours;
    getAdjacentCellsIndByNode(hintIndex, nodeNeighbours);
    for (int n = 0; n < nodeNeighbours.getNum(); ++n) {
        if (const PbCell* cell =
                locateInUntestedCell(nodeNeighbours[n], point, tolerance, pcoord, m_testedCells))
            return cell;
        appendIfNew(m_testedCells, nodeNeighbours[n]);
    }

    m_testedCells.add(hintIndex);
    return findContainingCellProtected(point, tolerance, pcoord, m_testedCells);
}

const PbCell* PbMesh::findContainingCellInIndex(const SbVec3f& point, float tolerance,
                                                SbVec3f& pcoord,
                                                const PbArrayOfInt& testedCells) const {
    if (!m_cellIndex || !m_cellIndex->isBuiltFor(m_geometryId, m_topologyId))
        m_cellIndex = std::make_unique<PiCellBoxIndex>(*this);
    const PbCell* found = nullptr;
    m_cellIndex->forEachCandidate(point, tolerance, [&](int cellIndex) {
        found = locateInUntestedCell(cellIndex, point, tolerance, pcoord, testedCells);
        return found != nullptr;
    });
    return found;
}

const PbCell* PbMesh::locateInUntestedCell(int cellIndex, const SbVec3f& point, float tolerance,
                                           SbVec3f& pcoord, const PbArrayOfInt& testedCells) const {
    if (testedCells.find(cellIndex) >= 0)
        return nullptr;
    const PbCell* cell = getCell(cellIndex);
    return cell->locatePoint(point, tolerance, pcoord) ? cell : nullptr;
}

void PbMesh::setCoordinates(const float*, const float*, const float*) {}

void PbMesh::getCoordinates(const float*&, const float*&, const float*&, int&, int&, int&) const {}

float PbMesh::getLongestEdgeLength() const {
    return 0.0f;
}

void PbMesh::print(FILE* fp) const {
    fprintf(fp, "=====================print mesh informations ==================== \n");
    fprintf(fp, "PbMesh:: isDataDuplicate = %s\n", m_isDataDuplicate ? "TRUE" : "FALSE");
    fprintf(fp, "PbMesh:: numMeshNodes = %d\n", m_numNodes);
    fprintf(fp, "PbMesh:: m_numMeshCells = %d\n", m_numCells);
}

int PbMesh::isEmpty() const {
    return m_numNodes < 1;
}

const PbCell* PbMesh::getTopoCell(int) const {
    return nullptr;
}

SbBox3f PbMesh::getBoundingBox() const {
    updateBoundingBox();
    return m_boundingBox;
}

void PbMesh::printInfo() const {
    print(stdout);
}

void PbMesh::updateGeometryId() {
    drawId(m_geometryId, s_geometryIdCounter);
}
void PbMesh::updateTopologyId() {
    drawId(m_topologyId, s_topologyIdCounter);
}
void PbMesh::updateFltDataId(unsigned int& id) {
    drawId(id, s_fltDataIdCounter);
}
void PbMesh::updateVecDataId(unsigned int& id) {
    drawId(id, s_vecDataIdCounter);
}
void PbMesh::updateStrDataId(unsigned int& id) {
    drawId(id, s_strDataIdCounter);
}
