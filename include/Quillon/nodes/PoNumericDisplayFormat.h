#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFShort.h>

#include <memory>

class PoFieldWatch;

// Puts the format of the numbers that the kits below print into the
// traversal state.
class QUILLON_API PoNumericDisplayFormat : public PoNode {
    PO_NODE_HEADER(PoNumericDisplayFormat);

public:
    enum FormatType {
        AUTO_FORMAT = PbNumericDisplayFormat::AUTO_FORMAT,
        FLOAT_FORMAT = PbNumericDisplayFormat::FLOAT_FORMAT,
        INTEGER_FORMAT = PbNumericDisplayFormat::INTEGER_FORMAT
    };

    SoSFEnum formatType;
    SoSFShort numDecimal;
    SoSFShort tenPower;

    PoNumericDisplayFormat();

    // The owned format, brought up to date with the fields.
    const PbNumericDisplayFormat* getFormat(void);

    void doAction(SoAction* action) override;

protected:
    ~PoNumericDisplayFormat() override;

private:
    PbNumericDisplayFormat m_format;
    std::unique_ptr<PoFieldWatch> m_formatChanged;
};
