#include "3Ddata/PiContouringFilled.h"

#include "3Ddata/PiBandColors.h"
#include "3Ddata/PiBandStrips.h"
#include "3Ddata/PiContourCell.h"

#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbIsovaluesList.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <algorithm>

std::vector<char> PiContouringFilled::setBandColors(SoMaterial* material) const {
    int count = 0, regular;
    float min, max, step;
    const float* isovalues = getIsovaluesList()->getIsoList(count, min, max, step, regular);
    const std::vector<PiBandColors::Color> bands =
        PiBandColors::getBandColors(*getDataMapping(), isovalues, std::max(count, 0));
    const int numBands = static_cast<int>(bands.size());
    const bool withTransparency = getDataMapping()->isTransparencyEnabled();
    material->diffuseColor.setNum(numBands);
    material->transparency.setNum(withTransparency ? numBands : 0);
    SbColor* colors = material->diffuseColor.startEditing();
    float* transparencies = withTransparency ? material->transparency.startEditing() : nullptr;
    std::vector<char> visible(numBands);
    for (int b = 0; b < numBands; ++b) {
        colors[b] = bands[b].color;
        if (transparencies)
            transparencies[b] = bands[b].transparency;
        visible[b] = bands[b].visible;
    }
    material->diffuseColor.finishEditing();
    if (transparencies)
        material->transparency.finishEditing();
    return visible;
}

// A grid's whole quadrangles go into strips as on the fast path; every
// other element is cut into faces.
void PiContouringFilled::cutElements(const float* values, const std::vector<char>& visible,
                                     const PiGridContouring::BandShapes& shapes) {
    PiVectorOut stripIndex, stripBands;
    std::vector<int32_t> faceIndex, faceBands;
    PiBandStrips<PiVectorOut> strips(stripIndex, stripBands);
    PiBandCutter cutter;
    PiContourCell cell;
    int numX = 0, numY = 0;
    if (getGridMesh())
        getGridMesh()->getDim(numX, numY);
    const std::vector<Element>& elements = getElements();
    const int* orientFlags = getOrientFlags();
    for (int e = 0; e < static_cast<int>(elements.size()); ++e) {
        const Element& element = elements[e];
        if ((element.kind != 3 && element.kind != 4) || !hasFiniteValues(element, values)) {
            strips.end();
            continue;
        }
        describeElement(e, values, cell);
        if (getGridMesh() && element.kind == 4 && element.numCutEdges == 0) {
            if (visible[cell.bands[0]])
                strips.addCell(e / (numY - 1), e % (numY - 1), element.nodes, cell.bands[0]);
            else
                strips.end();
            continue;
        }
        strips.end();
        cutter.cut(cell, getCrossingPoints(), getNumNodes() - 1, orientFlags && orientFlags[e] != 1,
                   visible.data(), faceIndex, faceBands);
    }
    strips.end();
    auto store = [](SoMFInt32& field, const std::vector<int32_t>& values) {
        field.setNum(static_cast<int>(values.size()));
        field.setValues(0, static_cast<int>(values.size()), values.data());
    };
    store(shapes.stripIndex, stripIndex.values);
    store(shapes.stripBands, stripBands.values);
    store(shapes.faceIndex, faceIndex);
    store(shapes.faceBands, faceBands);
}

void PiContouringFilled::fillSurf(const float* values, const float* z, SoGroup* group,
                                  SoMaterial* material, SoMaterialBinding* binding) {
    m_numFaces = 0;
    if (!values || !group || !material || !binding || !getMesh() || !getIsovaluesList() ||
        !getDataMapping())
        return;
    preventFromThresholdWall(values);
    computeCrossings(values, z, false);
    const std::vector<char> visible = setBandColors(material);
    binding->value = SoMaterialBinding::PER_PART_INDEXED;

    auto* coordinates = new SoCoordinate3;
    auto* strips = new SoIndexedTriangleStripSet;
    auto* faces = new SoIndexedFaceSet;
    const PiGridContouring::BandShapes shapes{strips->coordIndex, strips->materialIndex,
                                              faces->coordIndex, faces->materialIndex};
    const int numNodes = getNumNodes();
    if (const PiGridContouring* grid = getGridContouring()) {
        // The crossing points follow the nodes.
        const int numCrossings = getNumCrossingPoints();
        coordinates->point.setNum(numNodes + numCrossings);
        SbVec3f* points = coordinates->point.startEditing();
        grid->getNodePoints(points);
        std::copy(getPoints().begin() + 1, getPoints().end(), points + numNodes);
        coordinates->point.finishEditing();
        grid->cutBands(getCrossingPoints(), numNodes - 1, visible.data(), shapes);
    } else {
        coordinates->point.setValues(0, static_cast<int>(getPoints().size()), getPoints().data());
        cutElements(values, visible, shapes);
    }
    const int numStripCells =
        (strips->coordIndex.getNum() - 3 * strips->materialIndex.getNum()) / 2;
    m_numFaces = numStripCells + faces->materialIndex.getNum();
    group->addChild(binding);
    group->addChild(coordinates);
    group->addChild(strips);
    group->addChild(faces);
}
