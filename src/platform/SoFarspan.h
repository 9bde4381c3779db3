#pragma once

// The cluster-rendering module.  This platform has none, so init and finish
// only count, and modules registered with it are recorded by name.
class SoFarspan {
public:
    static void init();
    static void finish();
    static int getInitCount();
};
