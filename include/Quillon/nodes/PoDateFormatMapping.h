#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDateFormatMapping.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFString.h>

#include <memory>

class PoFieldWatch;

// Puts the format in which time axes and labels below print dates into
// the traversal state.
class QUILLON_API PoDateFormatMapping : public PoNode {
    PO_NODE_HEADER(PoDateFormatMapping);

public:
    // A strftime-like format; see PbDateFormatMapping.
    SoSFString format;

    PoDateFormatMapping();

    // The owned mapping, brought up to date with the field.
    const PbDateFormatMapping* getDateFormatMapping(void);

    void doAction(SoAction* action) override;

protected:
    ~PoDateFormatMapping() override;

private:
    PbDateFormatMapping m_mapping;
    std::unique_ptr<PoFieldWatch> m_formatChanged;
};
