#pragma once
#include <initializer_list>
#include <vector>

class SoField;
class SoFieldSensor;
class SoSensor;

// Raises a flag, synchronously, whenever one of the watched fields of a
// property node changes; the node applies the fields to its data object
// lazily, the next time the object is used, and lowers the flag.
class PoFieldWatch {
public:
    // The flag starts raised, so that the first use applies every field.
    explicit PoFieldWatch(std::initializer_list<SoField*> fields);
    ~PoFieldWatch();
    PoFieldWatch(const PoFieldWatch&) = delete;
    PoFieldWatch& operator=(const PoFieldWatch&) = delete;

    bool isRaised() const { return m_raised; }
    // Returns whether the flag was raised, and lowers it.
    bool takeRaised();

private:
    static void fieldChanged(void* data, SoSensor* sensor);

    std::vector<SoFieldSensor*> m_sensors;
    bool m_raised = true;
};
