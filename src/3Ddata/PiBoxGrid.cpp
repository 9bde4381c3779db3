#include "3Ddata/PiBoxGrid.h"

#include <cmath>

PiBoxGrid::PiBoxGrid(const SbBox2f& bounds, float cellSize, int maxCells) {
    if (bounds.isEmpty()) {
        m_cells.resize(1);
        return;
    }
    float width, height;
    bounds.getSize(width, height);
    double size = std::isfinite(cellSize) && cellSize > 0.0f ? cellSize : 1.0;
    const double area = static_cast<double>(width) * height;
    if (std::isfinite(area) && area / (size * size) > maxCells)
        size = std::sqrt(area / maxCells);
    m_originX = bounds.getMin()[0];
    m_originY = bounds.getMin()[1];
    m_inverseCellSize = static_cast<float>(1.0 / size);
    const auto count = [&](float extent) {
        const double cells = std::ceil(extent / size);
        return std::isfinite(cells)
                   ? static_cast<int>(std::min<double>(std::max(cells, 1.0), maxCells))
                   : 1;
    };
    m_numX = count(width);
    m_numY = std::max(1, std::min(count(height), maxCells / m_numX));
    m_cells.resize(static_cast<size_t>(m_numX) * m_numY);
}

int PiBoxGrid::cell(float coordinate, float origin, int count) const {
    const float position = (coordinate - origin) * m_inverseCellSize;
    if (!(position > 0.0f))
        return 0;
    return position >= static_cast<float>(count) ? count - 1 : static_cast<int>(position);
}

void PiBoxGrid::cellRange(const SbBox2f& box, int& x0, int& y0, int& x1, int& y1) const {
    x0 = cellX(box.getMin()[0]);
    y0 = cellY(box.getMin()[1]);
    x1 = cellX(box.getMax()[0]);
    y1 = cellY(box.getMax()[1]);
}

int PiBoxGrid::add(const SbBox2f& box) {
    const int item = static_cast<int>(m_boxes.size());
    m_boxes.push_back(box);
    int x0, y0, x1, y1;
    cellRange(box, x0, y0, x1, y1);
    for (int x = x0; x <= x1; ++x)
        for (int y = y0; y <= y1; ++y)
            m_cells[x * m_numY + y].push_back(item);
    return item;
}
