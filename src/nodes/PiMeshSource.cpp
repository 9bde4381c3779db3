#include "nodes/PiMeshSource.h"

#include <algorithm>
#include <climits>
#include <cstdarg>

bool PiMeshSource::fail(const char* format, ...) {
    va_list args;
    va_start(args, format);
    SbString message;
    message.vsprintf(format, args);
    va_end(args);
    report(message);
    return false;
}

const char* PiMeshSource::describe(const char* comment) {
    while (*comment == ' ' || *comment == '#')
        ++comment;
    return comment;
}

bool PiMeshSource::readSizes(const char* comment, int* sizes, int count) {
    if (!readIntLine(comment, sizes, count))
        return false;
    // Every partial product must fit too: meshes multiply their sizes in
    // order, so 6 x 2147483647 x 0 would overflow before reaching 0.
    long long product = 1;
    for (int i = 0; i < count; ++i) {
        if (sizes[i] < 0)
            return fail("negative size %d in %s", sizes[i], describe(comment));
        product *= sizes[i];
        if (product > INT_MAX)
            return fail("the sizes in %s give more than %d nodes", describe(comment), INT_MAX);
    }
    return true;
}

bool PiMeshSource::readZBlock(const char* comment, int numNodes, std::vector<float>& z,
                              bool& hasZ) {
    int flag = 0;
    if (!readIntLine("   # 2D/3D flag", &flag, 1))
        return false;
    if (flag != 0 && flag != 1)
        return fail("the 2D/3D flag is %d, not 0 or 1", flag);
    hasZ = flag == 1;
    return !hasZ || readFloatArray(comment, numNodes, z);
}

namespace {
SbString listOf(std::initializer_list<int> numbers) {
    SbString text;
    for (const int* number = numbers.begin(); number != numbers.end(); ++number) {
        if (number != numbers.begin())
            text += number + 1 == numbers.end() ? " or " : ", ";
        text += SbString(*number);
    }
    return text;
}
} // namespace

bool PiMeshSource::readCellTypes(const char* comment, int numCells,
                                 std::initializer_list<int> allowed, std::vector<int>& types,
                                 int& numIndices) {
    if (!readIntArray(comment, numCells, types))
        return false;
    long long sum = 0;
    for (int cell = 0; cell < numCells; ++cell) {
        if (std::find(allowed.begin(), allowed.end(), types[cell]) == allowed.end())
            return fail("cell %d has %d nodes, not %s", cell, types[cell],
                        listOf(allowed).getString());
        sum += types[cell];
    }
    if (sum > INT_MAX)
        return fail("the %d cells have more than %d node indices", numCells, INT_MAX);
    numIndices = static_cast<int>(sum);
    return true;
}

bool PiMeshSource::readCellIndices(const char* comment, long long count, int numNodes,
                                   std::vector<int>& indices) {
    if (count > INT_MAX)
        return fail("the cells have more than %d node indices", INT_MAX);
    if (!readIntArray(comment, static_cast<int>(count), indices))
        return false;
    for (size_t i = 0; i < indices.size(); ++i)
        if (indices[i] < 0 || indices[i] >= numNodes)
            return fail("node index %d (value %d of the %s) is not in 0 to %d", indices[i],
                        static_cast<int>(i) + 1, describe(comment), numNodes - 1);
    return true;
}
