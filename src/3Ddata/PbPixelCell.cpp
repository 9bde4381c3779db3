#include <Quillon/3Ddata/PbPixelCell.h>

PbPixelCell::PbPixelCell(const PbMesh* owner) : PbQuadrangleCell(owner) {
    nodesChanged(true);
}

int PbPixelCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    if (m_dx == 0.0f || m_dy == 0.0f) {
        pcoord.setValue(0.0f, 0.0f, 0.0f);
        return 0;
    }
    float r = (point[0] - m_xmin) / m_dx;
    float s = (point[1] - m_ymin) / m_dy;
    pcoord.setValue(r, s, 0.0f);
    return isInRange(r, tolerance) && isInRange(s, tolerance) ? 1 : 0;
}

void PbPixelCell::print(FILE* fp) const {
    PbQuadrangleCell::print(fp);
    printFloats(fp, "PbPixelCell:: xmin xmax :", {m_xmin, m_xmin + m_dx});
    printFloats(fp, "PbPixelCell:: ymin ymax :", {m_ymin, m_ymin + m_dy});
}

void PbPixelCell::setBox(int index, const int* nodeIndex, const SbVec3f& minCorner,
                         const SbVec3f& size) {
    setFromBox(index, nodeIndex, minCorner, size);
}

void PbPixelCell::nodesChanged(bool hasZ) {
    PbQuadrangleCell::nodesChanged(hasZ);
    m_xmin = coord(0)[0];
    m_ymin = coord(0)[1];
    m_dx = coord(2)[0] - m_xmin;
    m_dy = coord(2)[1] - m_ymin;
}
