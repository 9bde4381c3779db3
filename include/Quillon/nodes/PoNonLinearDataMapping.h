#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbNonLinearDataMapping.h>
#include <Quillon/nodes/PoDataMapping.h>

// A data mapping whose colour and transparency are computed by functions
// of the application; it has no fields of its own.
class QUILLON_API PoNonLinearDataMapping : public PoDataMapping {
    PO_NODE_HEADER(PoNonLinearDataMapping);

public:
    PoNonLinearDataMapping();

    void setColorFunction(PbNonLinearDataMapping::RGBFunction function);
    void setColorFunction(PbNonLinearDataMapping::RGBFunctionWithData function, void* userData);
    void setColorFunction(PbNonLinearDataMapping::HLSFunction function);
    void setColorFunction(PbNonLinearDataMapping::HLSFunctionWithData function, void* userData);
    void setTransparencyFunction(PbNonLinearDataMapping::TransparencyFunction function);
    void setTransparencyFunction(PbNonLinearDataMapping::TransparencyFunctionWithData function,
                                 void* userData);

protected:
    ~PoNonLinearDataMapping() override;
    PbDataMapping* ownedMapping(void) override { return &m_mapping; }

private:
    PbNonLinearDataMapping m_mapping;
};
