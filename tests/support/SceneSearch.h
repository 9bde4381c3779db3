#pragma once
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoText3.h>

#include <string>
#include <vector>

// Finding what a kit built: nodes by type below a part, and the texts.

// Every node of the type below a node, in traversal order.
template <class Node> std::vector<Node*> findAll(SoNode* root) {
    std::vector<Node*> found;
    if (!root)
        return found;
    SoSearchAction search;
    search.setType(Node::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(root);
    const SoPathList& paths = search.getPaths();
    for (int i = 0; i < paths.getLength(); ++i)
        found.push_back(static_cast<Node*>(paths[i]->getTail()));
    return found;
}

// The strings of the texts below a node, lines joined by line feeds.
inline std::vector<std::string> textsBelow(SoNode* root) {
    std::vector<std::string> texts;
    for (SoText3* text : findAll<SoText3>(root)) {
        std::string joined;
        for (int i = 0; i < text->string.getNum(); ++i)
            joined += (i ? "\n" : "") + std::string(text->string[i].getString());
        texts.push_back(joined);
    }
    return texts;
}
