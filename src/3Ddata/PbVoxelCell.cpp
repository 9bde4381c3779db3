#include <Quillon/3Ddata/PbVoxelCell.h>

#include <cmath>

PbVoxelCell::PbVoxelCell(const PbMesh* owner) : PbHexahedronCell(owner) {}

float PbVoxelCell::getVolume() const {
    return std::fabs(m_size[0] * m_size[1] * m_size[2]);
}

int PbVoxelCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    pcoord.setValue(0.0f, 0.0f, 0.0f);
    if (m_size[0] == 0.0f || m_size[1] == 0.0f || m_size[2] == 0.0f)
        return 0;
    int inside = 1;
    for (int axis = 0; axis < 3; ++axis) {
        pcoord[axis] = (point[axis] - m_min[axis]) / m_size[axis];
        inside = inside && isInRange(pcoord[axis], tolerance);
    }
    return inside;
}

void PbVoxelCell::print(FILE* fp) const {
    PbHexahedronCell::print(fp);
    printFloats(fp, "PbVoxelCell:: xmin xmax :", {m_min[0], m_min[0] + m_size[0]});
    printFloats(fp, "PbVoxelCell:: ymin ymax :", {m_min[1], m_min[1] + m_size[1]});
    printFloats(fp, "PbVoxelCell:: zmin zmax :", {m_min[2], m_min[2] + m_size[2]});
}

void PbVoxelCell::setBox(int index, const int* nodeIndex, const SbVec3f& minCorner,
                         const SbVec3f& size) {
    setFromBox(index, nodeIndex, minCorner, size);
}

void PbVoxelCell::nodesChanged(bool hasZ) {
    PbHexahedronCell::nodesChanged(hasZ);
    m_min = coord(0);
    m_size = coord(6) - m_min;
}
