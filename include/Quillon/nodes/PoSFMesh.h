#pragma once
#include <Inventor/SoType.h>
#include <Inventor/fields/SoSField.h>

// Base of the single-value fields that hold a mesh.
class PoSFMesh : public SoSField {
public:
    static SoType getClassTypeId(void);
    static void initClass(void);
    static void exitClass(void);

    // Registers (and unregisters) every mesh field type, in a fixed order.
    static void initClasses(void);
    static void exitClasses(void);

protected:
    PoSFMesh();
    ~PoSFMesh() override;

private:
    static SoType s_classTypeId;
};
