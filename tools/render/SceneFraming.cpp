#include "SceneFraming.h"

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

bool sceneHasNodeOfType(SoNode* scene, SoType type) {
    SoSearchAction search;
    search.setType(type, TRUE);
    search.setInterest(SoSearchAction::FIRST);
    search.apply(scene);
    return search.getPath() != nullptr;
}

// A directional light placed before any camera shines in eye space: it
// points along the line of sight whatever the camera does, like a lamp on
// the viewer's head.
NodeRef<SoSeparator> frameScene(SoNode* scene, const SbViewportRegion& viewport) {
    NodeRef<SoSeparator> root = adoptNode(new SoSeparator);
    if (!sceneHasNodeOfType(scene, SoLight::getClassTypeId()))
        root->addChild(new SoDirectionalLight);
    SoPerspectiveCamera* camera = nullptr;
    if (!sceneHasNodeOfType(scene, SoCamera::getClassTypeId())) {
        camera = new SoPerspectiveCamera;
        root->addChild(camera);
    }
    root->addChild(scene);
    if (camera)
        camera->viewAll(root.get(), viewport);
    return root;
}

std::string sceneExtentProblem(SoNode* scene, const SbViewportRegion& viewport) {
    SoGetBoundingBoxAction boxAction(viewport);
    boxAction.apply(scene);
    const SbBox3f box = boxAction.getBoundingBox();
    if (box.isEmpty())
        return std::string();
    float largest = 0.0f;
    for (const SbVec3f& corner : {box.getMin(), box.getMax()})
        for (int axis = 0; axis < 3; ++axis) {
            if (!std::isfinite(corner[axis]))
                return "the scene's coordinates are not all finite numbers; nothing can be "
                       "framed or drawn";
            largest = std::max(largest, std::fabs(corner[axis]));
        }
    if (largest < largestDrawableCoordinate)
        return std::string();
    char text[160];
    std::snprintf(text, sizeof text,
                  "the scene reaches coordinates of %g, beyond the %g that can be drawn; the "
                  "picture will show little or nothing",
                  largest, largestDrawableCoordinate);
    return text;
}
