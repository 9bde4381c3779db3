#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/ContouringTestMeshes.h"
#include "3Ddata/MeshTestHelpers.h"
#include "3Ddata/PiContouring.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace {

using namespace contourtest;

using Segment = std::pair<SbVec2f, SbVec2f>;

SbVec2f xy(const SbVec3f& p) {
    return SbVec2f(p[0], p[1]);
}

// The nodes of every cell, in the cell's order.
std::vector<std::vector<int>> cellsOf(const PbMesh2D& mesh) {
    std::vector<std::vector<int>> cells;
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const PbCell* cell = mesh.getCell(c);
        std::vector<int> nodes;
        for (int k = 0; k < cell->getNumNodes(); ++k)
            nodes.push_back(cell->getNodeIndex(k));
        cells.push_back(nodes);
    }
    return cells;
}

double distanceToSegment(const SbVec2f& p, const SbVec2f& a, const SbVec2f& b) {
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    const double length2 = dx * dx + dy * dy;
    double t = length2 > 0 ? ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / length2 : 0.0;
    t = std::min(std::max(t, 0.0), 1.0);
    return std::hypot(a[0] + t * dx - p[0], a[1] + t * dy - p[1]);
}

class PiContouringTest : public meshtest::MeshTest {
protected:
    // Contours the values with the isovalues; the contouring stays for
    // inspection.
    const PiIsolines& contour(const PbMesh2D& mesh, const std::vector<float>& values,
                              const std::vector<float>& isovalues, bool fastPath = true) {
        m_list.setIrregularIsoList(int(isovalues.size()), isovalues.data());
        m_contouring = std::make_unique<PiContouring>();
        m_contouring->setIsovaluesList(&m_list);
        m_contouring->enableFastGridPath(fastPath);
        m_contouring->setDataMapping(m_mapping);
        mesh.meshContouring(m_contouring.get(), nullptr);
        if (m_withWalls)
            m_contouring->preventFromThresholdWall(values.data());
        m_contouring->computeContouringPoints(values.data(), nullptr);
        return m_contouring->getIsolines();
    }

    static std::vector<Segment> segmentsOf(const PiIsolines& lines) {
        std::vector<Segment> segments;
        for (int l = 0; l < lines.getNumLines(); ++l) {
            const SbVec3f* p = &lines.getPoints()[lines.getLineStart(l)];
            for (int k = 0; k + 1 < lines.getLineSize(l); ++k)
                segments.push_back({xy(p[k]), xy(p[k + 1])});
        }
        return segments;
    }

    // Every point of every line lies on a cell side where the line's
    // isovalue is reached by linear interpolation; consecutive points lie
    // on the sides of one cell; every crossing belongs to one line.
    void expectWellFormed(const PbMesh2D& mesh, const std::vector<float>& values,
                          const PiIsolines& lines, const std::string& name) {
        const auto cells = cellsOf(mesh);
        int count;
        const float* isovalues = m_contouring->getAdjustedIsovalues(count);
        auto onSideOf = [&](const std::vector<int>& cell, const SbVec2f& p) {
            for (size_t s = 0; s < cell.size(); ++s)
                if (distanceToSegment(p, xy(mesh.getNodeCoord(cell[s])),
                                      xy(mesh.getNodeCoord(cell[(s + 1) % cell.size()]))) < 1e-5)
                    return true;
            return false;
        };
        auto atCrossing = [&](const SbVec2f& p, double iso) {
            for (const auto& cell : cells) {
                for (size_t s = 0; s < cell.size(); ++s) {
                    const int a = cell[s], b = cell[(s + 1) % cell.size()];
                    const double va = values[a], vb = values[b];
                    if (std::min(va, vb) > iso || std::max(va, vb) <= iso)
                        continue;
                    const double t = (iso - va) / (vb - va);
                    const SbVec3f pa = mesh.getNodeCoord(a), pb = mesh.getNodeCoord(b);
                    if (std::hypot(pa[0] + t * (pb[0] - pa[0]) - p[0],
                                   pa[1] + t * (pb[1] - pa[1]) - p[1]) < 1e-5)
                        return true;
                }
            }
            return false;
        };
        int numPoints = 0;
        for (int l = 0; l < lines.getNumLines(); ++l) {
            const SbVec3f* p = &lines.getPoints()[lines.getLineStart(l)];
            const int size = lines.getLineSize(l);
            numPoints += lines.isClosed(l) ? size - 1 : size;
            if (lines.isClosed(l)) {
                EXPECT_EQ(p[0], p[size - 1]) << name;
            }
            for (int k = 0; k < size; ++k)
                ASSERT_TRUE(atCrossing(xy(p[k]), isovalues[lines.getIsoIndex(l)]))
                    << name << ": line " << l << " point " << k;
            for (int k = 0; k + 1 < size; ++k) {
                const bool shareCell = std::any_of(cells.begin(), cells.end(), [&](const auto& c) {
                    return onSideOf(c, xy(p[k])) && onSideOf(c, xy(p[k + 1]));
                });
                ASSERT_TRUE(shareCell) << name << ": line " << l << " breaks after point " << k;
            }
        }
        EXPECT_EQ(numPoints, m_contouring->getNumCrossingPoints()) << name;
    }

    PbIsovaluesList m_list;
    std::unique_ptr<PiContouring> m_contouring;
    const PbDataMapping* m_mapping = nullptr;
    bool m_withWalls = false;
};

// A unit square cell (one grid cell, or one quadrangle) with the given
// values at its corners (0, 0), (1, 0), (1, 1), (0, 1).
std::vector<NamedMesh> unitSquares() {
    auto grid = std::make_shared<PbRegularCartesianGrid2D>();
    grid->setGeometry(2, 2, 0.0f, 0.0f, 1.0f, 1.0f);
    return {{"grid cell", grid}, {"quadrangle", unitQuadrangle()}};
}

// Corner values in the squares' node numbering.
std::vector<float> cornerValues(const NamedMesh& square, const std::vector<float>& corners) {
    if (square.mesh->getNumCells() == 1 && dynamic_cast<PbGrid2D*>(square.mesh.get()))
        return {corners[0], corners[3], corners[1], corners[2]};
    return corners;
}

// Whether the segments are the expected ones, in any order and direction.
bool sameSegments(const std::vector<Segment>& found, const std::vector<Segment>& expected) {
    auto matches = [](const Segment& a, const Segment& b) {
        return (a.first.equals(b.first, 1e-5f) && a.second.equals(b.second, 1e-5f)) ||
               (a.first.equals(b.second, 1e-5f) && a.second.equals(b.first, 1e-5f));
    };
    return found.size() == expected.size() &&
           std::all_of(expected.begin(), expected.end(), [&](const Segment& e) {
               return std::any_of(found.begin(), found.end(),
                                  [&](const Segment& f) { return matches(e, f); });
           });
}

TEST_F(PiContouringTest, SaddleIsJoinedByTheShortestSegments) {
    // Crossings at 0.2 from the low corners: the short segments cut those
    // corners off.
    struct Case {
        std::vector<float> corners;
        std::vector<Segment> expected;
    } cases[] = {
        {{0, 10, 0, 10},
         {{SbVec2f(0.2f, 0.0f), SbVec2f(0.0f, 0.2f)}, {SbVec2f(1.0f, 0.8f), SbVec2f(0.8f, 1.0f)}}},
        {{10, 0, 10, 0},
         {{SbVec2f(0.8f, 0.0f), SbVec2f(1.0f, 0.2f)}, {SbVec2f(0.0f, 0.8f), SbVec2f(0.2f, 1.0f)}}},
    };
    for (const NamedMesh& square : unitSquares()) {
        for (const Case& c : cases) {
            for (bool fast : {true, false}) {
                const PiIsolines& lines =
                    contour(*square.mesh, cornerValues(square, c.corners), {2}, fast);
                ASSERT_EQ(lines.getNumLines(), 2) << square.name;
                EXPECT_FALSE(lines.isClosed(0) || lines.isClosed(1)) << square.name;
                EXPECT_TRUE(sameSegments(segmentsOf(lines), c.expected))
                    << square.name << (fast ? " fast" : " general");
            }
        }
    }
}

TEST_F(PiContouringTest, LinesEndingOnTheBoundaryAreOpenAndLinesInsideClosed) {
    auto grid = regularGrid(9);
    struct Case {
        const char* name;
        std::function<float(float, float)> field;
        float iso;
        bool closed;
    } cases[] = {
        {"ramp", [](float x, float) { return x; }, 0.37f, false},
        {"peak",
         [](float x, float y) { return 1.0f - (x - 0.5f) * (x - 0.5f) - (y - 0.5f) * (y - 0.5f); },
         0.95f, true},
    };
    for (const Case& c : cases) {
        const PiIsolines& lines = contour(*grid, sampled(*grid, c.field), {c.iso});
        ASSERT_EQ(lines.getNumLines(), 1) << c.name;
        EXPECT_EQ(lines.isClosed(0), c.closed) << c.name;
        const SbVec3f first = lines.getPoints()[0];
        const SbVec3f last = lines.getPoints()[lines.getLineSize(0) - 1];
        if (c.closed) {
            EXPECT_EQ(first, last) << c.name;
        } else {
            // A start on the boundary (y = 0 or 1 for the ramp), and the
            // other end there too.
            EXPECT_TRUE(first[1] == 0.0f || first[1] == 1.0f) << c.name;
            EXPECT_TRUE(last[1] == 0.0f || last[1] == 1.0f) << c.name;
            EXPECT_NE(first[1], last[1]) << c.name;
        }
    }
}

TEST_F(PiContouringTest, IsovalueAtNodesIsNudgedAndNoSegmentIsDegenerate) {
    // Column x = 0.5 holds exactly the isovalue 1: moved to 1.01.
    auto grid = regularGrid(3);
    const PiIsolines& lines =
        contour(*grid, sampled(*grid, [](float x, float) { return 2.0f * x; }), {1});
    ASSERT_EQ(lines.getNumLines(), 1);
    ASSERT_EQ(lines.getLineSize(0), 3);
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(lines.getPoints()[k][0], 0.505f, 1e-6f);
    for (const Segment& s : segmentsOf(lines))
        EXPECT_NE(s.first, s.second);
}

TEST_F(PiContouringTest, EqualValuesAreNeverCut) {
    auto grid = regularGrid(4);
    const PiIsolines& lines = contour(*grid, std::vector<float>(16, 5.0f), {5});
    EXPECT_EQ(lines.getNumLines(), 0);
    EXPECT_EQ(m_contouring->getNumCrossingPoints(), 0);
}

TEST_F(PiContouringTest, ThresholdWallsTrimOrRemoveTheCellsLeavingTheVisibleRange) {
    // Node 3 lies below the minimum threshold 0.
    auto quad = unitQuadrangle();
    struct Case {
        const char* name;
        float thresholdTransparency;
        std::vector<float> values;
        std::vector<SbVec2f> line;
    } cases[] = {
        {"three nodes inside: the triangle 0, 1, 2",
         1.0f,
         {1, 2, 3, -5},
         {{1.0f, 0.5f}, {0.75f, 0.75f}}},
        {"a threshold less transparent than deletion is ignored",
         0.5f,
         {1, 2, 3, -5},
         {{1.0f, 0.5f}, {0.9375f, 1.0f}}},
        {"two nodes outside: removed", 1.0f, {1, -2, 3, -5}, {}},
    };
    for (const Case& c : cases) {
        PbLinearDataMapping mapping;
        mapping.enableTransparency(1);
        mapping.enableThresholds(1, 0);
        mapping.setMinThreshold(0.0f, SbColor(0, 0, 0), c.thresholdTransparency);
        m_mapping = &mapping;
        m_withWalls = true;
        const PiIsolines& lines = contour(*quad, c.values, {2.5f});
        std::vector<SbVec2f> points;
        for (const SbVec3f& p : lines.getPoints())
            points.push_back(xy(p));
        ASSERT_EQ(points.size(), c.line.size()) << c.name;
        for (size_t k = 0; k < points.size(); ++k)
            EXPECT_TRUE(points[k].equals(c.line[k], 1e-6f)) << c.name << " point " << k;
    }
}

TEST_F(PiContouringTest, LinesLieOnEdgesAndAreContinuousOnEveryMeshKind) {
    const std::vector<float> isovalues = {1.5f, 4, 5, 6.5f, 8};
    for (const NamedMesh& m : allMeshKinds(12)) {
        for (unsigned seed : {1u, 2u}) {
            const std::vector<float> values = randomValues(m.mesh->getNumNodes(), seed);
            expectWellFormed(*m.mesh, values, contour(*m.mesh, values, isovalues), m.name);
        }
        const std::vector<float> values = sampled(*m.mesh, waves);
        expectWellFormed(*m.mesh, values, contour(*m.mesh, values, isovalues), m.name + " waves");
    }
}

TEST_F(PiContouringTest, FastGridPathGivesTheGeneralPathsLines) {
    const std::vector<float> isovalues = {2, 3, 4.5f, 5, 6, 7.25f, 9};
    for (const auto& grid : allGridKinds(17)) {
        std::vector<std::vector<float>> fields = {randomValues(grid->getNumNodes(), 3),
                                                  sampled(*grid, waves)};
        // Values on isovalues and long runs of equal values.
        std::vector<float> stepped = randomValues(grid->getNumNodes(), 4);
        for (float& v : stepped)
            v = std::floor(v);
        fields.push_back(stepped);
        for (const std::vector<float>& values : fields) {
            const PiIsolines general = contour(*grid, values, isovalues, false);
            EXPECT_FALSE(m_contouring->usedFastGridPath());
            const PiIsolines fast = contour(*grid, values, isovalues, true);
            EXPECT_TRUE(m_contouring->usedFastGridPath());
            EXPECT_GT(fast.getNumLines(), 0);
            EXPECT_TRUE(fast == general);
        }
    }
}

TEST_F(PiContouringTest, CellsTouchingValuesThatAreNotFiniteAreSkipped) {
    auto grid = regularGrid(6);
    std::vector<float> values = sampled(*grid, waves);
    values[14] = std::numeric_limits<float>::quiet_NaN();
    values[20] = std::numeric_limits<float>::infinity();
    const PiIsolines& lines = contour(*grid, values, {4, 5, 6});
    EXPECT_FALSE(m_contouring->usedFastGridPath());
    EXPECT_GT(lines.getNumLines(), 0);
    for (const SbVec3f& p : lines.getPoints())
        EXPECT_TRUE(std::isfinite(p[0]) && std::isfinite(p[1]));
}

} // namespace
