#pragma once

// Which GUI system the application runs under.  Nothing here detects one:
// the answers are false unless an application or test says otherwise.
class FsFarspanApp {
public:
    static bool isRunningQt();
    static bool isRunningWx();
    static void setRunningQt(bool flag);
    static void setRunningWx(bool flag);
};
