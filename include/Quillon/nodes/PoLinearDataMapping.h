#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/nodes/PoDataMapping.h>

// A data mapping that interpolates linearly between two values, colours
// and transparencies.
class QUILLON_API PoLinearDataMapping : public PoDataMapping {
    PO_NODE_HEADER(PoLinearDataMapping);

public:
    SoSFFloat value1;
    SoSFColor color1;
    SoSFFloat transparency1;
    SoSFFloat value2;
    SoSFColor color2;
    SoSFFloat transparency2;

    PoLinearDataMapping();

protected:
    ~PoLinearDataMapping() override;
    PbDataMapping* ownedMapping(void) override { return &m_mapping; }
    void updateDataMapping(void) override;

private:
    PbLinearDataMapping m_mapping;
    std::unique_ptr<PoFieldWatch> m_valuesChanged;
};
