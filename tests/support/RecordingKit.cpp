#include "support/RecordingKit.h"
#include "support/TestClassRegistration.h"

#include <Quillon/nodes/PoDataMappingElement.h>

PO_KIT_SOURCE(RecordingKit, PoBase)

void RecordingKit::ensureRegistered() {
    TestClassRegistration::registerForThisTest<RecordingKit>();
}

RecordingKit::RecordingKit() {
    SO_KIT_CONSTRUCTOR(RecordingKit);
    SO_KIT_ADD_FIELD(value, (0.0f));
    SO_KIT_INIT_INSTANCE();
    watchFields({&value});
}

RecordingKit::~RecordingKit() = default;

SoSeparator* RecordingKit::getRepresentation() {
    return SO_GET_ANY_PART(this, "alternateRep", SoSeparator);
}

void RecordingKit::basicObjectChange(PbBase* object) {
    static int sequence = 0;
    notifications.push_back({object, object->getChangeType(), sequence++});
    PoBase::basicObjectChange(object);
}

void RecordingKit::rebuild() {
    RebuildScope scope(this);
    ++rebuildCount;
    lastDataMapping = readElement<PoDataMappingElement>();
}
