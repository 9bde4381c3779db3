#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>

#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/SoType.h>
#include <Inventor/fields/SoSField.h>

#include <memory>

class PbMesh;
class PiMeshSink;
class PiMeshSource;

// Base of the single-value fields that hold a mesh.  Each concrete field
// (PoSFCartesianGrid2D, ...) holds one mesh of its class by value, always
// duplicating its data, so that the field owns copies of every coordinate
// and set.
//
// Scene files.  The value is written as the mesh's header (sizes,
// coordinates, cells; see each field), then the sets: the numbers of
// string, scalar and vector sets, and each set with its name and elements.
// The n-th set of each kind in ascending order of keys is written as set n,
// so a mesh with scalar sets keyed 3 and 7 writes them as sets 0 and 1, and
// reading adds the sets under 0, 1, ... .  In ASCII every line carries its
// comment, and the comment before a scalar set tells its binding ("binding
// per cell" or per node); a vector set is written with one vector per node
// whatever its binding.  ASCII files of the earlier form, without string
// sets and without set names, are read too.  A binary file holds the same
// values without comments, plus the binding of each scalar set and of each
// vector set (the integer 0 per cell, 1 per node) just before its name; a
// vector set there has one vector per element of its binding, so binary
// files keep every set as it was.
//
// Every value survives a file: ASCII floats are written as the shortest
// text that reads back as the same float, NaN and the infinities as "nan",
// "inf" and "-inf"; binary files keep each float's bits.  In ASCII, strings
// are quoted with \" for a quote and \\ for a backslash, and comments may
// stand anywhere between values: only the comment line that starts a set
// and the one after the first count of sets are read.
//
// Reading stops at the first value that cannot be read or used and reports
// a read error with the line: a size or index that does not fit the mesh,
// an integer beyond the int range, a truncated file.  When the header is
// bad the field keeps its previous value; when a set is bad the field takes
// the mesh with the sets read before it.
class QUILLON_API PoSFMesh : public SoSField {
public:
    static SoType getClassTypeId(void);
    static void initClass(void);
    static void exitClass(void);

    // Registers (and unregisters) every mesh field type, in a fixed order.
    static void initClasses(void);
    static void exitClasses(void);

    // Add a set to the held mesh (see PbMesh) and signal a change of the
    // field, unless the mesh refused the set.
    void addValuesSet(int setIndex, const float* values, const SbString& name = "");
    void addValuesSet(int setIndex, const float* values, PoMeshProperty::DataBinding binding,
                      const SbString& name);
    void addStringsSet(int setIndex, const SbString* strings, const SbString& name = "");
    void addVecsSet(int setIndex, const SbVec3f* vecs, const SbString& name = "");

    // With same-value notification disabled, setting a field that has a
    // container to a mesh equal to the held one changes nothing and tells
    // no one.  Enabled by default: every setValue signals a change.
    void setSameValueNotificationEnabled(SbBool enabled) { m_sameValueNotification = enabled; }
    SbBool isSameValueNotificationEnabled(void) const { return m_sameValueNotification; }

protected:
    PoSFMesh();
    ~PoSFMesh() override;

    // The held mesh.
    virtual PbMesh* getMesh(void) = 0;
    virtual const PbMesh& getHeldMesh(void) const = 0;
    // A new, empty, duplicating mesh of the held class.
    virtual std::unique_ptr<PbMesh> newMesh(void) const = 0;
    // Replaces the held mesh by a copy of a duplicating mesh of its class.
    virtual void assignMesh(const PbMesh& mesh) = 0;
    // The header of a mesh of the held class, given to a sink or taken from
    // a source and applied to the mesh with its setGeometry.
    virtual void writeHeader(PiMeshSink& sink, const PbMesh& mesh) const = 0;
    virtual bool readHeader(PiMeshSource& source, PbMesh& mesh) const = 0;
    // The geometry of two meshes of the held class compared, or copied from
    // one into the other (which then owns copies of the arrays if it
    // duplicates its data), straight from the meshes' arrays.
    virtual bool sameGeometry(const PbMesh& a, const PbMesh& b) const = 0;
    virtual void copyGeometry(const PbMesh& from, PbMesh& to) const = 0;

    // Same header values and same sets.
    bool isSameMesh(const PbMesh& mesh) const;
    // The setValue rule for a mesh of the held class.
    void setMeshValue(const PbMesh& mesh);

    SbBool readValue(SoInput* in) override;
    void writeValue(SoOutput* out) const override;

    // Registration helpers for the concrete fields.
    static void registerType(SoType& type, const char* name, SoType::instantiationMethod create);
    static void unregisterType(SoType& type, const char* name);
    // Posts "Can't construct a field of type <name> until initClass() has
    // been called" and registers the class, when it is not registered yet.
    static void checkRegistered(const SoType& type, const char* name, void (*initClass)(void));

private:
    template <typename Change>
    void changeSet(unsigned int (PbMesh::*dataSetId)(int) const, int setIndex, Change change);

    static SoType s_classTypeId;
    SbBool m_sameValueNotification = TRUE;
};
