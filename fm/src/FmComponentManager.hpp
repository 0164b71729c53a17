/// The way from the component's classes to the middleware's interfaces.
///
/// Threads:   the portal is set by the thread that loads the library; getInterface from any thread.
/// Ownership: the portal is the middleware's.
/// Failure:   an interface that nobody provides is null, never an error code.
#pragma once

#include "Singleton.hpp"
#include "ZorvMgmtSpiInterface_1.h"
#include "ZorvMgmtSpiPortal_1.h"

namespace ZorvFm {

class FmComponentManager : public Zorv::Singleton<FmComponentManager> {
public:
    virtual ~FmComponentManager() = default;

    void setPortal(const ZorvMgmtSpiPortal_1T* portal1) { portal = portal1; }

    const void* getInterface(const ZorvMgmtSpiInterface_1& id) const;

private:
    const ZorvMgmtSpiPortal_1T* portal = nullptr;  // not owned; null until the library is initialized
};

}  // namespace ZorvFm
