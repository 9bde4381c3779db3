#include <Quillon/nodes/PoFieldWatch.h>

#include <Inventor/sensors/SoFieldSensor.h>

PoFieldWatch::PoFieldWatch(std::initializer_list<SoField*> fields) {
    for (SoField* field : fields) {
        auto* sensor = new SoFieldSensor(&PoFieldWatch::fieldChanged, this);
        sensor->setPriority(0);
        sensor->attach(field);
        m_sensors.push_back(sensor);
    }
}

PoFieldWatch::~PoFieldWatch() {
    for (SoFieldSensor* sensor : m_sensors)
        delete sensor;
}

bool PoFieldWatch::takeRaised() {
    const bool raised = m_raised;
    m_raised = false;
    return raised;
}

void PoFieldWatch::fieldChanged(void* data, SoSensor*) {
    static_cast<PoFieldWatch*>(data)->m_raised = true;
}
