#pragma once
// Every public header of the library.
#include <Quillon/PoQuillon.h>

#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PbArrayOfLong.h>
#include <Quillon/graph/PbBase.h>
#include <Quillon/graph/PoBase.h>
#include <Quillon/graph/PoClassRegistration.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/graph/PoPlotwright.h>

#include <Quillon/nodes/PoBevelEdge.h>
#include <Quillon/nodes/PoProfileCoordinate2.h>
#include <Quillon/nodes/PoSquareProfile.h>
#include <Quillon/nodes/PoEllipticProfile.h>
#include <Quillon/nodes/PoCircularProfile.h>
#include <Quillon/nodes/PoProfile.h>
#include <Quillon/nodes/PoCoordinateListFilter.h>
#include <Quillon/nodes/PoPeriodFilter.h>
#include <Quillon/nodes/PoIndexListFilter.h>
#include <Quillon/nodes/PoPeriodIndexFilter.h>
#include <Quillon/nodes/PoMesh1DFilter.h>
#include <Quillon/nodes/PoIntervalCellFilter.h>
#include <Quillon/nodes/PoCellFilter.h>
#include <Quillon/nodes/PoBevelEdgeElement.h>
#include <Quillon/nodes/PoCellFilterElement.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoDateFormatMappingElement.h>
#include <Quillon/nodes/PoDomainElement.h>
#include <Quillon/nodes/PoIsovaluesListElement.h>
#include <Quillon/nodes/PoLabelHints.h>
#include <Quillon/nodes/PoLabelHintsElement.h>
#include <Quillon/nodes/PoMesh1DFilterElement.h>
#include <Quillon/nodes/PoMesh1DHints.h>
#include <Quillon/nodes/PoMesh1DHintsElement.h>
#include <Quillon/nodes/PoMeshElement.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>
#include <Quillon/nodes/PoNode.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>
#include <Quillon/nodes/PoProfileElement.h>
#include <Quillon/nodes/PoSFMesh.h>

#include <Quillon/3Ddata/PoVolumwright.h>
#include <Quillon/graph/PbDomain.h>
