#pragma once
#include <Inventor/nodes/SoNode.h>

#include <memory>

// Holds one reference to a toolkit node and gives it back on destruction.
struct NodeUnref {
    void operator()(SoNode* node) const { node->unref(); }
};

template <class T> using NodeRef = std::unique_ptr<T, NodeUnref>;

template <class T> NodeRef<T> adoptNode(T* node) {
    if (node)
        node->ref();
    return NodeRef<T>(node);
}
