#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoBase.h>

class PbMiscTextAttr;
class PiNumericFormat;
class PiText;
class SoMFString;
class SoSFEnum;
class SoSFFloat;

// A part with its own separator and appearance, as charts group what they
// draw: the private separator <part>Sep under the parent, holding the
// public appearance kit <part>App and the public part itself.  In the
// class body:
#define PO_KIT_PART_WITH_APPEARANCE_HEADER(_part_)                                                 \
    SO_KIT_CATALOG_ENTRY_HEADER(_part_##Sep);                                                      \
    SO_KIT_CATALOG_ENTRY_HEADER(_part_##App);                                                      \
    SO_KIT_CATALOG_ENTRY_HEADER(_part_)
// and in the constructor:
#define PO_KIT_ADD_PART_WITH_APPEARANCE(_part_, _type_, _parent_)                                  \
    SO_KIT_ADD_CATALOG_ENTRY(_part_##Sep, SoSeparator, TRUE, _parent_, "", FALSE);                 \
    SO_KIT_ADD_CATALOG_ENTRY(_part_##App, SoAppearanceKit, TRUE, _part_##Sep, "", TRUE);           \
    SO_KIT_ADD_CATALOG_ENTRY(_part_, _type_, TRUE, _part_##Sep, "", TRUE)

// Base of the chart node kits: axes, curves, histograms, pie charts,
// legends, labels and plane or spatial shapes.
//
// Every chart draws its texts with the text attributes (font, line
// breaking, profiles) of a PoMiscTextAttr node above it, unless the
// application gives the kit attributes of its own with setMiscTextAttr.
class QUILLON_API PoPlotwright : public PoBase {
    PO_KIT_ABSTRACT_HEADER(PoPlotwright);

public:
    // Registers (and unregisters) every chart node kit, in a fixed order.
    static void initClasses(void);
    static void exitClasses(void);

    // Text attributes used in place of the traversal state's; null goes
    // back to the state's.  The kit connects to them but does not own them.
    void setMiscTextAttr(PbMiscTextAttr* attributes);
    PbMiscTextAttr* getMiscTextAttr(void) const { return m_miscTextAttr; }

    void basicObjectChange(PbBase* object) override;

protected:
    PoPlotwright();
    ~PoPlotwright() override;

    // While rebuilding: the kit's own text attributes, else those of the
    // traversal state (which the rebuild then depends on); the defaults
    // outside a traversal.
    const PbMiscTextAttr* getTextAttributes(void);
    // Sets the text builder up with those attributes, the font (empty for
    // the attributes' font) and the size.
    void setUpText(PiText& text, const SbString& fontName, float size);

    // The value of an enumerated field, or fallback (with a warning) when a
    // scene file gave it a number that is none of its count values.
    static int checkedEnum(const SoSFEnum& field, int count, int fallback);
    // A relative size; one that is not a number counts as 0 (the default).
    static float relativeSize(const SoSFFloat& field);
    // The text of a value, followed by the power of ten that the format
    // divides it by, as "E6", when there is one; UTF-8.
    static SbString valueString(const PiNumericFormat& format, float value);
    // Sets the field to count strings, a null string giving an empty one;
    // for constructors that take C strings.
    static void setStrings(SoMFString& field, int count, const char* const* strings);
    // Leaves the part out of what is written.
    void markPartDefault(const char* part);

private:
    PbMiscTextAttr* m_miscTextAttr = nullptr;
};
