// Feeds arbitrary text to the ASCII reader of the mesh fields.  The first
// byte chooses the mesh property node, the rest is the value of its field
// "mesh".  A value that reads must write and read again, in binary, to the
// same bytes.
//
//   ASAN_OPTIONS=detect_leaks=0 quillon_fuzz_mesh_field -dict=fuzz/mesh.dict CORPUS_DIR fuzz/corpus
//
// (The toolkit leaves one object of its own allocated at exit, which the
// leak check would report after the last run.)

#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PoClassManifest.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {
#define NAME_OF(_class_) #_class_,
const char* const kNodeTypes[] = {PO_MESH_NODE_CLASSES(NAME_OF)};

void silence(const SoError*, void*) {}

std::string writeBinary(SoNode* node) {
    SoOutput output;
    output.setBinary(TRUE);
    output.setBuffer(std::malloc(1024), 1024, std::realloc);
    SoWriteAction writer(&output);
    writer.apply(node);
    void* buffer = nullptr;
    size_t size = 0;
    output.getBuffer(buffer, size);
    std::string bytes(static_cast<char*>(buffer), size);
    std::free(buffer);
    return bytes;
}

SoSeparator* read(const std::string& bytes) {
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    return SoDB::readAll(&input);
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
    const char* type = kNodeTypes[data[0] % (sizeof kNodeTypes / sizeof kNodeTypes[0])];
    SoNode* node = static_cast<SoNode*>(SoType::fromName(type).createInstance());
    node->ref();
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    if (node->getField("mesh")->set(text.c_str())) {
        const std::string written = writeBinary(node);
        SoSeparator* root = read(written);
        if (!root)
            std::abort();
        root->ref();
        if (root->getNumChildren() != 1 || writeBinary(root->getChild(0)) != written)
            std::abort();
        root->unref();
    }
    node->unref();
    return 0;
}
