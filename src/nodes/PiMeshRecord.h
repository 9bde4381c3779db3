#pragma once
#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

#include <vector>

// Keeps the header of a mesh as a sink received it, to compare it with the
// header of another mesh or to give it back as a source, which builds a
// copy of the mesh.  Arrays are not copied: the recorded mesh must stay
// alive and unchanged while the record is used.
class PiMeshRecord : public PiMeshSink, public PiMeshSource {
public:
    void intLine(std::initializer_list<int> values, const char* comment) override;
    void floatLine(std::initializer_list<float> values, const char* comment) override;
    void intArray(const char* comment, const int* values, int count) override;
    void floatArray(const char* comment, const float* values, int count) override;
    // Copied: the values do not outlive the call.
    void floatList(const char* comment, std::initializer_list<float> values) override;

    bool readIntLine(const char* comment, int* values, int count) override;
    bool readFloatLine(const char* comment, float* values, int count) override;
    bool readIntArray(const char* comment, int count, std::vector<int>& values) override;
    bool readFloatArray(const char* comment, int count, std::vector<float>& values) override;

    // Same items with equal values.
    bool operator==(const PiMeshRecord& other) const;

protected:
    void report(const SbString& message) override;

private:
    struct Item {
        enum Kind { INT_LINE, FLOAT_LINE, INT_ARRAY, FLOAT_ARRAY };
        explicit Item(Kind itemKind) : kind(itemKind) {}

        Kind kind;
        std::vector<int> ints;
        std::vector<float> floats;
        const int* intArray = nullptr;
        const float* floatArray = nullptr;
        int arrayCount = 0;

        // A float array's values: floatArray, or floats for a copied list.
        const float* floatData() const { return floatArray ? floatArray : floats.data(); }

        bool operator==(const Item& other) const;
    };

    // The next item to give back, or null (after reporting) when the items
    // run out or the next one is of another kind.
    const Item* next(const char* comment, Item::Kind kind);

    std::vector<Item> m_items;
    size_t m_next = 0;
};
