#include <Quillon/nodes/PoDataMapping.h>

#include <Quillon/nodes/PoDataMappingElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_ABSTRACT_SOURCE(PoDataMapping, PoNode)

PoDataMapping::PoDataMapping() {
    SO_NODE_CONSTRUCTOR(PoDataMapping);
    SO_NODE_ADD_FIELD(minThresholdEnabled, (FALSE));
    SO_NODE_ADD_FIELD(minThreshold, (0.0f));
    SO_NODE_ADD_FIELD(minThresholdColor, (0.0f, 0.0f, 0.0f));
    SO_NODE_ADD_FIELD(minThresholdTransparency, (0.0f));
    SO_NODE_ADD_FIELD(maxThresholdEnabled, (FALSE));
    SO_NODE_ADD_FIELD(maxThreshold, (1.0f));
    SO_NODE_ADD_FIELD(maxThresholdColor, (0.0f, 0.0f, 0.0f));
    SO_NODE_ADD_FIELD(maxThresholdTransparency, (0.0f));
    SO_NODE_ADD_FIELD(transparencyEnabled, (FALSE));
    SO_NODE_ADD_FIELD(transparencyValueDeletedParts, (0.95f));
    m_minChanged.reset(new PoFieldWatch(
        {&minThresholdEnabled, &minThreshold, &minThresholdColor, &minThresholdTransparency}));
    m_maxChanged.reset(new PoFieldWatch(
        {&maxThresholdEnabled, &maxThreshold, &maxThresholdColor, &maxThresholdTransparency}));
    m_transparencyChanged.reset(
        new PoFieldWatch({&transparencyEnabled, &transparencyValueDeletedParts}));
}

PoDataMapping::~PoDataMapping() = default;

void PoDataMapping::updateDataMapping(void) {
    PbDataMapping* mapping = ownedMapping();
    if (m_minChanged->takeRaised()) {
        mapping->setMinThreshold(minThreshold.getValue(), minThresholdColor.getValue(),
                                 minThresholdTransparency.getValue());
        mapping->enableThresholds(minThresholdEnabled.getValue(), maxThresholdEnabled.getValue());
    }
    if (m_maxChanged->takeRaised()) {
        mapping->setMaxThreshold(maxThreshold.getValue(), maxThresholdColor.getValue(),
                                 maxThresholdTransparency.getValue());
        mapping->enableThresholds(minThresholdEnabled.getValue(), maxThresholdEnabled.getValue());
    }
    if (m_transparencyChanged->takeRaised()) {
        mapping->enableTransparency(transparencyEnabled.getValue());
        mapping->setTransparencyValueDeletedParts(transparencyValueDeletedParts.getValue());
    }
}

const PbDataMapping* PoDataMapping::getDataMapping(void) {
    updateDataMapping();
    return ownedMapping();
}

const SbColor* PoDataMapping::getColor(float value) {
    return getDataMapping()->getRGBColor(value);
}

const SbColor* PoDataMapping::getColor(float value, float& transparency) {
    return getDataMapping()->getRGBColor(value, transparency);
}

void PoDataMapping::doAction(SoAction* action) {
    PoDataMappingElement::set(action->getState(), this, getDataMapping());
}
