#include <Quillon/nodes/PoDateFormatMapping.h>

#include <Quillon/nodes/PoDateFormatMappingElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoDateFormatMapping, PoNode)

PoDateFormatMapping::PoDateFormatMapping() {
    SO_NODE_CONSTRUCTOR(PoDateFormatMapping);
    SO_NODE_ADD_FIELD(format, (m_mapping.getFormat()));
    m_formatChanged.reset(new PoFieldWatch({&format}));
}

PoDateFormatMapping::~PoDateFormatMapping() = default;

const PbDateFormatMapping* PoDateFormatMapping::getDateFormatMapping(void) {
    if (m_formatChanged->takeRaised())
        m_mapping.setFormat(format.getValue());
    return &m_mapping;
}

void PoDateFormatMapping::doAction(SoAction* action) {
    PoDateFormatMappingElement::set(action->getState(), this, getDateFormatMapping());
}
