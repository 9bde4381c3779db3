// generate-meshes: writes the mesh example scenes, one mesh of each family
// with value sets, through the library's own scene-file writer.
//
//   generate-meshes OUTPUT_DIRECTORY

#include <Quillon/PoQuillon.h>
#include <Quillon/nodes/PoCartesianGrid2D.h>
#include <Quillon/nodes/PoIndexedMesh2D.h>
#include <Quillon/nodes/PoIrregularMesh1D.h>
#include <Quillon/nodes/PoParalCartesianGrid3D.h>
#include <Quillon/nodes/PoTetrahedronMesh3D.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {
const float kPi = 3.14159265f;

// A wavy surface over a 24 x 16 curvilinear grid: heights per node, the
// mean height per cell and the surface slope as vectors.
SoNode* surfaceGrid() {
    const int numX = 24, numY = 16;
    std::vector<float> x, y, z;
    std::vector<SbVec3f> slope;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            const float u = static_cast<float>(i) / (numX - 1),
                        v = static_cast<float>(j) / (numY - 1);
            x.push_back(4.0f * u + 0.3f * v);
            y.push_back(3.0f * v + 0.2f * std::sin(kPi * u));
            z.push_back(0.5f * std::sin(2 * kPi * u) * std::cos(kPi * v));
            slope.emplace_back(kPi * std::cos(2 * kPi * u) * std::cos(kPi * v),
                               -0.5f * kPi * std::sin(2 * kPi * u) * std::sin(kPi * v), 0.0f);
        }
    std::vector<float> meanHeight;
    for (int i = 0; i + 1 < numX; ++i)
        for (int j = 0; j + 1 < numY; ++j) {
            const int node = i * numY + j;
            meanHeight.push_back(0.25f *
                                 (z[node] + z[node + 1] + z[node + numY] + z[node + numY + 1]));
        }
    auto* grid = new PoCartesianGrid2D;
    grid->setGeometry(numX, numY, x.data(), y.data(), z.data());
    grid->mesh.addValuesSet(0, z.data(), "height");
    grid->mesh.addValuesSet(1, meanHeight.data(), PoMeshProperty::PER_CELL, "mean height");
    grid->mesh.addVecsSet(0, slope.data(), "slope");
    return grid;
}

// A fan of triangles and quadrangles around a centre, with a distance per
// node, a cell number per cell and a label per node.
SoNode* surfaceMesh() {
    const int numSpokes = 12;
    std::vector<float> x{0.0f}, y{0.0f}, distance{0.0f};
    std::vector<SbString> labels{"centre"};
    for (int ring = 1; ring <= 2; ++ring)
        for (int spoke = 0; spoke < numSpokes; ++spoke) {
            const float angle = 2 * kPi * spoke / numSpokes;
            x.push_back(ring * std::cos(angle));
            y.push_back(ring * std::sin(angle));
            distance.push_back(static_cast<float>(ring));
            labels.push_back(SbString("ring ") + SbString(ring) + " spoke " + SbString(spoke));
        }
    std::vector<int> types, indices;
    for (int spoke = 0; spoke < numSpokes; ++spoke) {
        const int next = (spoke + 1) % numSpokes;
        types.push_back(3);
        indices.insert(indices.end(), {0, 1 + spoke, 1 + next});
        types.push_back(4);
        indices.insert(indices.end(),
                       {1 + spoke, 1 + numSpokes + spoke, 1 + numSpokes + next, 1 + next});
    }
    std::vector<float> cellNumber;
    for (size_t cell = 0; cell < types.size(); ++cell)
        cellNumber.push_back(static_cast<float>(cell));
    auto* mesh = new PoIndexedMesh2D;
    mesh->setGeometry(static_cast<int>(x.size()), x.data(), y.data(),
                      static_cast<int>(types.size()), types.data(), indices.data());
    mesh->mesh.addValuesSet(0, distance.data(), "distance");
    mesh->mesh.addValuesSet(1, cellNumber.data(), PoMeshProperty::PER_CELL, "cell number");
    mesh->mesh.addStringsSet(0, labels.data(), "labels");
    return mesh;
}

// A rectilinear block with a temperature per node, finer towards one side.
SoNode* volumeGrid() {
    const std::vector<float> x{0.0f, 0.5f, 1.0f, 1.5f, 2.0f, 3.0f, 4.0f};
    const std::vector<float> y{0.0f, 1.0f, 2.0f, 3.0f};
    const std::vector<float> z{0.0f, 0.25f, 0.5f, 1.0f, 2.0f};
    std::vector<float> temperature;
    for (float xi : x)
        for (float yj : y)
            for (float zk : z)
                temperature.push_back(20.0f + 5.0f * xi - 2.0f * yj + zk * zk);
    auto* grid = new PoParalCartesianGrid3D;
    grid->setGeometry(static_cast<int>(x.size()), static_cast<int>(y.size()),
                      static_cast<int>(z.size()), x.data(), y.data(), z.data());
    grid->mesh.addValuesSet(0, temperature.data(), "temperature");
    return grid;
}

// A cube cut into six tetrahedra, with a pressure per node and a volume
// fraction per cell.
SoNode* volumeMesh() {
    std::vector<float> x, y, z, pressure;
    for (int node = 0; node < 8; ++node) {
        x.push_back(static_cast<float>(node & 1));
        y.push_back(static_cast<float>((node >> 1) & 1));
        z.push_back(static_cast<float>((node >> 2) & 1));
        pressure.push_back(100.0f + 10.0f * node);
    }
    const std::vector<int> indices{0, 1, 3, 7, 0, 3, 2, 7, 0, 2, 6, 7,
                                   0, 6, 4, 7, 0, 4, 5, 7, 0, 5, 1, 7};
    const std::vector<float> fraction(6, 1.0f / 6.0f);
    auto* mesh = new PoTetrahedronMesh3D;
    mesh->setGeometry(8, x.data(), y.data(), z.data(), 6, indices.data());
    mesh->mesh.addValuesSet(0, pressure.data(), "pressure");
    mesh->mesh.addValuesSet(1, fraction.data(), PoMeshProperty::PER_CELL, "volume fraction");
    return mesh;
}

// A line of unevenly spaced stations with two curves over them.
SoNode* lineMesh() {
    std::vector<float> x, rain, temperature;
    for (int station = 0; station < 20; ++station) {
        x.push_back(0.25f * station * station);
        rain.push_back(std::fabs(std::sin(0.7f * station)) * 12.0f);
        temperature.push_back(15.0f + 0.4f * station);
    }
    auto* line = new PoIrregularMesh1D;
    line->setGeometry(static_cast<int>(x.size()), x.data());
    line->mesh.addValuesSet(0, rain.data(), "rain");
    line->mesh.addValuesSet(1, temperature.data(), "temperature");
    return line;
}

bool writeScene(const std::string& path, const char* description, SoNode* mesh) {
    auto* root = new SoSeparator;
    root->ref();
    auto* info = new SoInfo;
    info->string = description;
    root->addChild(info);
    root->addChild(mesh);
    SoOutput output;
    const bool opened = output.openFile(path.c_str());
    if (opened) {
        SoWriteAction writer(&output);
        writer.apply(root);
        output.closeFile();
    } else {
        std::fprintf(stderr, "generate-meshes: cannot write %s\n", path.c_str());
    }
    root->unref();
    return opened;
}
} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: generate-meshes OUTPUT_DIRECTORY\n");
        return 2;
    }
    PoQuillon::init();
    const std::string directory = std::string(argv[1]) + "/";
    const bool written =
        writeScene(directory + "mesh-surface-grid.iv",
                   "A curvilinear surface grid with heights, mean cell heights and slopes",
                   surfaceGrid()) &&
        writeScene(directory + "mesh-surface-unstructured.iv",
                   "An unstructured surface mesh of triangles and quadrangles with distances, "
                   "cell numbers and labels",
                   surfaceMesh()) &&
        writeScene(directory + "mesh-volume-grid.iv", "A rectilinear volume grid with temperatures",
                   volumeGrid()) &&
        writeScene(directory + "mesh-volume-unstructured.iv",
                   "A tetrahedron mesh with pressures and volume fractions", volumeMesh()) &&
        writeScene(directory + "mesh-line.iv", "A line mesh with two curves", lineMesh());
    PoQuillon::finish();
    return written ? 0 : 1;
}
