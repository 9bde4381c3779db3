#pragma once
#include <Inventor/SbBox2f.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>

#include <vector>

class PbMiscTextAttr;
class SoNode;

// The text builder: every text that the library draws (graduations,
// titles, labels, values, legends) is made and measured here.
//
// Sizes.  The font size is the distance between the baselines of two lines
// of a text, in scene units; capitals and digits stand CAP_HEIGHT times the
// size above their baseline, whatever the font.  A one-line text therefore
// covers 0.65 * size above its baseline (descenders hang below), and a text
// of n lines (n - 1) * size + 0.65 * size: that is getHeight().
//
// Lines.  A line feed always starts a new line.  With a line length above
// 0, a line is also broken at the break character once the next word would
// make it longer than that many characters; the break character is dropped
// where the line breaks and kept inside a line.  A word longer than the
// line length stays whole.
//
// Placement.  A text is built in the XY plane around its anchor.  The path
// turns it about the anchor by quarter turns: PATH_RIGHT reads along +X,
// PATH_UP along +Y, PATH_LEFT along -X (upside down), PATH_DOWN along -Y.
// The justification is taken in the text's own frame before the path turns
// it: left, centre or right of each line at the anchor, and the anchor at
// the top of the capitals of the first line, halfway, or on the baseline of
// the last line.  setSide() chooses the justification that puts the text on
// one side of its anchor, or in the corner between two sides, whatever the
// path, as axes, bars and legends need.  A mirrored text reads from the
// back of its plane.  build() may turn the text further by an angle about
// +Z (labels along a line); readableAngle() keeps such an angle from
// turning a text upside down.
//
// Kinds.  With the base kit's text type SO_ANNO_TEXT3 (the default) and
// VRML2 mode off, texts are flat and drawn over the scene, never hidden by
// it; their lighting is the enclosing appearance's.  Otherwise they are
// texts of the scene, lit by a light model of their own and, when the text
// attributes ask for a profile, extruded: along the profile of the
// traversal state (profile enabled) or along the library's own (predefined
// profile enabled).  At render, texts are outlined when the text-outline
// element is on: their glyphs are drawn once more as lines, which keeps
// thin strokes of small texts visible.
//
// Measures come from the toolkit's font metrics of the font drawn: widths
// are the advances of the lines, heights the extents of their glyphs.
//
// Texts are UTF-8; bytes that are not UTF-8 are taken as Latin-1
// characters.
class PiText {
public:
    enum Path { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3 };
    enum HorizontalJustification { JUSTIFY_LEFT = 0, JUSTIFY_CENTER = 1, JUSTIFY_RIGHT = 2 };
    enum VerticalJustification { JUSTIFY_BOTTOM = 0, JUSTIFY_HALF = 1, JUSTIFY_TOP = 2 };
    // Where a text stands relative to its anchor, in the plane of the text.
    enum Side { SIDE_CENTER = 0, SIDE_RIGHT = 1, SIDE_ABOVE = 2, SIDE_LEFT = 3, SIDE_BELOW = 4 };

    static constexpr float CAP_HEIGHT = 0.65f;

    // Font "defaultFont" of size 1, no line breaking, PATH_RIGHT, left and
    // baseline justified, the default text attributes' profile switches.
    PiText();

    // Font name, line breaking and profile switches of the attributes;
    // null gives the default attributes.  A font name set with setFontName
    // stays in force.
    void setMiscTextAttr(const PbMiscTextAttr* attributes);
    // An empty name means the font of the text attributes.
    void setFontName(const SbString& name);
    void setFontSize(float size);
    void setLineBreak(char endLineChar, int lineLength);
    void setPath(Path path);
    void setJustification(HorizontalJustification horizontal, VerticalJustification vertical);
    // The text on that side of its anchor, centred along it; with a second,
    // perpendicular side, in the corner between both.  Uses the path and
    // the mirroring in force: set them first.
    void setSide(Side side, Side secondSide = SIDE_CENTER);
    void setMirrored(bool mirrored);

    SbString getFontName() const;
    float getFontSize() const { return m_size; }
    Path getPath() const { return m_path; }
    HorizontalJustification getHorizontalJustification() const { return m_horizontal; }
    VerticalJustification getVerticalJustification() const { return m_vertical; }

    std::vector<SbString> getLines(const SbString& text) const;
    // The widest line, along the reading direction.
    float getWidth(const SbString& text) const;
    // Across the reading direction, from the last baseline to the top of
    // the first line's capitals.
    float getHeight(const SbString& text) const;
    // What the drawn text covers, around its anchor, path included.
    SbBox2f getBox(const SbString& text) const;
    // What buildWithExponent draws, around its anchor, path included.
    SbBox2f getBoxWithExponent(const SbString& text, const SbString& exponent) const;
    // The corners of getBox grown by margin on every side, turned and
    // placed as build() places the text, counterclockwise.
    void getCorners(const SbString& text, const SbVec3f& position, float angle, float margin,
                    SbVec3f corners[4]) const;

    // A new node, not referenced, that draws the text with its anchor at
    // position, turned by angle (radians, counterclockwise about +Z) on top
    // of the path.
    SoNode* build(const SbString& text, const SbVec3f& position, float angle = 0.0f) const;
    // The same with the middle of what the text's glyphs cover at position,
    // whatever the justification: markers such as "." or "+" stand on
    // their point.
    SoNode* buildCentered(const SbString& text, const SbVec3f& position) const;
    // The same for a one-line text followed by a smaller, raised exponent
    // (a power of ten such as 10 and 3), justified as one text.
    SoNode* buildWithExponent(const SbString& text, const SbString& exponent,
                              const SbVec3f& position, float angle = 0.0f) const;

    // Whether texts are drawn over the scene (see Kinds above).
    static bool isAnnotationText();
    // The angle, turned by half a turn when needed, so that the text reads
    // from left to right: in (-pi/2, pi/2].
    static float readableAngle(float angle);

    static SbString fromLatin1(const char* text);
    // Characters beyond Latin-1 become '?'.
    static SbString toLatin1(const SbString& text);

private:
    float toolkitFontSize(float size) const;
    std::vector<SbBox2f> measureLines(const std::vector<SbString>& lines) const;
    float justificationOffsetY(float lastBaseline, float capTop) const;
    // The exponent's text, and the origins of the text's and the
    // exponent's baselines in the text's frame.
    PiText exponentLayout(const SbString& text, const SbString& exponent, SbVec2f& textOrigin,
                          SbVec2f& exponentOrigin) const;
    void extendByLines(SbBox2f& box, const std::vector<SbString>& lines, const SbVec2f& origin,
                       HorizontalJustification justification) const;
    void setFacingEdge(int quarterTurnsOfSide);
    float pathAngle() const;
    SbVec2f toPlane(const SbVec2f& point) const;
    SoNode* buildLines(const std::vector<SbString>& lines, float size, const SbVec2f& offset,
                       HorizontalJustification justification, const SbVec3f& position,
                       float angle) const;

    SbString m_fontName;
    SbString m_attributesFontName;
    float m_size = 1.0f;
    char m_endLineChar = ' ';
    int m_lineLength = 0;
    int m_profileEnabled = 0;
    int m_predefinedProfileEnabled = 1;
    Path m_path = PATH_RIGHT;
    HorizontalJustification m_horizontal = JUSTIFY_LEFT;
    VerticalJustification m_vertical = JUSTIFY_BOTTOM;
    bool m_mirrored = false;
};
