#pragma once
#include "nodes/PiMeshSource.h"

#include <Quillon/3Ddata/PbMesh.h>

class SoInput;

// Reads the value of a mesh field through the toolkit's input, as
// PiMeshWriter writes it, and also the earlier ASCII form whose sets have
// no names and which has no string sets.  Every failure is reported as a
// read error with the line where it happened.
class PiMeshReader : public PiMeshSource {
public:
    // typeName starts the messages.
    PiMeshReader(SoInput* in, const char* typeName);

    bool readIntLine(const char* comment, int* values, int count) override;
    bool readFloatLine(const char* comment, float* values, int count) override;
    bool readIntArray(const char* comment, int count, std::vector<int>& values) override;
    bool readFloatArray(const char* comment, int count, std::vector<float>& values) override;

    // Reads the sets that follow the header and adds them to the mesh under
    // 0, 1, ... in the order read.  Stops at the first value that cannot be
    // read, keeping the sets read before it.
    bool readSets(PbMesh& mesh);

protected:
    void report(const SbString& message) override;

private:
    struct SetCounts {
        int strings = 0;
        int values = 0;
        int vecs = 0;
        bool named = true;
    };

    bool readInt(int& value);
    bool readFloat(float& value);
    bool readString(SbString& value);
    bool readVec(SbVec3f& value);
    template <typename T>
    bool readLine(const char* comment, T* values, int count, bool (PiMeshReader::*readOne)(T&));
    template <typename T>
    bool readArray(const char* comment, int count, std::vector<T>& values,
                   bool (PiMeshReader::*readOne)(T&));

    // ASCII only: the text up to the end of the line, and the next comment
    // line that introduces a set ("# set of ..."), passing over other
    // comments; empty when a value comes first.
    SbString restOfLine();
    // The next character that is not a blank, past line breaks or on this
    // line only, left unread; at the end of the input '\0', or '\n' when
    // looking on this line.
    char peek(bool pastLineBreaks);
    // After value index of count of an array: no comment on its line, and
    // nothing more after the last value.
    bool checkAfterValue(const char* comment, int index, int count);
    SbString nextSetComment();

    bool readCounts(SetCounts& counts);
    enum SetKind { SCALARS, STRINGS, VECTORS };
    // What comes before a set's name: in ASCII its comment line, which must
    // be there and tells the binding of a scalar set; in binary the binding
    // of a scalar or vector set.  set names the set in messages.
    bool readSetStart(SetKind kind, const SbString& set, PbMesh::DataBinding& binding);
    // set names the set in messages.
    bool readName(bool named, const SbString& set, SbString& name);
    // Reads count sets of a kind, each element with readOne, and hands the
    // index, elements, binding and name of each to add.
    template <typename T, typename Add>
    bool readSetsOf(PbMesh& mesh, SetKind kind, int count, bool named,
                    bool (PiMeshReader::*readOne)(T&), Add add);

    SoInput* m_in;
    bool m_ascii;
    const char* m_typeName;
    // The last item read was a line of values, whose closing comment may
    // still be ahead on its line.
    bool m_afterLine = false;
};
