#pragma once
#include <algorithm>
#include <cstring>
#include <new>

// Growable array with value semantics shared by PbArrayOfInt, PbArrayOfLong
// and PbArrayOfFloat.  Capacity grows in multiples of the growth step; reads
// are not bound-checked.
template <typename T> class PbArray {
public:
    PbArray() = default;
    PbArray(const PbArray& other) { assign(other); }
    PbArray& operator=(const PbArray& other) {
        if (this != &other)
            assign(other);
        return *this;
    }
    ~PbArray() { delete[] m_data; }

    int add(T value) {
        if (m_lastIndex + 1 >= m_capacity && !resize(m_lastIndex + 2))
            return -1;
        m_data[++m_lastIndex] = value;
        return m_lastIndex;
    }
    PbArray& operator+=(T value) {
        add(value);
        return *this;
    }

    // Stores at index i, growing the storage and raising the count as needed.
    void set(int i, T value) {
        if (i < 0 || (i >= m_capacity && !resize(i + 1)))
            return;
        m_data[i] = value;
        m_lastIndex = std::max(m_lastIndex, i);
    }

    T get(int i) const { return m_data[i]; }
    const T& operator[](int i) const { return m_data[i]; }
    // Raises the count to i + 1 without growing the storage: room must have
    // been made with set() or add() first.
    T& operator[](int i) {
        m_lastIndex = std::max(m_lastIndex, i);
        return m_data[i];
    }

    T* get() { return m_data; }
    const T* get() const { return m_data; }
    int getNum() const { return m_lastIndex + 1; }
    int getCapacity() const { return m_capacity; }

    int find(T value) const {
        for (int i = 0; i <= m_lastIndex; ++i)
            if (m_data[i] == value)
                return i;
        return -1;
    }

    void empty() { m_lastIndex = -1; }

    bool operator==(const PbArray& other) const {
        return getNum() == other.getNum() && std::equal(m_data, m_data + getNum(), other.m_data);
    }
    bool operator!=(const PbArray& other) const { return !(*this == other); }

    // Changes the capacity to n elements (rounded up to the growth step when
    // growing); returns false and keeps the array when allocation fails.
    bool resize(int n) {
        if (n == m_capacity)
            return true;
        if (n < 0)
            return false;
        int capacity = n;
        if (n > m_capacity)
            capacity =
                m_capacity + (n - m_capacity + m_growthStep - 1) / m_growthStep * m_growthStep;
        T* data = new (std::nothrow) T[capacity];
        if (!data)
            return false;
        int kept = std::min(n, m_capacity);
        if (kept > 0)
            std::memcpy(data, m_data, sizeof(T) * kept);
        delete[] m_data;
        m_data = data;
        m_capacity = capacity;
        m_lastIndex = std::min(m_lastIndex, capacity - 1);
        return true;
    }

private:
    void assign(const PbArray& other) {
        T* data = other.m_capacity ? new T[other.m_capacity] : nullptr;
        if (other.getNum() > 0)
            std::memcpy(data, other.m_data, sizeof(T) * other.getNum());
        delete[] m_data;
        m_data = data;
        m_capacity = other.m_capacity;
        m_lastIndex = other.m_lastIndex;
        m_growthStep = other.m_growthStep;
    }

    T* m_data = nullptr;
    int m_capacity = 0;
    int m_lastIndex = -1;
    int m_growthStep = 10;
};
