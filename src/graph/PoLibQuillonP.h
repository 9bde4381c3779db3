#pragma once
#include <Inventor/SbString.h>
#include <Inventor/SoType.h>

// Loads the separate view module on demand and keeps its three entry
// points.  The singleton exists only while the module is loaded and all its
// entry points were found.
class PoLibQuillonP {
public:
    using ClassesFunction = void (*)();
    using TypeFunction = SoType (*)();

    static PoLibQuillonP* instance();
    static void finish();
    static bool isAvailable();

    // The module's file name for the GUI system the application runs under.
    static SbString getModuleFileName();

    static ClassesFunction getInitClassesFunction() { return s_initClasses; }
    static ClassesFunction getExitClassesFunction() { return s_exitClasses; }
    static TypeFunction getSceneViewTypeFunction() { return s_sceneViewType; }

private:
    PoLibQuillonP() = default;
    static bool lookUpEntryPoints(const char* fileName);

    static PoLibQuillonP* s_instance;
    static int s_count;
    static ClassesFunction s_initClasses;
    static ClassesFunction s_exitClasses;
    static TypeFunction s_sceneViewType;
};
