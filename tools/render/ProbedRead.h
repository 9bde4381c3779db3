#pragma once
#include <functional>
#include <string>

class SoInput;

// Some scene files make the toolkit's reader itself fail: a field that a
// file declares on one of the classes the toolkit knows is added to the
// class for every later node, which then breaks them (a second such
// declaration crashes the reader), and very deep nesting overflows the
// stack.  Before a scene is read for use, a child process reads it once;
// nothing it does can harm the caller.
//
// openInput opens the scene on the input given.  Returns an empty text
// when the caller can read the scene itself (which may still fail in the
// usual way, with the reader's message), or else why it must not, in the
// form of a read error message ("<what>", maybe followed by "Occurred at
// line <n> ..."): the scene declares a field its class does not have,
// contains itself or nests too deep, or the toolkit crashed on it.
std::string probeSceneRead(const std::function<bool(SoInput&)>& openInput);
