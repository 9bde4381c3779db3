#include <Quillon/nodes/PoNonLinearDataMapping2.h>

#include <Quillon/graph/PoDebugError.h>

#include "nodes/PoFieldWatch.h"

PO_NODE_SOURCE(PoNonLinearDataMapping2, PoDataMapping)

PoNonLinearDataMapping2::PoNonLinearDataMapping2() {
    SO_NODE_CONSTRUCTOR(PoNonLinearDataMapping2);
    SO_NODE_ADD_FIELD(type, (LINEAR_PER_LEVEL));
    SO_NODE_ADD_FIELD(value, (0.0f));
    SO_NODE_ADD_FIELD(color, (0.0f, 0.0f, 0.0f));
    SO_NODE_ADD_FIELD(transparency, (0.0f));
    SO_NODE_DEFINE_ENUM_VALUE(Type, NON_LINEAR_PER_LEVEL);
    SO_NODE_DEFINE_ENUM_VALUE(Type, LINEAR_PER_LEVEL);
    SO_NODE_SET_SF_ENUM_TYPE(type, Type);
    m_levelsChanged.reset(new PoFieldWatch({&type, &value, &color, &transparency}));
}

PoNonLinearDataMapping2::~PoNonLinearDataMapping2() = default;

void PoNonLinearDataMapping2::updateDataMapping(void) {
    PoDataMapping::updateDataMapping();
    if (!m_levelsChanged->takeRaised())
        return;
    const auto levelType = static_cast<PbNonLinearDataMapping2::Type>(type.getValue());
    const int numValues = value.getNum();
    const int numColors = color.getNum();
    if (levelType == PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL && numColors < numValues + 1) {
        PoDebugError::post("PoNonLinearDataMapping2",
                           "The number of colours must be >= to number of values + 1");
        return;
    }
    if (numColors < numValues) {
        PoDebugError::post("PoNonLinearDataMapping2",
                           "The number of colours must be >= to number of values");
        return;
    }
    if (transparency.getNum() == numColors)
        m_mapping.setValues(levelType, numValues, value.getValues(0), color.getValues(0),
                            transparency.getValues(0));
    else
        m_mapping.setValues(levelType, numValues, value.getValues(0), color.getValues(0));
}
