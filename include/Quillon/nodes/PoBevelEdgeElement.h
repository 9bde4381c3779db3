#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoBevelEdge.h>

#include <Inventor/elements/SoReplacedElement.h>

// The bevel settings of the shapes below.
class QUILLON_API PoBevelEdgeElement : public SoReplacedElement {
    PO_ELEMENT_HEADER(PoBevelEdgeElement);

public:
    struct Values {
        int on;
        float radius;
        PoBevelEdge::RadiusFlag radiusFlag;
        float angle;
    };

    void init(SoState* state) override;
    static void set(SoState* state, SoNode* node, int on, float radius,
                    PoBevelEdge::RadiusFlag radiusFlag, float angle);
    static void get(SoState* state, int& on, float& radius, PoBevelEdge::RadiusFlag& radiusFlag,
                    float& angle);
    static Values getDefault(void) { return {1, 0.05f, PoBevelEdge::RELATIVE_RADIUS, 0.5f}; }

protected:
    ~PoBevelEdgeElement() override;

private:
    Values m_values = getDefault();
};
