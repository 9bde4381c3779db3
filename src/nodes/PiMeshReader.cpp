#include "nodes/PiMeshReader.h"

#include "nodes/PiMeshSets.h"

#include <Inventor/SoInput.h>
#include <Inventor/errors/SoReadError.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>

namespace {
// Arrays grow with the values actually read rather than with the count a
// file announces, so that a bad count cannot ask for memory the file does
// not fill.
const int kReservedValues = 1 << 16;

// Digits, signs, points, exponents and the letters of nan and infinity.
bool isNumberCharacter(char c) {
    const char lower = static_cast<char>(c | 0x20);
    return (c >= '0' && c <= '9') || (lower >= 'a' && lower <= 'z') || c == '.' || c == '+' ||
           c == '-';
}

// A number beyond the float range: too large gives an infinity, too small
// a zero, each with the number's sign.
float beyondFloatRange(const char* first, const char* last) {
    const bool negative = *first == '-';
    double wide = 0.0;
    bool tiny;
    if (std::from_chars(first, last, wide).ec == std::errc()) {
        tiny = std::fabs(wide) < 1.0;
    } else {
        const char* exponent =
            std::find_if(first, last, [](char c) { return c == 'e' || c == 'E'; });
        tiny = exponent + 1 < last && exponent[1] == '-';
    }
    const float magnitude = tiny ? 0.0f : std::numeric_limits<float>::infinity();
    return negative ? -magnitude : magnitude;
}

bool parseFloat(const char* first, const char* last, float& value) {
    const auto [stop, status] = std::from_chars(first, last, value);
    if (stop != last)
        return false;
    if (status == std::errc::result_out_of_range)
        value = beyondFloatRange(first, last);
    else if (status != std::errc())
        return false;
    return true;
}
} // namespace

PiMeshReader::PiMeshReader(SoInput* in, const char* typeName)
    : m_in(in), m_ascii(!in->isBinary()), m_typeName(typeName) {}

void PiMeshReader::report(const SbString& message) {
    SoReadError::post(m_in, "%s: %s", m_typeName, message.getString());
}

void PiMeshReader::skipSpace() {
    char c;
    while (m_in->get(c)) {
        if (c == '#') {
            while (m_in->get(c) && c != '\n') {
            }
        } else if (!std::isspace(static_cast<unsigned char>(c))) {
            m_in->putBack(c);
            return;
        }
    }
}

bool PiMeshReader::readNumberText(const char*& first, const char*& last) {
    // The toolkit's reading of a word passes over blanks and comments as
    // fast as its own number reading; what follows the number in the word
    // (a closing brace, a comma) is given back.
    if (!m_in->read(m_word))
        return false;
    first = m_word.getString();
    last = std::find_if_not(first, first + m_word.getLength(), isNumberCharacter);
    if (*last)
        m_in->putBack(last);
    // from_chars takes no leading '+'.
    if (first != last && *first == '+' && ++first != last && *first == '-')
        return false;
    return first != last;
}

bool PiMeshReader::readInt(int& value) {
    m_outOfRange.clear();
    if (!m_ascii)
        return m_in->read(value);
    const char* first;
    const char* last;
    if (!readNumberText(first, last))
        return false;
    long long wide = 0;
    const auto [stop, status] = std::from_chars(first, last, wide);
    if (stop != last || (status != std::errc() && status != std::errc::result_out_of_range))
        return false;
    if (status != std::errc() || wide > INT_MAX || wide < INT_MIN) {
        m_outOfRange.assign(first, last);
        return false;
    }
    value = static_cast<int>(wide);
    return true;
}

bool PiMeshReader::readFloat(float& value) {
    const char* first;
    const char* last;
    if (m_ascii)
        return readNumberText(first, last) && parseFloat(first, last, value);
    // The bits as they are: the toolkit's own float reading would put 0
    // for NaN and the infinities.
    int bits = 0;
    if (!m_in->read(bits))
        return false;
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

bool PiMeshReader::readString(SbString& value) {
    if (!m_ascii)
        return m_in->read(value);
    skipSpace();
    char c;
    if (!m_in->get(c))
        return false;
    if (c == '"')
        return readQuotedString(value);
    // A single word without quotes, as the toolkit also takes it.
    m_in->putBack(c);
    return m_in->read(value);
}

bool PiMeshReader::readQuotedString(SbString& value) {
    std::string text;
    char c;
    while (m_in->get(c)) {
        if (c == '"') {
            value = text.c_str();
            return true;
        }
        if (c == '\\' && m_in->get(c) && c != '"' && c != '\\')
            text += '\\';
        text += c;
    }
    return false;
}

bool PiMeshReader::readVec(SbVec3f& value) {
    return readFloat(value[0]) && readFloat(value[1]) && readFloat(value[2]);
}

bool PiMeshReader::failRead(const SbString& where) {
    if (m_outOfRange.empty())
        return fail("Couldn't read %s", where.getString());
    const bool negative = m_outOfRange[0] == '-';
    return fail("%s in %s is too %s: the %s integer is %d", m_outOfRange.c_str(), where.getString(),
                negative ? "small" : "large", negative ? "smallest" : "largest",
                negative ? INT_MIN : INT_MAX);
}

template <typename T>
bool PiMeshReader::readArray(const char* comment, int count, std::vector<T>& values,
                             bool (PiMeshReader::*readOne)(T&)) {
    values.clear();
    values.reserve(std::min(count, kReservedValues));
    for (int i = 0; i < count; ++i) {
        T value;
        if (!(this->*readOne)(value)) {
            SbString where;
            where.sprintf("value %d of %d of the %s", i + 1, count, describe(comment));
            return failRead(where);
        }
        values.push_back(value);
    }
    return true;
}

template <typename T>
bool PiMeshReader::readLine(const char* comment, T* values, int count,
                            bool (PiMeshReader::*readOne)(T&)) {
    for (int i = 0; i < count; ++i)
        if (!(this->*readOne)(values[i]))
            return failRead(SbString("the ") + describe(comment));
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

char PiMeshReader::peek() {
    char c;
    while (m_in->get(c)) {
        if (!std::isspace(static_cast<unsigned char>(c))) {
            m_in->putBack(c);
            return c;
        }
    }
    return '\0';
}

SbString PiMeshReader::restOfLine() {
    SbString text;
    char c;
    while (m_in->get(c) && c != '\n')
        text += c;
    return text;
}

SbString PiMeshReader::nextSetComment() {
    while (peek() == '#') {
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
            return failRead("the number of data-sets");
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
