#include "MeshFieldFuzzer.h"

#include "graph/PoClassManifest.h"

#include <Inventor/SbName.h>

namespace meshfuzz {

#define NAME_OF(_class_) #_class_,
const char* const kNodeTypes[] = {PO_MESH_NODE_CLASSES(NAME_OF)};
#undef NAME_OF
const size_t kNumNodeTypes = sizeof kNodeTypes / sizeof kNodeTypes[0];

const char* const kBinaryHeader = "#Inventor V2.1 binary  \n";

SoType nodeTypeOf(unsigned char first) {
    return SoType::fromName(kNodeTypes[first % kNumNodeTypes]);
}

std::string binaryValueOf(const std::string& nodeFile) {
    // The field's name stands twice: in the node's field declarations and
    // before its value.
    const std::string name("\0\0\0\4mesh", 8);
    const size_t declared = nodeFile.find(name);
    const size_t named = nodeFile.find(name, declared + name.size());
    return named == std::string::npos ? std::string() : nodeFile.substr(named + name.size());
}

} // namespace meshfuzz
