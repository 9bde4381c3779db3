#include "SceneGraphCheck.h"

#include <Inventor/SbName.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoNode.h>

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

// "A, a Separator," or "a Separator," for messages.
std::string describeNode(const SoNode* node) {
    const std::string type = node->getTypeId().getName().getString();
    const std::string name = node->getName().getString();
    return name.empty() ? "a " + type : name + ", a " + type + ",";
}

// Depth-first walk with an explicit stack.  Every node is walked once: a
// node met again below itself closes a cycle; a node met again elsewhere
// (shared by USE) brings the height found the first time.
class GraphWalk {
public:
    std::string problemUnder(SoNode* root) {
        enter(root);
        while (!m_path.empty()) {
            Frame& frame = m_path.back();
            const SoChildList* children = frame.node->getChildren();
            if (children && frame.next < children->getLength()) {
                SoNode* child = (*children)[frame.next++];
                if (!visit(child))
                    return describeNode(child) + " contains itself";
            } else {
                leave();
            }
            if (static_cast<int>(m_path.size()) > maxSceneDepth || m_height > maxSceneDepth)
                return "the scene is nested more than " + std::to_string(maxSceneDepth) +
                       " levels deep, deeper than can be read and drawn safely";
        }
        return std::string();
    }

private:
    struct Frame {
        SoNode* node;
        int next;
        int height;
    };
    // Height of a node walked to the end; -1 while it is on the path.
    static constexpr int onPath = -1;

    void enter(SoNode* node) {
        m_heights[node] = onPath;
        m_path.push_back({node, 0, 1});
    }

    // False when the node is on the path from the root: a cycle.
    bool visit(SoNode* node) {
        const auto found = m_heights.find(node);
        if (found == m_heights.end()) {
            enter(node);
            return true;
        }
        if (found->second == onPath)
            return false;
        raiseParent(found->second);
        return true;
    }

    void leave() {
        const Frame done = m_path.back();
        m_heights[done.node] = done.height;
        m_path.pop_back();
        raiseParent(done.height);
    }

    void raiseParent(int childHeight) {
        m_height = std::max(m_height, childHeight);
        if (!m_path.empty())
            m_path.back().height = std::max(m_path.back().height, childHeight + 1);
    }

    std::vector<Frame> m_path;
    std::unordered_map<SoNode*, int> m_heights;
    int m_height = 0;
};

} // namespace

std::string sceneGraphProblem(SoNode* root) {
    return root ? GraphWalk().problemUnder(root) : std::string();
}
