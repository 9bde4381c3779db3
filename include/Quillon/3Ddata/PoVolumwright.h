#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoBase.h>

// Base of the mesh representation node kits.  Each one holds a further
// reference on the library for its lifetime.
class QUILLON_API PoVolumwright : public PoBase {
    PO_KIT_ABSTRACT_HEADER(PoVolumwright);

public:
    // Registers (and unregisters) every mesh representation node kit.
    static void initClasses(void);
    static void exitClasses(void);

protected:
    PoVolumwright();
    ~PoVolumwright() override;
};
