#include "3Ddata/PbFaultLine.h"

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Constrained_triangulation_plus_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_face_base_with_info_2.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>

#include <Inventor/SbBox2f.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <exception>
#include <set>
#include <utility>

namespace {

struct VertexInfo {
    int index = -1;
};

struct FaceInfo {
    // Number of boundary sides crossed from outside; odd means inside.
    int nesting = -1;
};

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using VertexBase = CGAL::Triangulation_vertex_base_with_info_2<VertexInfo, Kernel>;
using FaceBase =
    CGAL::Triangulation_face_base_with_info_2<FaceInfo, Kernel,
                                              CGAL::Constrained_triangulation_face_base_2<Kernel>>;
using Tds = CGAL::Triangulation_data_structure_2<VertexBase, FaceBase>;
// Exact predicates with approximate constructions: crossing constraints
// are allowed and meet at an approximate crossing node.
using Cdt = CGAL::Constrained_Delaunay_triangulation_2<Kernel, Tds, CGAL::Exact_predicates_tag>;
using Triangulation = CGAL::Constrained_triangulation_plus_2<Cdt>;
using Vertex = Triangulation::Vertex_handle;
using Face = Triangulation::Face_handle;
using Edge = Triangulation::Edge;
using Point = Kernel::Point_2;
using VertexPair = std::pair<const void*, const void*>;

// Splitting stops after this many rounds, or for segments shorter than this
// fraction of the domain's extent, which ends the endless halving near
// faults that meet at small angles.
const int MAX_SPLIT_ROUNDS = 40;
const double SHORTEST_SPLIT_FRACTION = 1e-6;

struct Work {
    Triangulation triangulation;
    std::vector<Vertex> faultVertices;
    std::set<VertexPair> boundaryPairs;
    std::vector<Triangulation::Constraint_id> boundaryConstraints;
    double extent = 0.0;
};

Point toPoint(const SbVec2f& p) {
    return Point(p[0], p[1]);
}

VertexPair pairOf(Vertex a, Vertex b) {
    const void* pa = &*a;
    const void* pb = &*b;
    return pa < pb ? VertexPair(pa, pb) : VertexPair(pb, pa);
}

void insertNodes(const PbFaultLine::Input& input, Work& work, std::vector<Vertex>& nodeVertices) {
    nodeVertices.reserve(input.nodes.size());
    for (size_t i = 0; i < input.nodes.size(); ++i) {
        Vertex v = work.triangulation.insert(toPoint(input.nodes[i]));
        // Coincident nodes share one vertex, numbered after the first of them.
        if (v->info().index < 0)
            v->info().index = static_cast<int>(i);
        nodeVertices.push_back(v);
    }
}

void insertBoundary(const PbFaultLine::Input& input, Work& work,
                    const std::vector<Vertex>& nodeVertices) {
    for (size_t k = 0; k + 1 < input.boundarySides.size(); k += 2) {
        Vertex a = nodeVertices[input.boundarySides[k]];
        Vertex b = nodeVertices[input.boundarySides[k + 1]];
        Triangulation::Constraint_id id = work.triangulation.insert_constraint(a, b);
        if (id != Triangulation::Constraint_id(nullptr))
            work.boundaryConstraints.push_back(id);
    }
}

void insertFaults(const PbFaultLine::Input& input, Work& work) {
    for (const std::vector<SbVec2f>& line : input.faultLines) {
        Vertex previous;
        for (size_t k = 0; k < line.size(); ++k) {
            Vertex v = work.triangulation.insert(toPoint(line[k]));
            work.faultVertices.push_back(v);
            if (k > 0)
                work.triangulation.insert_constraint(previous, v);
            previous = v;
        }
    }
}

// Boundary sides may have been cut by crossing faults: the pieces are read
// back from the constraints' vertex lists.
void collectBoundaryPairs(Work& work) {
    work.boundaryPairs.clear();
    for (Triangulation::Constraint_id id : work.boundaryConstraints) {
        Vertex previous;
        bool first = true;
        for (Vertex v : work.triangulation.vertices_in_constraint(id)) {
            if (!first)
                work.boundaryPairs.insert(pairOf(previous, v));
            previous = v;
            first = false;
        }
    }
}

bool isBoundaryEdge(const Work& work, const Edge& edge) {
    if (!work.triangulation.is_constrained(edge))
        return false;
    Face f = edge.first;
    int i = edge.second;
    return work.boundaryPairs.count(
               pairOf(f->vertex(Triangulation::ccw(i)), f->vertex(Triangulation::cw(i)))) > 0;
}

bool encroaches(const Triangulation& t, Vertex p, Vertex a, Vertex b) {
    if (t.is_infinite(p))
        return false;
    const Point& c = p->point();
    const Point& pa = a->point();
    const Point& pb = b->point();
    return (pa.x() - c.x()) * (pb.x() - c.x()) + (pa.y() - c.y()) * (pb.y() - c.y()) < 0.0;
}

std::vector<std::pair<Vertex, Vertex>> encroachedFaultSegments(const Work& work) {
    const Triangulation& t = work.triangulation;
    double shortest = work.extent * SHORTEST_SPLIT_FRACTION;
    std::vector<std::pair<Vertex, Vertex>> segments;
    for (auto e = t.finite_edges_begin(); e != t.finite_edges_end(); ++e) {
        if (!t.is_constrained(*e) || isBoundaryEdge(work, *e))
            continue;
        Face f = e->first;
        int i = e->second;
        Vertex a = f->vertex(Triangulation::ccw(i));
        Vertex b = f->vertex(Triangulation::cw(i));
        if (std::sqrt(CGAL::to_double(CGAL::squared_distance(a->point(), b->point()))) < shortest)
            continue;
        Vertex mirror = f->neighbor(i)->vertex(t.mirror_index(f, i));
        if (encroaches(t, f->vertex(i), a, b) || encroaches(t, mirror, a, b))
            segments.emplace_back(a, b);
    }
    return segments;
}

void splitEncroachedFaultSegments(Work& work) {
    Triangulation& t = work.triangulation;
    for (int round = 0; round < MAX_SPLIT_ROUNDS; ++round) {
        std::vector<std::pair<Vertex, Vertex>> segments = encroachedFaultSegments(work);
        if (segments.empty())
            return;
        for (const auto& segment : segments) {
            Face f;
            int i;
            if (!t.is_edge(segment.first, segment.second, f, i))
                continue;
            Point middle = CGAL::midpoint(segment.first->point(), segment.second->point());
            t.insert(middle, Triangulation::EDGE, f, i);
        }
    }
}

void markFrom(Work& work, Face start, int nesting, std::deque<Edge>& border) {
    std::deque<Face> queue{start};
    while (!queue.empty()) {
        Face f = queue.front();
        queue.pop_front();
        if (f->info().nesting != -1)
            continue;
        f->info().nesting = nesting;
        for (int i = 0; i < 3; ++i) {
            Face neighbour = f->neighbor(i);
            if (neighbour->info().nesting != -1)
                continue;
            if (isBoundaryEdge(work, Edge(f, i)))
                border.emplace_back(f, i);
            else
                queue.push_back(neighbour);
        }
    }
}

void markInside(Work& work) {
    Triangulation& t = work.triangulation;
    for (auto f = t.all_faces_begin(); f != t.all_faces_end(); ++f)
        f->info().nesting = -1;
    std::deque<Edge> border;
    markFrom(work, t.infinite_face(), 0, border);
    while (!border.empty()) {
        Edge e = border.front();
        border.pop_front();
        Face neighbour = e.first->neighbor(e.second);
        if (neighbour->info().nesting == -1)
            markFrom(work, neighbour, e.first->info().nesting + 1, border);
    }
}

bool isInside(Face f) {
    return f->info().nesting % 2 == 1;
}

std::vector<Vertex> usedNewVertices(Work& work) {
    std::vector<Vertex> used;
    std::set<const void*> seen;
    Triangulation& t = work.triangulation;
    for (auto f = t.finite_faces_begin(); f != t.finite_faces_end(); ++f) {
        if (!isInside(f))
            continue;
        for (int i = 0; i < 3; ++i) {
            Vertex v = f->vertex(i);
            if (v->info().index < 0 && seen.insert(&*v).second)
                used.push_back(v);
        }
    }
    return used;
}

void numberNewNodes(Work& work, int numNodes, PbFaultLine::Result& result) {
    std::vector<Vertex> used = usedNewVertices(work);
    std::set<const void*> usedSet;
    for (Vertex v : used)
        usedSet.insert(&*v);
    int next = numNodes;
    auto number = [&](Vertex v) {
        v->info().index = next++;
        result.newNodes.emplace_back(static_cast<float>(v->point().x()),
                                     static_cast<float>(v->point().y()));
    };
    for (Vertex v : work.faultVertices)
        if (v->info().index < 0 && usedSet.count(&*v))
            number(v);
    std::vector<Vertex> others;
    for (Vertex v : used)
        if (v->info().index < 0)
            others.push_back(v);
    std::sort(others.begin(), others.end(), [](Vertex a, Vertex b) {
        return a->point().x() < b->point().x() ||
               (a->point().x() == b->point().x() && a->point().y() < b->point().y());
    });
    for (Vertex v : others)
        number(v);
}

void collectTriangles(Work& work, PbFaultLine::Result& result) {
    std::vector<std::array<int, 3>> triangles;
    Triangulation& t = work.triangulation;
    for (auto f = t.finite_faces_begin(); f != t.finite_faces_end(); ++f) {
        if (!isInside(f))
            continue;
        std::array<int, 3> tri{f->vertex(0)->info().index, f->vertex(1)->info().index,
                               f->vertex(2)->info().index};
        std::rotate(tri.begin(), std::min_element(tri.begin(), tri.end()), tri.end());
        triangles.push_back(tri);
    }
    std::sort(triangles.begin(), triangles.end());
    for (const std::array<int, 3>& tri : triangles)
        result.triangles.insert(result.triangles.end(), tri.begin(), tri.end());
}

double extentOf(const PbFaultLine::Input& input) {
    SbBox2f box;
    for (const SbVec2f& p : input.nodes)
        box.extendBy(p);
    float dx, dy;
    box.getSize(dx, dy);
    return std::max(dx, dy);
}

} // namespace

bool PbFaultLine::triangulate(const Input& input, Result& result, std::string& error) {
    result = Result();
    try {
        Work work;
        work.extent = extentOf(input);
        std::vector<Vertex> nodeVertices;
        insertNodes(input, work, nodeVertices);
        insertBoundary(input, work, nodeVertices);
        insertFaults(input, work);
        collectBoundaryPairs(work);
        if (input.splitFaultSegments) {
            splitEncroachedFaultSegments(work);
        }
        markInside(work);
        numberNewNodes(work, static_cast<int>(input.nodes.size()), result);
        collectTriangles(work, result);
    } catch (const std::exception& e) {
        result = Result();
        error = e.what();
        return false;
    }
    if (result.triangles.empty()) {
        error = "no triangle lies inside the mesh boundary";
        return false;
    }
    return true;
}
