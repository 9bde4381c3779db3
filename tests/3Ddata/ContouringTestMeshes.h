#pragma once
#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Surface meshes of every kind over about the same square, and fields on
// them, for the contouring and filled tests.
namespace contourtest {

struct NamedMesh {
    std::string name;
    std::shared_ptr<PbMesh2D> mesh;
};

// n x n nodes over [0, 1]^2.
inline std::shared_ptr<PbRegularCartesianGrid2D> regularGrid(int n) {
    auto grid = std::make_shared<PbRegularCartesianGrid2D>();
    grid->setGeometry(n, n, 0.0f, 0.0f, 1.0f, 1.0f);
    return grid;
}

// Uneven columns and rows.
inline std::shared_ptr<PbParalCartesianGrid2D> paralGrid(int n) {
    std::vector<float> x, y;
    for (int i = 0; i < n; ++i) {
        const float u = float(i) / float(n - 1);
        x.push_back(u * u);
        y.push_back(std::sqrt(u));
    }
    auto grid = std::make_shared<PbParalCartesianGrid2D>();
    grid->setGeometry(n, n, x.data(), y.data());
    return grid;
}

// A sheared and bent grid.
inline std::shared_ptr<PbCartesianGrid2D> curvilinearGrid(int n) {
    std::vector<float> x, y;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const float u = float(i) / float(n - 1), v = float(j) / float(n - 1);
            x.push_back(u + 0.2f * v);
            y.push_back(v + 0.1f * std::sin(3.0f * u));
        }
    }
    auto grid = std::make_shared<PbCartesianGrid2D>();
    grid->setGeometry(n, n, x.data(), y.data());
    return grid;
}

// A quarter ring.
inline std::shared_ptr<PbPolarGrid2D> polarGrid(int n) {
    std::vector<float> r, t;
    for (int i = 0; i < n; ++i) {
        r.push_back(0.5f + float(i) / float(n - 1));
        t.push_back(1.5f * float(i) / float(n - 1));
    }
    auto grid = std::make_shared<PbPolarGrid2D>();
    grid->setGeometry(n, n, r.data(), t.data());
    return grid;
}

// The nodes of an n x n grid, moved a little at random.
inline void jitteredNodes(int n, std::vector<float>& x, std::vector<float>& y) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> jitter(-0.2f, 0.2f);
    const float h = 1.0f / float(n - 1);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const bool inner = i > 0 && j > 0 && i < n - 1 && j < n - 1;
            x.push_back(float(i) * h + (inner ? jitter(random) * h : 0.0f));
            y.push_back(float(j) * h + (inner ? jitter(random) * h : 0.0f));
        }
    }
}

// One quadrangle with the corners (0, 0), (1, 0), (1, 1), (0, 1).
inline std::shared_ptr<PbQuadrangleMesh2D> unitQuadrangle() {
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
    const int cell[] = {0, 1, 2, 3};
    auto quad = std::make_shared<PbQuadrangleMesh2D>();
    quad->setGeometry(4, x, y, 1, cell);
    return quad;
}

// The squares [0, 1] x [0, 1] and [1, 2] x [0, 1], the second given
// clockwise, with the element orientation on.
inline std::shared_ptr<PbIndexedMesh2D> twoSquaresOneReversed() {
    const float x[] = {0, 1, 1, 0, 2, 2}, y[] = {0, 0, 1, 1, 0, 1};
    const int types[] = {4, 4};
    const int cells[] = {0, 1, 2, 3, 1, 2, 5, 4};
    auto mesh = std::make_shared<PbIndexedMesh2D>();
    mesh->setGeometry(6, x, y, 2, types, cells);
    mesh->setElemOrientation(1);
    return mesh;
}

// Two triangles per grid square, the diagonal alternating.
inline std::shared_ptr<PbTriangleMesh2D> triangleMesh(int n) {
    std::vector<float> x, y;
    jitteredNodes(n, x, y);
    std::vector<int> cells;
    for (int i = 0; i + 1 < n; ++i) {
        for (int j = 0; j + 1 < n; ++j) {
            const int a = i * n + j, b = a + n, c = b + 1, d = a + 1;
            const std::vector<int> two = (i + j) % 2 ? std::vector<int>{a, b, c, a, c, d}
                                                     : std::vector<int>{a, b, d, b, c, d};
            cells.insert(cells.end(), two.begin(), two.end());
        }
    }
    auto mesh = std::make_shared<PbTriangleMesh2D>();
    mesh->setGeometry(n * n, x.data(), y.data(), int(cells.size() / 3), cells.data());
    return mesh;
}

inline std::shared_ptr<PbQuadrangleMesh2D> quadrangleMesh(int n) {
    std::vector<float> x, y;
    jitteredNodes(n, x, y);
    std::vector<int> cells;
    for (int i = 0; i + 1 < n; ++i)
        for (int j = 0; j + 1 < n; ++j)
            for (int node : {i * n + j, (i + 1) * n + j, (i + 1) * n + j + 1, i * n + j + 1})
                cells.push_back(node);
    auto mesh = std::make_shared<PbQuadrangleMesh2D>();
    mesh->setGeometry(n * n, x.data(), y.data(), int(cells.size() / 4), cells.data());
    return mesh;
}

// Quadrangles, and two triangles in every third square.
inline std::shared_ptr<PbIndexedMesh2D> mixedMesh(int n) {
    std::vector<float> x, y;
    jitteredNodes(n, x, y);
    std::vector<int> types, cells;
    for (int i = 0; i + 1 < n; ++i) {
        for (int j = 0; j + 1 < n; ++j) {
            const int a = i * n + j, b = a + n, c = b + 1, d = a + 1;
            if ((i * n + j) % 3 == 0) {
                types.insert(types.end(), {3, 3});
                cells.insert(cells.end(), {a, b, c, a, c, d});
            } else {
                types.push_back(4);
                cells.insert(cells.end(), {a, b, c, d});
            }
        }
    }
    auto mesh = std::make_shared<PbIndexedMesh2D>();
    mesh->setGeometry(n * n, x.data(), y.data(), int(types.size()), types.data(), cells.data());
    return mesh;
}

inline std::vector<NamedMesh> allMeshKinds(int n) {
    return {{"regular grid", regularGrid(n)},
            {"rectilinear grid", paralGrid(n)},
            {"curvilinear grid", curvilinearGrid(n)},
            {"polar grid", polarGrid(n)},
            {"triangle mesh", triangleMesh(n)},
            {"quadrangle mesh", quadrangleMesh(n)},
            {"mixed mesh", mixedMesh(n)}};
}

inline std::vector<std::shared_ptr<PbGrid2D>> allGridKinds(int n) {
    return {regularGrid(n), paralGrid(n), curvilinearGrid(n), polarGrid(n)};
}

// One value per node from a function of the node's position.
inline std::vector<float> sampled(const PbMesh2D& mesh,
                                  const std::function<float(float, float)>& f) {
    std::vector<float> values;
    for (int n = 0; n < mesh.getNumNodes(); ++n) {
        const SbVec3f p = mesh.getNodeCoord(n);
        values.push_back(f(p[0], p[1]));
    }
    return values;
}

// Independent values in [0, 10): plenty of saddles.
inline std::vector<float> randomValues(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(0.0f, 10.0f);
    std::vector<float> values;
    for (int n = 0; n < count; ++n)
        values.push_back(value(random));
    return values;
}

// Hills and valleys: closed lines inside, open ones at the border.
inline float waves(float x, float y) {
    return 5.0f + 3.0f * std::sin(7.0f * x) * std::cos(5.0f * y) + 2.0f * x;
}

} // namespace contourtest
