#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFColor.h>
#include <Inventor/fields/SoSFFloat.h>

#include <memory>

class PoFieldWatch;

// Base of the nodes that put a data mapping (value to colour and
// transparency) into the traversal state.  The fields are applied to the
// owned mapping lazily, the next time it is used.
class QUILLON_API PoDataMapping : public PoNode {
    PO_NODE_ABSTRACT_HEADER(PoDataMapping);

public:
    SoSFBool minThresholdEnabled;
    SoSFFloat minThreshold;
    SoSFColor minThresholdColor;
    SoSFFloat minThresholdTransparency;
    SoSFBool maxThresholdEnabled;
    SoSFFloat maxThreshold;
    SoSFColor maxThresholdColor;
    SoSFFloat maxThresholdTransparency;
    SoSFBool transparencyEnabled;
    SoSFFloat transparencyValueDeletedParts;

    // The owned mapping, brought up to date with the fields.
    const PbDataMapping* getDataMapping(void);
    const SbColor* getColor(float value);
    const SbColor* getColor(float value, float& transparency);

    void doAction(SoAction* action) override;

protected:
    PoDataMapping();
    ~PoDataMapping() override;

    // The mapping the concrete node owns.
    virtual PbDataMapping* ownedMapping(void) = 0;
    // Applies the fields that changed since the last update.
    virtual void updateDataMapping(void);

private:
    std::unique_ptr<PoFieldWatch> m_minChanged;
    std::unique_ptr<PoFieldWatch> m_maxChanged;
    std::unique_ptr<PoFieldWatch> m_transparencyChanged;
};
