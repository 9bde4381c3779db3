#pragma once
#include <string>

class SoNode;

// The toolkit's reader and its actions recurse once per level of nesting,
// on the stack of the thread that runs them: a scene nested deeper than
// this is refused rather than risk overflowing that stack.
constexpr int maxSceneDepth = 6000;

// Why the toolkit's actions cannot safely walk the graph under root (it
// contains itself, or nests deeper than maxSceneDepth), or an empty text
// when they can.  The check itself needs no recursion.
std::string sceneGraphProblem(SoNode* root);
