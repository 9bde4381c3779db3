#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbHexahedronMesh3D.h>
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

#include "3Ddata/MeshTestHelpers.h"
#include "support/VolumeBlock.h"

#include <functional>

// Grids locate points in closed form along their axes, unstructured meshes
// through a spatial index of the cell boxes: both must find what testing
// every cell in index order finds.
namespace {

class PointLocationTest : public meshtest::MeshTest {};

struct Case {
    const char* name;
    std::function<std::unique_ptr<PbMesh>()> make;
    float step = 0.5f; // of the lattice of probe points
    std::vector<float> tolerances = {0.0f, 0.2f, -0.1f};
    SbBox3f lattice = SbBox3f(); // empty: the mesh's box
};

template <typename Mesh, typename... Args>
std::function<std::unique_ptr<PbMesh>()> make(Args... args) {
    return [=] { return std::unique_ptr<PbMesh>(new Mesh(args...)); };
}

template <typename Grid>
std::function<std::unique_ptr<PbMesh>()> grid2D(std::vector<float> x, std::vector<float> y) {
    return [=] {
        auto grid = std::make_unique<Grid>();
        grid->setGeometry(int(x.size()), int(y.size()), x.data(), y.data());
        return std::unique_ptr<PbMesh>(std::move(grid));
    };
}

std::function<std::unique_ptr<PbMesh>()> regular2D(int numX, int numY, float x0, float y0, float x1,
                                                   float y1) {
    return [=] {
        auto grid = std::make_unique<PbRegularCartesianGrid2D>();
        grid->setGeometry(numX, numY, x0, y0, x1, y1);
        return std::unique_ptr<PbMesh>(std::move(grid));
    };
}

// A rectilinear grid with uneven steps; the same nodes again with one
// coordinate per node; the x axis run backwards, and folded back on itself.
const float s_xs[] = {0.0f, 1.0f, 3.0f, 3.5f};
const float s_ys[] = {-1.0f, 0.0f, 2.0f};
const float s_zs[] = {0.0f, 0.5f, 1.0f, 2.0f, 4.0f};
const float s_decreasing[] = {4.0f, 2.0f, 1.5f, 0.0f};
const float s_unsorted[] = {0.0f, 2.0f, 1.0f, 3.0f};

std::unique_ptr<PbMesh> curvilinear() {
    PbParalCartesianGrid3D paral(4, 3, 5, s_xs, s_ys, s_zs);
    std::vector<float> coords[3];
    for (int node = 0; node < paral.getNumNodes(); ++node)
        for (int axis = 0; axis < 3; ++axis)
            coords[axis].push_back(paral.getNodeCoord(node)[axis]);
    return std::make_unique<PbCartesianGrid3D>(4, 3, 5, coords[0].data(), coords[1].data(),
                                               coords[2].data());
}

// A block of hexahedra whose interior nodes are moved at random.
std::unique_ptr<PbMesh> curvedHexahedra() {
    meshtest::VolumeBlock block =
        meshtest::makeVolumeBlock(4, meshtest::BlockCells::HEXAHEDRA, 0.25f, 3);
    return std::make_unique<PbHexahedronMesh3D>(block.numNodes, block.x.data(), block.y.data(),
                                                block.z.data(), block.numCells, block.cells.data());
}

std::unique_ptr<PbMesh> tetrahedra() {
    meshtest::TetBlock block = meshtest::makeTetBlock(5, 0.3f, 17);
    return std::make_unique<PbTetrahedronMesh3D>(block.numNodes, block.x.data(), block.y.data(),
                                                 block.z.data(), block.numCells,
                                                 block.cells.data());
}

std::unique_ptr<PbMesh> mixedCells() {
    using namespace meshtest::mixedvolume;
    return std::make_unique<PbIndexedMesh3D>(12, x, y, z, 4, types, cells);
}

// Mixed surface cells, and a regular grid whose last column rises to z = 10:
// the points must also lie near each cell's plane.
std::unique_ptr<PbMesh> mixedSurface() {
    using namespace meshtest::mixedsurface;
    auto mesh = std::make_unique<PbIndexedMesh2D>();
    mesh->setGeometry(6, x, y, 3, types, cells);
    return mesh;
}

std::unique_ptr<PbMesh> risingSurface() {
    const float z[] = {0, 0, 0, 0, 0, 0, 10, 10, 10};
    auto grid = std::make_unique<PbRegularCartesianGrid2D>();
    grid->setGeometry(3, 3, 0.0f, 0.0f, 2.0f, 2.0f, z);
    return grid;
}

std::vector<Case> cases() {
    const SbBox3f core(1, 1, 1, 3, 3, 3);
    return {
        // Uneven spacing, a very narrow column beside a wide one, rows that
        // run backwards.
        {"rectilinear 2D",
         grid2D<PbParalCartesianGrid2D>({0, 0.1f, 0.15f, 2, 2.01f, 5}, {3, 2.5f, 1, 0.9f, -2}),
         0.125f,
         {0.0f, 0.3f, -0.1f, 2.0f}},
        {"regular 2D", regular2D(7, 5, -1, 2, 2, 4.4f), 0.125f, {0.0f, 0.25f, -0.2f, 1.5f}},
        {"regular 2D, reversed axes", regular2D(4, 6, 3, 1, 0, -1.5f), 0.25f},
        {"mixed surface cells", mixedSurface, 0.125f},
        {"surface with z", risingSurface, 0.25f},
        {"rectilinear 3D", make<PbParalCartesianGrid3D>(4, 3, 5, s_xs, s_ys, s_zs)},
        {"decreasing x", make<PbParalCartesianGrid3D>(4, 3, 5, s_decreasing, s_ys, s_zs)},
        {"unsorted x", make<PbParalCartesianGrid3D>(4, 3, 5, s_unsorted, s_ys, s_zs)},
        {"regular 3D", make<PbRegularCartesianGrid3D>(6, 4, 5, -1, 0, 2, 2, 3, 3)},
        {"inverted corners", make<PbRegularCartesianGrid3D>(6, 4, 5, 2, 3, 3, -1, 0, 2)},
        {"curvilinear 3D", curvilinear},
        {"curved hexahedra", curvedHexahedra, 0.5f, {0.0f, 0.2f, -0.1f}, core},
        {"tetrahedra", tetrahedra, 0.5f, {0.0f, 0.2f, -0.1f, 1.0f, 3.0f}, core},
        {"mixed volume cells", mixedCells},
    };
}

} // namespace

TEST_F(PointLocationTest, AgreesWithTestingEveryCell) {
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<PbMesh> mesh = c.make();
        ASSERT_GT(mesh->getNumCells(), 0);
        std::vector<SbVec3f> points = meshtest::probePoints(*mesh, 300, 11, c.lattice, c.step);
        for (float tolerance : c.tolerances)
            meshtest::expectLocationAgreesWithTestingEveryCell(*mesh, points, tolerance);
    }
}
