#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/3Ddata/PbIrregularMesh1D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularMesh1D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>

#include "3Ddata/MeshTestHelpers.h"

#include <climits>
#include <functional>

// Negative or overflowing sizes, missing arrays, cells of the wrong size and
// node indices beyond the nodes: each refused call posts one message and
// leaves the mesh exactly as it was.
namespace {

class MeshBadInputTest : public meshtest::MeshTest {};

using Call = std::function<void(PbMesh&)>;

struct Case {
    const char* name;
    std::function<std::unique_ptr<PbMesh>()> make;
    std::vector<Call> calls;
};

// The mesh built by build, and calls on it as its own kind.
template <typename Mesh>
Case kind(const char* name, std::function<void(Mesh&)> build,
          std::vector<std::function<void(Mesh&)>> calls) {
    Case c{name,
           [build] {
               auto mesh = std::make_unique<Mesh>();
               build(*mesh);
               return std::unique_ptr<PbMesh>(std::move(mesh));
           },
           {}};
    for (auto& call : calls)
        c.calls.push_back([call](PbMesh& mesh) { call(static_cast<Mesh&>(mesh)); });
    return c;
}

const float* const s_none = nullptr;
const float s_axis[] = {0, 1, 2, 3, 4, 5};

const auto& s_x2 = meshtest::mixedsurface::x;
const auto& s_y2 = meshtest::mixedsurface::y;
const auto& s_types2 = meshtest::mixedsurface::types;
const auto& s_cells2 = meshtest::mixedsurface::cells;
const int s_three[] = {3}, s_five[] = {5};
const int s_beyond2[] = {0, 1, 6}, s_negative[] = {0, -1, 2};

const auto& s_x3 = meshtest::mixedvolume::x;
const auto& s_y3 = meshtest::mixedvolume::y;
const auto& s_z3 = meshtest::mixedvolume::z;
const auto& s_types3 = meshtest::mixedvolume::types;
const auto& s_cells3 = meshtest::mixedvolume::cells;
const int s_wrongTypes3[] = {8, 7, 6, 4};
const int s_beyond3[] = {0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 8, 1, 9, 2, 5, 10, 6, 0, 1, 3, 12};

std::vector<Case> cases() {
    auto nothing = [](auto&) {};
    return {
        kind<PbParalCartesianGrid2D>("rectilinear surface grid",
                                     [](auto& g) { g.setGeometry(3, 2, s_axis, s_axis); },
                                     {[](auto& g) { g.setGeometry(-1, 2, s_axis, s_axis); },
                                      [](auto& g) { g.setGeometry(2, 2, s_axis, s_none); },
                                      [](auto& g) { g.setGeometry(INT_MAX, 3, s_axis, s_axis); }}),
        kind<PbRegularCartesianGrid2D>("regular surface grid", nothing, {[](auto& g) {
                                           g.setGeometry(-3, 2, 0.0f, 0.0f, 1.0f, 1.0f);
                                       }}),
        kind<PbParalCartesianGrid3D>(
            "rectilinear volume grid",
            [](auto& g) { g.setGeometry(4, 3, 5, s_axis, s_axis, s_axis); },
            {[](auto& g) { g.setGeometry(-1, 3, 5, s_axis, s_axis, s_axis); },
             [](auto& g) { g.setGeometry(4, 3, 5, s_axis, s_none, s_axis); },
             [](auto& g) { g.setGeometry(INT_MAX, INT_MAX, 2, s_axis, s_axis, s_axis); },
             [](auto& g) { g.setCoordinates(s_none, s_axis, s_axis); }}),
        kind<PbRegularCartesianGrid3D>(
            "regular volume grid", [](auto& g) { g.setGeometry(2, 2, 2, 0, 0, 0, 1, 1, 1); },
            {[](auto& g) { g.setGeometry(2, -2, 2, 0, 0, 0, 5, 5, 5); },
             // No nodes, yet numX * numY overflows.
             [](auto& g) { g.setGeometry(70000, 70000, 0, 0, 0, 0, 5, 5, 5); }}),
        kind<PbIndexedMesh2D>(
            "indexed surface mesh",
            [](auto& m) { m.setGeometry(6, s_x2, s_y2, 3, s_types2, s_cells2); },
            {[](auto& m) { m.setGeometry(6, s_x2, s_y2, 1, s_three, s_beyond2); },
             [](auto& m) { m.setGeometry(6, s_x2, s_y2, 1, s_three, s_negative); },
             [](auto& m) { m.setGeometry(6, s_x2, s_y2, 1, s_five, s_cells2); },
             [](auto& m) { m.setGeometry(6, s_x2, s_y2, 1, nullptr, s_cells2); },
             [](auto& m) { m.setGeometry(6, s_none, s_y2, 3, s_types2, s_cells2); },
             [](auto& m) { m.setGeometry(-6, s_x2, s_y2, 3, s_types2, s_cells2); },
             [](auto& m) { m.setGeometry(6, s_x2, s_y2, -1, s_types2, s_cells2); }}),
        // Meshes of one cell kind refuse cells of another size.
        kind<PbTriangleMesh2D>(
            "triangle mesh", [](auto& m) { m.setGeometry(6, s_x2, s_y2, 1, s_cells2 + 4); },
            {[](PbIndexedMesh2D& m) { m.setGeometry(6, s_x2, s_y2, 3, s_types2, s_cells2); }}),
        kind<PbQuadrangleMesh2D>("quadrangle mesh", nothing, {[](auto& m) {
                                     m.setGeometry(6, s_x2, s_y2, 1, s_beyond3 + 19);
                                 }}),
        kind<PbIndexedMesh3D>(
            "indexed volume mesh",
            [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 4, s_types3, s_cells3); },
            {[](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 4, s_wrongTypes3, s_cells3); },
             [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 4, s_types3, s_beyond3); },
             [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 4, nullptr, s_cells3); },
             [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, -1, s_types3, s_cells3); }}),
        kind<PbTetrahedronMesh3D>(
            "tetrahedron mesh",
            [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 1, s_cells3 + 19); },
            {[](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 1, s_beyond3 + 19); },
             [](auto& m) { m.setGeometry(12, s_x3, s_none, s_z3, 1, s_cells3 + 19); },
             [](auto& m) { m.setGeometry(-4, s_x3, s_y3, s_z3, 1, s_cells3 + 19); },
             [](auto& m) { m.setGeometry(12, s_x3, s_y3, s_z3, 1, nullptr); },
             [](auto& m) { m.setCoordinates(s_x3, s_y3, s_none); }}),
        kind<PbIrregularMesh1D>("irregular line", [](auto& m) { m.setGeometry(3, s_axis); },
                                {[](auto& m) { m.setGeometry(-1, s_axis); },
                                 [](auto& m) { m.setGeometry(2, s_none); }}),
        kind<PbRegularMesh1D>("regular line", nothing,
                              {[](auto& m) { m.setGeometry(-4, 0.0f, 1.0f); }}),
    };
}

} // namespace

TEST_F(MeshBadInputTest, EachRefusedCallPostsOneMessageAndChangesNothing) {
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<PbMesh> mesh = c.make();
        const std::string before = meshtest::printed(*mesh);
        const unsigned int geometry = mesh->getGeometryId(), topology = mesh->getTopologyId();
        for (size_t n = 0; n < c.calls.size(); ++n) {
            errors().clear();
            c.calls[n](*mesh);
            EXPECT_EQ(errors().messages().size(), 1u) << "call " << n;
            EXPECT_EQ(meshtest::printed(*mesh), before) << "call " << n;
            EXPECT_EQ(mesh->getGeometryId(), geometry) << "call " << n;
            EXPECT_EQ(mesh->getTopologyId(), topology) << "call " << n;
        }
    }
}
