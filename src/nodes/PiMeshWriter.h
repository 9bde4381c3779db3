#pragma once
#include "nodes/PiMeshSink.h"

#include <Inventor/SbString.h>

class PbMesh;
class SoOutput;

// Writes the value of a mesh field through the toolkit's output: in ASCII
// with the comments, blanks and line breaks of the scene-file layout, in
// binary the same values alone.  ASCII floats are written as the shortest
// text that reads back as the same float ("nan", "inf" and "-inf" for the
// special values).  A binary file also gives each value set and
// vector set its binding (0 per cell, 1 per node) before its name, and
// writes a vector set with one vector per element of its binding.
class PiMeshWriter : public PiMeshSink {
public:
    explicit PiMeshWriter(SoOutput* out);

    // A line break and one more level of indentation; end() takes it back.
    void begin();
    void end();

    void intLine(std::initializer_list<int> values, const char* comment) override;
    void floatLine(std::initializer_list<float> values, const char* comment) override;
    void intArray(const char* comment, const int* values, int count) override;
    void floatArray(const char* comment, const float* values, int count) override;
    void floatList(const char* comment, std::initializer_list<float> values) override;

    // The counts of the sets, then the value, string and vector sets, the
    // n-th set of each kind (in ascending order of keys) written as set n.
    void writeSets(const PbMesh& mesh);

private:
    template <typename T> void line(std::initializer_list<T> values, const char* comment);
    void commentLine(const SbString& text);
    void nameLine(const SbString& name);
    // count elements, perLine to a line, each written by writeOne(i).
    template <typename WriteOne> void block(int count, int perLine, WriteOne writeOne);
    // A number and, in ASCII, the blank after it.
    void writeNumber(int value);
    void writeNumber(float value);
    // Quoted in ASCII, with \" for a quote and \\ for a backslash.
    void writeString(const SbString& text);

    void writeValuesSet(const PbMesh& mesh, int key, int position);
    void writeStringsSet(const PbMesh& mesh, int key, int position);
    void writeVecsSet(const PbMesh& mesh, int key, int position);

    SoOutput* m_out;
    bool m_ascii;
};
