/// A component library in the process: loaded, initialized and, at its end, terminated and unloaded.
///
/// Threads:   one thread loads and unloads; none of its components is started while it does.
/// Ownership: portal and accessor outlive it. The destructor unloads.
/// Failure:   the constructor throws LoadError, one line, after it has backed out: terminated, unregistered, unloaded.
///            Whatever the library throws is caught.
#pragma once

#include <stdexcept>
#include <string>

#include "LogSink.hpp"
#include "ZorvMgmtSpiLibrary_1.h"
#include "portal/InterfacePortal.hpp"

namespace ZorvNode {

class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class LoadedLibrary {
public:
    /// @param config goes to the library as it stands.
    LoadedLibrary(const std::string& libraryPath, const std::string& config,
                  const ZorvMgmtSpiPortalAccessor_1T& accessor, InterfacePortal& interfacePortal, LogSinkT logSink);
    ~LoadedLibrary();

    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    /// The components that it registered, in that order.
    const std::vector<InterfacePortal::ComponentT>& getComponents() const { return components; }

    /// Terminates and unloads; the second time nothing happens. keepMapped: its code stays in the process, because a
    /// thread is still in it.
    void unload(bool keepMapped = false);

private:
    template <class FunctionT>
    FunctionT resolve(const char* symbol);

    void initialize(const std::string& config, const ZorvMgmtSpiPortalAccessor_1T& accessor);
    void terminate();
    void dropRegistrations();
    void findOwnComponents(const std::vector<InterfacePortal::ComponentT>& before);
    std::string told(const std::string& what) const { return "library " + path + ": " + what; }

    const std::string path;
    InterfacePortal& portal;
    const LogSinkT log;
    void* handle = nullptr;
    ZorvLcmInitT initEntry = nullptr;
    ZorvLcmTerminateT terminateEntry = nullptr;
    std::vector<InterfacePortal::ComponentT> components;
};

}  // namespace ZorvNode
