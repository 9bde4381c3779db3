#pragma once
#include <initializer_list>

// Receives the header of a mesh field, item after item, in the order of the
// scene-file layout: lines of integers or floats closed by a comment, and
// arrays introduced by a comment line.  Comments are given as they appear in
// an ASCII file ("   # num_x, num_y", "# x coordinates of mesh nodes").
class PiMeshSink {
public:
    virtual ~PiMeshSink() = default;

    virtual void intLine(std::initializer_list<int> values, const char* comment) = 0;
    virtual void floatLine(std::initializer_list<float> values, const char* comment) = 0;
    virtual void intArray(const char* comment, const int* values, int count) = 0;
    virtual void floatArray(const char* comment, const float* values, int count) = 0;
    // An array of a few values that the mesh computes rather than holds.
    virtual void floatList(const char* comment, std::initializer_list<float> values) = 0;

    // The 2D/3D flag of a surface mesh and, when the mesh has z, its
    // numNodes z coordinates.
    void zBlock(const char* comment, const float* z, int numNodes);
};
