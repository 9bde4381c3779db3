// The umbrella header declares every class of the library's class lists.
#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"

#define DECLARED(_class_) static_assert(sizeof(_class_) > 0, #_class_);
#define DECLARED_REPRESENTATION(_class_, _group_) DECLARED(_class_)

PO_CHART_KIT_CLASSES(DECLARED)
PO_MESH_REPRESENTATION_CLASSES(DECLARED_REPRESENTATION)
PO_ELEMENT_CLASSES(DECLARED)
PO_PROPERTY_NODE_CLASSES(DECLARED)
PO_MESH_FIELD_CLASSES(DECLARED)
