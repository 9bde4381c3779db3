// Feeds arbitrary bytes to the reader of the mesh fields: the first byte
// chooses the mesh property node, the rest is the value of its field
// "mesh", in ASCII (quillon_fuzz_mesh_field) or, after a binary file
// header, in binary (quillon_fuzz_mesh_field_binary).  A value that reads
// must survive files: written in binary and read again it writes the same
// bytes, and written in ASCII and read again it is the same mesh.  See
// README.md ("Fuzzing") for the build and run commands.

#include "MeshFieldFuzzer.h"
#include "support/SceneIO.h"

#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoMeshProperty.h>

#include <Inventor/SoInput.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/fields/SoField.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void silence(const SoError*, void*) {}

bool readField(SoField* field, const std::string& value) {
#ifdef QUILLON_FUZZ_BINARY
    const std::string bytes = meshfuzz::kBinaryHeader + value;
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    return field->read(&input, "mesh");
#else
    return field->set(value.c_str());
#endif
}

// Written and read again in one format, the node must come back whole.
SoNode* roundTrip(SoNode* node, bool binary) {
    SoNode* read = SceneIO::read(SceneIO::write(node, binary));
    if (!read || read->getTypeId() != node->getTypeId())
        std::abort();
    read->ref();
    return read;
}

// ASCII files write every vector set per node (with a warning), so a set
// bound per cell does not come back from them as it was.
bool hasVectorsPerCell(SoNode* node) {
    const PbMesh* mesh = static_cast<PoMeshProperty*>(node)->getMesh();
    for (int key : mesh->getVecsSetIndices())
        if (mesh->getVecsBinding(key) == PbMesh::PER_CELL)
            return true;
    return false;
}

void checkRoundTrips(SoNode* node) {
    const std::string binary = SceneIO::write(node, true);
    SoNode* fromBinary = roundTrip(node, true);
    if (SceneIO::write(fromBinary, true) != binary)
        std::abort();
    fromBinary->unref();
    // ASCII keeps every value too, though not the payload bits of a NaN.
    if (hasVectorsPerCell(node))
        return;
    SoNode* fromAscii = roundTrip(node, false);
    if (!fromAscii->getField("mesh")->isSame(*node->getField("mesh")))
        std::abort();
    fromAscii->unref();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    PoQuillon::init();
    SoDebugError::setHandlerCallback(&silence, nullptr);
    SoReadError::setHandlerCallback(&silence, nullptr);
    PoDebugError::setHandlerCallback(&silence, nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1)
        return 0;
    SoNode* node = static_cast<SoNode*>(meshfuzz::nodeTypeOf(data[0]).createInstance());
    node->ref();
    const std::string value(reinterpret_cast<const char*>(data + 1), size - 1);
    if (readField(node->getField("mesh"), value))
        checkRoundTrips(node);
    node->unref();
    return 0;
}
