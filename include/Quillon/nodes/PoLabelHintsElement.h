#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoLabelHints.h>

#include <Inventor/SbString.h>
#include <Inventor/elements/SoReplacedElement.h>

// The label placement of the kits below; PATH_DEPEND, JUSTIFICATION_DEPEND,
// an empty text and 0 when no hints node was met.
class QUILLON_API PoLabelHintsElement : public SoReplacedElement {
    PO_ELEMENT_HEADER(PoLabelHintsElement);

public:
    void init(SoState* state) override;
    static void set(SoState* state, SoNode* node, PoLabelHints::LabelPath path,
                    PoLabelHints::Justification justification, const char* text, int labelStep,
                    int firstLabel);
    static void set(SoState* state, SoNode* node, PoLabelHints::LabelPath path,
                    PoLabelHints::Justification justification, const SbString& text, int labelStep,
                    int firstLabel);
    // Returns the label step.
    static int get(SoState* state, PoLabelHints::LabelPath& path,
                   PoLabelHints::Justification& justification, SbString& text);
    static int getFirstLabel(SoState* state);
    // What the element holds when no hints node was met; returns the label
    // step.  The first label is then 0.
    static int getDefault(PoLabelHints::LabelPath& path, PoLabelHints::Justification& justification,
                          SbString& text);

protected:
    ~PoLabelHintsElement() override;

private:
    static const PoLabelHintsElement* getReadable(SoState* state);
    void reset();

    PoLabelHints::LabelPath m_path = PoLabelHints::PATH_DEPEND;
    PoLabelHints::Justification m_justification = PoLabelHints::JUSTIFICATION_DEPEND;
    SbString m_text;
    int m_labelStep = 0;
    int m_firstLabel = 0;
};
