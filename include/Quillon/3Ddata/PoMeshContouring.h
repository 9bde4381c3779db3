#pragma once
#include <Quillon/3Ddata/PoMesh2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbLinear.h>
#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFUShort.h>

#include <memory>
#include <vector>

class PbMiscTextAttr;
class PbNumericDisplayFormat;
class PiContouring;
class SoGroup;

// The isolines of a surface mesh's node values, one per isovalue of the
// isovalues list, drawn as major and minor lines, the major ones labelled
// with their values.
//
// Lines.  The isoline of index i in the list is major when i - firstMajor is
// a whole number of majorPeriod (below firstMajor too); a period of 0 makes
// only the isoline firstMajor major.  Major and minor lines are line sets
// in majorContourLine and minorContourLine.  When the effective colouring
// (see PoMesh) is not inherited, each line takes the data mapping's colour
// (and transparency) of its isovalue, and lines whose isovalue the mapping
// gives no colour are left out; otherwise the lines take the appearance
// parts' materials.  Regions that the data mapping's thresholds delete make
// no lines along their border.
//
// Sizes.  Without a domain transformation (no domain, or one drawn as it
// is) sizes are fractions of the larger side of the mesh's boundary
// rectangle; with one, of the side of the domain's box as drawn.  The text
// height is annotFontSize (0: 0.04) times that length times
// annotFontFactor, and labels stand about annotGap times that length
// apart along a line (0: as close as they fit).
//
// Labels.  The text of a label is its isovalue written by the numeric
// display format (the kit's, else the state's) chosen over the isovalues,
// widened to the node values beyond them when the data mapping's
// thresholds are on; a common power of ten follows every value as x10 with
// a raised exponent.  Labels are placed along the major lines as
// PiContourLabels says (the gap, the clipping polygon, no overlap, the
// lines that may cross them by annotCrossStatus); their text runs along
// the line (TANGENTIAL_PATH, never upside down), or horizontally or
// vertically.  With annotIsContourClip every line stops at a label's box
// and resumes beyond it, so a label sits in a gap of its own line; when
// crossings are forbidden the forbidden lines are cut so.  With
// annotIsBackground each label has a filled box (annotBackground) and its
// border (annotBackgroundBorder).  Texts, boxes and borders are drawn over
// the scene when texts are annotation texts (PoBase::getTextType), and
// their positions, sizes and angles are those of the drawing: the domain's
// scaling does not stretch them.
//
// Bad input: a clipping polygon that has no area or points that are not
// finite restricts nothing; a negative or non-finite gap, font size or
// font factor takes its default; each is reported.
class QUILLON_API PoMeshContouring : public PoMesh2D {
    PO_KIT_HEADER(PoMeshContouring);
    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(majorContourLine);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(minorContourLine);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(annotBackground);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(annotBackgroundBorder);
    PO_KIT_PART_WITH_APPEARANCE_HEADER(annotText);

public:
    enum AnnotPath { TANGENTIAL_PATH = 0, HORIZONTAL_PATH = 1, VERTICAL_PATH = 2 };
    enum AnnotCrossStatus { CROSS_CONTOUR = 0, CROSS_MINOR_CONTOUR = 1, DONT_CROSS_CONTOUR = 2 };

    SoSFUShort majorPeriod;
    SoSFUShort firstMajor;
    SoSFBool annotIsVisible;
    SoSFEnum annotPath;
    SoSFEnum annotCrossStatus;
    SoSFBool annotIsBackground;
    SoSFBool annotIsContourClip;
    // Fraction of the reference length (see Sizes).
    SoSFFloat annotGap;
    // In the mesh's coordinates; fewer than three points restrict nothing.
    SoMFVec2f annotClippingPolygon;
    // Fraction of the reference length; 0 selects 0.04.
    SoSFFloat annotFontSize;
    SoSFFloat annotFontFactor;

    PoMeshContouring();

    // A numeric display format and text attributes used in place of the
    // state's; null goes back to the state's.  The kit connects to them
    // but does not own them.
    void setFormat(PbNumericDisplayFormat* format);
    PbNumericDisplayFormat* getFormat(void) const { return m_format; }
    void setMiscTextAttr(PbMiscTextAttr* attributes);
    PbMiscTextAttr* getMiscTextAttr(void) const { return m_miscTextAttr; }

    // The number of labels of the last rebuild.
    int getNumAnnotations(void) const { return m_numAnnotations; }

    void basicObjectChange(PbBase* object) override;

protected:
    ~PoMeshContouring() override;

    void rebuild(void) override;
    void preRebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

    // The mesh's boundary as polylines of points in the plane (one after
    // the other, with the number of points of each), and their bounding
    // rectangle; every surface mesh kind gives its own.
    void getMeshLimit(const PbMesh2D& mesh);
    void freeMeshLimit(void);
    const SbBox2f& getMeshLimitBounds(void) const { return m_limitBounds; }

    // The smallest node value when it lies below the first isovalue (with
    // lower) and the largest when above the last one (with upper); the
    // limits start at the first and the last isovalue, and the flags say
    // which were moved.
    struct IsovalueLimits {
        float lower;
        float upper;
        bool lowerFound;
        bool upperFound;
    };
    IsovalueLimits searchUpperLowerIsoval(const float* values, bool lower, bool upper) const;

    // A point of the mesh's space in the space where labels are drawn.
    SbVec3f getProjection(const SbVec3f& point) const;

private:
    struct Lines;
    struct Annotation;

    const float* readNodeValues(const PbMesh2D& mesh, const float*& z);
    void emptyParts(void);
    void setDrawingTransform(void);
    bool isMajor(int isoIndex) const;
    void sortLines(Lines& lines);
    float getReferenceLength(void) const;
    float checkedFraction(const SoSFFloat& field, const char* name, float fallback,
                          bool zeroAllowed) const;
    void makeTexts(Lines& lines, const float* values);
    SbBox2f labelFrame(const Lines& lines, int isoIndex) const;
    void computeContourLineAnnot(Lines& lines, const PbMesh2D& mesh, const float* values);
    std::vector<SbVec2f> drawingClipPolygon(void) const;
    void clipContourLines(Lines& lines);
    void drawContourLines(const Lines& lines, bool major, const char* part);
    void drawAnnotation(const Lines& lines);

    PbNumericDisplayFormat* m_format = nullptr;
    PbMiscTextAttr* m_miscTextAttr = nullptr;
    std::unique_ptr<PiContouring> m_contouring;

    // The snapshot of the rebuild.
    const PbIsovaluesList* m_isovalues = nullptr;
    SbMatrix m_drawing = SbMatrix::identity();
    bool m_hasDrawingTransform = false;
    std::vector<SbVec2f> m_limitPoints;
    std::vector<int> m_limitSizes;
    SbBox2f m_limitBounds;
    int m_numAnnotations = 0;
};
