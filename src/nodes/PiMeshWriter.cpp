#include "nodes/PiMeshWriter.h"

#include "nodes/PiMeshSets.h"

#include <Quillon/graph/PoDebugError.h>

#include <Inventor/SoOutput.h>

#include <charconv>
#include <cstring>
#include <string>
#include <vector>

namespace {
const int kFloatsPerLine = 15;
const int kIntsPerLine = 30;
const int kStringsPerLine = 8;
const int kVectorsPerLine = 5;
} // namespace

PiMeshWriter::PiMeshWriter(SoOutput* out) : m_out(out), m_ascii(!out->isBinary()) {}

void PiMeshWriter::begin() {
    if (!m_ascii)
        return;
    m_out->write('\n');
    m_out->incrementIndent();
}

void PiMeshWriter::end() {
    if (m_ascii)
        m_out->decrementIndent();
}

template <typename T>
void PiMeshWriter::line(std::initializer_list<T> values, const char* comment) {
    if (m_ascii)
        m_out->indent();
    for (T value : values)
        writeNumber(value);
    if (m_ascii) {
        m_out->write(comment);
        m_out->write('\n');
    }
}

void PiMeshWriter::intLine(std::initializer_list<int> values, const char* comment) {
    line(values, comment);
}

void PiMeshWriter::floatLine(std::initializer_list<float> values, const char* comment) {
    line(values, comment);
}

void PiMeshWriter::commentLine(const SbString& text) {
    if (!m_ascii)
        return;
    m_out->indent();
    m_out->write(text.getString());
    m_out->write('\n');
}

void PiMeshWriter::nameLine(const SbString& name) {
    if (m_ascii)
        m_out->indent();
    writeString(name);
    if (m_ascii)
        m_out->write("   # set name\n");
}

void PiMeshWriter::writeString(const SbString& text) {
    if (!m_ascii) {
        m_out->write(text);
        return;
    }
    std::string quoted = "\"";
    for (const char* c = text.getString(); *c; ++c) {
        if (*c == '"' || *c == '\\')
            quoted += '\\';
        quoted += *c;
    }
    quoted += '"';
    m_out->write(quoted.c_str());
}

template <typename WriteOne> void PiMeshWriter::block(int count, int perLine, WriteOne writeOne) {
    for (int i = 0; i < count; ++i) {
        if (m_ascii && i % perLine == 0)
            m_out->indent();
        writeOne(i);
        if (m_ascii && ((i + 1) % perLine == 0 || i + 1 == count))
            m_out->write('\n');
    }
}

void PiMeshWriter::writeNumber(int value) {
    m_out->write(value);
    if (m_ascii)
        m_out->write(' ');
}

void PiMeshWriter::writeNumber(float value) {
    if (!m_ascii) {
        // The bits as they are, like the reader takes them.
        int bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        m_out->write(bits);
        return;
    }
    // The shortest text that reads back as the same float, whatever the
    // locale: "0.1", "1e-40", "nan", "-inf".
    char text[32];
    char* end = std::to_chars(text, text + sizeof text - 2, value).ptr;
    end[0] = ' ';
    end[1] = '\0';
    m_out->write(text);
}

void PiMeshWriter::intArray(const char* comment, const int* values, int count) {
    commentLine(comment);
    block(count, kIntsPerLine, [&](int i) { writeNumber(values[i]); });
}

void PiMeshWriter::floatArray(const char* comment, const float* values, int count) {
    commentLine(comment);
    block(count, kFloatsPerLine, [&](int i) { writeNumber(values[i]); });
}

void PiMeshWriter::floatList(const char* comment, std::initializer_list<float> values) {
    floatArray(comment, values.begin(), static_cast<int>(values.size()));
}

void PiMeshWriter::writeSets(const PbMesh& mesh) {
    const std::vector<int> valuesKeys = mesh.getValuesSetIndices();
    const std::vector<int> stringsKeys = mesh.getStringsSetIndices();
    const std::vector<int> vecsKeys = mesh.getVecsSetIndices();
    intLine({static_cast<int>(stringsKeys.size())}, "   # number of string data-set");
    intLine({static_cast<int>(valuesKeys.size())}, "   # number of scalar data-set");
    intLine({static_cast<int>(vecsKeys.size())}, "   # number of vector data-set");
    for (size_t i = 0; i < valuesKeys.size(); ++i)
        writeValuesSet(mesh, valuesKeys[i], static_cast<int>(i));
    for (size_t i = 0; i < stringsKeys.size(); ++i)
        writeStringsSet(mesh, stringsKeys[i], static_cast<int>(i));
    for (size_t i = 0; i < vecsKeys.size(); ++i)
        writeVecsSet(mesh, vecsKeys[i], static_cast<int>(i));
}

void PiMeshWriter::writeValuesSet(const PbMesh& mesh, int key, int position) {
    const PbMesh::DataBinding binding = mesh.getValuesBinding(key);
    SbString comment;
    comment.sprintf("# set of scalars, index %d, binding per %s", position,
                    binding == PbMesh::PER_NODE ? "node" : "cell");
    commentLine(comment);
    if (!m_ascii)
        m_out->write(static_cast<int>(binding));
    nameLine(*mesh.getValuesSetName(key));
    const float* values = mesh.getValuesSet(key);
    block(PiMeshSets::numValues(mesh, binding), kFloatsPerLine,
          [&](int i) { writeNumber(values[i]); });
}

void PiMeshWriter::writeStringsSet(const PbMesh& mesh, int key, int position) {
    SbString comment;
    comment.sprintf("# set of strings, index %d", position);
    commentLine(comment);
    nameLine(*mesh.getStringsSetName(key));
    const SbString* strings = mesh.getStringsSet(key);
    block(mesh.getNumNodes(), kStringsPerLine, [&](int i) {
        writeString(strings[i]);
        if (m_ascii)
            m_out->write(' ');
    });
}

void PiMeshWriter::writeVecsSet(const PbMesh& mesh, int key, int position) {
    SbString comment;
    comment.sprintf("# set of vectors, index %d", position);
    commentLine(comment);
    const PbMesh::DataBinding binding = mesh.getVecsBinding(key);
    const int numVecs = PiMeshSets::numValues(mesh, binding);
    const SbVec3f* vecs = mesh.getVecsSet(key);
    // An ASCII file has one vector per node whatever the binding: a set of
    // another size is cut or padded with null vectors.
    std::vector<SbVec3f> perNode;
    if (m_ascii && binding != PbMesh::PER_NODE) {
        PoDebugError::postWarning("PoSFMesh::writeValue",
                                  "vector set %d is bound per cell; an ASCII file keeps one "
                                  "vector per node, %d of its %d vectors",
                                  key, std::min(numVecs, mesh.getNumNodes()), numVecs);
        perNode.assign(mesh.getNumNodes(), SbVec3f(0.0f, 0.0f, 0.0f));
        std::copy(vecs, vecs + std::min(numVecs, mesh.getNumNodes()), perNode.begin());
        vecs = perNode.data();
    }
    if (!m_ascii)
        m_out->write(static_cast<int>(binding));
    nameLine(*mesh.getVecsSetName(key));
    block(m_ascii ? mesh.getNumNodes() : numVecs, kVectorsPerLine, [&](int i) {
        for (int axis = 0; axis < 3; ++axis)
            writeNumber(vecs[i][axis]);
    });
}
