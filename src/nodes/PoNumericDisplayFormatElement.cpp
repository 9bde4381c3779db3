#include <Quillon/nodes/PoNumericDisplayFormatElement.h>

#include <Quillon/graph/PbNumericDisplayFormat.h>

PO_POINTER_ELEMENT_SOURCE_WITH_DEFAULT(
    PoNumericDisplayFormatElement, PbNumericDisplayFormat,
    new PbNumericDisplayFormat(PbNumericDisplayFormat::AUTO_FORMAT, 0, 0))
