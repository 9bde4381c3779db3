#pragma once
#include <Inventor/SbBox2f.h>

#include <algorithm>
#include <vector>

// Items kept by their bounding rectangles in a uniform grid of square
// cells, so that the items near a rectangle are found without looking at
// all of them.  An item goes into every cell that its rectangle meets;
// items beyond the grid's bounds go into the border cells, so any
// rectangle may be asked for.
class PiBoxGrid {
public:
    // A grid over bounds with cells of about cellSize, made coarser when it
    // would have more than maxCells cells.
    PiBoxGrid(const SbBox2f& bounds, float cellSize, int maxCells = 1 << 20);

    // Adds an item and returns its number (0, 1, ... in order of adding).
    int add(const SbBox2f& box);
    int getNumItems() const { return static_cast<int>(m_boxes.size()); }
    const SbBox2f& getBox(int item) const { return m_boxes[item]; }

    // Calls visit(item) once for every item whose rectangle meets box
    // (touching counts), until visit returns true; returns whether it did.
    template <class Visit> bool findOverlapping(const SbBox2f& box, Visit&& visit) const {
        int x0, y0, x1, y1;
        cellRange(box, x0, y0, x1, y1);
        for (int x = x0; x <= x1; ++x) {
            for (int y = y0; y <= y1; ++y) {
                for (int item : m_cells[x * m_numY + y]) {
                    // An item met in several cells is taken in one of them:
                    // the cell of the low corner of both rectangles' common
                    // part.
                    const SbBox2f& other = m_boxes[item];
                    if (!meets(other, box) ||
                        x != cellX(std::max(other.getMin()[0], box.getMin()[0])) ||
                        y != cellY(std::max(other.getMin()[1], box.getMin()[1])))
                        continue;
                    if (visit(item))
                        return true;
                }
            }
        }
        return false;
    }

    static bool meets(const SbBox2f& a, const SbBox2f& b) {
        return a.getMin()[0] <= b.getMax()[0] && b.getMin()[0] <= a.getMax()[0] &&
               a.getMin()[1] <= b.getMax()[1] && b.getMin()[1] <= a.getMax()[1];
    }

private:
    int cellX(float x) const { return cell(x, m_originX, m_numX); }
    int cellY(float y) const { return cell(y, m_originY, m_numY); }
    int cell(float coordinate, float origin, int count) const;
    void cellRange(const SbBox2f& box, int& x0, int& y0, int& x1, int& y1) const;

    float m_originX = 0.0f;
    float m_originY = 0.0f;
    float m_inverseCellSize = 1.0f;
    int m_numX = 1;
    int m_numY = 1;
    std::vector<std::vector<int>> m_cells;
    std::vector<SbBox2f> m_boxes;
};
