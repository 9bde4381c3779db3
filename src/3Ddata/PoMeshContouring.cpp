#include <Quillon/3Ddata/PoMeshContouring.h>

#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PiNumericFormat.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include "3Ddata/PiContourLabels.h"
#include "3Ddata/PiContouring.h"
#include "graph/PiText.h"
#include "platform/PfText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_SOURCE(PoMeshContouring, PoMesh2D)

namespace {
const float s_defaultFontSize = 0.04f;
// Room between a label's text and the edges of its box, in text heights.
const float s_boxMargin = 0.25f;

// The parts that rebuilds fill, and the separators that hold them.
const char* const s_builtParts[] = {"transform",
                                    "majorContourLine",
                                    "minorContourLine",
                                    "annotBackground",
                                    "annotBackgroundBorder",
                                    "annotText",
                                    "majorContourLineSep",
                                    "minorContourLineSep",
                                    "annotBackgroundSep",
                                    "annotBackgroundBorderSep",
                                    "annotTextSep"};

SbVec2f plane(const SbVec3f& point) {
    return SbVec2f(point[0], point[1]);
}

// A polygon without area, or with points that are not finite.
bool isDegenerate(const std::vector<SbVec2f>& polygon) {
    double twiceArea = 0.0;
    SbBox2f bounds;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        if (!std::isfinite(polygon[i][0]) || !std::isfinite(polygon[i][1]))
            return true;
        twiceArea += static_cast<double>(polygon[j][0]) * polygon[i][1] -
                     static_cast<double>(polygon[i][0]) * polygon[j][1];
        bounds.extendBy(polygon[i]);
    }
    float width, height;
    bounds.getSize(width, height);
    return !(std::fabs(twiceArea) > 1e-9 * width * height);
}

// The labels' boxes drawn by shape, which takes numCorners corners of each
// box in turn (the fifth closes a border), over the scene like the
// annotation texts when they are, under the transformation inverse (when
// given).
template <class Shape>
SoGroup* newBoxShapes(const std::vector<PiContourLabels::Label>& labels, int numCorners,
                      const SbMatrix* inverse) {
    const int numLabels = static_cast<int>(labels.size());
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setNum(numLabels * numCorners);
    SbVec3f* point = coordinates->point.startEditing();
    for (const PiContourLabels::Label& label : labels) {
        for (int k = 0; k < numCorners; ++k) {
            const SbVec2f& corner = label.box.corners[k & 3];
            *point++ = SbVec3f(corner[0], corner[1], label.anchor[2]);
        }
    }
    coordinates->point.finishEditing();
    auto* shape = new Shape;
    shape->numVertices.setNum(numLabels);
    std::fill_n(shape->numVertices.startEditing(), numLabels, numCorners);
    shape->numVertices.finishEditing();
    SoGroup* holder = PfText::createHolder(PiText::isAnnotationText());
    if (inverse) {
        auto* transform = new SoMatrixTransform;
        transform->matrix = *inverse;
        holder->addChild(transform);
    }
    holder->addChild(coordinates);
    holder->addChild(shape);
    auto* group = new SoGroup;
    group->addChild(holder);
    return group;
}
} // namespace

// The isolines of a rebuild as the labelling takes them: only the lines
// that are drawn, each with its source isoline, and their labels.
struct PoMeshContouring::Lines {
    const PiIsolines& isolines;
    std::vector<PiContourLabels::Line> lines;
    std::vector<int> isoIndices;
    std::vector<SbColor> colors;
    std::vector<float> transparencies;
    bool colored = false;
    std::vector<PiContourLabels::Label> labels;
    // Per isovalue index: the label text, and the exponent of its power of
    // ten (empty without one).
    std::vector<SbString> texts;
    SbString exponent;
    PiText text;
    std::vector<PiContourLabels::Piece> pieces;

    explicit Lines(const PiIsolines& source) : isolines(source) {}
};

PoMeshContouring::PoMeshContouring() {
    SO_KIT_CONSTRUCTOR(PoMeshContouring);
    SO_KIT_ADD_FIELD(majorPeriod, (3));
    SO_KIT_ADD_FIELD(firstMajor, (1));
    SO_KIT_ADD_FIELD(annotIsVisible, (FALSE));
    SO_KIT_ADD_FIELD(annotPath, (TANGENTIAL_PATH));
    SO_KIT_ADD_FIELD(annotCrossStatus, (CROSS_CONTOUR));
    SO_KIT_ADD_FIELD(annotIsBackground, (FALSE));
    SO_KIT_ADD_FIELD(annotIsContourClip, (FALSE));
    SO_KIT_ADD_FIELD(annotGap, (1.0f));
    SO_KIT_ADD_FIELD(annotClippingPolygon, (SbVec2f(0.0f, 0.0f)));
    SO_KIT_ADD_FIELD(annotFontSize, (0.0f));
    SO_KIT_ADD_FIELD(annotFontFactor, (1.0f));
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, TANGENTIAL_PATH);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, HORIZONTAL_PATH);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPath, VERTICAL_PATH);
    SO_KIT_SET_SF_ENUM_TYPE(annotPath, AnnotPath);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_CONTOUR);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_MINOR_CONTOUR);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, DONT_CROSS_CONTOUR);
    SO_KIT_SET_SF_ENUM_TYPE(annotCrossStatus, AnnotCrossStatus);
    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, "", TRUE);
    PO_KIT_ADD_PART_WITH_APPEARANCE(majorContourLine, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(minorContourLine, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(annotBackground, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(annotBackgroundBorder, SoGroup, alternateRep);
    PO_KIT_ADD_PART_WITH_APPEARANCE(annotText, SoGroup, alternateRep);
    SO_KIT_INIT_INSTANCE();
    watchFields({&majorPeriod, &firstMajor, &annotIsVisible, &annotPath, &annotCrossStatus,
                 &annotIsBackground, &annotIsContourClip, &annotGap, &annotClippingPolygon,
                 &annotFontSize, &annotFontFactor});
    for (const char* part : {"annotTextApp.lightModel", "annotBackgroundApp.lightModel"}) {
        auto* model = new SoLightModel;
        model->model = SoLightModel::BASE_COLOR;
        setPart(part, model);
    }
    // The domain's transformation goes into the part transform, under
    // which labels are drawn unstretched.
    enableDomainTransform(0);
}

PoMeshContouring::~PoMeshContouring() {
    changeConnection(m_format, nullptr);
    changeConnection(m_miscTextAttr, nullptr);
}

// ------------------------------------------------------ connected objects

void PoMeshContouring::setFormat(PbNumericDisplayFormat* format) {
    PoBase::connectObject(m_format, format);
}

void PoMeshContouring::setMiscTextAttr(PbMiscTextAttr* attributes) {
    PoBase::connectObject(m_miscTextAttr, attributes);
}

void PoMeshContouring::basicObjectChange(PbBase* object) {
    PoMesh2D::basicObjectChange(object);
    PoBase::manageConnectedObject(object, m_format);
    PoBase::manageConnectedObject(object, m_miscTextAttr);
    // Labels are placed in the drawing, which the transformation changes.
    if (object && object == getDomain() && object->getChangeType() == PbBase::DOMAIN_TRANSFORM_TYPE)
        touchKit();
}

// ---------------------------------------------------------------- rebuild

void PoMeshContouring::preRebuild(void) {
    PoMesh2D::preRebuild();
    m_isovalues = addIsovaluesListInCache(true);
}

void PoMeshContouring::setDefaultOnNonWritingFields(void) {
    PoMesh2D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != FOLD_NODE_WRITE_FORMAT)
        return;
    for (const char* part : s_builtParts) {
        if (SoField* field = getField(part))
            field->setDefault(TRUE);
    }
}

void PoMeshContouring::rebuild(void) {
    RebuildScope scope(this);
    m_numAnnotations = 0;
    freeMeshLimit();
    const PbMesh2D* mesh = getCurrentMesh2D();
    const float* z = nullptr;
    const float* values = mesh && !mesh->isEmpty() ? readNodeValues(*mesh, z) : nullptr;
    if (!values || !m_isovalues) {
        emptyParts();
        return;
    }
    setDrawingTransform();
    if (!m_contouring)
        m_contouring = std::make_unique<PiContouring>();
    mesh->meshContouring(m_contouring.get(), z);
    m_contouring->setDataMapping(getCurrentDataMapping());
    m_contouring->setIsovaluesList(m_isovalues);
    m_contouring->preventFromThresholdWall(values);
    m_contouring->computeContouringPoints(values, z);

    Lines lines(m_contouring->getIsolines());
    sortLines(lines);
    if (annotIsVisible.getValue())
        computeContourLineAnnot(lines, *mesh, values);
    clipContourLines(lines);
    drawContourLines(lines, true, "majorContourLine");
    drawContourLines(lines, false, "minorContourLine");
    drawAnnotation(lines);
}

// The node values of the value set valuesIndex, and the z values: those of
// the set zValuesIndex, else the mesh's own.
const float* PoMeshContouring::readNodeValues(const PbMesh2D& mesh, const float*& z) {
    const auto nodeSet = [&](int index) -> const float* {
        if (index < 0 || !mesh.getValuesSet(index) || !isValuesSetComplete(mesh, index))
            return nullptr;
        if (mesh.getValuesBinding(index) == PbMesh::PER_NODE)
            return mesh.getValuesSet(index);
        PoDebugError::postWarning("PoMeshContouring::rebuild",
                                  "value set %d is given per cell; isolines need values per node",
                                  index);
        return nullptr;
    };
    const float* zSet = nodeSet(zValuesIndex.getValue());
    z = zSet ? zSet : mesh.getZcoord();
    return nodeSet(valuesIndex.getValue());
}

void PoMeshContouring::emptyParts(void) {
    for (const char* part : {"transform", "majorContourLine", "minorContourLine", "annotBackground",
                             "annotBackgroundBorder", "annotText"})
        setAnyPart(part, nullptr);
}

// Without a transformation of the domain, the drawing is the mesh's space.
void PoMeshContouring::setDrawingTransform(void) {
    const PbDomain* domain = getDomain();
    m_hasDrawingTransform = domain && !(domain->isHomogeneous() &&
                                        domain->getTransformType() != PbDomain::TRANSFORM_01);
    m_drawing = m_hasDrawingTransform ? domain->getMatrix() : SbMatrix::identity();
    setAnyPart("transform", m_hasDrawingTransform ? domain->getMatrixTransform() : nullptr);
}

SbVec3f PoMeshContouring::getProjection(const SbVec3f& point) const {
    SbVec3f projected;
    m_drawing.multVecMatrix(point, projected);
    return projected;
}

bool PoMeshContouring::isMajor(int isoIndex) const {
    const int period = majorPeriod.getValue();
    const int offset = isoIndex - firstMajor.getValue();
    return period == 0 ? offset == 0 : offset % period == 0;
}

// Keeps the lines that are drawn, with their kind and colour.
void PoMeshContouring::sortLines(Lines& lines) {
    const PbDataMapping* mapping = getCurrentDataMapping();
    lines.colored = mapping && getEffectiveColoring() != COLOR_INHERITED;
    int count = 0, regular;
    float min, max, step;
    const float* isovalues = m_isovalues->getIsoList(count, min, max, step, regular);
    const PiIsolines& isolines = lines.isolines;
    for (int i = 0; i < isolines.getNumLines(); ++i) {
        const int iso = isolines.getIsoIndex(i);
        if (lines.colored) {
            SbColor color;
            float transparency = 0.0f;
            if (iso >= count || !mapping->getRGBColor(isovalues[iso], color, transparency))
                continue;
            lines.colors.push_back(color);
            lines.transparencies.push_back(transparency);
        }
        lines.lines.push_back(PiContourLabels::Line{isolines.getLineStart(i),
                                                    isolines.getLineSize(i), isolines.isClosed(i),
                                                    isMajor(iso), -1});
        lines.isoIndices.push_back(iso);
    }
}

// ------------------------------------------------------------ annotations

void PoMeshContouring::getMeshLimit(const PbMesh2D& mesh) {
    freeMeshLimit();
    PbArrayOfInt nodes, sizes;
    mesh.getLimitIndices(nodes, sizes);
    for (int i = 0; i < nodes.getNum(); ++i) {
        m_limitPoints.push_back(plane(mesh.getNodeCoord(nodes[i])));
        m_limitBounds.extendBy(m_limitPoints.back());
    }
    for (int i = 0; i < sizes.getNum(); ++i)
        m_limitSizes.push_back(sizes[i]);
}

void PoMeshContouring::freeMeshLimit(void) {
    m_limitPoints.clear();
    m_limitSizes.clear();
    m_limitBounds.makeEmpty();
}

PoMeshContouring::IsovalueLimits
PoMeshContouring::searchUpperLowerIsoval(const float* values, bool lower, bool upper) const {
    int count = 0, regular;
    float min, max, step;
    const float* isovalues =
        m_isovalues ? m_isovalues->getIsoList(count, min, max, step, regular) : nullptr;
    IsovalueLimits limits{count ? isovalues[0] : 0.0f, count ? isovalues[count - 1] : 0.0f, false,
                          false};
    const PbMesh2D* mesh = getCurrentMesh2D();
    const int numNodes = values && mesh ? mesh->getNumNodes() : 0;
    for (int n = 0; n < numNodes; ++n) {
        const float value = values[n];
        if (lower && value < limits.lower) {
            limits.lower = value;
            limits.lowerFound = true;
        }
        if (upper && value > limits.upper) {
            limits.upper = value;
            limits.upperFound = true;
        }
    }
    return limits;
}

// The larger side of the mesh's boundary rectangle, or of the domain's box
// as drawn.
float PoMeshContouring::getReferenceLength(void) const {
    if (m_hasDrawingTransform) {
        const PbDomain* domain = getDomain();
        const SbVec3f extent(domain->getDeltaX(), domain->getDeltaY(), domain->getDeltaZ());
        float length = 0.0f;
        for (int axis = 0; axis < 3; ++axis)
            length = std::max(length, std::fabs(extent[axis] * m_drawing[axis][axis]));
        return length;
    }
    float width, height;
    m_limitBounds.getSize(width, height);
    return m_limitBounds.isEmpty() ? 0.0f : std::max(width, height);
}

// The field's value when it is a positive number (or 0, when allowed),
// else the fallback, with a warning.
float PoMeshContouring::checkedFraction(const SoSFFloat& field, const char* name, float fallback,
                                        bool zeroAllowed) const {
    const float value = field.getValue();
    if (std::isfinite(value) && (value > 0.0f || (zeroAllowed && value == 0.0f)))
        return value;
    PoDebugError::postWarning("PoMeshContouring::rebuild", "%s %g is not a %s number; %g is used",
                              name, value, zeroAllowed ? "non-negative" : "positive", fallback);
    return fallback;
}

// The label texts of the isovalues, with the power of ten common to them.
void PoMeshContouring::makeTexts(Lines& lines, const float* values) {
    int count = 0, regular;
    float min, max, step;
    const float* isovalues = m_isovalues->getIsoList(count, min, max, step, regular);
    int minThreshold = 0, maxThreshold = 0;
    if (const PbDataMapping* mapping = getCurrentDataMapping())
        mapping->thresholdsEnabled(minThreshold, maxThreshold);
    const IsovalueLimits limits = searchUpperLowerIsoval(values, minThreshold, maxThreshold);
    const PbNumericDisplayFormat* format =
        m_format ? m_format : readElement<PoNumericDisplayFormatElement>();
    // The decimals that the labelled values need.
    float labelStep = 0.0f;
    for (int i = 0, previous = -1; i < count; ++i) {
        if (!isMajor(i))
            continue;
        const float gap = previous >= 0 ? isovalues[i] - isovalues[previous] : 0.0f;
        if (gap > 0.0f && (labelStep == 0.0f || gap < labelStep))
            labelStep = gap;
        previous = i;
    }
    PiNumericFormat numbers;
    numbers.setFormat(format, limits.lower, limits.upper, labelStep > 0.0f ? labelStep : step, 0);
    lines.texts.clear();
    for (int i = 0; i < count; ++i)
        lines.texts.push_back(numbers.getString(isovalues[i]) +
                              (numbers.getTenPower() != 0 ? "x10" : ""));
    lines.exponent = numbers.getTenPower() != 0 ? SbString(numbers.getTenPower()) : SbString();
}

// The rectangle that a label covers in its own frame, margins included.
SbBox2f PoMeshContouring::labelFrame(const Lines& lines, int isoIndex) const {
    const SbString& string = lines.texts[isoIndex];
    SbBox2f box = lines.exponent.getLength() > 0
                      ? lines.text.getBoxWithExponent(string, lines.exponent)
                      : lines.text.getBox(string);
    if (box.isEmpty())
        return box;
    const float margin = s_boxMargin * lines.text.getFontSize();
    box.setBounds(box.getMin() - SbVec2f(margin, margin), box.getMax() + SbVec2f(margin, margin));
    return box;
}

void PoMeshContouring::computeContourLineAnnot(Lines& lines, const PbMesh2D& mesh,
                                               const float* values) {
    getMeshLimit(mesh);
    const float reference = getReferenceLength();
    if (!(reference > 0.0f) || !std::isfinite(reference))
        return;
    const float fontSize =
        annotFontSize.getValue() == 0.0f
            ? s_defaultFontSize
            : checkedFraction(annotFontSize, "annotFontSize", s_defaultFontSize, false);
    const float factor = checkedFraction(annotFontFactor, "annotFontFactor", 1.0f, false);
    lines.text.setMiscTextAttr(m_miscTextAttr ? m_miscTextAttr
                                              : readElement<PoMiscTextAttrElement>());
    lines.text.setFontSize(fontSize * factor * reference);
    lines.text.setSide(PiText::SIDE_CENTER);
    makeTexts(lines, values);

    std::vector<SbBox2f> frames(lines.texts.size());
    for (size_t i = 0; i < lines.lines.size(); ++i) {
        PiContourLabels::Line& line = lines.lines[i];
        const int iso = lines.isoIndices[i];
        if (!line.major || iso >= static_cast<int>(frames.size()))
            continue;
        if (frames[iso].isEmpty())
            frames[iso] = labelFrame(lines, iso);
        line.text = iso;
    }
    // Labels are placed in the drawing.
    std::vector<SbVec3f> drawn;
    const SbVec3f* points = lines.isolines.getPoints().data();
    if (m_hasDrawingTransform) {
        drawn.reserve(lines.isolines.getPoints().size());
        for (const SbVec3f& point : lines.isolines.getPoints())
            drawn.push_back(getProjection(point));
        points = drawn.data();
    }
    PiContourLabels labeling(points, lines.lines);
    labeling.setTextFrames(frames);
    labeling.setGap(checkedFraction(annotGap, "annotGap", 1.0f, true) * reference);
    labeling.setPath(static_cast<PiContourLabels::Path>(annotPath.getValue()));
    labeling.setCrossStatus(static_cast<PiContourLabels::CrossStatus>(annotCrossStatus.getValue()));
    labeling.setClipPolygon(drawingClipPolygon());
    lines.labels = labeling.computeContourLineAnnot();
    m_numAnnotations = static_cast<int>(lines.labels.size());
}

// The clipping polygon in the drawing; empty when it restricts nothing.
std::vector<SbVec2f> PoMeshContouring::drawingClipPolygon(void) const {
    std::vector<SbVec2f> polygon(annotClippingPolygon.getValues(0),
                                 annotClippingPolygon.getValues(0) + annotClippingPolygon.getNum());
    if (polygon.size() < 3)
        return {};
    if (isDegenerate(polygon)) {
        PoDebugError::postWarning("PoMeshContouring::rebuild",
                                  "the clipping polygon of %d points has no area or points that "
                                  "are not numbers; labels are not clipped",
                                  static_cast<int>(polygon.size()));
        return {};
    }
    for (SbVec2f& point : polygon)
        point = plane(getProjection(SbVec3f(point[0], point[1], 0.0f)));
    return polygon;
}

// Cuts every line around the labels when asked to, else the lines that
// may not cross them.
void PoMeshContouring::clipContourLines(Lines& lines) {
    const int status = annotCrossStatus.getValue();
    const bool all = annotIsContourClip.getValue() || status == DONT_CROSS_CONTOUR;
    std::vector<char> clip(lines.lines.size(), 0);
    for (size_t i = 0; i < clip.size(); ++i)
        clip[i] = all || (status == CROSS_MINOR_CONTOUR && lines.lines[i].major);
    // The boxes in the mesh's space.
    const SbMatrix inverse = m_drawing.inverse();
    std::vector<PiLabelBox> boxes;
    for (const PiContourLabels::Label& label : lines.labels) {
        PiLabelBox box = label.box;
        for (SbVec2f& corner : box.corners) {
            SbVec3f point;
            inverse.multVecMatrix(SbVec3f(corner[0], corner[1], 0.0f), point);
            corner = plane(point);
        }
        boxes.push_back(box);
    }
    lines.pieces = PiContourLabels::clipContourLinesByAnnot(lines.isolines.getPoints().data(),
                                                            lines.lines, clip, boxes);
}

// ---------------------------------------------------------------- drawing

void PoMeshContouring::drawContourLines(const Lines& lines, bool major, const char* part) {
    std::vector<int32_t> numVertices;
    std::vector<int> colorOf;
    int numPoints = 0;
    for (const PiContourLabels::Piece& piece : lines.pieces) {
        if (lines.lines[piece.line].major != major)
            continue;
        numVertices.push_back(piece.numSegments + 1);
        colorOf.push_back(piece.line);
        numPoints += piece.numSegments + 1;
    }
    if (numVertices.empty()) {
        setAnyPart(part, nullptr);
        return;
    }
    auto* group = new SoGroup;
    if (lines.colored) {
        auto* material = new SoMaterial;
        material->diffuseColor.setNum(static_cast<int>(colorOf.size()));
        SbColor* colors = material->diffuseColor.startEditing();
        for (size_t i = 0; i < colorOf.size(); ++i)
            colors[i] = lines.colors[colorOf[i]];
        material->diffuseColor.finishEditing();
        if (getCurrentDataMapping()->isTransparencyEnabled()) {
            material->transparency.setNum(static_cast<int>(colorOf.size()));
            float* transparencies = material->transparency.startEditing();
            for (size_t i = 0; i < colorOf.size(); ++i)
                transparencies[i] = lines.transparencies[colorOf[i]];
            material->transparency.finishEditing();
        }
        // One colour per polyline.
        auto* binding = new SoMaterialBinding;
        binding->value = SoMaterialBinding::PER_FACE;
        group->addChild(material);
        group->addChild(binding);
    }
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setNum(numPoints);
    SbVec3f* out = coordinates->point.startEditing();
    const SbVec3f* points = lines.isolines.getPoints().data();
    for (const PiContourLabels::Piece& piece : lines.pieces) {
        if (lines.lines[piece.line].major == major)
            out = PiContourLabels::getPiecePoints(points, lines.lines[piece.line], piece, out);
    }
    coordinates->point.finishEditing();
    auto* lineSet = new SoLineSet;
    lineSet->numVertices.setValues(0, static_cast<int>(numVertices.size()), numVertices.data());
    group->addChild(coordinates);
    group->addChild(lineSet);
    setAnyPart(part, group);
}

// The texts of the labels and, with a background, their boxes and borders,
// all in the drawing (under the inverse of the domain's transformation).
void PoMeshContouring::drawAnnotation(const Lines& lines) {
    const bool background = annotIsBackground.getValue() && !lines.labels.empty();
    if (lines.labels.empty()) {
        for (const char* part : {"annotBackground", "annotBackgroundBorder", "annotText"})
            setAnyPart(part, nullptr);
        return;
    }
    const SbMatrix inverse = m_drawing.inverse();
    const SbMatrix* undo = m_hasDrawingTransform ? &inverse : nullptr;
    auto* texts = new SoGroup;
    if (undo) {
        auto* transform = new SoMatrixTransform;
        transform->matrix = inverse;
        texts->addChild(transform);
    }
    for (const PiContourLabels::Label& label : lines.labels) {
        const SbString& string = lines.texts[lines.isoIndices[label.line]];
        texts->addChild(
            lines.exponent.getLength() > 0
                ? lines.text.buildWithExponent(string, lines.exponent, label.anchor, label.angle)
                : lines.text.build(string, label.anchor, label.angle));
    }
    setAnyPart("annotText", texts);
    if (!background) {
        setAnyPart("annotBackground", nullptr);
        setAnyPart("annotBackgroundBorder", nullptr);
        return;
    }
    // Boxes as faces of four corners, borders as lines round them.
    setAnyPart("annotBackground", newBoxShapes<SoFaceSet>(lines.labels, 4, undo));
    setAnyPart("annotBackgroundBorder", newBoxShapes<SoLineSet>(lines.labels, 5, undo));
}
