#include <Quillon/nodes/PoNonLinearDataMapping.h>

PO_NODE_SOURCE(PoNonLinearDataMapping, PoDataMapping)

PoNonLinearDataMapping::PoNonLinearDataMapping() {
    SO_NODE_CONSTRUCTOR(PoNonLinearDataMapping);
}

PoNonLinearDataMapping::~PoNonLinearDataMapping() = default;

// A new function changes the colours although no field changed: touching
// the node tells caches that recorded it.
void PoNonLinearDataMapping::setColorFunction(PbNonLinearDataMapping::RGBFunction function) {
    m_mapping.setRGBFunction(function);
    touch();
}

void PoNonLinearDataMapping::setColorFunction(PbNonLinearDataMapping::RGBFunctionWithData function,
                                              void* userData) {
    m_mapping.setRGBFunction(function, userData);
    touch();
}

void PoNonLinearDataMapping::setColorFunction(PbNonLinearDataMapping::HLSFunction function) {
    m_mapping.setHLSFunction(function);
    touch();
}

void PoNonLinearDataMapping::setColorFunction(PbNonLinearDataMapping::HLSFunctionWithData function,
                                              void* userData) {
    m_mapping.setHLSFunction(function, userData);
    touch();
}

void PoNonLinearDataMapping::setTransparencyFunction(
    PbNonLinearDataMapping::TransparencyFunction function) {
    m_mapping.setTransparencyFunction(function);
    touch();
}

void PoNonLinearDataMapping::setTransparencyFunction(
    PbNonLinearDataMapping::TransparencyFunctionWithData function, void* userData) {
    m_mapping.setTransparencyFunction(function, userData);
    touch();
}
