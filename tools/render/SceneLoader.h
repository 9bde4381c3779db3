#pragma once
#include "NodeRef.h"

#include <Inventor/nodes/SoSeparator.h>

#include <string>

// Reads a scene file with the toolkit's reader.  On failure the result is
// empty and error holds one line: the file that could not be opened, or the
// reader's own complaint with its line number.
NodeRef<SoSeparator> loadSceneFile(const std::string& path, std::string& error);

// The same for a scene held in memory; name stands for the file in messages.
NodeRef<SoSeparator> loadSceneText(const std::string& text, const std::string& name,
                                   std::string& error);
