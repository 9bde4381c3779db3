#pragma once
// What the mesh-field fuzzers and their seed generator share: the property
// nodes whose "mesh" field they read, chosen by the first byte of an input,
// and the binary form of a field value.

#include <Inventor/SoType.h>

#include <cstddef>
#include <string>

namespace meshfuzz {

extern const char* const kNodeTypes[];
extern const size_t kNumNodeTypes;

// The node type that an input's first byte chooses.
SoType nodeTypeOf(unsigned char first);

// The binary file header that the value of a field read in binary follows.
extern const char* const kBinaryHeader;

// The bytes of a binary node file from the value of its field "mesh" on:
// the value, then the field's flags.
std::string binaryValueOf(const std::string& nodeFile);

} // namespace meshfuzz
