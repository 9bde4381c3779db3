#pragma once
#include <Inventor/SbString.h>

#include <initializer_list>
#include <vector>

// Gives the header of a mesh field back, item after item, in the order in
// which a PiMeshSink received it; the comment of each item is the one the
// sink was given, and names the item in messages.  An array whose comment
// starts with '#' has that comment on a line of its own before its values;
// other arrays (the elements of sets) are named by a plain description.  Every read returns false,
// after reporting why, when the values cannot be had; the checks below also
// refuse values that would build a mesh lying about its sizes.
class PiMeshSource {
public:
    virtual ~PiMeshSource() = default;

    virtual bool readIntLine(const char* comment, int* values, int count) = 0;
    virtual bool readFloatLine(const char* comment, float* values, int count) = 0;
    virtual bool readIntArray(const char* comment, int count, std::vector<int>& values) = 0;
    virtual bool readFloatArray(const char* comment, int count, std::vector<float>& values) = 0;

    // Reports a value that was read but cannot be used; returns false.
    bool fail(const char* format, ...);

    // A line of sizes, none negative and their product no larger than an
    // int holds.
    bool readSizes(const char* comment, int* sizes, int count);
    // The 2D/3D flag (0 or 1) and, when it is 1, numNodes z coordinates.
    bool readZBlock(const char* comment, int numNodes, std::vector<float>& z, bool& hasZ);
    // numCells cell types, each a number of nodes among the allowed ones;
    // numIndices receives their sum.
    bool readCellTypes(const char* comment, int numCells, std::initializer_list<int> allowed,
                       std::vector<int>& types, int& numIndices);
    // count node indices, each in 0 to numNodes - 1.
    bool readCellIndices(const char* comment, long long count, int numNodes,
                         std::vector<int>& indices);

    // What a comment describes: its text without the leading blanks and '#'.
    static const char* describe(const char* comment);

protected:
    virtual void report(const SbString& message) = 0;
};
