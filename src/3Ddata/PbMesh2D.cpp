#include <Quillon/3Ddata/PbMesh2D.h>

#include "3Ddata/PbFaultLine.h"
#include "3Ddata/PiCellLocator2D.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/graph/PoDebugError.h>

#include <Inventor/fields/SoMFVec3f.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <unordered_map>

namespace {

using Location = PiCellLocator2D::Location;

SbVec2f xyOf(const SbVec3f& p) {
    return SbVec2f(p[0], p[1]);
}

bool isFinite(const SbVec2f& p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]);
}

bool collectFaultLines(const char* method, int numFaultLines, const int* numFaultPoints,
                       const SbVec2f* faultPoints, std::vector<std::vector<SbVec2f>>& lines) {
    if (numFaultLines < 0) {
        PoDebugError::post(method, "negative number of fault lines (%d)", numFaultLines);
        return false;
    }
    if (numFaultLines > 0 && (!numFaultPoints || !faultPoints)) {
        PoDebugError::post(method, "null fault line arrays for %d fault lines", numFaultLines);
        return false;
    }
    int64_t first = 0;
    for (int k = 0; k < numFaultLines; ++k) {
        if (numFaultPoints[k] < 2) {
            PoDebugError::post(method, "fault line %d has %d points; at least 2 are needed", k,
                               numFaultPoints[k]);
            return false;
        }
        const SbVec2f* begin = faultPoints + first;
        const SbVec2f* end = begin + numFaultPoints[k];
        if (!std::all_of(begin, end, isFinite)) {
            PoDebugError::post(method, "fault line %d has a point that is not finite", k);
            return false;
        }
        lines.emplace_back(begin, end);
        first += numFaultPoints[k];
    }
    return true;
}

int nearestNode(const PbMesh2D& mesh, const SbVec2f& point) {
    int best = 0;
    float bestDistance = std::numeric_limits<float>::max();
    for (int n = 0; n < mesh.getNumNodes(); ++n) {
        float distance = (xyOf(mesh.getNodeCoord(n)) - point).sqrLength();
        if (distance < bestDistance)
            best = n, bestDistance = distance;
    }
    return best;
}

int nearestCell(const PbMesh2D& mesh, const SbVec2f& point) {
    int best = 0;
    float bestDistance = std::numeric_limits<float>::max();
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        float distance = (xyOf(mesh.getCell(c)->getCenter()) - point).sqrLength();
        if (distance < bestDistance)
            best = c, bestDistance = distance;
    }
    return best;
}

// Where the values of a fault node come from: the source cell that contains
// it, or the nearest source node when rounding put it just outside.
Location locateFaultNode(const PbMesh2D& source, const PiCellLocator2D& locator,
                         const SbVec2f& point) {
    Location location;
    if (locator.locate(point, location))
        return location;
    location.numNodes = 1;
    location.nodes[0] = nearestNode(source, point);
    location.weights[0] = 1.0f;
    location.weightDerivs[0].setValue(0.0f, 0.0f);
    return location;
}

template <typename T> T interpolate(const Location& location, const T* values) {
    T value = values[location.nodes[0]] * location.weights[0];
    for (int k = 1; k < location.numNodes; ++k)
        value += values[location.nodes[k]] * location.weights[k];
    return value;
}

// Carries the sets of a mesh over to its fault mesh.
class FaultTransfer {
public:
    FaultTransfer(const PbMesh2D& source, const PbFaultLine::Result& result)
        : m_source(source), m_result(result),
          m_locator(source, PiCellLocator2D::ROUNDING_TOLERANCE) {
        for (const SbVec2f& p : result.newNodes)
            m_newNodes.push_back(locateFaultNode(source, m_locator, p));
    }

    template <typename T> std::vector<T> nodeValues(const T* values) const {
        std::vector<T> out(values, values + m_source.getNumNodes());
        for (const Location& location : m_newNodes)
            out.push_back(interpolate(location, values));
        return out;
    }

    std::vector<SbString> nodeStrings(const SbString* strings) const {
        std::vector<SbString> out(strings, strings + m_source.getNumNodes());
        for (const Location& location : m_newNodes) {
            int dominant = static_cast<int>(
                std::max_element(location.weights, location.weights + location.numNodes) -
                location.weights);
            out.push_back(strings[location.nodes[dominant]]);
        }
        return out;
    }

    template <typename T> std::vector<T> cellValues(const T* values) {
        locateTriangles();
        std::vector<T> out;
        for (int cell : m_triangleCells)
            out.push_back(values[cell]);
        return out;
    }

private:
    SbVec2f nodeXY(int node) const {
        int numSourceNodes = m_source.getNumNodes();
        return node < numSourceNodes ? xyOf(m_source.getNodeCoord(node))
                                     : m_result.newNodes[node - numSourceNodes];
    }

    void locateTriangles() {
        if (!m_triangleCells.empty())
            return;
        const std::vector<int>& tris = m_result.triangles;
        for (size_t t = 0; t + 2 < tris.size(); t += 3) {
            SbVec2f centre = (nodeXY(tris[t]) + nodeXY(tris[t + 1]) + nodeXY(tris[t + 2])) / 3.0f;
            Location location;
            m_triangleCells.push_back(
                m_locator.locate(centre, location) ? location.cell : nearestCell(m_source, centre));
        }
    }

    const PbMesh2D& m_source;
    const PbFaultLine::Result& m_result;
    PiCellLocator2D m_locator;
    std::vector<Location> m_newNodes;
    std::vector<int> m_triangleCells;
};

// The sets found under the indices 0 to count - 1, as the scene files
// number them.
template <typename Getter> std::vector<int> setIndices(int count, Getter isSet) {
    std::vector<int> indices;
    for (int index = 0; index < count; ++index)
        if (isSet(index))
            indices.push_back(index);
    return indices;
}

void transferSets(const PbMesh2D& source, FaultTransfer& transfer, PbTriangleMesh2D& mesh) {
    auto hasValues = [&](int i) { return source.getValuesSet(i) != nullptr; };
    for (int index : setIndices(source.getNumValuesSet(), hasValues)) {
        const float* values = source.getValuesSet(index);
        PbMesh::DataBinding binding = source.getValuesBinding(index);
        std::vector<float> out =
            binding == PbMesh::PER_NODE ? transfer.nodeValues(values) : transfer.cellValues(values);
        mesh.addValuesSet(index, out.data(), binding, *source.getValuesSetName(index));
    }
    auto hasVecs = [&](int i) { return source.getVecsSet(i) != nullptr; };
    for (int index : setIndices(source.getNumVecsSet(), hasVecs)) {
        const SbVec3f* vecs = source.getVecsSet(index);
        PbMesh::DataBinding binding = source.getVecsBinding(index);
        std::vector<SbVec3f> out =
            binding == PbMesh::PER_NODE ? transfer.nodeValues(vecs) : transfer.cellValues(vecs);
        mesh.addVecsSet(index, out.data(), binding, *source.getVecsSetName(index));
    }
    auto hasStrings = [&](int i) { return source.getStringsSet(i) != nullptr; };
    for (int index : setIndices(source.getNumStringsSet(), hasStrings)) {
        std::vector<SbString> out = transfer.nodeStrings(source.getStringsSet(index));
        mesh.addStringsSet(index, out.data(), *source.getStringsSetName(index));
    }
}

PbTriangleMesh2D* buildFaultMesh(const PbMesh2D& source, const PbFaultLine::Result& result) {
    FaultTransfer transfer(source, result);
    std::vector<float> x, y;
    for (int n = 0; n < source.getNumNodes(); ++n) {
        SbVec3f p = source.getNodeCoord(n);
        x.push_back(p[0]);
        y.push_back(p[1]);
    }
    for (const SbVec2f& p : result.newNodes) {
        x.push_back(p[0]);
        y.push_back(p[1]);
    }
    std::vector<float> z;
    if (source.getZcoord())
        z = transfer.nodeValues(source.getZcoord());
    auto* mesh = new PbTriangleMesh2D(1);
    mesh->setGeometry(static_cast<int>(x.size()), x.data(), y.data(),
                      z.empty() ? nullptr : z.data(), static_cast<int>(result.triangles.size() / 3),
                      result.triangles.data());
    transferSets(source, transfer, *mesh);
    return mesh;
}

} // namespace

PbMesh2D::PbMesh2D(int isDataDuplicate) : PbMesh(isDataDuplicate), m_z(isDataDuplicate) {}

PbMesh2D::PbMesh2D(const PbMesh2D& other) = default;

PbMesh2D& PbMesh2D::operator=(const PbMesh2D& other) = default;

PbMesh2D::~PbMesh2D() = default;

SbBox2f PbMesh2D::getBoundingBox() const {
    SbBox3f box = PbMesh::getBoundingBox();
    if (box.isEmpty())
        return SbBox2f();
    return SbBox2f(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1]);
}

void PbMesh2D::updateBoundingBox() const {
    m_boundingBox.makeEmpty();
    for (int n = 0; n < m_numNodes; ++n)
        m_boundingBox.extendBy(getNodeCoord(n));
}

const float* PbMesh2D::getZcoord() const {
    return m_z.get();
}

void PbMesh2D::getNodesCoord(const float* z, SoMFVec3f& coords) const {
    const float* heights = z ? z : m_z.get();
    coords.setNum(m_numNodes);
    SbVec3f* points = coords.startEditing();
    for (int n = 0; n < m_numNodes; ++n) {
        SbVec3f p = getNodeCoord(n);
        points[n].setValue(p[0], p[1], heights ? heights[n] : 0.0f);
    }
    coords.finishEditing();
}

int PbMesh2D::getCellNodes(int cell, int nodes[4]) const {
    const PbCell* c = getCell(cell);
    if (!c)
        return 0;
    int count = std::min(c->getNumNodes(), 4);
    for (int k = 0; k < count; ++k)
        nodes[k] = c->getNodeIndex(k);
    return count;
}

std::vector<std::vector<PbMesh2D::CellSide>> PbMesh2D::getSideGroups() const {
    struct KeyedSide {
        int low, high, order;
        CellSide side;
    };
    std::vector<KeyedSide> sides;
    for (int c = 0; c < m_numCells; ++c) {
        int nodes[4];
        int count = getCellNodes(c, nodes);
        for (int k = 0; k < count; ++k) {
            int from = nodes[k], to = nodes[(k + 1) % count];
            if (from != to)
                sides.push_back({std::min(from, to),
                                 std::max(from, to),
                                 static_cast<int>(sides.size()),
                                 {c, from, to}});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const KeyedSide& a, const KeyedSide& b) {
        return std::tie(a.low, a.high, a.order) < std::tie(b.low, b.high, b.order);
    });
    std::vector<std::pair<int, std::vector<CellSide>>> groups;
    for (size_t k = 0; k < sides.size(); ++k) {
        bool sameNodes =
            k > 0 && sides[k].low == sides[k - 1].low && sides[k].high == sides[k - 1].high;
        if (!sameNodes)
            groups.emplace_back(sides[k].order, std::vector<CellSide>());
        groups.back().second.push_back(sides[k].side);
    }
    std::sort(groups.begin(), groups.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::vector<CellSide>> result;
    result.reserve(groups.size());
    for (auto& group : groups)
        result.push_back(std::move(group.second));
    return result;
}

std::vector<PbMesh2D::CellSide> PbMesh2D::getBoundarySides() const {
    std::vector<CellSide> boundary;
    for (const std::vector<CellSide>& group : getSideGroups())
        if (group.size() == 1)
            boundary.push_back(group.front());
    return boundary;
}

void PbMesh2D::getLimitIndices(PbArrayOfInt& limitNodes, PbArrayOfInt& limitSizes) const {
    limitNodes.empty();
    limitSizes.empty();
    std::vector<CellSide> sides = getBoundarySides();
    std::unordered_map<int, std::vector<int>> incident;
    for (size_t s = 0; s < sides.size(); ++s) {
        incident[sides[s].from].push_back(static_cast<int>(s));
        incident[sides[s].to].push_back(static_cast<int>(s));
    }
    std::vector<char> used(sides.size(), 0);
    // The next unused side at a node, preferring one that leaves it in its
    // cell's direction.
    auto nextSide = [&](int node) {
        int found = -1;
        for (int s : incident[node]) {
            if (used[s])
                continue;
            if (sides[s].from == node)
                return s;
            if (found < 0)
                found = s;
        }
        return found;
    };
    for (size_t first = 0; first < sides.size(); ++first) {
        if (used[first])
            continue;
        used[first] = 1;
        int start = sides[first].from;
        int node = sides[first].to;
        limitNodes.add(start);
        limitNodes.add(node);
        int count = 2;
        for (int s = nextSide(node); node != start && s >= 0; s = nextSide(node)) {
            used[s] = 1;
            node = sides[s].from == node ? sides[s].to : sides[s].from;
            limitNodes.add(node);
            ++count;
        }
        limitSizes.add(count);
    }
}

int PbMesh2D::hasSidesNormals() const {
    return m_numCells > 0;
}

void PbMesh2D::getSidesNormals(SbVec3f*& normals, const PbArrayOfInt& limitNodes) const {
    std::unordered_map<int, SbVec3f> sums;
    for (const CellSide& side : getBoundarySides()) {
        SbVec3f a = getNodeCoord(side.from), b = getNodeCoord(side.to);
        SbVec3f normal(b[1] - a[1], a[0] - b[0], 0.0f);
        SbVec3f inward = getCell(side.cell)->getCenter() - a;
        if (normal[0] * inward[0] + normal[1] * inward[1] > 0.0f)
            normal.negate();
        if (normal.length() > 0.0f)
            normal.normalize();
        for (int node : {side.from, side.to}) {
            auto found = sums.emplace(node, SbVec3f(0.0f, 0.0f, 0.0f)).first;
            found->second += normal;
        }
    }
    m_sidesNormals.assign(limitNodes.getNum(), SbVec3f(0.0f, 0.0f, 0.0f));
    for (int k = 0; k < limitNodes.getNum(); ++k) {
        auto found = sums.find(limitNodes[k]);
        if (found == sums.end() || found->second.length() == 0.0f)
            continue;
        m_sidesNormals[k] = found->second;
        m_sidesNormals[k].normalize();
    }
    normals = m_sidesNormals.data();
}

SbVec3f PbMesh2D::getCellNormal(const PbCell& cell) {
    SbVec3f p0 = cell.getNodeCoord(0), p1 = cell.getNodeCoord(1), p2 = cell.getNodeCoord(2);
    if (cell.getNumNodes() == 3)
        return (p1 - p0).cross(p2 - p0);
    return (p2 - p0).cross(cell.getNodeCoord(3) - p1);
}

void PbMesh2D::meshContouring(PiContouring*, const float*) const {}

void PbMesh2D::meshFilled(PoMeshFilled*) const {}

SbVec3f PbMesh2D::getFirstCellNormal() const {
    const SbVec3f up(0.0f, 0.0f, 1.0f);
    const PbCell* cell = getCell(0);
    if (!cell)
        return up;
    SbVec3f normal = getCellNormal(*cell);
    if (normal.length() == 0.0f)
        return up;
    normal.normalize();
    return normal;
}

float PbMesh2D::sumOverCells(float (PbCell::*measure)() const) const {
    double sum = 0.0;
    for (int c = 0; c < m_numCells; ++c)
        sum += (getCell(c)->*measure)();
    return static_cast<float>(sum);
}

float PbMesh2D::getVolume() const {
    return sumOverCells(&PbCell::getVolume);
}

float PbMesh2D::getArea() const {
    return sumOverCells(&PbCell::getArea);
}

void PbMesh2D::print(FILE* fp) const {
    PbMesh::print(fp);
    fprintf(fp, "PbMesh2D:: m_numZCoord = %d , m_zCoord (adress %p) \n",
            m_z.get() ? m_z.getNum() : 0, static_cast<const void*>(m_z.get()));
}

void PbMesh2D::storeZCoord(const float* z) {
    m_pushedZ.clear();
    m_z.set(z, z ? m_numNodes : 0);
}

void PbMesh2D::setZCoord(const float* z) {
    storeZCoord(z);
    geometryChanged(false);
}

void PbMesh2D::pushZCoord(const float* z) {
    m_pushedZ.push_back(m_z);
    m_z.set(z, z ? m_numNodes : 0);
    m_cellBoxesValid = 0;
    updateGeometryId();
}

void PbMesh2D::popZCoord() {
    if (m_pushedZ.empty()) {
        PoDebugError::post("PbMesh2D::popZCoord", "no z coordinates were pushed");
        return;
    }
    m_z = m_pushedZ.back();
    m_pushedZ.pop_back();
    m_cellBoxesValid = 0;
    updateGeometryId();
}

PbTriangleMesh2D* PbMesh2D::getFaultMesh(int numFaultLines, const int* numFaultPoints,
                                         const SbVec2f* faultPoints,
                                         SbBool splitFaultSegments) const {
    const char* method = "PbMesh2D::getFaultMesh";
    PbFaultLine::Input input;
    if (!collectFaultLines(method, numFaultLines, numFaultPoints, faultPoints, input.faultLines))
        return nullptr;
    if (m_numCells == 0) {
        PoDebugError::post(method, "the mesh has no cells");
        return nullptr;
    }
    for (int n = 0; n < m_numNodes; ++n) {
        input.nodes.push_back(xyOf(getNodeCoord(n)));
        if (!isFinite(input.nodes.back())) {
            PoDebugError::post(method, "node %d has a coordinate that is not finite", n);
            return nullptr;
        }
    }
    for (const CellSide& side : getBoundarySides()) {
        input.boundarySides.push_back(side.from);
        input.boundarySides.push_back(side.to);
    }
    input.splitFaultSegments = splitFaultSegments != FALSE;
    PbFaultLine::Result result;
    std::string error;
    if (!PbFaultLine::triangulate(input, result, error)) {
        PoDebugError::post(method, "the triangulation failed: %s", error.c_str());
        return nullptr;
    }
    return buildFaultMesh(*this, result);
}
