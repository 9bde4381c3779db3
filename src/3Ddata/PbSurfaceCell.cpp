#include <Quillon/3Ddata/PbSurfaceCell.h>

#include <cmath>

unsigned char PbSurfaceCell::getIsosurfCaseId(const std::vector<bool>&) const {
    return 0;
}

bool PbSurfaceCell::isNearPlane(const SbVec3f& point, const SbVec3f& unitNormal,
                                float length) const {
    if (!m_hasZ)
        return true;
    return std::fabs(unitNormal.dot(point - coord(0))) < length / 3.0f;
}

int PbSurfaceCell::dominantAxis(const SbVec3f& normal) {
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (std::fabs(normal[i]) > std::fabs(normal[axis]))
            axis = i;
    return axis;
}
