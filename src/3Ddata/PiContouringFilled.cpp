#include "3Ddata/PiContouringFilled.h"

#include "3Ddata/PiBandColors.h"
#include "3Ddata/PiContourCell.h"
#include "3Ddata/PiGridContouring.h"

#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbIsovaluesList.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
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

void PiContouringFilled::cutElements(const float* values, const std::vector<char>& visible,
                                     SoMFInt32& coordIndex, SoMFInt32& faceBands) {
    std::vector<int32_t> indices, bands;
    PiBandCutter cutter;
    PiContourCell cell;
    const std::vector<Element>& elements = getElements();
    const int* orientFlags = getOrientFlags();
    for (int e = 0; e < static_cast<int>(elements.size()); ++e) {
        if ((elements[e].kind != 3 && elements[e].kind != 4) ||
            !hasFiniteValues(elements[e], values))
            continue;
        describeElement(e, values, cell);
        cutter.cut(cell, getCrossingPoints(), getNumNodes() - 1, orientFlags && orientFlags[e] != 1,
                   visible.data(), indices, bands);
    }
    coordIndex.setNum(static_cast<int>(indices.size()));
    coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    faceBands.setNum(static_cast<int>(bands.size()));
    faceBands.setValues(0, static_cast<int>(bands.size()), bands.data());
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
    binding->value = SoMaterialBinding::PER_FACE_INDEXED;

    auto* coordinates = new SoCoordinate3;
    auto* faces = new SoIndexedFaceSet;
    const int numNodes = getNumNodes();
    if (const PiGridContouring* grid = getGridContouring()) {
        // The crossing points follow the nodes.
        const int numCrossings = getNumCrossingPoints();
        coordinates->point.setNum(numNodes + numCrossings);
        SbVec3f* points = coordinates->point.startEditing();
        grid->getNodePoints(points);
        std::copy(getPoints().begin() + 1, getPoints().end(), points + numNodes);
        coordinates->point.finishEditing();
        grid->cutBands(getCrossingPoints(), numNodes - 1, visible.data(), faces->coordIndex,
                       faces->materialIndex);
    } else {
        coordinates->point.setValues(0, static_cast<int>(getPoints().size()), getPoints().data());
        cutElements(values, visible, faces->coordIndex, faces->materialIndex);
    }
    m_numFaces = faces->materialIndex.getNum();
    group->addChild(binding);
    group->addChild(coordinates);
    group->addChild(faces);
}
