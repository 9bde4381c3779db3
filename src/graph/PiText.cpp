#include "graph/PiText.h"

#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PoBase.h>
#include <Quillon/graph/PoDebugError.h>

#include "platform/PfText.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbLinear.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLinearProfile.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoProfileCoordinate2.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

namespace {
using CodePoints = std::vector<uint32_t>;

const char* const s_defaultFontName = "defaultFont";
// Depth of the predefined profile, in units of the toolkit's font size.
const float s_predefinedDepth = 0.15f;
// Measures are kept per font and line; the store is emptied when it grows
// beyond this many.
const size_t s_maxStoredMeasures = 8192;
// An exponent's size, and how far its baseline stands above the text's, in
// capital heights of the text.
const float s_exponentScale = 0.7f;
const float s_exponentRaise = 0.6f;

// Length of the UTF-8 sequence at s with its code point, or 0 when the
// bytes there are not UTF-8.
int utf8Sequence(const unsigned char* s, uint32_t& codePoint) {
    if (s[0] < 0x80) {
        codePoint = s[0];
        return 1;
    }
    int length;
    uint32_t smallest;
    if ((s[0] & 0xE0) == 0xC0) {
        length = 2, smallest = 0x80, codePoint = s[0] & 0x1F;
    } else if ((s[0] & 0xF0) == 0xE0) {
        length = 3, smallest = 0x800, codePoint = s[0] & 0x0F;
    } else if ((s[0] & 0xF8) == 0xF0) {
        length = 4, smallest = 0x10000, codePoint = s[0] & 0x07;
    } else {
        return 0;
    }
    for (int i = 1; i < length; ++i) {
        if ((s[i] & 0xC0) != 0x80)
            return 0;
        codePoint = (codePoint << 6) | (s[i] & 0x3F);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return codePoint < smallest || codePoint > 0x10FFFF || surrogate ? 0 : length;
}

CodePoints decode(const char* text) {
    CodePoints codePoints;
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    while (*s) {
        uint32_t codePoint;
        const int length = utf8Sequence(s, codePoint);
        codePoints.push_back(length ? codePoint : *s);
        s += length ? length : 1;
    }
    return codePoints;
}

void appendUtf8(std::string& out, uint32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

SbString encode(CodePoints::const_iterator begin, CodePoints::const_iterator end) {
    std::string out;
    for (auto c = begin; c != end; ++c)
        appendUtf8(out, *c);
    return SbString(out.c_str());
}

// Splits at every occurrence of the separator.
std::vector<CodePoints> split(const CodePoints& text, uint32_t separator) {
    std::vector<CodePoints> parts(1);
    for (uint32_t c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back().push_back(c);
    }
    return parts;
}

// Greedy filling of lines of at most lineLength characters with the words.
void appendWrapped(const CodePoints& paragraph, uint32_t breakChar, size_t lineLength,
                   std::vector<SbString>& lines) {
    const std::vector<CodePoints> words = split(paragraph, breakChar);
    CodePoints line = words.front();
    for (size_t i = 1; i < words.size(); ++i) {
        if (line.size() + 1 + words[i].size() <= lineLength) {
            line.push_back(breakChar);
            line.insert(line.end(), words[i].begin(), words[i].end());
        } else {
            lines.push_back(encode(line.begin(), line.end()));
            line = words[i];
        }
    }
    lines.push_back(encode(line.begin(), line.end()));
}

// Bounding box of one line in the font at toolkit size 1, from the
// toolkit's own metrics.
SbBox3f measureWithToolkit(const SbString& fontName, const SbString& line) {
    auto* scene = new SoSeparator;
    scene->ref();
    auto* font = new SoFont;
    font->name = fontName;
    font->size = 1.0f;
    scene->addChild(font);
    auto* text = new SoText3;
    text->string = line;
    scene->addChild(text);
    SoGetBoundingBoxAction action(SbViewportRegion(1, 1));
    action.apply(scene);
    scene->unref();
    return action.getBoundingBox();
}

SbBox2f measureUnit(const SbString& fontName, const SbString& line) {
    static std::mutex mutex;
    static std::unordered_map<std::string, SbBox2f> stored;
    std::string key(fontName.getString());
    key += '\n';
    key += line.getString();
    std::lock_guard<std::mutex> lock(mutex);
    const auto found = stored.find(key);
    if (found != stored.end())
        return found->second;
    const SbBox3f box = measureWithToolkit(fontName, line);
    SbBox2f extent;
    if (!box.isEmpty())
        extent.setBounds(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1]);
    if (stored.size() >= s_maxStoredMeasures)
        stored.clear();
    stored.emplace(key, extent);
    return extent;
}

// Height of the digits at toolkit size 1.
float capRatio(const SbString& fontName) {
    const SbBox2f zero = measureUnit(fontName, "0");
    return !zero.isEmpty() && zero.getMax()[1] > 0 ? zero.getMax()[1] : 0.75f;
}

int quarterTurns(PiText::Path path) {
    static const int turns[] = {0, 2, 1, 3};
    return turns[path];
}

SbVec2f turnByQuarters(const SbVec2f& p, int quarters) {
    switch (quarters & 3) {
    case 1:
        return SbVec2f(-p[1], p[0]);
    case 2:
        return SbVec2f(-p[0], -p[1]);
    case 3:
        return SbVec2f(p[1], -p[0]);
    default:
        return p;
    }
}

// Horizontal offset of a line of the given width for the justification.
float lineOffsetX(PiText::HorizontalJustification justification, float width) {
    switch (justification) {
    case PiText::JUSTIFY_CENTER:
        return -0.5f * width;
    case PiText::JUSTIFY_RIGHT:
        return -width;
    default:
        return 0.0f;
    }
}

SoText3::Justification toolkitJustification(PiText::HorizontalJustification justification) {
    switch (justification) {
    case PiText::JUSTIFY_CENTER:
        return SoText3::CENTER;
    case PiText::JUSTIFY_RIGHT:
        return SoText3::RIGHT;
    default:
        return SoText3::LEFT;
    }
}

void addPredefinedProfile(SoSeparator* holder) {
    auto* coordinates = new SoProfileCoordinate2;
    coordinates->point.set1Value(0, SbVec2f(0.0f, 0.0f));
    coordinates->point.set1Value(1, SbVec2f(s_predefinedDepth, 0.0f));
    holder->addChild(coordinates);
    auto* profile = new SoLinearProfile;
    const int32_t indices[] = {0, 1};
    profile->index.setValues(0, 2, indices);
    holder->addChild(profile);
}
} // namespace

PiText::PiText() {
    setMiscTextAttr(nullptr);
}

void PiText::setMiscTextAttr(const PbMiscTextAttr* attributes) {
    const PbMiscTextAttr defaults;
    const PbMiscTextAttr& source = attributes ? *attributes : defaults;
    m_attributesFontName = source.getFontName();
    source.getLineLength(m_endLineChar, m_lineLength);
    m_profileEnabled = source.isProfileEnabled();
    m_predefinedProfileEnabled = source.isPredefinedProfileEnabled();
}

void PiText::setFontName(const SbString& name) {
    m_fontName = name;
}

void PiText::setFontSize(float size) {
    if (!(size > 0.0f) || !std::isfinite(size)) {
        PoDebugError::post("PiText::setFontSize", "font size %g is not a positive number", size);
        return;
    }
    m_size = size;
}

void PiText::setLineBreak(char endLineChar, int lineLength) {
    m_endLineChar = endLineChar;
    m_lineLength = lineLength;
}

void PiText::setPath(Path path) {
    if (path < PATH_RIGHT || path > PATH_DOWN) {
        PoDebugError::post("PiText::setPath", "unknown text path %d", static_cast<int>(path));
        return;
    }
    m_path = path;
}

void PiText::setJustification(HorizontalJustification horizontal, VerticalJustification vertical) {
    if (horizontal < JUSTIFY_LEFT || horizontal > JUSTIFY_RIGHT || vertical < JUSTIFY_BOTTOM ||
        vertical > JUSTIFY_TOP) {
        PoDebugError::post("PiText::setJustification", "unknown justification %d, %d",
                           static_cast<int>(horizontal), static_cast<int>(vertical));
        return;
    }
    m_horizontal = horizontal;
    m_vertical = vertical;
}

void PiText::setSide(Side side, Side secondSide) {
    if (side < SIDE_CENTER || side > SIDE_BELOW || secondSide < SIDE_CENTER ||
        secondSide > SIDE_BELOW) {
        PoDebugError::post("PiText::setSide", "unknown side %d, %d", static_cast<int>(side),
                           static_cast<int>(secondSide));
        return;
    }
    m_horizontal = JUSTIFY_CENTER;
    m_vertical = JUSTIFY_HALF;
    for (Side each : {side, secondSide}) {
        if (each != SIDE_CENTER)
            setFacingEdge(each - SIDE_RIGHT);
    }
}

// Justifies the text on the edge that faces the anchor when the text
// stands on the side that many quarter turns from +X of the plane: the
// side's opposite, brought into the text's own frame.
void PiText::setFacingEdge(int quarterTurnsOfSide) {
    int edge = (quarterTurnsOfSide + 2 - quarterTurns(m_path) + 4) & 3;
    if (m_mirrored)
        edge = (6 - edge) & 3;
    switch (edge) {
    case 0:
        m_horizontal = JUSTIFY_RIGHT;
        break;
    case 1:
        m_vertical = JUSTIFY_TOP;
        break;
    case 2:
        m_horizontal = JUSTIFY_LEFT;
        break;
    default:
        m_vertical = JUSTIFY_BOTTOM;
        break;
    }
}

void PiText::setMirrored(bool mirrored) {
    m_mirrored = mirrored;
}

SbString PiText::getFontName() const {
    if (m_fontName.getLength() > 0)
        return m_fontName;
    return m_attributesFontName.getLength() > 0 ? m_attributesFontName
                                                : SbString(s_defaultFontName);
}

std::vector<SbString> PiText::getLines(const SbString& text) const {
    std::vector<SbString> lines;
    const uint32_t breakChar = static_cast<unsigned char>(m_endLineChar);
    for (const CodePoints& paragraph : split(decode(text.getString()), '\n')) {
        if (m_lineLength > 0 && breakChar != 0)
            appendWrapped(paragraph, breakChar, static_cast<size_t>(m_lineLength), lines);
        else
            lines.push_back(encode(paragraph.begin(), paragraph.end()));
    }
    return lines;
}

float PiText::toolkitFontSize(float size) const {
    return CAP_HEIGHT * size / capRatio(getFontName());
}

std::vector<SbBox2f> PiText::measureLines(const std::vector<SbString>& lines) const {
    const SbString fontName = getFontName();
    const float scale = toolkitFontSize(m_size);
    std::vector<SbBox2f> extents;
    for (const SbString& line : lines) {
        SbBox2f extent = measureUnit(fontName, line);
        if (!extent.isEmpty())
            extent.setBounds(extent.getMin() * scale, extent.getMax() * scale);
        extents.push_back(extent);
    }
    return extents;
}

float PiText::getWidth(const SbString& text) const {
    float width = 0.0f;
    for (const SbBox2f& extent : measureLines(getLines(text))) {
        if (!extent.isEmpty())
            width = std::max(width, extent.getMax()[0] - extent.getMin()[0]);
    }
    return width;
}

float PiText::getHeight(const SbString& text) const {
    const size_t lines = getLines(text).size();
    return static_cast<float>(lines - 1) * m_size + CAP_HEIGHT * m_size;
}

// Height of the first baseline above the anchor for a text whose last
// baseline lies at lastBaseline (0 or below) and whose highest capitals at
// capTop from its first baseline.
float PiText::justificationOffsetY(float lastBaseline, float capTop) const {
    switch (m_vertical) {
    case JUSTIFY_TOP:
        return -capTop;
    case JUSTIFY_HALF:
        return -0.5f * (lastBaseline + capTop);
    default:
        return -lastBaseline;
    }
}

// From the text's own frame to the plane around the anchor.
SbVec2f PiText::toPlane(const SbVec2f& point) const {
    const SbVec2f mirrored(m_mirrored ? -point[0] : point[0], point[1]);
    return turnByQuarters(mirrored, quarterTurns(m_path));
}

float PiText::pathAngle() const {
    return static_cast<float>(quarterTurns(m_path)) * static_cast<float>(M_PI_2);
}

SbBox2f PiText::getBox(const SbString& text) const {
    const std::vector<SbString> lines = getLines(text);
    const float lastBaseline = -static_cast<float>(lines.size() - 1) * m_size;
    SbBox2f box;
    extendByLines(box, lines,
                  SbVec2f(0.0f, justificationOffsetY(lastBaseline, CAP_HEIGHT * m_size)),
                  m_horizontal);
    return box;
}

SbBox2f PiText::getBoxWithExponent(const SbString& text, const SbString& exponent) const {
    SbVec2f textOrigin, exponentOrigin;
    const PiText small = exponentLayout(text, exponent, textOrigin, exponentOrigin);
    SbBox2f box;
    extendByLines(box, {text}, textOrigin, JUSTIFY_LEFT);
    small.extendByLines(box, {exponent}, exponentOrigin, JUSTIFY_LEFT);
    return box;
}

// Extends box by what the lines cover in the plane, the first baseline's
// origin at origin in the text's frame, each line justified there.
void PiText::extendByLines(SbBox2f& box, const std::vector<SbString>& lines, const SbVec2f& origin,
                           HorizontalJustification justification) const {
    const std::vector<SbBox2f> extents = measureLines(lines);
    for (size_t i = 0; i < extents.size(); ++i) {
        const SbBox2f& extent = extents[i];
        if (extent.isEmpty())
            continue;
        const SbVec2f shift = origin + SbVec2f(lineOffsetX(justification, extent.getMax()[0]),
                                               -static_cast<float>(i) * m_size);
        box.extendBy(toPlane(extent.getMin() + shift));
        box.extendBy(toPlane(extent.getMax() + shift));
    }
}

void PiText::getCorners(const SbString& text, const SbVec3f& position, float angle, float margin,
                        SbVec3f corners[4]) const {
    SbBox2f box = getBox(text);
    if (box.isEmpty())
        box.extendBy(SbVec2f(0.0f, 0.0f));
    const SbVec2f& low = box.getMin();
    const SbVec2f& high = box.getMax();
    const SbVec2f local[4] = {
        SbVec2f(low[0] - margin, low[1] - margin), SbVec2f(high[0] + margin, low[1] - margin),
        SbVec2f(high[0] + margin, high[1] + margin), SbVec2f(low[0] - margin, high[1] + margin)};
    const float c = std::cos(angle), s = std::sin(angle);
    for (int i = 0; i < 4; ++i) {
        const SbVec2f& p = local[i];
        corners[i] = position + SbVec3f(c * p[0] - s * p[1], s * p[0] + c * p[1], 0.0f);
    }
}

SoNode* PiText::build(const SbString& text, const SbVec3f& position, float angle) const {
    const std::vector<SbString> lines = getLines(text);
    const float lastBaseline = -static_cast<float>(lines.size() - 1) * m_size;
    const SbVec2f offset(0.0f, justificationOffsetY(lastBaseline, CAP_HEIGHT * m_size));
    return buildLines(lines, m_size, offset, m_horizontal, position, angle);
}

SoNode* PiText::buildCentered(const SbString& text, const SbVec3f& position) const {
    const SbBox2f box = getBox(text);
    if (box.isEmpty())
        return build(text, position);
    const SbVec2f middle = 0.5f * (box.getMin() + box.getMax());
    return build(text, position - SbVec3f(middle[0], middle[1], 0.0f));
}

PiText PiText::exponentLayout(const SbString& text, const SbString& exponent, SbVec2f& textOrigin,
                              SbVec2f& exponentOrigin) const {
    PiText small(*this);
    small.m_size = s_exponentScale * m_size;
    const float width = getWidth(text);
    const float raise = s_exponentRaise * CAP_HEIGHT * m_size;
    const float capTop = raise + CAP_HEIGHT * small.m_size;
    textOrigin.setValue(lineOffsetX(m_horizontal, width + small.getWidth(exponent)),
                        justificationOffsetY(0.0f, capTop));
    exponentOrigin = textOrigin + SbVec2f(width, raise);
    return small;
}

SoNode* PiText::buildWithExponent(const SbString& text, const SbString& exponent,
                                  const SbVec3f& position, float angle) const {
    SbVec2f textOrigin, exponentOrigin;
    const PiText small = exponentLayout(text, exponent, textOrigin, exponentOrigin);
    auto* group = new SoSeparator;
    group->addChild(buildLines({text}, m_size, textOrigin, JUSTIFY_LEFT, position, angle));
    group->addChild(
        buildLines({exponent}, small.m_size, exponentOrigin, JUSTIFY_LEFT, position, angle));
    return group;
}

// One holder with the lines, their first baseline's origin at offset in
// the text's frame, turned and placed around the anchor.
SoNode* PiText::buildLines(const std::vector<SbString>& lines, float size, const SbVec2f& offset,
                           HorizontalJustification justification, const SbVec3f& position,
                           float angle) const {
    const bool annotation = isAnnotationText();
    const float fontSize = toolkitFontSize(size);
    SoSeparator* holder = PfText::createHolder(annotation);

    auto* font = new SoFont;
    font->name = getFontName();
    font->size = fontSize;
    holder->addChild(font);

    SbMatrix placement, mirror, turn, move;
    placement.setTranslate(SbVec3f(offset[0], offset[1], 0.0f));
    mirror.setScale(SbVec3f(m_mirrored ? -1.0f : 1.0f, 1.0f, 1.0f));
    turn.setRotate(SbRotation(SbVec3f(0.0f, 0.0f, 1.0f), pathAngle() + angle));
    move.setTranslate(position);
    placement.multRight(mirror);
    placement.multRight(turn);
    placement.multRight(move);
    auto* transform = new SoMatrixTransform;
    transform->matrix = placement;
    holder->addChild(transform);

    auto* shape = new SoText3;
    for (size_t i = 0; i < lines.size(); ++i)
        shape->string.set1Value(static_cast<int>(i), lines[i]);
    shape->justification = toolkitJustification(justification);
    shape->spacing = size / fontSize;
    shape->parts = SoText3::FRONT;
    if (!annotation) {
        auto* lighting = new SoLightModel;
        lighting->model = SoLightModel::PHONG;
        holder->addChild(lighting);
        if (!m_profileEnabled && m_predefinedProfileEnabled)
            addPredefinedProfile(holder);
        if (m_profileEnabled || m_predefinedProfileEnabled)
            shape->parts = SoText3::ALL;
    }
    PfText::addOutlinedText(holder, shape);
    return holder;
}

bool PiText::isAnnotationText() {
    return PoBase::getTextType() == PoBase::SO_ANNO_TEXT3 && !PoBase::isVRML2Mode();
}

float PiText::readableAngle(float angle) {
    if (!std::isfinite(angle))
        return 0.0f;
    const float pi = static_cast<float>(M_PI);
    float turned = std::remainder(angle, 2.0f * pi);
    if (turned > 0.5f * pi)
        turned -= pi;
    else if (turned <= -0.5f * pi)
        turned += pi;
    return turned;
}

SbString PiText::fromLatin1(const char* text) {
    std::string out;
    for (const auto* c = reinterpret_cast<const unsigned char*>(text); *c; ++c)
        appendUtf8(out, *c);
    return SbString(out.c_str());
}

SbString PiText::toLatin1(const SbString& text) {
    std::string out;
    for (uint32_t c : decode(text.getString()))
        out += c <= 0xFF ? static_cast<char>(c) : '?';
    return SbString(out.c_str());
}
