#include <Quillon/nodes/PoLinearDataMapping.h>

#include "nodes/PoFieldWatch.h"

PO_NODE_SOURCE(PoLinearDataMapping, PoDataMapping)

PoLinearDataMapping::PoLinearDataMapping() {
    SO_NODE_CONSTRUCTOR(PoLinearDataMapping);
    SO_NODE_ADD_FIELD(value1, (0.0f));
    SO_NODE_ADD_FIELD(color1, (0.0f, 0.0f, 0.0f));
    SO_NODE_ADD_FIELD(transparency1, (0.0f));
    SO_NODE_ADD_FIELD(value2, (1.0f));
    SO_NODE_ADD_FIELD(color2, (1.0f, 1.0f, 1.0f));
    SO_NODE_ADD_FIELD(transparency2, (0.0f));
    m_valuesChanged.reset(
        new PoFieldWatch({&value1, &color1, &transparency1, &value2, &color2, &transparency2}));
}

PoLinearDataMapping::~PoLinearDataMapping() = default;

void PoLinearDataMapping::updateDataMapping(void) {
    PoDataMapping::updateDataMapping();
    if (m_valuesChanged->takeRaised())
        m_mapping.setValues(value1.getValue(), color1.getValue(), transparency1.getValue(),
                            value2.getValue(), color2.getValue(), transparency2.getValue());
}
