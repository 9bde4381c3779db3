#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/nodes/SoNode.h>

// Base of the library's property nodes.  Every traversal of the actions
// that carry the library's state reaches doAction, where a concrete node
// brings its data object up to date and puts it into its element.  A node
// created before PoQuillon::init() says so, and initialises the library
// for as long as it lives.
class QUILLON_API PoNode : public SoNode {
    PO_NODE_ABSTRACT_HEADER(PoNode);

public:
    // Registers (and unregisters) every property node, in a fixed order.
    static void initClasses(void);
    static void exitClasses(void);

    void doAction(SoAction* action) override;
    void callback(SoCallbackAction* action) override;
    void GLRender(SoGLRenderAction* action) override;
    void getBoundingBox(SoGetBoundingBoxAction* action) override;
    void getMatrix(SoGetMatrixAction* action) override;
    void handleEvent(SoHandleEventAction* action) override;
    void pick(SoPickAction* action) override;
    void getPrimitiveCount(SoGetPrimitiveCountAction* action) override;
    void search(SoSearchAction* action) override;
    // Property nodes are written only with the folded node write format.
    void write(SoWriteAction* action) override;

protected:
    PoNode();
    ~PoNode() override;

private:
    bool m_holdsLibrary = false;
};
