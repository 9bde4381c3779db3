#pragma once
#include "3Ddata/PiEdgePoints.h"
#include "3Ddata/PiMarchingCase.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

class PbCell;
class PbGrid3D;
class PbMesh3D;
class PoCellFilter;

// The level surface of a volume mesh: where the interpolated node values
// equal a level.  Each cell is cut by the marching case of its kind for the
// classification of its nodes (above the level or not); each cut mesh edge
// gives one surface point, shared by all the cells around the edge, at the
// position interpolated linearly between the edge's two nodes.
//
// The surface is kept as topology: the points, each given by its edge (the
// lower node index first) and the position of the cut along it, and a
// coordinate-index list of triangle strips or of single faces, each ended by
// -1.  Coordinates and other values are interpolated at the points on
// demand.
//
// Cells are visited in index order (through a cell filter when there is
// one); points are numbered in the order in which the visit meets them.
// Grids without a filter are cut by a faster walk over their rows of nodes
// that gives the very same points and faces in the same order.
//
// Where two cells share a quadrangular facet whose diagonal nodes lie on the
// same side of the level, their cases may cross the facet differently; the
// surface is then closed there by the quadrangle of the facet's four cut
// points, added by the second cell after its own faces.
class PiLevelSurface {
public:
    enum Style { STRIPS, FACES };
    enum Outcome { BUILT, LEVEL_ON_NODE };

    // The node values that define the surface: one value per node, or, for
    // a grid whose nodes lie on axes, the value (a[i] + b[j]) + c[k] of node
    // (i, j, k) from one term per index along each axis (the distance to a
    // plane is such a sum).
    struct Field {
        const float* values = nullptr;
        const float* axisTerms[3] = {nullptr, nullptr, nullptr};
    };

    struct Request {
        const PbMesh3D* mesh = nullptr;
        Field field;
        float level = 0.0f;
        // The counter-clockwise side of the faces looks towards the higher
        // values when the first cell visited is in the reference node order,
        // towards the lower ones when it is mirrored (and the other way round
        // when this is false).
        bool towardsHigher = true;
        Style style = STRIPS;
        const PoCellFilter* filter = nullptr;
        // Per-cell values handed to the filter, or null.
        const float* filterValues = nullptr;
        // When false, a node value equal to the level stops the build with
        // LEVEL_ON_NODE, so that the caller can move the level off the nodes
        // first; when true such nodes count as below the level.
        bool levelMayTouchNodes = false;
        // Cut grids cell by cell as any other mesh (for comparing the paths).
        bool cellByCell = false;
    };

    PiLevelSurface();
    ~PiLevelSurface();
    PiLevelSurface(const PiLevelSurface&) = delete;
    PiLevelSurface& operator=(const PiLevelSurface&) = delete;

    // Replaces the surface with the one of the request.  Cells with a NaN
    // value at one of their nodes are left out (hasSkippedNaN()).
    Outcome build(const Request& request);
    // Forgets the surface (points, faces and the table of cut edges).
    void clear();

    const PiEdgePoints& getPoints() const { return m_points; }
    int getNumPoints() const { return m_points.getNum(); }
    const std::vector<int32_t>& getCoordIndex() const { return m_coordIndex; }
    Style getStyle() const { return m_style; }
    int getNumFaces() const;
    bool hasSkippedNaN() const { return m_skippedNaN; }
    size_t getMemorySize() const;

    // The cell-by-cell steps, for a cell of the current build: the point of
    // a mesh edge (added when the edge has none), and the cell's part of the
    // surface for its case (a null or empty case adds nothing).
    int addSurfPoint(int node0, int node1);
    void addCellPart(const PbCell& cell, const PiMarchingCase* mc);

    // The values of a field given by axis terms, one per node of the grid.
    static void sumAxisTerms(const PbGrid3D& grid, const float* const terms[3], float* values);

    // Shared by the walks: the case's strips or faces (the strips to be
    // ended by endLastStrip), and the quadrangle
    // that closes an ambiguous facet of a case (whose crossing is given),
    // from the points of the case's edges, facing as the case's faces do.
    static const std::vector<int>& caseList(const PiMarchingCase& mc, Style style) {
        return style == STRIPS ? mc.getEdgeStripSet() : mc.getEdgeFaceSet();
    }
    static void endLastStrip(std::vector<int32_t>& coordIndex, Style style);
    static void appendClosingQuad(std::vector<int32_t>& coordIndex, const PiMarchingCase& mc,
                                  int facet, const int* edgePoints, int crossing, Style style);

private:
    using FacetKey = std::array<int, 4>;
    struct FacetKeyHash {
        size_t operator()(const FacetKey& key) const;
    };

    Outcome buildCellByCell(const Request& request);
    Outcome buildGrid(const Request& request);
    bool classifyNodes(const Request& request);
    bool isFirstCellMirrored(const Request& request) const;
    bool hasNaNNode(const PbCell& cell) const;
    // Adds the quadrangles that close the facets where this cell and an
    // earlier one cross differently, and records the facets it crosses
    // first.
    void closeAmbiguousFacets(const PbCell& cell, const PiMarchingCase& mc, const int* edgePoints);

    Style m_style = STRIPS;
    float m_level = 0.0f;
    const float* m_values = nullptr;
    std::vector<float> m_fieldValues;
    std::vector<bool> m_nodeFlags;
    bool m_skippedNaN = false;

    PiEdgePoints m_points;
    std::vector<int32_t> m_coordIndex;
    std::unordered_map<FacetKey, unsigned char, FacetKeyHash> m_openFacets;
};
