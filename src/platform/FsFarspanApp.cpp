#include "platform/FsFarspanApp.h"

namespace {
bool s_runningQt = false;
bool s_runningWx = false;
} // namespace

bool FsFarspanApp::isRunningQt() {
    return s_runningQt;
}

bool FsFarspanApp::isRunningWx() {
    return s_runningWx;
}

void FsFarspanApp::setRunningQt(bool flag) {
    s_runningQt = flag;
}

void FsFarspanApp::setRunningWx(bool flag) {
    s_runningWx = flag;
}
