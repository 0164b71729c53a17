/// A middleware of fakes for targets that run the fault management, one for the whole process.
///
/// Every trace is formatted. The journal keeps log lines, and has to be taken after each input.
#pragma once

#include "FmComponentManager.hpp"
#include "Middleware.hpp"

namespace ZorvFuzz {

class FmWorld : public ZorvFakes::Middleware {
public:
    static FmWorld& instance()
    {
        static FmWorld world;
        return world;
    }

    /// Log lines since the last call.
    ZorvFakes::Journal::Entries takeLogs() { return journal.take(); }

private:
    FmWorld()
    {
        connect();
        const void* portal1 = accessor()->getPortal("1");
        ZorvFm::FmComponentManager::instance().setPortal(static_cast<const ZorvMgmtSpiPortal_1T*>(portal1));
        journal.showOnly({ZorvFakes::Topic::Log});
        journal.take();
    }
};

}  // namespace ZorvFuzz
