#pragma once
#include <Quillon/3Ddata/PoMeshContouring.h>

#include "3Ddata/PiLabelBox.h"
#include "support/SceneSearch.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoLineSet.h>

#include <vector>

// What the contour lines kit built, read back from its parts.
namespace contourkit {

using Polyline = std::vector<SbVec3f>;

// The polylines of the line sets below a part.
inline std::vector<Polyline> polylinesOf(PoMeshContouring* kit, const char* part) {
    std::vector<Polyline> lines;
    SoNode* group = kit->getPart(part, FALSE);
    const std::vector<SoCoordinate3*> coordinates = findAll<SoCoordinate3>(group);
    const std::vector<SoLineSet*> sets = findAll<SoLineSet>(group);
    if (coordinates.empty() || sets.empty())
        return lines;
    int next = 0;
    for (int i = 0; i < sets[0]->numVertices.getNum(); ++i) {
        const int count = sets[0]->numVertices[i];
        lines.emplace_back(coordinates[0]->point.getValues(next),
                           coordinates[0]->point.getValues(next) + count);
        next += count;
    }
    return lines;
}

// The label boxes, from the background's faces (annotIsBackground on).
inline std::vector<PiLabelBox> labelBoxesOf(PoMeshContouring* kit) {
    std::vector<PiLabelBox> boxes;
    const std::vector<SoCoordinate3*> coordinates =
        findAll<SoCoordinate3>(kit->getPart("annotBackground", FALSE));
    if (coordinates.empty())
        return boxes;
    const SoMFVec3f& points = coordinates[0]->point;
    for (int i = 0; i + 3 < points.getNum(); i += 4) {
        PiLabelBox box;
        for (int k = 0; k < 4; ++k)
            box.corners[k] = SbVec2f(points[i + k][0], points[i + k][1]);
        boxes.push_back(box);
    }
    return boxes;
}

// Whether a drawn segment runs inside a box further than rounding the ends
// of cut lines explains.
inline bool reachesInto(const PiLabelBox& box, const SbVec3f& a, const SbVec3f& b) {
    const SbVec2f a2(a[0], a[1]), b2(b[0], b[1]);
    float t0, t1;
    return box.clipSegment(a2, b2, t0, t1) && (t1 - t0) * (b2 - a2).length() > 1e-4f;
}

} // namespace contourkit
