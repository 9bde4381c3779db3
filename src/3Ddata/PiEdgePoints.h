#pragma once
#include "3Ddata/PiEdgePointTable.h"

#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <vector>

class PbMesh3D;

// Points on the edges of a mesh, as level surfaces, sections and their
// outlines make them: each given by its edge (two node indices, the lower
// one first) and its position along the edge (0 at the lower node, 1 at
// the other).  Coordinates and other node values are interpolated at the
// points on demand.  One point per edge when made through share().
class PiEdgePoints {
public:
    void clear();
    int getNum() const { return static_cast<int>(m_params.size()); }
    const std::vector<int>& getNodes() const { return m_nodes; }
    const std::vector<float>& getParams() const { return m_params; }
    // For builders that fill the lists in bulk (two nodes per point).
    std::vector<int>& nodes() { return m_nodes; }
    std::vector<float>& params() { return m_params; }

    // The point of the edge between two nodes (in either order); when the
    // edge has none yet, a new one at the position param(low, high).
    template <class Param> int share(int node0, int node1, Param param) {
        int point = m_table.find(node0, node1);
        if (point >= 0)
            return point;
        int low = std::min(node0, node1), high = std::max(node0, node1);
        point = getNum();
        m_nodes.push_back(low);
        m_nodes.push_back(high);
        m_params.push_back(param(low, high));
        m_table.insert(low, high, point);
        return point;
    }
    // Forgets which edge has which point and frees that table; the points
    // stay.
    void releaseTable() { m_table = PiEdgePointTable(); }

    void computeCoords(const PbMesh3D& mesh, SbVec3f* coords) const;
    void computeValues(const float* nodeValues, float* pointValues) const;
    size_t getMemorySize() const;

private:
    std::vector<int> m_nodes;
    std::vector<float> m_params;
    PiEdgePointTable m_table;
};
