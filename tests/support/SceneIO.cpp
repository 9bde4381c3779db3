#include "support/SceneIO.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/fields/SoField.h>
#include <Inventor/fields/SoFieldData.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdlib>

std::string SceneIO::write(SoNode* node, bool binary) {
    SoOutput output;
    output.setBinary(binary);
    output.setBuffer(std::malloc(4096), 4096, std::realloc);
    SoWriteAction writer(&output);
    writer.apply(node);
    void* buffer = nullptr;
    size_t size = 0;
    output.getBuffer(buffer, size);
    std::string text(static_cast<char*>(buffer), size);
    std::free(buffer);
    return text;
}

SoNode* SceneIO::read(const std::string& text) {
    SoInput input;
    input.setBuffer(text.data(), text.size());
    SoSeparator* root = SoDB::readAll(&input);
    if (!root)
        return nullptr;
    root->ref();
    SoNode* node = root->getNumChildren() == 1 ? root->getChild(0) : root;
    node->ref();
    root->unref();
    node->unrefNoDelete();
    return node;
}

SoNode* SceneIO::roundTrip(SoNode* node, bool binary) {
    return read(write(node, binary));
}

bool SceneIO::sameFields(const SoNode* a, const SoNode* b) {
    if (!a || !b || a->getTypeId() != b->getTypeId())
        return false;
    const SoFieldData* fields = a->getFieldData();
    if (!fields)
        return true;
    for (int i = 0; i < fields->getNumFields(); ++i) {
        const SoField* fa = fields->getField(a, i);
        const SoField* fb = b->getFieldData()->getField(b, i);
        if (!fa->isSame(*fb))
            return false;
    }
    return true;
}
