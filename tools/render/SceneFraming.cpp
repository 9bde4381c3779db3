#include "SceneFraming.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>

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
