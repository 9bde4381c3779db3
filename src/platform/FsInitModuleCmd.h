#pragma once
#include <string>
#include <vector>

// Registration of a module with the cluster-rendering module: the names are
// recorded in the order they were given.
class FsInitModuleCmd {
public:
    static FsInitModuleCmd* Instance();

    void serialize(const char* moduleName);
    const std::vector<std::string>& getModuleNames() const { return m_moduleNames; }
    bool isRegistered(const char* moduleName) const;

private:
    FsInitModuleCmd() = default;
    std::vector<std::string> m_moduleNames;
};
