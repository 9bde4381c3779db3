#pragma once
#include <Quillon/graph/PbBase.h>
#include <Quillon/graph/PoBase.h>

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/nodes/SoSeparator.h>

#include <vector>

// A minimal concrete kit for tests: it watches its field `value`, records
// every data-object notification, counts its rebuilds and, while
// rebuilding, reads the data-mapping element so that a change of the
// mapping above it invalidates its cache.
class RecordingKit : public PoBase {
    PO_KIT_HEADER(RecordingKit);

public:
    struct Notification {
        PbBase* object;
        PbBase::ChangeType change;
        int sequence; // process-wide order of all kits' notifications
    };

    SoSFFloat value;

    RecordingKit();

    // Registers the class for the running test when needed (after the
    // library is initialised).
    static void ensureRegistered();

    void basicObjectChange(PbBase* object) override;

    int rebuildCount = 0;
    std::vector<Notification> notifications;
    const void* lastDataMapping = nullptr;

    // The kit's representation, created when missing; getPart() does not
    // hand out parts that have parts below them.
    SoSeparator* getRepresentation();

    using PoBase::changeConnection;
    using PoBase::isCacheValid;
    using PoBase::isRenderPending;

protected:
    ~RecordingKit() override;
    void rebuild() override;
};
