#pragma once
#include "NodeRef.h"

#include <Inventor/nodes/SoSeparator.h>

#include <string>
#include <vector>

// Reads a scene file with the toolkit's reader, after a trial read in a
// child process (see ProbedRead.h), so that no file can crash the caller.
// On failure the result is empty and error holds one line: the file that
// could not be opened, why the file must not be read, or the reader's own
// complaint with its line number.  A scene read whole may still come with
// warnings, one line each, "<file>, line <n>: <what>": problems that the
// reader worked around, such as a File node whose file is missing or an
// invalid number replaced by 0; they are added to warnings when given.
NodeRef<SoSeparator> loadSceneFile(const std::string& path, std::string& error,
                                   std::vector<std::string>* warnings = nullptr);

// The same for a scene held in memory; name stands for the file in messages.
NodeRef<SoSeparator> loadSceneText(const std::string& text, const std::string& name,
                                   std::string& error,
                                   std::vector<std::string>* warnings = nullptr);
