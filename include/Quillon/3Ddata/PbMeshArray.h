#pragma once
#include <cstdio>
#include <vector>

// An array that a mesh takes from the caller: copied into storage of its
// own when the mesh duplicates its data, otherwise the caller's pointer is
// kept (and the caller keeps the array alive and unchanged).  Copying the
// holder copies owned storage and shares a referenced array.
template <typename T> class PbMeshArray {
public:
    explicit PbMeshArray(int isDuplicate = 1) : m_isDuplicate(isDuplicate) {}
    PbMeshArray(const PbMeshArray& other)
        : m_isDuplicate(other.m_isDuplicate), m_owned(other.m_owned), m_data(other.m_data),
          m_num(other.m_num) {
        pointToOwned();
    }
    PbMeshArray& operator=(const PbMeshArray& other) {
        m_isDuplicate = other.m_isDuplicate;
        m_owned = other.m_owned;
        m_data = other.m_data;
        m_num = other.m_num;
        pointToOwned();
        return *this;
    }

    // Takes count elements; data may point into this holder's own storage.
    void set(const T* data, int count) {
        m_num = count;
        if (!m_isDuplicate) {
            m_data = data;
            return;
        }
        std::vector<T> copy(data, data + (data ? count : 0));
        m_owned.swap(copy);
        pointToOwned();
    }

    // Writes "<label> = <address> ...", or "<label> = NULL" for no array, as
    // the mesh printouts show their arrays.
    void printAddress(FILE* fp, const char* label) const {
        if (m_data)
            fprintf(fp, "%s = %p ...\n", label, static_cast<const void*>(m_data));
        else
            fprintf(fp, "%s = NULL\n", label);
    }

    const T* get() const { return m_data; }
    const T& operator[](int i) const { return m_data[i]; }
    int getNum() const { return m_num; }
    // Elements of owned storage; 0 for a referenced array.
    int getAllocated() const { return static_cast<int>(m_owned.capacity()); }

private:
    // Empty owned storage means no array: a vector that once held elements
    // keeps its buffer when emptied, and that buffer must not pass for data.
    void pointToOwned() {
        if (m_isDuplicate)
            m_data = m_owned.empty() ? nullptr : m_owned.data();
    }

    int m_isDuplicate;
    std::vector<T> m_owned;
    const T* m_data = nullptr;
    int m_num = 0;
};
