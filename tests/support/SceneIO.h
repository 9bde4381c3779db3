#pragma once
#include <Inventor/nodes/SoNode.h>

#include <string>

// Writing and reading scenes through the toolkit's file format.
namespace SceneIO {
// The ASCII (or binary) text that a write action gives for the node.
std::string write(SoNode* node, bool binary = false);
// Reads a scene from text; null (with the reader's messages posted) when
// the text does not parse.
SoNode* read(const std::string& text);
// Writes the node and reads it back.
SoNode* roundTrip(SoNode* node, bool binary = false);
// True when both nodes have the same type and every field the same value.
bool sameFields(const SoNode* a, const SoNode* b);
} // namespace SceneIO
