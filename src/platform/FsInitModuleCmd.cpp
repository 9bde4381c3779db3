#include "platform/FsInitModuleCmd.h"

#include <algorithm>

FsInitModuleCmd* FsInitModuleCmd::Instance() {
    static FsInitModuleCmd instance;
    return &instance;
}

void FsInitModuleCmd::serialize(const char* moduleName) {
    if (moduleName)
        m_moduleNames.emplace_back(moduleName);
}

bool FsInitModuleCmd::isRegistered(const char* moduleName) const {
    return std::find(m_moduleNames.begin(), m_moduleNames.end(), moduleName) != m_moduleNames.end();
}
