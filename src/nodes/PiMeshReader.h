#pragma once
#include "nodes/PiMeshSource.h"

#include <Quillon/3Ddata/PbMesh.h>

#include <string>

class SoInput;

// Reads the value of a mesh field through the toolkit's input, as
// PiMeshWriter writes it, and also the earlier ASCII form whose sets have
// no names and which has no string sets.  Every failure is reported as a
// read error with the line where it happened.
//
// In ASCII, comments may stand anywhere between values and carry nothing,
// except two that the layout needs: the comment line that starts each set
// (it tells a scalar set's binding) and the one that follows the first
// count of sets (it tells the current form from the earlier one).  Numbers
// are read exactly: floats as the nearest float, with "nan", "inf" and
// "-inf" (in any case, also "infinity"), numbers beyond the float range as
// infinities; integers must fit an int.  Strings are quoted, with \" for a
// quote and \\ for a backslash.  In binary every float keeps its bits.
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
    // Reports a value that could not be read; where names it ("the size",
    // "value 3 of 8 of the cell's indices").
    bool failRead(const SbString& where);

    // ASCII only.  Passes over blanks, line breaks and comments.
    void skipSpace();
    // The characters of one number, past blanks and comments, from first
    // to last (they stay valid until the next number is read); false when
    // there is none.
    bool readNumberText(const char*& first, const char*& last);
    bool readQuotedString(SbString& value);
    // The text up to the end of the line.
    SbString restOfLine();
    // The next character that is not a blank or a line break, left unread;
    // '\0' at the end of the input.
    char peek();
    // The next comment line that introduces a set ("# set of ..."),
    // passing over other comments; empty when a value comes first.
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
    // The word holding the last number read.
    SbString m_word;
    // The text of the last integer read when it lay beyond the int range.
    std::string m_outOfRange;
};
