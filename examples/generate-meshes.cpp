// generate-meshes: writes the mesh example scenes, one mesh of each family
// with value sets, the scenes of meshes drawn as coloured surfaces (one
// with the value legend of its colours) and those of their contour lines,
// and level surfaces and sections of volume meshes, through the library's
// own scene-file writer.  The line mesh, which no representation of the
// library draws yet, goes to data/: a file of the mesh format, not a scene
// for scripts/demo, which fails on a blank picture.
//
//   generate-meshes OUTPUT_DIRECTORY

#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/3Ddata/PoMeshContouring.h>
#include <Quillon/3Ddata/PoMeshCrossContour.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>
#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/3Ddata/PoMeshLevelSurf.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoLinearValueLegend.h>
#include <Quillon/nodes/PoCartesianGrid2D.h>
#include <Quillon/nodes/PoCartesianGrid3D.h>
#include <Quillon/nodes/PoIndexedMesh2D.h>
#include <Quillon/nodes/PoIrregularMesh1D.h>
#include <Quillon/nodes/PoIsovaluesList.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoMiscTextAttr.h>
#include <Quillon/nodes/PoNonLinearDataMapping2.h>
#include <Quillon/nodes/PoParalCartesianGrid3D.h>
#include <Quillon/nodes/PoPolarGrid2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid3D.h>
#include <Quillon/nodes/PoTetrahedronMesh3D.h>
#include <Quillon/nodes/PoTriangleMesh2D.h>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTransform.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
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

// ------------------------------------------------- coloured surfaces

// A piecewise-linear colour scale through the given values and colours.
PoNonLinearDataMapping2* colourScale(const std::vector<float>& values,
                                     const std::vector<SbColor>& colors) {
    auto* mapping = new PoNonLinearDataMapping2;
    mapping->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
    mapping->value.setValues(0, static_cast<int>(values.size()), values.data());
    mapping->color.setValues(0, static_cast<int>(colors.size()), colors.data());
    mapping->transparency.setNum(0);
    return mapping;
}

PoMeshFilled* filled(PoMesh::ColoringType coloring) {
    auto* kit = new PoMeshFilled;
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
    return kit;
}

// The mesh filled in the colours of its value set 0, from blue at low to
// red at high.
SoNode* filledInColours(SoNode* mesh, float low, float high) {
    auto* mapping = new PoLinearDataMapping;
    mapping->value1 = low;
    mapping->color1.setValue(0.15f, 0.3f, 0.85f);
    mapping->value2 = high;
    mapping->color2.setValue(0.9f, 0.25f, 0.15f);
    auto* scene = new SoSeparator;
    scene->addChild(mesh);
    scene->addChild(mapping);
    scene->addChild(filled(PoMesh::COLOR_MAPPING));
    return scene;
}

float hill(float x, float y, float cx, float cy, float height, float width) {
    return height * std::exp(-((x - cx) * (x - cx) + (y - cy) * (y - cy)) / (width * width));
}

// The colours of heights, from meadows to snow.
SoNode* elevationScale() {
    return colourScale({0.0f, 0.25f, 0.7f, 1.1f, 1.45f},
                       {SbColor(0.15f, 0.45f, 0.25f), SbColor(0.45f, 0.65f, 0.25f),
                        SbColor(0.8f, 0.7f, 0.4f), SbColor(0.55f, 0.4f, 0.25f),
                        SbColor(0.95f, 0.95f, 0.95f)});
}

// Hills over a regular grid, raised by their heights and coloured by them
// (in the scale given), seen lit from an oblique viewpoint.
SoNode* elevationMap(SoNode* scale) {
    const int numX = 81, numY = 61;
    auto* grid = new PoRegularCartesianGrid2D;
    grid->setGeometry(numX, numY, 0.0f, 0.0f, 8.0f, 6.0f);
    std::vector<float> height;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            const float x = 0.1f * i, y = 0.1f * j;
            height.push_back(hill(x, y, 2.5f, 2.0f, 1.4f, 1.3f) +
                             hill(x, y, 5.5f, 4.0f, 1.0f, 1.6f) +
                             hill(x, y, 6.5f, 1.2f, 0.6f, 0.8f) +
                             0.08f * std::sin(3.0f * x) * std::cos(2.0f * y));
        }
    grid->mesh.addValuesSet(0, height.data(), "height");

    auto* scene = new SoSeparator;
    auto* camera = new SoPerspectiveCamera;
    camera->position.setValue(4.0f, -4.5f, 7.0f);
    camera->pointAt(SbVec3f(4.0f, 2.6f, 0.3f));
    camera->nearDistance = 1.0f;
    camera->farDistance = 30.0f;
    scene->addChild(camera);
    auto* sun = new SoDirectionalLight;
    sun->direction.setValue(-0.4f, 0.5f, -0.75f);
    scene->addChild(sun);
    scene->addChild(grid);
    scene->addChild(scale);
    PoMeshFilled* kit = filled(PoMesh::COLOR_MAPPING);
    kit->zValuesIndex = 0;
    kit->creaseAngle = 1.0f;
    scene->addChild(kit);
    return scene;
}

// The elevation map with a value legend of its colour scale at the right
// of the picture, drawn over the map by a camera of its own.
SoNode* elevationMapWithLegend() {
    SoNode* scale = elevationScale();
    scale->setName("heightColours");
    auto* scene = new SoSeparator;
    scene->addChild(elevationMap(scale));
    auto* overlay = new SoAnnotation;
    auto* camera = new SoOrthographicCamera;
    camera->height = 10.0f;
    overlay->addChild(camera);
    auto* text = new PoMiscTextAttr;
    text->fontName = "DejaVu Sans";
    overlay->addChild(text);
    overlay->addChild(scale);
    auto* legend = new PoLinearValueLegend(SbVec2f(5.0f, -4.7f), SbVec2f(6.55f, 4.7f));
    legend->titleVisibility = PoLegend::VISIBILITY_ON;
    legend->titlePosition = PoLegend::POS_TOP;
    legend->titleString = "Height";
    legend->valueAddStringVisibility = TRUE;
    legend->valueAddString = " km";
    legend->set("backgroundApp.material", "diffuseColor 0.12 0.12 0.14");
    overlay->addChild(legend);
    scene->addChild(overlay);
    return scene;
}

// A field around a ring sector, in colour bands along uneven isovalues with
// a colour scale that changes faster near zero.
SoNode* polarBands() {
    const int numR = 30, numT = 120;
    std::vector<float> r, t, field;
    for (int i = 0; i < numR; ++i)
        r.push_back(1.0f + 2.0f * i / (numR - 1));
    for (int j = 0; j < numT; ++j)
        t.push_back(1.5f * kPi * j / (numT - 1));
    for (float ri : r)
        for (float tj : t)
            field.push_back((1.0f - 1.0f / (ri * ri)) * std::sin(3.0f * tj) * (3.2f - ri) +
                            0.15f * ri);
    auto* grid = new PoPolarGrid2D;
    grid->setGeometry(numR, numT, r.data(), t.data());
    grid->mesh.addValuesSet(0, field.data(), "field");

    auto* scene = new SoSeparator;
    scene->addChild(grid);
    const float isovalues[] = {-1.2f, -0.6f, -0.25f, -0.05f, 0.05f, 0.25f, 0.6f, 1.2f};
    auto* list = new PoIsovaluesList;
    list->isovaluesList.setValues(0, 8, isovalues);
    scene->addChild(list);
    scene->addChild(colourScale({-1.8f, -0.3f, 0.0f, 0.3f, 1.8f},
                                {SbColor(0.1f, 0.15f, 0.55f), SbColor(0.35f, 0.6f, 0.95f),
                                 SbColor(0.97f, 0.97f, 0.9f), SbColor(0.95f, 0.6f, 0.3f),
                                 SbColor(0.55f, 0.1f, 0.1f)}));
    scene->addChild(filled(PoMesh::COLOR_CONTOURING));
    return scene;
}

// Scattered measurements triangulated (a Delaunay triangulation of the
// points in a rectangle) and drawn in bands of a texture.
SoNode* scatteredTextureBands() {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> across(0.05f, 3.95f), up(0.05f, 2.95f);
    std::vector<float> x{0.0f, 4.0f, 4.0f, 0.0f}, y{0.0f, 0.0f, 3.0f, 3.0f};
    for (int k = 0; k < 400; ++k) {
        x.push_back(across(random));
        y.push_back(up(random));
    }
    // Two triangles give the outline; the points inside join the
    // triangulation that follows.
    const int outline[] = {0, 1, 2, 0, 2, 3};
    PbTriangleMesh2D points;
    points.setGeometry(static_cast<int>(x.size()), x.data(), y.data(), 2, outline);
    std::unique_ptr<PbTriangleMesh2D> triangles(points.getFaultMesh(0, nullptr, nullptr));
    std::vector<float> measure;
    for (int n = 0; n < triangles->getNumNodes(); ++n) {
        const SbVec3f p = triangles->getNodeCoord(n);
        measure.push_back(std::sin(1.6f * p[0]) * std::cos(1.3f * p[1]) +
                          0.4f * std::sin(0.8f * p[0] + 1.7f * p[1]));
    }
    triangles->addValuesSet(0, measure.data(), "measure");
    auto* mesh = new PoTriangleMesh2D;
    mesh->mesh.setValue(*triangles);

    auto* scene = new SoSeparator;
    scene->addChild(mesh);
    auto* list = new PoIsovaluesList;
    list->setRegularIsoList(-1.2f, 1.2f, 9);
    scene->addChild(list);
    scene->addChild(colourScale({-1.4f, -0.5f, 0.0f, 0.5f, 1.4f},
                                {SbColor(0.2f, 0.1f, 0.5f), SbColor(0.1f, 0.5f, 0.8f),
                                 SbColor(0.3f, 0.75f, 0.4f), SbColor(0.95f, 0.8f, 0.2f),
                                 SbColor(0.85f, 0.2f, 0.1f)}));
    scene->addChild(filled(PoMesh::COLOR_TEXTURE_CONTOURING));
    return scene;
}

// A bent channel on a curvilinear grid in one colour per cell; the speeds
// above the maximum threshold are cut away (fully transparent parts are
// deleted) and those below the minimum show its colour.
SoNode* curvilinearAverage() {
    const int numX = 48, numY = 20;
    std::vector<float> x, y, speed;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            const float u = static_cast<float>(i) / (numX - 1),
                        v = static_cast<float>(j) / (numY - 1);
            const float angle = kPi * u, radius = 2.0f + v;
            x.push_back(radius * std::cos(angle));
            y.push_back(1.5f * radius * std::sin(angle));
            speed.push_back(4.0f * v * (1.0f - v) * (1.0f + 0.6f * std::sin(3.0f * kPi * u)) /
                            radius * 2.0f);
        }
    auto* grid = new PoCartesianGrid2D;
    grid->setGeometry(numX, numY, x.data(), y.data());
    grid->mesh.addValuesSet(0, speed.data(), "speed");

    auto* mapping = new PoLinearDataMapping;
    mapping->value1 = 0.0f;
    mapping->color1.setValue(0.2f, 0.3f, 0.8f);
    mapping->value2 = 1.2f;
    mapping->color2.setValue(0.95f, 0.85f, 0.3f);
    mapping->transparencyEnabled = TRUE;
    mapping->minThresholdEnabled = TRUE;
    mapping->minThreshold = 0.12f;
    mapping->minThresholdColor.setValue(0.15f, 0.15f, 0.2f);
    mapping->maxThresholdEnabled = TRUE;
    mapping->maxThreshold = 1.0f;
    mapping->maxThresholdTransparency = 1.0f;

    auto* scene = new SoSeparator;
    scene->addChild(grid);
    scene->addChild(mapping);
    scene->addChild(filled(PoMesh::COLOR_AVERAGE));
    return scene;
}

// ---------------------------------------------------- contour line scenes
//
// Scenes of the contour lines kit over meshes of three kinds, each framed
// by an orthographic camera.

SoSeparator* contourScene(const SbVec3f& centre, float height) {
    auto* scene = new SoSeparator;
    auto* camera = new SoOrthographicCamera;
    camera->position = centre + SbVec3f(0.0f, 0.0f, 10.0f);
    camera->nearDistance = 5.0f;
    camera->farDistance = 15.0f;
    camera->height = height;
    scene->addChild(camera);
    auto* font = new PoMiscTextAttr;
    font->fontName = "DejaVu Sans";
    scene->addChild(font);
    return scene;
}

SoNode* isovalues(float first, float step, int count) {
    auto* list = new PoIsovaluesList;
    for (int k = 0; k < count; ++k)
        list->isovaluesList.set1Value(k, first + step * k);
    return list;
}

// The lines of value set 0, the major ones labelled.
PoMeshContouring* labelledLines(int firstMajor, int majorPeriod, float gap, float fontSize) {
    auto* lines = new PoMeshContouring;
    lines->valuesIndex = 0;
    lines->firstMajor = firstMajor;
    lines->majorPeriod = majorPeriod;
    lines->annotIsVisible = TRUE;
    lines->annotGap = gap;
    lines->annotFontSize = fontSize;
    return lines;
}

void setLineLook(PoMeshContouring* kit, const char* app, const char* color, float width) {
    kit->set((std::string(app) + ".material").c_str(),
             (std::string("diffuseColor ") + color).c_str());
    kit->set((std::string(app) + ".drawStyle").c_str(),
             (std::string("lineWidth ") + std::to_string(width)).c_str());
}

// Hills and a hollow over a regular grid: filled colour bands, and above
// them major lines every 20 m, thicker than the minor ones, labelled in
// gaps of their own.
SoNode* labelledContourMap() {
    const int numX = 121, numY = 91;
    auto* grid = new PoRegularCartesianGrid2D;
    grid->setGeometry(numX, numY, 0.0f, 0.0f, 12.0f, 9.0f);
    std::vector<float> height;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j) {
            const float x = 0.1f * i, y = 0.1f * j;
            height.push_back(hill(x, y, 3.5f, 5.5f, 60.0f, 2.236f) +
                             hill(x, y, 8.5f, 3.0f, 45.0f, 1.732f) -
                             hill(x, y, 8.0f, 7.5f, 25.0f, 1.414f) + 4.0f * x);
        }
    grid->mesh.addValuesSet(0, height.data(), "height");

    SoSeparator* scene = contourScene(SbVec3f(6.0f, 4.5f, 0.0f), 9.6f);
    scene->addChild(grid);
    scene->addChild(isovalues(-10.0f, 5.0f, 23));
    scene->addChild(colourScale({-15.0f, 13.75f, 42.5f, 71.25f, 100.0f},
                                {SbColor(0.16f, 0.38f, 0.62f), SbColor(0.45f, 0.70f, 0.45f),
                                 SbColor(0.93f, 0.87f, 0.55f), SbColor(0.72f, 0.52f, 0.34f),
                                 SbColor(0.96f, 0.95f, 0.93f)}));
    auto* filledSide = new SoSeparator;
    auto* offset = new SoPolygonOffset;
    filledSide->addChild(offset);
    PoMeshFilled* bands = filled(PoMesh::COLOR_CONTOURING);
    bands->set("appearance.lightModel", "model BASE_COLOR");
    filledSide->addChild(bands);
    scene->addChild(filledSide);
    PoMeshContouring* lines = labelledLines(2, 4, 0.6f, 0.03f);
    lines->annotIsContourClip = TRUE;
    setLineLook(lines, "majorContourLineApp", "0.15 0.1 0.05", 2.5f);
    setLineLook(lines, "minorContourLineApp", "0.3 0.25 0.2", 1.0f);
    lines->set("annotTextApp.material", "diffuseColor 0.1 0.07 0.03");
    scene->addChild(lines);
    return scene;
}

// A polar grid of waves whose lines take the colours of the data mapping,
// labelled on white boxes with a border, horizontally.
SoNode* polarLabels() {
    const int numR = 40, numT = 121;
    std::vector<float> r, t, values;
    for (int i = 0; i < numR; ++i)
        r.push_back(0.25f + 0.1f * i);
    for (int j = 0; j < numT; ++j)
        t.push_back(2.0f * kPi * j / (numT - 1));
    for (float ri : r)
        for (float tj : t)
            values.push_back(std::sin(1.6f * ri) + 0.35f * ri * std::cos(3.0f * tj));
    auto* grid = new PoPolarGrid2D;
    grid->setGeometry(numR, numT, r.data(), t.data());
    grid->mesh.addValuesSet(0, values.data(), "wave");

    SoSeparator* scene = contourScene(SbVec3f(0.0f, 0.0f, 0.0f), 9.2f);
    scene->addChild(grid);
    scene->addChild(isovalues(-2.0f, 0.25f, 17));
    scene->addChild(colourScale({-2.0f, -0.6667f, 0.6667f, 2.0f},
                                {SbColor(0.3f, 0.5f, 1.0f), SbColor(0.6f, 0.9f, 0.9f),
                                 SbColor(1.0f, 0.9f, 0.4f), SbColor(1.0f, 0.45f, 0.3f)}));
    PoMeshContouring* lines = labelledLines(0, 2, 0.35f, 0.028f);
    lines->coloringType = PoMesh::COLOR_MAPPING;
    lines->annotPath = PoMeshContouring::HORIZONTAL_PATH;
    lines->annotIsBackground = TRUE;
    setLineLook(lines, "majorContourLineApp", "1 1 1", 2.0f);
    setLineLook(lines, "minorContourLineApp", "1 1 1", 1.0f);
    lines->set("annotBackgroundApp.material", "diffuseColor 0.97 0.97 0.94");
    lines->set("annotBackgroundBorderApp.material", "diffuseColor 0.25 0.25 0.3");
    lines->set("annotTextApp.material", "diffuseColor 0.1 0.1 0.15");
    scene->addChild(lines);
    return scene;
}

// Scattered stations joined into triangles, drawn as a faint wireframe:
// lines that no label may cross, and labels only inside a clipping
// polygon, drawn as a dashed outline.
SoNode* triangleMeshClipping() {
    const int side = 26;
    std::vector<float> x, y, values;
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j) {
            // A fixed jitter keeps the stations irregular and the scene
            // the same from one run to the next.
            const float jx = 0.3f * std::sin(12.9898f * i + 78.233f * j);
            const float jy = 0.3f * std::cos(39.3468f * i + 11.135f * j);
            const bool border = i == 0 || j == 0 || i == side - 1 || j == side - 1;
            x.push_back(0.4f * i + (border ? 0.0f : 0.4f * jx));
            y.push_back(0.4f * j + (border ? 0.0f : 0.4f * jy));
            values.push_back(10.0f * std::sin(0.6f * x.back()) * std::cos(0.5f * y.back()) +
                             2.0f * y.back());
        }
    std::vector<int> triangles;
    for (int i = 0; i + 1 < side; ++i)
        for (int j = 0; j + 1 < side; ++j) {
            const int n = i * side + j;
            triangles.insert(triangles.end(), {n, n + side, n + side + 1, n, n + side + 1, n + 1});
        }
    auto* mesh = new PoTriangleMesh2D;
    mesh->setGeometry(side * side, x.data(), y.data(), static_cast<int>(triangles.size() / 3),
                      triangles.data());
    mesh->mesh.addValuesSet(0, values.data(), "field");

    SoSeparator* scene = contourScene(SbVec3f(5.0f, 5.0f, 0.0f), 10.6f);
    scene->addChild(mesh);
    scene->addChild(isovalues(-10.0f, 2.0f, 21));
    auto* wireframe = new SoSeparator;
    auto* edges = new SoDrawStyle;
    edges->style = SoDrawStyle::LINES;
    wireframe->addChild(edges);
    auto* dim = new SoBaseColor;
    dim->rgb.setValue(0.16f, 0.16f, 0.19f);
    wireframe->addChild(dim);
    auto* unlit = new SoLightModel;
    unlit->model = SoLightModel::BASE_COLOR;
    wireframe->addChild(unlit);
    wireframe->addChild(new PoMeshFilled);
    scene->addChild(wireframe);
    const std::vector<SbVec2f> polygon{SbVec2f(1.0f, 1.5f), SbVec2f(8.5f, 0.8f),
                                       SbVec2f(9.2f, 6.0f), SbVec2f(5.0f, 4.2f),
                                       SbVec2f(2.0f, 9.0f)};
    auto* outline = new SoSeparator;
    auto* style = new SoDrawStyle;
    style->linePattern = 0xF0F0;
    style->lineWidth = 1.5f;
    outline->addChild(style);
    auto* color = new SoBaseColor;
    color->rgb.setValue(0.9f, 0.6f, 0.2f);
    outline->addChild(color);
    auto* corners = new SoCoordinate3;
    for (size_t k = 0; k <= polygon.size(); ++k) {
        const SbVec2f& p = polygon[k % polygon.size()];
        corners->point.set1Value(static_cast<int>(k), p[0], p[1], 0.0f);
    }
    outline->addChild(corners);
    outline->addChild(new SoLineSet);
    scene->addChild(outline);
    PoMeshContouring* lines = labelledLines(0, 2, 0.3f, 0.03f);
    lines->annotCrossStatus = PoMeshContouring::DONT_CROSS_CONTOUR;
    lines->annotClippingPolygon.setValues(0, static_cast<int>(polygon.size()), polygon.data());
    setLineLook(lines, "majorContourLineApp", "0.55 0.85 1", 2.0f);
    setLineLook(lines, "minorContourLineApp", "0.4 0.62 0.75", 1.0f);
    lines->set("annotTextApp.material", "diffuseColor 1 1 1");
    scene->addChild(lines);
    return scene;
}

// ------------------------------------------------------------------------
// Level surfaces and cross sections of volume meshes.

// A volume scene: the mesh, seen from above and aside.
SoSeparator* volumeScene(SoNode* mesh) {
    auto* scene = new SoSeparator;
    auto* view = new SoTransform;
    view->rotation = SbRotation(SbVec3f(0, 0, 1), 0.5f) * SbRotation(SbVec3f(1, 0, 0), -1.0f);
    scene->addChild(view);
    scene->addChild(mesh);
    return scene;
}

// A camera first in the scene, framing it closely: viewAll, which leaves
// room for the scene's bounding sphere, then nearer.
void frame(SoSeparator* scene) {
    auto* camera = new SoPerspectiveCamera;
    scene->insertChild(camera, 0);
    camera->viewAll(scene, SbViewportRegion(800, 600));
    SbVec3f direction;
    camera->orientation.getValue().multVec(SbVec3f(0.0f, 0.0f, -1.0f), direction);
    const float distance = camera->focalDistance.getValue();
    const SbVec3f centre = camera->position.getValue() + direction * distance;
    const float nearer = 0.4f * distance;
    camera->focalDistance = distance - nearer;
    camera->position = centre - direction * (distance - nearer);
    camera->nearDistance = std::max(0.01f * distance, camera->nearDistance.getValue() - nearer);
    camera->farDistance = camera->farDistance.getValue() - nearer;
}

// Blue, cyan, green, yellow and red evenly over [min, max], with the given
// transparency.
SoNode* rainbow(float min, float max, float transparency = 0.0f) {
    auto* mapping = new PoNonLinearDataMapping2;
    mapping->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
    const SbColor colors[] = {SbColor(0.1f, 0.2f, 1.0f), SbColor(0.0f, 0.8f, 0.9f),
                              SbColor(0.2f, 0.9f, 0.2f), SbColor(1.0f, 0.9f, 0.1f),
                              SbColor(1.0f, 0.2f, 0.1f)};
    for (int c = 0; c < 5; ++c) {
        mapping->value.set1Value(c, min + (max - min) * c / 4);
        mapping->color.set1Value(c, colors[c]);
        mapping->transparency.set1Value(c, transparency);
    }
    mapping->transparencyEnabled = transparency > 0.0f;
    return mapping;
}

// The level surface of value set 0, smooth, coloured by value set 1.
SoNode* levelSurfaceColouredBySet1(float level) {
    auto* surface = new PoMeshLevelSurf;
    surface->valuesIndexForLevel = 0;
    surface->levelValue = level;
    surface->valuesIndex = 1;
    surface->coloringType = PoMesh::COLOR_MAPPING;
    surface->creaseAngle = 1.0f;
    return surface;
}

// Three blobs on a 32 x 32 x 32 regular grid: the level 1 of their summed
// densities, coloured by a temperature rising along z and x.
SoNode* levelSurfaceGrid() {
    const int side = 28;
    const float centres[3][3] = {{-0.35f, -0.2f, -0.1f}, {0.35f, -0.1f, 0.15f}, {0.0f, 0.4f, 0.0f}};
    std::vector<float> density, temperature;
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j)
            for (int k = 0; k < side; ++k) {
                const float p[3] = {-1.0f + 2.0f * i / (side - 1), -1.0f + 2.0f * j / (side - 1),
                                    -1.0f + 2.0f * k / (side - 1)};
                float sum = 0.0f;
                for (const auto& c : centres) {
                    float d2 = 0.0f;
                    for (int axis = 0; axis < 3; ++axis)
                        d2 += (p[axis] - c[axis]) * (p[axis] - c[axis]);
                    sum += std::exp(-d2 / 0.12f);
                }
                density.push_back(sum);
                temperature.push_back(20.0f + 10.0f * p[2] + 4.0f * p[0]);
            }
    auto* grid = new PoRegularCartesianGrid3D;
    grid->setGeometry(side, side, side, -1.0f, -1.0f, -1.0f, 1.0f, 1.0f, 1.0f);
    grid->mesh.addValuesSet(0, density.data(), "density");
    grid->mesh.addValuesSet(1, temperature.data(), "temperature");
    SoSeparator* scene = volumeScene(grid);
    scene->addChild(rainbow(13.0f, 27.0f));
    scene->addChild(levelSurfaceColouredBySet1(0.6f));
    frame(scene);
    return scene;
}

// A jittered block of tetrahedra holding a wave, cut by an oblique plane in
// colour bands, with the section's outline drawn over it.
SoNode* crossSectionTetrahedra() {
    const int n = 10;
    std::vector<float> x, y, z, wave;
    for (int i = 0; i <= n; ++i)
        for (int j = 0; j <= n; ++j)
            for (int k = 0; k <= n; ++k) {
                const bool inside = i > 0 && j > 0 && k > 0 && i < n && j < n && k < n;
                const float jitter = inside ? 0.25f * std::sin(1.7f * i + 2.3f * j + 3.1f * k) : 0;
                x.push_back((i + jitter) / n);
                y.push_back((j - jitter) / n);
                z.push_back((k + 0.5f * jitter) / n);
                wave.push_back(std::sin(2 * kPi * x.back()) * std::cos(kPi * y.back()) + z.back());
            }
    // Six tetrahedra around the diagonal of each cube; their corners are
    // given as bits: 1 along x, 2 along y, 4 along z.
    const int tets[6][4] = {{0, 1, 3, 7}, {0, 3, 2, 7}, {0, 2, 6, 7},
                            {0, 6, 4, 7}, {0, 4, 5, 7}, {0, 5, 1, 7}};
    std::vector<int> cells;
    for (int cube = 0; cube < n * n * n; ++cube)
        for (const auto& tet : tets)
            for (int corner : tet) {
                const int i = cube / (n * n) + (corner & 1), j = cube / n % n + (corner >> 1 & 1),
                          k = cube % n + (corner >> 2);
                cells.push_back((i * (n + 1) + j) * (n + 1) + k);
            }
    auto* mesh = new PoTetrahedronMesh3D;
    mesh->setGeometry(static_cast<int>(x.size()), x.data(), y.data(), z.data(),
                      static_cast<int>(cells.size() / 4), cells.data());
    mesh->mesh.addValuesSet(0, wave.data(), "wave");
    SoSeparator* scene = volumeScene(mesh);
    scene->addChild(rainbow(-1.0f, 2.0f));
    scene->addChild(isovalues(-0.5f, 0.5f, 5));
    SbVec3f normal(0.4f, -0.3f, 1.0f);
    normal.normalize();
    const SbPlane plane(normal, SbVec3f(0.5f, 0.5f, 0.5f));
    // The section is pushed back a little so that its outline stays in
    // front of it.
    auto* offset = new SoPolygonOffset;
    scene->addChild(offset);
    auto* section = new PoMeshCrossSection;
    section->plane = plane;
    section->valuesIndex = 0;
    section->coloringType = PoMesh::COLOR_CONTOURING;
    scene->addChild(section);
    auto* outlineColor = new SoBaseColor;
    outlineColor->rgb.setValue(1.0f, 1.0f, 1.0f);
    scene->addChild(outlineColor);
    auto* width = new SoDrawStyle;
    width->lineWidth = 2.0f;
    scene->addChild(width);
    auto* outline = new PoMeshCrossContour;
    outline->plane = plane;
    scene->addChild(outline);
    frame(scene);
    return scene;
}

// Three quarters of a thick cylindrical shell as a curvilinear grid.  Set
// 0 is the squared distance (in half shell thicknesses) to a wavy ring
// inside the shell, set 1 the angle around the axis.  The level surface of
// set 0 is a tube along the ring, coloured by the angle; a semi-transparent
// section across the axis shows set 0 around it.
SoNode* levelSurfaceCylinder() {
    const int numR = 8, numTheta = 44, numZ = 18;
    std::vector<float> x, y, z, distance, angle;
    for (int i = 0; i < numR; ++i)
        for (int j = 0; j < numTheta; ++j)
            for (int k = 0; k < numZ; ++k) {
                const float r = 1.0f + static_cast<float>(i) / (numR - 1);
                const float theta = 1.5f * kPi * j / (numTheta - 1);
                const float height = 2.0f * k / (numZ - 1);
                x.push_back(r * std::cos(theta));
                y.push_back(r * std::sin(theta));
                z.push_back(height);
                const float dr = (r - 1.5f) / 0.5f;
                const float dz = (height - 1.0f - 0.5f * std::sin(3.0f * theta)) / 0.5f;
                distance.push_back(dr * dr + dz * dz);
                angle.push_back(theta);
            }
    auto* grid = new PoCartesianGrid3D;
    grid->setGeometry(numR, numTheta, numZ, x.data(), y.data(), z.data());
    grid->mesh.addValuesSet(0, distance.data(), "distance to the ring");
    grid->mesh.addValuesSet(1, angle.data(), "angle");
    SoSeparator* scene = volumeScene(grid);
    scene->addChild(rainbow(0.0f, 1.5f * kPi));
    scene->addChild(levelSurfaceColouredBySet1(0.4f));
    scene->addChild(rainbow(0.0f, 4.0f, 0.5f));
    auto* section = new PoMeshCrossSection;
    section->plane = SbPlane(SbVec3f(0.0f, 0.0f, 1.0f), 1.0f);
    section->valuesIndex = 0;
    section->coloringType = PoMesh::COLOR_MAPPING;
    scene->addChild(section);
    frame(scene);
    return scene;
}

// The volume mesh cut by a plane through the point given, the section in
// the colours of value set 0 from low to high.
SoNode* sectionInColours(SoNode* mesh, const SbVec3f& point, float low, float high) {
    SoSeparator* scene = volumeScene(mesh);
    scene->addChild(rainbow(low, high));
    auto* section = new PoMeshCrossSection;
    SbVec3f normal(-0.2f, -0.5f, 1.0f);
    normal.normalize();
    section->plane = SbPlane(normal, point);
    section->valuesIndex = 0;
    section->coloringType = PoMesh::COLOR_MAPPING;
    scene->addChild(section);
    frame(scene);
    return scene;
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
                   "A curvilinear surface grid with heights, mean cell heights and slopes, "
                   "filled in the colours of its heights",
                   filledInColours(surfaceGrid(), -0.5f, 0.5f)) &&
        writeScene(directory + "mesh-surface-unstructured.iv",
                   "An unstructured surface mesh of triangles and quadrangles with distances, "
                   "cell numbers and labels, filled in the colours of its distances",
                   filledInColours(surfaceMesh(), 0.0f, 2.0f)) &&
        writeScene(directory + "mesh-volume-grid.iv",
                   "A rectilinear volume grid with temperatures, cut by a plane in their colours",
                   sectionInColours(volumeGrid(), SbVec3f(2.0f, 1.5f, 1.0f), 14.0f, 44.0f)) &&
        writeScene(directory + "mesh-volume-unstructured.iv",
                   "A tetrahedron mesh with pressures and volume fractions, cut by a plane in "
                   "the colours of its pressures",
                   sectionInColours(volumeMesh(), SbVec3f(0.5f, 0.5f, 0.5f), 100.0f, 170.0f)) &&
        writeScene(directory + "data/mesh-line.iv", "A line mesh with two curves", lineMesh()) &&
        writeScene(directory + "filled-elevation-map.iv",
                   "Hills of a regular grid raised by their heights and coloured by them",
                   elevationMap(elevationScale())) &&
        writeScene(directory + "filled-map-value-legend.iv",
                   "The elevation map with the value legend of its colour scale",
                   elevationMapWithLegend()) &&
        writeScene(directory + "filled-polar-bands.iv",
                   "A polar grid in colour bands along uneven isovalues", polarBands()) &&
        writeScene(directory + "filled-scattered-texture-bands.iv",
                   "Scattered points triangulated and drawn in texture colour bands",
                   scatteredTextureBands()) &&
        writeScene(directory + "filled-curvilinear-average.iv",
                   "A curvilinear grid in one colour per cell, cut away above a threshold",
                   curvilinearAverage()) &&
        writeScene(directory + "contouring-labelled-map.iv",
                   "Contour lines with labels in gaps of their own over filled colour bands",
                   labelledContourMap()) &&
        writeScene(directory + "contouring-polar-labels.iv",
                   "Contour lines of a polar grid with labels on background boxes",
                   polarLabels()) &&
        writeScene(directory + "contouring-triangle-clipping.iv",
                   "Contour lines of a triangle mesh that no label crosses, labels inside a "
                   "clipping polygon",
                   triangleMeshClipping()) &&
        writeScene(directory + "level-surface-grid.iv",
                   "An isosurface of a regular grid coloured by a second value set",
                   levelSurfaceGrid()) &&
        writeScene(directory + "cross-section-tetrahedra.iv",
                   "A tetrahedron mesh cut by an oblique plane in colour bands, with the "
                   "outline of the section",
                   crossSectionTetrahedra()) &&
        writeScene(directory + "level-surface-cylinder.iv",
                   "A cylindrical shell with a level surface and a semi-transparent cross "
                   "section",
                   levelSurfaceCylinder());
    PoQuillon::finish();
    return written ? 0 : 1;
}
