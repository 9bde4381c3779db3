#include <Quillon/nodes/PoIntervalCellFilter.h>

PO_NODE_SOURCE(PoIntervalCellFilter, PoCellFilter)

PoIntervalCellFilter::PoIntervalCellFilter() {
    SO_NODE_CONSTRUCTOR(PoIntervalCellFilter);
    SO_NODE_ADD_FIELD(min, (0.0f));
    SO_NODE_ADD_FIELD(max, (1.0f));
    SO_NODE_ADD_FIELD(in, (TRUE));
}

PoIntervalCellFilter::~PoIntervalCellFilter() = default;

SbBool PoIntervalCellFilter::acceptCell(int, float cellValue) const {
    const bool inside = min.getValue() <= cellValue && cellValue <= max.getValue();
    return inside == (in.getValue() != FALSE);
}
