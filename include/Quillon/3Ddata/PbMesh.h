#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>

#include <cstdio>
#include <memory>
#include <vector>

class PbCell;
class PiCellBoxIndex;

// Abstract base of every mesh.  Keeps the node and cell counts, the bounding
// box, the cell-box statistics, the identity counters and the user's value,
// string and vector sets, each keyed by a user-chosen set index.  Geometry,
// cell access and point location come from the derived classes.
//
// For derived classes: set m_numNodes and m_numCells, call updateGeometryId()
// and updateTopologyId() whenever coordinates or connectivity change, clear
// m_cellBoxesValid when taking new coordinates, and keep m_boundingBox up to
// date in updateBoundingBox().  findContainingCellInIndex() is a ready-made
// point location over a spatial index of the cell boxes.
class QUILLON_API PbMesh : public PbBase {
public:
    enum DataBinding { PER_CELL = 0, PER_NODE = 1 };

    explicit PbMesh(int isDataDuplicate);
    PbMesh(const PbMesh& other);
    PbMesh& operator=(const PbMesh& other);
    ~PbMesh() override;

    virtual SbVec3f getNodeCoord(int nodeIndex) const = 0;

    // Sets without an explicit binding are bound per node.  Adding under an
    // existing set index replaces the values, name and binding.
    virtual void addValuesSet(int setIndex, const float* values, const SbString& name = "");
    virtual void addStringsSet(int setIndex, const SbString* strings, const SbString& name = "");
    virtual void addVecsSet(int setIndex, const SbVec3f* vecs, const SbString& name = "");
    void addValuesSet(int setIndex, const float* values, DataBinding binding, const SbString& name);
    void addVecsSet(int setIndex, const SbVec3f* vecs, DataBinding binding, const SbString& name);

    // Null when no set has that index.
    virtual const SbString* getValuesSetName(int setIndex) const;
    virtual const SbString* getStringsSetName(int setIndex) const;
    virtual const SbString* getVecsSetName(int setIndex) const;
    virtual const float* getValuesSet(int setIndex) const;
    virtual const SbString* getStringsSet(int setIndex) const;
    virtual const SbVec3f* getVecsSet(int setIndex) const;

    // Return 1 when a set was removed, 0 otherwise; notify in both cases.
    virtual int removeValuesSet(int setIndex);
    virtual int removeStringsSet(int setIndex);
    virtual int removeVecsSet(int setIndex);
    virtual void removeAllValuesSet();
    virtual void removeAllStringsSet();
    virtual void removeAllVecsSet();

    virtual int getNumValuesSet() const;
    virtual int getNumStringsSet() const;
    virtual int getNumVecsSet() const;
    // The indices under which sets are stored, in increasing order.
    std::vector<int> getValuesSetIndices() const;
    std::vector<int> getStringsSetIndices() const;
    std::vector<int> getVecsSetIndices() const;

    // Return 0 and leave the output untouched when no set has that index.
    // The vector forms work on the vectors' lengths.
    virtual int getMinValuesSet(int setIndex, float& min) const;
    virtual int getMinVecsSet(int setIndex, float& min) const;
    virtual int getMaxValuesSet(int setIndex, float& max) const;
    virtual int getMaxVecsSet(int setIndex, float& max) const;

    // PER_NODE when no set has that index.
    DataBinding getValuesBinding(int setIndex) const;
    DataBinding getVecsBinding(int setIndex) const;
    // 0xFFFFFFFF when no set has that index.
    // The number of values of a value set (0 when no set has that index),
    // which falls short of the mesh's counts when a mesh that references
    // its sets changed its geometry.
    int getValuesSetSize(int setIndex) const;
    unsigned int getFltDataSetId(int setIndex) const;
    unsigned int getVecDataSetId(int setIndex) const;
    unsigned int getStrDataSetId(int setIndex) const;

    virtual void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const = 0;
    // Cells that own every one of the given nodes, in the order of the first
    // node's owner list.
    virtual void getNodesOwnerCellsInd(const PbArrayOfInt& nodeIndices,
                                       PbArrayOfInt& cellIndices) const;
    virtual void getAdjacentCellsIndByNode(int cellIndex, PbArrayOfInt& adjacentCells) const;
    virtual void getAdjacentCellsIndByFacet(int cellIndex, PbArrayOfInt& adjacentCells) const;

    // The mesh owns one cell object per kind and refills it on each call: the
    // returned cell is valid until the next getCell() on this mesh.  Null for
    // an index outside 0 to getNumCells() - 1.
    virtual const PbCell* getCell(int cellIndex) const = 0;

    // Boxes of the cells with the smallest and the largest box volume; the
    // lowest cell index wins ties.
    virtual SbBox3f getSmallestCellBox(int& cellIndex) const;
    virtual SbBox3f getBiggestCellBox(int& cellIndex) const;

    virtual float getVolume() const = 0;
    virtual float getArea() const = 0;

    // The cell containing the point, enlarged by tolerance in parametric
    // units, or null; pcoord receives the point's parametric coordinates in
    // that cell.  Of several containing cells the lowest index wins.  The
    // hinted form looks first at the hint and its neighbours.
    virtual const PbCell* findContainingCell(const SbVec3f& point, float tolerance,
                                             SbVec3f& pcoord) const;
    virtual const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                             const PbCell* adjacentCell) const;

    virtual void setCoordinates(const float* x, const float* y, const float* z);
    virtual void getCoordinates(const float*& x, const float*& y, const float*& z, int& sizeX,
                                int& sizeY, int& sizeZ) const;
    virtual float getLongestEdgeLength() const;
    virtual void print(FILE* fp) const;
    virtual int isEmpty() const;
    virtual const PbCell* getTopoCell(int cellIndex) const;

    int getNumNodes() const { return m_numNodes; }
    int getNumCells() const { return m_numCells; }
    int isDataDuplicated() const { return m_isDataDuplicate; }
    unsigned int getGeometryId() const { return m_geometryId; }
    unsigned int getTopologyId() const { return m_topologyId; }

    // Brings the box up to date first.
    SbBox3f getBoundingBox() const;
    void printInfo() const;

protected:
    virtual void updateBoundingBox() const = 0;
    virtual void updateCellBoundingBox() const;
    // Searches the cells not listed in testedCells.
    virtual const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                                      SbVec3f& pcoord,
                                                      PbArrayOfInt& testedCells) const = 0;

    void updateGeometryId();
    void updateTopologyId();
    static void updateFltDataId(unsigned int& id);
    static void updateVecDataId(unsigned int& id);
    static void updateStrDataId(unsigned int& id);

    // Point location over a spatial index of the cell boxes, built on first
    // use and rebuilt after the geometry or topology id changed.  Candidates
    // are tested in ascending cell index, skipping testedCells, so the result
    // is that of testing every cell in order.
    const PbCell* findContainingCellInIndex(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            const PbArrayOfInt& testedCells) const;
    // The cell cellIndex when it is not in testedCells and contains the
    // point, else null: the step of every search over candidate cells.
    const PbCell* locateInUntestedCell(int cellIndex, const SbVec3f& point, float tolerance,
                                       SbVec3f& pcoord, const PbArrayOfInt& testedCells) const;

    // Before the mesh takes numNodes nodes and numCells cells: a duplicating
    // mesh removes the sets whose length would no longer match, every set when
    // the number of nodes changes and the per-cell value and vector sets when
    // only the number of cells does.  A mesh that references the caller's data
    // keeps its sets.
    void removeSetsNotFitting(int numNodes, int numCells);

    // Sets the change type and notifies the connected kits.
    void notify(ChangeType type);
    // After new coordinates (and, when topologyChanged, new connectivity):
    // clears the cell-box statistics, draws the new ids and notifies a
    // geometry change.
    void geometryChanged(bool topologyChanged);

    int m_isDataDuplicate;
    int m_numNodes = 0;
    int m_numCells = 0;
    mutable SbBox3f m_boundingBox;
    mutable int m_cellBoxesValid = 0;

private:
    struct SetStore;

    // The number of values a set of that binding holds.
    int numValuesFor(DataBinding binding) const;

    std::unique_ptr<SetStore> m_sets;
    mutable SbBox3f m_smallestCellBox;
    mutable SbBox3f m_biggestCellBox;
    mutable int m_smallestCellIndex = -1;
    mutable int m_biggestCellIndex = -1;
    unsigned int m_geometryId = 0;
    unsigned int m_topologyId = 0;
    mutable PbArrayOfInt m_testedCells;
    mutable std::unique_ptr<PiCellBoxIndex> m_cellIndex;
};
