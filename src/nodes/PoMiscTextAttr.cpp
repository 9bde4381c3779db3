#include <Quillon/nodes/PoMiscTextAttr.h>

#include <Quillon/nodes/PoMiscTextAttrElement.h>

#include "nodes/PoFieldWatch.h"

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoMiscTextAttr, PoNode)

PoMiscTextAttr::PoMiscTextAttr() {
    SO_NODE_CONSTRUCTOR(PoMiscTextAttr);
    SO_NODE_ADD_FIELD(fontName, ("defaultFont"));
    SO_NODE_ADD_FIELD(lineLength, (0));
    SO_NODE_ADD_FIELD(endLineChar, (32));
    SO_NODE_ADD_FIELD(profileEnabled, (FALSE));
    SO_NODE_ADD_FIELD(predefinedProfileEnabled, (TRUE));
    SO_NODE_ADD_FIELD(outliningEnabled, (TRUE));
    m_fieldsChanged.reset(new PoFieldWatch({&lineLength, &endLineChar, &profileEnabled,
                                            &predefinedProfileEnabled, &outliningEnabled}));
    m_fontNameChanged.reset(new PoFieldWatch({&fontName}));
}

PoMiscTextAttr::~PoMiscTextAttr() = default;

const PbMiscTextAttr* PoMiscTextAttr::getMiscTextAttr(void) {
    if (m_fieldsChanged->takeRaised()) {
        m_attributes.setLineLength(static_cast<char>(endLineChar.getValue()),
                                   lineLength.getValue());
        m_attributes.enableProfile(profileEnabled.getValue());
        m_attributes.enablePredefinedProfile(predefinedProfileEnabled.getValue());
        m_attributes.enableOutlining(outliningEnabled.getValue());
    }
    if (m_fontNameChanged->takeRaised())
        m_attributes.setFontName(fontName.getValue());
    return &m_attributes;
}

void PoMiscTextAttr::doAction(SoAction* action) {
    PoMiscTextAttrElement::set(action->getState(), this, getMiscTextAttr());
}
