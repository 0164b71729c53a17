/// A whole middleware of fakes over one journal: what a test fixture holds.
///
/// Every service is offered in the portal under its published identity; take one away with
/// portal.withdraw("ZorvOamSpiEventRouter"), bring all back with offerAll(). Log level 6, trace level 8, real time.
#pragma once

#include "FakeEventRouter.hpp"
#include "FakeLog.hpp"
#include "FakeManagedObjects.hpp"
#include "FakeModelRepository.hpp"
#include "FakePortal.hpp"
#include "FakeReplicatedList.hpp"
#include "FakeTrace.hpp"
#include "FakeTransactions.hpp"
#include "FmModel.hpp"
#include "Journal.hpp"
#include "VirtualClock.hpp"

namespace ZorvFakes {

class Middleware {
public:
    Middleware();

    /// Closes what connect opened.
    ~Middleware();

    Middleware(const Middleware&) = delete;
    Middleware& operator=(const Middleware&) = delete;

    /// Opens portal and logging of the common library, as a component library does when it is loaded. Clears the journal.
    void connect(const char* traceGroup = "FM");

    /// Offers all services, those that were withdrawn too.
    void offerAll();

    /// What the life-cycle manager hands to a library.
    static const ZorvMgmtSpiPortalAccessor_1T* accessor() { return FakePortal::accessor(); }

    Journal journal;
    FakePortal portal{journal};
    FakeLog log{journal};
    FakeTrace trace{journal};
    FakeReplicatedList lists{journal};
    FakeEventRouter router{journal};
    FakeTransactions transactions{journal};
    FakeManagedObjects objects{journal, transactions};
    FakeModelRepository repository{journal};
    VirtualClock clock{journal};
    FmModel fmModel{objects};
};

}  // namespace ZorvFakes
