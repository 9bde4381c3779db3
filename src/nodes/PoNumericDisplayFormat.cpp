#include <Quillon/nodes/PoNumericDisplayFormat.h>

#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoNumericDisplayFormat, PoNode)

PoNumericDisplayFormat::PoNumericDisplayFormat()
    : m_format(PbNumericDisplayFormat::AUTO_FORMAT, 0, 0) {
    SO_NODE_CONSTRUCTOR(PoNumericDisplayFormat);
    SO_NODE_ADD_FIELD(formatType, (AUTO_FORMAT));
    SO_NODE_ADD_FIELD(numDecimal, (0));
    SO_NODE_ADD_FIELD(tenPower, (0));
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, AUTO_FORMAT);
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, FLOAT_FORMAT);
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, INTEGER_FORMAT);
    SO_NODE_SET_SF_ENUM_TYPE(formatType, FormatType);
    m_formatChanged.reset(new PoFieldWatch({&formatType, &numDecimal, &tenPower}));
}

PoNumericDisplayFormat::~PoNumericDisplayFormat() = default;

const PbNumericDisplayFormat* PoNumericDisplayFormat::getFormat(void) {
    if (m_formatChanged->takeRaised())
        m_format.setFormat(static_cast<PbNumericDisplayFormat::FormatType>(formatType.getValue()),
                           tenPower.getValue(), numDecimal.getValue());
    return &m_format;
}

void PoNumericDisplayFormat::doAction(SoAction* action) {
    PoNumericDisplayFormatElement::set(action->getState(), this, getFormat());
}
