#include <Quillon/graph/PoPieChart2D.h>

#include <Quillon/graph/PoDebugError.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

PO_KIT_SOURCE(PoPieChart2D, PoPieChart)

PoPieChart2D::PoPieChart2D() {
    init(SbVec2f(0.0f, 0.0f), 1.0f, 0, nullptr, nullptr, 0, nullptr);
}

PoPieChart2D::PoPieChart2D(const SbVec2f& centerPoint, float radiusValue, short numSlices,
                           const char** sliceTexts, const float* values, int numColors,
                           const SbColor* colors) {
    init(centerPoint, radiusValue, numSlices, sliceTexts, values, numColors, colors);
}

// Writes only the fields that differ, so that fields left at their defaults
// stay default.
void PoPieChart2D::init(const SbVec2f& centerPoint, float radiusValue, short numSlices,
                        const char** sliceTexts, const float* values, int numColors,
                        const SbColor* colors) {
    SO_KIT_CONSTRUCTOR(PoPieChart2D);
    SO_KIT_ADD_FIELD(center, (0.0f, 0.0f));
    SO_KIT_INIT_INSTANCE();

    if (center.getValue() != centerPoint)
        center = centerPoint;
    if (radius.getValue() != radiusValue)
        radius = radiusValue;
    if (values && numSlices > 0)
        sliceValue.setValues(0, numSlices, values);
    if (sliceTexts && numSlices > 0)
        setStrings(sliceText, numSlices, sliceTexts);
    if (colors && numColors > 0)
        sliceColor.setValues(0, numColors, colors);
    watchFields({&center});
}

PoPieChart2D::~PoPieChart2D() = default;

void PoPieChart2D::rebuild(void) {
    RebuildScope scope(this);
    resetAllPart();
    const SbVec2f& middle = center.getValue();
    if (!std::isfinite(middle[0]) || !std::isfinite(middle[1])) {
        PoDebugError::post("PoPieChart2D::rebuild", "the centre is not a number; the pie is not "
                                                    "drawn");
        return;
    }
    if (!savePieChartAttr())
        return;
    computeSlicePartValuesToDisplay();
    const std::vector<DisplayedSlice>& slices = getDisplayedSlices();
    if (slices.empty())
        return;
    computeSliceNames();
    computeStringsToDisplay();

    const std::vector<float> pulls = computeTranslations();
    const float step = getAngleStep();
    std::vector<SliceGeometry> geometry;
    float angle = 0.0f;
    for (size_t i = 0; i < slices.size(); ++i) {
        const float end = angle + slices[i].percent * 2.0f * static_cast<float>(M_PI) / 100.0f;
        const float mid = 0.5f * (angle + end);
        const SbVec2f out(std::cos(mid), std::sin(mid));
        geometry.push_back(SliceGeometry{middle + out * pulls[i], angle, end});
        buildSlice(slices[i], geometry.back(), step, static_cast<int>(i));
        angle = end;
    }
    drawInternalAnnotations(geometry);
    drawExternalAnnotations(geometry, middle,
                            getRadius() + *std::max_element(pulls.begin(), pulls.end()));
}

// The slice as the fan of its centre and its arc, and its outline.
void PoPieChart2D::buildSlice(const DisplayedSlice& slice, const SliceGeometry& geometry,
                              float step, int index) {
    const float span = geometry.endAngle - geometry.startAngle;
    const int steps = std::max(1, static_cast<int>(std::ceil(span / step - 1e-4f)));
    std::vector<SbVec3f> points{SbVec3f(geometry.center[0], geometry.center[1], 0.0f)};
    for (int k = 0; k <= steps; ++k) {
        const float a =
            k == steps ? geometry.endAngle : geometry.startAngle + static_cast<float>(k) * step;
        const SbVec2f p = geometry.center + SbVec2f(std::cos(a), std::sin(a)) * getRadius();
        points.emplace_back(p[0], p[1], 0.0f);
    }
    const int count = static_cast<int>(points.size());

    auto* fan = new SoSeparator;
    auto* material = new SoMaterial;
    material->diffuseColor = getSliceColor(slice);
    fan->addChild(material);
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, count, points.data());
    fan->addChild(coordinates);
    auto* face = new SoFaceSet;
    face->numVertices.setValue(count);
    fan->addChild(face);
    partGroup("slice")->addChild(fan);
    recordPickable(fan, index);

    auto* outline = new SoSeparator;
    auto* raised = new SoCoordinate3;
    for (SbVec3f& p : points)
        p[2] = getBorderOffset();
    points.push_back(points.front());
    raised->point.setValues(0, count + 1, points.data());
    outline->addChild(raised);
    auto* line = new SoLineSet;
    line->numVertices.setValue(count + 1);
    outline->addChild(line);
    partGroup("sliceBorder")->addChild(outline);
    recordPickable(outline, index);
}
