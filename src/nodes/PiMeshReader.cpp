#include "nodes/PiMeshReader.h"

#include "nodes/PiMeshSets.h"

#include <Inventor/SoInput.h>
#include <Inventor/errors/SoReadError.h>

#include <algorithm>
#include <cctype>

namespace {
// Arrays grow with the values actually read rather than with the count a
// file announces, so that a bad count cannot ask for memory the file does
// not fill.
const int kReservedValues = 1 << 16;
} // namespace

PiMeshReader::PiMeshReader(SoInput* in, const char* typeName)
    : m_in(in), m_ascii(!in->isBinary()), m_typeName(typeName) {}

void PiMeshReader::report(const SbString& message) {
    SoReadError::post(m_in, "%s: %s", m_typeName, message.getString());
}

bool PiMeshReader::readInt(int& value) {
    if (!m_in->read(value))
        return false;
    char next;
    if (!m_ascii || !m_in->get(next))
        return true;
    m_in->putBack(next);
    // "1.5" is not the integer 1 followed by something else.
    return next != '.' && !std::isalnum(static_cast<unsigned char>(next));
}

bool PiMeshReader::readFloat(float& value) {
    return m_in->read(value);
}

bool PiMeshReader::readString(SbString& value) {
    return m_in->read(value);
}

bool PiMeshReader::readVec(SbVec3f& value) {
    return readFloat(value[0]) && readFloat(value[1]) && readFloat(value[2]);
}

char PiMeshReader::peek(bool pastLineBreaks) {
    char c;
    while (m_in->get(c)) {
        if (!std::isspace(static_cast<unsigned char>(c)) || (c == '\n' && !pastLineBreaks)) {
            m_in->putBack(c);
            return c;
        }
    }
    return pastLineBreaks ? '\0' : '\n';
}

bool PiMeshReader::checkAfterValue(const char* comment, int index, int count) {
    const char next = peek(false);
    if (next == '#')
        return fail("a comment follows value %d of %d of the %s", index + 1, count,
                    describe(comment));
    if (index + 1 == count && next != '\n' && next != '}')
        return fail("more values follow the %d values of the %s", count, describe(comment));
    return true;
}

template <typename T>
bool PiMeshReader::readArray(const char* comment, int count, std::vector<T>& values,
                             bool (PiMeshReader::*readOne)(T&)) {
    // In ASCII a header array comes right after its comment line, and no
    // array holds a comment or shares the line of its last value: a count
    // that does not match the values written runs into one of these.
    const bool introduced = comment[0] == '#';
    const bool afterLine = m_afterLine;
    m_afterLine = false;
    if (m_ascii && introduced) {
        // Past the comment that closes a line of values before.
        if (afterLine && peek(false) == '#')
            restOfLine();
        if (peek(true) != '#')
            return fail("the comment line \"%s\" is missing", comment);
        restOfLine();
    }
    values.clear();
    values.reserve(std::min(count, kReservedValues));
    for (int i = 0; i < count; ++i) {
        if (m_ascii && (introduced || i > 0) && peek(true) == '#')
            return fail("a comment stands where value %d of %d of the %s was expected", i + 1,
                        count, describe(comment));
        T value;
        if (!(this->*readOne)(value))
            return fail("Couldn't read value %d of %d of the %s", i + 1, count, describe(comment));
        if (m_ascii && !checkAfterValue(comment, i, count))
            return false;
        values.push_back(value);
    }
    return true;
}

template <typename T>
bool PiMeshReader::readLine(const char* comment, T* values, int count,
                            bool (PiMeshReader::*readOne)(T&)) {
    for (int i = 0; i < count; ++i)
        if (!(this->*readOne)(values[i]))
            return fail("Couldn't read the %s", describe(comment));
    m_afterLine = true;
    return true;
}

bool PiMeshReader::readIntLine(const char* comment, int* values, int count) {
    return readLine(comment, values, count, &PiMeshReader::readInt);
}

bool PiMeshReader::readFloatLine(const char* comment, float* values, int count) {
    return readLine(comment, values, count, &PiMeshReader::readFloat);
}

bool PiMeshReader::readIntArray(const char* comment, int count, std::vector<int>& values) {
    return readArray(comment, count, values, &PiMeshReader::readInt);
}

bool PiMeshReader::readFloatArray(const char* comment, int count, std::vector<float>& values) {
    return readArray(comment, count, values, &PiMeshReader::readFloat);
}

SbString PiMeshReader::restOfLine() {
    SbString text;
    char c;
    while (m_in->get(c) && c != '\n')
        text += c;
    return text;
}

SbString PiMeshReader::nextSetComment() {
    while (peek(true) == '#') {
        const SbString comment = restOfLine();
        if (comment.find("# set of ") == 0)
            return comment;
    }
    return SbString();
}

bool PiMeshReader::readCounts(SetCounts& counts) {
    if (!m_ascii) {
        int numbers[3];
        if (!readIntLine("   # numbers of data-sets", numbers, 3))
            return false;
        counts = {numbers[0], numbers[1], numbers[2], true};
    } else {
        int first = 0;
        if (!readInt(first))
            return fail("Couldn't read the number of data-sets");
        if (restOfLine().find("number of string data-set") >= 0) {
            int others[2];
            if (!readIntLine("   # numbers of scalar and vector data-sets", others, 2))
                return false;
            counts = {first, others[0], others[1], true};
        } else {
            counts = {0, first, 0, false};
            if (!readIntLine("   # number of vector data-set", &counts.vecs, 1))
                return false;
        }
    }
    if (counts.strings < 0 || counts.values < 0 || counts.vecs < 0)
        return fail("negative number of data-sets (%d string, %d scalar, %d vector)",
                    counts.strings, counts.values, counts.vecs);
    return true;
}

bool PiMeshReader::readSetStart(SetKind kind, const SbString& set, PbMesh::DataBinding& binding) {
    binding = PbMesh::PER_NODE;
    if (m_ascii) {
        // Required, also because a set of no elements reads nothing else.
        const SbString comment = nextSetComment();
        if (comment.getLength() == 0)
            return fail("the comment line that starts the %s is missing", set.getString());
        if (kind == SCALARS && comment.find("binding per cell") >= 0)
            binding = PbMesh::PER_CELL;
        return true;
    }
    if (kind == STRINGS)
        return true;
    int value = 0;
    if (!readIntLine("   # binding", &value, 1))
        return false;
    if (value != PbMesh::PER_CELL && value != PbMesh::PER_NODE)
        return fail("binding %d of the %s is neither 0 (per cell) nor 1 (per node)", value,
                    set.getString());
    binding = static_cast<PbMesh::DataBinding>(value);
    return true;
}

bool PiMeshReader::readName(bool named, const SbString& set, SbString& name) {
    name = "";
    return !named || readString(name) || fail("Couldn't read the name of the %s", set.getString());
}

template <typename T, typename Add>
bool PiMeshReader::readSetsOf(PbMesh& mesh, SetKind kind, int count, bool named,
                              bool (PiMeshReader::*readOne)(T&), Add add) {
    static const char* const kKinds[] = {"scalars", "strings", "vectors"};
    for (int index = 0; index < count; ++index) {
        SbString set;
        set.sprintf("%s of set %d", kKinds[kind], index);
        PbMesh::DataBinding binding;
        SbString name;
        std::vector<T> elements;
        if (!readSetStart(kind, set, binding) || !readName(named, set, name) ||
            !readArray(set.getString(), PiMeshSets::numValues(mesh, binding), elements, readOne))
            return false;
        add(index, elements.data(), binding, name);
    }
    return true;
}

bool PiMeshReader::readSets(PbMesh& mesh) {
    SetCounts counts;
    return readCounts(counts) &&
           readSetsOf(
               mesh, SCALARS, counts.values, counts.named, &PiMeshReader::readFloat,
               [&](int index, const float* values, PbMesh::DataBinding binding,
                   const SbString& name) { mesh.addValuesSet(index, values, binding, name); }) &&
           readSetsOf(mesh, STRINGS, counts.strings, counts.named, &PiMeshReader::readString,
                      [&](int index, const SbString* strings, PbMesh::DataBinding,
                          const SbString& name) { mesh.addStringsSet(index, strings, name); }) &&
           readSetsOf(mesh, VECTORS, counts.vecs, counts.named, &PiMeshReader::readVec,
                      [&](int index, const SbVec3f* vecs, PbMesh::DataBinding binding,
                          const SbString& name) { mesh.addVecsSet(index, vecs, binding, name); });
}
