#pragma once
#include "NodeRef.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/nodes/SoSeparator.h>

#include <string>

// Makes a scene ready to be looked at: returns a new root that holds the
// scene, and in front of it a perspective camera framing the whole scene
// when the scene has no camera of its own, and a headlight when it has no
// light (so that lit shapes are not drawn black).  The scene itself is
// left untouched.
NodeRef<SoSeparator> frameScene(SoNode* scene, const SbViewportRegion& viewport);

bool sceneHasNodeOfType(SoNode* scene, SoType type);

// Coordinates beyond this cannot be drawn: the toolkit works in floats, and
// the squared lengths it takes of such a scene overflow them.
constexpr float largestDrawableCoordinate = 1e18f;

// Why the scene cannot be drawn as its coordinates stand (they are not
// finite numbers, or beyond largestDrawableCoordinate), or an empty text.
std::string sceneExtentProblem(SoNode* scene, const SbViewportRegion& viewport);
