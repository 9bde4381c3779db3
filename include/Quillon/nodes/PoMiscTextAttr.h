#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFShort.h>
#include <Inventor/fields/SoSFString.h>

#include <memory>

class PoFieldWatch;

// Puts the text attributes that all chart texts below share into the
// traversal state.
class QUILLON_API PoMiscTextAttr : public PoNode {
    PO_NODE_HEADER(PoMiscTextAttr);

public:
    SoSFString fontName;
    SoSFShort lineLength;
    SoSFShort endLineChar;
    SoSFBool profileEnabled;
    SoSFBool predefinedProfileEnabled;
    SoSFBool outliningEnabled;

    PoMiscTextAttr();

    // The owned attributes, brought up to date with the fields.
    const PbMiscTextAttr* getMiscTextAttr(void);

    void doAction(SoAction* action) override;

protected:
    ~PoMiscTextAttr() override;

private:
    PbMiscTextAttr m_attributes;
    std::unique_ptr<PoFieldWatch> m_fieldsChanged;
    std::unique_ptr<PoFieldWatch> m_fontNameChanged;
};
