#include "nodes/PoFieldWatch.h"

#include <Inventor/sensors/SoFieldSensor.h>

PoFieldWatch::PoFieldWatch(std::initializer_list<SoField*> fields, SoSensorCB* changed,
                           void* data) {
    for (SoField* field : fields) {
        auto* sensor = new SoFieldSensor(changed, data);
        sensor->setPriority(0);
        m_fields.append(field);
        m_sensors.push_back(sensor);
    }
    attach();
}

PoFieldWatch::PoFieldWatch(std::initializer_list<SoField*> fields)
    : PoFieldWatch(fields, &PoFieldWatch::raise, this) {}

PoFieldWatch::~PoFieldWatch() {
    for (SoFieldSensor* sensor : m_sensors)
        delete sensor;
}

void PoFieldWatch::attach() {
    for (size_t i = 0; i < m_sensors.size(); ++i)
        m_sensors[i]->attach(m_fields[static_cast<int>(i)]);
}

void PoFieldWatch::detach() {
    for (SoFieldSensor* sensor : m_sensors)
        sensor->detach();
}

bool PoFieldWatch::takeRaised() {
    const bool raised = m_raised;
    m_raised = false;
    return raised;
}

void PoFieldWatch::raise(void* data, SoSensor*) {
    static_cast<PoFieldWatch*>(data)->m_raised = true;
}
