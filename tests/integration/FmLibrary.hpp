/// libzorv_fm.so in the hands of a test: loaded, and driven through its C surface as the middleware drives it.
///
/// Threads:   an object belongs to one thread.
/// Ownership: the library is unloaded with the object at the latest.
/// Failure:   what fails that a test does not ask for fails the test.
#pragma once

#include <string>

#include "Middleware.hpp"
#include "ZorvMgmtSpiLibrary_1.h"

namespace ZorvIntegration {

class FmLibrary {
public:
    /// Loads the library and resolves both entry points.
    explicit FmLibrary(ZorvFakes::Middleware& middleware);
    ~FmLibrary();

    FmLibrary(const FmLibrary&) = delete;
    FmLibrary& operator=(const FmLibrary&) = delete;

    ZorvReturnT initialize(const std::string& configFile) const;
    ZorvReturnT terminate() const { return zorvTerminate(); }

    /// Both components, the managed objects first; stopped the other way round.
    void start(ZorvStateChangeReason reason = ZORV_STATE_CHANGE_ACTIVATE) const;
    void stop(ZorvStateChangeReason reason = ZORV_STATE_CHANGE_DEACTIVATE) const;

    void unload();

    /// Whether the process still holds the library.
    static bool isLoaded();

    const ZorvLcmInitT& getInit() const { return zorvInit; }

private:
    ZorvFakes::Middleware& middleware;
    void* handle = nullptr;
    ZorvLcmInitT zorvInit = nullptr;
    ZorvLcmTerminateT zorvTerminate = nullptr;
};

}  // namespace ZorvIntegration
