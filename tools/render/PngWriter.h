#pragma once
#include "RenderImage.h"

#include <string>

// Writes an RGB or RGBA picture as an 8-bit PNG file.  Returns false and
// sets error to a one-line message when the file cannot be written.
bool writePng(const std::string& path, const RenderImage& image, std::string& error);
