#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbNonLinearDataMapping2.h>
#include <Quillon/nodes/PoDataMapping.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoSFEnum.h>

// A data mapping by levels: constant colours between the values
// (NON_LINEAR_PER_LEVEL, one more colour than values) or colours
// interpolated between them (LINEAR_PER_LEVEL).
class QUILLON_API PoNonLinearDataMapping2 : public PoDataMapping {
    PO_NODE_HEADER(PoNonLinearDataMapping2);

public:
    enum Type {
        NON_LINEAR_PER_LEVEL = PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL,
        LINEAR_PER_LEVEL = PbNonLinearDataMapping2::LINEAR_PER_LEVEL
    };

    SoSFEnum type;
    SoMFFloat value;
    SoMFColor color;
    SoMFFloat transparency;

    PoNonLinearDataMapping2();

protected:
    ~PoNonLinearDataMapping2() override;
    PbDataMapping* ownedMapping(void) override { return &m_mapping; }
    void updateDataMapping(void) override;

private:
    PbNonLinearDataMapping2 m_mapping;
    std::unique_ptr<PoFieldWatch> m_levelsChanged;
};
