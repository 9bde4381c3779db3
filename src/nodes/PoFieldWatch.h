#pragma once
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/sensors/SoSensor.h>

#include <initializer_list>
#include <vector>

class SoField;
class SoFieldSensor;

// Watches fields with one immediate sensor each, so that a change is seen
// synchronously inside the field's notification.  Either a function is
// called with the sensor that fired (node kits rebuild from it), or a flag
// is raised (property nodes apply their fields to their data object
// lazily, the next time the object is used, and lower the flag).  The
// sensors are attached from the start and deleted with the watch.
class PoFieldWatch {
public:
    PoFieldWatch(std::initializer_list<SoField*> fields, SoSensorCB* changed, void* data);
    // The flag starts raised, so that the first use applies every field.
    explicit PoFieldWatch(std::initializer_list<SoField*> fields);
    ~PoFieldWatch();
    PoFieldWatch(const PoFieldWatch&) = delete;
    PoFieldWatch& operator=(const PoFieldWatch&) = delete;

    // Attaching again is harmless; detached sensors report nothing.
    void attach();
    void detach();
    const SoFieldList& getFields() const { return m_fields; }

    bool isRaised() const { return m_raised; }
    // Returns whether the flag was raised, and lowers it.
    bool takeRaised();

private:
    static void raise(void* data, SoSensor* sensor);

    SoFieldList m_fields;
    std::vector<SoFieldSensor*> m_sensors;
    bool m_raised = true;
};
