#pragma once

// The performance-inspection tool.  It is not available on this platform,
// so nothing is ever watched.
class SoLibScopel {
public:
    static bool isAvailable() { return false; }
    static bool isRunning() { return false; }
};
